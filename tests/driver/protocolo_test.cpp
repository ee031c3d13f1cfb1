// What the driver itself promises: replies to anything, one at a time, and a clean end.
#include "apoyo/vias.h"
#include "apoyo/vias_papeles.h"
#include "driver/dialogo.h"

#include <filesystem>
#include <fstream>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

TEST(Protocolo, answers_what_is_no_request_and_changes_nothing) {
    const Empresa e(Motor::sqlite);
    Dialogo d;
    for (const char* linea :
         {"{", "[1]", "\"x\"", "7", "{\"op\":5}", "{}", "{\"op\":\"click\",\"control\":7}", "\xff\xfe",
          "{\"op\":\"create\",\"class\":3}",
          "{\"op\":\"create\",\"class\":\"clsQuorvel\",\"db\":\"sqlite:/no/x.db\"}",
          "{\"op\":\"call\",\"object\":\"x\",\"member\":\"ShowForm\"}",
          "{\"op\":\"toolbar\",\"function\":\"New\"}", "{\"op\":\"state\"}"})
        EXPECT_EQ(Json::parse(d.linea(linea)).value("ok", true), false) << linea;
    const std::string hondo = R"({"op":)" + std::string(200000, '[') + std::string(200000, ']') + "}";
    EXPECT_EQ(Json::parse(d.linea(hondo)).value("error", ""), "a request is nested too deep");
    e.abrir(d);
    conversar(d, {{en("setprop", {{"member", "glbEmpresa"}, {"value", UINT64_MAX}}), {FALLA}},
                  {va(0, 0), {}},
                  {en("goto", {{"row", UINT64_MAX}, {"col", 1}}), {FALLA, "number out of range"}},
                  {en("call", {{"object", 1e300}, {"member", "ShowForm"}}), {FALLA}},
                  {en("fly"), {FALLA}},
                  {escribe("nada", "1"), {FALLA}},
                  {escribe("lblCuenta", "1"), {FALLA}},
                  {escribe("frmNada.txtnombre", "1"), {FALLA}},
                  {en("enter", {{"control", "txtnombre"}}), {FALLA}},
                  {pulsa("txtnombre"), {FALLA}},
                  {elige("cmblibro", "NINGUNO"), {FALLA}},
                  {en("select", {{"control", "cmblibro"}, {"index", 99}}), {FALLA}},
                  {en("dblclick", {{"control", "txtnombre"}}), {FALLA}},
                  {en("key", {{"key", "hyper+z"}}), {FALLA}},
                  {barra("Fly"), {FALLA}},
                  {va(3, 0), {FALLA}},
                  {en("pick", {{"index", 0}}), {FALLA}},
                  {archivo("x"), {FALLA}},
                  {consulta("delete from ctcquorvel"), {FALLA}},
                  {consulta("select * from nada"), {FALLA}},
                  {llama("Volar"), {FALLA}},
                  {en("setprop", {{"member", "glbEmpresa"}, {"value", "abc"}}), {FALLA}},
                  {en("getprop", {{"member", "glbEmpresa"}}), {campo("value", 1)}},
                  {escribe("TXTCONCEPTO", "ñandú €"), {}}, // names without regard to case
                  {mira("FRMQUORVEL.txtConcepto"), {campo("text", "ñandú €")}},
                  {barra("exit"), {espera("idle")}},
                  {barra("New"), {FALLA}}, // the screen is closed
                  {en("key", {{"key", "a"}}), {FALLA}},
                  {en("cancel"), {FALLA}},
                  {llama("ShowForm"), {espera("form")}},
                  {mira("txtnum_ref"), {campo("text", "")}}});
}

