#include "platform/report/layout.h"
#include "text/letras_utf8.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace quorvel;
using namespace quorvel::report;

namespace {

// Every letter 2 mm wide at 10 points, so that each break and each place can be reckoned by hand.
double medir(std::string_view t, const Font& f) { return static_cast<double>(largo(t)) * f.size * 0.2; }

Data filas(int n, int desde = 1) {
    Data d;
    d.columns = {{"secuencia", ColumnKind::number},
                 {"glosa", ColumnKind::text},
                 {"debe", ColumnKind::number},
                 {"f_comp", ColumnKind::date},
                 {"elaborado", ColumnKind::text}};
    for (int i = desde; i < desde + n; ++i)
        d.rows.push_back({Value(std::int64_t{i}), Value("g" + std::to_string(i)),
                          Value(std::int64_t{1000 * i}), Value(std::string("2024-03-05")),
                          Value(std::string("Ana Nuñez"))});
    return d;
}

// Page of 100 x 100 mm, margins of 10: header to 20, table header to 25, footer from 80; rows of 10 mm: five
// a page, or five less the 10 mm that "van" keeps free.
constexpr const char* VOUCHER =
    R"(<informe ancho="100" alto="100" izquierda="10" arriba="10" derecha="10" abajo="10"
  orden="secuencia" tamano="10">
  <encabezado alto="10"><texto x="0" y="0" ancho="60">Fecha {f_comp:largo}</texto></encabezado>
  <titulos alto="5"><texto x="0" y="0" ancho="30">Glosa</texto><linea x="0" y="5" ancho="80"/></titulos>
  <vienen alto="5"><texto x="0" y="0" ancho="60">Vienen {suma(debe):#,##0}</texto></vienen>
  <detalle alto="10" cuando="secuencia>=0">
    <texto x="0" y="0" ancho="20" alto="5" ajuste="si">{glosa}</texto>
    <texto x="50" y="0" ancho="30" alinear="derecha">{debe:#,##0}</texto>
    <linea x="0" y="10" ancho="80"/>
  </detalle>
  <van alto="5"><texto x="0" y="0" ancho="60">Van {suma(debe):#,##0}</texto></van>
  <totales alto="20"><texto x="0" y="0" ancho="60">Total {suma(debe):#,##0}</texto>
    <texto x="0" y="12" ancho="60">{elaborado}</texto></totales>
  <pie alto="10"><texto x="0" y="2" ancho="80" alinear="centro">Página {pagina} de {paginas}</texto></pie>
</informe>)";

Layout componer(const std::string& xml, const Data& d) {
    const Definition def = parse_definition(xml, "prueba.rpt");
    check_fields(def, d.columns);
    return compose(def, d, medir);
}
const PlacedText* buscar(const Page& p, std::string_view texto) {
    const auto it =
        std::find_if(p.texts.begin(), p.texts.end(), [&](const auto& t) { return t.text == texto; });
    return it == p.texts.end() ? nullptr : &*it;
}
void en(const Page& p, std::string_view texto, double x, double y) {
    const auto* t = buscar(p, texto);
    ASSERT_NE(t, nullptr) << texto;
    EXPECT_NEAR(t->x, x, 0.05) << texto;
    EXPECT_NEAR(t->y, y, 0.05) << texto;
}

} // namespace

TEST(Layout, PlacesEveryBandToATenthOfAMillimetre) {
    const Layout l = componer(VOUCHER, filas(2));
    ASSERT_EQ(l.pages.size(), 1U);
    const Page& p = l.pages[0];
    en(p, "Fecha 5 de marzo de 2024", 10, 10);
    en(p, "Glosa", 10, 20);
    en(p, "g1", 10, 25);
    en(p, "2.000", 60, 35);
    en(p, "Total 3.000", 10, 45);
    en(p, "Ana Nuñez", 10, 57);
    en(p, "Página 1 de 1", 10, 82);
    EXPECT_EQ(buscar(p, "2.000")->align, Align::right);
    EXPECT_EQ(buscar(p, "Vienen 0"), nullptr);
    ASSERT_EQ(p.lines.size(), 3U);
    EXPECT_NEAR(p.lines[0].y1, 25, 0.05);
    EXPECT_NEAR(p.lines[0].x2, 90, 0.05);
}

TEST(Layout, BreaksPagesWithRepeatedHeaderAndCarriedSums) {
    const Layout l = componer(VOUCHER, filas(9));
    // rows 1 to 5 fill 25..75, "Van" 75; page 2 carries in and rows start 5 lower: four rows, then the totals
    ASSERT_EQ(l.pages.size(), 3U);
    en(l.pages[0], "g5", 10, 65);
    en(l.pages[0], "Van 15.000", 10, 75);
    en(l.pages[1], "Glosa", 10, 20);
    en(l.pages[1], "Vienen 15.000", 10, 25);
    en(l.pages[1], "g6", 10, 30);
    en(l.pages[1], "g8", 10, 50);
    // the totals need 20 mm of the 10 left: captions and sums move together, and the last row with them
    EXPECT_EQ(buscar(l.pages[1], "Total 45.000"), nullptr);
    EXPECT_EQ(buscar(l.pages[1], "g9"), nullptr);
    en(l.pages[1], "Van 36.000", 10, 60);
    en(l.pages[2], "Vienen 36.000", 10, 25);
    en(l.pages[2], "g9", 10, 30);
    en(l.pages[2], "Total 45.000", 10, 40);
    en(l.pages[2], "Ana Nuñez", 10, 52);
    for (std::size_t i = 0; i < 3; ++i) en(l.pages[i], "Página " + std::to_string(i + 1) + " de 3", 10, 82);
}

TEST(Layout, LongTextsGrowTheirRowAndPushWhatIsBelow) {
    Data d = filas(2);
    d.rows[0][1] = Value(std::string("uno dos tres cuatro cinco")); // 20 mm hold ten letters
    const Layout l = componer(VOUCHER, d);
    const double linea = line_height({"", 10});
    en(l.pages[0], "uno dos", 10, 25);
    en(l.pages[0], "tres", 10, 25 + linea);
    en(l.pages[0], "cuatro", 10, 25 + 2 * linea);
    en(l.pages[0], "cinco", 10, 25 + 3 * linea);
    const double alto = 10 + 4 * linea - 5;
    EXPECT_NEAR(l.pages[0].lines[1].y1, 25 + alto, 0.05);
    en(l.pages[0], "g2", 10, 25 + alto);
}

TEST(Layout, HeaderRowOfAVoucherWithoutLinesStillPrints) {
    const Layout l = componer(VOUCHER, filas(1, -1));
    ASSERT_EQ(l.pages.size(), 1U);
    en(l.pages[0], "Fecha 5 de marzo de 2024", 10, 10);
    EXPECT_EQ(buscar(l.pages[0], "g-1"), nullptr);
    en(l.pages[0], "Total 0", 10, 25);
    EXPECT_EQ(componer(VOUCHER, filas(0)).pages.size(), 1U);
}

TEST(Layout, OffsetsMovePrePrintedPaperAndRulersMarkIt) {
    Layout l = componer(R"(<informe ancho="100" alto="50" izquierda="0" arriba="0" derecha="0" abajo="0"
        desplazar-x="1.5" desplazar-y="-0.4"><detalle alto="50" cuando="secuencia=1">
        <texto x="30" y="20.5" ancho="40">{debe:#,##0}</texto></detalle></informe>)",
                        filas(2));
    ASSERT_EQ(l.pages.size(), 1U);
    en(l.pages[0], "1.000", 31.5, 20.1);
    EXPECT_EQ(buscar(l.pages[0], "2.000"), nullptr);
    add_ruler(l); // of the paper: the offset does not move it
    ASSERT_EQ(l.pages[0].lines.size(), 21U + 10U);
    EXPECT_NEAR(l.pages[0].lines[6].x1, 30, 0.05);
    en(l.pages[0], "90", 90.4, 0);
    en(l.pages[0], "40", 40.4, 0);
}

TEST(Layout, NothingLeavesItsPlace) {
    Data d = filas(1);
    d.rows[0][1] = Value(std::string("Ñandú ártico sin par"));
    d.rows[0][2] = Value(std::int64_t{123456789012});
    const auto xml = [](const std::string& item) {
        return "<informe tamano=\"10\"><detalle alto=\"50\">" + item + "</detalle></informe>";
    };
    const struct {
        const char *item, *texto;
        double tamano;
    } casos[] = {
        {R"(<texto x="0" y="0" ancho="20">{glosa}</texto>)", "Ñandú árt…", 10},
        {R"(<texto x="0" y="0" ancho="20" encoger="si">{glosa}</texto>)", "Ñandú ártico sin par", 5},
        {R"(<texto x="0" y="0" ancho="20">{debe:#,##0}</texto>)", "123.456.789.012", 6.5},
        {R"(<texto x="0" y="0" ancho="50" completar="-">{glosa}</texto>)", "Ñandú ártico sin par ----", 10},
        {R"(<texto x="0" y="0" ancho="20">{{{secuencia:00}</texto>)", "{01", 10},
    };
    for (const auto& c : casos) {
        const Layout l = componer(xml(c.item), d);
        ASSERT_EQ(l.pages[0].texts.size(), 1U) << c.item;
        EXPECT_EQ(l.pages[0].texts[0].text, c.texto);
        EXPECT_DOUBLE_EQ(l.pages[0].texts[0].font.size, c.tamano) << c.item;
        EXPECT_LE(medir(l.pages[0].texts[0].text, l.pages[0].texts[0].font), l.pages[0].texts[0].w + 0.001);
    }
}

TEST(Layout, TotalsAtTheFootOfThePage) {
    const Layout l =
        componer(R"(<informe ancho="100" alto="100" izquierda="10" arriba="10" derecha="10" abajo="10">
        <detalle alto="10"><texto x="0" y="0" ancho="50">{glosa}</texto></detalle>
        <totales alto="20" posicion="abajo"><texto x="0" y="0" ancho="60">Fin</texto></totales></informe>)",
                 filas(7));
    ASSERT_EQ(l.pages.size(), 2U);
    en(l.pages[1], "Fin", 10, 70);
}

TEST(Wrap, CutsWordsThatAreLongerThanTheirPlace) {
    const Font f{"", 10};
    EXPECT_EQ(wrap_text("añañañañaña b", 12, f, medir), (std::vector<std::string>{"añañañ", "añaña", "b"}));
    EXPECT_EQ(wrap_text("uno\ndos", 100, f, medir), (std::vector<std::string>{"uno", "dos"}));
    EXPECT_EQ(wrap_text("ab", 1, f, medir), (std::vector<std::string>{"a", "b"})); // narrower than a letter
    EXPECT_EQ(wrap_text("", 10, f, medir), (std::vector<std::string>{""}));
}
