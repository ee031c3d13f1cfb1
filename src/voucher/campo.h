#pragma once
#include <cstdint>

namespace quorvel {

/// A field of a voucher or of its invoice, wherever it stands: on a screen, in a file.
enum class Campo : std::uint8_t {
    ninguno,
    fecha,
    documento,
    numero,
    concepto,
    libro,
    doc_libro,
    num_ref,
    fecha_documento,
    rut,
    nombre,
    norma,
    totales,
    detalle,
    cotizacion,
    correlativo,
    iva_activo_fijo,
    adjuntos
};

} // namespace quorvel
