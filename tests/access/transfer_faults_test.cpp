// Every transfer against the simulated readers, spoilt in every way at every byte of its answers: it ends in
// bounded time with its own words, its flags clear and the file as far as it came, and the next one works.

#include "access/simulated_line.h"
#include "link/numbers.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

const std::string list_line = "12345" + std::string(65, ' ') + "07\r\n";
const std::string week = "05 07 " + std::string(56, '0') + "\r\n";

/// A transfer, the reader it goes to and how many answers it asks for.
struct Operation {
  const char* name;
  readersim::Family family;
  std::function<void(SimulatedBench& bench)> run;
  std::string done;
  std::string timed_out;
  bool tests_connection;
  int answers;  ///< the connection test's included
  bool upload;
};

void prepare(SimulatedBench& bench) {
  readersim::Reader& reader = bench.simulated.reader();
  reader.settings.set(readersim::Setting::record_length, "5");
  reader.access.clear();
  EXPECT_TRUE(reader.access.put("12345", 7));
  EXPECT_TRUE(reader.access.put("67890", 13));  // the schedule's code is the end of a plain reply
  reader.log = {.records = {"first,1", "second\x03"}, .next = 0};
  std::filesystem::remove(bench.path("up.txt"));
  if (!std::filesystem::exists(bench.path("two_records.txt"))) {
    bench.write_file("two_records.txt", list_line + list_line);
    bench.write_file("one_week.txt", week);
  }
}

void run_upload(SimulatedBench& bench, const UploadKind& kind) {
  bench.dialogs.file = bench.path("up.txt");
  bench.transfers.upload(kind, bench.status);
}

const std::vector<Operation> operations{
    {"access list download", readersim::Family::orinta,
     [](SimulatedBench& bench) {
       bench.dialogs.file = bench.path("two_records.txt");
       bench.transfers.download_access_list("5", bench.status);
     },
     "        Download Complete         ", "Reader timed out", true, 3, false},
    {"schedule download", readersim::Family::orinta,
     [](SimulatedBench& bench) {
       bench.dialogs.file = bench.path("one_week.txt");
       bench.transfers.download_schedules(bench.status);
     },
     "        Download Complete         ", "Reader timed out", true, 9, false},
    {"access list upload", readersim::Family::orinta,
     [](SimulatedBench& bench) { run_upload(bench, access_list_upload); }, "Upload Complete",
     "Reader Timeout", true, 5, true},
    {"access log upload", readersim::Family::orin,
     [](SimulatedBench& bench) { run_upload(bench, access_log_upload); }, "Upload Complete", "Reader Timeout",
     false, 4, true},
    {"collected records upload", readersim::Family::ferro_kesh,
     [](SimulatedBench& bench) { run_upload(bench, collected_records_upload); }, "Upload Complete",
     "Reader Timeout", true, 5, true},
    {"access list clear", readersim::Family::orinta,
     [](SimulatedBench& bench) { bench.transfers.clear(access_list_clear, bench.status); },
     "        Reader Access List Cleared         ", "Reader timed out", true, 2, false},
    {"access log clear", readersim::Family::orin,
     [](SimulatedBench& bench) { bench.transfers.clear(access_log_clear, bench.status); },
     "        Reader Log Data Cleared         ", "Reader timed out", true, 2, false},
    {"collected records clear", readersim::Family::glint_kesh,
     [](SimulatedBench& bench) { bench.transfers.clear(collected_records_clear, bench.status); },
     "        Reader Log Data Cleared         ", "Reader timed out", false, 1, false},
};

/// How a transfer went whose nth answer (from 0) was spoilt.
struct Outcome {
  Texts messages;
  std::chrono::milliseconds time{};
  std::string file;
  bool flag_left = false;
  bool status_left = false;
  std::string written;
  bool hung_up = false;
};

/// An answer is due to every frame that is no ACK. On a plain line the reader does not answer "ur" and "lr".
bool asks_for_an_answer(std::string_view bytes, bool networked) {
  const bool request = bytes == "ur\r" || bytes == "lr\r" || bytes == "cd\r" || bytes == "cl\r";
  return networked ? bytes.size() > 1 : !request;
}

Outcome run_spoilt(const Operation& operation, bool networked, int answer, const std::string& fault) {
  SimulatedBench bench{operation.family, networked};
  prepare(bench);
  const std::string reader = std::to_string(networked ? SimulatedBench::address : 0);
  int asked = 0;
  bench.simulated.before_write = [&](std::string_view bytes) {
    if (asks_for_an_answer(bytes, networked) && asked++ == answer) {
      EXPECT_EQ(bench.simulated.console("fault " + reader + " " + fault), "");
    }
  };
  operation.run(bench);
  Outcome outcome{bench.dialogs.messages, bench.pump.elapsed(),
                  bench.file("up.txt"),   bench.busy.downloading_on || bench.busy.uploading_on,
                  bench.status_shown,     bench.port.written(),
                  !bench.link.comopen()};

  // Whatever went wrong, the next transfer works.
  bench.simulated.before_write = {};
  bench.simulated.console("fault clear");
  if (outcome.hung_up) {
    bench.simulated.console("replug");
    EXPECT_TRUE(bench.link.opencomm());
  }
  bench.pump.idle(10s);  // what a late answer still has to say is over by then
  bench.busy = {};       // a refused upload of collected records leaves its flag set for good
  prepare(bench);
  bench.dialogs.messages.clear();
  operation.run(bench);
  EXPECT_EQ(bench.dialogs.messages, Texts{operation.done}) << "the transfer after the spoilt one";
  return outcome;
}

