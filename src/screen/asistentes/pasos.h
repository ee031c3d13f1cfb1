#pragma once
#include "screen/asistentes/partes.h"
#include "screen/estado_pantalla.h"

namespace quorvel {

class frmAsistente;
class frmQuorvel;

// Steps that every assistant command takes between the voucher screen and its dialog.

/// Hands session, recordsets and counterpart over; before the dialog loads.
void preparar_sesion(frmQuorvel& f, SesionAsistente& d);
/// Selects the screen's kind in the dialog; a kind that is not offered leaves no selection.
void preseleccionar_documento(const frmQuorvel& f, ui::ComboBox& documentos);
/// On a stored voucher the memory of another document is dropped; without memory the line proposes. @param
/// con_auxiliar also the line's auxiliary, when the account requires one
void recordar_linea(frmQuorvel& f, SeleccionRecordada& memoria, int fila, bool con_auxiliar);
/// The main line's account and auxiliary, into the dialog and out of it.
void mostrar_seleccion(frmAsistente& d, const SeleccionRecordada& memoria);
[[nodiscard]] SeleccionRecordada leer_seleccion(const frmAsistente& d);

} // namespace quorvel
