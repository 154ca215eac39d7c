#include "access/upload_bench.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using Texts = std::vector<std::string>;

INSTANTIATE_TEST_SUITE_P(every, Upload, testing::ValuesIn(upload_rows), name_of_upload);

TEST_P(Upload, plain_golden_stream) {
  reader.records = {"12345\x07", "678\x0C"};
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete, [this] {
    EXPECT_TRUE(busy.uploading_on);
    EXPECT_EQ(shown.back(), "Records Uploaded: 00002");
  });
  run();
  const std::string& u = row.record_request;
  EXPECT_TRUE(bytes_equal(port.written(), (row.tests_connection ? "V\r" : "") + row.request + "\r" + u +
                                              "\r" + u + "\r" + u + "\r"));
  EXPECT_EQ(file("up.txt"), line("12345", "07") + line("678", "12"));
  EXPECT_EQ(shown,
            (Texts{"Records Uploaded:", "Records Uploaded: 00001", "Records Uploaded: 00002", "(hidden)"}));
  EXPECT_FALSE(busy.uploading_on);
}

TEST_P(Upload, network_golden_stream) {
  use_reader_at(5);
  reader.records = {"12345\x07"};
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete,
                         [this] { EXPECT_TRUE(port.written().ends_with("\x03\x06")); });
  run();
  const std::string begin = "\x85\x02";
  const std::string record = begin + row.record_request + "\x03\x06";
  EXPECT_TRUE(bytes_equal(port.written(), (row.tests_connection ? begin + "V\x03\x06" : "") + "\x06\x06" +
                                              begin + row.request + "\x03" + record + record + "\x06\x06"));
  EXPECT_EQ(file("up.txt"), line("12345", "07"));
}

TEST_P(Upload, an_empty_reader_gives_an_empty_file) {
  write_file("up.txt", "what stood there before");
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_EQ(file("up.txt"), "");
  EXPECT_TRUE(std::filesystem::exists(path("up.txt")));
  EXPECT_EQ(shown, (Texts{"Records Uploaded:", "(hidden)"}));
}

TEST_P(Upload, a_last_character_equal_to_the_end_of_the_reply_comes_through) {
  reader.records = {"12345\x0D", "12345\x03"};
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_EQ(file("up.txt"), line("12345", "13") + line("12345", "03"));
}

TEST_P(Upload, a_last_character_equal_to_the_end_of_a_network_reply_comes_through) {
  use_reader_at(0);
  reader.records = {"12345\x0D", "12345\x03"};
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_EQ(file("up.txt"), line("12345", "13") + line("12345", "03"));
}

TEST_P(Upload, every_byte_value_but_the_end_character_comes_through) {
  std::string record;
  for (int code = 0; code < 256; ++code) {
    if (code != '\r') {
      record += static_cast<char>(code);
    }
  }
  record.resize(60);
  const std::string high(40, '\xE9');
  reader.records = {record + "\x01", high + "\x01", "1,2 \"3\" \x01"};
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_TRUE(bytes_equal(file("up.txt"), line(record, "01") + line(high, "01") + line("1,2 \"3\" ", "01")));
}

TEST_P(Upload, END_must_be_the_whole_reply) {
  reader.records = {"END\x07", "end", "ENDE"};
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_EQ(shown.at(shown.size() - 2), "Records Uploaded: 00003");
}

TEST_P(Upload, a_long_record_is_taken_in_pieces_of_500) {
  const bool list = &row.kind == &access_list_upload;
  const std::string record = std::string(499, 'x') + "\x07" + "1234\x07";
  reader.records = {record, "567\x07", "89\x07"};
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  const std::string first = list ? std::string(70, 'x') + "07\r\n" : record.substr(0, 500) + "\r\n";
  EXPECT_TRUE(bytes_equal(file("up.txt"), first + line("1234", "07") + line("567", "07") + line("89", "07")));
}

TEST_P(Upload, a_record_as_long_as_the_limit_is_one_line_and_costs_no_other) {
  const bool list = &row.kind == &access_list_upload;
  const auto line_of = [list](const std::string& record, const std::string& code) {
    return list ? record.substr(0, 70) + code + "\r\n" : record + "\r\n";
  };
  for (const std::size_t length : {499U, 500U}) {
    for (const char last : {'\x07', '\r'}) {
      const std::string record = std::string(length - 1, 'x') + last;
      reader.records = {record, record, "567\x07"};
      expect_dialog();
      dialogs.expect_message(boxes::upload_complete);
      run();
      const std::string code = last == '\r' ? "13" : "07";
      EXPECT_TRUE(
          bytes_equal(file("up.txt"), line_of(record, code) + line_of(record, code) + line("567", "07")))
          << length << " " << code;
    }
  }
}

