// The link against the simulated readers, twice: over a real pseudo-terminal with the real port and the real
// event loop, and once more at virtual time, where every byte of an answer can be spoilt in its turn.
#include "link/frame.h"
#include "link/reader_clock.h"
#include "support/link_bench.h"
#include "support/pty_bench.h"
#include "support/pty_server.h"
#include "support/sim_port.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

constexpr const char* no_acknowledge = "Reader does not acknowledge command";
constexpr const char* error_reading = "error reading from reader";
constexpr const char* error_communicating = "Error communicating with reader";

readersim::Options bench_options(const std::vector<int>& network) {
  readersim::Options options;
  options.network = network;
  options.family = readersim::Family::orin;
  options.clock = "0104151305097";
  options.line.answer_delay = 5ms;
  return options;
}

/// The whole way: real port, real event loop, a pseudo-terminal with a bench that serves itself.
class RealBench {
 public:
  explicit RealBench(const std::vector<int>& network) : server_(bench_options(network)) {
    setenv("TARVOS_COM1", server_.path().c_str(), 1);
    link.open_at_start_up();
  }
  ~RealBench() { unsetenv("TARVOS_COM1"); }

  std::string console(std::string_view command) {
    std::string said = server_.console(command);
    EXPECT_FALSE(said.starts_with("? ")) << command << ": " << said;
    return said;
  }
  std::string value(int address, std::string_view name) { return server_.value(address, name); }
  void hang_up() {
    server_.hang_up();
    setenv("TARVOS_COM1", "", 1);
  }
  void replug() {
    server_.replug();
    EXPECT_TRUE(wait_until([&] { return !server_.path().empty(); }));
    setenv("TARVOS_COM1", server_.path().c_str(), 1);
  }
  void let_pass(milliseconds time) {
    wait_until([] { return false; }, time);
  }
  static milliseconds slack() { return 1500ms; }  // for a busy machine

 private:
  readersim::PtyServer server_;
  QtSerialPort port_;

 public:
  QtEventPump pump{port_};
  ScriptedDialogs dialogs{&pump};
  CommSettings settings;
  ReaderLink link{port_, pump, dialogs, settings};
  ClickRunner clicks{pump, dialogs};
};

/// The same at virtual time.
class VirtualBench {
 public:
  explicit VirtualBench(const std::vector<int>& network) : port_(pump, bench_options(network)) {
    link.open_at_start_up();
  }

  std::string console(std::string_view command) { return port_.console(command); }
  std::string value(int address, std::string_view name) {
    const std::string shown = "\n" + port_.console("show " + std::to_string(address));
    const std::string key = "\n" + std::string(name) + ": ";
    const std::size_t at = shown.find(key);
    EXPECT_NE(at, std::string::npos) << name << " in" << shown;
    return at == std::string::npos
               ? ""
               : shown.substr(at + key.size(), shown.find('\n', at + 1) - at - key.size());
  }
  void hang_up() { console("hangup"); }
  void replug() { port_.replug(); }
  void let_pass(milliseconds time) { pump.idle(time); }
  static milliseconds slack() { return 0ms; }

  TestPump pump;

 private:
  SimPort port_;

 public:
  ScriptedDialogs dialogs{&pump};
  CommSettings settings;
  ReaderLink link{port_, pump, dialogs, settings};
  ClickRunner clicks{pump, dialogs};
};

template <typename Bench>
struct Exchanges : Bench {
  using Bench::Bench;

  void use_network(std::string_view address) {
    this->settings.network_mode = true;
    this->settings.reader_address = address;
  }
  /// Runs `action` and checks that it took no longer than `bound`.
  template <typename Action>
  void within(milliseconds bound, Action action) {
    const auto begun = this->pump.now();
    action();
    EXPECT_LE(this->pump.now() - begun, bound + this->slack());
  }
  /// Whether the port closes by itself within a second.
  bool closes() {
    for (int i = 0; i < 50 && this->link.comopen(); ++i) {
      this->let_pass(20ms);
    }
    return !this->link.comopen();
  }
  /// Whether a clock text shows the PC's time, to the minute and but for the century.
  bool shows_now(const std::string& text) {
    const LocalTime now = this->pump.local_time();
    const std::string expected = clock_text(now);
    return now.second < 2 ||
           (text.substr(0, 6) == expected.substr(0, 6) && text.substr(8, 8) == expected.substr(8, 8));
  }
  bool speak() { return this->link.send_command("&05", true); }
};

