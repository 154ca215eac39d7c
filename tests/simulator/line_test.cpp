#include "host.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace {

using readersim::DataFormat;
using readersim::Event;
using readersim::Family;
using readersim::Lamp;
using readersim::Line;
using readersim::Setting;

class PlainOrin : public Host, public testing::Test {
 protected:
  readersim::Seat& seat = line.add(Family::orin, 0, false);
  readersim::Reader& reader = seat.reader;
};

class Network : public Host, public testing::Test {
 protected:
  Network() {
    for (int address = 0; address < 6; ++address) {
      line.add(readersim::all_families.at(static_cast<std::size_t>(address)), address, true);
    }
  }
  readersim::Reader& at(int address) { return line.find(address)->reader; }
};

TEST_F(PlainOrin, answers_an_identification_request_with_text_and_cr) {
  EXPECT_TRUE(bytes_equal(exchange("V\r"), "ORIN READER V5.11 S/N 001001\r"));
}

TEST_F(PlainOrin, acknowledges_no_command_on_a_plain_line) {
  EXPECT_TRUE(bytes_equal(tell("}00"), ""));
  EXPECT_EQ(reader.red.at(now), Lamp::State::on);
}

TEST_F(PlainOrin, does_not_hear_network_frames) {
  EXPECT_TRUE(bytes_equal(ask(0, "}00"), ""));
  EXPECT_TRUE(bytes_equal(ask(127, "}00"), ""));
  EXPECT_EQ(reader.red.at(now), Lamp::State::off);
}

TEST_F(PlainOrin, hears_the_next_command_after_a_network_frame_went_by) {
  EXPECT_TRUE(bytes_equal(exchange("\xFF\x02\x00U\x03"_bytes), ""));
  EXPECT_TRUE(bytes_equal(tell("V"), reader.identification + "\r"));
}

TEST_F(PlainOrin, recovers_from_a_network_frame_that_was_ended_with_cr) {
  EXPECT_TRUE(bytes_equal(exchange("\x80\x02V\r"), ""));
  EXPECT_TRUE(bytes_equal(tell("V"), reader.identification + "\r"));
}

TEST_F(PlainOrin, hears_a_command_that_comes_byte_by_byte) {
  for (const char* byte : {"V", "\r"}) {
    line.receive(byte, now);
    now += 10s;
  }
  EXPECT_TRUE(bytes_equal(line.take_bytes(now), reader.identification + "\r"));
}

TEST_F(PlainOrin, answers_as_address_0_once_protocol_mode_is_sent) {
  EXPECT_TRUE(bytes_equal(tell(nul("ITP")), ""));
  EXPECT_TRUE(bytes_equal(tell("V"), ""));
  EXPECT_TRUE(bytes_equal(ask(0, "V"), "\x06\x02ORIN READER V5.11 S/N 001001\x03"));
}

TEST_F(PlainOrin, takes_host_acknowledges_for_what_they_are) {
  exchange("\x06\x06V\r");
  ASSERT_EQ(events.size(), 4U);
  EXPECT_EQ(events[0].meaning, "the host acknowledges");
  EXPECT_EQ(events[1].meaning, "the host acknowledges");
  EXPECT_EQ(events[2].meaning, "identification");
}

TEST_F(PlainOrin, drops_a_flood_without_end_character_and_hears_again) {
  EXPECT_TRUE(bytes_equal(exchange(std::string(4096, 'x')), ""));
  EXPECT_EQ(events.back().meaning, "noise");
  EXPECT_TRUE(bytes_equal(tell("V"), reader.identification + "\r"));
}

TEST_F(Network, acknowledges_a_command_with_one_ack_after_the_answer_delay) {
  line.receive("\x82\x02}00\x03", now);
  EXPECT_EQ(line.next_due(), now + 20ms);
  EXPECT_TRUE(line.take_due(now + 19ms).empty());
  const auto due = line.take_due(now + 20ms);
  ASSERT_EQ(due.size(), 1U);
  EXPECT_EQ(due[0].at, now + 20ms);
  EXPECT_TRUE(bytes_equal(due[0].bytes, "\x06"));
  EXPECT_EQ(line.next_due(), std::nullopt);
}

TEST_F(Network, only_the_addressed_reader_obeys) {
  ask(2, "}00");
  EXPECT_EQ(at(2).red.at(now), Lamp::State::on);
  EXPECT_EQ(at(1).red.at(now), Lamp::State::off);
  EXPECT_EQ(at(3).red.at(now), Lamp::State::off);
}

