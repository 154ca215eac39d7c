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

#include <QPushButton>
#include <QTest>

#include <memory>

/// The whole way: the real window, the real event loop, the real port class on a pseudo-terminal, and
/// simulated readers at its other end, as Com Port 1. Only the boxes are scripted.
struct WholeBench {
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

  template <typename Widget = QWidget>
  Widget* find(const char* object_name) {
    auto* const widget = window.findChild<Widget*>(QLatin1String(object_name));
    EXPECT_NE(widget, nullptr) << object_name;
    return widget;
  }

  QPushButton* button(const char* caption) {
    for (auto* const candidate : window.screen(window.screen_code())->findChildren<QPushButton*>()) {
      if (candidate->text() == QLatin1String(caption)) {
        return candidate;
      }
    }
    ADD_FAILURE() << "no button " << caption;
    return nullptr;
  }

  /// Clicks near the left end, where options and check boxes have their indicator.
  void click(QWidget* widget) {
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(10, widget->height() / 2));
  }
  void click(const char* caption) { click(button(caption)); }
  void click_menu(int index) { click(window.menu().entry(index)); }

  /// By hand on the communication screen: network mode on, the address typed.
  void use_network(const char* address) {
    click_menu(0);
    click(find("network_mode_0"));
    auto* const box = find("reader_address");
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(box, Qt::Key_Delete);
    QTest::keyClicks(box, QLatin1String(address));
  }
};
