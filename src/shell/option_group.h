#pragma once

#include <QButtonGroup>
#include <QGroupBox>
#include <QStringList>

#include <vector>

class QBoxLayout;
class QRadioButton;

/// A titled frame of options of which at most one is chosen. Tab leads to that one. Left and Right move
/// the choice, however the options are laid out; Up and Down belong to the menu.
class OptionGroup : public QGroupBox {
  Q_OBJECT

 public:
  /// @param object_name of the group; its options are named after it: "port_0", "port_1", …
  /// @param chosen index of the option chosen at the start, -1: none
  OptionGroup(const char* object_name, const QString& caption, const QStringList& options, int chosen,
              Qt::Orientation orientation = Qt::Vertical, QWidget* parent = nullptr);

  /// Index of the chosen option, -1 when none is.
  [[nodiscard]] int chosen() const;
  [[nodiscard]] QRadioButton* option(int index) const;
  [[nodiscard]] int count() const { return static_cast<int>(options_.size()); }
  /// The frame's own layout, for what stands beside the options.
  [[nodiscard]] QBoxLayout* frame_layout() const { return layout_; }

 Q_SIGNALS:
  /// An option has been chosen by mouse, keyboard, program or assistive client, or clicked again.
  void option_chosen(int index);

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;
  /// A flat group, one within another frame, shows no frame of its own.
  void paintEvent(QPaintEvent* event) override;

 private:
  void add_option(const QString& caption, int index);
  void move_choice(int step);
  void lead_tab_to_the_choice();

  QButtonGroup group_;
  QBoxLayout* layout_;
  std::vector<QRadioButton*> options_;
  bool chosen_when_pressed_ = false;
};
