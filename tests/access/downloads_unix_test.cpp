// What both downloads must keep to: how much of an answer is waited for, a missing address, and a file that
// cannot be read.

#include "access/transfer_bench.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

/// What a test knows of each download, in words of its own.
struct Row {
  const char* name;
  std::string dialog;
  std::function<void(TransferBench& bench)> run;
  std::string line;           ///< of its file
  std::string first_command;  ///< of that line
  std::size_t commands;       ///< a line
};

const Row access_list{"access_list",
                      "Download Access List File",
                      [](TransferBench& bench) { bench.transfers.download_access_list("5", bench.status); },
                      "12345" + blanks(65) + "07\r\n",
                      "AC00712345",
                      1};
const Row schedules{"schedules",
                    "Download Schedule File",
                    [](TransferBench& bench) { bench.transfers.download_schedules(bench.status); },
                    "05 07 08001700" + std::string(48, '0') + "\r\n",
                    "SA005108001700",
                    8};

struct Downloads : testing::TestWithParam<Row>, TransferBench {
  const Row& row = GetParam();

  void run(const std::filesystem::path& file, std::string_view box) {
    dialogs.expect_open(row.dialog, file);
    dialogs.expect_message(box);
    clicks.run([this] { row.run(*this); });
  }
  /// The whole way, unspoilt.
  void expect_the_next_one_works() {
    reader.spoil = {};
    reader.heard.clear();
    run(write_file("good.txt", row.line), boxes::download_complete);
    EXPECT_EQ(reader.heard.size(), 1U + row.commands);
    EXPECT_EQ(reader.heard.at(1), row.first_command);
  }
};

INSTANTIATE_TEST_SUITE_P(both, Downloads, testing::Values(access_list, schedules),
                         [](const auto& row_info) { return std::string(row_info.param.name); });

TEST_P(Downloads, a_reply_one_character_short_times_out) {
  for (const bool networked : {false, true}) {
    SCOPED_TRACE(networked ? "network: ACK, STX, A" : "plain: A");
    if (networked) {
      use_reader_at(5);
    }
    reader.heard.clear();
    reader.spoil = [](int, std::string_view command, std::string reply) {
      return command == "V" ? reply : reply.substr(0, reply.size() - 1);
    };
    const auto start = pump.elapsed();
    run(write_file("file.txt", row.line), boxes::timed_out);
    EXPECT_EQ(pump.elapsed() - start, 15ms + 5000ms) << "the connection test, and the wait";
    EXPECT_EQ(reader.heard.back(), row.first_command);
    EXPECT_EQ(shown.at(shown.size() - 2), "Records Downloaded: 00001  Errors: 00000");
    expect_the_next_one_works();
  }
}

TEST_P(Downloads, a_missing_address_on_a_plain_line_fails_the_connection_test) {
  const std::filesystem::path file = write_file("file.txt", row.line);
  for (const char* const address : {"", "  "}) {
    settings.reader_address = address;
    dialogs.expect_open(row.dialog, file);
    dialogs.expect_message(boxes::no_address);  // the address is missed by the connection test alone
    dialogs.expect_message(boxes::not_connected);
    row.run(*this);
    dialogs.verify();
    EXPECT_EQ(port.written(), "");
    EXPECT_FALSE(busy.downloading_on);
    EXPECT_TRUE(shown.empty());
  }
  settings.reader_address = "0";
  expect_the_next_one_works();
}

struct Unreadable {
  const char* what;
  std::function<std::filesystem::path(TransferBench& bench)> file;
  std::string reason;
};

const std::vector<Unreadable> unreadables{
    {"a folder",
     [](TransferBench& bench) {
       std::filesystem::create_directory(bench.path("folder.txt"));
       return bench.path("folder.txt");
     },
     "file to open is a directory"},
    {"a file whose reading fails", [](TransferBench&) { return "/proc/self/mem"; }, "Input/output error"},
};

TEST_P(Downloads, a_file_that_cannot_be_read_is_told_with_the_reason_and_the_flag_cleared) {
  for (const bool networked : {false, true}) {
    if (networked) {
      use_reader_at(5);
    }
    for (const Unreadable& unreadable : unreadables) {
      SCOPED_TRACE(testing::Message() << unreadable.what << (networked ? ", network" : ", plain"));
      const std::filesystem::path file = unreadable.file(*this);
      const std::size_t before = shown.size();
      reader.heard.clear();
      run(file, "Cannot read " + file.string() + ": " + unreadable.reason);
      EXPECT_FALSE(busy.downloading_on);
      EXPECT_EQ(shown.size(), before) << "no status line";
      EXPECT_EQ(reader.heard, std::vector<std::string>{"V"});
      expect_the_next_one_works();
    }
  }
}

}  // namespace
