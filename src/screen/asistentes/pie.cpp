#include "screen/asistentes/pie.h"

#include "screen/maestro.h"

#include <algorithm>

namespace quorvel {
namespace {

constexpr const char* SIN_CUENTA = "Sin cuenta: falta en la configuración del año (Ctrl+K)";

std::string lado(const std::optional<Decimal>& m) { return m && *m != 0 ? m->formato("#,##0") : ""; }

} // namespace

const std::string& PieLineas::nombre(Recordset& cuentas, const std::string& codigo) {
    const auto [it, nueva] = nombres_.try_emplace(codigo);
    if (nueva && buscar_codigo(cuentas, "centro", codigo)) it->second = campo(cuentas, "n_centro");
    return it->second;
}

void PieLineas::mostrar(const SesionAsistente& s, std::span<const Exigencia> exigencias,
                        const std::function<std::vector<Linea>()>& lineas) {
    std::string cuentas, debe, haber;
    const auto falta = std::ranges::find(exigencias, false, &Exigencia::cumplida);
    if (falta != exigencias.end()) {
        cuentas = falta->mensaje;
    } else {
        for (const Linea& l : lineas()) {
            const char* const fin = cuentas.empty() ? "" : "\n";
            cuentas +=
                fin +
                (l.centro.empty() ? SIN_CUENTA
                                  : l.centro + "  " + nombre((*s.maestros)[Maestro::cuentas], l.centro)) +
                (l.auxiliar.empty() ? "" : "  ·  " + l.auxiliar);
            debe += fin + lado(l.debe);
            haber += fin + lado(l.haber);
        }
    }
    cuentas_.SetCaption(cuentas);
    debe_.SetCaption(debe);
    haber_.SetCaption(haber);
}

} // namespace quorvel
