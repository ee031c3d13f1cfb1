#pragma once
#include "interchange/cheque.h"
#include "platform/report/report.h"
#include "platform/ui/controls.h"
#include "platform/ui/form.h"

namespace quorvel {

/// What the voucher screen hands over.
struct EntradaCheque {
    clsConexion* glbdb = nullptr;
    clsConexion* glbdbReport = nullptr;
    ReportPrinter* impresor = nullptr;
    Clave clave;
    int usuario = 0;
    std::string empresa; ///< toolbar caption: code, blank, name
    // proposed while the voucher has no cheque
    std::string nombre, num_ref;
    std::optional<Fecha> fecha_doc;
    Decimal total; ///< of the voucher
};

/// Issues and prints the cheque that pays a voucher.
class frmcheque : public ui::Form {
public:
    frmcheque(ui::Escritorio& escritorio, EntradaCheque entrada);

    ui::TextBox txtbanco{*this, "txtbanco"}, txtCuenta{*this, "txtCuenta"};
    ui::CommandButton cmdbanco{*this, "cmdbanco", "Buscar"};
    ui::TextBox txtcheque{*this, "txtcheque"};
    ui::ctlCalendario txtfecha{*this, "txtfecha"};
    ui::TextBox txtbeneficiario{*this, "txtbeneficiario"};
    ui::TextBox txttotal{*this, "txttotal"};
    ui::Label lblmonto{*this, "lblmonto"};
    ui::CheckBox chknominativo{*this, "chknominativo", "Nominativo"},
        chkcruzado{*this, "chkcruzado", "Cruzado"};
    ui::CommandButton cmdaceptar{*this, "cmdaceptar", "Aceptar"},
        cmdImprimir{*this, "cmdImprimir", "Imprimir"}, cmdprueba{*this, "cmdprueba", "Prueba"},
        cmdcancelar{*this, "cmdcancelar", "Cancelar"};

    void cmdbanco_Click();
    void cmdaceptar_Click();
    void cmdImprimir_Click();
    /// Shows the cheque over a grid of millimetres, without saving it.
    void cmdprueba_Click();
    void txttotal_Change();
    void txttotal_LeftChanged();

protected:
    void Form_Load() override;
    void Form_KeyDown(ui::KeyEvent& e) override;

private:
    [[nodiscard]] Cheque leer_pantalla() const;
    void mostrar(const Cheque& c);
    /// @return false after the failure's message
    bool grabar();
    /// @return false when there is no paper
    bool imprimir(const Cheque& c, bool prueba);
    EntradaCheque x_;
};

} // namespace quorvel
