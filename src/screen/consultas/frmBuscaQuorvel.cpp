#include "screen/consultas/frmBuscaQuorvel.h"

#include "assistants/libros.h"
#include "platform/db/literal.h"
#include "platform/ui/utf8.h"
#include "screen/maestro.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "text/rut.h"
#include "voucher/cargar.h"
#include "voucher/listas.h"

#include <algorithm>

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
                             "rut_persona", "nombre", "t_debe", "t_haber", "estado", "subsistema"});
    ctlConsulta1.SetNumeric({"num_docum", "num_ref"});
    ctlConsulta1.SetLayout({1200, 600, 1000, 4000});
    // The latest first, in the order of the key, which an index hands over without sorting.
    ctlConsulta1.SetOrderBy(" f_comp desc, documento desc, num_docum desc");
    ctlConsulta1.Selected += [this](const std::vector<std::string>& fila) { elegido(fila); };
    ctlConsulta1.Cancelled += [this] { Hide(); };
    ctlConsulta1.KeyDown += [this](ui::KeyEvent& e) { tecla_de_la_lista(e); };
    ctlConsulta1.Sorted += [this](bool& cargada) {
        cargada = true;
        ArmarConsulta();
    };
    txtbuscar.KeyDown += [this](ui::KeyEvent& e) { tecla_del_texto(e); };
    txtbuscar.Change += [this] { atender([this] { ArmarConsulta(); }); };
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
    if (!lista_) return;
    Busqueda b = leer_busqueda(txtbuscar.Text(), RelojSistema{}.hoy());
    ctlConsulta1.Narrow(consulta() + alcance(b), std::move(b.palabras));
    resumir();
}

/// Where a text is looked for, so that no key reads more than that.
std::string frmBuscaQuorvel::alcance(const Busqueda& b) {
    const bool ordenada = ctlConsulta1.sorting().column >= 0;
    if (b.desde) {
        lblAlcance.SetCaption("Del " + fecha_dmy(*b.desde) + " al " + fecha_dmy(*b.hasta));
        return " and f_comp>=" + sql_fecha(*b.desde) + " and f_comp<=" + sql_fecha(*b.hasta);
    }
    if (b.palabras.empty() && !ordenada) {
        lblAlcance.SetCaption("");
        return {};
    }
    if (!comienzo_) comienzo_ = fecha_de_los_ultimos(*glbdb, glbSQL, ALCANCE);
    lblAlcance.SetCaption(*comienzo_ ? "Desde el " + fecha_dmy(**comienzo_) +
                                           "; para ir más atrás agregue un mes (10/2025)"
                                     : "En todos los comprobantes");
    return *comienzo_ ? " and f_comp>=" + sql_fecha(**comienzo_) : "";
}

/// Sums are told of lists that have been read to their end only.
void frmBuscaQuorvel::resumir() {
    if (ctlConsulta1.sorting().column >= 0 || !lblAlcance.Caption().empty()) ctlConsulta1.read_all();
    if (!ctlConsulta1.complete()) return lblResumen.SetCaption("Los más recientes primero");
    const auto& filas = ctlConsulta1.rows();
    const auto columna = [&](const char* nombre) {
        return static_cast<std::size_t>(std::ranges::find(ctlConsulta1.columns(), nombre) -
                                        ctlConsulta1.columns().begin());
    };
    const std::size_t debe = columna("t_debe"), haber = columna("t_haber");
    std::int64_t suma_debe = 0, suma_haber = 0;
    for (const auto& fila : filas) {
        suma_debe += val_entero(fila.at(debe));
        suma_haber += val_entero(fila.at(haber));
    }
    lblResumen.SetCaption(
        std::to_string(filas.size()) + (filas.size() == 1 ? " comprobante" : " comprobantes") + "  ·  Debe " +
        Decimal(suma_debe).formato("#,##0") + "  ·  Haber " + Decimal(suma_haber).formato("#,##0"));
}

/// What is typed in the list goes on in the box.
void frmBuscaQuorvel::tecla_de_la_lista(ui::KeyEvent& e) {
    const bool escribe = e.key == ui::Key::character || e.key == ui::Key::backspace;
    if (!escribe || e.ctrl || e.alt || !txtbuscar.SetFocus()) return;
    std::string texto = txtbuscar.Text();
    e.handled = true;
    if (e.key == ui::Key::character)
        texto += ui::utf8(e.ch);
    else
        ui::drop_last(texto);
    txtbuscar.user_edit(texto);
}

/// The list is worked from the box.
void frmBuscaQuorvel::tecla_del_texto(ui::KeyEvent& e) {
    const bool mueve = e.key == ui::Key::up || e.key == ui::Key::down || e.key == ui::Key::page_up ||
                       e.key == ui::Key::page_down || e.key == ui::Key::enter;
    const bool ordena = e.ctrl && (e.key == ui::Key::left || e.key == ui::Key::right);
    if (!mueve && !ordena) return;
    ctlConsulta1.work(e);
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
