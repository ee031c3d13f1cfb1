#include "app/idioma.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace quorvel::app {

namespace {

/// What the Spanish texts that come with Qt leave in English.
class Faltantes final : public QTranslator {
public:
    using QTranslator::QTranslator;
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* contexto, const char* texto, const char*,
                                    int) const override {
        static constexpr const char* TEXTOS[][3] = {
            {"QAbstractFileIconProvider", "Folder", "Carpeta"},
            {"QAbstractFileIconProvider", "File", "Archivo"},
            {"QAbstractFileIconProvider", "%1 File", "Archivo %1"},
        };
        for (const auto& [en, original, castellano] : TEXTOS)
            if (qstrcmp(contexto, en) == 0 && qstrcmp(texto, original) == 0)
                return QString::fromUtf8(castellano);
        return {};
    }
};

} // namespace

void hablar_castellano(QApplication& aplicacion) {
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Chile));
    auto* textos = new QTranslator(&aplicacion);
    if (textos->load("qtbase_es", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(textos);
    QCoreApplication::installTranslator(new Faltantes(&aplicacion));
}

} // namespace quorvel::app
