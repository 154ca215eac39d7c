#pragma once

#include "access/simulated_bench.h"

#include <algorithm>
#include <gtest/gtest.h>

// Every transfer against the simulated readers, with one answer spoilt and then once more unspoilt.

inline const std::string list_line = "12345" + std::string(65, ' ') + "07\r\n";
inline const std::string week = "05 07 " + std::string(56, '0') + "\r\n";

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

inline void prepare(SimulatedBench& bench) {
  readersim::Reader& reader = bench.reader();
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

inline void run_upload(SimulatedBench& bench, const UploadKind& kind) {
  bench.dialogs.file = bench.path("up.txt");
  bench.transfers.upload(kind, bench.status);
}

inline const std::vector<Operation> operations{
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
  std::vector<std::string> messages;
  std::chrono::milliseconds time{};
  std::string file;
  bool flag_left = false;
  bool status_left = false;
  std::string written;
  bool hung_up = false;
  std::string status_text;  ///< the last one, also where it was hidden then
  bool file_there = false;
};

/// An answer is due to every frame that is no ACK. On a plain line the reader does not answer "ur" and "lr".
inline bool asks_for_an_answer(std::string_view bytes, bool networked) {
  const bool request = bytes == "ur\r" || bytes == "lr\r" || bytes == "cd\r" || bytes == "cl\r";
  return networked ? bytes.size() > 1 : !request;
}

inline Outcome run_spoilt(const Operation& operation, bool networked, int answer, const std::string& fault) {
  SimulatedBench bench{operation.family, networked};
  prepare(bench);
  const std::string reader = std::to_string(networked ? SimulatedBench::address : 0);
  int asked = 0;
  bench.port.before_write = [&](std::string_view bytes) {
    if (asks_for_an_answer(bytes, networked) && asked++ == answer) {
      EXPECT_EQ(bench.port.console("fault " + reader + " " + fault), "");
    }
  };
  operation.run(bench);
  Outcome outcome{bench.dialogs.messages,
                  bench.pump.elapsed(),
                  bench.file("up.txt"),
                  bench.busy.downloading_on || bench.busy.uploading_on,
                  bench.status_shown,
                  bench.port.written(),
                  !bench.link.comopen(),
                  bench.status_text,
                  std::filesystem::exists(bench.path("up.txt"))};

  // Whatever went wrong, the next transfer works.
  bench.port.before_write = {};
  bench.port.console("fault clear");
  if (outcome.hung_up) {
    bench.port.console("replug");
    EXPECT_TRUE(bench.link.opencomm());
  }
  bench.pump.idle(std::chrono::seconds(10));  // what a late answer still has to say is over by then
  bench.busy = {};  // a refused upload of collected records leaves its flag set for good
  prepare(bench);
  bench.dialogs.messages.clear();
  operation.run(bench);
  EXPECT_EQ(bench.dialogs.messages, std::vector<std::string>{operation.done})
      << "the transfer after the spoilt one";
  return outcome;
}

/// An operation's place in the table and whether it goes over a network, as a test's name.
inline std::string name_of(const std::tuple<std::size_t, bool>& row) {
  std::string name = operations.at(std::get<0>(row)).name;
  std::replace(name.begin(), name.end(), ' ', '_');
  return name + (std::get<1>(row) ? "_network" : "_plain");
}
