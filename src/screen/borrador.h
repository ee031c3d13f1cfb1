#pragma once
#include "platform/ui/event.h"
#include "platform/ui/keys.h"
#include "screen/borrador_archivo.h"

#include <set>

namespace quorvel {

class frmQuorvel;

/// Keeps what is on the screen and saved nowhere in a draft on disk, change by change: after each event only
/// what became different is written. New, Search and Exit put the draft aside; it can be brought back by one
/// key, also by a program started after a crash. A folder that cannot be written leaves the screen without
/// drafts, never without work.
class Borrador {
public:
    explicit Borrador(frmQuorvel& f);
    /// What is on the screen is about to be replaced, by what the object's end finds there. Drafts rest
    /// meanwhile.
    class Cambio {
    public:
        explicit Cambio(frmQuorvel& f);
        ~Cambio();
        /// What was on the screen waits as a draft.
        [[nodiscard]] bool queda() const { return queda_; }
        Cambio(const Cambio&) = delete;
        Cambio& operator=(const Cambio&) = delete;

    private:
        frmQuorvel& f_;
        bool queda_ = false;
    };
    /// What is on the screen is saved.
    void grabado();
    /// Something has become different since it was saved or opened.
    [[nodiscard]] bool hay() const { return archivo_.has_value(); }
    /// What is on the screen exists nowhere else (a cut voucher, a copy), although nobody has typed yet.
    void obligar();
    /// The same, written at once. @return false when the disk refused
    bool conservar() {
        obligar();
        return anotar();
    }
    /// It is stored all the same: what only obligar() had written goes.
    void desistir();
    /// Before the screen goes away. @return true when a draft of it stays
    bool retirar();
    /// Writes what became different. @return false when what is on the screen is not all on disk
    bool anotar();

private:
    void partir();
    [[nodiscard]] bool vale_la_pena(const std::map<std::string, std::string>& campos) const;
    void campos_cambiados(const std::map<std::string, std::string>& campos, LoteBorrador& lote) const;
    void filas_cambiadas(LoteBorrador& lote);
    void todas_las_filas(LoteBorrador& lote);
    [[nodiscard]] std::string fila(int i) const;
    [[nodiscard]] bool crear();

    frmQuorvel& f_;
    std::optional<ArchivoBorrador> archivo_;
    std::map<std::string, std::string> campos_, campos_al_partir_; ///< as written; as they were at the start
    std::vector<std::uint64_t> filas_, filas_nuevas_;              ///< fingerprints as written; to be written
    std::string pendiente_;
    std::set<int> tocadas_;
    bool revueltas_ = false;                 ///< rows were removed or replaced
    bool obligado_ = false, de_mas_ = false; ///< de_mas: written only because of obligar()
    int reposo_ = 0;
    std::vector<ui::Connection> conexiones_;
};

/// A draft that can be brought back, as a list shows it.
struct BorradorLibre {
    std::filesystem::path archivo;
    std::string cuando; ///< "dd/mm/yyyy hh:mm"
    std::string documento, numero, fecha, glosa;
    std::size_t lineas = 0;
};
/// Drafts of this database, company and user that no living screen holds, the last one first.
[[nodiscard]] std::vector<BorradorLibre> borradores_libres(const frmQuorvel& f);
/// Brings a draft back onto the screen; what is there now becomes a draft itself. A draft of a saved voucher
/// opens it again, and tells when it was saved anew since; one that was deleted meanwhile comes back as a new
/// voucher.
/// @return false when there is nothing to bring back @throws ErrorSesion, the draft stays
bool recuperar_borrador(frmQuorvel& f, const std::filesystem::path& archivo);
/// The same with the last draft. Says so when there is none.
void recuperar(frmQuorvel& f);
/// Ctrl+R brings the last draft back.
void tecla_recuperar(frmQuorvel& f, ui::KeyEvent& e);
void descartar_borrador(const std::filesystem::path& archivo);

} // namespace quorvel
