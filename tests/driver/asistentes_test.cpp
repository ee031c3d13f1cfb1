// The assistants and the year's end, asked for and answered line by line.
#include "driver/dialogo.h"

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

const char* const GRABADO = "Comprobante Ingresado y Mayorizado";
const char* const SIN_AUXILIAR = "Ingrese auxiliar, sino existe auxiliar presione el botón Generar auxiliar";

class AsistentesDriver : public testing::TestWithParam<Motor> {};
INSTANTIATE_TEST_SUITE_P(Motores, AsistentesDriver, testing::ValuesIn(MOTORES),
                         [](const auto& p) { return nombre(p.param); });

std::vector<Turno> cabecera(const char* libro, const char* documento, const char* rut, const char* nombre) {
    return {{barra("New"), {}},
            {elige("cmbDocumento", "002"), {}},
            {escribe("txtconcepto", "GLOSA"), {}},
            {elige("cmblibro", libro), {}},
            {elige("cmbdoc_libro", documento), {}},
            {escribe("txtrut_persona", rut), {}},
            {*nombre ? escribe("txtnombre", nombre) : mira("txtnombre"), {}}};
}

Json linea(int n, const char* cuenta, const char* auxiliar, const char* debe, const char* haber) {
    return {std::to_string(n), cuenta, auxiliar, debe, haber, "GLOSA", "", "", "", "", ""};
}

TEST_P(AsistentesDriver, a_purchase_from_the_amounts_to_the_stored_voucher) {
    const Empresa e(GetParam());
    Dialogo d;
    e.abrir(d);
    conversar(d, {{pulsa("cmdasistente"), {dice("Ingrese documento"), foco("cmbdoc_libro")}},
                  {elige("cmbdoc_libro", "FACTURA"), {}},
                  {pulsa("cmdasistente"), {dice("Ingrese RUT"), foco("txtrut_persona")}},
                  {escribe("txtrut_persona", "96579340-2"), {}},
                  {pulsa("cmdasistente"), {dice("Ingrese Nombre"), foco("txtnombre")}}});
    conversar(d, cabecera("COMPRAS", "FACTURA", "96.579.340-2", "Aguas"));
    conversar(
        d, {{pulsa("cmdasistente"), {forma("frmAsistente")}},
            {mira("cmbdoc_libro"), {campo("text", "FACTURA")}},
            {escribe("txtNeto", "5"), {}},
            {en("cancel"), {forma("frmQuorvel")}},
            {mira("grdDetalle"), {campo("rows", Json::array())}},
            {mira("lblTotalDebe"), {campo("caption", "0")}},
            {pulsa("cmdasistente"), {}},
            {en("state"), {campo("caption", "Asistente de Compras")}},
            {pulsa("cmdaceptar"), {dice(SIN_AUXILIAR), foco("cmbAuxiliar"), forma("frmAsistente")}},
            {pulsa("cmdGenera"), {}},
            {mira("cmbAuxiliar"), {campo("text", "000015 - 96.579.340-2 Aguas")}},
            {elige("cmbdoc_libro", " "), {}},
            {pulsa("cmdaceptar"), {dice("Ingrese documento"), foco("cmbdoc_libro")}},
            {elige("cmbdoc_libro", "FACTURA"), {}},
            {pulsa("cmdaceptar"), {dice("Ingrese cuenta"), foco("txtCuenta")}},
            {escribe("txtCuenta", "999"), {dice("Cuenta no válida")}},
            {mira("txtCuenta"), {campo("text", "")}},
            {pulsa("cmdCuenta"), {forma("frmBuscaCentro")}}, // three forms deep
            {elige("cmbGcuenta", "5 GASTOS"), {}},
            {en("cancel"), {forma("frmAsistente")}},
            {escribe("txtCuenta", "501001"), {}},
            {mira("lblCuenta"), {campo("caption", "GASTOS GENERALES")}},
            {mira("txtauxiliar"), {campo("enabled", false)}},
            {escribe("txtauxiliar", "12"), {FALLA}},
            {pulsa("cmdaceptar"), {dice("Ingrese total"), foco("txttotal")}},
            {escribe("txttotal", "100000"), {}},
            {pulsa("cmdiva"), {}},
            {mira("txtNeto"), {campo("text", "84.034")}},
            {mira("lbliva"), {campo("caption", "15.966")}},
            {mira("txttotal"), {campo("text", "100.000")}},
            {escribe("txtNeto", "100000"), {}},
            {mira("txttotal"), {campo("text", "119.000")}},
            {pulsa("cmdaceptar"), {forma("frmQuorvel")}},
            {mira("grdDetalle"),
             {campo("rows", {linea(1, "501001", "", "100.000", "0"), linea(2, "109001", "", "19.000", "0"),
                             linea(3, "201001", "000015", "0", "119.000")})}},
            {mira("lblTotalhaber"), {campo("caption", "119.000")}},
            {barra("Save"), {dice("Ingrese número de boleta o factura de compras"), foco("txtnum_ref")}},
            {escribe("txtnum_ref", "77"), {}},
            {barra("Save"), {dice("Ingrese fecha de boleta o factura de compras"), foco("txtfecha_doc")}},
            {escribe("txtfecha_doc", "14/06/2024"), {}},
            {barra("Save"), {dice(GRABADO, "information")}},
            {consulta("select monto_neto,t_debe,fecha_factura,nombre from ctcquorvel"),
             {campo("monto_neto", 100000), campo("t_debe", 119000), campo("fecha_factura", "2024-06-14")}}});
    conversar(d, cabecera("COMPRAS", "FACTURA", "96.579.340-2", "Aguas"));
    conversar(d, {{pulsa("mnucompra"), {}},
                  {escribe("txtNeto", "10"), {}},
                  {escribe("txtCuenta", "501001"), {}},
                  {pulsa("cmdaceptar"), {forma("frmQuorvel")}},
                  {escribe("txtnum_ref", "77"), {}},
                  {escribe("txtfecha_doc", "14/06/2024"), {}},
                  {barra("Save"), {dice("Ya existe una documento:FACTURA numero:77 RUT:96.579.340-2")}}});
}

