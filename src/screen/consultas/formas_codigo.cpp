#include "screen/consultas/formas_codigo.h"

#include "platform/db/literal.h"
#include "platform/ui/entry_maker.h"
#include "screen/maestro.h"
#include "text/letras_utf8.h"

#include <utility>

namespace quorvel {

FormaConsulta::FormaConsulta(ui::Escritorio& escritorio, std::string name, std::string caption,
                             std::vector<std::string> columnas)
    : Form(escritorio, std::move(name), std::move(caption)) {
    ctlConsulta1.SetColumns(std::move(columnas));
    ctlConsulta1.Selected += [this](const std::vector<std::string>& fila) {
        glbCodigo = recortar(fila.at(0));
        glbNombre = fila.size() > 1 ? recortar(fila[1]) : "";
        Hide();
    };
    ctlConsulta1.Cancelled += [this] { Hide(); };
}

void FormaConsulta::Form_KeyDown(ui::KeyEvent& e) {
    if (e.key != ui::Key::escape) return;
    e.handled = true;
    Hide();
}

void FormaConsulta::agrupar(ui::ComboBox& grupos, std::function<bool(int, const std::string&)> puede_tener) {
    puede_tener_ = std::move(puede_tener);
    grupos.KeyDown += [this](ui::KeyEvent& e) {
        if (e.key != ui::Key::enter) return;
        e.handled = true;
        focus_next();
    };
    grupos.Chosen += [this] { ctlConsulta1.SetFocus(); };
    ctlConsulta1.NotFound += [this, &grupos](const std::string& tecleado, bool& falta) {
        atender([&] { buscar_en_otros(grupos, tecleado, falta); });
    };
}

/// The group that has it becomes the chosen one; they are read in their order, once for a word.
void FormaConsulta::buscar_en_otros(ui::ComboBox& grupos, const std::string& tecleado, bool& falta) {
    const int aqui = grupos.ListIndex();
    for (int i = 0; falta && i < grupos.ListCount(); ++i) {
        if (i == aqui || !puede_tener_(i, tecleado)) continue;
        grupos.SetListIndex(i);
        falta = !ctlConsulta1.search(tecleado);
    }
    if (falta && grupos.ListIndex() != aqui) grupos.SetListIndex(aqui);
}

namespace {

/// nullptr where nobody makes entries.
const ui::EntryMaker* maker_of(ui::Escritorio& escritorio) {
    const auto* maker = dynamic_cast<const ui::EntryMaker*>(&escritorio);
    return maker != nullptr && maker->make_entry ? maker : nullptr;
}

} // namespace

FormaMaestro::FormaMaestro(ui::Escritorio& escritorio, std::string name, std::string caption,
                           std::vector<std::string> columnas)
    : FormaConsulta(escritorio, std::move(name), std::move(caption), std::move(columnas)) {
    cmdNueva.SetVisible(maker_of(escritorio) != nullptr);
    cmdNueva.Click += [this] { atender([this] { cmdNueva_Click(); }); };
}

void FormaMaestro::Form_KeyDown(ui::KeyEvent& e) {
    if (e.key != ui::Key::f2 || !cmdNueva.Visible()) return FormaConsulta::Form_KeyDown(e);
    e.handled = true;
    atender([this] { cmdNueva_Click(); });
}

void FormaMaestro::cmdNueva_Click() {
    const auto hecha = maker_of(escritorio())->make_entry(*this, {catalogo(), ctlConsulta1.typed(), grupo()});
    ctlConsulta1.SetFocus();
    if (!hecha) return;
    glbCodigo = hecha->code;
    glbNombre = hecha->name;
    Hide();
}

frmBuscaCentro::frmBuscaCentro(ui::Escritorio& escritorio)
    : FormaMaestro(escritorio, "frmBuscaCentro", "Buscar Cuenta", {"centro", "n_centro"}) {
    cmbGcuenta.Click += [this] { atender([this] { cmbGcuenta_Click(); }); };
    // A code can only be in the group that begins as it does.
    agrupar(cmbGcuenta, [this](int grupo, const std::string& tecleado) {
        const bool codigo = tecleado.front() >= '0' && tecleado.front() <= '9';
        return !codigo || cmbGcuenta.List(grupo).front() == tecleado.front();
    });
}

void frmBuscaCentro::Form_Load() {
    atender([this] {
        const bool centros = glbTipo == "centro";
        if (centros) SetCaption("Buscar Centro de Costo");
        for (auto rs = glbdb->NewRecord(centros ? "select * from ctmgcuentc" : "select * from ctmgcuenta");
             !rs->eof(); rs->MoveNext())
            cmbGcuenta.AddItem(campo(*rs, "g_cuenta") + " " + campo(*rs, "n_g_cuenta"),
                               rs->fields("longitud").Value.integer());
        if (cmbGcuenta.ListCount() == 0) return;
        cmbGcuenta.SetListIndex(0);
        ctlConsulta1.SetConnection(glbdb);
        ctlConsulta1.Load();
        ctlConsulta1.SetFocus();
    });
}

std::string frmBuscaCentro::grupo() const { return primeros(cmbGcuenta.Text(), 1); }

void frmBuscaCentro::cmbGcuenta_Click() {
    if (cmbGcuenta.Text().empty()) return;
    ctlConsulta1.SetSQL(recortar_fin(glbSQL) + " and g_cuenta=" + sql_texto(grupo()) +
                        " and len(centro)= " + sql_numero(cmbGcuenta.ItemData(cmbGcuenta.ListIndex())));
}

frmBuscaAuxiliar::frmBuscaAuxiliar(ui::Escritorio& escritorio)
    : FormaMaestro(escritorio, "frmBuscaAuxiliar", "Buscar Auxiliar", {"auxiliar", "n_auxiliar", "rut"}) {
    ctlConsulta1.SetLayout({2500});
    cmbtipoaux.Click += [this] { atender([this] { cmbtipoaux_Click(); }); };
    agrupar(cmbtipoaux, [](int, const std::string&) { return true; });
}

void frmBuscaAuxiliar::Form_Load() {
    atender([this] {
        for (auto rs = glbdb->NewRecord(glbTipoSistema ? "SELECT a.* from ctmtipoaux a  "
                                                       : "SELECT a.* from ctmtipoaux a where sistema = '0' ");
             !rs->eof(); rs->MoveNext())
            cmbtipoaux.AddItem(campo(*rs, "tipo_aux") + " " + campo(*rs, "n_tipo_aux"));
        ctlConsulta1.SetConnection(glbdb);
        cmbtipoaux_Click();
        if (cmbtipoaux.ListCount() > 0) cmbtipoaux.SetListIndex(0);
        ctlConsulta1.Load();
        ctlConsulta1.SetFocus();
    });
}

std::string frmBuscaAuxiliar::grupo() const { return primeros(cmbtipoaux.Text(), 2); }

void frmBuscaAuxiliar::cmbtipoaux_Click() {
    ctlConsulta1.SetSQL(recortar_fin(glbSQL) + " and tipo = " + sql_texto(grupo()));
}

frmpersona::frmpersona(ui::Escritorio& escritorio)
    : FormaConsulta(escritorio, "frmpersona", "Buscar Persona", {"rut_persona", "nombre"}) {
    ctlConsulta1.SetLayout({0});
}

void frmpersona::Form_Load() {
    atender([this] {
        ctlConsulta1.SetConnection(glbdb);
        ctlConsulta1.SetSQL(
            "SELECT distinct rut_persona, nombre FROM ctcquorvel where 1=1 AND rut_persona<>' ' ");
        ctlConsulta1.SetOrderBy(" nombre");
        ctlConsulta1.Load();
    });
}

frmcuenta::frmcuenta(ui::Escritorio& escritorio)
    : FormaConsulta(escritorio, "frmcuenta", "Buscar Cuenta de Banco", {"banco", "cuenta"}) {
    ctlConsulta1.SetLayout({0});
}

void frmcuenta::Form_Load() {
    atender([this] {
        ctlConsulta1.SetConnection(glbdb);
        ctlConsulta1.SetSQL(
            "SELECT distinct banco, cuenta FROM ctcquorvel where 1=1 AND cuenta<>' ' and cuenta is "
            "not null ");
        ctlConsulta1.SetOrderBy(" banco");
        ctlConsulta1.Load();
    });
}

frmBuscaImpuesto::frmBuscaImpuesto(ui::Escritorio& escritorio)
    : FormaMaestro(escritorio, "frmBuscaImpuesto", "Buscar Otro Impuesto",
                   {"otro_impuesto", "descripcion", "tasa"}) {}

void frmBuscaImpuesto::Form_Load() {
    atender([this] {
        ctlConsulta1.SetConnection(glbdb);
        ctlConsulta1.SetSQL(glbSQL);
        ctlConsulta1.Load();
    });
}

} // namespace quorvel
