#pragma once
#include "platform/report/layout.h"

namespace quorvel::report {

/// Rows of texts for paper, without a definition file: a landscape sheet whose columns take the room they
/// need.
struct Table {
    struct Column {
        std::string title;
        bool amount = false; ///< right aligned and never broken
    };
    std::string title, subtitle;
    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows; ///< as shown, one text a column
};

/// Titles are repeated on every page; long texts go on in further lines of their cell. The letters shrink,
/// down to a readable size, before texts are broken.
[[nodiscard]] Layout compose_table(const Table& table, const MeasureText& measure);

} // namespace quorvel::report
