#include "interchange/tablas_impresion.h"

#include "text/letras_utf8.h"

#include <algorithm>
#include <array>

namespace quorvel {

namespace {

constexpr std::array CREAR{
    "create table ctcQuorvel (empresa text(50), usuario text(50), documento text(30), num_doc text(10), "
    "f_comp date, hora text(10), concepto text(150), secuencia integer, cuenta text(26), n_cuenta text(50), "
    "auxiliar text(80), debe double, haber double, glosa text(150), revisado text(30), aprobado text(30), "
    "elaborado text(30), constraint primario primary key (empresa, usuario, documento, num_doc, f_comp, "
    "secuencia))",
    "create table ctccheque (empresa text(50), secuencia integer, beneficiario text(50), fecha text(40), "
    "dia text(40), mes text(40), anio text(40), monto_texto text(150), monto double, nominativo text(1), "
    "cruzado text(1), cheque text(30), constraint primario primary key (secuencia))",
    "create table ctcfactura (secuencia integer, dia text(40), mes text(40), anio text(40), fecha text(250), "
    "factura text(20), monto double, iva double, neto double, texto1 text(150), texto2 text(150), "
    "texto3 text(150), rut text(15), nombre text(50), direccion text(50), comuna text(50), ciudad text(50), "
    "giro text(50), fono text(50), cantidad int, precio double, constraint primario primary key "
    "(secuencia))"};
constexpr std::string_view PROVEEDOR = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=";
constexpr std::size_t LARGO_NOMBRE = 8; // of the report database's file

/// What the session's ctcQuorvel is.
enum class Tabla { falta, impresion, comprobantes };

Tabla clase_de_tabla(clsConexion& reporte) {
    try {
        const auto rs = reporte.NewRecord("select * from ctcQuorvel where 1=0");
        const auto& columnas = rs->columns();
        const auto tiene = [&](std::string_view n) {
            return std::any_of(columnas.begin(), columnas.end(), [&](const auto& c) { return c.name == n; });
        };
        return tiene("secuencia") && !tiene("bloqueo_usuario") ? Tabla::impresion : Tabla::comprobantes;
    } catch (const SesionFallida&) {
        throw; // nothing is known about its tables
    } catch (const ErrorSesion&) {
        return Tabla::falta;
    }
}

} // namespace

bool es_tabla_impresion(clsConexion& reporte) { return clase_de_tabla(reporte) == Tabla::impresion; }

void crear_tablas_impresion(clsConexion& reporte) {
    if (clase_de_tabla(reporte) == Tabla::comprobantes) return;
    for (const char* sql : CREAR) reporte.executesql(sql); // refused when it exists
}

void borrar_tablas_impresion(clsConexion& reporte) {
    try {
        if (clase_de_tabla(reporte) == Tabla::comprobantes) return;
    } catch (const SesionFallida&) {
        return; // the screen goes away all the same
    }
    for (const char* sql : {" drop table ctcQuorvel", " drop table ctccheque", " drop table ctcfactura"})
        reporte.executesql(sql);
}

clsConexion& base_informes(clsConexion* reporte) {
    if (reporte == nullptr) throw std::runtime_error("No hay una base de informes para imprimir");
    return *reporte;
}

bool misma_base(const clsConexion& a, const clsConexion& b) {
    if (a.TypeDB() != b.TypeDB()) return false;
    std::error_code error;
    return a.Name() == b.Name() || std::filesystem::equivalent(a.Name(), b.Name(), error);
}

void exigir_base_de_informes(const clsConexion& db, clsConexion& reporte) {
    if (misma_base(db, reporte))
        throw std::runtime_error(
            "La base de informes es la misma base contable: no se puede imprimir sin dañar los comprobantes");
    (void)archivo_informe(reporte.Name(), "", ""); // its folder must hold the definitions
    if (!es_tabla_impresion(reporte))
        throw std::runtime_error("La base de informes no tiene las tablas de impresión");
}

bool sirve_para_informes(const clsConexion& db, clsConexion& reporte) {
    try {
        exigir_base_de_informes(db, reporte);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

std::filesystem::path archivo_informe(const std::string& name, const std::string& tipo_impresora,
                                      const std::string& informe) {
    const std::string ruta = reemplazar(name, PROVEEDOR, "");
    if (ruta.find("://") != std::string::npos) // a connection text may hold a password
        throw std::runtime_error("La base de informes debe ser un archivo llamado print.db y no un servidor");
    const auto barra = ruta.find_last_of("/\\");
    if (ruta.size() - (barra + 1) != LARGO_NOMBRE) // none is -1
        throw std::runtime_error("La base de informes debe ser un archivo llamado print.db y no " + ruta);
    const auto alfanumerico = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    };
    if (!std::all_of(tipo_impresora.begin(), tipo_impresora.end(), alfanumerico))
        throw std::runtime_error("Tipo de impresora no válido: " + tipo_impresora);
    return ruta.substr(0, ruta.size() - LARGO_NOMBRE) + tipo_impresora + informe + ".rpt";
}

void ejecutar_impresion(clsConexion& reporte, const std::string& sql) {
    if (reporte.executesql(sql) == 0)
        throw ErrorSesion("No se puede preparar la impresión: " + reporte.last_error(), sql);
}

} // namespace quorvel
