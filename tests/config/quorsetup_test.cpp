#include "config/quorsetup.h"

#include "config/screen_checks.h"

namespace {

TEST(quorsetup, boxes_start_empty_with_their_lengths_and_key_filters) {
  ScreenBench bench(ScreenCode::quorsetup);
  expect_box(bench, {"Text26", "Age 1", 2, true});
  expect_box(bench, {"Text27", "Age 2", 2, true});
}

TEST(quorsetup, starts_with_logging_and_print_off) {
  ScreenBench bench(ScreenCode::quorsetup);
  EXPECT_FALSE(bench.checked("logging_on"));
  EXPECT_FALSE(bench.checked("print_on"));
}

TEST(quorsetup, fits_the_window) {
  ScreenBench bench(ScreenCode::quorsetup);
  expect_fits(bench);
}

struct Refusal {
  const char* age_1;
  const char* age_2;
};

TEST(quorsetup, an_age_that_does_not_convert_sends_neither) {
  for (const Refusal& refusal :
       {Refusal{"", ""}, Refusal{"5", ""}, Refusal{"", "21"}, Refusal{"5", "  "}, Refusal{"ab", "21"}}) {
    ScreenBench bench(ScreenCode::quorsetup);
    bench.control<TextBox>("Text26").setText(QLatin1String(refusal.age_1));
    bench.control<TextBox>("Text27").setText(QLatin1String(refusal.age_2));
    bench.dialogs.expect_message("Type mismatch");
    bench.press("set_quor_ages");
    EXPECT_EQ(bench.port.written(), "");
  }
}

TEST(quorsetup, an_age_is_refused_before_a_closed_port_is_told) {
  ScreenBench bench(ScreenCode::quorsetup);
  bench.program.services().link.closecomm();
  bench.dialogs.expect_message("Type mismatch");
  bench.press("set_quor_ages");
}

}  // namespace
