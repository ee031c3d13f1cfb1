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
    bool ruler = false;          ///< a grid of millimetres over the pages, to adjust pre-printed paper
    std::string name{};          ///< what the paper is about, to name a file after it
    std::filesystem::path pdf{}; ///< a PDF file instead of printer and window
};

/// A PDF's file name after what it is about: "Empresa 001 TRASPASO 7.pdf", without what a file system
/// refuses.
[[nodiscard]] std::string pdf_name(const std::string& about);

/// The report component. Implementations: Qt (printer, preview, PDF), and one of the tests that records jobs.
/// Where there is no printer a job for it is shown instead, to be kept as a PDF.
class ReportPrinter {
public:
    virtual ~ReportPrinter() = default;
    /// @throws std::runtime_error with a Spanish text for the user: missing definition (with its path),
    /// broken definition (with file and line), unknown field
    /// @return false when the person has let it be and there is no paper
    virtual bool run(const ReportJob& job) = 0;
};

} // namespace quorvel
