// Goal: one document seen by each book becomes the right balanced lines.
// Method: lines as text, one row per case; every case must balance.
#include "assistants/libros.h"
#include "assistants/lineas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

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
        const bool debe = *l.debe != 0;
        t += (t.empty() ? "" : " | ") + l.centro + (l.auxiliar.empty() ? "" : "/" + l.auxiliar) +
             (debe ? " D" + l.debe->plano() : " H" + l.haber->plano()) + (debe && *l.haber != 0 ? "!" : "");
    }
    return t;
}

void cuadra(const std::vector<Linea>& lineas, const char* que) {
    const Totales t = totales_de(lineas);
    EXPECT_EQ(t.debe, t.haber) << que;
}

struct Caso {
    int libro;
    const char* documento;
    int total, iva, otro;
    const char* lineas;
    bool trasponer = false;
};
/// What the dialogs do not offer as well; the rest is walked by them.
constexpr Caso CASOS[] = {
    {VENTAS, "FACTURA", 129000, 19000, 10000, "gto/5 H100000 | iva H19000 | fcob/77 D129000 | otro H10000"},
    {VENTAS, "B. EXENTA", 5000, 0, 0, "gto/5 H5000 | iva H0 | bcob D5000"},
    {VENTAS, "N.C. ELECTRONICA", 129000, 19000, 10000,
     "gto/5 D100000 | iva D19000 | fcob/77 H129000 | otro D10000"},
    {COMPRAS, "BOLETA", 10000, 0, 0, "gto/5 D10000 | bpag H10000"},
    {COMPRAS, "B. ELECTRONICA", 10000, 0, 0, "gto/5 D10000 | bpag H10000"},
    {COMPRAS, "VALES TRANSBANK", 119, 19, 0, "gto/5 D100 | ivac D19 | fpag/77 H119"},
    {INGRESOS, "INGRESO", 5000, 0, 0, "gto/5 D5000 | fcob/77 H5000", true},
    {EGRESOS, "EGRESO", 5000, 950, 70, "gto/5 D5000 | fpag/77 H5000"},
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
    DocumentoTributario d{"BOLETA", "hpro", "", "000014", 100000, 0, 0, false};
    Configuracion sin = config();
    sin.req_honorarios_pagar = "0";
    EXPECT_EQ(en_texto(lineas_retencion(d, sin, "g")), "hpro D100000 | ret H0 | hon H100000");
    EXPECT_EQ(en_texto(lineas_retiro_socio({"banco", "77", "socio", "14", 500000}, "g")),
              "banco/77 D500000 | socio/14 H500000");
}

TEST(Lineas, CadaLibroConSuAsistente) {
    const char* const titulos[] = {"libro sin asistente", "Asistente de Ventas",  "Asistente de Compras",
                                   "libro sin asistente", "Asistente de Ingreso", "Asistente de Egreso",
                                   "libro sin asistente"};
    for (int libro = 0; libro <= RET_SOCIO; ++libro) {
        try {
            EXPECT_EQ(variante(libro).titulo, std::string_view(titulos[libro]));
        } catch (const std::out_of_range& e) {
            EXPECT_EQ(e.what(), std::string_view(titulos[libro]));
        }
    }
    for (const int otro : {-1, RET_SOCIO + 1}) EXPECT_EQ(documentos_ofrecidos(otro).size(), 1U) << otro;
}

/// A kind that the screen lacks could not be carried back.
TEST(Libros, LoOfrecidoEstaEnLaPantalla) {
    for (int libro = 0; libro <= RET_SOCIO; ++libro)
        for (const auto d : documentos_ofrecidos(libro))
            EXPECT_NE(std::ranges::find(DOCUMENTOS_LIBRO, d), DOCUMENTOS_LIBRO.end()) << d;
}

} // namespace
