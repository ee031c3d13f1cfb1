// Goal: what a voucher's state, subsystem, lock and old data let the person do. Method: the stored voucher is
// changed behind the screen and opened again.
#include "apoyo/pantalla.h"

#include <gtest/gtest.h>

#include <set>

using namespace quorvel;
using namespace quorvel::pruebas;
using apoyo::Motor;
using F = ui::ctlRegistro::Function;
using Textos = std::vector<std::string>;

namespace {

constexpr const char* GRABADO = "Comprobante Ingresado y Mayorizado";

class Estados : public ::testing::TestWithParam<Motor> {
protected:
    Pantalla p{GetParam()};
    ui::ctlPlanilla& g = p.f.grdDetalle;
    void SetUp() override {
        p.abrir();
        p.comprobante("1000");
        p.guardar();
        ASSERT_EQ(p.mensajes(), Textos{GRABADO});
    }
    /// Every field of the header can be written and chosen, or none, and then it says why. The calculator
    /// always works.
    void encabezado(bool escribir, const std::string& motivo) {
        const std::set<std::string> identidad{"mskF_comp", "cmbDocumento", "txtNum_doc", "cmbMoneda"};
        const std::set<std::string> siempre{"txtnumero", "optsuma", "optresta", "optporcentaje"};
        for (ui::Control* control : p.f.controls()) {
            if (identidad.contains(control->name()) || siempre.contains(control->name())) continue;
            if (auto* caja = dynamic_cast<ui::TextBox*>(control)) {
                if (caja->name().starts_with("txtresultado")) continue;
                const std::string antes = caja->Text();
                caja->user_edit("5");
                EXPECT_EQ(caja->Text(), escribir ? "5" : antes) << caja->name();
                EXPECT_TRUE(caja->Enabled()) << "can be copied from: " << caja->name();
                caja->SetText(antes);
            } else if (dynamic_cast<ui::ComboBox*>(control) || dynamic_cast<ui::CheckBox*>(control)) {
                EXPECT_EQ(control->Enabled(), escribir) << control->name();
            } else {
                continue;
            }
            EXPECT_EQ(control->ToolTip(), motivo) << control->name();
        }
        p.f.txtrut_persona.SetFocus();
        if (!escribir) p.tecla("ctrl+y"); // opens nothing
    }
    void cambiar(const std::string& sql) { apoyo::ejecutar(*p.db, sql); }
};
INSTANTIATE_TEST_SUITE_P(Motores, Estados, ::testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& i) { return apoyo::nombre(i.param); });

} // namespace

TEST_P(Estados, OnlyAProcessedVoucherOfAccountingMayBeChanged) {
    struct Caso {
        const char *estado, *subsistema, *bloqueo, *motivo;
        bool modificar, imprimir;
        int lineas;
    } const casos[] = {
        {"P", "01", "7", "Lo está modificando 7", false, true, 2},
        {"P", "01", "2", "Lo está modificando 2 LUIS O'HIGGINS", false, true, 2},
        {"X", "01", "0", "El comprobante está anulado", false, false, 0},
        {"T", "01", "0", "Solo un comprobante procesado se puede modificar", false, false, 0},
        {"P", "02", "0", "El comprobante pertenece a otro subsistema", false, true, 2},
        {"X", "02", "7", "Lo está modificando 7", false, false, 0},
        {"P", "01", "0", "", true, true, 2},
        {"P", "01", "1", "", true, true, 2},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(std::string(c.estado) + c.subsistema + c.bloqueo);
        p.nuevo();
        EXPECT_TRUE(p.f.ctlRegistro1.enabled(F::Save) && p.f.cmdcortar.Enabled() && !g.Locked());
        for (const char* tabla : {"ctcquorvel", "ctdquorvel"})
            cambiar("update " + std::string(tabla) + " set subsistema='" + c.subsistema + "'");
        cambiar("update ctcquorvel set estado='" + std::string(c.estado) + "',bloqueo_usuario=" + c.bloqueo);
        p.buscar("1");
        EXPECT_EQ(p.mensajes().size(), *c.bloqueo > '1' ? 1U : 0U);
        EXPECT_EQ(g.Rows(), c.lineas);
        EXPECT_EQ(p.totales(), "1.000|1.000");
        EXPECT_EQ(p.f.ctlRegistro1.enabled(F::Save), c.modificar);
        EXPECT_EQ(p.f.ctlRegistro1.enabled(F::DeleteLine), c.modificar);
        EXPECT_EQ(p.f.ctlRegistro1.enabled(F::Print), c.imprimir);
        for (const ui::Control* control : std::initializer_list<const ui::Control*>{
                 &p.f.cmdcortar, &p.f.mnuAnular, &p.f.cmdadjunto_agregar, &p.f.cmdadjunto_eliminar})
            EXPECT_EQ(control->Enabled(), c.modificar) << control->name();
        EXPECT_EQ(g.Locked(), !c.modificar);
        EXPECT_EQ(p.f.ctlRegistro1.ToolTip(), c.motivo);
        encabezado(c.modificar, c.motivo);
        EXPECT_TRUE(p.f.cmdCopiar.Enabled() && p.f.cmdAbrir.Enabled());
        EXPECT_EQ(p.sql("select bloqueo_usuario from ctcquorvel"), *c.bloqueo > '1' ? c.bloqueo : "1");
        if (!c.modificar) {
            p.f.ctlRegistro1.press(F::Save);
            p.pulsar("mnuEliminar"); // turned off, or answers that there is nothing to delete
            p.mensajes();
        }
        EXPECT_EQ(p.sql("select count(*) from ctdquorvel"), "2");
    }
    EXPECT_TRUE(p.celda(0, 3, "1500") && p.celda(1, 4, "1500"));
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{GRABADO});
    EXPECT_FALSE(p.f.cmbMoneda.Enabled()) << "only a new header is written with a currency";
    EXPECT_EQ(p.f.ctlRegistro1.Notice(), "");
    p.f.config.anio = 2025;
    p.tecla("f11");
    EXPECT_EQ(p.f.ctlRegistro1.Notice(), "El año 2024 está cerrado: lo que cambie no se puede grabar");
}

