// Goal: the editing rules of the grid. Method: keys and pastes of a person on a form of one grid.
#include "apoyo/escritorio_guion.h"
#include "platform/ui/controls.h"
#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/form.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::ui;
using Textos = std::vector<std::string>;

namespace {

/// Columns: key (refuses "x"), amount ("#,##0"), free text, last; notes the events.
struct Hoja : Form {
    explicit Hoja(Escritorio& e) : Form(e, "frmHoja", "Hoja") {
        g.SetCols(4);
        g.Columns(1).NumberFormat = "#,##0";
        g.SetEnterColumns(0, 2);
        g.BeforeColUpdate += [this](int col, const std::string& old, bool& cancel) {
            notas += "[" + std::to_string(col) + ":" + old + ">" + g.Value(col) + "]";
            cancel = g.Value(col) == "x";
            if (cancel) critico("No vale");
        };
        g.AfterColUpdate += [this](int col) { notas += "<" + std::to_string(col) + ">"; };
        g.RowsChanged += [this] { notas += "R"; };
        g.KeyPress += [this](int& k) {
            if (g.Col() == 1 && k >= 32 && (k < '0' || k > '9')) k = 0;
        };
        boton.Click += [this] { notas += "clic"; };
        Show();
        g.SetFocus();
    }
    void teclas(std::initializer_list<const char*> nombres) {
        for (const char* n : nombres) {
            auto e = parse_key(n);
            ASSERT_TRUE(e) << n;
            send_key(*e);
        }
    }
    std::string filas() const {
        std::string t;
        for (int r = 0; r < g.Rows(); ++r, t += ";")
            for (int c = 0; c < g.Cols(); ++c) t += (c ? "|" : "") + g.TextMatrix(r, c);
        return t;
    }
    std::string donde() const { return std::to_string(g.Row()) + "," + std::to_string(g.Col()); }
    std::string tomar() { return std::exchange(notas, {}); }

    std::string notas;
    ctlPlanilla g{*this, "g"};
    TextBox caja{*this, "caja"};
    CommandButton boton{*this, "boton", "Botón"};
};

struct PlanillaTest : ::testing::Test {
    pruebas::EscritorioGuion e;
    Hoja h{e};
};

} // namespace

TEST_F(PlanillaTest, ARowIsAddedWhenItIsLeft) {
    h.teclas({"a", "enter", "1", "2", "3", "4", "enter", "q"});
    EXPECT_EQ(h.tomar(), "[0:>a]<0>[1:>1.234]<1>");
    EXPECT_EQ(h.g.Rows(), 0);
    EXPECT_EQ(h.g.NewRowPending(), 1);
    EXPECT_EQ(h.donde(), "0,2");
    h.teclas({"enter"}); // after the last enter column the next row begins
    EXPECT_EQ(h.donde(), "1,0");
    EXPECT_EQ(h.filas(), "a|1.234|q|;");
    EXPECT_EQ(h.g.NewRowPending(), 0);
    h.teclas({"b", "up"}); // leaving upwards commits as well
    EXPECT_EQ(h.filas(), "a|1.234|q|;b|||;");
    EXPECT_EQ(h.donde(), "0,0");
}

TEST_F(PlanillaTest, ARefusalKeepsTheEditAndSpeaksOnce) {
    h.g.AddItem("a\t1\t\t");
    h.teclas({"x", "down"});
    EXPECT_EQ(e.tomar_mensajes(), Textos{"No vale"});
    EXPECT_TRUE(h.g.EditActive());
    EXPECT_EQ(h.g.edit_text() + "|" + h.filas() + h.donde(), "x|a|1||;0,0");
    h.tomar();
    EXPECT_FALSE(h.boton.press()) << "a refused cell keeps the focus and cancels the click";
    EXPECT_EQ(e.tomar_mensajes(), Textos{"No vale"});
    EXPECT_EQ(h.tomar(), "[0:a>x]");
    EXPECT_TRUE(h.g.has_focus());
    h.teclas({"escape"});
    EXPECT_FALSE(h.g.EditActive());
    EXPECT_TRUE(h.boton.press());
    EXPECT_EQ(h.tomar(), "clic");
}

