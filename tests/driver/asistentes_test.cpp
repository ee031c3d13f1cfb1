// The assistants, asked for and answered line by line.
#include "apoyo/vias_asistente.h"
#include "driver/dialogo.h"
#include "registro/archivo.h"

#include <fstream>

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
            {pulsa("cmdaceptar"), {dice("Ingrese cuenta"), foco("txtCuenta")}},
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

/// Presses Tab until the control has the focus, then types over what it holds.
void teclear(Dialogo& d, const std::string& control, const std::string& texto) {
    const auto tecla = [&](const std::string& t) { return d.pedir(en("key", {{"key", t}})); };
    for (int i = 0; i < 30 && d.pedir(mira(control.c_str())).value("focus", "") != control; ++i) tecla("tab");
    tecla("ctrl+a");
    for (const std::string& t : en_teclas(texto)) tecla(t);
}

Json salir(Dialogo& d, const Salida& s) {
    return d.pedir(*s.tecla ? en("key", {{"key", s.tecla}}) : pulsa(s.control));
}

TEST_P(AsistentesDriver, a_refused_text_is_told_once_and_nothing_else_happens) {
    const Empresa e(GetParam());
    Dialogo d;
    e.abrir(d);
    int vuelta = 0;
    for (const TextoMalo& t : TEXTOS_MALOS) {
        SCOPED_TRACE(std::string(t.libro) + " " + t.control);
        conversar(d, cabecera(t.libro, t.documento, "12.345.678-5", "Juan"));
        d.pedir(pulsa("cmdasistente"));
        if (const std::string antes = t.antes; !antes.empty())
            d.pedir(escribe(antes.substr(0, antes.find('=')).c_str(), antes.substr(antes.find('=') + 1)));
        for (const Salida& s : SALIDAS) {
            if (!s.revisa) continue;
            teclear(d, t.control, t.texto);
            const Json r = salir(d, s);
            ASSERT_EQ(r["messages"].size(), 1U) << s.tecla << s.control << r;
            EXPECT_EQ(r["messages"][0]["text"], t.mensaje);
            EXPECT_EQ(r.value("focus", ""), t.control) << s.tecla << s.control;
        }
        teclear(d, t.control, t.texto);
        const Json r = salir(d, SALIDAS[5 + vuelta++ % 2]);
        EXPECT_EQ(r["messages"].size(), 0U) << r;
        EXPECT_EQ(r["form"], "frmQuorvel");
        conversar(d, {{mira("grdDetalle"), {campo("rows", Json::array())}}});
    }
}

std::string renglones(Dialogo& d) {
    std::string t;
    const Json grilla = d.pedir(mira("grdDetalle"));
    if (!grilla.contains("value")) {
        d.pedir(en("cancel"));
        return "the dialog is still open";
    }
    for (const Json& r : grilla["value"]["rows"])
        for (int c = 1; c < 5; ++c) t += (c > 1 ? "|" : t.empty() ? "" : ";") + r[c].get<std::string>();
    return t;
}

TEST_P(AsistentesDriver, each_dialog_by_keys_alone_and_by_clicks_alone) {
    const Empresa e(GetParam());
    Dialogo d;
    e.abrir(d);
    for (const Recorrido& r : RECORRIDOS) {
        SCOPED_TRACE(r.libro);
        conversar(d, cabecera(r.libro, r.documento, "12.345.678-5", "Juan"));
        d.pedir(en("key", {{"key", "f4"}}));
        for (const std::string& t : en_teclas(r.teclas)) d.pedir(en("key", {{"key", t}}));
        EXPECT_EQ(renglones(d), r.por_teclas);
        conversar(d, cabecera(r.libro, r.documento, "12.345.678-5", "Juan"));
        d.pedir(pulsa("cmdasistente"));
        for (const std::string& clic : piezas(r.clics)) {
            const auto igual = clic.find('=');
            const Json pedido = igual == std::string::npos
                                    ? pulsa(clic.c_str())
                                    : escribe(clic.substr(0, igual).c_str(), clic.substr(igual + 1));
            const Json respuesta = d.pedir(pedido);
            EXPECT_EQ(respuesta.value("error", ""), "") << pedido;
            if (respuesta.value("form", "") == "frmBuscaCentro") d.pedir(en("pick", {{"index", 0}}));
        }
        EXPECT_EQ(renglones(d), r.por_clics);
    }
}

TEST_P(AsistentesDriver, a_register_of_purchases_from_the_file_to_the_vouchers) {
    const Empresa e(GetParam());
    const std::string ruta = carpeta_nueva() + "/rcv_202406.csv";
    std::ofstream(ruta) << pruebas::COMPRAS_REGISTRO << "\n"
                        << pruebas::compra_de(1, "76418352-5", "12", 1000, {}, "03/06/2024");
    Dialogo d;
    conversar(d, {{e.crear(), {}}, {en("register"), {FALLA}}, {llama("ShowForm"), {}}});
    conversar(
        d, {{en("register"), {espera("form"), forma("frmRegistro"), foco("cmdArchivo")}},
            {pulsa("cmdArchivo"), {espera("openfile")}},
            {archivo(ruta), {foco("grdRegistro")}},
            {mira("grdRegistro"), {R"(["","nuevo","COMPRAS","F. ELECTRONICA","76.418.352-5")"}},
            {en("key", {{"key", "space"}}), {}},
            {pulsa("cmdContabilizar"), {forma("frmContrapartes")}},
            {en("cell", {{"control", "grdContrapartes"}, {"row", 0}, {"col", 4}, {"text", "501001"}}), {}},
            {pulsa("cmdaceptar"), {pregunta("¿Contabilizar 1 documento por 1.190?")}},
            {responde("yes"), {dice("Quedó contabilizado 1 documento", "information"), forma("frmRegistro")}},
            {mira("grdRegistro"), {R"(["","contabilizado")"}},
            {pulsa("cmdVer"), {forma("frmQuorvel")}},
            {mira("txtnum_ref"), {campo("text", "12")}}});
}

} // namespace
