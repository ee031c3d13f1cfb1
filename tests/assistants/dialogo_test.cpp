// Goal: the assistants from the voucher screen to the stored voucher, on both engines, through the events of
// the dialogs only.
#include "assistants/asistentes.h"
#include "assistants/auxiliares.h"
#include "assistants/documentos.h"
#include "assistants/impuestos.h"
#include "assistants/reapertura.h"

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

std::string como(const ::testing::TestParamInfo<Motor>& m) { return nombre(m.param); }
INSTANTIATE_TEST_SUITE_P(Motores, Asistentes, ::testing::ValuesIn(MOTORES), como);

TEST_P(Asistentes, RetiroDeSocio) {
    cabecera("RET. SOCIO", "EGRESO", "11.111.111-1");
    p.e.al_abrir([&](ui::Form& d) {
        escribir(d, "txttotal", "500000");
        pulsar(d, "cmdaceptar");
        EXPECT_EQ(p.mensajes(), "Ingrese cuenta SOCIO");
        escribir(d, "txtCuenta2", "303001");
        pulsar(d, "cmdaceptar");
        EXPECT_EQ(p.mensajes(), "Ingrese cuenta bancos");
        escribir(d, "txtCuenta", "101002");
        pulsar(d, "cmdaceptar");
        EXPECT_EQ(p.mensajes(), "Ingrese auxiliar");
        escribir(d, "txtAuxiliar2", "14");
        EXPECT_EQ(texto(d, "lblauxiliar2"), "MARIA NUÑEZ DIAZ");
        pulsar(d, "cmdaceptar");
    });
    pulsar(p.f, "cmdasistente");
    EXPECT_EQ(p.f.lblTotalhaber.Caption(), "500.000");
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Save);
    EXPECT_EQ(p.mensajes(), "Comprobante Ingresado y Mayorizado");
    EXPECT_EQ(guardado(p.f.txtNum_doc.Text()), "101002||500000|0;303001|000014|0|500000");
}

TEST_P(Asistentes, EventosDelDialogo) {
    cabecera("COMPRAS", "BOLETA");
    p.e.al_abrir([&](ui::Form& d) {
        EXPECT_EQ(texto(d, "cmbdoc_libro"), "") << "not offered for purchases";
        EXPECT_EQ(texto(d, "cmbAuxiliar"), "000013 - FERRETERIA EL ROBLE SPA");
        pulsar(d, "cmdaceptar");
        elegir(d, "cmbdoc_libro", "FACTURA");
        pulsar(d, "cmdaceptar");
        EXPECT_EQ(p.mensajes(), "Ingrese documento / Ingrese cuenta");
        escribir(d, "txtCuenta", "103001");
        EXPECT_TRUE(d.find("txtauxiliar")->Enabled());
        escribir(d, "txtauxiliar", "12");
        EXPECT_EQ(texto(d, "txtauxiliar") + texto(d, "lblauxiliar"), "000012JUAN PEREZ SOTO");
        escribir(d, "txtCuenta", "501001");
        EXPECT_FALSE(d.find("txtauxiliar")->Enabled());
        EXPECT_EQ(texto(d, "txtauxiliar"), "");
        pulsar(d, "cmdaceptar");
        EXPECT_EQ(p.mensajes(), "Ingrese total");
        escribir(d, "txttotal", "100000");
        EXPECT_EQ(texto(d, "lblCuadre"), "Diferencia 100.000");
        pulsar(d, "cmdiva");
        EXPECT_EQ(texto(d, "txtNeto") + " " + texto(d, "lbliva") + " " + texto(d, "lblCuadre"),
                  "84.034 15.966 Cuadra");
        elegir(d, "cmbcodigo_otro_impuesto", "024 LICORES");
        EXPECT_EQ(texto(d, "txttasa_impuesto_otro") + " " + texto(d, "txtotro"), "31,5 26.471");
        elegir(d, "cmbcodigo_otro_impuesto", "");
        EXPECT_EQ(texto(d, "txttasa_impuesto_otro"), "31,5");
        p.db->executesql("update ctmcentros set activo='0' where centro='501001'");
        pulsar(d, "cmdaceptar");
        EXPECT_EQ(p.mensajes(), "Cuenta no válida") << "gone between typing and accepting";
        pulsar(d, "cmdcancelar");
    });
    pulsar(p.f, "cmdasistente");
    EXPECT_EQ(p.f.grdDetalle.Rows(), 0);
    EXPECT_EQ(p.f.cmbdoc_libro.Text() + p.f.lblTotalDebe.Caption(), "BOLETA0");
}

