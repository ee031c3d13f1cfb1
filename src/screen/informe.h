#pragma once
#include "platform/report/report.h"

#include <string>

namespace quorvel {

/// The screen's report component: what to print is set first, then it is started.
struct RptReporte {
    explicit RptReporte(std::string titulo) : WindowTitle(std::move(titulo)) {}
    std::string WindowTitle, ReportFileName;
    bool ToPrinter = false;
    /// @throws std::runtime_error with a text for the user
    void Start(ReportPrinter& impresor, const std::string& tabla, clsConexion& reporte) const {
        impresor.run({ReportFileName, tabla, &reporte, ToPrinter, WindowTitle});
    }
};

} // namespace quorvel
