// Goal: while the engine works the window stays alive, takes no other command and can be told to stop, with
// nothing changed. Method: sums that would take hours, in the real window, on both engines.
#include "apoyo/empresa.h"
#include "apoyo/sesiones.h"
#include "host/clsQuorvel.h"
#include "qt/FormWindow.h"
#include "qt/ProgressBox.h"
#include "qt/QtEscritorio.h"
#include "qt/report/QtReportPrinter.h"
#include "screen/frmQuorvel.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>
#include <QWindow>

namespace quorvel {
namespace {

/// Every line a thousand million times over: no sum of them ends.
void alargar(clsConexion& db, apoyo::Motor motor) {
    apoyo::ejecutar(db, "alter table ctdquorvel rename to lineas");
    const std::string sin_fin =
        motor == apoyo::Motor::sqlite
            ? "(with recursive s(n) as (select 1 union all select n+1 from s where n<1000000000) select n "
              "from s) s"
            : "(select 1 from generate_series(1,100000) s, generate_series(1,100000) r) s";
    apoyo::ejecutar(db, "create view ctdquorvel as select lineas.* from " + sin_fin + " cross join lineas");
}

class Avances : public ::testing::TestWithParam<apoyo::Motor> {
protected:
    std::unique_ptr<clsConexion> db = apoyo::crear_empresa(GetParam());
    std::string carpeta = apoyo::carpeta_nueva();
    std::unique_ptr<clsConexion> reporte = abrir_sesion_informes(carpeta + "/print.db");
    qt::QtEscritorio escritorio;
    qt::PdfReportPrinter impresor{carpeta};
    RelojFijo reloj{std::chrono::year(2024) / 6 / 15};
    std::unique_ptr<ObjetoHost> objeto = crear_objeto("clsQuorvel", {escritorio, reloj, impresor, carpeta});
    QTimer vigia;
    std::vector<std::string> mensajes;
    int alto_caja = 0; ///< of the last message box
    std::string caja;  ///< what the progress box said

    void SetUp() override {
        for (const char* linea : {"1,'101001',1000,0)", "2,'401001',0,1000)"})
            apoyo::ejecutar(*db,
                            std::string("insert into ctdquorvel(empresa,subsistema,f_comp,documento,"
                                        "num_docum,secuencia,centro,debe_nacional,haber_nacional) values "
                                        "(1,'01',#03/05/2024#,'001','1',") +
                                linea);
        objeto->let_glbEmpresa(1);
        objeto->let_glbUsuario(1);
        objeto->let_glbPermiso("11111");
        objeto->set_glbdb(db.get());
        objeto->set_glbdbReport(reporte.get());
        ASSERT_EQ(dynamic_cast<clsQuorvel&>(*objeto).ShowForm(), S_OK) << objeto->descripcion_error();
        QObject::connect(&vigia, &QTimer::timeout, &vigia, [this] { mirar(); });
        vigia.start(20);
    }
    frmQuorvel& f() { return objeto->pantalla(); }
    qt::FormWindow& ventana() { return *escritorio.window_of(f()); }
    /// Questions are accepted, messages noted; the progress box gets what a person in a hurry does.
    void mirar() {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            mensajes.push_back(box->text().toStdString());
            alto_caja = box->height();
            if (const QString fotos = qEnvironmentVariable("QUORVEL_FOTOS"); !fotos.isEmpty())
                box->grab().save(fotos + QString("/mensaje%1.png").arg(mensajes.size()));
            box->buttons().front()->click();
        } else if (auto* box = qobject_cast<qt::ProgressBox*>(modal)) {
            apurar(*box);
        }
    }
    void apurar(qt::ProgressBox& box) {
        if (caja.empty()) {
            caja = box.findChild<QLabel*>()->text().toStdString();
            if (const QString fotos = qEnvironmentVariable("QUORVEL_FOTOS"); !fotos.isEmpty())
                box.grab().save(fotos + "/avance.png");
            ventana().update();
            // a second command and a letter at the window below, and an Enter that came too late
            teclear(ventana(), Qt::Key_D, Qt::ControlModifier);
            teclear(ventana(), Qt::Key_Z);
            teclear(box, Qt::Key_Return);
            return;
        }
        teclear(box, Qt::Key_Escape);
    }
    /// As the window system hands a key to a window.
    static void teclear(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, modifiers, key == Qt::Key_Z ? "z" : "");
            QApplication::sendEvent(window.windowHandle(), &event);
        }
    }
    std::string todo() {
        return f().mskF_comp.Text() + "|" + f().txtNum_doc.Text() + "|" + f().txtconcepto.Text() + "|" +
               f().lblTotalDebe.Caption() + "|" + std::to_string(f().grdDetalle.Rows()) +
               std::to_string(f().chkApertura.Value()) + std::to_string(f().estado.cierre_generado) + "|" +
               apoyo::filas(*db, "select anio,f_comp_cierre from ctmconfigu") + "|" +
               apoyo::filas(*db, "select documento,ultimo_emitido from adxemp_doc order by documento");
    }
};
INSTANTIATE_TEST_SUITE_P(Motores, Avances, ::testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& m) { return apoyo::nombre(m.param); });