TEST_P(Upload, the_rest_of_a_long_record_is_never_taken_for_the_end) {
  reader.records = {std::string(500, 'x') + "END", "567\x07"};
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_TRUE(file("up.txt").ends_with(line("567", "07")));
}

// The character behind the CR is taken for its double, and lost; the rest is a line of its own.
TEST_P(Upload, what_stands_behind_a_cr_within_a_plain_record_is_kept_and_costs_no_other) {
  reader.records = {"12\r345\x07", "3\r4END", "567\x07"};
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_EQ(file("up.txt").find(line("1", "50") + line("45", "07")), 0U);
  EXPECT_TRUE(file("up.txt").ends_with(line("EN", "68") + line("567", "07")));
  const std::string& u = row.record_request;
  EXPECT_TRUE(port.written().ends_with(row.request + "\r" + u + "\r" + u + "\r" + u + "\r" + u + "\r"));
}

TEST_P(Upload, a_piece_behind_a_plain_record_that_never_ends_is_kept_and_the_upload_goes_on) {
  reader.records = {"12\x07", "567\x07"};
  reader.spoil = [this](int, std::string_view command, std::string reply) {
    return command == row.record_request && reply.starts_with("12") ? reply + "zz" : reply;
  };
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_EQ(file("up.txt"), line("12", "07") + line("", "122") + line("567", "07"));
}

TEST_P(Upload, a_long_plain_record_whose_end_does_not_come_is_no_complete_upload) {
  for (const char* rest : {"", "1234"}) {
    reader.records = {std::string(500, 'x'), "567\x07"};
    reader.spoil = [this, rest](int, std::string_view command, std::string reply) {
      return command == row.record_request && reply.starts_with("x") ? reply.substr(0, 500) + rest : reply;
    };
    expect_dialog();
    dialogs.expect_message(boxes::upload_time_out);
    run();
    EXPECT_FALSE(busy.uploading_on);
  }
}

TEST_P(Upload, a_missing_address_on_a_plain_line) {
  settings.reader_address = "";
  expect_dialog();
  if (&row.kind == &access_log_upload) {
    dialogs.expect_message(boxes::upload_complete);  // sends nothing that needs an address there
  } else {
    dialogs.expect_message(boxes::no_address);  // the address is missed by the connection test alone
    dialogs.expect_message(boxes::not_connected);
  }
  run();
  EXPECT_EQ(port.written().empty(), row.tests_connection);
  EXPECT_EQ(busy.uploading_on, &row.kind == &collected_records_upload);
}

TEST_P(Upload, a_request_without_an_acknowledge_times_out_on_a_network) {
  for (const std::string& answer : {""s, "\x15"s, "A\x06"s}) {
    use_reader_at(5);
    reader.spoil = [&](int, std::string_view command, std::string reply) {
      return command == row.request ? answer : reply;
    };
    expect_dialog();
    dialogs.expect_message(boxes::upload_time_out, [this] { EXPECT_TRUE(busy.uploading_on); });
    run();
    EXPECT_FALSE(busy.uploading_on);
    EXPECT_EQ(reader.heard.back(), row.request) << "no record is asked for";
    EXPECT_TRUE(port.written().ends_with(row.request + "\x03\x06\x06"));
  }
}

TEST_P(Upload, a_late_acknowledge_is_too_late) {
  use_reader_at(5);
  reader.spoil = [this](int, std::string_view command, std::string reply) {
    reader.delay = command == row.request ? 101ms : 15ms;
    return reply;
  };
  expect_dialog();
  dialogs.expect_message(boxes::upload_time_out);
  run();
}

TEST_P(Upload, a_plain_line_never_acknowledges_the_request) {
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_TRUE(port.written().ends_with(row.request + "\r" + row.record_request + "\r"));
  EXPECT_EQ(std::count(pump.sleeps.begin(), pump.sleeps.end(), 100ms), 1) << "only after the END";
}