TEST_F(PlanillaTest, EscapeTakesBackTheCellThenTheRow) {
    h.g.AddItem("a\t1\t\t");
    h.teclas({"down", "b", "tab", "7"});
    h.tomar();
    h.teclas({"escape"});
    EXPECT_EQ(h.g.TextMatrix(1, 0) + "|" + h.g.TextMatrix(1, 1), "b|");
    EXPECT_EQ(h.tomar(), "") << "the cell alone changes no total";
    h.teclas({"escape"});
    EXPECT_EQ(h.tomar(), "R");
    EXPECT_EQ(h.g.NewRowPending(), 0);
    EXPECT_EQ(h.g.TextMatrix(1, 0), "");
    EXPECT_EQ(h.filas(), "a|1||;");
}

TEST_F(PlanillaTest, AnUnchangedTextRaisesNothing) {
    h.g.AddItem("a\t1.234\tq\t");
    h.g.SetTextMatrix(0, 3, "0");
    h.g.Columns(3).NumberFormat = "#,##0";
    h.g.move_to(0, 3);
    h.teclas({"delete", "backspace", "enter"}); // an emptied nought is no change
    h.g.SetTextMatrix(0, 3, "");
    h.g.move_to(0, 0);
    h.teclas({"f2", "enter", "1", "2", "3", "4", "enter", "q", "tab", "tab"});
    EXPECT_EQ(h.tomar(), "");
    EXPECT_EQ(h.filas(), "a|1.234|q|;");
    EXPECT_EQ(h.donde(), "1,0") << "Tab visits the last column too";
    EXPECT_EQ(h.g.NewRowPending(), 0) << "walking over the empty row adds none";
}

TEST_F(PlanillaTest, ABlockOfASpreadsheetFillsRows) {
    h.g.AddItem("a\t1\tviejo\tz");
    h.g.paste("p\t$1.500\r\nq\t20\tdos\r\nr\t\ttres\tsobra\tmás\r\n");
    EXPECT_EQ(h.filas(), "p|1.500|viejo|z;q|20|dos|;") << "the last line is the row being added";
    h.teclas({"down"});
    EXPECT_EQ(h.filas(), "p|1.500|viejo|z;q|20|dos|;r||tres|sobra;");
    h.tomar();
    h.g.move_to(0, 0);
    h.g.paste("s\nx\nt");
    EXPECT_EQ(e.tomar_mensajes(), Textos{"No vale"}) << "stops at the cell that refuses";
    EXPECT_EQ(h.donde() + h.g.edit_text(), "1,0x");
    EXPECT_EQ(h.g.TextMatrix(2, 0), "r");
    h.teclas({"escape"});
    h.g.move_to(0, 2);
    h.g.begin_edit(false);
    h.g.paste("uno\tdos\ntres\n"); // into an open edit it is one text
    EXPECT_TRUE(h.g.commit_edit());
    EXPECT_EQ(h.g.TextMatrix(0, 2), "uno dos tres");
}

TEST_F(PlanillaTest, DeletingAsksAndTellsTheTotals) {
    for (const char* fila : {"a", "b", "c"}) h.g.AddItem(fila);
    bool no = true;
    h.g.BeforeDelete += [&](bool& cancel) { cancel = no; };
    h.g.move_to(1, 0);
    h.teclas({"ctrl+delete"});
    EXPECT_EQ(h.filas() + h.tomar(), "a|||;b|||;c|||;");
    no = false;
    h.teclas({"ctrl+shift+delete"}); // another command's stroke
    EXPECT_EQ(h.filas(), "a|||;b|||;c|||;");
    h.teclas({"ctrl+delete"});
    EXPECT_EQ(h.filas() + h.tomar(), "a|||;c|||;R");
    h.teclas({"ctrl+delete", "ctrl+delete"}); // the last row, then nothing on the empty one
    EXPECT_EQ(h.filas() + h.tomar() + h.donde(), "a|||;R1,0");
}

