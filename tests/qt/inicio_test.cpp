#include "apoyo/sesiones.h"
#include "app/StartWindow.h"
#include "app/recientes.h"
#include "demo/demo.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace quorvel {

namespace {

QPushButton* boton_inicio(app::StartWindow& ventana) {
    for (auto* boton : ventana.findChildren<QPushButton*>())
        if (boton->isDefault()) return boton;
    return nullptr;
}

// Goal: a start is possible exactly with a database that has a company and a user. Method: the window with a
// recent demonstration company, then with connections that lead nowhere.
TEST(Inicio, OnlyAUsableDatabaseStarts) {
    const std::filesystem::path carpeta = apoyo::carpeta_nueva();
    const std::string conexion = "sqlite:" + (carpeta / "demo.db").string();
    demo::crear_demo(conexion);
    app::anotar_reciente(carpeta / "recientes.txt", conexion);
    app::StartWindow ventana(carpeta);
    ASSERT_NE(boton_inicio(ventana), nullptr);
    EXPECT_TRUE(boton_inicio(ventana)->isEnabled());
    EXPECT_EQ(ventana.eleccion().conexion, conexion);
    EXPECT_EQ(ventana.eleccion().empresa, 1);
    EXPECT_EQ(ventana.eleccion().reporte.filename(), "print.db");
    if (const QString fotos = qEnvironmentVariable("QUORVEL_FOTOS"); !fotos.isEmpty())
        ventana.grab().save(fotos + "/inicio.png");
    auto* conexiones = ventana.findChild<QLineEdit*>();
    for (const char* mala : {"sqlite:/no/existe.db", "postgresql://127.0.0.1:1/nada", "cualquier cosa"}) {
        conexiones->setText(mala);
        Q_EMIT conexiones->returnPressed();
        EXPECT_FALSE(boton_inicio(ventana)->isEnabled()) << mala;
        const auto textos = ventana.findChildren<QLabel*>();
        EXPECT_TRUE(std::any_of(textos.begin(), textos.end(), [](const QLabel* l) {
            return l->wordWrap() && !l->text().isEmpty();
        })) << mala;
    }
}

} // namespace

} // namespace quorvel
