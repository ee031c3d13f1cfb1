#pragma once
#include "dbtools/avance.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quorvel::dbtools {

/// One company that goes from one database to another, of whatever engine.
struct PedidoTraslado {
    std::string de, a; ///< "sqlite:PATH", a plain path or "postgresql://…"
    int empresa = 0;
    int codigo = 0;                 ///< its number where it arrives; 0: the same
    std::filesystem::path adjuntos; ///< folder that contains the folder "adjunto" of both databases
};
struct Trasladado {
    int codigo = 0;
    long filas = 0;
    std::size_t adjuntos = 0;
    std::vector<std::string> faltan; ///< attached files that were not there before either
};

/// Moves a company with its vouchers, years, balances, invoices, history, attached files and what it uses of
/// the shared tables, while others work in both databases. From the beginning its rows can be read and not
/// changed; everything is copied and then compared row by row; one small change then takes it off the source,
/// and only then it is to be seen where it arrived. Ended at any moment, the same call goes on, and nothing
/// is lost or twice.
/// @throws std::runtime_error in Spanish: codes that clash (nothing is changed), a copy that differs (the
/// company stays where it was, closed for changes until the move is repeated or undone)
[[nodiscard]] Trasladado trasladar(const PedidoTraslado& pedido, const AvancePartes& avance);
/// Takes an unfinished move back: the company can be changed again where it was, the copy goes.
/// @throws std::runtime_error when the company is not there any more
void deshacer_traslado(const PedidoTraslado& pedido);

} // namespace quorvel::dbtools
