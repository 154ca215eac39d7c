#include "shell/qt_dialogs.h"
#include "support/pty_bench.h"
#include "support/test_pump.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

struct Bench {
  TestPump pump;
  QtDialogs dialogs{pump};

  /// Runs `answer` on the box that opens next.
  template <typename Box>
  void when_open(std::function<void(Box&)> answer) {
    auto* const timer = new QTimer(&owner);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, answer] {
      if (auto* const box = qobject_cast<Box*>(QApplication::activeModalWidget())) {
        timer->stop();
        answer(*box);
      }
    });
    timer->start(5);
  }

  QObject owner;
};

void set_name(QFileDialog& dialog, const QString& name) {
  dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
}

}  // namespace

TEST(qt_dialogs, a_message_keeps_its_blanks_and_has_an_ok_button_alone) {
  Bench bench;
  QString text;
  int buttons = 0;
  bench.when_open<QMessageBox>([&](QMessageBox& box) {
    text = box.text();
    buttons = static_cast<int>(box.buttons().size());
    box.button(QMessageBox::Ok)->click();
  });
  bench.dialogs.message("  two <b>blanks</b> and\ra line  ");
  EXPECT_EQ(text, QStringLiteral("  two <b>blanks</b> and\na line  "));
  EXPECT_EQ(buttons, 1);
}

TEST(qt_dialogs, a_box_stands_before_the_window_that_was_active_last_while_none_is) {
  Bench bench;
  QWidget first;
  QWidget second;
  first.show();
  second.show();
  for (QWidget* const last : {&first, &second, &first}) {
    last->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(last));
    bench.when_open<QMessageBox>([last](QMessageBox& box) {
      EXPECT_EQ(box.parentWidget(), last);
      box.accept();
    });
    bench.dialogs.message("one");
    // As it is until the window manager has given the focus back: the next box comes at once.
    QApplication::setActiveWindow(nullptr);
    bench.when_open<QFileDialog>([last](QFileDialog& box) {
      EXPECT_EQ(box.parentWidget(), last);
      box.reject();
    });
    EXPECT_FALSE(bench.dialogs.choose_save_file({"Save", "a.txt"}).accepted);
  }
}

TEST(qt_dialogs, the_first_file_dialog_shows_the_folder_that_it_has_just_made) {
  const QTemporaryDir home;
  const ScopedVariable variable{"HOME", home.path().toStdString()};
  Bench bench;
  int rows = -1;
  QString folder;
  bench.when_open<QFileDialog>([&](QFileDialog& dialog) {
    auto* const list = dialog.findChild<QListView*>(QStringLiteral("listView"));
    folder = list->rootIndex().data(QFileSystemModel::FilePathRole).toString();
    rows = list->model()->rowCount(list->rootIndex());
    dialog.reject();
  });
  EXPECT_FALSE(bench.dialogs.choose_save_file({"Save", "a.txt", StartFolder::access}).accepted);
  EXPECT_EQ(folder, home.path() + QStringLiteral("/tarvos/access"));
  EXPECT_EQ(rows, 0);
}

TEST(qt_dialogs, a_question_tells_yes_from_no) {
  Bench bench;
  for (const auto button : {QMessageBox::Yes, QMessageBox::No}) {
    bench.when_open<QMessageBox>([button](QMessageBox& box) { box.button(button)->click(); });
    EXPECT_EQ(bench.dialogs.ask("replace it?"), button == QMessageBox::Yes);
  }
}

TEST(qt_dialogs, nothing_opens_once_the_program_is_being_closed) {
  Bench bench;
  bench.pump.close_program();
  EXPECT_THROW(bench.dialogs.message("too late"), ProgramClosing);
  EXPECT_THROW((void)bench.dialogs.ask("too late"), ProgramClosing);
  EXPECT_THROW((void)bench.dialogs.choose_open_file({}), ProgramClosing);
  EXPECT_THROW((void)bench.dialogs.choose_save_file({}), ProgramClosing);
}

TEST(qt_dialogs, a_close_that_waits_in_the_event_loop_is_honoured_before_a_box_is_shown) {
  PtyBench bench;
  QtDialogs dialogs(bench.pump);
  // As while a write blocks: the window is closed, and nobody has looked at the event yet.
  QMetaObject::invokeMethod(
      &bench.pump, [&bench] { bench.pump.close_program(); }, Qt::QueuedConnection);
  EXPECT_THROW(dialogs.message("Reader does not acknowledge command"), ProgramClosing);
}

TEST(qt_dialogs, a_cancelled_dialog_leaves_the_proposed_name) {
  Bench bench;
  QString title;
  QString filter;
  bench.when_open<QFileDialog>([&](QFileDialog& dialog) {
    title = dialog.windowTitle();
    filter = dialog.nameFilters().value(0);
    dialog.reject();
  });
  const FileAnswer answer = bench.dialogs.choose_open_file({"Download Schedule File", "schedule.txt"});
  EXPECT_FALSE(answer.accepted);
  EXPECT_EQ(answer.name, std::filesystem::path("schedule.txt"));
  EXPECT_EQ(title, QStringLiteral("Download Schedule File"));
  EXPECT_EQ(filter, QStringLiteral("Text (*.txt)"));
}

