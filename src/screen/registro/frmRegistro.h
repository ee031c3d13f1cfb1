#pragma once
#include "platform/ui/controls.h"
#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/form.h"
#include "registro/bandeja.h"

#include <functional>

namespace quorvel {

class frmQuorvel;

/// The inbox of the register of purchases and sales: its documents beside the books, what is marked booked,
/// the month's proof below. It keeps its files while the voucher screen is open.
class frmRegistro : public ui::Form {
public:
    /// @param pantalla whose session and company it works with; must outlive the form
    explicit frmRegistro(frmQuorvel& pantalla);
    ~frmRegistro() override;
    /// Shows it until it is left; then what was chosen comes to the voucher screen.
    void abrir();
    [[nodiscard]] bool takes_files() const override { return true; }
    /// Adds a file and shows what became of it. @throws ErrorRegistro, ErrorArchivo
    void agregar(const std::string& archivo);

    ui::CommandButton cmdArchivo{*this, "cmdArchivo", "Abrir archivo…"},
        cmdQuitar{*this, "cmdQuitar", "Quitar archivos"};
    ui::TextBox txtMes{*this, "txtMes"};
    ui::ComboBox cmbDocumento{*this, "cmbDocumento"}, cmbVer{*this, "cmbVer"};
    ui::ctlPlanilla grdRegistro{*this, "grdRegistro"};
    ui::Label lblDetalle{*this, "lblDetalle"};
    ui::ctlPlanilla grdPrueba{*this, "grdPrueba"};
    ui::Label lblResumen{*this, "lblResumen"};
    ui::CommandButton cmdMarcar{*this, "cmdMarcar", "Marcar nuevos"},
        cmdContrapartes{*this, "cmdContrapartes", "Contrapartes…"},
        cmdContabilizar{*this, "cmdContabilizar", "Contabilizar"}, cmdVer{*this, "cmdVer", "Ver en pantalla"},
        cmdActualizar{*this, "cmdActualizar", "Actualizar"}, cmdcerrar{*this, "cmdcerrar", "Cerrar"};

    void cmdArchivo_Click();
    void cmdQuitar_Click();
    void cmdMarcar_Click();
    void cmdContrapartes_Click();
    void cmdContabilizar_Click();
    void cmdVer_Click();
    void cmdActualizar_Click();
    void txtMes_LeftChanged(bool& cancel);
    void cmbDocumento_Click();
    void grdRegistro_KeyDown(ui::KeyEvent& e);
    void grdPrueba_KeyDown(ui::KeyEvent& e);

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_QueryClose() override { Hide(); }
    void Form_FileDropped(const std::string& archivo) override { agregar(archivo); }
    void Form_KeyDown(ui::KeyEvent& e) override;

private:
    void preparar_columnas();
    void conectar();
    void cotejar();
    void mostrar_agregados();
    void mostrar_filas();
    void mostrar_prueba();
    void mostrar_resumen();
    void mostrar_detalle();
    void mostrar_marca(int renglon);
    void alternar_marca();
    /// Asks for what marked counterparts lack. @return false when the person left it
    bool completar_contrapartes();
    [[nodiscard]] bool visible_en_lista(std::size_t fila) const;
    [[nodiscard]] const registro::Fila* fila_actual() const;
    [[nodiscard]] registro::Bandeja& bandeja();

    frmQuorvel& pantalla_;
    std::unique_ptr<registro::Bandeja> bandeja_;
    std::vector<std::size_t> renglones_;           ///< row of the inbox that each row of the grid shows
    const registro::LineaPrueba* causa_ = nullptr; ///< line of the proof whose causes are shown
    std::function<void()> al_salir_;
    bool mostrando_ = false;
};

} // namespace quorvel
