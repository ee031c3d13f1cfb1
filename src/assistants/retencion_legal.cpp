#include "assistants/retencion_legal.h"

namespace quorvel {
namespace {

struct Tramo {
    int desde;
    std::string_view porcentaje;
};
constexpr Tramo TRAMOS[] = {{2028, "17"}, {2027, "16"},    {2026, "15,25"}, {2025, "14,50"}, {2024, "13,75"},
                            {2023, "13"}, {2022, "12,25"}, {2021, "11,50"}, {2020, "10,75"}};
constexpr std::string_view ANTES = "10";

} // namespace

std::string_view porcentaje_legal(int anio) {
    for (const Tramo& t : TRAMOS)
        if (anio >= t.desde) return t.porcentaje;
    return ANTES;
}

} // namespace quorvel
