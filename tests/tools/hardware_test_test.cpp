#include "tools/hardware_test.h"

#include "shell/safe_file.h"
#include "shell/text_box.h"
#include "support/window_bench.h"
#include "tools/profile_window.h"
#include "tools/terminal_view.h"

#include <QAccessible>
#include <QLabel>
#include <QTemporaryDir>
#include <QTimer>

namespace {

using namespace std::chrono_literals;

/// The folder that stands for a machine on which the program has never run.
struct FreshMachine {
  QTemporaryDir home;
  QByteArray old_home = qgetenv("HOME");
  FreshMachine() { qputenv("HOME", home.path().toLocal8Bit()); }
  ~FreshMachine() { qputenv("HOME", old_home); }
};

struct HardwareTestBench : FreshMachine, WindowBench {
  HardwareTestBench() { open(ScreenCode::test); }

  QString label(const char* name) { return find<QLabel>(name)->text(); }
  QString output() { return find<TerminalView>("Text29")->text(); }

  void after(std::chrono::milliseconds delay, std::function<void()> action) {
    pump.after(delay, std::move(action), true);
  }

  void type_delay(const char* text) {
    auto* const box = find<TextBox>("Text28");
    box->setFocus();
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Delete);
    QTest::keyClicks(box, QLatin1String(text));
  }

  std::filesystem::path default_file() const {
    return std::filesystem::path(home.path().toStdString()) / "tarvos" / "velltest.txt";
  }

  /// The next modal window is the profile editor: runs the action on it, then closes it.
  void in_the_editor(std::function<void(ProfileWindow& editor)> action = {}) {
    QTimer::singleShot(0, &window, [this, action = std::move(action)] {
      auto* const editor = qobject_cast<ProfileWindow*>(QApplication::activeModalWidget());
      ASSERT_NE(editor, nullptr);
      ++editors;
      if (action) {
        action(*editor);
      }
      editor->close();
    });
  }
  int editors = 0;
};

qsizetype open_editors(const MainWindow& window) {
  return window.findChildren<ProfileWindow*>().size();
}

}  // namespace

TEST(hardware_test, a_line_that_has_ended_is_painted_at_once) {
  struct Painted : QObject {
    int count = 0;
    bool eventFilter(QObject* /*receiver*/, QEvent* event) override {
      count += event->type() == QEvent::Paint ? 1 : 0;
      return false;
    }
  } painted;
  HardwareTestBench bench;
  QCoreApplication::processEvents();
  bench.find<TerminalView>("Text29")->viewport()->installEventFilter(&painted);
  bench.port.arrive("OK");
  bench.pump.idle(5ms);
  EXPECT_EQ(painted.count, 0);
  bench.port.arrive("\r");
  bench.pump.idle(5ms);
  EXPECT_EQ(painted.count, 1);
}

TEST(hardware_test, entering_shows_the_default_profile_and_its_file_is_there) {
  HardwareTestBench bench;
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::test);
  EXPECT_EQ(bench.label("current_profile"), QStringLiteral("Current Profile:   c:\\tarvos\\velltest.txt"));
  EXPECT_EQ(bench.find<TextBox>("Text28")->text(), QStringLiteral("0"));
  EXPECT_EQ(bench.label("Label27"), QString());
  EXPECT_TRUE(std::filesystem::exists(bench.default_file()));
}

TEST(hardware_test, the_default_profile_runs_on_a_fresh_machine) {
  HardwareTestBench bench;
  bench.port.answer("V", "VELL READER\x0D", 50ms);
  bench.click("F1  Start");
  EXPECT_TRUE(bench.output().startsWith(QStringLiteral("VELL READER\n")));
  EXPECT_EQ(bench.label("Label27"),
            QStringLiteral("Identification\nRed Led On\nRed Led Off\nGreen Led On\nGreen Led Off\nSpeaker\n"
                           "Identification again\n"));
  EXPECT_TRUE(bytes_equal(bench.port.written(), "V\x0D}00\x0D{00\x0D]00\x0D[00\x0D&50\x0DV\x0D"));
}

TEST(hardware_test, the_step_sent_last_is_in_sight_however_long_the_captions_are) {
  HardwareTestBench bench;
  TestProfile profile;
  profile.captions.fill(std::string(20, 'a') +
                        " caption of many words that takes a line, and another, and one more");
  save_profile(bench.default_file(), profile);
  bench.click("F1  Start");
  QCoreApplication::processEvents();
  auto* const steps = bench.find<QLabel>("Label27");
  EXPECT_EQ(steps->text().count(u'\n'), 10);
  EXPECT_GE(steps->height(), steps->heightForWidth(steps->width()));
  const QWidget* const sight = steps->parentWidget();
  EXPECT_GT(steps->height(), sight->height());
  EXPECT_EQ(steps->geometry().bottom(), sight->rect().bottom());
}

