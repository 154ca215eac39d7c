// What every family hears, command by command: on the network the answer is one ACK or nothing, on a
// plain line nothing, and the parameter is in the reader afterwards or is not.

#include "host.h"
#include "simulator/command.h"

#include <gtest/gtest.h>
#include <ostream>

namespace {

using readersim::DataFormat;
using readersim::Family;
using readersim::Lamp;
using readersim::Setting;

constexpr const char* all = "VOTFGQ";  // Vell, Orin, orinTa, Ferro kesh, Glint kesh, Quor
constexpr const char* with_sense = "VOT";
constexpr const char* with_keyboard = "VFGQ";
constexpr const char* with_relay = "VOTQ";
constexpr const char* with_display = "VTFQ";

struct Row {
  std::string command;
  const char* families;
  Setting setting;
  const char* value;
};

void PrintTo(const Row& row, std::ostream* stream) {
  *stream << row.command;
}

Family family_of(char letter) {
  return readersim::all_families.at(std::string_view{all}.find(letter));
}

class Parameter : public testing::TestWithParam<Row> {};

TEST_P(Parameter, is_acknowledged_and_kept_by_the_families_that_have_it_on_the_network) {
  const Row& row = GetParam();
  for (const char letter : std::string_view{all}) {
    Host host;
    readersim::Reader& reader = host.line.add(family_of(letter), 5, true).reader;
    const std::string before = reader.settings.get(row.setting);
    const bool has = std::string_view{row.families}.find(letter) != std::string_view::npos;
    EXPECT_TRUE(bytes_equal(host.ask(5, row.command), has ? "\x06" : "")) << letter;
    EXPECT_EQ(reader.settings.get(row.setting), has ? row.value : before) << letter;
  }
}

TEST_P(Parameter, is_kept_without_an_answer_on_a_plain_line) {
  const Row& row = GetParam();
  Host host;
  readersim::Reader& reader = host.line.add(family_of(row.families[0]), 0, false).reader;
  EXPECT_TRUE(bytes_equal(host.tell(row.command), ""));
  EXPECT_EQ(reader.settings.get(row.setting), row.value);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, Parameter,
    testing::Values(Row{nul("DA1"), with_sense, Setting::sense_1, "auto"},
                    Row{nul("DA2"), with_sense, Setting::sense_2, "auto"},
                    Row{nul("D07"), with_sense, Setting::sense_delay, "7"},
                    Row{nul("KSD"), with_keyboard, Setting::keyboard_beep, "off"},
                    Row{nul("KP042"), with_keyboard, Setting::keyboard_prefix, "42"},
                    Row{nul("LRO"), all, Setting::power_up_red, "on"},
                    Row{nul("LGO"), all, Setting::power_up_green, "on"},
                    Row{nul("LRE03"), all, Setting::good_read_red, "3"},
                    Row{nul("LGE00"), all, Setting::good_read_green, "0"},
                    Row{nul("LGD"), all, Setting::good_read_green, "off"},
                    Row{nul("RTE12"), with_relay, Setting::good_read_relay, "12"},
                    Row{nul("STE49"), all, Setting::good_read_speaker, "49"},
                    Row{nul("STD"), all, Setting::good_read_speaker, "off"},
                    Row{nul("ICD"), all, Setting::cr_terminator, "off"},
                    Row{nul("AF"), all, Setting::code_39, "off"},
                    Row{nul("HO"), all, Setting::i_2_of_5, "on"},
                    Row{nul("GO"), all, Setting::two_of_5, "on"}, Row{nul("NO"), all, Setting::upca, "on"},
                    Row{nul("EO"), all, Setting::ean13, "on"}, Row{nul("BO"), all, Setting::code_128, "on"},
                    Row{nul("CO"), all, Setting::codabar, "on"}, Row{nul("M1O"), all, Setting::track_1, "on"},
                    Row{nul("M2F"), all, Setting::track_2, "off"},
                    Row{nul("M1SE"), all, Setting::track_1_start_stop, "on"},
                    Row{nul("M1C2"), all, Setting::track_1_characters, "2"},
                    Row{nul("M2SE"), all, Setting::track_2_start_stop, "on"},
                    Row{nul("M2CO"), all, Setting::track_2_c_start, "on"},
                    Row{nul("M21"), all, Setting::first_track_sent, "2"}));

INSTANTIATE_TEST_SUITE_P(
    Setups, Parameter,
    testing::Values(
        Row{"D1234ABCD", with_display, Setting::display, "1234ABCD"},
        Row{"T5678", with_display, Setting::clock_display, "5678"},
        Row{"\\08", "OT", Setting::record_length, "8"}, Row{"\\1501", "F", Setting::record_length, "150"},
        Row{"\\0500", "F", Setting::time_stamping, "off"}, Row{"\\020010", "G", Setting::record_length, "20"},
        Row{"\\020010", "G", Setting::time_stamping, "off"}, Row{"\\020010", "G", Setting::id_1_sent, "on"},
        Row{"\\020101", "G", Setting::id_2_sent, "on"}, Row{"\"99", "OT", Setting::relay_time, "99"},
        Row{"'15", "OT", Setting::red_led_time, "15"}, Row{"r02000", "F", Setting::max_records, "2000"},
        Row{"s1", "OFG", Setting::rs232_logging, "on"}, Row{":0", "T", Setting::bad_logging, "off"},
        Row{"d1", "FG", Setting::duplicate_suppression, "on"},
        Row{"y1", "FG", Setting::comma_delimited, "on"}, Row{nul("1AB   "), "G", Setting::id_1, "AB   "},
        Row{nul("2\xC4"
                "BCDE"),
            "G", Setting::id_2,
            "\xC4"
            "BCDE"},
        Row{nul("+0"), "Q", Setting::logging, "off"}, Row{nul("=1"), "Q", Setting::printing, "on"},
        Row{nul("(21"), "Q", Setting::age_2, "21"}));

/// A command that undoes another: what it leaves behind, whatever stood there.
struct Undo {
  std::string first;
  std::string second;
  Setting setting;
  const char* value;
};

void PrintTo(const Undo& row, std::ostream* stream) {
  *stream << row.second;
}

class Undone : public testing::TestWithParam<Undo> {};

TEST_P(Undone, leaves_its_own_value) {
  for (const char letter : std::string_view{all}) {
    Host host;
    readersim::Reader& reader = host.line.add(family_of(letter), 5, true).reader;
    if (readersim::traits(GetParam().setting).families.has(reader.family)) {
      EXPECT_TRUE(bytes_equal(host.ask(5, GetParam().first), "\x06")) << letter;
      EXPECT_NE(reader.settings.get(GetParam().setting), GetParam().value) << letter;
      EXPECT_TRUE(bytes_equal(host.ask(5, GetParam().second), "\x06")) << letter;
      EXPECT_EQ(reader.settings.get(GetParam().setting), GetParam().value) << letter;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Commands, Undone,
                         testing::Values(Undo{nul("DA1"), nul("DA0"), Setting::sense_1, "off"},
                                         Undo{nul("DA2"), nul("DA0"), Setting::sense_2, "off"},
                                         Undo{nul("KSD"), nul("KSE"), Setting::keyboard_beep, "on"},
                                         Undo{nul("LRO"), nul("LRF"), Setting::power_up_red, "off"},
                                         Undo{nul("LGO"), nul("LGF"), Setting::power_up_green, "off"},
                                         Undo{nul("LRE05"), nul("LRD"), Setting::good_read_red, "off"},
                                         Undo{nul("LGE05"), nul("LGD"), Setting::good_read_green, "off"},
                                         Undo{nul("RTE05"), nul("RTD"), Setting::good_read_relay, "off"},
                                         Undo{nul("ICD"), nul("ICE"), Setting::cr_terminator, "on"},
                                         Undo{nul("AF"), nul("AO"), Setting::code_39, "on"},
                                         Undo{nul("HO"), nul("HF"), Setting::i_2_of_5, "off"},
                                         Undo{nul("GO"), nul("GF"), Setting::two_of_5, "off"},
                                         Undo{nul("NO"), nul("NF"), Setting::upca, "off"},
                                         Undo{nul("EO"), nul("EF"), Setting::ean13, "off"},
                                         Undo{nul("BO"), nul("BF"), Setting::code_128, "off"},
                                         Undo{nul("CO"), nul("CF"), Setting::codabar, "off"},
                                         Undo{nul("M1O"), nul("M1F"), Setting::track_1, "off"},
                                         Undo{nul("M2F"), nul("M2O"), Setting::track_2, "on"},
                                         Undo{nul("M1SE"), nul("M1SD"), Setting::track_1_start_stop, "off"},
                                         Undo{nul("M1C2"), nul("M1C1"), Setting::track_1_characters, "1"},
                                         Undo{nul("M2SE"), nul("M2SD"), Setting::track_2_start_stop, "off"},
                                         Undo{nul("M2CO"), nul("M2CF"), Setting::track_2_c_start, "off"},
                                         Undo{nul("M21"), nul("M11"), Setting::first_track_sent, "1"},
                                         Undo{"s1", "s0", Setting::rs232_logging, "off"},
                                         Undo{":0", ":1", Setting::bad_logging, "on"},
                                         Undo{"d1", "d0", Setting::duplicate_suppression, "off"},
                                         Undo{"y1", "y0", Setting::comma_delimited, "off"},
                                         Undo{nul("+0"), nul("+1"), Setting::logging, "on"},
                                         Undo{nul("=1"), nul("=0"), Setting::printing, "off"}));

class Refused : public testing::TestWithParam<std::string> {};

TEST_P(Refused, by_every_reader_without_a_sign) {
  for (const char letter : std::string_view{all}) {
    Host host;
    readersim::Reader& reader = host.line.add(family_of(letter), 5, true).reader;
    const readersim::Settings before = reader.settings;
    EXPECT_TRUE(bytes_equal(host.ask(5, GetParam()), "")) << letter;
    for (const readersim::SettingTraits& each : readersim::all_settings()) {
      EXPECT_EQ(reader.settings.get(each.setting), before.get(each.setting)) << letter << ' ' << each.name;
    }
    EXPECT_EQ(reader.address, 5);
  }
}

INSTANTIATE_TEST_SUITE_P(Malformed, Refused,
                         testing::Values("", "x", "v", "VV", nul(""), nul("V"), nul("D7"), nul("D1x"),
                                         nul("STE50"), nul("IA127"), nul("IA01a"), nul("IA12"), nul("IB8"),
                                         nul("IB2"), nul("IBX"), nul("IT"), nul("ITX"), nul("KP256"), "\\03",
                                         "\\41", "\\0031", "\\1511", "\\031000", "\\200020", "\"00", "'00",
                                         "'16", "r2000", "s2", "|9", "+0102290000001", "+010415130509", "}0",
                                         "}0a", nul("1AB"), nul("(5")));

TEST(Vocabulary, holds_no_command_twice_for_a_family) {
  for (const readersim::Command& one : readersim::vocabulary()) {
    for (const readersim::Command& other : readersim::vocabulary()) {
      const bool same = &one != &other && one.introduced == other.introduced &&
                        one.letters == other.letters && one.argument == other.argument;
      for (const Family family : readersim::all_families) {
        EXPECT_FALSE(same && one.families.has(family) && other.families.has(family)) << one.letters;
      }
    }
  }
}

TEST(Vocabulary, tells_what_a_family_does_not_have) {
  Host host;
  host.line.add(Family::vell, 5, true);
  host.ask(5, "t");
  EXPECT_EQ(host.events.back().meaning, "not for a Vell reader: read the clock");
  host.ask(5, "x");
  EXPECT_EQ(host.events.back().meaning, "not understood");
  host.ask(5, nul("STE50"));
  EXPECT_EQ(host.events.back().meaning, "speaker time for a good read: out of range");
}

class EveryFamily : public Host, public testing::TestWithParam<Family> {
 protected:
  readersim::Reader& reader = line.add(GetParam(), 5, true).reader;
};

INSTANTIATE_TEST_SUITE_P(Families, EveryFamily, testing::ValuesIn(readersim::all_families));

TEST_P(EveryFamily, identifies_itself_with_at_least_10_and_at_most_53_characters) {
  const std::string reply = data(ask(5, "V"));
  EXPECT_EQ(reply, reader.identification);
  EXPECT_GE(reply.size(), 10U);
  EXPECT_LE(reply.size(), 53U);  // what is left of 55 with its lead-in
}

TEST_P(EveryFamily, lights_and_blinks_its_leds) {
  EXPECT_TRUE(bytes_equal(ask(5, "}00"), "\x06"));
  EXPECT_EQ(reader.red.at(now + 1000s), Lamp::State::on);
  EXPECT_TRUE(bytes_equal(ask(5, ")00"), "\x06"));
  EXPECT_EQ(reader.red.at(now), Lamp::State::blinking);
  EXPECT_TRUE(bytes_equal(ask(5, "{00"), "\x06"));
  EXPECT_EQ(reader.red.at(now), Lamp::State::off);
  EXPECT_TRUE(bytes_equal(ask(5, "]00"), "\x06"));
  EXPECT_EQ(reader.green.at(now), Lamp::State::on);
  EXPECT_TRUE(bytes_equal(ask(5, ">50"), "\x06"));
  EXPECT_EQ(reader.green.at(now), Lamp::State::blinking);
  EXPECT_EQ(reader.green.at(now + 50s), Lamp::State::on);
  EXPECT_TRUE(bytes_equal(ask(5, "[00"), "\x06"));
  EXPECT_EQ(reader.green.at(now), Lamp::State::off);
}

TEST_P(EveryFamily, sounds_its_speaker) {
  EXPECT_TRUE(bytes_equal(ask(5, "&50"), "\x06"));
  EXPECT_EQ(reader.sounder_operations, 1);
  EXPECT_EQ(reader.last_sound, 50);
}

TEST_P(EveryFamily, closes_the_relay_where_it_has_one) {
  const bool has = readersim::relay_families.has(GetParam());
  EXPECT_TRUE(bytes_equal(ask(5, "!01"), has ? "\x06" : ""));
  EXPECT_EQ(reader.relay_operations, has ? 1 : 0);
  EXPECT_EQ(reader.relay.at(now - 1us), has ? Lamp::State::on : Lamp::State::off);
  EXPECT_EQ(reader.relay.at(now), Lamp::State::off);  // a second later
}

TEST_P(EveryFamily, takes_the_modes_it_has_and_refuses_the_others) {
  constexpr std::string_view modes[]{"1", "135", "1345", "12", "12", "12"};
  for (const char digit : std::string_view{"0123456789"}) {
    const char before = reader.operating_mode;
    const bool has = modes[static_cast<std::size_t>(GetParam())].find(digit) != std::string_view::npos;
    EXPECT_TRUE(bytes_equal(ask(5, std::string{"|"} + digit), has ? "\x06" : "")) << digit;
    EXPECT_EQ(reader.operating_mode, has ? digit : before);
  }
}

TEST_P(EveryFamily, acknowledges_the_bare_bar_and_keeps_its_mode) {
  const char before = reader.operating_mode;
  EXPECT_TRUE(bytes_equal(ask(5, "|"), "\x06"));
  EXPECT_EQ(reader.operating_mode, before);
}

TEST_P(EveryFamily, moves_to_every_speed_and_format) {
  const std::pair<char, int> speeds[]{{'3', 1200}, {'4', 2400}, {'5', 4800}, {'6', 9600}, {'7', 19200}};
  for (const auto& [digit, baud] : speeds) {
    EXPECT_TRUE(bytes_equal(ask(5, nul("IB") + digit), "\x06"));
    EXPECT_EQ(reader.format.baud, baud);
  }
  const std::pair<char, DataFormat> formats[]{
      {'E', DataFormat::seven_even}, {'O', DataFormat::seven_odd}, {'N', DataFormat::eight_none}};
  for (const auto& [letter, format] : formats) {
    EXPECT_TRUE(bytes_equal(ask(5, nul("IB") + letter), "\x06"));
    EXPECT_EQ(reader.format.data, format);
  }
}

TEST_P(EveryFamily, takes_addresses_0_to_126) {
  int at = 5;
  for (const int address : {0, 126, 42}) {
    EXPECT_TRUE(bytes_equal(
        ask(at, nul("IA") + (address < 100 ? address < 10 ? "00" : "0" : "") + std::to_string(address)),
        "\x06"));
    EXPECT_EQ(reader.address, address);
    at = address;
  }
}

TEST_P(EveryFamily, starts_as_set_for_power_up_after_a_reset) {
  ask(5, nul("LGO"));
  ask(5, "}00");
  ask(5, "!99");
  ask(5, "D1234ABCD");
  EXPECT_TRUE(bytes_equal(ask(5, nul("U")), "\x06"));
  EXPECT_EQ(reader.red.at(now), Lamp::State::off);
  EXPECT_EQ(reader.green.at(now), Lamp::State::on);
  EXPECT_EQ(reader.relay.at(now), Lamp::State::off);
  EXPECT_EQ(reader.settings.get(Setting::display), "");
  EXPECT_TRUE(reader.protocol_mode);
}

TEST(Quor, keeps_the_last_two_ages_in_the_order_they_came) {
  Host host;
  const readersim::Settings& settings = host.line.add(Family::quor, 5, true).reader.settings;
  host.ask(5, nul("(05"));
  host.ask(5, nul("(21"));
  EXPECT_EQ(settings.number(Setting::age_1), 5);
  EXPECT_EQ(settings.number(Setting::age_2), 21);
}

}  // namespace
