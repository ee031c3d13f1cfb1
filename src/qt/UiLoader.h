#pragma once
#include <QUiLoader>
#include <string>
#include <vector>

namespace quorvel::qt {

/// Loads a form's layout from the resources; knows the widgets of this program.
class UiLoader : public QUiLoader {
public:
    /// @return nullptr when there is no such layout; what went wrong is added to the problems
    QWidget* load_form(const std::string& form, QWidget* parent, std::vector<std::string>& problems);
    QWidget* createWidget(const QString& class_name, QWidget* parent, const QString& name) override;
};

} // namespace quorvel::qt
