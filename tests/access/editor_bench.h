#pragma once

#include "shell/program.h"
#include "support/fake_port.h"
#include "support/scripted_dialogs.h"
#include "support/test_printer.h"
#include "support/test_pump.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

/// A folder of its own for the files of a test.
class TestFolder {
 public:
  [[nodiscard]] std::filesystem::path path(std::string_view name) const {
    return std::filesystem::path(folder_.path().toStdString()) / name;
  }
  std::filesystem::path write(std::string_view name, std::string_view bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
  }
  [[nodiscard]] std::string read(std::string_view name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  [[nodiscard]] QString shown(std::string_view name) const {
    return QString::fromStdString(path(name).string());
  }

 private:
  const QTemporaryDir folder_;
};

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
