#include "shell/fonts.h"

#include <QStringList>

namespace {

QFont font_of(const QStringList& families, QFont::StyleHint hint, qreal points) {
  QFont font;
  font.setFamilies(families);
  font.setStyleHint(hint);
  font.setPointSizeF(points);
  return font;
}

}  // namespace

QFont fonts::serif(qreal points) {
  return font_of({QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif")}, QFont::Serif,
                 points);
}

QFont fonts::fixed(qreal points) {
  QFont font =
      font_of({QStringLiteral("Courier New"), QStringLiteral("Liberation Mono")}, QFont::Monospace, points);
  font.setFixedPitch(true);
  return font;
}
