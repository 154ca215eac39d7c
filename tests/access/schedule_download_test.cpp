#include "access/schedule_file.h"
#include "access/transfer_bench.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

constexpr std::string_view dialog = "Download Schedule File";
const std::string week = "08001700090018001000190011002000120021001300220014002300";
const std::string line_5 = "05 07 " + week + "\r\n";

/// The eight commands of line_5, each framed.
std::string commands_of_line_5(const std::string& begin, const std::string& end) {
  return begin + "SA005108001700" + end + begin + "SA005209001800" + end + begin + "SA005310001900" + end +
         begin + "SA005411002000" + end + begin + "SA005512002100" + end + begin + "SA005613002200" + end +
         begin + "SA005714002300" + end + begin + "SS005007" + end;
}

struct ScheduleDownload : testing::Test, TransferBench {};

TEST_F(ScheduleDownload, plain_golden_stream) {
  dialogs.expect_open(dialog, write_file("week.txt", line_5));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_schedules(status);
  EXPECT_TRUE(bytes_equal(port.written(), "V\r" + commands_of_line_5("", "\r")));
  ASSERT_EQ(shown.size(), 11U);
  EXPECT_EQ(shown[0], "Records Downloaded: 00000  Errors: 00000");
  EXPECT_EQ(shown[1], "Records Downloaded: 00001  Errors: 00000");
  EXPECT_EQ(shown[8], "Records Downloaded: 00008  Errors: 00000");
  EXPECT_EQ(shown[9], "Records Downloaded: 00008  Errors: 00000");
  EXPECT_EQ(shown[10], "(hidden)");
  EXPECT_FALSE(busy.downloading_on);
}

TEST_F(ScheduleDownload, network_golden_stream) {
  use_reader_at(5);
  dialogs.expect_open(dialog, write_file("week.txt", line_5));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_schedules(status);
  EXPECT_TRUE(bytes_equal(
      port.written(), "\x85\x02V\x03\x06\x06\x06" + commands_of_line_5("\x85\x02", "\x03\x06") + "\x06\x06"));
}

TEST_F(ScheduleDownload, broadcast_golden_stream_acknowledges_every_command_itself) {
  use_all_readers();
  reader.answers_broadcasts = true;  // something answers the connection test; the commands are not waited for
  dialogs.expect_open(dialog, write_file("week.txt", line_5 + line_5));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_schedules(status);
  const std::string schedule = commands_of_line_5("\xFF\x02", "\x03\x06");
  EXPECT_TRUE(bytes_equal(port.written(), "\xFF\x02V\x03\x06\x06\x06" + schedule + schedule + "\x06\x06"));
  EXPECT_EQ(pump.elapsed(), 15ms + 2 * (8 * 50ms + 250ms));
  EXPECT_EQ(shown.at(shown.size() - 2), "Records Downloaded: 00016  Errors: 00000");
}

TEST_F(ScheduleDownload, broadcast_schedule_is_acknowledged_before_its_longer_pause) {
  use_all_readers();
  reader.answers_broadcasts = true;
  dialogs.expect_open(dialog, write_file("week.txt", line_5));
  dialogs.expect_message(boxes::download_complete);
  pump.after(15ms + 8 * 50ms + 1ms, [this] { EXPECT_TRUE(port.written().ends_with("SS005007\x03\x06")); });
  transfers.download_schedules(status);
}

TEST_F(ScheduleDownload, all_readers_are_not_left_out_of_the_connection_test) {
  use_all_readers();
  dialogs.expect_open(dialog, write_file("week.txt", line_5));
  dialogs.expect_message(boxes::not_connected);  // and no warning before it
  transfers.download_schedules(status);
  EXPECT_TRUE(bytes_equal(port.written(), "\xFF\x02V\x03"));
  EXPECT_FALSE(busy.downloading_on);
}

TEST_F(ScheduleDownload, no_associated_schedule_is_sent_as_000) {
  dialogs.expect_open(dialog, write_file("week.txt", "42 00 " + week + "\n"));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_schedules(status);
  EXPECT_EQ(reader.heard.back(), "SS042000");
}

TEST_F(ScheduleDownload, values_go_out_as_they_stand) {
  dialogs.expect_open(dialog, write_file("week.txt", "ab cd 9999xx\xE9\xFF" + std::string(48, '-') + "\n\n"));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_schedules(status);
  ASSERT_EQ(reader.heard.size(), 17U);
  EXPECT_EQ(reader.heard[1], "SA0ab19999xx\xE9\xFF");
  EXPECT_EQ(reader.heard[2], "SA0ab2--------");
  EXPECT_EQ(reader.heard[8], "SS0ab0cd");
  EXPECT_EQ(reader.heard[9], "SA0  1        ") << "a blank line is a record of blanks";
  EXPECT_EQ(reader.heard[16], "SS0  0  ");
}

TEST_F(ScheduleDownload, a_whole_file_is_792_commands_of_50_ms) {
  reader.delay = 10ms;
  dialogs.expect_open(dialog, write_file("week.txt", ScheduleTable{}.write()));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_schedules(status);
  EXPECT_EQ(shown.at(shown.size() - 2), "Records Downloaded: 00792  Errors: 00000");
  EXPECT_EQ(pump.elapsed(), 10ms + 792 * 50ms);
}

