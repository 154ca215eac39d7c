#include "config/vellsetup.h"

#include "config/screen_checks.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>

namespace {

TEST(vellsetup, boxes_start_empty_with_their_lengths_and_key_filters) {
  ScreenBench bench(ScreenCode::vellsetup);
  expect_box(bench, {"Text10", "Sense Input Delay Time", 2, true});
  expect_box(bench, {"Text11", "Keyboard Prefix", 1, false});
  expect_box(bench, {"Text12", "Good Read Red Led Time", 2, true});
  expect_box(bench, {"Text13", "Good Read Grn Led Time", 2, true});
  expect_box(bench, {"Text14", "Good Read Relay Time", 2, true});
  expect_box(bench, {"Text17", "Good Read Spkr On Time", 2, true});
  expect_box(bench, {"Text18", "Set Reader Address", 3, false});
}

TEST(vellsetup, has_thirty_buttons_and_fits_the_window) {
  ScreenBench bench(ScreenCode::vellsetup);
  EXPECT_EQ(bench.screen().findChildren<QPushButton*>().size(), 30);
  expect_fits(bench);
}

TEST(vellsetup, tab_goes_from_a_button_to_its_box) {
  ScreenBench bench(ScreenCode::vellsetup);
  const std::vector<std::string> order = tab_order(bench);
  ASSERT_EQ(order.size(), 37U);
  const std::vector<std::string> first(order.begin(), order.begin() + 6);
  EXPECT_EQ(first, (std::vector<std::string>{"sense_1_auto", "sense_2_auto", "sense_inputs_off",
                                             "sense_input_delay_time", "Text10", "power_up_red_led_on"}));
}

struct Refusal {
  const char* box;
  const char* text;
  const char* button;
  const char* message;
};

TEST(vellsetup, a_refused_parameter_sends_nothing) {
  const std::vector<Refusal> refusals{
      {"Text17", "50", "good_read_spkr_on_time", "Max speaker value can be 49"},
      {"Text18", "127", "set_reader_address", "Max reader address can be 126"},
      {"Text11", "", "keyboard_prefix", "Must set a prefix"},
      {"Text11", " ", "keyboard_prefix", "Must set a prefix"},
  };
  for (const Refusal& refusal : refusals) {
    ScreenBench bench(ScreenCode::vellsetup);
    bench.type(refusal.box, refusal.text);
    bench.dialogs.expect_message(refusal.message);
    bench.press(refusal.button);
    EXPECT_EQ(bench.port.written(), "");
  }
}

TEST(vellsetup, a_refused_parameter_is_told_before_a_closed_port) {
  ScreenBench bench(ScreenCode::vellsetup);
  bench.program.services().link.closecomm();
  bench.type("Text17", "50");
  bench.dialogs.expect_message("Max speaker value can be 49");
  bench.press("good_read_spkr_on_time");
}

TEST(vellsetup, a_prefix_outside_windows_1252_sends_nothing_and_says_so) {
  ScreenBench bench(ScreenCode::vellsetup);
  bench.control<TextBox>("Text11").setText(QStringLiteral("\u0416"));
  bench.dialogs.expect_message("The character \"\u0416\" is not in the readers' character set");
  bench.press("keyboard_prefix");
  EXPECT_EQ(bench.port.written(), "");
}

TEST(vellsetup, a_prefix_of_windows_1252_sends_its_code) {
  ScreenBench bench(ScreenCode::vellsetup);
  bench.control<TextBox>("Text11").setText(QStringLiteral("\u20AC"));  // the euro sign, 128 there
  bench.press("keyboard_prefix");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\0KP128\r"_bytes));
}

TEST(vellsetup, a_line_end_pasted_into_a_box_is_not_sent) {
  ScreenBench bench(ScreenCode::vellsetup);
  QGuiApplication::clipboard()->setText(QStringLiteral("7\n"));
  bench.control<TextBox>("Text17").paste();
  bench.press("good_read_spkr_on_time");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\0STE07\r"_bytes));
}

TEST(vellsetup, a_speed_of_the_reader_leaves_the_port_as_it_is) {
  ScreenBench bench(ScreenCode::vellsetup);
  bench.press("9600_baud");
  bench.press("19200_baud");
  bench.press("7_bits_even");
  EXPECT_EQ(bench.port.opened_with, std::vector<std::string>{"1:9600,N,8,1"});
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\0IB6\r\0IB7\r\0IBE\r"_bytes));
}

}  // namespace
