#include "screen/asistentes/frmAsistente.h"

#include "assistants/auxiliares.h"
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
    cmdiva.Click += [this] {
        try {
            reaccionar(calcular_iva);
        } catch (const std::exception& e) {
            critico(std::string("Problemas al calcular error: ") + e.what());
        }
    };
    cmdiva.SetEnterStop(false); // it may move a total that was typed as the paper has it
    conectar_salidas(*this, cmdaceptar, cmdcancelar, [this] { cmdaceptar_Click(); });
    Settled += [this] {
        if (visible()) mostrar_pie();
    };
}

void frmAsistente::conectar_montos() {
    const struct {
        ui::ctlEntrada& monto;
        Importes (*reaccion)(Importes);
    } montos[] = {{txtNeto, neto_cambiado},
                  {txtExento, exento_cambiado},
                  {txtotro, otro_cambiado},
                  {txttotal, total_cambiado}};
    for (const auto& m : montos)
        conectar_monto(*this, m.monto, [this, reaccion = m.reaccion] { reaccionar(reaccion); });
    txttasa_impuesto_otro.SetRightAligned(true);
    txttasa_impuesto_otro.LeftChanged += [this](bool& rechaza) {
        if (!tasa_escrita(txttasa_impuesto_otro.Text()))
            return rechazar_texto(*this, txttasa_impuesto_otro, "Tasa no válida", rechaza);
        reaccionar(tasa_cambiada);
    };
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
    if (gintlibro == RETENCIONES) lblneto.SetCaption("Líquido");
    const bool caja = gintlibro == INGRESOS || gintlibro == EGRESOS;
    const bool otro = gintlibro == VENTAS || gintlibro == COMPRAS;
    chktrasponer.SetVisible(caja);
    for (ui::Control* c : std::initializer_list<ui::Control*>{&txtNeto, &lblneto, &lbliva, &lblimpuesto})
        c->SetVisible(!caja);
    // Elsewhere an Enter stop at which typed digits choose a percentage, and write it as VAT.
    cmbporcentaje.SetVisible(gintlibro == RETENCIONES);
    lblporcentaje.SetVisible(gintlibro == RETENCIONES);
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
}

DocumentoTributario frmAsistente::documento() const {
    return {cmbdoc_libro.Text(),
            txtCuenta.Text(),
            txtauxiliar.Text(),
            codigo_de_entrada(cmbAuxiliar.Text()),
            Decimal::leer(txttotal.Text()),
            Decimal::leer(lbliva.Caption()),
            Decimal::leer(txtotro.Text()),
            chktrasponer.Value() == 1};
}

std::vector<Linea> frmAsistente::armar() const {
    if (gintlibro == RETENCIONES) return lineas_retencion(documento(), *config, concepto);
    return lineas_documento(variante(gintlibro), documento(), *config, concepto);
}

std::string frmAsistente::texto_lado() const {
    const bool debe = gintlibro == RETENCIONES || principal_al_debe(variante(gintlibro), documento());
    return debe ? "Cuenta al Debe" : "Cuenta al Haber";
}

void frmAsistente::mostrar_pie() {
    const bool con_otro = cmbcodigo_otro_impuesto.ListIndex() > 0 || !txttasa_impuesto_otro.Text().empty() ||
                          txtotro.Value() != 0;
    for (ui::Control* c :
         std::initializer_list<ui::Control*>{&cmbcodigo_otro_impuesto, &txttasa_impuesto_otro, &txtotro})
        c->SetEnterStop(con_otro);
    lbllado.SetCaption(texto_lado());
    lblCuadre.SetCaption(texto_cuadre(leer()));
    pie_.mostrar(*this, exigencias(), [this] { return armar(); });
}

std::array<Exigencia, 4> frmAsistente::exigencias() {
    return {{{!cmbAuxiliar.Text().empty(), FALTA_AUXILIAR_CONTRAPARTE, &cmbAuxiliar},
             {!recortar(cmbdoc_libro.Text()).empty(), "Ingrese documento", &cmbdoc_libro},
             {!txtCuenta.Text().empty(), "Ingrese cuenta", &txtCuenta},
             {txttotal.Value() != 0, "Ingrese total", &txttotal}}};
}

void frmAsistente::cmdaceptar_Click() {
    const std::string cuenta = txtCuenta.Text();
    if (!exigir_todas(*this, exigencias()) ||
        !comprobar(*this, existe_cuenta(*this, cuenta), "Cuenta no válida") ||
        !exigir_auxiliares(*this, *this, parte_auxiliar(), cuenta, cmbAuxiliar))
        return;
    aceptar_lineas(*this, *this, armar(), txttotal);
}

void frmAsistente::Form_KeyDown(ui::KeyEvent& e) { tecla_dialogo(*this, e, cmdaceptar); }

} // namespace quorvel
