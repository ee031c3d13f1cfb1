// Goal: a paper in the preview window, on a printer device and in a file. Method: the window itself, off
// screen.
#include "apoyo/disco.h"
#include "apoyo/sesiones.h"
#include "qt/report/QtReportPrinter.h"
#include "qt/report/painting.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QTimer>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>

namespace quorvel {
namespace {

constexpr const char* DEFINICION = R"(<informe ancho="215.9" alto="279.4" tamano="9">
  <detalle alto="100"><texto x="0" y="0" ancho="90">Línea {secuencia} ñandú</texto></detalle>
  <pie alto="5"><texto x="0" y="0" ancho="60">Página {pagina} de {paginas}</texto></pie>
</informe>)";

/// Five lines on three pages.
struct Papel {
    std::string carpeta = apoyo::carpeta_nueva();
    std::unique_ptr<clsConexion> reporte = abrir_sesion_informes(carpeta + "/print.db");
    ReportJob trabajo{carpeta + "/prueba.rpt", "papel", reporte.get(), false, "Prueba"};
    Papel() {
        apoyo::ejecutar(*reporte, "create table papel (secuencia integer)");
        for (int i = 1; i <= 5; ++i)
            apoyo::ejecutar(*reporte, "insert into papel(secuencia) values(" + std::to_string(i) + ")");
        std::ofstream(trabajo.definition) << DEFINICION;
    }
};

std::string texto_pdf(const std::string& archivo) {
    const std::unique_ptr<FILE, int (*)(FILE*)> tubo(
        popen(("pdftotext -layout '" + archivo + "' -").c_str(), "r"), pclose);
    std::string texto;
    for (char b[4096]; const std::size_t n = fread(b, 1, sizeof b, tubo.get());) texto.append(b, n);
    return texto;
}

QPushButton* boton(QWidget& ventana, const char* texto) {
    for (auto* b : ventana.findChildren<QPushButton*>())
        if (b->text().remove('&') == QString::fromUtf8(texto)) return b;
    return nullptr;
}

/// Does something in each modal window that opens, in order; further ones are closed.
class Visitas {
public:
    explicit Visitas(std::vector<std::function<void(QDialog&)>> acciones) : acciones_(std::move(acciones)) {
        mirar();
    }
    ~Visitas() { EXPECT_EQ(siguiente_, acciones_.size()) << "windows that never opened"; }

private:
    void mirar() {
        // before anything else: an action may open the next window, and that waits in a loop of its own
        QTimer::singleShot(10, &vida_, [this] { mirar(); });
        auto* dialogo = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialogo == nullptr || dialogo->property("visitada").toBool()) return;
        dialogo->setProperty("visitada", true); // two dialogs may have one address
        if (siguiente_ < acciones_.size())
            acciones_[siguiente_++](*dialogo);
        else
            dialogo->reject();
    }
    std::vector<std::function<void(QDialog&)>> acciones_;
    std::size_t siguiente_ = 0;
    QObject vida_;
};

} // namespace

TEST(VistaPrevia, ShowsPagesZoomsAndSavesThePdf) {
    Papel p;
    const std::string pdf = p.carpeta + "/guardado.pdf";
    const auto guardar_en = [](const std::string& ruta) {
        return [ruta](QDialog& d) {
            auto* nombre = d.findChild<QLineEdit*>();
            ASSERT_NE(nombre, nullptr);
            nombre->setText(QString::fromStdString(ruta));
            d.accept();
        };
    };
    std::vector<std::string> mensajes;
    const auto anotar = [&](QDialog& d) {
        mensajes.push_back(dynamic_cast<QMessageBox&>(d).text().toStdString());
        d.accept();
    };
    const Visitas visitas({[&](QDialog& d) {
                               EXPECT_EQ(d.windowTitle(), "Prueba");
                               auto* vista = d.findChild<QPrintPreviewWidget*>();
                               ASSERT_NE(vista, nullptr);
                               EXPECT_EQ(vista->pageCount(), 3);
                               const double antes = vista->zoomFactor();
                               boton(d, "Acercar")->click();
                               EXPECT_GT(vista->zoomFactor(), antes);
                               boton(d, "Alejar")->click();
                               EXPECT_NEAR(vista->zoomFactor(), antes, 0.01);
                               boton(d, "Página completa")->click();
                               EXPECT_LT(vista->zoomFactor(), antes);
                               vista->setCurrentPage(3);
                               EXPECT_EQ(vista->currentPage(), 3);
                               EXPECT_EQ(boton(d, "Imprimir")->isEnabled(),
                                         !QPrinterInfo::availablePrinterNames().isEmpty());
                               boton(d, "Guardar PDF")->click();
                               boton(d, "Guardar PDF")->click();
                               boton(d, "Cerrar")->click();
                           },
                           guardar_en(pdf), anotar, guardar_en(p.carpeta + "/no/hay.pdf"), anotar});
    EXPECT_TRUE(qt::QtReportPrinter().run(p.trabajo)) << "saved is as good as printed";
    const std::string texto = texto_pdf(pdf);
    EXPECT_NE(texto.find("Línea 5 ñandú"), std::string::npos) << texto;
    EXPECT_NE(texto.find("Página 3 de 3"), std::string::npos) << texto;
    ASSERT_EQ(mensajes.size(), 2U);
    EXPECT_EQ(mensajes[0], "PDF guardado en " + pdf);
    EXPECT_TRUE(mensajes[1].starts_with("No se puede escribir el archivo " + p.carpeta + "/no/hay.pdf"));
}

TEST(Pdf, OnAFullDiskTheOldFileStays) {
    const Papel p;
    const auto hojas = qt::compose_job(p.trabajo);
    const std::string archivo = p.carpeta + "/papel.pdf";
    qt::write_pdf(hojas, archivo, "Primero");
    const std::string antes = texto_pdf(archivo);
    {
        const apoyo::ArchivosCortos lleno(1024);
        EXPECT_THROW(qt::write_pdf(hojas, archivo, "Segundo"), std::runtime_error);
    }
    EXPECT_THROW(qt::write_pdf(hojas, "/dev/full", "Tercero"), std::runtime_error);
    EXPECT_THROW(qt::write_pdf(hojas, p.reporte->Name(), "Sobre la base"), std::runtime_error);
    EXPECT_EQ(texto_pdf(archivo), antes);
    EXPECT_FALSE(antes.empty());
}

TEST(Impresora, PaintsTheSamePagesAndAMissingOneIsSaid) {
    Papel p;
    QPrinter impresora(QPrinter::HighResolution);
    impresora.setOutputFormat(QPrinter::PdfFormat);
    impresora.setOutputFileName(QString::fromStdString(p.carpeta + "/impresora.pdf"));
    const auto paginas = qt::compose_job(p.trabajo);
    qt::set_paper(impresora, paginas);
    qt::paint_all(impresora, paginas);
    EXPECT_NE(texto_pdf(p.carpeta + "/impresora.pdf").find("Página 3 de 3"), std::string::npos);

    if (!QPrinterInfo::availablePrinterNames().isEmpty()) GTEST_SKIP() << "there is a printer here";
    p.trabajo.to_printer = true;
    bool dicho = false;
    const Visitas visitas({[&](QDialog& d) {
        dicho = d.findChild<QLabel*>("sin_impresora") != nullptr;
        boton(d, "Cerrar")->click();
    }});
    EXPECT_FALSE(qt::QtReportPrinter().run(p.trabajo)) << "looked at, neither printed nor saved";
    EXPECT_TRUE(dicho);
}

} // namespace quorvel
