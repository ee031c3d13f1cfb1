// Goal: every kind of document becomes the right lines, and these pass the ordinary save. Method: one row per
// document; its steps are what a person does in the dialog, its lines are what the database holds afterwards.
#include "assistants/asistentes.h"

#include <sstream>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

class Documentos : public Asistentes {};
INSTANTIATE_TEST_SUITE_P(Motores, Documentos, ::testing::ValuesIn(MOTORES),
                         [](const auto& m) { return nombre(m.param); });

/// "control=text" types into a box or picks from a list, "control" presses a button or a mark.
void hacer(ui::Form& d, const std::string& paso) {
    const auto igual = paso.find('=');
    const std::string control = paso.substr(0, igual);
    if (igual == std::string::npos) {
        if (auto* const marca = dynamic_cast<ui::CheckBox*>(d.find(control)))
            marca->press();
        else
            pulsar(d, control.c_str());
    } else if (dynamic_cast<ui::ComboBox*>(d.find(control)) != nullptr) {
        elegir(d, control.c_str(), paso.substr(igual + 1));
    } else {
        escribir(d, control.c_str(), paso.substr(igual + 1));
    }
}
std::vector<std::string> en_pasos(const char* texto) {
    std::vector<std::string> pasos;
    std::istringstream in(texto);
    for (std::string paso; std::getline(in, paso, '|');) pasos.push_back(paso);
    return pasos;
}

constexpr const char *CLIENTE = "12.345.678-5", *PROVEEDOR = "76.418.352-5", *PERSONA = "11.111.111-1";

