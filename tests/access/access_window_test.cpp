#include "access/access_window.h"

#include "access/editor_bench.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QDialog>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace {

std::string padded(std::string text, std::size_t width) {
  text.resize(width, ' ');
  return text;
}

std::string line(const std::string& id, const std::string& name, const std::string& schedule) {
  return padded(id, 40) + padded(name, 30) + schedule + "\r\n";
}

const std::string three = line("300", "Ann", "02") + line("100", "Bob", "07") + line("200", "Cid", "01");

struct AccessEditor : testing::Test, EditorBench<AccessWindow> {
  QTableView* view = find<QTableView>("access_list");
  QDialog* modaccess = find<QDialog>("modaccess");

  QLineEdit* box(const char* name) { return find<QLineEdit>(name); }
  QPushButton* button(const char* name) { return find<QPushButton>(name); }
  void click(const char* name) { QTest::mouseClick(button(name), Qt::LeftButton); }
  void open(const std::string& text) {
    dialogs.expect_open("Open Access File", folder.write("list.txt", text));
    choose("File", "Open");
  }
  std::string saved() {
    dialogs.expect_save("Save Access File", folder.path("saved.txt"));
    choose("File", "Save");
    return folder.read("saved.txt");
  }
  [[nodiscard]] QString cell(int row, int column) const {
    return view->model()->index(row, column).data().toString();
  }
  [[nodiscard]] std::string names() const {
    std::string all;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
      all += cell(row, 1).trimmed().toStdString() + " ";
    }
    return all;
  }
  [[nodiscard]] QPoint centre_of(int row, int column = 0) const {
    return view->visualRect(view->model()->index(row, column)).center();
  }
  void double_click(int row) {
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, centre_of(row));
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, centre_of(row));
    EXPECT_TRUE(QTest::qWaitForWindowActive(modaccess));
  }
  void click_heading(int column) {
    QHeaderView* const headings = view->horizontalHeader();
    const QPoint place{headings->sectionViewportPosition(column) + 10, headings->height() / 2};
    QTest::mouseClick(headings->viewport(), Qt::LeftButton, {}, place);
  }
  void new_employee() {
    choose("New Employee");
    EXPECT_TRUE(QTest::qWaitForWindowActive(modaccess));
  }
  void type(const char* name, const char* text) {
    box(name)->setFocus();
    box(name)->selectAll();
    QTest::keyClicks(box(name), QLatin1String(text));
  }
};

TEST_F(AccessEditor, starts_empty_with_its_caption_and_headings) {
  EXPECT_EQ(window.objectName(), QStringLiteral("access"));
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Access List"));
  EXPECT_EQ(view->model()->rowCount(), 0);
  const char* const headings[] = {"ID Number", "Employee Name", "Schedule"};
  ASSERT_EQ(view->model()->columnCount(), 3);
  for (int column = 0; column < 3; ++column) {
    EXPECT_EQ(view->model()->headerData(column, Qt::Horizontal).toString(), QLatin1String(headings[column]));
  }
  EXPECT_EQ(view->selectionBehavior(), QAbstractItemView::SelectRows);
  EXPECT_TRUE(view->hasFocus());
}

TEST_F(AccessEditor, open_shows_one_row_a_line_as_it_reads) {
  open(three + "short\r\n");
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Access File: ") + folder.shown("list.txt"));
  EXPECT_EQ(names(), "Ann Bob Cid  ");
  EXPECT_EQ(cell(0, 0).toStdString(), padded("300", 40)) << "the padding stays";
  EXPECT_EQ(cell(1, 2), QStringLiteral("07"));
  open(line("1", "Dee", "00"));
  EXPECT_EQ(names(), "Dee ");
  EXPECT_EQ(dialogs.requests.at(0).file_name, "defaccess.txt");
  EXPECT_EQ(dialogs.requests.at(0).folder, StartFolder::access);
}

