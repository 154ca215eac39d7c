#include "tools/profile_window.h"

#include "shell/program.h"
#include "shell/safe_file.h"
#include "shell/text_box.h"
#include "support/bytes.h"
#include "support/fake_port.h"
#include "support/scripted_dialogs.h"
#include "support/test_printer.h"

#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace {

struct EditorBench {
  QTemporaryDir folder;
  TestPump pump;
  FakePort port{pump};
  ScriptedDialogs dialogs{&pump};
  TestPrinter printer;
  Program program{port, pump, dialogs, printer};
  CurrentProfile profile{default_profile(), {}};
  int changes = 0;
  ProfileWindow editor{program.services(), profile, [this] { ++changes; }, nullptr};

  EditorBench() {
    editor.show();
    editor.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&editor));
  }

  TextBox* box(const QString& name) {
    auto* const found = editor.findChild<TextBox*>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
  }
  TextBox* box(const char* kind, int row) { return box(QLatin1String(kind) + u'_' + QString::number(row)); }
  void type(const char* kind, int row, const QString& text) { QTest::keyClicks(box(kind, row), text); }
  void click(const char* caption) {
    for (auto* const button : editor.findChildren<QPushButton*>()) {
      if (button->text() == QLatin1String(caption)) {
        QTest::mouseClick(button, Qt::LeftButton);
        return;
      }
    }
    ADD_FAILURE() << "no button " << caption;
  }
  std::filesystem::path path(const char* name) const {
    return std::filesystem::path(folder.path().toStdString()) / name;
  }
};

}  // namespace

TEST(profile_window, opens_empty_whatever_the_tables_hold) {
  EditorBench bench;
  bench.profile.tables.captions.at(0) = "there";
  ProfileWindow second(
      bench.program.services(), bench.profile, [] {}, nullptr);
  for (const auto* const box : second.findChildren<TextBox*>()) {
    EXPECT_TRUE(box->text().isEmpty());
  }
  EXPECT_EQ(second.findChildren<TextBox*>().size(), 30);
}

TEST(profile_window, title_headings_hint_and_buttons_read_as_they_must) {
  EditorBench bench;
  EXPECT_EQ(bench.editor.windowTitle(), QStringLiteral("Test Profile"));
  QStringList words;
  for (const QLabel* const label : bench.editor.findChildren<QLabel*>()) {
    words << label->text();
  }
  EXPECT_EQ(words, (QStringList{QStringLiteral("User Profile for Hardware Test"), QStringLiteral("Caption"),
                                QStringLiteral("Command"), QStringLiteral("Wait (ms)"),
                                QStringLiteral("F9 for a NULL")}));
  QStringList captions;
  for (const QPushButton* const button : bench.editor.findChildren<QPushButton*>()) {
    captions << button->text();
  }
  EXPECT_EQ(captions, (QStringList{QStringLiteral("Load"), QStringLiteral("Save")}));
}

TEST(profile_window, every_box_stands_in_its_row_under_the_heading_of_its_column) {
  struct Column {
    const char* heading;
    const char* boxes;
  };
  EditorBench bench;
  const auto labels = bench.editor.findChildren<QLabel*>();
  for (const auto& [heading, boxes] :
       {Column{"Caption", "Text1"}, Column{"Command", "Text2"}, Column{"Wait (ms)", "Text3"}}) {
    const auto label = std::find_if(labels.begin(), labels.end(), [text = heading](const QLabel* candidate) {
      return candidate->text() == QLatin1String(text);
    });
    ASSERT_NE(label, labels.end()) << heading;
    int above = (*label)->geometry().bottom();
    for (int row = 0; row < 10; ++row) {
      const TextBox& box = *bench.box(boxes, row);
      EXPECT_EQ(box.x(), (*label)->x()) << heading << row;
      EXPECT_GT(box.y(), above) << heading << row;
      EXPECT_EQ(box.y(), bench.box("Text1", row)->y()) << heading << row;
      EXPECT_EQ(box.accessibleName(), QLatin1String(heading) + QStringLiteral(" %1").arg(row + 1));
      above = box.geometry().bottom();
    }
  }
}

TEST(profile_window, the_boxes_are_named_by_column_and_row) {
  EditorBench bench;
  EXPECT_EQ(bench.box("Text1", 0)->accessibleName(), QStringLiteral("Caption 1"));
  EXPECT_EQ(bench.box("Text2", 4)->accessibleName(), QStringLiteral("Command 5"));
  EXPECT_EQ(bench.box("Text3", 9)->accessibleName(), QStringLiteral("Wait (ms) 10"));
}

