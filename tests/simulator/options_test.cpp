#include "simulator/options.h"

#include "simulator/words.h"

#include <gtest/gtest.h>

namespace {

using readersim::Family;
using readersim::Mistake;
using readersim::Options;
using readersim::parse_options;

TEST(Options, are_one_reader_on_a_plain_line_when_none_is_given) {
  const Options options = parse_options({});
  EXPECT_FALSE(options.help);
  EXPECT_EQ(options.family, std::nullopt);
  EXPECT_TRUE(options.network.empty());
  EXPECT_EQ(options.baud, 9600);
  EXPECT_TRUE(options.console);
  EXPECT_FALSE(options.line.paced);
  EXPECT_EQ(options.line.answer_delay, std::chrono::milliseconds{20});
  EXPECT_EQ(options.line.seed, 1U);
}

TEST(Options, take_every_word_with_its_value_behind_it_or_an_equals_sign) {
  const Options options = parse_options({"--family",
                                         "Ferro Kesh",
                                         "--network=1,5,20-22,5",
                                         "--link",
                                         "/tmp/x",
                                         "--baud=19200",
                                         "--pace",
                                         "--delay",
                                         "0",
                                         "--clock",
                                         "0104151305097",
                                         "--demo",
                                         "--seed",
                                         "42",
                                         "--script=a=b",
                                         "--control",
                                         "/tmp/c",
                                         "--no-console",
                                         "--quiet",
                                         "--name",
                                         "Com Port 3"});
  EXPECT_EQ(options.family, Family::ferro_kesh);
  EXPECT_EQ(options.network, (std::vector<int>{1, 5, 20, 21, 22}));
  EXPECT_EQ(options.link, "/tmp/x");
  EXPECT_EQ(options.baud, 19200);
  EXPECT_TRUE(options.line.paced);
  EXPECT_EQ(options.line.answer_delay, std::chrono::milliseconds{0});
  EXPECT_EQ(options.clock, "0104151305097");
  EXPECT_TRUE(options.demo);
  EXPECT_EQ(options.line.seed, 42U);
  EXPECT_EQ(options.script, "a=b");
  EXPECT_EQ(options.control, "/tmp/c");
  EXPECT_FALSE(options.console);
  EXPECT_TRUE(options.quiet);
  EXPECT_EQ(options.name, "Com Port 3");
}

TEST(Options, know_every_family_whatever_the_case_of_its_letters) {
  for (const Family family : readersim::all_families) {
    EXPECT_EQ(parse_options({"--family", std::string{readersim::traits(family).name}}).family, family);
  }
  EXPECT_EQ(parse_options({"--family", "glint kesh"}).family, Family::glint_kesh);
}

TEST(Options, refuse_what_they_do_not_understand) {
  const std::vector<std::vector<std::string>> wrong{{"--bla"},
                                                    {"bla"},
                                                    {"--family"},
                                                    {"--family", "Karn"},
                                                    {"--network", ""},
                                                    {"--network", "127"},
                                                    {"--network", "5-3"},
                                                    {"--network", "1,,2"},
                                                    {"--network", "0-x"},
                                                    {"--baud", "300"},
                                                    {"--baud", "9601"},
                                                    {"--delay", "-1"},
                                                    {"--clock", "now"},
                                                    {"--seed", "x"},
                                                    {"--bla=1"}};
  for (const auto& arguments : wrong) {
    EXPECT_THROW((void)parse_options(arguments), Mistake) << arguments.back();
  }
}

TEST(Options, help_teaches_every_option_family_and_command) {
  EXPECT_TRUE(parse_options({"--help"}).help);
  EXPECT_TRUE(parse_options({"-h"}).help);
  EXPECT_TRUE(parse_options({"--version"}).version);
  const std::string text = readersim::usage();
  for (const char* word :
       {"--family", "--network", "--link",     "--baud",       "--pace",       "--delay",      "--clock",
        "--demo",   "--seed",    "--script",   "--control",    "--no-console", "--quiet",      "--name",
        "--help",   "--version", "Glint Kesh", "swipe A TEXT", "drop-ack",     "protocol mode"}) {
    EXPECT_NE(text.find(word), std::string::npos) << word;
  }
  for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) {
    EXPECT_LE(text.find('\n', at) - at, 100U) << text.substr(at, 100);
  }
}

}  // namespace
