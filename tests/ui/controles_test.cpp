// Goal: focus door, dates, lists and modal forms of the control models. Method: keys and clicks of a person.
#include "apoyo/escritorio_guion.h"
#include "platform/ui/controls.h"
#include "platform/ui/form.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::ui;
using Textos = std::vector<std::string>;

namespace {

struct Ficha : Form {
    explicit Ficha(Escritorio& e, const char* nombre = "frmFicha") : Form(e, nombre, "Ficha") {
        aceptar.Click += [this] { ++clics; };
        lista.Click += [this] { ++clics; };
    }
    void teclear(std::string_view texto) {
        for (const char32_t ch : U"" + std::u32string(texto.begin(), texto.end())) {
            KeyEvent k;
            k.ch = ch;
            send_key(k);
        }
    }
    void Form_Activate() override { ++activaciones; }
    int clics = 0, activaciones = 0;
    TextBox caja{*this, "caja"};
    ctlCalendario fecha{*this, "fecha"};
    ComboBox lista{*this, "lista"};
    CommandButton aceptar{*this, "aceptar", "Aceptar"};
    MenuItem menu{*this, "menu", "Menú"};
};

struct ControlesTest : ::testing::Test {
    pruebas::EscritorioGuion e;
    Ficha f{e};
};

} // namespace

TEST_F(ControlesTest, ARefusedLeaveCancelsTheClick) {
    f.Show();
    bool vale = false;
    f.caja.LeftChanged += [&](bool& cancel) {
        cancel = !vale;
        if (cancel) f.critico("No vale");
    };
    f.menu.Click += [&] { ++f.clics; };
    f.caja.SetFocus();
    f.teclear("x");
    EXPECT_FALSE(f.aceptar.press());
    EXPECT_EQ(e.tomar_mensajes(), Textos{"No vale"});
    EXPECT_FALSE(f.menu.press()) << "a menu leaves the box first, too";
    EXPECT_EQ(e.tomar_mensajes(), Textos{"No vale"});
    EXPECT_EQ(f.clics, 0);
    EXPECT_TRUE(f.caja.has_focus());
    vale = true;
    EXPECT_TRUE(f.aceptar.press());
    EXPECT_EQ(f.clics, 1);
    vale = false;
    f.caja.SetFocus();
    EXPECT_TRUE(f.aceptar.press()) << "an unchanged text is not asked again";
    f.aceptar.SetEnabled(false);
    EXPECT_FALSE(f.aceptar.press());
}

TEST_F(ControlesTest, DatesInShortFormsAndImpossibleOnes) {
    const RelojFijo reloj(std::chrono::year(2023) / 6 / 15);
    f.fecha.SetClock(reloj);
    f.fecha.SetRefusesInvalid(true);
    f.Show();
    f.fecha.SetFocus();
    f.fecha.SetText("01/01/2020");
    EXPECT_TRUE(f.fecha.all_selected()) << "typing replaces what code put there meanwhile";
    const struct {
        const char *tecleado, *queda;
    } casos[] = {{"5/3/24", "05/03/2024"},    {"050324", "05/03/2024"}, {"05032024", "05/03/2024"},
                 {"29-2-2024", "29/02/2024"}, {"1/1/50", "01/01/1950"}, {"31/12/49", "31/12/2049"},
                 {"5a/3/2024", "05/03/2024"}, {"29/02/2023", nullptr},  {"31/04/2024", nullptr},
                 {"00/01/2024", nullptr},     {"1/13/2024", nullptr},   {"5/3", "05/03/2023"},
                 {"0503", "05/03/2023"},      {"2902", nullptr},        {"1/1/024", nullptr},
                 {"99999999999999", nullptr}};
    for (const auto& c : casos) {
        f.fecha.SetFocus();
        f.fecha.SelectAll();
        f.teclear(c.tecleado);
        EXPECT_EQ(f.aceptar.press(), c.queda != nullptr) << c.tecleado;
        EXPECT_EQ(e.tomar_mensajes(), c.queda ? Textos{} : Textos{"Fecha no válida"}) << c.tecleado;
        EXPECT_EQ(f.fecha.Text(), c.queda ? c.queda : c.tecleado);
        EXPECT_EQ(f.fecha.date().has_value(), c.queda != nullptr) << c.tecleado;
    }
    f.fecha.SetText("");
    EXPECT_TRUE(f.aceptar.press()) << "an empty box may be left";
    EXPECT_EQ(f.fecha.Year() + f.fecha.MonthDayYear(), "");
}

TEST_F(ControlesTest, ListsAreSearchedByCodeAndNameWithoutAccents) {
    for (const char* t : {"(Ninguno)", "33 FACTURA ELECTRÓNICA", "34 FACTURA EXENTA", "61 ÑANDÚ"})
        f.lista.AddItem(t);
    f.Show();
    const auto buscar = [&](const char* t) {
        f.caja.SetFocus();
        f.lista.SetFocus();
        f.teclear(t);
        return f.lista.ListIndex();
    };
    EXPECT_EQ(buscar("34"), 2);
    f.lista.SetListIndex(0);
    EXPECT_EQ(buscar("factura electronica"), 1);
    EXPECT_EQ(buscar("nandu"), 3);
    KeyEvent acento;
    acento.ch = U'Ñ';
    f.lista.SetListIndex(0);
    f.caja.SetFocus();
    f.lista.SetFocus();
    f.send_key(acento);
    EXPECT_EQ(f.lista.ListIndex(), 3);
    f.clics = 0;
    EXPECT_EQ(buscar("nandu"), 3);
    EXPECT_EQ(f.clics, 1) << "typed anew it is chosen anew, once for the whole word";
    f.clics = 0;
    f.lista.SetListIndex(3);
    f.lista.SetListIndex(3);
    EXPECT_EQ(f.clics, 2) << "selecting from code always raises Click";
    f.lista.SetListIndex(-1);
    f.lista.SetListIndex(99);
    EXPECT_EQ(f.clics, 2);
    EXPECT_EQ(f.lista.Text(), "");
    EXPECT_TRUE(f.lista.choose(1));
    f.lista.RemoveItem(0);
    EXPECT_EQ(f.lista.Text(), "33 FACTURA ELECTRÓNICA") << "the selection follows its entry";
}

