// Goal: a company's year is closed and the next one opened by conversation, and what cannot be done is
// refused in words. Method: both engines; the same steps that an accountant takes.
#include "driver/dialogo.h"

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

const char* const GRABADO = "Comprobante Ingresado y Mayorizado";
const std::string CIERRE = "Desea Generar Comprobante para Cierre Anual, \r\n"
                           "Se recomienda sacar respaldo de la base antes de ejecutar, \r\n"
                           "Porque despues de ejecutada esta opción no se podra ingresar\r\n"
                           "ningun otro comprobante en este año, ni se podra anular el mismo.\r\n"
                           "Con el respaldo en caso de existir un error se puede recuperar y volver\r\n"
                           " a Generar el Comprobante. Una vez Grabado el Comprobante de Cierre Anual\r\n"
                           " Recomendamos Cerrar el Año de Forma Inmediata";
const std::string CERRAR = "Esta seguro que desea cerrar el año contable\r\n"
                           "Nota: Una vez cerrado el año no se modificar ningun comprobante del año";
const std::string APERTURA = "Desea Generar Comprobante para Apertura,  \r\n para el año 2025";
const std::string BLOQUEADO = "No se puede ingresar mas Comprobantes en el año 2024\r\n"
                              " porque el Comprobante de Cierre Anual ha sido generado\r\n"
                              " y todavia no se ha cerrado el Año Contable, para cerrar\r\n"
                              " el año ejecute la opcion del menú Cerrar Año Contable";
const char* const CERRADO = "Cierre Anual de 2024 Completado con éxito";

class AnioPorDriver : public testing::TestWithParam<Motor> {
protected:
    Empresa e{GetParam()};
    Dialogo d;

    void SetUp() override { e.abrir(d); }
    /// A sale on credit: the customer owes it under its document.
    void venta(const char* numero, int monto, const char* norma = "0") {
        const std::string clave = std::string("(1,'01',#03/05/2024#,'001','") + numero + "',";
        const std::string m = std::to_string(monto);
        ejecutar(*e.db, "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,num_ref,ifrs) "
                        "values " +
                            clave + "'7" + numero + " ','" + norma + "')");
        for (const std::string& linea : {"1,'103001','000012'," + m + ",0)", "2,'401001','',0," + m + ")"})
            ejecutar(*e.db, "insert into ctdquorvel(empresa,subsistema,f_comp,documento,num_docum,secuencia,"
                            "centro,auxiliar,debe_nacional,haber_nacional) values " +
                                clave + linea);
    }
    void di(const std::vector<Turno>& turnos) { conversar(d, turnos); }
    /// A menu command, its question and the answer with what it leads to.
    void manda(const char* menu, const std::string& texto, const char* boton,
               const std::vector<std::string>& trozos) {
        di({{pulsa(menu), {pregunta(texto)}}, {responde(boton), trozos}});
    }
    std::string grilla() {
        std::string t;
        const Json grilla = d.pedir(mira("grdDetalle"));
        for (const auto& fila : grilla.at("value").at("rows"))
            t += (t.empty() ? "" : ";") + fila.at(1).get<std::string>() + "|" +
                 fila.at(3).get<std::string>() + "|" + fila.at(4).get<std::string>() + "|" +
                 fila.at(8).get<std::string>();
        return t;
    }
};
INSTANTIATE_TEST_SUITE_P(Motores, AnioPorDriver, testing::ValuesIn(MOTORES),
                         [](const auto& p) { return nombre(p.param); });

