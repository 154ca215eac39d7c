// How every transfer ends whose answer is cut, bears no or a wrong acknowledge, comes too late or not at all,
// or has noise before it: its words, its ACKs and what stands in the file, to the letter.

#include "access/spoilt_transfers.h"
#include "link/numbers.h"

#include <algorithm>
#include <set>

namespace {

using Faults = std::vector<std::string>;

enum class End { refused, timed_out, done };

/// One row: the nth answer (from 0) spoilt in one of these ways. "cut 0-3" is each of these cuts.
struct Row {
  std::string operation;
  int answer;
  Faults faults;
  End end;
  int acks;          ///< that the program sends in all
  std::string left;  ///< the file of an upload; the last status of a download
};

std::string downloaded(int sent, int errors) {
  return "Records Downloaded: " + with_leading_zeros(sent, 5) + "  Errors: " + with_leading_zeros(errors, 5);
}

std::string entry(const std::string& id, const std::string& schedule) {
  return id + std::string(70 - id.size(), ' ') + schedule + "\r\n";
}

const std::string first_entry = entry("12345", "07");
const std::string both_entries = first_entry + entry("67890", "13");
const std::string first_record = "first,1\r\n";
const std::string both_records = "first,1\r\nsecond\x03\r\n";
const std::string noise_1 = "\x25";  // the simulated readers' first random bytes
const std::string noise_7 = "\x25\xEB\x8C\x48\xFF\x89\xCB";

// The answer to the connection test has no ACK where any of these befalls it.
const Faults all_but_whole{"drop-ack", "wrong-ack", "late 5100", "mishear 6", "garbage 1", "garbage 7"};
const Faults no_answer{"drop-ack", "late 5100", "mishear 6"};
// A plain answer bears no ACK, and a plain reader has no address to mishear.
const Faults harmless_on_a_plain_line{"drop-ack", "wrong-ack", "mishear 6"};

Faults operator+(Faults faults, const std::string& another) {
  faults.push_back(another);
  return faults;
}

const std::vector<Row> network_rows{
    {"access list download", 0, all_but_whole + "cut 0-32", End::refused, 0, ""},
    {"access list download", 0, {"cut 33"}, End::done, 7, downloaded(2, 0)},
    {"access list download", 1, no_answer + "cut 0-3", End::timed_out, 5, downloaded(1, 0)},
    {"access list download", 1, {"wrong-ack", "cut 4"}, End::done, 7, downloaded(2, 0)},  // is not looked at
    {"access list download", 1, {"garbage 1", "garbage 7"}, End::done, 7, downloaded(2, 1)},
    {"access list download", 2, no_answer + "cut 0-3", End::timed_out, 6, downloaded(2, 0)},
    {"access list download", 2, {"wrong-ack", "cut 4"}, End::done, 7, downloaded(2, 0)},
    {"access list download", 2, {"garbage 1", "garbage 7"}, End::done, 7, downloaded(2, 1)},

    {"schedule download", 0, all_but_whole + "cut 0-32", End::refused, 0, ""},
    {"schedule download", 0, {"cut 33"}, End::done, 13, downloaded(8, 0)},
    {"schedule download", 1, no_answer + "cut 0-3", End::timed_out, 5, downloaded(1, 0)},
    {"schedule download", 1, {"wrong-ack", "cut 4"}, End::done, 13, downloaded(8, 0)},
    {"schedule download", 1, {"garbage 1", "garbage 7"}, End::done, 13, downloaded(8, 1)},
    {"schedule download", 8, no_answer + "cut 0-3", End::timed_out, 12, downloaded(8, 0)},
    {"schedule download", 8, {"wrong-ack", "cut 4"}, End::done, 13, downloaded(8, 0)},
    {"schedule download", 8, {"garbage 1", "garbage 7"}, End::done, 13, downloaded(8, 1)},

    {"access list upload", 0, all_but_whole + "cut 0-32", End::refused, 0, ""},
    {"access list upload", 0, {"cut 33"}, End::done, 8, both_entries},
    {"access list upload", 1, all_but_whole + "cut 0-0", End::timed_out, 5, ""},
    {"access list upload", 1, {"cut 1"}, End::done, 8, both_entries},
    {"access list upload", 2, all_but_whole + "cut 0-8", End::timed_out, 5, ""},
    {"access list upload", 2, {"cut 9"}, End::done, 8, both_entries},
    {"access list upload", 3, all_but_whole + "cut 0-8", End::timed_out, 6, first_entry},
    {"access list upload", 3, {"cut 9"}, End::done, 8, both_entries},
    {"access list upload", 4, all_but_whole + "cut 0-5", End::timed_out, 7, both_entries},
    {"access list upload", 4, {"cut 6"}, End::done, 8, both_entries},

    {"access log upload", 0, all_but_whole + "cut 0-0", End::timed_out, 4, ""},
    {"access log upload", 0, {"cut 1"}, End::done, 7, both_records},
    {"access log upload", 1, all_but_whole + "cut 0-9", End::timed_out, 4, ""},
    {"access log upload", 1, {"cut 10"}, End::done, 7, both_records},
    {"access log upload", 2, all_but_whole + "cut 0-8", End::timed_out, 5, first_record},
    {"access log upload", 2, {"cut 9"}, End::done, 7, "first,1\r\nsecond\r\n"},  // one of two end characters
    {"access log upload", 2, {"cut 10"}, End::done, 7, both_records},
    {"access log upload", 3, all_but_whole + "cut 0-5", End::timed_out, 6, both_records},
    {"access log upload", 3, {"cut 6"}, End::done, 7, both_records},

    {"collected records upload", 0, all_but_whole + "cut 0-29", End::refused, 0, ""},
    {"collected records upload", 0, {"cut 30"}, End::done, 8, both_records},
    {"collected records upload", 1, all_but_whole + "cut 0-0", End::timed_out, 5, ""},
    {"collected records upload", 1, {"cut 1"}, End::done, 8, both_records},
    {"collected records upload", 2, all_but_whole + "cut 0-9", End::timed_out, 5, ""},
    {"collected records upload", 2, {"cut 10"}, End::done, 8, both_records},
    {"collected records upload", 3, all_but_whole + "cut 0-8", End::timed_out, 6, first_record},
    {"collected records upload", 3, {"cut 9"}, End::done, 8, "first,1\r\nsecond\r\n"},
    {"collected records upload", 3, {"cut 10"}, End::done, 8, both_records},
    {"collected records upload", 4, all_but_whole + "cut 0-5", End::timed_out, 7, both_records},
    {"collected records upload", 4, {"cut 6"}, End::done, 8, both_records},

    // Any character will do as an answer to a clear.
    {"access list clear", 0, all_but_whole + "cut 0-32", End::refused, 0, ""},
    {"access list clear", 0, {"cut 33"}, End::done, 4, ""},
    {"access list clear", 1, no_answer + "cut 0-0", End::timed_out, 3, ""},
    {"access list clear", 1, {"wrong-ack", "garbage 1", "garbage 7", "cut 1"}, End::done, 4, ""},
    {"access log clear", 0, all_but_whole + "cut 0-30", End::refused, 0, ""},
    {"access log clear", 0, {"cut 31"}, End::done, 4, ""},
    {"access log clear", 1, no_answer + "cut 0-0", End::timed_out, 3, ""},
    {"access log clear", 1, {"wrong-ack", "garbage 1", "garbage 7", "cut 1"}, End::done, 4, ""},
    {"collected records clear", 0, no_answer + "cut 0-0", End::timed_out, 2, ""},
    {"collected records clear", 0, {"wrong-ack", "garbage 1", "garbage 7", "cut 1"}, End::done, 3, ""},
};

// No ACK is ever sent on a plain line. Requests and clears have no answer there that could be spoilt, and
// noise before the answer to the connection test is part of it.
const Faults harmless_at_test = harmless_on_a_plain_line + "garbage 1" + "garbage 7";
const std::vector<Row> plain_rows{
    {"access list download", 0, {"late 5100", "cut 0-30"}, End::refused, 0, ""},
    {"access list download", 0, harmless_at_test + "cut 31", End::done, 0, downloaded(2, 0)},
    {"access list download", 1, {"late 5100", "cut 0-1"}, End::timed_out, 0, downloaded(1, 0)},
    {"access list download", 1, harmless_on_a_plain_line + "cut 2", End::done, 0, downloaded(2, 0)},
    {"access list download", 1, {"garbage 1", "garbage 7"}, End::done, 0, downloaded(2, 1)},
    {"access list download", 2, {"late 5100", "cut 0-1"}, End::timed_out, 0, downloaded(2, 0)},
    {"access list download", 2, harmless_on_a_plain_line + "cut 2", End::done, 0, downloaded(2, 0)},
    {"access list download", 2, {"garbage 1", "garbage 7"}, End::done, 0, downloaded(2, 1)},

    {"schedule download", 0, {"late 5100", "cut 0-30"}, End::refused, 0, ""},
    {"schedule download", 0, harmless_at_test + "cut 31", End::done, 0, downloaded(8, 0)},
    {"schedule download", 1, {"late 5100", "cut 0-1"}, End::timed_out, 0, downloaded(1, 0)},
    {"schedule download", 1, harmless_on_a_plain_line + "cut 2", End::done, 0, downloaded(8, 0)},
    {"schedule download", 1, {"garbage 1", "garbage 7"}, End::done, 0, downloaded(8, 1)},
    {"schedule download", 8, {"late 5100", "cut 0-1"}, End::timed_out, 0, downloaded(8, 0)},
    {"schedule download", 8, harmless_on_a_plain_line + "cut 2", End::done, 0, downloaded(8, 0)},
    {"schedule download", 8, {"garbage 1", "garbage 7"}, End::done, 0, downloaded(8, 1)},

    // Noise before a record becomes part of it; before the end it makes a record of that, asked for again.
    {"access list upload", 0, {"late 5100", "cut 0-30"}, End::refused, 0, ""},
    {"access list upload", 0, harmless_at_test + "cut 31", End::done, 0, both_entries},
    {"access list upload", 1, {"late 5100", "cut 0-6"}, End::timed_out, 0, ""},
    {"access list upload", 1, harmless_on_a_plain_line + "cut 7", End::done, 0, both_entries},
    {"access list upload",
     1,
     {"garbage 1"},
     End::done,
     0,
     entry(noise_1 + "12345", "07") + entry("67890", "13")},
    {"access list upload",
     1,
     {"garbage 7"},
     End::done,
     0,
     entry(noise_7 + "12345", "07") + entry("67890", "13")},
    {"access list upload", 2, {"late 5100", "cut 0-5"}, End::timed_out, 0, first_entry},
    {"access list upload", 2, {"cut 6"}, End::done, 0, first_entry + entry("6789", "48")},  // one of two ends
    {"access list upload", 2, harmless_on_a_plain_line + "cut 7", End::done, 0, both_entries},
    {"access list upload", 2, {"garbage 1"}, End::done, 0, first_entry + entry(noise_1 + "67890", "13")},
    {"access list upload", 2, {"garbage 7"}, End::done, 0, first_entry + entry(noise_7 + "67890", "13")},
    {"access list upload", 3, {"late 5100", "cut 0-3"}, End::timed_out, 0, both_entries},
    {"access list upload", 3, harmless_on_a_plain_line + "cut 4", End::done, 0, both_entries},
    {"access list upload", 3, {"garbage 1"}, End::done, 0, both_entries + entry(noise_1 + "EN", "68")},
    {"access list upload", 3, {"garbage 7"}, End::done, 0, both_entries + entry(noise_7 + "EN", "68")},

    {"access log upload", 0, {"late 5100", "cut 0-7"}, End::timed_out, 0, ""},
    {"access log upload", 0, harmless_on_a_plain_line + "cut 8", End::done, 0, both_records},
    {"access log upload", 0, {"garbage 1"}, End::done, 0, noise_1 + both_records},
    {"access log upload", 0, {"garbage 7"}, End::done, 0, noise_7 + both_records},
    {"access log upload", 1, {"late 5100", "cut 0-7"}, End::timed_out, 0, first_record},
    {"access log upload", 1, harmless_on_a_plain_line + "cut 8", End::done, 0, both_records},
    {"access log upload", 1, {"garbage 1"}, End::done, 0, first_record + noise_1 + "second\x03\r\n"},
    {"access log upload", 1, {"garbage 7"}, End::done, 0, first_record + noise_7 + "second\x03\r\n"},
    {"access log upload", 2, {"late 5100", "cut 0-3"}, End::timed_out, 0, both_records},
    {"access log upload", 2, harmless_on_a_plain_line + "cut 4", End::done, 0, both_records},
    {"access log upload", 2, {"garbage 1"}, End::done, 0, both_records + noise_1 + "END\r\n"},
    {"access log upload", 2, {"garbage 7"}, End::done, 0, both_records + noise_7 + "END\r\n"},

    {"collected records upload", 0, {"late 5100", "cut 0-27"}, End::refused, 0, ""},
    {"collected records upload", 0, harmless_at_test + "cut 28", End::done, 0, both_records},
    {"collected records upload", 1, {"late 5100", "cut 0-7"}, End::timed_out, 0, ""},
    {"collected records upload", 1, harmless_on_a_plain_line + "cut 8", End::done, 0, both_records},
    {"collected records upload", 1, {"garbage 1"}, End::done, 0, noise_1 + both_records},
    {"collected records upload", 1, {"garbage 7"}, End::done, 0, noise_7 + both_records},
    {"collected records upload", 2, {"late 5100", "cut 0-7"}, End::timed_out, 0, first_record},
    {"collected records upload", 2, harmless_on_a_plain_line + "cut 8", End::done, 0, both_records},
    {"collected records upload", 2, {"garbage 1"}, End::done, 0, first_record + noise_1 + "second\x03\r\n"},
    {"collected records upload", 2, {"garbage 7"}, End::done, 0, first_record + noise_7 + "second\x03\r\n"},
    {"collected records upload", 3, {"late 5100", "cut 0-3"}, End::timed_out, 0, both_records},
    {"collected records upload", 3, harmless_on_a_plain_line + "cut 4", End::done, 0, both_records},
    {"collected records upload", 3, {"garbage 1"}, End::done, 0, both_records + noise_1 + "END\r\n"},
    {"collected records upload", 3, {"garbage 7"}, End::done, 0, both_records + noise_7 + "END\r\n"},

    {"access list clear", 0, {"late 5100", "cut 0-30"}, End::refused, 0, ""},
    {"access list clear", 0, harmless_at_test + "cut 31", End::done, 0, ""},
    {"access log clear", 0, {"late 5100", "cut 0-28"}, End::refused, 0, ""},
    {"access log clear", 0, harmless_at_test + "cut 29", End::done, 0, ""},
};

/// "cut 0-3" as "cut 0" to "cut 3".
Faults each_of(const Faults& faults) {
  Faults each;
  for (const std::string& fault : faults) {
    const std::size_t dash = fault.find('-');
    if (!fault.starts_with("cut") || dash == std::string::npos) {
      each.push_back(fault);
      continue;
    }
    for (int n = std::stoi(fault.substr(4)); n <= std::stoi(fault.substr(dash + 1)); ++n) {
      each.push_back("cut " + std::to_string(n));
    }
  }
  return each;
}

std::string words_of(const Operation& operation, End end) {
  return end == End::refused     ? "Reader is not Connected"
         : end == End::timed_out ? operation.timed_out
                                 : operation.done;
}

void expect_end(const Operation& operation, const Row& row, const Outcome& outcome) {
  EXPECT_EQ(outcome.messages, std::vector{words_of(operation, row.end)});
  EXPECT_EQ(std::count(outcome.written.begin(), outcome.written.end(), '\x06'), row.acks);
  EXPECT_LT(outcome.time, std::chrono::seconds(30));
  EXPECT_FALSE(outcome.status_left);
  const bool keeps_its_flag = operation.name == std::string("collected records upload");  // and that is meant
  EXPECT_EQ(outcome.flag_left, keeps_its_flag && row.end == End::refused);
  EXPECT_EQ(outcome.file_there, operation.upload && row.end != End::refused);
  EXPECT_TRUE(bytes_equal(operation.upload ? outcome.file : outcome.status_text, row.left));
}

class FaultWords : public testing::TestWithParam<std::tuple<std::size_t, bool>> {
 protected:
  const Operation& operation = operations.at(std::get<0>(GetParam()));
  const bool networked = std::get<1>(GetParam());
  const std::vector<Row>& rows = networked ? network_rows : plain_rows;
};

INSTANTIATE_TEST_SUITE_P(every, FaultWords,
                         testing::Combine(testing::Range<std::size_t>(0, operations.size()), testing::Bool()),
                         [](const auto& row) { return name_of(row.param); });

TEST_P(FaultWords, are_the_transfers_own_to_the_letter) {
  for (const Row& row : rows) {
    if (row.operation != operation.name) {
      continue;
    }
    for (const std::string& fault : each_of(row.faults)) {
      SCOPED_TRACE(testing::Message() << "answer " << row.answer << ", " << fault);
      expect_end(operation, row, run_spoilt(operation, networked, row.answer, fault));
    }
  }
}

/// What the reader sends in an unspoilt transfer, an answer each.
std::vector<std::string> answers_of(const Operation& operation, bool networked) {
  SimulatedBench bench{operation.family, networked};
  prepare(bench);
  std::vector<std::string> answers;
  bench.port.line().set_observer([&](const readersim::Event& event) {
    if (event.kind == readersim::Event::Kind::sent) {
      answers.push_back(event.bytes);
    }
  });
  operation.run(bench);
  return answers;
}

// So that no answer and no way to spoil it is left out of the tables.
TEST_P(FaultWords, are_told_of_every_answer_and_fault) {
  std::multiset<std::string> told;
  for (const Row& row : rows) {
    for (const std::string& fault : each_of(row.faults)) {
      if (row.operation == operation.name) {
        told.insert(std::to_string(row.answer) + ": " + fault);
      }
    }
  }
  std::multiset<std::string> wanted;
  const std::vector<std::string> answers = answers_of(operation, networked);
  for (std::size_t answer = 0; answer < answers.size(); ++answer) {
    if (answers.size() > 5 && answer > 1 && answer < answers.size() - 1) {
      continue;  // of many alike
    }
    for (const std::string& fault :
         each_of(all_but_whole + ("cut 0-" + std::to_string(answers[answer].size())))) {
      wanted.insert(std::to_string(answer) + ": " + fault);
    }
  }
  EXPECT_EQ(told, wanted);
}

}  // namespace
