// Whether the file of an upload is still open, as the system tells it.

#include "access/open_files_unix.h"
#include "access/upload_bench.h"

namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

struct UploadFile : Upload {};

INSTANTIATE_TEST_SUITE_P(every, UploadFile, testing::ValuesIn(upload_rows), name_of_upload);

TEST_P(UploadFile, a_reader_that_falls_silent_ends_it_with_the_file_left_open) {
  use_reader_at(5);
  reader.records = {"12345\x07", "678\x07"};
  reader.spoil = [](int, std::string_view command, std::string reply) {
    return command.size() == 1 && command != "V" && reply.find("678") != std::string::npos ? "\x06\x02"s
                                                                                           : reply;
  };
  std::chrono::milliseconds at_box{};
  expect_dialog();
  dialogs.expect_message(boxes::upload_time_out, [&] {
    at_box = pump.elapsed();
    EXPECT_TRUE(busy.uploading_on);
    EXPECT_NE(shown.back(), "(hidden)");
    EXPECT_EQ(file("up.txt"), line("12345", "07")) << "the line has left the program before the box";
  });
  run();
  EXPECT_TRUE(holds_open(path("up.txt")));
  const auto before = (row.tests_connection ? 15ms : 0ms) + 100ms + 15ms + 100ms + 15ms;
  EXPECT_EQ(at_box, before + row.silence);
  EXPECT_FALSE(busy.uploading_on);
  EXPECT_EQ(shown.back(), "(hidden)");
  EXPECT_TRUE(port.written().ends_with(row.record_request + "\x03\x06\x06"));
}

TEST_P(UploadFile, a_new_upload_first_closes_the_file_that_a_time_out_left_open) {
  reader.records = {"12345\x07", "678\x07"};
  reader.spoil = [](int, std::string_view, std::string reply) {
    return reply.find("678") != std::string::npos ? std::string{} : reply;
  };
  expect_dialog();
  dialogs.expect_message(boxes::upload_time_out);
  run();
  EXPECT_TRUE(holds_open(path("up.txt")));
  reader.spoil = {};
  reader.records = {"9\x07"};
  expect_dialog();
  dialogs.expect_message(boxes::upload_complete);
  run();
  EXPECT_EQ(file("up.txt"), line("9", "07"));
  EXPECT_FALSE(holds_open(path("up.txt")));
}

}  // namespace
