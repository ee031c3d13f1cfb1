#include "qt/MenuBuilder.h"

#include "platform/ui/form.h"
#include "qt/keys.h"
#include "qt/text.h"

#include <QMenu>
#include <QMenuBar>
#include <set>

namespace quorvel::qt {

namespace {

/// Underlines the first letter of the caption that no sibling has taken.
QString with_mnemonic(const QString& caption, std::set<QChar>& taken) {
    QString text = caption;
    text.replace('&', "&&");
    for (int i = 0; i < text.size(); ++i) {
        const QChar letter = text[i].toLower();
        if (!letter.isLetter() || taken.contains(letter)) continue;
        taken.insert(letter);
        return text.insert(i, '&');
    }
    return text;
}

} // namespace

MenuBuilder::MenuBuilder(ui::Form& form, QMenuBar& bar) {
    std::map<const ui::MenuItem*, QMenu*> menus;
    std::map<const ui::MenuItem*, std::set<QChar>> taken;
    const auto parent_of = [](const ui::MenuItem* item) { return item->parent(); };
    for (ui::Control* control : form.controls()) {
        auto* item = dynamic_cast<ui::MenuItem*>(control);
        if (item == nullptr) continue;
        QString text = with_mnemonic(to_qt(item->Caption()), taken[parent_of(item)]);
        if (parent_of(item) == nullptr) {
            menus[item] = bar.addMenu(text);
            menus[item]->setToolTipsVisible(true);
            actions_[item] = menus[item]->menuAction();
        } else {
            if (!item->shortcut().empty()) text += '\t' + shortcut_text(item->shortcut());
            QMenu* menu = menus[parent_of(item)];
            if (menu == nullptr) continue;
            if (item->separator_before()) menu->addSeparator();
            QAction* action = menu->addAction(text);
            actions_[item] = action;
            connect(action, &QAction::triggered, this,
                    [item, &form] { form.atender([item] { item->press(); }); });
        }
        actions_[item]->setObjectName(to_qt(item->name()));
        links_.push_back(item->Changed.connect([this, item] { pull(*item); }));
        pull(*item);
    }
}

void MenuBuilder::pull(const ui::MenuItem& item) {
    QAction* action = actions_.at(&item);
    action->setEnabled(item.Enabled());
    action->setVisible(item.Visible());
    action->setToolTip(to_qt(item.ToolTip()));
}

} // namespace quorvel::qt
