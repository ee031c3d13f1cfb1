#pragma once
#include "platform/report/layout.h"

class QPainter;
class QPagedPaintDevice;

namespace quorvel::qt {

/// Width of a text on paper, in millimetres.
double text_width(std::string_view text, const report::Font& font);
/// Paints one page; the painter's device may have any resolution.
void paint_page(QPainter& painter, const report::Page& page);
/// Sets the paper of the layout, without margins of the device's own.
void set_paper(QPagedPaintDevice& device, const report::Layout& layout);
/// All pages of a layout on a printer or a PDF, whose paper has been set before.
void paint_all(QPagedPaintDevice& device, const report::Layout& layout);

} // namespace quorvel::qt
