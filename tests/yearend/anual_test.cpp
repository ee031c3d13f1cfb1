// Goal: closing a year and opening the next, on both engines, line by line. Method: the smallest company that
// shows each rule; the rules alone.
#include "apoyo/comprobante.h"
#include "apoyo/empresa.h"
#include "yearend/apertura.h"
#include "yearend/cerrar_anio.h"
#include "yearend/cierre.h"
#include "yearend/descuadrados.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

class Anual : public ::testing::TestWithParam<Motor> {
protected:
    std::unique_ptr<clsConexion> db = crear_empresa(GetParam());
    int numero = 0;

    struct Apunte {
        std::string cuenta, auxiliar;
        std::int64_t debe, haber;
        std::string ref = "";
    };
    void comprobante(const std::string& dia, const std::vector<Apunte>& apuntes,
                     const std::string& norma = "0", const std::string& ref = "",
                     const std::string& empresa = "1") {
        const std::string n = std::to_string(++numero);
        const std::string clave = "(" + empresa + ",'01',#" + dia + "#,'001','" + n + "',";
        ejecutar(
            *db,
            "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,ifrs,num_ref) values " +
                clave + "'" + norma + "','" + ref + " ')");
        int i = 0;
        for (const Apunte& a : apuntes)
            ejecutar(*db,
                     "insert into ctdquorvel(empresa,subsistema,f_comp,documento,num_docum,secuencia,centro,"
                     "auxiliar,debe_nacional,haber_nacional,num_ref) values " +
                         clave + std::to_string(++i) + ",'" + a.cuenta + "','" + a.auxiliar + "'," +
                         std::to_string(a.debe) + "," + std::to_string(a.haber) + ",'" + a.ref + "')");
    }
    ResultadoAsiento cierre(const Avance& avance = {}) {
        return generar_lineas_cierre(*db, {1, fecha(2024, 12, 31), "CIERRE", "302001", "302002", {}, {}},
                                     avance);
    }
    ResultadoAsiento apertura(bool por_documento = false, const char* norma = "1") {
        return generar_apertura(*db, {1, 2025, norma, "ASIENTO APERTURA 2025", por_documento});
    }
    void guardar(const ResultadoAsiento& r, const std::string& dia) {
        std::vector<Apunte> apuntes;
        for (const auto& [n, l] : r.asiento.lineas)
            apuntes.push_back({l.centro, l.auxiliar, l.debe->pesos(), l.haber->pesos()});
        comprobante(dia, apuntes);
    }
    void registrar_cierre() {
        ejecutar(
            *db,
            "update ctmconfigu set f_comp_cierre=#12/31/2024#,documento_cierre='001',num_docum_cierre='" +
                std::to_string(numero) + "' where empresa=1 and anio=2024");
    }
    static std::string en_texto(const ResultadoAsiento& r) {
        if (!r.desenlace) return r.desenlace.mensaje();
        std::string t;
        for (const auto& [n, l] : r.asiento.lineas)
            t += (t.empty() ? "" : ";") + std::to_string(n) + "|" + l.centro + "|" + l.auxiliar + "|" +
                 l.debe->formato("#,##0") + "|" + l.haber->formato("#,##0") + "|" + l.num_ref;
        return t;
    }
};
std::string como(const ::testing::TestParamInfo<Motor>& m) { return nombre(m.param); }
INSTANTIATE_TEST_SUITE_P(Motores, Anual, ::testing::ValuesIn(MOTORES), como);

