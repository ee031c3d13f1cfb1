#include "screen/asistentes/frmAsistente.h"

#include "assistants/impuestos.h"
#include "assistants/libros.h"
#include "text/letras_utf8.h"

namespace quorvel {

frmAsistente::frmAsistente(ui::Escritorio& escritorio) : Form(escritorio, "frmAsistente", "Asistente") {
    conectar_cuenta(*this, *this, {txtCuenta, lblCuenta, cmdCuenta}, parte_auxiliar());
    conectar_auxiliar(*this, *this, parte_auxiliar(), txtCuenta);
    conectar_contraparte(*this, *this, contraparte());
    habilitar(parte_auxiliar(), false);
    conectar_montos();
    cmbcodigo_otro_impuesto.Click += [this] { CargarTasaOtroImpuesto(); };
    cmbporcentaje.Click += [this] { reaccionar(porcentaje_elegido); };
    cmbdoc_libro.Click += [this] { mostrar_cuadre(); };
    cmdiva.Click += [this] {
        try {
            reaccionar(calcular_iva);
        } catch (const std::exception& e) {
            critico(std::string("Problemas al calcular error: ") + e.what());
        }
    };
    cmdaceptar.Click += [this] { atender([this] { cmdaceptar_Click(); }); };
    cmdaceptar.SetToolTip("F5");
    cmdcancelar.SetToolTip("Esc");
    cmdcancelar.Click += [this] { Hide(); };
}

void frmAsistente::conectar_montos() {
    const struct {
        ui::ctlEntrada& monto;
        Importes (*reaccion)(Importes);
    } montos[] = {{txtNeto, neto_cambiado},
                  {txtExento, exento_cambiado},
                  {txtotro, otro_cambiado},
                  {txttotal, total_cambiado}};
    for (const auto& m : montos) {
        m.monto.SetRightAligned(true);
        m.monto.Change += [this] { mostrar_cuadre(); };
        m.monto.LeftChanged += [this, &monto = m.monto, reaccion = m.reaccion](bool&) {
            formatear_monto(monto);
            reaccionar(reaccion);
        };
    }
    txttasa_impuesto_otro.SetRightAligned(true);
    txttasa_impuesto_otro.LeftChanged += [this](bool&) { reaccionar(tasa_cambiada); };
}

void frmAsistente::Form_Load() {
    gblnaceptar = false;
    cmbdoc_libro.Clear();
    for (const std::string_view documento : documentos_ofrecidos(gintlibro))
        cmbdoc_libro.AddItem(std::string(documento));
    mostrar_segun_libro();
    CargarAuxiliaresRut(*this, contraparte());
    CargarOtrosImpuestos();
    cmbporcentaje.Clear();
    for (const std::string_view p : PORCENTAJES_RETENCION) cmbporcentaje.AddItem(std::string(p));
    cmbporcentaje.SetListIndex(0);
}

void frmAsistente::mostrar_segun_libro() {
    const bool caja = gintlibro == INGRESOS || gintlibro == EGRESOS;
    const bool otro = gintlibro == VENTAS || gintlibro == COMPRAS;
    chktrasponer.SetVisible(caja);
    for (ui::Control* c : std::initializer_list<ui::Control*>{&txtNeto, &lblneto, &lbliva, &lblimpuesto,
                                                              &cmbporcentaje, &lblporcentaje})
        c->SetVisible(!caja);
    // VAT written by these would end up as retention.
    for (ui::Control* c : std::initializer_list<ui::Control*>{
             &cmdiva, &cmbcodigo_otro_impuesto, &lblcodigo_otro, &txttasa_impuesto_otro, &lbltasa, &txtotro})
        c->SetVisible(otro);
    txtExento.SetVisible(gintlibro != RETENCIONES);
    lblexento.SetVisible(gintlibro != RETENCIONES);
}

void frmAsistente::CargarOtrosImpuestos() {
    cmbcodigo_otro_impuesto.Clear();
    for (std::string& entrada : entradas_otro_impuesto(*gdb))
        cmbcodigo_otro_impuesto.AddItem(std::move(entrada));
    cmbcodigo_otro_impuesto.SetListIndex(0);
}

void frmAsistente::CargarTasaOtroImpuesto() {
    const auto tasa = tasa_de_entrada(*gdb, cmbcodigo_otro_impuesto.Text());
    if (!tasa || *tasa == txttasa_impuesto_otro.Text()) return;
    txttasa_impuesto_otro.SetText(*tasa);
    reaccionar(tasa_cambiada);
}

void frmAsistente::habilitar_auxiliar() {
    habilitar(parte_auxiliar(), cuenta_requiere_auxiliar(*this, txtCuenta.Text()));
}

Importes frmAsistente::leer() const {
    Importes i;
    i.libro = gintlibro;
    i.documento = cmbdoc_libro.Text();
    i.neto = txtNeto.Text();
    i.exento = txtExento.Text();
    i.otro = txtotro.Text();
    i.total = txttotal.Text();
    i.iva = lbliva.Caption();
    i.tasa = txttasa_impuesto_otro.Text();
    i.porcentaje = cmbporcentaje.Text();
    return i;
}

void frmAsistente::mostrar(const Importes& i) {
    lbliva.SetCaption(i.iva);
    txtNeto.SetText(i.neto);
    txtotro.SetText(i.otro);
    txttotal.SetText(i.total);
    mostrar_cuadre();
}

void frmAsistente::cmdaceptar_Click() {
    const std::string cuenta = txtCuenta.Text();
    const bool paso =
        exigir(*this, !cmbAuxiliar.Text().empty(), FALTA_AUXILIAR_CONTRAPARTE, &cmbAuxiliar) &&
        exigir(*this, !recortar(cmbdoc_libro.Text()).empty(), "Ingrese documento", &cmbdoc_libro) &&
        exigir(*this, !cuenta.empty(), "Ingrese cuenta", &txtCuenta) &&
        exigir(*this, txttotal.Value() != 0, "Ingrese total", &txttotal) &&
        exigir(*this, existe_cuenta(*this, cuenta), "Cuenta no válida");
    if (!paso || !exigir_auxiliares(*this, *this, parte_auxiliar(), cuenta, cmbAuxiliar)) return;
    gblnaceptar = true;
    Hide();
}

void frmAsistente::Form_KeyDown(ui::KeyEvent& e) { tecla_dialogo(*this, e, cmdaceptar); }

} // namespace quorvel
