#pragma once
#include "platform/ui/controls.h"
#include "platform/ui/form.h"

namespace quorvel {

/// Asks whether a printout goes to the printer or to the screen.
class frmImprimir : public ui::Form {
public:
    explicit frmImprimir(ui::Escritorio& escritorio);

    ui::OptionButton optImprimir{*this, "optImprimir", "Enviar a Impresora"};
    ui::OptionButton optPantalla{*this, "optPantalla", "Enviar a Pantalla"};
    ui::CommandButton cmdOK{*this, "cmdOK", "Aceptar"};
    ui::CommandButton cmdCancel{*this, "cmdCancel", "Cancelar"};

    bool glbAceptar = false;
    bool glbImprimir = false;

    void cmdOK_Click();

protected:
    void Form_KeyDown(ui::KeyEvent& e) override;
};

} // namespace quorvel
