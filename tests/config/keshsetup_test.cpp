#include "config/keshsetup.h"

#include "config/screen_checks.h"

#include <QClipboard>
#include <QGuiApplication>

namespace {

TEST(keshsetup, boxes_start_empty_with_their_lengths_and_key_filters) {
  ScreenBench bench(ScreenCode::keshsetup);
  expect_box(bench, {"Text20", "Max Records", 5, true});
  expect_box(bench, {"Text21", "Record Length", 3, true});
  expect_box(bench, {"Text19", "Record Length", 2, true});
  expect_box(bench, {"Text22", "ID 1", 5, false});
  expect_box(bench, {"Text23", "ID 2", 5, false});
}

TEST(keshsetup, starts_with_time_stamping_on_kesh_mode_and_everything_else_off) {
  ScreenBench bench(ScreenCode::keshsetup);
  for (const char* const on : {"ferro_time_stamping_0", "glint_time_stamping_0", "kesh_rs232_logging_1",
                               "duplicate_read_1", "comma_delimited_1", "kesh_mode_1"}) {
    EXPECT_TRUE(bench.checked(on)) << on;
  }
  for (const char* const off :
       {"ferro_time_stamping_1", "glint_time_stamping_1", "kesh_rs232_logging_0", "duplicate_read_0",
        "comma_delimited_0", "kesh_mode_0", "id_1_on", "id_2_on"}) {
    EXPECT_FALSE(bench.checked(off)) << off;
  }
}

TEST(keshsetup, a_choice_in_one_frame_leaves_the_other_frames_alone) {
  ScreenBench bench(ScreenCode::keshsetup);
  bench.choose("ferro_time_stamping_1");
  bench.choose("duplicate_read_0");
  EXPECT_TRUE(bench.checked("ferro_time_stamping_1"));
  EXPECT_TRUE(bench.checked("duplicate_read_0"));
  for (const char* const untouched :
       {"glint_time_stamping_0", "kesh_rs232_logging_1", "comma_delimited_1", "kesh_mode_1"}) {
    EXPECT_TRUE(bench.checked(untouched)) << untouched;
  }
}

TEST(keshsetup, fits_the_window) {
  ScreenBench bench(ScreenCode::keshsetup);
  expect_fits(bench);
}

struct Refusal {
  const char* button;
  const char* box;
  const char* text;
  const char* message;
};

TEST(keshsetup, general_values_out_of_range_send_nothing) {
  const std::vector<Refusal> refusals{
      {"set_ferro_kesh_general", "Text21", "", "Record length must be between 4 and 150"},
      {"set_ferro_kesh_general", "Text21", "3", "Record length must be between 4 and 150"},
      {"set_ferro_kesh_general", "Text21", "151", "Record length must be between 4 and 150"},
      {"set_ferro_kesh_general", "Text20", "32768", "Overflow"},
      {"set_glint_kesh_general", "Text19", "", "Record length must be between 4 and 30"},
      {"set_glint_kesh_general", "Text19", "3", "Record length must be between 4 and 30"},
      {"set_glint_kesh_general", "Text19", "31", "Record length must be between 4 and 30"},
  };
  for (const Refusal& refusal : refusals) {
    ScreenBench bench(ScreenCode::keshsetup);
    bench.type(refusal.box, refusal.text);
    bench.dialogs.expect_message(refusal.message);
    bench.press(refusal.button);
    EXPECT_EQ(bench.port.written(), "");
  }
}

TEST(keshsetup, a_closed_port_and_a_missing_address_are_told_before_the_values) {
  for (const char* const button : {"set_ferro_kesh_general", "set_glint_kesh_general"}) {
    ScreenBench bench(ScreenCode::keshsetup);
    bench.use_network("");
    bench.dialogs.expect_message("A Network address has not been set");
    bench.press(button);
    bench.program.services().link.closecomm();
    bench.dialogs.expect_message("Comm port is not open");
    bench.press(button);
  }
}

TEST(keshsetup, read_in_the_id_group_does_nothing_at_all) {
  ScreenBench bench(ScreenCode::keshsetup);
  bench.type("Text22", "AB");
  bench.press("read_ids");
  bench.program.services().link.closecomm();
  bench.press("read_ids");
  EXPECT_EQ(bench.port.written(), "");
  EXPECT_EQ(bench.control<TextBox>("Text22").text(), QStringLiteral("AB"));
}

TEST(keshsetup, an_identifier_of_windows_1252_goes_as_its_bytes_and_another_is_refused) {
  ScreenBench bench(ScreenCode::keshsetup);
  bench.control<TextBox>("Text22").setText(QStringLiteral("M\u00FCll"));
  bench.dialogs.expect_message("ID's have been set");
  bench.press("set_ids");
  EXPECT_TRUE(bytes_equal(bench.port.written(),
                          "\0"
                          "1M\xFCll \r\0"
                          "2     \r"_bytes));
  bench.port.writes.clear();
  bench.control<TextBox>("Text23").setText(QStringLiteral("\u0416"));
  bench.dialogs.expect_message("The character \"\u0416\" is not in the readers' character set");
  bench.press("set_ids");
  EXPECT_EQ(bench.port.written(), "");
}

TEST(keshsetup, a_line_end_pasted_into_an_identifier_is_not_sent) {
  ScreenBench bench(ScreenCode::keshsetup);
  QGuiApplication::clipboard()->setText(QStringLiteral("AB\r\n"));
  bench.control<TextBox>("Text22").paste();
  EXPECT_EQ(bench.control<TextBox>("Text22").text(), QStringLiteral("AB"));
  bench.dialogs.expect_message("ID's have been set");
  bench.press("set_ids");
  EXPECT_TRUE(bytes_equal(bench.port.written(),
                          "\0"
                          "1AB   \r\0"
                          "2     \r"_bytes));
}

TEST(keshsetup, a_second_frame_without_acknowledge_leaves_the_first_in_effect) {
  ScreenBench bench(ScreenCode::keshsetup);
  bench.use_network("5");
  bench.port.answer(
      "\x85\x02\0"
      "1     \x03"_bytes,
      "\x06");
  bench.dialogs.expect_message("Error communicating with reader");
  bench.press("set_ids");
  EXPECT_TRUE(bytes_equal(bench.port.written(),
                          "\x85\x02\0"
                          "1     \x03\x85\x02\0"
                          "2     \x03"_bytes));
}

}  // namespace
