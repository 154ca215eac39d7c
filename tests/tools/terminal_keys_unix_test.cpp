#include "support/bytes.h"
#include "tools/term_bench.h"

#include <QKeyEvent>

namespace {

constexpr quint32 symbol_of_alt = 0xFFE9;
constexpr quint32 symbol_of_meta = 0xFFE7;
constexpr quint32 symbol_of_super = 0xFFEB;

/// A key as X11 tells it.
void send(TermBench& bench, QEvent::Type type, Qt::Key key, quint32 symbol, Qt::KeyboardModifiers modifiers) {
  QKeyEvent event(type, key, modifiers, 0, symbol, 0);
  QApplication::sendEvent(bench.typing, &event);
}

void type_6_5(TermBench& bench) {
  for (const Qt::Key digit : {Qt::Key_6, Qt::Key_5}) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      send(bench, type, digit, 0, Qt::KeypadModifier | Qt::AltModifier);
    }
  }
}

}  // namespace

TEST(terminal_keys_x11, alt_let_go_under_shift_is_let_go) {
  TermBench bench;
  send(bench, QEvent::KeyPress, Qt::Key_Alt, symbol_of_alt, Qt::NoModifier);
  type_6_5(bench);
  send(bench, QEvent::KeyPress, Qt::Key_Shift, 0xFFE1, Qt::AltModifier);
  send(bench, QEvent::KeyRelease, Qt::Key_Meta, symbol_of_meta, Qt::AltModifier | Qt::ShiftModifier);
  send(bench, QEvent::KeyRelease, Qt::Key_Shift, 0xFFE1, Qt::ShiftModifier);
  bench.type("BC");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "ABC"));
}

TEST(terminal_keys_x11, alt_pressed_under_shift_is_alt) {
  TermBench bench;
  send(bench, QEvent::KeyPress, Qt::Key_Shift, 0xFFE1, Qt::NoModifier);
  send(bench, QEvent::KeyPress, Qt::Key_Meta, symbol_of_meta, Qt::ShiftModifier);
  send(bench, QEvent::KeyRelease, Qt::Key_Shift, 0xFFE1, Qt::AltModifier | Qt::ShiftModifier);
  type_6_5(bench);
  send(bench, QEvent::KeyRelease, Qt::Key_Alt, symbol_of_alt, Qt::AltModifier);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "A"));
}

TEST(terminal_keys_x11, the_super_key_is_not_alt) {
  TermBench bench;
  send(bench, QEvent::KeyPress, Qt::Key_Meta, symbol_of_super, Qt::NoModifier);
  send(bench, QEvent::KeyRelease, Qt::Key_Meta, symbol_of_super, Qt::MetaModifier);
  bench.type("B");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "B"));
}
