#include "access/schedule_window.h"

#include "access/editor_bench.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

struct ScheduleEditorWindow : testing::Test, EditorBench<ScheduleWindow> {
  QLineEdit* box(const char* name) { return find<QLineEdit>(name); }
  void open_fresh() {
    dialogs.expect_open("Open Schedule File", folder.write("week.txt", ScheduleTable{}.write()));
    choose("File", "Open");
  }
  void type(const char* name, const char* text) {
    box(name)->setFocus();
    box(name)->selectAll();
    QTest::keyClicks(box(name), QLatin1String(text));
  }
  void press_update() { QTest::mouseClick(find<QPushButton>("update_this_schedule"), Qt::LeftButton); }
  /// What a save writes for one schedule.
  std::string saved_line(int schedule) {
    dialogs.expect_save("Save Schedule File", folder.path("saved.txt"));
    choose("File", "Save");
    return folder.read("saved.txt").substr(static_cast<std::size_t>(schedule - 1) * 64, 62);
  }
  QList<QWidget*> controls() {
    QList<QWidget*> all{find("schedule_number"), find("associated_schedule"), find("update_this_schedule")};
    for (int d = 0; d < 7; ++d) {
      all << find(("start_time_" + std::to_string(d)).c_str())
          << find(("end_time_" + std::to_string(d)).c_str());
    }
    return all;
  }
};

TEST_F(ScheduleEditorWindow, starts_without_a_file_and_with_all_disabled) {
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Schedules (no file loaded)"));
  for (QWidget* const control : controls()) {
    EXPECT_FALSE(control->isEnabled()) << control->objectName().toStdString();
  }
}

TEST_F(ScheduleEditorWindow, open_shows_schedule_01_and_enables_all) {
  std::string text = ScheduleTable{}.write();
  text.replace(0, 62, "01 09 08001700090018001000190011002000120021001300220014002300");
  dialogs.expect_open("Open Schedule File", folder.write("week.txt", text));
  choose("File", "Open");
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Schedule File: ") + folder.shown("week.txt"));
  EXPECT_EQ(box("schedule_number")->text(), QStringLiteral("01"));
  EXPECT_EQ(box("associated_schedule")->text(), QStringLiteral("09"));
  EXPECT_EQ(box("start_time_0")->text(), QStringLiteral("0800"));
  EXPECT_EQ(box("end_time_0")->text(), QStringLiteral("1700"));
  EXPECT_EQ(box("end_time_6")->text(), QStringLiteral("2300"));
  for (QWidget* const control : controls()) {
    EXPECT_TRUE(control->isEnabled()) << control->objectName().toStdString();
  }
}

TEST_F(ScheduleEditorWindow, new_writes_a_fresh_file_and_shows_it) {
  dialogs.expect_save("New Schedule File", folder.path("new.txt"));
  choose("File", "New");
  EXPECT_EQ(folder.read("new.txt"), ScheduleTable{}.write());
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Schedule File: ") + folder.shown("new.txt"));
  EXPECT_EQ(box("schedule_number")->text(), QStringLiteral("01"));
  EXPECT_EQ(box("start_time_0")->text(), QStringLiteral("0000"));
  EXPECT_TRUE(find("update_this_schedule")->isEnabled());
}

TEST_F(ScheduleEditorWindow, a_cancelled_dialog_leaves_the_window_as_it_is) {
  dialogs.expect_save("New Schedule File", std::nullopt);
  choose("File", "New");
  dialogs.expect_open("Open Schedule File", std::nullopt);
  choose("File", "Open");
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Schedules (no file loaded)"));
  EXPECT_FALSE(find("update_this_schedule")->isEnabled());
}

TEST_F(ScheduleEditorWindow, a_short_file_is_told_and_the_shown_one_stays) {
  open_fresh();
  type("start_time_0", "0800");
  dialogs.expect_open("Open Schedule File", folder.write("short.txt", "01 00\r\n"));
  dialogs.expect_message("The schedule file has fewer than 99 lines: " + folder.path("short.txt").string());
  choose("File", "Open");
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Schedule File: ") + folder.shown("week.txt"));
  EXPECT_EQ(box("start_time_0")->text(), QStringLiteral("0800"));
}

