#include "simulator/fault.h"

#include "host.h"

#include <gtest/gtest.h>

namespace {

using readersim::Fault;
using Kind = readersim::Fault::Kind;

const std::string reply = "\x06\x02VELL READER V3.20 S/N 001001\x03";

class Faulty : public Host, public testing::Test {
 protected:
  std::string ask_spoilt(Fault fault) {
    seat.faults = {fault};
    return ask(5, "V");
  }
  readersim::Seat& seat = line.add(readersim::Family::vell, 5, true);
};

TEST_F(Faulty, silent_answers_nothing) {
  EXPECT_TRUE(bytes_equal(ask_spoilt({Kind::silent}), ""));
}

TEST_F(Faulty, drop_ack_leaves_out_the_acknowledge_only) {
  EXPECT_TRUE(bytes_equal(ask_spoilt({Kind::drop_ack}), reply.substr(1)));
  seat.faults = {{Kind::drop_ack}};
  EXPECT_TRUE(bytes_equal(ask(5, "}00"), ""));
  EXPECT_EQ(seat.reader.red.at(now), readersim::Lamp::State::on);  // obeyed all the same
}

TEST_F(Faulty, wrong_ack_sends_another_character) {
  EXPECT_TRUE(bytes_equal(ask_spoilt({Kind::wrong_ack}), "\x15" + reply.substr(1)));
}

TEST_F(Faulty, cut_at_every_byte_sends_just_so_many) {
  for (std::size_t n = 0; n <= reply.size() + 1; ++n) {
    EXPECT_TRUE(bytes_equal(ask_spoilt({Kind::cut, static_cast<int>(n)}), reply.substr(0, n)));
  }
}

TEST_F(Faulty, garbage_comes_before_the_answer) {
  const std::string bytes = ask_spoilt({Kind::garbage, 4});
  EXPECT_EQ(bytes.size(), reply.size() + 4);
  EXPECT_TRUE(bytes_equal(bytes.substr(4), reply));
}

TEST_F(Faulty, garbage_at_every_byte_stands_before_it) {
  for (std::size_t n = 1; n <= reply.size() + 1; ++n) {
    const std::string bytes = ask_spoilt({Kind::garbage_at, static_cast<int>(n), 2});
    ASSERT_EQ(bytes.size(), reply.size() + 2);
    EXPECT_TRUE(bytes_equal(bytes.substr(0, n - 1) + bytes.substr(n + 1), reply));
  }
}

TEST_F(Faulty, double_sends_every_byte_twice) {
  for (std::size_t n = 1; n <= reply.size(); ++n) {
    EXPECT_TRUE(bytes_equal(ask_spoilt({Kind::double_byte, static_cast<int>(n)}),
                            reply.substr(0, n) + reply.substr(n - 1)));
  }
}

TEST_F(Faulty, pause_keeps_silent_before_every_byte) {
  for (std::size_t n = 1; n <= reply.size(); ++n) {
    seat.faults = {{Kind::pause, static_cast<int>(n), 300}};
    line.receive(frame(5, "V"), now);
    EXPECT_TRUE(bytes_equal(line.take_bytes(now + 20ms), reply.substr(0, n - 1)));
    EXPECT_TRUE(bytes_equal(line.take_bytes(now + 319ms), ""));
    EXPECT_TRUE(bytes_equal(line.take_bytes(now + 320ms), reply.substr(n - 1)));
    now += 1s;
  }
}

TEST_F(Faulty, late_shifts_the_whole_answer) {
  seat.faults = {{Kind::late, 700}};
  line.receive(frame(5, "V"), now);
  EXPECT_EQ(line.next_due(), now + 720ms);
  EXPECT_TRUE(bytes_equal(line.take_bytes(now + 720ms), reply));
}

TEST_F(Faulty, other_address_shows_in_poll_replies_only) {
  EXPECT_TRUE(bytes_equal(ask_spoilt({Kind::other_address, 7}), reply));
  EXPECT_EQ(seat.faults.size(), 1U);
  EXPECT_TRUE(bytes_equal(ask(5, "?"), "\x06\x87\x02\x03"));
  EXPECT_TRUE(bytes_equal(ask(5, "?"), "\x06\x85\x02\x03"));
}

TEST_F(Faulty, mishear_answers_for_another_reader_and_not_for_itself) {
  seat.faults = {{Kind::mishear, 7, 0, 2}};
  EXPECT_TRUE(bytes_equal(ask(5, "V"), ""));
  EXPECT_TRUE(bytes_equal(ask(7, "V"), reply));
  EXPECT_TRUE(bytes_equal(ask(7, "?"), "\x06\x85\x02\x03"));
  EXPECT_TRUE(bytes_equal(ask(7, "V"), ""));
  EXPECT_TRUE(bytes_equal(ask(5, "V"), reply));
}

TEST_F(Faulty, hang_up_before_every_byte_ends_the_line_there) {
  for (std::size_t n = 1; n <= reply.size() + 1; ++n) {
    seat.faults = {{Kind::hang_up, static_cast<int>(n)}};
    line.receive(frame(5, "V"), now);
    const auto due = line.take_due(now + 1s);
    ASSERT_FALSE(due.empty());
    EXPECT_TRUE(due.back().hang_up);
    std::string bytes;
    for (const auto& output : due) {
      bytes += output.bytes;
    }
    EXPECT_TRUE(bytes_equal(bytes, reply.substr(0, n - 1)));
    EXPECT_TRUE(line.hung_up());
    now += 1s;
    line.replug(now);
  }
}

TEST_F(Faulty, spoils_the_next_answers_and_no_more) {
  seat.faults = {{Kind::cut, 2, 0, 3}};
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(bytes_equal(ask(5, "V"), "\x06\x02"));
  }
  EXPECT_TRUE(bytes_equal(ask(5, "V"), reply));
  EXPECT_TRUE(seat.faults.empty());
}

