#include "support/test_pump.h"

#include "link/serial_port.h"

#include <algorithm>

namespace {

class TestTicker : public Ticker {
 public:
  TestTicker(TestPump& pump, std::chrono::milliseconds interval, std::function<void()> on_tick)
      : pump_(pump), interval_(interval), state_(std::make_shared<State>(std::move(on_tick))) {}
  ~TestTicker() override { TestTicker::stop(); }

  void start() override {
    stop();
    state_->running = true;
    ++pump_.running_tickers;
    schedule(state_->generation);
  }
  void stop() override {
    pump_.running_tickers -= state_->running ? 1 : 0;
    state_->running = false;
    ++state_->generation;
  }
  [[nodiscard]] bool running() const override { return state_->running; }

 private:
  struct State {
    explicit State(std::function<void()> tick) : on_tick(std::move(tick)) {}
    std::function<void()> on_tick;
    bool running = false;
    int generation = 0;
  };

  void schedule(int generation) { schedule(pump_, interval_, state_, generation); }

  static void schedule(TestPump& pump, std::chrono::milliseconds interval,
                       const std::shared_ptr<State>& state, int generation) {
    pump.after(
        interval,
        [&pump, interval, state, generation] {
          if (state->generation == generation && state->running) {
            schedule(pump, interval, state, generation);
            state->on_tick();
          }
        },
        true);
  }

  TestPump& pump_;
  std::chrono::milliseconds interval_;
  std::shared_ptr<State> state_;
};

}  // namespace

void TestPump::after(std::chrono::nanoseconds delay, std::function<void()> action, bool held_by_pause) {
  events_.emplace(now_ + delay, Event{std::move(action), held_by_pause});
}

void TestPump::idle(Milliseconds time) {
  advance(now_ + time, [] { return false; });
}

void TestPump::advance(TimePoint end, const std::function<bool()>& ended) {
  while (!ended()) {
    const auto due = std::find_if(events_.begin(), events_.end(), [this](const auto& entry) {
      return !(pausing() && entry.second.held_by_pause);
    });
    if (due == events_.end() || due->first > end) {
      now_ = std::max(now_, end);
      return;
    }
    now_ = std::max(now_, due->first);
    const std::function<void()> action = std::move(due->second.action);
    events_.erase(due);
    action();
  }
}

void TestPump::yield(Wake wake) {
  throw_if_closing();
  ++yields;
  advance(end_of_yield(), [this, wake] {
    return closing() || (wake == Wake::byte_or_deadline && port_ != nullptr && port_->bytes_waiting() > 0);
  });
  throw_if_closing();
}

void TestPump::sleep(Milliseconds pause) {
  throw_if_closing();
  sleeps.push_back(pause);
  ++pauses_;
  advance(now_ + pause, [this] { return closing(); });
  --pauses_;
  throw_if_closing();
}

std::unique_ptr<Ticker> TestPump::make_ticker(Milliseconds interval, std::function<void()> on_tick) {
  return std::make_unique<TestTicker>(*this, interval, std::move(on_tick));
}
