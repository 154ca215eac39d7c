// List to reader to list, schedules to reader, cards against both: the transfers against a simulated access
// reader, plain and networked, at virtual time.

#include "access/access_file.h"
#include "access/access_list.h"
#include "access/schedule_file.h"
#include "access/simulated_bench.h"
#include "link/numbers.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::string>;

std::string padded(std::string text, std::size_t width) {
  text.resize(width, ' ');
  return text;
}

std::string line_of(const std::string& id, const std::string& name, const std::string& schedule) {
  return padded(id, 40) + padded(name, 30) + schedule;
}

std::string line(const std::string& id, const std::string& schedule) {
  return line_of(id, "Somebody", schedule);
}

/// A line of a list and what the reader must hold after it.
struct Row {
  std::string line;
  std::string id;
  int schedule;
};

class RoundTrip : public testing::TestWithParam<bool> {
 protected:
  const bool networked = GetParam();
  SimulatedBench bench{readersim::Family::orinta, networked};
  const std::string reader = networked ? "5" : "0";

  RoundTrip() { set_record_length("18"); }
  void set_record_length(const std::string& length) {
    bench.reader().settings.set(readersim::Setting::record_length, length);
  }
  void download_list(const std::string& list, std::string_view record_length = "18") {
    bench.write_file("list.txt", list);
    bench.dialogs.file = bench.path("list.txt");
    bench.transfers.download_access_list(record_length, bench.status);
  }
  void download_schedules(const std::string& schedules) {
    bench.write_file("week.txt", schedules);
    bench.dialogs.file = bench.path("week.txt");
    bench.transfers.download_schedules(bench.status);
  }
  std::string upload(const UploadKind& kind) {
    bench.dialogs.file = bench.path("up.txt");
    bench.transfers.upload(kind, bench.status);
    return bench.file("up.txt");
  }
  void expect_rows(const std::vector<Row>& rows, std::size_t record_length) {
    std::string list;
    std::string expected;
    for (const Row& row : rows) {
      list += row.line + "\r\n";
      expected += padded(padded(row.id, record_length), 70) + with_leading_zeros(row.schedule, 2) + "\r\n";
    }
    download_list(list, std::to_string(record_length));
    const auto& entries = bench.reader().access.entries();
    ASSERT_EQ(entries.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(entries[i].id, padded(rows[i].id, record_length)) << "row " << i;
      EXPECT_EQ(entries[i].schedule, rows[i].schedule) << "row " << i;
    }
    EXPECT_TRUE(bytes_equal(upload(access_list_upload), expected));
    EXPECT_EQ(bench.dialogs.messages, (Texts{"        Download Complete         ", "Upload Complete"}));
  }
};

INSTANTIATE_TEST_SUITE_P(both, RoundTrip, testing::Bool(),
                         [](const auto& row) { return row.param ? "network" : "plain"; });

TEST_P(RoundTrip, ids_of_1_to_18_characters) {
  std::vector<Row> rows;
  for (std::size_t length = 1; length <= 18; ++length) {
    const std::string id = std::string("123456789012345678").substr(0, length);
    rows.push_back({line(id, "07"), id, 7});
  }
  expect_rows(rows, 18);
}

TEST_P(RoundTrip, schedules_00_to_99) {
  std::vector<Row> rows;
  for (int schedule = 0; schedule <= 99; ++schedule) {
    const std::string id = "id" + std::to_string(schedule);
    rows.push_back({line(id, with_leading_zeros(schedule, 2)), id, schedule});
  }
  expect_rows(rows, 18);
}

TEST_P(RoundTrip, lines_that_reach_the_reader_cut_or_shifted) {
  expect_rows(
      {
          {line("1,2", "07"), "1", 0},                       // a comma ends the record
          {"  " + line("22", "07").substr(0, 70), "22", 0},  // leading blanks shift it
          {"\"" + line("3,\"3", "07"), "3,", 0},             // quotes enclose it, to the next quote
          {line("4\"4", "08"), "4\"4", 8},                   // a quote within is a character
          {"555", "555", 0},                                 // short
          {"", "", 0},                                       // blank
          {line("66", "09") + "and more", "66", 9},          // long
          {line("77", "xx"), "77", 0},                       // no number
          {line("88", " 5"), "88", 5},
          {line(std::string(40, '9'), "10"), std::string(18, '9'), 10},
          {line("\xE9\xFC\x80 \xFF", "11"), "\xE9\xFC\x80 \xFF", 11},
          {line("a b  c", "12"), "a b  c", 12},
      },
      18);
}

