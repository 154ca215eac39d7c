// Runs every golden row through every mode of the line.

#include "config/golden.h"

#include "support/window_bench.h"

namespace {

using namespace std::chrono_literals;

using golden::Acknowledge;
using golden::FirstLook;
using golden::Golden;
using golden::GoldenPresence;
using golden::Pauses;
using golden::Row;
using Frames = std::vector<std::string>;

const std::string ack = "\x06";
const std::string identification = "Vell 1.00 0001";

constexpr const char* no_command_acknowledge = "Reader does not acknowledge command";
constexpr const char* no_acknowledge = "Error communicating with reader";

/// The window on the screen of a row, its boxes filled and its choices made as a person does.
struct GoldenBench : WindowBench {
  explicit GoldenBench(const Row& golden_row, bool port_opens = true)
      : WindowBench(port_opens), row(golden_row) {
    click_menu(row.menu);
    for (const auto& [box, text] : row.boxes) {
      QTest::keyClicks(control(box), QString::fromStdString(text));
    }
    for (const std::string& choice : row.choices) {
      QTest::mouseClick(control(choice), Qt::LeftButton, {}, QPoint(8, control(choice)->height() / 2));
    }
  }

  QWidget* control(const std::string& object_name) {
    auto* const widget =
        window.screen(window.screen_code())->findChild<QWidget*>(QString::fromStdString(object_name));
    if (widget == nullptr) {
      throw std::runtime_error("no control " + object_name);
    }
    return widget;
  }

  void click_button() { click(control(row.button)); }

  void expect_messages(std::initializer_list<std::string> texts) {
    for (const std::string& text : texts) {
      if (!text.empty()) {
        dialogs.expect_message(text);
      }
    }
  }

  /// A reader of that address that is there and acknowledges its first `acknowledges` commands.
  void answer_at(char address, std::size_t acknowledges) {
    presence_question = std::string{address, '\x02', 'V', '\x03'};
    port.responder = [this, acknowledges, commands = std::size_t{0}](std::string_view written) mutable {
      if (written == presence_question) {
        port.arrive(ack + ":" + identification + "\x03", 15ms);
      } else if (written != ack && commands++ < acknowledges) {
        port.arrive(ack, 15ms);
      }
    };
  }

  [[nodiscard]] Frames network_frames(char address, std::size_t count) const {
    Frames frames;
    for (std::size_t index = 0; index < count; ++index) {
      frames.push_back(std::string{address, '\x02'} + row.payloads.at(index) + '\x03');
    }
    return frames;
  }

  [[nodiscard]] Frames network_frames_after_presence(char address, std::size_t count) const {
    Frames frames = network_frames(address, count);
    if (row.presence) {
      frames.insert(frames.begin(), {presence_question, ack});
    }
    return frames;
  }

  const Row& row;
  std::string presence_question;
};

Pauses command_pauses(std::size_t count) {
  return Pauses(count, 200ms);
}

void expect_frames(const Frames& actual, const Frames& expected) {
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t index = 0; index < expected.size(); ++index) {
    EXPECT_TRUE(bytes_equal(actual.at(index), expected.at(index))) << "frame " << index;
  }
}

TEST_P(Golden, on_a_plain_line) {
  const Row& row = GetParam();
  GoldenBench bench(row);
  bench.port.responder = [&bench](std::string_view written) {
    if (written == "V\r") {
      bench.port.arrive(identification + "\r", 15ms);
    }
  };
  bench.expect_messages({row.warning, row.done});
  bench.click_button();
  Frames expected;
  if (row.presence) {
    expected.emplace_back("V\r");
  }
  for (const std::string& payload : row.payloads) {
    expected.push_back(payload + '\r');
  }
  expect_frames(bench.port.writes, expected);
  EXPECT_EQ(bench.pump.sleeps, row.pauses);
}

TEST_P(Golden, on_a_network_that_acknowledges) {
  const Row& row = GetParam();
  GoldenBench bench(row);
  bench.use_network("5");
  bench.answer_at('\x85', row.payloads.size());
  bench.expect_messages({row.warning, row.done});
  bench.click_button();
  expect_frames(bench.port.writes, bench.network_frames_after_presence('\x85', row.payloads.size()));
  EXPECT_EQ(bench.pump.sleeps,
            row.acknowledge == Acknowledge::command ? command_pauses(row.payloads.size()) : Pauses{});
}

TEST_P(Golden, on_a_network_that_stops_acknowledging) {
  const Row& row = GetParam();
  for (std::size_t acknowledges = 0; acknowledges < row.payloads.size(); ++acknowledges) {
    GoldenBench bench(row);
    bench.use_network("5");
    bench.answer_at('\x85', acknowledges);
    bench.expect_messages(
        {row.warning, row.acknowledge == Acknowledge::command ? no_command_acknowledge : no_acknowledge});
    bench.click_button();
    expect_frames(bench.port.writes, bench.network_frames_after_presence('\x85', acknowledges + 1));
  }
}

TEST_P(Golden, at_the_global_address) {
  const Row& row = GetParam();
  GoldenBench bench(row);
  bench.use_network("127");
  const bool awaited = row.acknowledge == Acknowledge::command;
  bench.answer_at('\xFF', awaited ? row.payloads.size() : 0);
  bench.expect_messages({row.warning, row.done});
  bench.click_button();
  expect_frames(bench.port.writes, bench.network_frames('\xFF', row.payloads.size()));
  EXPECT_EQ(bench.pump.sleeps, awaited ? command_pauses(row.payloads.size()) : row.pauses);
}

TEST_P(Golden, with_the_port_closed) {
  GoldenBench bench(GetParam(), false);
  bench.dialogs.expect_message("Comm port is not open");
  bench.click_button();
  EXPECT_EQ(bench.port.written(), "");
}

TEST_P(Golden, without_an_address) {
  for (const bool network : {false, true}) {
    GoldenBench bench(GetParam());
    bench.use_network(" ");
    bench.program.services().settings.network_mode = network;
    bench.dialogs.expect_message("A Network address has not been set");
    bench.click_button();
    EXPECT_EQ(bench.port.written(), "");
  }
}

TEST_P(Golden, looks_at_port_and_address_in_its_order) {
  const Row& row = GetParam();
  GoldenBench bench(row, false);
  bench.use_network(" ");
  bench.dialogs.expect_message(row.first_look == FirstLook::port ? "Comm port is not open"
                                                                 : "A Network address has not been set");
  bench.click_button();
  EXPECT_EQ(bench.port.written(), "");
}

TEST_P(GoldenPresence, without_a_reader) {
  const Row& row = GetParam();
  ASSERT_TRUE(row.presence);
  for (const bool network : {false, true}) {
    GoldenBench bench(row);
    bench.use_network("5");
    bench.program.services().settings.network_mode = network;
    bench.expect_messages({row.warning, "Reader is not Connected"});
    bench.click_button();
    expect_frames(bench.port.writes, {network ? "\x85\x02V\x03" : "V\r"});
  }
}

// A screen without such a button has no rows for these.
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(GoldenPresence);

}  // namespace