template <typename Bench>
struct plain_line : testing::Test, Exchanges<Bench> {
  plain_line() : Exchanges<Bench>(std::vector<int>{}) {}
};

template <typename Bench>
struct network : testing::Test, Exchanges<Bench> {
  network() : Exchanges<Bench>(std::vector<int>{0, 5, 6, 126}) { this->use_network("5"); }
};

using Benches = testing::Types<RealBench, VirtualBench>;
TYPED_TEST_SUITE(plain_line, Benches, );
TYPED_TEST_SUITE(network, Benches, );

// --- A plain line ---------------------------------------------------------------------------------

TYPED_TEST(plain_line, the_reader_is_connected) {
  EXPECT_TRUE(this->link.reader_connected());
  EXPECT_TRUE(this->link.last_response().starts_with("ORIN READER")) << this->link.last_response();
}

TYPED_TEST(plain_line, a_command_is_obeyed_without_an_acknowledge) {
  EXPECT_TRUE(this->speak());
  this->let_pass(50ms);
  EXPECT_EQ(this->value(0, "speaker soundings"), "1");
}

TYPED_TEST(plain_line, a_reader_that_is_unplugged_is_not_connected) {
  this->console("present 0 off");
  this->within(100ms, [&] { EXPECT_FALSE(this->link.reader_connected()); });
  EXPECT_TRUE(this->speak()) << "a plain line never acknowledges, so nobody misses it";
  this->console("present 0 on");
  EXPECT_TRUE(this->link.reader_connected());
}

TYPED_TEST(plain_line, protocol_mode_takes_the_reader_to_the_network_at_address_0) {
  EXPECT_TRUE(this->link.send_command(introduced("ITP"), true));
  this->let_pass(50ms);
  EXPECT_FALSE(this->link.reader_connected()) << "it hears network frames only";
  this->use_network("0");
  EXPECT_TRUE(this->link.reader_connected());
  EXPECT_TRUE(this->speak());
  EXPECT_TRUE(this->link.send_command(introduced("ITN"), true));
  this->settings.network_mode = false;
  EXPECT_TRUE(this->link.reader_connected());
}

TYPED_TEST(plain_line, another_baud_rate_is_not_understood_until_the_port_follows) {
  this->settings.baud = 1200;
  this->link.restorecomm();
  EXPECT_FALSE(this->link.reader_connected());
  this->settings.baud = 9600;
  this->link.restorecomm();
  EXPECT_TRUE(this->link.reader_connected());
}

TYPED_TEST(plain_line, the_clock_is_set_and_read) {
  ReaderClock clock{this->link, this->pump, this->dialogs};
  clock.read_date_time(orinparam_clock_reading);
  EXPECT_TRUE(clock.reader_clock_text().starts_with("04/15/2001  13:05:")) << clock.reader_clock_text();
  this->dialogs.expect_message("Date/Time set in reader");
  clock.set_date_time();
  this->let_pass(50ms);
  clock.read_date_time(keshsetup_clock_reading);
  EXPECT_TRUE(this->shows_now(clock.reader_clock_text())) << clock.reader_clock_text();
}

TYPED_TEST(plain_line, a_hang_up_ends_in_the_words_of_the_next_action_and_the_port_can_be_reopened) {
  this->hang_up();
  EXPECT_TRUE(this->closes());
  this->dialogs.expect_message("Comm port is not open");
  EXPECT_FALSE(this->speak());
  this->dialogs.expect_message("Unable to open comm port");
  this->link.restorecomm();
  this->replug();
  this->link.restorecomm();
  EXPECT_TRUE(this->link.comopen());
  EXPECT_TRUE(this->link.reader_connected());
}

// --- A network ------------------------------------------------------------------------------------

TYPED_TEST(network, each_reader_answers_at_its_own_address) {
  for (const char* address : {"0", "5", "6", "126"}) {
    this->use_network(address);
    EXPECT_TRUE(this->link.reader_connected()) << address;
    EXPECT_TRUE(this->speak()) << address;
    EXPECT_EQ(this->value(std::stoi(address), "speaker soundings"), "1");
  }
}

TYPED_TEST(network, nobody_answers_at_an_address_without_a_reader) {
  this->use_network("7");
  this->within(100ms, [&] { EXPECT_FALSE(this->link.reader_connected()); });
  this->dialogs.expect_message(no_acknowledge);
  this->within(200ms, [&] { EXPECT_FALSE(this->speak()); });
}

