// A technician sets up one reader of each family from the screens: the real window, the real port and event
// loop, a pseudo-terminal, and the simulated reader whose state must be as wanted at the end.

#include "support/whole_bench.h"
#include "whole/config_scripts.h"

#include <QDate>
#include <QLabel>
#include <QTemporaryDir>

#include <algorithm>
#include <fstream>

namespace {

using namespace config_scripts;
using namespace std::chrono_literals;

readersim::Options reader_at(int address, readersim::Family family) {
  readersim::Options options;
  options.network = {address};
  options.family = family;
  return options;
}

void expect_state(WholeBench& bench, int address, const std::vector<Wanted>& wanted) {
  for (const auto& [name, value, before] : wanted) {
    // A plain line answers nothing: the reader may still be about to obey.
    wait_until([&, &key = name, &expected = value] { return bench.readers.value(address, key) == expected; });
    EXPECT_EQ(bench.readers.value(address, name), value) << name;
  }
}

/// Does the work from the screens; every setting must come from there.
void expect_done(WholeBench& bench, int address, const Work& work) {
  unsettle(bench.readers, address, work.wanted);
  for (const Step& step : work.steps) {
    perform(bench, step);
  }
  expect_state(bench, address, work.wanted);
}

class SetUp : public testing::TestWithParam<Script> {};

TEST_P(SetUp, from_the_screens_on_a_plain_line) {
  WholeBench bench(GetParam().family);
  expect_done(bench, 0, GetParam().work);
}

TEST_P(SetUp, what_every_reader_has_from_the_screens_on_a_plain_line) {
  WholeBench bench(GetParam().family);
  for (const Work& work : every_reader) {
    expect_done(bench, 0, work);
  }
}

TEST_P(SetUp, from_the_screens_on_a_network) {
  WholeBench bench(reader_at(5, GetParam().family));
  bench.type_network("5");
  expect_done(bench, 5, GetParam().work);
}

TEST_P(SetUp, sets_the_readers_clock_to_that_of_the_computer) {
  const Script& script = GetParam();
  const std::vector<Step>& steps = script.work.steps;
  if (std::none_of(steps.begin(), steps.end(),
                   [](const Step& step) { return step.button == "set_date_time"; })) {
    EXPECT_EQ(script.family, readersim::Family::vell) << "all others have a clock";
    return;
  }
  WholeBench bench(reader_at(5, script.family));
  bench.type_network("5");
  bench.readers.console("set 5 clock 0101010000001");
  ASSERT_TRUE(bench.readers.value(5, "clock").starts_with("01-01-01"));
  perform(bench, steps.back());
  const QString today = QDate::currentDate().toString(QStringLiteral("yy-MM-dd"));
  EXPECT_TRUE(bench.readers.value(5, "clock").starts_with(today.toStdString()))
      << bench.readers.value(5, "clock");
}

INSTANTIATE_TEST_SUITE_P(every_family, SetUp, testing::ValuesIn(scripts()), name_of);

TEST(config_whole, a_clock_that_was_set_reads_back_on_all_three_screens) {
  WholeBench bench(reader_at(5, readersim::Family::orin));
  bench.type_network("5");
  bench.open(orinparam);
  const auto shown = [&bench](const char* display) {
    return static_cast<QLabel*>(control_of(bench.window, display))->text().toStdString();
  };
  // A reader knows no century; the minute may end while it is set and read.
  const auto to_the_minute = [](std::string clock) { return clock.erase(6, 2).substr(0, 15); };
  const std::string before = to_the_minute(shown("current_date_time"));
  bench.dialogs.expect_message(date_set);
  bench.click("Set Date/Time");
  bench.click("Read Date/Time");
  const std::string read = shown("reader_date_time");
  ASSERT_EQ(read.size(), 20U);
  const std::string set = to_the_minute(read);
  EXPECT_TRUE(set == before || set == to_the_minute(shown("current_date_time"))) << read;
  for (const ScreenCode screen : {keshsetup, quorsetup}) {
    bench.open(screen);
    EXPECT_EQ(shown("reader_date_time"), read);
  }
}

TEST(config_whole, every_reader_of_a_network_obeys_the_global_address) {
  readersim::Options options = readersim::parse_options({"--network", "5,6", "--family", "orin"});
  WholeBench bench(options);
  bench.type_network("127");
  perform(bench, {orinparam,
                  {{"Text2", "8"}, {"Text3", "7"}, {"Text5", "12"}},
                  {},
                  "set_general",
                  {deletion, parameters_set}});
  for (const int address : {5, 6}) {
    expect_state(bench, address, {{"record length", "8"}, {"relay time", "7"}, {"red led time", "12"}});
  }
}

TEST(config_whole, a_reader_that_got_another_speed_is_silent_until_the_port_follows) {
  WholeBench bench(readersim::Family::vell);
  bench.open(vellsetup);
  bench.click("19200 Baud");
  ASSERT_TRUE(wait_until([&] { return bench.readers.value(0, "line") == "19200 8N"; }));
  bench.open(diag);
  bench.dialogs.expect_message("Reader is not Connected");
  bench.click("Reader Identification");
  bench.open(ScreenCode::com);
  bench.click(bench.find("baud_rate_4"));
  bench.open(diag);
  bench.click("Reader Identification");
  EXPECT_EQ(bench.find<QLineEdit>("Text4")->text().toStdString(), bench.readers.value(0, "identification"));
}

TEST(config_whole, a_reader_that_got_another_address_is_silent_until_the_address_follows) {
  WholeBench bench(reader_at(5, readersim::Family::vell));
  bench.type_network("5");
  bench.open(vellsetup);
  retype(control_of(bench.window, "Text18"), "42");
  // The reader has moved before it could acknowledge, or acknowledges first: both leave it at its new place.
  bench.click("Set Reader Address");
  EXPECT_EQ(bench.readers.value(42, "address"), "42");
  bench.dialogs.expect_message("Reader does not acknowledge command");
  bench.click("Sense 1 Auto");
  bench.type_network("42");
  bench.open(vellsetup);
  bench.click("Sense 1 Auto");
  EXPECT_EQ(bench.readers.value(42, "sense 1"), "auto");
}

TEST(config_whole, what_a_reader_collected_is_fetched_to_a_file_and_cleared) {
  for (const bool network : {false, true}) {
    WholeBench bench(network ? reader_at(5, readersim::Family::glint_kesh)
                             : readersim::parse_options({"--family", "Glint Kesh"}));
    const int address = network ? 5 : 0;
    if (network) {
      bench.type_network("5");
    }
    perform(bench, {keshsetup,
                    {{"Text19", "20"}},
                    {"glint_time_stamping_1", "id_1_on"},
                    "set_glint_kesh_general",
                    {deletion, parameters_set}});
    perform(bench, {keshsetup, {{"Text22", "AB"}}, {}, "set_ids", {ids_set}});
    perform(bench, choose(keshsetup, {"comma_delimited_0"}, "set_comma_delimited", {parameter_set}));
    expect_state(bench, address, {{"comma delimited", "on"}});
    const std::string place = std::to_string(address);
    bench.readers.console("swipe " + place + " 4711");
    bench.readers.console("swipe " + place + " M\\xFCller,A");
    bench.readers.console("swipe " + place + " 12345678901234567890cut");
    const QTemporaryDir folder;
    const std::filesystem::path path = std::filesystem::path(folder.path().toStdString()) / "log.txt";
    bench.open(keshutil);
    bench.dialogs.expect_save("Upload Log", path);
    bench.dialogs.expect_message("Upload Complete");
    bench.click("Upload");
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_TRUE(bytes_equal(text, "AB   ,4711\r\nAB   ,M\xFCller,A\r\nAB   ,12345678901234567890\r\n"));
    bench.dialogs.expect_message("        Reader Log Data Cleared         ");
    bench.click("Clear");
    expect_state(bench, address, {{"log records", "0"}});
  }
}

}  // namespace
