#pragma once
#include "apoyo/comprobante.h"
#include "apoyo/pantalla.h"

#include <gtest/gtest.h>

namespace quorvel::apoyo {

/// The opened voucher screen with its messages as one text.
struct PantallaAbierta : pruebas::Pantalla {
    explicit PantallaAbierta(Motor motor) : Pantalla(motor) { abrir(); }
    pruebas::EscritorioGuion& e = escritorio;
    /// The messages since the last call, joined.
    std::string mensajes() {
        std::string todo;
        for (const std::string& m : e.tomar_mensajes()) todo += (todo.empty() ? "" : " / ") + m;
        return todo;
    }
};

/// Types into a box of the form and leaves it.
inline void escribir(ui::Form& f, const char* control, const std::string& texto) {
    auto* const caja = dynamic_cast<ui::TextBox*>(f.find(control));
    ASSERT_TRUE(caja != nullptr && caja->SetFocus()) << control;
    caja->user_edit(texto);
    f.commit_active();
}
inline void elegir(ui::Form& f, const char* control, const std::string& texto) {
    auto* const lista = dynamic_cast<ui::ListControl*>(f.find(control));
    ASSERT_TRUE(lista != nullptr) << control;
    for (int i = 0; i < lista->ListCount(); ++i)
        if (lista->List(i) == texto) {
            ASSERT_TRUE(lista->choose(i)) << control;
            return;
        }
    FAIL() << control << " does not offer " << texto;
}
inline void pulsar(ui::Form& f, const char* control) {
    auto* const boton = dynamic_cast<ui::CommandButton*>(f.find(control));
    ASSERT_TRUE(boton != nullptr && boton->press()) << control;
}
/// What a box, list or label shows.
inline std::string texto(const ui::Form& f, const char* control) {
    const ui::Control* const c = f.find(control);
    if (const auto* t = dynamic_cast<const ui::TextBox*>(c)) return t->Text();
    if (const auto* l = dynamic_cast<const ui::ListControl*>(c)) return l->Text();
    if (const auto* r = dynamic_cast<const ui::Captioned*>(c)) return r->Caption();
    ADD_FAILURE() << control;
    return "";
}

} // namespace quorvel::apoyo
