// Goal: load, first activation, settings and unload; lookups; attachments. Method: the screen on SQLite.
#include "apoyo/pantalla.h"
#include "platform/ui/ctlConsulta.h"
#include "screen/consultas/consultas.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace quorvel;
using namespace quorvel::pruebas;
using Textos = std::vector<std::string>;
namespace fs = std::filesystem;

namespace {
Textos entradas(const ui::ListControl& lista) {
    Textos t;
    for (int i = 0; i < lista.ListCount(); ++i) t.push_back(lista.List(i));
    return t;
}
void escribir_archivo(const fs::path& ruta, const std::string& texto) {
    fs::create_directories(ruta.parent_path());
    std::ofstream(ruta, std::ios::binary) << texto;
}
std::string leer_archivo(const fs::path& ruta) {
    std::ifstream f(ruta, std::ios::binary);
    return {std::istreambuf_iterator<char>(f), {}};
}
bool tabla_impresion(clsConexion& db) { return db.executesql("delete from ctccheque") > 0; }
} // namespace

TEST(Carga, ListsAndSessionOfTheScreen) {
    Pantalla p;
    p.abrir();
    EXPECT_EQ(entradas(p.f.cmblibro),
              (Textos{"CONTABLES", "VENTAS", "COMPRAS", "RETENCIONES", "INGRESOS", "EGRESOS", "RET. SOCIO"}));
    EXPECT_EQ(p.f.cmblibro.ListIndex(), -1) << "no book is chosen for the person";
    EXPECT_EQ(p.f.cmbdoc_libro.ListCount(), 27);
    EXPECT_EQ(p.f.cmbdoc_libro.List(18) + "|" + p.f.cmbdoc_libro.List(21), "F EXP. ELECT.|F. VENTA. Z.F.");
    EXPECT_EQ(entradas(p.f.cmbDocumento), (Textos{"(Ninguno)", "001 TRASPASO", "002 COMPRA"}));
    EXPECT_EQ(p.f.cmbDocumento.ListIndex(), 0);
    EXPECT_EQ(entradas(p.f.cmbMoneda), (Textos{"PS PESO", "US DOLAR"}));
    EXPECT_EQ(p.f.cmbcodigo_otro_impuesto.List(1), "024 LICORES");
    EXPECT_EQ(p.f.cmbcodigo_no_recuperable.List(5) + p.f.cmbifrs.Text(), "9 Otros0 TRIBUTARIA / IFRS");
    EXPECT_EQ(p.f.ctlRegistro1.Company() + "|" + p.f.ctlRegistro1.User() + "|" + p.f.ctlRegistro1.Program() +
                  "|" + p.f.ctlRegistro1.Printer(),
              "1 Empresa de Prueba Ltda.|1 ANA ROJAS|Contabilidad|L");
    EXPECT_EQ(p.f.mskF_comp.Text() + "|" + p.f.gstriva + "|" + p.f.gstriva_compra,
              "15/06/2024|203001|109001");
    EXPECT_EQ(p.f.grdDetalle.Cols(), 11);
    EXPECT_EQ(p.f.grdDetalle.Columns(3).Caption + p.f.grdDetalle.Columns(3).NumberFormat, "Debe#,##0");
}

TEST(Carga, PermissionsRuleButtonsAndStagingTables) {
    using F = ui::ctlRegistro::Function;
    struct Caso {
        const char* permiso;
        bool borrar, imprimir;
    } const casos[] = {{"11111", true, true},
                       {"11101", true, true},
                       {"11011", false, true},
                       {"1111", true, false},
                       {"000", false, false}};
    for (const Caso& c : casos) {
        Pantalla p;
        p.abrir(c.permiso);
        EXPECT_EQ(p.f.ctlRegistro1.enabled(F::DeleteLine), c.borrar) << c.permiso;
        EXPECT_EQ(p.f.ctlRegistro1.enabled(F::Print), c.imprimir) << c.permiso;
        EXPECT_TRUE(p.f.ctlRegistro1.enabled(F::Save)) << c.permiso;
        EXPECT_EQ(p.f.ctlRegistro1.Flag(3), std::string(c.permiso).substr(3, 1) == "1") << c.permiso;
        EXPECT_EQ(tabla_impresion(*p.reporte), c.imprimir) << c.permiso;
        p.f.Unload();
        EXPECT_FALSE(tabla_impresion(*p.reporte)) << c.permiso;
    }
}

