#pragma once
#include "platform/db/clsConexion.h"
#include "platform/ui/controls.h"
#include "platform/ui/form.h"
#include "voucher/comprobante.h"
#include "voucher/configuracion.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quorvel {

// What both assistant dialogs share: account and auxiliary entry, the counterpart and its auxiliaries.

/// Set by the caller before the dialog loads.
struct SesionAsistente {
    clsConexion* gdb = nullptr;
    Maestros* maestros = nullptr; ///< of the calling screen, which outlives the dialog
    std::string gstrrut, gstrnombre;
    std::string concepto;                  ///< gloss of the lines
    const Configuracion* config = nullptr; ///< accounts of the lines
    bool gblnaceptar = false;              ///< every check of "Aceptar" passed
    std::vector<Linea> lineas;             ///< what accepting made
    Totales totales;                       ///< the document's total on both sides
};

/// A code, its name and its lookup button; the code may be an account or an auxiliary.
struct ParteCodigo {
    ui::ctlEntrada& codigo;
    ui::Label& nombre;
    ui::CommandButton& buscar;
};
struct ParteContraparte {
    ui::Label &rut, &nombre;
    ui::ComboBox& auxiliares;
    ui::CommandButton& generar;
};

[[nodiscard]] bool existe_cuenta(const SesionAsistente& s, const std::string& cuenta);
/// Whether the account is known and requires an auxiliary.
[[nodiscard]] bool cuenta_requiere_auxiliar(const SesionAsistente& s, const std::string& cuenta);
void habilitar(const ParteCodigo& auxiliar, bool si);
/// @param auxiliar governed by this account; nothing when none is
void conectar_cuenta(ui::Form& f, SesionAsistente& s, const ParteCodigo& cuenta,
                     const std::optional<ParteCodigo>& auxiliar);
void conectar_auxiliar(ui::Form& f, SesionAsistente& s, const ParteCodigo& auxiliar,
                       const ui::ctlEntrada& cuenta);
/// "Genera Aux."
void conectar_contraparte(ui::Form& f, SesionAsistente& s, const ParteContraparte& p);
/// Shows RUT and name, fills the counterpart's auxiliaries and selects the first.
void CargarAuxiliaresRut(SesionAsistente& s, const ParteContraparte& p);
/// An amount leaves its box as it goes into cells and labels; a text that is no amount does not leave it.
void conectar_monto(ui::Form& f, ui::ctlEntrada& monto, std::function<void()> al_dejar);
/// Shows what the box does not take and keeps the person in it.
void rechazar_texto(ui::Form& f, ui::ctlEntrada& caja, const char* mensaje, bool& rechaza);
/// Shows a failed check and goes to its control. @return ok
bool comprobar(ui::Form& f, bool ok, const char* mensaje, ui::Control* foco = nullptr);
/// What a dialog cannot do without, in the order of the checks.
struct Exigencia {
    bool cumplida;
    const char* mensaje;
    ui::Control* foco;
};
/// Shows the first that is not met and goes to its control. @return all are met
[[nodiscard]] bool exigir_todas(ui::Form& f, std::span<const Exigencia> exigencias);
/// Takes the lines and ends the dialog. Debit and credit have no sign: what would need one is refused, since
/// a document that takes away is a credit note.
void aceptar_lineas(ui::Form& f, SesionAsistente& s, std::vector<Linea> lineas, ui::ctlEntrada& total);
/// The auxiliary that the account requires must be there; neither it nor the counterpart's may have gone
/// since it was chosen. @return false after the message
bool exigir_auxiliares(ui::Form& f, SesionAsistente& s, const ParteCodigo& auxiliar,
                       const std::string& cuenta, ui::ComboBox& contraparte);

/// The two buttons: "Aceptar" runs the checks and the dialog's own rest, "Cancelar" checks nothing.
void conectar_salidas(ui::Form& f, ui::CommandButton& aceptar, ui::CommandButton& cancelar,
                      std::function<void()> al_aceptar);
/// F5 presses "Aceptar" from wherever the focus is, Escape cancels.
void tecla_dialogo(ui::Form& f, ui::KeyEvent& e, ui::CommandButton& aceptar);

inline constexpr const char* FALTA_AUXILIAR_CONTRAPARTE =
    "Ingrese auxiliar, sino existe auxiliar presione el botón Generar auxiliar";

} // namespace quorvel
