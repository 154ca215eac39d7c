#include "support/pty_bench.h"

#include <QCoreApplication>
#include <QTest>

bool wait_until(const std::function<bool()>& condition, std::chrono::milliseconds time) {
  return QTest::qWaitFor(condition, static_cast<int>(time.count()));
}

std::chrono::milliseconds time_of(const std::function<void()>& action) {
  const auto begun = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begun);
}
