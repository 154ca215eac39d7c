#pragma once

#include <QImage>
#include <QRect>

/// Where a part of a widget lies in its picture, which has more pixels than the widget on a scaled screen.
inline QRect pixels_of(const QImage& picture, const QRectF& part) {
  const qreal ratio = picture.devicePixelRatio();
  return QRectF(part.topLeft() * ratio, part.size() * ratio).toAlignedRect();
}
