// The program itself, as it is started from a shell: its output, its console, its signals, its ending.

#include "program_end_unix.h"
#include "support/bytes.h"

#include <array>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>

namespace {

using namespace std::chrono_literals;

std::string scratch(const std::string& name) {
  return (std::filesystem::temp_directory_path() / (std::to_string(::getpid()) + name)).string();
}

/// readersim with its standard input and output at our hand.
class Program {
 public:
  explicit Program(std::vector<std::string> arguments) {
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0) {
      throw std::runtime_error{"no pipe"};
    }
    // It stands beside the test program.
    arguments.insert(arguments.begin(),
                     std::filesystem::read_symlink("/proc/self/exe").parent_path() / "readersim");
    child_ = ::fork();
    if (child_ == 0) {
      ::dup2(in[0], 0);
      ::dup2(out[1], 1);
      ::dup2(out[1], 2);
      std::vector<char*> argv;
      for (std::string& argument : arguments) {
        argv.push_back(argument.data());
      }
      argv.push_back(nullptr);
      ::execv(argv[0], argv.data());
      ::_exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    in_ = in[1];
    out_ = out[0];
  }
  ~Program() {
    if (child_ > 0) {
      ::kill(child_, SIGKILL);
      (void)ending();
    }
    close_input();
    ::close(out_);
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  void say(const std::string& line) const { (void)!::write(in_, (line + "\n").data(), line.size() + 1); }
  void close_input() {
    if (in_ >= 0) {
      ::close(in_);
      in_ = -1;
    }
  }
  /// Reads on until the text has come, at most ten seconds; everything read so far.
  const std::string& output_with(const std::string& text) {
    const auto end = std::chrono::steady_clock::now() + 10s;
    while (output_.find(text) == std::string::npos && std::chrono::steady_clock::now() < end) {
      pollfd wait{out_, POLLIN, 0};
      std::array<char, 4096> some{};
      if (::poll(&wait, 1, 100) > 0) {
        const ssize_t count = ::read(out_, some.data(), some.size());
        if (count <= 0) {
          break;
        }
        output_.append(some.data(), static_cast<std::size_t>(count));
      }
    }
    return output_;
  }
  void signal(int number) const { ::kill(child_, number); }
  /// Waits for the end: its exit code, or minus the signal that killed it.
  int ending() {
    int status = 0;
    ::waitpid(child_, &status, 0);
    child_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }
  [[nodiscard]] bool running() const {
    siginfo_t info{};
    return ::waitid(P_PID, static_cast<id_t>(child_), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == 0;
  }
  /// Processor time used so far, in clock ticks.
  [[nodiscard]] long ticks() const {
    std::ifstream stat{"/proc/" + std::to_string(child_) + "/stat"};
    std::string word;
    long used = 0;
    for (int field = 1; stat >> word; ++field) {
      used += field == 14 || field == 15 ? std::stol(word) : 0;
    }
    return used;
  }

 private:
  pid_t child_ = -1;
  int in_ = -1;
  int out_ = -1;
  std::string output_;
};

TEST(Readersim, prints_its_path_and_shows_the_traffic_with_its_name_in_front) {
  const std::string link = scratch("link");
  Program program{{"--family", "Vell", "--link", link, "--name", "bench"}};
  EXPECT_TRUE(program.output_with(" as " + link + "\n").starts_with("bench  /dev/"));
  const ProgramEnd end{link};
  EXPECT_TRUE(bytes_equal(end.exchange("V\r", 29), "VELL READER V3.20 S/N 001001\r"));
  program.output_with("S/N 001001<CR>  identification\n");
  const std::string& output = program.output_with("a program has the line open\n");
  EXPECT_NE(output.find("pc > 000  56 0D  V<CR>  identification\n"), std::string::npos) << output;
  EXPECT_NE(output.find("000 > pc  56 45 4C 4C 20 "), std::string::npos) << output;
  program.signal(SIGTERM);
  EXPECT_EQ(program.ending(), 0);
}

TEST(Readersim, obeys_its_console_and_ends_at_quit_with_its_link_removed) {
  const std::string link = scratch("link");
  Program program{{"--network", "0-126", "--link", link}};
  program.say("show");
  EXPECT_NE(program.output_with("\n126  Vell").find("\n000  Vell"), std::string::npos);
  program.say("fault 5 cut 3\nfaults");
  program.output_with("5: cut 3, 1 answer\n");
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  program.say("quit");
  EXPECT_EQ(program.ending(), 0);
  EXPECT_FALSE(std::filesystem::is_symlink(link));
}

class Ended : public testing::TestWithParam<int> {};

TEST_P(Ended, by_a_signal_exits_0_with_its_link_removed) {
  const std::string link = scratch("link");
  Program program{{"--link", link}};
  program.output_with("/dev/");
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  program.signal(GetParam());
  EXPECT_EQ(program.ending(), 0);
  EXPECT_FALSE(std::filesystem::is_symlink(link));
}

INSTANTIATE_TEST_SUITE_P(Signals, Ended, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST(Readersim, goes_on_without_spinning_when_its_input_ends) {
  const std::string link = scratch("link");
  Program program{{"--link", link}};
  program.output_with("/dev/");
  program.close_input();
  std::this_thread::sleep_for(50ms);
  const long before = program.ticks();
  std::this_thread::sleep_for(500ms);
  EXPECT_LE(program.ticks() - before, 5);  // of about 50
  EXPECT_TRUE(program.running());
  const ProgramEnd end{link};
  EXPECT_TRUE(bytes_equal(end.exchange("V\r", 29), "ORIN READER V5.11 S/N 001001\r"));
}

TEST(Readersim, leaves_its_input_alone_when_told_so) {
  Program program{{"--no-console", "--link", scratch("link")}};
  program.output_with("/dev/");
  program.say("quit");
  std::this_thread::sleep_for(200ms);
  EXPECT_TRUE(program.running());
}

TEST(Readersim, hangs_up_and_comes_back_from_its_console) {
  const std::string link = scratch("link");
  Program program{{"--link", link}};
  program.output_with("/dev/");
  const ProgramEnd end{link};
  program.say("hangup");
  EXPECT_TRUE(end.hung_up(5s));
  EXPECT_FALSE(std::filesystem::is_symlink(link));
  program.say("replug");
  program.output_with("plugged in as");
  const ProgramEnd again{link};
  EXPECT_FALSE(again.exchange("V\r", 29).empty());
}

TEST(Readersim, runs_a_script) {
  const std::string file = scratch("script");
  std::ofstream{file} << "wait 0.05\nswipe 0 4711\nwait 0.05\nquit\n";
  Program program{{"--script", file, "--family", "Quor"}};
  EXPECT_NE(program.output_with("collected\n").find("reader 000: card \"4711\" collected"),
            std::string::npos);
  EXPECT_EQ(program.ending(), 0);
  std::filesystem::remove(file);
}

TEST(Readersim, obeys_what_one_writer_after_another_puts_into_its_control_pipe) {
  const std::string pipe = scratch("control");
  Program program{{"--no-console", "--control", pipe, "--family", "Quor"}};
  program.output_with("/dev/");
  std::ofstream{pipe} << "swipe 0 4711\n";
  program.output_with("\"4711\" collected");
  std::ofstream{pipe} << "swipe 0 4712\nquit\n";
  program.output_with("\"4712\" collected");
  EXPECT_EQ(program.ending(), 0);
  EXPECT_FALSE(std::filesystem::exists(pipe));
}

TEST(Readersim, does_not_take_an_existing_file_for_its_control_pipe) {
  const std::string file = scratch("control");
  std::ofstream{file} << "precious";
  Program program{{"--control", file}};
  program.output_with("\n");
  EXPECT_EQ(program.ending(), 1);
  EXPECT_EQ(std::filesystem::file_size(file), 8U);
  std::filesystem::remove(file);
}

TEST(Readersim, tells_a_mistake_on_its_command_line_and_exits_2) {
  Program program{{"--family", "Karn"}};
  EXPECT_NE(program.output_with("--help").find("no family \"Karn\""), std::string::npos);
  EXPECT_EQ(program.ending(), 2);
  Program unreadable{{"--script", "/nowhere/at/all"}};
  EXPECT_NE(unreadable.output_with("--help").find("cannot read /nowhere/at/all"), std::string::npos);
  EXPECT_EQ(unreadable.ending(), 2);
}

TEST(Readersim, exits_1_where_it_cannot_have_its_link) {
  Program program{{"--link", "/nowhere/at/all"}};
  EXPECT_NE(program.output_with("\n").find("/nowhere/at/all"), std::string::npos);
  EXPECT_EQ(program.ending(), 1);
}

TEST(Readersim, helps_and_tells_its_version) {
  Program help{{"--help"}};
  help.output_with("hang-up N");
  EXPECT_EQ(help.ending(), 0);
  Program version{{"--version"}};
  EXPECT_TRUE(version.output_with("\n").starts_with("readersim "));
  EXPECT_EQ(version.ending(), 0);
}

}  // namespace
