#include "demo_run/Fotografo.h"

#include "qt/report/painting.h"
#include "qt/text.h"

#include <QApplication>
#include <QMessageBox>
#include <QPainter>
#include <QTimer>
#include <algorithm>

namespace quorvel::demo_run {

namespace {

/// A box in the middle of its window, as the person sees it.
QPixmap con_su_ventana(QWidget& caja) {
    QWidget* detras = caja.parentWidget();
    if (detras == nullptr) return caja.grab();
    QPixmap todo = detras->window()->grab();
    const QSize sobra = detras->window()->size() - caja.size();
    const QRect sitio(QPoint(sobra.width() / 2, sobra.height() / 2), caja.size());
    QPainter pintor(&todo);
    pintor.drawPixmap(sitio, caja.grab());
    pintor.setPen(caja.palette().color(QPalette::Dark));
    pintor.drawRect(sitio.adjusted(-1, -1, 0, 0)); // the window manager's frame is not in the picture
    return todo;
}

constexpr std::pair<const char*, const char*> PAPELES[] = {
    {"ctcQuorvel", "comprobante_impreso"}, {"ctccheque1", "cheque"}, {"ctcfactura", "factura"}};

std::string nombre_de(const std::string& definicion) {
    for (const auto& [papel, foto] : PAPELES)
        if (definicion == papel) return foto;
    return definicion;
}

} // namespace

Fotografo::Fotografo(std::filesystem::path carpeta, app::Teclado& teclado)
    : carpeta_(std::move(carpeta)), teclado_(teclado) {
    esperar();
}

void Fotografo::esperar() {
    QTimer::singleShot(30, this, [this] {
        esperar(); // before anything else: what is done may open a window, which waits in a loop of its own
        mirar();
    });
}

void Fotografo::guardar(const QPixmap& imagen, const std::string& nombre) const {
    imagen.save(qt::to_qt((carpeta_ / (nombre + ".png")).string()));
}

void Fotografo::foto(QWidget& ventana, const std::string& nombre) const {
    QCoreApplication::processEvents();
    guardar(ventana.grab(), nombre);
}

void Fotografo::mirar() {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || std::ranges::find(en_visita_, modal) != en_visita_.end()) return;
    en_visita_.push_back(modal);
    const auto* caja = qobject_cast<QMessageBox*>(modal);
    if (caja != nullptr) mensajes_.push_back(qt::to_std(caja->text()));
    Visita visita{{}, caja != nullptr ? Qt::Key_Return : Qt::Key_Escape, {}};
    if (!visitas_.empty() && (visitas_.front().antes == nullptr || caja == nullptr)) {
        visita = std::move(visitas_.front());
        visitas_.pop_front();
    }
    if (visita.antes) visita.antes(*modal);
    if (!visita.nombre.empty())
        guardar(caja != nullptr ? con_su_ventana(*modal) : modal->grab(), visita.nombre);
    if (caja != nullptr && caja->icon() == QMessageBox::Question)
        teclado_.tecla(Qt::Key_Left); // from no to yes
    teclado_.tecla(visita.salida);
    std::erase(en_visita_, modal);
}

ImpresorConFotos::ImpresorConFotos(std::filesystem::path carpeta)
    : carpeta_(carpeta), pdf_(std::move(carpeta)) {}

bool ImpresorConFotos::run(const ReportJob& job) {
    pdf_.run(job);
    constexpr double PUNTOS_POR_MM = 80 / 25.4;
    const report::Layout hoja = qt::compose_job(job);
    QImage imagen(int(hoja.width * PUNTOS_POR_MM), int(hoja.height * PUNTOS_POR_MM),
                  QImage::Format_Grayscale8);
    imagen.setDotsPerMeterX(int(PUNTOS_POR_MM * 1000));
    imagen.setDotsPerMeterY(int(PUNTOS_POR_MM * 1000));
    imagen.fill(Qt::white);
    QPainter pintor(&imagen);
    pintor.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    qt::paint_page(pintor, hoja.pages.front());
    pintor.end();
    imagen.save(qt::to_qt((carpeta_ / (nombre_de(job.definition.stem().string()) + ".png")).string()));
    return true;
}

} // namespace quorvel::demo_run
