// A pause holds clicks and keys back and gives them out afterwards, in a real window.
#include "link/input_hold.h"
#include "support/pty_bench.h"

#include <QCloseEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Log = std::vector<std::string>;

class Window : public QWidget {
 public:
  explicit Window(EventPump& pump, Log& log) : pump_(pump), log_(log) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(box);
    layout->addWidget(first);
    layout->addWidget(second);
    QObject::connect(first, &QPushButton::clicked, this, [this] { log_.emplace_back("first"); });
    QObject::connect(second, &QPushButton::clicked, this, [this] { log_.emplace_back("second"); });
    QObject::connect(box, &QLineEdit::textEdited, this,
                     [this](const QString& text) { log_.push_back("typed " + text.toStdString()); });
    QObject::connect(shortcut, &QShortcut::activated, this, [this] { log_.emplace_back("shortcut"); });
    box->setFocus();
  }

  QLineEdit* box = new QLineEdit;
  QPushButton* first = new QPushButton(QStringLiteral("&First"));
  QPushButton* second = new QPushButton(QStringLiteral("Second"));
  QShortcut* shortcut = new QShortcut(QKeySequence(QStringLiteral("Ctrl+D")), this);
  int paints = 0;

 protected:
  void paintEvent(QPaintEvent* event) override {
    ++paints;
    QWidget::paintEvent(event);
  }
  void closeEvent(QCloseEvent* event) override {
    pump_.close_program();
    QWidget::closeEvent(event);
  }

 private:
  EventPump& pump_;
  Log& log_;
};

struct input_hold : testing::Test, PtyBench {
  Log log;
  Window window{pump, log};

  input_hold() {
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }

  /// Pauses, and lets `action` happen in the middle of the pause.
  void pause_with(const std::function<void()>& action, std::chrono::milliseconds pause = 120ms) {
    bool acted = false;
    QTimer::singleShot(20ms, &window, [&] {
      action();
      acted = true;
    });
    pump.sleep(pause);
    EXPECT_TRUE(acted);
    log.emplace_back("pause over");
  }

  void click_in_window(const QWidget* widget) {
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                      widget->mapTo(&window, widget->rect().center()));
  }
};

TEST_F(input_hold, a_click_waits_for_the_end_of_the_pause) {
  pause_with([&] { click_in_window(window.first); });
  EXPECT_TRUE(wait_until([&] { return log.size() == 2; }));
  EXPECT_EQ(log, (Log{"pause over", "first"}));
}

TEST_F(input_hold, a_click_sent_to_the_widget_itself_waits_too) {
  pause_with([&] { QTest::mouseClick(window.first, Qt::LeftButton); });
  EXPECT_TRUE(wait_until([&] { return log.size() == 2; }));
  EXPECT_EQ(log, (Log{"pause over", "first"}));
}

TEST_F(input_hold, keys_wait_for_the_end_of_the_pause) {
  pause_with([&] { QTest::keyClicks(window.box, QStringLiteral("ab")); });
  EXPECT_TRUE(wait_until([&] { return log.size() == 3; }));
  EXPECT_EQ(log, (Log{"pause over", "typed a", "typed ab"}));
}

TEST_F(input_hold, keys_of_the_window_wait_too) {
  pause_with([&] {
    QTest::keyClick(window.windowHandle(), 'a');
    QTest::keyClick(window.windowHandle(), 'b');
  });
  EXPECT_TRUE(wait_until([&] { return log.size() == 3; }));
  EXPECT_EQ(log, (Log{"pause over", "typed a", "typed ab"}));
}

TEST_F(input_hold, everything_comes_in_its_order) {
  pause_with([&] {
    QTest::keyClick(window.windowHandle(), 'a');
    click_in_window(window.second);
    click_in_window(window.first);
    click_in_window(window.box);
    QTest::keyClick(window.windowHandle(), 'b');
    click_in_window(window.second);
  });
  EXPECT_TRUE(wait_until([&] { return log.size() == 6; }));
  EXPECT_EQ(log, (Log{"pause over", "typed a", "second", "first", "typed ab", "second"}));
}

TEST_F(input_hold, a_click_counts_where_it_was_made_even_if_the_mouse_has_moved_on) {
  pause_with([&] {
    click_in_window(window.first);
    for (int y = 0; y < window.height(); y += 5) {
      QTest::mouseMove(window.windowHandle(), QPoint(1, y));
    }
  });
  EXPECT_TRUE(wait_until([&] { return log.size() == 2; }, 500ms));
  EXPECT_EQ(log, (Log{"pause over", "first"}));
}

TEST_F(input_hold, a_double_click_stays_one) {
  window.box->setText(QStringLiteral("two words"));
  pause_with([&] {
    QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, window.box->pos() + QPoint(10, 8));
    EXPECT_EQ(window.box->selectedText(), QString());
  });
  EXPECT_TRUE(wait_until([&] { return window.box->hasSelectedText(); }, 500ms));
  EXPECT_EQ(window.box->selectedText(), QStringLiteral("two"));
}

