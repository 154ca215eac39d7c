#include "access/orintautil.h"

#include "access/editor_bench.h"
#include "shell/qt_dialogs.h"
#include "support/window_bench.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableView>
#include <QTimer>

namespace {

struct Orintautil : testing::Test, WindowBench {
  TestFolder folder;
  QLabel* progress = find<QLabel>("progress");

  Orintautil() { open(ScreenCode::orintautil); }
  void press(const char* name) { click(find<QPushButton>(name)); }
  /// The reader answers the connection test.
  void answer_test() { port.answer("V\r", "ORIN 1.23 SN 0001\r"); }
};

TEST_F(Orintautil, has_its_groups_buttons_and_note) {
  struct Expected {
    const char* name;
    const char* caption;
    const char* group;
  };
  for (const Expected& expected :
       {Expected{"access_list_download", "Download", "Access List"},
        Expected{"access_list_upload", "Upload", "Access List"},
        Expected{"access_list_clear", "Clear", "Access List"},
        Expected{"access_list_edit", "Edit/Modify", "Access List"}, Expected{"log_upload", "Upload", "Log"},
        Expected{"log_clear", "Clear", "Log"}, Expected{"schedules_download", "Download", "Schedules"},
        Expected{"schedules_edit", "Edit/Modify", "Schedules"}}) {
    auto* const button = find<QPushButton>(expected.name);
    EXPECT_EQ(button->text(), QLatin1String(expected.caption));
    EXPECT_EQ(static_cast<QGroupBox*>(button->parentWidget())->title(), QLatin1String(expected.group));
    EXPECT_EQ(button->accessibleDescription(), QLatin1String(expected.group));
    EXPECT_TRUE(button->isVisible());
  }
  QStringList texts;
  for (const QLabel* const label : window.screen(ScreenCode::orintautil)->findChildren<QLabel*>()) {
    texts << label->text();
  }
  EXPECT_TRUE(texts.contains(QStringLiteral("Orin/Orinta Utilities")));
  EXPECT_TRUE(texts.contains(QStringLiteral(
      "For readers manufactured prior to 2/1/01, it is suggested to put readers into Vell mode prior to any "
      "downloading")));
  EXPECT_FALSE(progress->isVisible());
}

TEST_F(Orintautil, entering_the_screen_hides_the_progress) {
  progress->show();
  open(ScreenCode::com);
  open(ScreenCode::orintautil);
  EXPECT_FALSE(progress->isVisible());
}

TEST_F(Orintautil, the_progress_keeps_its_place_while_hidden) {
  const QRect hidden = progress->geometry();
  progress->setText(QStringLiteral("Records Downloaded: 00001  Errors: 00000"));
  progress->show();
  QCoreApplication::processEvents();
  EXPECT_EQ(progress->geometry(), hidden);
  EXPECT_GT(progress->width(), progress->fontMetrics().horizontalAdvance(progress->text()));
}

TEST_F(Orintautil, the_box_at_the_end_of_a_transfer_leaves_the_counts_in_view) {
  progress->setText(QStringLiteral("Records Downloaded: 00001  Errors: 00000"));
  progress->show();
  QtDialogs boxes(pump);
  QRect covered;
  QTimer answer;
  QObject::connect(&answer, &QTimer::timeout, &answer, [&] {
    if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
      answer.stop();
      covered = box->frameGeometry();
      box->accept();
    }
  });
  answer.start(5);
  boxes.message("        Download Complete         ");
  ASSERT_TRUE(window.frameGeometry().intersects(covered));
  // Offscreen there is no title bar: the box is taken for as much higher as it is high.
  EXPECT_LT(progress->mapToGlobal(progress->rect().bottomLeft()).y(), covered.top() - covered.height());
}

TEST_F(Orintautil, download_of_the_access_list_takes_the_record_length_of_the_setup_screen) {
  dialogs.expect_message("Record Size must be set in Orin Setup Screen prior to downloading");
  press("access_list_download");
  program.services().record_length = "5";
  answer_test();
  port.answer("AC00712345\r", "A\r");
  dialogs.expect_open("Download Access List File",
                      folder.write("list.txt", "12345" + std::string(65, ' ') + "07"));
  dialogs.expect_message("        Download Complete         ", [this] {
    EXPECT_TRUE(progress->isVisible());
    EXPECT_EQ(progress->text(), QStringLiteral("Records Downloaded: 00001  Errors: 00000"));
  });
  press("access_list_download");
  EXPECT_FALSE(progress->isVisible());
}

