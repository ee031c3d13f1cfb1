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

const std::string GLOSA(60, 'g');

class Anual : public ::testing::TestWithParam<Motor> {
protected:
    std::unique_ptr<clsConexion> db = crear_empresa(GetParam());
    int numero = 0;

    struct Apunte {
        std::string cuenta, auxiliar;
        double debe, haber;
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
                         monto(a.debe) + "," + monto(a.haber) + ",'" + a.ref + "')");
    }
    static std::string monto(double v) { return *numero_sql(formato(v, "0.##")); }
    ResultadoAsiento cierre(const Avance& avance = {}) {
        return generar_lineas_cierre(*db, {1, fecha(2024, 12, 31), GLOSA + "z", "302001", "302002", {}, {}},
                                     avance);
    }
    ResultadoAsiento apertura(bool por_documento = false, const char* norma = "1",
                              const Avance& avance = {}) {
        return generar_apertura(*db, {1, 2025, norma, GLOSA + "z", por_documento}, avance);
    }
    void guardar(const ResultadoAsiento& r, const std::string& dia) {
        std::vector<Apunte> apuntes;
        for (const auto& [n, l] : r.asiento.lineas)
            apuntes.push_back({l.centro, l.auxiliar, l.debe->valor(), l.haber->valor()});
        comprobante(dia, apuntes);
    }
    void registrar_cierre() {
        ejecutar(
            *db,
            "update ctmconfigu set f_comp_cierre=#12/31/2024#,documento_cierre='001',num_docum_cierre='" +
                std::to_string(numero) + "' where empresa=1 and anio=2024");
    }
    static std::string en_texto(const Rechazo& r) {
        EXPECT_EQ(r.icono, Icono::critico);
        EXPECT_EQ(r.campo, Campo::ninguno);
        return r.mensaje;
    }
    static std::string en_texto(const ResultadoAsiento& r) {
        if (!r.desenlace) return en_texto(r.desenlace.rechazo);
        std::string t;
        for (const auto& [n, l] : r.asiento.lineas) {
            EXPECT_EQ(l.glosa, GLOSA) << "cut at sixty letters";
            t += (t.empty() ? "" : ";") + std::to_string(n) + "|" + l.centro + "|" + l.auxiliar + "|" +
                 l.debe->formato("#,##0") + "|" + l.haber->formato("#,##0") + "|" + l.num_ref;
        }
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
    if (GetParam() == Motor::sqlite) { // the server's columns hold whole pesos alone
        comprobante("04/01/2024", {{"501001", "", 950.5, 0}, {"101001", "", 0, 950}, {"101002", "", 0, 0.5}});
        EXPECT_EQ(en_texto(apertura()), "1|101001||0|450|;3|301001||0|500|;4|302002||951|0|")
            << "half a peso has no line and is counted";
        comprobante("04/02/2024", {{"501001", "", 0.25, 0}, {"101002", "", 0, 0.25}});
        EXPECT_EQ(en_texto(apertura()), "1|101001||0|450|;2|101002||0|1|;3|301001||0|500|;4|302002||951|0|");
    } else {
        comprobante("04/01/2024", {{"501001", "", 950, 0}, {"101001", "", 0, 950}});
    }
    ejecutar(*db, "update ctmconfigu set centro_per=' '");
    EXPECT_EQ(en_texto(apertura()), "La cuenta de pérdida no esta configurada. Configure la contabilidad "
                                    "antes de generar el comprobante");
}

