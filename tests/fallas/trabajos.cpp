#include "fallas/trabajos.h"

#include "dbtools/esquema.h"
#include "dbtools/revisar.h"
#include "historia/comenzar.h"
#include "platform/files/attachments.h"
#include "screen/detalle/detalle.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace quorvel::fallas {

using pruebas::Pantalla;
namespace fs = std::filesystem;

namespace {

constexpr const char* GRABADO = "Comprobante Ingresado y Mayorizado";

void si(Pantalla& p) { p.escritorio.responder(ui::Answer::yes); }
void guardar(Pantalla& p) { p.guardar(); }
void abrir_primero(Pantalla& p) { p.buscar("1"); }

void preparar_nuevo(Pantalla& p) {
    p.comprobante("1.500");
    p.adjuntar("nuevo.txt");
}

void preparar_edicion(Pantalla& p) {
    p.buscar("1");
    p.escribir("txtconcepto", "Corregido");
    EXPECT_TRUE(p.celda(0, 3, "7.000") && p.celda(1, 4, "7.000"));
    EXPECT_TRUE(p.f.grdDetalle.move_to(2, 1));
    p.adjuntar("segundo.txt");
}

void cortar(Pantalla& p) {
    si(p);
    p.pulsar("cmdcortar");
}

void mover_de_fecha(Pantalla& p) {
    cortar(p);
    p.f.mskF_comp.SetText("20/06/2024");
    p.guardar();
}

void cheque(Pantalla& p) {
    llenar_dialogo(p, "mnucheque",
                   {{"txtcheque", "1040"},
                    {"txtfecha", "14/06/2024"},
                    {"txtbanco", "BCI"},
                    {"txtCuenta", "77"},
                    {"txtbeneficiario", "PEDRO"}});
}

void factura(Pantalla& p) {
    llenar_dialogo(p, "mnuFactura",
                   {{"txtruc", "76.418.352-5"},
                    {"txtnombre", "FERRETERIA"},
                    {"txtfactura", "501"},
                    {"txtfecha", "14/06/2024"},
                    {"txtNeto", "300"}},
                   {"1\tclavos\t2\t100\t200", "2\tmartillo\t1\t100\t100"});
}

void generar_cierre(Pantalla& p) {
    si(p);
    p.pulsar("mnuGenerarCierre");
    p.elegir("cmblibro", "CONTABLES");
}

void preparar_anio(Pantalla& p) {
    generar_cierre(p);
    p.guardar();
    EXPECT_EQ(ultimo_aviso(p), GRABADO);
}

void preparar_archivo(Pantalla& p) {
    p.buscar("1");
    p.escritorio.elegir_archivo(p.carpeta + "/uno.csv");
    p.pulsar("mnuexportar");
    p.nuevo();
    (void)p.mensajes();
}

void importar(Pantalla& p) {
    p.escritorio.elegir_archivo(p.carpeta + "/uno.csv");
    p.pulsar("mnuImportar");
    p.f.mskF_comp.SetText("21/06/2024");
    p.guardar();
}

void pulsar_con_si(Pantalla& p, const char* menu) {
    si(p);
    p.pulsar(menu);
}

} // namespace

const std::vector<Trabajo> TRABAJOS = {
    {"grabar_nuevo", preparar_nuevo, guardar, GRABADO},
    {"grabar_de_nuevo", preparar_edicion, guardar, GRABADO},
    {"anular", abrir_primero, [](Pantalla& p) { pulsar_con_si(p, "mnuAnular"); }, "Comprobante Anulado"},
    {"eliminar", abrir_primero, [](Pantalla& p) { pulsar_con_si(p, "mnuEliminar"); }, ""},
    {"cortar", abrir_primero, cortar, ""},
    {"cortar_y_grabar", abrir_primero, mover_de_fecha, GRABADO, 2},
    {"cheque", abrir_primero, cheque, "Cheque Grabado"},
    {"factura", abrir_primero, factura, ""},
    {"cierre", generar_cierre, guardar, GRABADO},
    {"cerrar_anio", preparar_anio, [](Pantalla& p) { pulsar_con_si(p, "mnuCerrarAnio"); },
     "Cierre Anual de 2024 Completado con éxito", 3},
    {"importar", preparar_archivo, importar, GRABADO},
};

void llenar_dialogo(Pantalla& p, const char* menu, const Cajas& cajas,
                    const std::vector<std::string>& filas) {
    p.escritorio.al_abrir([cajas, filas](ui::Form& forma) {
        for (const auto& [caja, texto] : cajas) dynamic_cast<ui::TextBox&>(*forma.find(caja)).SetText(texto);
        if (auto* const grilla = dynamic_cast<ui::ctlPlanilla*>(forma.find("grdfac"))) {
            grilla->Clear();
            grilla->AddItems(filas);
        }
        for (const char* boton : {"cmdaceptar", "cmdcancelar"})
            dynamic_cast<ui::CommandButton&>(*forma.find(boton)).press();
    });
    p.pulsar(menu);
}

