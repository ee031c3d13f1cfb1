#include "qt/screen_room.h"

#include <QApplication>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>

namespace quorvel::qt {

namespace {

/// Keys that nobody took are the window's: the focus moves the view, not they.
class Room final : public QScrollArea {
public:
    Room(QWidget* content, QWidget* parent) : QScrollArea(parent), unfolded_(content->minimumSize()) {
        setWidget(content);
        connect(qApp, &QApplication::focusChanged, this, [this] { // when it has come to rest
            QTimer::singleShot(0, this, [this] { show_focus(); });
        });
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 80}; }
    [[nodiscard]] QSize sizeHint() const override {
        return widget() != nullptr ? widget()->sizeHint() : QScrollArea::sizeHint();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override { event->ignore(); }
    void resizeEvent(QResizeEvent* event) override {
        QScrollArea::resizeEvent(event);
        fold();
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool done = QScrollArea::eventFilter(watched, event);
        if (watched == widget() && event->type() == QEvent::Resize) show_focus();
        return done;
    }

private:
    /// All of what has the focus, or where it begins.
    void show_focus() {
        const QWidget* now = QApplication::focusWidget();
        if (now == nullptr || now == widget() || !widget()->isAncestorOf(now)) return;
        const QRect place(now->mapTo(widget(), QPoint(0, 0)), now->size());
        ensureVisible(place.right(), place.bottom(), 12, 12);
        ensureVisible(place.left(), place.top(), 12, 12);
    }
    /// Rows that the layout names so stand below each other where the content, as small as it may be, is too
    /// wide. Scroll bars come and go with it, so they have no say.
    void fold() {
        if (!folded_) needed_ = unfolded_.isNull() ? widget()->minimumSizeHint().width() : unfolded_.width();
        const bool fold = needed_ + verticalScrollBar()->sizeHint().width() > width();
        if (fold == folded_) return;
        folded_ = fold;
        for (QBoxLayout* row : widget()->findChildren<QBoxLayout*>())
            if (row->objectName().startsWith("fold_"))
                row->setDirection(fold ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
        widget()->setMinimumSize(fold ? QSize(0, 0) : unfolded_);
    }
    QSize unfolded_; ///< what the layout asks for
    int needed_ = 0;
    bool folded_ = false;
};

} // namespace

QScrollArea* scroll_area(QWidget* content, QWidget* parent) {
    auto* area = new Room(content, parent);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->viewport()->setBackgroundRole(QPalette::Window);
    content->setBackgroundRole(QPalette::Window);
    return area;
}

void resize_within_screen(QWidget& window, const QSize& wanted) {
    constexpr QSize frame{4, 32}; // the window manager's, which nobody tells before it is there
    const QScreen* screen = window.screen();
    if (screen == nullptr || QGuiApplication::platformName() == "offscreen") return window.resize(wanted);
    const QRect room = screen->availableGeometry();
    window.resize(wanted.boundedTo(room.size() - frame));
    if (window.parentWidget() != nullptr) return; // beside its owner
    // a dialog that places itself forgets the frame, and its title ends above the screen
    const QSize rest = (room.size() - window.size() - frame) / 2;
    window.move(room.topLeft() + QPoint(rest.width(), rest.height()));
}

} // namespace quorvel::qt
