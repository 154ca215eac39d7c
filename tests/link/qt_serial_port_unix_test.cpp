// The real port over pseudo-terminals.
#include "link/qt_serial_port.h"
#include "support/pty_bench.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <string>
#include <termios.h>
#include <thread>
#include <vector>

namespace {

/// What has been asked of lines. A pseudo-terminal keeps only part of it, and what is read back from it and
/// asked anew lacks the rest.
std::vector<termios> requested;

}  // namespace

/// Stands before the system's own, so that a test sees all that the port asks for.
extern "C" int tcsetattr(int descriptor, int actions, const termios* settings) noexcept {
  requested.push_back(*settings);
  using Original = int (*)(int, int, const termios*);
  static const auto original = reinterpret_cast<Original>(dlsym(RTLD_NEXT, "tcsetattr"));
  return original(descriptor, actions, settings);
}

namespace {

using namespace std::chrono_literals;

/// The port alone, open, and no event loop turning unless the test turns it.
struct qt_serial_port : testing::Test {
  Pty line;
  ScopedVariable port_1{"TARVOS_COM1", line.device()};
  CommSettings settings;
  QtSerialPort port;

  qt_serial_port() { EXPECT_TRUE(port.open(settings)) << port.open_error(1); }

  /// Bytes come, and the program does something that blocks meanwhile.
  void arrive(std::string_view bytes) {
    line.write(bytes);
    std::this_thread::sleep_for(20ms);
  }

