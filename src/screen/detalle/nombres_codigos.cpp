#include "screen/detalle/nombres_codigos.h"

#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "voucher/nombres.h"

namespace quorvel {

namespace {

using std::chrono::seconds;
constexpr std::size_t FILAS = 10;
/// Others add accounts too: a name that is not found is looked for again in what is there now.
constexpr seconds EDAD_MAXIMA{600}, EDAD_SI_FALTA{10};

std::optional<Maestro> maestro_de(int columna) {
    switch (columna) {
    case CUENTA: return Maestro::cuentas;
    case AUXILIAR: return Maestro::auxiliares;
    case CENTRO: return Maestro::centros;
    default: return std::nullopt;
    }
}

} // namespace

bool NombresCodigos::se_busca(int columna) { return maestro_de(columna).has_value(); }

NombresCodigos::NombresCodigos(frmQuorvel& f) : f_(f) {
    f.grdDetalle.suggestions.SetSource([this](int columna, const std::string& texto) {
        std::vector<ui::Suggestion> filas;
        if (const auto maestro = maestro_de(columna))
            for (auto& [codigo, nombre] : buscar(*maestro, texto)) filas.push_back({codigo, nombre});
        return filas;
    });
    f.grdDetalle.notes.SetSource([this](int columna, const std::string& codigo) {
        const auto maestro = maestro_de(columna);
        return maestro ? nombre_de_codigo(*f_.glbdb, *maestro, codigo) : std::string();
    });
}

const NombresCodigos::Leido& NombresCodigos::leer(Maestro maestro, seconds edad_maxima) {
    const auto ahora = std::chrono::steady_clock::now();
    const auto leido = leidos_.find(maestro);
    if (leido != leidos_.end() && ahora - leido->second.cuando < edad_maxima) return leido->second;
    return leidos_[maestro] = {leer_nombres(*f_.glbdb, maestro), ahora};
}

std::vector<IndicePalabras::Entrada> NombresCodigos::buscar(Maestro maestro, const std::string& texto) {
    auto halladas = leer(maestro, EDAD_MAXIMA).indice.buscar(texto, FILAS);
    if (halladas.empty()) halladas = leer(maestro, EDAD_SI_FALTA).indice.buscar(texto, FILAS);
    return halladas;
}

} // namespace quorvel
