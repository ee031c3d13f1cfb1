#include "apoyo/empresa.h"
#include "apoyo/escritorio_guion.h"
#include "apoyo/sesiones.h"
#include "screen/papeles/frmcheque.h"
#include "screen/papeles/frmfactura.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::apoyo;
using pruebas::EscritorioGuion;

namespace {

/// Notes what would have been printed.
struct ImpresorPrueba final : ReportPrinter {
    std::vector<std::string> trabajos;
    bool hay_papel = true;
    bool run(const ReportJob& job) override {
        trabajos.push_back(job.definition.filename().string() +
                           (job.to_printer ? " impresora" : " pantalla") + (job.ruler ? " regla" : ""));
        return hay_papel;
    }
};

class FormasPapeles : public ::testing::Test {
protected:
    std::unique_ptr<clsConexion> db = crear_empresa(Motor::sqlite);
    std::unique_ptr<clsConexion> reporte = abrir_sesion_informes(carpeta_nueva() + "/print.db");
    EscritorioGuion escritorio;
    ImpresorPrueba impresor;
    Comprobante c;

    void SetUp() override {
        crear_tablas_impresion(*reporte);
        c.empresa = 1;
        c.f_comp = leer_fecha("05/03/2024");
        c.documento = "001";
        c.num_docum = "7";
        c.libro = "VENTAS";
        c.rut_persona = "9.876.543-3 ";
        c.nombre = "ANA ROJAS ";
        c.num_ref = "4512";
        c.fecha_factura = leer_fecha("04/03/2024");
        c.totales.debe = 119000;
        c.lineas.resize(2);
        c.lineas[0].centro = "203001";
        c.lineas[0].haber = 19000;
        ejecutar(
            *db,
            "insert into ctcquorvel(empresa,f_comp,documento,num_docum) values (1,#03/05/2024#,'001','7')");
    }
    EntradaCheque entrada_cheque() {
        return {db.get(),    reporte.get(), &impresor, c.clave(),       1,
                "1 Empresa", "ANA ROJAS",   "4512",    c.fecha_factura, 1234567};
    }
    EntradaFactura entrada_factura() {
        return {db.get(), reporte.get(), &impresor, c, "203001", "109001", "1 Empresa"};
    }
    std::string cheques() { return filas(*db, "select cheque,beneficiario,cruzado from ctcquorvel"); }
    /// A product row as a person types it.
    static void producto(frmfactura& f, int fila, const char* descripcion, const char* cantidad,
                         const char* precio) {
        const char* celdas[] = {descripcion, cantidad, precio};
        for (int col = 1; col <= 3; ++col) {
            f.grdfac.move_to(fila, col);
            f.grdfac.begin_edit(false);
            for (const char* p = celdas[col - 1]; *p; ++p) f.grdfac.type(static_cast<char32_t>(*p));
            f.grdfac.commit_edit();
        }
        f.grdfac.move_to(fila + 1, 1);
    }
};
using Textos = std::vector<std::string>;

} // namespace

TEST_F(FormasPapeles, ChequeProposesSavesAndPrints) {
    {
        frmcheque f(escritorio, entrada_cheque());
        escritorio.al_abrir([&](ui::Form&) {
            EXPECT_EQ(f.txtbeneficiario.Text() + "|" + f.txtfecha.Text() + "|" + f.txtcheque.Text(),
                      "ANA ROJAS|04/03/2024|4512");
            EXPECT_EQ(f.lblmonto.Caption(),
                      "UN MILLÓN DOSCIENTOS TREINTA Y CUATRO MIL QUINIENTOS SESENTA Y SIETE");
            f.txtcheque.SetText("1040");
            f.txtbanco.SetText("BCI");
            f.cmdaceptar.press();
            f.cmdcancelar.press();
        });
        f.ShowModal();
    }
    EXPECT_EQ(escritorio.tomar_mensajes(), Textos{"Cheque Grabado"});
    EXPECT_EQ(cheques(), "1040|ANA ROJAS|0");
    frmcheque f(escritorio, entrada_cheque());
    escritorio.responder(ui::Answer::no);
    for (int i = 0; i < 2; ++i) escritorio.responder(ui::Answer::yes);
    escritorio.al_abrir([&](ui::Form&) {
        EXPECT_EQ(f.txtcheque.Text() + f.txtbanco.Text(), "1040BCI");
        f.chkcruzado.press();
        f.cmdImprimir.press(); // No
        EXPECT_EQ(cheques(), "1040|ANA ROJAS|0");
        f.txttotal.SetFocus();
        f.txttotal.user_edit("1234567,5");
        impresor.hay_papel = false;
        f.cmdImprimir.press();
        EXPECT_TRUE(f.visible()) << "the printer's dialog was let be";
        EXPECT_EQ(f.txttotal.Text(), "1.234.567,5") << "as figure and words read it";
        f.txttotal.SetText("1.234.567");
        impresor.hay_papel = true;
        f.cmdImprimir.press(); // Yes: saves, prints, closes
        EXPECT_FALSE(f.visible());
    });
    f.ShowModal();
    EXPECT_EQ(cheques(), "1040|ANA ROJAS|1");
    EXPECT_EQ(impresor.trabajos, Textos(2, "ctccheque1.rpt impresora"));
    EXPECT_EQ(filas(*reporte, "select monto_texto,cheque from ctccheque where secuencia=1"),
              "UN MILLÓN DOSCIENTOS TREINTA Y CUATRO MIL QUINIENTOS SESENTA Y SIETE|1040");
}