TEST_P(Asistentes, BuscarConCtrlY) {
    cabecera("COMPRAS", "FACTURA");
    const auto ctrl_y = [](ui::Form& d, const char* caja) {
        d.find(caja)->SetFocus();
        auto e = ui::parse_key("ctrl+y");
        d.send_key(*e);
    };
    p.e.al_abrir([&](ui::Form& d) {
        d.find("txtCuenta")->SetFocus();
        dynamic_cast<ui::TextBox&>(*d.find("txtCuenta")).user_edit("10");
        ctrl_y(d, "txtCuenta"); // a half-typed code is no error
        EXPECT_EQ(texto(d, "txtCuenta") + texto(d, "lblCuenta"), "103001CLIENTES");
        d.find("cmbdoc_libro")->SetFocus();
        ctrl_y(d, "txtauxiliar");
        EXPECT_EQ(texto(d, "txtauxiliar") + texto(d, "lblauxiliar"), "000012JUAN PEREZ SOTO");
        EXPECT_EQ(p.mensajes(), "");
        pulsar(d, "cmdcancelar");
    });
    p.e.al_abrir([](ui::Form& busca) { pruebas::elegir_fila(busca, 0, "103001"); });
    p.e.al_abrir([](ui::Form& busca) { pruebas::elegir_fila(busca, 0, "000012"); });
    pulsar(p.f, "cmdasistente");
}

/// Plays keys into the form on top: a word in <> is a key's name. @return how many keys that was
int teclas(ui::Form& forma, const std::string& guion) {
    int n = 0;
    for (std::size_t i = 0; i < guion.size(); ++i, ++n) {
        if (guion[i] != '<') {
            pruebas::teclear(forma, guion.substr(i, 1));
            continue;
        }
        const std::size_t fin = guion.find('>', i);
        auto e = ui::parse_key(guion.substr(i + 1, fin - i - 1));
        forma.send_key(*e);
        i = fin;
    }
    return n;
}

TEST_P(Asistentes, FacturaDeCompraSinRaton) {
    ejecutar(*p.db, "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,rut_persona,nombre,"
                    "estado) values (1,'01',#01/05/2024#,'001','1','76.418.352-5','ROBLE','P')");
    p.f.mskF_comp.SetFocus();
    int n = teclas(p.f, "<enter>002<enter><enter>com<enter><enter>Compra<enter>fac<enter>4512<enter>"
                        "140624<enter><enter>764183525<enter><enter>");
    EXPECT_EQ(p.f.txtnombre.Text(), "ROBLE") << "a known supplier";
    EXPECT_EQ(p.f.active_control()->name(), "cmdasistente");
    p.e.al_abrir([&](ui::Form& d) { n += teclas(d, "<enter>501002<enter><enter>100000<f5>"); });
    n += teclas(p.f, "<enter>");
    n += teclas(p.f, "<f5>");
    EXPECT_EQ(p.mensajes(), "Comprobante Ingresado y Mayorizado");
    EXPECT_EQ(guardado(p.f.txtNum_doc.Text()), "501002||100000|0;109001||19000|0;201001|000013|0|119000");
    EXPECT_EQ(n, 64) << "the manual names this figure";
}