/// The person hears of each five hundred rows and can end it at each of them.
TEST_P(Anual, AvanceDeLasFilas) {
    std::vector<Apunte> apuntes;
    for (int i = 0; i < 1000; ++i) apuntes.push_back({"501001", std::to_string(i), 7, 0});
    apuntes.push_back({"103001", "000012", 0, 7000});
    db->BeginTrans();
    comprobante("12/31/2024", apuntes);
    db->CommitTrans();
    const std::vector<long> todas{0, 500, 1000};
    std::vector<long> oidas;
    const auto hasta = [&](std::size_t veces) {
        oidas.clear();
        return [&oidas, veces](long filas, long) { return oidas.push_back(filas), oidas.size() < veces; };
    };
    EXPECT_EQ(cierre().asiento.lineas.size(), 1001U);
    for (const std::size_t veces : {1U, 2U, 3U, 4U}) {
        EXPECT_EQ(cierre(hasta(veces)).desenlace.como == Desenlace::cancelado, veces < 4);
        EXPECT_EQ(oidas.size(), std::min<std::size_t>(veces, 3));
    }
    EXPECT_EQ(oidas, todas);
    for (const std::size_t veces : {1U, 2U})
        EXPECT_EQ(apertura(false, "1", hasta(veces)).desenlace.como, Desenlace::cancelado);
    EXPECT_TRUE(apertura(true, "1", hasta(3)).desenlace);
    EXPECT_EQ(oidas, std::vector<long>({0, 0}));
    if (GetParam() == Motor::postgres) return; // which answers before anybody is asked
    registrar_cierre();
    EXPECT_EQ(cerrar_anio_contable(*db, 1, HOY, [] { return false; }).desenlace.como, Desenlace::cancelado);
    EXPECT_EQ(filas(*db, "select max(anio) from ctmconfigu"), "2024");
}

TEST_P(Anual, AperturaPorDocumento) {
    comprobante("03/10/2024", {{"103001", "000012", 119, 0}, {"401001", "", 0, 119}}, "0", "77");
    comprobante("03/11/2024", {{"103001", "000012", 238, 0}, {"401001", "", 0, 238}}, "0", "88");
    comprobante("03/12/2024", {{"101001", "", 19, 0}, {"103001", "000012", 0, 19, "77"}}, "0", "5");
    comprobante(
        "03/13/2024",
        {{"103001", "000012", 10, 0, "77"}, {"103001", "000012", 20, 0, "77"}, {"401001", "", 0, 30}});
    for (int vez = 0; vez < 2; ++vez) // the work table of the first run is replaced
        EXPECT_EQ(en_texto(apertura(true)),
                  "1|101001||19|0|;2|103001|000012|130|0|77;3|103001|000012|238|0|88;4|302001||0|387|");
}

TEST_P(Anual, DosUsuariosAbrenALaVez) {
    comprobante("03/10/2024", {{"103001", "000012", 119, 0}, {"401001", "", 0, 119}}, "1", "77");
    comprobante("03/11/2024", {{"103001", "000014", 238, 0}, {"401001", "", 0, 238}}, "2", "88");
    const std::string conexion = (GetParam() == Motor::sqlite ? "sqlite:" : "") + db->Name();
    const auto otra = abrir_sesion(conexion);
    ResultadoAsiento segundo;
    int veces = 0; // the second call comes between building the work table and reading it
    const ResultadoAsiento primero = apertura(true, "1", [&](long, long) {
        if (++veces == 2) segundo = generar_apertura(*otra, {1, 2025, "2", GLOSA, true});
        return true;
    });
    EXPECT_EQ(en_texto(primero), "1|103001|000012|119|0|77;2|302001||0|119|");
    EXPECT_EQ(en_texto(segundo), "1|103001|000014|238|0|88;2|302001||0|238|");
    EXPECT_GE(veces, 2);
}

TEST_P(Anual, CierreDeMayorAMenor) {
    comprobante("03/10/2024", {{"501001", "", 600, 0}, {"501001", "", 400, 0}, {"101001", "", 0, 1000}});
    comprobante("03/11/2024", {{"101001", "", 400, 0}, {"401001", "", 0, 150}, {"401001", "", 0, 250}});
    comprobante("03/12/2024", {{"501002", "", 350, 0}, {"501002", "", 0, 350}});
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
    EXPECT_EQ(en_texto(apertura()), "La cuenta de utilidad no esta configurada. Configure la contabilidad "
                                    "antes de generar el comprobante");
    ejecutar(*db, "delete from ctmconfigu");
    EXPECT_EQ(en_texto(apertura()), "Empresa no configurada");
}