TYPED_TEST(network, the_global_address_is_obeyed_by_all_and_answered_by_none) {
  this->use_network("127");
  this->dialogs.expect_message(no_acknowledge);
  this->within(200ms, [&] { EXPECT_FALSE(this->speak()); });
  for (const int address : {0, 5, 6, 126}) {
    EXPECT_EQ(this->value(address, "speaker soundings"), "1");
  }
  EXPECT_FALSE(this->link.reader_connected());
}

TYPED_TEST(network, the_clocks_of_all_readers_are_set_at_once) {
  ReaderClock clock{this->link, this->pump, this->dialogs};
  this->use_network("127");
  this->dialogs.expect_message("Date/Time set in reader");
  clock.set_date_time();
  this->dialogs.expect_message("Cannot read from address 127");
  clock.read_date_time(orinparam_clock_reading);
  for (const char* address : {"5", "126"}) {
    this->use_network(address);
    EXPECT_TRUE(this->link.reader_connected());
    clock.read_date_time(orinparam_clock_reading);
    EXPECT_TRUE(this->shows_now(clock.reader_clock_text())) << clock.reader_clock_text();
  }
}

TYPED_TEST(network, a_reader_in_protocol_mode_is_deaf_to_plain_commands) {
  this->settings.network_mode = false;
  EXPECT_FALSE(this->link.reader_connected());
}

TYPED_TEST(network, setting_the_clock_awaits_the_acknowledge) {
  ReaderClock clock{this->link, this->pump, this->dialogs};
  this->dialogs.expect_message("Date/Time set in reader");
  clock.set_date_time();
  this->console("fault 5 late 300");
  this->dialogs.expect_message("Date/Time set in reader");
  clock.set_date_time();
  for (const char* fault : {"silent", "wrong-ack"}) {
    this->console(std::string("fault 5 ") + fault);
    this->dialogs.expect_message(error_communicating);
    this->within(1000ms, [&] { clock.set_date_time(); });
  }
  this->dialogs.expect_message("Date/Time set in reader");
  clock.set_date_time();
}

// --- What goes wrong ------------------------------------------------------------------------------

struct FaultRow {
  const char* fault;
  bool acknowledged;         ///< a command
  bool connected;            ///< the connection test
  milliseconds stray = 0ms;  ///< how long after its end something may still come
};

/// Every kind of fault, on the answer to a command (one ACK) and to the connection test (ACK, STX, text,
/// ETX).
constexpr FaultRow fault_rows[]{
    {"silent", false, false},
    {"drop-ack", false, false},
    {"wrong-ack", false, false},
    {"cut 0", false, false},
    {"cut 6", true, false},
    {"garbage 3", false, false},
    {"double 1", true, true},
    {"double 3", true, true},
    {"garbage-at 8 1", true, true},
    {"pause 1 40", true, true},
    {"pause 1 400", false, false, 400ms},
    {"pause 6 300", true, false, 300ms},
    {"late 40", true, true},
    {"late 400", false, false, 400ms},
    {"mishear 9", false, false},
    {"other-address 9", true, true},
};

TYPED_TEST(network, every_fault_ends_a_command_in_its_words_and_the_next_one_works) {
  for (const FaultRow& row : fault_rows) {
    SCOPED_TRACE(row.fault);
    this->console("fault 5 clear");
    this->console(std::string("fault 5 ") + row.fault);
    if (!row.acknowledged) {
      this->dialogs.expect_message(no_acknowledge);
    }
    this->within(200ms, [&] { EXPECT_EQ(this->speak(), row.acknowledged); });
    this->dialogs.verify();
    this->let_pass(row.stray);
    this->console("fault 5 clear");
    EXPECT_TRUE(this->link.reader_connected());
  }
}

TYPED_TEST(network, every_fault_ends_the_connection_test_and_the_next_one_works) {
  for (const FaultRow& row : fault_rows) {
    SCOPED_TRACE(row.fault);
    this->console("fault 5 clear");
    this->console(std::string("fault 5 ") + row.fault);
    this->within(350ms, [&] { EXPECT_EQ(this->link.reader_connected(), row.connected); });
    this->let_pass(row.stray);
    this->console("fault 5 clear");
    EXPECT_TRUE(this->link.reader_connected());
  }
  EXPECT_TRUE(this->dialogs.shown.empty());
}

