// Goal: in the assistants' windows a press refuses or acts, never both, and no way in skips a rule. Method:
// the table of ways that the driver walks too, by key events and by mouse events with the clipboard.
#include "apoyo/vias_asistente.h"
#include "pantalla_qt.h"
#include "screen/campos.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMouseEvent>

namespace quorvel {

namespace {

using namespace apoyo;

class AsistentesQt : public ::testing::Test {
protected:
    pruebas::Pantalla p;

    static void clic(QWidget& w) {
        const QPointF donde = w.rect().center();
        for (const auto tipo : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent evento(tipo, donde, w.mapToGlobal(donde), Qt::LeftButton,
                               tipo == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, {});
            QApplication::sendEvent(&w, &evento);
        }
    }
    static QWidget& pieza(qt::FormWindow& v, const std::string& nombre) {
        return *v.findChild<QWidget*>(QString::fromStdString(nombre));
    }
    /// As the entry of a box's context menu and the middle button do it.
    static void pegar(qt::FormWindow& v, const std::string& caja, const std::string& texto) {
        auto& edit = dynamic_cast<QLineEdit&>(pieza(v, caja));
        clic(edit);
        edit.selectAll();
        QGuiApplication::clipboard()->setText(QString::fromStdString(texto));
        edit.paste();
    }
    void tecla(const std::string& nombre) {
        const std::pair<const char*, Qt::Key> teclas[] = {
            {"enter", Qt::Key_Return}, {"tab", Qt::Key_Tab}, {"f5", Qt::Key_F5}, {"escape", Qt::Key_Escape}};
        for (const auto& [n, k] : teclas)
            if (nombre == n) return p.teclado.tecla(k);
        p.teclado.escribir(nombre);
    }
    void salir(qt::FormWindow& v, const Salida& s) {
        if (*s.tecla)
            tecla(s.tecla);
        else
            clic(pieza(v, s.control));
    }
    void abrir(const char* libro, const char* documento, std::function<void(qt::FormWindow&)> hacer) {
        limpiar_para_nuevo(p.f());
        p.f().cmblibro.select_text(libro);
        p.f().cmbdoc_libro.select_text(documento);
        p.f().txtrut_persona.SetText("12.345.678-5");
        p.f().txtnombre.SetText("Juan");
        hacer_ = std::move(hacer);
        p.al_abrir = [this](qt::FormWindow& v) { abierta(v); };
        p.teclado.tecla(Qt::Key_F4);
    }
    std::string renglones() {
        std::string t;
        for (int i = 0; i < p.f().grdDetalle.Rows(); ++i)
            for (int c = 1; c < 5; ++c)
                t += (c > 1 ? "|" : t.empty() ? "" : ";") + p.f().grdDetalle.TextMatrix(i, c);
        return t;
    }

private:
    /// A lookup gives its first row. The dialog's own work begins outside the watch, which so sees its boxes.
    void abierta(qt::FormWindow& v) {
        p.al_abrir = [this](qt::FormWindow& otra) { abierta(otra); };
        if (auto* lista = dynamic_cast<ui::ctlConsulta*>(v.form().find("ctlConsulta1")))
            lista->pick(0);
        else if (auto hacer = std::exchange(hacer_, nullptr))
            QTimer::singleShot(0, &v, [hacer, &v, &forma = v.form()] {
                hacer(v);
                EXPECT_FALSE(forma.visible());
                forma.Hide();
            });
    }
    std::function<void(qt::FormWindow&)> hacer_;
};

} // namespace

TEST_F(AsistentesQt, ARefusedTextIsToldOnceAndNothingElseHappens) {
    int vuelta = 0;
    for (const TextoMalo& t : TEXTOS_MALOS) {
        SCOPED_TRACE(std::string(t.libro) + " " + t.control);
        abrir(t.libro, t.documento, [&](qt::FormWindow& v) {
            ui::Form& d = v.form();
            if (const std::string antes = t.antes; !antes.empty())
                pegar(v, antes.substr(0, antes.find('=')), antes.substr(antes.find('=') + 1));
            tecla("tab");
            const auto entrar = [&] {
                if (vuelta++ % 2 == 0) return pegar(v, t.control, t.texto);
                d.find(t.control)->SetFocus();
                p.teclado.tecla(Qt::Key_A, Qt::ControlModifier);
                p.teclado.escribir(t.texto);
            };
            for (const Salida& s : SALIDAS) {
                if (!s.revisa) continue;
                entrar();
                salir(v, s);
                EXPECT_EQ(std::exchange(p.mensajes, {}), std::vector<std::string>{t.mensaje})
                    << s.tecla << s.control;
                EXPECT_EQ(d.active_control()->name(), t.control) << s.tecla << s.control;
                EXPECT_EQ(app::Teclado::destino(), &pieza(v, t.control));
            }
            entrar();
            salir(v, SALIDAS[5 + vuelta % 2]);
        });
        EXPECT_EQ(renglones(), "");
        EXPECT_TRUE(std::exchange(p.mensajes, {}).empty());
    }
}

TEST_F(AsistentesQt, ARefusedCodeIsTypedOver) {
    abrir("COMPRAS", "FACTURA", [&](qt::FormWindow& v) {
        pegar(v, "txtCuenta", "501002");
        tecla("enter");
        v.form().find("txtCuenta")->SetFocus();
        p.teclado.escribir("9");
        tecla("enter");
        p.teclado.escribir("501001");
        tecla("enter");
        EXPECT_EQ(dynamic_cast<ui::Label&>(*v.form().find("lblCuenta")).Caption(), "GASTOS GENERALES");
        tecla("escape");
    });
    EXPECT_EQ(p.mensajes, std::vector<std::string>{"Cuenta no válida"});
}

TEST_F(AsistentesQt, EachDialogByKeysAloneAndByClicksAlone) {
    for (const Recorrido& r : RECORRIDOS) {
        SCOPED_TRACE(r.libro);
        abrir(r.libro, r.documento, [&](qt::FormWindow&) {
            for (const std::string& t : en_teclas(r.teclas)) tecla(t);
        });
        EXPECT_EQ(renglones(), r.por_teclas);
        abrir(r.libro, r.documento, [&](qt::FormWindow& v) {
            for (const std::string& accion : piezas(r.clics)) {
                const auto igual = accion.find('=');
                if (igual != std::string::npos) {
                    pegar(v, accion.substr(0, igual), accion.substr(igual + 1));
                    continue;
                }
                clic(pieza(v, accion));
            }
        });
        EXPECT_EQ(renglones(), r.por_clics);
    }
    EXPECT_EQ(p.mensajes, std::vector<std::string>{});
}

} // namespace quorvel
