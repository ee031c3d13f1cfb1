#pragma once
#include "platform/report/layout.h"

namespace quorvel::report {

/// A text made to fit its place: its lines and the font that they are set in.
struct FittedText {
    std::vector<std::string> lines;
    Font font;
};
/// Wraps, shrinks or cuts (with "…") a text as the item asks.
[[nodiscard]] FittedText fit_text(const Item& item, const std::string& text, const MeasureText& measure);

} // namespace quorvel::report
