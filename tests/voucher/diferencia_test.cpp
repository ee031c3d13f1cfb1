// Goal: each usual slip is recognised and its cell named. Method: a balanced purchase with one slip each; the
// table gives the lines as "D"ebit or "H" credit amounts.
#include "voucher/diferencia.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

using namespace quorvel;

namespace {

std::vector<Linea> lineas(const std::string& montos) {
    std::vector<Linea> filas;
    std::istringstream partes(montos);
    for (std::string m; partes >> m;) {
        Linea l;
        (m[0] == 'D' ? l.debe : l.haber) = Decimal::leer(m.substr(1));
        filas.push_back(l);
    }
    return filas;
}

std::string celda(const CausaDiferencia& c) {
    return std::to_string(c.linea + 1) + (c.debe ? "D" : "H") + " " + c.texto.substr(c.texto.find(": ") + 2);
}

} // namespace

TEST(Diferencia, TheLikeliestCauseComesFirst) {
    struct Caso {
        const char *montos, *primera;
        std::size_t cuantas = 1;
    } const casos[] = {
        {"D100.000 D19.000 D8.500 H119.000",
         "3D el monto es igual a la diferencia: sobra, o falta su contrapartida en el Haber"},
        {"D100.000 D19.000 D4.250 H114.750",
         "3D el monto es la mitad de la diferencia: debería estar en el Haber"},
        {"H100.000 H7.300 H7.300 D100.000",
         "2H el monto es la mitad de la diferencia: debería estar en el Debe", 2},
        {"D154.000 D19.000 H164.000", "1D dos cifras cambiadas: cuadra con 145.000"},
        {"D100.000 D19.000 H911.000", "3H dos cifras cambiadas: cuadra con 119.000"},
        {"D1.000.000 D19.000 H119.000", "1D un cero de más: cuadra con 100.000"},
        {"D100.000 D19.000 H11.900", "3H un cero de menos: cuadra con 119.000"},
        {"D100.000 D7.777 H88.777",
         "1D la diferencia es el 19 % del monto: falta su IVA en el Haber, o sobra en el Debe"},
        {"D40.000 D79.000 H100.000",
         "3H la diferencia es el 19 % del monto: falta su IVA en el Haber; con IVA es 119.000"},
        {"D119.000 D50.000 H150.000", "1D el monto incluye el IVA: el neto es 100.000"},
        {"D100.000 D19.001 H119.000", "2D un peso de redondeo del IVA: el 19 % exacto es 19.000"},
        {"D700 D301 H1.000", "3H un peso de redondeo: cuadra con 1.001"},
        {"H1.000 D301 D700", "3D un peso de redondeo: cuadra con 699"},
        {"D500 H1.500 D500", "1D el monto es igual a la diferencia: falta otra vez en el Debe", 2},
    };
    for (const Caso& c : casos) {
        const Diagnostico d = explicar(lineas(c.montos));
        ASSERT_EQ(d.causas.size(), c.cuantas) << c.montos;
        EXPECT_EQ(celda(d.causas.front()), c.primera) << c.montos;
    }
}

TEST(Diferencia, NothingIsInventedAndTheTextStaysShort) {
    EXPECT_EQ(explicar({}).texto(), "El comprobante está cuadrado");
    EXPECT_EQ(explicar(lineas("D2 H2")).texto(), "El comprobante está cuadrado");
    EXPECT_TRUE(explicar(lineas("D2 H2")).causas.empty());
    const Diagnostico nada = explicar(lineas("D100.000 H61.327"));
    EXPECT_TRUE(nada.causas.empty()) << celda(nada.causas.front());
    EXPECT_EQ(nada.texto(),
              "Diferencia 38.673, falta en el Haber\n\nNinguna causa usual la explica. Revise las "
              "líneas con el documento a la vista.");
    const Diagnostico muchas = explicar(lineas("D10 D10 D10 D10 D10 D10 H70"));
    EXPECT_EQ(muchas.diferencia, -10);
    EXPECT_EQ(muchas.causas.size(), 6U);
    const std::string texto = muchas.texto();
    EXPECT_EQ(std::count(texto.begin(), texto.end(), '\n'), 5) << texto;
    // Equal digits swapped are no slip, and an amount does not turn into nothing or below.
    for (const char* montos : {"D110 H101", "D90 H81", "D5 H9"})
        for (const auto& c : explicar(lineas(montos)).causas)
            EXPECT_EQ(c.texto.find("cuadra con 0"), std::string::npos) << montos;
}
