#pragma once
#include <algorithm>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

namespace quorvel::bench {

/// One row of the table that bench/run prints: what, measured, target; columns parted by tabs.
inline void fila(const std::string& que, const std::string& medido, const std::string& meta) {
    std::printf("%s\t%s\t%s\n", que.c_str(), medido.c_str(), meta.c_str());
    std::fflush(stdout);
}

[[gnu::format(printf, 1, 2)]] inline std::string texto(const char* formato, ...) {
    char parte[512];
    va_list valores;
    va_start(valores, formato);
    std::vsnprintf(parte, sizeof parte, formato, valores);
    va_end(valores);
    return parte;
}

template <class F> double segundos(F&& f) {
    const auto inicio = std::chrono::steady_clock::now();
    f();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count();
}

/// The same in this process's own time: for pure computation on a machine that other programs use too, which
/// interrupt a long run oftener than a short one.
template <class F> double segundos_propios(F&& f) {
    const auto ahora = [] {
        timespec t{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
    };
    const double inicio = ahora();
    f();
    return ahora() - inicio;
}

inline double mediana(std::vector<double> v) {
    const auto medio = v.begin() + static_cast<std::ptrdiff_t>(v.size() / 2);
    std::nth_element(v.begin(), medio, v.end());
    return *medio;
}

/// Two ways of doing something by turns, so that whatever else the machine does hits both.
struct Par {
    double uno = 0, otro = 0; ///< medians in seconds
};
template <class A, class B> Par alternar(int veces, A&& a, B&& b) {
    std::vector<double> uno, otro;
    for (int i = 0; i < veces; ++i) {
        if (i % 2 == 0) {
            uno.push_back(segundos([&] { a(i); }));
            otro.push_back(segundos([&] { b(i); }));
        } else {
            otro.push_back(segundos([&] { b(i); }));
            uno.push_back(segundos([&] { a(i); }));
        }
    }
    return {mediana(std::move(uno)), mediana(std::move(otro))};
}

} // namespace quorvel::bench