TEST_F(ScheduleEditorWindow, the_number_box_takes_two_digits_and_backspace_only) {
  open_fresh();
  type("schedule_number", "4x-2 7");
  EXPECT_EQ(box("schedule_number")->text(), QStringLiteral("42"));
  QTest::keyClick(box("schedule_number"), Qt::Key_Backspace);
  EXPECT_EQ(box("schedule_number")->text(), QStringLiteral("4"));
}

TEST_F(ScheduleEditorWindow, the_associated_box_takes_two_characters_of_any_kind) {
  open_fresh();
  type("associated_schedule", "x-3");
  EXPECT_EQ(box("associated_schedule")->text(), QStringLiteral("x-"));
}

TEST_F(ScheduleEditorWindow, the_time_boxes_take_anything) {
  open_fresh();
  type("start_time_3", "ab:12345");
  EXPECT_EQ(box("start_time_3")->text(), QStringLiteral("ab:12345"));
}

TEST_F(ScheduleEditorWindow, a_pasted_line_end_does_not_get_into_the_file) {
  open_fresh();
  box("start_time_0")->selectAll();
  QGuiApplication::clipboard()->setText(QStringLiteral("08\r\n00\n"));
  box("start_time_0")->paste();
  EXPECT_EQ(box("start_time_0")->text(), QStringLiteral("0800"));
}

TEST_F(ScheduleEditorWindow, enter_in_the_number_box_shows_that_schedule) {
  open_fresh();
  type("start_time_0", "0800");
  press_update();
  type("schedule_number", "7");
  QTest::keyClick(box("schedule_number"), Qt::Key_Return);
  EXPECT_EQ(box("start_time_0")->text(), QStringLiteral("0000"));
  QTest::keyClicks(box("schedule_number"), QStringLiteral("01"));  // replaces the number that was shown
  QTest::keyClick(box("schedule_number"), Qt::Key_Enter);
  EXPECT_EQ(box("start_time_0")->text(), QStringLiteral("0800"));
}

TEST_F(ScheduleEditorWindow, enter_loses_edits_that_were_not_stored) {
  open_fresh();
  type("start_time_0", "0800");
  type("schedule_number", "7");
  QTest::keyClick(box("schedule_number"), Qt::Key_Return);
  type("schedule_number", "1");
  QTest::keyClick(box("schedule_number"), Qt::Key_Return);
  EXPECT_EQ(box("start_time_0")->text(), QStringLiteral("0000"));
}

TEST_F(ScheduleEditorWindow, enter_in_the_number_box_checks_the_associated_schedule_first) {
  open_fresh();
  type("schedule_number", "7");
  QTest::keyClick(box("schedule_number"), Qt::Key_Return);
  type("associated_schedule", "06");
  type("schedule_number", "8");
  dialogs.expect_message("Associated schedule must be 0 or greater than schedule number");
  QTest::keyClick(box("schedule_number"), Qt::Key_Return);
  EXPECT_EQ(box("associated_schedule")->text(), QStringLiteral("06")) << "no other schedule is shown";
  type("associated_schedule", "07");
  type("schedule_number", "8");
  QTest::keyClick(box("schedule_number"), Qt::Key_Return);
  EXPECT_EQ(box("associated_schedule")->text(), QStringLiteral("00"));
}

TEST_F(ScheduleEditorWindow, a_number_out_of_range_is_told_and_nothing_changes) {
  open_fresh();
  type("start_time_0", "0800");
  type("schedule_number", "0");
  dialogs.expect_message("Schedule number must be 1 to 99");
  QTest::keyClick(box("schedule_number"), Qt::Key_Return);
  EXPECT_EQ(box("start_time_0")->text(), QStringLiteral("0800"));
}

TEST_F(ScheduleEditorWindow, update_checks_in_the_order_of_number_then_times) {
  open_fresh();
  type("associated_schedule", "1");
  type("start_time_0", "2400");
  dialogs.expect_message("associated schedule must be 0 or greater than schedule #");
  press_update();
  type("associated_schedule", "2");
  dialogs.expect_message("Invalid time entered in schedule (must be < 2400)");
  press_update();
  type("start_time_0", "2399");
  press_update();
  EXPECT_EQ(saved_line(1).substr(0, 10), "01 02 2399");
}