struct Caso {
    const char *libro, *documento, *rut, *pasos, *guardado;
};
const Caso CASOS[] = {
    {"COMPRAS", "FACTURA", PROVEEDOR, "txtCuenta=501002|txtNeto=100000",
     "501002||100000|0;109001||19000|0;201001|000013|0|119000"},
    {"COMPRAS", "F. EXENTA ELECT.", PROVEEDOR, "txtCuenta=501002|txtExento=80000",
     "501002||80000|0;109001||0|0;201001|000013|0|80000"},
    {"COMPRAS", "F. ELECTRONICA", PROVEEDOR, "txtCuenta=501002|txtNeto=100000|txtExento=20000|txtotro=-500",
     "501002||120000|0;109001||19000|0;201001|000013|0|138500;109002||0|500"},
    {"COMPRAS", "FACTURA", PROVEEDOR, "txtCuenta=501002|txtNeto=100000|cmbcodigo_otro_impuesto=024 LICORES",
     "501002||100000|0;109001||19000|0;201001|000013|0|150500;109002||31500|0"},
    {"COMPRAS", "NOTA CREDITO", PROVEEDOR, "txtCuenta=501002|txtNeto=250",
     "501002||0|250;109001||0|48;201001|000013|298|0"},
    {"COMPRAS", "N.C. ELECTRONICA", PROVEEDOR, "txtCuenta=501002|txtNeto=100000|txtotro=10000",
     "501002||0|100000;109001||0|19000;201001|000013|129000|0;109002||0|10000"},
    {"COMPRAS", "NOTA CREDITO", PROVEEDOR, "txtCuenta=501002|txtNeto=100000|txtotro=-500",
     "501002||0|100000;109001||0|19000;201001|000013|118500|0;109002||500|0"},
    {"COMPRAS", "N.D. ELECTRONICA", PROVEEDOR, "txtCuenta=103001|txtauxiliar=12|txtNeto=1000",
     "103001|000012|1000|0;109001||190|0;201001|000013|0|1190"},
    // totals for which no whole net exists: typed again, the main line takes the difference
    {"COMPRAS", "FACTURA", PROVEEDOR, "txtCuenta=501002|txttotal=179|cmdiva|txttotal=179",
     "501002||150|0;109001||29|0;201001|000013|0|179"},
    {"COMPRAS", "SRF SOL. REG.", PROVEEDOR, "txtCuenta=501002|txttotal=99963|cmdiva|txttotal=99963",
     "501002||84002|0;109001||15961|0;201001|000013|0|99963"},
    {"VENTAS", "FACTURA", CLIENTE, "txtCuenta=401001|txtNeto=250",
     "401001||0|250;203001||0|48;103001|000012|298|0"},
    {"VENTAS", "BOLETA", CLIENTE, "txtCuenta=401001|txtNeto=1000|txttasa_impuesto_otro=20,5",
     "401001||0|1000;203001||0|190;103002||1395|0;203002||0|205"},
    {"VENTAS", "VALES TRANSBANK", CLIENTE, "txtCuenta=401001|txttotal=119000|cmdiva",
     "401001||0|100000;203001||0|19000;103002||119000|0"},
    {"VENTAS", "B. EXENTA ELECT.", CLIENTE, "txtCuenta=401001|txtExento=5000",
     "401001||0|5000;203001||0|0;103002||5000|0"},
    {"VENTAS", "N.C. EXP. ELECT.", CLIENTE, "txtCuenta=401001|txtExento=1000",
     "401001||1000|0;203001||0|0;103001|000012|0|1000"},
    {"VENTAS", "NOTA CREDITO", CLIENTE, "txtCuenta=401001|txtNeto=1000|txtotro=205",
     "401001||1000|0;203001||190|0;103001|000012|0|1395;203002||205|0"},
    {"VENTAS", "F EXP. ELECT.", CLIENTE, "txtCuenta=401001|txtNeto=1000|txtotro=-500",
     "401001||0|1000;203001||0|190;103001|000012|690|0;203002||500|0"},
    {"VENTAS", "NOTA DEBITO", CLIENTE, "txtCuenta=401001|txtNeto=1000",
     "401001||0|1000;203001||0|190;103001|000012|1190|0"},
    {"RETENCIONES", "BOLETA", PERSONA, "txtCuenta=501001|txttotal=100000",
     "501001||100000|0;204002||0|13750;204001|000014|0|86250"}, // the rate of the document's year
    {"RETENCIONES", "BOLETA", PERSONA, "txtCuenta=501001|cmbporcentaje=16,75|txtNeto=83250",
     "501001||100000|0;204002||0|16750;204001|000014|0|83250"},
    {"RETENCIONES", "BOLETA", PERSONA, "txtCuenta=501001|txtNeto=87250|cmbporcentaje=13,75",
     "501001||101159|0;204002||0|13909;204001|000014|0|87250"},
    {"RETENCIONES", "BOLETA", PERSONA, "txtCuenta=501001|cmbporcentaje=0|txtNeto=5000",
     "501001||5000|0;204002||0|0;204001|000014|0|5000"},
    {"INGRESOS", "INGRESO", CLIENTE, "txtCuenta=101001|txtExento=5000",
     "101001||0|5000;103001|000012|5000|0"},
    {"INGRESOS", "BOLETA", CLIENTE, "txtCuenta=101001|txttotal=7000|chktrasponer",
     "101001||7000|0;103001|000012|0|7000"},
    {"EGRESOS", "EGRESO", PROVEEDOR, "txtCuenta=101002|txttotal=7000", "101002||7000|0;201001|000013|0|7000"},
    {"EGRESOS", "BOLETA", PROVEEDOR, "txtCuenta=101002|txtExento=7000|chktrasponer",
     "101002||0|7000;201001|000013|7000|0"},
    {"RET. SOCIO", "EGRESO", PERSONA, "txtCuenta2=303001|txtAuxiliar2=14|txtCuenta=101002|txttotal=500000",
     "101002||500000|0;303001|000014|0|500000"},
    {"RET. SOCIO", "EGRESO", PERSONA, "txtCuenta2=301001|txtCuenta=103001|txttotal=900",
     "103001|000014|900|0;301001||0|900"},
};