/// An employee as typed in the editor, and what becomes of it.
struct Employee {
  std::string id;  // in UTF-8, as are the others
  std::string name;
  std::string schedule;
  Row row;  ///< the line saved, and what the reader holds of it
};

const std::string forty = "1234567890123456789012345678901234567890";
const std::string thirty = "Maximilian Featherstonehaugh-X";

const std::vector<Employee> employees{
    // Accents are one byte each; a name stays on the PC.
    {"Én1", "Zoë Müller €", "7", {line_of("\xC9n1", "Zo\xEB M\xFCller \x80", "07"), "\xC9n1", 7}},
    // A comma ends what is sent, in the name too: the schedule behind it is lost.
    {"22", "Doe, Jane", "8", {line_of("22", "Doe, Jane", "08"), "22", 0}},
    {"2,3", "Cid", "8", {line_of("2,3", "Cid", "08"), "2", 0}},
    // Quotes count where they come first only: what stands in them is sent, all else is lost.
    {"33", "Jo \"Ace\" Lee", "9", {line_of("33", "Jo \"Ace\" Lee", "09"), "33", 9}},
    {"\"3,4\"", "Quo", "9", {line_of("\"3,4\"", "Quo", "09"), "3,4", 0}},
    {"\"35", "Quin", "19", {line_of("\"35", "Quin", "19"), "35", 9}},
    // Blanks that come first are left out and all columns shift: the schedule is cut from behind the line.
    {"  55", "Leading Blanks", "10", {line_of("  55", "Leading Blanks", "10"), "55", 0}},
    // A full line; what is longer was cut when it was saved.
    {forty, thirty, "99", {forty + thirty + "99", "123456789012345678", 99}},
    {"9" + forty, thirty + "Y", "98", {"9" + forty.substr(0, 39) + thirty + "98", "912345678901234567", 98}},
    // Short, and blank: without an ID the name goes to the reader, without a name the schedule does.
    {"6", {}, {}, {line_of("6", "", "00"), "6", 0}},
    {" ", "No Id", "11", {line_of("", "No Id", "11"), "No Id", 0}},
    {{}, {}, "12", {line_of("", "", "12"), "12", 0}},
};

TEST_P(RoundTrip, employees_typed_in_the_editor_come_back_as_far_as_the_format_carries_them) {
  AccessList typed;
  std::vector<Row> rows;
  std::string saved;
  for (const Employee& employee : employees) {
    typed.add({QString::fromStdString(employee.id), QString::fromStdString(employee.name),
               QString::fromStdString(employee.schedule)});
    rows.push_back(employee.row);
    ASSERT_EQ(employee.row.line.size(), 72U);
    saved += employee.row.line + "\r\n";
  }
  EXPECT_TRUE(bytes_equal(typed.write(), saved));
  expect_rows(rows, 18);
}

TEST_P(RoundTrip, lines_written_by_hand_with_names_of_their_own) {
  expect_rows(
      {
          {padded("71", 40) + "Ann", "71", 0},                       // ends within the name
          {padded("72", 40) + padded("Bob", 30) + "5", "72", 5},     // one digit
          {padded("73", 40) + "Cl\xE9o, 2nd", "73", 0},              // ends behind a comma
          {line_of("74", "Dan", "13") + ",\"x\"", "74", 13},         // a comma behind the columns
          {"\"" + line_of("75", "Eve, MD", "14") + "\"", "75", 14},  // quotes around the whole line keep all
          {"\t" + line_of("76", "Fay", "15").substr(1), "\t6", 15},  // a tab is no blank
          {padded("", 75), "", 0},                                   // blanks only
      },
      18);
}

TEST_P(RoundTrip, a_short_record_length_cuts_the_ids) {
  set_record_length("4");
  expect_rows({{line("1234567", "07"), "1234", 7}, {line("12", "08"), "12", 8}}, 4);
}

TEST_P(RoundTrip, an_empty_reader_uploads_an_empty_list) {
  EXPECT_EQ(upload(access_list_upload), "");
  EXPECT_EQ(bench.status_text, "Records Uploaded:");
}

