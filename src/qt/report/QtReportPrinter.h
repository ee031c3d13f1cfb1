#pragma once
#include "platform/report/layout.h"
#include "platform/report/report.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QGuiApplication;

namespace quorvel::qt {

/// Reads the definition and the staging table and lays the pages out. @throws std::runtime_error in Spanish
[[nodiscard]] report::Layout compose_job(const ReportJob& job);
/// Writes a PDF file. @throws std::runtime_error in Spanish
void write_pdf(const report::Layout& layout, const std::filesystem::path& file, const std::string& title);

/// What fonts need where the program shows no window; nothing when it has an application already.
[[nodiscard]] std::unique_ptr<QGuiApplication> aplicacion_sin_ventanas();

/// Printer or preview window, as the job wants.
class QtReportPrinter : public ReportPrinter {
public:
    bool run(const ReportJob& job) override;
};

/// Every printout becomes a PDF file of a folder, unless the job names another; needs no window.
class PdfReportPrinter : public ReportPrinter {
public:
    explicit PdfReportPrinter(std::filesystem::path folder);
    ~PdfReportPrinter() override;
    bool run(const ReportJob& job) override;
    /// Told the file name of every PDF.
    std::function<void(const std::string&)> on_printed;
    [[nodiscard]] const std::vector<std::string>& printed() const { return printed_; }

private:
    [[nodiscard]] std::filesystem::path free_file(const std::string& stem) const;
    std::filesystem::path folder_;
    std::vector<std::string> printed_;
    std::unique_ptr<QGuiApplication> application_; ///< fonts need one; made when the program has none
};

} // namespace quorvel::qt
