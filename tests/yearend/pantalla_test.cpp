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
    void si() { p.e.responder(ui::Answer::yes); }
    std::string grilla() const {
        std::string t;
        for (int i = 0; i < p.f.grdDetalle.Rows(); ++i)
            t += (i ? ";" : "") + p.f.grdDetalle.TextMatrix(i, 1) + "|" + p.f.grdDetalle.TextMatrix(i, 3) +
                 "|" + p.f.grdDetalle.TextMatrix(i, 4);
        return t;
    }
};
std::string como(const ::testing::TestParamInfo<Motor>& m) { return nombre(m.param); }
INSTANTIATE_TEST_SUITE_P(Motores, FinDeAnio, ::testing::ValuesIn(MOTORES), como);

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
    p.e.cancelar_avance_en(1000);
    si();
    p.f.mnuGenerarCierre.press();
    EXPECT_EQ(grilla(), "401001|1.000|0;302001|0|1.000");
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::New);
    EXPECT_FALSE(p.f.estado.cierre_generado) << "the next save is no closing voucher";
}

} // namespace
