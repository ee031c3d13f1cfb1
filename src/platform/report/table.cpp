#include "platform/report/table.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace quorvel::report {

namespace {

constexpr double WIDTH = 279.4, HEIGHT = 215.9, MARGIN = 12, GAP = 2; // letter, landscape
constexpr double ROOM = WIDTH - 2 * MARGIN;
constexpr double LARGEST = 8.5, SMALLEST = 5.5, STEP = 0.5; // points
constexpr double NARROWEST = 14;                            // of a column whose texts are broken

using Widths = std::vector<double>;

/// Widths that no text needs to be broken for.
Widths natural(const Table& t, const Font& font, const MeasureText& measure) {
    Font bold = font;
    bold.bold = true;
    Widths widths;
    for (std::size_t c = 0; c < t.columns.size(); ++c) {
        double w = measure(t.columns[c].title, bold);
        for (const auto& row : t.rows) w = std::max(w, measure(row[c], font));
        widths.push_back(w);
    }
    return widths;
}

double sum(const Widths& widths) { return std::accumulate(widths.begin(), widths.end(), 0.0); }
double gaps(const Widths& widths) { return GAP * static_cast<double>(widths.size() - 1); }

Widths scaled(Widths widths, double factor) {
    for (double& w : widths) w = w * factor + 0.3;
    return widths;
}

/// Takes what is too much from the widest columns of texts.
void narrow(Widths& widths, const Table& t) {
    const double room = ROOM - gaps(widths);
    while (sum(widths) > room) {
        auto widest = widths.end();
        for (auto w = widths.begin(); w != widths.end(); ++w) {
            const bool amount = t.columns[static_cast<std::size_t>(w - widths.begin())].amount;
            if (!amount && *w > NARROWEST && (widest == widths.end() || *w > *widest)) widest = w;
        }
        if (widest == widths.end()) return;
        *widest = std::max(NARROWEST, *widest - std::max(1.0, (sum(widths) - room) / 4));
    }
}

class Composer {
public:
    Composer(const Table& t, const MeasureText& measure) : t_(t), measure_(measure) {
        font_.size = LARGEST;
        const Widths full = natural(t, font_, measure); // a width goes with the size, but for hinting
        const double fitting = LARGEST * (ROOM - gaps(full)) / std::max(1.0, sum(full));
        font_.size = std::clamp(std::floor(fitting / STEP) * STEP, SMALLEST, LARGEST);
        widths_ = scaled(full, font_.size / LARGEST);
        narrow(widths_, t);
    }
    Layout compose() {
        out_.width = WIDTH;
        out_.height = HEIGHT;
        new_page();
        for (const auto& row : t_.rows) add(row, font_);
        const auto pages = out_.pages.size();
        for (std::size_t p = 0; p < pages; ++p)
            out_.pages[p].texts.push_back(
                {MARGIN, HEIGHT - MARGIN + 2, ROOM, line_height(font_), Align::right, font_,
                 "Página " + std::to_string(p + 1) + " de " + std::to_string(pages)});
        return std::move(out_);
    }

private:
    void heading(const std::string& text, double size, bool bold) {
        if (text.empty()) return;
        Font font = font_;
        font.size = size;
        font.bold = bold;
        out_.pages.back().texts.push_back({MARGIN, y_, ROOM, line_height(font), Align::left, font, text});
        y_ += line_height(font);
    }
    void new_page() {
        out_.pages.emplace_back();
        y_ = MARGIN;
        heading(t_.title, 13, true);
        heading(t_.subtitle, 9, false);
        y_ += 2;
        std::vector<std::string> titles;
        for (const auto& c : t_.columns) titles.push_back(c.title);
        Font bold = font_;
        bold.bold = true;
        place(titles, bold);
        out_.pages.back().lines.push_back(
            {MARGIN, y_, MARGIN + std::min(ROOM, sum(widths_) + gaps(widths_)), y_});
        y_ += 1;
    }
    void add(const std::vector<std::string>& row, const Font& font) {
        if (y_ + height(row, font) > HEIGHT - MARGIN && y_ > MARGIN) new_page();
        place(row, font);
    }
    [[nodiscard]] std::vector<std::string> lines(const std::string& text, std::size_t column,
                                                 const Font& font) const {
        if (t_.columns[column].amount || measure_(text, font) <= widths_[column]) return {text};
        return wrap_text(text, widths_[column], font, measure_);
    }
    [[nodiscard]] double height(const std::vector<std::string>& row, const Font& font) const {
        std::size_t most = 1;
        for (std::size_t c = 0; c < row.size(); ++c) most = std::max(most, lines(row[c], c, font).size());
        return static_cast<double>(most) * line_height(font);
    }
    void place(const std::vector<std::string>& row, const Font& font) {
        double x = MARGIN;
        for (std::size_t c = 0; c < row.size(); x += widths_[c++] + GAP) {
            double y = y_;
            for (const std::string& line : lines(row[c], c, font)) {
                if (!line.empty())
                    out_.pages.back().texts.push_back({x, y, widths_[c], line_height(font),
                                                       t_.columns[c].amount ? Align::right : Align::left,
                                                       font, line});
                y += line_height(font);
            }
        }
        y_ += height(row, font);
    }

    const Table& t_;
    const MeasureText& measure_;
    Font font_;
    Widths widths_;
    Layout out_;
    double y_ = 0;
};

} // namespace

Layout compose_table(const Table& table, const MeasureText& measure) {
    return Composer(table, measure).compose();
}

} // namespace quorvel::report
