#pragma once
#include "platform/ui/ctlPlanilla.h"

#include <filesystem>

namespace quorvel {

/// Applies the column widths kept in the settings file; texts that are no whole number are passed over.
void restaurar_anchos(ui::ctlPlanilla& grilla, const std::filesystem::path& carpeta);
/// Keeps the column widths: one number per column, each ended by "#".
void guardar_anchos(const ui::ctlPlanilla& grilla, const std::filesystem::path& carpeta);

} // namespace quorvel
