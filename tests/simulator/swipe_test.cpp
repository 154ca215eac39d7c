#include "host.h"

#include <gtest/gtest.h>

namespace {

using readersim::Family;
using readersim::Lamp;
using readersim::Seat;
using readersim::Setting;
using readersim::Swipe;

/// A reader whose clock stands at 15 April 2001, a Sunday, 13:05:09, when the test begins.
class Swiped : public Host, public testing::Test {
 protected:
  Seat& put(Family family, bool network) {
    Seat& seat = line.add(family, 5, network);
    (void)seat.reader.clock.set("0104151305097", now);
    return seat;
  }
  /// Draws the card; what the host gets by itself stays in `heard`.
  Swipe draw(Seat& seat, std::string_view card) {
    Swipe result = line.swipe(seat, card, now);
    heard = line.take_bytes(now);
    return result;
  }
  std::string heard;
};

TEST_F(Swiped, a_vell_reader_on_a_plain_line_sends_the_card_at_once) {
  Seat& seat = put(Family::vell, false);
  EXPECT_TRUE(draw(seat, "4711").accepted);
  EXPECT_TRUE(bytes_equal(heard, "4711\r"));
  EXPECT_EQ(seat.reader.green.at(now), Lamp::State::on);
  EXPECT_EQ(seat.reader.green.at(now + 1s), Lamp::State::off);
  EXPECT_EQ(seat.reader.sounder_operations, 1);
  tell(nul("ICD"));
  draw(seat, "4711");
  EXPECT_TRUE(bytes_equal(heard, "4711"));
}

TEST_F(Swiped, what_a_reader_at_another_speed_sends_is_garbled) {
  Seat& seat = put(Family::vell, false);
  line.set_host_baud(1200);
  draw(seat, "4711");
  EXPECT_EQ(heard.size(), 5U);
  EXPECT_NE(heard, "4711\r");
}

TEST_F(Swiped, good_read_settings_say_what_lights_and_closes) {
  Seat& seat = put(Family::vell, false);
  for (const char* command : {"LRE07", "LGD", "RTE09", "STD"}) {
    tell(nul(command));
  }
  draw(seat, "4711");
  EXPECT_EQ(seat.reader.red.at(now + 6s), Lamp::State::on);
  EXPECT_EQ(seat.reader.red.at(now + 7s), Lamp::State::off);
  EXPECT_EQ(seat.reader.green.at(now), Lamp::State::off);
  EXPECT_EQ(seat.reader.relay.at(now + 8s), Lamp::State::on);
  EXPECT_EQ(seat.reader.relay_operations, 1);
  EXPECT_EQ(seat.reader.sounder_operations, 0);
}

TEST_F(Swiped, a_card_on_the_network_waits_for_a_poll) {
  Seat& seat = put(Family::vell, true);
  EXPECT_TRUE(bytes_equal(ask(5, "?"), "\x06\x85\x02\x03"));  // nothing new
  draw(seat, "A");
  EXPECT_TRUE(bytes_equal(heard, ""));
  EXPECT_TRUE(bytes_equal(ask(5, "?"),
                          "\x06\x85\x01"
                          "A\x03"));
  exchange("\x06");
  EXPECT_TRUE(bytes_equal(ask(5, "?"), "\x06\x85\x04\x03"));  // no more
  exchange("\x06");
  EXPECT_TRUE(bytes_equal(ask(5, "?"), "\x06\x85\x02\x03"));
}

TEST_F(Swiped, cards_are_polled_in_order_and_each_until_it_is_acknowledged_once) {
  Seat& seat = put(Family::vell, true);
  draw(seat, "one");
  draw(seat, "two");
  const std::string first = "\x06\x85\x01one\x03";
  EXPECT_TRUE(bytes_equal(ask(5, "?"), first));
  EXPECT_TRUE(bytes_equal(ask(5, "?"), first));  // no acknowledge: again
  exchange("\x06\x06");
  EXPECT_TRUE(bytes_equal(ask(5, "?"), first));  // two: the host could not read it
  exchange("\x06");
  EXPECT_TRUE(bytes_equal(ask(5, "?"), "\x06\x85\x01two\x03"));
}

TEST_F(Swiped, the_acknowledge_of_another_reader_takes_nothing_away) {
  Seat& seat = put(Family::vell, true);
  line.add(Family::vell, 6, true);
  draw(seat, "one");
  ask(5, "?");
  ask(6, "?");
  exchange("\x06");
  EXPECT_TRUE(bytes_equal(ask(5, "?"), "\x06\x85\x01one\x03"));
}

TEST_F(Swiped, a_vell_reader_refuses_a_card_when_too_many_wait) {
  Seat& seat = put(Family::vell, true);
  for (std::size_t i = 0; i < readersim::PollQueue::capacity; ++i) {
    EXPECT_TRUE(draw(seat, std::to_string(i)).accepted);
  }
  EXPECT_FALSE(draw(seat, "one too many").accepted);
  EXPECT_EQ(seat.reader.red.at(now), Lamp::State::on);
  EXPECT_EQ(seat.reader.polls.waiting.front(), "0");
}

TEST_F(Swiped, a_listed_card_closes_the_relay_and_lights_green_for_the_relay_time) {
  Seat& seat = put(Family::orin, true);
  ask(5, "\"07");
  ask(5, "AC0004711      ");
  const Swipe result = draw(seat, "4711");
  EXPECT_TRUE(result.accepted);
  EXPECT_EQ(result.meaning, "granted, schedule 0");
  EXPECT_EQ(seat.reader.relay.at(now + 6s), Lamp::State::on);
  EXPECT_EQ(seat.reader.relay.at(now + 7s), Lamp::State::off);
  EXPECT_EQ(seat.reader.green.at(now + 6s), Lamp::State::on);
  EXPECT_EQ(seat.reader.red.at(now), Lamp::State::off);
  EXPECT_EQ(seat.reader.relay_operations, 1);
}

TEST_F(Swiped, a_card_that_is_not_listed_lights_red_for_the_red_led_time) {
  Seat& seat = put(Family::orin, true);
  ask(5, "'03");
  const Swipe result = draw(seat, "4711");
  EXPECT_FALSE(result.accepted);
  EXPECT_EQ(result.meaning, "refused, not listed");
  EXPECT_EQ(seat.reader.red.at(now + 2s), Lamp::State::on);
  EXPECT_EQ(seat.reader.red.at(now + 3s), Lamp::State::off);
  EXPECT_EQ(seat.reader.relay_operations, 0);
}

TEST_F(Swiped, a_card_longer_than_the_record_length_counts_by_its_beginning) {
  Seat& seat = put(Family::orin, true);
  ask(5, "\\04");
  ask(5, "AC0004711");
  EXPECT_TRUE(draw(seat, "47119999").accepted);
  EXPECT_FALSE(draw(seat, "471").accepted);
}

TEST_F(Swiped, the_schedule_and_the_reader_s_own_clock_decide) {
  Seat& seat = put(Family::orinta, true);
  ask(5, "AC0024711      ");
  ask(5, "SA002712001310");  // Sunday 12:00 to 13:10
  EXPECT_TRUE(draw(seat, "4711").accepted);
  now += 6min;
  const Swipe late = draw(seat, "4711");
  EXPECT_FALSE(late.accepted);
  EXPECT_EQ(late.meaning, "refused by schedule 2");
  ask(5, "SS002003");
  EXPECT_FALSE(draw(seat, "4711").accepted);
  ask(5, "SA003713002359");
  EXPECT_TRUE(draw(seat, "4711").accepted);
  ask(5, "+0104161305091");  // it is Monday now
  EXPECT_FALSE(draw(seat, "4711").accepted);
}

TEST_F(Swiped, the_access_log_holds_time_result_and_card) {
  Seat& seat = put(Family::orin, true);
  ask(5, "AC0004711      ");
  now = 1s;
  draw(seat, "4711");
  now += 51s;
  draw(seat, "12345678901234");
  ASSERT_EQ(seat.reader.log.records.size(), 2U);
  EXPECT_EQ(seat.reader.log.records[0], "010415130509 G 4711");
  EXPECT_EQ(seat.reader.log.records[1], "010415130600 B 1234567890");
  EXPECT_TRUE(bytes_equal(ask(5, "lr"), "\x06"));
  EXPECT_EQ(data(ask(5, "l")), "010415130509 G 4711");
  EXPECT_EQ(data(ask(5, "l")), "010415130600 B 1234567890");
  EXPECT_EQ(data(ask(5, "l")), "END");
  EXPECT_EQ(data(ask(5, "l")), "END");
}

TEST_F(Swiped, an_orinta_logs_refused_cards_only_while_bad_logging_is_on) {
  Seat& seat = put(Family::orinta, true);
  draw(seat, "4711");
  EXPECT_EQ(seat.reader.log.records.size(), 1U);
  ask(5, ":0");
  draw(seat, "4711");
  EXPECT_EQ(seat.reader.log.records.size(), 1U);
}

TEST_F(Swiped, rs232_logging_sends_each_log_record_on_a_plain_line) {
  Seat& seat = put(Family::orin, false);
  draw(seat, "4711");
  EXPECT_TRUE(bytes_equal(heard, ""));
  tell("s1");
  now = 1s;
  draw(seat, "4711");
  EXPECT_TRUE(bytes_equal(heard, "010415130509 B 4711\r"));
}

TEST_F(Swiped, accumulate_mode_logs_without_deciding) {
  Seat& seat = put(Family::orin, false);
  tell("|5");
  now = 1s;
  EXPECT_TRUE(draw(seat, "4711").accepted);
  EXPECT_EQ(seat.reader.log.records.at(0), "010415130509 A 4711");
  EXPECT_EQ(seat.reader.relay_operations, 0);
}

TEST_F(Swiped, vell_mode_makes_any_reader_pass_cards_on) {
  Seat& seat = put(Family::ferro_kesh, false);
  tell("|1");
  draw(seat, "4711");
  EXPECT_TRUE(bytes_equal(heard, "4711\r"));
  EXPECT_TRUE(seat.reader.log.records.empty());
}

TEST_F(Swiped, a_ferro_kesh_collects_with_or_without_time_stamp_up_to_its_record_length) {
  Seat& seat = put(Family::ferro_kesh, false);
  draw(seat, "4711");
  EXPECT_EQ(seat.reader.log.records.at(0), "0104151305094711");
  tell("\\0060");
  EXPECT_TRUE(seat.reader.log.records.empty());
  draw(seat, "12345678");
  EXPECT_EQ(seat.reader.log.records.at(0), "123456");
}

TEST_F(Swiped, a_glint_kesh_puts_identifiers_and_commas_where_they_are_set) {
  Seat& seat = put(Family::glint_kesh, false);
  tell(nul("1AB   "));
  tell(nul("2CDEFG"));
  now = 1s;
  tell("\\020111");
  tell("y1");
  now = 1s;
  draw(seat, "47,11");
  EXPECT_EQ(seat.reader.log.records.at(0), "AB   ,CDEFG,010415130509,47,11");
  tell("\\020001");
  tell("y0");
  draw(seat, "4711");
  EXPECT_EQ(seat.reader.log.records.at(0), "CDEFG4711");
}

TEST_F(Swiped, duplicate_suppression_keeps_the_same_card_out_twice_running) {
  Seat& seat = put(Family::glint_kesh, false);
  tell("\\020000");
  draw(seat, "1");
  draw(seat, "1");
  EXPECT_EQ(seat.reader.log.records.size(), 2U);
  tell("d1");
  EXPECT_FALSE(draw(seat, "1").accepted);
  EXPECT_TRUE(draw(seat, "2").accepted);
  EXPECT_TRUE(draw(seat, "1").accepted);
  EXPECT_EQ(seat.reader.log.records, (std::vector<std::string>{"1", "1", "2", "1"}));
}

TEST_F(Swiped, a_card_is_no_duplicate_of_one_whose_record_was_cleared) {
  Seat& seat = put(Family::glint_kesh, false);
  tell("\\020000");
  tell("d1");
  draw(seat, "1");
  EXPECT_FALSE(draw(seat, "1").accepted);
  tell("cl");
  EXPECT_TRUE(seat.reader.log.records.empty());
  EXPECT_TRUE(draw(seat, "1").accepted);
  EXPECT_FALSE(draw(seat, "1").accepted);
  EXPECT_EQ(seat.reader.log.records, std::vector<std::string>{"1"});
}

TEST_F(Swiped, a_full_reader_refuses_cards_until_it_is_cleared) {
  Seat& seat = put(Family::ferro_kesh, true);
  ask(5, "r00002");
  draw(seat, "1");
  draw(seat, "2");
  EXPECT_FALSE(draw(seat, "3").accepted);
  EXPECT_EQ(seat.reader.red.at(now), Lamp::State::on);
  EXPECT_TRUE(bytes_equal(ask(5, "cl"), "\x06"));
  EXPECT_TRUE(draw(seat, "3").accepted);
}

TEST_F(Swiped, a_quor_collects_while_its_logging_is_on) {
  Seat& seat = put(Family::quor, false);
  draw(seat, "4711");
  EXPECT_EQ(seat.reader.log.records.at(0), "0104151305094711");
  tell(nul("+0"));
  EXPECT_TRUE(draw(seat, "4712").accepted);
  EXPECT_EQ(seat.reader.log.records.size(), 1U);
}

TEST_F(Swiped, collected_records_are_served_until_END_and_from_the_top_again) {
  for (const Family family : {Family::ferro_kesh, Family::glint_kesh, Family::quor}) {
    Host host;
    readersim::Reader& reader = host.line.add(family, 5, true).reader;
    reader.log.records = {"one", "", std::string("two\x03"), "thr,ee"};
    for (int round = 0; round < 2; ++round) {
      EXPECT_TRUE(bytes_equal(host.ask(5, "lr"), "\x06"));
      EXPECT_TRUE(bytes_equal(host.ask(5, "l"), "\x06\x02one\x03"));
      EXPECT_TRUE(bytes_equal(host.ask(5, "l"), "\x06\x02\x03"));
      EXPECT_TRUE(bytes_equal(host.ask(5, "l"), "\x06\x02two\x03\x03"));
      EXPECT_TRUE(bytes_equal(host.ask(5, "l"), "\x06\x02thr,ee\x03"));
      EXPECT_TRUE(bytes_equal(host.ask(5, "l"),
                              "\x06\x02"
                              "END\x03"));
    }
  }
}

TEST_F(Swiped, an_unplugged_reader_reads_no_card) {
  Seat& seat = put(Family::ferro_kesh, false);
  seat.present = false;
  EXPECT_FALSE(draw(seat, "4711").accepted);
  EXPECT_TRUE(seat.reader.log.records.empty());
}

TEST_F(Swiped, tells_each_card_and_what_came_of_it) {
  Seat& seat = put(Family::orin, true);
  draw(seat, "4711");
  EXPECT_EQ(events.back().meaning, "card \"4711\" refused, not listed");
  EXPECT_EQ(events.back().address, 5);
  draw(seat, "\x1B[31m\xE9");
  EXPECT_EQ(events.back().meaning, "card \"<ESC>[31m<E9>\" refused, not listed");
}

}  // namespace