TEST_P(AsistentesDriver, fees_partner_and_egress) {
    const Empresa e(GetParam());
    Dialogo d;
    e.abrir(d);
    conversar(d, cabecera("RETENCIONES", "BOLETA", "12.345.678-5", "Juan"));
    conversar(d,
              {{pulsa("mnuretencion"), {forma("frmAsistente")}},
               {mira("lblimpuesto"), {campo("caption", "Retención")}},
               {elige("cmbporcentaje", "13,75"), {}},
               {escribe("txtNeto", "87250"), {}},
               {mira("lbliva"), {campo("caption", "13.909")}},
               {mira("txttotal"), {campo("text", "101.159")}},
               {escribe("txttotal", "100000"), {}},
               {escribe("txtCuenta", "501001"), {}},
               {pulsa("cmdaceptar"), {forma("frmQuorvel")}},
               {mira("grdDetalle"),
                {campo("rows", {linea(1, "501001", "", "100.000", "0"), linea(2, "204002", "", "0", "13.750"),
                                linea(3, "204001", "000012", "0", "86.250")})}}});
    conversar(d, cabecera("RET. SOCIO", "EGRESO", "12.345.678-5", "Juan"));
    conversar(d, {{pulsa("cmdasistente"), {forma("frmAsistente2")}},
                  {pulsa("cmdaceptar"), {dice("Ingrese cuenta SOCIO"), foco("txtCuenta2")}},
                  {escribe("txtCuenta2", "303001"), {}},
                  {pulsa("cmdaceptar"), {dice("Ingrese cuenta bancos"), foco("txtCuenta")}},
                  {escribe("txtCuenta", "101002"), {}},
                  {pulsa("cmdaceptar"), {dice("Ingrese total"), foco("txttotal")}},
                  {escribe("txttotal", "500000"), {}},
                  {pulsa("cmdaceptar"), {dice("Ingrese auxiliar"), foco("txtAuxiliar2")}},
                  {escribe("txtAuxiliar2", "77"), {dice("Auxiliar no válido")}},
                  {escribe("txtAuxiliar2", "14"), {}},
                  {pulsa("cmdaceptar"), {forma("frmQuorvel")}},
                  {mira("grdDetalle"),
                   {campo("rows", {linea(1, "101002", "", "500.000", "0"),
                                   linea(2, "303001", "000014", "0", "500.000")})}}});
    conversar(d, cabecera("EGRESOS", "EGRESO", "12.345.678-5", "Juan"));
    conversar(d, {{pulsa("cmdasistente"), {forma("frmAsistente")}},
                  {escribe("txtNeto", "1"), {FALLA}}, // the tax part is hidden
                  {pulsa("chktrasponer"), {}},
                  {mira("chktrasponer"), {campo("value", 1)}},
                  {escribe("txttotal", "5000"), {}},
                  {escribe("txtCuenta", "101002"), {}},
                  {pulsa("cmdaceptar"), {}},
                  {mira("grdDetalle"),
                   {campo("rows", {linea(1, "101002", "", "0", "5.000"),
                                   linea(2, "201001", "000012", "5.000", "0")})}},
                  {pulsa("mnudoc_egreso"), {dice("Documento agregados", "information")}},
                  {mira("cmbDocumento"), {R"("006 EGRESO","007 INGRESO")"}},
                  {pulsa("mnudoc_egreso"), {dice("Documento ya existen", "information")}},
                  {pulsa("mnudescuadrado"), {dice("No existen comprobantes descuadrados", "information")}}});
}

