#pragma once
#include "platform/ui/controls.h"
#include "platform/ui/ctlConsulta.h"
#include "platform/ui/form.h"

namespace quorvel {

/// Common part of the lookups that return a code and a name: picking copies and closes, cancelling closes.
class FormaConsulta : public ui::Form {
public:
    FormaConsulta(ui::Escritorio& escritorio, std::string name, std::string caption,
                  std::vector<std::string> columnas);
    clsConexion* glbdb = nullptr;
    std::string glbSQL, glbCodigo, glbNombre;
    ui::ctlConsulta ctlConsulta1{*this, "ctlConsulta1"};

protected:
    void Form_KeyDown(ui::KeyEvent& e) override; ///< Escape closes from wherever the focus is
    /// A list that groups the rows: Enter goes on, a group picked with the pointer hands the keys to the
    /// rows, and what no row of the group has is searched in the others.
    void agrupar(ui::ComboBox& grupos, std::function<bool(int, const std::string&)> puede_tener);

private:
    void buscar_en_otros(ui::ComboBox& grupos, const std::string& tecleado, bool& falta);
    std::function<bool(int, const std::string&)> puede_tener_;
};

/// A lookup in a master table: where the host can make an entry, one that is missing is made here and comes
/// back chosen.
class FormaMaestro : public FormaConsulta {
public:
    FormaMaestro(ui::Escritorio& escritorio, std::string name, std::string caption,
                 std::vector<std::string> columnas);
    ui::CommandButton cmdNueva{*this, "cmdNueva", "+ Nueva (F2)"};

protected:
    void Form_KeyDown(ui::KeyEvent& e) override; ///< F2 makes one
    /// Name of the master table for the host.
    [[nodiscard]] virtual std::string catalogo() const = 0;
    [[nodiscard]] virtual std::string grupo() const { return {}; }

private:
    void cmdNueva_Click();
};

/// Accounts, or cost centres when glbTipo is "centro", of one group and of the group's code length.
class frmBuscaCentro : public FormaMaestro {
public:
    explicit frmBuscaCentro(ui::Escritorio& escritorio);
    std::string glbTipo;
    ui::ComboBox cmbGcuenta{*this, "cmbGcuenta"};

protected:
    void Form_Load() override;
    [[nodiscard]] std::string catalogo() const override {
        return glbTipo == "centro" ? "centros" : "cuentas";
    }
    [[nodiscard]] std::string grupo() const override;

private:
    void cmbGcuenta_Click();
};

/// Auxiliaries of one type.
class frmBuscaAuxiliar : public FormaMaestro {
public:
    explicit frmBuscaAuxiliar(ui::Escritorio& escritorio);
    bool glbTipoSistema = true;
    ui::ComboBox cmbtipoaux{*this, "cmbtipoaux"};

protected:
    void Form_Load() override;
    [[nodiscard]] std::string catalogo() const override { return "auxiliares"; }
    [[nodiscard]] std::string grupo() const override;

private:
    void cmbtipoaux_Click();
};

/// Counterparts already used in vouchers.
class frmpersona : public FormaConsulta {
public:
    explicit frmpersona(ui::Escritorio& escritorio);

protected:
    void Form_Load() override;
};

/// Bank accounts already used on cheques.
class frmcuenta : public FormaConsulta {
public:
    explicit frmcuenta(ui::Escritorio& escritorio);

protected:
    void Form_Load() override;
};

/// Other taxes.
class frmBuscaImpuesto : public FormaMaestro {
public:
    explicit frmBuscaImpuesto(ui::Escritorio& escritorio);

protected:
    void Form_Load() override;
    [[nodiscard]] std::string catalogo() const override { return "impuestos"; }
};

} // namespace quorvel
