// Polling on a real line that takes nothing any more: every write takes half a second to fail.

#include "support/line_bench.h"
#include "tools/drawn_text.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <functional>
#include <optional>

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

struct StalledPoll : LineBench {
  std::optional<PtyStall> stall{line};

  StalledPoll(const char* delay, const char* time_out, bool show_all) {
    open(ScreenCode::prottest);
    find<QLineEdit>("Text24")->setText(QLatin1String(delay));
    find<QLineEdit>("Text25")->setText(QLatin1String(time_out));
    find<QAbstractButton>("Check13")->setChecked(show_all);
  }

  void click(const char* name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }
  QString display() { return find<DrawnText>("protdisp")->text(); }

  /// Starts polling and does something `moment` later. @return how long the polling lasts
  milliseconds poll_until(milliseconds moment, const std::function<void()>& action) {
    QTimer::singleShot(moment, &window, action);
    QTimer::singleShot(20s, &window, [this] { window.close(); });  // a test that fails ends too
    const auto time = time_of([this] { click("Command86"); });
    EXPECT_FALSE(program.services().busy.polling_on);
    return time;
  }
};

}  // namespace

TEST(prottest_line, closing_the_window_ends_the_polling_of_a_stalled_line_within_a_second) {
  struct Close {
    const char* where;
    const char* delay;
    const char* time_out;
    milliseconds moment;
  };
  for (const auto& [where, delay, time_out, moment] :
       {Close{"the delay", "30000", "0", 150ms}, Close{"the poll's write", "0", "0", 150ms},
        Close{"the wait for a reply", "0", "30000", 700ms}, Close{"the acknowledge", "0", "0", 700ms}}) {
    StalledPoll bench(delay, time_out, false);
    const auto time = bench.poll_until(moment, [&bench] { bench.window.close(); });
    EXPECT_GE(time, moment) << where;
    EXPECT_LT(time, moment + 1000ms) << where;
    EXPECT_FALSE(bench.program.services().link.comopen()) << where;
  }
}

TEST(prottest_line, f2_stop_ends_the_polling_of_a_stalled_line_with_the_poll_in_progress) {
  struct Times {
    const char* delay;
    const char* time_out;
  };
  for (const auto& [delay, time_out] : {Times{"100", "100"}, Times{"0", "0"}}) {
    StalledPoll bench(delay, time_out, false);
    const auto time = bench.poll_until(50ms, [&bench] { bench.click("Command87"); });
    // The poll and one acknowledge take half a second each, unless the line has moved for a moment between
    // them.
    EXPECT_GE(time, 450ms) << delay;
    EXPECT_LT(time, 2500ms) << delay;
    EXPECT_TRUE(bench.program.services().link.comopen()) << delay;
    EXPECT_EQ(bench.display(), QString()) << delay;
  }
}

TEST(prottest_line, a_line_that_moves_again_is_polled_on) {
  StalledPoll bench("10", "50", true);
  std::string heard;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &bench.window, [&] {
    if (bench.display().isEmpty()) {
      return;  // the first poll has not failed yet
    }
    bench.stall.reset();
    heard += bench.line.read_now();
    if (heard.ends_with('\x03')) {
      bench.click("Command87");
    }
  });
  look.start(10ms);
  bench.poll_until(10s, [&bench] { bench.window.close(); });
  EXPECT_TRUE(bench.display().startsWith(QStringLiteral("Unit 000 TIMEOUT\n")));
  // Nothing of a poll that failed comes after all.
  EXPECT_EQ(heard.substr(heard.find_first_not_of('.')), "\x80\x02?\x03");
}
