#include "screen/papeles/frmfactura.h"

#include "interchange/monto_papel.h"
#include "interchange/tablas_impresion.h"
#include "screen/consultas/consultas.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "text/rut.h"

#include <array>

namespace quorvel {

namespace {
enum Columna { SEC, DESCRIPCION, CANTIDAD, PRECIO, TOTAL, COLUMNAS };
constexpr std::size_t LARGO_MAXIMO = 60;
} // namespace

frmfactura::frmfactura(ui::Escritorio& escritorio, EntradaFactura entrada)
    : Form(escritorio, "frmfactura", "Información Factura"), x_(std::move(entrada)) {
    txtNeto.SetRightAligned(true);
    txttotal.SetRightAligned(true);
    txtruc.SetUpperCase(true);
    txtfecha.SetRefusesInvalid(true);
    txtruc.LeftChanged += [this](bool& quedarse) { txtruc_LeftChanged(quedarse); };
    // what figure and words would read differently keeps its box: the form's door shows what is thrown
    txtNeto.LeftChanged += [this](bool&) { txtNeto_LeftChanged(); };
    txttotal.LeftChanged += [this](bool&) { (void)monto_papel(txttotal.Text()); };
    cmdrut.SetEnterStop(false);
    cmdrut.SetPress(ui::Press::asks_nothing);
    cmdrut.SetToolTip("Busca un cliente de comprobantes anteriores (Ctrl+Y)");
    cmdaceptar.SetShortcut("f5");
    cmdImprimir.SetShortcut("f6");
    // an edit that is open is none of the invoice's lines yet: it stays open, and the check says so
    cmdaceptar.SetPress(ui::Press::commands);
    cmdImprimir.SetPress(ui::Press::commands);
    cmdcancelar.SetPress(ui::Press::asks_nothing);
    cmdrut.Click += [this] { atender([this] { cmdrut_Click(); }); };
    cmdaceptar.Click += [this] { atender([this] { cmdaceptar_Click(); }); };
    cmdImprimir.Click += [this] { atender([this] { cmdImprimir_Click(); }); };
    cmdcancelar.Click += [this] { atender([this] { Unload(); }); };
    grdfac.BeforeColEdit += [](int col, bool& cancel) { cancel = cancel || col == SEC || col == TOTAL; };
    grdfac.BeforeColUpdate += [this](int col, const std::string&, bool& cancel) {
        atender([&] { grdfac_BeforeColUpdate(col, cancel); });
    };
    grdfac.AfterColUpdate += [this](int col) { atender([&] { grdfac_AfterColUpdate(col); }); };
    grdfac.RowsChanged += [this] { grdfac_RowsChanged(); };
    grdfac.RowColChange += [this](int, int) { mostrar_cuadre(); };
    txtNeto.Change += [this] { mostrar_cuadre(); };
    preparar_columnas();
}

void frmfactura::preparar_columnas() {
    struct Diseno {
        const char* titulo;
        int ancho, alineacion;
    };
    constexpr std::array<Diseno, COLUMNAS> DISENO{{{"Sec", 40, 0},
                                                   {"Descripcion", 370, 0},
                                                   {"Cantidad", 90, 1},
                                                   {"Precio", 110, 1},
                                                   {"Total", 120, 1}}};
    grdfac.SetCols(COLUMNAS);
    for (int i = 0; i < COLUMNAS; ++i) {
        const Diseno& d = DISENO.at(static_cast<std::size_t>(i));
        grdfac.Columns(i).Caption = d.titulo;
        grdfac.Columns(i).Width = d.ancho;
        grdfac.Columns(i).Alignment = d.alineacion;
    }
    grdfac.SetEnterColumns(DESCRIPCION, PRECIO);
    grdfac.SetCol(DESCRIPCION);
}

void frmfactura::Form_Activate() {
    if (iniciada_) return;
    iniciada_ = true;
    mostrar_cuadre();
    const Comprobante& c = x_.comprobante;
    const auto guardada = leer_factura(*x_.glbdb, c.clave());
    mostrar_montos(montos_iniciales(c.totales.debe, iva_del_comprobante(c, x_.gstriva, x_.gstriva_compra)));
    if (guardada) return mostrar_factura(*guardada);
    txtruc.SetText(recortar(c.rut_persona));
    txtnombre.SetText(recortar(c.nombre));
    buscar_por_rut();
    txtfecha.SetDate(c.fecha_factura);
    txtfactura.SetText(c.num_ref);
}

void frmfactura::mostrar_montos(const MontosFactura& m) {
    txtNeto.SetText(m.neto);
    lbliva.SetCaption(m.iva);
    txttotal.SetText(m.total);
}

void frmfactura::mostrar_factura(const Factura& f) {
    txtfactura.SetText(f.numero);
    txtfecha.SetDate(f.fecha);
    txtruc.SetText(f.cliente.ruc);
    txtnombre.SetText(f.cliente.nombre);
    mostrar_cliente(f.cliente);
    grdfac.Clear();
    int sec = 0;
    for (const LineaFactura& l : f.lineas)
        grdfac.AddItem(std::to_string(++sec) + "\t" + sin_controles(l.descripcion) + "\t" + l.cantidad +
                       "\t" + l.precio + "\t" + l.total);
    mostrar_cuadre();
}

void frmfactura::mostrar_cuadre() {
    constexpr const char* PENDIENTE =
        "\nLa línea que escribe cuenta al pasar a otra fila, con Enter o un clic";
    lblcuadre.SetCaption(cuadre_factura(leer_lineas(), txtNeto.Text()) +
                         (grdfac.NewRowPending() != 0 ? PENDIENTE : ""));
}

/// The five boxes that the person master fills.
void frmfactura::mostrar_cliente(const Cliente& c) {
    txttelefonos.SetText(c.telefonos);
    txtciudad.SetText(c.ciudad);
    txtcomuna.SetText(c.comuna);
    txtdireccion.SetText(c.direccion);
    txtgiro.SetText(c.giro);
}

void frmfactura::buscar_por_rut() {
    mostrar_cliente(buscar_cliente(*x_.glbdb, txtruc.Text()).value_or(Cliente{}));
}

void frmfactura::txtruc_LeftChanged(bool& quedarse) {
    const ResultadoRut r = validarut(con_guion(txtruc.Text()));
    quedarse = !r.valido;
    if (quedarse) return critico(r.mensaje);
    txtruc.SetText(r.texto);
    buscar_por_rut();
}

void frmfactura::txtNeto_LeftChanged() {
    (void)monto_papel(txtNeto.Text());
    mostrar_montos(montos_del_neto(txtNeto.Text()));
}

void frmfactura::cmdrut_Click() {
    const auto elegida = elegir_persona(escritorio(), *x_.glbdb);
    if (!elegida) return;
    txtruc.SetText(elegida->codigo);
    txtnombre.SetText(elegida->nombre);
    buscar_por_rut();
}

void frmfactura::grdfac_BeforeColUpdate(int col, bool& cancel) {
    const auto rechazar = [&](const char* mensaje) {
        cancel = true;
        critico(mensaje);
    };
    const std::string texto = grdfac.Value(col);
    if (largo(texto) > LARGO_MAXIMO) return rechazar("Longitud máxima del campo 60");
    if ((col == CANTIDAD || col == PRECIO) && !monto_sql(texto)) rechazar("Monto no válido");
}

void frmfactura::grdfac_AfterColUpdate(int) {
    grdfac.SetValue(SEC, std::to_string(grdfac.Row() + 1));
    grdfac.SetValue(TOTAL, total_linea(grdfac.Value(CANTIDAD), grdfac.Value(PRECIO)));
    mostrar_cuadre();
}

void frmfactura::grdfac_RowsChanged() {
    for (int i = 0; i < grdfac.Rows(); ++i) grdfac.SetTextMatrix(i, SEC, std::to_string(i + 1));
    mostrar_cuadre();
}

std::vector<LineaFactura> frmfactura::leer_lineas() const {
    std::vector<LineaFactura> lineas;
    for (int i = 0; i < grdfac.Rows(); ++i)
        lineas.push_back({grdfac.TextMatrix(i, DESCRIPCION), grdfac.TextMatrix(i, CANTIDAD),
                          grdfac.TextMatrix(i, PRECIO), grdfac.TextMatrix(i, TOTAL)});
    return lineas;
}

Factura frmfactura::leer_pantalla() const {
    Factura f;
    f.numero = txtfactura.Text();
    f.fecha = txtfecha.date();
    f.cliente = {txtruc.Text(),    txtnombre.Text(), txtdireccion.Text(), txtcomuna.Text(),
                 txtciudad.Text(), txtgiro.Text(),   txttelefonos.Text()};
    f.neto = txtNeto.Text();
    f.iva = lbliva.Caption();
    f.total = txttotal.Text();
    f.lineas = leer_lineas();
    return f;
}

bool frmfactura::grabar() {
    const Factura f = leer_pantalla();
    if (const auto r = ValidarFactura(f, grdfac.EditActive() || grdfac.NewRowPending() != 0)) {
        critico(r->mensaje);
        const std::pair<Campo, ui::Control*> controles[] = {
            {Campo::numero, &txtfactura}, {Campo::fecha, &txtfecha}, {Campo::detalle, &grdfac}};
        for (const auto& [campo, control] : controles)
            if (campo == r->campo) control->SetFocus();
        if (r->fila) grdfac.SetRow(*r->fila);
        if (r->columna) grdfac.SetCol(*r->columna);
        return false;
    }
    const Desenlace d = GrabarFactura(*x_.glbdb, x_.comprobante.clave(), f);
    if (!d) critico(d.mensaje());
    return d.como == Desenlace::hecho;
}

void frmfactura::cmdaceptar_Click() { grabar(); }

void frmfactura::cmdImprimir_Click() {
    // an invoice that was not saved must not go out on paper
    if (!pregunta("Esta seguro que desea imprimir") || !grabar()) return;
    const Factura f = leer_pantalla();
    clsConexion& reporte = base_informes(x_.glbdbReport);
    exigir_base_de_informes(*x_.glbdb, reporte);
    preparar_factura(reporte, f);
    const std::string titulo = "Factura " + f.numero;
    x_.impresor->run({archivo_informe(reporte.Name(), "", "ctcfactura"),
                      "ctcfactura",
                      &reporte,
                      true,
                      titulo,
                      false,
                      x_.empresa + " " + titulo,
                      {}});
}

void frmfactura::Form_KeyDown(ui::KeyEvent& e) {
    if (e.key == ui::Key::escape) {
        e.handled = true;
        Unload();
    } else if (e.ctrl && e.ch == U'y') {
        e.handled = true;
        cmdrut.press();
    }
}

} // namespace quorvel