TEST(Carga, ColumnWidthsAreKeptAndGarbageIsPassedOver) {
    Pantalla p;
    escribir_archivo(
        p.carpeta + "/NIVO.ini",
        "; del cliente\r\n[nivo]\r\nbase=/datos/\r\nfrmquorvel_grddetalle=100#abc#12,5#300#\r\n");
    const int glosa = 29 * 9;
    p.abrir();
    EXPECT_EQ(p.f.grdDetalle.Columns(0).Width, 100);
    EXPECT_EQ(p.f.grdDetalle.Columns(5).Width, glosa);
    p.f.grdDetalle.Columns(5).Width = 400;
    p.escritorio.list_widths["frmBuscaCentro"] = "80#300#";
    p.f.Unload();
    p.escritorio.list_widths.clear();
    const std::string ini = leer_archivo(p.carpeta + "/NIVO.ini");
    EXPECT_NE(ini.find("; del cliente\r\n[nivo]\r\nbase=/datos/\r\n"), std::string::npos) << ini;
    EXPECT_NE(ini.find("#400#"), std::string::npos) << ini;
    EXPECT_FALSE(fs::exists(p.carpeta + "/nivo.ini")) << "one settings file whatever its case";
    p.abrir();
    EXPECT_EQ(p.f.grdDetalle.Columns(5).Width, 400);
    EXPECT_TRUE(p.f.grdDetalle.Columns(5).WidthChosen && !p.f.grdDetalle.Columns(6).WidthChosen);
    EXPECT_EQ(p.escritorio.list_widths["frmBuscaCentro"], "80#300#");
}

TEST(Carga, DatesAndNamesOfTheHeader) {
    Pantalla p;
    p.abrir();
    p.elegir("cmbDocumento", "001 TRASPASO");
    EXPECT_TRUE(p.escribir("mskF_comp", "31/02/2024")) << "the voucher's own date is judged at the save";
    EXPECT_FALSE(p.escribir("txtfecha_doc", "31/02/2024"));
    EXPECT_EQ(p.mensajes(), Textos{"Fecha no válida"});
    EXPECT_TRUE(p.escribir("txtfecha_doc", "1/3/24"));
    EXPECT_EQ(p.f.txtfecha_doc.Text(), "01/03/2024");
    EXPECT_TRUE(p.escribir("txtnombre", "ñandú ltda."));
    EXPECT_EQ(p.f.txtnombre.Text(), "ñandú ltda.");
    p.comprobante("10");
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{"Fecha fuera del período de digitacion, Mínima:01/01/2024"});
    EXPECT_TRUE(p.f.mskF_comp.has_focus());
}

TEST(Consultas, EachReturnsWhatWasPickedAndNothingWhenCancelled) {
    Pantalla p;
    apoyo::ejecutar(*p.db,
                    "insert into ctcquorvel(empresa,f_comp,documento,num_docum,rut_persona,nombre,banco,"
                    "cuenta,estado) values (1,#03/05/2015#,'001','1','12.345.678-5 ','O''HIGGINS ','BCI "
                    "','77-1 ','P')");
    using Pedir = std::optional<Eleccion> (*)(ui::Escritorio&, clsConexion&);
    struct Caso {
        Pedir pedir;
        const char *codigo, *nombre;
    } const casos[] = {
        {elegir_cuenta_contable, "109001", "IVA CREDITO"}, {elegir_centro_costo, "101001", "GERENCIA"},
        {elegir_auxiliar, "000012", "JUAN PEREZ SOTO"},    {elegir_impuesto, "027", "BEBIDAS ANALCOHOLICAS"},
        {elegir_persona, "12.345.678-5", "O'HIGGINS"},     {elegir_cuenta, "BCI", "77-1"},
    };
    for (const Caso& c : casos) {
        p.escritorio.al_abrir([&](ui::Form& f) { elegir_fila(f, 0, c.codigo); });
        const auto elegido = c.pedir(p.escritorio, *p.db);
        ASSERT_TRUE(elegido) << c.codigo;
        EXPECT_EQ(elegido->codigo + "|" + elegido->nombre, std::string(c.codigo) + "|" + c.nombre);
        p.escritorio.al_abrir(
            [](ui::Form& f) { dynamic_cast<ui::ctlConsulta*>(f.find("ctlConsulta1"))->cancel(); });
        EXPECT_FALSE(c.pedir(p.escritorio, *p.db)) << c.codigo;
    }
}

