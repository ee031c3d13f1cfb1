#pragma once
#include "platform/ui/entry.h"
#include "voucher/comprobante.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvel {

class frmQuorvel;

// Columns of the detail grid.
enum Columna {
    SEC,
    CUENTA,
    AUXILIAR,
    DEBE,
    HABER,
    GLOSA,
    CENTRO,
    CONCILIADO,
    DOC_PAGADO,
    OTRO_IMP,
    TASA,
    COLUMNAS
};

/// Builds the grid's columns; rows that are already there stay.
void construir_columnas(frmQuorvel& f);
/// KeyPress: the key's code, changed or 0 to discard it; the lookup key opens the lookup.
void tecla_detalle(frmQuorvel& f, int& tecla);
/// What a typed character becomes in a column, 0 when the column does not take it.
[[nodiscard]] int tecla_aceptada(int columna, int tecla);
/// TextEntering: a text that comes as a whole means something in its column or is refused; a sign makes a sum
/// of an amount, and the mark is one letter.
void texto_entra(frmQuorvel& f, ui::Entry& e);
/// What a whole text means in a column, nothing when it means nothing there.
[[nodiscard]] bool tasa_valida(const std::string& texto); ///< empty or a number without a sign
[[nodiscard]] std::optional<std::string> texto_aceptado(int columna, const std::string& texto);
void boton_detalle(frmQuorvel& f, int columna);
void antes_de_editar(frmQuorvel& f, int columna, bool& cancelar);
void antes_de_actualizar(frmQuorvel& f, int columna, const std::string& anterior, bool& cancelar);
void despues_de_actualizar(frmQuorvel& f, int columna);
/// Without the permission to delete lines the row stays.
void antes_de_borrar(frmQuorvel& f, bool& cancelar);
void celda_movida(frmQuorvel& f);
/// Fills the side that is missing on a line whose amounts are both empty.
void CuadrarLinea(frmQuorvel& f);
/// The shown account becomes another one: name, auxiliary emptied, gloss of the voucher.
void cuenta_elegida(frmQuorvel& f, const std::string& cuenta, const std::string& nombre);
/// The master recordset stands on the code. Null counts as "0".
[[nodiscard]] std::string requiere_auxiliar(frmQuorvel& f, const std::string& cuenta);
/// What cells hold that is no amount counts as 0.
[[nodiscard]] std::vector<Linea> lineas_de_grilla(const frmQuorvel& f);
/// Whether every debit and credit cell is empty or a number: a host puts any texts there.
[[nodiscard]] bool montos_legibles(const frmQuorvel& f);
/// The same of one row; row Rows is the one being added.
[[nodiscard]] Linea linea_de_grilla(const frmQuorvel& f, int fila);
/// The other tax exists; its name goes to the label.
[[nodiscard]] bool ValidarOtroImpuesto(frmQuorvel& f, const std::string& codigo);
/// Rate of the tax on which the recordset stands, "0,00".
[[nodiscard]] std::string tasa_otro_impuesto(frmQuorvel& f);

} // namespace quorvel
