#include "config/orinparam.h"

#include "config/screen_checks.h"

namespace {

constexpr const char* warning = "This will delete all data in the reader\rDo you wish to continue?";

void fill_general(ScreenBench& bench, const char* record_length, const char* relay_time,
                  const char* red_led_time) {
  bench.type("Text2", record_length);
  bench.type("Text3", relay_time);
  bench.type("Text5", red_led_time);
}

TEST(orinparam, boxes_start_empty_with_their_lengths_and_key_filters) {
  ScreenBench bench(ScreenCode::orinparam);
  expect_box(bench, {"Text2", "Record Length", 3, true});
  expect_box(bench, {"Text3", "Relay Time", 5, true});
  expect_box(bench, {"Text5", "Red Led Time", 3, true});
  expect_box(bench, {"Text15", "Current Password", 5, false});
  expect_box(bench, {"Text16", "New Password", 5, false});
}

TEST(orinparam, starts_with_logging_off_bad_logging_on_and_no_mode) {
  ScreenBench bench(ScreenCode::orinparam);
  EXPECT_FALSE(bench.checked("rs232_logging_0"));
  EXPECT_TRUE(bench.checked("rs232_logging_1"));
  EXPECT_TRUE(bench.checked("bad_logging_0"));
  EXPECT_FALSE(bench.checked("bad_logging_1"));
  for (const char* const option : {"orin_mode_0", "orin_mode_1", "orin_mode_2", "orin_mode_3"}) {
    EXPECT_FALSE(bench.checked(option)) << option;
  }
}

TEST(orinparam, fits_the_window) {
  ScreenBench bench(ScreenCode::orinparam);
  expect_fits(bench);
}

struct Refusal {
  const char* record_length;
  const char* relay_time;
  const char* red_led_time;
  const char* message;
};

TEST(orinparam, general_values_out_of_range_send_nothing_and_the_first_is_told) {
  const std::vector<Refusal> refusals{
      {"3", "0", "0", "Record length must be between 4 and 40"},
      {"41", "100", "16", "Record length must be between 4 and 40"},
      {"", "5", "2", "Record length must be between 4 and 40"},
      {"8", "", "2", "Relay time must be between 1 and 99"},
      {"8", "0", "16", "Relay time must be between 1 and 99"},
      {"8", "100", "2", "Relay time must be between 1 and 99"},
      {"8", "5", "", "Red led time must be between 1 and 15"},
      {"8", "5", "16", "Red led time must be between 1 and 15"},
      {"3", "32768", "0", "Overflow"},
      {"3", "32767", "0", "Record length must be between 4 and 40"},
  };
  for (const Refusal& refusal : refusals) {
    ScreenBench bench(ScreenCode::orinparam);
    fill_general(bench, refusal.record_length, refusal.relay_time, refusal.red_led_time);
    bench.dialogs.expect_message(refusal.message);
    bench.press("set_general");
    EXPECT_EQ(bench.port.written(), "");
  }
}

TEST(orinparam, a_box_of_blanks_counts_as_empty_and_letters_do_not_convert) {
  ScreenBench bench(ScreenCode::orinparam);
  fill_general(bench, "8", "5", "2");
  bench.control<TextBox>("Text3").setText(QStringLiteral("  "));
  bench.dialogs.expect_message("Relay time must be between 1 and 99");
  bench.press("set_general");
  bench.control<TextBox>("Text3").setText(QStringLiteral("ab"));
  bench.dialogs.expect_message("Type mismatch");
  bench.press("set_general");
  EXPECT_EQ(bench.port.written(), "");
}

TEST(orinparam, a_closed_port_and_a_missing_address_are_told_before_the_values) {
  ScreenBench bench(ScreenCode::orinparam);
  bench.use_network("");
  bench.dialogs.expect_message("A Network address has not been set");
  bench.press("set_general");
  bench.program.services().link.closecomm();
  bench.dialogs.expect_message("Comm port is not open");
  bench.press("set_general");
}

TEST(orinparam, the_record_length_is_known_as_soon_as_it_is_typed) {
  ScreenBench bench(ScreenCode::orinparam);
  EXPECT_EQ(bench.program.services().record_length, "");
  bench.type("Text2", "12");
  EXPECT_EQ(bench.program.services().record_length, "12");
  bench.control<TextBox>("Text2").setText(QStringLiteral("\u0416"));
  EXPECT_EQ(bench.program.services().record_length, "");
  bench.control<TextBox>("Text2").clear();
  EXPECT_EQ(bench.program.services().record_length, "");
  EXPECT_EQ(bench.port.written(), "");
}

TEST(orinparam, a_failure_in_the_middle_leaves_what_was_sent) {
  ScreenBench bench(ScreenCode::orinparam);
  bench.use_network("5");
  fill_general(bench, "8", "5", "2");
  bench.port.answer("\x85\x02V\x03", "\x06:Orin 1.00 0001\x03");
  bench.port.answer("\x85\x02\\08\x03", "\x06");
  bench.port.answer("\x85\x02\"05\x03", "\x15");  // not an acknowledge
  bench.dialogs.expect_message(warning);
  bench.dialogs.expect_message("Error communicating with reader");
  bench.press("set_general");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\x85\x02V\x03\x06\x85\x02\\08\x03\x85\x02\"05\x03"));
}

TEST(orinparam, a_second_acknowledge_does_not_pass_for_that_of_the_next_command) {
  ScreenBench bench(ScreenCode::orinparam);
  bench.use_network("5");
  fill_general(bench, "8", "5", "2");
  bench.port.answer("\x85\x02V\x03", "\x06:Orin 1.00 0001\x03");
  bench.port.answer("\x85\x02\\08\x03", "\x06\x06");
  bench.dialogs.expect_message(warning);
  bench.dialogs.expect_message("Error communicating with reader");
  bench.press("set_general");
  EXPECT_TRUE(bench.port.written().ends_with("\x85\x02\"05\x03"));
}

TEST(orinparam, a_line_that_takes_no_bytes_is_told) {
  ScreenBench bench(ScreenCode::orinparam);
  bench.port.writable = false;
  bench.dialogs.expect_message("Error communicating with reader");
  bench.press("set_rs232_logging");
  EXPECT_TRUE(bench.pump.sleeps.empty());
}

TEST(orinparam, the_logging_message_tells_the_option_as_it_then_stands) {
  ScreenBench bench(ScreenCode::orinparam);
  bench.use_network("5");
  bench.port.answer("\x85\x02s0\x03", "\x06", std::chrono::milliseconds(50));
  bench.pump.after(std::chrono::milliseconds(20), [&bench] { bench.choose("rs232_logging_0"); });
  bench.dialogs.expect_message(" RS232 Logging Option is On ");
  bench.press("set_rs232_logging");
}

TEST(orinparam, what_waits_at_the_line_does_not_pass_for_an_acknowledge) {
  ScreenBench bench(ScreenCode::orinparam);
  bench.use_network("5");
  bench.port.arrive("\x06\x06\x06");
  bench.pump.idle(std::chrono::milliseconds(1));
  bench.dialogs.expect_message("Error communicating with reader");
  bench.press("set_bad_logging");
}

TEST(orinparam, the_password_is_not_yet_operational) {
  ScreenBench bench(ScreenCode::orinparam);
  bench.type("Text15", "old");
  bench.type("Text16", "new");
  bench.dialogs.expect_message("This feature is not yet operational");
  bench.press("set_password");
  EXPECT_EQ(bench.port.written(), "");
}

}  // namespace
