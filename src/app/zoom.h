#pragma once
#include <QObject>
#include <filesystem>

namespace quorvel::app {

/// Size of the letters of all windows: Ctrl++ and Ctrl+- change it, Ctrl+0 brings the usual one back.
/// Remembered in the settings file of the folder.
class Zoom final : public QObject {
    Q_OBJECT
public:
    static constexpr int USUAL = 100, MENOR = 80, MAYOR = 160, PASO = 10; ///< per cent
    explicit Zoom(std::filesystem::path carpeta, QObject* parent = nullptr);
    void cambiar(int porcentaje); ///< and remembers it
    [[nodiscard]] int porcentaje() const { return porcentaje_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void aplicar(int porcentaje);
    std::filesystem::path carpeta_;
    double letra_usual_; ///< points
    int porcentaje_ = USUAL;
};

} // namespace quorvel::app