TEST_F(Orintautil, a_record_length_that_was_only_typed_is_enough_for_the_download) {
  open(ScreenCode::orinparam);
  QTest::keyClicks(find<QLineEdit>("Text2"), QStringLiteral("12"));
  open(ScreenCode::orintautil);
  answer_test();
  port.answer("AC007123456789012\r", "A\r");
  dialogs.expect_open("Download Access List File",
                      folder.write("list.txt", "123456789012" + std::string(58, ' ') + "07"));
  dialogs.expect_message("        Download Complete         ");
  press("access_list_download");
  EXPECT_TRUE(port.written().find("AC007123456789012\r") != std::string::npos) << port.written();
}

TEST_F(Orintautil, each_button_has_its_own_transfer) {
  answer_test();
  port.answer("u\r", "END\r");
  dialogs.expect_save("Upload Access List File", folder.path("list.txt"));
  dialogs.expect_message("Upload Complete");
  press("access_list_upload");
  port.answer("l\r", "END\r");
  dialogs.expect_save("Upload Access Log", folder.path("log.txt"));
  dialogs.expect_message("Upload Complete");
  press("log_upload");
  answer_test();
  dialogs.expect_message("        Reader Access List Cleared         ");
  press("access_list_clear");
  answer_test();
  dialogs.expect_message("        Reader Log Data Cleared         ");
  press("log_clear");
  answer_test();
  dialogs.expect_open("Download Schedule File", folder.write("week.txt", ""));
  dialogs.expect_message("        Download Complete         ");
  press("schedules_download");
  EXPECT_EQ(port.written(), "V\rur\ru\rlr\rl\rV\rcd\rV\rcl\rV\r");
}

TEST_F(Orintautil, a_file_that_is_not_there_ends_the_click_and_the_menu_stays_free) {
  answer_test();
  dialogs.expect_open("Download Schedule File", folder.path("none.txt"));
  dialogs.expect_message("File not found: " + folder.path("none.txt").string());
  press("schedules_download");
  open(ScreenCode::com);
  EXPECT_EQ(window.screen_code(), ScreenCode::com);
}

TEST_F(Orintautil, the_menu_refuses_to_leave_a_download) {
  answer_test();
  dialogs.expect_open("Download Schedule File",
                      folder.write("week.txt", "01 00 " + std::string(56, '0') + "\r\n"));
  pump.after(std::chrono::milliseconds(1000), [this] { open(ScreenCode::com); });
  dialogs.expect_message(
      "You are currently downloading and the download must finish before changing screens");
  dialogs.expect_message("Reader timed out");
  press("schedules_download");
  EXPECT_EQ(window.screen_code(), ScreenCode::orintautil);
  open(ScreenCode::com);
  EXPECT_EQ(window.screen_code(), ScreenCode::com);
}

TEST_F(Orintautil, closing_the_program_ends_a_transfer_at_once) {
  answer_test();
  dialogs.expect_open("Download Schedule File",
                      folder.write("week.txt", "01 00 " + std::string(56, '0') + "\r\n"));
  pump.after(std::chrono::milliseconds(1000), [this] { window.close(); });
  press("schedules_download");
  EXPECT_LE(pump.elapsed(), std::chrono::milliseconds(1010));
}

TEST_F(Orintautil, the_editors_are_windows_of_their_own) {
  press("access_list_edit");
  auto* const access = find<QWidget>("access");
  EXPECT_TRUE(access->isVisible());
  EXPECT_TRUE(access->isWindow());
  EXPECT_EQ(access->windowTitle(), QStringLiteral("Access List"));
  press("schedules_edit");
  auto* const schedules = find<QWidget>("schedules");
  EXPECT_TRUE(schedules->isVisible());
  EXPECT_EQ(schedules->windowTitle(), QStringLiteral("Schedules (no file loaded)"));
  EXPECT_TRUE(access->isVisible());
}

TEST_F(Orintautil, tab_walks_the_buttons_in_reading_order) {
  QStringList order;
  find("access_list_download")->setFocus();
  for (int i = 0; i < 8; ++i) {
    order << window.focusWidget()->objectName();
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(order.join(u' ').toStdString(),
            "access_list_download access_list_upload access_list_clear access_list_edit log_upload log_clear "
            "schedules_download schedules_edit");
}

}  // namespace
