#include "platform/db/sqlite/file_fault.h"

#include <sqlite3.h>

#include <cstring>

namespace quorvel {

namespace {

struct Fault {
    int code;
    const char* text;
};
constexpr Fault FAULTS[] = {{SQLITE_FULL, "No queda espacio en el disco para la base de datos "},
                            {SQLITE_READONLY, "No se puede escribir en la base de datos "},
                            {SQLITE_IOERR, "No se puede leer o escribir la base de datos "},
                            {SQLITE_CANTOPEN, "No se puede abrir la base de datos "},
                            {SQLITE_CORRUPT, "Está dañada la base de datos "},
                            {SQLITE_NOTADB, "Está dañada la base de datos "}};

} // namespace

std::string engine_reason(sqlite3* db) {
    std::string text = sqlite3_errmsg(db);
    const int code = sqlite3_errcode(db) & 0xFF, system = sqlite3_system_errno(db);
    if (system != 0 && (code == SQLITE_IOERR || code == SQLITE_CANTOPEN))
        text += std::string(" (") + std::strerror(system) + ")";
    return text;
}

std::string file_fault(sqlite3* db, const std::string& path) {
    const int code = sqlite3_errcode(db) & 0xFF;
    for (const Fault& f : FAULTS)
        if (code == f.code) return f.text + path + ": " + engine_reason(db);
    return {};
}

} // namespace quorvel
