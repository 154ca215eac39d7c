// A place that fills up in the middle of an upload. A limit to the size of files fails a write half-way as a
// full disk does.

#include "access/open_files_unix.h"
#include "access/transfer_bench.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

/// Lets no file grow beyond so many bytes while it lives.
class FullPlace {
 public:
  explicit FullPlace(rlim_t bytes) : old_handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old_);
    const rlimit limit{bytes, old_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullPlace() {
    setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, old_handler_);
  }
  FullPlace(const FullPlace&) = delete;
  FullPlace& operator=(const FullPlace&) = delete;

 private:
  void (*old_handler_)(int);
  rlimit old_{};
};

struct UploadIntoAFullPlace : testing::Test, TransferBench {};

TEST_F(UploadIntoAFullPlace, of_collected_records_ends_silently_and_keeps_whole_lines) {
  reader.records = {"11111", "22222", "33333"};
  dialogs.expect_save("Upload Log", path("up.txt"));
  {
    const FullPlace full(16);  // two lines of seven
    transfers.upload(collected_records_upload, status);
  }
  EXPECT_FALSE(busy.uploading_on);
  EXPECT_EQ(shown.back(), "(hidden)");
  EXPECT_EQ(file("up.txt"), "11111\r\n22222\r\n");
  EXPECT_FALSE(holds_open(path("up.txt")));

  reader.records = {"4"};
  dialogs.expect_save("Upload Log", path("next.txt"));
  dialogs.expect_message(boxes::upload_complete);
  transfers.upload(collected_records_upload, status);
  EXPECT_EQ(file("next.txt"), "4\r\n");
}

TEST_F(UploadIntoAFullPlace, of_an_access_log_goes_on_with_the_lines_that_the_place_takes) {
  reader.records = {"11111", "22222", "a long one", "4", "55555"};
  dialogs.expect_save("Upload Access Log", path("up.txt"));
  dialogs.expect_message(boxes::upload_complete);
  {
    const FullPlace full(19);
    transfers.upload(access_log_upload, status);
  }
  EXPECT_FALSE(busy.uploading_on);
  EXPECT_EQ(file("up.txt"), "11111\r\n22222\r\n4\r\n") << "whole lines, and all that found room";
}

}  // namespace
