#pragma once
#include <filesystem>

namespace quorvel {

/// Works through the real windows with key strokes: a purchase keyed in, saved, found again and printed.
/// Leaves pictures and the PDF in the folder. Needs a QApplication. @return the program's exit code
int demo_run(const std::filesystem::path& carpeta);

} // namespace quorvel
