#pragma once

#include "support/window_bench.h"
#include "tools/drawn_text.h"
#include "tools/fullterm.h"
#include "tools/term.h"
#include "tools/terminal_view.h"

#include <QLineEdit>

#include <chrono>
#include <string_view>
#include <vector>

/// The full-screen terminal, opened from the terminal screen and active.
struct FullBench : WindowBench {
  FullTermWindow* full = nullptr;
  DrawnText* pop1 = nullptr;
  QLineEdit* sink = nullptr;

  explicit FullBench(bool port_opens = true, std::string_view address = "0") : WindowBench(port_opens) {
    program.services().settings.reader_address = address;
    open(ScreenCode::term);
    click("Full  Screen");
    full = static_cast<TermScreen*>(window.screen(ScreenCode::term))->full_screen();
    pop1 = full->findChild<DrawnText*>(QStringLiteral("pop1"));
    sink = full->findChild<QLineEdit*>(QStringLiteral("Text1"));
    EXPECT_TRUE(QTest::qWaitForWindowActive(full));
  }

  void activate(QWidget& other) {
    other.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
  }
  /// As a person does: into whatever has the focus.
  void type(const char* text) { QTest::keyClicks(full->focusWidget(), QLatin1String(text)); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(full->focusWidget(), key, modifiers);
  }
  void alt_code(const std::vector<Qt::Key>& keypad_keys) {
    QTest::keyPress(full->focusWidget(), Qt::Key_Alt);
    for (const Qt::Key key : keypad_keys) {
      press(key, Qt::KeypadModifier);
    }
    QTest::keyRelease(full->focusWidget(), Qt::Key_Alt);
  }
  void receive(std::string_view bytes) {
    port.arrive(bytes);
    pump.idle(std::chrono::milliseconds(25));
  }
  [[nodiscard]] QString drawn() const { return pop1->text(); }
  TerminalView* terminal_box() { return find<TerminalView>("Text1"); }
  /// The pixels between two heights of a cell of the first line, 0 its top and 1 its bottom, without its
  /// edges and the middle, where a block character begins or ends.
  [[nodiscard]] QRect part_of_cell(int column, qreal top, qreal bottom) const {
    const QRectF cell = pop1->cell(0, column);
    const QRectF part(cell.x(), cell.y() + cell.height() * top, cell.width(), cell.height() * (bottom - top));
    return part.adjusted(2, 3, -2, -3).toAlignedRect();
  }
};
