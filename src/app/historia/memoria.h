#pragma once
#include "platform/db/clsConexion.h"

#include <filesystem>

namespace quorvel::app {

/// Keeps outside of the databases how far the history of each company went when it was last seen on this
/// machine: an earlier copy of a database, or one whose last versions or tables were taken away, contradicts
/// it.
class MemoriaHistoria {
public:
    /// @param archivo a text file: code, tab, connection
    MemoriaHistoria(std::filesystem::path archivo, std::string conexion, int empresa);
    /// What contradicts the code that was kept, empty when nothing does. @throws ErrorSesion
    [[nodiscard]] std::string comparar(clsConexion& db) const;
    /// Keeps the code of now. @throws ErrorSesion
    void recordar(clsConexion& db) const;

private:
    std::filesystem::path archivo_;
    std::string conexion_, prefijo_;
};

} // namespace quorvel::app