/// What every spoilt transfer must keep to.
void expect_orderly(const Operation& operation, bool networked, const Outcome& outcome) {
  ASSERT_EQ(outcome.messages.size(), 1U);
  const std::string& words = outcome.messages.front();
  const bool refused = words == "Reader is not Connected";
  EXPECT_TRUE(words == operation.done || words == operation.timed_out ||
              (operation.tests_connection && refused))
      << words;
  EXPECT_LT(outcome.time, 30s);
  EXPECT_FALSE(outcome.status_left);
  // Only the upload of collected records sets its flag before the connection test, and keeps it then.
  EXPECT_EQ(outcome.flag_left, refused && operation.family == readersim::Family::ferro_kesh);
  if (networked && !refused && operation.done.find("Cleared") == std::string::npos && !outcome.hung_up) {
    EXPECT_TRUE(outcome.written.ends_with("\x06\x06")) << "the ACKs at the end";
  }
}

class TransferFaults : public testing::TestWithParam<std::tuple<std::size_t, bool>> {
 protected:
  const Operation& operation = operations.at(std::get<0>(GetParam()));
  const bool networked = std::get<1>(GetParam());
  /// Answers that come at all: a plain line has none to the requests and clears.
  [[nodiscard]] int answers() const {
    return networked ? operation.answers
                     : operation.answers -
                           (operation.upload || operation.done.ends_with("Cleared         ") ? 1 : 0);
  }
};

/// The records that came before the spoilt answer stand in the file, and it holds whole lines only.
void expect_lines_before(const Operation& operation, bool networked, int answer, const std::string& whole,
                         const std::string& file) {
  const int first_record = (operation.tests_connection ? 1 : 0) + (networked ? 1 : 0);
  std::size_t length = 0;
  for (int record = first_record; record < answer && length < whole.size(); ++record) {
    length = whole.find('\n', length) + 1;
  }
  EXPECT_TRUE(file.starts_with(whole.substr(0, length))) << file;
  EXPECT_TRUE(file.empty() || file.ends_with("\r\n")) << file;
}

INSTANTIATE_TEST_SUITE_P(every, TransferFaults,
                         testing::Combine(testing::Range<std::size_t>(0, operations.size()), testing::Bool()),
                         [](const auto& row) {
                           std::string name = operations.at(std::get<0>(row.param)).name;
                           std::replace(name.begin(), name.end(), ' ', '_');
                           return name + (std::get<1>(row.param) ? "_network" : "_plain");
                         });

constexpr int identification_length = 38;  // with its frame
constexpr int longest_other = 12;

TEST_P(TransferFaults, end_orderly_at_every_byte) {
  const std::string whole = run_spoilt(operation, networked, 1000, "silent").file;
  for (int answer = 0; answer < answers(); ++answer) {
    if (answers() > 5 && answer > 1 && answer < answers() - 2) {
      continue;  // of many alike
    }
    std::vector<std::string> faults{"silent",    "drop-ack",  "wrong-ack",   "cut 0",
                                    "garbage 1", "garbage 7", "late 90",     "late 240",
                                    "late 5100", "mishear 6", "pause 2 6000"};
    const int length = operation.tests_connection && answer == 0 ? identification_length : longest_other;
    for (int byte = 1; byte <= length; ++byte) {
      const std::string n = std::to_string(byte);
      for (const std::string& fault :
           {"cut " + n, "garbage-at " + n + " 3", "double " + n, "pause " + n + " 300", "hang-up " + n}) {
        faults.push_back(fault);
      }
    }
    for (const std::string& fault : faults) {
      SCOPED_TRACE(testing::Message() << "answer " << answer << ", " << fault);
      const Outcome outcome = run_spoilt(operation, networked, answer, fault);
      expect_orderly(operation, networked, outcome);
      if (operation.upload) {
        expect_lines_before(operation, networked, answer, whole, outcome.file);
      }
    }
  }
}

TEST_P(TransferFaults, without_an_answer_has_the_right_words_and_lines) {
  for (int answer = 0; answer < answers(); ++answer) {
    SCOPED_TRACE(testing::Message() << "answer " << answer);
    const Outcome outcome = run_spoilt(operation, networked, answer, "silent");
    const bool at_test = operation.tests_connection && answer == 0;
    EXPECT_EQ(outcome.messages, Texts{at_test ? "Reader is not Connected" : operation.timed_out});
    if (operation.upload) {
      // As many lines as records had come.
      const int before_records = (operation.tests_connection ? 1 : 0) + (networked ? 1 : 0);
      const int lines = std::max(0, answer - before_records);
      EXPECT_EQ(std::count(outcome.file.begin(), outcome.file.end(), '\n'), lines);
    }
  }
}

TEST_P(TransferFaults, unspoilt_has_the_right_words) {
  const Outcome outcome = run_spoilt(operation, networked, 1000, "silent");
  EXPECT_EQ(outcome.messages, Texts{operation.done});
  expect_orderly(operation, networked, outcome);
}

}  // namespace
