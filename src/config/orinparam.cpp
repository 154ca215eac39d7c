#include "config/orinparam.h"

#include "config/clock_group.h"
#include "config/orin_setup.h"
#include "config/panel.h"
#include "shell/code_page.h"
#include "shell/option_group.h"
#include "shell/text_box.h"

#include <QPushButton>

namespace {

constexpr SwitchGroup rs232_logging{.title = "RS232 Logging (Orin)",
                                    .object_name = "rs232_logging",
                                    .on = "On",
                                    .off = "Off",
                                    .chosen = 1,
                                    .kind = orin_logging,
                                    .values = orin_rs232_logging};
constexpr SwitchGroup bad_logging{.title = "Bad Logging (Orinta)",
                                  .object_name = "bad_logging",
                                  .on = "On",
                                  .off = "Off",
                                  .chosen = 0,
                                  .kind = orin_logging,
                                  .values = orinta_bad_logging};

}  // namespace

OrinParamScreen::OrinParamScreen(Services& services, QWidget* parent)
    : SetupScreen("orinparam", services, parent) {
  QGridLayout* const grid = panel::make_grid(*this, QStringLiteral("Orin/Orinta Setup"), 2);
  grid->addWidget(general_group(), 1, 0);
  grid->addWidget(mode_group(), 1, 1);
  grid->addWidget(switch_group(rs232_logging), 2, 0);
  grid->addWidget(switch_group(bad_logging), 2, 1);
  grid->addWidget(password_group(), 3, 0);
  grid->addWidget(new ClockGroup(services, orinparam_clock_reading, this), 3, 1);
  grid->setRowStretch(4, 1);
}

QWidget* OrinParamScreen::general_group() {
  const panel::Group group = panel::make_group(QStringLiteral("General"), this);
  record_length_ = panel::add_box(group, 0, "Text2", QStringLiteral("Record Length"), 3, KeyFilter::digits);
  relay_time_ = panel::add_box(group, 1, "Text3", QStringLiteral("Relay Time"), 5, KeyFilter::digits);
  red_led_time_ = panel::add_box(group, 2, "Text5", QStringLiteral("Red Led Time"), 3, KeyFilter::digits);
  panel::add_buttons(group, 3,
                     {add_button(
                         QStringLiteral("Set"), [this] { set_general(); }, "set_general")});
  connect(record_length_, &TextBox::textChanged, this, [this](const QString& text) {
    services().record_length = code_page::to_windows_1252(text).value_or("");
  });
  return group.frame;
}

void OrinParamScreen::set_general() {
  OrinGeneral values;
  run(orin_general, {.check =
                         [&] {
                           values = orin_general_values(record_length_->bytes(), relay_time_->bytes(),
                                                        red_led_time_->bytes());
                         },
                     .payloads = [&] { return orin_general_payloads(values); },
                     .done = [] { return parameters_set; }});
}

QWidget* OrinParamScreen::mode_group() {
  const QString title = QStringLiteral("Set Mode");
  mode_ = new OptionGroup("orin_mode", title,
                          {QStringLiteral("Vell Mode"), QStringLiteral("Orin Mode"),
                           QStringLiteral("Orinta Mode"), QStringLiteral("Accum Mode")},
                          -1, Qt::Vertical, this);
  panel::put_beside_options(*mode_, add_button(
                                        title, [this] { set_mode(); }, "set_mode"));
  return mode_;
}

void OrinParamScreen::set_mode() {
  run(orin_mode, {.check = {},
                  .payloads = [this] { return std::vector{orin_mode_payload(mode_->chosen())}; },
                  .done = [] { return std::string_view(" Mode Set in Reader "); }});
}

QWidget* OrinParamScreen::password_group() {
  const panel::Group group = panel::make_group(QStringLiteral("Set/Change Password"), this);
  // No command uses the boxes yet.
  panel::add_box(group, 0, "Text15", QStringLiteral("Current Password"), 5, KeyFilter::none);
  panel::add_box(group, 1, "Text16", QStringLiteral("New Password"), 5, KeyFilter::none);
  QPushButton* const set = add_button(
      QStringLiteral("Set Password"),
      [this] { services().dialogs.message("This feature is not yet operational"); }, "set_password");
  panel::add_buttons(group, 2, {set});
  return group.frame;
}
