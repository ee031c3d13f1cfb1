// Both openings and the closing over a generated year against the engine's own time for the same sums, and
// the memory that they take. Argument: vouchers.
#include "apoyo/comprobante.h"
#include "apoyo/sesiones.h"
#include "app/db/base.h"
#include "generar.h"
#include "tabla.h"
#include "yearend/apertura.h"
#include "yearend/cierre.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

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
    if (r.rechazo) std::fprintf(stderr, "%s\n", r.rechazo->mensaje.c_str()), std::exit(1);
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

/// Peak memory of a process that does it once, beyond that of one that only connects, in MB.
double memoria(const std::string& conexion, void (*hacer)(clsConexion&)) {
    const auto pico = [&](bool con_trabajo) {
        const pid_t hijo = fork();
        if (hijo == 0) {
            {
                const auto db = abrir_sesion(conexion);
                if (con_trabajo) hacer(*db);
            }
            _exit(0); // the server belongs to the parent
        }
        int estado = 0;
        rusage uso{};
        if (wait4(hijo, &estado, 0, &uso) != hijo || estado != 0) std::exit(1);
        return static_cast<double>(uso.ru_maxrss) / 1024;
    };
    const double solo = pico(false);
    return pico(true) - solo;
}

} // namespace

int main(int argc, char** argv) {
    const int comprobantes = argc > 1 ? std::atoi(argv[1]) : 200000;
    for (const auto motor : apoyo::MOTORES) {
        const std::string conexion = apoyo::conexion_nueva(motor);
        std::fprintf(stderr, "%s: generating %d vouchers\n", apoyo::nombre(motor).c_str(), comprobantes);
        generar(conexion, comprobantes);
        const auto db = abrir_sesion(conexion);
        const auto base = abrir_base(conexion, Abrir::existente);
        if (base->motor() == "sqlite") base->ejecutar("pragma automatic_index=off; pragma temp_store=memory");
        for (const Tarea& t : TAREAS) {
            const Par p = alternar(
                5, [&](int) { t.hacer(*db); }, [&](int) { (void)base->consultar(t.sumas); });
            const std::string que =
                apoyo::nombre(motor) + ": " + t.que + texto(", %d lines", comprobantes * 4);
            fila(que + ", to the bare aggregate",
                 texto("%.2f (%.2f s / %.2f s)", p.uno / p.otro, p.uno, p.otro), "<= 1.1");
            fila(que + ", peak memory", texto("%.0f MB", memoria(conexion, t.hacer)), "-");
        }
    }
}
