#include "libros/exportar.h"

#include "libros/balance.h"
#include "libros/diario.h"
#include "libros/mayor.h"
#include "libros/mensual.h"

#include <ostream>

namespace quorvel::libros {
namespace {

constexpr long CADA = 1000;

constexpr const char* TITULOS[] = {"Libro diario", "Libro mayor", "Balance general de 8 columnas",
                                   "Totales mensuales por libro"}; ///< by Libro

/// Counts rows and asks now and then whether to go on.
struct Contador {
    const Avance& avance;
    long filas = 0;
    bool operator()() { return ++filas % CADA != 0 || !avance || avance(filas, 0); }
};

bool escribir_mayor(clsConexion& db, const PedidoLibro& p, std::ostream& salida, Contador sigue) {
    salida << titulos_mayor_csv() << '\n';
    for (const CuentaMayor& c : leer_mayor(db, p)) {
        salida << mayor_csv(c) << '\n';
        const bool todas =
            recorrer_movimientos(db, p, movimientos_de(c, p), c.anterior, [&](const Movimiento& m) {
                salida << mayor_csv(c, m) << '\n';
                return sigue();
            });
        if (!todas) return false;
    }
    return true;
}

} // namespace

const char* titulo_libro(Libro libro) { return TITULOS[static_cast<std::size_t>(libro)]; }

std::optional<Rechazo> revisar_pedido(const PedidoLibro& p, Libro libro) {
    return revisar_pedido(p, libro == Libro::mayor || libro == Libro::balance);
}

bool escribir_libro_csv(clsConexion& db, Libro libro, const PedidoLibro& p, std::ostream& salida,
                        const Avance& avance) {
    switch (libro) {
    case Libro::balance: salida << balance_csv(leer_balance(db, p)); return true;
    case Libro::mensual:
        salida << totales_mensuales_csv(leer_totales_mensuales(db, p.empresa, anio(p.desde)));
        return true;
    case Libro::mayor: return escribir_mayor(db, p, salida, {avance});
    default: break;
    }
    salida << titulos_diario_csv() << '\n';
    return recorrer_diario(db, p, [&, sigue = Contador{avance}](const RenglonDiario& r) mutable {
        salida << diario_csv(r) << '\n';
        return sigue();
    });
}

} // namespace quorvel::libros
