#include "text/basLetras.h"
#include "text/letras_utf8.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace quorvel;

TEST(Letras, WholeNumbersInWords) {
    const struct {
        const char *numero, *palabras;
    } casos[] = {
        {"1", "una"},
        {"16", "dieciseis"},
        {"17", "diecisiete"},
        {"11", "once"},
        {"15", "quince"},
        {"20", "veinte"},
        {"21", "veintiuna"},
        {"35", "treinta y cinco"},
        {"30040050", "treinta millones cuarenta mil cincuenta"},
        {"60070080", "sesenta millones setenta mil ochenta"},
        {"90012013", "noventa millones doce mil trece"},
        {"200300400", "doscientos millones trescientos mil cuatrocientos"},
        {"500600800", "quinientos millones seiscientos mil ochocientos"},
        {"900014018", "novecientos millones catorce mil dieciocho"},
        {"46057068", "cuarenta y seis millones cincuenta y siete mil sesenta y ocho"},
        {"79083094", "setenta y nueve millones ochenta y tres mil noventa y cuatro"},
        {"100", "cien"},
        {"101", "ciento una"},
        {"115", "ciento quince"},
        {"700", "setecientos"},
        {"1000", "mil"},
        {"1100", "mil cien"},
        {"2001", "dos mil una"},
        {"21000", "veintiuna mil"},
        {"100000", "cien mil"},
        {"1000000", "un millón"},
        {"1500000", "un millón quinientos mil"},
        {"1001000", "un millón una mil"},
        {"999999", "novecientos noventa y nueve mil novecientos noventa y nueve"},
        {"1999999", "un millón novecientos noventa y nueve mil novecientos noventa y nueve"},
        {"2000000", "dos millones"},
        {"2000001", "dos millones una"},
        {"21000000", "veintiuna millones"},
        {"1001001000", "mil una millones una mil"},
        {"1000000000", "mil millones"},
        {"999999999999",
         "novecientos noventa y nueve mil novecientos noventa y nueve millones novecientos noventa "
         "y nueve mil novecientos noventa y nueve"},
        {"-45", "menos cuarenta y cinco"},
        {"0", "cero"},
        {"", "cero"},
        {"0.5", "cero"},
        {"-0,9", "cero"},
        {",5", "cero"},
        {"+7", "siete"},
        {"1.234", "mil doscientos treinta y cuatro"},
        {"1 234", "mil doscientos treinta y cuatro"},
        {"1.234.567", "un millón doscientos treinta y cuatro mil quinientos sesenta y siete"},
    };
    for (const auto& c : casos) EXPECT_EQ(NumeroALetras(c.numero), c.palabras) << c.numero;
}

TEST(Letras, AmountsWithDecimalsUnitsAndWidth) {
    EXPECT_EQ(Letras("1234,50"), "mil doscientos treinta y cuatro con cincuenta");
    EXPECT_EQ(Letras("1.234,00"), "mil doscientos treinta y cuatro");
    EXPECT_EQ(Letras("1.234.567,5"),
              "un millón doscientos treinta y cuatro mil quinientos sesenta y siete con cincuenta");
    EXPECT_EQ(Letras("10,5"), "diez con cincuenta");
    EXPECT_EQ(Letras("10,009"), "diez");
    EXPECT_EQ(Letras(",25"), "cero con veinticinco");
    EXPECT_EQ(Letras(""), "cero");
    EXPECT_EQ(Letras("1 . 000 . 000"), "un millón");
    EXPECT_EQ(Letras("20", 0, " pesos "), "veinte pesos");
    EXPECT_EQ(Letras("20,10", 0, "pesos"), "veinte pesos con diez");
    EXPECT_EQ(Letras("20,10", 0, "pesos", " centavos "), "veinte pesos con diezcentavos");
    EXPECT_EQ(Letras("10, 50"), "diez con cincuenta");
    EXPECT_EQ(Letras("10.5"), "diez") << "the decimals of another mark are dropped";
    EXPECT_EQ(Letras("12.34,5"), "mil doscientos treinta y cuatro con cincuenta") << "points can only group";
    EXPECT_EQ(Letras("20", 10), "veinte    ");
    EXPECT_EQ(Letras("20", 1), "v");
    EXPECT_EQ(Letras("1000000", 7), "un mill");
    EXPECT_EQ(Letras("1000000", 9), "un millón");
    EXPECT_EQ(mayusculas(Letras("1.234.567")),
              "UN MILLÓN DOSCIENTOS TREINTA Y CUATRO MIL QUINIENTOS SESENTA Y SIETE");
}

TEST(Letras, RefusesWhatItCannotSay) {
    const auto motivo = [](const char* texto) {
        try {
            return NumeroALetras(texto);
        } catch (const std::logic_error& e) {
            return std::string(e.what());
        }
    };
    for (const std::string malo : {"abc", "12a", "1:", "1.2.3", "--1", "1,a", "1.a", "1.2,5", "-"})
        EXPECT_EQ(motivo(malo.c_str()), "\"" + malo + "\" no es un número");
    for (const char* grande : {"1.000.000.000.000", "99999999999999999999999999"})
        EXPECT_EQ(motivo(grande), "El monto es demasiado grande para escribirlo en letras");
    EXPECT_THROW((void)Letras("1,a5"), std::invalid_argument);
}
