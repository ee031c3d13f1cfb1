#include "empresa/configuracion_anual.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel {
namespace {

constexpr CuentaConfigurada CUENTAS[] = {
    {"factura_cobrar", "Clientes, facturas por cobrar", true},
    {"boleta_cobrar", "Boletas por cobrar"},
    {"factura_pagar", "Proveedores, facturas por pagar", true},
    {"boleta_pagar", "Boletas por pagar"},
    {"iva", "IVA de ventas (débito fiscal)"},
    {"otros_impuestos", "Otros impuestos de ventas"},
    {"iva_compra", "IVA de compras (crédito fiscal)"},
    {"otros_impuestos_compra", "Otros impuestos de compras"},
    {"honorarios_pagar", "Honorarios por pagar", true},
    {"retencion_seg_cat", "Retención de segunda categoría"},
    {"centro_gan", "Utilidad del ejercicio"},
    {"centro_per", "Pérdida del ejercicio"},
};

std::string donde(int empresa, int anio) {
    return " where empresa=" + sql_numero(empresa) + " and anio=" + sql_numero(anio);
}

std::optional<FichaCuenta> buscar_cuenta(clsConexion& db, const std::string& codigo) {
    const auto rs = db.NewRecord("select a.activo, a.req_auxiliar, g.transitorio from ctmcentros a left join "
                                 "ctmgcuenta g on g.g_cuenta=a.g_cuenta where a.centro=" +
                                 sql_texto(codigo));
    if (rs->eof()) return std::nullopt;
    const auto uno = [&](std::size_t i) { return recortar(rs->at(i).text()) == "1"; };
    return FichaCuenta{uno(0), uno(1), uno(2)};
}

bool de_cierre(const CuentaConfigurada& que) { return std::string_view(que.columna).starts_with("centro_"); }

void revisar_fechas(const ConfiguracionAnual& c, std::vector<Observacion>& o) {
    const auto revisar = [&](const std::optional<Fecha>& f, const char* campo) {
        if (f && anio(*f) != c.anio)
            o.push_back({campo, "La fecha debe ser del año " + std::to_string(c.anio)});
    };
    revisar(c.f_digi_inicial, "f_digi_inicial");
    revisar(c.f_digi_final, "f_digi_final");
    if (c.f_digi_inicial && c.f_digi_final && *c.f_digi_inicial > *c.f_digi_final)
        o.push_back({"f_digi_final", "El período termina antes de empezar"});
}

void revisar_cuenta(clsConexion& db, const CuentaConfigurada& que, const std::string& codigo,
                    std::vector<Observacion>& o) {
    if (codigo.empty()) {
        o.push_back({que.columna,
                     de_cierre(que) ? "Falta: se necesita para cerrar el año"
                                    : "Falta: sin ella no se graba ningún comprobante",
                     false});
        return;
    }
    if (auto reparo = reparo_de_cuenta(que, codigo, buscar_cuenta(db, codigo))) o.push_back(*reparo);
}

void exigir(clsConexion& db, const std::string& sql) {
    if (db.executesql(sql) < 1) throw ErrorSesion(db.last_error(), sql);
}

} // namespace

std::span<const CuentaConfigurada> cuentas_configuradas() { return CUENTAS; }

const CuentaConfigurada* cuenta_configurada(std::string_view columna) {
    const auto c = std::ranges::find(CUENTAS, columna, &CuentaConfigurada::columna);
    return c == std::end(CUENTAS) ? nullptr : &*c;
}

std::optional<Observacion> reparo_de_cuenta(const CuentaConfigurada& que, const std::string& codigo,
                                            const std::optional<FichaCuenta>& ficha) {
    const auto reparo = [&](const char* texto, bool grave) {
        return Observacion{que.columna, "La cuenta " + codigo + texto, grave};
    };
    if (!ficha) return reparo(" no existe", true);
    if (!ficha->imputable) return reparo(" es un título o no está en uso", true);
    if (de_cierre(que) && ficha->de_resultado) return reparo(" es de resultado: el cierre la saldaría", true);
    if (que.de_tercero && !ficha->auxiliar) return reparo(" no pide auxiliar", false);
    return std::nullopt;
}

std::vector<int> anios_configurados(clsConexion& db, int empresa) {
    std::vector<int> anios;
    for (const auto rs = db.NewRecord("select anio from ctmconfigu where empresa=" + sql_numero(empresa) +
                                      " order by anio desc");
         !rs->eof(); rs->MoveNext())
        anios.push_back(static_cast<int>(rs->at(0).integer()));
    return anios;
}

