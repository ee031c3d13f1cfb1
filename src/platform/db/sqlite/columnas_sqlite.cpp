#include "platform/db/sqlite/columnas_sqlite.h"

#include "text/letras_utf8.h"

namespace quorvel {
namespace {

std::string declared_type(sqlite3_stmt* stmt, int i) {
    const char* type = sqlite3_column_decltype(stmt, i);
    return type == nullptr ? "" : minusculas(type);
}

ColumnKind kind_of(const std::string& type) {
    if (type.find("date") != std::string::npos) return ColumnKind::date;
    for (const char* number : {"int", "real", "doub", "floa", "num", "dec"})
        if (type.find(number) != std::string::npos) return ColumnKind::number;
    return ColumnKind::text;
}

} // namespace

std::shared_ptr<const ResultColumns> sqlite_columns(sqlite3_stmt* stmt) {
    auto columns = std::make_shared<ResultColumns>();
    for (int i = 0; i < sqlite3_column_count(stmt); ++i) {
        const std::string type = declared_type(stmt, i);
        columns->info.push_back({minusculas(sqlite3_column_name(stmt, i)), kind_of(type)});
        columns->declared.push_back(!type.empty());
    }
    return columns;
}

std::string definicion(sqlite3_stmt* stmt) {
    std::string columns;
    for (int i = 0; i < sqlite3_column_count(stmt); ++i) {
        const std::string type = declared_type(stmt, i);
        if (i > 0) columns += ", ";
        columns += '"' + reemplazar(minusculas(sqlite3_column_name(stmt, i)), "\"", "\"\"") + "\" " + type;
        if (type.empty() || kind_of(type) == ColumnKind::text) columns += " collate rtrim";
    }
    return columns;
}

Value sqlite_value(sqlite3_stmt* stmt, int column) {
    switch (sqlite3_column_type(stmt, column)) {
    case SQLITE_NULL: return {};
    case SQLITE_INTEGER: return Value(static_cast<std::int64_t>(sqlite3_column_int64(stmt, column)));
    case SQLITE_FLOAT: return Value(sqlite3_column_double(stmt, column));
    default: break;
    }
    const auto* text = static_cast<const char*>(sqlite3_column_blob(stmt, column));
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(stmt, column));
    return Value(text == nullptr ? std::string() : std::string(text, length));
}

} // namespace quorvel
