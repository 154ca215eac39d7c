// Takes the pictures of the user's manual: every screen and every window of the program, at work with
// simulated readers. Usage: screenshots FOLDER

#include "access/schedule_file.h"
#include "support/whole_bench.h"
#include "tools/fullterm.h"
#include "tools/profile.h"
#include "tools/profile_window.h"
#include "tools/term.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

namespace {

using namespace std::chrono_literals;

/// The window at work with the readers that the options of the simulator describe.
class Sitting : public WholeBench {
 public:
  Sitting(QString folder, const std::vector<std::string>& options)
      : WholeBench(readersim::parse_options(options)), folder_(std::move(folder)) {}

  void take(const char* name, QWidget* of = nullptr) {
    QTest::mouseMove(&window, QPoint(window.width() / 2, window.height() - 1));  // off the menu
    QTest::qWait(100);
    const QString file = folder_ + u'/' + QLatin1String(name) + QStringLiteral(".png");
    constexpr int smallest_file = 0;
    if (!(of == nullptr ? &window : of)->grab().save(file, "PNG", smallest_file)) {
      throw std::runtime_error("cannot write " + file.toStdString());
    }
    std::cout << file.toStdString() << '\n';
  }
  void take_screen(ScreenCode code) {
    open(code);
    take(window.screen(code)->objectName().toLatin1().constData());
  }
  void type(const char* name, const char* text) {
    auto* const box = find<QLineEdit>(name);
    box->selectAll();
    QTest::keyClicks(box, QLatin1String(text));
  }
  /// Does something once, while a click is at work.
  void later(std::chrono::milliseconds wait, std::function<void()> action) {
    QTimer::singleShot(wait, &window, std::move(action));
  }
  template <typename Window>
  Window* opened() {
    Window* found = nullptr;
    if (!QTest::qWaitFor([&] { return (found = qobject_cast<Window*>(QApplication::activeWindow())); })) {
      throw std::runtime_error("the window did not open");
    }
    return found;
  }
  /// Chooses an entry of a menu bar, or of one of its menus.
  static void choose(QMenuBar& menu, const char* caption, const char* entry = nullptr) {
    QAction* const chosen = action(menu.actions(), caption);
    (entry == nullptr ? chosen : action(chosen->menu()->actions(), entry))->trigger();
  }

 private:
  static QAction* action(const QList<QAction*>& actions, const char* caption) {
    for (QAction* const action : actions) {
      if (action->text().remove(u'&') == QLatin1String(caption)) {
        return action;
      }
    }
    throw std::runtime_error(std::string("no menu entry ") + caption);
  }

