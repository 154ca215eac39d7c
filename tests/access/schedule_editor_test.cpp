#include "access/schedule_editor.h"

#include "access/editor_bench.h"
#include "access/schedule_file.h"

#include <gtest/gtest.h>

namespace {

struct Editor : testing::Test {
  TestFolder folder;
  ScriptedDialogs dialogs;
  ClickRunner clicks{pump_, dialogs};
  ScheduleEditor editor{dialogs};

  void open(std::string_view text) {
    dialogs.expect_open("Open Schedule File", folder.write("week.txt", text));
    ASSERT_TRUE(editor.open_file());
  }
  void open_fresh() { open(ScheduleTable{}.write()); }
  [[nodiscard]] ScheduleTexts with_monday(const std::string& start, const std::string& end = "1700") const {
    ScheduleTexts texts = editor.current_texts();
    texts.start[0] = start;
    texts.end[0] = end;
    return texts;
  }
  [[nodiscard]] ScheduleTexts with_associated(const std::string& number) const {
    ScheduleTexts texts = editor.current_texts();
    texts.associated = number;
    return texts;
  }
  /// The line of a schedule as a save writes it.
  std::string saved_line(int schedule) {
    editor.getschedule(std::to_string(schedule));
    dialogs.expect_save("Save Schedule File", folder.path("saved.txt"));
    editor.save_file(editor.current_texts());
    return folder.read("saved.txt").substr(static_cast<std::size_t>(schedule - 1) * 64, 62);
  }