TEST_F(Network, all_readers_obey_the_global_address_and_none_answers) {
  EXPECT_TRUE(bytes_equal(ask(127, "}00"), ""));
  EXPECT_TRUE(bytes_equal(ask(127, "V"), ""));
  EXPECT_TRUE(bytes_equal(ask(127, "?"), ""));
  for (int address = 0; address < 6; ++address) {
    EXPECT_EQ(at(address).red.at(now), Lamp::State::on) << address;
  }
  EXPECT_EQ(events[0].meaning, "red LED on, 6 obey");
}

TEST_F(Network, nobody_answers_at_an_address_without_reader) {
  EXPECT_TRUE(bytes_equal(ask(99, "V"), ""));
  EXPECT_EQ(events[0].meaning, "no such reader");
}

TEST_F(Network, does_not_hear_plain_commands) {
  EXPECT_TRUE(bytes_equal(tell(nul("U")), ""));
  EXPECT_EQ(events[0].meaning, "noise");
}

TEST_F(Network, a_frame_begun_anew_is_heard_and_the_torn_one_is_not) {
  EXPECT_TRUE(bytes_equal(exchange("\x81\x02}0\x82\x02V\x03"), "\x06\x02ORINTA READER V5.42 S/N 001003\x03"));
  EXPECT_EQ(at(1).red.at(now), Lamp::State::off);
}

TEST_F(Network, a_reader_that_leaves_protocol_mode_acknowledges_and_then_hears_plain_commands) {
  EXPECT_TRUE(bytes_equal(ask(1, nul("ITN")), "\x06"));
  EXPECT_TRUE(bytes_equal(ask(1, "V"), ""));
  EXPECT_TRUE(bytes_equal(tell("V"), at(1).identification + "\r"));
  EXPECT_TRUE(bytes_equal(ask(2, "V"), "\x06\x02" + at(2).identification + "\x03"));
}

TEST_F(Network, a_new_address_is_acknowledged_and_holds_at_once) {
  EXPECT_TRUE(bytes_equal(ask(1, nul("IA077")), "\x06"));
  EXPECT_TRUE(bytes_equal(ask(1, "V"), ""));
  EXPECT_TRUE(bytes_equal(ask(77, "V"), "\x06\x02ORIN READER V5.11 S/N 001002\x03"));
}

TEST_F(Network, readers_at_the_same_address_answer_over_each_other) {
  ask(127, nul("IA003"));
  // Acknowledges that coincide look like one, everything longer is garbled.
  EXPECT_TRUE(bytes_equal(ask(3, "]00"), "\x06"));
  EXPECT_NE(ask(3, "V"), "\x06\x02" + line.find(3)->reader.identification + "\x03");
  EXPECT_EQ(events.back().meaning, "collision of 6 answers");
}

TEST_F(Network, an_unplugged_reader_neither_obeys_nor_answers) {
  line.find(4)->present = false;
  EXPECT_TRUE(bytes_equal(ask(4, "}00"), ""));
  EXPECT_EQ(at(4).red.at(now), Lamp::State::off);
}

TEST_F(Network, a_reader_answers_its_commands_one_after_the_other) {
  line.find(1)->faults = {{readersim::Fault::Kind::late, 500}};
  line.receive(frame(1, "]00") + frame(2, "]00") + frame(1, "]00"), now);
  const auto due = line.take_due(now + 1s);
  ASSERT_EQ(due.size(), 3U);
  EXPECT_EQ(due[0].at, now + 20ms);   // reader 2
  EXPECT_EQ(due[1].at, now + 520ms);  // reader 1, late
  EXPECT_EQ(due[2].at, now + 520ms);  // and its next, not before it
}

TEST_F(Network, a_reader_at_another_speed_is_silent_until_the_host_follows) {
  line.set_host_baud(9600);
  EXPECT_TRUE(bytes_equal(ask(1, nul("IB3")), "\x06"));
  EXPECT_TRUE(bytes_equal(ask(1, "V"), ""));
  EXPECT_EQ(events.back().meaning, "no reader hears this, at this speed or address");
  EXPECT_NE(ask(2, "V"), "");
  line.set_host_baud(1200);
  EXPECT_TRUE(bytes_equal(ask(1, "V"), "\x06\x02" + at(1).identification + "\x03"));
  EXPECT_TRUE(bytes_equal(ask(2, "V"), ""));
}

TEST_F(PlainOrin, hears_only_its_own_data_format_where_the_host_s_is_known) {
  line.set_host_data(DataFormat::eight_none);
  tell(nul("IBE"));
  EXPECT_TRUE(bytes_equal(tell("V"), ""));
  line.set_host_data(DataFormat::seven_even);
  EXPECT_TRUE(bytes_equal(tell("V"), reader.identification + "\r"));
}

