#include "config/keshsetup.h"

#include "config/clock_group.h"
#include "config/kesh_setup.h"
#include "config/panel.h"
#include "shell/option_group.h"
#include "shell/text_box.h"

#include <QCheckBox>
#include <QPushButton>

namespace {

constexpr SwitchGroup rs232_logging{.title = "RS232 Logging",
                                    .object_name = "kesh_rs232_logging",
                                    .on = "RS232 Logging On",
                                    .off = "RS232 Logging Off",
                                    .chosen = 1,
                                    .kind = kesh_switch,
                                    .values = kesh_rs232_logging};
constexpr SwitchGroup duplicate_read{.title = "Duplicate Read",
                                     .object_name = "duplicate_read",
                                     .on = "Duplicate Read On",
                                     .off = "Duplicate Read Off",
                                     .chosen = 1,
                                     .kind = kesh_switch,
                                     .values = kesh_duplicate_read};
constexpr SwitchGroup comma_delimited{.title = "Comma Delimited",
                                      .object_name = "comma_delimited",
                                      .on = "Comma Delimited On",
                                      .off = "Comma Delimited Off",
                                      .chosen = 1,
                                      .kind = kesh_switch,
                                      .values = kesh_comma_delimited};
constexpr SwitchGroup mode{.title = "Mode",
                           .object_name = "kesh_mode",
                           .on = "Vell",
                           .off = "Kesh",
                           .chosen = 1,
                           .kind = kesh_switch,
                           .values = kesh_mode};

bool is_on(const OptionGroup& pair) {
  return pair.chosen() == 0;
}

/// A check box counts only when it is fully checked.
bool is_on(const QCheckBox& box) {
  return box.checkState() == Qt::Checked;
}

/// The options of a frame that has more in it; "On" is chosen at the start.
OptionGroup* add_time_stamping(const panel::Group& group, int row, const char* object_name) {
  auto* const options = new OptionGroup(
      object_name, QString(), {QStringLiteral("Time Stamping On"), QStringLiteral("Time Stamping Off")}, 0,
      Qt::Vertical, group.frame);
  panel::make_frameless(*options);
  options->setAccessibleName(QStringLiteral("Time Stamping"));
  group.grid->addWidget(options, row, 0, 1, 2);
  return options;
}

}  // namespace

KeshSetupScreen::KeshSetupScreen(Services& services, QWidget* parent)
    : SetupScreen("keshsetup", services, parent) {
  QGridLayout* const grid = panel::make_grid(*this, QStringLiteral("Kesh Setup"), 2);
  grid->addWidget(ferro_group(), 1, 0);
  grid->addWidget(glint_group(), 1, 1);
  grid->addWidget(switch_group(rs232_logging), 2, 0);
  grid->addWidget(switch_group(duplicate_read), 2, 1);
  grid->addWidget(switch_group(comma_delimited), 3, 0);
  grid->addWidget(switch_group(mode), 3, 1);
  grid->addWidget(identifier_group(), 4, 0);
  grid->addWidget(new ClockGroup(services, keshsetup_clock_reading, this), 4, 1);
  grid->setRowStretch(5, 1);
}

QWidget* KeshSetupScreen::ferro_group() {
  const panel::Group group = panel::make_group(QStringLiteral("Ferro Kesh General"), this);
  ferro_record_length_ =
      panel::add_box(group, 0, "Text21", QStringLiteral("Record Length"), 3, KeyFilter::digits);
  max_records_ = panel::add_box(group, 1, "Text20", QStringLiteral("Max Records"), 5, KeyFilter::digits);
  ferro_time_stamping_ = add_time_stamping(group, 2, "ferro_time_stamping");
  panel::add_buttons(group, 3,
                     {add_button(
                         QStringLiteral("Set"), [this] { set_ferro(); }, "set_ferro_kesh_general")});
  return group.frame;
}

void KeshSetupScreen::set_ferro() {
  FerroKeshGeneral values;
  run(ferro_kesh_general,
      {.check = [&] { values = ferro_kesh_values(ferro_record_length_->bytes(), max_records_->bytes()); },
       .payloads = [&] { return ferro_kesh_payloads(values, is_on(*ferro_time_stamping_)); },
       .done = [] { return parameters_set; }});
}

QWidget* KeshSetupScreen::glint_group() {
  const panel::Group group = panel::make_group(QStringLiteral("Glint Kesh General"), this);
  glint_record_length_ =
      panel::add_box(group, 0, "Text19", QStringLiteral("Record Length"), 2, KeyFilter::digits);
  glint_time_stamping_ = add_time_stamping(group, 1, "glint_time_stamping");
  id_1_on_ = panel::add_check(group, 2, "id_1_on", QStringLiteral("ID 1 On"));
  id_2_on_ = panel::add_check(group, 3, "id_2_on", QStringLiteral("ID 2 On"));
  panel::add_buttons(group, 4,
                     {add_button(
                         QStringLiteral("Set"), [this] { set_glint(); }, "set_glint_kesh_general")});
  return group.frame;
}

void KeshSetupScreen::set_glint() {
  std::int16_t record_length = 0;
  run(glint_kesh_general,
      {.check = [&] { record_length = glint_kesh_record_length(glint_record_length_->bytes()); },
       .payloads =
           [&] {
             return glint_kesh_payloads(record_length,
                                        {is_on(*glint_time_stamping_), is_on(*id_1_on_), is_on(*id_2_on_)});
           },
       .done = [] { return parameters_set; }});
}

QWidget* KeshSetupScreen::identifier_group() {
  const panel::Group group = panel::make_group(QStringLiteral("ID 1 / ID 2"), this);
  id_1_ = panel::add_box(group, 0, "Text22", QStringLiteral("ID 1"), 5, KeyFilter::none);
  id_2_ = panel::add_box(group, 1, "Text23", QStringLiteral("ID 2"), 5, KeyFilter::none);
  QPushButton* const set = add_button(
      QStringLiteral("Set"), [this] { set_identifiers(); }, "set_ids");
  // The readers have no command that tells their identifiers: "Read" does nothing, and that is meant.
  QPushButton* const read = add_button(
      QStringLiteral("Read"), [] {}, "read_ids");
  panel::add_buttons(group, 2, {set, read});
  return group.frame;
}

void KeshSetupScreen::set_identifiers() {
  run(kesh_identifiers,
      {.check = {},
       .payloads = [this] { return kesh_identifier_payloads(id_1_->bytes(), id_2_->bytes()); },
       .done = [] { return std::string_view("ID's have been set"); }});
}
