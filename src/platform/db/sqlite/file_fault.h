#pragma once
#include <string>

struct sqlite3;

namespace quorvel {

/// The engine's last words on a connection, with the system's reason.
std::string engine_reason(sqlite3* db);
/// The same as the user reads it when the file, its disk or its permissions are to blame; empty when the
/// statement is.
std::string file_fault(sqlite3* db, const std::string& path);

} // namespace quorvel
