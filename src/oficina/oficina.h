#pragma once
#include "platform/db/clsConexion.h"

#include <filesystem>
#include <memory>
#include <string>

namespace quorvel::oficina {

/// Which database, and in whose name.
struct OpcionesOficina {
    std::string conexion;
    int empresa = 1, usuario = 1;
    bool json = false;
};
/// An open database with the company and the user that a command works for.
struct Oficina {
    std::unique_ptr<clsConexion> db;
    int empresa = 0, usuario = 0;
    std::string n_empresa{}, n_usuario{}, permiso{};
    int alias = 1;
    [[nodiscard]] std::string leyenda_empresa() const { return std::to_string(empresa) + " " + n_empresa; }
    [[nodiscard]] std::string leyenda_usuario() const { return std::to_string(usuario) + " " + n_usuario; }
};
/// @throws ErrorSesion, std::runtime_error in Spanish when company or user do not exist
[[nodiscard]] Oficina abrir_oficina(const OpcionesOficina& o);

/// A folder of one's own that goes away with everything in it.
class CarpetaTemporal {
public:
    /// @param donde an existing folder @throws std::runtime_error
    explicit CarpetaTemporal(const std::filesystem::path& donde = std::filesystem::temp_directory_path());
    ~CarpetaTemporal();
    CarpetaTemporal(const CarpetaTemporal&) = delete;
    CarpetaTemporal& operator=(const CarpetaTemporal&) = delete;
    [[nodiscard]] const std::filesystem::path& ruta() const { return ruta_; }

private:
    std::filesystem::path ruta_;
};

} // namespace quorvel::oficina