// Goal: a code or a name is found by typing it, in whatever group it is. Method: letters into the open list.
TEST(Consultas, TypingFindsAcrossGroupsFirstMatchFirst) {
    Pantalla p;
    struct Caso {
        const char *tecleado, *codigo, *grupo;
    } const casos[] = {
        {"101002", "101002", "1"},    {"cli", "103001", "1"},        {"credito", "109001", "1"},
        {"2010", "201001", "2"},      {"honorarios", "204001", "2"}, {"VENTAS", "401001", "4"},
        {"generales", "501001", "5"}, {"ret", "204002", "2"},
    };
    for (const Caso& c : casos) {
        p.escritorio.al_abrir([&](ui::Form& f) {
            teclear(f, c.tecleado);
            EXPECT_FALSE(dynamic_cast<ui::ctlConsulta*>(f.find("ctlConsulta1"))->missed()) << c.tecleado;
            EXPECT_EQ(dynamic_cast<ui::ComboBox*>(f.find("cmbGcuenta"))->Text().substr(0, 1), c.grupo)
                << c.tecleado;
            ui::KeyEvent enter;
            enter.key = ui::Key::enter;
            f.send_key(enter);
        });
        const auto elegida = elegir_cuenta_contable(p.escritorio, *p.db);
        ASSERT_TRUE(elegida) << c.tecleado;
        EXPECT_EQ(elegida->codigo, c.codigo) << c.tecleado;
    }
    apoyo::ejecutar(*p.db, "update ctxaux_cod set tipo='PR' where tipo='CL'"); // the first type has nobody
    for (const auto& [tecleado, codigo] :
         {std::pair{"roble", "000013"}, {"76418", "000013"}, {"76.418", "000013"}, {"soto", "000012"}}) {
        p.escritorio.al_abrir([&, t = tecleado](ui::Form& f) {
            auto& tipos = dynamic_cast<ui::ComboBox&>(*f.find("cmbtipoaux"));
            EXPECT_EQ(tipos.ListIndex(), 0);
            EXPECT_TRUE(tipos.choose(0));
            EXPECT_TRUE(f.find("ctlConsulta1")->has_focus()) << "picked with the pointer";
            teclear(f, t);
            auto enter = ui::parse_key("enter");
            f.send_key(*enter);
        });
        const auto elegido = elegir_auxiliar(p.escritorio, *p.db);
        EXPECT_EQ(elegido ? elegido->codigo : "", codigo) << tecleado;
    }
    p.escritorio.al_abrir([&](ui::Form& f) {
        f.set_active(f.find("cmbtipoaux"));
        auto escape = ui::parse_key("escape");
        f.send_key(*escape);
    });
    EXPECT_FALSE(elegir_auxiliar(p.escritorio, *p.db));
    p.escritorio.al_abrir([&](ui::Form& f) {
        auto& lista = dynamic_cast<ui::ctlConsulta&>(*f.find("ctlConsulta1"));
        teclear(f, "banzzz");
        EXPECT_TRUE(lista.missed());
        EXPECT_EQ(lista.typed(), "banzzz");
        EXPECT_EQ(dynamic_cast<ui::ComboBox*>(f.find("cmbGcuenta"))->ListIndex(), 0) << "the group stays";
        for (int i = 0; i < 3; ++i) {
            ui::KeyEvent atras;
            atras.key = ui::Key::backspace;
            f.send_key(atras);
        }
        EXPECT_FALSE(lista.missed());
        EXPECT_EQ(lista.rows().at(static_cast<std::size_t>(lista.current())).at(0), "101002");
        lista.cancel();
    });
    EXPECT_FALSE(elegir_cuenta_contable(p.escritorio, *p.db));
}

