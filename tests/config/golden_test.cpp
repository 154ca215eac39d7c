// Runs every golden row through every mode of the line.

#include "config/golden_bench.h"

namespace {

using namespace std::chrono_literals;

using namespace golden;

Pauses command_pauses(std::size_t count) {
  return Pauses(count, 200ms);
}

/// @param address 127 too: without network mode it is an address like any other
void expect_plain_line(const Row& row, const char* address) {
  Bench bench(row);
  bench.program.services().settings.reader_address = address;
  bench.port.responder = [&bench](std::string_view written) {
    if (written == "V\r") {
      bench.arrive(identification + "\r");
    }
  };
  bench.expect_messages({row.warning, row.done});
  bench.click_button();
  Frames expected;
  if (row.presence) {
    expected.emplace_back("V\r");
  }
  for (const std::string& payload : row.payloads) {
    expected.push_back(payload + '\r');
  }
  expect_frames(bench.port.writes, expected);
  EXPECT_EQ(bench.pump.sleeps, row.pauses);
}

TEST_P(Golden, on_a_plain_line) {
  expect_plain_line(GetParam(), "0");
}

TEST_P(Golden, on_a_plain_line_with_address_127) {
  expect_plain_line(GetParam(), "127");
}

TEST_P(Golden, on_a_network_that_acknowledges) {
  const Row& row = GetParam();
  Bench bench(row);
  bench.use_network("5");
  bench.answer_at('\x85', row.payloads.size());
  bench.expect_messages({row.warning, row.done});
  bench.click_button();
  expect_frames(bench.port.writes, bench.network_frames_after_presence('\x85', row.payloads.size()));
  EXPECT_EQ(bench.pump.sleeps,
            row.acknowledge == Acknowledge::command ? command_pauses(row.payloads.size()) : Pauses{});
}

TEST_P(Golden, on_a_network_that_stops_acknowledging) {
  const Row& row = GetParam();
  for (std::size_t acknowledges = 0; acknowledges < row.payloads.size(); ++acknowledges) {
    Bench bench(row);
    bench.use_network("5");
    bench.answer_at('\x85', acknowledges);
    bench.expect_messages(
        {row.warning, row.acknowledge == Acknowledge::command ? no_command_acknowledge : no_acknowledge});
    bench.click_button();
    expect_frames(bench.port.writes, bench.network_frames_after_presence('\x85', acknowledges + 1));
  }
}

TEST_P(Golden, at_the_global_address) {
  const Row& row = GetParam();
  Bench bench(row);
  bench.use_network("127");
  const bool awaited = row.acknowledge == Acknowledge::command;
  bench.answer_at('\xFF', awaited ? row.payloads.size() : 0);
  bench.expect_messages({row.warning, row.done});
  bench.click_button();
  expect_frames(bench.port.writes, bench.network_frames('\xFF', row.payloads.size()));
  EXPECT_EQ(bench.pump.sleeps, awaited ? command_pauses(row.payloads.size()) : row.pauses);
}

/// A run of commands ends at the first without an acknowledge; who awaits none sends everything.
TEST_P(Golden, at_the_global_address_where_readers_stop_acknowledging) {
  const Row& row = GetParam();
  const bool awaited = row.acknowledge == Acknowledge::command;
  for (std::size_t acknowledges = 0; acknowledges < row.payloads.size(); ++acknowledges) {
    Bench bench(row);
    bench.use_network("127");
    bench.answer_at('\xFF', acknowledges);
    bench.expect_messages({row.warning, awaited ? no_command_acknowledge : row.done});
    bench.click_button();
    expect_frames(bench.port.writes,
                  bench.network_frames('\xFF', awaited ? acknowledges + 1 : row.payloads.size()));
  }
}

TEST_P(Golden, with_the_port_closed) {
  Bench bench(GetParam(), false);
  bench.dialogs.expect_message("Comm port is not open");
  bench.click_button();
  EXPECT_EQ(bench.port.written(), "");
}

TEST_P(Golden, without_an_address) {
  for (const bool network : {false, true}) {
    Bench bench(GetParam());
    bench.use_network(" ");
    bench.program.services().settings.network_mode = network;
    bench.dialogs.expect_message("A Network address has not been set");
    bench.click_button();
    EXPECT_EQ(bench.port.written(), "");
  }
}

TEST_P(Golden, looks_at_port_and_address_in_its_order) {
  const Row& row = GetParam();
  Bench bench(row, false);
  bench.use_network(" ");
  bench.dialogs.expect_message(row.first_look == FirstLook::port ? "Comm port is not open"
                                                                 : "A Network address has not been set");
  bench.click_button();
  EXPECT_EQ(bench.port.written(), "");
}

TEST_P(GoldenPresence, without_a_reader) {
  const Row& row = GetParam();
  ASSERT_TRUE(row.presence);
  for (const bool network : {false, true}) {
    Bench bench(row);
    bench.use_network("5");
    bench.program.services().settings.network_mode = network;
    bench.expect_messages({row.warning, "Reader is not Connected"});
    bench.click_button();
    expect_frames(bench.port.writes, {network ? "\x85\x02V\x03" : "V\r"});
  }
}

}  // namespace
