// Lays out vouchers of 1,000 and 10,000 lines with the shipped definition and a fixed letter width.
#include "platform/report/layout.h"
#include "tabla.h"
#include "text/letras_utf8.h"

#include <cstdlib>

using namespace quorvel;

namespace {

double milisegundos(const report::Definition& d, int lineas) {
    report::Data datos;
    for (const char* c :
         {"empresa", "usuario", "documento", "num_doc", "f_comp", "hora", "concepto", "secuencia", "cuenta",
          "n_cuenta", "auxiliar", "debe", "haber", "glosa", "revisado", "aprobado", "elaborado"})
        datos.columns.push_back({c, ColumnKind::text});
    for (int i = 0; i < lineas; ++i) {
        std::vector<Value> fila(datos.columns.size(), Value(std::string("texto de la celda")));
        for (const std::size_t n : {7U, 11U, 12U}) fila[n] = Value(std::int64_t{i});
        fila[13] = Value(std::string("una glosa bastante larga que ocupa más de una línea en el papel"));
        datos.rows.push_back(std::move(fila));
    }
    std::size_t paginas = 0;
    std::vector<double> segundos;
    for (int vez = 0; vez < 7; ++vez)
        segundos.push_back(bench::segundos_propios([&] {
            paginas = report::compose(d, datos, [](std::string_view t, const report::Font& f) {
                          return static_cast<double>(largo(t)) * f.size * 0.2;
                      }).pages.size();
        }));
    if (paginas == 0) std::abort();
    return bench::mediana(segundos) * 1e3;
}

} // namespace

int main(int argc, char** argv) {
    const auto d = report::read_definition(argc > 1 ? argv[1] : "data/reports/ctcQuorvel.rpt");
    const double corto = milisegundos(d, 1000), largo_ = milisegundos(d, 10000);
    quorvel::bench::fila(
        "print: lay out per line, 10000 / 1000 lines",
        quorvel::bench::texto("%.2f (%.0f ms / %.0f ms)", largo_ / (10 * corto), largo_, corto), "~1");
    return largo_ < 10 * corto * 1.5 ? 0 : 1;
}
