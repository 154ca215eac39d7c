#pragma once

#include <QFile>

#include <filesystem>
#include <string_view>

/// The file that an upload writes line by line. Each line is handed to the operating system as it comes, so
/// that even a killed program has lost none. An upload that times out leaves its file open; the next one
/// closes it first, so that two open files never write over each other.
class UploadFile {
 public:
  /// Creates the file or empties an existing one. @return false when that cannot be done; the lines that
  /// follow then go nowhere.
  bool create(const std::filesystem::path& path);
  /// Writes the line and its end. @return false when the file does not take them; then no part of them is in
  /// it.
  bool write_line(std::string_view line);
  void close() { file_.close(); }

 private:
  QFile file_;
};
