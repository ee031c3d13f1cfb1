#pragma once
#include "text/indice_palabras.h"
#include "voucher/configuracion.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>

namespace quorvel {

class frmQuorvel;

/// Names in the grid of a host that wants them: beside the codes, and to choose a code by.
class NombresCodigos {
public:
    explicit NombresCodigos(frmQuorvel& f);
    /// The column's codes can be found by their names.
    [[nodiscard]] static bool se_busca(int columna);

private:
    struct Leido {
        IndicePalabras indice;
        std::chrono::steady_clock::time_point vale_hasta;
    };
    [[nodiscard]] std::vector<IndicePalabras::Entrada> buscar(Maestro maestro, const std::string& texto);
    [[nodiscard]] const IndicePalabras& leer(Maestro maestro);
    frmQuorvel& f_;
    std::map<Maestro, Leido> leidos_; ///< each read when it is first searched
};

} // namespace quorvel