TEST_P(AsistentesDriver, sales_and_income) {
    const Empresa e(GetParam());
    Dialogo d;
    e.abrir(d);
    conversar(d, cabecera("VENTAS", "NOTA CREDITO", "12.345.678-5", "Juan"));
    conversar(
        d,
        {{pulsa("mnuventa"), {forma("frmAsistente")}},
         {en("state"), {campo("caption", "Asistente de Ventas")}},
         {mira("chktrasponer"), {campo("visible", false)}},
         {escribe("txtCuenta", "401001"), {}},
         {escribe("txtNeto", "1000"), {}},
         {escribe("txttasa_impuesto_otro", "20,5"), {}},
         {mira("txttotal"), {campo("text", "1.395")}},
         {mira("lblCuadre"), {campo("caption", "Cuadra")}},
         {pulsa("cmdaceptar"), {forma("frmQuorvel")}},
         {mira("grdDetalle"),
          {campo("rows", {linea(1, "401001", "", "1.000", "0"), linea(2, "203001", "", "190", "0"),
                          linea(3, "103001", "000012", "0", "1.395"), linea(4, "203002", "", "205", "0")})}},
         {barra("Save"), {dice("Ingrese número de boleta o factura de venta"), foco("txtnum_ref")}},
         {escribe("txtnum_ref", "9"), {}},
         {barra("Save"), {dice("Ingrese fecha de boleta o factura de venta"), foco("txtfecha_doc")}},
         {escribe("txtfecha_doc", "14/06/2024"), {}},
         {barra("Save"), {dice(GRABADO, "information")}},
         {consulta("select doc_libro,monto_neto,t_haber from ctcquorvel"),
          {campo("doc_libro", "NOTA CREDITO"), campo("monto_neto", 1000), campo("t_haber", 1395)}}});
    conversar(d, cabecera("INGRESOS", "INGRESO", "12.345.678-5", ""));
    conversar(d, {{mira("txtnombre"), {campo("text", "Juan")}}, // an earlier voucher knows the name
                  {pulsa("cmdasistente"), {forma("frmAsistente")}},
                  {en("state"), {campo("caption", "Asistente de Ingreso")}},
                  {mira("chktrasponer"), {campo("visible", true)}},
                  {mira("txtotro"), {campo("visible", false)}},
                  {escribe("txtCuenta", "101001"), {}},
                  {escribe("txtExento", "5000"), {}},
                  {mira("txttotal"), {campo("text", "5.000")}},
                  {pulsa("cmdaceptar"), {}},
                  {mira("grdDetalle"),
                   {campo("rows", {linea(1, "101001", "", "0", "5.000"),
                                   linea(2, "103001", "000012", "5.000", "0")})}},
                  {barra("Save"), {dice(GRABADO, "information")}}});
}

