#pragma once
class QMessageBox;

namespace quorvel::qt {

/// Room for the text of a message: lines stay as they were written, and a text longer than the screen scrolls
/// instead of pushing the buttons off it.
void make_room(QMessageBox& box);

} // namespace quorvel::qt
