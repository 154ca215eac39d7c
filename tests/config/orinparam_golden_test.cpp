#include "config/golden.h"

namespace {

using namespace std::chrono_literals;
using golden::Acknowledge;
using golden::FirstLook;
using golden::Golden;
using golden::GoldenPresence;
using golden::Row;

constexpr const char* warning = "This will delete all data in the reader\rDo you wish to continue?";

/// Three frames with pauses after the first two only.
const std::vector<Row> asking_rows{
    {.name = "general",
     .screen = ScreenCode::orinparam,
     .button = "set_general",
     .boxes = {{"Text2", "8"}, {"Text3", "5"}, {"Text5", "2"}},
     .payloads = {"\\08", "\"05", "'02"},
     .acknowledge = Acknowledge::one_address,
     .first_look = FirstLook::port,
     .presence = true,
     .warning = warning,
     .done = "Parameters have been set",
     .pauses = {100ms, 100ms}},
    {.name = "general_at_the_upper_limits",
     .screen = ScreenCode::orinparam,
     .button = "set_general",
     .boxes = {{"Text2", "40"}, {"Text3", "99"}, {"Text5", "15"}},
     .payloads = {"\\40", "\"99", "'15"},
     .acknowledge = Acknowledge::one_address,
     .first_look = FirstLook::port,
     .presence = true,
     .warning = warning,
     .done = "Parameters have been set",
     .pauses = {100ms, 100ms}},
    {.name = "general_at_the_lower_limits",
     .screen = ScreenCode::orinparam,
     .button = "set_general",
     .boxes = {{"Text2", "4"}, {"Text3", "1"}, {"Text5", "1"}},
     .payloads = {"\\04", "\"01", "'01"},
     .acknowledge = Acknowledge::one_address,
     .first_look = FirstLook::port,
     .presence = true,
     .warning = warning,
     .done = "Parameters have been set",
     .pauses = {100ms, 100ms}},
};

Row mode(const char* name, const char* option, const char* payload) {
  Row row{.name = name,
          .screen = ScreenCode::orinparam,
          .button = "set_mode",
          .payloads = {payload},
          .acknowledge = Acknowledge::one_address,
          .first_look = FirstLook::port,
          .presence = true,
          .done = " Mode Set in Reader "};
  if (*option != '\0') {
    row.choices = {option};
  }
  return row;
}

const std::vector<Row> mode_rows{
    mode("mode_without_a_choice", "", "|"),  mode("mode_vell", "orin_mode_0", "|1"),
    mode("mode_orin", "orin_mode_1", "|3"),  mode("mode_orinta", "orin_mode_2", "|4"),
    mode("mode_accum", "orin_mode_3", "|5"),
};

Row logging(const char* name, const char* button, const char* option, const char* payload, const char* done) {
  return {.name = name,
          .screen = ScreenCode::orinparam,
          .button = button,
          .choices = {option},
          .payloads = {payload},
          .acknowledge = Acknowledge::one_address,
          .first_look = FirstLook::port,
          .done = done};
}

const std::vector<Row> logging_rows{
    logging("rs232_logging_on", "set_rs232_logging", "rs232_logging_0", "s1", " RS232 Logging Option is On "),
    logging("rs232_logging_off", "set_rs232_logging", "rs232_logging_1", "s0",
            " RS232 Logging Option is Off "),
    logging("bad_logging_on", "set_bad_logging", "bad_logging_0", ":1", " Bad Logging Option Set "),
    logging("bad_logging_off", "set_bad_logging", "bad_logging_1", ":0", " Bad Logging Option Reset "),
};

INSTANTIATE_TEST_SUITE_P(orinparam_general, Golden, testing::ValuesIn(asking_rows), golden::name_of);
INSTANTIATE_TEST_SUITE_P(orinparam_mode, Golden, testing::ValuesIn(mode_rows), golden::name_of);
INSTANTIATE_TEST_SUITE_P(orinparam_logging, Golden, testing::ValuesIn(logging_rows), golden::name_of);
INSTANTIATE_TEST_SUITE_P(orinparam_general, GoldenPresence, testing::ValuesIn(asking_rows), golden::name_of);
INSTANTIATE_TEST_SUITE_P(orinparam_mode, GoldenPresence, testing::ValuesIn(mode_rows), golden::name_of);

}  // namespace
