#include "app/oficina/avance.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace quorvel {

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

} // namespace quorvel