TEST_F(AccessEditor, names_with_accents_are_shown_and_saved) {
  open(line("1", "M\xFCller \x80", "00"));
  EXPECT_EQ(cell(0, 1).trimmed(), QString::fromUtf8("M\xC3\xBCller \xE2\x82\xAC"));
  EXPECT_EQ(saved(), line("1", "M\xFCller \x80", "00"));
}

TEST_F(AccessEditor, a_cancelled_or_failed_open_changes_nothing) {
  open(three);
  dialogs.expect_open("Open Access File", std::nullopt);
  choose("File", "Open");
  dialogs.expect_open("Open Access File", folder.path("none.txt"));
  dialogs.expect_message("File not found: " + folder.path("none.txt").string());
  choose("File", "Open");
  EXPECT_EQ(names(), "Ann Bob Cid ");
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Access File: ") + folder.shown("list.txt"));
}

TEST_F(AccessEditor, save_writes_the_rows_in_the_order_shown) {
  open(three);
  EXPECT_EQ(saved(), three);
  click_heading(2);
  EXPECT_EQ(saved(), line("200", "Cid", "01") + line("300", "Ann", "02") + line("100", "Bob", "07"));
  EXPECT_EQ(dialogs.requests.back().file_name, "defaccess.txt");
  EXPECT_EQ(dialogs.requests.back().folder, StartFolder::access);
}

TEST_F(AccessEditor, a_cancelled_save_writes_nothing) {
  open(three);
  dialogs.expect_save("Save Access File", std::nullopt);
  choose("File", "Save");
  EXPECT_FALSE(std::filesystem::exists(folder.path("defaccess.txt")));
}

TEST_F(AccessEditor, a_character_that_the_file_lacks_stops_the_save_and_leaves_the_file) {
  open(three);
  new_employee();
  box("employee_id")->setText(QStringLiteral("1"));
  box("employee_name")->setText(QString(QChar(0x0416)));
  click("add");
  folder.write("saved.txt", "old");
  dialogs.expect_save("Save Access File", folder.path("saved.txt"));
  dialogs.expect_message(
      "Row 4: the character \"\xD0\x96\" cannot be saved, it is not in the file's character set");
  view->clearSelection();
  choose("File", "Save");
  EXPECT_EQ(folder.read("saved.txt"), "old");
  ASSERT_EQ(view->selectionModel()->selectedRows().size(), 1);
  EXPECT_EQ(view->selectionModel()->selectedRows().front().row(), 3) << "the one that the box names";
}

TEST_F(AccessEditor, a_save_that_fails_is_told) {
  dialogs.expect_save("Save Access File", folder.path("none/saved.txt"));
  dialogs.expect_message("Cannot save " + folder.path("none/saved.txt").string() +
                         ": No such file or directory");
  choose("File", "Save");
}

TEST_F(AccessEditor, a_click_on_a_heading_sorts_and_a_second_one_reverses) {
  open(three);
  click_heading(0);
  EXPECT_EQ(names(), "Bob Cid Ann ");
  click_heading(0);
  EXPECT_EQ(names(), "Ann Cid Bob ");
  click_heading(0);
  EXPECT_EQ(names(), "Bob Cid Ann ");
  click_heading(1);
  EXPECT_EQ(names(), "Ann Bob Cid ");
  click_heading(2);
  EXPECT_EQ(names(), "Cid Ann Bob ");
}

TEST_F(AccessEditor, the_headings_can_be_reached_by_keys) {
  open(three);
  QTest::keyClick(view, Qt::Key_3, Qt::ControlModifier);
  EXPECT_EQ(names(), "Cid Ann Bob ");
  QTest::keyClick(view, Qt::Key_3, Qt::ControlModifier);
  EXPECT_EQ(names(), "Bob Ann Cid ");
  QTest::keyClick(view, Qt::Key_1, Qt::ControlModifier);
  EXPECT_EQ(names(), "Bob Cid Ann ");
}

