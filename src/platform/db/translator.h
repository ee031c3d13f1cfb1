#pragma once
#include "platform/db/tokenizer.h"

#include <string>
#include <vector>

namespace quorvel {

enum class Engine { sqlite, postgres };

/// A statement in an engine's own words.
///
/// The dialect's functions become these texts, so that an index on the same expression answers them
/// (x is a column):
///   SQLite      year(x)  cast(strftime('%Y', x) as integer)      (month '%m', day '%d')
///               val(x), cast(x as integer)   cast(x as integer)
///               len(x)   coalesce(length(rtrim(x)), 0)
///   PostgreSQL  year(x)  extract(year from x)::integer           (month, day)
///               val(x), cast(x as integer)   (substring((x)::text from '^ *[-+]?[0-9]{1,18}'))::bigint
///               len(x)   coalesce(length(rtrim((x)::text)), 0)
/// A number read from a text stands as above within max(), min() and definitions, else as coalesce(that, 0).
/// year(x)=A and month(x)=B and day(x)=C in this order become a comparison of x with that date.
struct Translation {
    enum class Kind {
        query,
        statement,
        definition,  ///< changes tables: prepared statements have to be forgotten
        select_into, ///< text is the query, table the private table that takes its rows
    };
    Kind kind = Kind::statement;
    std::string text;
    std::string table;
    std::vector<std::size_t> params; ///< parameter n+1 is this literal of the statement
};

/// @throws ErrorSesion for what is no statement of the dialect
[[nodiscard]] Translation translate(std::string_view sql, Engine engine);

} // namespace quorvel