TEST(profile_window, tab_walks_row_by_row) {
  EditorBench bench;
  bench.box("Text1", 0)->setFocus();
  for (const char* const next : {"Text2_0", "Text3_0", "Text1_1"}) {
    QTest::keyClick(bench.editor.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(bench.editor.focusWidget()->objectName(), QLatin1String(next));
  }
}

TEST(profile_window, f9_appends_the_character_for_a_nul_and_it_is_saved_as_it_is) {
  EditorBench bench;
  bench.type("Text1", 0, QStringLiteral("Mine"));
  bench.type("Text2", 0, QStringLiteral("V"));
  QTest::keyClick(bench.box("Text2", 0), Qt::Key_F9);
  bench.type("Text2", 0, QStringLiteral("X"));
  EXPECT_EQ(bench.box("Text2", 0)->text(), QStringLiteral("V\u2205X"));
  bench.dialogs.expect_save("Save Profile", bench.path("own.txt"));
  bench.click("Save");
  EXPECT_EQ(bench.profile.tables.commands.at(0), "V\x82X");
  EXPECT_EQ(load_profile(bench.path("own.txt")).commands.at(0), "V\x82X");
}

TEST(profile_window, f9_appends_at_the_end_wherever_the_caret_stands) {
  EditorBench bench;
  bench.type("Text2", 3, QStringLiteral("AB"));
  QTest::keyClick(bench.box("Text2", 3), Qt::Key_Home);
  QTest::keyClick(bench.box("Text2", 3), Qt::Key_F9);
  EXPECT_EQ(bench.box("Text2", 3)->text(), QStringLiteral("AB\u2205"));
}

TEST(profile_window, f9_does_nothing_in_captions_and_waits) {
  EditorBench bench;
  QTest::keyClick(bench.box("Text1", 0), Qt::Key_F9);
  QTest::keyClick(bench.box("Text3", 0), Qt::Key_F9);
  EXPECT_EQ(bench.box("Text1", 0)->text(), QString());
  EXPECT_EQ(bench.box("Text3", 0)->text(), QString());
}

TEST(profile_window, saving_three_rows_writes_thirty_lines) {
  EditorBench bench;
  for (int row = 0; row < 3; ++row) {
    bench.type("Text1", row, QStringLiteral("c%1").arg(row));
    bench.type("Text2", row, QStringLiteral("d%1").arg(row));
    bench.type("Text3", row, QStringLiteral("%1").arg(row));
  }
  bench.dialogs.expect_save("Save Profile", bench.path("own.txt"));
  bench.click("Save");
  const std::string seven = "\r\n\r\n\r\n\r\n\r\n\r\n\r\n";
  EXPECT_TRUE(
      bytes_equal(read_whole_file(bench.path("own.txt")),
                  "c0\r\nc1\r\nc2\r\n" + seven + "d0\r\nd1\r\nd2\r\n" + seven + "0\r\n1\r\n2\r\n" + seven));
  EXPECT_EQ(bench.profile.testprofilefile, bench.path("own.txt"));
  EXPECT_EQ(bench.changes, 1);
}

TEST(profile_window, load_fills_boxes_and_tables_and_every_byte_is_saved_again) {
  EditorBench bench;
  TestProfile all;
  for (int code = 0; code < 256; ++code) {
    all.captions.at(0) += static_cast<char>(code);
    all.commands.at(0) += static_cast<char>(255 - code);
  }
  all.commands.at(9) = " \x82\x82 ";
  all.waits.at(9) = " 5 ";
  save_profile(bench.path("all.txt"), all);
  bench.dialogs.expect_open("Load Profile", bench.path("all.txt"));
  bench.click("Load");
  EXPECT_EQ(bench.box("Text2", 9)->text(), QStringLiteral(" \u2205\u2205 "));
  EXPECT_EQ(bench.box("Text3", 9)->text(), QStringLiteral(" 5 "));
  EXPECT_EQ(bench.profile.tables, all);
  EXPECT_EQ(bench.profile.testprofilefile, bench.path("all.txt"));
  EXPECT_EQ(bench.changes, 1);
  bench.dialogs.expect_save("Save Profile", bench.path("again.txt"));
  bench.click("Save");
  EXPECT_TRUE(bytes_equal(read_whole_file(bench.path("again.txt")), read_whole_file(bench.path("all.txt"))));
}

TEST(profile_window, the_dialogs_start_in_the_folder_of_the_profiles_with_the_proposed_name) {
  EditorBench bench;
  bench.dialogs.expect_open("Load Profile", std::nullopt);
  bench.click("Load");
  bench.dialogs.expect_save("Save Profile", std::nullopt);
  bench.click("Save");
  for (const FileRequest& request : bench.dialogs.requests) {
    EXPECT_EQ(request.file_name, "velltest.txt");
    EXPECT_EQ(request.folder, StartFolder::tarvos);
  }
}

TEST(profile_window, a_cancelled_dialog_changes_nothing) {
  EditorBench bench;
  bench.type("Text1", 0, QStringLiteral("typed"));
  bench.profile.tables.captions.at(0) = "there";
  bench.dialogs.expect_open("Load Profile", std::nullopt);
  bench.click("Load");
  bench.dialogs.expect_save("Save Profile", std::nullopt);
  bench.click("Save");
  EXPECT_EQ(bench.profile.tables.captions.at(0), "there");
  EXPECT_EQ(bench.box("Text1", 0)->text(), QStringLiteral("typed"));
  EXPECT_EQ(bench.profile.testprofilefile, default_profile());
  EXPECT_EQ(bench.changes, 0);
}

TEST(profile_window, a_short_file_is_told_by_its_name_and_changes_nothing) {
  EditorBench bench;
  replace_file(bench.path("short.txt"), "one\r\n");
  bench.profile.tables.captions.at(0) = "of the current profile";
  const TestProfile before = bench.profile.tables;
  bench.type("Text1", 0, QStringLiteral("typed"));
  bench.dialogs.expect_open("Load Profile", bench.path("short.txt"));
  bench.dialogs.expect_message("The test profile " + bench.path("short.txt").string() +
                               " has only 1 of its 30 lines");
  bench.click("Load");
  EXPECT_EQ(bench.box("Text1", 0)->text(), QStringLiteral("typed"));
  EXPECT_EQ(bench.profile.testprofilefile, default_profile());
  EXPECT_EQ(bench.profile.tables, before);
  EXPECT_EQ(bench.changes, 0);
}

TEST(profile_window, a_character_without_a_byte_is_told_and_nothing_is_saved) {
  EditorBench bench;
  bench.box("Text1", 0)->setText(QStringLiteral("\u03A9"));
  bench.dialogs.expect_save("Save Profile", bench.path("own.txt"));
  bench.dialogs.expect_message("The character \"\u03A9\" is not in the readers' character set");
  bench.click("Save");
  EXPECT_FALSE(std::filesystem::exists(bench.path("own.txt")));
  EXPECT_EQ(bench.profile.testprofilefile, default_profile());
}

TEST(profile_window, a_place_that_cannot_be_written_is_told_and_the_profile_stays_the_current_one) {
  EditorBench bench;
  bench.dialogs.expect_save("Save Profile", bench.path("no such folder/own.txt"));
  bench.type("Text1", 0, QStringLiteral("typed"));
  bench.dialogs.expect_message("Cannot save " + bench.path("no such folder/own.txt").string() +
                               ": No such file or directory");
  bench.click("Save");
  EXPECT_EQ(bench.profile.testprofilefile, default_profile());
  EXPECT_EQ(bench.changes, 0);
}

TEST(profile_window, neither_enter_nor_escape_in_a_box_does_anything) {
  EditorBench bench;
  bench.type("Text1", 0, QStringLiteral("typed"));
  for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
    QTest::keyClick(bench.box("Text1", 0), key);
  }
  EXPECT_TRUE(bench.editor.isVisible());
  EXPECT_EQ(bench.box("Text1", 0)->text(), QStringLiteral("typed"));
  EXPECT_TRUE(bench.dialogs.shown.empty());
}

TEST(profile_window, enter_presses_the_button_that_has_the_focus_and_none_is_its_default) {
  EditorBench bench;
  for (auto* const button : bench.editor.findChildren<QPushButton*>()) {
    EXPECT_FALSE(button->isDefault() || button->autoDefault());
  }
  for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* const load = bench.editor.findChild<QPushButton*>(QStringLiteral("load"));
    load->setFocus();
    bench.dialogs.expect_open("Load Profile", std::nullopt);
    QTest::keyClick(load, key);
  }
}

TEST(profile_window, fits_a_small_desktop) {
  EditorBench bench;
  EXPECT_LE(bench.editor.minimumSizeHint().width(), 640);
  EXPECT_LE(bench.editor.minimumSizeHint().height(), 480);
}
