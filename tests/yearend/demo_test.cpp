// Goal: a year of the demonstration company, closed and opened again from the screen: the opening equals,
// account by account, the balances after the closing. Method: both engines, both norms, both ways to open.
#include "apoyo/comprobante.h"
#include "apoyo/pantalla.h"
#include "app/db/demo.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <gtest/gtest.h>

#include <map>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

using Saldos = std::map<std::string, std::int64_t>;

class EmpresaDemo : public ::testing::TestWithParam<Motor> {
protected:
    EmpresaDemo() {
        molde.conexion = conexion_nueva(GetParam());
        crear_demo(molde.conexion, fecha(2024, 6, 15));
    }
    pruebas::Pantalla molde; ///< lends its connection text only

    /// Both result accounts as one: they are opened by a single line.
    static void sumar(Saldos& s, const std::string& cuenta, const std::string& auxiliar, std::int64_t monto) {
        const bool resultado = cuenta == "302001" || cuenta == "302002";
        s[resultado ? "resultado" : recortar(cuenta) + "/" + recortar(auxiliar)] += monto;
    }
    static Saldos sin_ceros(Saldos s) {
        std::erase_if(s, [](const auto& x) { return x.second == 0; });
        return s;
    }
    static Saldos en_base(clsConexion& db, const std::string& donde) {
        Saldos s;
        for (const auto rs = db.NewRecord(
                 "select a.centro,a.auxiliar,sum(a.debe_nacional),sum(a.haber_nacional) from ctdquorvel a, "
                 "ctcquorvel d where a.empresa=1 and d.empresa=1 and a.subsistema=d.subsistema and "
                 "a.f_comp=d.f_comp and a.documento=d.documento and a.num_docum=d.num_docum and " +
                 donde + " group by a.centro,a.auxiliar");
             !rs->eof(); rs->MoveNext())
            sumar(s, rs->at(0).text(), rs->at(1).text(), rs->at(2).integer() - rs->at(3).integer());
        return sin_ceros(std::move(s));
    }
    static Saldos en_grilla(const frmQuorvel& f) {
        Saldos s;
        const auto monto = [&](int i, int col) {
            return val_entero(Decimal::leer(f.grdDetalle.TextMatrix(i, col)).formato("0"));
        };
        for (int i = 0; i < f.grdDetalle.Rows(); ++i)
            sumar(s, f.grdDetalle.TextMatrix(i, 1), f.grdDetalle.TextMatrix(i, 2), monto(i, 3) - monto(i, 4));
        return sin_ceros(std::move(s));
    }
    static void guardado(pruebas::Pantalla& p) {
        p.f.cmblibro.SetListIndex(0);
        p.guardar();
        EXPECT_EQ(p.mensajes().back(), "Comprobante Ingresado y Mayorizado");
    }
    /// Without the result accounts, which the closing settled for all norms at once: what is left is the
    /// result.
    static Saldos patrimonio(Saldos s) {
        std::erase_if(s, [](const auto& x) { return x.first[0] >= '4' && x.first != "resultado"; });
        std::int64_t resto = 0;
        for (const auto& [cuenta, saldo] : s)
            if (cuenta != "resultado") resto -= saldo;
        s["resultado"] = resto;
        return s;
    }
    /// Opens 2025 both ways, with a saved voucher each.
    static void abre_igual(pruebas::Pantalla& p, int norma, const Saldos& esperado) {
        for (ui::MenuItem* menu : {&p.f.mnuApertura, &p.f.mnuAperturaDoc}) {
            SCOPED_TRACE(menu->name() + " " + std::to_string(norma));
            p.nuevo();
            p.escribir("mskF_comp", "01/01/2025");
            p.elegir("cmbDocumento", "001 TRASPASO");
            p.f.txtconcepto.SetText("Apertura");
            p.f.cmbifrs.SetListIndex(norma);
            p.escritorio.responder(ui::Answer::yes);
            menu->press();
            EXPECT_EQ(en_grilla(p.f), esperado);
            guardado(p);
            EXPECT_EQ(en_base(*p.db, "a.f_comp=#01/01/2025# and a.num_docum='" + p.f.txtNum_doc.Text() + "'"),
                      esperado);
        }
    }
};
INSTANTIATE_TEST_SUITE_P(Motores, EmpresaDemo, ::testing::ValuesIn(MOTORES),
                         [](const auto& m) { return nombre(m.param); });

TEST_P(EmpresaDemo, LaAperturaEsElSaldoDespuesDelCierre) {
    pruebas::Pantalla p(molde, 1);
    p.abrir();
    p.escritorio.responder(ui::Answer::yes);
    p.f.mnuGenerarCierre.press();
    EXPECT_EQ(p.f.lblTotalDebe.Caption(), p.f.lblTotalhaber.Caption());
    guardado(p);
    const std::string anio = "a.f_comp between #01/01/2024# and #12/31/2024#";
    const Saldos cerrado = en_base(*p.db, anio);
    ASSERT_GT(cerrado.size(), 20U);
    for (const auto& [cuenta, saldo] : cerrado)
        EXPECT_TRUE(cuenta[0] < '4' || cuenta == "resultado") << cuenta << " still holds " << saldo;

    p.escritorio.responder(ui::Answer::yes);
    p.f.mnuCerrarAnio.press();
    EXPECT_EQ(p.mensajes().back(), "Cierre Anual de 2024 Completado con éxito");

    // The company keeps vouchers for both norms and for the second alone, so the second sees all of them.
    EXPECT_EQ(p.sql("select distinct ifrs from ctcquorvel order by ifrs"), "0;2");
    const Saldos primera = patrimonio(en_base(*p.db, anio + " and d.ifrs='0'"));
    EXPECT_NE(primera, cerrado);
    abre_igual(p, 1, primera);
    abre_igual(p, 2, cerrado);
}

} // namespace
