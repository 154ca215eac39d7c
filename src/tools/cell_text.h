#pragma once

class QPainter;
class QRectF;
class QString;

/// Draws text in the cells of a fixed-pitch font, control characters as the small signs of a DOS display. The
/// first character fills `first_cell`, the others stand at its right.
void draw_cells(QPainter& painter, const QString& text, const QRectF& first_cell);
