#pragma once
#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/escritorio.h"

#include <filesystem>

namespace quorvel {

/// Applies the column widths kept in the settings file; texts that are no whole number are passed over.
void restaurar_anchos(ui::ctlPlanilla& grilla, const std::filesystem::path& carpeta);
/// Keeps the column widths: one number per column, each ended by "#".
void guardar_anchos(const ui::ctlPlanilla& grilla, const std::filesystem::path& carpeta);

/// The same for the columns of the lookups, which live too short to keep them by themselves.
void restaurar_anchos_listas(ui::Escritorio& escritorio, const std::filesystem::path& carpeta);
void guardar_anchos_listas(const ui::Escritorio& escritorio, const std::filesystem::path& carpeta);

} // namespace quorvel
