#include "qt/help.h"

#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/form.h"
#include "qt/GridView.h"
#include "qt/text.h"

#include <QFile>
#include <QHash>
#include <QWhatsThis>

void quorvel_qt_init_resources();

namespace quorvel::qt {

namespace {

/// By "form;control" and "form;control:column", in small letters.
const QHash<QString, QString>& texts() {
    static const QHash<QString, QString> all = [] {
        quorvel_qt_init_resources();
        QHash<QString, QString> read;
        QFile file(":/ui/ayuda.csv");
        if (!file.open(QIODevice::ReadOnly)) return read;
        for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
            const auto end = line.indexOf(';', line.indexOf(';') + 1);
            if (end > 0) read[line.left(end).toLower()] = line.mid(end + 1);
        }
        return read;
    }();
    return all;
}

} // namespace

QString help_text(const ui::Control& control) {
    const QString own = to_qt(control.form().name() + ";" + control.name()).toLower();
    const QString common = to_qt("*;" + control.name()).toLower();
    if (const auto* grid = dynamic_cast<const ui::ctlPlanilla*>(&control);
        grid != nullptr && grid->Cols() > 0)
        if (const auto text = texts().find(own + ':' + to_qt(grid->Columns(grid->Col()).Caption).toLower());
            text != texts().end())
            return *text;
    return texts().value(own, texts().value(common));
}

void show_help(const ui::Control& control, QWidget& widget) {
    const QString text = help_text(control);
    if (text.isEmpty()) return;
    QRect place = widget.rect();
    if (const auto* grid = qobject_cast<const GridView*>(&widget))
        place = grid->visualRect(grid->currentIndex()).translated(grid->viewport()->pos());
    QWhatsThis::showText(widget.mapToGlobal(place.bottomLeft()), text.toHtmlEscaped(), &widget);
}

} // namespace quorvel::qt