TEST_F(FormasPapeles, ATrialShowsTheChequeOnARulerAndSavesNothing) {
    frmcheque f(escritorio, entrada_cheque());
    escritorio.al_abrir([&](ui::Form&) {
        f.chkcruzado.press();
        f.cmdprueba.press();
        EXPECT_TRUE(f.visible());
        f.txttotal.SetText("doce");
        f.cmdprueba.press();
        f.cmdcancelar.press();
    });
    f.ShowModal();
    EXPECT_EQ(impresor.trabajos, Textos{"ctccheque1.rpt pantalla regla"});
    EXPECT_EQ(escritorio.tomar_mensajes().size(), 1U) << "an amount that is none";
    EXPECT_EQ(cheques(), "||");
}

TEST_F(FormasPapeles, TheMainDatabaseIsNoReportDatabase) {
    EntradaCheque x = entrada_cheque();
    x.glbdbReport = db.get();
    EntradaFactura y = entrada_factura();
    y.glbdbReport = db.get();
    frmcheque cheque(escritorio, x);
    escritorio.responder(ui::Answer::yes);
    escritorio.al_abrir([&](ui::Form&) {
        cheque.cmdImprimir.press();
        cheque.cmdcancelar.press();
    });
    cheque.ShowModal();
    frmfactura factura(escritorio, y);
    escritorio.responder(ui::Answer::yes);
    escritorio.al_abrir([&](ui::Form&) {
        producto(factura, 0, "Clavos", "1", "100.000");
        factura.cmdImprimir.press();
        factura.cmdcancelar.press();
    });
    factura.ShowModal();
    const std::string no =
        "La base de informes es la misma base contable: no se puede imprimir sin dañar los comprobantes";
    EXPECT_EQ(escritorio.tomar_mensajes(),
              (Textos{"Esta seguro que desea imprimir", no, "Esta seguro que desea imprimir", no}));
    EXPECT_TRUE(impresor.trabajos.empty());
    EXPECT_EQ(cheques(), "4512|ANA ROJAS|0") << "saved, not printed";
}

TEST_F(FormasPapeles, AFailedChequeIsNotPrinted) {
    ejecutar(*db, "delete from ctcquorvel");
    frmcheque f(escritorio, entrada_cheque());
    escritorio.responder(ui::Answer::yes);
    escritorio.al_abrir([&](ui::Form&) {
        f.cmdaceptar.press();
        f.cmdImprimir.press();
        EXPECT_TRUE(f.visible());
        f.close_by_user();
    });
    f.ShowModal();
    EXPECT_EQ(escritorio.tomar_mensajes(),
              (Textos{"Comprobante contable no encontrado", "Cheque Grabado",
                      "Esta seguro que desea imprimir", "Comprobante contable no encontrado"}));
    EXPECT_TRUE(impresor.trabajos.empty());
}

