#include "qt/report/QtReportPrinter.h"

#include "qt/report/PreviewWindow.h"
#include "qt/report/painting.h"
#include "qt/report/pdf_file.h"
#include "qt/text.h"

#include <QApplication>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

namespace quorvel::qt {

report::Layout compose_job(const ReportJob& job) {
    const auto definition = report::read_definition(job.definition);
    const auto data = report::read_rows(*job.session, job.table, definition);
    auto layout = report::compose(definition, data, text_width);
    if (job.ruler) report::add_ruler(layout);
    return layout;
}

void write_pdf(const report::Layout& layout, const std::filesystem::path& file, const std::string& title) {
    write_pdf_file(file, title, [&](QPdfWriter& writer) {
        writer.setResolution(600);
        set_paper(writer, layout);
        paint_all(writer, layout);
    });
}

bool QtReportPrinter::run(const ReportJob& job) {
    const auto layout = compose_job(job);
    if (!job.pdf.empty()) {
        write_pdf(layout, job.pdf, job.title);
        return true;
    }
    if (!job.to_printer || QPrinterInfo::availablePrinterNames().isEmpty())
        return show_preview(layout, job.title, job.name);
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(to_qt(job.title));
    set_paper(printer, layout);
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    if (dialog.exec() != QDialog::Accepted) return false;
    paint_all(printer, layout);
    return true;
}

std::unique_ptr<QGuiApplication> aplicacion_sin_ventanas() {
    if (QCoreApplication::instance() != nullptr) return nullptr;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "quorvel";
    static char* argv[] = {name, nullptr};
    // without a window there is nothing to say about where windows would keep their files
    const auto antes = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    auto aplicacion = std::make_unique<QGuiApplication>(argc, argv);
    qInstallMessageHandler(antes);
    return aplicacion;
}

PdfReportPrinter::PdfReportPrinter(std::filesystem::path folder) : folder_(std::move(folder)) {}
PdfReportPrinter::~PdfReportPrinter() = default;

std::filesystem::path PdfReportPrinter::free_file(const std::string& stem) const {
    std::error_code ignored;
    std::filesystem::create_directories(folder_, ignored);
    std::string name = stem + ".pdf";
    for (int i = 2; std::filesystem::exists(folder_ / name); ++i)
        name = stem + "-" + std::to_string(i) + ".pdf";
    return folder_ / name;
}

bool PdfReportPrinter::run(const ReportJob& job) {
    if (auto nueva = aplicacion_sin_ventanas()) application_ = std::move(nueva);
    const auto file = job.pdf.empty() ? free_file(job.definition.stem().string()) : job.pdf;
    write_pdf(compose_job(job), file, job.title);
    printed_.push_back(file.filename().string());
    if (on_printed) on_printed(printed_.back());
    return true;
}

} // namespace quorvel::qt
