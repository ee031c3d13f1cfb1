// What a form shows, as data.
#include "driver/conversacion.h"
#include "platform/ui/controls.h"
#include "platform/ui/ctlConsulta.h"
#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/ctlRegistro.h"
#include "platform/ui/form.h"

namespace quorvel::driver {

namespace {

Json lista(const ui::ListControl& l) {
    Json entradas = Json::array();
    for (int i = 0; i < l.ListCount(); ++i) entradas.push_back(l.List(i));
    return entradas;
}

Json columnas(const ui::ctlPlanilla& g) {
    Json todas = Json::array();
    for (int i = 0; i < g.Cols(); ++i) {
        const auto& c = g.Columns(i);
        todas.push_back({{"caption", c.Caption},
                         {"width", c.Width},
                         {"alignment", c.Alignment},
                         {"numberformat", c.NumberFormat},
                         {"button", c.Button}});
    }
    return todas;
}

void planilla(const ui::ctlPlanilla& g, Json& j) {
    Json filas = Json::array();
    for (int i = 0; i < g.Rows(); ++i) {
        Json fila = Json::array();
        for (int col = 0; col < g.Cols(); ++col) fila.push_back(g.TextMatrix(i, col));
        filas.push_back(std::move(fila));
    }
    j["columns"] = columnas(g);
    j["rows"] = std::move(filas);
    j["row"] = g.Row();
    j["col"] = g.Col();
    j["locked"] = g.Locked();
    j["editactive"] = g.EditActive();
    j["newrowpending"] = g.NewRowPending();
    j["pending"] = g.NewRowPending() ? Json(g.pending_cells()) : Json::array();
    if (g.EditActive()) j["edit"] = g.edit_text();
    if (!g.hint().empty()) j["hint"] = g.hint();
}

void registro(const ui::ctlRegistro& r, Json& j) {
    j["company"] = r.Company();
    j["user"] = r.User();
    j["program"] = r.Program();
    j["printer"] = r.Printer();
    j["flags"] = Json::array();
    for (int i = 0; i < 5; ++i) j["flags"].push_back(r.Flag(i));
    j["print"] = r.PrintEnabled();
    j["deleteline"] = r.DeleteLineEnabled();
    j["modify"] = r.ModifyEnabled();
    if (!r.Notice().empty()) j["notice"] = r.Notice();
}

} // namespace

Json estado_control(const ui::Control& control) {
    Json j{{"kind", control.kind()}, {"enabled", control.Enabled()}, {"visible", control.Visible()}};
    if (!control.ToolTip().empty()) j["tooltip"] = control.ToolTip();
    if (const auto* t = dynamic_cast<const ui::TextBox*>(&control)) j["text"] = t->Text();
    if (const auto* l = dynamic_cast<const ui::ListControl*>(&control)) {
        j["text"] = l->Text();
        j["list"] = lista(*l);
        j["index"] = l->ListIndex();
    }
    if (const auto* c = dynamic_cast<const ui::Captioned*>(&control)) j["caption"] = c->Caption();
    if (const auto* c = dynamic_cast<const ui::CheckBox*>(&control)) j["value"] = c->Value();
    if (const auto* o = dynamic_cast<const ui::OptionButton*>(&control)) j["value"] = o->Value();
    if (const auto* g = dynamic_cast<const ui::ctlPlanilla*>(&control)) planilla(*g, j);
    if (const auto* r = dynamic_cast<const ui::ctlRegistro*>(&control)) registro(*r, j);
    if (const auto* c = dynamic_cast<const ui::ctlConsulta*>(&control)) {
        j["sql"] = c->SQL();
        j["orderby"] = c->OrderBy();
        j["columns"] = c->columns();
        j["rows"] = c->rows();
    }
    return j;
}

Json estado_forma(const ui::Form& forma) {
    Json controles = Json::object();
    for (const ui::Control* c : forma.controls()) controles[c->name()] = estado_control(*c);
    return {{"form", forma.name()},
            {"caption", forma.Caption()},
            {"visible", forma.visible()},
            {"controls", std::move(controles)}};
}

} // namespace quorvel::driver
