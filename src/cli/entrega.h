#pragma once
#include "cli/comandos.h"
#include "oficina/seleccion.h"

#include <set>

namespace quorvel::cli {

/// Files for a folder that wait in a folder of their own until all of them are there.
class Entrega {
public:
    /// Creates the folder when it is missing. @throws std::runtime_error
    Entrega(const std::filesystem::path& carpeta, std::string extension, bool reemplazar);
    /// Where to write the voucher's file. @throws ErrorArchivo when the folder has one of that name already
    [[nodiscard]] std::filesystem::path lugar(const Clave& clave);
    /// The same for a name of the person's own.
    [[nodiscard]] std::filesystem::path lugar(const std::string& nombre);
    /// @throws std::runtime_error
    void entregar();
    [[nodiscard]] const std::vector<std::string>& nombres() const { return nombres_; }

private:
    std::filesystem::path carpeta_;
    std::string extension_;
    bool reemplazar_;
    oficina::CarpetaTemporal espera_;
    std::vector<std::string> nombres_;
    std::set<std::string> usados_;
};

/// Runs the work for every chosen voucher; what it refuses with ErrorArchivo is a problem of that voucher.
/// @return how many there were, or why there is none
[[nodiscard]] Respuesta para_cada_uno(const char* que, const oficina::Elegidos& elegidos,
                                      const std::function<void(const Clave&)>& trabajo);

} // namespace quorvel::cli
