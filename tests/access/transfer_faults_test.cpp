// Every transfer against the simulated readers, disturbed at every byte of its answers: it ends in bounded
// time with its own words, its flags clear and the file as far as it came, and the next one works. Which
// words those are for the faults that have but one right ending stands in transfer_fault_words_test.cpp.

#include "access/spoilt_transfers.h"

namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

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
                         [](const auto& row) { return name_of(row.param); });

constexpr int identification_length = 38;  // with its frame
constexpr int longest_other = 12;

TEST_P(TransferFaults, end_orderly_at_every_byte) {
  const std::string whole = run_spoilt(operation, networked, 1000, "silent").file;
  for (int answer = 0; answer < answers(); ++answer) {
    if (answers() > 5 && answer > 1 && answer < answers() - 2) {
      continue;  // of many alike
    }
    std::vector<std::string> faults{"silent", "late 90", "late 240", "pause 2 6000"};
    const int length = operation.tests_connection && answer == 0 ? identification_length : longest_other;
    for (int byte = 1; byte <= length; ++byte) {
      const std::string n = std::to_string(byte);
      for (const std::string& fault :
           {"garbage-at " + n + " 3", "double " + n, "pause " + n + " 300", "hang-up " + n}) {
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