TEST(qt_dialogs, a_saved_name_without_a_suffix_gets_txt) {
  Bench bench;
  const QTemporaryDir folder;
  bench.when_open<QFileDialog>([&](QFileDialog& dialog) {
    set_name(dialog, folder.filePath(QStringLiteral("mine")));
    dialog.findChild<QPushButton*>()->setFocus();
    static_cast<QDialog&>(dialog).accept();
  });
  const FileAnswer answer = bench.dialogs.choose_save_file({"Upload Log", "uploadlog.txt"});
  EXPECT_TRUE(answer.accepted);
  EXPECT_EQ(answer.name.filename(), std::filesystem::path("mine.txt"));
}

TEST(qt_dialogs, a_place_that_cannot_be_written_is_told_and_the_dialog_stays_open) {
  Bench bench;
  const QTemporaryDir folder;
  // A folder that is not there cannot be written by anybody, whoever runs the test.
  QString told;
  bench.when_open<QFileDialog>([&](QFileDialog& dialog) {
    set_name(dialog, QStringLiteral("/proc/mine.txt"));
    bench.when_open<QMessageBox>([&](QMessageBox& box) {
      told = box.text();
      bench.when_open<QFileDialog>([&](QFileDialog& again) {
        set_name(again, folder.filePath(QStringLiteral("mine.txt")));
        static_cast<QDialog&>(again).accept();
      });
      box.button(QMessageBox::Ok)->click();
    });
    static_cast<QDialog&>(dialog).accept();
  });
  const FileAnswer answer = bench.dialogs.choose_save_file({"Upload Log", "uploadlog.txt"});
  EXPECT_TRUE(told.contains(QStringLiteral("/proc/mine.txt cannot be written"))) << told.toStdString();
  EXPECT_TRUE(answer.accepted);
  EXPECT_EQ(answer.name.filename(), std::filesystem::path("mine.txt"));
}

TEST(qt_dialogs, a_file_dialog_ended_by_the_closing_of_the_program_answers_nothing) {
  Bench bench;
  bench.when_open<QFileDialog>([&](QFileDialog& dialog) {
    bench.pump.close_program();
    dialog.reject();
  });
  EXPECT_THROW((void)bench.dialogs.choose_save_file({"Upload Log", "uploadlog.txt"}), ProgramClosing);
}

TEST(qt_dialogs, a_file_that_is_written_in_place_needs_no_room_for_another) {
  if (geteuid() == 0) {
    GTEST_SKIP() << "no folder is closed to root";
  }
  Bench bench;
  const QTemporaryDir folder;
  const QString name = folder.filePath(QStringLiteral("log.txt"));
  QFile file(name);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  QFile::setPermissions(folder.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
  bench.when_open<QFileDialog>([&](QFileDialog& dialog) {
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    set_name(dialog, name);
    static_cast<QDialog&>(dialog).accept();
  });
  FileRequest request{"Upload Log", "uploadlog.txt"};
  request.written_in_place = true;
  const FileAnswer answer = bench.dialogs.choose_save_file(request);
  QFile::setPermissions(folder.path(),
                        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
  EXPECT_TRUE(answer.accepted);
}

TEST(qt_dialogs, an_existing_file_is_replaced_only_after_a_question) {
  Bench bench;
  const QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("log.txt")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  for (const auto button : {QMessageBox::No, QMessageBox::Yes}) {
    int questions = 0;
    bench.when_open<QFileDialog>([&](QFileDialog& dialog) {
      bench.when_open<QMessageBox>([&questions, button](QMessageBox& box) {
        ++questions;
        box.button(button)->click();
      });
      set_name(dialog, folder.filePath(QStringLiteral("log")));  // the suffix is added before the question
      static_cast<QDialog&>(dialog).accept();
      if (button == QMessageBox::No) {
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
      }
    });
    const FileAnswer answer = bench.dialogs.choose_save_file({"Upload Log", "uploadlog.txt"});
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(answer.accepted, button == QMessageBox::Yes);
  }
}

TEST(qt_dialogs, trying_a_place_leaves_its_files_as_they_were) {
  Bench bench;
  const QTemporaryDir folder;
  const QString old_file = folder.filePath(QStringLiteral("old.txt"));
  {
    QFile file(old_file);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("kept");
  }
  const QString link = folder.filePath(QStringLiteral("link.txt"));
  ASSERT_TRUE(QFile::link(folder.filePath(QStringLiteral("not there yet")), link));
  for (const QString& name : {old_file, link}) {
    bench.when_open<QFileDialog>([&](QFileDialog& dialog) {
      dialog.setOption(QFileDialog::DontConfirmOverwrite);
      set_name(dialog, name);
      static_cast<QDialog&>(dialog).accept();
    });
    EXPECT_TRUE(bench.dialogs.choose_save_file({"Upload Log", "uploadlog.txt"}).accepted);
  }
  QFile file(old_file);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), QByteArray("kept"));
  EXPECT_TRUE(QFileInfo(link).isSymLink());
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::System).join(u' '),
            QStringLiteral("link.txt old.txt"));
}