TEST(Consultas, GroupsAndFiltersNarrowTheList) {
    Pantalla p;
    const auto lista = [](ui::Form& f) { return dynamic_cast<ui::ctlConsulta*>(f.find("ctlConsulta1")); };
    const auto filtro = [](ui::Form& f, const char* n) { return dynamic_cast<ui::ComboBox*>(f.find(n)); };
    p.escritorio.al_abrir([&](ui::Form& f) {
        EXPECT_EQ(lista(f)->SQL(),
                  "select * from ctmcentros  where activo='1' and g_cuenta='1' and len(centro)= 6");
        EXPECT_EQ(lista(f)->rows().size(), 6U);
        EXPECT_TRUE(filtro(f, "cmbGcuenta")->choose(4)); // 5 GASTOS
        EXPECT_EQ(lista(f)->rows().size(), 2U) << "the inactive account is not offered";
        lista(f)->cancel();
    });
    EXPECT_FALSE(elegir_cuenta_contable(p.escritorio, *p.db));

    apoyo::ejecutar(*p.db,
                    "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,libro,estado,ifrs,"
                    "num_ref,rut_persona) values (1,'01',#03/05/2015#,'001','1','VENTAS','X','0','900 ',"
                    "'12.345.678-5 ')");
    apoyo::ejecutar(*p.db,
                    "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,libro,estado,ifrs) "
                    "values (1,'01',#03/05/2015#,'002','1','COMPRAS','P','2')");
    p.escritorio.al_abrir([&](ui::Form& f) {
        EXPECT_EQ(lista(f)->rows().size(), 2U);
        filtro(f, "cmbEstado")->choose(3);
        filtro(f, "cmblibro")->choose(2);
        EXPECT_TRUE(lista(f)->SQL().ends_with(" and estado='X' and libro='VENTAS'")) << lista(f)->SQL();
        EXPECT_EQ(lista(f)->rows().size(), 1U);
        auto* ref = dynamic_cast<ui::TextBox*>(f.find("txtnum_ref"));
        ref->SetFocus();
        teclear(f, "900");
        auto* rut = dynamic_cast<ui::TextBox*>(f.find("txtrut_persona"));
        rut->SetFocus();
        teclear(f, "123456784");
        EXPECT_FALSE(lista(f)->SetFocus()) << "a wrong RUT keeps the focus";
        EXPECT_EQ(p.mensajes(), Textos{"El rut no es Válido"});
        EXPECT_EQ(rut->Text(), "");
        teclear(f, "123456785");
        EXPECT_TRUE(lista(f)->SetFocus());
        EXPECT_EQ(rut->Text(), "12.345.678-5");
        EXPECT_EQ(lista(f)->rows().size(), 1U) << "stored with a blank behind it";
        elegir_fila(f, 0, "05/03/2015");
    });
    const auto elegido = elegir_comprobante(p.escritorio, *p.db, "select * from ctcQuorvel where empresa=1");
    ASSERT_TRUE(elegido);
    EXPECT_EQ(elegido->f_comp + "|" + elegido->documento + "|" + elegido->num_docum, "03/05/2015|001|1");
    // Leaving without a choice never checks the boxes.
    p.escritorio.al_abrir([&](ui::Form& f) {
        dynamic_cast<ui::TextBox*>(f.find("txtrut_persona"))->SetFocus();
        teclear(f, "1");
        f.close_by_user();
    });
    EXPECT_FALSE(elegir_comprobante(p.escritorio, *p.db, "select * from ctcQuorvel where empresa=1"));
    EXPECT_EQ(p.mensajes(), Textos{});
}