TEST_P(AsistentesDriver, the_year_closes_in_two_steps_and_opens_the_next) {
    const Empresa e(GetParam());
    ejecutar(
        *e.db,
        "insert into ctdquorvel(empresa,subsistema,f_comp,documento,num_docum,secuencia,centro,auxiliar,"
        "debe_nacional,haber_nacional,glosa) values (1,'01',#03/01/2024#,'002','15',1,'101001','',5,0,'')");
    Dialogo d;
    e.abrir(d);
    conversar(d,
              {{pulsa("mnudescuadrado"), {dice("Lista de Comprobantes descuadrados 15 - ", "information")}}});
    ejecutar(*e.db, "delete from ctdquorvel");
    const std::string GENERAR = pregunta(
        "Desea Generar Comprobante para Cierre Anual, \r\nSe recomienda sacar respaldo de la base antes de "
        "ejecutar, \r\nPorque despues de ejecutada esta opción no se podra ingresar\r\nningun otro "
        "comprobante "
        "en este año, ni se podra anular el mismo.\r\nCon el respaldo en caso de existir un error se puede "
        "recuperar y volver\r\n a Generar el Comprobante. Una vez Grabado el Comprobante de Cierre Anual\r\n "
        "Recomendamos Cerrar el Año de Forma Inmediata");
    const std::string APERTURA = pregunta("Desea Generar Comprobante para Apertura,  \r\n para el año 2024");
    conversar(
        d,
        {{pulsa("mnuCerrarAnio"), {dice("Antes de Cerrar el Año de debe Generar el Comprobante de Cierre")}},
         {pulsa("mnuGenerarCierre"), {GENERAR}},
         {responde("yes"),
          {dice("Antes de Generar Comprobante de Cierre debe ingresar los movimientos del año 2024")}},
         {pulsa("mnuApertura"), {APERTURA}},
         {responde("yes"),
          {dice("Seleccione la norma TRIBUTARIA o IFRS, no puede ser ambas", "information")}},
         {elige("cmbifrs", "2 IFRS"), {}},
         {pulsa("mnuApertura"), {APERTURA}},
         {responde("yes"), {dice("Empresa no tiene movimientos en año 2023")}},
         {elige("cmbifrs", "0 TRIBUTARIA / IFRS"), {}},
         {elige("cmbDocumento", "001"), {}},
         {escribe("txtconcepto", "VENTA"), {}},
         {elige("cmblibro", "CONTABLES"), {}},
         {celda(0, 1, "101001"), {}},
         {celda(0, 3, "9000"), {}},
         {va(1, 1), {}},
         {celda(1, 1, "401001"), {}},
         {va(2, 1), {}},
         {barra("Save"), {dice(GRABADO, "information")}},
         {barra("New"), {}},
         {pulsa("mnuGenerarCierre"), {GENERAR}},
         {responde("yes"), {}},
         {mira("mskF_comp"), {campo("text", "31/12/2024")}},
         {mira("txtconcepto"), {campo("text", "CIERRE ANUAL DEL AÑO 2024")}},
         {mira("grdDetalle"),
          {R"(["1","401001","","9.000","0","CIERRE)", R"(["2","302001","","0","9.000","CIERRE)"}},
         {barra("Save"), {dice(GRABADO, "information")}},
         {consulta("select f_comp_cierre,documento_cierre,num_docum_cierre from ctmconfigu"),
          {campo("f_comp_cierre", "2024-12-31"), campo("documento_cierre", "001"),
           campo("num_docum_cierre", "2")}},
         {pulsa("mnuAnular"),
          {dice("Comprobante de Cierre anual no puede ser anulado,\r\n Pero puede ser "
                "modificado o vuelto a generar")}},
         {barra("New"), {}},
         {pulsa("mnuGenerarCierre"), {GENERAR}},
         {responde("yes"), {dice("Comprobante de Cierre ya fue Generado")}},
         {elige("cmbDocumento", "001"), {}},
         {escribe("mskF_comp", "30/12/2024"), {}},
         {barra("Save"),
          {dice("No se puede ingresar mas Comprobantes en el año 2024\r\n porque el Comprobante de Cierre "
                "Anual "
                "ha sido generado\r\n y todavia no se ha cerrado el Año Contable, para cerrar\r\n el año "
                "ejecute "
                "la opcion del menú Cerrar Año Contable")}},
         {pulsa("mnuCerrarAnio"),
          {pregunta("Esta seguro que desea cerrar el año contable\r\nNota: Una vez "
                    "cerrado el año no se modificar ningun comprobante del año")}},
         {responde("yes"), {dice("Cierre Anual de 2024 Completado con éxito", "information")}},
         {consulta("select f_digi_inicial,f_comp_cierre,iva from ctmconfigu where anio=2025"),
          {campo("f_digi_inicial", "2025-01-01"), campo("f_comp_cierre", nullptr), campo("iva", "203001")}},
         {consulta("select distinct ultimo_emitido as u from adxemp_doc"), {campo("value", {{{"u", "0"}}})}},
         {elige("cmbDocumento", "001"), {}},
         {escribe("mskF_comp", "30/12/2024"), {}},
         {barra("Save"),
          {dice("Fecha fuera del período de digitacion, Mínima:01/01/2025"), foco("mskF_comp")}},
         {escribe("mskF_comp", "01/01/2025"), {}},
         {elige("cmbifrs", "1 TRIBUTARIA"), {}},
         {pulsa("mnuAperturaDoc"),
          {pregunta("Desea Generar Comprobante para Apertura,  \r\n para el año 2025")}},
         {responde("yes"), {}},
         {mira("chkApertura"), {campo("value", 1)}},
         {mira("grdDetalle"), {R"("101001","","9.000","0")", R"("302001","","0","9.000")"}}});
}

} // namespace
