#include "qt/ConsultaView.h"
#include "qt/GridView.h"
#include "qt/bindings.h"

namespace quorvel::qt {

GridBinding::GridBinding(GridView& view, ui::ctlPlanilla& grid) : Binding(view, grid), view_(view) {
    view.attach(grid);
}

GridBinding::~GridBinding() { view_.detach(); }

void GridBinding::detach() {
    Binding::detach();
    view_.detach();
}

QWidget& GridBinding::focus_target() { return view_.focus_target(); }

void GridBinding::pull_state() { view_.sync(); }

ConsultaBinding::ConsultaBinding(ConsultaView& view, ui::ctlConsulta& list)
    : Binding(view, list), view_(view) {
    watch(view);
    view.attach(list);
}

ConsultaBinding::~ConsultaBinding() { view_.detach(); }

void ConsultaBinding::detach() {
    Binding::detach();
    view_.detach();
}

void ConsultaBinding::pull_state() { view_.sync(); }

} // namespace quorvel::qt