TEST_P(Estados, OldDataThatTypingWouldNotTakeIsKept) {
    cambiar("update ctdquorvel set num_ref='F-12/a',tasa_impuesto_otro='31.5' where secuencia=1");
    cambiar("update ctcquorvel set comprobante_adjunto=0");
    cambiar("insert into ctdcomprad(comprobante_adjunto,correlativo,nombre) values (0,90,'ajeno')");
    cambiar("update ctmcentros set req_auxiliar='' where centro='101001'");
    p.buscar("1");
    EXPECT_EQ(g.TextMatrix(0, 8) + " " + g.TextMatrix(0, 10), "F-12/a 31,5");
    EXPECT_EQ(p.f.lstadjunto.ListCount(), 0) << "rows of set 0 are nobody's";
    EXPECT_TRUE(p.celda(0, 3, "1200") && p.celda(1, 4, "1200")) << "an empty requirement is none";
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{GRABADO});
    EXPECT_EQ(p.sql("select num_ref,tasa_impuesto_otro,debe_nacional from ctdquorvel where secuencia=1"),
              "F-12/a|31.5|1200");
    p.escritorio.responder(ui::Answer::yes);
    p.pulsar("mnuEliminar");
    EXPECT_EQ(p.sql("select nombre from ctdcomprad"), "ajeno");
}

TEST_P(Estados, LinesAreDeletedAddedAndNumberedAgain) {
    ASSERT_TRUE(g.SetFocus() && g.move_to(2, 1));
    ASSERT_TRUE(p.celda(2, 1, "101002") && p.celda(2, 3, "70"));
    EXPECT_EQ(p.totales(), "1.070|1.000");
    p.f.ctlRegistro1.press(F::DeleteLine); // the row being added is given up, the others stay
    EXPECT_EQ(p.totales() + std::to_string(g.Rows()), "1.000|1.0002");
    g.move_to(0, 1);
    p.f.ctlRegistro1.press(F::DeleteLine);
    EXPECT_EQ(p.totales(), "0|1.000");
    ASSERT_TRUE(g.move_to(1, 1) && p.celda(1, 1, "101002") && g.move_to(2, 1));
    EXPECT_EQ(g.TextMatrix(0, 0) + g.TextMatrix(1, 0), "22");
    EXPECT_EQ(p.totales(), "1.000|1.000");
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{GRABADO});
    EXPECT_EQ(g.TextMatrix(0, 0) + g.TextMatrix(1, 0), "12") << "what is shown is what is stored";
    EXPECT_EQ(p.sql("select secuencia,centro from ctdquorvel order by secuencia"), "1|301001;2|101002");
}
