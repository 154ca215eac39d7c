#pragma once

#include "link/qt_event_pump.h"
#include "link/qt_serial_port.h"
#include "shell/main_window.h"
#include "shell/program.h"
#include "support/bytes.h"
#include "support/pty.h"
#include "support/pty_bench.h"
#include "support/pty_server.h"
#include "support/scripted_dialogs.h"
#include "support/test_printer.h"
#include "support/window_hands.h"

#include <QTest>

#include <memory>

/// The whole way: the real window, the real event loop, the real port class on a pseudo-terminal, and
/// simulated readers at its other end, as Com Port 1. Only the boxes are scripted.
struct WholeBench : WindowHands<WholeBench> {
  readersim::PtyServer readers;
  ScopedVariable com_port{"TARVOS_COM1", readers.path()};
  QtSerialPort port;
  QtEventPump pump{port};
  ScriptedDialogs dialogs{&pump};
  TestPrinter printer;
  Program program{port, pump, dialogs, printer};
  MainWindow window{program.services()};

  template <typename... Arguments>
  explicit WholeBench(Arguments&&... arguments) : readers(std::forward<Arguments>(arguments)...) {
    window.start_up();
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_TRUE(program.services().link.comopen());
  }
};
