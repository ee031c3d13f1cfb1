#include "screen/papeles/frmcheque.h"

#include "interchange/monto_papel.h"
#include "interchange/tablas_impresion.h"
#include "screen/consultas/consultas.h"
#include "text/numeros.h"

namespace quorvel {

frmcheque::frmcheque(ui::Escritorio& escritorio, EntradaCheque entrada)
    : Form(escritorio, "frmcheque", "Cheque"), x_(std::move(entrada)) {
    txttotal.SetRightAligned(true);
    txttotal.Change += [this] { txttotal_Change(); };
    txttotal.LeftChanged += [this](bool&) { txttotal_LeftChanged(); };
    txtfecha.SetRefusesInvalid(true);
    cmdbanco.SetEnterStop(false);
    cmdbanco.SetPress(ui::Press::asks_nothing);
    cmdbanco.SetToolTip("Busca una cuenta de banco ya usada y propone el cheque que sigue (Ctrl+Y)");
    cmdbanco.Click += [this] { atender([this] { cmdbanco_Click(); }); };
    cmdaceptar.SetShortcut("f5");
    cmdImprimir.SetShortcut("f6");
    cmdcancelar.SetPress(ui::Press::asks_nothing);
    cmdaceptar.Click += [this] { atender([this] { cmdaceptar_Click(); }); };
    cmdImprimir.Click += [this] { atender([this] { cmdImprimir_Click(); }); };
    cmdprueba.Click += [this] { atender([this] { cmdprueba_Click(); }); };
    cmdprueba.SetToolTip("Muestra el cheque sobre una regla en milímetros, sin grabarlo");
    cmdcancelar.Click += [this] { atender([this] { Unload(); }); };
}

void frmcheque::Form_Load() {
    Cheque propuesto;
    propuesto.beneficiario = x_.nombre;
    propuesto.fecha = x_.fecha_doc;
    propuesto.cheque = x_.num_ref;
    mostrar(leer_cheque(*x_.glbdb, x_.clave).value_or(propuesto));
    txttotal.SetText(x_.total.formato("#,##0"));
    txttotal_Change();
}

void frmcheque::mostrar(const Cheque& c) {
    txtcheque.SetText(c.cheque);
    txtfecha.SetDate(c.fecha);
    txtbeneficiario.SetText(c.beneficiario);
    txtbanco.SetText(c.banco);
    txtCuenta.SetText(c.cuenta);
    chknominativo.SetValue(c.nominativo);
    chkcruzado.SetValue(c.cruzado);
}

Cheque frmcheque::leer_pantalla() const {
    Cheque c;
    c.cheque = txtcheque.Text();
    c.fecha = txtfecha.date();
    c.beneficiario = txtbeneficiario.Text();
    c.banco = txtbanco.Text();
    c.cuenta = txtCuenta.Text();
    c.nominativo = chknominativo.Value();
    c.cruzado = chkcruzado.Value();
    return c;
}

void frmcheque::txttotal_Change() {
    try {
        lblmonto.SetCaption(monto_papel(txttotal.Text()).letras);
    } catch (const std::exception& e) { // half-typed amounts are no reason for a box at every key
        lblmonto.SetCaption(e.what());
    }
}

/// An amount that figure and words would read differently keeps the box.
void frmcheque::txttotal_LeftChanged() {
    (void)monto_papel(txttotal.Text());
    txttotal.SetText(Decimal::leer(txttotal.Text()).formato("#,##0.##"));
}

void frmcheque::cmdbanco_Click() {
    const auto elegida = elegir_cuenta(escritorio(), *x_.glbdb);
    if (!elegida) return;
    txtbanco.SetText(elegida->codigo);
    txtCuenta.SetText(elegida->nombre);
    if (const auto numero = proximo_cheque(*x_.glbdb, elegida->codigo, elegida->nombre))
        txtcheque.SetText(std::to_string(*numero));
}

bool frmcheque::grabar() {
    const Desenlace d = GrabarCheque(*x_.glbdb, x_.clave, leer_pantalla(), x_.usuario);
    if (!d) critico(d.mensaje());
    return d.como == Desenlace::hecho;
}

void frmcheque::cmdaceptar_Click() {
    grabar();
    informacion("Cheque Grabado"); // also after a failure, whose own message came first
}

void frmcheque::cmdImprimir_Click() {
    (void)monto_papel(txttotal.Text()); // one that no cheque can carry is told before anything is done
    if (!pregunta("Esta seguro que desea imprimir") || !grabar()) return;
    if (imprimir(leer_pantalla(), false)) Unload();
}

void frmcheque::cmdprueba_Click() { imprimir(leer_pantalla(), true); }

bool frmcheque::imprimir(const Cheque& c, bool prueba) {
    clsConexion& reporte = base_informes(x_.glbdbReport);
    exigir_base_de_informes(*x_.glbdb, reporte);
    preparar_cheque(reporte, x_.empresa, c, txttotal.Text());
    const std::string titulo = "Cheque " + c.cheque;
    return x_.impresor->run({archivo_informe(reporte.Name(), "", informe_cheque(c)),
                             "ctccheque",
                             &reporte,
                             !prueba,
                             titulo,
                             prueba,
                             x_.empresa + " " + titulo,
                             {}});
}

void frmcheque::Form_KeyDown(ui::KeyEvent& e) {
    if (e.key == ui::Key::escape) {
        e.handled = true;
        Unload();
    } else if (e.ctrl && e.ch == U'y') {
        e.handled = true;
        cmdbanco.press();
    }
}

} // namespace quorvel
