#include "screen/asistentes/frmAsistente2.h"

#include "assistants/auxiliares.h"
#include "assistants/libros.h"
#include "text/letras_utf8.h"

namespace quorvel {

frmAsistente2::frmAsistente2(ui::Escritorio& escritorio)
    : Form(escritorio, "frmAsistente2", "Asistente Retiro Socio") {
    conectar_cuenta(*this, *this, {txtCuenta, lblCuenta, cmdCuenta}, std::nullopt);
    conectar_cuenta(*this, *this, {txtCuenta2, lblCuenta2, cmdcuenta2}, parte_auxiliar());
    conectar_auxiliar(*this, *this, parte_auxiliar(), txtCuenta2);
    conectar_contraparte(*this, *this, contraparte());
    habilitar(parte_auxiliar(), false);
    conectar_monto(*this, txttotal, [] {});
    conectar_salidas(*this, cmdaceptar, cmdcancelar, [this] { cmdaceptar_Click(); });
    Settled += [this] {
        if (visible()) pie_.mostrar(*this, exigencias(), [this] { return armar(); });
    };
}

void frmAsistente2::Form_Load() {
    gblnaceptar = false;
    cmbdoc_libro.Clear();
    for (const std::string_view documento : documentos_ofrecidos(RET_SOCIO))
        cmbdoc_libro.AddItem(std::string(documento));
    CargarAuxiliaresRut(*this, contraparte());
}

void frmAsistente2::habilitar_auxiliar() {
    habilitar(parte_auxiliar(), cuenta_requiere_auxiliar(*this, txtCuenta2.Text()));
}

std::vector<Linea> frmAsistente2::armar() const {
    const std::string banco = txtCuenta.Text();
    const std::string auxiliar =
        cuenta_requiere_auxiliar(*this, banco) ? codigo_de_entrada(cmbAuxiliar.Text()) : "";
    return lineas_retiro_socio(
        {banco, auxiliar, txtCuenta2.Text(), txtAuxiliar2.Text(), Decimal::leer(txttotal.Text())}, concepto);
}

std::array<Exigencia, 5> frmAsistente2::exigencias() {
    return {{{!cmbAuxiliar.Text().empty(), FALTA_AUXILIAR_CONTRAPARTE, &cmbAuxiliar},
             {!recortar(cmbdoc_libro.Text()).empty(), "Ingrese documento", &cmbdoc_libro},
             {!txtCuenta2.Text().empty(), "Ingrese cuenta SOCIO", &txtCuenta2},
             {!txtCuenta.Text().empty(), "Ingrese cuenta bancos", &txtCuenta},
             {txttotal.Value() != 0, "Ingrese total", &txttotal}}};
}

void frmAsistente2::cmdaceptar_Click() {
    const std::string banco = txtCuenta.Text(), socio = txtCuenta2.Text();
    if (!exigir_todas(*this, exigencias()) ||
        !comprobar(*this, existe_cuenta(*this, socio), "Cuenta SOCIO no válida") ||
        !comprobar(*this, existe_cuenta(*this, banco), "Cuenta BANCOS no válida") ||
        !exigir_auxiliares(*this, *this, parte_auxiliar(), socio, cmbAuxiliar))
        return;
    aceptar_lineas(*this, *this, armar(), txttotal);
}

void frmAsistente2::Form_KeyDown(ui::KeyEvent& e) { tecla_dialogo(*this, e, cmdaceptar); }

} // namespace quorvel