TEST_F(Network, no_reader_can_be_addressed_with_seven_data_bits) {
  line.set_host_data(DataFormat::seven_odd);
  at(1).format.data = DataFormat::seven_odd;
  EXPECT_TRUE(bytes_equal(ask(1, "V"), ""));
}

TEST(Pacing, bytes_take_ten_bit_times_each_in_both_directions) {
  Host host{{.paced = true}};
  host.line.add(Family::vell, 3, true).reader.format.baud = 1200;
  host.line.set_host_baud(1200);
  host.line.receive("\x83\x02V\x03", host.now);
  // Four bytes there, the answer delay, and the first byte back.
  const auto byte = readersim::TimePoint{10'000'000} / 1200;
  EXPECT_EQ(host.line.next_due(), host.now + 4 * byte + 20ms + byte);
  const auto due = host.line.take_due(host.now + 1s);
  ASSERT_EQ(due.size(), host.line.find(3)->reader.identification.size() + 3);
  for (std::size_t i = 1; i < due.size(); ++i) {
    EXPECT_EQ(due[i].at - due[i - 1].at, byte);
    EXPECT_EQ(due[i].bytes.size(), 1U);
  }
}

TEST(Pacing, a_reader_told_to_move_answers_at_its_old_speed) {
  Host host{{.paced = true}};
  host.line.add(Family::vell, 3, true);
  host.line.receive("\x83\x02\x00IB3\x03"_bytes, host.now);
  const auto at_9600 = readersim::TimePoint{10'000'000} / 9600;
  EXPECT_EQ(host.line.next_due(), host.now + 7 * at_9600 + 20ms + at_9600);
}

TEST(Pacing, knows_no_time_at_a_speed_that_is_none) {
  Host host{{.paced = true}};
  host.line.add(Family::vell, 3, true);
  host.line.set_host_baud(0);
  EXPECT_TRUE(bytes_equal(host.ask(3, "V"), ""));
}

TEST_F(PlainOrin, with_seven_data_bits_the_eighth_is_lost_both_ways) {
  line.set_host_data(DataFormat::seven_even);
  reader.format.data = DataFormat::seven_even;
  reader.identification = "ORIN \xC4\xD6";
  EXPECT_TRUE(bytes_equal(exchange("\xD6\x8D"), "ORIN DV\r"));
}

TEST(Pacing, without_it_an_answer_comes_in_one_piece) {
  Host host;
  host.line.add(Family::vell, 3, true);
  host.line.receive("\x83\x02V\x03", host.now);
  EXPECT_EQ(host.line.take_due(host.now + 20ms).size(), 1U);
}

TEST_F(Network, a_hung_up_line_is_dead_until_it_is_plugged_in_again) {
  line.receive(frame(1, "V"), now);
  line.hang_up(now);
  EXPECT_TRUE(line.hung_up());
  EXPECT_TRUE(bytes_equal(line.take_bytes(now + 1s), ""));
  EXPECT_TRUE(bytes_equal(ask(1, "}00"), ""));
  EXPECT_EQ(at(1).red.at(now), Lamp::State::off);
  line.replug(now);
  EXPECT_TRUE(bytes_equal(ask(1, "}00"), "\x06"));
}

TEST_F(Network, tells_every_frame_in_both_directions_with_bytes_and_meaning) {
  exchange(frame(5, "V") + "\x06");
  ASSERT_EQ(events.size(), 3U);
  EXPECT_EQ(events[0].kind, Event::Kind::heard);
  EXPECT_EQ(events[0].address, 5);
  EXPECT_TRUE(bytes_equal(events[0].bytes, "\x85\x02V\x03"));
  EXPECT_EQ(events[0].meaning, "identification");
  EXPECT_EQ(events[1].meaning, "the host acknowledges");
  EXPECT_EQ(events[1].address, 5);
  EXPECT_EQ(events[2].kind, Event::Kind::sent);
  EXPECT_EQ(events[2].at, 1s + 20ms);
  EXPECT_TRUE(bytes_equal(events[2].bytes, "\x06\x02QUOR READER V1.84 S/N 001006\x03"));
}

TEST(Readers, are_one_for_each_address_of_a_line_and_no_more) {
  Line line;
  for (int address = 0; address < 127; ++address) {
    line.add(Family::vell, address, true);
  }
  EXPECT_THROW(line.add(Family::vell, 0, true), std::length_error);
  EXPECT_EQ(line.seats().size(), 127U);
}

}  // namespace
