#pragma once
#include "platform/ui/controls.h"

#include <QObject>
#include <map>
#include <vector>

class QAction;
class QMenuBar;

namespace quorvel::qt {

/// The menu bar of a form from its MenuItem controls. Shortcuts are shown, the form itself acts on them.
class MenuBuilder : public QObject {
public:
    MenuBuilder(ui::Form& form, QMenuBar& bar);
    [[nodiscard]] bool empty() const { return actions_.empty(); }

private:
    void pull(const ui::MenuItem& item);
    std::map<const ui::MenuItem*, QAction*> actions_;
    std::vector<ui::Connection> links_;
};

} // namespace quorvel::qt
