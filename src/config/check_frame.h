#pragma once

#include <QGroupBox>

#include <span>
#include <string>
#include <string_view>
#include <vector>

class QCheckBox;
class QGridLayout;
class QPushButton;

/// A check box and the command it stands for.
struct CheckCommand {
  const char* caption;
  const char* object_name;
  std::string_view checked;
  std::string_view unchecked;
};

/// A titled frame of check boxes, all unchecked at the start, over a button that sends what they stand for.
class CheckFrame : public QGroupBox {
  Q_OBJECT

 public:
  /// @param commands must live as long as the frame does
  CheckFrame(const QString& title, std::span<const CheckCommand> commands, QWidget* parent);

  void add_button(QPushButton* button);
  /// The command of each box, in their order. A box counts as checked only when it is fully checked.
  [[nodiscard]] std::vector<std::string> commands() const;

 private:
  std::span<const CheckCommand> commands_;
  QGridLayout* grid_;
  std::vector<QCheckBox*> boxes_;
};
