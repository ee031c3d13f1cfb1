#include "qt/report/pdf_file.h"

#include "platform/files/engine_files.h"
#include "qt/text.h"

#include <QFile>
#include <QPdfWriter>
#include <QSaveFile>
#include <memory>
#include <stdexcept>

namespace quorvel::qt {

void write_pdf_file(const std::filesystem::path& file, const std::string& title,
                    const std::function<void(QPdfWriter&)>& paint) {
    refuse_engine_file(file);
    const QString name = to_qt(file.string());
    std::error_code ignored;
    const bool device =
        std::filesystem::exists(file, ignored) && !std::filesystem::is_regular_file(file, ignored);
    const std::unique_ptr<QFileDevice> target =
        device ? std::unique_ptr<QFileDevice>(new QFile(name)) : std::make_unique<QSaveFile>(name);
    const auto failure = [&] {
        return std::runtime_error("No se puede escribir el archivo " + file.string() + ": " +
                                  to_std(target->errorString()));
    };
    if (!target->open(QIODevice::WriteOnly)) throw failure();
    {
        QPdfWriter writer(target.get());
        writer.setCreator("Quorvel");
        writer.setTitle(to_qt(title));
        paint(writer);
    }
    // asked for by itself: what closing the file could not write would pass unseen
    bool written = target->flush() && target->error() == QFileDevice::NoError;
    if (auto* whole = qobject_cast<QSaveFile*>(target.get())) {
        if (!written) whole->cancelWriting();
        written = whole->commit() && written;
    }
    if (!written) throw failure();
}

} // namespace quorvel::qt
