#pragma once
#include <string>

namespace quorvel {

/// What stands between a session and its server. A pooler in mode "transaction" lends a server connection for
/// a transaction, one in mode "session" for as long as the session lives.
enum class PoolMode {
    recognised, ///< whether there is a pooler is asked of the server; any one is taken for one of
                ///< transactions
    session,
    transaction,
};

/// A connection text as libpq takes it, and what it says of a pooler: "…?pool_mode=transaction".
struct ServerText {
    std::string libpq;
    PoolMode mode = PoolMode::recognised;
};

/// @param conexion "postgresql://…" @throws ErrorSesion in Spanish for a mode that does not exist
[[nodiscard]] ServerText server_text(const std::string& conexion);

} // namespace quorvel
