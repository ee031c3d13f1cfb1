// Goal: one document seen by each book becomes the right balanced lines.
// Method: lines as text, one row per case; every case must balance.
#include "assistants/libros.h"
#include "assistants/lineas.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace quorvel;

namespace {

Configuracion config() {
    Configuracion k;
    k.factura_cobrar = "fcob";
    k.boleta_cobrar = "bcob";
    k.factura_pagar = "fpag";
    k.boleta_pagar = "bpag";
    k.iva = "iva";
    k.iva_compra = "ivac";
    k.otros_impuestos = "otro";
    k.otros_impuestos_compra = "otroc";
    k.honorarios_pagar = "hon";
    k.retencion_seg_cat = "ret";
    k.req_factura_cobrar = k.req_factura_pagar = k.req_honorarios_pagar = "1";
    k.req_boleta_cobrar = k.req_boleta_pagar = "0";
    return k;
}

std::string en_texto(const std::vector<Linea>& lineas) {
    std::string t;
    for (const Linea& l : lineas) {
        const bool debe = l.debe != "0";
        t += (t.empty() ? "" : " | ") + l.centro + (l.auxiliar.empty() ? "" : "/" + l.auxiliar) +
             (debe ? " D" + l.debe : " H" + l.haber) + (debe && l.haber != "0" ? "!" : "");
    }
    return reemplazar(t, ".", "");
}

void cuadra(const std::vector<Linea>& lineas, const char* que) {
    Decimal debe, haber;
    for (const Linea& l : lineas) {
        debe = debe + Decimal::leer(l.debe);
        haber = haber + Decimal::leer(l.haber);
    }
    EXPECT_EQ(debe.formato("0"), haber.formato("0")) << que;
}

struct Caso {
    int libro;
    const char *documento, *total, *iva, *otro, *lineas;
    bool trasponer = false;
};
constexpr Caso CASOS[] = {
    {VENTAS, "FACTURA", "119.000", "19.000", "0", "gto/5 H100000 | iva H19000 | fcob/77 D119000"},
    {VENTAS, "BOLETA", "119.000", "19.000", "0", "gto/5 H100000 | iva H19000 | bcob D119000"},
    {VENTAS, "VALES TRANSBANK", "119.000", "19.000", "0", "gto/5 H100000 | iva H19000 | bcob D119000"},
    {VENTAS, "B. EXENTA ELECT.", "5.000", "0", "", "gto/5 H5000 | iva H0 | bcob D5000"},
    {VENTAS, "NOTA CREDITO", "119.000", "19.000", "0", "gto/5 D100000 | iva D19000 | fcob/77 H119000"},
    {VENTAS, "N.C. EXP. ELECT.", "1.000", "0", "0", "gto/5 D1000 | iva H0 | fcob/77 H1000"},
    {VENTAS, "NOTA DEBITO", "119.000", "19.000", "0", "gto/5 H100000 | iva H19000 | fcob/77 D119000"},
    {VENTAS, "FACTURA", "129.000", "19.000", "10.000",
     "gto/5 H100000 | iva H19000 | fcob/77 D129000 | otro H10000"},
    {VENTAS, "FACTURA", "118.500", "19.000", "-500",
     "gto/5 H100000 | iva H19000 | fcob/77 D118500 | otro D500"},
    {VENTAS, "N.C. ELECTRONICA", "129.000", "19.000", "10.000",
     "gto/5 D100000 | iva D19000 | fcob/77 H129000 | otro D10000"},
    {COMPRAS, "FACTURA", "119.000", "19.000", "0", "gto/5 D100000 | ivac D19000 | fpag/77 H119000"},
    {COMPRAS, "FACTURA EXENTA", "80.000", "0", "", "gto/5 D80000 | ivac H0 | fpag/77 H80000"},
    {COMPRAS, "F. ELECTRONICA", "139.000", "19.000", "0", "gto/5 D120000 | ivac D19000 | fpag/77 H139000"},
    {COMPRAS, "NOTA CREDITO", "119.000", "19.000", "0", "gto/5 H100000 | ivac H19000 | fpag/77 D119000"},
    {COMPRAS, "NOTA CREDITO", "118.500", "19.000", "-500",
     "gto/5 H100000 | ivac H19000 | fpag/77 D118500 | otroc D500"},
    {COMPRAS, "N.D. ELECTRONICA", "119.000", "19.000", "0", "gto/5 D100000 | ivac D19000 | fpag/77 H119000"},
    {COMPRAS, "BOLETA", "10.000", "0", "0", "gto/5 D10000 | bpag H10000"},
    {COMPRAS, "B. ELECTRONICA", "10.000", "0", "0", "gto/5 D10000 | bpag H10000"},
    {COMPRAS, "VALES TRANSBANK", "119", "19", "0", "gto/5 D100 | ivac D19 | fpag/77 H119"},
    {COMPRAS, "FACTURA", "150.500", "19.000", "31.500",
     "gto/5 D100000 | ivac D19000 | fpag/77 H150500 | otroc D31500"},
    {COMPRAS, "FACTURA", "118.500", "19.000", "-500",
     "gto/5 D100000 | ivac D19000 | fpag/77 H118500 | otroc H500"},
    {COMPRAS, "FACTURA", "179", "29", "0", "gto/5 D150 | ivac D29 | fpag/77 H179"},
    {COMPRAS, "FACTURA", "99.963", "15.961", "0", "gto/5 D84002 | ivac D15961 | fpag/77 H99963"},
    {INGRESOS, "INGRESO", "5.000", "0", "0", "gto/5 H5000 | fcob/77 D5000"},
    {INGRESOS, "INGRESO", "5.000", "0", "0", "gto/5 D5000 | fcob/77 H5000", true},
    {EGRESOS, "EGRESO", "5.000", "950", "70", "gto/5 D5000 | fpag/77 H5000"},
    {EGRESOS, "BOLETA", "5.000", "0", "0", "gto/5 H5000 | fpag/77 D5000", true},
};

TEST(Lineas, DeLosCuatroLibros) {
    for (const Caso& c : CASOS) {
        const DocumentoTributario d{c.documento, "gto", "5", "77", c.total, c.iva, c.otro, c.trasponer};
        const auto lineas = lineas_documento(variante(c.libro), d, config(), std::string(70, 'x'));
        EXPECT_EQ(en_texto(lineas), c.lineas) << c.documento << " " << c.libro;
        cuadra(lineas, c.documento);
        for (const Linea& l : lineas) EXPECT_EQ(l.glosa.size(), 60U);
    }
}

TEST(Lineas, RetencionYRetiro) {
    DocumentoTributario d{"BOLETA", "hpro", "", "000014", "100.000", "", "", false};
    EXPECT_EQ(en_texto(lineas_retencion(d, "13.750", config(), "g")),
              "hpro D100000 | ret H13750 | hon/000014 H86250");
    EXPECT_EQ(en_texto(lineas_retencion(d, "0", config(), "g")),
              "hpro D100000 | ret H0 | hon/000014 H100000");
    Configuracion sin = config();
    sin.req_honorarios_pagar = "0";
    EXPECT_EQ(en_texto(lineas_retencion(d, "0", sin, "g")), "hpro D100000 | ret H0 | hon H100000");
    EXPECT_EQ(en_texto(lineas_retiro_socio({"banco", "77", "socio", "14", "500.000"}, "g")),
              "banco/77 D500000 | socio/14 H500000");
}

TEST(Libros, LoQueOfreceCadaUno) {
    const std::size_t cuantos[] = {1, 22, 14, 2, 3, 3, 2};
    for (int libro = 0; libro <= RET_SOCIO; ++libro) {
        const auto ofrecidos = documentos_ofrecidos(libro);
        EXPECT_EQ(ofrecidos.size(), cuantos[libro]) << TEXTOS_LIBRO[static_cast<std::size_t>(libro)];
        EXPECT_EQ(ofrecidos.front(), " ");
        for (const auto d : ofrecidos) // a kind that the screen lacks could not be carried back
            EXPECT_NE(std::ranges::find(DOCUMENTOS_LIBRO, d), DOCUMENTOS_LIBRO.end()) << d;
    }
    EXPECT_EQ(documentos_ofrecidos(VENTAS)[20], "VALES TRANSBANK");
    EXPECT_EQ(documentos_ofrecidos(COMPRAS)[13], "SRF SOL. REG.");
}

} // namespace
