// The load step and the activations of the voucher screen, in their fixed order.
#include "assistants/impuestos.h"
#include "assistants/libros.h"
#include "interchange/tablas_impresion.h"
#include "screen/anchos.h"
#include "screen/borrador.h"
#include "screen/campos.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "screen/maestro.h"
#include "screen/papeles/preparar.h"
#include "screen/permisos.h"
#include "screen/recargar_documentos.h"
#include "screen/registro/frmRegistro.h"
#include "voucher/listas.h"

#include <set>
#include <utility>

namespace quorvel {

namespace {

template <class Textos> void llenar(ui::ListControl& lista, const Textos& textos) {
    lista.Clear();
    for (const std::string_view texto : textos) lista.AddItem(std::string(texto));
}

void llenar(ui::ListControl& lista, clsConexion& db, const std::string& sql, const char* codigo,
            const char* nombre) {
    for (auto rs = db.NewRecord(sql); !rs->eof(); rs->MoveNext())
        lista.AddItem(campo(*rs, codigo) + " " + campo(*rs, nombre));
    if (lista.ListCount() > 0) lista.SetListIndex(0);
}

void mostrar_sesion(frmQuorvel& f) {
    const auto p = permisos(f.glbPermiso);
    for (int i = 0; i < 5; ++i) f.ctlRegistro1.SetFlag(i, p[static_cast<std::size_t>(i)]);
    f.ctlRegistro1.SetCompany(std::to_string(f.glbEmpresa) + " " + f.glbN_empresa);
    f.ctlRegistro1.SetUser(std::to_string(f.glbUsuario) + " " + f.glbN_usuario);
    f.ctlRegistro1.SetProgram(f.glbPrograma);
}

void cargar_configuracion(frmQuorvel& f) {
    f.config = leer_configuracion(*f.glbdb, f.glbEmpresa, f.servicios.reloj.hoy());
    f.gstriva = f.config.iva;
    f.gstrotros_impuestos = f.config.otros_impuestos;
    f.gstriva_compra = f.config.iva_compra;
    f.gstrotros_impuestos_compra = f.config.otros_impuestos_compra;
}

void cargar_maestros(frmQuorvel& f) {
    f.cmbcodigo_otro_impuesto.Clear();
    for (std::string& entrada : entradas_otro_impuesto(*f.glbdb))
        f.cmbcodigo_otro_impuesto.AddItem(std::move(entrada));
    recargar_documentos(f);
    f.cmbMoneda.Clear();
    llenar(f.cmbMoneda, *f.glbdb, CONSULTA_MONEDAS, "moneda", "n_moneda");
}

} // namespace

void recargar_documentos(frmQuorvel& f) {
    f.cmbDocumento.Clear();
    f.cmbDocumento.AddItem(NINGUNO);
    llenar(f.cmbDocumento, *f.glbdb, CONSULTA_DOCUMENTOS, "documento", "n_documento");
}

namespace {

void poner_al_dia(ui::ComboBox& lista, int fijas, const std::vector<std::string>& entradas) {
    const std::set<std::string> hay(entradas.begin(), entradas.end());
    std::set<std::string> estan;
    for (int i = lista.ListCount() - 1; i >= fijas; --i) {
        if (hay.contains(lista.List(i)) || i == lista.ListIndex())
            estan.insert(lista.List(i));
        else
            lista.RemoveItem(i);
    }
    for (const std::string& entrada : entradas)
        if (!estan.contains(entrada)) lista.AddItem(entrada);
}

} // namespace

void actualizar_listas(frmQuorvel& f) {
    f.estado.maestros_cambiados = true;
    std::vector<std::string> documentos;
    for (auto rs = f.glbdb->NewRecord(CONSULTA_DOCUMENTOS); !rs->eof(); rs->MoveNext())
        documentos.push_back(campo(*rs, "documento") + " " + campo(*rs, "n_documento"));
    poner_al_dia(f.cmbDocumento, 1, documentos); // "(Ninguno)" first
    poner_al_dia(f.cmbcodigo_otro_impuesto, 0, entradas_otro_impuesto(*f.glbdb));
}

void frmQuorvel::Form_Load() {
    atender([this] {
        registro.reset(); // its session may be another one now
        estado = {};
        estado.carga_fallida = true; // until its end is reached
        llenar(cmbdoc_libro, DOCUMENTOS_LIBRO);
        llenar(cmbcodigo_no_recuperable, NO_RECUPERABLES);
        llenar(cmbifrs, NORMAS);
        cmbifrs.SetListIndex(0);
        llenar(cmblibro, TEXTOS_LIBRO);
        mostrar_sesion(*this);
        glbBanderaNuevo = glbBanderaLeer = true;
        maestros.usar(*glbdb);
        // A configuration that cannot be read is reported; the screen opens with what was loaded before.
        cargar_configuracion(*this);
        cargar_maestros(*this);
        limpiar_para_nuevo(*this);
        asegurar_tablas(*this);
        estado.carga_fallida = false;
    });
}

void frmQuorvel::Form_Activate() {
    try {
        maestros.reabrir(*glbdb, estado.maestros_cambiados);
    } catch (const ErrorSesion&) { // one fault, one message
        if (!std::exchange(estado.carga_fallida, false)) throw;
        return;
    }
    estado.maestros_cambiados = false;
    grdDetalle.notes.forget(); // a lookup or another window may have renamed what they name
    if (!estado.primera_activacion) return;
    estado.primera_activacion = false;
    construir_columnas(*this);
    restaurar_anchos(grdDetalle, servicios.carpeta);
    restaurar_anchos_listas(escritorio(), servicios.carpeta);
    mskF_comp.SetDate(servicios.reloj.hoy());
}

void frmQuorvel::Form_Unload() {
    atender([this] {
        (void)borrador->retirar();
        if (glbdb) desbloquear_usuario(*this);
        if (glbdb && glbdbReport && ctlRegistro1.Flag(PERMISO_IMPRIMIR) && !misma_base(*glbdb, *glbdbReport))
            borrar_tablas_impresion(*glbdbReport);
        if (!estado.primera_activacion) {
            guardar_anchos(grdDetalle, servicios.carpeta);
            guardar_anchos_listas(escritorio(), servicios.carpeta);
        }
    });
    maestros = {}; // the host may close its sessions once the screen is gone
}

} // namespace quorvel
