// Goal: a person books a month of the register by keys, mends what is unknown and finds what differs. Method:
// the form itself on both engines, key by key, as the window and the driver hand them on.
#include "apoyo/pantalla.h"
#include "registro/archivo.h"
#include "screen/registro/frmContrapartes.h"
#include "screen/registro/frmRegistro.h"

#include <gtest/gtest.h>

#include <fstream>

using namespace quorvel;
using namespace quorvel::pruebas;

namespace {

const std::string ROBLE = "76418352-5", NUEVA = "77777777-7";

class RegistroPantalla : public testing::TestWithParam<apoyo::Motor> {
protected:
    RegistroPantalla() : p(GetParam()) {
        p.abrir();
        forma = std::make_unique<frmRegistro>(p.f);
    }
    void archivo(const std::string& lineas) {
        const std::string ruta = p.carpeta + "/RCV_COMPRA_REGISTRO_76111222-8_202403.csv";
        std::ofstream(ruta, std::ios::binary) << COMPRAS_REGISTRO << "\r\n" << lineas;
        p.escritorio.elegir_archivo(ruta);
    }
    /// The supplier's earlier voucher, entered on the screen.
    void conocido() {
        p.escribir("mskF_comp", "01/03/2024");
        p.elegir("cmbDocumento", "002 COMPRA");
        p.elegir("cmblibro", "COMPRAS");
        p.elegir("cmbdoc_libro", "F. ELECTRONICA");
        p.escribir("txtnum_ref", "1");
        p.escribir("txtfecha_doc", "01/03/2024");
        p.escribir("txtrut_persona", ROBLE);
        p.escribir("txtnombre", "FERRETERIA EL ROBLE SPA");
        p.escribir("txtconcepto", "Materiales, factura 1");
        for (const auto& [fila, cuenta, columna, monto] :
             {std::tuple{0, "501002", 3, "1000"}, {1, "109001", 3, "190"}, {2, "201001", 4, "1190"}}) {
            ASSERT_TRUE(p.celda(fila, 1, cuenta));
            if (fila == 2) p.celda(fila, 2, "000013");
            ASSERT_TRUE(p.celda(fila, columna, monto));
        }
        p.tecla("down");
        p.guardar();
        ASSERT_EQ(p.mensajes(), std::vector<std::string>{"Comprobante Ingresado y Mayorizado"});
    }
    static void teclas(ui::Form& f, const std::vector<const char*>& nombres) {
        for (const char* n : nombres) {
            ui::KeyEvent e = *ui::parse_key(n);
            f.send_key(e);
        }
    }
    /// Opens the inbox and does this in it.
    void en_bandeja(const std::function<void(ui::Form&)>& hacer) {
        p.escritorio.al_abrir([&](ui::Form& f) {
            hacer(f);
            if (f.visible()) f.close_by_user();
        });
        forma->abrir();
    }
    [[nodiscard]] std::string columna(int col) const {
        std::string t;
        for (int i = 0; i < forma->grdRegistro.Rows(); ++i) t += forma->grdRegistro.TextMatrix(i, col) + ";";
        return t;
    }
    Pantalla p;
    std::unique_ptr<frmRegistro> forma;
};
INSTANTIATE_TEST_SUITE_P(Motores, RegistroPantalla, testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& m) { return apoyo::nombre(m.param); });

} // namespace

TEST_P(RegistroPantalla, AMonthOfKnownSuppliersInThreeKeystrokes) {
    conocido();
    std::string lineas;
    for (int i = 0; i < 120; ++i) lineas += compra_de(i + 1, ROBLE, std::to_string(100 + i), 1000 + i);
    archivo(lineas);
    p.escritorio.responder(ui::Answer::yes);
    en_bandeja([&](ui::Form& f) {
        teclas(f, {"ctrl+o"});
        teclas(f, {"ctrl+a", "f8"}); // and Enter for the question and for the message
    });
    EXPECT_EQ(p.mensajes(), (std::vector<std::string>{"¿Contabilizar 120 documentos por 151.297?",
                                                      "Quedaron contabilizados 120 documentos"}));
    EXPECT_EQ(p.sql("select count(*) as n from ctcquorvel where concepto like 'Materiales, factura %' and "
                    "estado='P'"),
              "121");
    EXPECT_EQ(p.sql("select concepto from ctcquorvel where num_docum='121'"), "Materiales, factura 219");
    EXPECT_EQ(columna(1).substr(0, 28), "contabilizado;contabilizado;");
    EXPECT_EQ(forma->grdPrueba.TextMatrix(0, 7),
              "documentos -1; neto -1.000; IVA -190"); // the first is in no file
}

