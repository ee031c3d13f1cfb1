#include "screen/asistentes/frmAsistente2.h"

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
    txttotal.SetRightAligned(true);
    txttotal.LeftChanged += [this](bool&) { formatear_monto(txttotal); };
    cmdaceptar.Click += [this] { atender([this] { cmdaceptar_Click(); }); };
    cmdaceptar.SetToolTip("F5");
    cmdcancelar.SetToolTip("Esc");
    cmdcancelar.Click += [this] { Hide(); };
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

void frmAsistente2::cmdaceptar_Click() {
    const std::string banco = txtCuenta.Text(), socio = txtCuenta2.Text();
    const bool paso =
        exigir(*this, !cmbAuxiliar.Text().empty(), FALTA_AUXILIAR_CONTRAPARTE, &cmbAuxiliar) &&
        exigir(*this, !recortar(cmbdoc_libro.Text()).empty(), "Ingrese documento", &cmbdoc_libro) &&
        exigir(*this, !socio.empty(), "Ingrese cuenta SOCIO", &txtCuenta2) &&
        exigir(*this, !banco.empty(), "Ingrese cuenta bancos", &txtCuenta) &&
        exigir(*this, txttotal.Value() != 0, "Ingrese total", &txttotal) &&
        exigir(*this, existe_cuenta(*this, socio), "Cuenta SOCIO no válida") &&
        exigir(*this, existe_cuenta(*this, banco), "Cuenta BANCOS no válida");
    if (!paso || !exigir_auxiliares(*this, *this, parte_auxiliar(), socio, cmbAuxiliar)) return;
    gblnaceptar = true;
    Hide();
}

void frmAsistente2::Form_KeyDown(ui::KeyEvent& e) { tecla_dialogo(*this, e, cmdaceptar); }

} // namespace quorvel
