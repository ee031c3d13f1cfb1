#include "historia/cadena.h"

#include "historia/leer.h"
#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <regex>

namespace quorvel {
namespace {

constexpr std::size_t DIGITOS = 8;

struct Cabeza {
    std::int64_t numero = 0;
    std::string huella;
};

std::optional<Cabeza> leer_cabeza(clsConexion& db, int empresa) {
    if (!db.has_table("ctmhistoria")) return std::nullopt;
    const auto rs =
        db.NewRecord("select numero, huella from ctmhistoria where empresa=" + sql_numero(empresa));
    if (rs->eof()) return std::nullopt;
    return Cabeza{rs->at(0).integer(), rs->at(1).text()};
}

std::string nombrar(const Version& v) {
    std::string texto = "la versión " + std::to_string(v.numero);
    if (v.clave.empty()) return texto + " (" + v.operacion + ")";
    return texto + " (" + v.operacion + ", comprobante " + v.clave + ")";
}

std::string codigo(int empresa, std::int64_t numero, const std::string& huella) {
    return std::to_string(empresa) + "-" + std::to_string(numero) + "-" + huella.substr(0, DIGITOS);
}

} // namespace

std::optional<std::string> romper_cadena(clsConexion& db, int empresa) {
    std::optional<std::string> rota;
    Version antes;
    std::string huella;
    if (db.has_table("ctdhistoria"))
        recorrer_versiones(db, empresa, [&](const Version& v) {
            if (rota) return;
            if (v.numero != antes.numero + 1)
                rota = "falta la versión " + std::to_string(antes.numero + 1);
            else if (v.anterior != huella)
                rota =
                    antes.numero == 0 ? nombrar(v) + " no es la primera" : nombrar(antes) + " fue cambiada";
            antes = v;
            huella = huella_de(empresa, v);
        });
    if (rota) return rota;
    const auto cabeza = leer_cabeza(db, empresa);
    if (!cabeza) return antes.numero == 0 ? rota : "falta su cabecera en ctmhistoria";
    if (cabeza->numero > antes.numero)
        return "faltan las últimas versiones: llegaba a la " + std::to_string(cabeza->numero) +
               " y hay hasta la " + std::to_string(antes.numero);
    if (cabeza->numero < antes.numero)
        return "su cabecera es de antes de la versión " + std::to_string(antes.numero);
    if (cabeza->huella != huella) return nombrar(antes) + " fue cambiada";
    return rota;
}

std::string codigo_historia(clsConexion& db, int empresa) {
    const auto cabeza = leer_cabeza(db, empresa);
    return cabeza && cabeza->numero > 0 ? codigo(empresa, cabeza->numero, cabeza->huella) : "";
}

std::string codigo_historia(clsConexion& db, int empresa, Fecha desde, Fecha hasta) {
    if (!db.has_table("ctdhistoria")) return {};
    const auto rs = db.NewRecord(
        "select max(numero) as n from ctdhistoria where empresa=" + sql_numero(empresa) +
        " and clave>=" + sql_texto(fecha_iso(desde)) + " and clave<" + sql_texto(fecha_iso(hasta) + "~"));
    const auto v = leer_version(db, empresa, rs->eof() ? 0 : rs->at(0).integer());
    return v ? codigo(empresa, v->numero, huella_de(empresa, *v)) : "";
}

std::string comparar_codigo(clsConexion& db, const std::string& codigo) {
    static const std::regex FORMA("([0-9]{1,6})-([0-9]{1,18})-([0-9a-fA-F]{8,64})");
    std::smatch m;
    if (!std::regex_match(codigo, m, FORMA)) return "\"" + codigo + "\" no es un código de historia";
    const int empresa = static_cast<int>(val_entero(m[1].str()));
    const auto v =
        db.has_table("ctdhistoria") ? leer_version(db, empresa, val_entero(m[2].str())) : std::nullopt;
    if (!v)
        return "La historia no llega a la versión " + m[2].str() +
               ": es un respaldo anterior, o se quitaron las últimas";
    if (huella_de(empresa, *v).starts_with(minusculas(m[3].str()))) return {};
    return "La versión " + m[2].str() +
           " no es la que había: es otra base, un respaldo anterior en el que se siguió trabajando, o fue "
           "cambiada";
}

} // namespace quorvel
