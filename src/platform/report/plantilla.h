#pragma once
#include "platform/db/clsConexion.h"

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::report {

/// Rows of a staging table in the order of the definition.
struct Data {
    std::vector<ColumnInfo> columns;
    std::vector<std::vector<Value>> rows;
    /// @return -1 when the table has no such column
    [[nodiscard]] int column(std::string_view name) const;
};

/// What a text or a condition is evaluated against.
struct Context {
    const Data* data = nullptr;
    int row = -1; ///< -1: there is no row, fields are empty
    int page = 1;
    const std::map<std::string, double>* sums = nullptr; ///< running sums by column name
};

/// Stands for the number of pages until it is known.
inline constexpr char PAGES_MARK = '\x01';

/// A text with {campo}, {campo:#,##0}, {suma(campo):#,##0}, {pagina} and {paginas}; "{{" is a brace.
class Template {
public:
    /// @throws std::invalid_argument in Spanish
    [[nodiscard]] static Template parse(std::string_view text);
    [[nodiscard]] std::string evaluate(const Context& c) const;
    [[nodiscard]] std::vector<std::string> fields() const;
    /// Columns that a {suma(...)} adds up.
    [[nodiscard]] std::vector<std::string> summed() const;
    /// A single formatted number: shown smaller rather than cut when its place is too narrow.
    [[nodiscard]] bool numeric() const;

private:
    enum class Kind { literal, field, sum, page, pages };
    struct Piece {
        Kind kind;
        std::string text, format;
    };
    static Piece parse_piece(std::string_view inside);
    std::vector<Piece> pieces_;
};

/// "campo>=0", "campo<>'texto'", "pagina>1", several joined by " y ". Empty is always true.
class Condition {
public:
    /// @throws std::invalid_argument in Spanish
    [[nodiscard]] static Condition parse(std::string_view text);
    [[nodiscard]] bool holds(const Context& c) const;
    [[nodiscard]] std::vector<std::string> fields() const;

private:
    struct Term {
        std::string field, op, text;
        double number = 0;
        bool is_text = false;
    };
    static Term parse_term(std::string_view text);
    std::vector<Term> terms_;
};

/// A value as paper shows it. Formats: number patterns ("#,##0"), "dd/mm/yyyy", "largo" (5 de marzo de 2024);
/// without one, dates are dd/mm/yyyy and the rest is as it is.
[[nodiscard]] std::string show(const Value& v, ColumnKind kind, std::string_view format);
[[nodiscard]] bool known_format(std::string_view format);

} // namespace quorvel::report
