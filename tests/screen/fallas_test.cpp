// Goal: a statement that fails takes the whole change back, says its own text once and leaves the screen as
// it was. Method: a trigger on one table at a time, the command pressed, database and screen compared.
#include "apoyo/falla.h"
#include "apoyo/pantalla.h"

#include <gtest/gtest.h>

#include <fstream>

using namespace quorvel;
using namespace quorvel::pruebas;
using apoyo::Motor;
using Textos = std::vector<std::string>;

namespace {

constexpr const char* GRABADO = "Comprobante Ingresado y Mayorizado";

/// Everything that the person sees.
std::string vista(frmQuorvel& f) {
    std::string todo = f.Caption() + (f.glbBanderaNuevo ? " nuevo" : "") + f.gstrcomprobante_adjunto;
    for (const ui::Control* c : f.controls()) {
        todo += "\n" + c->name() + (c->Enabled() ? "+" : "-");
        if (const auto* t = dynamic_cast<const ui::TextBox*>(c)) todo += t->Text();
        if (const auto* r = dynamic_cast<const ui::Captioned*>(c)) todo += r->Caption();
        if (const auto* l = dynamic_cast<const ui::ListControl*>(c)) {
            todo += l->Text();
            for (int i = 0; i < l->ListCount(); ++i) todo += "," + l->List(i);
        }
    }
    for (int i = 0; i < f.grdDetalle.Rows(); ++i)
        for (int col = 0; col < f.grdDetalle.Cols(); ++col) todo += "|" + f.grdDetalle.TextMatrix(i, col);
    for (const auto funcion : {ui::ctlRegistro::Function::Save, ui::ctlRegistro::Function::DeleteLine,
                               ui::ctlRegistro::Function::Print})
        todo += f.ctlRegistro1.enabled(funcion) ? "1" : "0";
    return todo;
}

class Fallas : public ::testing::TestWithParam<Motor> {
protected:
    Pantalla p{GetParam()};
    void SetUp() override {
        p.abrir();
        for (const char* c : {"1", "101", "101001", "3", "301", "301001"})
            apoyo::ejecutar(*p.db,
                            "insert into ctmsdcenth(empresa,anio,centro,debe6,haber6) values (1,2024,'" +
                                std::string(c) + "',5000,5000)");
        apoyo::ejecutar(*p.db, "insert into ctmsdmayor(empresa,anio,centro,auxiliar,debe6) values "
                               "(1,2024,'103001','000012',7)");
        std::ofstream(p.carpeta + "/a.pdf") << "uno";
        p.escritorio.elegir_archivo(p.carpeta + "/a.pdf");
        p.pulsar("cmdadjunto_agregar");
        p.comprobante("1000");
        ASSERT_TRUE(p.celda(0, 1, "103001") && p.celda(0, 2, "12"));
        p.guardar();
        ASSERT_EQ(p.mensajes(), Textos{GRABADO});
        apoyo::ejecutar(*p.db, "update ctcquorvel set cheque='77',banco='BCI',cuenta='1'");
        apoyo::ejecutar(*p.db, "insert into ftcfactura(empresa,factura,f_comp,documento,num_docum) values "
                               "(1,'8',#06/15/2024#,'001','1')");
    }
    std::string base() {
        std::string todo;
        for (const char* consulta :
             {"select * from ctcquorvel order by num_docum",
              "select * from ctdquorvel order by num_docum,secuencia",
              "select * from ctdcomprad order by correlativo", "select * from adxemp_doc order by documento",
              "select * from ctmconfigu", "select * from ctmsdcenth order by centro",
              "select * from ctmsdmayor", "select * from ftcfactura"})
            todo += p.sql(consulta) + "\n";
        return todo;
    }
    /// The control pressed while the event fails. @param mensaje its beginning; the engine's own may follow
    void fallar(const char* control, const char* evento, const char* mensaje) {
        SCOPED_TRACE(std::string(control) + ": " + evento);
        const std::string base_antes = base(), vista_antes = vista(p.f);
        const apoyo::Falla falla(p.conexion, GetParam(), evento);
        if (control == std::string("Save")) {
            p.guardar();
        } else {
            p.escritorio.responder(ui::Answer::yes);
            p.pulsar(control);
        }
        Textos dicho = p.mensajes();
        if (control != std::string("Save") && !dicho.empty()) dicho.erase(dicho.begin()); // the question
        ASSERT_EQ(dicho.size(), 1U);
        EXPECT_NE(dicho[0].find(mensaje), std::string::npos) << dicho[0];
        EXPECT_EQ(base(), base_antes);
        EXPECT_EQ(vista(p.f), vista_antes);
    }
};
INSTANTIATE_TEST_SUITE_P(Motores, Fallas, ::testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& i) { return apoyo::nombre(i.param); });

} // namespace

