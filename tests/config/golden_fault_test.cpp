// Runs every golden row into every fault of a reader: the right words, bounded time, the right flags, and
// the next click works.

#include "config/golden_bench.h"

namespace {

using namespace golden;

/// A fault in place of the answer to one command.
struct Fault {
  const char* name;
  const char* arrives;  ///< in place of the acknowledge
  bool hangs_up = false;
  bool passes_one_address = false;  ///< who waits for the acknowledge among other characters finds it
};

const std::vector<Fault> faults{
    {"no acknowledge", ""},         {"wrong acknowledge", "\x15"},
    {"garbage alone", "\x7F#\x15"}, {"garbage before the acknowledge", "#\x7F\x06", false, true},
    {"hang-up", "", true},
};

/// Nothing takes longer than the pause or the polls for each acknowledge and the question for presence.
std::chrono::milliseconds bound(const Row& row) {
  const auto commands = static_cast<int>(row.payloads.size());
  return row.acknowledge == Acknowledge::command ? commands * 200ms + 10ms : commands * 1000ms + 200ms;
}

void expect_nothing_busy(Bench& bench) {
  const BusyFlags& busy = bench.program.services().busy;
  EXPECT_FALSE(busy.polling_on || busy.downloading_on || busy.uploading_on);
}

/// The reader works again, after a hang-up once the port has been chosen anew.
void expect_next_click_works(Bench& bench, bool after_hang_up) {
  const Row& row = bench.row;
  if (after_hang_up) {
    bench.dialogs.expect_message("Comm port is not open");
    bench.click_button();
    bench.program.services().link.restorecomm();
  }
  bench.port.writes.clear();
  bench.answer_at('\x85', row.payloads.size());
  bench.expect_messages({row.warning, row.done});
  bench.click_button();
  expect_frames(bench.port.writes, bench.network_frames_after_presence('\x85', row.payloads.size()));
}

void fail_at_command(const Row& row, const Fault& fault, std::size_t failing) {
  SCOPED_TRACE(testing::Message() << fault.name << " at command " << failing);
  Bench bench(row);
  bench.use_network("5");
  bench.answer_at('\x85', [&](std::size_t command) {
    bench.arrive(command == failing ? fault.arrives : ack);
    if (command == failing && fault.hangs_up) {
      bench.pump.after(5ms, [&bench] { bench.port.hang_up(); });
    }
  });
  const bool one_address = row.acknowledge == Acknowledge::one_address;
  const bool passes = fault.passes_one_address && one_address;
  const char* const failure = one_address ? no_acknowledge : no_command_acknowledge;
  bench.expect_messages({row.warning, passes ? row.done : failure});
  const auto begun = bench.pump.elapsed();
  bench.click_button();
  EXPECT_LE(bench.pump.elapsed() - begun, bound(row));
  expect_frames(bench.port.writes,
                bench.network_frames_after_presence('\x85', passes ? row.payloads.size() : failing + 1));
  expect_nothing_busy(bench);
  expect_next_click_works(bench, fault.hangs_up);
}

TEST_P(Golden, tells_every_fault_of_an_acknowledge_in_bounded_time) {
  const Row& row = GetParam();
  for (const Fault& fault : faults) {
    for (std::size_t failing = 0; failing < row.payloads.size(); ++failing) {
      fail_at_command(row, fault, failing);
    }
  }
}

struct PresenceFault {
  const char* name;
  const char* arrives;
  bool hangs_up = false;
};

const std::vector<PresenceFault> presence_faults{
    {"no answer", ""},
    {"wrong acknowledge", "\x15:Vell 1.00 0001\x03"},
    {"no acknowledge before the answer", ":Vell 1.00 0001\x03"},
    {"cut short", "\x06:Vell 1.00 00"},
    {"a character too few", "\x06:Vell 1.00\x03"},
    {"garbage before the answer", "#\x7F\x06:Vell 1.00 0001\x03"},
    {"hang-up", "\x06:Ve", true},
};

TEST_P(GoldenPresence, tells_every_fault_of_the_presence_in_bounded_time) {
  const Row& row = GetParam();
  for (const PresenceFault& fault : presence_faults) {
    SCOPED_TRACE(fault.name);
    Bench bench(row);
    bench.use_network("5");
    bench.answer_at('\x85', row.payloads.size());
    bench.answer_presence = [&] {
      bench.arrive(fault.arrives);
      if (fault.hangs_up) {
        bench.pump.after(20ms, [&bench] { bench.port.hang_up(); });
      }
    };
    bench.expect_messages({row.warning, "Reader is not Connected"});
    const auto begun = bench.pump.elapsed();
    bench.click_button();
    EXPECT_LE(bench.pump.elapsed() - begun, 250ms);
    expect_nothing_busy(bench);
    expect_next_click_works(bench, fault.hangs_up);
  }
}

}  // namespace
