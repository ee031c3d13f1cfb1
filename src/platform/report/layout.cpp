#include "platform/report/layout.h"

#include "platform/report/texto.h"
#include "text/letras_utf8.h"

#include <algorithm>

namespace quorvel::report {

namespace {

/// A band with its texts fitted: how high it has become and what is on it, from its own top.
struct SetBand {
    double height = 0;
    Page items;
};

struct Grown {
    double from, bottom, by;
};

/// How far an item moves down because texts above it have grown.
double shifted(const std::vector<Grown>& grown, double y) {
    double by = 0;
    for (const Grown& g : grown)
        if (y >= g.bottom - 0.01) by = std::max(by, g.by);
    return by;
}
double stretched(const std::vector<Grown>& grown, double y, double h) {
    double by = 0;
    for (const Grown& g : grown)
        if (y <= g.from + 0.01 && y + h >= g.bottom - 0.01) by = std::max(by, g.by);
    return by;
}

class Composer {
public:
    Composer(const Definition& d, const Data& data, const MeasureText& measure)
        : d_(d), data_(data), measure_(measure) {
        for (const Band* b : d.bands())
            for (const Item& i : b->items)
                for (const auto& name : i.text.summed()) sums_[name] = 0;
    }

    Layout run() {
        out_.width = d_.width;
        out_.height = d_.height;
        row_ = data_.rows.empty() ? -1 : 0;
        open_page();
        for (std::size_t i = 0; i < data_.rows.size(); ++i) put_row(static_cast<int>(i));
        if (d_.totals.source_line) put_totals();
        close_page();
        const std::string pages = std::to_string(out_.pages.size());
        for (Page& p : out_.pages)
            for (PlacedText& t : p.texts)
                t.text = reemplazar(t.text, std::string_view(&PAGES_MARK, 1), pages);
        return std::move(out_);
    }

private:
    [[nodiscard]] Context context(int row) const {
        return {&data_, row, static_cast<int>(out_.pages.size()), &sums_};
    }

    /// Room for rows ends here.
    [[nodiscard]] double limit() const { return d_.height - d_.bottom - d_.page_footer.height; }

    SetBand set(const Band& band, const Context& c) const {
        SetBand s;
        if (!band.source_line || !band.when.holds(c)) return s;
        s.height = band.height;
        std::vector<std::pair<const Item*, FittedText>> texts;
        std::vector<Grown> grown;
        for (const Item& i : band.items) {
            if (i.kind != ItemKind::text || !i.when.holds(c)) continue;
            texts.emplace_back(&i, fit_text(i, i.text.evaluate(c), measure_));
            const auto& t = texts.back().second;
            const double needs = static_cast<double>(t.lines.size()) * line_height(t.font);
            if (i.wrap && needs > i.h + 0.01) grown.push_back({i.y, i.y + i.h, needs - i.h});
        }
        for (const Grown& g : grown) s.height = std::max(s.height, band.height + g.by);
        for (const auto& [i, t] : texts) {
            double y = i->y + shifted(grown, i->y);
            for (const auto& line : t.lines) {
                if (!line.empty())
                    s.items.texts.push_back({i->x, y, i->w, line_height(t.font), i->align, t.font, line});
                y += line_height(t.font);
            }
        }
        for (const Item& i : band.items) {
            if (i.kind == ItemKind::text || !i.when.holds(c)) continue;
            const double y = i.y + shifted(grown, i.y), h = i.h + stretched(grown, i.y, i.h);
            if (i.kind == ItemKind::line)
                s.items.lines.push_back({i.x, y, i.x + i.w, y + h, i.pen, i.gray > 0 ? i.gray : 100});
            if (i.kind == ItemKind::box) s.items.boxes.push_back({i.x, y, i.w, h, i.pen, i.gray});
        }
        return s;
    }

    void place(const SetBand& s, double at) {
        const double dx = d_.left + d_.offset_x, dy = at + d_.offset_y;
        Page& p = out_.pages.back();
        for (PlacedText t : s.items.texts) {
            t.x += dx;
            t.y += dy;
            p.texts.push_back(std::move(t));
        }
        for (const PlacedLine& l : s.items.lines)
            p.lines.push_back({l.x1 + dx, l.y1 + dy, l.x2 + dx, l.y2 + dy, l.pen, l.gray});
        for (const PlacedBox& b : s.items.boxes)
            p.boxes.push_back({b.x + dx, b.y + dy, b.w, b.h, b.pen, b.gray});
    }

