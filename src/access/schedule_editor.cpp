#include "access/schedule_editor.h"

#include "link/click.h"
#include "link/numbers.h"
#include "shell/safe_file.h"

namespace {

constexpr std::string_view no_file_loaded = "There is no schedule file loaded";
constexpr std::int64_t end_of_day = 2400;

/// @throws ClickError
int schedule_number(std::string_view text) {
  const std::int64_t number = number_or_zero(text);
  if (!is_schedule_number(number)) {
    throw ClickError("Schedule number must be 1 to 99");
  }
  return static_cast<int>(number);
}

}  // namespace

void ScheduleEditor::load() {
  file_name_.clear();
  table_ = ScheduleTable{};
  current_ = 1;
}

bool ScheduleEditor::create_file() {
  const FileAnswer answer =
      dialogs_.choose_save_file({"New Schedule File", "newschedule.txt", StartFolder::access});
  if (!answer.accepted) {
    return false;
  }
  replace_file(answer.name, ScheduleTable{}.write());
  load_file(answer.name);
  return true;
}

bool ScheduleEditor::open_file() {
  const FileAnswer answer =
      dialogs_.choose_open_file({"Open Schedule File", "defschedule.txt", StartFolder::access});
  if (!answer.accepted) {
    return false;
  }
  load_file(answer.name);
  return true;
}

void ScheduleEditor::load_file(const std::filesystem::path& name) {
  const std::optional<ScheduleTable> table = ScheduleTable::read(read_whole_file(name));
  if (!table) {
    throw ClickError("The schedule file has fewer than 99 lines: " + shown_name(name));
  }
  table_ = *table;
  file_name_ = name;
  current_ = 1;
}

void ScheduleEditor::save_file(const ScheduleTexts& shown) {
  if (!file_loaded()) {
    dialogs_.message(no_file_loaded);
    return;
  }
  ScheduleTable stored = table_;
  stored.store(current_, shown);
  const FileAnswer answer =
      dialogs_.choose_save_file({"Save Schedule File", "defschedule.txt", StartFolder::access});
  if (answer.accepted) {
    replace_file(answer.name, stored.write());
    table_ = stored;
  }
}

/// An associated schedule equal to the schedule itself passes here and fails in update(), which also words it
/// differently: both are meant.
bool ScheduleEditor::validate_current(std::string_view associated) {
  const std::int64_t number = number_or_zero(associated);
  if (number != 0 && number < current_) {
    dialogs_.message("Associated schedule must be 0 or greater than schedule number");
    return false;
  }
  return true;
}

void ScheduleEditor::getschedule(std::string_view number) {
  current_ = schedule_number(number);
}

void ScheduleEditor::update(std::string_view number, const ScheduleTexts& shown) {
  if (!file_loaded()) {
    dialogs_.message(no_file_loaded);
    return;
  }
  const std::int64_t associated = number_or_zero(shown.associated);
  if (associated != 0 && associated <= number_or_zero(number)) {
    dialogs_.message("associated schedule must be 0 or greater than schedule #");
    return;
  }
  if (!times_valid(shown)) {
    dialogs_.message("Invalid time entered in schedule (must be < 2400)");
    return;
  }
  const int schedule = schedule_number(number);
  table_.store(schedule, shown);
  // What is shown is now this schedule, so that a save does not put it over another one.
  current_ = schedule;
}

bool ScheduleEditor::times_valid(const ScheduleTexts& shown) {
  // Minutes above 59, an end before its start and letters are accepted.
  const auto valid = [](const std::string& time) { return number_or_zero(time) < end_of_day; };
  for (std::size_t day = 0; day < shown.start.size(); ++day) {
    if (!valid(shown.start[day]) || !valid(shown.end[day])) {
      return false;
    }
  }
  return true;
}