TEST_P(RegistroPantalla, EnterBringsADocumentToTheScreenAndABookedOneItsVoucher) {
    conocido();
    archivo(compra_de(1, ROBLE, "1", 1000) +
            compra_de(2, ROBLE, "2", 100000, {{"Monto Exento", "500"}, {"Monto Total", "119500"}}));
    en_bandeja([&](ui::Form& f) { teclas(f, {"ctrl+o", "down", "enter"}); });
    EXPECT_TRUE(p.f.glbBanderaNuevo);
    EXPECT_EQ(p.fila(0) + " " + p.fila(1) + " " + p.fila(2),
              "501002||100.500|0|Materiales, factura 2 109001||19.000|0|Materiales, factura 2 "
              "201001|000013|0|119.500|Materiales, factura 2");
    EXPECT_EQ(p.f.txtNum_doc.Text() + " " + p.f.txtnro_correlativo.Text() + " " + p.f.txtnum_ref.Text() +
                  " " + p.f.mskF_comp.Text(),
              "2 2 2 10/03/2024");
    p.guardar();
    EXPECT_EQ(p.mensajes(), std::vector<std::string>{"Comprobante Ingresado y Mayorizado"});
    en_bandeja([&](ui::Form& f) {
        teclas(f, {"home", "up", "enter"});
    }); // what the screen saved is booked now
    EXPECT_EQ(columna(1), "contabilizado;contabilizado;");
    EXPECT_FALSE(p.f.glbBanderaNuevo);
    EXPECT_EQ(p.f.txtnum_ref.Text(), "1");
}

TEST_P(RegistroPantalla, UnknownCounterpartsInOneList) {
    archivo(compra_de(1, NUEVA, "1", 1000) + compra_de(2, NUEVA, "2", 1000) + compra_de(3, ROBLE, "3", 1000));
    p.escritorio.responder(ui::Answer::yes);
    p.escritorio.al_abrir([&](ui::Form& f) {
        forma->txtMes.SetText("");
        teclas(f, {"ctrl+o", "ctrl+a", "f8"});
        f.close_by_user();
    });
    p.escritorio.al_abrir([&](ui::Form& f) {
        auto& c = dynamic_cast<frmContrapartes&>(f);
        ASSERT_EQ(c.grdContrapartes.Rows(), 2);
        EXPECT_EQ(c.grdContrapartes.TextMatrix(0, 3), "2");
        c.cmdaceptar.press();
        teclear(f, "999999");
        teclas(f, {"enter"}); // no such account: the cell stays open
        EXPECT_TRUE(c.grdContrapartes.EditActive());
        teclas(f, {"escape"});
        teclear(f, "501001");
        teclas(f, {"enter"});
        c.grdContrapartes.move_to(0, 4);
        teclas(f, {"f6", "f7"});
        EXPECT_EQ(c.grdContrapartes.TextMatrix(1, 4), "501001");
        EXPECT_EQ(c.grdContrapartes.TextMatrix(1, 8), "000013");
        EXPECT_NE(c.grdContrapartes.TextMatrix(0, 8), "");
        teclas(f, {"f8"});
    });
    forma->abrir();
    EXPECT_EQ(p.mensajes(),
              (std::vector<std::string>{"Ingrese cuenta", "Cuenta no válida", "Auxiliares generados: 1",
                                        "¿Contabilizar 3 documentos por 3.570?",
                                        "Quedaron contabilizados 3 documentos"}));
    EXPECT_EQ(p.sql("select count(*) as n from ctdquorvel where centro='501001'"), "3");
}

TEST_P(RegistroPantalla, MarksFiltersCausesAndCancel) {
    conocido();
    archivo(compra_de(1, ROBLE, "2", 1000) + compra_de(2, ROBLE, "3", 1000) +
            compra_de(3, ROBLE, "4", 1000, {{"Monto Total", "5"}}));
    p.escritorio.cancelar_avance_en(1);
    p.escritorio.responder(ui::Answer::yes);
    en_bandeja([&](ui::Form& f) {
        teclas(f, {"ctrl+o", "f8"}); // nothing is marked
        teclear(f, "   ");           // the third cannot be
        EXPECT_EQ(columna(0), "✓;✓;;;");
        EXPECT_EQ(forma->lblDetalle.Caption().substr(0, 30), "Comprobante 002-1 del 01/03/20");
        teclas(f, {"f8"});
        EXPECT_EQ(columna(1), "contabilizado;nuevo;no contabilizable;falta en el registro;");
        EXPECT_EQ(columna(0), ";✓;;;");
        forma->grdPrueba.SetFocus();
        teclas(f, {"enter"});
        EXPECT_EQ(columna(6), "3;4;1;");
        teclas(f, {"escape"});
        forma->cmbVer.select_text("falta en el registro");
        EXPECT_EQ(columna(6), "1;");
        forma->txtMes.SetFocus();
        teclear(f, "13/2024");
        teclas(f, {"tab"});
        EXPECT_TRUE(forma->txtMes.has_focus());
    });
    EXPECT_EQ(p.mensajes(), (std::vector<std::string>{
                                "Marque documentos nuevos: Espacio marca el de la línea, Ctrl+A todos",
                                "¿Contabilizar 2 documentos por 2.380?",
                                "Quedó contabilizado 1 documento; los demás siguen marcados",
                                "El mes se escribe MM/AAAA"}));
}

