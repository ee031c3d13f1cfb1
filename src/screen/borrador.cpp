#include "screen/borrador.h"

#include "screen/borrador_campos.h"
#include "screen/frmQuorvel.h"
#include "text/fnv.h"

#include <utility>

namespace quorvel {

namespace {

constexpr std::size_t MAXIMO = 20; // drafts put aside by one user of a company

std::string unir(const std::vector<std::string>& celdas) {
    std::string fila;
    for (std::size_t i = 0; i < celdas.size(); ++i) fila += (i ? "\t" : "") + celdas[i];
    return fila;
}

} // namespace

Borrador::Borrador(frmQuorvel& f) : f_(f) {
    conexiones_.push_back(f.Settled.connect([this] { (void)anotar(); }));
    conexiones_.push_back(f.grdDetalle.RowPainted.connect([this](int i) { tocadas_.insert(i); }));
    conexiones_.push_back(f.grdDetalle.RowsChanged.connect([this] { revueltas_ = true; }));
}

Borrador::Cambio::Cambio(frmQuorvel& f) : f_(f) {
    Borrador& b = *f.borrador;
    if (b.reposo_++ == 0) queda_ = b.retirar();
}

Borrador::Cambio::~Cambio() {
    Borrador& b = *f_.borrador;
    if (--b.reposo_ == 0) b.partir();
}

std::string Borrador::fila(int i) const {
    std::string texto;
    for (int col = 0; col < f_.grdDetalle.Cols(); ++col)
        texto += (col ? "\t" : "") + f_.grdDetalle.TextMatrix(i, col);
    return texto;
}

void Borrador::partir() {
    archivo_.reset();
    campos_ = campos_al_partir_ = campos_de_pantalla(f_);
    filas_.clear();
    for (int i = 0; i < f_.grdDetalle.Rows(); ++i) filas_.push_back(fnv1a(fila(i)));
    pendiente_.clear();
    tocadas_.clear();
    revueltas_ = obligado_ = de_mas_ = false;
}

void Borrador::grabado() {
    if (archivo_) archivo_->borrar();
    partir();
}

void Borrador::obligar() { obligado_ = true; }

void Borrador::desistir() {
    obligado_ = false;
    if (!std::exchange(de_mas_, false)) return;
    archivo_->borrar();
    partir();
}

bool Borrador::retirar() {
    if (campos_al_partir_.empty()) return false;
    bool queda = f_.ctlRegistro1.ModifyEnabled();
    if (f_.ctlRegistro1.ModifyEnabled()) {
        const int reposo = std::exchange(reposo_, 0);
        (void)anotar();
        reposo_ = reposo;
        if (archivo_ && !vale_la_pena(campos_de_pantalla(f_))) {
            archivo_->borrar();
            queda = false;
        }
    } else if (archivo_) {
        archivo_->borrar(); // it was annulled: nothing of it could be saved
    }
    campos_al_partir_.clear();
    if (!std::exchange(archivo_, std::nullopt)) return false;
    const auto todos = archivos_borrador(carpeta_borradores(f_), grupo_de(f_));
    for (std::size_t i = MAXIMO; i < todos.size(); ++i) descartar_borrador(todos[i]);
    return queda;
}

void Borrador::campos_cambiados(const std::map<std::string, std::string>& campos, LoteBorrador& lote) const {
    for (const auto& [nombre, valor] : campos) {
        const auto antes = campos_.find(nombre);
        if (antes == campos_.end() || antes->second != valor) lote.campo(nombre, valor);
    }
}

/// One replacement in the middle: what both ends have in common stays.
void Borrador::todas_las_filas(LoteBorrador& lote) {
    const auto n = static_cast<std::size_t>(f_.grdDetalle.Rows());
    filas_nuevas_.clear();
    for (std::size_t i = 0; i < n; ++i) filas_nuevas_.push_back(fnv1a(fila(static_cast<int>(i))));
    std::size_t desde = 0, iguales = 0;
    while (desde < n && desde < filas_.size() && filas_nuevas_[desde] == filas_[desde]) ++desde;
    while (iguales < n - desde && iguales < filas_.size() - desde &&
           filas_nuevas_[n - 1 - iguales] == filas_[filas_.size() - 1 - iguales])
        ++iguales;
    std::vector<std::string> nuevas;
    for (std::size_t i = desde; i < n - iguales; ++i) nuevas.push_back(fila(static_cast<int>(i)));
    const std::size_t quitadas = filas_.size() - desde - iguales;
    if (quitadas > 0 || !nuevas.empty()) lote.filas(desde, quitadas, nuevas);
}

void Borrador::filas_cambiadas(LoteBorrador& lote) {
    const auto n = static_cast<std::size_t>(f_.grdDetalle.Rows());
    if (revueltas_ || n < filas_.size()) return todas_las_filas(lote);
    filas_nuevas_.clear();
    for (auto i = tocadas_.begin(); i != tocadas_.end();) {
        const bool guardada = *i >= 0 && static_cast<std::size_t>(*i) < filas_.size();
        const std::string texto = guardada ? fila(*i) : std::string();
        if (guardada && fnv1a(texto) != filas_[static_cast<std::size_t>(*i)]) {
            lote.filas(static_cast<std::size_t>(*i), 1, {texto});
            ++i;
        } else {
            i = tocadas_.erase(i); // the cursor went by
        }
    }
    std::vector<std::string> nuevas;
    for (std::size_t i = filas_.size(); i < n; ++i) nuevas.push_back(fila(static_cast<int>(i)));
    if (!nuevas.empty()) lote.filas(filas_.size(), 0, nuevas);
}

bool Borrador::vale_la_pena(const std::map<std::string, std::string>& campos) const {
    if (!f_.glbBanderaNuevo || obligado_) return true;
    if (f_.grdDetalle.Rows() > 0 || f_.grdDetalle.NewRowPending() == 1 || f_.lstadjunto.ListCount() > 0)
        return true;
    for (const char* const escrito : CAMPOS_ESCRITOS)
        if (campos.at(escrito) != campos_al_partir_.at(escrito)) return true;
    return false;
}

bool Borrador::crear() {
    archivo_ = ArchivoBorrador::crear(carpeta_borradores(f_), grupo_de(f_));
    if (!archivo_) return false;
    campos_.clear();
    filas_.clear();
    pendiente_.clear();
    revueltas_ = true;
    return true;
}

bool Borrador::anotar() {
    if (reposo_ > 0 || f_.glbdb == nullptr || campos_al_partir_.empty() || !f_.ctlRegistro1.ModifyEnabled())
        return false;
    const auto campos = campos_de_pantalla(f_);
    const std::string pendiente =
        f_.grdDetalle.NewRowPending() == 1 ? unir(f_.grdDetalle.pending_cells()) : "";
    const auto comparar = [&] {
        LoteBorrador lote;
        campos_cambiados(campos, lote);
        filas_cambiadas(lote);
        if (pendiente != pendiente_) lote.pendiente(pendiente);
        return lote;
    };
    LoteBorrador lote = comparar();
    if (lote.vacio() && !(obligado_ && !archivo_)) return archivo_.has_value();
    de_mas_ = lote.vacio();
    if (!archivo_) {
        if (!vale_la_pena(campos) || !crear()) return de_mas_ = false;
        lote = comparar(); // everything
    }
    if (!archivo_->anotar(lote)) return false; // the disk may have room at the next change
    campos_ = campos;
    pendiente_ = pendiente;
    if (revueltas_ || static_cast<std::size_t>(f_.grdDetalle.Rows()) < filas_.size()) {
        filas_ = filas_nuevas_;
    } else {
        for (const int i : tocadas_) filas_[static_cast<std::size_t>(i)] = fnv1a(fila(i));
        for (int i = static_cast<int>(filas_.size()); i < f_.grdDetalle.Rows(); ++i)
            filas_.push_back(fnv1a(fila(i)));
    }
    tocadas_.clear();
    revueltas_ = false;
    return true;
}

} // namespace quorvel