TEST_P(Upload, a_running_transfer_or_poll_keeps_it_out_silently) {
  busy.uploading_on = true;
  run();
  busy = {.polling_on = false, .downloading_on = true, .uploading_on = false};
  run();
  busy = {.polling_on = true, .downloading_on = false, .uploading_on = false};
  run();
  EXPECT_TRUE(dialogs.shown.empty());
  EXPECT_EQ(port.written(), "");
}

TEST_P(Upload, dialog_proposes_its_name_and_sets_no_folder) {
  dialogs.expect_save(row.title, path("up.txt"));
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_EQ(dialogs.requests.at(0).file_name, row.file_name);
  EXPECT_EQ(dialogs.requests.at(0).folder, StartFolder::current);
}

TEST_P(Upload, a_cancelled_dialog) {
  reader.records = {"12345\x07"};
  dialogs.expect_save(row.title, std::nullopt);
  if (row.cancel_uses_name) {
    dialogs.expect_message(boxes::upload_complete);
  }
  run();
  EXPECT_EQ(std::filesystem::exists(path(row.file_name)), row.cancel_uses_name);
  EXPECT_EQ(port.written().empty(), !row.cancel_uses_name);
  EXPECT_FALSE(busy.uploading_on);
}

TEST_P(Upload, without_an_address_it_ends_after_the_dialog) {
  use_reader_at(5);
  settings.reader_address = "128";
  expect_dialog();
  dialogs.expect_message(boxes::no_address);
  run();
  EXPECT_FALSE(busy.uploading_on);
  EXPECT_FALSE(std::filesystem::exists(path("up.txt")));
}

TEST_P(Upload, from_all_readers_is_refused) {
  use_all_readers();
  expect_dialog();
  dialogs.expect_message(boxes::no_upload_from_127);
  run();
  EXPECT_EQ(port.written(), "");
  EXPECT_FALSE(std::filesystem::exists(path("up.txt")));
  EXPECT_EQ(shown, Texts{});
}

TEST_P(Upload, address_127_is_refused_on_a_network_only) {
  settings.reader_address = "127";
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_EQ(file("up.txt"), "");
}

TEST_P(Upload, a_file_left_alone_by_a_refusal_keeps_its_lines) {
  write_file("up.txt", "old");
  use_all_readers();
  expect_dialog();
  dialogs.expect_message(boxes::no_upload_from_127);
  run();
  EXPECT_EQ(file("up.txt"), "old");
}

TEST_P(Upload, a_counter_beyond_16_bits_goes_on_and_loses_nothing) {
  for (int i = 0; i < 33000; ++i) {
    reader.records.push_back(std::to_string(i) + "\x07");
  }
  reader.delay = 1ms;
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_EQ(shown.at(shown.size() - 2), "Records Uploaded: 33000");
  EXPECT_TRUE(file("up.txt").ends_with(line("32998", "07") + line("32999", "07")));
}

struct UploadTwins : testing::Test, TransferBench {};

TEST_F(UploadTwins, the_access_list_asks_for_the_file_before_it_looks_at_the_port) {
  link.closecomm();
  dialogs.expect_save("Upload Access List File", path("up.txt"));
  dialogs.expect_message(boxes::port_not_open);
  transfers.upload(access_list_upload, status);
  EXPECT_FALSE(std::filesystem::exists(path("up.txt")));
}

TEST_F(UploadTwins, the_logs_look_at_the_port_first_even_while_busy) {
  link.closecomm();
  busy.downloading_on = true;
  dialogs.expect_message(boxes::port_not_open);
  transfers.upload(access_log_upload, status);
  dialogs.expect_message(boxes::port_not_open);
  transfers.upload(collected_records_upload, status);
}

