// Accountants who save without a pause while servers come and go: what was confirmed must be there in the
// end, and how long nobody could save. Arguments: connection of an empty database (several hosts), seconds,
// accountants.
#include "apoyo/comprobante.h"
#include "apoyo/empresa.h"
#include "dbtools/base.h"
#include "dbtools/esquema.h"
#include "dbtools/revisar.h"
#include "tabla.h"
#include "voucher/grabar.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <set>
#include <thread>

using namespace quorvel;
using namespace quorvel::bench;

namespace {

using Reloj = std::chrono::steady_clock;

struct Cuenta {
    std::vector<std::string> confirmados;
    double sin_servicio = 0; ///< seconds of the longest pause between two saves
    int fallidos = 0;
};

/// One accountant, to the end; a refused save is tried again under the next number.
Cuenta trabajar(const std::string& conexion, int quien, double segundos) {
    Cuenta cuenta;
    std::unique_ptr<clsConexion> db;
    const auto inicio = Reloj::now();
    auto ultima = inicio;
    for (int n = 1; std::chrono::duration<double>(Reloj::now() - inicio).count() < segundos; ++n) {
        Comprobante c = apoyo::compra(std::to_string(quien * 1000000 + n));
        OpcionesGrabar o;
        o.nuevo = true, o.hoy = apoyo::HOY, o.anio = 2024;
        std::string error;
        try {
            if (!db) db = abrir_sesion(conexion);
            error = GrabarComprobante(*db, c, o).desenlace.mensaje();
        } catch (const std::exception& e) {
            error = e.what();
        }
        if (!error.empty()) {
            ++cuenta.fallidos;
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            continue;
        }
        cuenta.sin_servicio =
            std::max(cuenta.sin_servicio, std::chrono::duration<double>(Reloj::now() - ultima).count());
        ultima = Reloj::now();
        cuenta.confirmados.push_back(c.num_docum);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return cuenta;
}

/// The end may fall into a time without a primary.
std::unique_ptr<dbtools::Base> cuando_vuelva(const std::string& conexion) {
    for (int intento = 1;; ++intento) try {
            return dbtools::abrir_base(conexion, dbtools::Abrir::existente);
        } catch (const ErrorSesion&) {
            if (intento == 60) throw;
            std::this_thread::sleep_for(std::chrono::seconds(1));
        }
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    const std::string conexion = argv[1], informe = apoyo::carpeta_nueva() + "/";
    const double segundos = argc > 2 ? std::atof(argv[2]) : 60;
    const int contadores = argc > 3 ? std::atoi(argv[3]) : 5;
    dbtools::crear_esquema(conexion);
    sembrar_empresa(*abrir_sesion(conexion));
    std::vector<pid_t> procesos;
    for (int i = 1; i <= contadores; ++i) {
        procesos.push_back(fork());
        if (procesos.back() != 0) continue;
        const Cuenta c = trabajar(conexion, i, segundos);
        std::ofstream salida(informe + std::to_string(i));
        salida << c.sin_servicio << ' ' << c.fallidos << '\n';
        for (const std::string& numero : c.confirmados) salida << numero << '\n';
        salida.close();
        _exit(salida ? 0 : 1);
    }
    for (const pid_t p : procesos) (void)waitpid(p, nullptr, 0);
    const auto base = cuando_vuelva(conexion);
    std::set<std::string> hay;
    std::size_t filas = 0;
    for (const auto& f : base->consultar("select num_docum from ctcquorvel"))
        filas += hay.insert(f[0]).second;
    int perdidos = 0, confirmados = 0, fallidos = 0;
    double peor = 0;
    for (int i = 1; i <= contadores; ++i) {
        std::ifstream archivo(informe + std::to_string(i));
        double pausa = 0;
        int fallas = 0;
        archivo >> pausa >> fallas;
        peor = std::max(peor, pausa), fallidos += fallas;
        for (std::string numero; archivo >> numero; ++confirmados) perdidos += hay.contains(numero) ? 0 : 1;
    }
    fila("vouchers confirmed, and there", texto("%d, %zu", confirmados, filas), "-");
    fila("confirmed and not there", texto("%d", perdidos), "0");
    fila("saves refused meanwhile", texto("%d", fallidos), "-");
    fila("longest time in which somebody could not save", texto("%.1f s", peor), "-");
    fila("findings of db check", texto("%zu", dbtools::revisar(conexion).size()), "0");
    return perdidos == 0 ? 0 : 1;
}
