#include "config/keshutil.h"

#include "access/transfer_bench.h"
#include "config/screen_checks.h"
#include "support/test_folder.h"

#include <QLabel>

namespace {

using namespace std::chrono_literals;

constexpr const char* cleared = "        Reader Log Data Cleared         ";
constexpr const char* please_wait = "Please wait until upload/download complete";

/// The screen in the window, a reader with a log at the other end, and a folder for the file.
struct UtilityBench : ScreenBench {
  StubReader reader{port};
  TestFolder folder;

  UtilityBench() : ScreenBench(ScreenCode::keshutil) {}

  void use_reader_at(unsigned char address) {
    use_network(std::to_string(address));
    program.services().link.set_network_mode(true);
    reader.networked = true;
    reader.address = address;
  }
  [[nodiscard]] std::filesystem::path path() const { return folder.path("uploadlog.txt"); }
  [[nodiscard]] std::string file() const { return folder.read("uploadlog.txt"); }
  void expect_dialog() { dialogs.expect_save("Upload Log", path()); }
  QLabel& status() { return control<QLabel>("upload_status"); }
  BusyFlags& busy() { return program.services().busy; }
};

TEST(keshutil, starts_with_two_buttons_and_no_status_line) {
  UtilityBench bench;
  EXPECT_EQ(bench.button("Upload")->accessibleDescription(), QStringLiteral("Log"));
  EXPECT_EQ(bench.button("Clear")->accessibleDescription(), QStringLiteral("Log"));
  EXPECT_FALSE(bench.status().isVisible());
  EXPECT_EQ(bench.status().accessibleName(), QString());
  expect_fits(bench);
}

TEST(keshutil, entering_the_screen_hides_the_status_line) {
  UtilityBench bench;
  bench.status().show();
  bench.open(ScreenCode::com);
  bench.open(ScreenCode::keshutil);
  EXPECT_FALSE(bench.status().isVisible());
}

TEST(keshutil, three_records_give_three_lines_and_the_status_line_counts_them) {
  UtilityBench bench;
  bench.reader.records = {"4711", "a,b,\xFC", "0815"};
  bench.expect_dialog();
  bench.dialogs.expect_message("Upload Complete", [&bench] {
    EXPECT_TRUE(bench.status().isVisible());
    EXPECT_EQ(bench.status().text(), QStringLiteral("Records Uploaded: 00003"));
    EXPECT_GE(bench.status().width(), bench.status().sizeHint().width());
  });
  bench.press("upload");
  EXPECT_TRUE(bytes_equal(bench.file(), "4711\r\na,b,\xFC\r\n0815\r\n"));
  EXPECT_TRUE(bytes_equal(bench.port.written(), "V\rlr\rl\rl\rl\rl\r"));
  EXPECT_FALSE(bench.status().isVisible());
  EXPECT_FALSE(bench.busy().uploading_on);
  ASSERT_EQ(bench.dialogs.requests.size(), 1U);
  EXPECT_EQ(bench.dialogs.requests.front().file_name, "uploadlog.txt");
}

TEST(keshutil, an_empty_log_gives_an_empty_file) {
  UtilityBench bench;
  bench.expect_dialog();
  bench.dialogs.expect_message("Upload Complete");
  bench.press("upload");
  EXPECT_TRUE(std::filesystem::exists(bench.path()));
  EXPECT_EQ(bench.file(), "");
}

TEST(keshutil, an_upload_from_all_readers_is_refused_and_blocks_the_next_ones) {
  UtilityBench bench;
  bench.use_reader_at(127);
  bench.expect_dialog();
  bench.dialogs.expect_message("You cannot upload from address 127");
  bench.press("upload");
  EXPECT_TRUE(bench.busy().uploading_on);
  bench.press("upload");  // nothing at all
  bench.dialogs.expect_message(please_wait);
  bench.press("clear");
  EXPECT_EQ(bench.port.written(), "");
}

TEST(keshutil, an_upload_without_a_reader_is_refused_and_blocks_the_next_ones) {
  UtilityBench bench;
  bench.reader.identification = "";
  bench.expect_dialog();
  bench.dialogs.expect_message("Reader is not Connected");
  bench.press("upload");
  EXPECT_TRUE(bench.busy().uploading_on);
  bench.press("upload");
  EXPECT_FALSE(std::filesystem::exists(bench.path()));
}

TEST(keshutil, a_cancelled_dialog_ends_the_click_silently) {
  UtilityBench bench;
  bench.dialogs.expect_save("Upload Log", std::nullopt);
  bench.press("upload");
  EXPECT_EQ(bench.port.written(), "");
  EXPECT_FALSE(bench.busy().uploading_on);
}

TEST(keshutil, a_place_that_cannot_be_written_ends_the_click_silently) {
  UtilityBench bench;
  bench.reader.records = {"4711"};
  bench.dialogs.expect_save("Upload Log", bench.path() / "no" / "such" / "folder.txt");
  bench.press("upload");
  EXPECT_FALSE(bench.busy().uploading_on);
  EXPECT_FALSE(bench.status().isVisible());
}

TEST(keshutil, a_full_place_ends_the_upload_silently) {
  UtilityBench bench;
  bench.reader.records = {"4711", "0815"};
  bench.dialogs.expect_save("Upload Log", "/dev/full");
  bench.press("upload");
  EXPECT_FALSE(bench.busy().uploading_on);
  EXPECT_FALSE(bench.status().isVisible());
}

TEST(keshutil, a_reader_that_falls_silent_times_out_and_keeps_what_came) {
  UtilityBench bench;
  bench.reader.records = {"4711", "0815"};
  bench.reader.spoil = [](int answer, std::string_view, std::string reply) {
    return answer > 2 ? std::string() : reply;
  };
  bench.expect_dialog();
  bench.dialogs.expect_message("Reader Timeout");
  bench.press("upload");
  EXPECT_EQ(bench.file(), "4711\r\n");
  EXPECT_FALSE(bench.busy().uploading_on);
  EXPECT_FALSE(bench.status().isVisible());
}

TEST(keshutil, clearing_and_uploading_during_an_upload_are_kept_out) {
  UtilityBench bench;
  bench.reader.records = {"4711"};
  bench.expect_dialog();
  bench.dialogs.expect_message(please_wait);
  bench.dialogs.expect_message("Upload Complete");
  bench.pump.after(5ms, [&bench] {
    bench.press("upload");
    bench.press("clear");
  });
  bench.pump.after(5ms, [] {});
  bench.press("upload");
  EXPECT_EQ(bench.file(), "4711\r\n");
}

TEST(keshutil, a_download_keeps_uploads_out_silently_and_clears_with_a_box) {
  UtilityBench bench;
  bench.busy().downloading_on = true;
  bench.press("upload");
  bench.dialogs.expect_message(please_wait);
  bench.press("clear");
  EXPECT_EQ(bench.port.written(), "");
}

TEST(keshutil, a_clear_on_a_plain_line_waits_for_nothing) {
  UtilityBench bench;
  bench.dialogs.expect_message(cleared);
  bench.press("clear");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "cl\r"));
  EXPECT_EQ(bench.pump.sleeps, std::vector{250ms});
}

