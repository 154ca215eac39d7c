#include "config/check_frame.h"

#include <QCheckBox>

CheckFrame::CheckFrame(const QString& title, std::span<const CheckCommand> commands, QWidget* parent)
    : commands_(commands), group_(panel::make_group(title, parent)) {
  for (const CheckCommand& command : commands) {
    boxes_.push_back(panel::add_check(group_, static_cast<int>(boxes_.size()), command.object_name,
                                      QLatin1String(command.caption)));
  }
}

void CheckFrame::add_button(QPushButton* button) {
  panel::add_buttons(group_, static_cast<int>(boxes_.size()), {button});
}

std::vector<std::string> CheckFrame::commands() const {
  std::vector<std::string> commands;
  for (std::size_t index = 0; index < boxes_.size(); ++index) {
    const bool checked = boxes_[index]->checkState() == Qt::Checked;
    commands.emplace_back(checked ? commands_[index].checked : commands_[index].unchecked);
  }
  return commands;
}
