// Goal: names are found by any of their words and by their codes, whatever else there is. Method: a small
// chart asked in the ways of people who type, then thousands of names that begin alike.
#include "text/indice_palabras.h"

#include <gtest/gtest.h>

using namespace quorvel;

namespace {

std::string codigos(const IndicePalabras& indice, std::string_view texto, std::size_t maximo = 10) {
    std::string lista;
    for (const auto& [codigo, nombre] : indice.buscar(texto, maximo)) lista += codigo + ";";
    return lista;
}

TEST(IndicePalabras, FindsByWordsAndCodes) {
    IndicePalabras i;
    EXPECT_EQ(codigos(i, "caja"), "");
    i.agregar("101001", "Caja General");
    i.agregar("101002", "Banco, caja de ahorros");
    i.agregar("501020", "Útiles de aseo (oficina)");
    i.agregar("000021", "O'Higgins S.A.", "77340611-1");
    EXPECT_EQ(codigos(i, "CAJ"), "101001;101002;") << "what begins so comes first";
    EXPECT_EQ(codigos(i, "ca ba"), "101002;") << "every word, in any order";
    EXPECT_EQ(codigos(i, "general caja x"), "");
    EXPECT_EQ(codigos(i, "util"), "501020;");
    EXPECT_EQ(codigos(i, "Ofi"), "501020;") << "behind a parenthesis";
    EXPECT_EQ(codigos(i, "aja"), "") << "not within a word";
    EXPECT_EQ(codigos(i, "1010"), "101001;101002;");
    EXPECT_EQ(codigos(i, "101001"), "101001;");
    EXPECT_EQ(codigos(i, "773406"), "000021;");
    EXPECT_EQ(codigos(i, "o'higg"), "000021;");
    EXPECT_EQ(codigos(i, "c"), "") << "one letter is in every other name";
    EXPECT_EQ(i.buscar("ahorros", 1).at(0).nombre, "Banco, caja de ahorros");
    i.agregar("101003", "Caja chica");
    EXPECT_EQ(codigos(i, "caja"), "101001;101003;101002;") << "added after a search";
    for (int n = 0; n < 3000; ++n)
        i.agregar(std::to_string(300000 + n), "Gasto en caja " + std::to_string(n));
    i.agregar("900000", "Caja de fondos");
    EXPECT_EQ(codigos(i, "caja", 4), "101001;101003;900000;101002;");
    EXPECT_EQ(i.cantidad(), 3006U);
}

} // namespace
