#pragma once
#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// What a draft says: fields by name, grid row texts (cells by tabs), the row being added ("" none).
struct ContenidoBorrador {
    std::map<std::string, std::string> campos;
    std::vector<std::string> filas;
    std::string pendiente;
};

/// Changes to a draft, collected and then written at once. Texts may hold anything.
class LoteBorrador {
public:
    void campo(const std::string& nombre, const std::string& valor);
    /// Rows from `desde` on: `quitadas` of them go, the given ones take their place.
    void filas(std::size_t desde, std::size_t quitadas, const std::vector<std::string>& nuevas);
    void pendiente(const std::string& fila);
    [[nodiscard]] bool vacio() const { return registros_.empty(); }
    /// One line of the file: read whole or not at all.
    [[nodiscard]] std::string linea() const;

private:
    void registro(const std::vector<std::string>& campos);
    std::string registros_;
};

/// A draft on disk: a file of its owner alone (0600) that only grows, a line a change, and that nobody else
/// touches while it is held. What was written survives the end of the program by force.
class ArchivoBorrador {
public:
    /// A fresh file; nothing when the folder cannot be written. @param grupo whose drafts: file name's start
    [[nodiscard]] static std::optional<ArchivoBorrador> crear(const std::filesystem::path& carpeta,
                                                              const std::string& grupo);
    /// Takes hold of a draft that no living program holds. @return nothing when it is held or gone
    [[nodiscard]] static std::optional<ArchivoBorrador> tomar(const std::filesystem::path& archivo);
    ArchivoBorrador(ArchivoBorrador&& o) noexcept;
    ArchivoBorrador& operator=(ArchivoBorrador&& o) noexcept;
    ~ArchivoBorrador(); ///< lets go, the file stays
    /// @return false when the disk refused; what was there before stays whole
    [[nodiscard]] bool anotar(const LoteBorrador& lote);
    /// What the lines say, up to the first one that is not whole. Nothing when there is none.
    [[nodiscard]] std::optional<ContenidoBorrador> leer() const;
    void borrar();
    [[nodiscard]] const std::filesystem::path& ruta() const { return ruta_; }

private:
    ArchivoBorrador(std::filesystem::path ruta, int fd) : ruta_(std::move(ruta)), fd_(fd) {}
    void soltar();
    std::filesystem::path ruta_;
    int fd_ = -1;
};

/// Drafts of a group, the last written first; held ones too.
[[nodiscard]] std::vector<std::filesystem::path> archivos_borrador(const std::filesystem::path& carpeta,
                                                                   const std::string& grupo);
/// Name of the group of a database, a company and a user; no password goes into it.
[[nodiscard]] std::string grupo_borrador(std::string_view base, int empresa, int usuario);

} // namespace quorvel
