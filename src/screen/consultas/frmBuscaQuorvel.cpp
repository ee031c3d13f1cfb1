#include "screen/consultas/frmBuscaQuorvel.h"

#include "assistants/libros.h"
#include "platform/db/literal.h"
#include "screen/maestro.h"
#include "text/letras_utf8.h"
#include "text/rut.h"
#include "voucher/listas.h"

namespace quorvel {

namespace {

template <class Textos> void llenar(ui::ComboBox& lista, const Textos& textos) {
    lista.AddItem(TODOS);
    for (const std::string_view texto : textos) lista.AddItem(std::string(texto));
}

std::string condicion(const char* columna, const std::string& valor) {
    return std::string(" and ") + columna + "=" + sql_texto(valor);
}

} // namespace

frmBuscaQuorvel::frmBuscaQuorvel(ui::Escritorio& escritorio)
    : Form(escritorio, "frmBuscaQuorvel", "Buscar Comprobante") {
    ctlConsulta1.SetColumns({"f_comp", "documento", "num_docum", "concepto", "libro", "doc_libro", "num_ref",
                             "rut_persona", "nombre", "t_debe", "estado", "subsistema"});
    ctlConsulta1.SetLayout({1200, 600, 1000, 4000});
    // The latest first, in the order of the key, which an index hands over without sorting.
    ctlConsulta1.SetOrderBy(" f_comp desc, documento desc, num_docum desc");
    ctlConsulta1.Selected += [this](const std::vector<std::string>& fila) { elegido(fila); };
    ctlConsulta1.Cancelled += [this] { Hide(); };
    for (ui::ComboBox* filtro : {&cmbDocumento, &cmbEstado, &cmblibro, &cmbifrs}) {
        filtro->Click += [this] { atender([this] { ArmarConsulta(); }); };
        if (filtro == &cmblibro || filtro == &cmbifrs) continue;
        filtro->KeyDown += [this](ui::KeyEvent& e) {
            if (e.key != ui::Key::enter) return;
            e.handled = true;
            focus_next();
        };
    }
    txtnum_ref.LostFocus += [this] { atender([this] { ArmarConsulta(); }); };
    txtrut_persona.LeftChanged += [this](bool& no) { atender([&] { txtrut_persona_Left(no); }); };
}

void frmBuscaQuorvel::Form_Load() {
    atender([this] {
        lista_ = false;
        cmbDocumento.AddItem(TODOS);
        for (auto rs = glbdb->NewRecord(CONSULTA_DOCUMENTOS); !rs->eof(); rs->MoveNext())
            cmbDocumento.AddItem(campo(*rs, "documento") + " " + campo(*rs, "n_documento"));
        llenar(cmbEstado, ESTADOS);
        llenar(cmblibro, TEXTOS_LIBRO);
        llenar(cmbifrs, NORMAS);
        for (ui::ComboBox* filtro : {&cmbDocumento, &cmbifrs, &cmbEstado, &cmblibro}) filtro->SetListIndex(0);
        lista_ = true;
        ctlConsulta1.SetConnection(glbdb);
        ArmarConsulta();
        ctlConsulta1.Load();
        ctlConsulta1.SetFocus();
    });
}

std::string frmBuscaQuorvel::consulta() const {
    std::string sql = recortar_fin(glbSQL);
    if (cmbDocumento.Text() != TODOS) sql += condicion("documento", primeros(cmbDocumento.Text(), 3));
    if (cmbEstado.Text() != TODOS) sql += condicion("estado", primeros(cmbEstado.Text(), 1));
    if (cmblibro.Text() != TODOS) sql += condicion("libro", cmblibro.Text());
    if (!txtnum_ref.Text().empty()) sql += condicion("num_ref", txtnum_ref.Text());
    if (!txtrut_persona.Text().empty()) sql += condicion("rut_persona", txtrut_persona.Text());
    if (cmbifrs.ListIndex() > 0) sql += condicion("ifrs", primeros(cmbifrs.Text(), 1));
    return sql;
}

void frmBuscaQuorvel::ArmarConsulta() {
    if (lista_) ctlConsulta1.SetSQL(consulta());
}

void frmBuscaQuorvel::txtrut_persona_Left(bool& cancel) {
    if (txtrut_persona.Text().empty()) return ArmarConsulta();
    const ResultadoRut r = validarut(con_guion(txtrut_persona.Text()));
    if (!r.valido) {
        const std::string antes = txtrut_persona.text_on_entry();
        cancel = true;
        critico(r.mensaje);
        return txtrut_persona.SetText(antes);
    }
    txtrut_persona.SetText(r.texto);
    ArmarConsulta();
}

void frmBuscaQuorvel::elegido(const std::vector<std::string>& fila) {
    const std::string& f = fila.at(0); // dd/mm/yyyy
    glbF_comp = f.substr(3, 2) + "/" + f.substr(0, 2) + "/" + f.substr(6);
    glbDocumento = recortar_fin(fila.at(1));
    glbNum_docum = recortar_fin(fila.at(2));
    subsistema = recortar(fila.back());
    Hide();
}

void frmBuscaQuorvel::Form_KeyDown(ui::KeyEvent& e) {
    if (e.key != ui::Key::escape) return;
    e.handled = true;
    Hide(); // leaving without a choice never checks a box
}

} // namespace quorvel