TEST_F(AccessEditor, nothing_sorts_by_itself) {
  open(three);
  click_heading(0);
  new_employee();
  type("employee_id", "000");
  type("employee_name", "Dee");
  click("add");
  EXPECT_EQ(names(), "Bob Cid Ann Dee ");
  open(three);
  EXPECT_EQ(names(), "Ann Bob Cid ");
  click_heading(0);
  EXPECT_EQ(names(), "Bob Cid Ann ") << "the first click after an open sorts upwards";
}

TEST_F(AccessEditor, the_selection_stays_with_its_employee_through_a_sort) {
  open(three);
  view->selectRow(0);
  click_heading(0);
  EXPECT_EQ(view->currentIndex().row(), 2);
  EXPECT_EQ(view->selectionModel()->selectedRows().size(), 1);
}

TEST_F(AccessEditor, new_employee_opens_the_empty_dialog_to_add) {
  new_employee();
  EXPECT_EQ(modaccess->windowTitle(), QStringLiteral("Add Employee"));
  EXPECT_TRUE(button("add")->isEnabled());
  EXPECT_FALSE(button("change")->isEnabled());
  EXPECT_FALSE(button("delete")->isEnabled());
  EXPECT_EQ(button("add")->text(), QStringLiteral("ADD"));
  EXPECT_EQ(button("change")->text(), QStringLiteral("CHANGE"));
  EXPECT_EQ(button("delete")->text(), QStringLiteral("DELETE"));
  EXPECT_EQ(modaccess->focusWidget(), box("employee_id"));
}

TEST_F(AccessEditor, add_appends_as_typed_and_stays_open_for_the_next) {
  new_employee();
  type("employee_id", " 12 ");
  type("employee_name", "Ann");
  type("employee_schedule", "7");
  click("add");
  EXPECT_TRUE(modaccess->isVisible());
  EXPECT_EQ(cell(0, 0), QStringLiteral(" 12 "));
  EXPECT_EQ(box("employee_id")->text() + box("employee_name")->text() + box("employee_schedule")->text(),
            QString{});
  EXPECT_EQ(modaccess->focusWidget(), box("employee_id"));
  QTest::keyClicks(box("employee_id"), QStringLiteral("13"));
  click("add");
  QTest::keyClick(modaccess, Qt::Key_Escape);
  EXPECT_FALSE(modaccess->isVisible());
  EXPECT_EQ(saved(), line(" 12 ", "Ann", "07") + line("13", "", "00"));
}

TEST_F(AccessEditor, an_id_of_blanks_is_refused) {
  new_employee();
  for (const char* id : {"", "   "}) {
    type("employee_id", id);
    type("employee_name", "Ann");
    dialogs.expect_message("Employee ID cannot be blank");
    click("add");
  }
  EXPECT_EQ(view->model()->rowCount(), 0);
  EXPECT_EQ(box("employee_name")->text(), QStringLiteral("Ann")) << "what was typed stays";
}

TEST_F(AccessEditor, a_double_click_opens_the_dialog_on_that_row) {
  open(three);
  double_click(1);
  EXPECT_EQ(modaccess->windowTitle(), QStringLiteral("Modify or Delete Employee"));
  EXPECT_FALSE(button("add")->isEnabled());
  EXPECT_TRUE(button("change")->isEnabled());
  EXPECT_TRUE(button("delete")->isEnabled());
  EXPECT_EQ(box("employee_id")->text().toStdString(), padded("100", 40));
  EXPECT_EQ(box("employee_name")->text().toStdString(), padded("Bob", 30));
  EXPECT_EQ(box("employee_schedule")->text(), QStringLiteral("07"));
}

TEST_F(AccessEditor, enter_on_a_row_does_what_a_double_click_does) {
  open(three);
  view->selectRow(2);
  QTest::keyClick(view, Qt::Key_Return);
  ASSERT_TRUE(modaccess->isVisible());
  EXPECT_EQ(box("employee_name")->text().trimmed(), QStringLiteral("Cid"));
}

