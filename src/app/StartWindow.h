#pragma once
#include "app/sesion_app.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace quorvel::app {

/// Opening window: which database, which company, who works; from here companies are created, configured and
/// looked at.
class StartWindow : public QDialog {
    Q_OBJECT
public:
    explicit StartWindow(std::filesystem::path folder);
    /// What was chosen when the dialog was accepted.
    [[nodiscard]] Eleccion_inicial eleccion() const;

protected:
    /// Enter after a connection chooses it; who works there is still to be chosen before it starts.
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* build_databases();
    QWidget* build_company();
    QPushButton* button(const char* text, const char* tip, void (StartWindow::*action)());
    void fill_recent();
    /// By value: the connection chosen until now may be chosen again, and is forgotten first.
    void choose(std::string connection);
    void mark_recent(const std::string& connection);
    void show_company();
    void open_file();
    void create_database();
    void create_demo();
    void back_up();
    void restore();
    void forget();
    void create_company();
    void configure();
    void show_books();
    void search_companies();
    /// @return empty when cancelled
    QString ask_new_file(const char* title, const char* name);
    void show_problem(const std::string& text);
    [[nodiscard]] int company() const;
    [[nodiscard]] std::string company_name() const;

    std::filesystem::path folder_;
    std::string connection_;
    QListWidget* recent_;
    QLineEdit* address_;
    QComboBox *companies_, *users_;
    QLabel *summary_, *problem_;
    QPushButton *start_, *forget_, *new_company_, *configure_, *books_, *back_up_;
};

} // namespace quorvel::app
