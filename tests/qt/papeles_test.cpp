// Goal: in the windows of cheque and invoice a refusal is only a refusal. Method: every row of the shared
// table by keys alone, then pasted and clicked as the mouse does.
#include "apoyo/vias_papeles.h"
#include "pantalla_qt.h"
#include "screen/abrir.h"

#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>

namespace quorvel {

using pruebas::Pantalla;

namespace {

QLineEdit* casilla(qt::FormWindow& v, const char* nombre) {
    auto* w = v.findChild<QWidget*>(nombre);
    auto* linea = qobject_cast<QLineEdit*>(w);
    return linea != nullptr ? linea : w->findChild<QLineEdit*>();
}

/// Leaves what opens above the paper, while the screen's own watch is still busy with the paper.
struct Encima {
    explicit Encima(Pantalla& p) {
        QObject::connect(&reloj, &QTimer::timeout, &reloj, [&p] {
            QWidget* modal = QApplication::activeModalWidget();
            if (auto* caja = qobject_cast<QMessageBox*>(modal)) {
                p.mensajes.push_back(caja->text().toStdString());
                caja->reject();
            } else if (modal != nullptr && modal->objectName() == "frmcuenta") {
                p.teclado.tecla(Qt::Key_Escape);
            }
        });
        reloj.start(10);
    }
    QTimer reloj;
};

} // namespace

TEST(VentanasPapeles, NoWayInPassesARuleAndNoPressRefusesAndActs) {
    Pantalla p;
    const Encima encima(p);
    apoyo::ejecutar(*p.db, "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,concepto,"
                           "libro,estado) values (1,'01',#06/10/2024#,'001','1','Aporte','CONTABLES','P')");
    ASSERT_TRUE(abrir_comprobante(p.f(), {1, "01", std::chrono::year(2024) / 6 / 10, "001", "1"}));
    for (const auto& via : pruebas::VIAS_PAPELES) {
        for (const bool raton : {false, true}) {
            bool sigue = false, cerrada = false;
            p.al_abrir = [&](qt::FormWindow& v) {
                auto* linea = casilla(v, via.control);
                v.form().set_active(v.form().find(via.control));
                if (raton) { // what the context menu and the middle button do
                    QApplication::clipboard()->setText(via.texto);
                    linea->selectAll();
                    linea->paste();
                    v.findChild<QPushButton*>(via.boton)->click();
                } else {
                    p.teclado.escribir(via.texto);
                    p.teclado.tecla(std::string_view(via.boton) == "cmdaceptar" ? Qt::Key_F5 : Qt::Key_F6);
                }
                sigue = v.form().visible() && v.form().active_control() == v.form().find(via.control) &&
                        linea->text() == QString::fromUtf8(via.texto);
                auto& forma = v.form();
                raton ? v.findChild<QPushButton*>("cmdcancelar")->click() : p.teclado.tecla(Qt::Key_Escape);
                cerrada = !forma.visible();
            };
            p.teclado.tecla(std::string_view(via.menu) == "mnucheque" ? Qt::Key_F7 : Qt::Key_F6,
                            Qt::ControlModifier);
            EXPECT_EQ(std::exchange(p.mensajes, {}), std::vector<std::string>{via.mensaje})
                << via.control << " " << via.texto << (raton ? " by mouse" : " by keys");
            EXPECT_TRUE(sigue && cerrada) << via.control;
        }
    }
    EXPECT_EQ(apoyo::filas(*p.db, pruebas::SIN_PAPELES), "0");
}

TEST(VentanasPapeles, EnterAndTheLookupKeepWhatIsTypedOnTheCheque) {
    Pantalla p;
    const Encima encima(p);
    apoyo::ejecutar(*p.db, "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,concepto,"
                           "libro,estado,banco,cuenta) values (1,'01',#06/10/2024#,'001','1','Aporte',"
                           "'CONTABLES','P','CHILE','1-9')");
    ASSERT_TRUE(abrir_comprobante(p.f(), {1, "01", std::chrono::year(2024) / 6 / 10, "001", "1"}));
    std::string escrito, despues;
    p.al_abrir = [&](qt::FormWindow& v) {
        v.form().set_active(v.form().find("txtCuenta"));
        p.teclado.escribir("77-5");
        p.teclado.tecla(Qt::Key_Y, Qt::ControlModifier); // the lookup is left with Escape
        escrito = casilla(v, "txtCuenta")->text().toStdString();
        p.teclado.tecla(Qt::Key_Return);
        despues = v.form().active_control()->name();
    };
    p.teclado.tecla(Qt::Key_F7, Qt::ControlModifier);
    EXPECT_EQ(escrito, "77-5");
    EXPECT_EQ(despues, "txtcheque") << "Enter passes over the lookup's button";
}

} // namespace quorvel
