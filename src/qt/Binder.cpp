#include "qt/Binder.h"

#include "qt/BalanceLabel.h"
#include "qt/ConsultaView.h"
#include "qt/DateBox.h"
#include "qt/GridView.h"
#include "qt/RegistroBar.h"
#include "qt/bindings.h"
#include "qt/text.h"
#include "text/numeros.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>
#include <functional>
#include <set>

namespace quorvel::qt {

namespace {

using Make = std::function<std::unique_ptr<Binding>(QWidget&, ui::Control&)>;

template <class B, class W, class C> std::unique_ptr<Binding> make(QWidget& widget, ui::Control& control) {
    auto* w = dynamic_cast<W*>(&widget);
    auto* c = dynamic_cast<C*>(&control);
    return w != nullptr && c != nullptr ? std::make_unique<B>(*w, *c) : nullptr;
}

struct Kind {
    std::string_view name;
    Make make;
};

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> rows{
        {"TextBox", make<TextBinding, QLineEdit, ui::TextBox>},
        {"TextBox", make<TapeBinding, QPlainTextEdit, ui::TextBox>},
        {"ctlEntrada", make<TextBinding, QLineEdit, ui::TextBox>},
        {"ctlCalendario", make<DateBinding, DateBox, ui::ctlCalendario>},
        {"ComboBox", make<ComboBinding, QComboBox, ui::ComboBox>},
        {"ListBox", make<ListBinding, QListWidget, ui::ListBox>},
        {"Label", make<LabelBinding, QLabel, ui::Label>},
        {"CommandButton", make<ButtonBinding<ui::CommandButton>, QPushButton, ui::CommandButton>},
        {"CheckBox", make<ButtonBinding<ui::CheckBox>, QCheckBox, ui::CheckBox>},
        {"OptionButton", make<ButtonBinding<ui::OptionButton>, QRadioButton, ui::OptionButton>},
        {"ctlPlanilla", make<GridBinding, GridView, ui::ctlPlanilla>},
        {"ctlConsulta", make<ConsultaBinding, ConsultaView, ui::ctlConsulta>},
        {"ctlRegistro", make<RegistroBinding, RegistroBar, ui::ctlRegistro>},
    };
    return rows;
}

bool same_name(const QWidget* widget, const std::string& name) {
    return widget->objectName().compare(to_qt(name), Qt::CaseInsensitive) == 0;
}

/// Frames and plain widgets only arrange; everything else that carries a name must belong to a control.
bool needs_control(const QWidget* widget) {
    const QString name = widget->objectName();
    if (name.isEmpty() || name.startsWith("qt_") || name.startsWith("lbl_static_") || name.startsWith("box_"))
        return false;
    for (const QWidget* p = widget->parentWidget(); p != nullptr; p = p->parentWidget()) {
        if (dynamic_cast<const RegistroBar*>(p) || dynamic_cast<const DateBox*>(p) ||
            dynamic_cast<const QTableView*>(p) || dynamic_cast<const QComboBox*>(p) ||
            dynamic_cast<const QListWidget*>(p) || dynamic_cast<const QPlainTextEdit*>(p))
            return false;
    }
    return true;
}

} // namespace

Binder::Binder(ui::Form& form, QWidget& layout) {
    std::vector<QWidget*> named;
    for (QWidget* widget : layout.findChildren<QWidget*>())
        if (needs_control(widget)) named.push_back(widget);
    for (ui::Control* control : form.controls())
        if (control->kind() != "MenuItem") bind(*control, named);
    for (const QWidget* widget : named) {
        const bool bound = std::any_of(bindings_.begin(), bindings_.end(),
                                       [&](const auto& b) { return &b->widget() == widget; });
        const bool known = form.find(to_std(widget->objectName())) != nullptr;
        if (!bound && !known) problems_.push_back("no control for widget " + to_std(widget->objectName()));
    }
    name_labels(layout);
    follow_differences(form, layout);
    pull_all();
}

void Binder::bind(ui::Control& control, const std::vector<QWidget*>& named) {
    const auto widget = std::find_if(named.begin(), named.end(),
                                     [&](const QWidget* w) { return same_name(w, control.name()); });
    if (widget == named.end()) {
        problems_.push_back("no widget for control " + control.name());
        return;
    }
    std::unique_ptr<Binding> binding;
    for (const Kind& kind : kinds())
        if (!binding && kind.name == control.kind()) binding = kind.make(**widget, control);
    if (!binding) {
        problems_.push_back("wrong class for " + control.name() + ": " +
                            (*widget)->metaObject()->className());
        return;
    }
    bindings_.push_back(std::move(binding));
}

void Binder::name_labels(QWidget& layout) {
    for (QLabel* label : layout.findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
        if (label->buddy() == nullptr) continue;
        for (const auto& binding : bindings_)
            if (&binding->widget() == label->buddy()) binding->set_caption_label(label);
    }
}

/// A balance label with the property "difference_of" compares what two amount labels show; no rule hangs on
/// it.
void Binder::follow_differences(ui::Form& form, QWidget& layout) {
    for (auto* label : layout.findChildren<BalanceLabel*>()) {
        const QStringList names = label->property("difference_of").toString().split(',', Qt::SkipEmptyParts);
        auto* first = names.size() == 2 ? dynamic_cast<ui::Label*>(form.find(to_std(names[0]))) : nullptr;
        auto* second = names.size() == 2 ? dynamic_cast<ui::Label*>(form.find(to_std(names[1]))) : nullptr;
        if (first == nullptr || second == nullptr) {
            problems_.push_back("difference of unknown labels: " + to_std(label->objectName()));
            continue;
        }
        const auto show = [label, first, second] {
            label->show_totals(valnumeroformato(first->Caption()), valnumeroformato(second->Caption()));
        };
        QObject::connect(label, &BalanceLabel::pressed, label, [&form] {
            ui::KeyEvent explain{.key = ui::Key::f9};
            form.send_key(explain);
        });
        links_.push_back(first->Changed.connect(show));
        links_.push_back(second->Changed.connect(show));
        show();
    }
}

Binding* Binder::find(const ui::Control* control) const {
    for (const auto& binding : bindings_)
        if (&binding->control() == control) return binding.get();
    return nullptr;
}

void Binder::pull_all() {
    for (const auto& binding : bindings_) binding->pull();
}

void Binder::detach() {
    links_.clear();
    for (const auto& binding : bindings_) binding->detach();
}

} // namespace quorvel::qt
