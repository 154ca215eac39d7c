#pragma once

#include "shell/text_box.h"
#include "support/window_bench.h"

#include <QAbstractButton>

#include <string>
#include <vector>

// What the tests of the reader configuration screens ask of every box and every screen.

/// The window on one screen, its controls by their object names.
struct ScreenBench : WindowBench {
  explicit ScreenBench(ScreenCode code) { open(code); }

  [[nodiscard]] Screen& screen() const { return *window.screen(window.screen_code()); }

  template <typename Widget = QWidget>
  Widget& control(const char* object_name) {
    auto* const widget = screen().findChild<Widget*>(QLatin1String(object_name));
    if (widget == nullptr) {
      throw std::runtime_error(std::string("no control ") + object_name);
    }
    return *widget;
  }

  void type(const char* box, const char* text) { QTest::keyClicks(&control(box), QString::fromUtf8(text)); }
  void press(const char* button) { click(&control(button)); }
  void choose(const char* option_or_check) {
    QWidget& choice = control(option_or_check);
    QTest::mouseClick(&choice, Qt::LeftButton, {}, QPoint(8, choice.height() / 2));
  }
  [[nodiscard]] bool checked(const char* option_or_check) {
    return control<QAbstractButton>(option_or_check).isChecked();
  }
};

struct BoxExpectation {
  const char* object_name;
  const char* accessible_name;
  int length;
  bool digits_only;
};

/// Empty at the start, its name, its length, its key filter, and that pasting passes the filter by.
inline void expect_box(ScreenBench& bench, const BoxExpectation& expected) {
  SCOPED_TRACE(expected.object_name);
  auto& box = bench.control<TextBox>(expected.object_name);
  EXPECT_EQ(box.text(), QString());
  EXPECT_EQ(box.accessibleName().toStdString(), expected.accessible_name);
  EXPECT_EQ(box.maxLength(), expected.length);
  const auto shown_after = [&box](const QString& typed) {
    box.clear();
    QTest::keyClicks(&box, typed);
    return box.text();
  };
  const QString letters = QStringLiteral("a.-+ e");
  EXPECT_EQ(shown_after(letters), expected.digits_only ? QString() : letters.left(expected.length));
  EXPECT_EQ(shown_after(QStringLiteral("0123456789")), QStringLiteral("0123456789").left(expected.length));
  QTest::keyClick(&box, Qt::Key_Backspace);
  EXPECT_EQ(box.text(), QStringLiteral("0123456789").left(expected.length - 1));
  box.clear();
  box.insert(QStringLiteral("ab-cdef"));  // as a paste does
  EXPECT_EQ(box.text(), QStringLiteral("ab-cdef").left(expected.length));
  box.clear();
}

/// The screen fits the window as it opens, and everything on it is wide and high enough for its text.
inline void expect_fits(ScreenBench& bench) {
  const Screen& screen = bench.screen();
  EXPECT_LE(screen.minimumSizeHint().width(), 576);
  EXPECT_LE(screen.minimumSizeHint().height(), 540);
  for (const auto* const widget : screen.findChildren<QWidget*>()) {
    if (widget->isVisible() && !qobject_cast<const QLineEdit*>(widget)) {
      EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << widget->objectName().toStdString();
      EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << widget->objectName().toStdString();
    }
  }
}

/// The object names of the controls in the order in which Tab reaches them.
inline std::vector<std::string> tab_order(const ScreenBench& bench) {
  std::vector<std::string> names;
  const Screen& screen = bench.screen();
  for (const QWidget* widget = screen.nextInFocusChain(); widget != &screen;
       widget = widget->nextInFocusChain()) {
    if (screen.isAncestorOf(widget) && (widget->focusPolicy() & Qt::TabFocus) != 0) {
      names.push_back(widget->objectName().toStdString());
    }
  }
  return names;
}
