#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const QApplication application{argc, argv};
  // Windows come and go; an event loop that one of them has ended would end every later box at once.
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
