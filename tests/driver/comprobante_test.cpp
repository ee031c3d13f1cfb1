// The life of a voucher, asked for and answered line by line.
#include "driver/dialogo.h"

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

const char* const GRABADO = "Comprobante Ingresado y Mayorizado";
const char* const LECTURA =
    "Comprobante contable solo lectura porque esta siendo modificado por otro usuario";

class ConversacionDriver : public testing::TestWithParam<Motor> {};
INSTANTIATE_TEST_SUITE_P(Motores, ConversacionDriver, testing::ValuesIn(MOTORES),
                         [](const auto& p) { return nombre(p.param); });

TEST_P(ConversacionDriver, opens_with_its_lists_and_a_new_voucher) {
    const Empresa e(GetParam());
    Dialogo d;
    e.abrir(d);
    conversar(
        d,
        {{mira("cmbDocumento"),
          {campo("list", {"(Ninguno)", "001 TRASPASO", "002 COMPRA"}), campo("index", 0)}},
         {mira("cmbMoneda"), {campo("list", {"PS PESO", "US DOLAR"}), campo("text", "PS PESO")}},
         {mira("cmbifrs"), {campo("list", {"0 TRIBUTARIA / IFRS", "1 TRIBUTARIA", "2 IFRS"})}},
         {mira("cmblibro"), {campo("index", -1), R"("list":["CONTABLES","VENTAS","COMPRAS","RETENCIONES")"}},
         {mira("mskF_comp"), {campo("kind", "ctlCalendario"), campo("text", "15/06/2024")}},
         {mira("txtCotizacion"), {campo("text", "1")}},
         {mira("lblTotalDebe"), {campo("kind", "Label"), campo("caption", "0")}},
         {mira("lblsubsistema"), {campo("caption", "01 Contabilidad")}},
         {mira("lblF_ult_modificacion"), {campo("caption", "15/06/2024")}},
         {mira("chkApertura"), {campo("caption", "Asiento de Apertura"), campo("value", 0)}},
         {mira("optsuma"), {campo("kind", "OptionButton"), campo("caption", "+ Suma"), campo("value", 0)}},
         {mira("mnudoc_egreso"), {campo("caption", "Agregar doc. comprobante egresos e ingresos")}},
         {mira("lstadjunto"), {campo("kind", "ListBox"), campo("list", Json::array()), campo("index", -1)}},
         {mira("ctlRegistro1"),
          {campo("company", "1 PRUEBA"), campo("user", "1 ANA"), campo("program", "CONTAB"),
           campo("flags", {true, true, true, true, true}), campo("modify", true)}},
         {mira("grdDetalle"),
          {R"("caption":"Doc.Pagado")", R"("numberformat":"#,##0")", campo("rows", Json::array()),
           campo("newrowpending", 0), campo("locked", false), campo("col", 1)}}});
}

TEST_P(ConversacionDriver, refuses_in_order_and_leads_to_the_field) {
    const Empresa e(GetParam());
    Dialogo d;
    e.abrir(d);
    conversar(d, {{escribe("txtrut_persona", "12345678-4"), {}},
                  {barra("Save"), {dice("El rut no es Válido")}},
                  {escribe("txtrut_persona", ""), {}},
                  {barra("Save"), {dice("Ingrese tipo de documento"), foco("cmbDocumento")}},
                  {elige("cmbDocumento", "001"), {}},
                  {escribe("txtNum_doc", ""), {}},
                  {barra("Save"), {dice("Ingrese Número"), foco("txtNum_doc")}},
                  {escribe("txtNum_doc", "1"), {}},
                  {escribe("mskF_comp", "31/02/2024"), {}},
                  {barra("Save"),
                   {dice("Fecha fuera del período de digitacion, Mínima:01/01/2024"), foco("mskF_comp")}},
                  {escribe("mskF_comp", "01/01/2025"), {}},
                  {barra("Save"),
                   {dice("Fecha fuera del período de digitacion, Máxima:31/12/2024"), foco("mskF_comp")}},
                  {escribe("mskF_comp", "10062024"), {}},
                  {escribe("txtfecha_doc", "11/06/2024"), {}},
                  {barra("Save"),
                   {dice("Fecha de comprobante 10/06/2024 menor a fecha de documento:11/06/2024"),
                    foco("txtfecha_doc")}},
                  {escribe("txtfecha_doc", ""), {}},
                  {barra("Save"), {dice("Ingrese Glosa"), foco("txtconcepto")}},
                  {escribe("txtconcepto", "Glosa"), {}},
                  {barra("Save"), {dice("Ingrese libros"), foco("cmblibro")}},
                  {elige("cmblibro", "CONTABLES"), {}},
                  {barra("Save"), {dice("Ingrese detalle del comprobante"), foco("grdDetalle")}},
                  {celda(0, 1, "101001"), {}},
                  {celda(0, 3, "1000"), {}},
                  {va(1, 1), {}},
                  {barra("Save"), {dice("Comprobante descuadrado")}},
                  {celda(1, 1, "103001"), {}},
                  {barra("Save"),
                   {dice("Cuadricula en modo de edicion, cambiese de fila para cambiar el modo "),
                    foco("grdDetalle")}},
                  {va(2, 1), {}},
                  {barra("Save"), {dice("Cuenta 103001 requiere auxiliar"), foco("grdDetalle")}},
                  {mira("grdDetalle"), {campo("row", 1), campo("col", 2)}},
                  {consulta("select count(*) as n from ctcquorvel"), {campo("n", 0)}}});
}