TYPED_TEST(network, a_line_that_hangs_up_within_an_answer_ends_it_and_can_be_reopened) {
  for (const char* fault : {"hang-up 1", "hang-up 5"}) {
    SCOPED_TRACE(fault);
    this->console(std::string("fault 5 ") + fault);
    EXPECT_FALSE(this->link.reader_connected());
    EXPECT_TRUE(this->closes());
    this->dialogs.expect_message("Comm port is not open");
    EXPECT_FALSE(this->speak());
    this->replug();
    this->link.restorecomm();
    EXPECT_TRUE(this->link.reader_connected());
  }
}

TYPED_TEST(network, closing_the_program_during_an_exchange_ends_it_without_a_box) {
  this->console("fault 5 silent");
  this->within(1000ms, [&] {
    auto ticker = this->pump.make_ticker(60ms, [&] { this->pump.close_program(); });
    ticker->start();
    this->clicks.run([&] {
      static_cast<void>(this->link.reader_connected());
      FAIL() << "went on after the program was closed";
    });
  });
  EXPECT_TRUE(this->dialogs.shown.empty());
}

// --- Every byte, at virtual time ------------------------------------------------------------------

/// Takes every box, and keeps its text.
class AnyBoxes : public Dialogs {
 public:
  std::vector<std::string> shown;
  void message(std::string_view text) override { shown.emplace_back(text); }
  bool ask(std::string_view text) override {
    shown.emplace_back(text);
    return false;
  }
  FileAnswer choose_open_file(const FileRequest&) override { return {}; }
  FileAnswer choose_save_file(const FileRequest&) override { return {}; }
};

struct every_byte : testing::Test, Exchanges<VirtualBench> {
  every_byte() : Exchanges<VirtualBench>(std::vector<int>{5}) { use_network("5"); }
  ReaderClock clock{link, pump, dialogs};
};

constexpr int clock_reply_length = 1 + 1 + 12 + 1;

TEST_F(every_byte, of_a_cut_answer_ends_in_the_same_words) {
  for (int length = 0; length < clock_reply_length; ++length) {
    SCOPED_TRACE(length);
    console("fault 5 cut " + std::to_string(length));
    dialogs.expect_message(error_reading);
    within(120ms, [&] { clock.readdt(); });
    clock.readdt();
    EXPECT_EQ(clock.reader_clock_text().substr(0, 15), "04/15/2001  13:");
  }
}

TEST_F(every_byte, may_come_late_by_less_than_the_time_out) {
  for (int byte = 1; byte <= clock_reply_length; ++byte) {
    console("fault 5 pause " + std::to_string(byte) + " 90");
    clock.readdt();
  }
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(every_byte, that_comes_too_late_ends_the_read) {
  for (int byte = 1; byte <= clock_reply_length; ++byte) {
    SCOPED_TRACE(byte);
    console("fault 5 pause " + std::to_string(byte) + " 110");
    dialogs.expect_message(error_reading);
    clock.readdt();
    let_pass(50ms);
    clock.readdt();
  }
}

TEST_F(every_byte, that_comes_twice_does_no_harm) {
  for (int byte = 1; byte <= clock_reply_length; ++byte) {
    SCOPED_TRACE(byte);
    console("fault 5 double " + std::to_string(byte));
    clock.readdt();
    clock.readdt();
    EXPECT_EQ(clock.reader_clock_text().substr(0, 15), "04/15/2001  13:");
  }
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(every_byte, may_be_preceded_by_garbage_and_the_next_read_is_right) {
  AnyBoxes boxes;
  ReaderClock spoilt{link, pump, boxes};
  for (int byte = 1; byte <= clock_reply_length; ++byte) {
    for (int amount = 1; amount <= 20; ++amount) {
      console("fault 5 garbage-at " + std::to_string(byte) + " " + std::to_string(amount));
      // Chance decides whether the read fails or only its text is spoilt; it ends, and says so once at most.
      boxes.shown.clear();
      within(300ms, [&] { spoilt.readdt(); });
      EXPECT_TRUE(boxes.shown.empty() || boxes.shown == std::vector<std::string>{error_reading});
      let_pass(100ms);
      clock.readdt();
      ASSERT_EQ(clock.reader_clock_text().substr(0, 15), "04/15/2001  13:") << byte << ' ' << amount;
    }
  }
}

}  // namespace
