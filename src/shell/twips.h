#pragma once

#include <QWidget>

/// A length in twips (1/1440 of an inch) in pixels of the widget's screen: 15 twips are one at 96 dots an
/// inch.
[[nodiscard]] inline int twips_to_pixels(int twips, const QWidget& widget) {
  return twips * widget.logicalDpiX() / 1440;
}
