#pragma once
#include "platform/ui/ctlPlanilla.h"
#include "registro/bandeja.h"

namespace quorvel {

// How the inbox reads: rows, proof and sentences.

inline constexpr const char* MARCA = "✓";

void preparar_columnas_registro(ui::ctlPlanilla& grilla);
void preparar_columnas_prueba(ui::ctlPlanilla& grilla);
/// Grid row text of a row of the inbox.
[[nodiscard]] std::string renglon_registro(const registro::Bandeja& b, std::size_t fila);
[[nodiscard]] std::string renglon_prueba(const registro::LineaPrueba& l);
/// Counts by state, what is marked and its sum.
[[nodiscard]] std::string resumen_bandeja(const registro::Bandeja& b);
/// What is to be known of a row: its voucher, from where it takes over, what it lacks, what differs.
[[nodiscard]] std::string detalle_fila(const registro::Bandeja& b, const registro::Fila& f);
[[nodiscard]] std::string pregunta_contabilizar(const registro::Bandeja& b);
[[nodiscard]] std::string texto_balance(const registro::Balance& b);

} // namespace quorvel
