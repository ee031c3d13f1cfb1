#pragma once
#include "interchange/tablas_impresion.h"
#include "platform/db/avance.h"
#include "voucher/comprobante.h"
#include "voucher/configuracion.h"

namespace quorvel {

/// What the screen adds to the lines that the database holds.
struct ImpresionComprobante {
    Clave clave;
    std::string empresa, usuario; ///< toolbar captions: code, blank, name
    std::string documento;        ///< entry of the document list: code, blank, name
    std::string concepto, hora;
    std::string elaborado, revisado, aprobado;
};
/// Fills the staging table with the saved lines in their order, then the header row. All or nothing.
/// @param auxiliares recordset of the auxiliaries, searched by code @param avance hears of lines
/// @return false when stopped @throws std::runtime_error, ErrorSesion
bool preparar_comprobante(clsConexion& db, clsConexion& reporte, const ImpresionComprobante& i,
                          Recordset& auxiliares, const Avance& avance = {});

} // namespace quorvel
