#pragma once
#include "platform/ui/controls.h"
#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/form.h"
#include "registro/bandeja.h"

namespace quorvel {

class frmQuorvel;

/// Asks once, in one list, for account and auxiliary of the counterparts that lack them.
class frmContrapartes : public ui::Form {
public:
    frmContrapartes(frmQuorvel& pantalla, registro::Bandeja& bandeja,
                    std::vector<registro::Desconocida> lista);
    bool gblnaceptar = false;

    ui::ctlPlanilla grdContrapartes{*this, "grdContrapartes"};
    ui::Label lblNombre{*this, "lblNombre"};
    ui::CommandButton cmdRepetir{*this, "cmdRepetir", "Repetir hacia abajo"},
        cmdGenera{*this, "cmdGenera", "Genera Aux."}, cmdaceptar{*this, "cmdaceptar", "Aceptar"},
        cmdcancelar{*this, "cmdcancelar", "Cancelar"};

    void cmdRepetir_Click();
    void cmdGenera_Click();
    void cmdaceptar_Click();
    void grdContrapartes_ButtonClick(int col);
    void grdContrapartes_BeforeColUpdate(int col, bool& cancel);

protected:
    void Form_Load() override;
    void Form_KeyDown(ui::KeyEvent& e) override;

private:
    void preparar_columnas();
    void mostrar();
    void leer();
    void mostrar_nombre();
    [[nodiscard]] bool requiere_auxiliar(const std::string& cuenta);
    frmQuorvel& pantalla_;
    registro::Bandeja& bandeja_;
    std::vector<registro::Desconocida> lista_;
};

} // namespace quorvel
