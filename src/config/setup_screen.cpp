#include "config/setup_screen.h"

#include "config/panel.h"
#include "shell/option_group.h"

#include <QPushButton>

SetupScreen::SetupScreen(const char* object_name, Services& services, QWidget* parent)
    : Screen(object_name, services, parent), setup_(services.link, services.pump, services.dialogs) {}

QWidget* SetupScreen::switch_group(const SwitchGroup& group) {
  auto* const options = new OptionGroup(group.object_name, QLatin1String(group.title),
                                        {QLatin1String(group.on), QLatin1String(group.off)}, group.chosen);
  options->setParent(this);
  const auto is_on = [options] { return options->chosen() == 0; };
  const auto send = [this, &group, is_on] {
    const Switch& values = group.values;
    // The option is read once more for the message.
    run(group.kind, {.check = {},
                     .payloads = [&] { return std::vector{std::string(is_on() ? values.on : values.off)}; },
                     .done = [&] { return is_on() ? values.done_on : values.done_off; }});
  };
  const std::string button_name = std::string("set_") + group.object_name;
  panel::put_beside_options(*options, add_button(QStringLiteral("Set"), send, button_name.c_str()));
  return options;
}
