#pragma once
#include <array>
#include <filesystem>
#include <map>
#include <string>

namespace quorvel {

class frmQuorvel;

/// Boxes whose text a person has typed: one that differs makes a new voucher worth keeping.
inline constexpr std::array CAMPOS_ESCRITOS{"txtconcepto",       "txtnum_ref",     "txtfecha_doc",
                                            "txtfecha_pago",     "txtrut_persona", "txtnombre",
                                            "txtiva_activo_fijo"};

/// Everything of the shown voucher but its rows, by control name or by the name of the screen's state.
[[nodiscard]] std::map<std::string, std::string> campos_de_pantalla(const frmQuorvel& f);
/// Puts the fields back into a cleared or opened screen.
void mostrar_campos(frmQuorvel& f, const std::map<std::string, std::string>& campos);

/// Folder and group of the screen's drafts.
[[nodiscard]] std::filesystem::path carpeta_borradores(const frmQuorvel& f);
[[nodiscard]] std::string grupo_de(const frmQuorvel& f);

} // namespace quorvel