 private:
  TestPump pump_;
};

TEST_F(Editor, a_new_file_is_written_at_once_and_loaded) {
  dialogs.expect_save("New Schedule File", folder.path("new.txt"));
  ASSERT_TRUE(editor.create_file());
  EXPECT_EQ(folder.read("new.txt"), ScheduleTable{}.write());
  EXPECT_EQ(editor.file_name(), folder.path("new.txt"));
  EXPECT_EQ(editor.current(), 1);
  EXPECT_EQ(dialogs.requests.at(0).file_name, "newschedule.txt");
  EXPECT_EQ(dialogs.requests.at(0).folder, StartFolder::access);
}

TEST_F(Editor, a_new_file_that_cannot_be_written_changes_nothing) {
  open("01 55 " + std::string(56, '1') + "\r\n" + ScheduleTable{}.write());
  dialogs.expect_save("New Schedule File", folder.path("none/new.txt"));
  EXPECT_THROW(static_cast<void>(editor.create_file()), ClickError);
  EXPECT_EQ(editor.file_name(), folder.path("week.txt"));
  EXPECT_EQ(editor.current_texts().associated, "55");
}

TEST_F(Editor, cancelling_changes_nothing) {
  open("01 55 " + std::string(56, '1') + "\r\n" + ScheduleTable{}.write());
  dialogs.expect_save("New Schedule File", std::nullopt);
  EXPECT_FALSE(editor.create_file());
  dialogs.expect_open("Open Schedule File", std::nullopt);
  EXPECT_FALSE(editor.open_file());
  dialogs.expect_save("Save Schedule File", std::nullopt);
  editor.save_file(with_monday("0800"));
  EXPECT_EQ(editor.file_name(), folder.path("week.txt"));
  EXPECT_EQ(editor.current_texts().start[0], "1111");
}

TEST_F(Editor, dialogs_propose_their_names_in_the_access_folder) {
  open_fresh();
  dialogs.expect_save("Save Schedule File", std::nullopt);
  editor.save_file(editor.current_texts());
  EXPECT_EQ(dialogs.requests.at(0).file_name, "defschedule.txt");
  EXPECT_EQ(dialogs.requests.at(0).folder, StartFolder::access);
  EXPECT_EQ(dialogs.requests.at(1).file_name, "defschedule.txt");
  EXPECT_EQ(dialogs.requests.at(1).folder, StartFolder::access);
}

TEST_F(Editor, a_file_of_98_lines_is_told_and_changes_nothing) {
  open("01 55 " + std::string(56, '1') + "\r\n" + ScheduleTable{}.write());
  const std::string short_text = ScheduleTable{}.write().substr(64);
  dialogs.expect_open("Open Schedule File", folder.write("short.txt", short_text));
  dialogs.expect_message("The schedule file has fewer than 99 lines: " + folder.path("short.txt").string());
  clicks.run([this] { static_cast<void>(editor.open_file()); });
  EXPECT_EQ(editor.file_name(), folder.path("week.txt"));
  EXPECT_EQ(editor.current_texts().associated, "55");
}

TEST_F(Editor, a_file_that_is_not_there_is_told) {
  dialogs.expect_open("Open Schedule File", folder.path("none.txt"));
  dialogs.expect_message("File not found: " + folder.path("none.txt").string());
  clicks.run([this] { static_cast<void>(editor.open_file()); });
  EXPECT_FALSE(editor.file_loaded());
}

TEST_F(Editor, getschedule_shows_another_schedule_and_drops_unstored_edits) {
  std::string text = ScheduleTable{}.write();
  text.replace(64 * 6, 62, "07 09 08001700090018001000190011002000120021001300220014002300");
  open(text);
  editor.getschedule("7");
  EXPECT_EQ(editor.current(), 7);
  EXPECT_EQ(editor.current_texts().associated, "09");
  EXPECT_EQ(editor.current_texts().start[0], "0800");
  EXPECT_EQ(editor.current_texts().end[6], "2300");
}

TEST_F(Editor, a_number_outside_1_to_99_is_told_and_changes_nothing) {
  open_fresh();
  editor.getschedule("42");
  for (const char* number : {"0", "00", "100", "", "x", "-1"}) {
    dialogs.expect_message("Schedule number must be 1 to 99");
    clicks.run([&] { editor.getschedule(number); });
    EXPECT_EQ(editor.current(), 42);
  }
  for (const char* number : {"0", "", "100"}) {
    dialogs.expect_message("Schedule number must be 1 to 99");
    clicks.run([&] { editor.update(number, with_monday("0800")); });
  }
  EXPECT_EQ(saved_line(42).substr(6, 4), "0000");
}

TEST_F(Editor, enter_passes_an_associated_schedule_equal_to_the_number_and_update_refuses_it) {
  open_fresh();
  editor.getschedule("7");
  EXPECT_TRUE(editor.validate_current("7"));
  dialogs.expect_message("associated schedule must be 0 or greater than schedule #");
  editor.update("7", with_associated("7"));
  EXPECT_EQ(editor.current_texts().associated, "00");
}

TEST_F(Editor, validate_current_checks_against_the_schedule_on_show) {
  open_fresh();
  editor.getschedule("7");
  EXPECT_TRUE(editor.validate_current("0"));
  EXPECT_TRUE(editor.validate_current(""));
  EXPECT_TRUE(editor.validate_current("xx"));
  EXPECT_TRUE(editor.validate_current("08"));
  dialogs.expect_message("Associated schedule must be 0 or greater than schedule number");
  EXPECT_FALSE(editor.validate_current("06"));
  dialogs.expect_message("Associated schedule must be 0 or greater than schedule number");
  EXPECT_FALSE(editor.validate_current("-1"));
}

TEST_F(Editor, update_without_a_file_is_told) {
  dialogs.expect_message("There is no schedule file loaded");
  editor.update("1", ScheduleTexts{});
}

TEST_F(Editor, save_without_a_file_is_told) {
  dialogs.expect_message("There is no schedule file loaded");
  editor.save_file(ScheduleTexts{});
}

TEST_F(Editor, update_stores_all_texts) {
  open_fresh();
  ScheduleTexts texts = with_associated("9");
  for (std::size_t d = 0; d < 7; ++d) {
    texts.start[d] = "0" + std::to_string(d + 1) + "00";
    texts.end[d] = "1" + std::to_string(d + 1) + "00";
  }
  editor.update("5", texts);
  EXPECT_EQ(saved_line(5), "05 09 01001100020012000300130004001400050015000600160007001700");
  EXPECT_EQ(saved_line(1), "01 00 " + std::string(56, '0'));
}

TEST_F(Editor, a_time_of_2400_is_refused_and_2399_and_1275_pass) {
  open_fresh();
  for (const char* time : {"2399", "1275", "ab", "", "0000"}) {
    editor.update("1", with_monday(time));
  }
  for (const char* time : {"2400", "9999", "24000", "99999999999"}) {
    dialogs.expect_message("Invalid time entered in schedule (must be < 2400)");
    editor.update("1", with_monday(time));
    dialogs.expect_message("Invalid time entered in schedule (must be < 2400)");
    editor.update("1", with_monday("0000", time));
  }
  ScheduleTexts sunday = editor.current_texts();
  sunday.end[6] = "2400";
  dialogs.expect_message("Invalid time entered in schedule (must be < 2400)");
  editor.update("1", sunday);
}

TEST_F(Editor, a_failed_check_changes_nothing) {
  open_fresh();
  dialogs.expect_message("Invalid time entered in schedule (must be < 2400)");
  ScheduleTexts texts = with_monday("0800", "2400");
  texts.associated = "50";
  editor.update("9", texts);
  EXPECT_EQ(editor.current(), 1);
  EXPECT_EQ(saved_line(9), "09 00 " + std::string(56, '0'));
}

TEST_F(Editor, a_7_typed_over_0800_is_stored_as_7800) {
  open_fresh();
  editor.update("1", with_monday("0800"));
  editor.update("1", with_monday("7"));
  EXPECT_EQ(editor.current_texts().start[0], "7800");
}

TEST_F(Editor, save_stores_what_is_shown_unchecked) {
  open_fresh();
  dialogs.expect_save("Save Schedule File", folder.path("saved.txt"));
  ScheduleTexts texts = with_monday("9999");
  texts.associated = "1";
  editor.save_file(texts);
  EXPECT_EQ(folder.read("saved.txt").substr(0, 14), "01 01 99991700");
  EXPECT_EQ(editor.current_texts().start[0], "9999");
}

TEST_F(Editor, save_stores_into_the_schedule_on_show) {
  open_fresh();
  editor.getschedule("7");
  dialogs.expect_save("Save Schedule File", folder.path("saved.txt"));
  editor.save_file(with_monday("0800"));
  EXPECT_EQ(folder.read("saved.txt").substr(64 * 6, 10), "07 00 0800");
}

TEST_F(Editor, save_after_an_update_under_another_number_leaves_the_first_alone) {
  open_fresh();
  editor.update("7", with_monday("0800"));
  dialogs.expect_save("Save Schedule File", folder.path("saved.txt"));
  editor.save_file(with_monday("0800"));
  const std::string text = folder.read("saved.txt");
  EXPECT_EQ(text.substr(0, 62), "01 00 " + std::string(56, '0'));
  EXPECT_EQ(text.substr(64 * 6, 14), "07 00 08001700");
}

TEST_F(Editor, a_save_that_fails_is_told_and_changes_nothing) {
  open_fresh();
  dialogs.expect_save("Save Schedule File", folder.path("none/saved.txt"));
  dialogs.expect_message("Cannot save " + folder.path("none/saved.txt").string() +
                         ": No such file or directory");
  clicks.run([this] { editor.save_file(with_monday("0800")); });
  EXPECT_EQ(editor.current_texts().start[0], "0000");
}

TEST_F(Editor, bytes_of_other_lines_survive_a_save) {
  std::string text = ScheduleTable{}.write();
  text.replace(64 * 50, 62, std::string(60, '\xE9') + "\x01\xFF");
  open(text);
  dialogs.expect_save("Save Schedule File", folder.path("saved.txt"));
  editor.save_file(editor.current_texts());
  EXPECT_EQ(folder.read("saved.txt"), text);
}

}  // namespace
