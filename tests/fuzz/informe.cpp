// Goal: any definition is refused with its line or sets three rows on pages, in bounded time and room.
#include "fuzz/fuzz.h"
#include "platform/report/layout.h"
#include "text/letras_utf8.h"

#include <cmath>

namespace quorvel::fuzz {
namespace {

using namespace quorvel::report;

Data filas() {
    Data d;
    d.columns = {{"secuencia", ColumnKind::number},
                 {"fecha", ColumnKind::date},
                 {"glosa", ColumnKind::text},
                 {"monto", ColumnKind::number}};
    for (int i = 0; i < 3; ++i)
        d.rows.push_back({Value(std::int64_t{i}), Value(std::string("2024-06-1") + char('0' + i)),
                          i == 1 ? Value() : Value(std::string("Pago de ñandúes\ny otras muy largas glosas")),
                          Value(1234567.5 * i)});
    return d;
}

void exigir_medido(double x, double hasta) { exigir(std::isfinite(x) && std::abs(x) < hasta, "measures"); }

void exigir_dibujable(const Layout& l) {
    exigir(!l.pages.empty() && l.pages.size() <= 8, "three rows take a few pages");
    exigir_medido(l.width, 2001);
    exigir_medido(l.height, 2001);
    for (const Page& p : l.pages) {
        for (const PlacedText& t : p.texts) {
            for (const double x : {t.x, t.y, t.w, t.h}) exigir_medido(x, 1e7);
            exigir(t.font.size >= 1 && t.font.size <= 2000, "letters have a size");
            exigir(t.text.size() < 100000, "a line is not endless");
        }
        for (const PlacedLine& t : p.lines)
            for (const double x : {t.x1, t.y1, t.x2, t.y2, t.pen}) exigir_medido(x, 1e7);
        for (const PlacedBox& t : p.boxes)
            for (const double x : {t.x, t.y, t.w, t.h, t.pen}) exigir_medido(x, 1e7);
    }
}

} // namespace
} // namespace quorvel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvel;
    using namespace quorvel::fuzz;
    static const Data rows = filas();
    const std::string xml(texto(data, size));
    try {
        const Definition d = parse_definition(xml, "prueba.rpt");
        check_fields(d, rows.columns);
        // A tilde takes no room, as some characters of real letters do.
        exigir_dibujable(compose(d, rows, [](std::string_view t, const Font& f) {
            return static_cast<double>(largo(reemplazar(t, "~", ""))) * f.size * 0.2;
        }));
    } catch (const DefinitionError& e) {
        exigir(e.line >= 0 && std::string_view(e.what()).find("prueba.rpt") != std::string_view::npos,
               "a refusal names file and line", e.what());
    }
    return 0;
}