TEST_F(PlanillaTest, StepsAreTakenBackAndDoneAgain) {
    h.g.AddItem("a\t1\t\t");
    h.teclas({"down", "b", "enter", "5", "enter", "enter"}); // a row of its own
    h.g.move_to(0, 0);
    h.g.paste("p\t2\nq\t3");
    h.teclas({"ctrl+delete"});
    const char* const estados[] = {"p|2||;", "p|2||;q|3||;", "a|1||;b|5||;", "a|1||;"};
    h.tomar();
    for (const char* estado : estados) {
        EXPECT_EQ(h.filas(), estado);
        h.teclas({"ctrl+z"});
    }
    EXPECT_EQ(h.tomar(), "RRR") << "the totals follow; the first row was there before";
    for (const char* estado : {"a|1||;b|5||;", "p|2||;q|3||;", "p|2||;"}) {
        h.teclas({"ctrl+shift+z"});
        EXPECT_EQ(h.filas(), estado);
    }
    h.teclas({"down", "7", "ctrl+z", "ctrl+z"}); // the edit, then the row being added
    EXPECT_EQ(h.filas() + std::to_string(h.g.NewRowPending()), "p|2||;0");
    h.g.SetLocked(true);
    EXPECT_FALSE(h.g.undo());
    h.g.SetLocked(false);
    h.g.Clear();
    EXPECT_FALSE(h.g.can_undo()) << "another voucher";
}

TEST_F(PlanillaTest, ManyRowsAtOnceTellTheViewOnceAndLeaveTheRowBeingAddedLast) {
    h.teclas({"q"});
    int avisos = 0;
    h.g.Reset += [&] { ++avisos; };
    h.g.AddItems({"a\t1", "b\t2", "c\t3"});
    EXPECT_EQ(avisos, 1);
    EXPECT_EQ(h.donde(), "3,0");
    h.teclas({"enter", "down"});
    EXPECT_EQ(h.filas(), "a|1||;b|2||;c|3||;q|||;");
}

TEST_F(PlanillaTest, AProposalIsWrittenOnlyWhenAccepted) {
    h.g.AddItem("a\t1\t\t");
    h.g.move_to(0, 1);
    const auto proponer = [&] {
        EXPECT_TRUE(h.g.propose("1.234"));
        EXPECT_TRUE(h.g.proposed());
    };
    for (const char* tecla : {"escape", "down", "up"}) {
        proponer();
        h.teclas({tecla});
        EXPECT_EQ(h.g.TextMatrix(0, 1), "1") << tecla;
        h.g.move_to(0, 1);
    }
    proponer();
    EXPECT_TRUE(h.g.move_to(0, 2)) << "a click elsewhere is no acceptance";
    EXPECT_EQ(h.g.TextMatrix(0, 1) + h.tomar(), "1");
    h.g.move_to(0, 1);
    proponer();
    h.teclas({"5", "6", "enter"});
    EXPECT_EQ(h.g.TextMatrix(0, 1), "56") << "typing replaces it";
    h.g.move_to(0, 1);
    proponer();
    h.teclas({"enter"});
    EXPECT_EQ(h.g.TextMatrix(0, 1), "1.234");
}

TEST_F(PlanillaTest, ARefusedCellIsMarkedUntilItChanges) {
    h.g.AddItem("a\t1\t\t");
    h.g.move_to(0, 0);
    h.teclas({"x", "enter"});
    EXPECT_EQ(e.tomar_mensajes(), Textos{"No vale"});
    EXPECT_TRUE(h.g.refused());
    h.teclas({"y"});
    EXPECT_FALSE(h.g.refused());
    h.g.set_edit_text("x");
    h.teclas({"enter"});
    EXPECT_TRUE(h.g.refused());
    EXPECT_EQ(e.tomar_mensajes(), Textos{"No vale"});
    h.teclas({"escape"});
    EXPECT_FALSE(h.g.refused());
}

