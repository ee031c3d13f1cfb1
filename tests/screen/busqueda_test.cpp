// Goal: one line of text finds a voucher by whatever a person knows of it. Method: vouchers of two years,
// texts typed into the open list, on both engines.
#include "apoyo/pantalla.h"
#include "screen/consultas/frmBuscaQuorvel.h"
#include "voucher/cargar.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::pruebas;

namespace {

class Busquedas : public ::testing::TestWithParam<apoyo::Motor> {
protected:
    Pantalla p{GetParam()};
    void SetUp() override {
        p.abrir();
        const char* const filas[] = {
            "#06/10/2024#,'001','9',1500,1500,'Arriendo LOCAL Ñuñoa','77','76.418.352-5','Panadería Sur'",
            "#06/11/2024#,'001','10',250000,250000,'Compra de harina','1500','96.511.640-0','Molinos'",
            "#02/03/2023#,'001','2',800,700,'Arriendo de máquina','5','','O''Higgins'"};
        for (const std::string fila : filas)
            apoyo::ejecutar(
                *p.db, "insert into "
                       "ctcquorvel(empresa,subsistema,estado,libro,f_comp,documento,num_docum,t_debe,t_haber,"
                       "concepto,num_ref,rut_persona,nombre) values (1,'01','P','COMPRAS'," +
                           fila + ")");
    }
    /// Numbers listed for each text, and what the foot says of the last one.
    void en_la_lista(const std::function<void(frmBuscaQuorvel&)>& hacer) {
        p.escritorio.al_abrir([&](ui::Form& forma) {
            hacer(dynamic_cast<frmBuscaQuorvel&>(forma));
            if (forma.visible()) forma.Hide();
        });
        p.tecla("f3");
    }
    static std::string numeros(const frmBuscaQuorvel& f) {
        std::string lista;
        for (const auto& fila : f.ctlConsulta1.rows()) lista += fila.at(2) + ";";
        return lista;
    }
};
INSTANTIATE_TEST_SUITE_P(Motores, Busquedas, ::testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& i) { return apoyo::nombre(i.param); });

} // namespace

TEST_P(Busquedas, ByWordAmountNumberAndDate) {
    en_la_lista([&](frmBuscaQuorvel& f) {
        const std::string antes = f.ctlConsulta1.SQL();
        EXPECT_EQ(f.lblResumen.Caption(), "3 comprobantes  ·  Debe 252.300  ·  Haber 252.200");
        const std::pair<const char*, const char*> textos[] = {
            {"arri", "9;2;"},      {"nunoa", "9;"},        {"local arriendo", "9;"}, {"rriendo", ""},
            {"higgins", "2;"},     {"1500", "10;9;"},      {"1.500", "10;9;"},       {"$250.000", "10;"},
            {"764183525", "9;"},   {"76.418.352-5", "9;"}, {"9", "10;9;"},           {"10/06/2024", "9;"},
            {"3/2/23 maq", "2;"},  {"06/2024", "10;9;"},   {"6/2024 harina", "10;"}, {"100624", "9;"},
            {"31/02/2024 xx", ""}, {"", "10;9;2;"}};
        for (const auto& [texto, lista] : textos) {
            f.txtbuscar.SetText(texto);
            EXPECT_EQ(numeros(f), lista) << texto;
        }
        EXPECT_EQ(f.ctlConsulta1.SQL(), antes) << "without a text the query is the filters' own";
        f.txtbuscar.SetText("6/2024");
        EXPECT_EQ(f.lblAlcance.Caption(), "Del 01/06/2024 al 30/06/2024");
        EXPECT_EQ(f.lblResumen.Caption(), "2 comprobantes  ·  Debe 251.500  ·  Haber 251.500");
    });
}

TEST_P(Busquedas, TheListIsWorkedFromTheBoxAndSorted) {
    en_la_lista([&](frmBuscaQuorvel& f) {
        EXPECT_TRUE(f.ctlConsulta1.has_focus());
        teclear(f, "arr");
        EXPECT_TRUE(f.txtbuscar.has_focus());
        EXPECT_EQ(f.txtbuscar.Text() + " " + numeros(f), "arr 9;2;");
        f.ctlConsulta1.sort_by(2);
        EXPECT_EQ(numeros(f), "2;9;");
        f.ctlConsulta1.sort_by(2);
        EXPECT_EQ(numeros(f), "9;2;") << "the other way round";
        f.txtbuscar.SetText("");
        EXPECT_EQ(numeros(f), "10;9;2;") << "as numbers";
        EXPECT_EQ(f.lblAlcance.Caption(), "En todos los comprobantes");
        auto tecla = *ui::parse_key("ctrl+left");
        f.send_key(tecla);
        EXPECT_EQ(f.ctlConsulta1.sorting().column, 1);
        teclear(f, "maq");
        for (const char* nombre : {"down", "enter"}) {
            tecla = *ui::parse_key(nombre);
            f.send_key(tecla);
        }
        EXPECT_FALSE(f.visible());
    });
    EXPECT_EQ(p.f.txtconcepto.Text(), "Arriendo de máquina");
}

TEST_P(Busquedas, ATextIsLookedForAmongTheLatest) {
    const std::string todos = "select * from ctcQuorvel where empresa=1";
    EXPECT_EQ(fecha_de_los_ultimos(*p.db, todos, 2), leer_fecha("03/02/2023"));
    EXPECT_EQ(fecha_de_los_ultimos(*p.db, todos, 3), std::nullopt) << "all are among them";
}
