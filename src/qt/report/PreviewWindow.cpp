#include "qt/report/PreviewWindow.h"

#include "qt/file_dialog.h"
#include "qt/icons.h"
#include "qt/report/QtReportPrinter.h"
#include "qt/report/painting.h"
#include "qt/screen_room.h"
#include "qt/text.h"

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
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

void save_as_pdf(QWidget& window, const report::Layout& layout, const std::string& title) {
    const QString file =
        choose_file(&window, {"Guardar como PDF", {"PDF (*.pdf)"}, "comprobante.pdf", Choose::save});
    if (file.isEmpty()) return;
    try {
        write_pdf(layout, to_std(file), title);
    } catch (const std::exception& e) {
        QMessageBox::critical(&window, "Mensaje", QString::fromUtf8(e.what()));
    }
}

} // namespace

void show_preview(const report::Layout& layout, const std::string& title) {
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
        if (dialog.exec() == QDialog::Accepted) paint_all(printer, layout);
    });
    print->setEnabled(!QPrinterInfo::availablePrinterNames().isEmpty());
    if (!print->isEnabled()) print->setToolTip("No hay impresoras instaladas");
    add("&Guardar PDF", [&] { save_as_pdf(window, layout, title); });
    row->addStretch(1);
    add("&Acercar", [&] { preview.zoomIn(); });
    add("A&lejar", [&] { preview.zoomOut(); });
    add("&Página completa", [&] { preview.fitInView(); });
    row->addStretch(1);
    add("&Cerrar", [&] { window.reject(); });
    auto* column = new QVBoxLayout(&window);
    column->addLayout(row);
    column->addWidget(&preview, 1);
    preview.fitToWidth();
    window.exec();
    if (owner != nullptr) owner->activateWindow();
}

} // namespace quorvel::qt
