#pragma once

#include "link/event_pump.h"
#include "link/input_hold.h"
#include "link/serial_port.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

/// The event pump of the running program: the event loop of its one thread.
class QtEventPump : public QObject, public EventPump {
 public:
  explicit QtEventPump(SerialPort& port);

  void yield(Wake wake = Wake::byte_or_deadline) override;
  void sleep(std::chrono::milliseconds pause) override;
  [[nodiscard]] bool pausing() const override { return hold_.holding(); }
  void after_pause(std::function<void()> action) override;
  [[nodiscard]] TimePoint now() const override { return std::chrono::steady_clock::now(); }
  [[nodiscard]] LocalTime local_time() const override;
  [[nodiscard]] std::unique_ptr<Ticker> make_ticker(std::chrono::milliseconds interval,
                                                    std::function<void()> on_tick) override;
  void close_program() override;

 private:
  void process_events_until(TimePoint end);
  void end_pause();

  SerialPort& port_;
  InputHold hold_;
  QTimer alarm_;  ///< wakes the event loop at the end of a yield or a pause
  std::vector<std::function<void()>> waiting_;
};
