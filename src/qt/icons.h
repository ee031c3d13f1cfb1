#pragma once
#include "platform/ui/ctlRegistro.h"

#include <QColor>
#include <QIcon>

namespace quorvel::qt {

/// A line drawing for a function of the record toolbar, in the given ink so that it fits light and dark.
QIcon toolbar_icon(ui::ctlRegistro::Function function, const QColor& ink, const QColor& accent);
/// A sign for something that is not accepted; its shape says it as well as its colour.
QIcon warning_icon();
/// A letter in a disc: what a message box is about.
QIcon sign_icon(QChar sign, const QColor& ground, const QColor& ink);
/// An arrow head to the left or to the right.
QIcon arrow_icon(bool left, const QColor& ink);
/// A closed lock.
QIcon lock_icon(const QColor& ink);
/// The program's own icon.
QIcon program_icon();

} // namespace quorvel::qt
