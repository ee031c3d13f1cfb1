#pragma once
#include <QLabel>

namespace quorvel::qt {

/// Says whether two totals agree, and if not by how much and which side lacks it: in words, with a sign and
/// in colour.
class BalanceLabel : public QLabel {
    Q_OBJECT
public:
    struct Colours {
        QColor ink, ground;
    };
    explicit BalanceLabel(QWidget* parent = nullptr);
    void show_totals(double debit, double credit);
    [[nodiscard]] static Colours colours(bool dark, bool balanced);

Q_SIGNALS:
    void pressed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    enum class State { empty, balanced, off };
    State state_ = State::empty;
};

} // namespace quorvel::qt