TEST_P(Anual, AperturaLineaPorLinea) {
    comprobante("01/10/2024", {{"101001", "", 500, 0}, {"301001", "", 0, 500}});
    comprobante("02/10/2024", {{"101002", "", 300, 0}, {"101002", "", 0, 300}});
    comprobante("03/10/2024", {{"103001", "000012", 119, 0}, {"401001", "", 0, 119}}, "2");
    comprobante("01/01/2025", {{"101001", "", 9, 0}, {"301001", "", 0, 9}});
    EXPECT_EQ(en_texto(apertura()), "1|101001||500|0|;3|301001||0|500|;4|302001||0|0|")
        << "an account at zero has no line and is counted; norm 2 and next year do not count";
    EXPECT_EQ(en_texto(apertura(false, "2")),
              "1|101001||500|0|;3|103001|000012|119|0|;4|301001||0|500|;5|302001||0|119|");
}

TEST_P(Anual, AperturaPorDocumento) {
    comprobante("03/10/2024", {{"103001", "000012", 119, 0}, {"401001", "", 0, 119}}, "0", "77");
    comprobante("03/11/2024", {{"103001", "000012", 238, 0}, {"401001", "", 0, 238}}, "0", "88");
    comprobante("03/12/2024", {{"101001", "", 19, 0}, {"103001", "000012", 0, 19, "77"}}, "0", "5");
    for (int vez = 0; vez < 2; ++vez) // the work table of the first run is replaced
        EXPECT_EQ(en_texto(apertura(true)),
                  "1|101001||19|0|;2|103001|000012|100|0|77;3|103001|000012|238|0|88;4|302001||0|357|");
}

TEST_P(Anual, DosUsuariosAbrenALaVez) {
    comprobante("03/10/2024", {{"103001", "000012", 119, 0}, {"401001", "", 0, 119}}, "1", "77");
    comprobante("03/11/2024", {{"103001", "000014", 238, 0}, {"401001", "", 0, 238}}, "2", "88");
    const std::string conexion = (GetParam() == Motor::sqlite ? "sqlite:" : "") + db->Name();
    const auto otra = abrir_sesion(conexion);
    ResultadoAsiento segundo;
    int veces = 0; // the second call comes between building the work table and reading it
    const ResultadoAsiento primero = generar_apertura(*db, {1, 2025, "1", "g", true}, [&](long, long) {
        if (++veces == 2) segundo = generar_apertura(*otra, {1, 2025, "2", "g", true});
        return true;
    });
    EXPECT_EQ(en_texto(primero), "1|103001|000012|119|0|77;2|302001||0|119|");
    EXPECT_EQ(en_texto(segundo), "1|103001|000014|238|0|88;2|302001||0|238|");
    EXPECT_GE(veces, 2);
}

TEST_P(Anual, CierreDeMayorAMenor) {
    comprobante("03/10/2024", {{"501001", "", 1000, 0}, {"101001", "", 0, 1000}});
    comprobante("03/11/2024", {{"101001", "", 400, 0}, {"401001", "", 0, 400}});
    comprobante("03/12/2024", {{"501002", "", 50, 0}, {"501002", "", 0, 50}});
    EXPECT_EQ(en_texto(cierre()), "1|401001||400|0|;2|501002||0|0|;3|501001||0|1.000|;4|302002||600|0|");
    guardar(cierre(), "12/31/2024");
    EXPECT_EQ(en_texto(cierre()), "1|501001||0|0|;2|401001||0|0|;3|501002||0|0|;4|302001||0|0|")
        << "built again over itself: nothing is left to close";
}

TEST_P(Anual, LoQueNoSeGenera) {
    EXPECT_EQ(en_texto(apertura()), "Empresa no tiene movimientos en año 2024");
    comprobante("03/10/2024", {{"101001", "", 1000, 0}, {"401001", "", 0, 1000}});
    long oidas = 0;
    const ResultadoAsiento r = cierre([&](long, long) { return ++oidas < 1; });
    EXPECT_EQ(r.desenlace.como, Desenlace::cancelado);
    EXPECT_TRUE(r.asiento.lineas.empty());
    ejecutar(*db, "update ctmconfigu set centro_gan=null");
    EXPECT_EQ(en_texto(apertura()).substr(0, 50), "La cuenta de utilidad no esta configurada. Configu");
    ejecutar(*db, "delete from ctmconfigu");
    EXPECT_EQ(en_texto(apertura()), "Empresa no configurada");
}

