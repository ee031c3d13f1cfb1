#pragma once
#include "platform/report/report.h"
#include "platform/ui/escritorio.h"
#include "text/fecha.h"

#include <filesystem>

namespace quorvel {

/// What the screen needs beside the two sessions; handed in, never global.
struct Servicios {
    ui::Escritorio& escritorio;
    const Reloj& reloj;
    ReportPrinter& impresor;
    std::filesystem::path carpeta; ///< the program's own folder: settings file, attachments, drafts
    /// The host is this system's own: names beside codes and to choose by, a bar instead of the box that a
    /// save ends with. For other hosts and for scripts the screen stays as they know it.
    bool propio = false;
};

} // namespace quorvel
