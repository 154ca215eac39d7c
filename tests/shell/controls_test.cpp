// Every visible control of every screen can be reached by Tab and tells its name to assistive clients.

#include "support/window_bench.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QButtonGroup>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <set>

namespace {

bool is_control(const QWidget& widget) {
  return widget.focusPolicy() != Qt::NoFocus || qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
         qobject_cast<const QLineEdit*>(&widget) != nullptr;
}

QString accessible_name(QWidget& widget) {
  QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(&widget);
  return interface == nullptr ? QString() : interface->text(QAccessible::Name);
}

/// The widgets that Tab visits, starting anywhere.
std::set<QWidget*> tab_order(QWidget& window) {
  std::set<QWidget*> order;
  for (QWidget* next = window.nextInFocusChain(); next != &window; next = next->nextInFocusChain()) {
    if (next->isVisible() && next->isEnabled() && (next->focusPolicy() & Qt::TabFocus) != 0) {
      order.insert(next);
    }
  }
  return order;
}

/// Of a group of options Tab visits one; Left and Right lead to the others.
bool reachable(QWidget& widget, const std::set<QWidget*>& order) {
  auto* const option = qobject_cast<QRadioButton*>(&widget);
  if (option == nullptr || option->group() == nullptr) {
    return order.contains(&widget);
  }
  const QList<QAbstractButton*> options = option->group()->buttons();
  return std::any_of(options.begin(), options.end(),
                     [&order](QAbstractButton* other) { return order.contains(other); });
}

std::string describe(const ScreenEntry& entry, const QWidget& widget) {
  return std::string(entry.caption) + ": " + widget.metaObject()->className() + " " +
         widget.objectName().toStdString();
}

}  // namespace

TEST(controls, every_visible_control_of_every_screen_has_a_name_and_a_place_in_the_tab_order) {
  WindowBench bench;
  for (int index = 0; index < MenuState::entry_count; ++index) {
    bench.click_menu(index);
    const ScreenEntry& entry = screen_table.at(static_cast<std::size_t>(index));
    const std::set<QWidget*> order = tab_order(bench.window);
    int controls = 0;
    for (QWidget* const widget : bench.window.findChildren<QWidget*>()) {
      if (!widget->isVisible() || !widget->isEnabled() || !is_control(*widget)) {
        continue;
      }
      ++controls;
      EXPECT_FALSE(accessible_name(*widget).trimmed().isEmpty()) << describe(entry, *widget);
      EXPECT_TRUE(reachable(*widget, order)) << describe(entry, *widget);
      EXPECT_FALSE(widget->objectName().isEmpty()) << describe(entry, *widget);
    }
    EXPECT_GE(controls, MenuState::entry_count) << entry.caption;
  }
}

TEST(controls, every_group_tells_its_caption_or_what_its_options_set) {
  WindowBench bench;
  for (int index = 0; index < MenuState::entry_count; ++index) {
    bench.click_menu(index);
    for (QGroupBox* const group : bench.window.findChildren<QGroupBox*>()) {
      EXPECT_FALSE(accessible_name(*group).isEmpty())
          << describe(screen_table.at(static_cast<std::size_t>(index)), *group);
      if (!group->title().isEmpty()) {
        EXPECT_EQ(accessible_name(*group), group->title());
      }
    }
  }
}

TEST(controls, tab_walks_through_a_whole_screen_and_comes_back) {
  WindowBench bench;
  for (int index = 0; index < MenuState::entry_count; ++index) {
    bench.click_menu(index);
    if (bench.window.screen_code() == ScreenCode::term) {
      continue;  // its boxes have keys of their own
    }
    std::set<QWidget*> visited;
    for (int step = 0; step < 200; ++step) {
      QWidget* const focus = bench.window.focusWidget();
      ASSERT_NE(focus, nullptr);
      visited.insert(focus);
      QTest::keyClick(focus, Qt::Key_Tab);
    }
    // Of a group of options Tab visits one; all else it visits itself.
    for (QWidget* const widget : tab_order(bench.window)) {
      if (qobject_cast<QRadioButton*>(widget) == nullptr) {
        EXPECT_TRUE(visited.contains(widget))
            << describe(screen_table.at(static_cast<std::size_t>(index)), *widget);
      }
    }
  }
}

TEST(controls, nothing_is_cut_at_the_smallest_size_of_the_window) {
  WindowBench bench;
  bench.window.resize(bench.window.minimumSize());
  for (int index = 0; index < MenuState::entry_count; ++index) {
    bench.click_menu(index);
    QCoreApplication::processEvents();
    for (QWidget* const widget : bench.window.screen(bench.window.screen_code())->findChildren<QWidget*>()) {
      if (widget->isVisible() &&
          (qobject_cast<QAbstractButton*>(widget) != nullptr || qobject_cast<QLabel*>(widget) != nullptr)) {
        EXPECT_GE(widget->width(), widget->minimumSizeHint().width())
            << describe(screen_table.at(static_cast<std::size_t>(index)), *widget);
        EXPECT_GE(widget->height(), widget->minimumSizeHint().height())
            << describe(screen_table.at(static_cast<std::size_t>(index)), *widget);
      }
    }
  }
}

TEST(controls, a_screen_begins_at_its_top_however_small_the_window_is) {
  WindowBench bench;
  bench.window.resize(bench.window.minimumSize());
  auto* const area = bench.window.findChild<QScrollArea*>(QString(), Qt::FindDirectChildrenOnly);
  ASSERT_NE(area, nullptr);
  for (int index = 0; index < MenuState::entry_count; ++index) {
    bench.click_menu(index);
    QCoreApplication::processEvents();
    EXPECT_EQ(area->horizontalScrollBar()->value(), 0) << index;
    EXPECT_EQ(area->verticalScrollBar()->value(), 0) << index;
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
  }
}

TEST(controls, the_captions_of_the_menu_are_not_cut) {
  WindowBench bench;
  for (int index = 0; index < MenuState::entry_count; ++index) {
    const MenuEntry& entry = *bench.window.menu().entry(index);
    EXPECT_GE(entry.width(), entry.sizeHint().width()) << entry.text().toStdString();
  }
}

TEST(controls, the_window_fits_a_small_laptop_screen) {
  WindowBench bench;
  EXPECT_LE(bench.window.minimumSize().width(), 960);
  EXPECT_LE(bench.window.minimumSize().height(), 500);
}
