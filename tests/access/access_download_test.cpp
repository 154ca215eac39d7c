#include "access/transfer_bench.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

constexpr std::string_view dialog = "Download Access List File";
const std::string ann = "12345" + blanks(35) + "Ann" + blanks(27) + "07\r\n";
const std::string bob = "678" + blanks(37) + "Bob" + blanks(27) + "12\r\n";

struct AccessDownload : testing::Test, TransferBench {};

TEST_F(AccessDownload, plain_golden_stream) {
  dialogs.expect_open(dialog, write_file("list.txt", ann + bob));
  dialogs.expect_message(boxes::download_complete, [this] {
    EXPECT_TRUE(busy.downloading_on);
    EXPECT_NE(shown.back(), "(hidden)");
  });
  transfers.download_access_list("18", status);
  EXPECT_TRUE(bytes_equal(port.written(),
                          "V\r"
                          "AC00712345" +
                              blanks(13) +
                              "\r"
                              "AC012678" +
                              blanks(15) + "\r"));
  EXPECT_FALSE(busy.downloading_on);
  EXPECT_EQ(shown,
            (Texts{"Records Downloaded: 00000  Errors: 00000", "Records Downloaded: 00001  Errors: 00000",
                   "Records Downloaded: 00002  Errors: 00000", "Records Downloaded: 00002  Errors: 00000",
                   "(hidden)"}));
}

TEST_F(AccessDownload, network_golden_stream) {
  use_reader_at(5);
  dialogs.expect_open(dialog, write_file("list.txt", ann + bob));
  dialogs.expect_message(boxes::download_complete, [this] {
    EXPECT_TRUE(port.written().ends_with("\x03\x06")) << "the last ACKs come after the box";
  });
  transfers.download_access_list("18", status);
  EXPECT_TRUE(bytes_equal(port.written(),
                          "\x85\x02V\x03\x06"  // the connection test acknowledges its reply
                          "\x06\x06"
                          "\x85\x02"
                          "AC00712345" +
                              blanks(13) +
                              "\x03\x06"
                              "\x85\x02"
                              "AC012678" +
                              blanks(15) +
                              "\x03\x06"
                              "\x06\x06"));
}

TEST_F(AccessDownload, broadcast_golden_stream) {
  use_all_readers();
  dialogs.expect_open(dialog, write_file("list.txt", ann + bob));
  dialogs.expect_message(boxes::downloading_to_all, [this] {
    EXPECT_EQ(port.written(), "");
    EXPECT_FALSE(busy.downloading_on);
  });
  dialogs.expect_message(boxes::download_complete);
  transfers.download_access_list("18", status);
  EXPECT_TRUE(bytes_equal(port.written(),
                          "\x06\x06"
                          "\xFF\x02"
                          "AN00712345" +
                              blanks(13) +
                              "\x03"
                              "\xFF\x02"
                              "AN012678" +
                              blanks(15) +
                              "\x03"
                              "\x06\x06"));
  EXPECT_EQ(pump.elapsed(), 500ms) << "four records a second, no reply awaited";
}

TEST_F(AccessDownload, dialog_starts_in_the_access_folder_with_the_usual_name) {
  dialogs.expect_open(dialog, write_file("list.txt", ""));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_access_list("18", status);
  EXPECT_EQ(dialogs.requests.at(0).file_name, "defaccess.txt");
  EXPECT_EQ(dialogs.requests.at(0).folder, StartFolder::access);
}

TEST_F(AccessDownload, an_id_longer_than_the_record_length_is_cut) {
  dialogs.expect_open(dialog, write_file("list.txt", "0123456789" + blanks(60) + "01"));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_access_list("4", status);
  EXPECT_EQ(reader.heard.back(), "AC0010123");
}

TEST_F(AccessDownload, a_line_without_a_schedule_sends_000) {
  dialogs.expect_open(dialog, write_file("list.txt", "12345\n"));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_access_list("5", status);
  EXPECT_EQ(reader.heard.back(), "AC00012345");
}

TEST_F(AccessDownload, lossy_lines_reach_the_reader_cut_or_shifted) {
  dialogs.expect_open(dialog, write_file("list.txt", "1,2" + blanks(67) + "07\r\n" +         // comma
                                                         "  12" + blanks(66) + "0708\r\n" +  // leading blanks
                                                         "\"1,2\"" + blanks(65) + "07\r\n" +  // quotes
                                                         "\r\n" +                             // blank
                                                         "\xC9"
                                                         "a" +
                                                         blanks(68) + "99"));  // no end
  dialogs.expect_message(boxes::download_complete);
  transfers.download_access_list("4", status);
  EXPECT_EQ(reader.heard, (Texts{"V", "AC0001   ", "AC00812  ", "AC0001,2 ", "AC000    ",
                                 "AC099\xC9"
                                 "a  "}));
}

