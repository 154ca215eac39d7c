#include "config/golden.h"
#include "support/bytes.h"

namespace {

using namespace std::chrono_literals;
using golden::Acknowledge;
using golden::FirstLook;
using golden::Golden;
using golden::GoldenPresence;
using golden::Row;

constexpr const char* warning = "This will delete all data in the reader\rDo you wish to continue?";

Row kesh(const char* name, const char* button) {
  return {.name = name,
          .screen = ScreenCode::keshsetup,
          .button = button,
          .acknowledge = Acknowledge::one_address,
          .first_look = FirstLook::port};
}

/// A pause after each frame, the last too.
Row ferro(const char* name, const char* record_length, const char* max_records, const char* time_stamping,
          const char* length_payload, const char* records_payload) {
  Row row = kesh(name, "set_ferro_kesh_general");
  row.boxes = {{"Text21", record_length}, {"Text20", max_records}};
  row.choices = {time_stamping};
  row.payloads = {length_payload, records_payload};
  row.presence = true;
  row.warning = warning;
  row.done = "Parameters have been set";
  row.pauses = {100ms, 100ms};
  return row;
}

Row glint(const char* name, const char* record_length, std::vector<std::string> choices,
          const char* payload) {
  Row row = kesh(name, "set_glint_kesh_general");
  row.boxes = {{"Text19", record_length}};
  row.choices = std::move(choices);
  row.payloads = {payload};
  row.presence = true;
  row.warning = warning;
  row.done = "Parameters have been set";
  row.pauses = {100ms};
  return row;
}

const std::vector<Row> general_rows{
    ferro("ferro_with_time_stamping", "150", "2000", "ferro_time_stamping_0", "\\1501", "r02000"),
    ferro("ferro_without_time_stamping", "31", "32767", "ferro_time_stamping_1", "\\0310", "r32767"),
    ferro("ferro_with_empty_max_records", "4", "", "ferro_time_stamping_0", "\\0041", "r00000"),
    glint("glint_with_id_1", "20", {"glint_time_stamping_1", "id_1_on"}, "\\020010"),
    glint("glint_with_id_2", "4", {"glint_time_stamping_0", "id_2_on"}, "\\004101"),
    glint("glint_with_everything", "30", {"glint_time_stamping_0", "id_1_on", "id_2_on"}, "\\030111"),
    glint("glint_as_it_starts", "30", {}, "\\030100"),
};

Row pair(const char* name, const char* button, const char* option, const char* payload) {
  Row row = kesh(name, button);
  row.choices = {option};
  row.payloads = {payload};
  row.done = "Parameter has been set";
  row.pauses = {100ms};
  return row;
}

const std::vector<Row> pair_rows{
    pair("rs232_logging_on", "set_kesh_rs232_logging", "kesh_rs232_logging_0", "s1"),
    pair("rs232_logging_off", "set_kesh_rs232_logging", "kesh_rs232_logging_1", "s0"),
    pair("duplicate_read_on", "set_duplicate_read", "duplicate_read_0", "d1"),
    pair("duplicate_read_off", "set_duplicate_read", "duplicate_read_1", "d0"),
    pair("comma_delimited_on", "set_comma_delimited", "comma_delimited_0", "y1"),
    pair("comma_delimited_off", "set_comma_delimited", "comma_delimited_1", "y0"),
    pair("mode_vell", "set_kesh_mode", "kesh_mode_0", "|1"),
    pair("mode_kesh", "set_kesh_mode", "kesh_mode_1", "|2"),
};

Row identifiers(const char* name, const char* id_1, const char* id_2, std::vector<std::string> payloads) {
  Row row = kesh(name, "set_ids");
  row.boxes = {{"Text22", id_1}, {"Text23", id_2}};
  row.payloads = std::move(payloads);
  row.done = "ID's have been set";
  row.pauses = {100ms, 100ms};
  return row;
}

const std::vector<Row> identifier_rows{
    identifiers("ids_filled_up_with_blanks", "AB", "12345",
                {"\0"
                 "1AB   "_bytes,
                 "\0"
                 "212345"_bytes}),
    identifiers("ids_empty", "", "",
                {"\0"
                 "1     "_bytes,
                 "\0"
                 "2     "_bytes}),
};

INSTANTIATE_TEST_SUITE_P(keshsetup_general, Golden, testing::ValuesIn(general_rows), golden::name_of);
INSTANTIATE_TEST_SUITE_P(keshsetup_general, GoldenPresence, testing::ValuesIn(general_rows), golden::name_of);
INSTANTIATE_TEST_SUITE_P(keshsetup_pairs, Golden, testing::ValuesIn(pair_rows), golden::name_of);
INSTANTIATE_TEST_SUITE_P(keshsetup_identifiers, Golden, testing::ValuesIn(identifier_rows), golden::name_of);

}  // namespace
