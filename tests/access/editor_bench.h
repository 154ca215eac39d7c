#pragma once

#include "shell/program.h"
#include "support/fake_port.h"
#include "support/scripted_dialogs.h"
#include "support/test_folder.h"
#include "support/test_printer.h"
#include "support/test_pump.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include <gtest/gtest.h>

/// An editor's window, open and active, with scripted dialogs.
template <typename Window>
struct EditorBench {
  TestFolder folder;
  TestPump pump;
  FakePort port{pump};
  ScriptedDialogs dialogs{&pump};
  TestPrinter printer;
  Program program{port, pump, dialogs, printer};
  Window window{program.services(), nullptr};

  EditorBench() {
    window.open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }

  template <typename Widget = QWidget>
  Widget* find(const char* object_name) {
    auto* const widget = window.template findChild<Widget*>(QLatin1String(object_name));
    EXPECT_NE(widget, nullptr) << object_name;
    return widget;
  }

  /// Chooses an entry of the menu bar ("New Employee") or of one of its menus ("File", "Open").
  void choose(const char* menu, const char* entry = nullptr) {
    QAction* const top = entry_of(window.menuBar()->actions(), menu);
    QAction* const chosen = entry == nullptr ? top : entry_of(top->menu()->actions(), entry);
    ASSERT_NE(chosen, nullptr);
    chosen->trigger();
  }

  static QAction* entry_of(const QList<QAction*>& actions, const char* caption) {
    for (QAction* const action : actions) {
      if (QString(action->text()).remove(u'&') == QLatin1String(caption)) {
        return action;
      }
    }
    ADD_FAILURE() << "no menu entry " << caption;
    return nullptr;
  }
};
