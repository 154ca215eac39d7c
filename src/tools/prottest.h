#pragma once

#include "shell/screen.h"
#include "tools/poll.h"

class DrawnText;
class QCheckBox;
class TextBox;

/// Tests the readers of a network by polling them over and over.
class ProtTestScreen : public Screen, private PollDisplay {
 public:
  ProtTestScreen(Services& services, QWidget* parent);
  ~ProtTestScreen() override;

  void entered() override;
  [[nodiscard]] QPushButton* start_button() const override { return start_; }
  [[nodiscard]] QPushButton* stop_button() const override { return stop_; }

 private:
  void clear() override;
  void print(std::string_view line, PollColour colour) override;

  QWidget* boxes();
  QWidget* buttons();
  [[nodiscard]] PollBoxes typed() const;

  Poller poller_;
  DrawnText* protdisp_;
  TextBox* first_address_;
  TextBox* last_address_;
  TextBox* delay_;
  TextBox* time_out_;
  QCheckBox* show_all_;
  QPushButton* start_;
  QPushButton* stop_;
};
