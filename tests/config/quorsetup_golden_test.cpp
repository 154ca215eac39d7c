#include "config/golden.h"
#include "support/bytes.h"

namespace {

using golden::Golden;
using golden::Row;

Row quor(const char* name, const char* button, std::vector<std::string> choices,
         std::vector<std::string> payloads) {
  return {.name = name,
          .screen = ScreenCode::quorsetup,
          .button = button,
          .choices = std::move(choices),
          .payloads = std::move(payloads)};
}

/// Both ages go with the same command.
Row ages(const char* name, const char* age_1, const char* age_2, std::vector<std::string> payloads) {
  Row row = quor(name, "set_quor_ages", {}, std::move(payloads));
  row.boxes = {{"Text26", age_1}, {"Text27", age_2}};
  return row;
}

const std::vector<Row> rows{
    quor("general_all_off", "set_quor_general", {}, {"\0+0"_bytes, "\0=0"_bytes}),
    quor("general_logging_on", "set_quor_general", {"logging_on"}, {"\0+1"_bytes, "\0=0"_bytes}),
    quor("general_print_on", "set_quor_general", {"print_on"}, {"\0+0"_bytes, "\0=1"_bytes}),
    quor("general_both_on", "set_quor_general", {"logging_on", "print_on"}, {"\0+1"_bytes, "\0=1"_bytes}),
    ages("ages_5_and_21", "5", "21", {"\0(05"_bytes, "\0(21"_bytes}),
    ages("ages_0_and_99", "0", "99", {"\0(00"_bytes, "\0(99"_bytes}),
};

INSTANTIATE_TEST_SUITE_P(quorsetup, Golden, testing::ValuesIn(rows), golden::name_of);

}  // namespace
