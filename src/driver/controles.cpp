#include "driver/controles.h"

#include "platform/ui/controls.h"
#include "platform/ui/ctlConsulta.h"
#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/ctlRegistro.h"
#include "platform/ui/utf8.h"
#include "screen/frmQuorvel.h"
#include "text/letras_utf8.h"

#include <climits>

namespace quorvel::driver {

ui::Form& forma(Conversacion& c, const std::string& nombre) {
    if (nombre.empty() && c.top() != nullptr) return *c.top();
    for (auto it = c.open_forms().rbegin(); it != c.open_forms().rend(); ++it)
        if (igual_sin_caso((*it)->name(), nombre)) return **it;
    for (auto& [id, o] : c.objetos) { // loaded and not shown yet
        ui::Form& pantalla = o.objeto->pantalla();
        if (nombre.empty() || igual_sin_caso(pantalla.name(), nombre)) return pantalla;
    }
    throw Rechazada(nombre.empty() ? "no form is open" : "unknown form " + nombre);
}

ui::Control& control(Conversacion& c, const std::string& nombre, bool leer) {
    const auto punto = nombre.find('.');
    ui::Form& f = forma(c, punto == std::string::npos ? "" : nombre.substr(0, punto));
    if (!leer && (!f.visible() || !c.alcanzable(f))) throw Rechazada(f.name() + " cannot be reached now");
    ui::Control* encontrado = f.find(punto == std::string::npos ? nombre : nombre.substr(punto + 1));
    if (encontrado == nullptr) throw Rechazada("unknown control " + nombre);
    return *encontrado;
}

std::string texto(const Json& pedido, const char* campo) {
    const auto it = pedido.find(campo);
    if (it == pedido.end()) throw Rechazada(std::string("missing field ") + campo);
    return it->is_string() ? it->get<std::string>() : it->dump();
}

std::int64_t entero_largo(const Json& numero) {
    if (numero.is_number_unsigned() && numero.get<std::uint64_t>() > std::uint64_t{INT64_MAX})
        throw Rechazada("number out of range " + numero.dump());
    return numero.get<std::int64_t>();
}

int entero(const Json& pedido, const char* campo) {
    const auto it = pedido.find(campo);
    if (it == pedido.end() || !it->is_number_integer())
        throw Rechazada(std::string("missing number ") + campo);
    const auto n = entero_largo(*it);
    if (n < INT_MIN || n > INT_MAX) throw Rechazada(std::string("number out of range ") + campo);
    return static_cast<int>(n);
}

namespace {

void teclear(ui::Control& k, const std::string& que) {
    for (const char32_t ch : ui::code_points(que)) {
        ui::KeyEvent e;
        e.ch = ch;
        k.send_key(e);
    }
}

ui::ctlPlanilla& grilla(Conversacion& c, const Json& pedido) {
    return operable<ui::ctlPlanilla>(c, pedido.value("control", "grdDetalle"));
}

bool existe_celda(const ui::ctlPlanilla& g, int fila, int col) {
    return fila >= 0 && fila <= g.Rows() + g.NewRowPending() && col >= 0 && col < g.Cols();
}

/// Goes to the cell as a person would. @return false when something refused to be left
bool ir(ui::ctlPlanilla& g, const Json& pedido) {
    const int fila = entero(pedido, "row"), col = entero(pedido, "col");
    if (!existe_celda(g, fila, col)) throw Rechazada("no such cell");
    if (g.Locked() && fila >= g.Rows()) throw Rechazada("the grid is locked");
    return g.SetFocus() && g.move_to(fila, col);
}

/// Types while the current cell takes the keys. @return false when the cell refused to be edited
bool teclear_celda(ui::ctlPlanilla& g, const std::string& que) {
    const int fila = g.Row(), col = g.Col();
    for (const char32_t ch : ui::code_points(que)) {
        ui::KeyEvent e;
        e.ch = ch;
        g.send_key(e);
        if (g.Row() != fila || g.Col() != col) return false; // a message has sent the person elsewhere
    }
    return true;
}

int buscar_entrada(const ui::ListControl& l, const Json& pedido) {
    if (pedido.contains("index")) {
        const int i = entero(pedido, "index");
        if (i < 0 || i >= l.ListCount()) throw Rechazada("no such entry");
        return i;
    }
    const std::string buscado = texto(pedido, "text");
    for (int i = 0; i < l.ListCount(); ++i)
        if (l.List(i) == buscado) return i;
    for (int i = 0; i < l.ListCount(); ++i)
        if (!buscado.empty() && l.List(i).starts_with(buscado)) return i;
    throw Rechazada("no entry " + buscado);
}

bool coincide(const ui::ctlConsulta& l, std::size_t fila, const Json& donde) {
    for (const auto& [columna, valor] : donde.items()) {
        const auto& nombres = l.columns();
        const auto it = std::find_if(nombres.begin(), nombres.end(),
                                     [&, c = columna](const std::string& n) { return igual_sin_caso(n, c); });
        if (it == nombres.end()) throw Rechazada("the list has no column " + columna);
        const std::string& celda = l.rows()[fila].at(static_cast<std::size_t>(it - nombres.begin()));
        if (recortar(celda) != recortar(valor.is_string() ? valor.get<std::string>() : valor.dump()))
            return false;
    }
    return true;
}

} // namespace

void op_enter(Conversacion& c, const Json& pedido, Json&) {
    const std::string nuevo = texto(pedido, "text");
    auto& k = operable<ui::TextBox>(c, texto(pedido, "control"));
    if (k.Locked()) throw Rechazada("the box is read-only");
    if (!k.SetFocus()) return;
    k.SelectAll();
    ui::KeyEvent borrar;
    borrar.key = ui::Key::del;
    k.send_key(borrar);
    teclear(k, nuevo);
    if (k.has_focus()) k.form().focus_next();
}

void op_key(Conversacion& c, const Json& pedido, Json&) {
    auto tecla = ui::parse_key(texto(pedido, "key"));
    if (!tecla) throw Rechazada("unknown key");
    ui::Form& f = forma(c, "");
    if (!f.visible()) throw Rechazada("no form is open");
    f.send_key(*tecla);
}

void op_select(Conversacion& c, const Json& pedido, Json&) {
    auto& l = operable<ui::ListControl>(c, texto(pedido, "control"));
    l.choose(buscar_entrada(l, pedido));
}

void op_click(Conversacion& c, const Json& pedido, Json&) {
    ui::Control& k = operable<ui::Control>(c, texto(pedido, "control"));
    if (auto* b = dynamic_cast<ui::CommandButton*>(&k))
        b->press();
    else if (auto* x = dynamic_cast<ui::CheckBox*>(&k))
        x->press();
    else if (auto* o = dynamic_cast<ui::OptionButton*>(&k))
        o->press();
    else if (auto* m = dynamic_cast<ui::MenuItem*>(&k))
        m->press();
    else
        throw Rechazada("nothing to click on a " + std::string(k.kind()));
}

void op_dblclick(Conversacion& c, const Json& pedido, Json&) {
    ui::Control& k = operable<ui::Control>(c, texto(pedido, "control"));
    if (auto* l = dynamic_cast<ui::ListBox*>(&k))
        l->double_click();
    else if (auto* s = dynamic_cast<ui::ctlConsulta*>(&k))
        s->pick(s->current());
    else
        throw Rechazada("nothing to double click on a " + std::string(k.kind()));
}

void op_toolbar(Conversacion& c, const Json& pedido, Json&) {
    static constexpr const char* NOMBRES[] = {"New", "Save", "DeleteLine", "Print", "Search", "Exit"};
    const std::string funcion = texto(pedido, "function");
    for (std::size_t i = 0; i < std::size(NOMBRES); ++i) {
        if (!igual_sin_caso(NOMBRES[i], funcion)) continue;
        auto& barra = unico<ui::ctlRegistro>(c);
        const auto f = static_cast<ui::ctlRegistro::Function>(i);
        if (!barra.enabled(f)) throw Rechazada(funcion + " is disabled");
        barra.press(f);
        return;
    }
    throw Rechazada("unknown function " + funcion);
}

void op_cell(Conversacion& c, const Json& pedido, Json&) {
    const std::string nuevo = texto(pedido, "text");
    ui::ctlPlanilla& g = grilla(c, pedido);
    if (g.Locked()) throw Rechazada("the grid is locked");
    if (!ir(g, pedido)) return;
    if (nuevo.empty()) {
        if (g.Value(g.Col()).empty() || !g.begin_edit(false)) return;
        g.set_edit_text("");
    } else {
        if (g.EditActive()) g.set_edit_text("");
        if (!teclear_celda(g, nuevo)) return;
    }
    if (g.EditActive()) g.commit_edit();
}

/// A text as a whole, as from the clipboard: into a box in place of what it holds, into the grid from the
/// cell.
void op_paste(Conversacion& c, const Json& pedido, Json&) {
    const std::string que = texto(pedido, "text");
    if (pedido.contains("row")) {
        ui::ctlPlanilla& g = grilla(c, pedido);
        if (g.Locked()) throw Rechazada("the grid is locked");
        if (ir(g, pedido)) g.paste(que);
        return;
    }
    auto& k = operable<ui::TextBox>(c, texto(pedido, "control"));
    if (k.Locked()) throw Rechazada("the box is read-only");
    if (!k.SetFocus()) return;
    k.SelectAll();
    k.paste(que);
}

void op_goto(Conversacion& c, const Json& pedido, Json&) { ir(grilla(c, pedido), pedido); }

void op_cellbutton(Conversacion& c, const Json& pedido, Json&) {
    ui::ctlPlanilla& g = grilla(c, pedido);
    const int fila = entero(pedido, "row"), col = entero(pedido, "col");
    if (!existe_celda(g, fila, col)) throw Rechazada("no such cell");
    if (!g.Columns(col).Button) throw Rechazada("the column has no button");
    g.press_button(fila, col);
}

void op_pick(Conversacion& c, const Json& pedido, Json&) {
    auto& l = unico<ui::ctlConsulta>(c);
    if (pedido.contains("index")) {
        const int i = entero(pedido, "index");
        while (i >= static_cast<int>(l.rows().size()) && l.more()) {
        }
        if (i < 0 || i >= static_cast<int>(l.rows().size())) throw Rechazada("no such row");
        return l.pick(i);
    }
    const Json donde = pedido.value("where", Json::object());
    if (!donde.is_object() || donde.empty()) throw Rechazada("pick wants where or index");
    for (std::size_t i = 0;; ++i) {
        while (i >= l.rows().size())
            if (!l.more()) throw Rechazada("no such row");
        if (coincide(l, i, donde)) return l.pick(static_cast<int>(i));
    }
}

void op_cancel(Conversacion& c, const Json&, Json&) {
    if (c.espera() == Espera::pregunta) return c.responder(ui::Answer::no);
    if (c.espera() != Espera::reposo) return c.responder_archivo(std::nullopt);
    if (c.top() == nullptr) throw Rechazada("no form is open");
    ui::Form& f = *c.top();
    for (ui::Control* k : f.controls())
        if (auto* l = dynamic_cast<ui::ctlConsulta*>(k)) return l->cancel();
    for (const char* nombre : {"cmdcancelar", "cmdCancel"})
        if (auto* b = dynamic_cast<ui::CommandButton*>(f.find(nombre))) {
            b->Click(); // leaving without a choice checks no box
            return;
        }
    f.close_by_user();
}

} // namespace quorvel::driver
