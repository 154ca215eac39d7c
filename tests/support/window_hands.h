#pragma once

#include "shell/main_window.h"

#include <QPushButton>
#include <QTest>

#include <algorithm>
#include <gtest/gtest.h>

/// The position of a screen's menu entry, counted from 0.
inline int menu_index(ScreenCode code) {
  const auto entry = std::find_if(screen_table.begin(), screen_table.end(),
                                  [code](const ScreenEntry& each) { return each.code == code; });
  EXPECT_NE(entry, screen_table.end());
  return static_cast<int>(entry - screen_table.begin());
}

/// What a person does at the main window. A bench derives from this with its own type and has the `window`.
template <typename Bench>
class WindowHands {
 public:
  /// The widget of that object name; the test fails when there is none.
  template <typename Widget = QWidget>
  Widget* find(const char* object_name) {
    auto* const widget = main_window().template findChild<Widget*>(QLatin1String(object_name));
    EXPECT_NE(widget, nullptr) << object_name;
    return widget;
  }

  /// The button of that caption on the screen on show.
  QPushButton* button(const char* caption) {
    const QWidget* const screen = main_window().screen(main_window().screen_code());
    for (auto* const candidate : screen->findChildren<QPushButton*>()) {
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

  /// Clicks the menu entry at that position, counted from 0.
  void click_menu(int index) { click(main_window().menu().entry(index)); }
  /// Clicks the menu entry of that screen.
  void open(ScreenCode code) { click_menu(menu_index(code)); }

  /// On the communication screen: network mode on, the address typed.
  void type_network(const char* address) {
    open(ScreenCode::com);
    click(find("network_mode_0"));
    auto* const box = find("reader_address");
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(box, Qt::Key_Delete);
    QTest::keyClicks(box, QLatin1String(address));
  }

 private:
  MainWindow& main_window() { return static_cast<Bench*>(this)->window; }
};