/// What an assistant could change on the voucher screen.
std::string foto(const frmQuorvel& f) {
    std::string t = f.cmblibro.Text() + "|" + f.cmbdoc_libro.Text() + "|" + f.txttasa_impuesto_otro.Text() +
                    "|" + f.cmbcodigo_otro_impuesto.Text() + "|" + f.lblTotalDebe.Caption() + "|" +
                    f.lblTotalhaber.Caption() + "|" + f.txtNum_doc.Text() + "|" +
                    f.estado.monto_neto.plano() + "|" + f.estado.monto_exento.plano();
    for (int i = 0; i < f.grdDetalle.Rows(); ++i)
        for (int c = 0; c < f.grdDetalle.Cols(); ++c) t += "|" + f.grdDetalle.TextMatrix(i, c);
    return t;
}

} // namespace

TEST_P(Documentos, CadaUnoSeGraba) {
    int numero = 0;
    for (const Caso& c : CASOS) {
        SCOPED_TRACE(std::string(c.libro) + " " + c.documento + " " + c.pasos);
        p.f.ctlRegistro1.press(ui::ctlRegistro::Function::New);
        cabecera(c.libro, c.documento, c.rut);
        p.f.txtnum_ref.SetText(std::to_string(++numero));
        p.e.al_abrir([&](ui::Form& d) {
            for (const std::string& paso : en_pasos(c.pasos)) hacer(d, paso);
            pulsar(d, "cmdaceptar");
        });
        pulsar(p.f, "cmdasistente");
        EXPECT_EQ(p.f.cmblibro.Text() + p.f.cmbdoc_libro.Text() + p.mensajes(),
                  std::string(c.libro) + c.documento);
        const std::string propuesto = p.f.txtNum_doc.Text();
        p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Save);
        EXPECT_EQ(p.mensajes(), "Comprobante Ingresado y Mayorizado");
        EXPECT_EQ(guardado(propuesto), c.guardado);
    }
}

TEST_P(Documentos, CancelarEnCualquierPuntoNoTocaElComprobante) {
    const auto pasos = en_pasos("cmbdoc_libro=NOTA CREDITO|txtCuenta=103001|txtauxiliar=12|txtNeto=1000|"
                                "cmbcodigo_otro_impuesto=024 LICORES|txtExento=7|cmdiva|txttotal=5");
    cabecera("COMPRAS", "FACTURA");
    p.e.al_abrir([](ui::Form& d) {
        for (const char* paso : {"txtCuenta=501002", "txtNeto=100000", "cmdaceptar"}) hacer(d, paso);
    });
    pulsar(p.f, "cmdasistente");
    const std::string antes = foto(p.f);
    for (std::size_t hechos = 0; hechos <= pasos.size(); ++hechos) {
        p.e.al_abrir([&](ui::Form& d) {
            for (std::size_t i = 0; i < hechos; ++i) hacer(d, pasos[i]);
            if (hechos % 3 == 0) return pulsar(d, "cmdcancelar");
            if (hechos % 3 == 1) return d.close_by_user();
            auto escape = ui::parse_key("escape");
            d.send_key(*escape);
        });
        pulsar(p.f, "cmdasistente");
        EXPECT_EQ(foto(p.f) + p.mensajes(), antes) << hechos;
    }
}