TEST_F(Faulty, spoils_every_answer_when_it_never_ends) {
  seat.faults = {{Kind::silent, 0, 0, -1}};
  for (int i = 0; i < 10; ++i) {
    EXPECT_TRUE(bytes_equal(ask(5, "V"), ""));
  }
  EXPECT_EQ(seat.faults.size(), 1U);
}

TEST_F(Faulty, faults_add_up_whatever_order_they_were_given_in) {
  const std::vector<Fault> faults{{Kind::cut, 5}, {Kind::wrong_ack}, {Kind::double_byte, 3}};
  seat.faults = faults;
  EXPECT_TRUE(bytes_equal(ask(5, "V"), "\x15\x02VVE"));
  seat.faults = {faults.rbegin(), faults.rend()};
  EXPECT_TRUE(bytes_equal(ask(5, "V"), "\x15\x02VVE"));
}

TEST_F(Faulty, an_answer_that_is_not_given_uses_no_fault_up) {
  seat.faults = {{Kind::cut, 1}};
  ask(127, "V");
  ask(5, "not understood");
  ask(6, "V");
  EXPECT_EQ(seat.faults.size(), 1U);
}

TEST_F(Faulty, tells_what_was_done_to_an_answer) {
  ask_spoilt({Kind::cut, 5});
  EXPECT_EQ(events.back().meaning, "identification [cut]");
  EXPECT_TRUE(bytes_equal(events.back().bytes, reply.substr(0, 5)));
}

TEST(Faults, are_the_same_for_the_same_seed_and_others_for_another) {
  const auto garbage = [](std::uint32_t seed) {
    Host host{{.seed = seed}};
    host.line.add(readersim::Family::vell, 5, true).faults = {{Kind::garbage, 16, 0, 2}};
    return host.ask(5, "V") + host.ask(5, "V");
  };
  EXPECT_EQ(garbage(1), garbage(1));
  EXPECT_NE(garbage(1), garbage(2));
}

TEST(Faults, garbage_is_the_same_on_every_platform) {
  Host host;
  host.line.add(readersim::Family::vell, 5, true).faults = {{Kind::garbage, 4}};
  // The first numbers of the standard's Mersenne twister for seed 1, their last eight bits.
  EXPECT_TRUE(bytes_equal(host.ask(5, "V").substr(0, 4), "\x25\xEB\x8C\x48"));
}

TEST(Faults, on_a_plain_line_spoil_the_text_and_its_end) {
  Host host;
  readersim::Seat& seat = host.line.add(readersim::Family::vell, 0, false);
  seat.faults = {{Kind::double_byte, 29}};
  EXPECT_TRUE(bytes_equal(host.tell("V"), "VELL READER V3.20 S/N 001001\r\r"));
  seat.faults = {{Kind::drop_ack}};
  EXPECT_TRUE(bytes_equal(host.tell("V"), "VELL READER V3.20 S/N 001001\r"));
  EXPECT_EQ(seat.faults.size(), 1U);  // there was no acknowledge to drop
}

TEST(Faults, describe_themselves) {
  EXPECT_EQ(describe(Fault{Kind::pause, 2, 500, 3}), "pause 2 500, 3 answers");
  EXPECT_EQ(describe(Fault{Kind::cut, 7}), "cut 7, 1 answer");
  EXPECT_EQ(describe(Fault{Kind::silent, 0, 0, -1}), "silent, every answer");
}

}  // namespace
