#pragma once

#include "shell/screen.h"
#include "tools/hardtest.h"

class QGridLayout;
class QLabel;
class TerminalView;
class TextBox;

/// The automated test of a reader: sends the steps of a profile and shows what comes back.
class HardwareTestScreen : public Screen, private HardtestDisplay {
 public:
  HardwareTestScreen(Services& services, QWidget* parent);

  void entered() override;
  [[nodiscard]] QPushButton* start_button() const override { return start_; }
  [[nodiscard]] QPushButton* stop_button() const override { return stop_; }

 private:
  void show_profile() override;
  void clear_steps() override;
  void add_step(std::string_view caption) override;
  void clear_output() override;
  void repaint_output() override;

  void add_controls(QGridLayout& grid);
  QWidget* step_list();
  void start();
  void edit_profiles();
  void open_editor();

  CurrentProfile profile_{default_profile(), {}};
  HardwareTest hardware_test_;
  bool editor_wanted_ = false;  ///< as soon as the run has ended
  bool editor_open_ = false;
  TextBox* delay_;
  QLabel* profile_label_;
  QLabel* steps_;
  TerminalView* output_;
  QPushButton* start_;
  QPushButton* stop_;
};
