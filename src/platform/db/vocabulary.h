#pragma once
#include <optional>
#include <string_view>

namespace quorvel::vocabulary {

/// A word of the language, so never a column.
[[nodiscard]] bool keyword(std::string_view word);
/// A comparison may begin behind this word.
[[nodiscard]] bool opens_condition(std::string_view word);
/// A comparison ends before this word.
[[nodiscard]] bool ends_condition(std::string_view word);
[[nodiscard]] bool comparison(std::string_view op);
/// The result is compared without regard for the column's collation.
[[nodiscard]] bool text_function(std::string_view name);
/// The result is a "text" whatever went in.
[[nodiscard]] bool plain_text_function(std::string_view name);

/// A function of the module's own dialect: what stands before and behind its arguments in each engine.
struct OwnFunction {
    std::string_view name;
    const char *sqlite, *sqlite_end, *postgres, *postgres_end;
};
[[nodiscard]] std::optional<OwnFunction> own_function(std::string_view name);

} // namespace quorvel::vocabulary
