#pragma once
#include "driver/conversacion.h"
#include "platform/ui/form.h"

#include <string>

namespace quorvel::driver {

/// An open or loaded form by name; the top one when the name is empty. @throws Rechazada
[[nodiscard]] ui::Form& forma(Conversacion& c, const std::string& nombre);
/// A control "name" or "form.name". @param leer also of forms that a person cannot reach now
[[nodiscard]] ui::Control& control(Conversacion& c, const std::string& nombre, bool leer = false);
/// The same, on and visible, of the wanted kind.
template <class C> C& operable(Conversacion& c, const std::string& nombre) {
    ui::Control& encontrado = control(c, nombre);
    auto* k = dynamic_cast<C*>(&encontrado);
    if (k == nullptr) throw Rechazada(nombre + " is a " + std::string(encontrado.kind()));
    if (!k->Enabled() || !k->Visible()) throw Rechazada(nombre + " is disabled or hidden");
    return *k;
}
/// The first control of a kind on the top form.
template <class C> C& unico(Conversacion& c) {
    const ui::Form& f = forma(c, "");
    if (!f.visible()) throw Rechazada("no form is open");
    for (ui::Control* k : f.controls())
        if (auto* buscado = dynamic_cast<C*>(k)) return *buscado;
    throw Rechazada("the form on top has no such control");
}
[[nodiscard]] std::string texto(const Json& pedido, const char* campo);
/// A whole number of 64 bits. @throws Rechazada beyond them
[[nodiscard]] std::int64_t entero_largo(const Json& numero);
[[nodiscard]] int entero(const Json& pedido, const char* campo);

// What a person does with a control.
void op_enter(Conversacion& c, const Json& pedido, Json& respuesta);
void op_key(Conversacion& c, const Json& pedido, Json& respuesta);
void op_select(Conversacion& c, const Json& pedido, Json& respuesta);
void op_click(Conversacion& c, const Json& pedido, Json& respuesta);
void op_dblclick(Conversacion& c, const Json& pedido, Json& respuesta);
void op_toolbar(Conversacion& c, const Json& pedido, Json& respuesta);
void op_cell(Conversacion& c, const Json& pedido, Json& respuesta);
void op_paste(Conversacion& c, const Json& pedido, Json& respuesta);
void op_goto(Conversacion& c, const Json& pedido, Json& respuesta);
void op_cellbutton(Conversacion& c, const Json& pedido, Json& respuesta);
void op_pick(Conversacion& c, const Json& pedido, Json& respuesta);
void op_cancel(Conversacion& c, const Json& pedido, Json& respuesta);

} // namespace quorvel::driver
