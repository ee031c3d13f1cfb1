// Goal: papers and the voucher file from the voucher screen. Method: menus, dialogs and files of a person.
#include "apoyo/pantalla.h"
#include "interchange/archivo_comprobante.h"
#include "screen/papeles/frmImprimir.h"
#include "screen/papeles/frmcheque.h"
#include "screen/papeles/frmfactura.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace quorvel;
using namespace quorvel::pruebas;
using Textos = std::vector<std::string>;
namespace fs = std::filesystem;

namespace {

constexpr const char* GRABADO = "Comprobante Ingresado y Mayorizado";

/// A screen with one saved voucher on it.
struct ConComprobante : Pantalla {
    ConComprobante() {
        abrir();
        comprobante("1234567");
        f.txtnombre.SetText("CÍA. O'HIGGINS");
        f.txtnum_ref.SetText("4512");
        f.txtfecha_doc.SetText("04/03/2024");
        guardar();
        EXPECT_EQ(mensajes(), Textos{GRABADO});
    }
};
void elegir_impresion(Pantalla& p, bool aceptar, bool impresora) {
    p.escritorio.al_abrir([=](ui::Form& forma) {
        auto& d = dynamic_cast<frmImprimir&>(forma);
        (impresora ? d.optImprimir : d.optPantalla).press();
        (aceptar ? d.cmdOK : d.cmdCancel).press();
    });
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Print);
}

} // namespace

TEST(Intercambio, PrintStagesTheSavedVoucherAndRunsItsReport) {
    ConComprobante p;
    elegir_impresion(p, false, true);
    EXPECT_TRUE(p.impresor.trabajos.empty());
    EXPECT_EQ(apoyo::filas(*p.reporte, "select count(*) from ctcQuorvel"), "0")
        << "cancelling stages nothing";
    elegir_impresion(p, true, false);
    EXPECT_EQ(p.impresor.trabajos, Textos{"LctcQuorvel.rpt"}) << "the printer type stands in front";
    EXPECT_FALSE(p.f.rptReporte.ToPrinter);
    EXPECT_EQ(apoyo::filas(*p.reporte,
                           "select secuencia,empresa,usuario,documento,num_doc,f_comp,cuenta,n_cuenta "
                           "from ctcQuorvel where secuencia>0 order by secuencia"),
              "1|1 Empresa de Prueba Ltda.|1 ANA ROJAS|001 TRASPASO|1|2024-06-15|101001|CAJA;"
              "2|1 Empresa de Prueba Ltda.|1 ANA ROJAS|001 TRASPASO|1|2024-06-15|301001|CAPITAL");
    EXPECT_EQ(
        apoyo::filas(*p.reporte, "select elaborado,revisado,aprobado from ctcQuorvel where secuencia=1"),
        "Elaborado|Revisado|Aprobado");
    elegir_impresion(p, true, true);
    EXPECT_TRUE(p.f.rptReporte.ToPrinter);
    EXPECT_EQ(p.mensajes(), Textos{});
    for (const std::string& archivo : {p.carpeta + "/x.pdf", std::string()}) {
        p.escritorio.elegir_archivo(archivo.empty() ? std::optional<std::string>() : archivo);
        p.escritorio.al_abrir([](ui::Form& forma) {
            auto& d = dynamic_cast<frmImprimir&>(forma);
            d.optPdf.press();
            d.cmdOK.press();
        });
        p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Print);
    }
    EXPECT_EQ(p.escritorio.archivos.front().name, "1 Empresa de Prueba Ltda. 001 TRASPASO 1.pdf");
    EXPECT_EQ(p.impresor.trabajos.back(), "LctcQuorvel.rpt" + p.carpeta + "/x.pdf");
    EXPECT_EQ(p.impresor.trabajos.size(), 3U) << "no file chosen, no paper";
    EXPECT_EQ(p.mensajes(), Textos{"PDF guardado en " + p.carpeta + "/x.pdf"});
    EXPECT_EQ(p.escritorio.ocupado, 0);
}

