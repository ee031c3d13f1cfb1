#include "empresa/plan.h"

#include "empresa/configuracion_anual.h"
#include "platform/db/literal.h"
#include "platform/files/tabla_csv.h"
#include "text/letras_utf8.h"

#include <algorithm>
#include <map>
#include <set>

namespace quorvel {
namespace {

constexpr std::size_t LARGO_CODIGO = 20, LARGO_NOMBRE = 50, NIVELES = 10;

struct Tipo {
    const char* nombre;
    bool de_resultado;
};
constexpr Tipo TIPOS[] = {
    {"activo", false}, {"pasivo", false}, {"patrimonio", false}, {"ingreso", true}, {"gasto", true}};

/// Reads the cells of one line into an account and tells what is wrong with them.
class LectorCuenta {
public:
    LectorCuenta(Plan& plan, const TablaCsv& tabla) : plan_(plan), tabla_(tabla) {}
    void leer(const FilaCsv& fila) {
        CuentaPlan c;
        c.linea = fila.linea;
        c.codigo = reemplazar(celda(fila, "cuenta"), ".", "");
        c.nombre = celda(fila, "nombre");
        const std::size_t antes = plan_.errores.size();
        revisar_codigo(c);
        if (c.nombre.empty()) error(c, "nombre", "falta");
        if (largo(c.nombre) > LARGO_NOMBRE) error(c, "nombre", "tiene más de 50 letras");
        leer_tipo(c, sin_acentos(celda(fila, "tipo")));
        leer_auxiliar(c, sin_acentos(celda(fila, "auxiliar")));
        leer_uso(c, celda(fila, "uso"));
        if (plan_.errores.size() == antes) plan_.cuentas.push_back(std::move(c));
    }

private:
    [[nodiscard]] std::string celda(const FilaCsv& fila, const char* columna) const {
        const auto i = tabla_.columna(columna);
        return i && *i < fila.celdas.size() ? recortar(sin_controles(fila.celdas[*i])) : std::string();
    }
    void error(const CuentaPlan& c, const char* campo, const std::string& mensaje) {
        plan_.errores.push_back({c.linea, campo, mensaje});
    }
    void revisar_codigo(CuentaPlan& c) {
        if (c.codigo.empty()) return error(c, "cuenta", "falta");
        const bool digitos = std::ranges::all_of(c.codigo, [](char x) { return x >= '0' && x <= '9'; });
        if (!digitos) error(c, "cuenta", "\"" + c.codigo + "\" no es un código de dígitos");
        if (c.codigo.size() > LARGO_CODIGO) error(c, "cuenta", "tiene más de 20 dígitos");
        const auto [antes, nueva] = lineas_.emplace(c.codigo, c.linea);
        if (!nueva) error(c, "cuenta", c.codigo + " está repetida: línea " + std::to_string(antes->second));
        c.grupo = c.codigo.substr(0, 1);
    }
    void leer_tipo(CuentaPlan& c, const std::string& texto) {
        const auto tipo = std::ranges::find_if(TIPOS, [&](const Tipo& t) { return texto == t.nombre; });
        if (tipo == std::end(TIPOS))
            return error(c, "tipo", "\"" + texto + "\" no es activo, pasivo, patrimonio, ingreso ni gasto");
        c.de_resultado = tipo->de_resultado;
        if (grupos_.emplace(c.grupo, c.de_resultado).first->second != c.de_resultado)
            error(c, "tipo", "el grupo " + c.grupo + " mezcla cuentas de balance y de resultado");
    }
    void leer_auxiliar(CuentaPlan& c, const std::string& texto) {
        c.auxiliar = texto == "1" || texto == "si" || texto == "s";
        if (!c.auxiliar && !texto.empty() && texto != "0" && texto != "no" && texto != "n")
            error(c, "auxiliar", "\"" + texto + "\" no es 1 ni 0");
    }
    void leer_uso(CuentaPlan& c, const std::string& texto) {
        c.uso = texto;
        if (texto.empty()) return;
        if (cuenta_configurada(texto) == nullptr)
            return error(c, "uso", "\"" + texto + "\" no es un uso conocido");
        const auto [antes, nuevo] = usos_.emplace(texto, c.linea);
        if (!nuevo) error(c, "uso", texto + " está repetido: línea " + std::to_string(antes->second));
    }

