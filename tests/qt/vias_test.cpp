// Goal: no way into a box or a cell passes its rules by. Method: one table of texts, each by every way that a
// window has; what is found once it has been left is compared, and so is what was said.
#include "apoyo/vias.h"
#include "pantalla_qt.h"

#include <QClipboard>
#include <QInputMethodEvent>
#include <QLineEdit>

namespace quorvel {

namespace {

using apoyo::Via;
using pruebas::Pantalla;

struct Camino {
    const char* nombre;
    bool entero;
    void (*llevar)(Pantalla&, const std::string&);
};
void al_portapapeles(const std::string& texto) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(texto));
}
QLineEdit& caja() { return dynamic_cast<QLineEdit&>(*QApplication::focusWidget()); }
const Camino CAMINOS[] = {
    {"teclas", false, [](Pantalla& p, const std::string& t) { p.teclado.escribir(t); }},
    {"Ctrl+V", true,
     [](Pantalla& p, const std::string& t) {
         al_portapapeles(t);
         p.teclado.tecla(Qt::Key_V, Qt::ControlModifier);
     }},
    {"menu", true, // and the middle button, which calls the same
     [](Pantalla&, const std::string& t) {
         al_portapapeles(t);
         caja().paste();
     }},
    {"composed", true,
     [](Pantalla&, const std::string& t) {
         QInputMethodEvent compuesto;
         compuesto.setCommitString(QString::fromStdString(t));
         QApplication::sendEvent(&caja(), &compuesto);
     }},
};

TEST(ViasQt, EveryWayInPassesTheRules) {
    Pantalla p;
    frmQuorvel& f = p.f();
    ui::ctlPlanilla& g = f.grdDetalle;
    for (const Via& v : apoyo::vias())
        for (const Camino& camino : CAMINOS) {
            if (!camino.entero && std::string(v.texto).find_first_of("\n\t") != std::string::npos) continue;
            SCOPED_TRACE(std::string(v.control) + std::to_string(v.columna) + " " + v.texto + " by " +
                         camino.nombre);
            const std::string inicial = v.control == std::string("mskF_comp") ? "15/06/2024" : "";
            auto* const control = f.find(v.control);
            auto* const texto = dynamic_cast<ui::TextBox*>(control);
            if (texto) texto->SetText(inicial);
            if (!texto) {
                g.SetFocus();
                g.move_to(0, 1);
                g.paste("103001\t12\t700");
                ASSERT_TRUE(g.move_to(0, v.columna) && g.begin_edit());
                p.grilla().editor().selectAll();
            } else {
                f.txtnombre.SetFocus();
                ASSERT_TRUE(texto->SetFocus());
            }
            p.mensajes.clear();
            camino.llevar(p, v.texto);
            p.teclado.tecla(Qt::Key_Tab);
            const std::string dice = camino.entero ? v.dice_entero : v.dice_tecleado;
            EXPECT_EQ(p.mensajes, dice.empty() ? std::vector<std::string>{} : std::vector<std::string>{dice});
            if (!texto) g.cancel_edit();
            EXPECT_EQ(texto ? texto->Text() : g.TextMatrix(0, v.columna),
                      camino.entero ? v.entero : v.tecleado);
            if (texto) texto->SetText("");
            g.Clear();
        }
}

} // namespace

} // namespace quorvel
