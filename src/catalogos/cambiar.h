#pragma once
#include "catalogos/catalogo.h"

namespace quorvel {

/// A row as it is stored: without blanks at the ends, codes filled up, a RUT in its normal form.
[[nodiscard]] FilaCatalogo normalizar_fila(const Catalogo& c, FilaCatalogo fila);
/// What is wrong with a row. @param antes as it was read, empty for a new one @throws ErrorSesion
[[nodiscard]] std::vector<Observacion> revisar_fila(clsConexion& db, const Catalogo& c,
                                                    const FilaCatalogo& fila, const FilaCatalogo& antes);

// Each writes in one transaction and returns why it did not, "" when it did. What another user has changed or
// removed since it was read is never written over. @throws ErrorSesion

/// @param antes as it was read, empty for a new one; its code never changes
[[nodiscard]] std::string grabar_fila(clsConexion& db, const Catalogo& c, const FilaCatalogo& fila,
                                      const FilaCatalogo& antes);
[[nodiscard]] std::string borrar_fila(clsConexion& db, const Catalogo& c, const FilaCatalogo& antes);

} // namespace quorvel
