#include "simulator/console.h"

#include "host.h"
#include "simulator/report.h"

#include <gtest/gtest.h>

namespace {

using readersim::Console;
using readersim::Family;
using readersim::Fault;
using readersim::Lamp;
using readersim::Seat;
using readersim::Setting;

class ConsoleTest : public Host, public testing::Test {
 protected:
  std::string say(std::string_view text) { return console.obey(text, now); }

  Seat& vell = line.add(Family::vell, 3, true);
  Seat& orin = line.add(Family::orin, 5, true);
  Seat& kesh = line.add(Family::ferro_kesh, 7, true);
  bool asked_to_quit = false;
  Console console{line, 1, {[this] { asked_to_quit = true; }}};
};

TEST_F(ConsoleTest, says_nothing_to_an_empty_line_or_a_remark) {
  EXPECT_EQ(say(""), "");
  EXPECT_EQ(say("   \t"), "");
  EXPECT_EQ(say("# swipe 5 4711"), "");
}

TEST_F(ConsoleTest, tells_a_mistake_and_does_nothing) {
  EXPECT_EQ(say("bla"), "? no command \"bla\", try help\n");
  EXPECT_EQ(say("swipe 5"), "? usage: swipe A TEXT           draw a card with that text (\\x41 is a byte)\n");
  EXPECT_EQ(say("show 9"), "? no reader has address 9\n");
  EXPECT_EQ(say("show x"), "? \"x\" is no number from 0 to 126\n");
  EXPECT_EQ(say("show 127"), "? \"127\" is no number from 0 to 126\n");
  EXPECT_EQ(say("swipe 5 \\q"), "? a backslash is written \\\\, a byte \\x41\n");
}

TEST_F(ConsoleTest, help_names_every_command_and_every_fault) {
  const std::string text = say("help");
  for (const char* word :
       {"show", "swipe", "set", "fault", "faults", "present", "answer", "grant", "enrol", "list", "schedule",
        "log", "fill", "power", "note", "hangup", "replug", "quit", "help"}) {
    EXPECT_NE(text.find("\n  " + std::string{word} + ' '), std::string::npos) << word;
  }
  for (const readersim::FaultTraits& fault : readersim::all_faults()) {
    EXPECT_NE(text.find(fault.usage), std::string::npos) << fault.name;
    EXPECT_TRUE(fault.usage.starts_with(fault.name));
  }
}

TEST_F(ConsoleTest, show_gives_one_line_about_each_reader) {
  ask(5, "}00");
  EXPECT_EQ(say("show"),
            "003  Vell        network   Vell   mode  9600 8N   red off       green off       relay off\n"
            "005  Orin        network   Orin   mode  9600 8N   red on        green off       relay off\n"
            "007  Ferro Kesh  network   Kesh   mode  9600 8N   red off       green off       relay off\n");
}

TEST_F(ConsoleTest, show_gives_everything_about_one_reader) {
  (void)orin.reader.clock.set("0104151305097", now);
  say("fault 5 cut 3");
  EXPECT_EQ(
      say("show 5"),
      "family: Orin\naddress: 5\nidentification: ORIN READER V5.11 S/N 001002\npresent: on\nprotocol: on\n"
      "mode: Orin\nline: 9600 8N\nclock: 01-04-15 13:05:09 Sunday\nred: off\ngreen: off\nrelay: off\n"
      "relay operations: 0\nspeaker soundings: 0\nsense 1: off\nsense 2: off\nsense delay: 0\n"
      "power up red: off\npower up green: off\ngood read red: off\ngood read green: 1\n"
      "good read relay: off\ngood read speaker: 20\nc/r terminator: on\ncode 39: on\ni 2 of 5: off\n"
      "2 of 5: off\nupca: off\nean13: off\ncode 128: off\ncodabar: off\ntrack 1: off\ntrack 2: on\n"
      "track 1 start/stop: off\ntrack 1 character set: 1\ntrack 2 start/stop: off\ntrack 2 c start: off\n"
      "first track sent: 1\nrecord length: 10\nrelay time: 5\nred led time: 2\nrs232 logging: off\n"
      "access entries: 0\nschedules: 0\nlog records: 0\nreads waiting for a poll: 0\nfault: cut 3, 1 "
      "answer\n");
}

TEST_F(ConsoleTest, swipe_draws_a_card_with_any_bytes) {
  EXPECT_EQ(say("swipe 3 47 11\\x0D\\\\\\xff"), "waits for a poll\n");
  EXPECT_TRUE(bytes_equal(vell.reader.polls.waiting.at(0), "47 11\r\\\xFF"));
}

TEST_F(ConsoleTest, set_changes_what_a_reader_has_of_its_own) {
  EXPECT_EQ(say("set 5 protocol off"), "");
  EXPECT_FALSE(orin.reader.protocol_mode);
  EXPECT_EQ(say("set 5 mode Accum"), "");
  EXPECT_EQ(orin.reader.operating_mode, '5');
  EXPECT_EQ(say("set 5 mode 1"), "");
  EXPECT_EQ(orin.reader.operating_mode, '1');
  EXPECT_EQ(say("set 5 baud 1200"), "");
  EXPECT_EQ(say("set 5 format 7O"), "");
  EXPECT_EQ(orin.reader.format, (readersim::LineFormat{1200, readersim::DataFormat::seven_odd}));
  EXPECT_EQ(say("set 5 identification X \\xC4"), "");
  EXPECT_EQ(orin.reader.identification, "X \xC4");
  EXPECT_EQ(say("set 5 clock 0104151305097"), "");
  EXPECT_EQ(orin.reader.clock.stamp(now), "010415130509");
  EXPECT_EQ(say("set 5 address 42"), "");
  EXPECT_EQ(orin.reader.address, 42);
}

TEST_F(ConsoleTest, set_changes_parameters_by_the_name_that_show_gives_them) {
  EXPECT_EQ(say("set 5 sense 1 auto"), "");
  EXPECT_EQ(orin.reader.settings.get(Setting::sense_1), "auto");
  EXPECT_EQ(say("set all good read red 7"), "");
  EXPECT_EQ(vell.reader.settings.number(Setting::good_read_red), 7);
  EXPECT_EQ(kesh.reader.settings.number(Setting::good_read_red), 7);
}

TEST_F(ConsoleTest, set_finds_every_parameter_though_its_name_may_begin_with_that_of_another) {
  for (const Family family : readersim::all_families) {
    Seat& seat = line.add(family, 50 + static_cast<int>(family), true);
    const std::string address = std::to_string(seat.reader.address);
    std::vector<std::string> lines;
    for (const readersim::SettingTraits& each : readersim::all_settings()) {
      if (each.families.has(family)) {
        const std::string name{each.name};
        const std::string value = std::to_string(100 + lines.size());
        EXPECT_EQ(say("set " + address + " " + name + " " + value), "");
        lines.push_back("\n" + name + ": " + value + "\n");
      }
    }
    const std::string shown = say("show " + address);
    for (const std::string& each : lines) {
      EXPECT_NE(shown.find(each), std::string::npos) << each;
    }
  }
}

TEST_F(ConsoleTest, set_refuses_what_a_reader_does_not_have) {
  EXPECT_EQ(say("set 5 age 1 7"), "? this reader has no \"age 1 7\", see show\n");
  EXPECT_EQ(say("set 5 baud 9601"), "? the baud rates are 1200, 2400, 4800, 9600 and 19200\n");
  EXPECT_EQ(say("set 5 mode 2"), "? the modes of this reader are 135\n");
  EXPECT_EQ(say("set 5 format 8E"), "? a format is 8N, 7E or 7O\n");
  EXPECT_EQ(say("set 5 protocol maybe"), "? \"maybe\" is neither on nor off\n");
  EXPECT_EQ(say("set 5 clock now"), "? a clock is set as YYMMDDhhmmssD, D from 1 Monday to 7 Sunday\n");
}

TEST_F(ConsoleTest, fault_takes_every_kind_with_its_numbers_and_a_count) {
  for (const readersim::FaultTraits& kind : readersim::all_faults()) {
    std::string command = "fault 5 " + std::string{kind.name};
    for (int i = 0; i < kind.numbers; ++i) {
      command += ' ' + std::to_string(4 + i);
    }
    EXPECT_EQ(say(command), "") << command;
    EXPECT_EQ(say(command + " 3"), "") << command;
    EXPECT_EQ(say(command + " always"), "") << command;
    ASSERT_EQ(orin.faults.size(), 3U);
    EXPECT_EQ(orin.faults[0].kind, kind.kind);
    EXPECT_EQ(orin.faults[0].n, kind.numbers > 0 ? 4 : 0);
    EXPECT_EQ(orin.faults[0].amount, kind.numbers > 1 ? 5 : 0);
    EXPECT_EQ(orin.faults[0].times, 1);
    EXPECT_EQ(orin.faults[1].times, 3);
    EXPECT_EQ(orin.faults[2].times, -1);
    EXPECT_EQ(say("fault 5 clear"), "");
    EXPECT_TRUE(orin.faults.empty());
  }
}

TEST_F(ConsoleTest, faults_are_listed_and_cleared_for_all) {
  EXPECT_EQ(say("faults"), "no faults\n");
  say("fault 5 drop-ack 3");
  say("fault all late 200 always");
  EXPECT_EQ(say("faults"),
            "3: late 200, every answer\n5: drop-ack, 3 answers\n5: late 200, every answer\n7: late 200, "
            "every answer\n");
  say("fault clear");
  EXPECT_EQ(say("faults"), "no faults\n");
}

TEST_F(ConsoleTest, a_fault_that_is_none_is_refused) {
  EXPECT_EQ(say("fault 5 boom"), "? no such fault, try help\n");
  EXPECT_EQ(say("fault 5"), "? no such fault, try help\n");
  EXPECT_EQ(say("fault 5 pause 2"),
            "? usage: fault A pause N MS       a pause of MS milliseconds before byte N\n");
  EXPECT_EQ(say("fault 5 cut -1"), "? \"-1\" is no number from 0 to 1000000\n");
  EXPECT_EQ(say("fault 5 cut 1 0"), "? \"0\" is no number from 1 to 2147483647\n");
  EXPECT_EQ(say("fault 5 cut 1 2 3"), "? usage: fault A cut N            only the first N bytes come\n");
  EXPECT_TRUE(orin.faults.empty());
}

TEST_F(ConsoleTest, present_plugs_readers_in_and_out) {
  EXPECT_EQ(say("present 5 off"), "");
  EXPECT_EQ(say("present"), "3: on\n5: off\n7: on\n");
  EXPECT_TRUE(bytes_equal(ask(5, "V"), ""));
  EXPECT_EQ(say("present 5 on"), "");
  EXPECT_FALSE(ask(5, "V").empty());
}

TEST_F(ConsoleTest, answer_changes_the_letter_of_the_next_downloads) {
  EXPECT_EQ(say("answer 5 N 2"), "");
  EXPECT_EQ(data(ask(5, "AC0001234567890")), "N");
  EXPECT_EQ(data(ask(5, "AC0001234567890")), "N");
  EXPECT_EQ(data(ask(5, "AC0001234567890")), "A");
  say("answer 5 X always");
  EXPECT_EQ(data(ask(5, "AC0001234567890")), "X");
  EXPECT_EQ(data(ask(5, "AC0001234567890")), "X");
  say("answer 5 A 0");
  EXPECT_EQ(data(ask(5, "AC0001234567890")), "A");
}

TEST_F(ConsoleTest, grant_and_list_and_schedule_and_log_serve_the_access_reader) {
  EXPECT_EQ(say("grant 5 7 4711"), "");
  EXPECT_EQ(say("grant 5 0 Big Boss 12345"), "");
  EXPECT_EQ(say("list 5"), "4711       | 7\nBig Boss 1 | 0\n");
  ask(5, "SA005108001700");
  ask(5, "SS005007");
  EXPECT_EQ(say("schedule 5 5"),
            "08001700 00000000 00000000 00000000 00000000 00000000 00000000 associated 7\n");
  orin.reader.log.records = {"one", std::string{"two\x03"}};
  EXPECT_EQ(say("log 5"), "one\ntwo<ETX>\n");
  EXPECT_EQ(say("list 7"), "? only Orin and Orinta readers have that\n");
  EXPECT_EQ(say("grant 3 0 1"), "? only Orin and Orinta readers have that\n");
  EXPECT_EQ(say("schedule 5 100"), "? \"100\" is no number from 1 to 99\n");
}

TEST_F(ConsoleTest, enrol_and_fill_make_up_as_much_as_is_asked_for) {
  EXPECT_EQ(say("enrol 5 300"), "300 entries\n");
  EXPECT_EQ(say("fill 7 20000"), "20000 records\n");
  EXPECT_EQ(kesh.reader.log.records.size(), 20000U);
  EXPECT_EQ(say("fill 7 10 498"), "10 records\n");
  EXPECT_EQ(kesh.reader.log.records.at(4).size(), 498U);
  EXPECT_EQ(say("fill 7 0"), "0 records\n");
  EXPECT_EQ(say("fill 3 10"), "? a Vell reader keeps no records\n");
}

TEST_F(ConsoleTest, power_starts_a_reader_anew) {
  ask(5, "}00");
  EXPECT_EQ(say("power 5"), "");
  EXPECT_EQ(orin.reader.red.at(now), Lamp::State::off);
}

TEST_F(ConsoleTest, hangup_and_replug_and_note_reach_the_line) {
  say("hangup");
  EXPECT_TRUE(line.hung_up());
  say("replug");
  EXPECT_FALSE(line.hung_up());
  say("note now the door");
  EXPECT_EQ(events.back().meaning, "now the door");
}

TEST_F(ConsoleTest, quit_is_passed_on) {
  EXPECT_FALSE(asked_to_quit);
  EXPECT_EQ(say("quit"), "");
  EXPECT_TRUE(asked_to_quit);
  Console alone{line, 1};
  EXPECT_EQ(alone.obey("quit", now), "");
}

TEST(Words, are_taken_apart_and_put_together) {
  Host host;
  Console console{host.line, 1};
  host.line.add(Family::ferro_kesh, 0, false);
  (void)console.obey("  swipe\t0   a   b  \r\n", host.now);
  EXPECT_TRUE(host.line.find(0)->reader.log.records.at(0).ends_with("a b"));
}

TEST(Description, of_formats_and_lamps) {
  using readersim::DataFormat;
  EXPECT_EQ(describe(readersim::LineFormat{1200, DataFormat::seven_even}), "1200 7E");
  EXPECT_EQ(describe(readersim::LineFormat{19200, DataFormat::seven_odd}), "19200 7O");
  EXPECT_EQ(describe(Lamp::State::blinking), "blinking");
}

}  // namespace
