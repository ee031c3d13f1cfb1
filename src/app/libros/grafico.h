#pragma once
#include "libros/mensual.h"

#include <QAbstractScrollArea>
#include <filesystem>

class QPainter;

namespace quorvel::app {

/// Monthly totals, one panel of twelve bars for each book: what a bar says stands beside it in words and
/// figures, never in its colour alone.
class Grafico : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit Grafico(QWidget* parent = nullptr);
    void mostrar(std::vector<libros::LibroMensual> libros, int anio);
    [[nodiscard]] const std::vector<libros::LibroMensual>& libros() const { return libros_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void ajustar_alto();
    std::vector<libros::LibroMensual> libros_;
    int anio_ = 0;
    int alto_ = 0; ///< of the whole drawing; what does not fit is scrolled to
};

/// One landscape page. @throws std::runtime_error in Spanish
void escribir_grafico_pdf(const std::vector<libros::LibroMensual>& libros, int anio,
                          const std::filesystem::path& archivo);

} // namespace quorvel::app
