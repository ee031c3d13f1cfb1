#include "qt/SidePanel.h"

#include <QApplication>
#include <QBoxLayout>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollBar>
#include <algorithm>

namespace quorvel::qt {

SidePanel::SidePanel(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setBackgroundRole(QPalette::Window);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { follow_focus(now); });
}

// What it holds gives up the focus while it goes, and nobody here is left to follow it.
SidePanel::~SidePanel() { disconnect(qApp, nullptr, this, nullptr); }

QBoxLayout* SidePanel::row() const {
    return parentWidget()->findChild<QBoxLayout*>(property("row").toString());
}

QPushButton* SidePanel::opener() const {
    return parentWidget()->findChild<QPushButton*>(property("opener").toString());
}

/// As wide as what it holds, and room for a scroll bar where that is needed.
QSize SidePanel::sizeHint() const {
    if (widget() == nullptr) return QScrollArea::sizeHint();
    const QSize held = widget()->minimumSizeHint().expandedTo(widget()->minimumSize());
    const bool scrolls = isVisible() && height() < held.height();
    return {held.width() + 2 * frameWidth() + (scrolls ? verticalScrollBar()->sizeHint().width() : 0),
            held.height()};
}

QSize SidePanel::minimumSizeHint() const { return {sizeHint().width(), 0}; }

bool SidePanel::event(QEvent* event) {
    if (event->type() == QEvent::Polish && parentWidget() != nullptr) {
        parentWidget()->installEventFilter(this);
        if (QPushButton* button = opener()) {
            button->hide();
            connect(button, &QPushButton::clicked, this, &SidePanel::enter, Qt::UniqueConnection);
        }
    }
    if (event->type() == QEvent::Resize) updateGeometry();
    return QScrollArea::event(event);
}

void SidePanel::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    fit_content();
}

/// Lists give up their room before anything scrolls.
void SidePanel::fit_content() {
    if (widget() == nullptr || widget()->layout() == nullptr) return;
    const int width = viewport()->width();
    widget()->resize(width,
                     std::max(viewport()->height(), widget()->layout()->totalMinimumHeightForWidth(width)));
}

bool SidePanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize) arrange();
    if (watched == widget() && event->type() == QEvent::LayoutRequest) fit_content();
    return QScrollArea::eventFilter(watched, event);
}

void SidePanel::arrange() {
    QBoxLayout* beside = row();
    if (beside == nullptr || arranging_) return;
    arranging_ = true;
    const int others = parentWidget()->layout()->minimumSize().width();
    const int needed = drawer_ ? others + beside->spacing() + sizeHint().width() : others;
    const bool narrow = parentWidget()->width() < needed;
    if (narrow != drawer_) {
        drawer_ = narrow;
        if (drawer_)
            beside->removeWidget(this);
        else
            beside->addWidget(this);
        setFrameShape(drawer_ ? QFrame::StyledPanel : QFrame::NoFrame);
        if (QPushButton* button = opener()) button->setVisible(drawer_);
        show();
    }
    place_drawer();
    arranging_ = false;
}

/// Shut it lies beyond the form's edge, where it is not seen and can still be given the focus.
void SidePanel::place_drawer() {
    if (!drawer_) return;
    const QRect area = parentWidget()->rect();
    const int top = row()->geometry().top(), width = sizeHint().width() + 8;
    setGeometry(out_ ? area.width() - width : area.width(), top, width, area.height() - top);
    raise();
}

void SidePanel::follow_focus(QWidget* now) {
    if (now == nullptr || now->window() != window()) return; // a list that is open belongs to its box
    out_ = isAncestorOf(now);
    if (out_) ensureWidgetVisible(now, 0, 12);
    place_drawer();
}

void SidePanel::enter() {
    const auto held = widget()->findChildren<QWidget*>();
    const auto first = std::find_if(held.begin(), held.end(), [](const QWidget* w) {
        return w->isEnabled() && (w->focusPolicy() & Qt::TabFocus);
    });
    if (first != held.end()) (*first)->setFocus(Qt::TabFocusReason);
}

} // namespace quorvel::qt
