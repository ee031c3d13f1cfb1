#include "vigia.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

namespace quorvel::bench {
namespace {

constexpr const char* ESPERAN =
    "select wait_event, extract(epoch from clock_timestamp()-query_start) from pg_stat_activity "
    "where wait_event_type='Lock' and backend_type='client backend'";
constexpr const char* CUENTAN =
    "select d.deadlocks, pg_wal_lsn_diff(pg_current_wal_lsn(), '0/0'), pg_database_size(d.datname), "
    "split_part(pg_read_file('postmaster.pid'), E'\\n', 1) from pg_stat_database d "
    "where d.datname=current_database()";
constexpr const char* CLIENTES =
    "select pid from pg_stat_activity where backend_type='client backend' and pid<>pg_backend_pid()";

} // namespace

double cpu(pid_t proceso) {
    std::ifstream archivo("/proc/" + std::to_string(proceso) + "/stat");
    std::string texto((std::istreambuf_iterator<char>(archivo)), {});
    std::istringstream campos(texto.substr(std::min(texto.size(), texto.rfind(')') + 1)));
    std::string campo;
    constexpr int UTIME = 12, CSTIME = 15; // counted behind the name
    double pulsos = 0;
    for (int n = 1; n <= CSTIME && campos >> campo; ++n)
        if (n >= UTIME) pulsos += std::atof(campo.c_str());
    return pulsos / static_cast<double>(sysconf(_SC_CLK_TCK));
}

Vigia::Vigia(const std::string& conexion) : base_(dbtools::abrir_base(conexion, dbtools::Abrir::existente)) {}

void Vigia::mirar() {
    const auto filas = base_->consultar(ESPERAN);
    ++esperas_.miradas;
    if (filas.empty()) return;
    ++esperas_.con_espera;
    esperas_.suma += static_cast<double>(filas.size());
    esperas_.maximo = std::max(esperas_.maximo, static_cast<double>(filas.size()));
    for (const auto& fila : filas) {
        ++esperas_.por_clase[fila[0]];
        esperas_.mas_larga = std::max(esperas_.mas_larga, std::atof(fila[1].c_str()));
    }
}

Vigia::Contadores Vigia::contadores() {
    for (int espera = 0; espera < 50 && !base_->consultar(CLIENTES).empty(); ++espera)
        std::this_thread::sleep_for(std::chrono::milliseconds(100)); // the time of the living is not counted
    const auto fila = base_->consultar(CUENTAN).at(0);
    return {std::atof(fila[0].c_str()), std::atof(fila[1].c_str()), std::atof(fila[2].c_str()),
            cpu(std::atoi(fila[3].c_str()))};
}

double Vigia::memoria_por_sesion() {
    double kb = 0;
    const auto filas = base_->consultar(CLIENTES);
    for (const auto& fila : filas) {
        std::ifstream estado("/proc/" + fila[0] + "/status");
        for (std::string linea; std::getline(estado, linea);)
            if (linea.starts_with("RssAnon:")) kb += std::atof(linea.c_str() + 8);
    }
    return filas.empty() ? 0 : kb / 1024 / static_cast<double>(filas.size());
}

} // namespace quorvel::bench
