// Many accountants against one server that keeps what it confirms: what they save in a second, what each
// waits for, who is refused, and that every confirmed voucher is there once. Directly and through pgbouncer,
// which lends a server connection for one transaction. Arguments: seconds of each run (20), vouchers of each
// company (5000), only the runs of so many accountants, series (1).
#include "apoyo/pgbouncer.h"
#include "apoyo/servidor.h"
#include "apoyo/sesiones.h"
#include "contador.h"
#include "dbtools/revisar.h"
#include "empresas.h"
#include "generar.h"
#include "tabla.h"
#include "text/letras_utf8.h"
#include "vigia.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <thread>

using namespace quorvel;
using namespace quorvel::bench;

namespace {

constexpr int EMPRESAS = 20, USUARIO = 100, USUARIOS = 200;

struct Corrida {
    int contadores, por_empresa;
    double pausa;
    int servidores; ///< server connections that pgbouncer may hold; 0: everybody has one of his own
};
constexpr Corrida CORRIDAS[] = {{20, 10, 2, 0}, {20, 10, 2, 5}, {200, 10, 2, 0}, {200, 10, 2, 20},
                                {20, 10, 0, 0}, {20, 10, 0, 5}, {20, 1, 0, 0}};

/// Two pipes: each process tells that it is ready, and goes on when the other end of the second is closed.
struct Tubo {
    int leer = -1, escribir = -1;
    Tubo() {
        int extremos[2];
        if (pipe(extremos) != 0) throw std::runtime_error("pipe");
        leer = extremos[0], escribir = extremos[1];
    }
};
char esperar(const Tubo& t) {
    char c = 0;
    return read(t.leer, &c, 1) == 1 ? c : '\0';
}

/// An accountant's process; it ends without running what belongs to its parent.
[[noreturn]] void contador(const Encargo& e, const std::string& informe, const Tubo& listo,
                           const Tubo& partida) {
    Jornada j;
    const auto avisar = [&](char c) {
        if (write(listo.escribir, &c, 1) != 1) _exit(1);
    };
    bool conectado = false;
    try {
        trabajar(
            e,
            [&] {
                conectado = true;
                avisar('s');
                (void)esperar(partida);
            },
            j);
    } catch (const std::exception& error) {
        ++j.rechazos[std::string(conectado ? "session lost: " : "not connected: ") + error.what()];
        if (!conectado) avisar('n');
    }
    std::FILE* const archivo = std::fopen(informe.c_str(), "w");
    if (archivo == nullptr) _exit(1);
    j.escribir(archivo);
    _exit(std::fclose(archivo) == 0 ? 0 : 1);
}

/// The accountants of one run, from the connection of all to the end of the last.
class Equipo {
public:
    Equipo(const Corrida& c, const std::string& conexion, double segundos, const std::string& corrida) {
        for (int i = 0; i < c.contadores; ++i) {
            const Encargo e{conexion, corrida, 1 + i / c.por_empresa, USUARIO + i, segundos, c.pausa, 100000};
            const pid_t hijo = fork();
            if (hijo == 0) {
                close(partida_.escribir);
                contador(e, informe(i), listo_, partida_);
            }
            procesos_.push_back(hijo);
        }
        for (int i = 0; i < c.contadores; ++i) conectados_ += esperar(listo_) == 's';
    }
    [[nodiscard]] int conectados() const { return conectados_; }
    void empezar() { close(partida_.escribir); }
    [[nodiscard]] bool trabajando() {
        std::erase_if(procesos_, [this](pid_t p) {
            int fin = 0;
            if (waitpid(p, &fin, WNOHANG) == 0) return false;
            fallidos_ += fin != 0;
            return true;
        });
        return !procesos_.empty();
    }
    [[nodiscard]] Jornada jornada() const {
        if (fallidos_ > 0) throw std::runtime_error(texto("%d accountants ended badly", fallidos_));
        Jornada todas;
        for (int i = 0; std::FILE* const archivo = std::fopen(informe(i).c_str(), "r"); ++i) {
            todas.sumar(archivo);
            std::fclose(archivo);
        }
        return todas;
    }

private:
    [[nodiscard]] std::string informe(int i) const { return carpeta_ + "/" + std::to_string(i); }
    std::string carpeta_ = apoyo::carpeta_nueva();
    Tubo listo_, partida_;
    std::vector<pid_t> procesos_;
    int conectados_ = 0, fallidos_ = 0;
};

/// Confirmed vouchers of all runs against what the database holds, and what the checker finds.
struct Diferencias {
    std::vector<std::string> perdidos;
    int sobrescritos = 0; ///< later saves that a colleague's save of an older reading took back
};
Diferencias comparar(const std::string& conexion, std::map<std::string, Hecho> hechos) {
    Diferencias d{dbtools::revisar(conexion)};
    const auto filas =
        dbtools::abrir_base(conexion, dbtools::Abrir::existente)
            ->consultar("select concepto, estado, t_debe, (select count(*) from ctdquorvel d where "
                        "d.empresa=c.empresa and d.f_comp=c.f_comp and d.documento=c.documento and "
                        "d.num_docum=c.num_docum) from ctcquorvel c where concepto like '" +
                        std::string(MARCA) + "%'");
    for (const auto& f : filas) {
        const auto hecho = hechos.find(f[0]);
        if (hecho == hechos.end()) {
            d.perdidos.push_back(f[0] + ": there without having been confirmed, or there twice");
            continue;
        }
        const Hecho h = hecho->second;
        const bool anulado = h.anulado > 0;
        const int cambios = (std::atoi(f[2].c_str()) - DEBE) / CAMBIO;
        if (h.guardado != 1 || h.anulado > 1 || f[1] != (anulado ? "X" : "P") ||
            f[3] != (anulado ? "0" : "4") || cambios > h.cambiado)
            d.perdidos.push_back(
                f[0] + texto(": confirmed %d, %d and %d times, found ", h.guardado, h.cambiado, h.anulado) +
                f[1] + " " + f[2] + " with " + f[3] + " lines");
        d.sobrescritos += std::max(0, h.cambiado - cambios);
        hechos.erase(hecho);
    }
    for (const auto& [concepto, h] : hechos) d.perdidos.push_back(concepto + ": confirmed and not there");
    return d;
}

double cuantil(std::vector<double>& v, double q) {
    const auto en = v.begin() + static_cast<std::ptrdiff_t>(q * static_cast<double>(v.size() - 1));
    std::nth_element(v.begin(), en, v.end());
    return *en * 1e3;
}

struct Medido {
    Jornada jornada;
    double segundos = 0, memoria = 0, bouncer = 0; ///< its processor seconds
    Vigia::Contadores antes, despues;
    Vigia::Esperas esperas;
    int conectados = 0;
};

void mostrar(const std::string& que, Medido& m) {
    Jornada& j = m.jornada;
    const auto n = [](const std::vector<double>& v) { return static_cast<double>(v.size()); };
    double nuevos = 0, cambios = 0, anulados = 0;
    for (const auto& [concepto, h] : j.hechos)
        nuevos += h.guardado, cambios += h.cambiado, anulados += h.anulado;
    fila(que + "vouchers saved a second",
         texto("%.1f new, %.1f again, %.1f annulled", nuevos / m.segundos, cambios / m.segundos,
               anulados / m.segundos),
         "-");
    for (std::size_t a = 0; a < ACCIONES; ++a)
        if (auto& v = j.segundos.at(a); !v.empty())
            fila(que + NOMBRES.at(a),
                 texto("p50 %.1f ms, p99 %.1f ms (%.0f)", cuantil(v, 0.5), cuantil(v, 0.99), n(v)), "-");
    for (const auto& [motivo, veces] : j.rechazos)
        fila(que + "refused, " + primeros(motivo, 80), texto("%ld", veces), "-");
    const auto& e = m.esperas;
    std::string clases;
    for (const auto& [clase, veces] : e.por_clase) clases += texto(", %s %d", clase.c_str(), veces);
    fila(que + "looks that saw a lock wait",
         texto("%d of %d, at most %.0f waiting, longest %.0f ms", e.con_espera, e.miradas, e.maximo,
               e.mas_larga * 1e3) +
             clases,
         "-");
    fila(que + "deadlocks", texto("%.0f", m.despues.interbloqueos - m.antes.interbloqueos), "-");
    const double grabaciones = nuevos + cambios + anulados;
    fila(que + "a saved voucher costs",
         texto("%.2f ms of server processor, %.1f KB of log",
               (m.despues.cpu - m.antes.cpu) / grabaciones * 1e3,
               (m.despues.wal - m.antes.wal) / grabaciones / 1024) +
             (m.bouncer > 0 ? texto(", %.2f ms of pgbouncer", m.bouncer / grabaciones * 1e3) : ""),
         "-");
    fila(que + "memory of a connection on the server", texto("%.1f MB", m.memoria), "-");
}

/// @param hechos confirmed so far @return whether nothing was lost and the checker is content
bool correr(const Corrida& c, const apoyo::Servidor& servidor, const std::string& base, double segundos,
            int numero, std::map<std::string, Hecho>& hechos) {
    const std::string que =
        texto("%d accountants in %d companies, pause %g s%s: ", c.contadores, c.contadores / c.por_empresa,
              c.pausa, c.servidores > 0 ? ", pgbouncer" : "");
    const std::string corrida = std::string(1, static_cast<char>('A' + numero));
    std::unique_ptr<apoyo::Pgbouncer> delante;
    if (c.servidores > 0)
        delante = std::make_unique<apoyo::Pgbouncer>(servidor.puerto(), "transaction", c.servidores);
    Medido m;
    const std::string directa = servidor.conexion(base);
    Vigia vigia(directa);
    m.antes = vigia.contadores();
    Equipo equipo(c, delante ? delante->conexion(base) : directa, segundos, corrida);
    m.conectados = equipo.conectados();
    m.segundos = bench::segundos([&] {
        equipo.empezar();
        for (int n = 0; equipo.trabajando(); ++n) {
            vigia.mirar();
            if (n % 20 == 10) m.memoria = std::max(m.memoria, vigia.memoria_por_sesion());
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    });
    m.jornada = equipo.jornada();
    if (delante) m.bouncer = cpu(delante->proceso());
    delante.reset();
    m.despues = vigia.contadores();
    m.esperas = vigia.esperas();
    mostrar(que, m);
    for (const auto& [concepto, h] : m.jornada.hechos) {
        Hecho& suma = hechos[concepto];
        suma.guardado += h.guardado, suma.cambiado += h.cambiado, suma.anulado += h.anulado;
    }
    const Diferencias d = comparar(directa, hechos);
    for (const std::string& h : d.perdidos) std::fprintf(stderr, "%s\n", h.c_str());
    fila(que + texto("lost or doubled of %zu vouchers, and findings of db check", hechos.size()),
         texto("%zu", d.perdidos.size()), "0");
    fila(que + "confirmed changes overwritten, all runs so far", texto("%d", d.sobrescritos), "0");
    return d.perdidos.empty() && m.conectados == c.contadores;
}

} // namespace

int main(int argc, char** argv) {
    const double segundos = argc > 1 ? std::atof(argv[1]) : 20;
    const int comprobantes = argc > 2 ? std::atoi(argv[2]) : 5000;
    const int solo = argc > 3 ? std::atoi(argv[3]) : 0;
    const int series = argc > 4 ? std::atoi(argv[4]) : 1;
    apoyo::Servidor servidor(
        "-c fsync=on -c max_connections=300 -c shared_buffers=512MB -c max_wal_size=4GB");
    const std::string conexion = servidor.nueva(), base = conexion.substr(conexion.rfind('/') + 1);
    generar(conexion, comprobantes);
    multiplicar(conexion, EMPRESAS, comprobantes, USUARIO, USUARIOS);
    double carga = 0;
    (void)getloadavg(&carga, 1);
    fila("load of the machine when the accountants begin", texto("%.1f", carga), "-");
    bool bien = true;
    int numero = 0;
    std::map<std::string, Hecho> hechos;
    for (int serie = 0; serie < series; ++serie)
        for (const Corrida& c : CORRIDAS)
            if (solo == 0 || solo == c.contadores)
                bien = correr(c, servidor, base, segundos, numero++, hechos) && bien;
    return bien ? 0 : 1;
}
