// Goal: every control can be named, seen and read. Method: all forms are walked, the focus is photographed,
// the palettes are measured.
#include "app/dibujo.h"
#include "app/estilo.h"
#include "nameless.h"
#include "pantalla_qt.h"
#include "qt/BalanceLabel.h"
#include "qt/RegistroBar.h"
#include "qt/help.h"

#include <QScreen>
#include <cmath>
#include <set>

namespace quorvel {

namespace {

using pruebas::nameless;
using pruebas::Pantalla;

double luminance(const QColor& c) {
    const auto channel = [](double v) {
        return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}
double contrast(const QColor& a, const QColor& b) {
    const double x = luminance(a), y = luminance(b);
    return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

} // namespace

TEST(Accesibilidad, EveryControlHasAName) {
    Pantalla p;
    p.f().grdDetalle.SetFocus();
    p.teclado.escribir("1"); // the cell editor is there
    EXPECT_EQ(nameless(*p.escritorio.window_of(p.f())), "");
    EXPECT_EQ(p.grilla().editor().accessibleName(), QString::fromUtf8("Cuenta, línea 1"));
    for (const auto& forma : pruebas::todas_las_formas(p)) {
        const qt::FormWindow ventana(*forma, nullptr);
        EXPECT_EQ(nameless(ventana), "") << forma->name();
    }
}

TEST(Accesibilidad, EveryControlHasItsHelp) {
    Pantalla p;
    const auto sin_ayuda = [](const ui::Form& forma) {
        std::string faltan;
        for (const ui::Control* control : forma.controls())
            if (control->takes_focus() && qt::help_text(*control).isEmpty()) faltan += control->name() + ";";
        return faltan;
    };
    EXPECT_EQ(sin_ayuda(p.f()), "");
    for (const auto& forma : pruebas::todas_las_formas(p)) EXPECT_EQ(sin_ayuda(*forma), "") << forma->name();
    ui::ctlPlanilla& g = p.f().grdDetalle;
    std::set<std::string> de_columnas;
    for (int col = 0; col < g.Cols(); ++col) {
        g.SetCol(col);
        de_columnas.insert(qt::help_text(g).toStdString());
    }
    EXPECT_EQ(de_columnas.size(), 11U);
    p.ir_a("txtconcepto");
    p.escritorio.window_of(p.f())->findChild<QAction*>("ayuda")->trigger();
    const QWidget* ayuda = nullptr;
    for (const QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && w->inherits("QWhatsThat")) ayuda = w;
    EXPECT_NE(ayuda, nullptr);
    p.teclado.tecla(Qt::Key_Escape);
}

TEST(Accesibilidad, TextIsReadableOnEveryGround) {
    using P = QPalette;
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.01);
    constexpr std::pair<P::ColorRole, P::ColorRole> pairs[] = {
        {P::WindowText, P::Window},    {P::WindowText, P::Base},   {P::Text, P::Base},
        {P::Text, P::AlternateBase},   {P::ButtonText, P::Button}, {P::HighlightedText, P::Highlight},
        {P::Link, P::Window},          {P::Link, P::Base},         {P::ToolTipText, P::ToolTipBase},
        {P::PlaceholderText, P::Base}, {P::Text, P::Button},
    };
    for (const bool dark : {false, true}) {
        const QPalette colours = app::paleta(dark);
        for (const auto group : {P::Active, P::Inactive, P::Disabled})
            for (const auto& [ink, ground] : pairs)
                EXPECT_GE(contrast(colours.color(group, ink), colours.color(group, ground)), 4.5)
                    << dark << " " << group << " " << ink << " on " << ground;
        // The edge of what can be filled in or pressed is no text.
        for (const QColor& ground :
             {colours.color(P::Base), colours.color(P::Window), app::Dibujo::fondo_tarjeta(colours)})
            EXPECT_GE(contrast(colours.color(P::Dark), ground), 3) << dark;
        for (const auto ink : {P::WindowText, P::Link})
            EXPECT_GE(contrast(colours.color(ink), app::Dibujo::fondo_tarjeta(colours)), 4.5) << dark;
        EXPECT_GE(contrast(colours.color(P::Disabled, P::WindowText), app::Dibujo::fondo_tarjeta(colours)),
                  4.5);
        // Disabled is seen at once: another ink, and boxes lose their ground.
        EXPECT_NE(colours.color(P::Disabled, P::Text), colours.color(P::Active, P::Text));
        EXPECT_NE(colours.color(P::Disabled, P::Base), colours.color(P::Active, P::Base));
        for (const bool done : {false, true}) {
            const auto notice = qt::RegistroBar::notice_colours(dark, done);
            EXPECT_GE(contrast(notice.ink, notice.ground), 4.5) << dark << done;
        }
        for (const bool balanced : {false, true}) {
            const auto shown = qt::BalanceLabel::colours(dark, balanced);
            EXPECT_GE(contrast(shown.ink, shown.ground), 4.5) << dark << balanced;
        }
    }
}

// The same box with and without the focus must not look the same.
TEST(Accesibilidad, TheFocusIsSeenOnEveryControl) {
    for (const app::Tema tema : {app::Tema::claro, app::Tema::oscuro}) {
        app::aplicar_estilo(*qobject_cast<QApplication*>(QCoreApplication::instance()), tema);
        Pantalla p;
        qt::FormWindow& ventana = *p.escritorio.window_of(p.f());
        int vistos = 0;
        for (ui::Control* control : p.f().controls()) {
            auto* widget = ventana.findChild<QWidget*>(QString::fromStdString(control->name()));
            if (widget == nullptr || !control->can_focus()) continue;
            const auto foto = [&] {
                QCoreApplication::processEvents();
                return ventana.grab(QRect(widget->mapTo(&ventana, QPoint(0, 0)), widget->size())).toImage();
            };
            (control == &p.f().txtconcepto ? static_cast<ui::Control&>(p.f().mskF_comp) : p.f().txtconcepto)
                .SetFocus();
            const QImage sin_foco = foto();
            ASSERT_TRUE(control->SetFocus()) << control->name();
            EXPECT_FALSE(foto() == sin_foco) << control->name();
            ++vistos;
        }
        EXPECT_GT(vistos, 30);
    }
}

TEST(Accesibilidad, TheBalanceIsSaidInWords) {
    qt::BalanceLabel etiqueta;
    etiqueta.resize(300, 24);
    etiqueta.show();
    const struct {
        double debe, haber;
        const char *texto, *ayuda;
    } casos[] = {
        {0, 0, "Sin montos", ""},
        {119000, 119000, "✓  Cuadrado", ""},
        {119000, 100000, "≠  Diferencia 19.000 · falta Haber", "Explicar la diferencia (F9)"},
        {1, 1234567, "≠  Diferencia 1.234.566 · falta Debe", "Explicar la diferencia (F9)"},
    };
    for (const auto& c : casos) {
        etiqueta.show_totals(c.debe, c.haber);
        EXPECT_EQ(etiqueta.text().toStdString(), c.texto);
        EXPECT_EQ(etiqueta.accessibleName().toStdString(), c.texto);
        EXPECT_EQ(etiqueta.toolTip().toStdString(), c.ayuda);
        QCoreApplication::processEvents();
        const QImage vista = etiqueta.screen()->grabWindow(etiqueta.winId()).toImage();
        EXPECT_EQ(vista.pixelColor(6, 3), vista.pixelColor(20, 3))
            << "no strip of the state before: " << c.texto;
    }
}

} // namespace quorvel