TEST(Protocolo, a_prepared_voucher_waits_inside_the_call_that_shows_it) {
    const Empresa e(Motor::sqlite);
    Dialogo d;
    conversar(
        d, {{e.crear(1, "clsQuorvelRem"), {campo("object", 1)}},
            {llama("LoadForm"), {espera("idle")}},
            {llama("grd_agregar", {"101001", "", "9", "", "sobra"}), {}},
            {llama("grd_borrar", {"", "", "", "", ""}), {}},
            {mira("lblTotalDebe"), {campo("caption", "9")}}, // the totals stay
            {llama("UnloadForm"), {}},
            {llama("LoadForm"), {}},
            {llama("grd_agregar", {"101001", "", "1500", "", std::string(70, 'g')}), {}},
            {llama("grd_agregar", {"301001", "", "", "1500", "h"}), {}},
            {llama("grd_agregar", {"x"}), {FALLA}},
            {barra("Save"), {FALLA}}, // loaded, not shown
            {en("setprop", {{"member", "gstrconcepto"}, {"value", "REMUNERACIONES"}}), {}},
            {llama("ShowForm"), {espera("form"), forma("frmQuorvel")}},
            {mira("txtconcepto"), {campo("text", "REMUNERACIONES")}},
            {mira("cmblibro"), {campo("text", "CONTABLES")}},
            {mira("lblTotalDebe"), {campo("caption", "1.500")}},
            {mira("grdDetalle"), {"\"" + std::string(60, 'g') + "\""}},
            {elige("cmbDocumento", "001"), {}},
            {barra("Save"), {dice("Comprobante Ingresado y Mayorizado", "information")}},
            {consulta("select secuencia,bloqueo_usuario from ctdquorvel a,ctcquorvel b order by secuencia"),
             {campo("value", {{{"secuencia", 1}, {"bloqueo_usuario", 1}},
                              {{"secuencia", 2}, {"bloqueo_usuario", 1}}})}},
            {barra("Exit"), {espera("idle")}},
            {consulta("select bloqueo_usuario from ctcquorvel"), {campo("bloqueo_usuario", 0)}}});
}

TEST(Protocolo, a_host_takes_the_screen_away_from_under_whatever_is_open) {
    const Empresa e(Motor::sqlite);
    Dialogo d;
    e.abrir(d);
    conversar(d, asiento("10"));
    conversar(d, {{barra("Save"), {dice("Comprobante Ingresado y Mayorizado", "information")}}});
    const Json cuenta = en("cellbutton", {{"row", 0}, {"col", 1}});
    const std::vector<Json> dialogos[] = {{cuenta},
                                          {barra("Search")},
                                          {barra("Print")},
                                          {pulsa("cmdrut_persona")},
                                          {pulsa("mnuAnular")},
                                          {pulsa("mnuexportar")},
                                          {pulsa("mnucompra"), pulsa("cmdCuenta")},
                                          {pulsa("mnucheque"), pulsa("cmdbanco")},
                                          {pulsa("mnucheque"), pulsa("cmdImprimir")},
                                          {pulsa("mnuFactura"), pulsa("cmdrut")}};
    for (const auto& pasos : dialogos) {
        conversar(d, {{barra("Search"), {}}, {en("pick", {{"index", 0}}), {forma("frmQuorvel")}}});
        Json r;
        for (const Json& paso : pasos) r = d.pedir(paso);
        EXPECT_TRUE(r["waiting"] != "form" || r["form"] != "frmQuorvel") << r;
        conversar(d, {{llama("ShowForm"), {FALLA, espera(r["waiting"].get<std::string>().c_str())}},
                      {llama("UnloadForm"), {espera("idle")}},
                      {consulta("select estado,bloqueo_usuario from ctcquorvel"),
                       {campo("value", {{{"estado", "P"}, {"bloqueo_usuario", 0}}})}},
                      {llama("ShowForm"), {forma("frmQuorvel")}},
                      {mira("lblEstado"), {campo("caption", "")}}});
    }
    const auto de_la_primera = [](const char* miembro) {
        return en("call", {{"object", 1}, {"member", miembro}});
    };
    conversar(d, {{e.crear(2), {campo("object", 2)}},
                  {llama("ShowForm"), {}},
                  {cuenta, {forma("frmBuscaCentro")}},
                  {de_la_primera("UnloadForm"), {forma("frmBuscaCentro")}}, // the list is the other screen's
                  {de_la_primera("ShowForm"), {FALLA}},
                  {en("cancel"), {forma("frmQuorvel")}},
                  {de_la_primera("ShowForm"), {forma("frmQuorvel")}}});
}

TEST(Protocolo, a_host_that_dies_at_a_question_changes_nothing_and_frees_the_lock) {
    const Empresa e(Motor::sqlite);
    for (const char* boton : {"mnuAnular", "mnuexportar", "mnucheque", "mnucompra"}) {
        Dialogo d;
        e.abrir(d);
        conversar(d, asiento("10"));
        conversar(d, {{barra("Save"), {dice("Comprobante Ingresado y Mayorizado", "information")}}});
        const Json r = d.pedir(pulsa(boton));
        EXPECT_TRUE(r["waiting"] != "form" || r["form"] != "frmQuorvel") << r;
        d.colgar();
    }
    EXPECT_EQ(filas(*e.db, "select estado,bloqueo_usuario from ctcquorvel"), "P|0;P|0;P|0;P|0");
}

