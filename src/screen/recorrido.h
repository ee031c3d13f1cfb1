#pragma once

namespace quorvel {

class frmQuorvel;

/// Where Enter stops on its way to the grid: past the document's fields when the book has no documents.
void fijar_paradas(frmQuorvel& f);
/// F12: the grid, at the account of its line.
void ir_al_detalle(frmQuorvel& f);

} // namespace quorvel
