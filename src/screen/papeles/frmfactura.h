#pragma once
#include "interchange/factura.h"
#include "platform/report/report.h"
#include "platform/ui/controls.h"
#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/form.h"

namespace quorvel {

/// What the voucher screen hands over.
struct EntradaFactura {
    clsConexion* glbdb = nullptr;
    clsConexion* glbdbReport = nullptr;
    ReportPrinter* impresor = nullptr;
    Comprobante comprobante;             ///< as the screen shows it, lines included
    std::string gstriva, gstriva_compra; ///< VAT accounts
    std::string empresa;                 ///< toolbar caption: code, blank, name
};

/// Issues and prints the sales invoice that belongs to a voucher.
class frmfactura : public ui::Form {
public:
    frmfactura(ui::Escritorio& escritorio, EntradaFactura entrada);

    ui::TextBox txtruc{*this, "txtruc"};
    ui::CommandButton cmdrut{*this, "cmdrut", "Buscar"};
    ui::TextBox txtnombre{*this, "txtnombre"}, txtdireccion{*this, "txtdireccion"},
        txtcomuna{*this, "txtcomuna"}, txtciudad{*this, "txtciudad"}, txtgiro{*this, "txtgiro"},
        txttelefonos{*this, "txttelefonos"};
    ui::TextBox txtfactura{*this, "txtfactura"};
    ui::ctlCalendario txtfecha{*this, "txtfecha"};
    ui::ctlPlanilla grdfac{*this, "grdfac"};
    ui::TextBox txtNeto{*this, "txtNeto"};
    ui::Label lbliva{*this, "lbliva"}, lblcuadre{*this, "lblcuadre"};
    ui::TextBox txttotal{*this, "txttotal"};
    ui::CommandButton cmdaceptar{*this, "cmdaceptar", "Grabar"},
        cmdImprimir{*this, "cmdImprimir", "Imprimir"}, cmdcancelar{*this, "cmdcancelar", "Cerrar"};

    void cmdrut_Click();
    void cmdaceptar_Click();
    void cmdImprimir_Click();
    void txtruc_LeftChanged(bool& quedarse);
    void txtNeto_LeftChanged();
    void grdfac_BeforeColUpdate(int col, bool& cancel);
    void grdfac_AfterColUpdate(int col);
    void grdfac_RowsChanged();

protected:
    void Form_Activate() override;
    void Form_KeyDown(ui::KeyEvent& e) override;

private:
    void preparar_columnas();
    void mostrar_factura(const Factura& f);
    void mostrar_cliente(const Cliente& c);
    void mostrar_montos(const MontosFactura& m);
    void mostrar_cuadre();
    void buscar_por_rut();
    [[nodiscard]] std::vector<LineaFactura> leer_lineas() const;
    [[nodiscard]] Factura leer_pantalla() const;
    /// Validates and saves. @return false after the failure's message
    bool grabar();
    EntradaFactura x_;
    bool iniciada_ = false;
};

} // namespace quorvel
