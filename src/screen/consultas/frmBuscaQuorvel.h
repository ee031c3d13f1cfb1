#pragma once
#include "platform/ui/controls.h"
#include "platform/ui/ctlConsulta.h"
#include "platform/ui/form.h"

namespace quorvel {

/// Search of saved vouchers with its filters.
class frmBuscaQuorvel : public ui::Form {
public:
    explicit frmBuscaQuorvel(ui::Escritorio& escritorio);
    clsConexion* glbdb = nullptr;
    std::string glbSQL;
    std::string glbF_comp, glbDocumento, glbNum_docum; ///< date "mm/dd/yyyy", empty when cancelled
    std::string subsistema;                            ///< of the picked row

    ui::ctlConsulta ctlConsulta1{*this, "ctlConsulta1"};
    ui::ComboBox cmbDocumento{*this, "cmbDocumento"}, cmbEstado{*this, "cmbEstado"},
        cmblibro{*this, "cmblibro"}, cmbifrs{*this, "cmbifrs"};
    ui::TextBox txtnum_ref{*this, "txtnum_ref"}, txtrut_persona{*this, "txtrut_persona"};

    void ArmarConsulta();
    /// The query that the filters make.
    [[nodiscard]] std::string consulta() const;

protected:
    void Form_Load() override;
    void Form_KeyDown(ui::KeyEvent& e) override;

private:
    void txtrut_persona_Left(bool& cancel);
    void elegido(const std::vector<std::string>& fila);
    bool lista_ = false; ///< filters set while loading run no query
};

} // namespace quorvel
