#include "qt/file_dialog.h"

#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QRegularExpression>

namespace quorvel::qt {
namespace {

/// Kinds by ending: the toolkit's own provider reads the beginning of each file.
class NameIcons : public QFileIconProvider {
public:
    using QFileIconProvider::icon;
    [[nodiscard]] QIcon icon(const QFileInfo& info) const override {
        return icon(info.isDir() ? Folder : File);
    }
    [[nodiscard]] QString type(const QFileInfo& info) const override {
        return info.isDir() ? "Carpeta" : info.suffix().isEmpty() ? "Archivo" : "Archivo " + info.suffix();
    }
};

struct Manner {
    QFileDialog::FileMode mode;
    QFileDialog::AcceptMode accept;
    const char* button;
};
constexpr Manner MANNERS[] = {{QFileDialog::ExistingFile, QFileDialog::AcceptOpen, "Abrir"},
                              {QFileDialog::ExistingFiles, QFileDialog::AcceptOpen, "Abrir"},
                              {QFileDialog::Directory, QFileDialog::AcceptOpen, "Elegir"},
                              {QFileDialog::AnyFile, QFileDialog::AcceptSave, "Guardar"}};

QString first_ending(const QStringList& filters) {
    static const QRegularExpression ending(R"(\*\.(\w+))");
    return filters.isEmpty() ? QString() : ending.match(filters.front()).captured(1);
}

void propose(QFileDialog& dialog, const QString& proposed) {
    const QFileInfo place(proposed);
    if (place.isDir()) return dialog.setDirectory(proposed);
    if (proposed.contains('/')) dialog.setDirectory(place.path());
    if (!proposed.isEmpty()) dialog.selectFile(place.fileName());
}

} // namespace

QStringList choose_files(QWidget* owner, const FileQuestion& question) {
    NameIcons icons; // outlives the dialog, which asks it from a thread of its own
    const Manner& manner = MANNERS[static_cast<int>(question.what)];
    QFileDialog dialog(owner, question.title);
    // the desktop's own dialogs look into files too
    dialog.setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontUseCustomDirectoryIcons);
    dialog.setIconProvider(&icons);
    dialog.setFileMode(manner.mode);
    dialog.setAcceptMode(manner.accept);
    if (!question.filters.isEmpty()) dialog.setNameFilters(question.filters);
    dialog.setDefaultSuffix(first_ending(question.filters));
    dialog.setLabelText(QFileDialog::Accept, manner.button);
    dialog.setLabelText(QFileDialog::Reject, "Cancelar");
    propose(dialog, question.proposed);
    if (question.before) question.before(dialog);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles() : QStringList();
}

QString choose_file(QWidget* owner, const FileQuestion& question) {
    return choose_files(owner, question).value(0);
}

} // namespace quorvel::qt