TEST_F(input_hold, a_double_click_on_a_button_counts_twice) {
  pause_with([&] {
    QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {},
                       window.first->mapTo(&window, window.first->rect().center()));
  });
  EXPECT_TRUE(wait_until([&] { return log.size() == 3; }, 500ms));
  EXPECT_EQ(log, (Log{"pause over", "first", "first"}));
}

TEST_F(input_hold, a_shortcut_waits_for_the_end_of_the_pause_and_then_works) {
  pause_with([&] { QTest::keyClick(window.windowHandle(), Qt::Key_D, Qt::ControlModifier); });
  EXPECT_TRUE(wait_until([&] { return log.size() == 2; }, 500ms));
  EXPECT_EQ(log, (Log{"pause over", "shortcut"}));
}

TEST_F(input_hold, a_buttons_underlined_letter_waits_and_then_works) {
  pause_with([&] { QTest::keyClick(window.windowHandle(), Qt::Key_F, Qt::AltModifier); });
  EXPECT_TRUE(wait_until([&] { return log.size() == 2; }, 500ms));
  EXPECT_EQ(log, (Log{"pause over", "first"}));
}

TEST_F(input_hold, shortcuts_and_clicks_keep_their_order) {
  pause_with([&] {
    click_in_window(window.first);
    QTest::keyClick(window.windowHandle(), Qt::Key_D, Qt::ControlModifier);
    click_in_window(window.second);
  });
  EXPECT_TRUE(wait_until([&] { return log.size() == 4; }, 500ms));
  EXPECT_EQ(log, (Log{"pause over", "first", "shortcut", "second"}));
}

TEST_F(input_hold, a_held_click_that_pauses_itself_holds_the_next_one_back) {
  QObject::connect(window.first, &QPushButton::clicked, &window, [&] {
    pump.sleep(50ms);
    log.emplace_back("first has paused");
  });
  pause_with([&] {
    click_in_window(window.first);
    click_in_window(window.second);
  });
  EXPECT_TRUE(wait_until([&] { return log.size() == 4; }));
  EXPECT_EQ(log, (Log{"pause over", "first", "first has paused", "second"}));
}

TEST_F(input_hold, a_box_that_opens_after_the_pause_is_answered_before_anything_beneath_it) {
  pause_with([&] {
    click_in_window(window.first);
    QTest::keyClick(window.windowHandle(), 'a');
    QTest::keyClick(window.windowHandle(), Qt::Key_D, Qt::ControlModifier);
    QTest::mouseClick(window.second, Qt::LeftButton);
  });
  QMessageBox box{QMessageBox::NoIcon,
                  {},
                  QStringLiteral("Reader does not acknowledge command"),
                  QMessageBox::Ok,
                  &window};
  QTimer::singleShot(100ms, &box, [&] {
    EXPECT_EQ(log, (Log{"pause over"}));
    log.emplace_back("box answered");
    box.accept();
  });
  box.exec();
  wait_until([] { return false; }, 50ms);
  EXPECT_EQ(log, (Log{"pause over", "box answered"}));
}

TEST_F(input_hold, what_was_meant_for_a_widget_that_is_gone_is_dropped) {
  pause_with([&] {
    QTest::mouseClick(window.first, Qt::LeftButton);
    delete window.first;
    QTest::mouseClick(window.second, Qt::LeftButton);
  });
  EXPECT_TRUE(wait_until([&] { return log.size() == 2; }));
  EXPECT_EQ(log, (Log{"pause over", "second"}));
}

TEST_F(input_hold, the_window_paints_during_a_pause) {
  pause_with([&] {
    window.paints = 0;
    window.update();
  });
  EXPECT_GE(window.paints, 1) << "painted before the pause was over";
}

TEST_F(input_hold, a_close_during_a_pause_is_honoured) {
  const auto time = time_of([&] {
    clicks.run([&] {
      pause_with([&] { window.close(); }, 5s);
      FAIL() << "went on after the window was closed";
    });
  });
  EXPECT_LT(time, 1s);
  EXPECT_TRUE(pump.closing());
}

TEST_F(input_hold, after_a_pause_clicks_come_through_at_once) {
  pump.sleep(20ms);
  click_in_window(window.first);
  EXPECT_EQ(log, (Log{"first"}));
}

TEST_F(input_hold, a_hold_within_a_hold_ends_with_the_outer_one) {
  InputHold hold;
  hold.begin();
  hold.begin();
  QTest::mouseClick(window.first, Qt::LeftButton);
  hold.end();
  EXPECT_TRUE(hold.holding());
  QCoreApplication::processEvents();
  EXPECT_TRUE(log.empty());
  hold.end();
  EXPECT_FALSE(hold.holding());
  QCoreApplication::processEvents();
  EXPECT_EQ(log, (Log{"first"}));
}

}  // namespace
