#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace quorvel {

/// The first block of a list of distinct pairs, "select distinct a, b from t where … order by b limit n",
/// read from one pair to the next in an index on (b, a). The server by itself reads the entry of every row of
/// the first n pairs, which in a large company are many.
struct LooseScan {
    std::string text;    ///< the same rows in the same order
    std::string indexed; ///< a query that finds a row when such an index exists; without one `text` is slow
};

/// @param text a query in the server's words @return nothing for any other query, or when a condition names
/// another column or would keep pairs whose first half is null
[[nodiscard]] std::optional<LooseScan> loose_scan(std::string_view text);

} // namespace quorvel