TEST_P(Fallas, EachStatementOfASavedVoucher) {
    const char* const COMMIT = GetParam() == Motor::sqlite ? "" : "falla pedida";
    p.f.txtconcepto.SetText("cambiado");
    fallar("Save", "update of concepto on ctcquorvel", "Problemas para actualizar cabecera");
    fallar("Save", "delete on ctdquorvel", "falla pedida");
    fallar("Save", "insert on ctdquorvel", "Problemas al grabar detalle");
    fallar("Save", "delete on ctdcomprad", "falla pedida");
    fallar("Save", "insert on ctdcomprad", "Problemas al grabar detalle");
    fallar("Save", "commit on ctdquorvel", COMMIT);
    fallar("mnuAnular", "update on ctmsdcenth", "Problemas al desprocesar centros");
    fallar("mnuAnular", "update on ctmsdmayor", "Problemas al desprocesar auxiliar");
    fallar("mnuAnular", "update of estado on ctcquorvel", "falla pedida");
    fallar("mnuAnular", "delete on ctdquorvel", "falla pedida");
    fallar("mnuAnular", "commit on ctdquorvel", COMMIT);
    for (const char* control : {"mnuEliminar", "cmdcortar"}) {
        for (const char* evento : {"delete on ctdquorvel", "delete on ctdcomprad", "delete on ctcquorvel"})
            fallar(control, evento, "falla pedida");
        fallar(control, "commit on ctdquorvel", COMMIT);
    }
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{GRABADO}) << "works again without the fault";
    p.escritorio.responder(ui::Answer::yes);
    p.pulsar("cmdcortar");
    p.escribir("txtNum_doc", "9");
    p.mensajes();
    fallar("Save", "update of cheque on ctcquorvel", "Problemas al grabar cabecera");
    fallar("Save", "update on ftcfactura", "Problemas al grabar cabecera");
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{GRABADO});
    EXPECT_EQ(p.sql("select num_docum,cheque,concepto from ctcquorvel"), "9|77|cambiado");
    EXPECT_EQ(p.sql("select num_docum from ftcfactura"), "9");
}

TEST_P(Fallas, EachStatementOfANewVoucher) {
    p.pulsar("cmdCopiar");
    p.escribir("txtNum_doc", "7");
    p.f.estado.cierre_generado = true;
    p.f.lstadjunto.Clear(); // rows of a set are deleted with an empty list as well
    fallar("Save", "insert on ctcquorvel", "Problemas al grabar cabecera");
    fallar("Save", "update on adxemp_doc", "Problemas al grabar numero de documento");
    fallar("Save", "update on ctmconfigu", "Problemas al grabar datos de cirre anual");
    fallar("Save", "insert on ctdquorvel", "Problemas al grabar detalle");
    p.f.lstadjunto.AddItem("a.pdf");
    fallar("Save", "insert on ctdcomprad", "Problemas al grabar detalle");
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{GRABADO});
    EXPECT_EQ(p.sql("select num_docum_cierre from ctmconfigu"), "7");
}
