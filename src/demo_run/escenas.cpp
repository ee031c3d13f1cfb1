#include "demo_run/escenas.h"

#include "qt/FormWindow.h"
#include "screen/frmQuorvel.h"

namespace quorvel::demo_run {

namespace {

constexpr DocumentoDemo LICORES{"COMPRA",
                                "COMPRAS",
                                "Compra de licores",
                                "FACTURA",
                                "78103",
                                "76230815-0",
                                "DISTRIBUIDORA DE LICORES EL TONEL LTDA."};
constexpr DocumentoDemo RETIRO{"PAGO", "RET. SOCIO", "Retiro de socio",    "EGRESO",
                               "31",   "8215430-2",  "LUIS AROMOS VERGARA"};
constexpr DocumentoDemo VENTA{"VENTA", "VENTAS",     "Venta para banquete",        "FACTURA",
                              "4512",  "77340611-1", "BANQUETERIA O'HIGGINS LTDA."};

struct Casilla {
    const char *nombre, *texto;
};

/// In the grid F2 edits a cell.
void nuevo(const Estudio& e) {
    e.f.txtconcepto.SetFocus();
    e.m.t.tecla(Qt::Key_F2);
}

/// The assistant of the book on the screen. @param salida leaves it: F5 accepts
void con_asistente(Estudio& e, const std::string& foto, Qt::Key salida,
                   const std::vector<Casilla>& casillas) {
    e.fotografo.planear({foto, salida, [&e, casillas](QWidget& w) {
                             const ui::Form& forma = dynamic_cast<qt::FormWindow&>(w).form();
                             for (const Casilla& c : casillas) e.m.campo(forma, c.nombre, c.texto);
                             e.m.t.tecla(Qt::Key_Tab); // what was written last is taken over
                         }});
    e.m.t.tecla(Qt::Key_F4);
}

} // namespace

void encabezado(Estudio& e, const DocumentoDemo& d) {
    const std::string hoy = fecha_dmy(e.f.servicios.reloj.hoy());
    const Casilla casillas[] = {
        {"cmbDocumento", d.documento},  {"cmblibro", d.libro},     {"txtconcepto", d.glosa},
        {"cmbdoc_libro", d.doc_libro},  {"txtnum_ref", d.numero},  {"txtfecha_doc", hoy.c_str()},
        {"txtfecha_pago", hoy.c_str()}, {"txtrut_persona", d.rut}, {"txtnombre", d.nombre}};
    for (const Casilla& c : casillas) e.m.campo(e.f, c.nombre, c.texto);
}

void escena_asistentes(Estudio& e) {
    nuevo(e);
    encabezado(e, LICORES);
    con_asistente(e, "asistente", Qt::Key_Escape,
                  {{"txtCuenta", "106001"},
                   {"txtNeto", "1250000"},
                   {"txtExento", "20000"},
                   {"cmbcodigo_otro_impuesto", "024"}});
    nuevo(e);
    encabezado(e, RETIRO);
    con_asistente(e, "asistente_socio", Qt::Key_Escape,
                  {{"txtCuenta", "101003"},
                   {"txtCuenta2", "105001"},
                   {"txtAuxiliar2", "000049"},
                   {"txttotal", "500000"}});
}

void escena_factura(Estudio& e) {
    nuevo(e);
    encabezado(e, VENTA);
    con_asistente(e, {}, Qt::Key_F5, {{"txtCuenta", "401001"}, {"txtNeto", "1072160"}});
    e.m.t.tecla(Qt::Key_F5);
    e.fotografo.planear({{}, Qt::Key_Escape, [&e](QWidget& w) {
                             ui::Form& forma = dynamic_cast<qt::FormWindow&>(w).form();
                             const auto& lineas = dynamic_cast<const ui::ctlPlanilla&>(*forma.find("grdfac"));
                             if (!e.m.ir_a(forma, "grdfac")) return;
                             constexpr const char* LINEAS[][3] = {
                                 {"Vino Carménère reserva 750 cc", "120", "4990"},
                                 {"Pisco especial 35° 1 litro", "24", "6490"},
                                 {"Agua mineral sin gas 500 cc", "240", "390"},
                                 {"Copa de cristal, caja de 6 unidades", "10", "18900"},
                                 {"Despacho", "1", "35000"}};
                             for (const auto& l : LINEAS) e.m.renglon(lineas, 1, {l[0], l[1], l[2]});
                             e.m.boton(forma, "cmdImprimir");
                         }});
    e.m.t.tecla(Qt::Key_F6, Qt::ControlModifier);
}

void escena_cierre(Estudio& e) {
    nuevo(e);
    e.m.t.tecla(Qt::Key_F10, Qt::ControlModifier);
    e.fotografo.foto(e.ventana, "cierre_anual");
}

} // namespace quorvel::demo_run
