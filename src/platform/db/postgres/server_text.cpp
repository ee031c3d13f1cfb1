#include "platform/db/postgres/server_text.h"

#include "platform/db/clsConexion.h"

#include <algorithm>
#include <utility>

namespace quorvel {
namespace {

constexpr std::string_view NAME = "pool_mode=";
constexpr struct {
    std::string_view word;
    PoolMode mode;
} MODES[] = {{"session", PoolMode::session}, {"transaction", PoolMode::transaction}};

PoolMode mode_of(std::string_view word) {
    const auto* const found =
        std::ranges::find_if(MODES, [&](const auto& known) { return known.word == word; });
    if (found == std::end(MODES))
        throw ErrorSesion("Conexión no válida: pool_mode es session o transaction, no " + std::string(word),
                          "");
    return found->mode;
}

} // namespace

ServerText server_text(const std::string& conexion) {
    ServerText result;
    std::string_view rest = conexion;
    const std::size_t query = std::min(rest.find('?'), rest.size());
    result.libpq = rest.substr(0, query);
    char joint = '?';
    for (rest.remove_prefix(query); !rest.empty();) {
        rest.remove_prefix(1); // "?" or "&"
        const std::string_view option = rest.substr(0, rest.find('&'));
        rest.remove_prefix(option.size());
        if (option.starts_with(NAME))
            result.mode = mode_of(option.substr(NAME.size()));
        else
            result.libpq.append(1, std::exchange(joint, '&')).append(option);
    }
    return result;
}

} // namespace quorvel
