#pragma once
#include "platform/ui/controls.h"
#include "platform/ui/form.h"

namespace quorvel {

/// Asks whether a printout goes to the printer, to the screen or into a file.
class frmImprimir : public ui::Form {
public:
    explicit frmImprimir(ui::Escritorio& escritorio);

    ui::OptionButton optImprimir{*this, "optImprimir", "Enviar a Impresora"};
    ui::OptionButton optPantalla{*this, "optPantalla", "Enviar a Pantalla"};
    ui::OptionButton optPdf{*this, "optPdf", "Guardar como PDF"};
    ui::CommandButton cmdOK{*this, "cmdOK", "Aceptar"};
    ui::CommandButton cmdCancel{*this, "cmdCancel", "Cancelar"};

    bool glbAceptar = false;
    bool glbImprimir = false, glbPdf = false;

    void cmdOK_Click();

protected:
    void Form_KeyDown(ui::KeyEvent& e) override;
};

} // namespace quorvel