TEST_F(AccessEditor, change_keeps_the_old_name) {
  open(three);
  double_click(1);
  type("employee_id", "150");
  type("employee_name", "Zoe");
  type("employee_schedule", "9");
  click("change");
  EXPECT_FALSE(modaccess->isVisible());
  EXPECT_EQ(saved(), line("300", "Ann", "02") + line("150", "Bob", "09") + line("200", "Cid", "01"));
}

TEST_F(AccessEditor, change_takes_a_blank_id) {
  open(three);
  double_click(0);
  type("employee_id", " ");
  box("employee_schedule")->clear();
  click("change");
  EXPECT_EQ(saved().substr(0, 74), line("", "Ann", "00"));
}

TEST_F(AccessEditor, delete_removes_the_row_without_asking) {
  open(three);
  double_click(1);
  click("delete");
  EXPECT_FALSE(modaccess->isVisible());
  EXPECT_EQ(names(), "Ann Cid ");
}

TEST_F(AccessEditor, after_a_sort_the_dialog_works_on_the_row_that_was_clicked) {
  open(three);
  click_heading(0);
  double_click(0);
  EXPECT_EQ(box("employee_name")->text().trimmed(), QStringLiteral("Bob"));
  click("delete");
  EXPECT_EQ(names(), "Cid Ann ");
}

TEST_F(AccessEditor, closing_the_dialog_changes_nothing) {
  open(three);
  double_click(1);
  type("employee_id", "9");
  QTest::keyClick(modaccess, Qt::Key_Escape);
  EXPECT_FALSE(modaccess->isVisible());
  EXPECT_EQ(saved(), three);
}

TEST_F(AccessEditor, keys_move_between_the_boxes) {
  new_employee();
  const auto focus = [this] { return modaccess->focusWidget()->objectName().toStdString(); };
  const auto press = [this](Qt::Key key) { QTest::keyClick(modaccess->focusWidget(), key); };
  press(Qt::Key_Return);
  EXPECT_EQ(focus(), "employee_name");
  press(Qt::Key_Up);
  EXPECT_EQ(focus(), "employee_id");
  press(Qt::Key_Up);
  EXPECT_EQ(focus(), "employee_id");
  press(Qt::Key_Down);
  EXPECT_EQ(focus(), "employee_name");
  press(Qt::Key_Enter);
  EXPECT_EQ(focus(), "employee_schedule");
  press(Qt::Key_Up);
  EXPECT_EQ(focus(), "employee_name");
  press(Qt::Key_Down);
  EXPECT_EQ(focus(), "employee_schedule");
  press(Qt::Key_Down);
  EXPECT_EQ(focus(), "employee_schedule");
}

TEST_F(AccessEditor, what_is_typed_after_moving_to_a_box_replaces_its_text) {
  open(three);
  double_click(1);
  QTest::keyClick(modaccess->focusWidget(), Qt::Key_Return);
  QTest::keyClick(modaccess->focusWidget(), Qt::Key_Down);
  QTest::keyClicks(modaccess->focusWidget(), QStringLiteral("31"));
  EXPECT_EQ(box("employee_schedule")->text(), QStringLiteral("31"));
  QTest::keyClick(modaccess->focusWidget(), Qt::Key_Up);
  QTest::keyClick(modaccess->focusWidget(), Qt::Key_Up);
  QTest::keyClicks(modaccess->focusWidget(), QStringLiteral("99"));
  EXPECT_EQ(box("employee_id")->text(), QStringLiteral("99"));
}

TEST_F(AccessEditor, enter_in_a_box_presses_no_button) {
  new_employee();
  type("employee_id", "1");
  type("employee_schedule", "1");
  QTest::keyClick(box("employee_schedule"), Qt::Key_Return);
  QTest::keyClick(box("employee_schedule"), Qt::Key_Enter);
  EXPECT_EQ(view->model()->rowCount(), 0);
  EXPECT_TRUE(modaccess->isVisible());
}

