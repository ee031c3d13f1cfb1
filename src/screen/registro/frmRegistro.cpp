#include "screen/registro/frmRegistro.h"

#include "interchange/archivo_comprobante.h"
#include "screen/abrir.h"
#include "screen/frmQuorvel.h"
#include "screen/maestro.h"
#include "screen/papeles/ocupado.h"
#include "screen/registro/frmContrapartes.h"
#include "screen/registro/llenar.h"
#include "screen/registro/renglones.h"
#include "voucher/listas.h"

#include <algorithm>

namespace quorvel {

using namespace registro;

namespace {

constexpr const char* HABITUAL = "(El último usado)";
constexpr const char* MARCADOS = "Marcados";

struct ConTecla {
    ui::CommandButton frmRegistro::*boton;
    const char *tecla, *que;
    void (frmRegistro::*hacer)();
};
constexpr ConTecla BOTONES[] = {
    {&frmRegistro::cmdArchivo, "ctrl+o", "Agrega un archivo del registro (Ctrl+O)",
     &frmRegistro::cmdArchivo_Click},
    {&frmRegistro::cmdQuitar, "ctrl+l", "Vacía la bandeja; los libros quedan como están (Ctrl+L)",
     &frmRegistro::cmdQuitar_Click},
    {&frmRegistro::cmdMarcar, "ctrl+a", "Marca todos los documentos nuevos del registro (Ctrl+A)",
     &frmRegistro::cmdMarcar_Click},
    {&frmRegistro::cmdContrapartes, "f4",
     "Cuenta y auxiliar de las contrapartes marcadas que no los tienen (F4)",
     &frmRegistro::cmdContrapartes_Click},
    {&frmRegistro::cmdContabilizar, "f8", "Graba un comprobante por cada documento marcado (F8)",
     &frmRegistro::cmdContabilizar_Click},
    {&frmRegistro::cmdVer, "", "Abre el comprobante, o llena la pantalla con el documento nuevo (Enter)",
     &frmRegistro::cmdVer_Click},
    {&frmRegistro::cmdActualizar, "f5", "Compara otra vez con los libros (F5)",
     &frmRegistro::cmdActualizar_Click},
};

} // namespace

frmRegistro::frmRegistro(frmQuorvel& pantalla)
    : Form(pantalla.escritorio(), "frmRegistro", "Registro de compras y ventas"), pantalla_(pantalla) {
    for (const ConTecla& b : BOTONES) {
        ui::CommandButton& boton = this->*b.boton;
        boton.SetShortcut(b.tecla);
        boton.SetToolTip(b.que);
        boton.Click += [this, hacer = b.hacer] {
            atender([&] { (this->*hacer)(); });
            if (visible() && grdRegistro.Rows() > 0)
                (void)grdRegistro.SetFocus(); // where the next key counts
        };
    }
    preparar_columnas();
    conectar();
}

frmRegistro::~frmRegistro() { Unload(); }

void frmRegistro::conectar() {
    cmdcerrar.Click += [this] { Hide(); };
    txtMes.LeftChanged += [this](bool& no) { atender([&] { txtMes_LeftChanged(no); }); };
    cmbDocumento.Click += [this] { atender([this] { cmbDocumento_Click(); }); };
    cmbVer.Click += [this] {
        if (mostrando_) return;
        causa_ = nullptr;
        atender([this] { mostrar_filas(); });
    };
    grdRegistro.AddCommand(
        {"Marcar o desmarcar", "ctrl+m", [this] { atender([this] { alternar_marca(); }); }});
    grdRegistro.KeyDown += [this](ui::KeyEvent& e) { atender([&] { grdRegistro_KeyDown(e); }); };
    grdRegistro.RowColChange += [this](int, int) { mostrar_detalle(); };
    grdPrueba.KeyDown += [this](ui::KeyEvent& e) { atender([&] { grdPrueba_KeyDown(e); }); };
}

void frmRegistro::preparar_columnas() {
    preparar_columnas_registro(grdRegistro);
    preparar_columnas_prueba(grdPrueba);
    grdRegistro.SetLocked(true);
    grdPrueba.SetLocked(true);
    grdRegistro.SetToolTip(
        "Abra los archivos del registro de un mes con Ctrl+O: compras (registro, pendiente, no "
        "incluir, reclamado) y ventas");
}

void frmRegistro::abrir() {
    ShowModal();
    if (const auto hacer = std::exchange(al_salir_, nullptr)) pantalla_.atender(hacer);
}

Bandeja& frmRegistro::bandeja() {
    if (!bandeja_)
        bandeja_ = std::make_unique<Bandeja>(*pantalla_.glbdb, pantalla_.glbEmpresa, pantalla_.glbUsuario,
                                             pantalla_.servicios.reloj.hoy());
    return *bandeja_;
}

void frmRegistro::Form_Load() {
    mostrando_ = true;
    cmbDocumento.AddItem(HABITUAL);
    for (auto rs = pantalla_.glbdb->NewRecord(CONSULTA_DOCUMENTOS); !rs->eof(); rs->MoveNext())
        cmbDocumento.AddItem(campo(*rs, "documento") + " " + campo(*rs, "n_documento"));
    cmbDocumento.SetListIndex(0);
    cmbVer.AddItem(TODOS);
    for (std::size_t i = 0; i < ESTADOS_FILA; ++i) cmbVer.AddItem(texto(static_cast<Estado>(i)));
    cmbVer.AddItem(MARCADOS);
    cmbVer.SetListIndex(0);
    mostrando_ = false;
    mostrar_resumen();
}

/// The books may have changed while the voucher screen was in front.
void frmRegistro::Form_Activate() {
    if (mostrando_) return;
    if (bandeja().archivos().empty())
        (void)cmdArchivo.SetFocus();
    else
        cotejar();
}

void frmRegistro::cmdArchivo_Click() {
    for (const std::string& archivo :
         escritorio().ask_files({"Abrir registro de compras y ventas", "*.csv", "", false}))
        atender(
            [&] { bandeja().agregar(archivo, leer_archivo(archivo)); }); // one that is none keeps no other
    mostrar_agregados();
}

void frmRegistro::agregar(const std::string& archivo) {
    bandeja().agregar(archivo, leer_archivo(archivo));
    mostrar_agregados();
}

void frmRegistro::mostrar_agregados() {
    if (bandeja().archivos().empty()) return;
    cotejar();
    std::string avisos;
    for (const std::string& a : bandeja().avisos()) avisos += (avisos.empty() ? "" : "\r\n") + a;
    if (!avisos.empty()) exclamacion(avisos);
}

void frmRegistro::cmdQuitar_Click() {
    bandeja().vaciar();
    causa_ = nullptr;
    mostrar_filas();
    mostrar_prueba();
    (void)cmdArchivo.SetFocus();
}

void frmRegistro::cotejar() {
    {
        const Ocupado ocupado(escritorio());
        causa_ = nullptr;
        bandeja().cotejar();
    }
    mostrar_filas();
    mostrar_prueba();
}

bool frmRegistro::visible_en_lista(std::size_t i) const {
    const Fila& f = bandeja_->filas()[i];
    if (causa_ != nullptr) return causa_diferencia(f, *causa_, bandeja_->mes());
    const std::string ver = cmbVer.Text();
    if (ver == MARCADOS) return bandeja_->marcada(i);
    return ver == TODOS || ver == texto(f.estado);
}

void frmRegistro::mostrar_filas() {
    const int renglon = grdRegistro.Row();
    const Bandeja& b = bandeja();
    renglones_.clear();
    std::vector<std::string> textos;
    for (std::size_t i = 0; i < b.filas().size(); ++i) {
        if (!visible_en_lista(i)) continue;
        renglones_.push_back(i);
        textos.push_back(renglon_registro(b, i));
    }
    grdRegistro.Clear();
    grdRegistro.AddItems(textos);
    grdRegistro.SetRow(std::clamp(renglon, 0, std::max(grdRegistro.Rows() - 1, 0)));
    txtMes.SetText(texto(b.mes()));
    mostrar_resumen();
    mostrar_detalle();
}

void frmRegistro::mostrar_prueba() {
    std::vector<std::string> textos;
    for (const LineaPrueba& l : bandeja().prueba()) textos.push_back(renglon_prueba(l));
    grdPrueba.Clear();
    grdPrueba.AddItems(textos);
}

void frmRegistro::mostrar_resumen() {
    if (!bandeja_ || bandeja_->archivos().empty()) return lblResumen.SetCaption("Sin archivos");
    std::string t = resumen_bandeja(*bandeja_);
    if (causa_ != nullptr) t = "Documentos que hacen la diferencia de " + causa_->clase + ". " + t;
    lblResumen.SetCaption(t);
}

const Fila* frmRegistro::fila_actual() const {
    const auto r = static_cast<std::size_t>(grdRegistro.Row());
    return bandeja_ && r < renglones_.size() ? &bandeja_->filas()[renglones_[r]] : nullptr;
}

void frmRegistro::mostrar_detalle() {
    const Fila* f = fila_actual();
    lblDetalle.SetCaption(f == nullptr ? "" : detalle_fila(*bandeja_, *f));
    cmdVer.SetEnabled(f != nullptr && (f->clave || se_puede_llenar(*f)));
}

void frmRegistro::mostrar_marca(int renglon) {
    grdRegistro.SetTextMatrix(renglon, 0,
                              bandeja_->marcada(renglones_[static_cast<std::size_t>(renglon)]) ? MARCA : "");
}

void frmRegistro::alternar_marca() {
    const int renglon = grdRegistro.Row();
    if (fila_actual() == nullptr) return;
    const std::size_t i = renglones_[static_cast<std::size_t>(renglon)];
    bandeja().marcar(i, !bandeja().marcada(i));
    mostrar_marca(renglon);
    if (renglon + 1 < grdRegistro.Rows()) grdRegistro.move_to(renglon + 1, grdRegistro.Col());
    mostrar_resumen();
}

void frmRegistro::cmdMarcar_Click() {
    (void)bandeja().marcar_nuevos();
    for (int i = 0; i < grdRegistro.Rows(); ++i) mostrar_marca(i);
    mostrar_resumen();
}

bool frmRegistro::completar_contrapartes() {
    auto lista = bandeja().desconocidas();
    if (lista.empty()) return true;
    frmContrapartes forma(pantalla_, bandeja(), std::move(lista));
    forma.ShowModal();
    const bool aceptadas = forma.gblnaceptar;
    forma.Unload();
    mostrar_filas();
    return aceptadas;
}

void frmRegistro::cmdContrapartes_Click() {
    if (bandeja().desconocidas().empty())
        return informacion("Las contrapartes de los documentos marcados tienen cuenta y auxiliar");
    (void)completar_contrapartes();
}

void frmRegistro::cmdContabilizar_Click() {
    if (bandeja().marcados() == 0)
        return informacion("Marque documentos nuevos: Espacio marca el de la línea, Ctrl+A todos");
    if (!completar_contrapartes() || !pregunta(pregunta_contabilizar(bandeja()))) return;
    Balance hecho;
    {
        const Ocupado ocupado(escritorio());
        hecho = bandeja().contabilizar([this](long hechos, long total) {
            return escritorio().progress("Contabilizando", hechos, total);
        });
    }
    const std::string texto = texto_balance(hecho);
    if (hecho.error.empty())
        cotejar();
    else
        mostrar_filas();
    hecho.error.empty() && hecho.rechazados == 0 ? informacion(texto) : exclamacion(texto);
}

void frmRegistro::cmdVer_Click() {
    const Fila* f = fila_actual();
    if (f == nullptr) return;
    if (f->clave) {
        al_salir_ = [this, clave = *f->clave] {
            if (!abrir_comprobante(pantalla_, clave)) pantalla_.critico("El comprobante ya no existe");
        };
    } else if (se_puede_llenar(*f)) {
        al_salir_ = [this, c = bandeja().comprobante(*f)] { llenar_nuevo(pantalla_, c); };
    } else {
        return exclamacion(f->detalle);
    }
    Hide();
}

void frmRegistro::cmdActualizar_Click() { cotejar(); }

void frmRegistro::txtMes_LeftChanged(bool& cancel) {
    const Mes mes = leer_mes(txtMes.Text());
    if (mes.anio == 0) {
        cancel = true;
        return critico("El mes se escribe MM/AAAA");
    }
    bandeja().poner_mes(mes);
    cotejar();
}

void frmRegistro::cmbDocumento_Click() {
    if (mostrando_) return;
    bandeja().poner_documento(cmbDocumento.ListIndex() > 0 ? cmbDocumento.Text().substr(0, 3) : "");
}

void frmRegistro::grdRegistro_KeyDown(ui::KeyEvent& e) {
    const bool espacio = e.key == ui::Key::character && e.ch == U' ' && !e.ctrl && !e.alt;
    const bool entrar = e.key == ui::Key::enter && !e.ctrl && !e.alt;
    if (!espacio && !entrar) return;
    e.handled = true;
    espacio ? alternar_marca() : cmdVer_Click();
}

void frmRegistro::grdPrueba_KeyDown(ui::KeyEvent& e) {
    if (e.key != ui::Key::enter) return;
    e.handled = true;
    const auto i = static_cast<std::size_t>(grdPrueba.Row());
    if (i >= bandeja().prueba().size()) return;
    const LineaPrueba& l = bandeja().prueba()[i];
    if (l.cuadra()) return informacion("La diferencia de " + l.clase + " es 0");
    causa_ = &l;
    mostrar_filas();
    (void)grdRegistro.SetFocus();
}

void frmRegistro::Form_KeyDown(ui::KeyEvent& e) {
    if (e.key != ui::Key::escape) return;
    e.handled = true;
    if (causa_ == nullptr) return Hide();
    causa_ = nullptr; // back from the causes of a difference to the whole list
    atender([this] { mostrar_filas(); });
}

void abrir_registro(frmQuorvel& f) {
    f.atender([&] { // the screen stays while its inbox is open
        if (!f.registro) f.registro = std::make_unique<frmRegistro>(f);
        f.registro->abrir();
    });
}

void abrir_registro(frmQuorvel& f, const std::string& archivo) {
    if (!f.registro) f.registro = std::make_unique<frmRegistro>(f);
    f.registro->Load();
    f.registro->agregar(archivo);
    f.registro->abrir();
}

} // namespace quorvel
