// The voucher screen from the opening of the session to the first key, with the demonstration chart and with
// 50,000 accounts and 500,000 auxiliaries: nothing may be read in advance. With --una CONEXION the program
// does it once and prints its peak memory.
#include "apoyo/comprobante.h"
#include "apoyo/sesiones.h"
#include "demo/demo.h"
#include "escritorio_mudo.h"
#include "largo.h"
#include "tabla.h"
#include "voucher/configuracion.h"

#include <sys/resource.h>

#include <cstring>
#include <filesystem>

using namespace quorvel;
using namespace quorvel::bench;

namespace {

constexpr int CUENTAS = 50000, AUXILIARES = 500000;

/// Opens and closes the screen; looks an account and an auxiliary up as a typed cell does.
void abrir_pantalla(const std::string& conexion, const std::string& carpeta) {
    const auto db = abrir_sesion(conexion), reporte = abrir_sesion_informes(carpeta + "/print.db");
    EscritorioMudo escritorio;
    SinImpresora impresor;
    RelojFijo reloj{apoyo::HOY};
    frmQuorvel f{{escritorio, reloj, impresor, carpeta}};
    preparar(f, *db, *reporte);
    f.Show();
    f.maestros[Maestro::cuentas].FindFirst("centro='101001'");
    f.maestros[Maestro::auxiliares].FindFirst("auxiliar='nadie'");
    f.Unload();
}

/// In a process of its own, in kB.
long memoria(const std::string& yo, const std::string& conexion) {
    FILE* tubo = popen(("'" + yo + "' --una '" + conexion + "'").c_str(), "r");
    long kb = 0;
    if (tubo == nullptr || std::fscanf(tubo, "%ld", &kb) != 1 || pclose(tubo) != 0) std::exit(1);
    return kb;
}

} // namespace

int main(int argc, char** argv) {
    const std::string carpeta = apoyo::carpeta_nueva();
    if (argc == 3 && std::strcmp(argv[1], "--una") == 0) {
        abrir_pantalla(argv[2], carpeta);
        rusage uso{};
        getrusage(RUSAGE_SELF, &uso);
        std::printf("%ld\n", uso.ru_maxrss);
        return 0;
    }
    const std::string yo = std::filesystem::read_symlink("/proc/self/exe");
    for (const auto motor : apoyo::MOTORES) {
        std::string chica = apoyo::conexion_nueva(motor), grande = apoyo::conexion_nueva(motor);
        for (const std::string& c : {chica, grande}) demo::crear_demo(c, apoyo::HOY);
        agrandar_maestros(grande, CUENTAS, AUXILIARES);
        const std::string que = apoyo::nombre(motor) + ": screen ready, 500000 auxiliaries / demonstration";
        const Par p = alternar(
            31, [&](int) { abrir_pantalla(chica, carpeta); }, [&](int) { abrir_pantalla(grande, carpeta); });
        fila(que, texto("%.2f (%.1f ms / %.1f ms)", p.otro / p.uno, p.otro * 1e3, p.uno * 1e3), "<= 1.2");
        const long poca = memoria(yo, chica), mucha = memoria(yo, grande);
        fila(que + ", peak memory",
             texto("%.2f (%ld kB / %ld kB)", static_cast<double>(mucha) / static_cast<double>(poca), mucha,
                   poca),
             "<= 1.2");
    }
}