TEST_P(RoundTrip, refusals_of_the_reader_are_counted) {
  bench.port.console("answer " + reader + " N 2");
  download_list(line("1", "01") + "\r\n" + line("2", "01") + "\r\n" + line("3", "01") + "\r\n");
  EXPECT_EQ(bench.status_text, "Records Downloaded: 00003  Errors: 00002");
  EXPECT_EQ(bench.reader().access.entries().size(), 1U);
}

TEST_P(RoundTrip, a_whole_schedule_file_arrives) {
  ScheduleTable table;
  for (int n = 1; n <= 99; ++n) {
    ScheduleTexts texts = table.texts(n);
    for (std::size_t d = 0; d < 7; ++d) {
      texts.start[d] = with_leading_zeros((n + static_cast<int>(d)) % 24 * 100, 4);
      texts.end[d] = with_leading_zeros(n % 24 * 100 + 59, 4);
    }
    texts.associated = n < 99 ? std::to_string(n + 1) : "0";
    table.store(n, texts);
  }
  download_schedules(table.write());
  EXPECT_EQ(bench.dialogs.messages, Texts{"        Download Complete         "});
  EXPECT_EQ(bench.status_text, "Records Downloaded: 00792  Errors: 00000");
  for (int n = 1; n <= 99; ++n) {
    const auto& schedule = bench.reader().schedules.at(n);
    EXPECT_EQ(schedule.associated, n < 99 ? n + 1 : 0);
    for (std::size_t d = 0; d < 7; ++d) {
      EXPECT_EQ(schedule.days[d], table.texts(n).start[d] + table.texts(n).end[d]) << n << " " << d;
    }
  }
}

TEST_P(RoundTrip, cards_are_let_in_by_list_schedule_and_clock_and_the_log_comes_back) {
  ScheduleTable table;
  ScheduleTexts office = table.texts(5);
  office.start[0] = "0800";
  office.end[0] = "1700";
  table.store(5, office);
  download_list(line("4711", "05") + "\r\n");
  download_schedules(table.write());

  readersim::Reader& access_reader = bench.reader();
  const auto let_in = [&](const std::string& clock, const std::string& card) {
    EXPECT_TRUE(access_reader.clock.set(clock, bench.port.now()));
    const int before = access_reader.relay_operations;
    bench.port.console("swipe " + reader + " " + card);
    bench.pump.idle(std::chrono::seconds(30));
    return access_reader.relay_operations > before;
  };
  EXPECT_TRUE(let_in("0104160830001", "4711")) << "Monday, 08:30";
  EXPECT_FALSE(let_in("0104161730001", "4711")) << "Monday, 17:30";
  EXPECT_FALSE(let_in("0104170830002", "4711")) << "Tuesday";
  EXPECT_FALSE(let_in("0104160830001", "4712")) << "not in the list";

  bench.link.clearcomm();
  std::string log;
  for (const std::string& record : access_reader.log.records) {
    log += record + "\r\n";
  }
  EXPECT_FALSE(log.empty());
  EXPECT_TRUE(bytes_equal(upload(access_log_upload), log));
  bench.transfers.clear(access_log_clear, bench.status);
  EXPECT_TRUE(access_reader.log.records.empty());
  bench.transfers.clear(access_list_clear, bench.status);
  EXPECT_TRUE(access_reader.access.entries().empty());
}

TEST(RoundTripToAll, a_broadcast_list_reaches_the_reader_unanswered) {
  SimulatedBench bench{readersim::Family::orinta, true};
  bench.settings.reader_address = "127";
  bench.reader().settings.set(readersim::Setting::record_length, "5");
  bench.write_file("list.txt", line("12345", "07") + "\r\n" + line("678", "08") + "\r\n");
  bench.dialogs.file = bench.path("list.txt");
  bench.transfers.download_access_list("5", bench.status);
  EXPECT_EQ(bench.dialogs.messages,
            (Texts{"Warning - you are downloading to all readers", "        Download Complete         "}));
  ASSERT_EQ(bench.reader().access.entries().size(), 2U);
  EXPECT_EQ(bench.reader().access.entries()[1].id, "678  ");
  EXPECT_EQ(bench.pump.elapsed(), std::chrono::milliseconds(500));
}

}  // namespace
