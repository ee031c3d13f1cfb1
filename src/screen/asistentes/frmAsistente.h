#pragma once
#include "assistants/calculo.h"
#include "assistants/lineas.h"
#include "screen/asistentes/pie.h"

#include <array>
#include <cstdint>

namespace quorvel {

/// One tax document keyed for a book: kind, account, counterpart and amounts that derive from each other. It
/// does not touch the voucher; the caller reads its fields after the modal show.
class frmAsistente : public ui::Form, public SesionAsistente {
public:
    explicit frmAsistente(ui::Escritorio& escritorio);
    std::int16_t gintlibro = 0; ///< mode: position of the book; set before the form loads

    // In tab order.
    ui::ComboBox cmbdoc_libro{*this, "cmbdoc_libro"};
    ui::ctlEntrada txtCuenta{*this, "txtCuenta"};
    ui::ctlEntrada txtauxiliar{*this, "txtauxiliar"};
    ui::ComboBox cmbAuxiliar{*this, "cmbAuxiliar"};
    ui::CommandButton cmdGenera{*this, "cmdGenera", "Genera Aux."};
    ui::ctlEntrada txtNeto{*this, "txtNeto"}, txtExento{*this, "txtExento"};
    ui::ComboBox cmbcodigo_otro_impuesto{*this, "cmbcodigo_otro_impuesto"};
    ui::ctlEntrada txttasa_impuesto_otro{*this, "txttasa_impuesto_otro"}, txtotro{*this, "txtotro"};
    ui::ComboBox cmbporcentaje{*this, "cmbporcentaje"};
    ui::ctlEntrada txttotal{*this, "txttotal"};
    ui::CommandButton cmdiva{*this, "cmdiva", "Calcula IVA"};
    ui::CheckBox chktrasponer{*this, "chktrasponer", "Comprobante de Pago cuentas"};
    ui::CommandButton cmdaceptar{*this, "cmdaceptar", "Aceptar"},
        cmdcancelar{*this, "cmdcancelar", "Cancelar"};
    // The keyboard opens these by Ctrl+Y, so they do not stand between the boxes.
    ui::CommandButton cmdCuenta{*this, "cmdCuenta", "..."}, cmdAuxiliar{*this, "cmdAuxiliar", "..."};
    ui::Label lblCuenta{*this, "lblCuenta"}, lblauxiliar{*this, "lblauxiliar"}, lblRut{*this, "lblRut"},
        lblnombre{*this, "lblnombre"}, lbliva{*this, "lbliva", "0"}, lblimpuesto{*this, "lblimpuesto", "IVA"};
    ui::Label lblneto{*this, "lblneto", "Neto Imponible"}, lblexento{*this, "lblexento", "Monto Exento"},
        lblcodigo_otro{*this, "lblcodigo_otro", "Otro Impuesto"}, lbltasa{*this, "lbltasa", "Tasa"},
        lblporcentaje{*this, "lblporcentaje", "Porcentaje"};
    ui::Label lbllado{*this, "lbllado", "Cuenta"}; ///< the side that the dialog's account gets
    ui::Label lblCuadre{*this, "lblCuadre"};       ///< whether the parts add up to the total
    ui::Label lblLineas{*this, "lblLineas"}, lblLineasDebe{*this, "lblLineasDebe"},
        lblLineasHaber{*this, "lblLineasHaber"}; ///< what accepting would make

    /// The auxiliary is open exactly when the account shown requires one.
    void habilitar_auxiliar();

protected:
    void Form_Load() override;
    void Form_QueryClose() override { Hide(); }
    void Form_KeyDown(ui::KeyEvent& e) override;

private:
    [[nodiscard]] ParteContraparte contraparte() { return {lblRut, lblnombre, cmbAuxiliar, cmdGenera}; }
    [[nodiscard]] ParteCodigo parte_auxiliar() { return {txtauxiliar, lblauxiliar, cmdAuxiliar}; }
    void conectar_montos();
    void mostrar_segun_libro();
    void CargarOtrosImpuestos();
    void CargarTasaOtroImpuesto();
    void cmdaceptar_Click();
    [[nodiscard]] DocumentoTributario documento() const;
    [[nodiscard]] std::vector<Linea> armar() const; ///< the lines as the dialog stands
    [[nodiscard]] std::array<Exigencia, 4> exigencias();
    [[nodiscard]] Importes leer() const;
    void mostrar(const Importes& i);
    void reaccionar(Importes (*reaccion)(Importes)) { mostrar(reaccion(leer())); }
    void mostrar_pie();
    [[nodiscard]] std::string texto_lado() const;

    PieLineas pie_{lblLineas, lblLineasDebe, lblLineasHaber};
};

} // namespace quorvel
