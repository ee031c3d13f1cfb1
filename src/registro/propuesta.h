#pragma once
#include "registro/cotejo.h"

#include <map>

namespace quorvel::registro {

/// What a new voucher takes over from the last one of its counterpart and kind.
struct Propuesta {
    std::string cuenta, auxiliar, centro_costo, glosa;
    std::string
        folio; ///< document of the voucher that it comes from: where the gloss names it, the new one's
    std::string aux_contraparte; ///< the counterpart's own auxiliary
    std::optional<Clave> de;     ///< the voucher that it comes from; nothing: the person gave it
};
/// The gloss for a document: the number of the earlier one gives way to its own.
[[nodiscard]] std::string glosa_para(const Propuesta& p, const std::string& folio);
/// By book, kind and RUT. @see llave_propuesta
using Propuestas = std::map<std::string, Propuesta>;
[[nodiscard]] std::string llave_propuesta(const Fila& f);

/// Proposals for the rows that are new: of the counterpart's last voucher of that kind, otherwise of that
/// book. Counterparts without one get their auxiliary alone. One statement for many counterparts.
/// @throws ErrorSesion
[[nodiscard]] Propuestas proponer(clsConexion& db, int empresa, const Configuracion& k,
                                  const std::vector<Fila>& filas);
/// The counterparts' active auxiliaries, by RUT as the screen shows it. @throws ErrorSesion
[[nodiscard]] std::map<std::string, std::string> auxiliares_por_rut(clsConexion& db,
                                                                    const std::vector<std::string>& ruts);

} // namespace quorvel::registro
