#include "driver/controles.h"
#include "platform/report/definition.h"
#include "screen/abrir.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"

#include <array>

namespace quorvel::driver {

namespace {

Variant a_variant(const Json& j) {
    if (j.is_null()) return {};
    if (j.is_boolean()) return std::int64_t{j.get<bool>()};
    if (j.is_number_integer()) return entero_largo(j);
    if (j.is_number()) return j.get<double>();
    if (j.is_string()) return j.get<std::string>();
    throw Rechazada("an argument is a text, a number or null");
}

Json a_json(const Variant& v) {
    if (const auto* n = std::get_if<std::int64_t>(&v)) return *n;
    if (const auto* d = std::get_if<double>(&v)) return *d;
    if (const auto* t = std::get_if<std::string>(&v)) return *t;
    if (const auto* s = std::get_if<clsConexion*>(&v)) return *s ? Json((*s)->Name()) : Json();
    return nullptr;
}

Json invocar(ObjetoHost& o, const std::string& miembro, Llamada llamada,
             const std::vector<Variant>& argumentos) {
    int id = 0;
    if (fallo(o.GetIDsOfNames(miembro, id))) throw Rechazada("unknown member " + miembro);
    Variant resultado;
    const Estado e = o.Invoke(id, llamada, argumentos, &resultado);
    // what is pending is done before the reply is written
    if (fallo(e) && e != E_PENDING) throw Rechazada(o.descripcion_error());
    return a_json(resultado);
}

std::unique_ptr<clsConexion> sesion_informes(const Conversacion& c, const std::string& texto_conexion) {
    if (texto_conexion.starts_with("postgres")) return abrir_sesion(texto_conexion);
    auto sesion = abrir_sesion_informes(texto_conexion);
    report::instalar_definiciones(std::filesystem::path(sesion->Name()).parent_path(),
                                  c.opciones.definiciones);
    return sesion;
}

void op_create(Conversacion& c, const Json& p, Json& respuesta) {
    Objeto o;
    o.db = abrir_sesion(texto(p, "db"));
    if (p.contains("reportdb")) o.reportdb = sesion_informes(c, texto(p, "reportdb"));
    if (p.contains("today")) {
        const auto hoy = leer_fecha(texto(p, "today"));
        if (!hoy) throw Rechazada("today is no date");
        o.reloj = std::make_unique<RelojFijo>(*hoy);
    } else {
        o.reloj = std::make_unique<RelojSistema>();
    }
    const std::filesystem::path carpeta = p.value("folder", std::string("."));
    o.impresor = c.opciones.impresor(p.value("printdir", carpeta.string()),
                                     [&c](const std::string& archivo) { c.impresos.push_back(archivo); });
    o.objeto = crear_objeto(texto(p, "class"), Servicios{c, *o.reloj, *o.impresor, carpeta});
    if (!o.objeto) throw Rechazada("unknown class " + texto(p, "class"));
    invocar(*o.objeto, "glbdb", Llamada::poner, {o.db.get()});
    if (o.reportdb) invocar(*o.objeto, "glbdbReport", Llamada::poner, {o.reportdb.get()});
    const Json props = p.value("props", Json::object());
    for (const auto& [nombre, valor] : props.items())
        invocar(*o.objeto, nombre, Llamada::poner, {a_variant(valor)});
    const int id = c.objetos.empty() ? 1 : c.objetos.rbegin()->first + 1;
    c.objetos.emplace(id, std::move(o));
    respuesta["object"] = id;
}

void op_call(Conversacion& c, const Json& p, Json& respuesta) {
    std::vector<Variant> argumentos;
    for (const Json& a : p.value("args", Json::array())) argumentos.push_back(a_variant(a));
    const Json valor = invocar(*c.objeto(p).objeto, texto(p, "member"), Llamada::metodo, argumentos);
    if (!valor.is_null()) respuesta["value"] = valor;
}

void op_getprop(Conversacion& c, const Json& p, Json& respuesta) {
    respuesta["value"] = invocar(*c.objeto(p).objeto, texto(p, "member"), Llamada::leer, {});
}

void op_setprop(Conversacion& c, const Json& p, Json&) {
    if (!p.contains("value")) throw Rechazada("missing field value");
    invocar(*c.objeto(p).objeto, texto(p, "member"), Llamada::poner, {a_variant(p.at("value"))});
}

void op_answer(Conversacion& c, const Json& p, Json&) {
    const std::string boton = texto(p, "button");
    if (boton == "yes" || boton == "ok") return c.responder(ui::Answer::yes);
    if (boton == "no" || boton == "cancel") return c.responder(ui::Answer::no);
    throw Rechazada("unknown button " + boton);
}

void op_file(Conversacion& c, const Json& p, Json&) {
    if (p.value("cancel", false)) return c.responder_archivo(std::nullopt);
    c.responder_archivo(texto(p, "path"));
}

void op_state(Conversacion& c, const Json& p, Json& respuesta) {
    if (p.contains("control")) {
        const std::string prefijo = p.contains("form") ? texto(p, "form") + "." : "";
        respuesta["value"] = estado_control(control(c, prefijo + texto(p, "control"), true));
    } else {
        respuesta["value"] = estado_forma(forma(c, p.contains("form") ? texto(p, "form") : ""));
    }
}

Json celda(const Value& v) {
    if (v.null()) return nullptr;
    if (v.is_integer()) return v.integer();
    if (v.is_double()) return v.number();
    return v.text();
}

void op_sql(Conversacion& c, const Json& p, Json& respuesta) {
    Objeto& o = c.objeto(p);
    const std::string cual = p.value("db", "main");
    clsConexion* db = cual == "report" ? o.reportdb.get() : cual == "main" ? o.db.get() : nullptr;
    if (db == nullptr) throw Rechazada("no session " + cual);
    const std::string consulta = texto(p, "query");
    if (!minusculas(recortar(consulta)).starts_with("select")) throw Rechazada("only a select is run");
    Json filas = Json::array();
    const auto rs = db->NewRecord(consulta);
    for (; !rs->eof(); rs->MoveNext()) {
        Json fila = Json::object();
        const auto& columnas = rs->columns();
        for (std::size_t i = 0; i < columnas.size(); ++i)
            if (!fila.contains(columnas[i].name)) fila[columnas[i].name] = celda(rs->at(i));
        filas.push_back(std::move(fila));
    }
    respuesta["value"] = std::move(filas);
}

/// The voucher screen, when a person could reach it.
frmQuorvel& pantalla_alcanzable(const Conversacion& c, Objeto& o) {
    frmQuorvel& pantalla = o.objeto->pantalla();
    if (!pantalla.visible() || !c.alcanzable(pantalla)) throw Rechazada("the voucher screen is not in front");
    return pantalla;
}

void op_register(Conversacion& c, const Json& p, Json&) {
    abrir_registro(pantalla_alcanzable(c, c.objeto(p)));
}

void op_drop(Conversacion& c, const Json& p, Json&) {
    const std::string ruta = texto(p, "path");
    pantalla_alcanzable(c, c.objeto(p)).drop_file(ruta);
}

void op_quit(Conversacion& c, const Json&, Json&) { c.terminar(); }

/// When an operation can be asked for: the host's at any time, the person's only while no question and no
/// file dialog waits.
enum class Cuando { siempre, reposo };
struct Operacion {
    std::string_view nombre;
    void (*hacer)(Conversacion&, const Json&, Json&);
    Cuando cuando;
};
constexpr std::array OPERACIONES{
    Operacion{"create", op_create, Cuando::siempre},
    Operacion{"call", op_call, Cuando::siempre},
    Operacion{"getprop", op_getprop, Cuando::siempre},
    Operacion{"setprop", op_setprop, Cuando::siempre},
    Operacion{"enter", op_enter, Cuando::reposo},
    Operacion{"key", op_key, Cuando::reposo},
    Operacion{"select", op_select, Cuando::reposo},
    Operacion{"click", op_click, Cuando::reposo},
    Operacion{"dblclick", op_dblclick, Cuando::reposo},
    Operacion{"toolbar", op_toolbar, Cuando::reposo},
    Operacion{"cell", op_cell, Cuando::reposo},
    Operacion{"paste", op_paste, Cuando::reposo},
    Operacion{"goto", op_goto, Cuando::reposo},
    Operacion{"cellbutton", op_cellbutton, Cuando::reposo},
    Operacion{"pick", op_pick, Cuando::reposo},
    Operacion{"cancel", op_cancel, Cuando::siempre},
    Operacion{"answer", op_answer, Cuando::siempre},
    Operacion{"file", op_file, Cuando::siempre},
    Operacion{"state", op_state, Cuando::siempre},
    Operacion{"sql", op_sql, Cuando::siempre},
    Operacion{"drop", op_drop, Cuando::reposo},
    Operacion{"register", op_register, Cuando::reposo},
    Operacion{"quit", op_quit, Cuando::siempre},
};

} // namespace

void ejecutar(Conversacion& c, const Json& pedido, Json& respuesta) {
    const std::string op = texto(pedido, "op");
    for (const Operacion& o : OPERACIONES) {
        if (o.nombre != op) continue;
        if (o.cuando == Cuando::reposo && c.espera() != Espera::reposo)
            throw Rechazada("a dialog waits for its answer");
        return o.hacer(c, pedido, respuesta);
    }
    throw Rechazada("unknown operation " + op);
}

} // namespace quorvel::driver
