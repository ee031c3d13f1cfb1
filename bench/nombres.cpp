// A letter in a code's cell: the names that have it, among the demonstration chart, 50,000 accounts and
// 500,000 auxiliaries. Once the names are read, which the first letter waits for, no key may read them again.
#include "voucher/nombres.h"

#include "apoyo/comprobante.h"
#include "apoyo/sesiones.h"
#include "demo/demo.h"
#include "largo.h"
#include "tabla.h"

using namespace quorvel;
using namespace quorvel::bench;

namespace {

constexpr int CUENTAS = 50000, AUXILIARES = 500000;
/// What is typed on the way to a name: the most frequent beginning of all, and a rare one.
constexpr const char* TECLEADO[] = {"cu", "cue", "cuenta", "cuenta 4", "au", "auxiliar 33", "zz"};

void teclear(const IndicePalabras& indice) {
    for (const char* texto : TECLEADO) (void)indice.buscar(texto, 10);
}

} // namespace

int main() {
    for (const auto motor : apoyo::MOTORES) {
        const std::string chica = apoyo::conexion_nueva(motor), grande = apoyo::conexion_nueva(motor);
        for (const std::string& c : {chica, grande}) demo::crear_demo(c, apoyo::HOY);
        agrandar_maestros(grande, CUENTAS, AUXILIARES);
        const auto db_chica = abrir_sesion(chica), db = abrir_sesion(grande);
        const IndicePalabras pocas = leer_nombres(*db_chica, Maestro::cuentas);
        for (const auto& [que, maestro] : {std::pair{"50000 accounts", Maestro::cuentas},
                                           std::pair{"500000 auxiliaries", Maestro::auxiliares}}) {
            IndicePalabras muchas;
            const double leer =
                segundos([&] { muchas = leer_nombres(*db, maestro), (void)muchas.buscar("zz", 1); });
            const Par p = alternar(
                201, [&](int) { teclear(pocas); }, [&, &muchas = muchas](int) { teclear(muchas); });
            fila(apoyo::nombre(motor) + ": names of " + que + " read, once",
                 texto("%.0f ms for %zu", leer * 1e3, muchas.cantidad()), "");
            fila(apoyo::nombre(motor) + ": a letter among " + que + " / demonstration chart",
                 texto("%.1f us / %.1f us", p.otro * 1e6 / std::size(TECLEADO),
                       p.uno * 1e6 / std::size(TECLEADO)),
                 "< 1 ms");
        }
    }
}
