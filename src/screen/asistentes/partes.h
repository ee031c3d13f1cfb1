#pragma once
#include "platform/db/clsConexion.h"
#include "platform/ui/controls.h"
#include "platform/ui/form.h"
#include "voucher/configuracion.h"

#include <optional>
#include <string>

namespace quorvel {

// What both assistant dialogs share: account and auxiliary entry, the counterpart and its auxiliaries.

/// Set by the caller before the dialog loads.
struct SesionAsistente {
    clsConexion* gdb = nullptr;
    Maestros* maestros = nullptr; ///< of the calling screen, which outlives the dialog
    std::string gstrrut, gstrnombre;
    bool gblnaceptar = false; ///< every check of "Aceptar" passed
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

[[nodiscard]] bool existe_cuenta(SesionAsistente& s, const std::string& cuenta);
/// Whether the account is known and requires an auxiliary.
[[nodiscard]] bool cuenta_requiere_auxiliar(SesionAsistente& s, const std::string& cuenta);
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
/// An amount leaves its box as it goes into cells and labels.
void formatear_monto(ui::ctlEntrada& monto);
/// Shows a failed check and goes to its control. @return ok
bool exigir(ui::Form& f, bool ok, const char* mensaje, ui::Control* foco = nullptr);
/// The auxiliary that the account requires must be there; neither it nor the counterpart's may have gone
/// since it was chosen. @return false after the message
bool exigir_auxiliares(ui::Form& f, SesionAsistente& s, const ParteCodigo& auxiliar,
                       const std::string& cuenta, ui::ComboBox& contraparte);

/// F5 presses "Aceptar" from wherever the focus is, Escape cancels.
void tecla_dialogo(ui::Form& f, ui::KeyEvent& e, ui::CommandButton& aceptar);

inline constexpr const char* FALTA_AUXILIAR_CONTRAPARTE =
    "Ingrese auxiliar, sino existe auxiliar presione el botón Generar auxiliar";

} // namespace quorvel