std::string falta_para_trabajar(clsConexion& db, int empresa) {
    const struct {
        std::string consulta;
        const char* texto;
    } requisitos[] = {
        {"select top 1 centro from ctmcentros", "Esta base no tiene plan de cuentas.\nNueva empresa…, en la "
                                                "ventana de inicio, trae uno de muestra o "
                                                "lo importa de un archivo CSV."},
        {"select top 1 documento from adxdoc_sub where subsistema='01'",
         "Esta base no tiene tipos de documento.\nNueva empresa…, en la ventana de inicio, los crea."},
        {"select top 1 anio from ctmconfigu where empresa=" + sql_numero(empresa),
         "La empresa no tiene configuración contable.\nSe ingresa con Ctrl+K, o en la ventana de inicio."},
    };
    for (const auto& r : requisitos)
        if (!has_rows(db, r.consulta)) return r.texto;
    return {};
}

std::optional<ConfiguracionAnual> leer_configuracion_anual(clsConexion& db, int empresa, int anio) {
    const auto rs = db.NewRecord("select * from ctmconfigu" + donde(empresa, anio));
    if (rs->eof()) return std::nullopt;
    ConfiguracionAnual c;
    c.empresa = empresa;
    c.anio = anio;
    c.f_digi_inicial = rs->fields("f_digi_inicial").Value.date();
    c.f_digi_final = rs->fields("f_digi_final").Value.date();
    for (const CuentaConfigurada& cuenta : CUENTAS)
        c.cuentas[cuenta.columna] = recortar(rs->fields(cuenta.columna).Value.text());
    const std::pair<const char*, std::string*> firmas[] = {
        {"elaborado", &c.elaborado}, {"revisado", &c.revisado}, {"aprobado", &c.aprobado}};
    for (const auto& [columna, texto] : firmas) {
        const Value v = rs->fields(columna).Value;
        if (!v.null()) *texto = recortar_fin(v.text());
    }
    if (const auto f = rs->fields("f_comp_cierre").Value.date())
        c.cierre = recortar(rs->fields("documento_cierre").Value.text()) + " " +
                   recortar(rs->fields("num_docum_cierre").Value.text()) + " del " + fecha_dmy(*f);
    return c;
}

std::vector<Observacion> revisar_configuracion(clsConexion& db, const ConfiguracionAnual& c) {
    std::vector<Observacion> o;
    revisar_fechas(c, o);
    for (const CuentaConfigurada& que : CUENTAS) {
        const auto cuenta = c.cuentas.find(que.columna);
        revisar_cuenta(db, que, cuenta == c.cuentas.end() ? "" : recortar(cuenta->second), o);
    }
    for (const auto& [campo, texto] :
         {std::pair{"elaborado", &c.elaborado}, {"revisado", &c.revisado}, {"aprobado", &c.aprobado}})
        if (largo(*texto) > 30) o.push_back({campo, "Tiene más de 30 letras"});
    return o;
}

void grabar_configuracion(clsConexion& db, const ConfiguracionAnual& c) {
    if (!has_rows(db, "select anio from ctmconfigu" + donde(c.empresa, c.anio)))
        exigir(db, "insert into ctmconfigu(empresa,anio) values (" + sql_numero(c.empresa) + "," +
                       sql_numero(c.anio) + ")");
    std::string sql = "update ctmconfigu set f_digi_inicial=" + sql_fecha(c.f_digi_inicial) +
                      ", f_digi_final=" + sql_fecha(c.f_digi_final);
    for (const CuentaConfigurada& que : CUENTAS) {
        const auto cuenta = c.cuentas.find(que.columna);
        sql += std::string(", ") + que.columna + "=" +
               sql_texto(cuenta == c.cuentas.end() ? "" : recortar(cuenta->second));
    }
    exigir(db, sql + ", elaborado=" + sql_texto(c.elaborado) + ", revisado=" + sql_texto(c.revisado) +
                   ", aprobado=" + sql_texto(c.aprobado) + donde(c.empresa, c.anio));
}

std::vector<CuentaImputable> cuentas_imputables(clsConexion& db) {
    std::vector<CuentaImputable> cuentas;
    for (const auto rs =
             db.NewRecord("select centro, n_centro from ctmcentros where activo='1' order by centro");
         !rs->eof(); rs->MoveNext())
        cuentas.push_back({recortar_fin(rs->at(0).text()), recortar_fin(rs->at(1).text())});
    return cuentas;
}

} // namespace quorvel
