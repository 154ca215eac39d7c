#pragma once

#include "access/schedule_file.h"
#include "link/dialogs.h"

#include <filesystem>
#include <string_view>

/// The schedule editor without its window: one file of 99 schedules in memory, one schedule on show.
class ScheduleEditor {
 public:
  explicit ScheduleEditor(Dialogs& dialogs) : dialogs_(dialogs) {}

  /// The state of a window that has just been opened: no file loaded.
  void load();

  [[nodiscard]] bool file_loaded() const { return !file_name_.empty(); }
  [[nodiscard]] const std::filesystem::path& file_name() const { return file_name_; }
  /// The number of the schedule on show.
  [[nodiscard]] int current() const { return current_; }
  /// The texts of the schedule on show as the table holds them.
  [[nodiscard]] ScheduleTexts current_texts() const { return table_.texts(current_); }

  /// Asks for a name, writes a fresh file and loads it. @return false when the dialog was cancelled.
  /// @throws ClickError when the file cannot be written; then nothing has changed.
  [[nodiscard]] bool create_file();
  /// Asks for a file and loads it; schedule 1 is on show. @return false when the dialog was cancelled.
  /// @throws ClickError when it cannot be read or is too short; then nothing has changed.
  [[nodiscard]] bool open_file();
  /// Stores the shown texts, unchecked, into the line of the schedule on show and writes the whole file.
  /// A cancelled dialog changes nothing.
  /// @throws ClickError when the file cannot be written; it then stands as it was.
  void save_file(const ScheduleTexts& shown);

  /// Checks the associated schedule before another schedule is shown; shows a message when it fails.
  [[nodiscard]] bool validate_current(std::string_view associated);
  /// Puts a schedule on show. Edits of the one shown before are not stored, and that is meant.
  /// @throws ClickError when the number is not 1 to 99; then nothing has changed.
  void getschedule(std::string_view number);
  /// Checks the shown texts and stores them into the line of the schedule whose number stands in the box;
  /// that schedule is then the one on show. Shows a message when a check fails, and changes nothing.
  void update(std::string_view number, const ScheduleTexts& shown);

 private:
  void load_file(const std::filesystem::path& name);
  [[nodiscard]] bool times_valid(const ScheduleTexts& shown);

  Dialogs& dialogs_;
  ScheduleTable table_;
  std::filesystem::path file_name_;
  int current_ = 1;
};
