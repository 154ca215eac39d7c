#pragma once

#include "shell/services.h"

#include <QWidget>

#include <functional>

class QPushButton;

/// A panel of the main window. A screen knows its operation and the services; it knows no other screen.
class Screen : public QWidget {
  Q_OBJECT

 public:
  /// @param object_name the screen's name in the program ("diag")
  Screen(const char* object_name, Services& services, QWidget* parent);

  /// Extra work each time the screen is shown.
  virtual void entered() {}
  /// What F1 and F2 press; nothing on most screens.
  [[nodiscard]] virtual QPushButton* start_button() const { return nullptr; }
  [[nodiscard]] virtual QPushButton* stop_button() const { return nullptr; }

 protected:
  /// A button that runs `handler` when pressed. Without an object name it is named after its caption:
  /// "Red Led On" is red_led_on.
  QPushButton* add_button(const QString& caption, std::function<void()> handler,
                          const char* object_name = "");
  [[nodiscard]] Services& services() const { return services_; }

  /// The control that has the focus first; nothing where it is the first one in the order of Tab.
  [[nodiscard]] virtual QWidget* first_control() const { return nullptr; }
  /// The panel itself takes no focus: a control of it does.
  void focusInEvent(QFocusEvent* event) override;

 private:
  Services& services_;
};