TEST(Protocolo, files_papers_and_attachments) {
    const Empresa e(Motor::sqlite);
    Dialogo d;
    e.abrir(d);
    const std::string carpeta = carpeta_nueva(), csv = carpeta + "/v.csv", boleta = carpeta + "/boleta ñ.txt";
    std::ofstream(boleta) << "hola";
    conversar(d, asiento("1234567"));
    conversar(
        d, {{pulsa("mnuexportar"), {dice("Debe grabar el comprobante antes de exportarlo")}},
            {pulsa("mnucheque"), {dice("Debe grabar el comprobante antes de imprimir la factura")}},
            {pulsa("cmdadjunto_agregar"), {espera("openfile")}},
            {responde("yes"), {FALLA, espera("openfile")}},
            {archivo(boleta), {espera("form")}},
            {barra("Save"), {dice("Comprobante Ingresado y Mayorizado", "information")}},
            {consulta("select nombre from ctdcomprad"), {campo("nombre", "boleta ñ.txt")}},
            {en("select", {{"control", "lstadjunto"}, {"index", 0}}), {}},
            {pulsa("cmdAbrir"), {R"("opened":[)"}},
            {en("dblclick", {{"control", "lstadjunto"}}), {espera("savefile"), R"("name":"boleta ñ.txt")"}},
            {archivo(carpeta + "/copia.txt"), {}},
            {pulsa("cmdadjunto_eliminar"), {pregunta("Esta seguro que desea eliminar boleta ñ.txt")}},
            {responde("yes"), {}},
            {mira("lstadjunto"), {campo("list", Json::array())}},
            {pulsa("mnuexportar"),
             {espera("savefile"), campo("file", {{"title", "Exportar comprobante a archivo formato CSV"},
                                                 {"filter", "*.csv"},
                                                 {"name", "1.csv"}})}},
            {en("file", {{"cancel", true}}), {espera("form")}},
            {pulsa("mnuexportar"), {espera("savefile")}},
            {archivo(csv), {dice("Comprobante exportado al archivo " + csv, "information")}},
            {pulsa("mnuImportar"),
             {espera("openfile"), R"("title":"Importar comprobante a archivo formato CSV")"}},
            {en("cancel"), {}},
            {mira("lblEstado"), {campo("caption", "P")}}, // nothing was started
            {pulsa("mnuImportar"), {espera("openfile")}},
            {archivo(csv), {}},
            {mira("lblEstado"), {campo("caption", "")}},
            {mira("grdDetalle"), {R"(["1","101001","","1.234.567","","Glosa")"}},
            {barra("Search"), {}},
            {en("pick", {{"index", 0}}), {}},
            {barra("Print"), {forma("frmImprimir")}},
            {en("cancel"), {campo("printed", Json::array())}},
            {barra("Print"), {}},
            {pulsa("cmdOK"), {forma("frmQuorvel"), campo("printed", {"ctcQuorvel.pdf"})}},
            {pulsa("mnucheque"), {forma("frmcheque")}},
            {mira("lblmonto"),
             {campo("caption", "UN MILLÓN DOSCIENTOS TREINTA Y CUATRO MIL QUINIENTOS SESENTA Y SIETE")}},
            {escribe("txtcheque", "1040"), {}},
            {escribe("txtbanco", "CHILE"), {}},
            {escribe("txtCuenta", "1-9"), {}},
            {pulsa("chkcruzado"), {}},
            {pulsa("cmdImprimir"), {pregunta("Esta seguro que desea imprimir")}},
            {responde("no"), {forma("frmcheque")}},
            {pulsa("cmdImprimir"), {pregunta("Esta seguro que desea imprimir")}},
            {responde("yes"), {forma("frmQuorvel"), campo("printed", {"ctccheque1.pdf"})}},
            {en("sql", {{"db", "report"}, {"query", "select monto from ctccheque where secuencia=1"}}),
             {R"("monto":1234567)"}},
            {barra("Exit"), {espera("idle")}}});
    std::string copia;
    std::getline(std::ifstream(carpeta + "/copia.txt"), copia);
    EXPECT_EQ(copia, "hola");
}

TEST(Protocolo, a_paper_refuses_or_acts) {
    const Empresa e(Motor::sqlite);
    Dialogo d;
    e.abrir(d);
    conversar(d, asiento("119000"));
    conversar(d, {{barra("Save"), {dice("Comprobante Ingresado y Mayorizado", "information")}}});
    for (const auto& via : pruebas::VIAS_PAPELES)
        conversar(d, {{pulsa(via.menu), {}},
                      {escribe(via.control, via.texto), {dice(via.mensaje), foco(via.control)}},
                      {pulsa(via.boton), {dice(via.mensaje), foco(via.control)}},
                      {pulsa("cmdcancelar"), {forma("frmQuorvel")}}});
    conversar(d, {{consulta(pruebas::SIN_PAPELES), {campo("n", 0)}}});
}