void sembrar(const Escena& e) {
    dbtools::crear_esquema(e.conexion);
    sembrar_empresa(*abrir_sesion(e.conexion));
    Pantalla p(e.conexion, e.carpeta, 1);
    p.abrir();
    for (const char* saldo :
         {"ctmsdcenth(empresa,anio,centro,debe6) values (1,2024,'1',1000)",
          "ctmsdcenth(empresa,anio,centro,debe6) values (1,2024,'101',1000)",
          "ctmsdcenth(empresa,anio,centro,debe6) values (1,2024,'101001',1000)",
          "ctmsdmayor(empresa,anio,centro,auxiliar,debe6) values (1,2024,'101001','000012',1000)"})
        apoyo::ejecutar(*p.db, std::string("insert into ") + saldo);
    apoyo::ejecutar(*p.db, "update ctmconfigu set elaborado='Ana'");
    p.comprobante("1.000");
    p.adjuntar("recibo.txt");
    p.guardar();
    p.nuevo(); // the gloss and the book stay
    p.elegir("cmbDocumento", "001 TRASPASO");
    EXPECT_TRUE(p.celda(0, 1, "103001") && p.celda(0, 2, "000012") && p.celda(0, 3, "5.000"));
    EXPECT_TRUE(p.f.grdDetalle.move_to(1, 1) && p.celda(1, 1, "401001") && p.f.grdDetalle.move_to(2, 1));
    p.guardar();
    EXPECT_EQ(p.mensajes(), (std::vector<std::string>{GRABADO, GRABADO}));
}

Escena escena(apoyo::Motor motor) {
    static std::map<apoyo::Motor, Escena> modelos;
    Escena& modelo = modelos[motor];
    if (modelo.conexion.empty()) {
        modelo = {apoyo::conexion_nueva(motor), apoyo::carpeta_nueva()};
        sembrar(modelo);
        comenzar_historia(*abrir_sesion(modelo.conexion), 1, 1);
    }
    return con_archivos(modelo, apoyo::copia_de(modelo.conexion));
}

Escena con_archivos(const Escena& modelo, const std::string& conexion) {
    const Escena copia{conexion, apoyo::carpeta_nueva()};
    fs::copy(modelo.carpeta, copia.carpeta, fs::copy_options::recursive);
    const fs::path archivos = fs::path(copia.carpeta) / "adjunto"; // a folder per database
    fs::rename(archivos / attachment_database(modelo.conexion),
               archivos / attachment_database(copia.conexion));
    return copia;
}

std::string ultimo_aviso(Pantalla& p) {
    std::string ultimo;
    const std::size_t nuevos = p.mensajes().size();
    const auto& todos = p.escritorio.mensajes;
    for (std::size_t i = todos.size() - nuevos; i < todos.size(); ++i)
        if (todos[i].buttons == ui::Buttons::ok) ultimo = todos[i].text;
    return ultimo;
}

std::string huella(clsConexion& db) {
    std::string todo;
    for (const char* consulta :
         {"empresa,subsistema,f_comp,documento,num_docum,moneda,t_debe,t_haber,concepto,usuario,"
          "f_ult_modificacion,cotizacion,estado,libro,doc_libro,num_ref,comprobante_adjunto,nro_correlativo,"
          "cheque,banco,cuenta,fecha_cheque,beneficiario from ctcquorvel order by empresa,f_comp,documento,"
          "num_docum",
          "* from ctdquorvel order by empresa,f_comp,documento,num_docum,secuencia",
          "* from ctdcomprad order by correlativo", "* from adxemp_doc order by documento",
          "* from ctmconfigu order by anio", "* from ctmsdcenth order by centro",
          "* from ctmsdmayor order by centro,auxiliar", "* from ftcfactura order by factura",
          "* from ftdfactura order by factura,producto", "* from admpersona order by persona"})
        todo += apoyo::filas(db, std::string("select ") + consulta) + "\n";
    return todo;
}

std::string revision(const Escena& e) {
    std::string texto;
    for (const std::string& hallazgo : dbtools::revisar(e.conexion, e.carpeta)) texto += hallazgo + "\n";
    return texto;
}

std::string en_pantalla(const Pantalla& p) {
    const frmQuorvel& f = p.f;
    std::string t;
    for (const ui::TextBox* caja : {&f.txtNum_doc, static_cast<const ui::TextBox*>(&f.mskF_comp),
                                    &f.txtconcepto, &f.txtnro_correlativo, &f.txtnum_ref, &f.txtnombre})
        t += caja->Text() + "|";
    t += f.cmbDocumento.Text() + "|" + f.cmblibro.Text() + "|" + p.totales();
    for (int i = 0; i < f.grdDetalle.Rows(); ++i) t += ";" + p.fila(i);
    for (int i = 0; i < f.lstadjunto.ListCount(); ++i) t += ";" + f.lstadjunto.List(i);
    return t;
}

} // namespace quorvel::fallas
