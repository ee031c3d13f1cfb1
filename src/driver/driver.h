#pragma once
#include "platform/report/report.h"

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace quorvel {

/// Prints into a folder and tells the file names of what it printed.
using FabricaImpresor = std::function<std::unique_ptr<ReportPrinter>(
    const std::filesystem::path& printdir, std::function<void(const std::string&)> impreso)>;

struct OpcionesDriver {
    FabricaImpresor impresor;
    std::filesystem::path definiciones; ///< folder of the paper definitions that come with the program
};

/// The forms without a window: one JSON request per line, one reply per line, written when the system waits
/// for input again. Ends with "quit" or with the input; forms are unloaded then, so that locks are released.
/// @return exit code
int run_driver(std::istream& entrada, std::ostream& salida, const OpcionesDriver& opciones);

} // namespace quorvel
