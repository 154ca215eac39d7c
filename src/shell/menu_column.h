#pragma once

#include "shell/menu_state.h"

#include <QAbstractButton>
#include <QStringList>
#include <QWidget>

#include <vector>

/// One caption of the menu: a teal label that can be pressed.
class MenuEntry : public QAbstractButton {
  Q_OBJECT

 public:
  MenuEntry(const QString& caption, QWidget* parent);
  void set_text_colour(const QColor& colour);
  [[nodiscard]] QColor text_colour() const { return text_colour_; }
  [[nodiscard]] QSize sizeHint() const override;

 Q_SIGNALS:
  void mouse_over();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QColor text_colour_;
};

/// The column of captions at the window's left, with the pointer image that stands at one of them.
class MenuColumn : public QWidget {
  Q_OBJECT

 public:
  MenuColumn(const QStringList& captions, QWidget* parent);

  [[nodiscard]] const MenuState& state() const { return state_; }
  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] MenuEntry* entry(int index) const { return entries_.at(static_cast<std::size_t>(index)); }

  void select(int index);
  void nohighlights();
  void mouse_over_background();
  void move_highlight(int step);
  [[nodiscard]] bool under_mouse() const;
  void reset();

 Q_SIGNALS:
  void entry_clicked(int index);
  void mouse_left();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  /// The mouse has left the menu, for the panel or for another window.
  void leaveEvent(QEvent* event) override;

 private:
  void place_entries();
  void show_state();

  MenuState state_;
  std::vector<MenuEntry*> entries_;
  QWidget* pointer_;
};
