#include "config/golden.h"
#include "support/bytes.h"

namespace {

using golden::Golden;
using golden::Row;

Row symbology(const char* name, const char* button, std::vector<std::string> choices,
              std::vector<std::string> payloads) {
  return {.name = name,
          .screen = ScreenCode::symbology,
          .button = button,
          .choices = std::move(choices),
          .payloads = std::move(payloads)};
}

/// Everything is sent, checked or not, in the order of the screen.
const std::vector<Row> rows{
    symbology(
        "barcodes_all_off", "set_barcodes", {},
        {"\0AF"_bytes, "\0HF"_bytes, "\0GF"_bytes, "\0NF"_bytes, "\0EF"_bytes, "\0BF"_bytes, "\0CF"_bytes}),
    symbology(
        "barcodes_all_on", "set_barcodes",
        {"code_39", "i_2_of_5", "2_of_5", "upca", "ean13", "code128", "codabar"},
        {"\0AO"_bytes, "\0HO"_bytes, "\0GO"_bytes, "\0NO"_bytes, "\0EO"_bytes, "\0BO"_bytes, "\0CO"_bytes}),
    symbology(
        "barcodes_some_on", "set_barcodes", {"i_2_of_5", "codabar"},
        {"\0AF"_bytes, "\0HO"_bytes, "\0GF"_bytes, "\0NF"_bytes, "\0EF"_bytes, "\0BF"_bytes, "\0CO"_bytes}),
    symbology("tracks_without_a_choice", "set_magstripe_tracks", {}, {"\0M2O"_bytes, "\0M1O"_bytes}),
    symbology("tracks_2", "set_magstripe_tracks", {"magstripe_tracks_0"}, {"\0M1F"_bytes, "\0M2O"_bytes}),
    symbology("tracks_1", "set_magstripe_tracks", {"magstripe_tracks_1"}, {"\0M2F"_bytes, "\0M1O"_bytes}),
    symbology("tracks_both", "set_magstripe_tracks", {"magstripe_tracks_2"}, {"\0M2O"_bytes, "\0M1O"_bytes}),
    symbology("options_all_off", "set_magstripe_options", {},
              {"\0M1SD"_bytes, "\0M1C1"_bytes, "\0M2SD"_bytes, "\0M2CF"_bytes, "\0M11"_bytes}),
    symbology("options_all_on", "set_magstripe_options",
              {"track_1_start_stop", "track_1_t2_char_set", "track_2_start_stop", "track_2_c_start",
               "xmit_t2_first"},
              {"\0M1SE"_bytes, "\0M1C2"_bytes, "\0M2SE"_bytes, "\0M2CO"_bytes, "\0M21"_bytes}),
};

INSTANTIATE_TEST_SUITE_P(symbology, Golden, testing::ValuesIn(rows), golden::name_of);

}  // namespace
