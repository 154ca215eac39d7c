#pragma once

#include "support/window_bench.h"
#include "tools/terminal_typing.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

/// The window with the terminal on show and the focus in its typing box.
struct TermBench : WindowBench {
  TypingBox* typing;
  TerminalView* received;

  explicit TermBench(bool port_opens = true, std::string_view address = "0") : WindowBench(port_opens) {
    program.services().settings.reader_address = address;
    open(ScreenCode::term);
    typing = find<TypingBox>("Text7");
    received = find<TerminalView>("Text1");
  }

  void type(const char* text) { QTest::keyClicks(typing, QLatin1String(text)); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(typing, key, modifiers); }
  void alt_code(const std::vector<Qt::Key>& keypad_keys) {
    QTest::keyPress(typing, Qt::Key_Alt);
    for (const Qt::Key key : keypad_keys) {
      QTest::keyClick(typing, key, Qt::KeypadModifier);
    }
    QTest::keyRelease(typing, Qt::Key_Alt);
  }
  /// The bytes arrive, and the terminal's tick passes.
  void receive(std::string_view bytes) {
    port.arrive(bytes);
    pump.idle(std::chrono::milliseconds(5));
  }
  std::vector<std::string> typed_lines() const { return typing->content().lines(); }
  std::vector<std::string> received_lines() const { return received->content().lines(); }
};
