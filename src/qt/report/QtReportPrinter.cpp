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

void QtReportPrinter::run(const ReportJob& job) {
    const auto layout = compose_job(job);
    if (!job.to_printer) return show_preview(layout, job.title);
    if (QPrinterInfo::availablePrinterNames().isEmpty())
        throw std::runtime_error("No hay impresoras instaladas. Use \"Enviar a Pantalla\" y guarde el PDF.");
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(to_qt(job.title));
    set_paper(printer, layout);
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    if (dialog.exec() == QDialog::Accepted) paint_all(printer, layout);
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

void PdfReportPrinter::run(const ReportJob& job) {
    if (auto nueva = aplicacion_sin_ventanas()) application_ = std::move(nueva);
    const auto layout = compose_job(job);
    std::error_code ignored;
    std::filesystem::create_directories(folder_, ignored);
    const std::string stem = job.definition.stem().string();
    std::string name = stem + ".pdf";
    for (int i = 2; std::filesystem::exists(folder_ / name); ++i)
        name = stem + "-" + std::to_string(i) + ".pdf";
    write_pdf(layout, folder_ / name, job.title);
    printed_.push_back(name);
    if (on_printed) on_printed(name);
}

} // namespace quorvel::qt
