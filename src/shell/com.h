#pragma once

#include "shell/screen.h"

#include <functional>

class OptionGroup;
class TextBox;

/// The communication setup: every choice takes effect at once.
class ComScreen : public Screen {
 public:
  ComScreen(Services& services, QWidget* parent);

  void entered() override;

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  QWidget* address_group();
  void connect_choices();
  void reopen_after(OptionGroup* group, std::function<void(int index)> store);
  void tell_about_port(int port_number);
  [[nodiscard]] QString about_port(int port_number) const;

  OptionGroup* port_;
  OptionGroup* baud_;
  OptionGroup* data_bits_;
  OptionGroup* parity_;
  OptionGroup* network_;
  TextBox* address_;
};
