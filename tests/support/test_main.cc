#include "shell/application.h"

#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // What file dialogs keep of themselves is no test's to leave behind, in a person's settings least of all.
  const QTemporaryDir kept;
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, kept.path());
  const Application application{argc, argv};
  // Windows come and go; an event loop that one of them has ended would end every later box at once.
  Application::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
