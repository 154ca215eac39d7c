#pragma once

#include "support/window_bench.h"

#include <QColor>
#include <QTest>

// The colours of the menu's captions.
inline const QColor black(0x00, 0x00, 0x00);
inline const QColor green(0x00, 0xFF, 0x01);
inline const QColor blue(0x00, 0x00, 0xFF);

/// For the tests that follow: the mouse is one for all windows.
inline void move_mouse_away(QWidget& window) {
  QTest::mouseMove(&window, QPoint(window.width() / 2, window.height() - 1));
}

/// A key, wherever the focus is.
inline void press(WindowBench& bench, Qt::Key key) {
  QWidget* const focus = bench.window.focusWidget();
  QTest::keyClick(focus != nullptr ? focus : &bench.window, key);
}
