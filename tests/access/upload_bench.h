#pragma once

#include "access/transfer_bench.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

/// What a test knows of each upload, in words of its own.
struct UploadRow {
  const char* name;
  const UploadKind& kind;
  std::string title;
  std::string file_name;
  std::string request;         // "ur" or "lr"
  std::string record_request;  // "u" or "l"
  bool tests_connection;
  bool cancel_uses_name;
  std::chrono::milliseconds silence;
};

inline const std::vector<UploadRow> upload_rows{
    {"access_list", access_list_upload, "Upload Access List File", "uploadacc.txt", "ur", "u", true, true,
     std::chrono::milliseconds(1000)},
    {"access_log", access_log_upload, "Upload Access Log", "uploadlog.txt", "lr", "l", false, true,
     std::chrono::milliseconds(250)},
    {"collected_records", collected_records_upload, "Upload Log", "uploadlog.txt", "lr", "l", true, false,
     std::chrono::milliseconds(250)},
};

inline std::string name_of_upload(const testing::TestParamInfo<UploadRow>& info) {
  return info.param.name;
}

/// One of the uploads on a stub reader.
struct Upload : testing::TestWithParam<UploadRow>, TransferBench {
  const UploadRow& row = GetParam();

  void expect_dialog() { dialogs.expect_save(row.title, path("up.txt")); }
  void run() { transfers.upload(row.kind, status); }
  /// One record as it stands in the file.
  [[nodiscard]] std::string line(const std::string& id, const std::string& digits) const {
    const bool list = &row.kind == &access_list_upload;
    return list ? id + blanks(70 - id.size()) + digits + "\r\n"
                : id + static_cast<char>(std::stoi(digits)) + "\r\n";
  }
};