TEST_P(Asistentes, SeReabreSobreUnComprobanteGuardado) {
    cabecera("COMPRAS", "FACTURA");
    p.e.al_abrir([&](ui::Form& d) {
        escribir(d, "txtCuenta", "501002");
        escribir(d, "txtNeto", "100000");
        escribir(d, "txttotal", "119001");
        pulsar(d, "cmdaceptar");
    });
    pulsar(p.f, "cmdasistente");
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Save);
    EXPECT_EQ(p.mensajes(), "Comprobante Ingresado y Mayorizado");
    p.f.estado.compra = {"103001", "000012", "CLIENTES", "JUAN PEREZ SOTO"};
    p.e.al_abrir([&](ui::Form& d) {
        EXPECT_EQ(texto(d, "txtCuenta") + texto(d, "lblCuenta") + texto(d, "txtauxiliar") +
                      texto(d, "lblauxiliar"),
                  "501002COMPRAS");
        EXPECT_EQ(texto(d, "txttotal") + " " + texto(d, "txtotro"), "119.000 0");
        pulsar(d, "cmdcancelar");
    });
    pulsar(p.f, "cmdasistente");
    EXPECT_EQ(p.f.lblTotalDebe.Caption(), "119.001");
}

TEST_P(Asistentes, ElOtroImpuestoVaPorSuCodigo) {
    cabecera("COMPRAS", "FACTURA");
    elegir(p.f, "cmbcodigo_otro_impuesto", "024 LICORES");
    ejecutar(*p.db, "insert into ctmotroimp(otro_impuesto,descripcion,tasa) values ('001','NUEVO',5)");
    p.e.al_abrir([&](ui::Form& d) {
        EXPECT_EQ(texto(d, "cmbcodigo_otro_impuesto") + " " + texto(d, "txttasa_impuesto_otro"),
                  "024 LICORES 31,5");
        escribir(d, "txtCuenta", "501002");
        escribir(d, "txtNeto", "100000");
        escribir(d, "txtotro", "700"); // of a part of the goods only
        EXPECT_EQ(texto(d, "lblLineas"),
                  "501002  COMPRAS\n109001  IVA CREDITO\n201001  PROVEEDORES  ·  000013"
                  "\n109002  OTROS IMP. COMPRA");
        EXPECT_EQ(texto(d, "lblLineasDebe") + texto(d, "lbllado"), "100.000\n19.000\n\n700Cuenta al Debe");
        pulsar(d, "cmdaceptar");
    });
    pulsar(p.f, "cmdasistente");
    EXPECT_EQ(p.f.cmbcodigo_otro_impuesto.Text() + " " + p.f.lblCuenta.Caption(), "024 LICORES COMPRAS");
    ejecutar(*p.db, "delete from ctmotroimp where otro_impuesto='024'");
    p.e.al_abrir([&](ui::Form& d) {
        EXPECT_EQ(texto(d, "txtotro") + " " + texto(d, "txttotal"), "700 119.700");
        pulsar(d, "cmdaceptar");
    });
    pulsar(p.f, "cmdasistente");
    EXPECT_EQ(p.f.cmbcodigo_otro_impuesto.Text(), "024 LICORES") << "no longer in the table";
}

TEST_P(Asistentes, ReaperturaReparteElTotal) {
    std::optional<Clave> clave;
    const auto propuesta = [&](std::int64_t neto, std::int64_t exento, std::int64_t total, const char* tasa,
                               std::optional<double> linea = {}) {
        const auto r = proponer_reapertura(*p.db, {neto, exento, total, tasa, clave, "109002", linea});
        return r ? r->neto + " " + r->iva + " " + r->otro + " " + r->total : "nothing";
    };
    EXPECT_EQ(propuesta(100000, 0, 119700, ""), "100.000 19.000 0 119.000") << "not stored yet";
    clave = Clave{1, "01", fecha(2024, 3, 20), "002", "7"};
    EXPECT_EQ(propuesta(0, 0, 119000, ""), "nothing");
    EXPECT_EQ(propuesta(1, 0, 1, ""), "1 0 0 1");
    EXPECT_EQ(propuesta(0, 5000, 5000, ""), "0 0 0 5.000");
    EXPECT_EQ(propuesta(100000, 0, 119000, ""), "100.000 19.000 0 119.000");
    EXPECT_EQ(propuesta(150, 0, 179, ""), "150 29 0 178");
    EXPECT_EQ(propuesta(100000, 5000, 155500, "31,5"), "100.000 19.000 31.500 155.500");
    EXPECT_EQ(propuesta(100000, 0, 118500, ""), "100.000 19.000 0 119.000");
    ejecutar(*p.db, "insert into ctdquorvel(empresa,subsistema,f_comp,documento,num_docum,secuencia,centro,"
                    "haber_nacional) values (1,'01',#03/20/2024#,'002','7',4,'109002',500)");
    EXPECT_EQ(propuesta(100000, 0, 118500, ""), "100.000 19.000 -500 118.500") << "it takes away";
    EXPECT_EQ(propuesta(100000, 0, 119700, "31,5", 700), "100.000 19.000 700 119.700")
        << "typed against the rate";
    EXPECT_EQ(propuesta(100000, 0, 118300, "", 700), "100.000 19.000 -700 118.300");
    EXPECT_EQ(propuesta(150, 0, 179, "31,5", 1), "150 29 0 178") << "a peso is rounding, no other tax";
    EXPECT_EQ(propuesta(150, 0, 180, "31,5", 2), "150 29 2 180");
}

