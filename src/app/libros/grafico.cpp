#include "app/libros/grafico.h"

#include "qt/report/pdf_file.h"
#include "qt/text.h"
#include "text/cuantos.h"
#include "text/numeros.h"

#include <QPainter>
#include <QPdfWriter>
#include <QScrollBar>
#include <algorithm>
#include <numeric>

namespace quorvel::app {

using namespace libros;

using qt::to_qt;

namespace {

constexpr const char* MESES[] = {"ene", "feb", "mar", "abr", "may", "jun",
                                 "jul", "ago", "sep", "oct", "nov", "dic"};

struct Tintas {
    QColor texto, apagado, barra, borde, linea;
};

QString entero(std::int64_t n) { return to_qt(formato(static_cast<double>(n), "#,##0")); }

/// What the figures over the bars of one panel count, so that each of them is short.
struct Unidad {
    double pesos;
    const char *formato, *nombre;
};
Unidad unidad_para(std::int64_t mayor) {
    if (mayor >= 1000000000) return {1e6, "#,##0", "millones"};
    if (mayor >= 1000000) return {1e6, "#,##0.0", "millones"};
    if (mayor >= 10000) return {1e3, "#,##0", "miles"};
    return {1, "#,##0", "pesos"};
}

QString titulo_de(const LibroMensual& l) {
    const auto suma = std::accumulate(l.total.begin(), l.total.end(), std::int64_t{0});
    const int n = std::accumulate(l.comprobantes.begin(), l.comprobantes.end(), 0);
    const QString libro = l.libro.empty() ? QString("(SIN LIBRO)") : to_qt(l.libro);
    return QString("%1   $ %2 en %3")
        .arg(libro, entero(suma), to_qt(cuantos(n, "comprobante", "comprobantes")));
}

void pintar_panel(QPainter& p, const QRectF& zona, const LibroMensual& l, const Tintas& t) {
    const QFontMetricsF m(p.font(), p.device());
    const double renglon = m.height();
    p.setPen(t.texto);
    QFont negrita = p.font();
    negrita.setBold(true);
    const QFont normal = p.font();
    p.setFont(negrita);
    p.drawText(QRectF(zona.left(), zona.top(), zona.width(), renglon), Qt::AlignLeft | Qt::AlignVCenter,
               titulo_de(l));
    p.setFont(normal);
    const std::int64_t mayor = std::max<std::int64_t>(1, *std::ranges::max_element(l.total));
    const Unidad unidad = unidad_para(mayor);
    p.setPen(t.apagado);
    p.drawText(QRectF(zona.left(), zona.top(), zona.width(), renglon), Qt::AlignRight | Qt::AlignVCenter,
               unidad.nombre);
    const QRectF campo(zona.left(), zona.top() + 2.6 * renglon, zona.width(), zona.height() - 3.9 * renglon);
    p.setPen(QPen(t.linea, 0));
    p.drawLine(campo.bottomLeft(), campo.bottomRight());
    const double paso = campo.width() / 12;
    for (std::size_t i = 0; i < 12; ++i) {
        const double x = campo.left() + paso * static_cast<double>(i);
        const double alto = campo.height() * static_cast<double>(std::max<std::int64_t>(0, l.total[i])) /
                            static_cast<double>(mayor);
        p.setPen(QPen(t.borde, 0));
        p.setBrush(t.barra);
        if (alto > 0) p.drawRect(QRectF(x + paso * 0.18, campo.bottom() - alto, paso * 0.64, alto));
        p.setPen(t.apagado);
        p.drawText(QRectF(x, campo.bottom() + renglon * 0.15, paso, renglon), Qt::AlignCenter, MESES[i]);
        if (l.total[i] == 0) continue;
        p.setPen(t.texto);
        p.drawText(QRectF(x - paso * 0.3, campo.bottom() - alto - renglon * 1.1, paso * 1.6, renglon),
                   Qt::AlignHCenter | Qt::AlignBottom,
                   to_qt(formato(static_cast<double>(l.total[i]) / unidad.pesos, unidad.formato)));
    }
}

void pintar(QPainter& p, const QRectF& zona, const std::vector<LibroMensual>& libros, int anio,
            const Tintas& t) {
    const double renglon = QFontMetricsF(p.font(), p.device()).height();
    p.setPen(t.apagado);
    p.drawText(QRectF(zona.left(), zona.top(), zona.width(), renglon), Qt::AlignLeft,
               libros.empty() ? QString("El año %1 no tiene comprobantes.").arg(anio)
                              : QString::fromUtf8(
                                    "Total al debe de cada mes de %1, por libro. Cada libro tiene su propia "
                                    "escala; las notas de crédito restan y los anulados no cuentan.")
                                    .arg(anio));
    const int columnas = libros.size() > 1 ? 2 : 1;
    const int filas = (static_cast<int>(libros.size()) + columnas - 1) / columnas;
    const double arriba = renglon * 1.8, hueco = renglon * 1.4;
    for (int i = 0; i < static_cast<int>(libros.size()); ++i) {
        const double ancho = (zona.width() - hueco * (columnas - 1)) / columnas;
        const double alto = (zona.height() - arriba - hueco * 0.6 * (filas - 1)) / filas;
        pintar_panel(p,
                     QRectF(zona.left() + (ancho + hueco) * (i % columnas),
                            zona.top() + arriba + (alto + hueco * 0.6) * (i / columnas), ancho, alto),
                     libros[static_cast<std::size_t>(i)], t);
    }
}

} // namespace

Grafico::Grafico(QWidget* parent) : QAbstractScrollArea(parent) {
    setObjectName("grafico");
    setAccessibleName("Totales mensuales por libro");
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMinimumWidth(600);
    viewport()->setBackgroundRole(QPalette::Base);
}

void Grafico::mostrar(std::vector<LibroMensual> libros, int anio) {
    libros_ = std::move(libros);
    anio_ = anio;
    QString dicho;
    for (const LibroMensual& l : libros_) {
        dicho += titulo_de(l) + ": ";
        for (std::size_t i = 0; i < 12; ++i)
            if (l.total[i] != 0) dicho += QString("%1 %2, ").arg(MESES[i], entero(l.total[i]));
        dicho += "\n";
    }
    setAccessibleDescription(dicho);
    setToolTip(dicho.trimmed());
    ajustar_alto();
}

void Grafico::ajustar_alto() {
    const int filas = (static_cast<int>(libros_.size()) + 1) / 2;
    alto_ = std::max(viewport()->height(), fontMetrics().height() * (3 + 7 * filas));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(fontMetrics().height());
    verticalScrollBar()->setRange(0, alto_ - viewport()->height());
    viewport()->update();
}

void Grafico::resizeEvent(QResizeEvent*) { ajustar_alto(); }

void Grafico::paintEvent(QPaintEvent*) {
    QPainter p(viewport());
    const QPalette& c = palette();
    QColor barra = c.color(QPalette::Highlight);
    barra.setAlpha(150);
    const QRectF todo(0, -verticalScrollBar()->value(), viewport()->width(), alto_);
    pintar(p, todo.adjusted(14, 10, -14, -10), libros_, anio_,
           {c.color(QPalette::Text), c.color(QPalette::PlaceholderText), barra, c.color(QPalette::Highlight),
            c.color(QPalette::Mid)});
}

void escribir_grafico_pdf(const std::vector<LibroMensual>& libros, int anio,
                          const std::filesystem::path& archivo) {
    qt::write_pdf_file(archivo, "Totales mensuales por libro", [&](QPdfWriter& pdf) {
        pdf.setResolution(300);
        pdf.setPageSize(QPageSize(QPageSize::Letter));
        pdf.setPageOrientation(QPageLayout::Landscape);
        pdf.setPageMargins(QMarginsF(15, 12, 15, 12), QPageLayout::Millimeter);
        QPainter p(&pdf);
        QFont letra("DejaVu Sans");
        letra.setPointSizeF(8);
        p.setFont(letra);
        pintar(p, QRectF(QPointF(0, 0), QSizeF(pdf.width(), pdf.height())), libros, anio,
               {Qt::black, QColor(90, 90, 90), QColor(210, 218, 226), QColor(60, 60, 60),
                QColor(120, 120, 120)});
    });
}

} // namespace quorvel::app
