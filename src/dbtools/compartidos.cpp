#include "dbtools/compartidos.h"

#include "dbtools/datos.h"
#include "text/letras_utf8.h"

#include <algorithm>
#include <set>

namespace quorvel::dbtools {
namespace {

constexpr const char* CUENTAS_USADAS =
    " where centro in (select centro from ctdquorvel where empresa=%E union select centro from ctmsdcenth "
    "where empresa=%E union select centro from ctmsdmayor where empresa=%E union select centro_gan from "
    "ctmconfigu where empresa=%E union select centro_per from ctmconfigu where empresa=%E union select "
    "factura_cobrar from ctmconfigu where empresa=%E union select boleta_cobrar from ctmconfigu where "
    "empresa=%E union select factura_pagar from ctmconfigu where empresa=%E union select boleta_pagar from "
    "ctmconfigu where empresa=%E union select iva from ctmconfigu where empresa=%E union select iva_compra "
    "from ctmconfigu where empresa=%E union select otros_impuestos from ctmconfigu where empresa=%E union "
    "select otros_impuestos_compra from ctmconfigu where empresa=%E union select honorarios_pagar from "
    "ctmconfigu where empresa=%E union select retencion_seg_cat from ctmconfigu where empresa=%E)";

/// Shared tables whose codes people type and therefore keep.
struct Maestro {
    const char* tabla;
    const char* que;       ///< in the sentence of a clash
    std::size_t clave;     ///< so many columns from the first are the key
    const char* identidad; ///< what must be the same under one key; empty: whatever stands there is good
    const char* usados;
};
constexpr Maestro MAESTROS[] = {
    {"ctmgcuenta", "El grupo de cuentas", 1, "transitorio", ""},
    {"ctmcentros", "La cuenta", 1, "g_cuenta", CUENTAS_USADAS},
    {"ctmgcuentc", "El grupo de centros de costo", 1, "", ""},
    {"ctmcentroc", "El centro de costo", 1, "g_cuenta",
     " where centro in (select centro2 from ctdquorvel where empresa=%E)"},
    {"ctmtipoaux", "El tipo de auxiliar", 1, "", ""},
    {"ctxaux_cod", "El auxiliar", 1, "rut",
     " where auxiliar in (select auxiliar from ctdquorvel where empresa=%E union select auxiliar from "
     "ctmsdmayor where empresa=%E)"},
    {"admdocumen", "El tipo de documento", 1, "n_documento",
     " where documento in (select documento from ctcquorvel where empresa=%E union select documento from "
     "adxemp_doc where empresa=%E)"},
    {"admsubsist", "El subsistema", 1, "", ""},
    {"adxdoc_sub", "", 2, "", ""},
    {"admmonedas", "La moneda", 1, "", ""},
    {"ctmotroimp", "El impuesto", 1, "", ""},
};

std::size_t columna(const TablaMovida& tabla, const std::string& nombre) {
    return static_cast<std::size_t>(std::ranges::find(tabla.columnas, nombre) - tabla.columnas.begin());
}

std::string clave_de(const Maestro& m, const Celdas& fila) {
    std::string clave;
    for (std::size_t i = 0; i < m.clave; ++i) clave += recortar_fin(fila[i].value_or("")) + '\0';
    return clave;
}

/// The rows there by their key.
std::map<std::string, Celdas> por_clave(Base& base, const Maestro& m, const TablaMovida& tabla) {
    std::map<std::string, Celdas> filas;
    for (Celdas& fila : leer_filas(base, tabla, "")) {
        std::string clave = clave_de(m, fila);
        filas.emplace(std::move(clave), std::move(fila));
    }
    return filas;
}

} // namespace

Compartidos::Compartidos(Base& de, Base& a, int empresa)
    : de_(de), a_(a), empresa_(std::to_string(empresa)),
      tablas_(leer_esquema(leer_dato("schema/" + de.motor() + ".sql")).tablas) {}

TablaMovida Compartidos::tabla(const std::string& nombre) const {
    const auto t = std::ranges::find(tablas_, nombre, &Tabla::nombre);
    return t == tablas_.end() ? TablaMovida{nombre, {}} : TablaMovida{t->nombre, t->columnas};
}

std::string Compartidos::con_empresa(const char* usados) const { return reemplazar(usados, "%E", empresa_); }

std::vector<std::string> Compartidos::choques() {
    std::vector<std::string> frases;
    for (const Maestro& m : MAESTROS) {
        if (*m.identidad == '\0') continue;
        const TablaMovida suya = tabla(m.tabla);
        const std::size_t identidad = columna(suya, m.identidad);
        const auto alla = por_clave(a_, m, suya);
        for (const Celdas& fila : leer_filas(de_, suya, con_empresa(m.usados))) {
            const auto otra = alla.find(clave_de(m, fila));
            const auto dato = [&](const Celdas& f) { return recortar_fin(f[identidad].value_or("")); };
            if (otra != alla.end() && dato(otra->second) != dato(fila))
                frases.push_back(std::string(m.que) + " " + recortar_fin(fila[0].value_or("")) +
                                 " es otro en el destino: " + dato(fila) + " aquí, " + dato(otra->second) +
                                 " allá");
        }
    }
    return frases;
}

/// Each is the one of that name or RUT there; whoever is nobody there gets a code.
std::map<std::string, std::string> Compartidos::personas(const std::string& nombre,
                                                         const std::string& identidad, const char* usados) {
    const TablaMovida suya = tabla(nombre);
    const std::size_t quien = columna(suya, identidad);
    std::map<std::string, std::string> codigos, alla;
    std::int64_t ultimo = 0;
    for (const Celdas& fila : leer_filas(a_, suya, "")) {
        alla.emplace(recortar_fin(fila[quien].value_or("")), *fila[0]);
        ultimo = std::max<std::int64_t>(ultimo, std::stoll(*fila[0]));
    }
    for (Celdas fila : leer_filas(de_, suya, con_empresa(usados))) {
        const std::string antes = *fila[0];
        const auto [conocida, nueva] =
            alla.emplace(recortar_fin(fila[quien].value_or("")), std::to_string(ultimo + 1));
        codigos[antes] = conocida->second;
        if (!nueva) continue;
        ++ultimo;
        fila[0] = conocida->second;
        escribir_filas(a_, suya, {fila});
    }
    return codigos;
}

void Compartidos::llevar(Codigos& codigos) {
    for (const Maestro& m : MAESTROS) {
        const TablaMovida suya = tabla(m.tabla);
        const auto alla = por_clave(a_, m, suya);
        std::vector<Celdas> faltan;
        for (Celdas& fila : leer_filas(de_, suya, con_empresa(m.usados)))
            if (!alla.contains(clave_de(m, fila))) faltan.push_back(std::move(fila));
        escribir_filas(a_, suya, faltan);
    }
    codigos.usuarios = personas("admusuario", "n_usuario",
                                " where usuario in (select usuario from ctcquorvel where empresa=%E)");
    codigos.personas = personas("admpersona", "cedula_ruc",
                                " where persona in (select cliente from ftcfactura where empresa=%E)");
}

} // namespace quorvel::dbtools