TEST_P(Asistentes, GeneraAuxiliar) {
    ejecutar(*p.db, "insert into ctxaux_cod(auxiliar,n_auxiliar,activo,rut) values ('000015','x','0','1-9')");
    cabecera("COMPRAS", "FACTURA", "9.876.543-3");
    p.f.txtnombre.SetText("O'HIGGINS");
    p.e.al_abrir([&](ui::Form& d) {
        pulsar(d, "cmdaceptar");
        EXPECT_EQ(p.mensajes(), "Ingrese auxiliar, sino existe auxiliar presione el botón Generar auxiliar");
        teclas(d, "<enter><enter>"); // to the button and pressed
        EXPECT_EQ(texto(d, "cmbAuxiliar"), "000016 - 9.876.543-3 O'HIGGINS");
        teclas(d, "<enter>");
        EXPECT_EQ(d.active_control(), d.find("txtNeto")) << "Enter no longer stops at the button";
        pulsar(d, "cmdGenera");
        EXPECT_EQ(texto(d, "cmbAuxiliar"), "000016 - 9.876.543-3 O'HIGGINS");
        pulsar(d, "cmdcancelar");
    });
    pulsar(p.f, "cmdasistente");
    EXPECT_EQ(filas(*p.db, "select auxiliar,tipo from ctxaux_cod where rut='9.876.543-3'"), "000016|PS");
    EXPECT_EQ(filas(*p.db, "select sistema from ctmtipoaux where tipo_aux='PS'"), "0");

    p.f.txtrut_persona.SetText("");
    p.e.al_abrir([&](ui::Form& d) {
        pulsar(d, "cmdGenera");
        EXPECT_EQ(p.mensajes(), "Ingrese RUT");
        d.close_by_user();
    });
    p.f.mnucompra.press();
}

TEST_P(Asistentes, CodigosDeAuxiliar) {
    const auto creado = [&](const char* rut) {
        generar_auxiliar(*p.db, rut, "x");
        return filas(*p.db, std::string("select auxiliar from ctxaux_cod where rut='") + rut + "'");
    };
    EXPECT_TRUE(auxiliares_de_rut(*p.db, "22.222.222-2").empty()) << "inactive";
    ejecutar(*p.db, "delete from ctxaux_cod");
    EXPECT_EQ(creado("1-9"), "000001");
    ejecutar(*p.db, "insert into ctxaux_cod(auxiliar,n_auxiliar,activo,rut) values ('000041','x','1','2-7')");
    EXPECT_EQ(creado("3-5"), "000042");
    EXPECT_EQ(creado("3-5"), "000042") << "it has one already";
    ejecutar(*p.db, "insert into ctxaux_cod(auxiliar,n_auxiliar,activo,rut) values ('PROV9','x','1','4-3')");
    EXPECT_EQ(creado("5-1"), "000043") << "a code that is no number does not count";
    for (const char* codigo : {"7", "999999"})
        ejecutar(*p.db, std::string("insert into ctxaux_cod(auxiliar,n_auxiliar,activo,rut) values ('") +
                            codigo + "','x','1','" + codigo + "')");
    EXPECT_EQ(creado("6-K"), "1000000");
    EXPECT_EQ(creado("7-8"), "1000001");
    EXPECT_THROW(generar_auxiliar(*p.db, "7-7", "x"), std::invalid_argument) << "its check digit is 8";
    const struct {
        std::vector<const char*> codigos;
        const char* siguiente;
    } casos[] = {{{}, "000001"},
                 {{"000050", "7"}, "000051"},
                 {{"000050", "PROV9"}, "000051"},
                 {{"000050", "99A"}, "000051"},
                 {{"000050", "99:"}, "000051"},
                 {{"000050", "99-1"}, "000051"},
                 {{"000005", "1000000"}, "000006"},
                 {{"1234567"}, "000001"},
                 {{"9", "10", "000002", "A"}, "000011"},
                 {{"999999", "1000041", "1000000", "10000000", "10000005"}, "1000042"},
                 {{"999999", "9999990", "10000000", "10000005"}, "9999991"}};
    for (const auto& c : casos) {
        ejecutar(*p.db, "delete from ctxaux_cod");
        for (const std::string codigo : c.codigos)
            ejecutar(*p.db, "insert into ctxaux_cod(auxiliar,n_auxiliar,activo,rut) values ('" + codigo +
                                "','x','1','" + codigo + "')");
        EXPECT_EQ(creado("1-9"), c.siguiente) << c.codigos.size();
    }
    EXPECT_EQ(codigo_de_entrada("34 - PEREZ - HIJO") + codigo_de_entrada("00000034 - X"), "3400000034");
}

