#include "link/click.h"
#include "shell/folders.h"
#include "shell/safe_file.h"
#include "support/pty.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <iostream>
#include <random>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

std::string error_of(const std::function<void()>& action) {
  try {
    action();
  } catch (const ClickError& error) {
    return error.what();
  }
  return {};
}

class SafeFile : public testing::Test {
 protected:
  [[nodiscard]] fs::path path(const std::string& name = "list.txt") const {
    return fs::path(folder_.path().toStdString()) / name;
  }
  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator{path("")}) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  const QTemporaryDir folder_;
};

using Names = std::vector<std::string>;

TEST_F(SafeFile, a_new_file_is_written) {
  replace_file(path(), "a\r\n");
  EXPECT_EQ(read_whole_file(path()), "a\r\n");
}

TEST_F(SafeFile, an_old_file_is_replaced_and_nothing_else_stays) {
  replace_file(path(), std::string(100000, 'a'));
  replace_file(path(), "b");
  EXPECT_EQ(read_whole_file(path()), "b");
  EXPECT_EQ(files(), Names{"list.txt"});
}

TEST_F(SafeFile, every_byte_value_comes_back) {
  std::string bytes;
  for (int code = 0; code < 256; ++code) {
    bytes += static_cast<char>(code);
  }
  replace_file(path(), bytes);
  EXPECT_EQ(read_whole_file(path()), bytes);
}

TEST_F(SafeFile, a_name_with_accents_is_that_file) {
  replace_file(path("Bü\xC3\xA9ro Ж.txt"), "a");
  EXPECT_EQ(files(), Names{"Bü\xC3\xA9ro Ж.txt"});
  EXPECT_EQ(read_whole_file(path("Bü\xC3\xA9ro Ж.txt")), "a");
}

TEST_F(SafeFile, permissions_are_kept) {
  replace_file(path(), "a");
  fs::permissions(path(), static_cast<fs::perms>(0640));
  replace_file(path(), "b");
  EXPECT_EQ(fs::status(path()).permissions(), static_cast<fs::perms>(0640));
}

TEST_F(SafeFile, a_link_stays_a_link_to_the_replaced_file) {
  replace_file(path(), "a");
  fs::create_symlink(path(), path("link.txt"));
  replace_file(path("link.txt"), "b");
  EXPECT_TRUE(fs::is_symlink(path("link.txt")));
  EXPECT_EQ(read_whole_file(path()), "b");
}

TEST_F(SafeFile, a_device_is_written_to_and_stays_one) {
  const Pty line;
  replace_file(line.device(), "abc");
  EXPECT_EQ(line.read(3), "abc");
  EXPECT_TRUE(fs::is_character_file(line.device()));
}

TEST_F(SafeFile, a_folder_that_is_not_there_is_told) {
  const std::string name = path("none/list.txt").string();
  EXPECT_EQ(error_of([&] { replace_file(name, "a"); }),
            "Cannot save " + name + ": No such file or directory");
}

TEST_F(SafeFile, a_full_place_is_told_and_the_old_file_stays) {
  replace_file(path(), "old");
  // A file size limit fails a write half-way as a full disk does; the child keeps the limit to itself.
  const pid_t child = fork();
  if (child == 0) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{4096, 4096};
    setrlimit(RLIMIT_FSIZE, &limit);
    const std::string error = error_of([&] { replace_file(path(), std::string(100000, 'n')); });
    _exit(error.starts_with("Cannot save ") ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "the save must tell that it failed";
  EXPECT_EQ(read_whole_file(path()), "old");
  EXPECT_EQ(files(), Names{"list.txt"});
}

TEST_F(SafeFile, a_missing_file_is_told_by_name) {
  EXPECT_EQ(error_of([this] { static_cast<void>(read_whole_file(path())); }),
            "File not found: " + path().string());
}

TEST_F(SafeFile, a_folder_in_place_of_a_file_is_told) {
  const std::string error = error_of([this] { static_cast<void>(read_whole_file(path(""))); });
  EXPECT_TRUE(error.starts_with("Cannot read ")) << error;
}

// A child saves one text and the other in turn until it is killed: each time one of them stands there whole.
TEST_F(SafeFile, five_hundred_kills_leave_the_old_file_or_the_new_one) {
  const std::array texts{std::string(300000, 'o'), std::string(200000, 'n')};
  const auto start = std::chrono::steady_clock::now();
  replace_file(path(), texts[0]);
  const auto one_save = std::chrono::steady_clock::now() - start;
  // How far the child has come, seen from here: odd while a save runs.
  void* shared =
      mmap(nullptr, sizeof(std::atomic<unsigned>), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(shared, MAP_FAILED);
  auto& progress = *new (shared) std::atomic<unsigned>{0};
  std::mt19937 random{20011};  // repeatable
  std::uniform_int_distribution<std::int64_t> moment_ns{0, 6 * std::chrono::nanoseconds{one_save}.count()};
  int kills_in_a_save = 0;
  std::array<int, 2> found_count{};
  for (int kill_number = 0; kill_number < 500; ++kill_number) {
    progress = 0;
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      for (;;) {
        ++progress;
        // A save that fails must leave the old file too; what it says is for the reader of the log.
        std::cerr << error_of([&] { replace_file(path(), texts[(progress / 2 + 1) % 2]); });
        ++progress;
      }
    }
    while (progress == 0) {
      std::this_thread::yield();
    }
    std::this_thread::sleep_for(std::chrono::nanoseconds{moment_ns(random)});
    kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the child ended by itself, with status " << status << ", at kill "
                                     << kill_number;
    kills_in_a_save += static_cast<int>(progress % 2);
    const std::string found = read_whole_file(path());
    const auto text = std::find(texts.begin(), texts.end(), found);
    ASSERT_NE(text, texts.end()) << "a piece of " << found.size() << " bytes after kill " << kill_number;
    ++found_count[static_cast<std::size_t>(text - texts.begin())];
  }
  // Otherwise the moments missed the writing and the test showed nothing.
  EXPECT_GT(kills_in_a_save, 400);
  EXPECT_GT(found_count[0], 10);
  EXPECT_GT(found_count[1], 10);
  munmap(shared, sizeof(std::atomic<unsigned>));
}

TEST(folders, are_created_in_the_home_folder_when_first_asked_for) {
  const QTemporaryDir home;
  const QByteArray old_home = qgetenv("HOME");
  qputenv("HOME", home.path().toLocal8Bit());
  const fs::path tarvos = fs::path(home.path().toStdString()) / "tarvos";
  EXPECT_FALSE(fs::exists(tarvos));
  EXPECT_EQ(folder_to_start_in(StartFolder::current), fs::path{});
  EXPECT_FALSE(fs::exists(tarvos));
  EXPECT_EQ(folder_to_start_in(StartFolder::tarvos), tarvos);
  EXPECT_TRUE(fs::is_directory(tarvos));
  EXPECT_EQ(folder_to_start_in(StartFolder::access), tarvos / "access");
  EXPECT_TRUE(fs::is_directory(tarvos / "access"));
  qputenv("HOME", old_home);
}

TEST(folders, one_that_cannot_be_created_is_named_all_the_same) {
  const QByteArray old_home = qgetenv("HOME");
  qputenv("HOME", "/dev/null");
  EXPECT_EQ(folder_to_start_in(StartFolder::access), fs::path{"/dev/null/tarvos/access"});
  qputenv("HOME", old_home);
}

}  // namespace