TEST(hardware_test, a_default_profile_that_was_removed_is_told_by_its_name) {
  HardwareTestBench bench;
  std::filesystem::remove(bench.default_file());
  bench.dialogs.expect_message("File not found: " + bench.default_file().string());
  bench.click("F1  Start");
  EXPECT_TRUE(bench.port.writes.empty());
}

TEST(hardware_test, entering_again_empties_the_output_and_keeps_the_delay) {
  HardwareTestBench bench;
  bench.type_delay("250");
  bench.port.arrive("hello");
  bench.pump.idle(10ms);
  EXPECT_EQ(bench.output(), QStringLiteral("hello"));
  bench.open(ScreenCode::com);
  bench.open(ScreenCode::test);
  EXPECT_EQ(bench.output(), QString());
  EXPECT_EQ(bench.find<TextBox>("Text28")->text(), QStringLiteral("250"));
}

TEST(hardware_test, received_bytes_show_as_the_terminal_shows_them_while_the_screen_is_on_show) {
  HardwareTestBench bench;
  bench.port.arrive(
      "\x06"
      "A\x81\x0D",
      0ms);
  bench.pump.idle(10ms);
  EXPECT_EQ(bench.output(), QStringLiteral("^6\u2406A\u00FC\n"));
  bench.click("Clear");
  EXPECT_EQ(bench.output(), QString());
  bench.open(ScreenCode::com);
  bench.port.arrive("unseen", 0ms);
  bench.pump.idle(10ms);
  EXPECT_EQ(bench.output(), QString());
}

TEST(hardware_test, the_controls_carry_their_words) {
  HardwareTestBench bench;
  EXPECT_EQ(bench.find("Text28")->accessibleName(), QStringLiteral("Continuous Test Delay"));
  EXPECT_EQ(bench.find("Text29")->accessibleName(), QStringLiteral("Reader"));
  EXPECT_EQ(bench.find("Label27")->accessibleName(), QString());
  EXPECT_EQ(bench.find("current_profile")->accessibleName(), QString());
}

TEST(hardware_test, the_delay_box_takes_digits_and_backspace_only) {
  HardwareTestBench bench;
  bench.type_delay("-1x2.5");
  EXPECT_EQ(bench.find<TextBox>("Text28")->text(), QStringLiteral("125"));
}

TEST(hardware_test, an_emptied_delay_is_told_and_a_long_one_overflows) {
  HardwareTestBench bench;
  bench.type_delay("");
  bench.dialogs.expect_message("Type mismatch");
  bench.click("F1  Start");
  bench.type_delay("40000");
  bench.dialogs.expect_message("Overflow");
  bench.click("F1  Start");
  EXPECT_TRUE(bench.port.writes.empty());
}

TEST(hardware_test, a_start_on_a_closed_port_is_told) {
  WindowBench bench(false);
  const FreshMachine machine;
  bench.open(ScreenCode::test);
  bench.dialogs.expect_message("Comm port is not open");
  bench.click("F1  Start");
}

TEST(hardware_test, f1_and_f2_press_the_buttons_and_stop_a_continuous_test) {
  HardwareTestBench bench;
  bench.type_delay("2000");
  bench.after(5000ms + 700ms + 2000ms + 550ms,
              [&] { QTest::keyClick(bench.window.focusWidget(), Qt::Key_F2); });
  QTest::keyClick(bench.find("Text28"), Qt::Key_F1);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "V\x0D}00\x0D{00\x0D]00\x0D[00\x0D&50\x0DV\x0DV\x0D"));
}

TEST(hardware_test, profiles_opens_the_editor_with_its_title) {
  HardwareTestBench bench;
  bench.in_the_editor([](ProfileWindow& editor) {
    EXPECT_EQ(editor.windowTitle(), QStringLiteral("Test Profile"));
    EXPECT_TRUE(editor.isModal());
  });
  bench.click("Profiles");
  EXPECT_EQ(bench.editors, 1);
}

TEST(hardware_test, profiles_ends_a_continuous_test_after_the_step_before_its_window_opens) {
  HardwareTestBench bench;
  bench.type_delay("1000");
  std::string written_when_opened;
  bench.after(550ms, [&] {
    bench.in_the_editor([&](ProfileWindow&) { written_when_opened = bench.port.written(); });
    bench.click("Profiles");
    EXPECT_EQ(bench.editors, 0);  // the run is still on the way out
  });
  bench.click("F1  Start");
  EXPECT_EQ(bench.editors, 1);
  EXPECT_TRUE(bytes_equal(written_when_opened, "V\x0D"));
  EXPECT_TRUE(bytes_equal(bench.port.written(), "V\x0D"));
}

TEST(hardware_test, a_start_while_the_editor_is_about_to_open_does_not_run_the_test_on) {
  HardwareTestBench bench;
  bench.after(550ms, [&] {
    bench.in_the_editor();
    bench.click("Profiles");
    bench.click("F1  Start");
  });
  bench.click("F1  Start");
  EXPECT_EQ(bench.editors, 1);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "V\x0D"));
}