TEST_P(AnioPorDriver, closes_the_year_and_opens_the_next_one_for_each_norm) {
    venta("1", 1000);
    venta("2", 300, "2");
    ejecutar(*e.db, "update adxemp_doc set ultimo_emitido='2' where documento='001'");
    manda("mnuGenerarCierre", CIERRE, "no", {});
    EXPECT_EQ(grilla(), "");
    manda("mnuGenerarCierre", CIERRE, "yes", {});
    EXPECT_EQ(grilla(), "401001|1.300|0|;302001|0|1.300|");
    di({{mira("mskF_comp"), {campo("text", "31/12/2024")}},
        {mira("txtNum_doc"), {campo("text", "3")}},
        {mira("txtconcepto"), {campo("text", "CIERRE ANUAL DEL AÑO 2024")}},
        {elige("cmblibro", "CONTABLES"), {}},
        {barra("Save"), {dice(GRABADO, "information")}},
        {pulsa("mnuAnular"),
         {dice("Comprobante de Cierre anual no puede ser anulado,\r\n Pero puede ser modificado o vuelto a "
               "generar")}}});
    manda("mnuGenerarCierre", CIERRE, "yes", {}); // shown: built again over its own lines
    EXPECT_EQ(grilla(), "401001|1.300|0|;302001|0|1.300|;401001|0|0|;302001|0|0|");
    di({{mira("lblTotalDebe"), {campo("caption", "1.300")}},
        {barra("Save"), {dice(GRABADO, "information")}},
        {barra("New"), {}}});
    di(asiento("500"));
    di({{barra("Save"), {dice(BLOQUEADO)}}});
    manda("mnuGenerarCierre", CIERRE, "yes", {dice("Comprobante de Cierre ya fue Generado")});
    manda("mnuCerrarAnio", CERRAR, "no", {});
    manda("mnuCerrarAnio", CERRAR, "yes", {dice(CERRADO, "information")});
    EXPECT_EQ(
        filas(*e.db, "select anio,f_digi_inicial,f_digi_final,f_comp_cierre from ctmconfigu where anio>2024"),
        "2025|2025-01-01|2025-12-31|");
    di(asiento("500"));
    di({{barra("Save"), {dice("Fecha fuera del período de digitacion, Mínima:01/01/2025")}},
        {barra("New"), {}},
        {escribe("mskF_comp", "01/01/2025"), {}},
        {elige("cmbDocumento", "001 TRASPASO"), {}},
        {mira("txtNum_doc"), {campo("text", "1")}}});
    manda("mnuApertura", APERTURA, "yes",
          {dice("Seleccione la norma TRIBUTARIA o IFRS, no puede ser ambas", "information")});
    const char* const tributaria[] = {"103001|1.000|0|;302001|0|1.000|", "103001|1.000|0|71;302001|0|1.000|"};
    const char* const ifrs[] = {"103001|1.300|0|;302001|0|1.300|",
                                "103001|1.000|0|71;103001|300|0|72;302001|0|1.300|"};
    for (const auto& [norma, lineas] : {std::pair{"1 TRIBUTARIA", tributaria}, std::pair{"2 IFRS", ifrs}})
        for (int i = 0; i < 2; ++i) {
            di({{elige("cmbifrs", norma), {}}});
            manda(i == 0 ? "mnuApertura" : "mnuAperturaDoc", APERTURA, "yes", {});
            EXPECT_EQ(grilla(), lineas[i]) << norma;
        }
    di({{elige("cmblibro", "CONTABLES"), {}}, {barra("Save"), {dice(GRABADO, "information")}}});
    EXPECT_EQ(filas(*e.db, "select f_comp,ifrs,t_debe from ctcquorvel where apertura='1'"),
              "2025-01-01|2|1300");
    di({{barra("New"), {}}});
    di(asiento("500", "10/06/2025"));
    di({{barra("Save"), {dice(GRABADO, "information")}}, {elige("cmbifrs", "1 TRIBUTARIA"), {}}});
    manda("mnuAperturaDoc", APERTURA, "yes", {}); // what is shown is stored: the opening is another voucher
    EXPECT_EQ(grilla(), tributaria[1]);
    di({{mira("mskF_comp"), {campo("text", "01/01/2025")}},
        {mira("txtNum_doc"), {campo("text", "3")}},
        {mira("cmbifrs"), {campo("text", "1 TRIBUTARIA")}},
        {mira("txtconcepto"), {campo("text", "ASIENTO APERTURA 2025")}}});
}

TEST_P(AnioPorDriver, says_what_is_missing_and_changes_nothing) {
    manda("mnuGenerarCierre", CIERRE, "yes",
          {dice("Antes de Generar Comprobante de Cierre debe ingresar los movimientos del año 2024")});
    di({{pulsa("mnuCerrarAnio"), {dice("Antes de Cerrar el Año de debe Generar el Comprobante de Cierre")}},
        {pulsa("mnudescuadrado"), {dice("No existen comprobantes descuadrados", "information")}}});
    venta("1", 1000);
    ejecutar(*e.db, "update ctmconfigu set centro_gan=null, centro_per=''");
    const std::string falta = "La cuenta de utilidad no esta configurada. Configure la contabilidad antes de "
                              "generar el comprobante";
    manda("mnuGenerarCierre", CIERRE, "yes", {dice(falta)});
    di({{escribe("mskF_comp", "02/01/2025"), {}}, {elige("cmbifrs", "2 IFRS"), {}}});
    manda("mnuApertura", APERTURA, "yes", {dice(falta)});
    manda("mnuAperturaDoc", APERTURA, "yes", {dice(falta)});
    ejecutar(*e.db, "update ctmconfigu set centro_gan='302001', centro_per='302002'");

    ejecutar(*e.db, "update ctdquorvel set haber_nacional=999 where secuencia=2");
    const std::string lista = "Lista de Comprobantes descuadrados 1 - \r\nDesea continuar de todas formas";
    di({{pulsa("mnudescuadrado"), {dice("Lista de Comprobantes descuadrados 1 - ", "information")}}});
    manda("mnuGenerarCierre", CIERRE, "yes", {pregunta(lista)});
    di({{responde("no"), {}}});
    EXPECT_EQ(grilla(), "");
    manda("mnuApertura", APERTURA, "yes", {pregunta(lista)});
    di({{responde("yes"), {}}});
    EXPECT_EQ(grilla(), "103001|1.000|0|;302001|0|1.000|");

    di({{barra("New"), {}}, {escribe("mskF_comp", "02/01/2030"), {}}, {elige("cmbifrs", "2 IFRS"), {}}});
    manda("mnuApertura", "Desea Generar Comprobante para Apertura,  \r\n para el año 2030", "yes",
          {dice("Empresa no tiene movimientos en año 2029")});
    ejecutar(*e.db, "delete from ctmconfigu");
    manda("mnuApertura", "Desea Generar Comprobante para Apertura,  \r\n para el año 2030", "yes",
          {dice("Empresa no configurada")});
    manda("mnuGenerarCierre", CIERRE, "yes", {dice("Empresa no configurada")});
    EXPECT_EQ(filas(*e.db, "select count(*) from ctcquorvel"), "1");
}

} // namespace
