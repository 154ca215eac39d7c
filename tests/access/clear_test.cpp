#include "access/transfer_bench.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

struct Row {
  const char* name;
  const ClearKind& kind;
  std::string command;
  std::string_view done;
  bool tests_connection;
  bool hides_status;
};

const Row access_list{"access_list", access_list_clear, "cd", boxes::access_list_cleared, true, false};
const Row access_log{"access_log", access_log_clear, "cl", boxes::log_cleared, true, false};
const Row collected{"collected_records", collected_records_clear, "cl", boxes::log_cleared, false, true};

struct Clear : testing::TestWithParam<Row>, TransferBench {
  const Row& row = GetParam();
  void run() { transfers.clear(row.kind, status); }
};

INSTANTIATE_TEST_SUITE_P(every, Clear, testing::Values(access_list, access_log, collected),
                         [](const auto& row_info) { return std::string(row_info.param.name); });

TEST_P(Clear, plain_reports_success_after_250_ms_whether_or_not_the_reader_answered) {
  dialogs.expect_message(row.done);
  run();
  EXPECT_TRUE(bytes_equal(port.written(), (row.tests_connection ? "V\r" : "") + row.command + "\r"));
  EXPECT_EQ(pump.elapsed(), (row.tests_connection ? 15ms : 0ms) + 250ms);
}

TEST_P(Clear, plain_pays_no_heed_to_an_answer) {
  reader.spoil = [this](int, std::string_view command, std::string reply) {
    return command == row.command ? "A\r"s : reply;
  };
  dialogs.expect_message(row.done);
  run();
  EXPECT_EQ(pump.elapsed(), (row.tests_connection ? 15ms : 0ms) + 250ms);
}

TEST_P(Clear, network_golden_stream) {
  use_reader_at(5);
  dialogs.expect_message(row.done, [this] { EXPECT_TRUE(port.written().ends_with("\x03\x06")); });
  run();
  EXPECT_TRUE(bytes_equal(port.written(), (row.tests_connection ? "\x85\x02V\x03\x06"s : ""s) + "\x06\x06" +
                                              "\x85\x02" + row.command + "\x03\x06"));
}

TEST_P(Clear, broadcast_warns_and_waits_for_no_reply) {
  use_all_readers();
  dialogs.expect_message(boxes::clearing_all, [this] { EXPECT_EQ(port.written(), ""); });
  dialogs.expect_message(row.done);
  run();
  EXPECT_TRUE(bytes_equal(port.written(), "\x06\x06\xFF\x02" + row.command + "\x03\x06"));
  EXPECT_EQ(pump.elapsed(), 250ms);
}

TEST_P(Clear, any_reply_will_do_on_a_network) {
  use_reader_at(5);
  reader.spoil = [this](int, std::string_view command, std::string reply) {
    reader.delay = command == row.command ? 4900ms : 15ms;
    return command == row.command ? "?"s : reply;
  };
  dialogs.expect_message(row.done);
  run();
  EXPECT_EQ(pump.elapsed(), (row.tests_connection ? 15ms : 0ms) + 4900ms);
}

TEST_P(Clear, silence_on_a_network_times_out_after_five_seconds) {
  use_reader_at(5);
  reader.spoil = [this](int, std::string_view command, std::string reply) {
    return command == row.command ? ""s : reply;
  };
  dialogs.expect_message(boxes::timed_out);
  run();
  EXPECT_EQ(pump.elapsed(), (row.tests_connection ? 15ms : 0ms) + 5000ms);
  EXPECT_TRUE(port.written().ends_with(row.command + "\x03")) << "no ACK follows";
  EXPECT_EQ(shown.size(), row.hides_status ? 1U : 0U);
  reader.spoil = {};
  dialogs.expect_message(row.done);
  run();
}

TEST_P(Clear, a_running_transfer_or_poll_is_to_be_waited_for) {
  busy.uploading_on = true;
  dialogs.expect_message(boxes::please_wait);
  run();
  busy = {.polling_on = false, .downloading_on = true, .uploading_on = false};
  dialogs.expect_message(boxes::please_wait);
  run();
  busy = {.polling_on = true, .downloading_on = false, .uploading_on = false};  // left with Enter, it goes on
  dialogs.expect_message(boxes::please_wait);
  run();
  EXPECT_EQ(port.written(), "");
}

TEST_P(Clear, a_closed_port_is_told) {
  link.closecomm();
  dialogs.expect_message(boxes::port_not_open);
  run();
}

TEST_P(Clear, without_an_address_nothing_is_sent) {
  use_reader_at(5);
  settings.reader_address = " ";
  dialogs.expect_message(boxes::no_address);
  run();
  EXPECT_EQ(port.written(), "");
}

TEST_P(Clear, a_missing_address_on_a_plain_line_fails_the_connection_test_where_there_is_one) {
  for (const char* const address : {"", "  "}) {
    settings.reader_address = address;
    port.writes.clear();
    if (row.tests_connection) {
      dialogs.expect_message(boxes::no_address);
      dialogs.expect_message(boxes::not_connected);
    } else {
      dialogs.expect_message(row.done);  // a plain line needs no address
    }
    run();
    dialogs.verify();
    EXPECT_EQ(port.written(), row.tests_connection ? "" : row.command + "\r");
    EXPECT_TRUE(shown.empty());
  }
}

TEST_P(Clear, a_line_that_takes_nothing_is_no_success) {
  reader.spoil = [this](int, std::string_view, std::string reply) {
    port.writable = false;
    return reply;
  };
  port.writable = row.tests_connection;
  dialogs.expect_message(boxes::timed_out);
  run();
}

struct ClearTwins : testing::Test, TransferBench {};

TEST_F(ClearTwins, busy_comes_first_in_the_access_group_and_the_port_in_the_other) {
  link.closecomm();
  busy.downloading_on = true;
  dialogs.expect_message(boxes::please_wait);
  transfers.clear(access_list_clear, status);
  dialogs.expect_message(boxes::please_wait);
  transfers.clear(access_log_clear, status);
  dialogs.expect_message(boxes::port_not_open);
  transfers.clear(collected_records_clear, status);
}

TEST_F(ClearTwins, the_access_group_tests_the_connection) {
  reader.identification = "short";
  dialogs.expect_message(boxes::not_connected);
  transfers.clear(access_list_clear, status);
  dialogs.expect_message(boxes::not_connected);
  transfers.clear(access_log_clear, status);
  EXPECT_EQ(port.written(), "V\rV\r");
}

}  // namespace
