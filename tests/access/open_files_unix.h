#pragma once

#include <algorithm>
#include <filesystem>
#include <system_error>

/// Whether the program has a file open at that path.
inline bool holds_open(const std::filesystem::path& path) {
  const std::filesystem::directory_iterator open_files("/proc/self/fd");
  return std::any_of(begin(open_files), end(open_files), [&path](const auto& open_file) {
    std::error_code gone;
    return std::filesystem::read_symlink(open_file.path(), gone) == path;
  });
}
