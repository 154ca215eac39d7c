#include "tools/cell_text.h"

#include "shell/code_page.h"

#include <QPainter>

namespace {

bool is_ascii(QChar character) {
  return character >= u' ' && character <= u'~';
}

}  // namespace

/// Plain characters of a fixed-pitch font are right in one stroke; others may come from a font of another
/// pitch and are placed one by one.
void draw_cells(QPainter& painter, const QString& text, const QRectF& first_cell) {
  qsizetype begin = 0;
  while (begin < text.size()) {
    qsizetype end = begin + 1;
    while (is_ascii(text[begin]) && end < text.size() && is_ascii(text[end])) {
      ++end;
    }
    QRectF area = first_cell.translated(first_cell.width() * static_cast<qreal>(begin), 0);
    area.setWidth(first_cell.width() * static_cast<qreal>(end - begin));
    const Qt::Alignment where = is_ascii(text[begin]) ? Qt::AlignLeft : Qt::AlignHCenter;
    painter.drawText(area, static_cast<int>(where | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip,
                     code_page::dos_glyphs(text.mid(begin, end - begin)));
    begin = end;
  }
}
