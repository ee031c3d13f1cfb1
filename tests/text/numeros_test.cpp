#include "text/cuantos.h"
#include "text/suma.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace quorvel;

namespace {

TEST(Numeros, FormatoRoundsDecimalHalvesAwayFromZero) {
    struct {
        double valor;
        const char *patron, *texto;
    } casos[] = {
        {250 * 1.19, "#,##0", "298"},
        {-250 * 1.19, "#,##0", "-298"},
        {2.5, "0", "3"},
        {1299.5 * 19 / 100, "#,##0.00", "246,91"},
        {0.5, "0", "1"},
        {-0.4, "0", "0"},
        {1234567, "#,##0", "1.234.567"},
        {123, "#,##0", "123"},
        {1234567.891, "#,##0.00", "1.234.567,89"},
        {999999.995, "#,##0.00", "1.000.000,00"},
        {7, "00", "07"},
        {42, "000000", "000042"},
        {31.5, "0.00", "31,50"},
        {0.005, "0.00", "0,01"},
        {0, "#,##0", "0"},
        {1e15, "#,##0", "1.000.000.000.000.000"},
        {std::nan(""), "0", "0"},
        {9.5, "0", "10"},
        {1e-40, "0.00", "0,00"},
        {1, "0", "1"},
        {std::numeric_limits<double>::infinity(), "0", "0"},
        {0.25, "#.00", ",25"},
        {1e20, "0", "100000000000000000000"},
        {12.5, "#,##0.##", "12,5"},
    };
    for (const auto& c : casos) EXPECT_EQ(formato(c.valor, c.patron), c.texto) << c.valor << ' ' << c.patron;
    EXPECT_EQ(formato(0, "#,##0", true), "");
    EXPECT_EQ(formato(5, "#,##0", true), "5");
    const double redondos[][2] = {{2.5, 2},      {3.5, 4}, {-2.5, -2}, {250 * 1.19, 298},
                                  {2.500001, 3}, {2.7, 3}, {-1, -1},   {-0.3, 0}};
    for (const auto& r : redondos) {
        EXPECT_EQ(Round(r[0]), r[1]) << r[0];
        EXPECT_EQ(std::signbit(Round(r[0])), r[1] < 0) << r[0];
    }
}

TEST(Numeros, Readings) {
    struct {
        const char* texto;
        double base, con_formato;
    } casos[] = {{"1.234.567", 1.234, 1234567},
                 {"12,5", 12.5, 12.5},
                 {"-5", -5, -5},
                 {"", 0, 0},
                 {"abc", 0, 0},
                 {"12A", 12, 12},
                 {" 7 ", 7, 7},
                 {"1.500", 1.5, 1500},
                 {"1e9", 1, 1},
                 {"nan", 0, 0},
                 {"+8", 8, 8},
                 {"-1.000,25", -1, -1000.25}};
    for (const auto& c : casos) {
        EXPECT_EQ(valnumerobase(c.texto), c.base) << c.texto;
        EXPECT_EQ(valnumeroformato(c.texto), c.con_formato) << c.texto;
    }
    constexpr auto MAX = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(val_entero("12A"), 12);
    EXPECT_EQ(val_entero(""), 0);
    EXPECT_EQ(val_entero("\t-8x"), -8);
    EXPECT_EQ(val_entero("\r+8:"), 8);
    EXPECT_EQ(val_entero(" \v9"), 9);
    for (const char* sin : {"\x0E\x35", "\x01\x35", "!5", " ", "-", "+"})
        EXPECT_EQ(val_entero(sin), 0) << sin;
    EXPECT_EQ(val_entero("9223372036854775800"), MAX - 7);
    EXPECT_EQ(val_entero("9223372036854775807"), MAX);
    EXPECT_EQ(val_entero("9223372036854775808"), MAX);
    EXPECT_EQ(val_entero("999999999999999999999999999999"), MAX);
    EXPECT_EQ(val_entero("-999999999999999999999999999999"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(codigo_seis("12"), "000012");
    EXPECT_EQ(codigo_seis("0001234567"), "1234567");
    EXPECT_EQ(codigo_seis("12345678901234567890"), "12345678901234567890");
    EXPECT_EQ(codigo_seis("AB12"), "AB12");
    EXPECT_EQ(codigo_seis(""), "");
}

TEST(Numeros, OnlyNumbersBecomeLiterals) {
    const char* const casos[][2] = {{"1.234.567", "1234567"},
                                    {"12,5", "12.5"},
                                    {"-5", "-5"},
                                    {"+5", "5"},
                                    {"007", "7"},
                                    {"", "0"},
                                    {"0", "0"},
                                    {",5", "0.5"},
                                    {"12,", "12"},
                                    {" 3 ", "3"},
                                    {"-0001,50", "-1.50"},
                                    {"999999999999999999", "999999999999999999"}};
    for (const auto& c : casos) EXPECT_EQ(numero_sql(c[0]), c[1]) << c[0];
    for (const char* malo :
         {"5+1", "1,5,2", "abc", "12A", "-", ".", "1 2", "1234567890123456789", "'", "0x10", "1e5", "--5"})
        EXPECT_FALSE(numero_sql(malo)) << malo;
}

TEST(Numeros, DecimalSumsAreExact) {
    Decimal suma;
    for (int i = 0; i < 10; ++i) suma = suma + Decimal::leer("0,1");
    EXPECT_EQ(suma, Decimal(1));
    EXPECT_EQ((Decimal::leer("9.007.199.254.740.993") + Decimal(1)).formato("#,##0"),
              "9.007.199.254.740.994");
    EXPECT_EQ((Decimal(5) - Decimal::leer("7,5")).formato("#,##0.00"), "-2,50");
    EXPECT_EQ(Decimal::leer("2,5").formato("#,##0"), "3");
    EXPECT_EQ(Decimal::leer("0,0000005").formato("0.000000"), "0,000001");
    const char* const leidos[][2] = {{"basura", "0"},
                                     {"", "0"},
                                     {"12A5", "12"},
                                     {"+5", "5"},
                                     {"3,5,1", "3,5"},
                                     {",9999999", "1"},
                                     {"0000000000000000000000000005", "5"},
                                     {"1.000.000.000.000", "1.000.000.000.000"},
                                     {"-999.999.999.999,5", "-999.999.999.999,5"},
                                     {"999999999999999999999999", "999.999.999.999.999.999.999.999"},
                                     {"1000000000000000000000000", "0"}}; // more digits than it holds
    for (const auto& l : leidos) EXPECT_EQ(Decimal::leer(l[0]).formato("#,##0.##"), l[1]) << l[0];
    EXPECT_LT(Decimal::leer("-1"), Decimal());
    EXPECT_EQ(Decimal::leer("1.234,5").valor(), 1234.5);
}

/// What a person has typed: every reader of it sees one number, or nobody does.
TEST(Numeros, AmountsTypedByAPerson) {
    struct {
        const char* texto;
        std::size_t decimales;
        const char* literal; // nullptr: refused
    } casos[] = {{"", 6, "0"},
                 {"5", 0, "5"},
                 {"5,5", 0, nullptr},
                 {"5,123456", 6, "5.123456"},
                 {"-123.456", 6, "-123456"},
                 {"+123.456", 6, "123456"},
                 {"1.234.567,8", 6, "1234567.8"},
                 {"1234.567", 6, nullptr},
                 {".123", 6, nullptr},
                 {"0.150", 6, nullptr},
                 {"1.23", 6, nullptr},
                 {"1.2345.67", 6, nullptr},
                 {"1,2.3", 6, nullptr}};
    for (const auto& c : casos)
        EXPECT_EQ(monto_sql(c.texto, c.decimales),
                  c.literal != nullptr ? std::optional<std::string>(c.literal) : std::nullopt)
            << c.texto;
    const struct {
        const char *texto, *suma, *linea; // "-" for no sum
    } sumas[] = {{"1.000+500-20", "1480", "1480"},
                 {"-5+8", "3", "3"},
                 {"5-8", "-3", "-"},
                 {"7+", "7", "7"},
                 {"7-", "7", "7"},
                 {"0", "0", "0"},
                 {"1,5+1,5", "3", "3"},
                 {"1,5", "1,5", "-"},
                 {"", "-", "-"},
                 {"+", "-", "-"},
                 {"5++8", "-", "-"},
                 {",5+1", "-", "-"},
                 {"5,+1", "-", "-"},
                 {"1.5", "-", "-"},
                 {"5x+1", "-", "-"},
                 {" 5", "-", "-"},
                 {"9:", "-", "-"},
                 {"999999999999999999", "999999999999999999", "999999999999999999"},
                 {"999999999999999999+1", "-", "-"}};
    const auto en_texto = [](const std::optional<Decimal>& d) { return d ? d->formato("0.##") : "-"; };
    for (const auto& s : sumas) {
        EXPECT_EQ(en_texto(sumar(s.texto)), s.suma) << s.texto;
        EXPECT_EQ(en_texto(monto_de_linea(s.texto)), s.linea) << s.texto;
    }
}

TEST(Cuantos, OneIsOne) {
    EXPECT_EQ(cuantos(0, "línea", "líneas"), "0 líneas");
    EXPECT_EQ(cuantos(1, "línea", "líneas"), "1 línea");
    EXPECT_EQ(cuantos(1234, "línea", "líneas"), "1.234 líneas");
}

TEST(Decimal, WholePesosAndPlainDigits) {
    struct {
        const char *escrito, *plano;
        std::int64_t pesos;
    } casos[] = {{"0", "0", 0},
                 {"1", "1", 1},
                 {"0,5", "0.5", 1},
                 {"0,499999", "0.499999", 0},
                 {"-0,5", "-0.5", -1},
                 {"-0,499999", "-0.499999", 0},
                 {"950,50", "950.5", 951},
                 {"1.234.567", "1234567", 1234567},
                 {"100", "100", 100},
                 {"-1,000001", "-1.000001", -1},
                 {"999999999999999", "999999999999999", 999999999999999}};
    for (const auto& c : casos) {
        const Decimal d = Decimal::leer(c.escrito);
        EXPECT_EQ(d.plano(), c.plano) << c.escrito;
        EXPECT_EQ(d.pesos(), c.pesos) << c.escrito;
        EXPECT_EQ(d.redondeado(), Decimal(c.pesos)) << c.escrito;
    }
}

} // namespace
