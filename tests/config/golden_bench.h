#pragma once

#include "config/golden.h"
#include "support/window_bench.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace golden {

inline const std::string ack = "\x06";
inline const std::string identification = "Vell 1.00 0001";

inline constexpr const char* no_command_acknowledge = "Reader does not acknowledge command";
inline constexpr const char* no_acknowledge = "Error communicating with reader";

using Frames = std::vector<std::string>;

/// The window on the screen of a row, its boxes filled and its choices made as a person does.
struct Bench : WindowBench {
  explicit Bench(const Row& golden_row, bool port_opens = true) : WindowBench(port_opens), row(golden_row) {
    open(row.screen);
    for (const auto& [box, text] : row.boxes) {
      QTest::keyClicks(control(box), QString::fromStdString(text));
    }
    for (const std::string& choice : row.choices) {
      QTest::mouseClick(control(choice), Qt::LeftButton, {}, QPoint(8, control(choice)->height() / 2));
    }
  }

  QWidget* control(const std::string& object_name) {
    auto* const widget =
        window.screen(window.screen_code())->findChild<QWidget*>(QString::fromStdString(object_name));
    if (widget == nullptr) {
      throw std::runtime_error("no control " + object_name);
    }
    return widget;
  }

  void click_button() { click(control(row.button)); }

  void expect_messages(std::initializer_list<std::string> texts) {
    for (const std::string& text : texts) {
      if (!text.empty()) {
        dialogs.expect_message(text);
      }
    }
  }

  /// A reader of that address that is there. `answer` is called for each of its commands, counted from 0.
  void answer_at(char address, std::function<void(std::size_t command)> answer) {
    presence_question = std::string{address, '\x02', 'V', '\x03'};
    answer_presence = [this] { arrive(ack + ":" + identification + "\x03"); };
    port.responder = [this, answer = std::move(answer),
                      count = std::size_t{0}](std::string_view written) mutable {
      if (written == presence_question) {
        answer_presence();
      } else if (written != ack) {
        answer(count++);
      }
    };
  }
  /// The same, and it acknowledges its first `acknowledges` commands.
  void answer_at(char address, std::size_t acknowledges) {
    answer_at(address, [this, acknowledges](std::size_t command) {
      if (command < acknowledges) {
        arrive(ack);
      }
    });
  }
  void arrive(std::string_view bytes) { port.arrive(bytes, std::chrono::milliseconds(15)); }

  [[nodiscard]] Frames network_frames(char address, std::size_t count) const {
    Frames frames;
    for (std::size_t index = 0; index < count; ++index) {
      frames.push_back(std::string{address, '\x02'} + row.payloads.at(index) + '\x03');
    }
    return frames;
  }

  [[nodiscard]] Frames network_frames_after_presence(char address, std::size_t count) const {
    Frames frames = network_frames(address, count);
    if (row.presence) {
      frames.insert(frames.begin(), {presence_question, ack});
    }
    return frames;
  }

  const Row& row;
  std::string presence_question;
  std::function<void()> answer_presence;
};

inline void expect_frames(const Frames& actual, const Frames& expected) {
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t index = 0; index < expected.size(); ++index) {
    EXPECT_TRUE(bytes_equal(actual.at(index), expected.at(index))) << "frame " << index;
  }
}

}  // namespace golden