TEST_P(ConversacionDriver, cells_balance_are_refused_and_taken_back) {
    const Empresa e(GetParam());
    Dialogo d;
    e.abrir(d);
    const Json PENDIENTE{"1", "103001", "000012", "", "700", "GLOSA", "", "S", "12", "", ""};
    conversar(d, {{escribe("txtconcepto", "GLOSA"), {}},
                  {celda(0, 1, "1"), {dice("Cuenta no válida"), foco("grdDetalle")}},
                  {mira("grdDetalle"), {campo("editactive", true), campo("edit", "1")}},
                  {celda(0, 1, "103001"), {}},
                  {mira("lblCuenta"), {campo("caption", "CLIENTES")}},
                  {celda(0, 4, "777"), {dice("Cuenta requiere auxiliar")}}, // and the digits go nowhere
                  {mira("grdDetalle"), {campo("col", 2), campo("editactive", false)}},
                  {celda(0, 2, "77"), {dice("Auxiliar no válida")}},
                  {celda(0, 2, "12"), {}},
                  {mira("lblAuxiliar"), {campo("caption", "JUAN PEREZ SOTO")}},
                  {celda(0, 3, "1x2,5"), {}},
                  {mira("lblTotalDebe"), {campo("caption", "125")}},
                  {celda(0, 4, "700"), {}}, // a line holds a debit or a credit
                  {celda(0, 7, "xs"), {}},
                  {celda(0, 8, "a12"), {}},
                  {mira("grdDetalle"),
                   {campo("newrowpending", 1), campo("rows", Json::array()), campo("pending", PENDIENTE)}},
                  {mira("lblTotalDebe"), {campo("caption", "0")}},
                  {celda(0, 5, std::string(61, 'x')), {dice("Longitud máxima del campo 60")}},
                  {en("key", {{"key", "escape"}}), {}},
                  {va(1, 1), {}},
                  {celda(1, 1, "101001"), {}}, // takes what is missing
                  {mira("grdDetalle"),
                   {campo("pending", {"2", "101001", "", "700", "", "GLOSA", "", "", "", "", ""})}},
                  {mira("lblTotalDebe"), {campo("caption", "700")}},
                  {en("key", {{"key", "escape"}}), {}}, // the line and what it had added
                  {mira("lblTotalDebe"), {campo("caption", "0")}},
                  {mira("lblTotalhaber"), {campo("caption", "700")}},
                  {celda(7, 1, "1"), {FALLA}},
                  {celda(0, 12, "1"), {FALLA}}});
}

