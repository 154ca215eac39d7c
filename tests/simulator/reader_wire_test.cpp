// The program's link against the simulated readers at virtual time: what one frames the other
// understands, and the other way round, although they share no code.

#include "support/reader_wire.h"

#include "host.h"
#include "support/link_bench.h"

#include <gtest/gtest.h>

namespace {

using readersim::Fault;
using Kind = readersim::Fault::Kind;

class WiredLink : public LinkBench, public testing::Test {
 protected:
  ReaderWire wire{pump, port, {}};
  readersim::Seat& plain = wire.line.add(readersim::Family::orin, 0, false);
  readersim::Seat& networked = wire.line.add(readersim::Family::orin, 5, true);

  /// One request as the upload sends it; "?" when it fails.
  std::string request(std::string_view command) {
    link.write_frame(command);
    std::string reply;
    return link.getinput(reply, 500, 250ms, true, true) ? reply : "?" + reply;
  }
};

TEST_F(WiredLink, finds_the_reader_connected_on_both_kinds_of_line) {
  EXPECT_TRUE(link.reader_connected());
  use_network("5");
  EXPECT_TRUE(link.reader_connected());
  use_network("6");
  EXPECT_FALSE(link.reader_connected());
}

TEST_F(WiredLink, sends_a_command_that_is_acknowledged_and_obeyed) {
  use_network("5");
  link.send_command("}00", true);
  EXPECT_TRUE(link.command_accepted());
  EXPECT_EQ(networked.reader.red.at(wire.now()), readersim::Lamp::State::on);
}

TEST_F(WiredLink, reads_every_record_that_ends_in_an_end_character_whole) {
  for (int code = 0; code < 256; ++code) {
    const std::string record = "1234" + std::string(1, static_cast<char>(code));
    plain.reader.log.records = {record};
    networked.reader.log.records = {record};
    plain.reader.log.next = networked.reader.log.next = 0;
    settings.network_mode = false;
    ASSERT_TRUE(link.setnetaddr());
    EXPECT_TRUE(bytes_equal(request("l"), record)) << code;
    EXPECT_EQ(request("l"), "END");
    use_network("5");
    ASSERT_TRUE(link.setnetaddr());
    EXPECT_TRUE(bytes_equal(request("l"), record)) << code;
    EXPECT_EQ(request("l"), "END");
  }
}

TEST_F(WiredLink, a_hang_up_in_the_middle_of_a_reply_closes_the_port) {
  plain.faults = {{Kind::hang_up, 5}};
  EXPECT_FALSE(link.reader_connected());
  pump.idle(100ms);
  EXPECT_FALSE(link.comopen());
}

TEST_F(WiredLink, every_fault_ends_a_presence_check_in_bounded_time_and_the_next_one_is_right) {
  use_network("5");
  for (const readersim::FaultTraits& kind : readersim::all_faults()) {
    if (kind.kind == Kind::hang_up) {
      continue;
    }
    networked.faults = {{kind.kind, 7, 300, 1}};
    const auto before = pump.elapsed();
    (void)link.reader_connected();
    EXPECT_LE(pump.elapsed() - before, 1s) << kind.name;
    networked.faults.clear();
    pump.idle(2s);
    EXPECT_TRUE(link.reader_connected()) << kind.name;
  }
}

TEST_F(WiredLink, a_card_arrives_by_itself) {
  plain.reader.operating_mode = '1';
  wire.swipe(0, "4711");
  pump.idle(1ms);
  EXPECT_EQ(port.waiting(), "4711\r");
}

}  // namespace
