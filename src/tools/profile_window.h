#pragma once

#include "shell/services.h"
#include "tools/profile.h"

#include <QDialog>

#include <array>
#include <functional>

class CommandBox;
class QGridLayout;
class TextBox;

/// Edits profiles of the hardware test: ten rows of caption, command and wait. It opens empty.
class ProfileWindow : public QDialog {
  Q_OBJECT

 public:
  /// @param profile_changed called after another profile has become the current one
  ProfileWindow(Services& services, CurrentProfile& profile, std::function<void()> profile_changed,
                QWidget* parent);

 protected:
  /// Enter presses the button that has the focus and no other, Escape closes nothing: what has been typed
  /// stays.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  template <typename Box>
  using Column = std::array<Box*, TestProfile::steps>;

  void add_rows(QGridLayout& grid);
  void add_button(QGridLayout& grid, int column, const QString& caption, std::function<void()> handler);
  void load();
  void save();
  [[nodiscard]] TestProfile typed() const;

  Services& services_;
  CurrentProfile& profile_;
  std::function<void()> profile_changed_;
  Column<TextBox> captions_{};
  Column<CommandBox> commands_{};
  Column<TextBox> waits_{};
};