TEST_P(ConversacionDriver, lookups_from_a_cell) {
    const Empresa e(GetParam());
    Dialogo d;
    e.abrir(d);
    const auto boton = [](int f, int c) { return en("cellbutton", {{"row", f}, {"col", c}}); };
    conversar(
        d,
        {{va(0, 1), {}},
         {en("key", {{"key", "ctrl+y"}}), {forma("frmBuscaCentro"), espera("form")}},
         {barra("Save"), {FALLA}},
         {escribe("frmQuorvel.txtconcepto", "X"), {FALLA}}, // covered by the list
         {elige("cmbGcuenta", "2 PASIVO"), {}},
         {mira("ctlConsulta1"),
          {campo("sql", "select * from ctmcentros  where activo='1' and g_cuenta='2' and len(centro)= 6"),
           R"(["201001","PROVEEDORES"])"}},
         {en("cancel"), {forma("frmQuorvel"), foco("grdDetalle")}},
         {mira("grdDetalle"), {campo("newrowpending", 0)}},
         {boton(0, 1), {forma("frmBuscaCentro")}},
         {en("pick", {{"where", {{"centro", "301001"}}}}), {FALLA, forma("frmBuscaCentro")}}, // another group
         {en("pick", {{"where", {{"centro", "103001"}}}}), {forma("frmQuorvel"), foco("grdDetalle")}},
         {mira("grdDetalle"), {R"("pending":["1","103001","",)"}},
         {boton(0, 2), {forma("frmBuscaAuxiliar")}},
         {en("pick", {{"index", 0}}), {}},
         {boton(0, 6), {forma("frmBuscaCentro")}},
         {en("pick", {{"where", {{"n_centro", "GERENCIA"}}}}), {}},
         {mira("lblCentro"), {campo("caption", "GERENCIA")}},
         {boton(0, 9), {forma("frmBuscaImpuesto")}},
         {en("pick", {{"where", {{"otro_impuesto", "024"}}}}), {}},
         {mira("grdDetalle"),
          {campo("pending", {"1", "103001", "000012", "", "", "", "101001", "", "", "024", "31,50"})}},
         {boton(0, 5), {FALLA}},
         {boton(5, 1), {FALLA}},
         {en("pick", {{"index", 0}}), {FALLA}}});
}

TEST_P(ConversacionDriver, saves_numbers_and_locks_against_another_driver) {
    const Empresa e(GetParam());
    Dialogo ana;
    e.abrir(ana);
    conversar(ana, asiento("1500"));
    conversar(ana, {{mira("txtNum_doc"), {campo("text", "1")}},
                    {mira("txtnro_correlativo"), {campo("text", "1")}},
                    {barra("Save"), {dice(GRABADO, "information")}},
                    {en("state"), {campo("caption", "001 TRASPASO Nro.1 Fecha:10/06/2024 P")}},
                    {mira("lblEstado"), {campo("caption", "P")}},
                    {mira("txtNum_doc"), {campo("enabled", false)}},
                    {consulta("select ultimo_emitido,f_u_emision from adxemp_doc where documento='001'"),
                     {campo("ultimo_emitido", "1"), campo("f_u_emision", "2024-06-15")}},
                    {consulta("select t_debe,t_haber,bloqueo_usuario,nro_correlativo from ctcquorvel"),
                     {campo("t_debe", 1500), campo("t_haber", 1500), campo("bloqueo_usuario", 1),
                      campo("nro_correlativo", 1)}}});

    Dialogo luis;
    e.abrir(luis, 2);
    conversar(luis, {{barra("Search"), {forma("frmBuscaQuorvel")}},
                     {en("cancel"), {forma("frmQuorvel")}},
                     {barra("Search"), {}},
                     {en("pick", {{"where", {{"f_comp", "10/06/2024"}, {"num_docum", "1"}}}}),
                      {forma("frmQuorvel"), dice(LECTURA, "information")}},
                     {mira("grdDetalle"), {campo("locked", true)}},
                     {barra("Save"), {FALLA}},
                     {celda(0, 3, "5"), {FALLA}},
                     {pulsa("mnuAnular"), {FALLA}},
                     {pulsa("cmdcortar"), {FALLA}},
                     {consulta("select bloqueo_usuario from ctcquorvel"), {campo("bloqueo_usuario", 1)}},
                     {pulsa("cmdCopiar"), {foco("cmbDocumento")}}, // a copy is one's own
                     {barra("Save"),
                      {R"(Ya existe un comprobante contable con el mismo numero)", R"("warning")",
                       dice("Ya existe un comprobante contable con el mismo numero para esa "
                            "fecha, debe cambiar el numero de comprobante o la fecha del "
                            "comprobante antes de volver a presionar el boton actualizar, para "
                            "que la información quede grabada.",
                            "warning")}},
                     {escribe("txtNum_doc", "2"), {}},
                     {barra("Save"), {dice(GRABADO, "information")}}});
    ana.colgar(); // her host dies: the lock goes with her
    conversar(luis,
              {{consulta("select bloqueo_usuario from ctcquorvel where num_docum='1'"),
                {campo("bloqueo_usuario", 0)}},
               {barra("Search"), {}},
               {en("pick", {{"where", {{"num_docum", "1"}}}}), {}},
               {celda(0, 3, "1600"), {}},
               {celda(1, 4, "1600"), {}},
               {barra("Save"), {dice(GRABADO, "information")}},
               {consulta("select count(*) as n,sum(debe_nacional) as d from ctdquorvel where num_docum='1'"),
                {campo("n", 2), campo("d", 1600)}},
               {en("quit"), {}}});
    EXPECT_EQ(filas(*e.db, "select bloqueo_usuario from ctcquorvel order by num_docum"), "0;0");
}

