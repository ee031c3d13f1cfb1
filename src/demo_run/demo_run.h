#pragma once
#include <filesystem>

namespace quorvel::demo_run {

/// Works through the real windows with key strokes: a purchase keyed in, saved, found again and printed, the
/// assistants, an invoice, the closing of the year; then opens the host application's windows. Leaves the
/// manual's pictures and the PDF files in the folder. Needs a QApplication. @return the program's exit code
int demo_run(const std::filesystem::path& carpeta);

} // namespace quorvel::demo_run