TEST_P(Avances, EscapeEndsWhatWouldTakeHours) {
    const std::string frase = "Operación cancelada, no se ha cambiado nada";
    alargar(*db, GetParam());
    f().txtconcepto.SetText("A mano");
    f().mskF_comp.SetText("05/06/2024");
    const std::string antes = todo();
    struct Caso {
        ui::MenuItem& menu;
        const char* que;
    };
    for (const Caso& c : {Caso{f().mnudescuadrado, "Buscando comprobantes descuadrados"},
                          Caso{f().mnuGenerarCierre, "Revisando los comprobantes del año"}}) {
        SCOPED_TRACE(c.que);
        caja.clear();
        mensajes.clear();
        c.menu.press();
        EXPECT_EQ(caja.substr(0, std::string(c.que).size()), c.que);
        ASSERT_FALSE(mensajes.empty());
        EXPECT_EQ(mensajes.back(), frase);
        EXPECT_EQ(todo(), antes);
        QApplication::processEvents();
        EXPECT_TRUE(ventana().isActiveWindow());
    }
    apoyo::ejecutar(*db, "update ctmconfigu set f_comp_cierre=#12/31/2024#,documento_cierre='001',"
                         "num_docum_cierre='1'");
    const std::string generado = todo();
    caja.clear();
    f().mnuCerrarAnio.press();
    EXPECT_EQ(caja.substr(0, 34), "Revisando las cuentas de resultado");
    EXPECT_EQ(mensajes.back(), frase);
    EXPECT_EQ(todo(), generado) << "a close that was called off has opened no year";
}

TEST_P(Avances, AListOfThousandsKeepsItsButtonOnTheScreen) {
    apoyo::ejecutar(*db, "delete from ctdquorvel");
    for (int i = 0; i < 40; ++i) {
        std::string filas;
        for (int n = 1000 + i * 50; n < 1050 + i * 50; ++n)
            filas += std::string(filas.empty() ? "" : ",") + "(1,'01',#03/05/2024#,'001','" +
                     std::to_string(n) + "',1,'101001',5,0)";
        apoyo::ejecutar(*db, "insert into ctdquorvel(empresa,subsistema,f_comp,documento,num_docum,secuencia,"
                             "centro,debe_nacional,haber_nacional) values " +
                                 filas);
    }
    f().mnudescuadrado.press();
    ASSERT_EQ(mensajes.size(), 1U);
    EXPECT_GT(mensajes[0].size(), 2000U * 7);
    EXPECT_TRUE(mensajes[0].ends_with(" - 2999 - ")) << "the text stays whole";
    EXPECT_LT(alto_caja, 600) << "taller than a small screen";
}

} // namespace
} // namespace quorvel
