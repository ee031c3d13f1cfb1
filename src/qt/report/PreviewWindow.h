#pragma once
#include "platform/report/layout.h"

#include <string>

namespace quorvel::qt {

/// Shows the pages until the person closes the window; they can be printed and saved as PDF from there.
void show_preview(const report::Layout& layout, const std::string& title);

} // namespace quorvel::qt