  QString folder_;
};

void one_reader(const QString& folder) {
  Sitting sitting(folder, {"--no-console"});
  for (const ScreenCode setup : {ScreenCode::com, ScreenCode::vellsetup, ScreenCode::orinparam,
                                 ScreenCode::keshsetup, ScreenCode::quorsetup, ScreenCode::symbology}) {
    sitting.take_screen(setup);
  }
  sitting.open(ScreenCode::diag);
  sitting.click("Reader Identification");
  sitting.take("diag");
  sitting.take_screen(ScreenCode::asciichart);
  sitting.take_screen(ScreenCode::general);
}

void terminals(const QString& folder) {
  Sitting sitting(folder, {"--no-console", "--family", "Vell"});
  sitting.open(ScreenCode::term);
  QTest::keyClicks(sitting.find("Text7"), QStringLiteral("V\r"));
  QTest::qWait(300);
  sitting.take("term");
  sitting.click("Full  Screen");
  QTest::qWait(300);
  QWidget* const full = static_cast<TermScreen*>(sitting.window.screen(ScreenCode::term))->full_screen();
  QTest::keyClicks(full->focusWidget(), QStringLiteral("V\r"));
  QTest::qWait(300);
  sitting.take("fullterm", full);
}

void hardware(const QString& folder) {
  Sitting sitting(folder, {"--no-console", "--family", "Vell"});
  sitting.open(ScreenCode::test);
  sitting.click("F1  Start");
  sitting.take("test");
  sitting.later(0ms, [&] {
    auto* const editor = sitting.opened<ProfileWindow>();
    sitting.dialogs.expect_open("Load Profile", default_profile());
    for (QPushButton* const button : editor->findChildren<QPushButton*>()) {
      if (button->text() == QStringLiteral("Load")) {
        button->click();
      }
    }
    sitting.take("profile", editor);
    editor->close();
  });
  sitting.click("Profiles");
}

void network(const QString& folder) {
  Sitting sitting(folder, {"--no-console", "--network", "0-31"});
  sitting.readers.console("fault 3 silent always");
  sitting.readers.console("fault 7 garbage 4 always");
  sitting.readers.console("swipe 12 4711");
  sitting.readers.console("swipe 20 12345678");
  sitting.open(ScreenCode::prottest);
  sitting.type("Text9", "25");
  sitting.type("Text24", "0");
  sitting.click(sitting.find("Check13"));
  sitting.later(1500ms, [&] { sitting.click("F2 Stop"); });
  sitting.click("F1 Start");
  sitting.take("prottest");
}

/// A list of eight and office hours, in the editors and downloaded.
void access(const QString& folder) {
  const QTemporaryDir files;
  const std::filesystem::path place(files.path().toStdString());
  Sitting sitting(folder, {"--no-console", "--family", "Orinta"});
  sitting.open(ScreenCode::orintautil);
  sitting.click(sitting.find("access_list_edit"));
  auto* const list = sitting.opened<QMainWindow>();
  const std::array people{std::array{"4711", "Anna Berger", "1"},  std::array{"4712", "Bernd Castell", "1"},
                          std::array{"5001", "Clara Dorn", "2"},   std::array{"5002", "David Engel", "2"},
                          std::array{"5010", "Eva Frank", "13"},   std::array{"6100", "Fritz Gruber", "1"},
                          std::array{"6101", "Greta Huber", "13"}, std::array{"7777", "Night watch", "0"}};
  sitting.choose(*list->menuBar(), "New Employee");
  for (const auto& [id, name, schedule] : people) {
    sitting.type("employee_id", id);
    sitting.type("employee_name", name);
    sitting.type("employee_schedule", schedule);
    if (id != people.back()[0]) {
      sitting.click(sitting.find("add"));
    }
  }
  QWidget* const form = sitting.find("employee_id")->window();
  sitting.take("modaccess", form);
  sitting.click(sitting.find("add"));
  form->close();
  sitting.take("access", list);
  list->close();
  sitting.click(sitting.find("schedules_edit"));
  auto* const schedules = sitting.opened<QMainWindow>();
  sitting.dialogs.expect_save("New Schedule File", place / "week.txt");
  sitting.choose(*schedules->menuBar(), "File", "New");
  for (const char* const day : {"0", "1", "2", "3", "4"}) {
    sitting.type((std::string("start_time_") + day).c_str(), "0800");
    sitting.type((std::string("end_time_") + day).c_str(), "1730");
  }
  sitting.take("schedules", schedules);
  schedules->close();
  const std::string three = "4711\r\n4712\r\n5001\r\n";
  std::ofstream(place / "list.txt", std::ios::binary) << three;
  sitting.program.services().record_length = "4";
  sitting.dialogs.expect_open("Download Access List File", place / "list.txt");
  sitting.dialogs.expect_message("        Download Complete         ", [&] { sitting.take("orintautil"); });
  sitting.click(sitting.find("access_list_download"));
}

void log(const QString& folder) {
  const QTemporaryDir files;
  Sitting sitting(folder, {"--no-console", "--family", "Ferro Kesh"});
  for (const char* const card : {"4711", "4712", "5001"}) {
    sitting.readers.console(std::string("swipe 0 ") + card);
  }
  sitting.open(ScreenCode::keshutil);
  sitting.dialogs.expect_save("Upload Log", std::filesystem::path(files.path().toStdString()) / "log.txt");
  sitting.dialogs.expect_message("Upload Complete", [&] { sitting.take("keshutil"); });
  sitting.click("Upload");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "Usage: screenshots FOLDER\n";
    return 1;
  }
  testing::InitGoogleTest();
  const QTemporaryDir home;  // the default profile is as on a fresh machine
  const ScopedVariable own_home("HOME", home.path().toStdString());
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const QString folder = QString::fromLocal8Bit(argv[1]);
  try {
    for (const auto& take_pictures : {one_reader, terminals, hardware, network, access, log}) {
      take_pictures(folder);
    }
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
  return testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed() ? 1 : 0;
}