TEST_P(ConversacionDriver, annuls_deletes_cuts_only_when_asked_twice) {
    const Empresa e(GetParam());
    Dialogo d;
    e.abrir(d);
    const std::string NADA = dice("Comprobante no válido");
    const std::string CORTAR = pregunta(
        "Esta seguro que desea cortar el Comprobante Contable\r\nNota: Utilice esta opción para "
        "modificar la fecha y numero de comprobante, no olvide presionar el botón actualizar una vez "
        "realizado los cambios, porque sino graba el comprobante este se elimina");
    conversar(d,
              {{pulsa("mnuAnular"), {NADA}}, {pulsa("mnuEliminar"), {NADA}}, {pulsa("cmdcortar"), {NADA}}});
    conversar(d, asiento("900"));
    conversar(
        d, {{barra("Save"), {dice(GRABADO, "information")}},
            {pulsa("cmdcortar"), {CORTAR, espera("question")}},
            {pulsa("mnuAnular"), {FALLA, espera("question")}}, // one thing at a time
            {barra("New"), {FALLA}},
            {responde("maybe"), {FALLA}},
            {responde("no"), {espera("form")}},
            {responde("yes"), {FALLA}},
            {pulsa("cmdcortar"), {CORTAR}},
            {responde("yes"), {}},
            {consulta("select count(*) as n from ctcquorvel"), {campo("n", 0)}},
            {pulsa("mnuAnular"), {NADA}},
            {escribe("mskF_comp", "20/05/2024"), {}},
            {escribe("txtNum_doc", "7"), {}},
            {barra("Save"), {dice(GRABADO, "information")}},
            {consulta("select f_comp,num_docum from ctcquorvel"),
             {campo("value", {{{"f_comp", "2024-05-20"}, {"num_docum", "7"}}})}},
            {pulsa("mnuAnular"),
             {pregunta("Esta seguro que desea anular el Comprobante Contable\r\nNota: Una vez Anulado no es "
                       "posible recuperarlo")}},
            {en("cancel"), {espera("form")}},
            {pulsa("mnuAnular"),
             {espera("question"), pregunta("Esta seguro que desea anular el Comprobante "
                                           "Contable\r\nNota: Una vez Anulado no es posible "
                                           "recuperarlo")}},
            {responde("yes"), {dice("Comprobante Anulado", "information")}},
            {mira("lblEstado"), {campo("caption", "X")}},
            {mira("grdDetalle"), {campo("rows", Json::array()), campo("locked", true)}},
            {barra("Save"), {FALLA}},
            {pulsa("mnuEliminar"), {NADA}},
            {barra("New"), {foco("cmbDocumento")}}});
    conversar(d, asiento("50"));
    conversar(d, {{barra("Save"), {dice(GRABADO, "information")}},
                  {pulsa("mnuEliminar"),
                   {pregunta("Esta seguro que desea eliminar el Comprobante Contable\r\nNota: Una vez "
                             "eliminado no es posible recuperarlo")}},
                  {responde("yes"), {}},
                  {mira("lblTotalDebe"), {campo("caption", "0")}},
                  {consulta("select estado from ctcquorvel"), {campo("value", {{{"estado", "X"}}})}}});
}

} // namespace
