#pragma once
#include <QStringList>
#include <functional>

class QDialog;
class QWidget;

namespace quorvel::qt {

enum class Choose { file, files, folder, save };

struct FileQuestion {
    QString title;
    QStringList filters = {}; ///< "PDF (*.pdf)" or "*.csv"; the first is chosen
    QString proposed = {};    ///< name, or folder with or without one
    Choose what = Choose::file;
    std::function<void(QDialog&)> before = {}; ///< gets the dialog before it waits for the person
};

/// The one file dialog. It shows names and never looks into a file: reading and closing what the database
/// engine works with is nobody's business but the engine's, and a folder on the network stays quick.
/// A save asks before it replaces and gives a name without ending that of the first filter.
/// @return empty when cancelled
[[nodiscard]] QStringList choose_files(QWidget* owner, const FileQuestion& question);
/// The only one of a question for one. @return empty when cancelled
[[nodiscard]] QString choose_file(QWidget* owner, const FileQuestion& question);

} // namespace quorvel::qt
