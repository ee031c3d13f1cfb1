// Reads voucher files of 10,000 and 100,000 lines: the time per line must not grow, and 500,000 lines a
// second are the least.
#include "interchange/archivo_comprobante.h"
#include "tabla.h"

#include <cstdio>

namespace {

double lineas_por_segundo(int lineas) {
    std::string b = "empresa;\r\n1;05-03-2015;1;7;PS;10;10;c;;;;;n;;;;;;;;;;\r\nempresa\r\n";
    for (int i = 0; i < lineas; ++i)
        b += "1 Comercial;05/03/2015;001;7;" + std::to_string(i + 1) + ";103001;1234;" +
             std::to_string(i * 37) + ";0;glosa de la l\xEDnea con \xF1;CC1;;77;;\r\n";
    std::size_t filas = 0;
    std::vector<double> segundos;
    for (int vez = 0; vez < 7; ++vez)
        segundos.push_back(quorvel::bench::segundos_propios([&] {
            filas = quorvel::interpretar_archivo(b, [](long, long) { return true; }).c.lineas.size();
        }));
    return static_cast<double>(filas) / quorvel::bench::mediana(segundos);
}

} // namespace

int main() {
    const double corto = lineas_por_segundo(10000), largo = lineas_por_segundo(100000);
    quorvel::bench::fila("import: parse and check 100000 lines, lines/s",
                         quorvel::bench::texto("%.0f", largo), ">= 500000");
    quorvel::bench::fila("import: time per line, 100000 / 10000 lines",
                         quorvel::bench::texto("%.2f", corto / largo), "~1");
    return largo >= 500000 ? 0 : 1;
}
