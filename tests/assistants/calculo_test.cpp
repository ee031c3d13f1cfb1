// Goal: the amounts that the dialog derives from each other. Method: one row per reaction, fields as text
// "net/exempt/other/vat/total".
#include "assistants/calculo.h"
#include "assistants/libros.h"
#include "assistants/retencion_legal.h"

#include <gtest/gtest.h>

using namespace quorvel;

namespace {

struct Caso {
    int libro;
    const char* documento;
    Importes (*reaccion)(Importes);
    const char *neto, *exento, *otro, *total, *tasa, *porcentaje, *esperado;
};
constexpr Caso CASOS[] = {
    {VENTAS, "FACTURA", neto_cambiado, "100000", "", "", "", "", "", "100000//0/19.000/119.000"},
    {VENTAS, "BOLETA", neto_cambiado, "100000", "", "", "", "", "", "100000//0/19.000/119.000"},
    {COMPRAS, "FACTURA", neto_cambiado, "250", "", "", "", "", "", "250//0/48/298"},
    {COMPRAS, "FACTURA", neto_cambiado, "100.000", "5.000", "1", "", "31,5", "",
     "100.000/5.000/31.500/19.000/155.500"},
    {COMPRAS, "BOLETA", neto_cambiado, "10000", "500", "70", "", "10", "", "10000/500/70/0/10.570"},
    {COMPRAS, "B. ELECTRONICA", neto_cambiado, "10000", "", "", "", "", "", "10000//0/1.900/11.900"},
    {COMPRAS, "FACTURA", exento_cambiado, "100.000", "7", "", "", "", "", "100.000/7///119.007"},
    {COMPRAS, "FACTURA", otro_cambiado, "100.000", "", "-500", "", "", "", "100.000//-500//118.500"},
    {VENTAS, "FACTURA", tasa_cambiada, "1.000", "", "9", "", "20,5", "", "1.000//205//1.395"},
    {COMPRAS, "BOLETA", tasa_cambiada, "1.000", "", "9", "", "20,5", "", "1.000//205/0/1.205"},
    {VENTAS, "FACTURA", total_cambiado, "1.000", "", "", "5", "", "", "1.000////5"},
    {VENTAS, "FACTURA", calcular_iva, "", "", "", "100000", "", "", "84.034///15.966/100.000"},
    {VENTAS, "FACTURA", calcular_iva, "", "", "", "119000", "", "", "100.000///19.000/119.000"},
    {COMPRAS, "FACTURA", calcular_iva, "", "", "", "99.963", "", "", "84.003///15.961/99.964"},
    {COMPRAS, "FACTURA", calcular_iva, "", "", "", "179", "", "", "150///29/178"},
    {COMPRAS, "FACTURA", calcular_iva, "", "1.000", "500", "120.500", "", "",
     "100.000/1.000/500/19.000/120.500"},
    {RETENCIONES, "BOLETA", neto_cambiado, "87250", "", "", "", "", "13,75", "87250///13.909/101.159"},
    {RETENCIONES, "BOLETA", neto_cambiado, "86250", "", "", "", "", "13,75", "86250///13.750/100.000"},
    {RETENCIONES, "BOLETA", neto_cambiado, "5.000", "", "", "", "", "0", "5.000///0/5.000"},
    {RETENCIONES, "BOLETA", total_cambiado, "", "", "", "100000", "", "13,75", "86.250///13.750/100000"},
    {RETENCIONES, "BOLETA", porcentaje_elegido, "", "", "", "100", "", "10", "////100"},
    {RETENCIONES, "BOLETA", porcentaje_elegido, "900", "", "", "", "", "10", "900///100/1.000"},
    {RETENCIONES, "BOLETA", exento_cambiado, "", "5", "", "", "", "10", "/5///"},
    {INGRESOS, "INGRESO", exento_cambiado, "", "5000", "", "", "", "", "/5000///5.000"},
    {EGRESOS, "EGRESO", neto_cambiado, "1", "", "", "7", "", "", "1////7"},
    {EGRESOS, "EGRESO", exento_cambiado, "", "abc", "", "7", "", "", "/abc///0"},
};

TEST(Calculo, CadaReaccion) {
    for (const Caso& c : CASOS) {
        const Importes i =
            c.reaccion({c.libro, c.documento, c.neto, c.exento, c.otro, c.total, "", c.tasa, c.porcentaje});
        EXPECT_EQ(i.neto + "/" + i.exento + "/" + i.otro + "/" + i.iva + "/" + i.total, c.esperado)
            << c.documento << " in book " << c.libro;
    }
}

TEST(Calculo, CuadreDeLasPartes) {
    const auto cuadre = [](int libro, const char* neto, const char* exento, const char* iva,
                           const char* total) {
        return texto_cuadre({libro, "FACTURA", neto, exento, "-500", total, iva, "", ""});
    };
    EXPECT_EQ(cuadre(COMPRAS, "100.000", "0", "19.000", "118.500"), "Cuadra");
    EXPECT_EQ(cuadre(COMPRAS, "150", "500", "29", "178"), "Diferencia -1");
    EXPECT_EQ(cuadre(RETENCIONES, "86.250", "9", "13.750", "100.000"), "Cuadra");
    EXPECT_EQ(cuadre(EGRESOS, "", "5.000", "1", "6.234"), "Diferencia 1.234");
    EXPECT_EQ(cuadre(EGRESOS, "", "0", "", "850.000"), "") << "no parts";
    EXPECT_EQ(cuadre(INGRESOS, "100.000", "7", "19.000", "119.007"), "") << "parts that are not shown";
    EXPECT_EQ(cuadre(COMPRAS, "", "", "", ""), "Diferencia 500");
    EXPECT_EQ(texto_cuadre({COMPRAS, "FACTURA", "", "", "", "", "", "", ""}), "") << "nothing yet";
}

TEST(Calculo, LoEscritoEsUnSoloNumero) {
    for (const char* bueno :
         {"", " ", "0", "150", "-500", "1.000", "12.345.678", "1234,5", " 7 ", "-999999999999999"})
        EXPECT_TRUE(monto_escrito(bueno)) << bueno;
    for (const char* malo : {"abc", "12x4", "150.00", "1.5", "1,234,567", "1.2345", "0.150", "--5", ",",
                             "1000000000000000", "-1000000000000000"})
        EXPECT_FALSE(monto_escrito(malo)) << malo;
    for (const char* buena : {"", " ", "31,5", "31.5", "0"}) EXPECT_TRUE(tasa_escrita(buena)) << buena;
    for (const char* mala : {"-5", "19,5%", "abc", "1/2", "1.000,5"})
        EXPECT_FALSE(tasa_escrita(mala)) << mala;
}

TEST(Calculo, ElPorcentajeEsElDelAnio) {
    const char* const leyes[] = {"10",    "10,75", "11,50", "12,25", "13",
                                 "13,75", "14,50", "15,25", "16",    "17"};
    for (int i = 0; i < 10; ++i) EXPECT_EQ(porcentaje_legal(2019 + i), leyes[i]);
    EXPECT_EQ(porcentaje_legal(1999), "10");
    EXPECT_EQ(porcentaje_legal(2035), "17");
}

} // namespace
