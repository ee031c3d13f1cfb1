#include "qt/ProgressBox.h"

#include "qt/text.h"
#include "text/cuantos.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace quorvel::qt {
namespace {

constexpr int STEPS = 1000;
constexpr qint64 SHORT_WORK_MS = 400; // needs no box

int width_of(const QWidget& box) { return 50 * box.fontMetrics().averageCharWidth(); }

} // namespace

ProgressBox::ProgressBox(QWidget* owner)
    : QDialog(owner), text_(new QLabel(this)), bar_(new QProgressBar(this)) {
    setObjectName("progreso");
    setWindowTitle("Quorvel");
    setWindowModality(Qt::ApplicationModal);
    setMinimumWidth(width_of(*this));
    text_->setTextFormat(Qt::PlainText);
    bar_->setTextVisible(false);
    auto* cancel = new QPushButton("Cancelar", this);
    cancel->setObjectName("cancelar");
    cancel->setAutoDefault(false); // an Enter meant for the question before must not end the work
    connect(cancel, &QPushButton::clicked, this, &ProgressBox::reject);
    auto* below = new QHBoxLayout;
    below->addStretch();
    below->addWidget(cancel);
    auto* column = new QVBoxLayout(this);
    column->setSpacing(12);
    column->setContentsMargins(16, 16, 16, 16);
    column->addWidget(text_);
    column->addWidget(bar_);
    column->addLayout(below);
    since_.start();
}

void ProgressBox::appear() {
    if (QApplication::overrideCursor() != nullptr) QApplication::changeOverrideCursor(Qt::BusyCursor);
    show();
    activateWindow();
}

bool ProgressBox::report(const std::string& what, long done, long total) {
    const bool known = total > 0;
    const std::string lines = known || done == 0 ? "" : ": " + cuantos(done, "línea", "líneas");
    if (!cancelled_) text_->setText(to_qt(what + lines));
    bar_->setRange(0, known ? STEPS : 0);
    if (known)
        bar_->setValue(static_cast<int>(static_cast<double>(done) * STEPS / static_cast<double>(total)));
    if (!isVisible() && since_.elapsed() >= SHORT_WORK_MS) appear();
    QApplication::processEvents(isVisible() ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    return !cancelled_;
}

void ProgressBox::reject() {
    cancelled_ = true;
    text_->setText("Cancelando");
}

void ProgressBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) reject();
}

} // namespace quorvel::qt