TEST_F(PlanillaTest, LockedShowsAndChangesNothing) {
    h.g.AddItem("a\t1\t\t");
    h.g.move_to(1, 0);
    h.teclas({"b"});
    h.g.SetLocked(true);
    EXPECT_FALSE(h.g.EditActive());
    h.tomar();
    h.g.move_to(0, 0);
    h.teclas({"z", "delete", "f2", "backspace", "ctrl+delete"});
    h.g.paste("p\t1\nq\t2");
    h.g.paste("p");
    EXPECT_TRUE(h.filas().starts_with("a|1||;")) << h.filas();
    EXPECT_EQ(h.tomar(), "");
    EXPECT_FALSE(h.g.EditActive());
    h.teclas({"end", "home"});
    EXPECT_EQ(h.donde(), "0,0");
}

TEST_F(PlanillaTest, TheListUnderACellIsTakenByEnterAndLeftByEscape) {
    const std::vector<Suggestion> cajas{{"11", "Caja"}, {"12", "Caja chica"}};
    h.g.suggestions.SetSource([&](int columna, const std::string& texto) {
        const bool sale = columna == 0 && (texto.starts_with("ca") || texto.starts_with("11"));
        return sale ? cajas : std::vector<Suggestion>();
    });
    const auto elegida = [&] { return h.g.suggestions.current(); };
    h.teclas({"c"});
    EXPECT_TRUE(h.g.suggestions.rows().empty());
    h.teclas({"a", "down", "down", "up", "down"});
    EXPECT_EQ(elegida(), 1);
    EXPECT_EQ(h.donde(), "0,0") << "the arrows are the list's";
    h.teclas({"enter"});
    EXPECT_EQ(h.g.TextMatrix(0, 0) + "@" + h.donde(), "12@0,1");
    h.g.move_to(0, 0);
    h.teclas({"1", "1"});
    EXPECT_EQ(elegida(), -1) << "a code is taken as it is typed";
    h.teclas({"tab"});
    EXPECT_EQ(h.g.TextMatrix(0, 0), "11");
    h.g.move_to(0, 0);
    h.teclas({"c", "a", "escape"});
    EXPECT_EQ(h.g.edit_text(), "ca");
    EXPECT_TRUE(h.g.suggestions.rows().empty());
    h.teclas({"n", "o"});
    EXPECT_FALSE(h.g.suggestions.rows().empty());
    h.teclas({"backspace", "backspace", "backspace", "backspace", "z", "z"});
    EXPECT_TRUE(h.g.suggestions.missed());
    h.teclas({"escape", "escape"});
    EXPECT_FALSE(h.g.EditActive() || h.g.suggestions.missed());
    EXPECT_EQ(h.g.TextMatrix(0, 0), "11");
}

TEST_F(PlanillaTest, NotesAreAskedForOnceAndNotWhilePainting) {
    int preguntas = 0;
    EXPECT_EQ(h.g.notes.of(0, "11"), "");
    h.g.notes.SetSource([&](int, const std::string& codigo) { return ++preguntas, "nombre de " + codigo; });
    EXPECT_EQ(h.g.notes.of(0, "11") + h.g.notes.of(0, ""), "");
    EXPECT_EQ(preguntas, 0);
    h.g.notes.fetch();
    EXPECT_EQ(h.g.notes.of(0, "11"), "nombre de 11");
    h.g.notes.fetch();
    EXPECT_EQ(preguntas, 1);
    h.g.notes.forget();
    EXPECT_EQ(h.g.notes.of(0, "11"), "");
    EXPECT_TRUE(h.g.notes.wanted());
}
