#pragma once
#include "platform/db/clsConexion.h"

#include <filesystem>
#include <stdexcept>
#include <string>

namespace quorvel {

/// One printout: a definition file, the staging table that feeds it, where it goes.
struct ReportJob {
    std::filesystem::path definition; ///< an .rpt file
    std::string table;                ///< staging table of the session
    clsConexion* session = nullptr;
    bool to_printer = false; ///< false: preview window
    std::string title;
    bool ruler = false; ///< a grid of millimetres over the pages, to adjust pre-printed paper
};

/// The report component. Implementations: Qt (printer, preview, PDF), and one of the tests that records jobs.
class ReportPrinter {
public:
    virtual ~ReportPrinter() = default;
    /// @throws std::runtime_error with a Spanish text for the user: missing definition (with its path),
    /// broken definition (with file and line), unknown field, no printer
    virtual void run(const ReportJob& job) = 0;
};

} // namespace quorvel
