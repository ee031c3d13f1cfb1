#pragma once
#include <array>
#include <string_view>

namespace quorvel {

/// The five flags of a permission text; a missing character denies.
[[nodiscard]] constexpr std::array<bool, 5> permisos(std::string_view glbPermiso) {
    std::array<bool, 5> p{};
    for (std::size_t i = 0; i < p.size(); ++i) p[i] = i < glbPermiso.size() && glbPermiso[i] == '1';
    return p;
}
inline constexpr int PERMISO_BORRAR_LINEA = 2, PERMISO_IMPRIMIR = 4;

} // namespace quorvel
