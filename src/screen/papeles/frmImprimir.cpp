#include "screen/papeles/frmImprimir.h"

namespace quorvel {

frmImprimir::frmImprimir(ui::Escritorio& escritorio) : Form(escritorio, "frmImprimir", "Imprimir") {
    optImprimir.SetValue(1);
    for (ui::OptionButton* opcion : {&optImprimir, &optPantalla, &optPdf}) opcion->SetEnterStop(false);
    cmdOK.SetShortcut("f5");
    cmdCancel.SetPress(ui::Press::asks_nothing);
    cmdOK.Click += [this] { atender([this] { cmdOK_Click(); }); };
    cmdCancel.Click += [this] { atender([this] { Unload(); }); };
}

void frmImprimir::cmdOK_Click() {
    glbAceptar = true;
    glbImprimir = optImprimir.Value() == 1;
    glbPdf = optPdf.Value() == 1;
    Unload();
}

void frmImprimir::Form_KeyDown(ui::KeyEvent& e) {
    if (e.key != ui::Key::escape) return;
    e.handled = true;
    Unload();
}

} // namespace quorvel
