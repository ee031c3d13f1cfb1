#pragma once
#include "platform/report/layout.h"

#include <string>

namespace quorvel::qt {

/// Shows the pages until the person closes the window; they can be printed and saved as PDF from there.
/// @param name what the paper is about, for the file's name
/// @return whether they were printed or saved
bool show_preview(const report::Layout& layout, const std::string& title, const std::string& name = "");

} // namespace quorvel::qt