TEST_F(UploadTwins, a_busy_access_list_upload_does_not_even_look_at_the_port) {
  link.closecomm();
  busy.downloading_on = true;
  transfers.upload(access_list_upload, status);
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(UploadTwins, only_the_access_log_does_without_the_connection_test) {
  reader.identification = "short";
  dialogs.expect_save("Upload Access List File", path("up.txt"));
  dialogs.expect_message(boxes::not_connected);
  transfers.upload(access_list_upload, status);
  EXPECT_FALSE(busy.uploading_on);
  dialogs.expect_save("Upload Access Log", path("up.txt"));
  dialogs.expect_message(boxes::upload_complete);
  transfers.upload(access_log_upload, status);
  dialogs.expect_save("Upload Log", path("up.txt"));
  dialogs.expect_message(boxes::not_connected);
  transfers.upload(collected_records_upload, status);
  EXPECT_TRUE(busy.uploading_on) << "set before the refusals, it stays";
}

TEST_F(UploadTwins, refused_from_all_readers_only_the_collected_records_stay_blocked) {
  use_all_readers();
  dialogs.expect_save("Upload Access List File", path("up.txt"));
  dialogs.expect_message(boxes::no_upload_from_127);
  transfers.upload(access_list_upload, status);
  EXPECT_FALSE(busy.uploading_on);
  dialogs.expect_save("Upload Access Log", path("up.txt"));
  dialogs.expect_message(boxes::no_upload_from_127);
  transfers.upload(access_log_upload, status);
  EXPECT_FALSE(busy.uploading_on);
  dialogs.expect_save("Upload Log", path("up.txt"));
  dialogs.expect_message(boxes::no_upload_from_127);
  transfers.upload(collected_records_upload, status);
  EXPECT_TRUE(busy.uploading_on);
  transfers.upload(collected_records_upload, status);  // now does nothing at all
  dialogs.expect_message(boxes::please_wait);
  transfers.clear(collected_records_clear, status);
}

TEST_F(UploadTwins, a_file_that_cannot_be_created_is_passed_over_by_the_access_uploads) {
  reader.records = {"12345\x07"};
  dialogs.expect_save("Upload Access List File", path("none/up.txt"));
  dialogs.expect_message(boxes::upload_complete);
  transfers.upload(access_list_upload, status);
  EXPECT_EQ(shown.at(1), "Records Uploaded: 00001");
  reader.records = {"12345\x07"};
  dialogs.expect_save("Upload Access Log", path("none/up.txt"));
  dialogs.expect_message(boxes::upload_complete);
  transfers.upload(access_log_upload, status);
}

TEST_F(UploadTwins, a_file_that_cannot_be_created_ends_the_collected_records_silently) {
  reader.records = {"12345\x07"};
  dialogs.expect_save("Upload Log", path("none/up.txt"));
  transfers.upload(collected_records_upload, status);
  EXPECT_EQ(port.written(), "V\r");
  EXPECT_EQ(shown, (Texts{"Records Uploaded:", "(hidden)"}));
  EXPECT_FALSE(busy.uploading_on);
}

TEST_F(UploadTwins, a_full_place_ends_the_collected_records_silently) {
  reader.records = {"12345\x07"};
  dialogs.expect_save("Upload Log", "/dev/full");
  transfers.upload(collected_records_upload, status);
  EXPECT_EQ(shown, (Texts{"Records Uploaded:", "(hidden)"}));
  EXPECT_FALSE(busy.uploading_on);
  EXPECT_TRUE(port.written().ends_with("l\r"));
}

TEST_F(UploadTwins, a_reply_of_no_characters_writes_a_line_only_of_collected_records) {
  reader.records = {"", "1\x07"};
  dialogs.expect_save("Upload Access List File", path("list.txt"));
  dialogs.expect_message(boxes::upload_complete);
  transfers.upload(access_list_upload, status);
  EXPECT_EQ(file("list.txt"), "1" + blanks(69) + "07\r\n");
  reader.records = {"", "1"};
  dialogs.expect_save("Upload Access Log", path("log.txt"));
  dialogs.expect_message(boxes::upload_complete);
  transfers.upload(access_log_upload, status);
  EXPECT_EQ(file("log.txt"), "1\r\n");
  reader.records = {"", "1"};
  dialogs.expect_save("Upload Log", path("records.txt"));
  dialogs.expect_message(boxes::upload_complete);
  transfers.upload(collected_records_upload, status);
  EXPECT_EQ(file("records.txt"), "\r\n1\r\n");
}

TEST_F(UploadTwins, a_schedule_code_of_100_or_more_takes_three_digits) {
  reader.records = {"12345\x64", "12345\xFF"};
  dialogs.expect_save("Upload Access List File", path("up.txt"));
  dialogs.expect_message(boxes::upload_complete);
  transfers.upload(access_list_upload, status);
  EXPECT_EQ(file("up.txt"), "12345" + blanks(65) + "100\r\n12345" + blanks(65) + "255\r\n");
}

}  // namespace
