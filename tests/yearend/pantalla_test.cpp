// Goal: the year end from the voucher screen, on both engines: closing, its rebuilding, the closed year,
// opening.
#include "apoyo/dialogo.h"
#include "text/letras_utf8.h"

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

class FinDeAnio : public ::testing::TestWithParam<Motor> {
protected:
    PantallaAbierta p{GetParam()};

    void SetUp() override {
        linea("1", 1, "101001", 1000, 0);
        linea("1", 2, "401001", 0, 1000);
        ejecutar(*p.db, "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum) values "
                        "(1,'01',#03/05/2024#,'001','1')");
    }
    void linea(const std::string& numero, int sec, const std::string& cuenta, int debe, int haber) {
        ejecutar(*p.db,
                 "insert into ctdquorvel(empresa,subsistema,f_comp,documento,num_docum,secuencia,centro,"
                 "debe_nacional,haber_nacional) values (1,'01',#03/05/2024#,'001','" +
                     numero + "'," + std::to_string(sec) + ",'" + cuenta + "'," + std::to_string(debe) + "," +
                     std::to_string(haber) + ")");
    }
    void si(int veces = 1) {
        for (; veces > 0; --veces) p.e.responder(ui::Answer::yes);
    }
    std::string ultimo() {
        const auto m = p.e.tomar_mensajes();
        return m.empty() ? "" : m.back();
    }
    std::string grilla() const {
        std::string t;
        for (int i = 0; i < p.f.grdDetalle.Rows(); ++i)
            t += (i ? ";" : "") + p.f.grdDetalle.TextMatrix(i, 1) + "|" + p.f.grdDetalle.TextMatrix(i, 3) +
                 "|" + p.f.grdDetalle.TextMatrix(i, 4);
        return t;
    }
    void guardar() { p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Save); }
    void nuevo() { p.f.ctlRegistro1.press(ui::ctlRegistro::Function::New); }
};
std::string como(const ::testing::TestParamInfo<Motor>& m) { return nombre(m.param); }
INSTANTIATE_TEST_SUITE_P(Motores, FinDeAnio, ::testing::ValuesIn(MOTORES), como);

TEST_P(FinDeAnio, DelCierreALaApertura) {
    si();
    p.f.mnuGenerarCierre.press();
    EXPECT_EQ(grilla(), "401001|1.000|0;302001|0|1.000");
    EXPECT_EQ(p.f.mskF_comp.Text() + " " + p.f.cmbDocumento.Text() + " " + p.f.txtNum_doc.Text() + " " +
                  p.f.txtconcepto.Text(),
              "31/12/2024 001 TRASPASO 2 CIERRE ANUAL DEL AÑO 2024");
    p.f.cmblibro.SetListIndex(0);
    guardar();
    EXPECT_EQ(ultimo(), "Comprobante Ingresado y Mayorizado");
    EXPECT_EQ(filas(*p.db, "select f_comp_cierre,documento_cierre,num_docum_cierre from ctmconfigu"),
              "2024-12-31|001|2");

    si();
    p.f.mnuGenerarCierre.press(); // the closing voucher is shown: its lines stay, nothing is left to close
    EXPECT_EQ(grilla(), "401001|1.000|0;302001|0|1.000;401001|0|0;302001|0|0");
    EXPECT_EQ(p.f.lblTotalDebe.Caption() + " " + p.f.lblTotalhaber.Caption(), "1.000 1.000");
    guardar();
    EXPECT_EQ(ultimo(), "Comprobante Ingresado y Mayorizado");

    nuevo();
    si();
    p.f.mnuGenerarCierre.press();
    EXPECT_EQ(ultimo(), "Comprobante de Cierre ya fue Generado");
    si();
    p.f.mnuCerrarAnio.press();
    EXPECT_EQ(ultimo(), "Cierre Anual de 2024 Completado con éxito");
    p.f.mnuCerrarAnio.press();
    EXPECT_EQ(ultimo(), "Antes de Cerrar el Año de debe Generar el Comprobante de Cierre");

    escribir(p.f, "mskF_comp", "05/01/2025");
    p.f.cmbDocumento.SetListIndex(1);
    p.f.txtconcepto.SetText("Apertura");
    si(2);
    p.f.mnuApertura.press();
    EXPECT_EQ(ultimo(), "Seleccione la norma TRIBUTARIA o IFRS, no puede ser ambas");
    p.f.cmbifrs.SetListIndex(2);
    p.f.mnuApertura.press();
    EXPECT_EQ(grilla(), "101001|1.000|0;302001|0|1.000");
    EXPECT_EQ(p.f.chkApertura.Value(), 1);
    p.f.cmblibro.SetListIndex(0);
    guardar();
    EXPECT_EQ(ultimo(), "Comprobante Ingresado y Mayorizado");
    EXPECT_EQ(filas(*p.db, "select f_comp,apertura,ifrs,t_debe from ctcquorvel where apertura='1'"),
              "2025-01-05|1|2|1000");
}

TEST_P(FinDeAnio, AperturaDesdeOtroComprobanteGuardado) {
    p.f.txtconcepto.SetText("A mano");
    escribir(p.f, "mskF_comp", "20/03/2025");
    p.f.cmbifrs.SetListIndex(1);
    p.f.glbBanderaNuevo = false; // a saved voucher of 2025 is shown
    si();
    p.f.mnuAperturaDoc.press();
    EXPECT_EQ(grilla(), "101001|1.000|0;302001|0|1.000");
    EXPECT_EQ(p.f.mskF_comp.Text() + " " + p.f.txtNum_doc.Text() + " " + p.f.cmbifrs.Text() + " " +
                  p.f.txtconcepto.Text(),
              "01/01/2025 1 1 TRIBUTARIA ASIENTO APERTURA 2025");
}

TEST_P(FinDeAnio, RespuestaNoYCanceladoDejanLaPantalla) {
    p.f.txtconcepto.SetText("A mano");
    p.e.responder(ui::Answer::no);
    p.f.mnuGenerarCierre.press();
    si();
    p.e.cancelar_avance_en(0);
    p.f.mnuGenerarCierre.press();
    EXPECT_EQ(p.f.txtconcepto.Text() + grilla(), "A mano");
    EXPECT_FALSE(p.f.estado.cierre_generado);
    EXPECT_EQ(p.e.ocupado, 0);
}

TEST_P(FinDeAnio, DescuadradosSeAvisanAntes) {
    p.f.mnudescuadrado.press();
    EXPECT_EQ(ultimo(), "No existen comprobantes descuadrados");
    linea("15", 1, "501001", 7, 0);
    p.f.mnudescuadrado.press();
    EXPECT_EQ(ultimo(), "Lista de Comprobantes descuadrados 15 - ");
    si();
    p.e.responder(ui::Answer::no);
    p.f.mnuGenerarCierre.press();
    EXPECT_EQ(grilla(), "");
    si(2);
    p.f.mnuGenerarCierre.press();
    EXPECT_EQ(p.f.grdDetalle.Rows(), 3);
    nuevo();
    EXPECT_FALSE(p.f.estado.cierre_generado) << "the next save is no closing voucher";
}

} // namespace
