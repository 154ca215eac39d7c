#include "link/hang_up_watch.h"

#include <QSerialPort>
#include <QSocketNotifier>

#include <utility>

std::unique_ptr<QObject> watch_for_hang_up(QSerialPort& port, std::function<void()> on_hang_up) {
  // The port's own error signal repeats without end on a line that has gone, and not on every version;
  // the descriptor's exception tells it every time.
  auto watch = std::make_unique<QSocketNotifier>(port.handle(), QSocketNotifier::Exception);
  QSocketNotifier* const notifier = watch.get();
  QObject::connect(notifier, &QSocketNotifier::activated, notifier,
                   [notifier, action = std::move(on_hang_up)] {
                     notifier->setEnabled(false);
                     // Queued: the port must not be closed from within its own descriptor's event.
                     QMetaObject::invokeMethod(notifier, action, Qt::QueuedConnection);
                   });
  return watch;
}