TEST_F(AccessDownload, an_empty_file_sends_only_the_acks) {
  use_reader_at(5);
  dialogs.expect_open(dialog, write_file("list.txt", ""));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_access_list("18", status);
  EXPECT_TRUE(bytes_equal(port.written(),
                          "\x85\x02V\x03\x06"
                          "\x06\x06"
                          "\x06\x06"));
  EXPECT_EQ(shown.front(), "Records Downloaded: 00000  Errors: 00000");
}

TEST_F(AccessDownload, a_refused_record_is_counted_and_not_repeated) {
  for (const bool networked : {false, true}) {
    if (networked) {
      use_reader_at(5);
    }
    reader.verdicts = {"N", "A", "C"};
    dialogs.expect_open(dialog, write_file("list.txt", ann + bob + ann));
    dialogs.expect_message(boxes::download_complete);
    reader.heard.clear();
    transfers.download_access_list("5", status);
    EXPECT_EQ(reader.heard, (Texts{"V", "AC00712345", "AC012678  ", "AC00712345"}));
    EXPECT_EQ(shown.at(shown.size() - 2), "Records Downloaded: 00003  Errors: 00002");
  }
}

TEST_F(AccessDownload, record_length_must_be_set) {
  for (const std::string_view length : {"", "  ", "0", "00", "-3", "abc"}) {
    dialogs.expect_message(boxes::record_size_not_set);
    transfers.download_access_list(length, status);
  }
  EXPECT_EQ(port.written(), "");
}

TEST_F(AccessDownload, record_length_above_18_is_refused) {
  for (const std::string_view length : {"19", "255", "99999"}) {
    dialogs.expect_message(boxes::record_size_too_big);
    transfers.download_access_list(length, status);
  }
  EXPECT_EQ(port.written(), "");
}

TEST_F(AccessDownload, record_length_may_be_typed_with_blanks_around) {
  dialogs.expect_open(dialog, write_file("list.txt", ann));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_access_list("  4 ", status);
  EXPECT_EQ(reader.heard.back(), "AC0071234");
}

TEST_F(AccessDownload, a_closed_port_is_told_before_all_else) {
  link.closecomm();
  busy.uploading_on = true;
  dialogs.expect_message(boxes::port_not_open);
  transfers.download_access_list("", status);
}

TEST_F(AccessDownload, a_running_transfer_or_poll_keeps_it_out_silently) {
  busy.uploading_on = true;
  transfers.download_access_list("", status);
  busy = {.polling_on = false, .downloading_on = true, .uploading_on = false};
  transfers.download_access_list("18", status);
  busy = {.polling_on = true, .downloading_on = false, .uploading_on = false};
  transfers.download_access_list("18", status);
  EXPECT_TRUE(dialogs.shown.empty());
  EXPECT_EQ(port.written(), "");
}

TEST_F(AccessDownload, a_cancelled_dialog_uses_the_name_left_in_it) {
  write_file("defaccess.txt", ann);
  dialogs.expect_open(dialog, std::nullopt);
  dialogs.expect_message(boxes::download_complete);
  transfers.download_access_list("5", status);
  EXPECT_EQ(reader.heard.back(), "AC00712345");
}

TEST_F(AccessDownload, a_file_that_is_not_there_ends_the_click_with_the_flag_clear) {
  dialogs.expect_open(dialog, std::nullopt);
  dialogs.expect_message("File not found: defaccess.txt");
  clicks.run([this] { transfers.download_access_list("5", status); });
  EXPECT_FALSE(busy.downloading_on);
  EXPECT_EQ(shown, Texts{});
  EXPECT_EQ(reader.heard, Texts{"V"});
}

TEST_F(AccessDownload, without_an_address_it_ends_after_the_dialog) {
  use_reader_at(5);
  settings.reader_address = "";
  dialogs.expect_open(dialog, write_file("list.txt", ann));
  dialogs.expect_message(boxes::no_address);
  transfers.download_access_list("5", status);
  EXPECT_EQ(port.written(), "");
  EXPECT_FALSE(busy.downloading_on);
}

