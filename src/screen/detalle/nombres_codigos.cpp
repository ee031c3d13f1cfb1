#include "screen/detalle/nombres_codigos.h"

#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "voucher/nombres.h"

namespace quorvel {

namespace {

using std::chrono::steady_clock;
constexpr std::size_t FILAS = 10;
/// Others add accounts too: a name that is not found is looked for again in what is there now, but reading
/// may take no more than a hundredth of the time.
constexpr int PROPORCION = 100;

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

const IndicePalabras& NombresCodigos::leer(Maestro maestro) {
    const auto inicio = steady_clock::now();
    Leido& leido = leidos_[maestro];
    leido.indice = leer_nombres(*f_.glbdb, maestro);
    const auto fin = steady_clock::now();
    leido.vale_hasta = fin + PROPORCION * (fin - inicio);
    return leido.indice;
}

std::vector<IndicePalabras::Entrada> NombresCodigos::buscar(Maestro maestro, const std::string& texto) {
    const auto leido = leidos_.find(maestro);
    if (leido == leidos_.end()) return leer(maestro).buscar(texto, FILAS);
    const auto halladas = leido->second.indice.buscar(texto, FILAS);
    if (!halladas.empty() || steady_clock::now() < leido->second.vale_hasta) return halladas;
    return leer(maestro).buscar(texto, FILAS);
}

} // namespace quorvel