TEST(Consultas, PersonComesIntoTheHeader) {
    Pantalla p;
    apoyo::ejecutar(*p.db,
                    "insert into ctcquorvel(empresa,f_comp,documento,num_docum,rut_persona,nombre) values "
                    "(1,#03/05/2015#,'001','1','12.345.678-5 ','O''HIGGINS ')");
    p.abrir();
    p.f.txtrut_persona.SetFocus();
    p.escritorio.al_abrir([](ui::Form& f) { elegir_fila(f, 0, "12.345.678-5"); });
    p.tecla("ctrl+y");
    EXPECT_EQ(p.f.txtrut_persona.Text() + "|" + p.f.txtnombre.Text(), "12.345.678-5|O'HIGGINS");
}

TEST(Adjuntos, FilesAreAttachedOpenedAndCopied) {
    Pantalla p;
    const fs::path origen = fs::path(p.carpeta) / "a b'ñ.pdf";
    escribir_archivo(origen, "uno");
    p.abrir();
    p.escritorio.elegir_archivo(std::nullopt);
    p.pulsar("cmdadjunto_agregar");
    const std::string base = p.db->Name();
    p.escritorio.elegir_archivo(base);
    p.pulsar("cmdadjunto_agregar");
    EXPECT_EQ(p.mensajes(),
              Textos{"El archivo " + base + " es de la base de datos que está abierta: elija otro"});
    EXPECT_EQ(p.f.lstadjunto.ListCount(), 0);
    p.escritorio.elegir_archivo(origen.string());
    p.pulsar("cmdadjunto_agregar");
    EXPECT_EQ(entradas(p.f.lstadjunto), Textos{"a b'ñ.pdf"});
    p.comprobante("1000");
    p.guardar();
    EXPECT_EQ(p.sql("select comprobante_adjunto,correlativo,nombre from ctdcomprad"), "1|1|a b'ñ.pdf");
    p.f.lstadjunto.SetListIndex(0);
    p.pulsar("cmdAbrir");
    ASSERT_EQ(p.escritorio.abiertos.size(), 1U);
    EXPECT_EQ(leer_archivo(p.escritorio.abiertos[0]), "uno");

    p.f.lstadjunto.SetListIndex(0);
    p.escritorio.elegir_archivo(p.carpeta + "/copia.pdf");
    p.f.lstadjunto.double_click();
    EXPECT_EQ(leer_archivo(p.carpeta + "/copia.pdf"), "uno");
    p.pulsar("cmdCopiar");
    EXPECT_EQ(p.f.gstrcomprobante_adjunto, "2") << "two vouchers never share a set";
    p.nuevo();
    EXPECT_EQ(p.f.gstrcomprobante_adjunto, "3");
}

TEST(Adjuntos, TheSameNameTwiceAsksBeforeItReplaces) {
    Pantalla p;
    p.abrir();
    const auto agregar = [&](const std::string& carpeta, const std::string& contenido) {
        escribir_archivo(p.carpeta + carpeta, contenido);
        p.escritorio.elegir_archivo(p.carpeta + carpeta);
        p.pulsar("cmdadjunto_agregar");
        return p.mensajes().size();
    };
    EXPECT_EQ(agregar("/x/f.pdf", "uno"), 0U);
    EXPECT_EQ(agregar("/y/f.pdf", "uno"), 0U) << "the same contents lose nothing";
    p.escritorio.responder(ui::Answer::no);
    EXPECT_EQ(agregar("/z/f.pdf", "dos"), 1U);
    EXPECT_EQ(entradas(p.f.lstadjunto), (Textos{"f.pdf", "f.pdf"}));
    p.f.lstadjunto.SetListIndex(0);
    p.pulsar("cmdAbrir");
    EXPECT_EQ(leer_archivo(p.escritorio.abiertos.at(0)), "uno");
    p.escritorio.responder(ui::Answer::yes);
    EXPECT_EQ(agregar("/z/f.pdf", "dos"), 1U);
    EXPECT_EQ(leer_archivo(p.escritorio.abiertos.at(0)), "dos");
    escribir_archivo(p.carpeta + "/malo\xff.pdf", "x");
    p.escritorio.elegir_archivo(p.carpeta + "/malo\xff.pdf");
    p.pulsar("cmdadjunto_agregar");
    EXPECT_EQ(p.mensajes(), Textos{"Nombre de archivo no válido"});
    EXPECT_EQ(p.f.lstadjunto.ListCount(), 3);
}
