#pragma once
#include "app/teclado.h"
#include "qt/report/QtReportPrinter.h"

#include <QObject>
#include <deque>
#include <filesystem>
#include <functional>

namespace quorvel::demo_run {

/// Answers the modal windows that the keys bring up, and takes the pictures of the manual.
class Fotografo : public QObject {
public:
    Fotografo(std::filesystem::path carpeta, app::Teclado& teclado);
    /// The picture of a window as it is now.
    void foto(QWidget& ventana, const std::string& nombre) const;
    /// What is done in a modal window that is to come: keys before its picture, and the key that leaves it.
    struct Visita {
        std::string nombre; ///< of the picture; empty: none
        Qt::Key salida = Qt::Key_Escape;
        std::function<void(QWidget&)> antes;
    };
    /// Windows that nobody planned: a box is accepted, any other left with Escape.
    void planear(Visita visita) { visitas_.push_back(std::move(visita)); }
    [[nodiscard]] const std::vector<std::string>& mensajes() const { return mensajes_; }
    /// Whether every planned window has come.
    [[nodiscard]] bool todo_visto() const { return visitas_.empty(); }

private:
    void esperar();
    void mirar();
    void guardar(const QPixmap& imagen, const std::string& nombre) const;

    std::filesystem::path carpeta_;
    app::Teclado& teclado_;
    std::deque<Visita> visitas_;
    std::vector<std::string> mensajes_;
    std::vector<QWidget*> en_visita_; ///< a window may open another, and comes to the top again
};

/// Printouts as PDF files, and a picture of each one's first page.
class ImpresorConFotos : public ReportPrinter {
public:
    explicit ImpresorConFotos(std::filesystem::path carpeta);
    bool run(const ReportJob& job) override;
    [[nodiscard]] const std::vector<std::string>& impresos() const { return pdf_.printed(); }

private:
    std::filesystem::path carpeta_;
    qt::PdfReportPrinter pdf_;
};

} // namespace quorvel::demo_run