TEST_F(ScheduleEditorWindow, a_7_over_0800_yields_7800_in_the_file) {
  open_fresh();
  type("start_time_0", "0800");
  press_update();
  type("start_time_0", "7");
  press_update();
  EXPECT_EQ(saved_line(1).substr(6, 4), "7800");
}

TEST_F(ScheduleEditorWindow, save_stores_what_is_shown_even_with_another_number_typed) {
  open_fresh();
  type("start_time_0", "9999");
  type("schedule_number", "7");
  EXPECT_EQ(saved_line(1).substr(6, 4), "9999");
  EXPECT_EQ(folder.read("saved.txt").substr(64 * 6, 10), "07 00 0000");
}

TEST_F(ScheduleEditorWindow, a_character_that_the_file_lacks_stops_save_and_update) {
  open_fresh();
  folder.write("saved.txt", "old");
  box("start_time_2")->setText(QString(QChar(0x0416)));
  const std::string words =
      "Schedule 01: the character \"\xD0\x96\" cannot be saved, it is not in the file's character set";
  dialogs.expect_message(words);
  choose("File", "Save");
  dialogs.expect_message(words);
  press_update();
  EXPECT_EQ(folder.read("saved.txt"), "old");
  box("start_time_2")
      ->setText(QString::fromUtf8("\xE2\x82\xAC"
                                  "00"));  // the euro sign has a code
  EXPECT_EQ(saved_line(1).substr(22, 4),
            "\x80"
            "000");
}

TEST_F(ScheduleEditorWindow, save_without_a_file_is_told) {
  dialogs.expect_message("There is no schedule file loaded");
  choose("File", "Save");
}

TEST_F(ScheduleEditorWindow, opened_again_it_starts_anew_and_while_open_it_stays) {
  open_fresh();
  window.open();
  EXPECT_EQ(box("schedule_number")->text(), QStringLiteral("01"));
  window.close();
  window.open();
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Schedules (no file loaded)"));
  EXPECT_FALSE(box("schedule_number")->isEnabled());
  EXPECT_EQ(box("start_time_0")->text(), QString{});
}

TEST_F(ScheduleEditorWindow, tab_walks_all_controls_in_reading_order) {
  open_fresh();
  QStringList order;
  box("schedule_number")->setFocus();
  for (int i = 0; i < 17; ++i) {
    order << window.focusWidget()->objectName();
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(
      order.join(u' ').toStdString(),
      "schedule_number associated_schedule start_time_0 end_time_0 start_time_1 end_time_1 start_time_2 "
      "end_time_2 start_time_3 end_time_3 start_time_4 end_time_4 start_time_5 end_time_5 start_time_6 "
      "end_time_6 update_this_schedule");
  EXPECT_EQ(window.focusWidget(), box("schedule_number"));
}

TEST_F(ScheduleEditorWindow, enter_on_the_focused_button_presses_it) {
  open_fresh();
  type("start_time_0", "2400");
  find("update_this_schedule")->setFocus();
  dialogs.expect_message("Invalid time entered in schedule (must be < 2400)");
  QTest::keyClick(find("update_this_schedule"), Qt::Key_Return);
}

TEST_F(ScheduleEditorWindow, controls_are_named_after_the_words_beside_them) {
  EXPECT_EQ(box("schedule_number")->accessibleName(), QStringLiteral("Schedule #"));
  EXPECT_EQ(box("associated_schedule")->accessibleName(), QStringLiteral("Associated Schedule #"));
  EXPECT_EQ(box("start_time_0")->accessibleName(), QStringLiteral("Monday Start Time"));
  EXPECT_EQ(box("end_time_6")->accessibleName(), QStringLiteral("Sunday End Time"));
  EXPECT_EQ(find<QPushButton>("update_this_schedule")->text(), QStringLiteral("Update This Schedule"));
}

}  // namespace