TEST(keshutil, a_clear_on_a_network_awaits_any_byte_and_acknowledges_it) {
  UtilityBench bench;
  bench.use_reader_at(5);
  bench.dialogs.expect_message(cleared);
  bench.press("clear");
  EXPECT_TRUE(bytes_equal(bench.port.written(),
                          "\x06\x06\x85\x02"
                          "cl\x03\x06"));
}

TEST(keshutil, a_clear_of_all_readers_warns_and_waits_for_nothing) {
  UtilityBench bench;
  bench.use_reader_at(127);
  bench.dialogs.expect_message("Warning - you are clearing all readers");
  bench.dialogs.expect_message(cleared);
  bench.press("clear");
  EXPECT_TRUE(bytes_equal(bench.port.written(),
                          "\x06\x06\xFF\x02"
                          "cl\x03\x06"));
}

TEST(keshutil, a_clear_that_nobody_answers_times_out_after_five_seconds) {
  UtilityBench bench;
  bench.use_reader_at(5);
  bench.reader.address = 6;
  const auto begin = bench.pump.elapsed();
  bench.dialogs.expect_message("Reader timed out");
  bench.press("clear");
  EXPECT_GE(bench.pump.elapsed() - begin, 5000ms);
  EXPECT_LE(bench.pump.elapsed() - begin, 5020ms);
}

TEST(keshutil, a_closed_port_is_told_before_anything_else) {
  UtilityBench bench;
  bench.busy().uploading_on = true;
  bench.program.services().link.closecomm();
  for (const char* const button : {"upload", "clear"}) {
    bench.dialogs.expect_message("Comm port is not open");
    bench.press(button);
  }
}

TEST(keshutil, a_missing_address_ends_the_click_on_a_network) {
  UtilityBench bench;
  bench.use_reader_at(5);
  bench.program.services().settings.reader_address = " ";
  bench.expect_dialog();
  bench.dialogs.expect_message("A Network address has not been set");
  bench.press("upload");
  EXPECT_FALSE(bench.busy().uploading_on);
  bench.dialogs.expect_message("A Network address has not been set");
  bench.press("clear");
  EXPECT_EQ(bench.port.written(), "");
}

}  // namespace
