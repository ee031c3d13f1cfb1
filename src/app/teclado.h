#pragma once
#include <Qt>
#include <functional>
#include <string>

class QWidget;

namespace quorvel::app {

/// Plays key strokes to whatever window has them, as a person's keyboard would.
class Teclado {
public:
    void tecla(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const std::string& text = {});
    void escribir(const std::string& text);
    [[nodiscard]] int pulsaciones() const { return count_; }
    /// The widget that gets the next key.
    [[nodiscard]] static QWidget* destino();

private:
    int count_ = 0;
};

} // namespace quorvel::app
