#include "screen/frmQuorvel.h"

#include "screen/adjuntos/adjuntos.h"
#include "screen/aviso.h"
#include "screen/calculadora.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/consultas/consultas.h"
#include "screen/detalle/detalle.h"
#include "screen/detalle/nombres_codigos.h"
#include "screen/persona.h"
#include "screen/recorrido.h"
#include "screen/registro/documento_electronico.h"
#include "screen/registro/frmRegistro.h"
#include "text/numeros.h"
#include "voucher/cargar.h"

namespace quorvel {

namespace {
using F = ui::ctlRegistro::Function;
constexpr std::pair<ui::Key, F> TECLAS[] = {
    {ui::Key::f2, F::New},   {ui::Key::f5, F::Save},   {ui::Key::f8, F::DeleteLine},
    {ui::Key::f6, F::Print}, {ui::Key::f3, F::Search},
};

/// Ctrl+N is for the lines of the grid, where F2 opens the cell.
void tecla_de_la_barra(frmQuorvel& f, ui::KeyEvent& e) {
    if (e.shift || e.alt || e.handled) return;
    const bool ctrl_n = e.ctrl && (e.ch == U'n' || e.ch == U'N');
    for (const auto& [tecla, funcion] : TECLAS) {
        if (ctrl_n ? funcion != F::New : e.ctrl || e.key != tecla) continue;
        e.handled = true;
        f.ctlRegistro1.press(funcion);
    }
}
} // namespace

frmQuorvel::frmQuorvel(Servicios s) : Form(s.escritorio, "frmQuorvel", "Comprobante Contable"), servicios(s) {
    borrador = std::make_unique<Borrador>(*this); // what is said about the screen depends on it
    conectar_comandos();
    conectar_campos();
    conectar_detalle();
    if (servicios.propio) nombres = std::make_unique<NombresCodigos>(*this);
}

frmQuorvel::~frmQuorvel() = default;

void frmQuorvel::Form_FileDropped(const std::string& archivo) { recibir_documento(*this, archivo); }

void frmQuorvel::SetglbTipoImpresora(const std::string& tipo) {
    Load();
    ctlRegistro1.SetPrinter(tipo);
}

void frmQuorvel::conectar_comandos() {
    using Comando = void (*)(frmQuorvel&);
    const auto en = [this](ui::Event<>& evento, Comando comando) {
        evento += [this, comando] { atender([&] { comando(*this); }); };
    };
    en(ctlRegistro1.New, nuevo);
    en(ctlRegistro1.Save, guardar);
    en(ctlRegistro1.DeleteLine, borrar_linea);
    en(ctlRegistro1.Print, imprimir);
    en(ctlRegistro1.Search, buscar);
    en(ctlRegistro1.Exit, salir);
    const std::pair<ui::MenuItem*, Comando> menus[] = {
        {&mnuAnular, anular},
        {&mnuEliminar, eliminar},
        {&mnuGenerarCierre, generar_cierre},
        {&mnuCerrarAnio, cerrar_anio},
        {&mnuApertura, apertura},
        {&mnuAperturaDoc, apertura_doc},
        {&mnuImportar, importar_csv},
        {&mnuexportar, exportar_csv},
        {&mnuSalir, salir},
        {&mnuventa, asistente_venta},
        {&mnucompra, asistente_compra},
        {&mnuretencion, asistente_retencion},
        {&mnuFactura, factura},
        {&mnucheque, cheque},
        {&mnudoc_egreso, doc_egreso},
        {&mnudescuadrado, descuadrados},
    };
    for (const auto& [menu, comando] : menus) en(menu->Click, comando);
    const std::pair<ui::CommandButton*, Comando> botones[] = {
        {&cmdasistente, asistente},
        {&cmdcortar, cortar},
        {&cmdCopiar, copiar},
        {&cmdrut_persona, buscar_persona},
        {&cmdadjunto_agregar, adjunto_agregar},
        {&cmdadjunto_eliminar, adjunto_eliminar},
        {&cmdAbrir, adjunto_abrir},
        {&cmdigual, calcular},
        {&cmdlimpiar, limpiar_calculadora},
    };
    for (const auto& [boton, comando] : botones) en(boton->Click, comando);
    en(lstadjunto.DblClick, adjunto_guardar_copia);
    const std::pair<ui::CommandButton*, const char*> teclas[] = {
        {&cmdasistente, "f4"},
        {&cmdcortar, "ctrl+shift+x"},
        {&cmdCopiar, "ctrl+shift+c"},
        {&cmdadjunto_agregar, "ctrl+shift+a"},
        {&cmdadjunto_eliminar, "ctrl+shift+delete"},
        {&cmdAbrir, "ctrl+shift+o"},
        {&cmdlimpiar, "ctrl+shift+l"},
    };
    for (const auto& [boton, tecla] : teclas) boton->SetShortcut(tecla);
    const auto orden = [this](const char* texto, const char* tecla, Comando comando) {
        grdDetalle.AddCommand({texto, tecla, [this, comando] { atender([&] { comando(*this); }); }});
    };
    orden("Proponer la diferencia", "f7", proponer_diferencia);
    orden("Explicar la diferencia", "f9", explicar_diferencia);
    orden("Ir al detalle", "f12", ir_al_detalle);
    orden("Duplicar la línea", "ctrl+shift+d", duplicar_linea);
    orden("Esta glosa en todas las líneas", "ctrl+g", glosa_en_todas);
    orden("Repetir en el mes siguiente", "ctrl+m", repetir_mes);
    lstadjunto.AddCommand(
        {"Guardar una copia", "ctrl+shift+g", [this] { atender([&] { adjunto_guardar_copia(*this); }); }});
    txtnumero.AddCommand({"Calculadora", "f11", [this] { txtnumero.SetFocus(); }});
}

void frmQuorvel::conectar_campos() {
    cmbDocumento.Click += [this] { atender([&] { proponer_numero_documento(*this); }); };
    cmblibro.Click += [this] { atender([&] { proponer_correlativo_libro(*this); }); };
    cmblibro.Changed += [this] { fijar_paradas(*this); };
    Settled += [this] { avisar_estado(*this); };
    txtrut_persona.LeftChanged += [this](bool&) { atender([&] { rut_dejado(*this); }); };
    txtrut_persona.KeyDown += [this](ui::KeyEvent& e) { tecla_persona(*this, e); };
    txtnumero.KeyDown += [this](ui::KeyEvent& e) {
        if (e.key != ui::Key::enter) return;
        e.handled = true;
        atender([&] { calcular(*this); });
    };
    txtfecha_doc.SetRefusesInvalid(true);
    txtfecha_pago.SetRefusesInvalid(true);
    for (ui::TextBox* caja :
         {&txtCotizacion, &txtiva_activo_fijo, &txttasa_impuesto_otro, &txtnumero, &txtresultado1})
        caja->SetRightAligned(true);
    for (ui::ctlCalendario* caja : {&mskF_comp, &txtfecha_doc, &txtfecha_pago})
        caja->SetClock(servicios.reloj);
    fijar_paradas(*this);
    txtresultado1.SetLocked(true);
    txtresultado2.SetLocked(true);
}

void frmQuorvel::conectar_detalle() {
    ui::ctlPlanilla& g = grdDetalle;
    g.SetEnterColumns(CUENTA, GLOSA);
    g.KeyPress += [this](int& tecla) { atender([&] { tecla_detalle(*this, tecla); }); };
    g.TextEntering += [this](ui::Entry& e) { atender([&] { texto_entra(*this, e); }); };
    g.ButtonClick += [this](int col) { atender([&] { boton_detalle(*this, col); }); };
    g.BeforeColEdit += [this](int col, bool& no) { atender([&] { antes_de_editar(*this, col, no); }); };
    g.BeforeColUpdate += [this](int col, const std::string& anterior, bool& no) {
        atender([&] { antes_de_actualizar(*this, col, anterior, no); });
    };
    g.AfterColUpdate += [this](int col) { atender([&] { despues_de_actualizar(*this, col); }); };
    g.BeforeDelete += [this](bool& no) { atender([&] { antes_de_borrar(*this, no); }); };
    g.RowsChanged += [this] { RecalcularTotales(); };
    g.RowColChange += [this](int, int) { atender([&] { celda_movida(*this); }); };
}

void frmQuorvel::Form_KeyDown(ui::KeyEvent& e) {
    tecla_recuperar(*this, e);
    tecla_de_la_barra(*this, e);
}

std::string frmQuorvel::formato(double v, std::string_view patron, bool bcero) const {
    return quorvel::formato(v, patron, bcero);
}
double frmQuorvel::valnumerobase(std::string_view t) const { return quorvel::valnumerobase(t); }
double frmQuorvel::valnumeroformato(std::string_view t) const { return quorvel::valnumeroformato(t); }
std::string frmQuorvel::req_aux(const std::string& cuenta) const { return quorvel::req_aux(*glbdb, cuenta); }

std::string frmQuorvel::NumeroAdjunto() {
    const auto clave = clave_pantalla(*this);
    return numero_adjunto(*glbdb, clave);
}

void frmQuorvel::CargarAdjuntos() {
    lstadjunto.Clear();
    for (const std::string& nombre : leer_adjuntos(*glbdb, gstrcomprobante_adjunto))
        lstadjunto.AddItem(nombre);
}

} // namespace quorvel
