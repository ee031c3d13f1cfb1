#pragma once

namespace quorvel {

class frmQuorvel;

/// Tells above the voucher what is particular about it: cut and in no database, of a closed year, or that
/// what was on the screen before waits as a draft.
void avisar_estado(frmQuorvel& f);

} // namespace quorvel