TEST_F(AccessEditor, enter_on_a_button_presses_it) {
  new_employee();
  type("employee_id", "1");
  button("add")->setFocus();
  QTest::keyClick(button("add"), Qt::Key_Return);
  EXPECT_EQ(view->model()->rowCount(), 1);
}

TEST_F(AccessEditor, the_schedule_box_takes_two_digits_and_backspace_only) {
  new_employee();
  type("employee_schedule", "a1-2 34");
  EXPECT_EQ(box("employee_schedule")->text(), QStringLiteral("12"));
  QTest::keyClick(box("employee_schedule"), Qt::Key_Backspace);
  EXPECT_EQ(box("employee_schedule")->text(), QStringLiteral("1"));
}

TEST_F(AccessEditor, id_and_name_take_any_character_but_a_line_end) {
  new_employee();
  type("employee_id", "a,\"1\" -");
  EXPECT_EQ(box("employee_id")->text(), QStringLiteral("a,\"1\" -"));
  QGuiApplication::clipboard()->setText(QStringLiteral("12345\r\n"));
  box("employee_id")->selectAll();
  box("employee_id")->paste();
  EXPECT_EQ(box("employee_id")->text(), QStringLiteral("12345"));
}

TEST_F(AccessEditor, closing_the_window_asks_nothing_after_changes) {
  open(three);
  double_click(1);
  click("delete");
  window.close();
  EXPECT_FALSE(window.isVisible());
}

TEST_F(AccessEditor, with_the_changed_flag_the_window_asks_and_closes_either_way) {
  open(three);
  for (const bool answer : {true, false}) {
    window.set_changed(true);
    dialogs.expect_question(
        "Access File " + folder.path("list.txt").string() + " has changed\rDo you wish to replace it",
        answer);
    window.close();
    EXPECT_FALSE(window.isVisible());
    window.open();
    open(three);
  }
  window.set_changed(true);
  EXPECT_EQ(saved(), three);  // a save clears the flag
  window.close();
}

TEST_F(AccessEditor, opened_again_it_starts_anew_and_while_open_it_stays) {
  open(three);
  window.open();
  EXPECT_EQ(view->model()->rowCount(), 3);
  window.close();
  window.open();
  EXPECT_EQ(view->model()->rowCount(), 0);
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Access List"));
}

TEST_F(AccessEditor, boxes_are_named_after_their_labels) {
  EXPECT_EQ(box("employee_id")->accessibleName(), QStringLiteral("Employee ID"));
  EXPECT_EQ(box("employee_name")->accessibleName(), QStringLiteral("Employee Name"));
  EXPECT_EQ(box("employee_schedule")->accessibleName(), QStringLiteral("Schedule #"));
  EXPECT_EQ(view->accessibleName(), QStringLiteral("Access List"));
}

TEST_F(AccessEditor, a_hundred_thousand_rows_show_without_delay) {
  std::string text;
  for (int i = 0; i < 100000; ++i) {
    text += line(std::to_string(i), "Name " + std::to_string(i), "07");
  }
  const std::clock_t start = std::clock();
  open(text);
  view->viewport()->repaint();
  view->scrollToBottom();
  view->viewport()->repaint();
  EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, 4.0) << "of a debug build";
  EXPECT_EQ(view->model()->rowCount(), 100000);
}

TEST(access_list_model, keeps_the_rules_of_a_model) {
  AccessListModel model;
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  model.read(three);
  model.add({QStringLiteral("4"), QStringLiteral("Dee"), QStringLiteral("5")});
  model.sort(0, Qt::AscendingOrder);
  model.sort(2, Qt::DescendingOrder);
  model.change(1, QStringLiteral("x"), QStringLiteral("9"));
  model.remove(0);
  EXPECT_EQ(model.rowCount(), 3);
  model.clear();
  EXPECT_EQ(model.rowCount(), 0);
}

}  // namespace
