// Whole networks: 127 readers, mixed lines, long transfers.

#include "host.h"

#include <gtest/gtest.h>

namespace {

using readersim::Bench;
using readersim::Event;
using readersim::Family;
using readersim::Lamp;
using readersim::Setting;

class FullNetwork : public Host, public testing::Test {
 protected:
  FullNetwork() {
    for (int address = 0; address < 127; ++address) {
      line.add(readersim::all_families.at(static_cast<std::size_t>(address) % 6), address, true);
    }
  }
};

TEST_F(FullNetwork, every_reader_answers_a_poll_with_its_own_address) {
  for (int address = 0; address < 127; ++address) {
    const std::string byte(1, static_cast<char>(address + 0x80));
    EXPECT_TRUE(bytes_equal(ask(address, "?"), "\x06" + byte + "\x02\x03"));
  }
}

TEST_F(FullNetwork, polls_of_silent_garbled_and_late_readers_disturb_no_other) {
  line.find(3)->present = false;
  line.find(7)->faults = {{readersim::Fault::Kind::garbage, 3, 0, -1}};
  line.find(11)->faults = {{readersim::Fault::Kind::late, 150, 0, -1}};
  line.find(13)->faults = {{readersim::Fault::Kind::cut, 2, 0, -1}};
  for (int round = 0; round < 2; ++round) {
    for (int address = 0; address < 127; ++address) {
      const std::string good = "\x06" + std::string(1, static_cast<char>(address + 0x80)) + "\x02\x03";
      line.receive(frame(address, "?"), now);
      const std::string soon = line.take_bytes(now + 100ms);
      if (address == 3 || address == 11) {
        EXPECT_TRUE(bytes_equal(soon, "")) << address;
      } else if (address == 7) {
        EXPECT_TRUE(bytes_equal(soon.substr(3), good));
      } else {
        EXPECT_TRUE(bytes_equal(soon, address == 13 ? good.substr(0, 2) : good));
      }
      now += 200ms;
      EXPECT_TRUE(bytes_equal(line.take_bytes(now), address == 11 ? good : ""));
    }
  }
}

TEST_F(FullNetwork, cards_drawn_everywhere_are_polled_each_from_its_own_reader) {
  for (const auto& seat : line.seats()) {
    seat->reader.operating_mode = '1';
    EXPECT_TRUE(line.swipe(*seat, "card " + std::to_string(seat->reader.address), now).accepted);
  }
  for (int address = 0; address < 127; ++address) {
    const std::string byte(1, static_cast<char>(address + 0x80));
    EXPECT_TRUE(
        bytes_equal(ask(address, "?"), "\x06" + byte + "\x01" + "card " + std::to_string(address) + "\x03"));
    exchange("\x06");
  }
  for (const auto& seat : line.seats()) {
    host_moved_on(seat->reader);
    EXPECT_TRUE(seat->reader.polls.waiting.empty()) << seat->reader.address;
  }
}

TEST_F(FullNetwork, the_reset_of_all_readers_reaches_them_all) {
  ask(127, "}00");
  EXPECT_TRUE(bytes_equal(exchange("\x00U\r\xFF\x02\x00U\x03"_bytes), ""));
  for (const auto& seat : line.seats()) {
    EXPECT_EQ(seat->reader.red.at(now), Lamp::State::off) << seat->reader.address;
  }
}

TEST_F(FullNetwork, a_broadcast_list_is_stored_by_every_access_reader) {
  for (int i = 0; i < 20; ++i) {
    ask(127, "AN0070000000" + std::to_string(100 + i));
  }
  for (const auto& seat : line.seats()) {
    const bool access = readersim::access_families.has(seat->reader.family);
    EXPECT_EQ(seat->reader.access.entries().size(), access ? 20U : 0U) << seat->reader.address;
  }
}

TEST_F(FullNetwork, a_broadcast_clock_runs_the_same_in_every_reader_that_has_one) {
  ask(127, "+0104151305097");
  for (const auto& seat : line.seats()) {
    if (readersim::clock_families.has(seat->reader.family)) {
      EXPECT_EQ(seat->reader.clock.stamp(now), "010415130510");
    }
  }
}

TEST(MixedLine, plain_readers_and_network_readers_hear_what_is_theirs) {
  Host host;
  readersim::Reader& plain = host.line.add(Family::vell, 1, false).reader;
  readersim::Reader& network = host.line.add(Family::vell, 2, true).reader;
  EXPECT_TRUE(bytes_equal(host.tell("}00"), ""));
  EXPECT_EQ(plain.red.at(host.now), Lamp::State::on);
  EXPECT_EQ(network.red.at(host.now), Lamp::State::off);
  EXPECT_TRUE(bytes_equal(host.ask(2, "]00"), "\x06"));
  EXPECT_EQ(network.green.at(host.now), Lamp::State::on);
  EXPECT_EQ(plain.green.at(host.now), Lamp::State::off);
  EXPECT_TRUE(bytes_equal(host.ask(1, "]00"), ""));
}

TEST(MixedLine, everything_is_told_once) {
  Host host;
  host.line.add(Family::vell, 1, false);
  host.line.add(Family::vell, 2, true);
  host.exchange("V\r" + Host::frame(2, "}00") + "\x06");
  std::string told;
  for (const Event& event : host.events) {
    told += event.kind == Event::Kind::heard ? "<" + event.meaning + ">" : "";
  }
  EXPECT_EQ(told, "<identification><red LED on><the host acknowledges>");
}

TEST(MixedLine, a_plain_line_tells_a_network_frame_that_nobody_hears) {
  Host host;
  host.line.add(Family::vell, 0, false);
  host.exchange(Host::frame(0, "V") + "\x85\x02V\r");
  ASSERT_EQ(host.events.size(), 2U);
  EXPECT_EQ(host.events[0].meaning, "no reader here is in protocol mode");
  EXPECT_EQ(host.events[0].address, 0);
  EXPECT_EQ(host.events[1].meaning, "noise");
}

TEST(Transfer, a_whole_schedule_file_is_taken_command_by_command) {
  for (const bool network : {false, true}) {
    Host host;
    readersim::Reader& reader = host.line.add(Family::orinta, 5, network).reader;
    const auto send = [&](const std::string& command) {
      const std::string answer = network ? host.ask(5, command) : host.tell(command);
      EXPECT_TRUE(bytes_equal(answer, network ? "\x06\x02"
                                                "A\x03"
                                              : "A\r"))
          << command;
      host.exchange(network ? "\x06" : "");
    };
    const auto three = [](int number) { return (number < 10 ? "00" : "0") + std::to_string(number); };
    for (int number = 1; number <= 99; ++number) {
      for (int day = 1; day <= 7; ++day) {
        send("SA" + three(number) + std::to_string(day) + "0" + std::to_string(day) + "001" +
             std::to_string(day) + "30");
      }
      send("SS" + three(number) + (number < 99 ? three(number + 1) : "000"));
    }
    for (int number = 1; number <= 99; ++number) {
      const auto& schedule = reader.schedules.at(number);
      EXPECT_EQ(schedule.days[0], "01001130");
      EXPECT_EQ(schedule.days[6], "07001730");
      EXPECT_EQ(schedule.associated, number < 99 ? number + 1 : 0);
    }
  }
}

TEST(Transfer, a_long_access_list_goes_in_and_comes_out_in_its_order) {
  Host host{{.answer_delay = 0ms}};
  readersim::Reader& reader = host.line.add(Family::orin, 5, true).reader;
  std::vector<std::string> sent;
  for (int i = 0; i < 5000; ++i) {
    std::string id = std::to_string(i * 7919 % 1000003);
    id.resize(10, ' ');
    const std::string digits = std::to_string(1000 + i % 100).substr(1);
    EXPECT_EQ(Host::data(host.ask(5, "AC" + digits + id)), "A");
    sent.push_back(id + static_cast<char>(i % 100));
  }
  EXPECT_EQ(reader.access.entries().size(), 5000U);
  EXPECT_TRUE(bytes_equal(host.ask(5, "ur"), "\x06"));
  for (const std::string& record : sent) {
    ASSERT_TRUE(bytes_equal(host.ask(5, "u"), "\x06\x02" + record + "\x03"));
  }
  EXPECT_EQ(Host::data(host.ask(5, "u")), "END");
}

TEST(Transfer, begun_again_starts_at_the_top_whatever_was_fetched_before) {
  Host host;
  readersim::Reader& reader = host.line.add(Family::quor, 5, true).reader;
  reader.log.records = {"one", "two", "three"};
  EXPECT_EQ(Host::data(host.ask(5, "l")), "one");
  EXPECT_EQ(Host::data(host.ask(5, "l")), "two");
  host.ask(5, "lr");
  EXPECT_EQ(Host::data(host.ask(5, "l")), "one");
  host.ask(5, "cl");
  EXPECT_EQ(Host::data(host.ask(5, "l")), "END");
}

TEST(Transfer, of_two_readers_at_once_keeps_their_places_apart) {
  Host host;
  host.line.add(Family::quor, 5, true).reader.log.records = {"five one", "five two"};
  host.line.add(Family::quor, 6, true).reader.log.records = {"six one", "six two"};
  EXPECT_EQ(Host::data(host.ask(5, "l")), "five one");
  EXPECT_EQ(Host::data(host.ask(6, "l")), "six one");
  EXPECT_EQ(Host::data(host.ask(5, "l")), "five two");
  EXPECT_EQ(Host::data(host.ask(6, "l")), "six two");
}

}  // namespace
