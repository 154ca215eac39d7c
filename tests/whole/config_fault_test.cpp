// The reader configuration screens against simulated readers that fail, and long uploads, at virtual time.

#include "support/bytes.h"
#include "whole/config_scripts.h"
#include "whole/sim_bench.h"

#include <QLabel>

#include <algorithm>

namespace {

using namespace config_scripts;
using namespace std::chrono_literals;

constexpr const char* no_command_acknowledge = "Reader does not acknowledge command";
constexpr const char* error_communicating = "Error communicating with reader";
constexpr const char* not_connected = "Reader is not Connected";
constexpr const char* error_reading = "error reading from reader";
constexpr const char* reader_timeout = "Reader Timeout";
constexpr const char* timed_out = "Reader timed out";
constexpr const char* cleared = "        Reader Log Data Cleared         ";

/// A button and the words that follow when its reader fails.
struct Button {
  std::string name;
  readersim::Family family;
  Step step;              ///< with the boxes of success
  std::size_t before;     ///< how many of them come before the first exchange
  std::string silent;     ///< without any answer, or with none that can be used
  bool ack_among_others;  ///< other characters before the acknowledge do no harm
  std::chrono::milliseconds bound;
  bool saves = false;  ///< asks for a file
};

void PrintTo(const Button& button, std::ostream* out) {
  *out << button.name;
}

const std::vector<Button> buttons{
    {"one_command", readersim::Family::vell, press(vellsetup, "sense_1_auto"), 0, no_command_acknowledge,
     false, 210ms},
    {"run_of_commands", readersim::Family::vell, choose(symbology, {}, "set_barcodes"), 0,
     no_command_acknowledge, false, 1410ms},
    {"quor_run", readersim::Family::quor, choose(quorsetup, {}, "set_quor_general"), 0,
     no_command_acknowledge, false, 410ms},
    {"orin_logging", readersim::Family::orin,
     choose(orinparam, {}, "set_rs232_logging", {" RS232 Logging Option is Off "}), 0, error_communicating,
     true, 1010ms},
    {"kesh_pair", readersim::Family::ferro_kesh, choose(keshsetup, {}, "set_duplicate_read", {parameter_set}),
     0, error_communicating, true, 1010ms},
    {"kesh_ids", readersim::Family::glint_kesh, choose(keshsetup, {}, "set_ids", {"ID's have been set"}), 0,
     error_communicating, true, 2010ms},
    {"magstripe_tracks", readersim::Family::vell, choose(symbology, {}, "set_magstripe_tracks"), 0,
     no_command_acknowledge, false, 410ms},
    {"magstripe_options", readersim::Family::vell, choose(symbology, {}, "set_magstripe_options"), 0,
     no_command_acknowledge, false, 1010ms},
    {"quor_ages",
     readersim::Family::quor,
     {quorsetup, {{"Text26", "5"}, {"Text27", "21"}}, {}, "set_quor_ages", {}},
     0,
     no_command_acknowledge,
     false,
     410ms},
    {"orinta_logging", readersim::Family::orinta,
     choose(orinparam, {}, "set_bad_logging", {" Bad Logging Option Set "}), 0, error_communicating, true,
     1010ms},
    {"kesh_logging", readersim::Family::ferro_kesh,
     choose(keshsetup, {}, "set_kesh_rs232_logging", {parameter_set}), 0, error_communicating, true, 1010ms},
    {"kesh_commas", readersim::Family::glint_kesh,
     choose(keshsetup, {}, "set_comma_delimited", {parameter_set}), 0, error_communicating, true, 1010ms},
    {"kesh_mode", readersim::Family::glint_kesh, choose(keshsetup, {}, "set_kesh_mode", {parameter_set}), 0,
     error_communicating, true, 1010ms},
    {"orin_mode", readersim::Family::orin, choose(orinparam, {}, "set_mode", {" Mode Set in Reader "}), 0,
     not_connected, false, 1200ms},
    {"orin_general",
     readersim::Family::orin,
     {orinparam,
      {{"Text2", "8"}, {"Text3", "7"}, {"Text5", "12"}},
      {},
      "set_general",
      {deletion, parameters_set}},
     1,
     not_connected,
     false,
     3200ms},
    {"ferro_general",
     readersim::Family::ferro_kesh,
     {keshsetup, {{"Text21", "31"}}, {}, "set_ferro_kesh_general", {deletion, parameters_set}},
     1,
     not_connected,
     false,
     2200ms},
    {"glint_general",
     readersim::Family::glint_kesh,
     {keshsetup, {{"Text19", "30"}}, {}, "set_glint_kesh_general", {deletion, parameters_set}},
     1,
     not_connected,
     false,
     1200ms},
    {"clock_set", readersim::Family::orin, choose(orinparam, {}, "set_date_time", {date_set}), 0,
     error_communicating, true, 1010ms},
    {"clock_read_after_presence", readersim::Family::orin, press(orinparam, "read_date_time"), 0,
     not_connected, false, 400ms},
    {"clock_read", readersim::Family::ferro_kesh, press(keshsetup, "read_date_time"), 0, error_reading, false,
     400ms},
    {"clear", readersim::Family::quor, choose(keshutil, {}, "clear", {cleared}), 0, timed_out, true, 5020ms},
};

struct Fault {
  std::string console;  ///< spoils the next answer
  bool hangs_up = false;
  bool leaves_the_acknowledge = false;
};

const std::vector<Fault> faults{
    {"silent"}, {"drop-ack"}, {"wrong-ack"}, {"cut 0"}, {"garbage 1", false, true}, {"hang-up 1", true},
};

class Failing : public testing::TestWithParam<Button> {};

void expect_free(SimBench& bench) {
  const BusyFlags& busy = bench.program.services().busy;
  EXPECT_FALSE(busy.polling_on || busy.downloading_on || busy.uploading_on);
}

TEST_P(Failing, is_told_in_bounded_time_and_the_next_click_works) {
  const Button& button = GetParam();
  for (const Fault& fault : faults) {
    SCOPED_TRACE(fault.console);
    SimBench bench(network_of(button.family));
    bench.type_network("5");
    bench.port.console("fault 5 " + fault.console);
    Step failing = button.step;
    const bool any_byte_will_do = button.step.button == "clear";
    const bool passes = (fault.leaves_the_acknowledge && button.ack_among_others) ||
                        (any_byte_will_do && fault.console == "wrong-ack");
    if (!passes) {
      failing.messages.resize(button.before);
      failing.messages.push_back(button.silent);
    }
    const auto begun = bench.pump.elapsed();
    perform(bench, failing);
    EXPECT_LE(bench.pump.elapsed() - begun, button.bound);
    expect_free(bench);
    bench.port.console("fault clear");
    if (fault.hangs_up) {
      bench.dialogs.expect_message("Comm port is not open");
      Step closed = button.step;
      closed.messages.clear();
      perform(bench, closed);
      bench.port.replug();
      bench.open(ScreenCode::com);
      bench.click(control_of(bench.window, "comm_port_0"));
    }
    perform(bench, button.step);
    expect_free(bench);
  }
}

INSTANTIATE_TEST_SUITE_P(buttons, Failing, testing::ValuesIn(buttons),
                         [](const auto& test) { return test.param.name; });

/// Spoils the answer that follows the first `frame`, which itself is answered well.
void spoil_after(SimBench& bench, const std::string& frame, const std::string& fault) {
  if (std::count(bench.port.writes.begin(), bench.port.writes.end(), frame) > 0) {
    bench.port.console("fault 5 " + fault);
    return;
  }
  bench.pump.after(1ms, [&bench, frame, fault] { spoil_after(bench, frame, fault); });
}

/// A reading of the clock; where presence is asked first, that answer is good.
struct ClockRead {
  ScreenCode screen;
  readersim::Family family;
  bool presence;
};

void read_spoilt_clock(SimBench& bench, const ClockRead& read, const std::string& fault) {
  bench.type_network("5");
  bench.port.console("set 5 clock 0104151305097");
  if (read.presence) {
    spoil_after(bench, "\x85\x02V\x03", fault);
  } else {
    bench.port.console("fault 5 " + fault);
  }
  perform(bench, press(read.screen, "read_date_time"));
  expect_free(bench);
}

QString shown_clock(const SimBench& bench) {
  return static_cast<QLabel*>(control_of(bench.window, "reader_date_time"))->text();
}

void expect_next_reading_works(SimBench& bench, const ClockRead& read) {
  EXPECT_EQ(bench.port.console("faults"), "no faults\n");
  perform(bench, press(read.screen, "read_date_time"));
  EXPECT_TRUE(shown_clock(bench).startsWith(QStringLiteral("04/15/2001  13:05:")));
}

const std::vector<ClockRead> clock_reads{{orinparam, readersim::Family::orin, true},
                                         {quorsetup, readersim::Family::quor, true},
                                         {keshsetup, readersim::Family::ferro_kesh, false}};

TEST(config_clock, a_time_cut_short_is_told_and_shows_nothing) {
  for (const ClockRead& read : clock_reads) {
    SCOPED_TRACE(static_cast<int>(read.screen));
    SimBench bench(network_of(read.family));
    bench.dialogs.expect_message(error_reading);
    read_spoilt_clock(bench, read, "cut 5");
    EXPECT_EQ(shown_clock(bench), QString());
    expect_next_reading_works(bench, read);
  }
}

TEST(config_clock, strange_characters_within_a_time_are_shown_where_they_stand) {
  for (const ClockRead& read : clock_reads) {
    SCOPED_TRACE(static_cast<int>(read.screen));
    SimBench bench(network_of(read.family));
    // Behind the first digit of the year come two characters; the others move up, the last two are not shown.
    read_spoilt_clock(bench, read, "garbage-at 4 2");
    const QString shown = shown_clock(bench);
    EXPECT_EQ(shown.mid(1, 8), QStringLiteral("1/04/200"));
    EXPECT_EQ(shown.mid(10), QStringLiteral("  15:13:05"));
    expect_next_reading_works(bench, read);
  }
}

/// What one record becomes when it is fetched.
std::string lines_of(const std::vector<std::string>& records) {
  std::string text;
  for (const std::string& record : records) {
    text += record + "\r\n";
  }
  return text;
}

void expect_upload(bool network, const std::vector<std::string>& records) {
  SCOPED_TRACE(testing::Message() << records.size() << (network ? " on a network" : " on a plain line"));
  readersim::Options options = network_of(readersim::Family::ferro_kesh);
  if (!network) {
    options.network.clear();
  }
  SimBench bench(options);
  if (network) {
    bench.type_network("5");
  }
  bench.port.reader(network ? 5 : 0).log.records = records;
  bench.dialogs.expect_save("Upload Log", bench.path());
  std::string status;
  bench.dialogs.expect_message("Upload Complete", [&] {
    status = static_cast<QLabel*>(control_of(bench.window, "upload_status"))->text().toStdString();
  });
  perform(bench, press(keshutil, "upload"));
  EXPECT_TRUE(bench.file() == lines_of(records));
  std::string count = std::to_string(records.size());
  count.insert(0, 5 - count.size(), '0');
  EXPECT_EQ(status, records.empty() ? "Records Uploaded:" : "Records Uploaded: " + count);
  expect_free(bench);
}

TEST(config_upload, no_record_one_and_three_byte_for_byte) {
  for (const bool network : {false, true}) {
    const std::string end(1, network ? '\x03' : '\r');
    expect_upload(network, {});
    expect_upload(network, {"4711"});
    expect_upload(network, {"4711", "010415130509," + std::string(150, '7'), "M\xFCller,\x80\x9F,A"});
    // A record whose last character is the end character, and one of nothing else.
    expect_upload(network, {"first", "second" + end, end, "END ", "last"});
    expect_upload(network, {std::string(498, 'x')});
  }
}

TEST(config_upload, twenty_thousand_records_byte_for_byte) {
  std::vector<std::string> records;
  records.reserve(20000);
  for (int number = 0; number < 20000; ++number) {
    std::string record = std::to_string(number) + ",";
    record += static_cast<char>(0x80 + number % 128);
    records.push_back(record);
  }
  expect_upload(true, records);
  expect_upload(false, records);
}

TEST(config_upload, a_log_longer_than_a_sixteen_bit_count_is_fetched_whole) {
  std::vector<std::string> records;
  for (int number = 0; number < 33000; ++number) {
    records.push_back(std::to_string(number));
  }
  expect_upload(false, records);
}

TEST(config_upload, a_reader_that_fails_in_the_middle_times_out_and_keeps_what_came) {
  for (const Fault& fault : {Fault{"silent"}, Fault{"drop-ack"}, Fault{"wrong-ack"}, Fault{"cut 3"},
                             Fault{"garbage 1"}, Fault{"hang-up 3", true}}) {
    SCOPED_TRACE(fault.console);
    SimBench bench(network_of(readersim::Family::ferro_kesh));
    bench.type_network("5");
    bench.port.reader(5).log.records = {"first", "second", "third"};
    bench.dialogs.expect_save("Upload Log", bench.path());
    spoil_after(bench, "\x85\x02l\x03", fault.console);  // the first record passes
    bench.dialogs.expect_message(reader_timeout);
    const auto begun = bench.pump.elapsed();
    perform(bench, press(keshutil, "upload"));
    EXPECT_LE(bench.pump.elapsed() - begun, 2000ms);
    EXPECT_EQ(bench.file(), "first\r\n");
    expect_free(bench);
    EXPECT_FALSE(control_of(bench.window, "upload_status")->isVisible());
    bench.port.console("fault clear");
    if (fault.hangs_up) {
      bench.port.replug();
      bench.open(ScreenCode::com);
      bench.click(control_of(bench.window, "comm_port_0"));
    }
    bench.dialogs.expect_save("Upload Log", bench.path());
    bench.dialogs.expect_message("Upload Complete");
    perform(bench, press(keshutil, "upload"));
    EXPECT_EQ(bench.file(), "first\r\nsecond\r\nthird\r\n");
  }
}

}  // namespace