TEST_F(ControlesTest, KeysOfCommandsWorkFromAnywhere) {
    f.Show();
    int ordenes = 0;
    f.aceptar.SetShortcut("ctrl+shift+a");
    f.caja.AddCommand({"Orden", "f7", [&] { ++ordenes; }});
    f.menu.SetShortcut("f4");
    f.menu.Click += [&] { ordenes += 10; };
    const auto pulsar = [&](const char* tecla) {
        f.fecha.SetFocus();
        auto k = parse_key(tecla);
        f.send_key(*k);
        return k->handled;
    };
    EXPECT_TRUE(pulsar("ctrl+shift+a") && pulsar("f7") && pulsar("f4"));
    EXPECT_EQ(f.clics, 1);
    EXPECT_EQ(ordenes, 11);
    EXPECT_FALSE(pulsar("ctrl+a") && f.clics > 1) << "another stroke";
    EXPECT_FALSE(pulsar("shift+f7"));
    f.aceptar.SetEnabled(false);
    EXPECT_TRUE(pulsar("ctrl+shift+a"));
    EXPECT_EQ(f.clics, 1) << "a disabled button does nothing";
    // Enter passes over what stays as it is, Tab does not.
    f.fecha.SetEnterStop(false);
    f.caja.SetFocus();
    auto enter = parse_key("enter");
    f.send_key(*enter);
    EXPECT_EQ(f.active_control(), &f.lista);
    f.caja.SetFocus();
    auto tab = parse_key("tab");
    f.send_key(*tab);
    EXPECT_EQ(f.active_control(), &f.fecha);
}

TEST_F(ControlesTest, ArrowsChooseWithinAGroupOfOptions) {
    OptionButton a{f, "a", "A", "grupo"}, otra{f, "otra", "Otra"}, b{f, "b", "B", "grupo"},
        c{f, "c", "C", "grupo"};
    f.Show();
    b.SetEnabled(false);
    a.press();
    const auto tras = [&](const char* tecla) {
        auto k = parse_key(tecla);
        f.send_key(*k);
        return std::to_string(a.Value()) + std::to_string(b.Value()) + std::to_string(c.Value()) +
               f.active_control()->name();
    };
    EXPECT_EQ(tras("down"), "001c") << "what cannot be chosen is passed over";
    EXPECT_EQ(tras("right"), "001c");
    EXPECT_EQ(tras("up"), "100a");
    EXPECT_EQ(tras("left"), "100a");
    EXPECT_EQ(otra.Value(), 0);
}

TEST_F(ControlesTest, AModalFormComesBackToTheOneBelow) {
    f.Show();
    EXPECT_EQ(f.activaciones, 1);
    Ficha encima(e, "frmEncima");
    encima.aceptar.Click += [&] { encima.Hide(); };
    f.aceptar.Click += [&] { encima.ShowModal(); };
    e.al_abrir([&](Form& forma) {
        EXPECT_EQ(forma.name() + e.top()->name(), "frmEncimafrmEncima");
        e.bring_to_top(f);
        EXPECT_EQ(f.activaciones, 1) << "a modal form stays on top";
        encima.caja.SetText("escrito");
        encima.aceptar.press();
    });
    EXPECT_TRUE(f.aceptar.press());
    EXPECT_EQ(e.top(), &f);
    EXPECT_EQ(f.activaciones, 2);
    EXPECT_EQ(encima.caja.Text(), "escrito") << "hiding keeps the fields";
    {
        Ficha otra(e, "frmOtra");
        otra.Show();
        EXPECT_EQ(e.top(), &otra);
        e.bring_to_top(f);
        EXPECT_EQ(f.activaciones, 3);
        e.bring_to_top(otra);
    } // destroyed while shown
    EXPECT_EQ(e.top(), &f);
    EXPECT_EQ(f.activaciones, 4);
    f.aceptar.Click += []() { throw std::runtime_error("motor caído"); };
    e.al_abrir([&](Form&) { encima.Unload(); });
    EXPECT_TRUE(f.aceptar.press());
    EXPECT_EQ(e.tomar_mensajes(), Textos{"motor caído"}) << "shown once, and the form lives on";
}

TEST_F(ControlesTest, AFormDoesNotGoUnderItsProcedure) {
    f.Show();
    Ficha encima(e, "frmEncima");
    bool seguia = false, respuesta = true;
    f.aceptar.Click += [&] {
        encima.ShowModal();
        seguia = f.loaded();
        respuesta = f.pregunta("¿Otra?");
    };
    e.al_abrir([&](Form&) { f.close_by_user(); });
    EXPECT_TRUE(f.aceptar.press());
    EXPECT_TRUE(seguia && !encima.visible()) << "what it waits for goes first";
    EXPECT_FALSE(respuesta);
    EXPECT_EQ(e.tomar_mensajes(), Textos{}) << "and nothing more is asked";
    EXPECT_FALSE(f.loaded());
}
