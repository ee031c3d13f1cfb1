#pragma once
#include "app/sesion_app.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace quorvel {

/// Opening window: which database, which company, who works.
class StartWindow : public QDialog {
    Q_OBJECT
public:
    explicit StartWindow(std::filesystem::path folder);
    /// What was chosen when the dialog was accepted.
    [[nodiscard]] Eleccion_inicial eleccion() const;

private:
    void build();
    void choose(const std::string& connection);
    void choose_file();
    void create_file(bool demo);
    void show_problem(const std::string& text);
    std::filesystem::path folder_;
    std::string connection_;
    QListWidget* recent_;
    QLineEdit* address_;
    QComboBox *companies_, *users_;
    QLabel* problem_;
    QPushButton* start_;
};

} // namespace quorvel
