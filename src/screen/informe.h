#pragma once
#include "platform/report/report.h"

#include <string>

namespace quorvel {

/// The screen's report component: what to print is set first, then it is started.
struct RptReporte {
    explicit RptReporte(std::string titulo) : WindowTitle(std::move(titulo)) {}
    std::string WindowTitle, ReportFileName;
    std::string Name, PdfFile; ///< what the paper is about; where it goes as a PDF
    bool ToPrinter = false;
    /// @return false when there is no paper @throws std::runtime_error with a text for the user
    bool Start(ReportPrinter& impresor, const std::string& tabla, clsConexion& reporte) const {
        return impresor.run({ReportFileName, tabla, &reporte, ToPrinter, WindowTitle, false, Name, PdfFile});
    }
};

} // namespace quorvel
