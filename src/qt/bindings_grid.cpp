#include "qt/ConsultaView.h"
#include "qt/GridView.h"
#include "qt/bindings.h"

namespace quorvel::qt {

GridBinding::GridBinding(GridView& view, ui::ctlPlanilla& grid) : Binding(view, grid), view_(view) {
    view.attach(grid);
}

QWidget& GridBinding::focus_target() { return view_.focus_target(); }

void GridBinding::pull_state() { view_.sync(); }

ConsultaBinding::ConsultaBinding(ConsultaView& view, ui::ctlConsulta& list)
    : Binding(view, list), view_(view) {
    watch(view);
    view.attach(list);
}

void ConsultaBinding::pull_state() { view_.sync(); }

} // namespace quorvel::qt