TEST(Intercambio, NewVouchersHaveNoPapers) {
    Pantalla p;
    p.abrir();
    for (const char* menu : {"mnucheque", "mnuFactura", "mnuexportar"}) p.pulsar(menu);
    EXPECT_EQ(p.mensajes(), (Textos{"Debe grabar el comprobante antes de imprimir la factura",
                                    "Debe grabar el comprobante antes de imprimir la factura",
                                    "Debe grabar el comprobante antes de exportarlo"}));
    EXPECT_TRUE(p.escritorio.formas_abiertas.size() == 1 || p.escritorio.archivos.empty());
}

TEST(Intercambio, ChequeAndInvoiceGetTheVouchersData) {
    ConComprobante p;
    for (const char* tabla : {"ctcQuorvel", "ctccheque", "ctcfactura"}) // as another window does on leaving
        apoyo::ejecutar(*p.reporte, std::string("drop table ") + tabla);
    p.escritorio.al_abrir([&](ui::Form& forma) {
        auto& c = dynamic_cast<frmcheque&>(forma);
        EXPECT_EQ(c.txtbeneficiario.Text() + "|" + c.txtfecha.Text() + "|" + c.txtcheque.Text() + "|" +
                      c.txttotal.Text(),
                  "CÍA. O'HIGGINS|04/03/2024|4512|1.234.567");
        c.cmdaceptar.press();
        c.cmdcancelar.press();
    });
    p.pulsar("mnucheque");
    EXPECT_EQ(p.mensajes(), Textos{"Cheque Grabado"});
    EXPECT_EQ(p.sql("select cheque,beneficiario from ctcquorvel"), "4512|CÍA. O'HIGGINS");
    EXPECT_EQ(apoyo::filas(*p.reporte, "select count(*) from ctcQuorvel"), "3")
        << "the lines are staged as well";
    p.escritorio.al_abrir([&](ui::Form& forma) {
        auto& x = dynamic_cast<frmfactura&>(forma);
        EXPECT_EQ(x.txtNeto.Text() + "|" + x.txttotal.Text() + "|" + x.txtfactura.Text(), "0|1.234.567|4512");
        x.cmdcancelar.press();
    });
    p.pulsar("mnuFactura");
    EXPECT_EQ(p.mensajes(), Textos{});
    apoyo::ejecutar(*p.reporte, "alter table ctcQuorvel rename column hora to h");
    p.escritorio.al_abrir([&](ui::Form& forma) { dynamic_cast<frmcheque&>(forma).cmdcancelar.press(); });
    p.pulsar("mnucheque"); // what cannot be staged is told, and the cheque can be written all the same
    EXPECT_EQ(p.mensajes().size(), 1U);
}

TEST(Intercambio, ExportedVoucherComesBackAsANewOne) {
    ConComprobante p;
    const std::string archivo = p.carpeta + "/ida y vuelta.csv";
    p.escritorio.elegir_archivo(archivo);
    p.pulsar("mnuexportar");
    EXPECT_EQ(p.mensajes(), Textos{"Comprobante exportado al archivo " + archivo});
    const ui::FileRequest pedido = p.escritorio.archivos.back();
    EXPECT_EQ(pedido.title + "|" + pedido.filter + "|" + pedido.name,
              "Exportar comprobante a archivo formato CSV|*.csv|1.csv");
    EXPECT_TRUE(pedido.save);
    p.nuevo();
    p.escritorio.elegir_archivo(archivo);
    p.pulsar("mnuImportar");
    EXPECT_EQ(p.mensajes(), Textos{});
    EXPECT_TRUE(p.f.glbBanderaNuevo);
    EXPECT_EQ(p.f.cmbDocumento.Text() + "|" + p.f.txtNum_doc.Text() + "|" + p.f.cmblibro.Text(),
              "001 TRASPASO|1|CONTABLES");
    EXPECT_EQ(p.f.mskF_comp.Text() + "|" + p.f.txtnombre.Text() + "|" + p.f.txtnum_ref.Text() + "|" +
                  p.f.txtfecha_doc.Text(),
              "15/06/2024|CÍA. O'HIGGINS|4512|04/03/2024");
    EXPECT_EQ(p.totales(), "1.234.567|1.234.567");
    EXPECT_EQ(p.fila(0), "101001||1.234.567||Aporte de capital");
    p.guardar(); // the number is taken
    EXPECT_EQ(p.sql("select count(*) from ctcquorvel"), "1");
    EXPECT_EQ(p.mensajes().size(), 1U);
    p.escribir("txtNum_doc", "77");
    p.guardar();
    EXPECT_EQ(p.mensajes(), Textos{GRABADO});
    EXPECT_EQ(p.sql("select num_docum,t_debe from ctcquorvel order by num_docum"), "1|1234567;77|1234567");
}