TEST_P(Anual, CerrarElAnio) {
    const auto cerrar = [&] {
        const auto r = cerrar_anio_contable(*db, 1, HOY);
        return r.desenlace ? r.mensaje : r.desenlace.mensaje();
    };
    EXPECT_EQ(cerrar(), FALTA_CIERRE);
    comprobante("03/10/2024", {{"501001", "", 1000, 0}, {"101001", "", 0, 1000}});
    registrar_cierre();
    EXPECT_EQ(cerrar(), "Comprobante de Cierre tiene errores que  descuadran el Balance General");
    guardar(cierre(), "12/31/2024");
    registrar_cierre();
    ejecutar(*db, "update ctmconfigu set elaborado='Ana O''H'");
    ejecutar(*db, "update adxemp_doc set ultimo_emitido='9'");
    EXPECT_EQ(cerrar(), "Cierre Anual de 2024 Completado con éxito");
    EXPECT_EQ(
        filas(*db,
              "select anio,f_digi_inicial,f_digi_final,f_comp_cierre,iva,elaborado from ctmconfigu where "
              "anio=2025"),
        "2025|2025-01-01|2025-12-31||203001|Ana O'H");
    EXPECT_EQ(filas(*db, "select documento,ultimo_emitido from adxemp_doc order by documento"),
              "001|0;002|0");
    EXPECT_EQ(cerrar(), FALTA_CIERRE) << "a second screen must not close the year just opened";
    ejecutar(*db, "update adxemp_doc set ultimo_emitido='3'");
    EXPECT_FALSE(completar_cierre_anio(*db, 1, HOY)) << "it was finished: the numbers stay";
    ejecutar(*db, "update ctmconfigu set documento_cierre='---' where anio=2025");
    comprobante("01/01/2025", {{"101001", "", 9, 0}, {"301001", "", 0, 9}});
    EXPECT_FALSE(completar_cierre_anio(*db, 1, HOY)) << "the numbers are the new year's";
}

TEST_P(Anual, CerradoAunqueNoSeRenumere) {
    comprobante("03/10/2024", {{"101001", "", 1000, 0}, {"101002", "", 0, 1000}});
    registrar_cierre();
    ejecutar(*db, "alter table adxemp_doc rename column f_u_emision to f_antes");
    EXPECT_EQ(cerrar_anio_contable(*db, 1, HOY).mensaje,
              "Cierre anual completado, problemas al reiniciar numero de documento");
    EXPECT_EQ(filas(*db, "select max(anio) from ctmconfigu"), "2025");
    ejecutar(*db, "alter table adxemp_doc rename column f_antes to f_u_emision");
    ASSERT_TRUE(completar_cierre_anio(*db, 1, HOY));
    EXPECT_EQ(filas(*db, "select documento_cierre from ctmconfigu where anio=2025"), "");
    EXPECT_FALSE(completar_cierre_anio(*db, 1, HOY));
}

TEST_P(Anual, Descuadrados) {
    EXPECT_EQ(lista_descuadrados(*db), "");
    numero = 14;
    comprobante("03/10/2024", {{"501001", "", 1000, 0}, {"101001", "", 0, 999}});
    comprobante("03/10/2024", {{"501001", "", 1000, 0}, {"101001", "", 0, 1000}});
    numero = 26;
    comprobante("03/10/2024", {{"501001", "", 0, 5}}, "0", "", "2");
    EXPECT_EQ(lista_descuadrados(*db), "15 - 27 - ");
    EXPECT_EQ(lista_descuadrados(*db, EmpresaAnio{1, 2024}), "15 - ");
    EXPECT_EQ(lista_descuadrados(*db, EmpresaAnio{1, 2023}), "");
}

} // namespace
