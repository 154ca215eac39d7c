#include "config/symbology.h"

#include "config/screen_checks.h"

#include <QCheckBox>
#include <QRadioButton>

namespace {

TEST(symbology, starts_with_nothing_checked_and_no_track_chosen) {
  ScreenBench bench(ScreenCode::symbology);
  const auto boxes = bench.screen().findChildren<QCheckBox*>();
  ASSERT_EQ(boxes.size(), 12);
  for (const auto* const box : boxes) {
    EXPECT_EQ(box->checkState(), Qt::Unchecked) << box->text().toStdString();
  }
  const auto options = bench.screen().findChildren<QRadioButton*>();
  ASSERT_EQ(options.size(), 3);
  for (const auto* const option : options) {
    EXPECT_FALSE(option->isChecked()) << option->text().toStdString();
  }
}

TEST(symbology, captions_are_those_of_the_readers_manuals) {
  ScreenBench bench(ScreenCode::symbology);
  QStringList captions;
  for (const auto* const box : bench.screen().findChildren<QCheckBox*>()) {
    captions << box->text();
  }
  captions.sort();
  EXPECT_EQ(captions.join(u'|').toStdString(),
            "2 of 5|Codabar|Code 39|Code128|Ean13|I 2 of 5|Track 1 Start/Stop|Track 1 T2 Char Set|"
            "Track 2 \"C\" Start|Track 2 Start/Stop|Upca|Xmit T2 First");
}

TEST(symbology, fits_the_window) {
  ScreenBench bench(ScreenCode::symbology);
  expect_fits(bench);
}

TEST(symbology, tab_goes_through_each_frame_to_its_button) {
  ScreenBench bench(ScreenCode::symbology);
  EXPECT_EQ(tab_order(bench),
            (std::vector<std::string>{"code_39", "i_2_of_5", "2_of_5", "upca", "ean13", "code128", "codabar",
                                      "set_barcodes", "magstripe_tracks_0", "magstripe_tracks_1",
                                      "magstripe_tracks_2", "set_magstripe_tracks", "track_1_start_stop",
                                      "track_1_t2_char_set", "track_2_start_stop", "track_2_c_start",
                                      "xmit_t2_first", "set_magstripe_options"}));
}

TEST(symbology, a_box_that_is_only_partly_checked_counts_as_off) {
  ScreenBench bench(ScreenCode::symbology);
  auto& box = bench.control<QCheckBox>("code_39");
  box.setTristate(true);
  box.setCheckState(Qt::PartiallyChecked);
  bench.press("set_barcodes");
  EXPECT_TRUE(bytes_equal(bench.port.writes.front(), "\0AF\r"_bytes));
}

TEST(symbology, a_missing_acknowledge_ends_the_run_with_one_box) {
  ScreenBench bench(ScreenCode::symbology);
  bench.use_network("5");
  bench.choose("code_39");
  bench.dialogs.expect_message("Reader does not acknowledge command");
  bench.press("set_barcodes");
  EXPECT_TRUE(bytes_equal(bench.port.written(), "\x85\x02\0AO\x03"_bytes));
}

TEST(symbology, what_is_checked_during_a_run_waits_for_the_next) {
  ScreenBench bench(ScreenCode::symbology);
  bench.use_network("5");
  bench.port.responder = [&bench](std::string_view) {
    bench.control<QCheckBox>("codabar").setChecked(true);
    bench.port.arrive("\x06", std::chrono::milliseconds(15));
  };
  bench.press("set_barcodes");
  EXPECT_TRUE(bytes_equal(bench.port.writes.back(), "\x85\x02\0CF\x03"_bytes));
}

}  // namespace
