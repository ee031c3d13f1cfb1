#include "app/estilo.h"
#include "demo_run/escenas.h"
#include "qt/FormWindow.h"
#include "screen/campos.h"
#include "screen/frmQuorvel.h"
#include "voucher/bloqueo.h"

#include <QApplication>

namespace quorvel::demo_run {

namespace {

constexpr DocumentoDemo COMPRA{"COMPRA", "COMPRAS",    "Compra de materiales de oficina", "FACTURA",
                               "4521",   "96511640-0", "EMBOTELLADORA DEL MAIPO S.A."};
constexpr int CUENTA = 1;

void en_oscuro(Estudio& e) {
    auto& aplicacion = *qobject_cast<QApplication*>(QCoreApplication::instance());
    const bool era_oscuro = aplicacion.palette().color(QPalette::Window).lightness() < 128;
    app::aplicar_estilo(aplicacion, app::Tema::oscuro);
    e.fotografo.foto(e.ventana, "comprobante_oscuro");
    app::aplicar_estilo(aplicacion, era_oscuro ? app::Tema::oscuro : app::Tema::claro);
}

/// A cell that is refused: its message, then Escape for the cell and for the row.
void renglon_rechazado(Estudio& e) {
    e.m.celda(e.f.grdDetalle, CUENTA, "999999");
    e.fotografo.planear({"celda_rechazada", Qt::Key_Return, {}});
    for (const auto tecla : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Escape}) e.m.t.tecla(tecla);
}

/// The list of vouchers, and from it the one that was just saved.
void buscar(Estudio& e, const std::string& foto) {
    e.fotografo.planear({{}, Qt::Key_Return, [&e, foto](QWidget& w) {
                             e.m.t.escribir(COMPRA.numero); // into the list, wherever it stands
                             if (!foto.empty()) e.fotografo.foto(w, foto);
                         }});
    e.m.t.tecla(Qt::Key_F3);
}

void imprimir(Estudio& e) {
    e.fotografo.planear({{}, Qt::Key_Return, [](QWidget& w) {
                             dynamic_cast<qt::FormWindow&>(w).form().find("cmdOK")->SetFocus();
                         }});
    e.m.t.tecla(Qt::Key_F6);
}

void probar_cheque(Estudio& e) {
    e.fotografo.planear({{}, Qt::Key_Escape, [&e](QWidget& w) {
                             ui::Form& forma = dynamic_cast<qt::FormWindow&>(w).form();
                             for (const char* casilla : {"chknominativo", "chkcruzado"})
                                 if (e.m.ir_a(forma, casilla)) e.m.t.tecla(Qt::Key_Space);
                             e.m.boton(forma, "cmdprueba");
                         }});
    e.m.t.tecla(Qt::Key_F7, Qt::ControlModifier);
}

/// The voucher on the screen is opened again while another user works on it.
void abrir_bloqueado(Estudio& e) {
    constexpr int OTRO = 2;
    const auto clave = clave_pantalla(e.f);
    e.m.t.tecla(Qt::Key_F2);
    if (clave) bloquear(*e.f.glbdb, *clave, OTRO);
    buscar(e, {});
    e.fotografo.foto(e.ventana, "solo_lectura");
}

} // namespace

void escena_compra(Estudio& e) {
    encabezado(e, COMPRA);
    if (!e.m.ir_a(e.f, "grdDetalle")) return;
    e.fotografo.planear({"busca_cuenta", Qt::Key_Escape, {}});
    e.m.t.tecla(Qt::Key_Y, Qt::ControlModifier);
    e.m.renglon(e.f.grdDetalle, CUENTA, {"503006", "", "100000", "", "utiles de oficina"});
    e.m.renglon(e.f.grdDetalle, CUENTA, {"109001", "", "91000", "", "iva credito fiscal"});
    e.m.renglon(e.f.grdDetalle, CUENTA, {"201001", "000021", "", "119000", "factura 4521"});
    e.fotografo.planear({"diferencia", Qt::Key_Return, {}});
    e.m.t.tecla(Qt::Key_F9); // goes to the cell with the two figures that changed places
    e.m.t.escribir("19000");
    for (const auto tecla : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Home, Qt::Key_Right}) e.m.t.tecla(tecla);
    e.fotografo.foto(e.ventana, "comprobante");
    en_oscuro(e);
    renglon_rechazado(e);
    e.m.t.tecla(Qt::Key_F5);
    e.fotografo.foto(e.ventana, "grabado");
    e.m.t.tecla(Qt::Key_F2);
    buscar(e, "busca_comprobante");
    imprimir(e);
    e.fotografo.foto(e.ventana, "comprobante_abierto");
    probar_cheque(e);
    abrir_bloqueado(e);
}

} // namespace quorvel::demo_run