TEST_P(Asistentes, SoloLoCambiadoRecalcula) {
    cabecera("COMPRAS", "FACTURA");
    p.e.al_abrir([&](ui::Form& d) {
        escribir(d, "txtNeto", "100000");
        escribir(d, "txttotal", "119001"); // the person's own total
        EXPECT_EQ(texto(d, "txttotal") + " " + texto(d, "lblCuadre"), "119.001 Diferencia 1");
        for (const char* caja : {"txtNeto", "txtExento", "txtotro", "txttasa_impuesto_otro", "txttotal"}) {
            d.find(caja)->SetFocus();
            d.focus_next();
        }
        EXPECT_EQ(texto(d, "txtNeto") + " " + texto(d, "txttotal"), "100.000 119.001")
            << "passing through, also after the amount was grouped, changes nothing";
        escribir(d, "txtCuenta", "501002");
        escribir(d, "txttotal", "0");
        p.db->executesql("update ctmcentros set activo='0' where centro='501002'");
        pulsar(d, "cmdaceptar");
        EXPECT_EQ(p.mensajes(), "Ingrese total") << "before the account is looked at";
        escribir(d, "txtNeto", "999999999999");
        EXPECT_EQ(texto(d, "txttotal"), "1.189.999.999.999");
        pulsar(d, "cmdcancelar");
    });
    pulsar(p.f, "cmdasistente");
    EXPECT_EQ(p.f.grdDetalle.Rows(), 0);
}

TEST_P(Asistentes, UnaLineaNoQuedaNegativa) {
    const std::string negativo = "Una línea quedaría con monto negativo: revise los montos; un documento que "
                                 "rebaja es una nota de crédito";
    const struct {
        const char *libro, *documento, *cuenta, *montos[2];
    } casos[] = {{"COMPRAS", "FACTURA", "501002", {"txtNeto=-500", ""}},
                 {"COMPRAS", "FACTURA", "501002", {"txtNeto=1000", "txttotal=100"}},
                 {"VENTAS", "FACTURA", "401001", {"txtNeto=1000", "txttotal=100"}},
                 {"RETENCIONES", "BOLETA", "501001", {"txttotal=-9", ""}},
                 {"EGRESOS", "EGRESO", "101002", {"txttotal=-9", ""}},
                 {"RET. SOCIO", "EGRESO", "101002", {"txtCuenta2=301001", "txttotal=-9"}}};
    for (const auto& c : casos) {
        SCOPED_TRACE(std::string(c.libro) + c.montos[0]);
        cabecera(c.libro, c.documento);
        p.e.al_abrir([&](ui::Form& d) {
            escribir(d, "txtCuenta", c.cuenta);
            for (const std::string monto : c.montos)
                if (const auto igual = monto.find('='); igual != std::string::npos)
                    escribir(d, monto.substr(0, igual).c_str(), monto.substr(igual + 1));
            pulsar(d, "cmdaceptar");
            EXPECT_EQ(d.active_control()->name() + p.mensajes(), "txttotal" + negativo);
            pulsar(d, "cmdcancelar");
        });
        pulsar(p.f, "cmdasistente");
        EXPECT_EQ(p.f.grdDetalle.Rows(), 0);
    }
}

