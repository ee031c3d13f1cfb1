#pragma once
#include <QScrollArea>

class QBoxLayout;
class QPushButton;

namespace quorvel::qt {

/// The panel beside a form's main column; it scrolls where the window is too low for it. Where the window is
/// too narrow as well it becomes a drawer over the form's right edge, out while something in it has the
/// focus. The layout names in the properties "row" the row that holds it and in "opener" the button that
/// leads to it.
class SidePanel : public QScrollArea {
    Q_OBJECT
public:
    explicit SidePanel(QWidget* parent = nullptr);
    ~SidePanel() override;
    [[nodiscard]] bool is_drawer() const { return drawer_; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();
    void fit_content();
    void place_drawer();
    void follow_focus(QWidget* now);
    void enter();
    [[nodiscard]] QBoxLayout* row() const;
    [[nodiscard]] QPushButton* opener() const;
    bool drawer_ = false, out_ = false, arranging_ = false;
};

} // namespace quorvel::qt