TEST_P(Anual, CerrarElAnio) {
    const auto cerrar = [&] {
        const auto r = cerrar_anio_contable(*db, 1, HOY);
        return r.desenlace ? r.mensaje : en_texto(r.desenlace.rechazo);
    };
    EXPECT_EQ(cerrar(), FALTA_CIERRE);
    comprobante("03/10/2024", {{"501001", "", 600, 0}, {"501001", "", 400, 0}, {"101001", "", 0, 1000}});
    registrar_cierre();
    EXPECT_EQ(cerrar(), "Comprobante de Cierre tiene errores que  descuadran el Balance General");
    guardar(cierre(), "12/31/2024");
    registrar_cierre();
    const std::string cuentas =
        "centro_gan,centro_per,factura_pagar,boleta_pagar,factura_cobrar,boleta_cobrar,iva,otros_impuestos,"
        "iva_compra,otros_impuestos_compra,honorarios_pagar,retencion_seg_cat";
    ejecutar(*db, "update ctmconfigu set elaborado='Ana "
                  "O''H',revisado='',aprobado=null,centro_per='1',factura_pagar='2',"
                  "boleta_pagar='3',factura_cobrar='4',boleta_cobrar='5',honorarios_pagar='6'");
    ejecutar(*db, "update adxemp_doc set ultimo_emitido='9'");
    EXPECT_EQ(cerrar(), "Cierre Anual de 2024 Completado con éxito");
    EXPECT_EQ(filas(*db, "select anio,f_digi_inicial,f_digi_final,f_comp_cierre,elaborado from ctmconfigu "
                         "where anio=2025 and revisado is not null and aprobado is null"),
              "2025|2025-01-01|2025-12-31||Ana O'H");
    EXPECT_EQ(filas(*db, "select " + cuentas + " from ctmconfigu where anio=2025"),
              "302001|1|2|3|4|5|203001|203002|109001|109002|6|204002");
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
    EXPECT_EQ(filas(*db, "select anio,documento_cierre from ctmconfigu where anio>2024"), "2025|---");
    ejecutar(*db, "alter table adxemp_doc rename column f_antes to f_u_emision");
    ASSERT_TRUE(completar_cierre_anio(*db, 1, HOY));
    EXPECT_EQ(filas(*db, "select documento_cierre from ctmconfigu where anio=2025"), "");
    EXPECT_FALSE(completar_cierre_anio(*db, 1, HOY));
    ejecutar(*db, "delete from ctmconfigu");
    EXPECT_EQ(en_texto(cerrar_anio_contable(*db, 1, HOY).desenlace.rechazo), "Empresa no configurada");
    EXPECT_FALSE(completar_cierre_anio(*db, 1, HOY));
}

TEST_P(Anual, Descuadrados) {
    EXPECT_EQ(lista_descuadrados(*db), "");
    numero = 14;
    comprobante("03/10/2024", {{"501001", "", 1000, 0}, {"101001", "", 0, 999}});
    comprobante("03/10/2024", {{"501001", "", 1000, 0}, {"101001", "", 0, 1000}});
    numero = 26;
    comprobante("03/10/2024", {{"501001", "", 0, 5}}, "0", "", "2");
    comprobante("03/10/2024", {{"501001", "", 0, 5}, {"101001", "", 4, 0}});
    EXPECT_EQ(lista_descuadrados(*db), "15 - 28 - 27 - ");
    EXPECT_EQ(lista_descuadrados(*db, EmpresaAnio{1, 2024}), "15 - 28 - ");
    EXPECT_EQ(lista_descuadrados(*db, EmpresaAnio{1, 2023}), "");
}

} // namespace
