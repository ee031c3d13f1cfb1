#include "dbtools/avance.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace quorvel::dbtools {

BarraAvance::BarraAvance(std::string que, long total)
    : que_(std::move(que)), total_(std::max(1L, total)), terminal_(isatty(STDERR_FILENO) == 1) {}

BarraAvance::~BarraAvance() {
    if (mostrado_ >= 0) std::fputs("\r\033[K", stderr);
}

void BarraAvance::mostrar(long hechas) {
    constexpr int ANCHO = 30;
    if (!terminal_) return;
    const int porcentaje = static_cast<int>(std::min(hechas, total_) * 100 / total_);
    if (porcentaje == mostrado_) return;
    mostrado_ = porcentaje;
    std::string barra(static_cast<std::size_t>(porcentaje * ANCHO / 100), '#');
    barra.resize(ANCHO, '.');
    std::fprintf(stderr, "\r%s [%s] %3d %%", que_.c_str(), barra.c_str(), porcentaje);
    std::fflush(stderr);
}

AvancePartes avance_en_terminal() {
    return [barra = std::shared_ptr<BarraAvance>(), parte = std::string()](const std::string& que,
                                                                           long hechas, long total) mutable {
        if (!barra || que != parte) {
            barra.reset(); // takes its line away before the next one is drawn
            barra = std::make_shared<BarraAvance>(que, total);
            parte = que;
        }
        barra->mostrar(hechas);
    };
}

} // namespace quorvel::dbtools
