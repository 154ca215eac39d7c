#pragma once

#include "access/editor_window.h"
#include "access/schedule_editor.h"

#include <array>

class QGridLayout;
class QPushButton;
class TextBox;

/// The schedule editor's window.
class ScheduleWindow : public EditorWindow {
  Q_OBJECT

 public:
  ScheduleWindow(Services& services, QWidget* parent);

 protected:
  void load() override;

 private:
  QGridLayout* numbers();
  QGridLayout* times();
  void enable_boxes(bool enabled);
  /// Shows schedule 1 of a file just loaded.
  void show_file();
  void show_texts();
  /// The boxes' texts as bytes. @throws ClickError when the file cannot hold one of them
  [[nodiscard]] ScheduleTexts shown_texts() const;
  void number_entered();

  ScheduleEditor editor_;
  TextBox* number_;
  TextBox* associated_;
  std::array<TextBox*, days_in_week> start_{};
  std::array<TextBox*, days_in_week> end_{};
  QPushButton* update_;
};
