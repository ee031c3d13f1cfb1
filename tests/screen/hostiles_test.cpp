// Goal: whatever is typed is stored and shown whole, or refused with a message. Method: every field of the
// voucher times every hostile value; what stood in the field at the save is compared with what is found
// again.
#include "apoyo/pantalla.h"
#include "text/letras_utf8.h"
#include "text/rut.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace quorvel;
using namespace quorvel::pruebas;
using apoyo::Motor;
using Textos = std::vector<std::string>;
namespace fs = std::filesystem;

namespace {

constexpr const char* GRABADO = "Comprobante Ingresado y Mayorizado";

std::string largo(std::size_t n, char desde) {
    std::string t;
    for (std::size_t i = 0; i < n; ++i) t += static_cast<char>(desde + i * i % 7);
    return t;
}

const Textos& valores() {
    static const Textos todos = {"O'Higgins''",
                                 "#01/02/2024#",
                                 "a;b--",
                                 "x\ty\r\nz",
                                 "ñ😀€",
                                 std::string("a\0b\x1b", 4),
                                 "%_\\ $1 ?",
                                 " 700",
                                 "-1e999",
                                 "e\u0301\u0303n\u0303",         // combining accents
                                 "\u202Eabc\u200F\uFEFF\u00A0x", // right-to-left marks and odd blanks
                                 "123456789012345678",
                                 "9999999999999999999999999",
                                 "1.234,5",
                                 "-",
                                 largo(10000, 'a'),
                                 largo(10000, '1')};
    return todos;
}

/// A box of the header, or a cell of the first line.
struct Lugar {
    std::string control;
    int columna = -1;
    [[nodiscard]] std::string leer(const frmQuorvel& f) const {
        if (columna < 0) return dynamic_cast<const ui::TextBox&>(*f.find(control)).Text();
        const std::string celda = f.grdDetalle.TextMatrix(0, columna);
        return (columna == 3 || columna == 4) && celda == "0" ? "" : celda; // an empty amount is stored as 0
    }
    /// What a text means in this field: the rate of exchange is shown in whole units, a tax rate ungrouped.
    [[nodiscard]] std::string numero(const std::string& texto) const {
        if (control == "txtCotizacion") return Decimal::leer(texto).formato("#,##0");
        if (control == "txtiva_activo_fijo") return Decimal::leer(texto).formato("0"); // whole pesos
        const bool tasa = control == "txttasa_impuesto_otro" || columna == 10;
        const bool chilena = tasa && texto.find(',') != std::string::npos;
        return recortar(chilena ? reemplazar(reemplazar(texto, ".", ""), ",", ".") : texto);
    }
    /// Types the value as a person pastes it. @return false when it was refused at once
    [[nodiscard]] bool poner(Pantalla& p, const std::string& valor) const {
        if (columna >= 0) {
            ui::ctlPlanilla& g = p.f.grdDetalle;
            if (!g.SetFocus() || !g.move_to(0, columna)) return false;
            g.paste(valor);
            return g.commit_edit();
        }
        auto& caja = dynamic_cast<ui::TextBox&>(*p.f.find(control));
        EXPECT_TRUE(caja.SetFocus());
        caja.user_edit(valor);
        if (caja.kind() == "TextBox") {
            EXPECT_EQ(caja.Text(), sin_controles(valor));
        }
        return p.f.txtCotizacion.SetFocus() || &caja == &p.f.txtCotizacion;
    }
};

class Hostiles : public ::testing::TestWithParam<Motor> {
protected:
    Pantalla p{GetParam()};
    void SetUp() override { p.abrir(); }
    void preparar() {
        p.nuevo();
        p.f.txtconcepto.SetText("glosa");
        p.comprobante("1000");
        p.mensajes();
    }
    std::string cuantos() { return p.sql("select count(*) from ctcquorvel"); }
    /// One field and value: typed, saved, found again. Each refusal has one text and keeps everything.
    void probar(const Lugar& campo, const std::string& valor) {
        preparar();
        const std::string antes = cuantos(), viejo = campo.leer(p.f);
        const bool puesto = campo.poner(p, valor);
        if (const Textos dicho = p.mensajes(); !puesto || !dicho.empty()) {
            EXPECT_EQ(dicho.size(), 1U) << "refused without a word";
            p.tecla("escape");
            const bool bloque = valor.find('\n') != std::string::npos; // fills cells up to the refused one
            if (campo.columna >= 0 && !bloque) {
                EXPECT_EQ(campo.leer(p.f), viejo);
            }
            if (campo.columna < 0) dynamic_cast<ui::TextBox&>(*p.f.find(campo.control)).user_edit("");
            return;
        }
        if (campo.columna == 3) { // the other line follows, so that it balances
            ASSERT_TRUE(p.celda(1, 4, reemplazar(campo.leer(p.f), ".", "")));
        }
        if (campo.columna >= 0) p.f.grdDetalle.move_to(0, 1);
        const std::string escrito = campo.leer(p.f), linea = p.fila(0);
        p.guardar();
        const Textos mensajes = p.mensajes();
        ASSERT_EQ(mensajes.size(), 1U);
        if (mensajes[0] != GRABADO) {
            EXPECT_FALSE(mensajes[0].empty());
            EXPECT_EQ(cuantos(), antes);
            const bool rut = campo.control == "txtrut_persona"; // gets its dash before it is checked
            EXPECT_EQ(campo.leer(p.f), rut ? con_guion(escrito) : escrito);
            EXPECT_EQ(p.fila(0), linea);
            return;
        }
        const std::string numero = p.f.txtNum_doc.Text(), rut = p.f.txtrut_persona.Text();
        p.nuevo();
        p.f.txtconcepto.SetText("");
        p.buscar(recortar(numero)); // shown without its blanks
        EXPECT_EQ(p.mensajes(), Textos{});
        EXPECT_EQ(campo.numero(campo.leer(p.f)), campo.numero(escrito));
        EXPECT_EQ(p.fila(0).substr(0, 6), linea.substr(0, 6));
        EXPECT_EQ(p.f.txtrut_persona.Text(), rut);
    }
};
INSTANTIATE_TEST_SUITE_P(Motores, Hostiles, ::testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& i) { return apoyo::nombre(i.param); });

} // namespace

TEST_P(Hostiles, EveryFieldKeepsOrRefusesEveryValue) {
    std::vector<Lugar> campos;
    for (const char* caja : {"txtconcepto", "txtnombre", "txtnum_ref", "txtCotizacion", "txtiva_activo_fijo",
                             "txttasa_impuesto_otro", "txtNum_doc", "txtnro_correlativo", "txtrut_persona",
                             "mskF_comp", "txtfecha_doc", "txtfecha_pago"})
        campos.push_back({caja});
    for (int columna = 1; columna <= 10; ++columna) campos.push_back({"grdDetalle", columna});
    for (const Lugar& campo : campos)
        for (const std::string& valor : valores()) {
            SCOPED_TRACE(campo.control + std::to_string(campo.columna) + " <" + valor.substr(0, 30) + ">");
            probar(campo, valor);
        }
    EXPECT_EQ(p.sql("select count(*) from ctdquorvel a where not exists (select * from ctcquorvel b where "
                    "a.num_docum=b.num_docum)"),
              "0");
    EXPECT_EQ(p.sql("select count(*) from ctcquorvel where t_debe<>t_haber"), "0");
}
