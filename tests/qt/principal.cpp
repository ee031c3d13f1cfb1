#include "app/idioma.h"

#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    quorvel::app::hablar_castellano(application);
    return RUN_ALL_TESTS();
}
