#pragma once
#include "platform/report/definition.h"

#include <functional>

namespace quorvel::report {

// Everything in millimetres from the paper's top left corner, the definition's offset already applied.

/// One line of text: draw it in its rectangle, aligned as told, vertically centred, never wrapped or clipped.
struct PlacedText {
    double x = 0, y = 0, w = 0, h = 0;
    Align align = Align::left;
    Font font;
    std::string text;
};
struct PlacedLine {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0, pen = 0.2;
    int gray = 100; ///< percent of black
};
struct PlacedBox {
    double x = 0, y = 0, w = 0, h = 0, pen = 0.2;
    int gray = 0; ///< percent of black inside, 0 leaves it open
};
/// Paint boxes, then lines, then texts.
struct Page {
    std::vector<PlacedBox> boxes;
    std::vector<PlacedLine> lines;
    std::vector<PlacedText> texts;
};
struct Layout {
    double width = 0, height = 0;
    std::vector<Page> pages; ///< at least one
};

/// Width of a text in millimetres.
using MeasureText = std::function<double(std::string_view text, const Font& font)>;

/// Places the rows on pages: header, repeated table header, rows, totals kept together, footer.
[[nodiscard]] Layout compose(const Definition& d, const Data& data, const MeasureText& measure);

/// Marks the millimetres of the paper on every page, so that one sees where a field has to go.
void add_ruler(Layout& layout);

/// Breaks a text into lines that are not wider than `width`; a word that is too long is cut.
[[nodiscard]] std::vector<std::string> wrap_text(std::string_view text, double width, const Font& font,
                                                 const MeasureText& measure);

} // namespace quorvel::report
