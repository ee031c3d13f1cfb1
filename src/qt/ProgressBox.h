#pragma once
#include <QDialog>
#include <QElapsedTimer>
#include <string>

class QLabel;
class QProgressBar;

namespace quorvel::qt {

/// What long work shows while it keeps the program busy: text, bar and a way to end it. From the first report
/// on, keys and clicks reach this box alone, so that nothing else can begin in the middle of the work.
class ProgressBox : public QDialog {
    Q_OBJECT
public:
    explicit ProgressBox(QWidget* owner);
    /// Shows how far the work is and lets the windows repaint. @param total 0 when nobody knows
    /// @return false once the person has cancelled
    bool report(const std::string& what, long done, long total);
    /// Escape, the button and the window's own cross: the box stays until the work has ended.
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void appear();
    QLabel* text_;
    QProgressBar* bar_;
    QElapsedTimer since_;
    bool cancelled_ = false;
};

} // namespace quorvel::qt
