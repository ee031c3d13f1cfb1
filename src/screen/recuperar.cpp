// Drafts brought back onto the screen.
#include "screen/abrir.h"
#include "screen/borrador.h"
#include "screen/borrador_campos.h"
#include "screen/campos.h"
#include "screen/frmQuorvel.h"

#include <sys/stat.h>

#include <ctime>

namespace quorvel {
namespace {

std::string cuando(const std::filesystem::path& archivo) {
    struct stat s {};
    std::tm t{};
    char texto[32] = "";
    if (::stat(archivo.c_str(), &s) == 0 && ::localtime_r(&s.st_mtime, &t) != nullptr)
        (void)std::strftime(texto, sizeof texto, "%d/%m/%Y %H:%M", &t);
    return texto;
}

std::string campo(const ContenidoBorrador& c, const char* nombre) {
    const auto i = c.campos.find(nombre);
    return i == c.campos.end() ? std::string() : i->second;
}

/// The saved voucher that the draft changes, opened again with its lock. @return false when it is gone
bool abrir_guardado(frmQuorvel& f, const ContenidoBorrador& c) {
    const auto fecha = leer_fecha(campo(c, "guardado.f_comp"));
    return fecha && abrir_comprobante(f, {f.glbEmpresa, campo(c, "guardado.subsistema"), *fecha,
                                          campo(c, "guardado.documento"), campo(c, "guardado.num_docum")});
}

void mostrar_filas(frmQuorvel& f, const ContenidoBorrador& c) {
    ui::ctlPlanilla& g = f.grdDetalle;
    g.Clear();
    for (const std::string& fila : c.filas) g.AddItem(fila);
    g.SetRow(c.pendiente.empty() ? 0 : g.Rows());
    std::size_t desde = 0;
    for (int col = 0; !c.pendiente.empty() && desde != std::string::npos; ++col) {
        const std::size_t tab = c.pendiente.find('\t', desde);
        g.SetTextMatrix(g.Rows(), col, c.pendiente.substr(desde, tab - desde));
        desde = tab == std::string::npos ? tab : tab + 1;
    }
    const auto total = [&](const char* nombre) { return Decimal::leer(campo(c, nombre)); };
    mostrar_totales(f, {total("total_debe"), total("total_haber")}); // with the row being added
}

} // namespace

std::vector<BorradorLibre> borradores_libres(const frmQuorvel& f) {
    std::vector<BorradorLibre> libres;
    for (const auto& ruta : archivos_borrador(carpeta_borradores(f), grupo_de(f))) {
        const auto archivo = ArchivoBorrador::tomar(ruta);
        const auto c = archivo ? archivo->leer() : std::nullopt;
        if (c)
            libres.push_back({ruta, cuando(ruta), campo(*c, "cmbDocumento"), campo(*c, "txtNum_doc"),
                              campo(*c, "mskF_comp"), campo(*c, "txtconcepto"),
                              c->filas.size() + (c->pendiente.empty() ? 0 : 1)});
    }
    return libres;
}

bool recuperar_borrador(frmQuorvel& f, const std::filesystem::path& ruta) {
    auto archivo = ArchivoBorrador::tomar(ruta);
    const auto c = archivo ? archivo->leer() : std::nullopt;
    if (!c) return false;
    const bool guardado = campo(*c, "guardado") == "1";
    bool cambiado = false;
    {
        const Borrador::Cambio cambio(f);
        if (!guardado || !abrir_guardado(f, *c)) limpiar_para_nuevo(f);
        if (!f.ctlRegistro1.ModifyEnabled()) return true; // shown as another user left it; the draft stays
        cambiado = !f.glbBanderaNuevo && f.estado.huella_guardada != campo(*c, "guardado.huella");
        mostrar_campos(f, c->campos);
        mostrar_filas(f, *c);
    }
    f.borrador->obligar();
    if (f.borrador->anotar()) archivo->borrar(); // on disk anew before the old one goes
    if (guardado && f.glbBanderaNuevo)
        f.exclamacion(
            "El comprobante de este borrador ya no está en la base: lo eliminaron o cortaron. Vuelve como "
            "comprobante nuevo");
    if (cambiado)
        f.exclamacion("Este comprobante se grabó otra vez después de su borrador: " + f.lblUsuario.Caption() +
                      ", " + f.lblF_ult_modificacion.Caption() +
                      ".\nAl grabar, lo que muestra la pantalla reemplaza ese cambio");
    return true;
}

void recuperar(frmQuorvel& f) {
    const auto libres = borradores_libres(f);
    if (libres.empty() || !recuperar_borrador(f, libres.front().archivo))
        return f.informacion("No hay un comprobante sin grabar que recuperar");
    f.grdDetalle.SetFocus();
}

void tecla_recuperar(frmQuorvel& f, ui::KeyEvent& e) {
    const bool letra = e.key == ui::Key::character && (e.ch == U'r' || e.ch == U'R');
    if (!letra || !e.ctrl || e.shift || e.alt) return;
    e.handled = true;
    f.atender([&f] { recuperar(f); });
}

void descartar_borrador(const std::filesystem::path& ruta) {
    if (auto archivo = ArchivoBorrador::tomar(ruta)) archivo->borrar();
}

} // namespace quorvel
