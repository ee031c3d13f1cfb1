#pragma once
#include "platform/ui/controls.h"
#include "platform/ui/ctlConsulta.h"
#include "platform/ui/form.h"
#include "screen/consultas/busqueda.h"

namespace quorvel {

/// Search of saved vouchers with its filters.
class frmBuscaQuorvel : public ui::Form {
public:
    explicit frmBuscaQuorvel(ui::Escritorio& escritorio);
    clsConexion* glbdb = nullptr;
    std::string glbSQL;
    std::string glbF_comp, glbDocumento, glbNum_docum; ///< date "mm/dd/yyyy", empty when cancelled
    std::string subsistema;                            ///< of the picked row

    ui::TextBox txtbuscar{*this, "txtbuscar"};
    ui::ctlConsulta ctlConsulta1{*this, "ctlConsulta1"};
    ui::ComboBox cmbDocumento{*this, "cmbDocumento"}, cmbEstado{*this, "cmbEstado"},
        cmblibro{*this, "cmblibro"}, cmbifrs{*this, "cmbifrs"};
    ui::TextBox txtnum_ref{*this, "txtnum_ref"}, txtrut_persona{*this, "txtrut_persona"};
    ui::Label lblResumen{*this, "lblResumen"}, lblAlcance{*this, "lblAlcance"};

    void ArmarConsulta();
    /// The query that the filters make.
    [[nodiscard]] std::string consulta() const;
    /// Vouchers, the latest ones, among which a text without a date is looked for.
    static constexpr int ALCANCE = 20000;

protected:
    void Form_Load() override;
    void Form_KeyDown(ui::KeyEvent& e) override;

private:
    void txtrut_persona_Left(bool& cancel);
    void tecla_de_la_lista(ui::KeyEvent& e);
    void tecla_del_texto(ui::KeyEvent& e);
    [[nodiscard]] std::string alcance(const Busqueda& b);
    void resumir();
    void elegido(const std::vector<std::string>& fila);
    bool lista_ = false;                           ///< filters set while loading run no query
    std::optional<std::optional<Fecha>> comienzo_; ///< of the latest vouchers; nothing: all are among them
};

} // namespace quorvel
