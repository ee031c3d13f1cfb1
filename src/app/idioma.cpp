#include "app/idioma.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace quorvel {

void hablar_castellano(QApplication& aplicacion) {
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Chile));
    auto* textos = new QTranslator(&aplicacion);
    if (textos->load("qtbase_es", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(textos);
}

} // namespace quorvel