    void flow(const SetBand& s) {
        place(s, y_);
        y_ += s.height;
    }

    void open_page() {
        out_.pages.emplace_back();
        y_ = d_.top;
        rows_on_page_ = 0;
        const Context first = context(data_.rows.empty() ? -1 : 0);
        flow(set(d_.page_header, first));
        flow(set(d_.table_header, first));
        if (out_.pages.size() > 1) flow(set(d_.carried_in, context(row_)));
    }

    void close_page() { place(set(d_.page_footer, context(row_)), limit()); }

    void next_page() {
        flow(set(d_.carried_out, context(row_)));
        close_page();
        open_page();
    }

    void put_row(int i) {
        if (!d_.detail.source_line || !d_.detail.when.holds(context(i))) return;
        SetBand s = set(d_.detail, context(i));
        if (y_ + s.height > limit() - d_.carried_out.height + 0.001 && rows_on_page_ > 0) {
            next_page();
            s = set(d_.detail, context(i)); // a text may show the page
        }
        before_last_ = mark();
        row_ = i;
        for (auto& [name, sum] : sums_)
            sum += data_.rows[static_cast<std::size_t>(i)][static_cast<std::size_t>(data_.column(name))]
                       .number();
        flow(s);
        ++rows_on_page_;
    }

    /// State before a row, to take it back.
    struct Mark {
        std::size_t boxes = 0, lines = 0, texts = 0;
        double y = 0;
        int row = -1;
        std::map<std::string, double> sums;
    };
    [[nodiscard]] Mark mark() const {
        const Page& p = out_.pages.back();
        return {p.boxes.size(), p.lines.size(), p.texts.size(), y_, row_, sums_};
    }

    /// Totals never stand alone under a table header: the last row goes with them to the next page.
    void take_last_row_along() {
        const int last = row_;
        const bool leaves_rows = rows_on_page_ > 1;
        if (leaves_rows) {
            Page& p = out_.pages.back();
            p.boxes.resize(before_last_.boxes);
            p.lines.resize(before_last_.lines);
            p.texts.resize(before_last_.texts);
            y_ = before_last_.y;
            row_ = before_last_.row;
            sums_ = before_last_.sums;
        }
        next_page();
        if (leaves_rows) put_row(last);
    }

    void put_totals() {
        SetBand s = set(d_.totals, context(row_));
        if (y_ + s.height > limit() + 0.001 && rows_on_page_ > 0) {
            take_last_row_along();
            s = set(d_.totals, context(row_));
        }
        if (d_.totals.at_bottom) y_ = std::max(y_, limit() - s.height);
        flow(s);
    }

    const Definition& d_;
    const Data& data_;
    const MeasureText& measure_;
    Layout out_;
    double y_ = 0;
    int row_ = -1, rows_on_page_ = 0;
    std::map<std::string, double> sums_;
    Mark before_last_;
};

} // namespace

Layout compose(const Definition& d, const Data& data, const MeasureText& measure) {
    return Composer(d, data, measure).run();
}

void add_ruler(Layout& l) {
    constexpr int STEP = 5, STRONG = 10; // millimetres
    Font font;
    font.size = 5;
    const double h = line_height(font);
    Page grid;
    const auto mark = [&](int at, const PlacedLine& line, double x, double y) {
        grid.lines.push_back({line.x1, line.y1, line.x2, line.y2, 0.1, at % STRONG ? 15 : 40});
        if (at % STRONG == 0) grid.texts.push_back({x, y, 8, h, Align::left, font, std::to_string(at)});
    };
    for (int x = 0; x <= l.width; x += STEP) mark(x, {double(x), 0, double(x), l.height}, x + 0.4, 0);
    for (int y = STEP; y <= l.height; y += STEP) mark(y, {0, double(y), l.width, double(y)}, 0.4, y);
    for (Page& p : l.pages) { // under what the definition draws
        p.lines.insert(p.lines.begin(), grid.lines.begin(), grid.lines.end());
        p.texts.insert(p.texts.end(), grid.texts.begin(), grid.texts.end());
    }
}

} // namespace quorvel::report