TEST_F(FormasPapeles, InvoiceIsFilledCheckedSavedAndPrinted) {
    frmfactura f(escritorio, entrada_factura());
    escritorio.responder(ui::Answer::yes);
    escritorio.responder(ui::Answer::yes);
    escritorio.al_abrir([&](ui::Form&) {
        EXPECT_EQ(f.txtNeto.Text() + "|" + f.lbliva.Caption() + "|" + f.txttotal.Text(),
                  "100.000|19.000|119.000");
        EXPECT_EQ(f.txtruc.Text() + "|" + f.txtnombre.Text() + "|" + f.txtfactura.Text() + "|" +
                      f.txtfecha.Text(),
                  "9.876.543-3|ANA ROJAS|4512|04/03/2024");
        f.cmdaceptar.press();
        producto(f, 0, "Clavos", "3", "33.000");
        EXPECT_EQ(f.grdfac.TextMatrix(0, 0) + "|" + f.grdfac.TextMatrix(0, 4), "1|99.000");
        f.cmdImprimir.press(); // does not add up: neither saved nor printed
        EXPECT_EQ(f.lblcuadre.Caption(), "Detalle 99.000, faltan 1.000 para el neto");
        producto(f, 1, "Otra", "1", "1");
        producto(f, 2, "Tornillos", "0,5", "2.000");
        f.grdfac.move_to(1, 2);
        f.grdfac.delete_row();
        EXPECT_EQ(f.grdfac.TextMatrix(1, 0) + f.grdfac.TextMatrix(1, 1), "2Tornillos") << "numbered anew";
        f.grdfac.SetFocus();
        for (const char* cantidad : {"1.5", "uno"}) {
            f.grdfac.begin_edit(false);
            f.grdfac.set_edit_text(cantidad);
            EXPECT_FALSE(f.grdfac.commit_edit()) << cantidad;
        }
        f.cmdaceptar.press(); // neither stored nor closed
        EXPECT_TRUE(f.grdfac.EditActive());
        EXPECT_EQ(filas(*db, "select count(*) from ftcfactura"), "0");
        f.grdfac.cancel_edit();
        f.cmdImprimir.press();
        f.cmdcancelar.press();
    });
    f.ShowModal();
    EXPECT_EQ(escritorio.tomar_mensajes(),
              (Textos{"Ingrese detalle la factura", "Esta seguro que desea imprimir",
                      "Total detalle 99.000 es diferente a neto factura 100.000. La diferencia es -1.000",
                      "Monto no válido", "Monto no válido",
                      "Cuadricula en modo de edicion, cambiese de fila para cambiar el modo ",
                      "Esta seguro que desea imprimir"}));
    EXPECT_EQ(impresor.trabajos, Textos{"ctcfactura.rpt impresora"});
    EXPECT_EQ(filas(*db, "select factura,proforma,cliente,descuento_esp,iva,valor_total from ftcfactura"),
              "1|4512|1|100000|19000|119000");
    EXPECT_EQ(filas(*db, "select observacion from ftdfactura order by producto"), "Clavos;Tornillos");

    frmfactura otra(escritorio, entrada_factura());
    escritorio.al_abrir([&](ui::Form&) {
        EXPECT_EQ(otra.grdfac.Rows(), 2);
        EXPECT_EQ(otra.grdfac.TextMatrix(1, 2) + "|" + otra.grdfac.TextMatrix(1, 4), "0,5|1.000");
        otra.txtNeto.SetFocus();
        otra.txtNeto.user_edit("250");
        otra.txtfactura.SetFocus();
        EXPECT_EQ(otra.lbliva.Caption() + "|" + otra.txttotal.Text(), "48|298");
        otra.cmdcancelar.press();
    });
    otra.ShowModal();
}

TEST_F(FormasPapeles, InvoiceGridAndRutRules) {
    frmfactura f(escritorio, entrada_factura());
    escritorio.al_abrir([&](ui::Form&) {
        f.grdfac.SetFocus();
        f.grdfac.move_to(0, 1);
        f.grdfac.begin_edit(false);
        f.grdfac.set_edit_text(std::string(61, 'x'));
        EXPECT_FALSE(f.grdfac.commit_edit());
        f.grdfac.cancel_edit();
        f.grdfac.move_to(0, 4);
        EXPECT_FALSE(f.grdfac.begin_edit());
        f.grdfac.cancel_pending_row();
        f.txtruc.SetFocus();
        f.txtruc.user_edit("87654321-0");
        f.txtfactura.SetFocus();
        f.txtruc.SetFocus();
        f.txtruc.user_edit("12345678-5");
        f.txtfactura.SetFocus();
        EXPECT_EQ(f.txtruc.Text(), "12.345.678-5");
        f.close_by_user();
    });
    f.ShowModal();
    const auto mensajes = escritorio.tomar_mensajes();
    ASSERT_EQ(mensajes.size(), 2U);
    EXPECT_EQ(mensajes[0], "Longitud máxima del campo 60");
}