TEST_F(ScheduleDownload, a_file_one_line_short_is_98_schedules) {
  const std::string whole = ScheduleTable{}.write();
  const std::string short_file = whole.substr(0, whole.rfind("99 00 "));
  ASSERT_EQ(std::count(short_file.begin(), short_file.end(), '\n'), 98);
  // With an end to its last line and without one.
  for (const std::string& text : {short_file, short_file.substr(0, short_file.size() - 2)}) {
    reader.heard.clear();
    dialogs.expect_open(dialog, write_file("week.txt", text));
    dialogs.expect_message(boxes::download_complete);
    transfers.download_schedules(status);
    ASSERT_EQ(reader.heard.size(), 1U + 98U * 8U);
    EXPECT_EQ(reader.heard[1], "SA001100000000");
    EXPECT_EQ(reader.heard[783], "SA098700000000");
    EXPECT_EQ(reader.heard[784], "SS098000");
    EXPECT_EQ(shown.at(shown.size() - 2), "Records Downloaded: 00784  Errors: 00000");
  }
}

TEST_F(ScheduleDownload, an_empty_file_sends_only_the_acks) {
  use_reader_at(5);
  dialogs.expect_open(dialog, write_file("week.txt", ""));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_schedules(status);
  EXPECT_TRUE(bytes_equal(port.written(),
                          "\x85\x02V\x03\x06"
                          "\x06\x06"
                          "\x06\x06"));
  EXPECT_EQ(shown.front(), "Records Downloaded: 00000  Errors: 00000");
}

TEST_F(ScheduleDownload, a_refused_command_is_counted_and_the_rest_follows) {
  use_reader_at(5);
  reader.verdicts = {"A", "N", "A", "A", "A", "A", "A", "?"};
  dialogs.expect_open(dialog, write_file("week.txt", line_5));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_schedules(status);
  EXPECT_EQ(reader.heard.size(), 9U);
  EXPECT_EQ(shown.at(shown.size() - 2), "Records Downloaded: 00008  Errors: 00002");
}

TEST_F(ScheduleDownload, checks_come_in_their_order) {
  link.closecomm();
  busy.downloading_on = true;
  dialogs.expect_message(boxes::port_not_open);
  transfers.download_schedules(status);
  link.open_at_start_up();
  transfers.download_schedules(status);  // busy: nothing at all
  busy = {.polling_on = false, .downloading_on = false, .uploading_on = true};
  transfers.download_schedules(status);
  busy = {.polling_on = true, .downloading_on = false, .uploading_on = false};
  transfers.download_schedules(status);
  EXPECT_EQ(port.written(), "");
}

TEST_F(ScheduleDownload, the_connection_test_comes_before_the_address_is_set) {
  use_reader_at(5);
  settings.reader_address = "";
  dialogs.expect_open(dialog, write_file("week.txt", line_5));
  dialogs.expect_message(boxes::no_address);  // from within the connection test, which then fails
  dialogs.expect_message(boxes::not_connected);
  transfers.download_schedules(status);
  EXPECT_EQ(port.written(), "");
}

TEST_F(ScheduleDownload, dialog_starts_in_the_access_folder_and_a_cancel_uses_its_name) {
  write_file("schedule.txt", line_5);
  dialogs.expect_open(dialog, std::nullopt);
  dialogs.expect_message(boxes::download_complete);
  transfers.download_schedules(status);
  EXPECT_EQ(dialogs.requests.at(0).file_name, "schedule.txt");
  EXPECT_EQ(dialogs.requests.at(0).folder, StartFolder::access);
  EXPECT_EQ(reader.heard.size(), 9U);
}

TEST_F(ScheduleDownload, a_file_that_is_not_there_ends_the_click_with_the_flag_clear) {
  dialogs.expect_open(dialog, std::nullopt);
  dialogs.expect_message("File not found: schedule.txt");
  clicks.run([this] { transfers.download_schedules(status); });
  EXPECT_FALSE(busy.downloading_on);
  EXPECT_EQ(shown, Texts{});
}

TEST_F(ScheduleDownload, a_time_out_ends_it_with_the_last_acks) {
  use_reader_at(5);
  reader.spoil = [](int n, std::string_view, std::string reply) { return n == 4 ? std::string{} : reply; };
  dialogs.expect_open(dialog, write_file("week.txt", line_5));
  dialogs.expect_message(boxes::timed_out, [this] { EXPECT_TRUE(busy.downloading_on); });
  transfers.download_schedules(status);
  EXPECT_EQ(pump.elapsed(), 15ms + 3 * 50ms + 5000ms);
  EXPECT_EQ(reader.heard.back(), "SA005411002000");
  EXPECT_TRUE(port.written().ends_with("\x03\x06\x06"));
  EXPECT_FALSE(busy.downloading_on);
  EXPECT_EQ(shown.back(), "(hidden)");
}

}  // namespace
