#pragma once
#include <string>

struct sqlite3;

namespace quorvel {

/// Opens a database file; the only way to one. The engine's locks on it stay until the engine drops them,
/// whatever else this process opens and closes: by themselves they would go with the first descriptor of the
/// same file that anybody here closes, and with them what is saved afterwards.
/// @param db always set, to be closed by the caller @return the engine's code
int open_file(const std::string& path, int flags, sqlite3** db);

} // namespace quorvel
