#pragma once
#include "assistants/lineas.h"
#include "screen/asistentes/pie.h"

#include <array>

namespace quorvel {

/// One amount between a bank account and a partner's account. It does not touch the voucher; the caller reads
/// its fields after the modal show.
class frmAsistente2 : public ui::Form, public SesionAsistente {
public:
    explicit frmAsistente2(ui::Escritorio& escritorio);

    // In tab order.
    ui::ComboBox cmbdoc_libro{*this, "cmbdoc_libro"};
    ui::ctlEntrada txtCuenta{*this, "txtCuenta"};
    ui::ctlEntrada txtCuenta2{*this, "txtCuenta2"};
    ui::ctlEntrada txtAuxiliar2{*this, "txtAuxiliar2"};
    ui::ComboBox cmbAuxiliar{*this, "cmbAuxiliar"};
    ui::CommandButton cmdGenera{*this, "cmdGenera", "Genera Aux."};
    ui::ctlEntrada txttotal{*this, "txttotal"};
    ui::CommandButton cmdaceptar{*this, "cmdaceptar", "Aceptar"},
        cmdcancelar{*this, "cmdcancelar", "Cancelar"};
    ui::CommandButton cmdCuenta{*this, "cmdCuenta", "..."}, cmdcuenta2{*this, "cmdcuenta2", "..."},
        cmdAuxiliar2{*this, "cmdAuxiliar2", "..."};
    ui::Label lblCuenta{*this, "lblCuenta"}, lblCuenta2{*this, "lblCuenta2"},
        lblauxiliar2{*this, "lblauxiliar2"}, lblRut{*this, "lblRut"}, lblnombre{*this, "lblnombre"};
    ui::Label lblLineas{*this, "lblLineas"}, lblLineasDebe{*this, "lblLineasDebe"},
        lblLineasHaber{*this, "lblLineasHaber"}; ///< what accepting would make

    /// The partner's auxiliary is open exactly when the partner account shown requires one.
    void habilitar_auxiliar();

protected:
    void Form_Load() override;
    void Form_QueryClose() override { Hide(); }
    void Form_KeyDown(ui::KeyEvent& e) override;

private:
    [[nodiscard]] ParteContraparte contraparte() { return {lblRut, lblnombre, cmbAuxiliar, cmdGenera}; }
    [[nodiscard]] ParteCodigo parte_auxiliar() { return {txtAuxiliar2, lblauxiliar2, cmdAuxiliar2}; }
    [[nodiscard]] std::vector<Linea> armar() const; ///< the lines as the dialog stands
    [[nodiscard]] std::array<Exigencia, 5> exigencias();
    void cmdaceptar_Click();

    PieLineas pie_{lblLineas, lblLineasDebe, lblLineasHaber};
};

} // namespace quorvel
