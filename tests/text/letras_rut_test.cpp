#include "text/letras_utf8.h"
#include "text/rut.h"

#include <gtest/gtest.h>

using namespace quorvel;

namespace {

TEST(Letras, CodePointsNotBytes) {
    EXPECT_EQ(primeros("ñandú año", 5), "ñandú");
    EXPECT_EQ(primeros("ab", 5), "ab");
    EXPECT_EQ(primeros("ñ", 0), "");
    EXPECT_EQ(largo("ñandú €"), 7U);
    EXPECT_EQ(mayusculas("año ñandú áéíóú ü ç"), "AÑO ÑANDÚ ÁÉÍÓÚ Ü Ç");
    EXPECT_EQ(minusculas("COTIZACIÓN ÑÜ"), "cotización ñü");
    EXPECT_EQ(minusculas("@AZ["), "@az[");
    EXPECT_EQ(sin_acentos("CAMIÓN Ñuñoa"), "camion nunoa");
    EXPECT_EQ(sin_acentos("½ \xCC\x81"), "½ ");
    EXPECT_EQ(sin_acentos("\xCC\x81"), "") << "nothing is left";
    EXPECT_EQ(normalizar("n\xCC\x83 ½"), "ñ ½") << "composed, and no more than that";
    EXPECT_EQ(normalizar("a\xFFz"), "a\xEF\xBF\xBDz");
    EXPECT_EQ(mayusculas("a\xC3"), "A\xEF\xBF\xBD") << "a letter cut in half";
    EXPECT_EQ(recortar("  a b  "), "a b");
    EXPECT_EQ(recortar_fin("  a  "), "  a");
    EXPECT_EQ(sin_controles("a\tb\r\nñ\x7F"), "a b  ñ ");
    EXPECT_EQ(reemplazar("a.b..c", ".", ""), "abc");
    EXPECT_EQ(reemplazar("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(reemplazar("aaa", "", "b"), "aaa");
    for (const char* utf8 : {"", "a", "ñ", "\xEF\xBF\xBD"}) EXPECT_TRUE(es_utf8(utf8)) << utf8;
    for (const char* otro : {"\xFF", "a\xF1", "\xC3 a"}) EXPECT_FALSE(es_utf8(otro)) << otro;
    const struct {
        const char *a, *b;
        bool iguales;
    } pares[] = {{"Cotización", "COTIZACIÓN", true},
                 {"ano", "año", false},
                 {"[", "{", false},
                 {"", "", true},
                 {"ab", "AB", true},
                 {"ab", "AB ", false},
                 {"k", "\xE2\x84\xAA", true}}; // the kelvin sign
    for (const auto& c : pares) {
        EXPECT_EQ(igual_sin_caso(c.a, c.b), c.iguales) << c.a << ' ' << c.b;
        EXPECT_EQ(igual_sin_caso(c.b, c.a), c.iguales) << c.b << ' ' << c.a;
    }
}

TEST(Rut, EachRefusalHasItsText) {
    constexpr const char *A = "El rut no es válido.", *B = "El rut no es válido", *C = "El rut no es Válido";
    struct {
        const char *rut, *texto, *mensaje;
    } casos[] = {
        {"12345678-5", "12.345.678-5", ""},
        {"12.345.678-5", "12.345.678-5", ""},
        {"0012345678-5", "12.345.678-5", ""},
        {"10000013-k", "10.000.013-K", ""},
        {"10000013-K", "10.000.013-K", ""},
        {"", "", ""},
        {"...", "", ""},
        {"76543210-3 ", "76.543.210-3", ""},
        {"1-9", "1-9", ""},
        {"765434-0", "765.434-0", ""},
        {"123456785", "", A},
        {"0-0", "", A},
        {"5", "", A},
        {"1234-5678", "", B},
        {"12345678-", "", B},
        {"-", "", B},
        {"12345678-6", "", C},
        {"12A45678-5", "", C},
        {"-0", "", C},
        {"1-2-9", "", C},
        {"1:-K", "", C}, // the check character that the sign's code would give
        {"1/-K", "", C},
        {"00-0", "", C},
        {"12345678-ñ", "", B},
    };
    for (const auto& c : casos) {
        const ResultadoRut r = validarut(c.rut);
        EXPECT_EQ(r.mensaje, c.mensaje) << c.rut;
        EXPECT_EQ(r.texto, c.texto) << c.rut;
        EXPECT_EQ(r.valido, *c.mensaje == '\0') << c.rut;
    }
    EXPECT_EQ(con_guion("123456785"), "12345678-5");
    EXPECT_EQ(con_guion("1-9"), "1-9");
    EXPECT_EQ(con_guion(""), "");
}

} // namespace