TEST(hardware_test, a_profile_saved_in_the_editor_is_the_one_that_runs_and_is_shown) {
  HardwareTestBench bench;
  const std::string name = bench.home.filePath(QStringLiteral("own.txt")).toStdString();
  bench.dialogs.expect_save("Save Profile", name);
  bench.in_the_editor([](ProfileWindow& editor) {
    QTest::keyClicks(editor.findChild<TextBox*>(QStringLiteral("Text1_0")), QStringLiteral("Mine"));
    auto* const command = editor.findChild<TextBox*>(QStringLiteral("Text2_0"));
    QTest::keyClicks(command, QStringLiteral("V"));
    QTest::keyClick(command, Qt::Key_F9);
    QTest::keyClicks(command, QStringLiteral("X"));
    QTest::mouseClick(editor.findChild<QPushButton*>(QStringLiteral("save")), Qt::LeftButton);
  });
  bench.click("Profiles");
  EXPECT_EQ(bench.label("current_profile"),
            QStringLiteral("Current Profile:   ") + QString::fromStdString(name));
  bench.click("F1  Start");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "V\x00X\x0D"_bytes));
  // It stays the current profile over a change of screens.
  bench.open(ScreenCode::com);
  bench.open(ScreenCode::test);
  EXPECT_EQ(bench.label("current_profile"),
            QStringLiteral("Current Profile:   ") + QString::fromStdString(name));
}

TEST(hardware_test, a_profile_saved_with_three_rows_stops_after_its_third_step) {
  HardwareTestBench bench;
  bench.dialogs.expect_save("Save Profile", bench.home.filePath(QStringLiteral("own.txt")).toStdString());
  bench.in_the_editor([](ProfileWindow& editor) {
    for (int row = 0; row < 3; ++row) {
      const QString number = QString::number(row);
      const auto type = [&](const char* kind, const QString& text) {
        QTest::keyClicks(editor.findChild<TextBox*>(QLatin1String(kind) + number), text);
      };
      type("Text1_", QStringLiteral("Step ") + number);
      type("Text2_", QStringLiteral("V") + number);
      type("Text3_", QStringLiteral("10") + number);
    }
    QTest::mouseClick(editor.findChild<QPushButton*>(QStringLiteral("save")), Qt::LeftButton);
  });
  bench.click("Profiles");
  bench.click("F1  Start");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "V0\x0DV1\x0DV2\x0D"));
  EXPECT_EQ(bench.label("Label27"), QStringLiteral("Step 0\nStep 1\nStep 2\n"));
  EXPECT_EQ(bench.pump.sleeps, (std::vector<TestPump::Milliseconds>{100ms, 101ms, 102ms}));
}

TEST(hardware_test, behind_the_editor_an_assistive_client_starts_no_test_and_opens_no_second_editor) {
  HardwareTestBench bench;
  int clicks = 0;
  bench.in_the_editor([&](ProfileWindow& editor) {
    QTimer::singleShot(2000, &editor, [] {
      ADD_FAILURE() << "an editor too many waits for somebody to close it";
      QApplication::activeModalWidget()->close();
    });
    for (const char* const caption : {"F1  Start", "Profiles"}) {
      auto* const button = bench.button(caption);
      QObject::connect(button, &QPushButton::clicked, &bench.window, [&clicks] { ++clicks; });
      QAccessible::queryAccessibleInterface(button)->actionInterface()->doAction(
          QAccessibleActionInterface::pressAction());
    }
    // Such a press lasts a moment.
    EXPECT_TRUE(QTest::qWaitFor([&clicks] { return clicks == 2; }));
    EXPECT_EQ(open_editors(bench.window), 1);
    EXPECT_TRUE(bench.port.writes.empty());
  });
  bench.click("Profiles");
  QCoreApplication::processEvents();
  EXPECT_EQ(bench.editors, 1);
  EXPECT_EQ(open_editors(bench.window), 0);
  EXPECT_TRUE(bench.port.writes.empty());
  bench.click("F1  Start");
  EXPECT_FALSE(bench.port.writes.empty());
}

TEST(hardware_test, leaving_the_screen_is_not_refused_while_the_test_runs) {
  HardwareTestBench bench;
  bench.after(550ms, [&] { bench.open(ScreenCode::com); });
  bench.click("F1  Start");
  EXPECT_EQ(bench.window.screen_code(), ScreenCode::com);
  EXPECT_EQ(bench.port.writes.size(), 24U);
}

TEST(hardware_test, closing_the_window_during_a_test_ends_it_at_once) {
  HardwareTestBench bench;
  bench.after(550ms, [&] { bench.window.close(); });
  bench.click("F1  Start");
  EXPECT_LE(bench.pump.elapsed(), 560ms);
  EXPECT_FALSE(bench.port.is_open);
}

TEST(hardware_test, fits_the_smallest_window) {
  HardwareTestBench bench;
  const QSize smallest = bench.find("test")->minimumSizeHint();
  EXPECT_LE(smallest.width(), 576);
  EXPECT_LE(smallest.height(), 540);
}
