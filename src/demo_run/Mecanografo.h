#pragma once
#include "app/teclado.h"
#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/form.h"

namespace quorvel::demo_run {

/// Fills in forms by keys alone.
class Mecanografo {
public:
    explicit Mecanografo(app::Teclado& teclado) : t(teclado) {}
    app::Teclado& t;

    /// Tab until the named control has the focus.
    bool ir_a(const ui::Form& forma, const std::string& nombre);
    void campo(const ui::Form& forma, const std::string& nombre, const std::string& texto);
    /// Goes to a button and presses it.
    void boton(const ui::Form& forma, const std::string& nombre);
    /// The screen skips cells that an account does not use, so the goal is a column, not a number of tabs.
    void celda(const ui::ctlPlanilla& grilla, int columna, const std::string& texto);
    /// The cells from the column on, then the next row.
    void renglon(const ui::ctlPlanilla& grilla, int desde, const std::vector<std::string>& textos);
};

} // namespace quorvel::demo_run
