#include "contador.h"

#include <cstring>

namespace quorvel::bench {

void Jornada::escribir(std::FILE* archivo) const {
    for (std::size_t a = 0; a < segundos.size(); ++a)
        for (const double s : segundos[a]) std::fprintf(archivo, "t %zu %.9f\n", a, s);
    for (const auto& [concepto, h] : hechos)
        std::fprintf(archivo, "h %d %d %d %s\n", h.guardado, h.cambiado, h.anulado, concepto.c_str());
    for (const auto& [texto, veces] : rechazos) std::fprintf(archivo, "r %ld %s\n", veces, texto.c_str());
}

void Jornada::sumar(std::FILE* archivo) {
    std::array<char, 1024> linea{};
    while (std::fgets(linea.data(), linea.size(), archivo) != nullptr) {
        linea.at(std::strcspn(linea.data(), "\n")) = '\0';
        std::size_t accion = 0;
        double tiempo = 0;
        Hecho h;
        long veces = 0;
        int texto = 0;
        if (std::sscanf(linea.data(), "t %zu %lf", &accion, &tiempo) == 2) {
            segundos.at(accion).push_back(tiempo);
        } else if (std::sscanf(linea.data(), "h %d %d %d %n", &h.guardado, &h.cambiado, &h.anulado, &texto) ==
                   3) {
            Hecho& suma = hechos[linea.data() + texto];
            suma.guardado += h.guardado, suma.cambiado += h.cambiado, suma.anulado += h.anulado;
        } else if (std::sscanf(linea.data(), "r %ld %n", &veces, &texto) == 1) {
            rechazos[linea.data() + texto] += veces;
        }
    }
}

} // namespace quorvel::bench