  std::string read_all() {
    std::string bytes;
    while (port.bytes_waiting() > 0) {
      bytes += port.read_char().value();
    }
    return bytes;
  }
};

TEST_F(qt_serial_port, a_write_has_left_when_the_call_returns) {
  EXPECT_TRUE(port.write("\x85\x02V\x03"));
  EXPECT_TRUE(bytes_equal(line.read_now(), "\x85\x02V\x03"));
}

TEST_F(qt_serial_port, a_write_just_before_the_close_has_left) {
  EXPECT_TRUE(port.write("last words"));
  port.close();
  EXPECT_EQ(line.read_now(), "last words");
}

TEST_F(qt_serial_port, bytes_waiting_is_true_right_after_a_blocking_pause) {
  EXPECT_EQ(port.bytes_waiting(), 0U);
  arrive("12345");
  EXPECT_EQ(port.bytes_waiting(), 5U);
  EXPECT_EQ(port.read_char(), '1');
  EXPECT_EQ(port.bytes_waiting(), 4U);
}

TEST_F(qt_serial_port, asking_for_waiting_bytes_never_waits) {
  const auto asked = [&] {
    for (int i = 0; i < 1000; ++i) {
      static_cast<void>(port.bytes_waiting());
    }
  };
  EXPECT_LT(time_of(asked), 500ms);
  arrive("x");
  EXPECT_LT(time_of(asked), 500ms);
}

TEST_F(qt_serial_port, reading_an_empty_line_gives_nothing) {
  EXPECT_EQ(port.read_char(), std::nullopt);
}

TEST_F(qt_serial_port, all_256_characters_pass_both_ways) {
  std::string all;
  for (int character = 0; character < 256; ++character) {
    all += static_cast<char>(character);
  }
  EXPECT_TRUE(port.write(all));
  EXPECT_TRUE(bytes_equal(line.read(256), all));
  arrive(all);
  EXPECT_TRUE(bytes_equal(read_all(), all));
}

TEST_F(qt_serial_port, what_exceeds_the_receive_buffer_is_not_lost) {
  std::string bytes;
  for (int i = 0; i < 3000; ++i) {
    bytes += static_cast<char>('0' + i % 10);
  }
  arrive(bytes);
  QCoreApplication::processEvents();
  EXPECT_LE(port.bytes_waiting(), 1024U);
  EXPECT_EQ(read_all(), bytes);
}

TEST_F(qt_serial_port, a_write_goes_out_while_more_has_arrived_than_the_buffer_takes) {
  std::string bytes;
  for (int i = 0; i < 3000; ++i) {
    bytes += static_cast<char>('0' + i % 10);
  }
  arrive(bytes);
  EXPECT_TRUE(wait_until([&] { return port.bytes_waiting() == 1024; }));
  EXPECT_TRUE(port.write("V\r"));
  EXPECT_EQ(line.read_now(), "V\r");
  EXPECT_EQ(read_all(), bytes);
  arrive("x");
  EXPECT_EQ(read_all(), "x");
}

TEST_F(qt_serial_port, discard_empties_the_program_and_the_system) {
  arrive(std::string(3000, 'x'));
  QCoreApplication::processEvents();
  EXPECT_GT(port.bytes_waiting(), 0U);
  port.discard_received();
  EXPECT_EQ(port.bytes_waiting(), 0U);
  std::this_thread::sleep_for(20ms);
  EXPECT_EQ(port.bytes_waiting(), 0U);
  arrive("fresh");
  EXPECT_EQ(read_all(), "fresh");
}

TEST_F(qt_serial_port, an_arrival_is_told_from_the_event_loop) {
  int arrivals = 0;
  port.on_arrival = [&] { ++arrivals; };
  line.write("x");
  EXPECT_TRUE(wait_until([&] { return arrivals > 0; }));
  EXPECT_EQ(port.bytes_waiting(), 1U);
}

TEST_F(qt_serial_port, arrivals_are_told_again_after_a_full_buffer_was_discarded) {
  int arrivals = 0;
  port.on_arrival = [&] { ++arrivals; };
  arrive(std::string(3000, 'x'));
  EXPECT_TRUE(wait_until([&] { return port.bytes_waiting() == 1024; }));
  port.discard_received();
  arrivals = 0;
  line.write("x");
  EXPECT_TRUE(wait_until([&] { return arrivals > 0; }));
}

TEST_F(qt_serial_port, arrivals_are_told_again_after_a_full_buffer_was_read) {
  int arrivals = 0;
  port.on_arrival = [&] { ++arrivals; };
  arrive(std::string(3000, 'x'));
  EXPECT_TRUE(wait_until([&] { return port.bytes_waiting() == 1024; }));
  EXPECT_EQ(read_all().size(), 3000U);
  arrivals = 0;
  line.write("x");
  EXPECT_TRUE(wait_until([&] { return arrivals > 0; }));
}

TEST_F(qt_serial_port, a_full_buffer_that_nobody_reads_costs_no_processor_time) {
  arrive(std::string(3000, 'x'));
  EXPECT_TRUE(wait_until([&] { return port.bytes_waiting() == 1024; }));
  const auto before = processor_time();
  wait_until([] { return false; }, 500ms);
  EXPECT_LT(processor_time() - before, 100ms);
}

// --- Settings -------------------------------------------------------------------------------------

TEST_F(qt_serial_port, every_baud_rate_reaches_the_line) {
  const std::pair<int, speed_t> rates[]{
      {1200, B1200}, {2400, B2400}, {4800, B4800}, {9600, B9600}, {19200, B19200}};
  for (const auto& [baud, speed] : rates) {
    settings.baud = baud;
    ASSERT_TRUE(port.open(settings));
    const termios now = line.settings();
    EXPECT_EQ(cfgetospeed(&now), speed) << baud;
  }
}

TEST_F(qt_serial_port, every_parity_and_data_bits_choice_opens_and_is_asked_of_the_line) {
  for (const Parity parity : {Parity::none, Parity::even, Parity::odd}) {
    for (const int data_bits : {7, 8}) {
      settings.parity = parity;
      settings.data_bits = data_bits;
      requested.clear();
      ASSERT_TRUE(port.open(settings)) << settings_string(settings) << ": " << port.open_error(1);
      const tcflag_t expected = (data_bits == 7 ? CS7 : CS8) | (parity != Parity::none ? PARENB : 0U) |
                                (parity == Parity::odd ? PARODD : 0U);
      EXPECT_TRUE(std::any_of(requested.begin(), requested.end(), [&](const termios& each) {
        return (each.c_cflag & (CSIZE | PARENB | PARODD)) == expected;
      })) << settings_string(settings);
      // Of these a pseudo-terminal keeps the sense of the parity alone.
      EXPECT_EQ((line.settings().c_cflag & PARODD) != 0, parity == Parity::odd) << settings_string(settings);
    }
  }
}

TEST_F(qt_serial_port, the_line_is_raw_with_one_stop_bit_and_no_handshaking) {
  const termios now = line.settings();
  EXPECT_EQ(now.c_cflag & (CSTOPB | CRTSCTS), 0U);
  EXPECT_EQ(now.c_iflag & (IXON | IXOFF | ICRNL | INLCR | IGNCR | ISTRIP), 0U);
  EXPECT_EQ(now.c_oflag & OPOST, 0U);
  EXPECT_EQ(now.c_lflag & (ICANON | ECHO | ISIG), 0U);
}

// --- What goes wrong ------------------------------------------------------------------------------

TEST_F(qt_serial_port, a_closed_port_takes_and_gives_nothing) {
  line.write("x");
  port.close();
  EXPECT_FALSE(port.write("x"));
  EXPECT_EQ(port.bytes_waiting(), 0U);
  EXPECT_EQ(port.read_char(), std::nullopt);
  port.discard_received();
  port.close();
}

TEST_F(qt_serial_port, a_missing_device_is_told) {
  const ScopedVariable port_2{"TARVOS_COM2", "/dev/no-such-port"};
  settings.port_number = 2;
  EXPECT_FALSE(port.open(settings));
  EXPECT_EQ(port.device_of(2), "/dev/no-such-port");
  EXPECT_NE(port.open_error(2), "");
  EXPECT_EQ(port.open_error(1), "") << "the reason belongs to its own port";
  EXPECT_FALSE(port.write("x")) << "the port open before is closed";
}

TEST_F(qt_serial_port, a_device_that_is_no_serial_port_is_told) {
  const ScopedVariable port_2{"TARVOS_COM2", "/dev/null"};
  settings.port_number = 2;
  EXPECT_FALSE(port.open(settings));
  EXPECT_NE(port.open_error(2), "");
}

TEST_F(qt_serial_port, a_number_without_a_device_is_told) {
  const ScopedVariable port_3{"TARVOS_COM3", ""};
  settings.port_number = 3;
  EXPECT_FALSE(port.open(settings));
  EXPECT_EQ(port.device_of(3), "");
  EXPECT_EQ(port.open_error(3), "there is no such port");
}

TEST_F(qt_serial_port, the_reason_goes_with_the_next_success) {
  settings.port_number = 2;
  {
    const ScopedVariable port_2{"TARVOS_COM2", ""};
    EXPECT_FALSE(port.open(settings));
  }
  const Pty other;
  const ScopedVariable port_2{"TARVOS_COM2", other.device()};
  EXPECT_TRUE(port.open(settings));
  EXPECT_EQ(port.open_error(2), "");
}

TEST_F(qt_serial_port, reopens_as_often_as_wanted) {
  for (int i = 0; i < 20; ++i) {
    ASSERT_TRUE(port.open(settings));
    EXPECT_TRUE(port.write("x"));
    EXPECT_EQ(line.read(1), "x");
  }
}

TEST_F(qt_serial_port, a_far_end_that_stops_reading_fails_the_write_within_its_bound) {
  line.stall();
  bool written = true;
  const auto time = time_of([&] { written = port.write("lost\r"); });
  EXPECT_FALSE(written);
  EXPECT_GE(time, 450ms);
  EXPECT_LT(time, 2000ms);
  // The line moves again: what was dropped does not come after all, what follows does.
  while (!line.read_now().empty()) {
  }
  EXPECT_TRUE(port.write("next\r"));
  EXPECT_EQ(line.read(5), "next\r");
}

struct hang_up : testing::Test, PtyBench {};

TEST_F(hang_up, clears_the_flag_without_a_box_and_without_a_spinning_core) {
  ASSERT_TRUE(link.comopen());
  line.hang_up();
  const auto before = processor_time();
  EXPECT_TRUE(wait_until([&] { return !link.comopen(); }));
  wait_until([] { return false; }, 500ms);
  EXPECT_LT(processor_time() - before, 100ms);
  EXPECT_TRUE(dialogs.shown.empty());
  dialogs.expect_message("Comm port is not open");
  EXPECT_FALSE(link.send_command("V", false));
}

TEST_F(hang_up, in_the_middle_of_a_reply_ends_it_as_silence) {
  line.write("half a re");
  std::thread unplug{[&] {
    std::this_thread::sleep_for(50ms);
    line.hang_up();
  }};
  std::string response;
  EXPECT_FALSE(link.getinput(response, 100, 200ms, false, false));
  unplug.join();
  EXPECT_EQ(response, "half a re");
  EXPECT_FALSE(link.comopen());
}

TEST_F(hang_up, in_the_pause_for_the_acknowledge_ends_with_its_own_words) {
  use_network("5");
  std::thread unplug{[&] {
    std::this_thread::sleep_for(50ms);
    line.hang_up();
  }};
  dialogs.expect_message("Reader does not acknowledge command");
  EXPECT_FALSE(link.send_command("V", true));
  unplug.join();
  EXPECT_FALSE(link.comopen());
}

TEST_F(hang_up, noticed_first_by_a_write_fails_it_at_once) {
  line.hang_up();
  const auto time = time_of([&] { EXPECT_FALSE(link.write("V\r")); });
  EXPECT_LT(time, 250ms) << "the bound of the write is twice that";
}

TEST_F(hang_up, the_port_can_be_reopened_on_another_line) {
  line.hang_up();
  EXPECT_TRUE(wait_until([&] { return !link.comopen(); }));
  Pty other;
  const ScopedVariable again{"TARVOS_COM1", other.device()};
  link.restorecomm();
  EXPECT_TRUE(link.comopen());
  EXPECT_TRUE(link.send_command("V", false));
  EXPECT_EQ(other.read(2), "V\r");
  // And that line's own hang-up is noticed too.
  other.hang_up();
  EXPECT_TRUE(wait_until([&] { return !link.comopen(); }));
}

TEST_F(hang_up, while_the_port_is_already_being_closed_is_nothing) {
  line.hang_up();
  link.closecomm();
  wait_until([] { return false; }, 50ms);
  EXPECT_FALSE(link.comopen());
}

// --- The exchange over the real port --------------------------------------------------------------

struct real_exchange : testing::Test, PtyBench {};

TEST_F(real_exchange, getack_takes_an_acknowledge_200_ms_after_the_frame) {
  use_network("5");
  ASSERT_TRUE(link.setnetaddr());
  const PtyListener reader{line, [&](std::string_view) {
                             std::this_thread::sleep_for(200ms);
                             line.write("\x06");
                           }};
  EXPECT_TRUE(link.write_frame("V"));
  bool acknowledged = false;
  const auto time = time_of([&] { acknowledged = link.getack(); });
  EXPECT_TRUE(acknowledged);
  EXPECT_GE(time, 190ms);
  EXPECT_LT(time, 900ms);
}

TEST_F(real_exchange, getack_gives_up_on_silence_after_about_a_second) {
  bool acknowledged = true;
  const auto before = processor_time();
  const auto time = time_of([&] { acknowledged = link.getack(); });
  EXPECT_FALSE(acknowledged);
  EXPECT_GE(time, 990ms);
  EXPECT_LT(time, 1500ms);
  EXPECT_LT(processor_time() - before, 100ms);
}

TEST_F(real_exchange, a_reply_is_collected_and_acknowledged) {
  use_network("5");
  const PtyListener reader{line, [&](std::string_view bytes) {
                             if (bytes == "\x85\x02V\x03") {
                               line.write(
                                   "\x06\x02"
                                   "0123456789\x03");
                             }
                           }};
  EXPECT_TRUE(link.reader_connected());
}

TEST_F(real_exchange, a_reply_that_stops_half_way_ends_after_its_time_out) {
  line.write("dat");
  std::string response;
  bool complete = true;
  const auto time = time_of([&] { complete = link.getinput(response, 100, 100ms, false, false); });
  EXPECT_FALSE(complete);
  EXPECT_EQ(response, "dat");
  EXPECT_GE(time, 100ms);
  EXPECT_LT(time, 500ms);
}

TEST_F(real_exchange, clearing_a_line_that_never_falls_silent_ends) {
  std::atomic<bool> done = false;
  std::thread chatter{[&] {
    const std::string noise(512, '.');
    while (!done) {
      line.write_some(noise);
    }
  }};
  EXPECT_LT(time_of([&] { link.clearcomm(); }), 3000ms);
  done = true;
  chatter.join();
}

}  // namespace