TEST_P(Asistentes, GeneraAuxiliarSinRastroDeUnaFalla) {
    ejecutar(*p.db, "alter table ctxaux_cod rename column tipo to tipo_antes");
    EXPECT_THROW(generar_auxiliar(*p.db, "9.876.543-3", "x"), std::runtime_error);
    EXPECT_EQ(filas(*p.db, "select n_tipo_aux from ctmtipoaux where tipo_aux='PS'"), "");
}

TEST_P(Asistentes, ExigenciasDelBoton) {
    p.f.cmblibro.SetListIndex(2);
    pulsar(p.f, "cmdasistente");
    p.f.cmbdoc_libro.SetListIndex(2);
    pulsar(p.f, "cmdasistente");
    p.f.txtrut_persona.SetText("76.418.352-5");
    pulsar(p.f, "cmdasistente");
    EXPECT_EQ(p.mensajes(), "Ingrese documento / Ingrese RUT / Ingrese Nombre");
    p.f.txtnombre.SetText("X");
    p.f.cmblibro.SetListIndex(0);
    pulsar(p.f, "cmdasistente");
    EXPECT_EQ(p.e.formas_abiertas.size(), 1U) << "the general journal has no assistant";
}

TEST_P(Asistentes, TasaDeUnCodigoCorto) {
    ejecutar(*p.db, "insert into ctmotroimp(otro_impuesto,descripcion,tasa) values ('','NADA',9)");
    ejecutar(*p.db, "insert into ctmotroimp(otro_impuesto,descripcion,tasa) values ('27','PIEL',15.5)");
    for (const auto& [entrada, tasa] : {std::pair("27 PIEL", "15,5"), std::pair("024 LICORES", "31,5"),
                                        std::pair("", "none"), std::pair("999 X", "none")})
        EXPECT_EQ(tasa_de_entrada(*p.db, entrada).value_or("none"), tasa) << entrada;
}

TEST_P(Asistentes, DocumentosDeIngresoYEgreso) {
    EXPECT_EQ(habilitar_documentos_caja(*p.db), 2);
    ejecutar(*p.db, "delete from adxdoc_sub where documento='007'");
    EXPECT_EQ(habilitar_documentos_caja(*p.db), 1);
    ejecutar(*p.db, "delete from adxdoc_sub where documento in ('006','007')");
    cabecera("COMPRAS", "FACTURA");
    p.e.al_abrir([&](ui::Form& d) {
        escribir(d, "txtCuenta", "501002");
        escribir(d, "txtNeto", "100");
        pulsar(d, "cmdaceptar");
    });
    pulsar(p.f, "cmdasistente");
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Save);
    const std::string numero = p.f.txtNum_doc.Text();
    (void)p.mensajes();
    p.f.mnudoc_egreso.press();
    p.f.mnudoc_egreso.press();
    EXPECT_EQ(p.mensajes(), "Documento agregados / Documento ya existen");
    EXPECT_EQ(p.f.cmbDocumento.ListCount(), 5);
    EXPECT_EQ(p.f.cmbDocumento.Text() + " " + p.f.txtNum_doc.Text(), "002 COMPRA " + numero);

    // the new kind keeps no last number, which is no failure
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::New);
    cabecera("EGRESOS", "EGRESO");
    elegir(p.f, "cmbDocumento", "006 EGRESO");
    p.e.al_abrir([&](ui::Form& d) {
        escribir(d, "txtCuenta", "101002");
        escribir(d, "txtExento", "700");
        pulsar(d, "cmdaceptar");
    });
    pulsar(p.f, "cmdasistente");
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Save);
    EXPECT_EQ(p.mensajes(), "Comprobante Ingresado y Mayorizado");
    EXPECT_EQ(filas(*p.db, "select count(*) from adxemp_doc where documento='006'"), "0");
}

} // namespace