TEST(Protocolo, every_way_in_passes_the_rules) {
    const Empresa e(Motor::sqlite);
    Dialogo d;
    e.abrir(d);
    const auto pega = [](const Via& v) {
        Json j = en("paste", {{"control", v.control}, {"text", v.texto}});
        return v.columna < 0 ? j : (j.update({{"row", 0}, {"col", v.columna}}), j);
    };
    for (const Via& v : vias())
        for (const bool entero : {false, true}) {
            if (entero && std::string(v.texto).find('\n') != std::string::npos) continue; // fills cells below
            SCOPED_TRACE(std::string(v.control) + std::to_string(v.columna) + " " + v.texto);
            const std::string dicho = entero ? v.dice_entero : v.dice_tecleado;
            const std::string callado = dicho.empty() ? CALLADO : dice(dicho);
            conversar(d, {{barra("New"), {}},
                          {escribe("txtconcepto", ""), {}},
                          {escribe("mskF_comp", "15/06/2024"), {}}});
            conversar(d, {{celda(0, 1, "103001"), {}}, {celda(0, 2, "12"), {}}, {celda(0, 3, "700"), {}}});
            std::string todo;
            const auto pide = [&](const Json& pedido) { todo += d.linea(pedido.dump()); };
            pide(entero          ? pega(v)
                 : v.columna < 0 ? escribe(v.control, v.texto)
                                 : celda(0, v.columna, v.texto));
            if (entero && dicho.empty()) pide(en("key", {{"key", "tab"}}));
            if (entero && !dicho.empty() && todo.find(callado) == std::string::npos)
                pide(en("key", {{"key", "tab"}}));
            EXPECT_NE(todo.find(callado), std::string::npos) << todo;
            Json estado = d.pedir(mira(v.control)).at("value");
            if (estado.value("editactive", false)) {
                pide(en("key", {{"key", "escape"}}));
                estado = d.pedir(mira(v.control)).at("value");
            }
            const Json fila = v.columna < 0 || !estado.at("rows").empty()
                                  ? estado.value("rows", Json::array({Json()})).at(0)
                                  : estado.at("pending");
            const std::string queda =
                v.columna < 0 ? estado.at("text") : fila.at(static_cast<std::size_t>(v.columna));
            EXPECT_EQ(queda, entero ? v.entero : v.tecleado);
            if (v.columna < 0) pide(escribe(v.control, "")); // else the box keeps the focus
        }
}

TEST(Protocolo, widths_live_in_the_settings_and_printing_needs_a_report_database) {
    const Empresa e(Motor::sqlite);
    Dialogo d;
    Json crear = e.crear();
    crear.erase("reportdb");
    const std::string carpeta = crear["folder"];
    std::ofstream(carpeta + "/NIVO.ini") << "[nivo]\nfrmquorvel_grddetalle=50#61#\n";
    conversar(d, {{crear, {}},
                  {llama("ShowForm"), {}},
                  {mira("grdDetalle"),
                   {R"("caption":"Sec","width":50)", R"("caption":"Cuenta","width":61)", R"("width":63)"}},
                  {barra("Print"), {forma("frmImprimir")}},
                  {pulsa("cmdOK"), {R"("form":"frmQuorvel")", R"({"text":)"}},
                  {elige("cmbDocumento", "001"), {}},
                  {escribe("txtconcepto", "G"), {}},
                  {elige("cmblibro", "CONTABLES"), {}},
                  {celda(0, 1, "101001"), {}},
                  {celda(0, 3, "5"), {}},
                  {va(1, 1), {}},
                  {celda(1, 1, "301001"), {}},
                  {va(2, 1), {}},
                  {barra("Save"), {dice("Comprobante Ingresado y Mayorizado", "information")}},
                  {barra("Print"), {}},
                  {pulsa("cmdOK"), {dice("No hay una base de informes para imprimir")}},
                  {pulsa("mnucheque"), {forma("frmcheque")}},
                  {pulsa("cmdImprimir"), {pregunta("Esta seguro que desea imprimir")}},
                  {responde("yes"), {dice("No hay una base de informes para imprimir")}},
                  {en("cancel"), {}},
                  {barra("Exit"), {espera("idle")}}});
    std::ifstream archivo_ini(carpeta + "/NIVO.ini");
    const std::string ini((std::istreambuf_iterator<char>(archivo_ini)), {});
    EXPECT_NE(ini.find("=50#61#63#108#"), std::string::npos) << ini;
}

} // namespace
