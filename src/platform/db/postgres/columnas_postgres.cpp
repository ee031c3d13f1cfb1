#include "platform/db/postgres/columnas_postgres.h"

#include "text/letras_utf8.h"

#include <charconv>

namespace quorvel {
namespace {

// the server's own numbers of its types
enum TypeId : Oid {
    BOOL = 16,
    INT8 = 20,
    INT2 = 21,
    INT4 = 23,
    FLOAT4 = 700,
    FLOAT8 = 701,
    DATE = 1082,
    TIMESTAMP = 1114,
    TIMESTAMPTZ = 1184,
    NUMERIC = 1700
};

ColumnKind kind_of(Oid type) {
    switch (type) {
    case INT8:
    case INT2:
    case INT4:
    case FLOAT4:
    case FLOAT8:
    case NUMERIC:
    case BOOL: return ColumnKind::number;
    case DATE:
    case TIMESTAMP:
    case TIMESTAMPTZ: return ColumnKind::date;
    default: return ColumnKind::text;
    }
}

Value number(std::string_view digits) {
    std::int64_t whole = 0;
    const char* const end = digits.data() + digits.size();
    const auto r = std::from_chars(digits.data(), end, whole);
    if (r.ec == std::errc() && r.ptr == end) return Value(whole);
    double value = 0;
    std::from_chars(digits.data(), end, value);
    return Value(value);
}

} // namespace

std::shared_ptr<const ResultColumns> postgres_columns(const PGresult* description) {
    auto columns = std::make_shared<ResultColumns>();
    for (int i = 0; i < PQnfields(description); ++i) {
        columns->info.push_back({minusculas(PQfname(description, i)), kind_of(PQftype(description, i))});
        columns->declared.push_back(true);
    }
    return columns;
}

bool same_columns(const ResultColumns& columns, const PGresult* rows) {
    if (columns.info.size() != static_cast<std::size_t>(PQnfields(rows))) return false;
    for (int i = 0; const ColumnInfo& column : columns.info) {
        if (column.kind != kind_of(PQftype(rows, i))) return false;
        if (const char* const name = PQfname(rows, i++);
            column.name != name && column.name != minusculas(name))
            return false;
    }
    return true;
}

Value postgres_value(const PGresult* rows, int row, int column) {
    if (PQgetisnull(rows, row, column) != 0) return {};
    const std::string_view text(PQgetvalue(rows, row, column),
                                static_cast<std::size_t>(PQgetlength(rows, row, column)));
    const Oid type = PQftype(rows, column);
    if (type == BOOL) return Value(static_cast<std::int64_t>(text == "t"));
    if (type == FLOAT4 || type == FLOAT8) {
        double value = 0;
        std::from_chars(text.data(), text.data() + text.size(), value);
        return Value(value);
    }
    return kind_of(type) == ColumnKind::number ? number(text) : Value(std::string(text));
}

} // namespace quorvel
