#include "tools/profile.h"

#include "link/click.h"
#include "shell/folders.h"
#include "shell/safe_file.h"
#include "support/bytes.h"

#include <QTemporaryDir>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

/// A folder of its own, which is also the home of the program's folders.
struct FolderBench {
  QTemporaryDir folder;
  QByteArray old_home = qgetenv("HOME");
  fs::path path = folder.path().toStdString();

  FolderBench() { qputenv("HOME", folder.path().toLocal8Bit()); }
  ~FolderBench() { qputenv("HOME", old_home); }

  fs::path file(const char* name, std::string_view content) const {
    replace_file(path / name, content);
    return path / name;
  }
};

std::string numbered_lines(int count, std::string_view line_end) {
  std::string text;
  for (int line = 1; line <= count; ++line) {
    text.append(std::to_string(line)).append(line_end);
  }
  return text;
}

std::string error_of(const fs::path& name) {
  try {
    static_cast<void>(load_profile(name));
  } catch (const ClickError& error) {
    return error.what();
  }
  return "";
}

}  // namespace

TEST(profile, the_file_holds_ten_captions_ten_commands_and_ten_waits) {
  const FolderBench bench;
  const TestProfile profile = load_profile(bench.file("a.txt", numbered_lines(30, "\r\n")));
  EXPECT_EQ(profile.captions.at(0), "1");
  EXPECT_EQ(profile.captions.at(9), "10");
  EXPECT_EQ(profile.commands.at(0), "11");
  EXPECT_EQ(profile.commands.at(9), "20");
  EXPECT_EQ(profile.waits.at(0), "21");
  EXPECT_EQ(profile.waits.at(9), "30");
}

TEST(profile, saving_writes_thirty_lines_in_the_same_order_with_empty_ones_for_unused_steps) {
  const FolderBench bench;
  TestProfile profile;
  profile.captions = {"one", " two "};
  profile.commands = {"V\x82X", " "};
  profile.waits = {"500", "x"};
  save_profile(bench.path / "a.txt", profile);
  const std::string empty_lines = "\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n";
  EXPECT_TRUE(bytes_equal(
      read_whole_file(bench.path / "a.txt"),
      "one\r\n two \r\n" + empty_lines + "V\x82X\r\n \r\n" + empty_lines + "500\r\nx\r\n" + empty_lines));
}

TEST(profile, every_byte_value_survives_saving_and_loading) {
  const FolderBench bench;
  TestProfile profile;
  for (int code = 0; code < 256; ++code) {
    profile.captions.at(3) += static_cast<char>(code);
    profile.commands.at(0) += static_cast<char>(255 - code);
  }
  profile.commands.at(9) = "\n";
  profile.waits.at(9) = "\r";
  save_profile(bench.path / "a.txt", profile);
  EXPECT_EQ(load_profile(bench.path / "a.txt"), profile);
}

TEST(profile, saving_replaces_a_longer_file_whole) {
  const FolderBench bench;
  bench.file("a.txt", std::string(10000, 'x'));
  save_profile(bench.path / "a.txt", {});
  EXPECT_EQ(read_whole_file(bench.path / "a.txt").size(), 60U);
}

TEST(profile, a_text_of_two_lines_is_refused_and_the_old_file_stays) {
  const FolderBench bench;
  const fs::path file = bench.file("a.txt", "old");
  TestProfile profile;
  profile.captions.at(0) = "a\r\nb";
  EXPECT_THROW(save_profile(file, profile), ClickError);
  EXPECT_EQ(read_whole_file(file), "old");
}

TEST(profile, lines_ended_elsewhere_are_read_as_well) {
  const FolderBench bench;
  const TestProfile expected = load_profile(bench.file("a.txt", numbered_lines(30, "\r\n")));
  EXPECT_EQ(load_profile(bench.file("b.txt", numbered_lines(30, "\n"))), expected);
  EXPECT_EQ(load_profile(bench.file("c.txt", numbered_lines(15, "\r\n") + "16\n17\r\n18\r\n19\r\n20\r\n21\r\n"
                                                                          "22\r\n23\r\n24\r\n25\r\n26\r\n"
                                                                          "27\r\n28\r\n29\n30\n")),
            expected);
}

TEST(profile, lines_beyond_the_thirtieth_and_a_missing_last_line_end_do_no_harm) {
  const FolderBench bench;
  const TestProfile expected = load_profile(bench.file("a.txt", numbered_lines(30, "\r\n")));
  EXPECT_EQ(load_profile(bench.file("b.txt", numbered_lines(30, "\r\n") + "more\r\n")), expected);
  EXPECT_EQ(load_profile(bench.file("c.txt", numbered_lines(29, "\r\n") + "30")), expected);
}

TEST(profile, a_missing_file_is_named) {
  const FolderBench bench;
  EXPECT_EQ(error_of(bench.path / "none.txt"), "File not found: " + (bench.path / "none.txt").string());
}

TEST(profile, a_short_file_is_named_with_what_it_lacks) {
  const FolderBench bench;
  const fs::path file = bench.file("short.txt", numbered_lines(29, "\r\n"));
  EXPECT_EQ(error_of(file), "The test profile " + file.string() + " has only 29 of its 30 lines");
  EXPECT_EQ(error_of(bench.file("empty.txt", "")),
            "The test profile " + (bench.path / "empty.txt").string() + " has only 0 of its 30 lines");
}

TEST(profile, the_default_profile_is_found_on_a_fresh_machine_under_its_path) {
  const FolderBench bench;
  EXPECT_EQ(default_profile().string(), "c:\\tarvos\\velltest.txt");
  EXPECT_FALSE(error_of(default_profile()).empty());
  provide_default_profile();
  const TestProfile profile = load_profile(default_profile());
  EXPECT_EQ(profile.commands.at(0), "V");
  EXPECT_EQ(profile.waits.at(0), "500");
  EXPECT_TRUE(fs::exists(folder_to_start_in(StartFolder::tarvos) / "velltest.txt"));
}

TEST(profile, the_default_profile_that_somebody_has_changed_stays_as_it_is) {
  const FolderBench bench;
  TestProfile own;
  own.captions.at(0) = "mine";
  save_profile(default_profile(), own);
  provide_default_profile();
  EXPECT_EQ(load_profile(default_profile()), own);
}

TEST(profile, providing_the_default_profile_where_nothing_can_be_written_says_nothing) {
  FolderBench bench;
  const fs::path file = bench.file("file", "");
  qputenv("HOME", QByteArray::fromStdString(file.string()));
  provide_default_profile();
  EXPECT_TRUE(error_of(default_profile()).starts_with("File not found: "));
}