TEST_P(RegistroPantalla, AnElectronicInvoiceFillsANewVoucherAndIsComparedWithASavedOne) {
    conocido();
    const auto escribir = [&](const std::string& nombre, const std::string& bytes) {
        std::ofstream(p.carpeta + "/" + nombre, std::ios::binary) << bytes;
        return p.carpeta + "/" + nombre;
    };
    const std::string ruta = escribir("f.xml", factura_electronica());
    p.nuevo();
    p.f.drop_file(ruta);
    EXPECT_EQ(p.mensajes(), std::vector<std::string>{});
    EXPECT_EQ(p.fila(0) + " " + p.fila(3),
              "501002||1.050|0|Materiales, factura 77 109002||315|0|Materiales, factura 77");
    EXPECT_EQ(p.f.cmbcodigo_otro_impuesto.Text().substr(0, 3) + " " + p.f.txttasa_impuesto_otro.Text() + " " +
                  p.f.cmbdoc_libro.Text(),
              "024 31,5 F. ELECTRONICA");
    EXPECT_EQ(p.f.lstadjunto.ListCount(), 1);
    p.guardar();
    EXPECT_EQ(p.mensajes(), std::vector<std::string>{"Comprobante Ingresado y Mayorizado"});
    p.f.drop_file(ruta);
    p.f.drop_file(
        escribir("g.xml", factura_electronica({{"<MntExe>50<", "<MntExe>60<"}, {">1555<", ">1565<"}})));
    p.f.drop_file(escribir("h.xml", factura_electronica({{"0077", "78"}})));
    p.f.drop_file(escribir("i.xml", factura_electronica({{"76111222-8", "12345678-5"}})));
    EXPECT_EQ(
        p.mensajes(),
        (std::vector<std::string>{
            "El documento coincide con el comprobante",
            "El documento difiere del comprobante: exento 60 en el registro, 50 en libros (10); total 1.565 "
            "en el registro, 1.555 en libros (10)",
            "El documento es F. ELECTRONICA 78 de 76.418.352-5 y el comprobante es de F. ELECTRONICA 77 de "
            "76.418.352-5",
            "El documento no es de esta empresa (76.111.222-8): lo emitió 76.418.352-5 para 12.345.678-5"}));
    p.nuevo();
    p.escritorio.elegir_archivo(ruta); // by the button: it is there already, and where
    p.pulsar("cmdadjunto_agregar");
    p.f.drop_file(escribir("copia.xml", factura_electronica({{"0077", "79"}})));
    EXPECT_EQ(p.f.txtnum_ref.Text(), "79");
    p.guardar();
    apoyo::ejecutar(*p.db,
                    "update ctcquorvel set num_ref='80' where num_ref='79'"); // the file itself is known
    p.nuevo();
    p.f.drop_file(p.carpeta + "/copia.xml");
    EXPECT_EQ(p.mensajes(),
              (std::vector<std::string>{
                  "F. ELECTRONICA 77 de 76.418.352-5 ya está en el comprobante 002-2 del 10/03/2024",
                  "Comprobante Ingresado y Mayorizado",
                  "El mismo archivo ya está adjunto al comprobante 002-3 del 10/03/2024"}));
    EXPECT_EQ(p.f.lstadjunto.ListCount(), 0);
    p.escritorio.elegir_archivo(escribir("otro.xml", "<planilla/>")); // any other file is only attached
    p.pulsar("cmdadjunto_agregar");
    EXPECT_EQ(p.f.lstadjunto.ListCount(), 1);
    const std::string una = factura_electronica({{"0077", "90"}}).substr(factura_electronica().find("<DTE"));
    p.escritorio.al_abrir([&](ui::Form& f) {
        EXPECT_EQ(f.name(), "frmRegistro");
        f.close_by_user();
    });
    p.f.drop_file(escribir(
        "varias.xml", "<EnvioDTE>" + una + factura_electronica().substr(factura_electronica().find("<DTE")) +
                          "</EnvioDTE>"));
    EXPECT_EQ(p.f.registro->grdRegistro.Rows(), 2);
}
