#pragma once
#include <string>

namespace quorvel::dbtools {

/// Somebody who is to work in a database.
struct UsuarioNuevo {
    std::string nombre;
    bool solo_suyos = false; ///< sees the vouchers that he himself saved last
    bool sin_borrar_lineas = false, sin_imprimir = false;
};

/// @param conexion "sqlite:PATH", a plain path or "postgresql://…" @return the code he is known by
/// @throws std::exception with the text for the person
[[nodiscard]] int agregar_usuario(const std::string& conexion, const UsuarioNuevo& usuario);

} // namespace quorvel::dbtools
