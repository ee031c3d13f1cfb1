#include "libros/mensual.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "voucher/signo_documento.h"

namespace quorvel::libros {

std::vector<LibroMensual> leer_totales_mensuales(clsConexion& db, int empresa, int anio) {
    const std::string a = std::to_string(anio);
    std::vector<LibroMensual> libros;
    for (const auto rs = db.NewRecord(
             "select coalesce(libro,'') as libro, month(f_comp) as mes, coalesce(doc_libro,'') as doc, "
             "count(*) as n, "
             "sum(t_debe) as total from ctcquorvel where empresa=" +
             sql_numero(empresa) + " and f_comp between #01/01/" + a + "# and #12/31/" + a +
             "# and estado<>'X' group by coalesce(libro,''), month(f_comp), coalesce(doc_libro,'') "
             "order by coalesce(libro,''), month(f_comp)");
         !rs->eof(); rs->MoveNext()) {
        const std::string libro = recortar_fin(rs->at(0).text());
        if (libros.empty() || libros.back().libro != libro) libros.push_back({libro, {}, {}});
        const auto mes = static_cast<std::size_t>(rs->at(1).integer() - 1);
        const int signo = es_nota_credito(recortar_fin(rs->at(2).text())) ? -1 : 1;
        libros.back().comprobantes.at(mes) += static_cast<int>(rs->at(3).integer());
        libros.back().total.at(mes) += signo * rs->at(4).integer();
    }
    return libros;
}

std::string totales_mensuales_csv(const std::vector<LibroMensual>& libros) {
    std::string texto = "Libro;Mes;Comprobantes;Total\n";
    for (const LibroMensual& l : libros)
        for (std::size_t mes = 0; mes < 12; ++mes)
            texto += celda_csv(l.libro) + ";" + std::to_string(mes + 1) + ";" +
                     std::to_string(l.comprobantes[mes]) + ";" + std::to_string(l.total[mes]) + "\n";
    return texto;
}

} // namespace quorvel::libros
