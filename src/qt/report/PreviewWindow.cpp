#include "qt/report/PreviewWindow.h"

#include "platform/report/report.h"
#include "qt/file_dialog.h"
#include "qt/icons.h"
#include "qt/report/QtReportPrinter.h"
#include "qt/report/painting.h"
#include "qt/screen_room.h"
#include "qt/text.h"

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QVBoxLayout>
#include <exception>

namespace quorvel::qt {

namespace {

/// @return whether there is a file now
bool save_as_pdf(QWidget& window, const report::Layout& layout, const std::string& title,
                 const std::string& name) {
    const QString file =
        choose_file(&window, {"Guardar como PDF", {"PDF (*.pdf)"}, to_qt(pdf_name(name)), Choose::save});
    if (file.isEmpty()) return false;
    try {
        write_pdf(layout, to_std(file), title);
        QMessageBox::information(&window, "Mensaje", "PDF guardado en " + file);
        return true;
    } catch (const std::exception& e) {
        QMessageBox::critical(&window, "Mensaje", QString::fromUtf8(e.what()));
        return false;
    }
}

/// Says what is left to do where there is no printer.
QLabel* without_printer(QWidget& window) {
    auto* note =
        new QLabel("No hay impresoras instaladas: guarde el PDF e imprímalo donde haya una.", &window);
    note->setObjectName("sin_impresora");
    note->setWordWrap(true);
    return note;
}

} // namespace

bool show_preview(const report::Layout& layout, const std::string& title, const std::string& name) {
    bool on_paper = false;
    QWidget* owner = QApplication::activeWindow();
    QDialog window(owner, Qt::Window);
    window.setObjectName("vista_previa");
    window.setWindowTitle(to_qt(title));
    window.setWindowIcon(program_icon());
    resize_within_screen(window, {900, 690});
    QPrinter printer(QPrinter::HighResolution);
    set_paper(printer, layout);
    QPrintPreviewWidget preview(&printer, &window);
    QObject::connect(&preview, &QPrintPreviewWidget::paintRequested, &window,
                     [&](QPrinter* device) { paint_all(*device, layout); });
    auto* row = new QHBoxLayout;
    const auto add = [&](const char* text, auto action) {
        auto* button = new QPushButton(QString::fromUtf8(text), &window);
        button->setAutoDefault(false);
        QObject::connect(button, &QPushButton::clicked, &window, action);
        row->addWidget(button);
        return button;
    };
    QPushButton* print = add("&Imprimir", [&] {
        QPrintDialog dialog(&printer, &window);
        if (dialog.exec() != QDialog::Accepted) return;
        paint_all(printer, layout);
        on_paper = true;
    });
    print->setEnabled(!QPrinterInfo::availablePrinterNames().isEmpty());
    add("&Guardar PDF", [&] { on_paper = save_as_pdf(window, layout, title, name) || on_paper; });
    row->addStretch(1);
    add("&Acercar", [&] { preview.zoomIn(); });
    add("A&lejar", [&] { preview.zoomOut(); });
    add("&Página completa", [&] { preview.fitInView(); });
    row->addStretch(1);
    add("&Cerrar", [&] { window.reject(); });
    auto* column = new QVBoxLayout(&window);
    column->addLayout(row);
    if (!print->isEnabled()) column->addWidget(without_printer(window));
    column->addWidget(&preview, 1);
    preview.fitToWidth();
    window.exec();
    if (owner != nullptr) owner->activateWindow();
    return on_paper;
}

} // namespace quorvel::qt
