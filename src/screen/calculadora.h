#pragma once

namespace quorvel {

class frmQuorvel;

/// The calculator's "=": running result and number through the chosen operation, noted on the tape.
void calcular(frmQuorvel& f);
void limpiar_calculadora(frmQuorvel& f);

} // namespace quorvel