TEST_F(AccessDownload, a_reader_that_is_not_there_ends_it) {
  reader.spoil = [](int, std::string_view, const std::string&) { return std::string{}; };
  dialogs.expect_open(dialog, write_file("list.txt", ann));
  dialogs.expect_message(boxes::not_connected, [this] { EXPECT_FALSE(busy.downloading_on); });
  transfers.download_access_list("5", status);
  EXPECT_EQ(port.written(), "V\r");
  EXPECT_EQ(shown, Texts{});
}

TEST_F(AccessDownload, a_time_out_ends_it_five_seconds_after_the_command) {
  use_reader_at(5);
  reader.spoil = [](int n, std::string_view, std::string reply) { return n == 2 ? std::string{} : reply; };
  std::chrono::milliseconds at_box{};
  dialogs.expect_open(dialog, write_file("list.txt", ann + bob + ann));
  dialogs.expect_message(boxes::timed_out, [&] {
    at_box = pump.elapsed();
    EXPECT_TRUE(busy.downloading_on);
    EXPECT_NE(shown.back(), "(hidden)");
    EXPECT_TRUE(port.written().ends_with("\x03")) << "the ACKs come after the box";
  });
  transfers.download_access_list("5", status);
  EXPECT_EQ(at_box, 15ms + 250ms + 5000ms);  // connection test, first record, silence
  EXPECT_FALSE(busy.downloading_on);
  EXPECT_EQ(shown.back(), "(hidden)");
  EXPECT_TRUE(port.written().ends_with("\x03\x06\x06"));
  EXPECT_EQ(reader.heard.size(), 3U) << "the third record is not sent";
  // The next download works.
  reader.spoil = {};
  dialogs.expect_open(dialog, path("list.txt"));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_access_list("5", status);
}

TEST_F(AccessDownload, a_record_takes_the_pause_or_the_reply_where_that_is_later) {
  reader.delay = 300ms;
  reader.spoil = [this](int n, std::string_view, std::string reply) {
    reader.delay = n == 0 ? 10ms : 300ms;
    return reply;
  };
  dialogs.expect_open(dialog, write_file("list.txt", ann + bob));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_access_list("5", status);
  EXPECT_EQ(pump.elapsed(), 10ms + 2 * 300ms);
}

TEST_F(AccessDownload, other_transfers_stay_out_during_the_wait_for_a_reply) {
  reader.delay = 90ms;
  reader.spoil = [this](int n, std::string_view, std::string reply) {
    reader.delay = n == 0 ? 10ms : 1000ms;
    return reply;
  };
  dialogs.expect_open(dialog, write_file("list.txt", ann));
  pump.after(500ms, [this] {
    transfers.download_access_list("5", status);
    transfers.download_schedules(status);
    transfers.upload(access_list_upload, status);
    transfers.upload(access_log_upload, status);
    transfers.upload(collected_records_upload, status);
    for (const ClearKind& kind : {access_list_clear, access_log_clear, collected_records_clear}) {
      dialogs.expect_message(boxes::please_wait);
      transfers.clear(kind, status);
    }
    dialogs.expect_message(boxes::download_complete);
  });
  transfers.download_access_list("5", status);
  EXPECT_EQ(reader.heard, (Texts{"V", "AC00712345"}));
}

TEST_F(AccessDownload, what_follows_the_judged_character_does_not_count) {
  reader.verdict = "AX";
  dialogs.expect_open(dialog, write_file("list.txt", ann + bob));
  dialogs.expect_message(boxes::download_complete);
  transfers.download_access_list("5", status);
  EXPECT_EQ(shown.at(shown.size() - 2), "Records Downloaded: 00002  Errors: 00000");
}

TEST_F(AccessDownload, a_counter_beyond_its_five_digits_goes_on) {
  std::string list;
  for (int i = 0; i < 33000; ++i) {
    list += "1\n";
  }
  use_all_readers();
  dialogs.expect_open(dialog, write_file("list.txt", list));
  dialogs.expect_message(boxes::downloading_to_all);
  dialogs.expect_message(boxes::download_complete);
  transfers.download_access_list("1", status);
  EXPECT_EQ(shown.at(shown.size() - 2), "Records Downloaded: 33000  Errors: 00000");
}

TEST_F(AccessDownload, a_line_that_goes_in_the_middle_ends_a_broadcast) {
  use_all_readers();
  dialogs.expect_open(dialog, write_file("list.txt", ann + bob + ann));
  dialogs.expect_message(boxes::downloading_to_all);
  dialogs.expect_message(boxes::timed_out);
  pump.after(300ms, [this] { port.hang_up(); });
  transfers.download_access_list("5", status);
  EXPECT_FALSE(busy.downloading_on);
  EXPECT_FALSE(link.comopen());
}

}  // namespace
