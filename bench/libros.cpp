// The books over a generated year: a page of the journal and of an account's movements from the beginning,
// the middle and the end, and the sums of the year against the engine's own time for them. Argument:
// vouchers.
#include "apoyo/comprobante.h"
#include "apoyo/sesiones.h"
#include "dbtools/base.h"
#include "generar.h"
#include "libros/balance.h"
#include "libros/diario.h"
#include "libros/mayor.h"
#include "libros/mensual.h"
#include "tabla.h"

#include <cstdlib>

using namespace quorvel;
using namespace quorvel::bench;

namespace {

const char* const SUMA =
    "select centro,sum(debe_nacional),sum(haber_nacional) from ctdquorvel where empresa=1 "
    "and f_comp between '2024-01-01' and '2024-12-31' group by centro";

void medir(const std::string& motor, const std::string& conexion) {
    const auto db = abrir_sesion(conexion);
    const auto base = dbtools::abrir_base(conexion, dbtools::Abrir::existente);
    const libros::PedidoLibro anio{1, apoyo::fecha(2024, 1, 1), apoyo::fecha(2024, 12, 31)};
    libros::PedidoLibro norma = anio;
    norma.norma = "1";
    const auto contra_motor = [&](const char* que, auto hacer) {
        const Par p = alternar(
            3, [&](int) { hacer(); }, [&](int) { (void)base->consultar(SUMA); });
        fila(motor + " " + que, texto("%.2f s, engine's sum %.2f s", p.uno, p.otro), "");
    };
    std::string cuenta;
    std::int64_t mayor = 0;
    for (const libros::CuentaMayor& c : libros::leer_mayor(*db, anio))
        if (c.debe > mayor) {
            mayor = c.debe;
            cuenta = c.centro;
        }
    contra_motor("balance of the year", [&] { (void)libros::leer_balance(*db, anio); });
    contra_motor("balance of the year, one norm", [&] { (void)libros::leer_balance(*db, norma); });
    contra_motor("accounts of the ledger", [&] { (void)libros::leer_mayor(*db, anio); });
    contra_motor("monthly totals", [&] { (void)libros::leer_totales_mensuales(*db, 1, 2024); });
    const std::optional<libros::Posicion> lugares[] = {
        {},
        libros::Posicion{apoyo::fecha(2024, 6, 30), "001", "1", 0},
        libros::Posicion{apoyo::fecha(2024, 12, 30), "001", "1", 0}};
    const char* const nombres[] = {"beginning", "middle", "end"};
    for (int i = 0; i < 3; ++i) {
        std::optional<libros::Movimiento> despues;
        if (lugares[i]) despues = libros::Movimiento{*lugares[i], "", "", "", 0, 0, 0};
        const Par p = alternar(
            5, [&](int) { (void)libros::leer_diario(*db, anio, lugares[i]); },
            [&](int) { (void)libros::leer_movimientos(*db, anio, {cuenta}, 0, despues); });
        fila(motor + " page of 500 rows, " + nombres[i],
             texto("journal %.1f ms, account %.1f ms", p.uno * 1e3, p.otro * 1e3), "");
    }
}

} // namespace

int main(int argc, char** argv) {
    const int n = argc > 1 ? std::atoi(argv[1]) : 200000;
    for (const apoyo::Motor m : apoyo::MOTORES) {
        const std::string conexion = apoyo::conexion_nueva(m);
        generar(conexion, n);
        medir(apoyo::nombre(m) + " " + std::to_string(n) + ":", conexion);
    }
}
