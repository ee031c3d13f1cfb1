#include "demo/registro_demo.h"
#include "demo_run/escenas.h"
#include "qt/FormWindow.h"
#include "screen/frmQuorvel.h"

#include <fstream>

namespace quorvel::demo_run {

namespace {

void contrapartes(Estudio& e, QWidget& w) {
    const ui::Form& forma = dynamic_cast<qt::FormWindow&>(w).form();
    const auto& lista = dynamic_cast<const ui::ctlPlanilla&>(*forma.find("grdContrapartes"));
    e.m.celda(lista, 4, "502006");
    e.m.t.tecla(Qt::Key_Return);
    e.m.t.tecla(Qt::Key_F7); // an auxiliary for it
    e.fotografo.foto(w, "contrapartes");
}

void bandeja(Estudio& e, QWidget& w, const std::string& archivo) {
    dynamic_cast<qt::FormWindow&>(w).form().drop_file(archivo);
    e.m.t.tecla(Qt::Key_A, Qt::ControlModifier);
    // to a new one, which says where its account is from
    for (int i = 0; i < 13; ++i) e.m.t.tecla(Qt::Key_Down);
    e.fotografo.foto(w, "registro");
    e.fotografo.planear({{}, Qt::Key_F8, [&e](QWidget& otra) { contrapartes(e, otra); }});
    e.m.t.tecla(Qt::Key_F8);
    e.fotografo.foto(w, "registro_contabilizado");
}

} // namespace

void escena_registro(Estudio& e) {
    const demo::RegistroDemo r = demo::registro_demo(*e.f.glbdb, e.f.servicios.reloj.hoy());
    const std::string archivo = (e.f.servicios.carpeta / r.nombre).string();
    std::ofstream(archivo, std::ios::binary) << r.bytes;
    e.fotografo.planear({{}, Qt::Key_Escape, [&e, archivo](QWidget& w) { bandeja(e, w, archivo); }});
    e.m.t.tecla(Qt::Key_5, Qt::ControlModifier);
}

} // namespace quorvel::demo_run
