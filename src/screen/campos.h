#pragma once
#include "screen/estado_pantalla.h"
#include "voucher/comprobante.h"
#include "voucher/desenlace.h"

#include <string>
#include <vector>

namespace quorvel {

namespace ui {
class Control;
class ListControl;
} // namespace ui
class frmQuorvel;

// The only code that knows both the controls and the record.

/// The control of a field, null when it has none.
[[nodiscard]] ui::Control* control_de(frmQuorvel& f, Campo campo);
/// The voucher on the screen. While a saved voucher is shown, its key is the one that it was read with.
[[nodiscard]] Comprobante leer_pantalla(const frmQuorvel& f);
/// Date, document kind, number and currency, which only a new header is written with: open in a new voucher,
/// fixed in a saved one.
void permitir_identidad(frmQuorvel& f, bool editable);
/// Shows a header that was read from the database; the lines follow by the grid's query.
void mostrar_comprobante(frmQuorvel& f, const Comprobante& c);
/// Code of the chosen document kind, empty for "(Ninguno)".
[[nodiscard]] std::string codigo_documento(const frmQuorvel& f);
/// First two characters of the subsystem label.
[[nodiscard]] std::string subsistema(const frmQuorvel& f);
/// Key of the shown voucher; nothing without a date.
[[nodiscard]] std::optional<Clave> clave_pantalla(const frmQuorvel& f);
/// Selects the first entry whose first n characters, trimmed, equal the code trimmed. @return false:
/// unchanged
bool seleccionar_codigo(frmQuorvel& f, const char* lista, std::size_t n, const std::string& codigo);
/// All entries of a list.
[[nodiscard]] std::vector<std::string> entradas(const ui::ListControl& lista);
/// Selects an entry by its whole text; blank is the first one, another text is added for this voucher.
void elegir_texto(ui::ListControl& lista, const std::string& texto);
/// Selects by the first n characters, trimmed; an unknown code is added for this voucher, so that it is
/// written back unchanged.
void elegir_codigo(ui::ListControl& lista, std::size_t n, const std::string& texto);
/// Takes away the entries that lists got for a voucher whose texts they do not know.
void quitar_prestadas(frmQuorvel& f);
/// Window title of a saved voucher.
[[nodiscard]] std::string titulo(const frmQuorvel& f, const std::string& estado = {});
/// Grid row text: cells joined by tabs, control characters as blanks.
[[nodiscard]] std::string fila_texto(const std::vector<std::string>& celdas);
/// A line as its grid row. @param numero its first cell
[[nodiscard]] std::string fila_de(int numero, const Linea& l);
/// Lines numbered from 1.
[[nodiscard]] std::vector<std::string> filas_de(const std::vector<Linea>& lineas);
/// Empties the grid, adds these lines numbered from 1 and shows the totals.
void reemplazar_lineas(frmQuorvel& f, const std::vector<Linea>& lineas, const Totales& totales);
/// Shows both totals, in whole pesos.
void mostrar_totales(frmQuorvel& f, const Totales& totales);
/// Clears the screen for a new voucher.
void limpiar_para_nuevo(frmQuorvel& f);
/// Code and name of a user, the code alone when he is in no master.
[[nodiscard]] std::string nombre_usuario(frmQuorvel& f, std::int64_t usuario);
inline constexpr const char* ANULADO = "El comprobante está anulado";
/// Enables or disables what changes a voucher; when it is off its text boxes only give copies and a tooltip
/// says why.
void permitir_cambios(frmQuorvel& f, bool modificar, bool borrar_linea, bool imprimir,
                      const std::string& motivo);
/// Remembers which change is in doubt; what somebody else's change kept from being saved stays as a draft.
void anotar_desenlace(frmQuorvel& f, const Desenlace& d, EnDuda cambio);
/// Shows what a rule says.
void avisar(frmQuorvel& f, const Rechazo& r);
/// Number and correlative rules, run by the lists' selection and after a date was set.
void proponer_numero_documento(frmQuorvel& f);
void proponer_correlativo_libro(frmQuorvel& f);

} // namespace quorvel