    Plan& plan_;
    const TablaCsv& tabla_;
    std::map<std::string, int> lineas_, usos_;
    std::map<std::string, bool> grupos_;
};

/// Lengths of the codes are the levels.
std::string formato_de(const std::set<std::size_t>& largos) {
    std::string formato;
    std::size_t antes = 0;
    for (const std::size_t l : largos) {
        formato += (antes > 0 ? "." : "") + std::string(l - antes, '9');
        antes = l;
    }
    return formato;
}

void marcar_titulos(Plan& plan) {
    std::set<std::string> codigos;
    std::set<std::size_t> largos;
    for (const CuentaPlan& c : plan.cuentas) {
        codigos.insert(c.codigo);
        largos.insert(c.codigo.size());
    }
    if (largos.size() > NIVELES)
        plan.errores.push_back({1, "cuenta", "los códigos tienen más de 10 largos distintos"});
    plan.formato = formato_de(largos);
    for (CuentaPlan& c : plan.cuentas) {
        const auto siguiente = codigos.upper_bound(c.codigo);
        c.imputable = siguiente == codigos.end() || !siguiente->starts_with(c.codigo);
        const CuentaConfigurada* const uso = cuenta_configurada(c.uso);
        if (uso == nullptr) continue;
        const auto reparo =
            reparo_de_cuenta(*uso, c.codigo, FichaCuenta{c.imputable, c.auxiliar, c.de_resultado});
        if (reparo && reparo->grave) plan.errores.push_back({c.linea, "uso", reparo->mensaje});
    }
}

void exigir(clsConexion& db, const std::string& sql) {
    if (db.executesql(sql) < 1) throw ErrorSesion(db.last_error(), sql);
}

std::string nombre_de_grupo(const Plan& plan, const CuentaPlan& c) {
    for (const CuentaPlan& titulo : plan.cuentas)
        if (titulo.codigo == c.grupo) return titulo.nombre;
    return c.de_resultado ? "RESULTADO" : "BALANCE";
}

} // namespace

std::string ErrorPlan::texto() const {
    return "línea " + std::to_string(linea) + ", " + campo + ": " + mensaje;
}

Plan leer_plan(std::string_view bytes) {
    Plan plan;
    const TablaCsv tabla = leer_tabla_csv(bytes);
    if (tabla.byte_ajeno) {
        plan.errores.push_back({*tabla.byte_ajeno, "texto", "hay letras que no son UTF-8 ni Windows-1252"});
        return plan;
    }
    for (const char* const columna : {"cuenta", "nombre", "tipo"})
        if (!tabla.columna(columna)) plan.errores.push_back({1, columna, "falta la columna"});
    if (!plan.errores.empty()) return plan;
    LectorCuenta lector(plan, tabla);
    for (const FilaCsv& fila : tabla.filas) lector.leer(fila);
    if (plan.cuentas.empty() && plan.errores.empty())
        plan.errores.push_back({2, "cuenta", "el archivo no tiene cuentas"});
    marcar_titulos(plan);
    return plan;
}

std::vector<ErrorPlan> comparar_plan(clsConexion& db, const Plan& plan) {
    std::vector<ErrorPlan> errores;
    std::map<std::string, std::string> cuentas, grupos;
    for (const auto rs = db.NewRecord("select centro, n_centro from ctmcentros"); !rs->eof(); rs->MoveNext())
        cuentas[recortar_fin(rs->at(0).text())] = recortar_fin(rs->at(1).text());
    for (const auto rs = db.NewRecord("select g_cuenta, transitorio from ctmgcuenta"); !rs->eof();
         rs->MoveNext())
        grupos[recortar_fin(rs->at(0).text())] = recortar_fin(rs->at(1).text());
    for (const CuentaPlan& c : plan.cuentas) {
        const auto cuenta = cuentas.find(c.codigo);
        if (cuenta != cuentas.end() && !igual_sin_caso(cuenta->second, c.nombre))
            errores.push_back({c.linea, "nombre", c.codigo + " ya existe como " + cuenta->second});
        const auto grupo = grupos.find(c.grupo);
        if (grupo != grupos.end() && (grupo->second == "1") != c.de_resultado)
            errores.push_back(
                {c.linea, "tipo",
                 "el grupo " + c.grupo + " de la base es de " + (c.de_resultado ? "balance" : "resultado")});
    }
    return errores;
}

int agregar_plan(clsConexion& db, const Plan& plan) {
    std::set<std::string> hay;
    for (const auto rs = db.NewRecord("select centro from ctmcentros"); !rs->eof(); rs->MoveNext())
        hay.insert(recortar_fin(rs->at(0).text()));
    std::set<std::string> grupos;
    for (const auto rs = db.NewRecord("select g_cuenta from ctmgcuenta"); !rs->eof(); rs->MoveNext())
        grupos.insert(recortar_fin(rs->at(0).text()));
    const std::string niveles = sql_numero(1 + std::ranges::count(plan.formato, '.'));
    const std::string longitud =
        sql_numero(static_cast<std::int64_t>(plan.formato.size()) - std::ranges::count(plan.formato, '.'));
    int agregadas = 0;
    for (const CuentaPlan& c : plan.cuentas) {
        if (grupos.insert(c.grupo).second)
            exigir(db, "insert into "
                       "ctmgcuenta(g_cuenta,n_g_cuenta,transitorio,formato_centro,num_nivel,longitud) values "
                       "(" +
                           sql_texto(c.grupo) + "," + sql_texto(nombre_de_grupo(plan, c)) + "," +
                           (c.de_resultado ? "'1'," : "'0',") + sql_texto(plan.formato) + "," + niveles +
                           "," + longitud + ")");
        if (!hay.insert(c.codigo).second) continue;
        exigir(db, "insert into ctmcentros(centro,n_centro,g_cuenta,activo,req_auxiliar) values (" +
                       sql_texto(c.codigo) + "," + sql_texto(c.nombre) + "," + sql_texto(c.grupo) +
                       (c.imputable ? ",'1'," : ",'0',") + (c.auxiliar ? "'1')" : "'0')"));
        ++agregadas;
    }
    return agregadas;
}

} // namespace quorvel
