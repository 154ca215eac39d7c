#include "config/check_frame.h"

#include "config/panel.h"

#include <QCheckBox>

CheckFrame::CheckFrame(const QString& title, std::span<const CheckCommand> commands, QWidget* parent)
    : QGroupBox(title, parent), commands_(commands), grid_(new QGridLayout(this)) {
  panel::make_compact(*grid_);
  for (const CheckCommand& command : commands) {
    boxes_.push_back(panel::add_check({this, grid_}, static_cast<int>(boxes_.size()), command.object_name,
                                      QLatin1String(command.caption)));
  }
}

void CheckFrame::add_button(QPushButton* button) {
  panel::add_buttons({this, grid_}, static_cast<int>(boxes_.size()), {button});
}

std::vector<std::string> CheckFrame::commands() const {
  std::vector<std::string> commands;
  for (std::size_t index = 0; index < boxes_.size(); ++index) {
    const bool checked = boxes_[index]->checkState() == Qt::Checked;
    commands.emplace_back(checked ? commands_[index].checked : commands_[index].unchecked);
  }
  return commands;
}
