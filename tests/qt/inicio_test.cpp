#include "apoyo/sesiones.h"
#include "app/StartWindow.h"
#include "app/empresas/VentanaEmpresas.h"
#include "app/recientes.h"
#include "dbtools/directorio.h"
#include "demo/demo.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <fstream>

namespace quorvel {

namespace {

QPushButton* boton_inicio(const QWidget& ventana) {
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

// Goal: a company is found in all databases of the directory and opened in its own; without one there is
// nothing to search in. Method: a directory of two demonstration companies and a database that is gone.
TEST(Inicio, ACompanyIsFoundInItsDatabase) {
    const std::filesystem::path carpeta = apoyo::carpeta_nueva();
    const std::string una = "sqlite:" + (carpeta / "una.db").string(),
                      otra = "sqlite:" + (carpeta / "otra.db").string(),
                      ida = "sqlite:" + (carpeta / "ida.db").string();
    for (const std::string& base : {una, otra, ida}) demo::crear_demo(base);
    apoyo::ejecutar(
        *abrir_sesion(otra),
        "insert into admempresa(empresa,n_empresa,rut) values (8,'PANADERÍA LA ESPIGA','77.888.999-K')");
    const auto directorio = dbtools::abrir_base(una, dbtools::Abrir::existente);
    for (const std::string& base : {una, otra, ida}) (void)dbtools::anotar_en_directorio(*directorio, base);
    std::filesystem::remove(carpeta / "ida.db");
    EXPECT_EQ(app::conexion_del_directorio(carpeta), "");
    std::ofstream(carpeta / "directorio.txt") << una << "\n";
    app::VentanaEmpresas ventana(app::conexion_del_directorio(carpeta));
    auto* lista = ventana.findChild<app::ListaEmpresas*>();
    EXPECT_EQ(lista->rowCount(), 4);
    for (const char* texto : {"pan", "la esp", "ESPIGA", "778", "77.888.999-k"}) {
        ventana.findChild<QLineEdit*>()->setText(texto);
        ASSERT_EQ(lista->rowCount(), 1) << texto;
        EXPECT_EQ(ventana.elegida().empresa, 8);
        EXPECT_EQ(ventana.elegida().conexion, otra);
    }
    ventana.findChild<QLineEdit*>()->setText("spiga");
    EXPECT_EQ(lista->rowCount(), 0);
    EXPECT_FALSE(boton_inicio(ventana)->isEnabled());
    ventana.ver_estado();
    ASSERT_EQ(lista->rowCount(), 3);
    EXPECT_EQ(lista->fila(0).descuadrados, 0);
    EXPECT_GT(lista->fila(0).meses.value_or(0), 0);
    const auto avisos = ventana.findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(avisos.begin(), avisos.end(),
                            [](const QLabel* l) { return l->text().contains("ida.db"); }));
    if (const QString fotos = qEnvironmentVariable("QUORVEL_FOTOS"); !fotos.isEmpty())
        ventana.grab().save(fotos + "/empresas.png");
}

} // namespace

} // namespace quorvel
