#include "config/diag.h"

#include "link/frame.h"
#include "support/window_bench.h"

#include <QLineEdit>

namespace {

struct Row {
  const char* caption;
  std::vector<std::string> payloads;
  bool waits = true;
};

const std::vector<Row>& rows() {
  static const std::vector<Row> all{
      {"Reset Reader", {"\0U"_bytes}, false},
      {"Test Display", {"D1234ABCD"}},
      {"Test Clock Display", {"T5678"}},
      {"Red Led On", {"}00"}},
      {"Red Led Off", {"{00"}},
      {"Green Led On", {"]00"}},
      {"Green Led Off", {"[00"}},
      {"Test Relay", {"!01"}},
      {"Test Speaker", {"&50"}},
      {"Blink Red Led", {")00"}},
      {"Blink Green Led", {">50"}},
      {"Vell Mode", {"|1"}},
      {"Orin Mode", {"|3"}},
      {"Orinta Mode", {"|4"}},
      {"Accum Mode", {"|5"}},
      {"Auto Sense Inputs", {"\0DA1"_bytes, "\0DA2"_bytes}},
      {"No Auto Sense Inputs", {"\0DA0"_bytes, "\0DA0"_bytes}},
      {"Protocol Mode", {"\0ITP"_bytes}},
      {"No Protocol Mode", {"\0ITN"_bytes}},
  };
  return all;
}

std::string on_network(const std::string& payload, char address = '\x85') {
  return std::string{address, '\x02'} + payload + "\x03";
}

}  // namespace

TEST(diag, every_button_sends_its_frame_on_a_plain_line_and_awaits_nothing) {
  WindowBench bench;
  bench.open(ScreenCode::diag);
  for (const Row& row : rows()) {
    SCOPED_TRACE(row.caption);
    bench.port.writes.clear();
    bench.click(row.caption);
    std::vector<std::string> expected;
    for (const std::string& payload : row.payloads) {
      expected.push_back(payload + "\r");
    }
    EXPECT_EQ(bench.port.writes, expected);
    EXPECT_TRUE(bench.pump.sleeps.empty());
  }
}

TEST(diag, every_button_sends_its_frame_on_a_network_and_takes_the_acknowledge) {
  WindowBench bench;
  bench.use_network("5");
  bench.open(ScreenCode::diag);
  bench.port.responder = [&bench](std::string_view) {
    bench.port.arrive("\x06", std::chrono::milliseconds(20));
  };
  for (const Row& row : rows()) {
    SCOPED_TRACE(row.caption);
    bench.port.writes.clear();
    bench.pump.sleeps.clear();
    bench.click(row.caption);
    std::vector<std::string> expected;
    for (const std::string& payload : row.payloads) {
      expected.push_back(on_network(payload));
    }
    EXPECT_EQ(bench.port.writes, expected);
    EXPECT_EQ(bench.pump.sleeps.size(), row.waits ? row.payloads.size() : 0U);
    bench.pump.idle(std::chrono::milliseconds(100));
    bench.port.discard_received();
  }
}

TEST(diag, a_missing_acknowledge_is_told_once_for_every_command_that_awaits_one) {
  WindowBench bench;
  bench.use_network("5");
  bench.open(ScreenCode::diag);
  for (const Row& row : rows()) {
    SCOPED_TRACE(row.caption);
    if (row.waits) {
      for (std::size_t count = 0; count < row.payloads.size(); ++count) {
        bench.dialogs.expect_message("Reader does not acknowledge command");
      }
    }
    bench.click(row.caption);
    bench.dialogs.verify();
  }
}

TEST(diag, a_broadcast_goes_out_and_waits_for_its_acknowledge_like_any_other) {
  WindowBench bench;
  bench.use_network("127");
  bench.open(ScreenCode::diag);
  bench.dialogs.expect_message("Reader does not acknowledge command");
  bench.click("Red Led On");
  EXPECT_TRUE(bytes_equal(bench.port.written(), on_network("}00", '\xFF')));
}

TEST(diag, reset_reader_on_a_network_returns_at_once_without_a_message) {
  WindowBench bench;
  bench.use_network("5");
  bench.open(ScreenCode::diag);
  bench.click("Reset Reader");
  EXPECT_EQ(bench.pump.elapsed(), std::chrono::milliseconds(0));
  EXPECT_TRUE(bytes_equal(bench.port.written(), on_network("\0U"_bytes)));
}

TEST(diag, reader_identification_shows_the_reply_in_a_read_only_box) {
  WindowBench bench;
  bench.open(ScreenCode::diag);
  bench.port.responder = [&bench](std::string_view) {
    bench.port.arrive("ORIN V2.10 SN000123\r", std::chrono::milliseconds(20));
  };
  bench.click("Reader Identification");
  EXPECT_EQ(bench.find<QLineEdit>("Text4")->text(), QStringLiteral("ORIN V2.10 SN000123"));
  EXPECT_TRUE(bench.find<QLineEdit>("Text4")->isReadOnly());
}

TEST(diag, reader_identification_of_127_on_a_network_leaves_the_box_empty) {
  WindowBench bench;
  bench.use_network("127");
  bench.open(ScreenCode::diag);
  bench.find<QLineEdit>("Text4")->setText(QStringLiteral("an earlier reader"));
  bench.dialogs.expect_message("Cannot read from unit 127");
  bench.click("Reader Identification");
  EXPECT_EQ(bench.find<QLineEdit>("Text4")->text(), QString());
}

TEST(diag, buttons_stay_clickable_during_an_identification) {
  WindowBench bench;
  bench.open(ScreenCode::diag);
  bench.pump.after(
      std::chrono::milliseconds(50), [&bench] { bench.click("Test Relay"); }, true);
  bench.dialogs.expect_message("Reader is not Connected");
  bench.click("Reader Identification");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "V\r!01\r"));
}

TEST(diag, enter_on_the_freshly_opened_screen_resets_no_reader) {
  WindowBench bench;
  bench.open(ScreenCode::diag);
  ASSERT_EQ(bench.window.focusWidget(), bench.button("Reader Identification"));
  bench.dialogs.expect_message("Reader is not Connected");
  QTest::keyClick(bench.window.focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "V\r"));
}
