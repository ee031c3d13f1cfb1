#pragma once
#include "libros/mensual.h"

#include <QWidget>
#include <filesystem>

class QPainter;

namespace quorvel {

/// Monthly totals, one panel of twelve bars for each book: what a bar says stands beside it in words and
/// figures, never in its colour alone.
class Grafico : public QWidget {
    Q_OBJECT
public:
    explicit Grafico(QWidget* parent = nullptr);
    void mostrar(std::vector<LibroMensual> libros, int anio);
    [[nodiscard]] const std::vector<LibroMensual>& libros() const { return libros_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<LibroMensual> libros_;
    int anio_ = 0;
};

/// "1.234", "12,3 mil", "4,56 mill."
[[nodiscard]] QString monto_corto(std::int64_t pesos);
/// One landscape page. @throws std::runtime_error in Spanish
void escribir_grafico_pdf(const std::vector<LibroMensual>& libros, int anio,
                          const std::filesystem::path& archivo);

} // namespace quorvel
