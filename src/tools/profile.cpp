#include "tools/profile.h"

#include "link/click.h"
#include "shell/folders.h"
#include "shell/safe_file.h"

#include <QFile>

#include <algorithm>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

constexpr std::string_view own_folder = "c:\\tarvos\\";
constexpr std::string_view default_name = "velltest.txt";
constexpr std::size_t line_count = 3 * TestProfile::steps;

/// Where a profile really is: "c:\tarvos" stands for the program's folder, which other platforms have
/// elsewhere.
std::filesystem::path file_of(const std::filesystem::path& profilename) {
  const std::u16string name = profilename.u16string();
  const std::u16string folder(own_folder.begin(), own_folder.end());
  return name.starts_with(folder) ? folder_to_start_in(StartFolder::tarvos) / name.substr(folder.size())
                                  : profilename;
}

/// The lines that `end` ends, and what stands behind the last one.
std::vector<std::string> split(std::string_view text, std::string_view end) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t length = std::min(text.find(end), text.size());
    lines.emplace_back(text.substr(0, length));
    text.remove_prefix(std::min(length + end.size(), text.size()));
  }
  return lines;
}

std::vector<std::string> lines_of(std::string_view text) {
  std::vector<std::string> lines = split(text, line_end);
  if (lines.size() < line_count) {
    // Written elsewhere, with other line ends.
    lines = split(text, "\n");
    for (std::string& line : lines) {
      if (line.ends_with('\r')) {
        line.pop_back();
      }
    }
  }
  return lines;
}

template <typename Profile>
auto tables_in_file_order(Profile& profile) {
  return std::array{&profile.captions, &profile.commands, &profile.waits};
}

}  // namespace

std::filesystem::path default_profile() {
  return std::string(own_folder) + std::string(default_name);
}

TestProfile load_profile(const std::filesystem::path& profilename) {
  const std::filesystem::path file = file_of(profilename);
  const std::vector<std::string> lines = lines_of(read_whole_file(file));
  if (lines.size() < line_count) {
    throw ClickError("The test profile " + shown_name(file) + " has only " + std::to_string(lines.size()) +
                     " of its " + std::to_string(line_count) + " lines");
  }
  TestProfile profile;
  auto line = lines.begin();
  for (auto* const table : tables_in_file_order(profile)) {
    std::copy_n(line, TestProfile::steps, table->begin());
    line += TestProfile::steps;
  }
  return profile;
}

void save_profile(const std::filesystem::path& profilename, const TestProfile& profile) {
  std::string text;
  for (const auto* const table : tables_in_file_order(profile)) {
    for (const std::string& line : *table) {
      if (line.find(line_end) != std::string::npos) {
        throw ClickError("A line break cannot stand in a test profile");
      }
      text.append(line).append(line_end);
    }
  }
  replace_file(file_of(profilename), text);
}

void provide_default_profile() {
  const std::filesystem::path file = file_of(default_profile());
  std::error_code failed;
  if (std::filesystem::exists(file, failed)) {
    return;
  }
  Q_INIT_RESOURCE(tools);
  QFile shipped(QStringLiteral(":/tools/velltest.txt"));
  if (!shipped.open(QIODevice::ReadOnly)) {
    return;
  }
  try {
    replace_file(file, shipped.readAll().toStdString());
  } catch (const ClickError&) {
    // Where nothing can be written, the start of the test tells that the file is missing.
  }
}
