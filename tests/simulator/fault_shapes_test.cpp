// Every fault on every shape of answer: acknowledge alone, data on a network, data on a plain line, poll.

#include "host.h"

#include <gtest/gtest.h>
#include <ostream>

namespace {

using readersim::Fault;
using readersim::Seat;
using Kind = readersim::Fault::Kind;

struct Shape {
  const char* name;
  bool network;
  const char* command;
  std::string answer;
};

const Shape shapes[]{
    {"acknowledge", true, "}00", "\x06"},
    {"data", true, "V",
     "\x06\x02"
     "VELL READER V3.20 S/N 001001\x03"},
    {"plain data", false, "V", "VELL READER V3.20 S/N 001001\r"},
    {"poll", true, "?", "\x06\x85\x02\x03"},
};

struct Row {
  Fault fault;
  /// What becomes of an answer of that shape; the same answer where the fault does not touch it.
  std::string (*expected)(const Shape&);
  /// Whether an answer of that shape uses the fault up.
  bool (*used)(const Shape&);
};

bool always(const Shape&) {
  return true;
}
bool on_network(const Shape& shape) {
  return shape.network;
}
bool on_polls(const Shape& shape) {
  return shape.answer.starts_with("\x06\x85");
}
bool longer_than_one(const Shape& shape) {
  return shape.answer.size() > 1;
}

class Spoilt : public testing::TestWithParam<std::size_t> {};

const Row rows[]{
    {{Kind::silent}, [](const Shape&) { return std::string{}; }, always},
    {{Kind::drop_ack}, [](const Shape& s) { return s.network ? s.answer.substr(1) : s.answer; }, on_network},
    {{Kind::wrong_ack},
     [](const Shape& s) { return s.network ? "\x15" + s.answer.substr(1) : s.answer; },
     on_network},
    {{Kind::cut, 0}, [](const Shape&) { return std::string{}; }, always},
    {{Kind::cut, 1}, [](const Shape& s) { return s.answer.substr(0, 1); }, always},
    {{Kind::cut, 3}, [](const Shape& s) { return s.answer.substr(0, 3); }, always},
    {{Kind::cut, 999}, [](const Shape& s) { return s.answer; }, always},
    {{Kind::garbage, 0}, [](const Shape& s) { return s.answer; }, always},
    {{Kind::garbage, 3}, [](const Shape& s) { return "\x25\xEB\x8C" + s.answer; }, always},
    {{Kind::garbage_at, 2, 1},
     [](const Shape& s) { return s.answer.substr(0, 1) + "\x25" + s.answer.substr(1); },
     always},
    {{Kind::garbage_at, 999, 1}, [](const Shape& s) { return s.answer + "\x25"; }, always},
    {{Kind::double_byte, 1}, [](const Shape& s) { return s.answer.substr(0, 1) + s.answer; }, always},
    {{Kind::double_byte, 2},
     [](const Shape& s) {
       return s.answer.size() > 1 ? s.answer.substr(0, 2) + s.answer.substr(1) : s.answer;
     },
     longer_than_one},
    {{Kind::pause, 1, 300}, [](const Shape& s) { return s.answer; }, always},
    {{Kind::pause, 2, 300}, [](const Shape& s) { return s.answer; }, longer_than_one},
    {{Kind::late, 300}, [](const Shape& s) { return s.answer; }, always},
    {{Kind::other_address, 7},
     [](const Shape& s) { return on_polls(s) ? "\x06\x87\x02\x03" : s.answer; },
     on_polls},
};

TEST_P(Spoilt, every_shape_of_answer_is_as_the_fault_says_and_the_next_one_is_right) {
  const Row& row = rows[GetParam()];
  for (const Shape& shape : shapes) {
    SCOPED_TRACE(std::string{shape.name} + ", " + describe(row.fault));
    Host host;
    Seat& seat = host.line.add(readersim::Family::vell, 5, shape.network);
    seat.faults = {row.fault};
    const auto ask = [&] { return shape.network ? host.ask(5, shape.command) : host.tell(shape.command); };
    EXPECT_TRUE(bytes_equal(ask(), row.expected(shape)));
    EXPECT_EQ(seat.faults.empty(), row.used(shape));
    seat.faults.clear();
    EXPECT_TRUE(bytes_equal(ask(), shape.answer));
  }
}

TEST_P(Spoilt, a_silence_is_as_long_as_asked_for_and_no_byte_is_early) {
  const Row& row = rows[GetParam()];
  for (const Shape& shape : shapes) {
    SCOPED_TRACE(std::string{shape.name} + ", " + describe(row.fault));
    Host host;
    Seat& seat = host.line.add(readersim::Family::vell, 5, shape.network);
    seat.faults = {row.fault};
    host.line.receive(shape.network ? Host::frame(5, shape.command) : shape.command + std::string{"\r"},
                      host.now);
    const auto due = host.line.take_due(host.now + 10s);
    if (due.empty()) {
      continue;
    }
    const bool first_waits =
        row.fault.kind == Kind::late || (row.fault.kind == Kind::pause && row.fault.n == 1);
    EXPECT_EQ(due.front().at, host.now + (first_waits ? 320ms : 20ms));
    const bool pauses = (row.fault.kind == Kind::pause || row.fault.kind == Kind::late) && row.used(shape);
    EXPECT_EQ(due.back().at, host.now + (pauses ? 320ms : 20ms));
  }
}

INSTANTIATE_TEST_SUITE_P(Faults, Spoilt, testing::Range(std::size_t{0}, std::size(rows)));

TEST(SpoiltAlways, leaves_the_reader_itself_as_it_is) {
  // A fault is in the answer: the command has been obeyed, and only once.
  for (const readersim::FaultTraits& kind : readersim::all_faults()) {
    if (kind.kind == Kind::mishear) {
      continue;
    }
    Host host;
    Seat& seat = host.line.add(readersim::Family::orin, 5, true);
    seat.faults = {{kind.kind, 1, 1, 1}};
    (void)host.ask(5, "!01");
    EXPECT_EQ(seat.reader.relay_operations, 1) << kind.name;
  }
}

}  // namespace
