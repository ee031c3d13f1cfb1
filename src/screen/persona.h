#pragma once
#include "platform/ui/keys.h"

namespace quorvel {

class frmQuorvel;

/// The RUT box was left: a valid RUT takes its normal form, a wrong one waits for the save to say so.
void rut_dejado(frmQuorvel& f);
/// Lookup of a counterpart: RUT and name.
void buscar_persona(frmQuorvel& f);
void tecla_persona(frmQuorvel& f, ui::KeyEvent& e);

} // namespace quorvel
