#include "qt/UiLoader.h"

#include "qt/BalanceLabel.h"
#include "qt/ConsultaView.h"
#include "qt/DateBox.h"
#include "qt/GridView.h"
#include "qt/RegistroBar.h"
#include "qt/SidePanel.h"
#include "qt/text.h"

#include <QDir>
#include <QFile>

void quorvel_qt_init_resources() { Q_INIT_RESOURCE(quorvel_ui); }

namespace quorvel::qt {

namespace {

/// The loader reports a broken layout only in the log; for as long as this lives its lines are collected.
class LogCollector {
public:
    explicit LogCollector(std::vector<std::string>& lines) {
        target_ = &lines;
        previous_ = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
            if (target_ != nullptr) target_->push_back(to_std(text));
        });
    }
    ~LogCollector() {
        qInstallMessageHandler(previous_);
        target_ = nullptr;
    }
    LogCollector(const LogCollector&) = delete;
    LogCollector& operator=(const LogCollector&) = delete;

private:
    static inline std::vector<std::string>* target_ = nullptr;
    QtMessageHandler previous_;
};

/// Names of forms match without regard to case.
QString layout_path(const std::string& form) {
    const QString wanted = to_qt(form) + ".ui";
    for (const QString& name : QDir(":/ui").entryList())
        if (name.compare(wanted, Qt::CaseInsensitive) == 0) return ":/ui/" + name;
    return {};
}

} // namespace

QWidget* UiLoader::load_form(const std::string& form, QWidget* parent, std::vector<std::string>& problems) {
    quorvel_qt_init_resources();
    const QString path = layout_path(form);
    if (path.isEmpty()) {
        problems.push_back("no layout for " + form);
        return nullptr;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        problems.push_back("cannot read " + to_std(path));
        return nullptr;
    }
    const LogCollector collector(problems);
    QWidget* widget = load(&file, parent);
    if (widget == nullptr) problems.push_back(form + ": " + to_std(errorString()));
    return widget;
}

QWidget* UiLoader::createWidget(const QString& class_name, QWidget* parent, const QString& name) {
    QWidget* widget = nullptr;
    if (class_name == "GridView")
        widget = new GridView(parent);
    else if (class_name == "ConsultaView")
        widget = new ConsultaView(parent);
    else if (class_name == "RegistroBar")
        widget = new RegistroBar(parent);
    else if (class_name == "DateBox")
        widget = new DateBox(parent);
    else if (class_name == "SidePanel")
        widget = new SidePanel(parent);
    else if (class_name == "BalanceLabel")
        widget = new BalanceLabel(parent);
    else
        return QUiLoader::createWidget(class_name, parent, name);
    widget->setObjectName(name);
    return widget;
}

} // namespace quorvel::qt
