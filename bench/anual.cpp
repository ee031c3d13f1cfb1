// Both openings and the closing over a generated year against the engine's own time for the same sums, and
// the memory that they take. Arguments: vouchers, repetitions, engine.
#include "apoyo/comprobante.h"
#include "apoyo/sesiones.h"
#include "dbtools/base.h"
#include "generar.h"
#include "tabla.h"
#include "yearend/apertura.h"
#include "yearend/cierre.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

using namespace quorvel;
using namespace quorvel::bench;

namespace {

/// The module's sums in words that both engines understand.
const std::string APERTURA_DE =
    " from ctdquorvel a, ctmcentros b, ctmgcuenta c, ctcquorvel d where a.empresa=1 and a.f_comp between "
    "'2024-01-01' and '2024-12-31' and a.centro=b.centro and b.g_cuenta=c.g_cuenta and c.transitorio='0' and "
    "a.centro not in ('302002','302001') and a.empresa=d.empresa and a.subsistema=d.subsistema and "
    "a.f_comp=d.f_comp and a.documento=d.documento and a.num_docum=d.num_docum and d.ifrs in ('0','1') ";
const std::string SUMAS = "select a.centro,a.auxiliar,sum(a.debe_nacional),sum(a.haber_nacional)";
const std::string CIERRE =
    SUMAS +
    " from ctdquorvel a, ctmcentros b, ctmgcuenta c where a.empresa=1 and a.f_comp<='2024-12-31' and "
    "a.centro=b.centro and b.g_cuenta=c.g_cuenta and c.transitorio='1' group by a.centro,a.auxiliar order by "
    "sum(a.haber_nacional) desc, a.centro, a.auxiliar";

struct Tarea {
    const char* que;
    void (*hacer)(clsConexion& db);
    std::string sumas;
};

void lineas(const ResultadoAsiento& r) {
    if (!r.desenlace) std::fprintf(stderr, "%s\n", r.desenlace.mensaje().c_str()), std::exit(1);
    if (r.asiento.lineas.size() < 100) std::fprintf(stderr, "too few lines\n"), std::exit(1);
}
void apertura(clsConexion& db) { lineas(generar_apertura(db, {1, 2025, "1", "APERTURA", false})); }
void apertura_documento(clsConexion& db) { lineas(generar_apertura(db, {1, 2025, "1", "APERTURA", true})); }
void cierre(clsConexion& db) {
    lineas(generar_lineas_cierre(db, {1, apoyo::fecha(2024, 12, 31), "CIERRE", "302001", "302002", {}, {}}));
}

const Tarea TAREAS[] = {
    {"opening", apertura, SUMAS + APERTURA_DE + "group by a.centro,a.auxiliar order by a.centro, a.auxiliar"},
    {"opening by document", apertura_documento,
     SUMAS + ",d.num_ref,a.num_ref" + APERTURA_DE +
         "group by a.centro,a.auxiliar,a.num_ref,d.num_ref order by a.centro, a.auxiliar"},
    {"closing", cierre, CIERRE},
};

/// Peak memory of a fresh process of this program that opens the finished database and does one thing, in MB.
double memoria(const std::string& conexion, const std::string& que) {
    std::FILE* const hijo = ::popen((std::filesystem::read_symlink("/proc/self/exe").string() + " --hacer '" +
                                     que + "' '" + conexion + "'")
                                        .c_str(),
                                    "r");
    double mb = 0;
    if (hijo == nullptr || std::fscanf(hijo, "%lf", &mb) != 1 || ::pclose(hijo) != 0) std::exit(1);
    return mb;
}

double pico_mb() {
    std::ifstream estado("/proc/self/status");
    for (std::string linea; std::getline(estado, linea);)
        if (linea.starts_with("VmHWM:")) return std::atof(linea.c_str() + 6) / 1024;
    return 0;
}

void sumar(dbtools::Base& base, const Tarea& t) {
    if (base.motor() == "sqlite") base.ejecutar("pragma automatic_index=off; pragma temp_store=memory");
    (void)base.consultar(t.sumas);
}

/// The child: "nothing" only connects, "sum:" runs the bare aggregate, otherwise the module's own work.
int hacer(const std::string& que, const std::string& conexion) {
    for (const Tarea& t : TAREAS)
        if (que == "sum:" + std::string(t.que))
            sumar(*dbtools::abrir_base(conexion, dbtools::Abrir::existente), t);
        else if (que == t.que)
            t.hacer(*abrir_sesion(conexion));
    if (que == "nothing") (void)abrir_sesion(conexion);
    std::printf("%.1f\n", pico_mb());
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::string(argv[1]) == "--hacer") return hacer(argv[2], argv[3]);
    const int repeticiones = argc > 2 ? std::atoi(argv[2]) : 5;
    const int comprobantes = argc > 1 ? std::atoi(argv[1]) : 200000;
    for (const auto motor : apoyo::MOTORES) {
        if (argc > 3 && apoyo::nombre(motor) != argv[3]) continue;
        const std::string conexion = apoyo::conexion_nueva(motor);
        std::fprintf(stderr, "%s: generating %d vouchers\n", apoyo::nombre(motor).c_str(), comprobantes);
        generar(conexion, comprobantes);
        const auto db = abrir_sesion(conexion);
        const auto base = dbtools::abrir_base(conexion, dbtools::Abrir::existente);
        const double solo = memoria(conexion, "nothing");
        for (const Tarea& t : TAREAS) {
            const Par p = alternar(
                repeticiones, [&](int) { t.hacer(*db); }, [&](int) { sumar(*base, t); });
            const std::string que =
                apoyo::nombre(motor) + ": " + t.que + texto(", %d lines", comprobantes * 4);
            fila(que + ", to the bare aggregate",
                 texto("%.2f (%.2f s / %.2f s)", p.uno / p.otro, p.uno, p.otro), "<= 1.1");
            fila(que + ", peak memory beyond an open session, to the bare aggregate's",
                 texto("%.0f MB / %.0f MB", memoria(conexion, t.que) - solo,
                       memoria(conexion, "sum:" + std::string(t.que)) - solo),
                 "-");
        }
    }
}