TEST_P(Documentos, LosMontosSeMuevenJuntos) {
    const struct {
        const char *paso, *neto, *otro, *iva, *total, *cuadre;
    } casos[] = {
        {"txtNeto=-5000", "-5.000", "0", "-950", "-5.950", "Cuadra"},
        {"txtNeto=9999999999999", "9.999.999.999.999", "0", "1.900.000.000.000", "11.899.999.999.999",
         "Cuadra"},
        {"txtNeto=1.000", "1.000", "0", "190", "1.190", "Cuadra"},
        {"txttasa_impuesto_otro=19.5", "1.000", "195", "190", "1.385", "Cuadra"},
        {"txttasa_impuesto_otro=", "1.000", "0", "190", "1.190", "Cuadra"},
        {"txttotal=1.200", "1.000", "0", "190", "1.200", "Diferencia 10"},
        {"txtotro=-100", "1.000", "-100", "190", "1.090", "Cuadra"},
    };
    cabecera("COMPRAS", "FACTURA");
    p.e.al_abrir([&](ui::Form& d) {
        for (const auto& c : casos) {
            hacer(d, c.paso);
            EXPECT_EQ(texto(d, "txtNeto") + "/" + texto(d, "txtotro") + "/" + texto(d, "lbliva") + "/" +
                          texto(d, "txttotal") + "/" + texto(d, "lblCuadre"),
                      std::string(c.neto) + "/" + c.otro + "/" + c.iva + "/" + c.total + "/" + c.cuadre)
                << c.paso;
        }
        hacer(d, "txttotal=");
        hacer(d, "txtCuenta=501002");
        hacer(d, "cmdaceptar");
        EXPECT_EQ(p.mensajes(), "Ingrese total");
        hacer(d, "cmdcancelar");
    });
    pulsar(p.f, "cmdasistente");
}

TEST_P(Documentos, LoQueOtroBorraEntretanto) {
    const auto otro = abrir_sesion(p.conexion);
    cabecera("COMPRAS", "FACTURA");
    const std::string antes = foto(p.f);
    p.e.al_abrir([&](ui::Form& d) {
        for (const char* paso : {"txtCuenta=103001", "txtauxiliar=12", "txtNeto=1000"}) hacer(d, paso);
        ejecutar(*otro, "delete from ctxaux_cod where auxiliar='000012'");
        hacer(d, "cmdaceptar");
        EXPECT_EQ(d.active_control()->name() + " " + p.mensajes(), "txtauxiliar Auxiliar no válido");
        ejecutar(*otro, "update ctxaux_cod set activo='0' where auxiliar='000013'");
        hacer(d, "txtCuenta=501002");
        hacer(d, "cmdaceptar");
        EXPECT_EQ(d.active_control()->name() + " " + p.mensajes(), "cmbAuxiliar Auxiliar no válido");
        ejecutar(*otro, "delete from ctmcentros where centro='501002'");
        hacer(d, "cmdaceptar");
        EXPECT_EQ(p.mensajes(), "Cuenta no válida");
        EXPECT_TRUE(d.visible());
        hacer(d, "cmdcancelar");
    });
    pulsar(p.f, "cmdasistente");
    EXPECT_EQ(foto(p.f), antes);
}

TEST_P(Documentos, ReabiertoYGuardadoOtraVez) {
    cabecera("VENTAS", "FACTURA", CLIENTE);
    p.e.al_abrir([](ui::Form& d) {
        for (const char* paso :
             {"txtCuenta=401001", "txtNeto=1000", "cmbcodigo_otro_impuesto=024 LICORES", "cmdaceptar"})
            hacer(d, paso);
    });
    pulsar(p.f, "cmdasistente");
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Save);
    const std::string numero = p.f.txtNum_doc.Text();
    EXPECT_EQ(guardado(numero), "401001||0|1000;203001||0|190;103001|000012|1505|0;203002||0|315");
    p.e.al_abrir([&](ui::Form& d) {
        EXPECT_EQ(texto(d, "cmbdoc_libro") + " " + texto(d, "txtCuenta") + " " + texto(d, "txtNeto") + " " +
                      texto(d, "txttasa_impuesto_otro") + " " + texto(d, "txtotro") + " " +
                      texto(d, "txttotal"),
                  "FACTURA 401001 1.000 31,5 315 1.505");
        for (const char* paso : {"cmbdoc_libro=NOTA CREDITO", "txtNeto=2000", "cmdaceptar"}) hacer(d, paso);
    });
    pulsar(p.f, "cmdasistente");
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Save);
    EXPECT_EQ(p.mensajes(), "Comprobante Ingresado y Mayorizado / Comprobante Ingresado y Mayorizado");
    EXPECT_EQ(guardado(numero), "401001||2000|0;203001||380|0;103001|000012|0|3010;203002||630|0");
}
