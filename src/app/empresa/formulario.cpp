#include "app/empresa/formulario.h"

#include "qt/text.h"
#include "text/letras_utf8.h"

#include <QCompleter>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>

namespace quorvel::app {

using qt::to_qt;
using qt::to_std;

namespace {

/// Entries whose text without accents holds what was typed.
class FiltroCuentas final : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;
    void buscar(const QString& texto) {
        buscado_ = sin_acentos(to_std(texto));
        invalidateFilter();
    }

protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override {
        const auto texto = sourceModel()->index(row, 0, parent).data().toString();
        return buscado_.empty() || sin_acentos(to_std(texto)).find(buscado_) != std::string::npos;
    }

private:
    std::string buscado_;
};

class EnterSigue final : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* campo, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const int tecla = static_cast<QKeyEvent*>(event)->key();
        if (tecla != Qt::Key_Return && tecla != Qt::Key_Enter) return false;
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QCoreApplication::sendEvent(campo, &tab);
        return true;
    }
};

} // namespace

void enter_sigue(QWidget& campo) { campo.installEventFilter(new EnterSigue(&campo)); }

Formulario::Formulario(QWidget* parent) : QWidget(parent), forma_(new QFormLayout(this)) {
    forma_->setContentsMargins(0, 0, 0, 0);
    forma_->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    forma_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    forma_->setVerticalSpacing(5);
}

void Formulario::campo(const char* campo, const QString& rotulo, QWidget* widget) {
    auto* zona = new QWidget(this);
    auto* columna = new QVBoxLayout(zona);
    columna->setContentsMargins(0, 0, 0, 0);
    columna->setSpacing(1);
    auto* nota = new QLabel(zona);
    nota->setTextFormat(Qt::PlainText);
    nota->setWordWrap(true);
    nota->hide();
    columna->addWidget(widget);
    columna->addWidget(nota);
    const auto corrigiendo = [nota, widget] { // what is being corrected is no longer wrong
        nota->hide();
        widget->setAccessibleDescription({});
    };
    if (auto* caja = qobject_cast<QLineEdit*>(widget))
        connect(caja, &QLineEdit::textChanged, nota, corrigiendo);
    if (auto* lista = qobject_cast<QComboBox*>(widget))
        connect(lista, &QComboBox::editTextChanged, nota, corrigiendo);
    auto* titulo = new QLabel(rotulo, this);
    titulo->setBuddy(widget);
    widget->setAccessibleName(QString(rotulo).remove('&'));
    forma_->addRow(titulo, zona);
    campos_[campo] = {widget, nota};
    enter_sigue(*widget);
}

bool Formulario::observar(const std::vector<Observacion>& observaciones) {
    for (auto& [nombre, c] : campos_) {
        c.nota->hide();
        c.widget->setAccessibleDescription({});
    }
    sin_campo_.clear();
    bool grave = false;
    for (const Observacion& o : observaciones) {
        const auto i = campos_.find(o.campo);
        if (i == campos_.end()) {
            sin_campo_ << to_qt(o.mensaje);
        } else {
            i->second.nota->setText((o.grave ? QString::fromUtf8("✖ ") : QString::fromUtf8("⚠ ")) +
                                    to_qt(o.mensaje));
            i->second.nota->show();
            i->second.widget->setAccessibleDescription(to_qt(o.mensaje));
            if (o.grave && !grave) i->second.widget->setFocus();
        }
        grave = grave || o.grave;
    }
    return grave;
}

CajaCuenta::CajaCuenta(const std::vector<CuentaImputable>& cuentas, QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setMaxVisibleItems(14);
    setMinimumContentsLength(34);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    addItem("", "");
    for (const CuentaImputable& c : cuentas) addItem(to_qt(c.codigo + "  " + c.nombre), to_qt(c.codigo));
    auto* filtro = new FiltroCuentas(this);
    filtro->setSourceModel(model());
    auto* completa = new QCompleter(filtro, this);
    completa->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    completa->setMaxVisibleItems(12);
    setCompleter(completa);
    connect(lineEdit(), &QLineEdit::textEdited, this,
            [filtro](const QString& texto) { filtro->buscar(texto); });
    connect(lineEdit(), &QLineEdit::editingFinished, this, [this] { poner(codigo()); });
}

void CajaCuenta::poner(const std::string& codigo) {
    const int i = findData(to_qt(codigo));
    if (i >= 0)
        setCurrentIndex(i);
    else
        setEditText(to_qt(codigo));
}

std::string CajaCuenta::codigo() const {
    const QString texto = currentText().trimmed();
    const int exacta = findText(currentText());
    if (exacta >= 0) return to_std(itemData(exacta).toString());
    const QString primera = texto.section(' ', 0, 0);
    if (texto.isEmpty() || findData(primera) >= 0) return to_std(primera);
    // the only account that holds what was typed
    const std::string buscado = sin_acentos(to_std(texto));
    int hallada = -1;
    for (int i = 1; i < count(); ++i) {
        if (sin_acentos(to_std(itemText(i))).find(buscado) == std::string::npos) continue;
        if (hallada >= 0) return to_std(texto);
        hallada = i;
    }
    return hallada < 0 ? to_std(texto) : to_std(itemData(hallada).toString());
}

} // namespace quorvel::app