TEST(IntercambioServidor, AWrongReportDatabaseLosesNothing) {
    using apoyo::Motor;
    const auto aparte = apoyo::crear_base(Motor::postgres);
    const auto vacia = abrir_sesion(apoyo::conexion_nueva(Motor::postgres));
    struct Caso {
        Motor motor;
        clsConexion* reporte; ///< nullptr: the main session itself
        const char* mensaje;
    } const casos[] = {
        {Motor::sqlite, nullptr, "La base de informes es la misma base contable"},
        {Motor::postgres, nullptr, "La base de informes es la misma base contable"},
        {Motor::sqlite, aparte.get(),
         "La base de informes debe ser un archivo llamado print.db y no un servidor"},
        {Motor::postgres, vacia.get(),
         "La base de informes debe ser un archivo llamado print.db y no un servidor"},
    };
    for (const auto& c : casos) {
        Pantalla p(c.motor);
        p.abrir();
        p.f.glbdbReport = c.reporte != nullptr ? c.reporte : p.db.get();
        p.comprobante("1000");
        p.guardar();
        (void)p.mensajes();
        elegir_impresion(p, true, false);
        p.escritorio.al_abrir([&](ui::Form& forma) {
            auto& x = dynamic_cast<frmcheque&>(forma);
            x.cmdprueba.press();
            x.cmdcancelar.press();
        });
        p.pulsar("mnucheque");
        p.f.Unload();
        const Textos dichos = p.mensajes();
        ASSERT_EQ(dichos.size(), 2U);
        for (const std::string& m : dichos) EXPECT_EQ(m.rfind(c.mensaje, 0), 0U) << m;
        EXPECT_TRUE(p.impresor.trabajos.empty());
        EXPECT_EQ(p.sql("select count(*) from ctcquorvel"), "1");
    }
}

TEST(Intercambio, UnreadableFilesLeaveTheScreen) {
    ConComprobante p;
    const std::string roto = p.carpeta + "/roto.csv", otro = p.carpeta + "/otro.csv";
    escribir_archivo(roto, "empresa;f_comp\r\n1;2;3\r\n");
    escribir_archivo(otro, "Empresa;f_comp\r\n");
    p.escritorio.elegir_archivo(std::nullopt);
    p.pulsar("mnuImportar");
    p.escritorio.elegir_archivo(p.carpeta + "/falta.csv");
    p.pulsar("mnuImportar");
    p.escritorio.elegir_archivo(roto);
    p.pulsar("mnuImportar");
    EXPECT_EQ(p.mensajes(),
              (Textos{"No se puede abrir el archivo " + p.carpeta + "/falta.csv: No such file or directory",
                      "Línea 2: tiene 3 campos y deben ser 23"}));
    EXPECT_FALSE(p.f.glbBanderaNuevo);
    EXPECT_EQ(p.totales() + "|" + std::to_string(p.f.grdDetalle.Rows()), "1.234.567|1.234.567|2");
    p.f.txtconcepto.SetText("Łódź");
    p.escritorio.elegir_archivo(p.carpeta + "/no.csv");
    p.pulsar("mnuexportar");
    ASSERT_EQ(p.mensajes().size(), 1U);
    EXPECT_FALSE(fs::exists(p.carpeta + "/no.csv"));
    p.escritorio.elegir_archivo(otro);
    p.pulsar("mnuImportar");
    EXPECT_TRUE(p.f.glbBanderaNuevo);
    EXPECT_EQ(p.f.grdDetalle.Rows(), 0);
    EXPECT_EQ(p.mensajes(), Textos{});
}
