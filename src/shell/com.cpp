#include "shell/com.h"

#include "shell/code_page.h"
#include "shell/labels.h"
#include "shell/option_group.h"
#include "shell/text_box.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>

#include <algorithm>
#include <array>

namespace {

constexpr std::array<int, 5> bauds{1200, 2400, 4800, 9600, 19200};
constexpr std::array<int, 2> data_bits{7, 8};
constexpr std::array<Parity, 3> parities{Parity::none, Parity::even, Parity::odd};

const QStringList on_off{QStringLiteral("On"), QStringLiteral("Off")};

template <std::size_t size>
QStringList captions_of(const std::array<int, size>& values) {
  QStringList captions;
  for (const int value : values) {
    captions << QString::number(value);
  }
  return captions;
}

template <typename Value, std::size_t size>
int index_of(const std::array<Value, size>& values, Value value) {
  return static_cast<int>(std::find(values.begin(), values.end(), value) - values.begin());
}

}  // namespace

ComScreen::ComScreen(Services& services, QWidget* parent) : Screen("com", services, parent) {
  const CommSettings& defaults = services.settings;
  port_ = new OptionGroup("comm_port", QStringLiteral("Com Port"), captions_of(std::array{1, 2, 3, 4, 5}),
                          defaults.port_number - 1);
  baud_ = new OptionGroup("baud_rate", QStringLiteral("Baud Rate"), captions_of(bauds),
                          index_of(bauds, defaults.baud));
  data_bits_ = new OptionGroup("data_bits", QStringLiteral("Data Bits"), captions_of(data_bits),
                               index_of(data_bits, defaults.data_bits));
  parity_ = new OptionGroup("parity", QStringLiteral("Parity"),
                            {QStringLiteral("None"), QStringLiteral("Even"), QStringLiteral("Odd")},
                            index_of(parities, defaults.parity));
  network_ =
      new OptionGroup("network_mode", QStringLiteral("Network Mode"), on_off, defaults.network_mode ? 0 : 1);

  auto* const grid = new QGridLayout(this);
  grid->addWidget(heading(QStringLiteral("Communication Setup")), 0, 0, 1, 3, Qt::AlignHCenter);
  grid->addWidget(port_, 1, 0, 2, 1);
  grid->addWidget(baud_, 1, 1, 2, 1);
  grid->addWidget(data_bits_, 1, 2);
  grid->addWidget(parity_, 2, 2);
  grid->addWidget(network_, 3, 0);
  grid->addWidget(address_group(), 3, 1, 1, 2);
  grid->setRowStretch(4, 1);
  for (QRadioButton* const option : port_->findChildren<QRadioButton*>()) {
    option->installEventFilter(this);
  }
  connect_choices();
}

QWidget* ComScreen::address_group() {
  auto* const group = new QGroupBox(QStringLiteral("Reader Address"));
  auto* const layout = new QVBoxLayout(group);
  address_ =
      new TextBox("reader_address", QStringLiteral("Reader Address"), 0, KeyFilter::digits_no_backspace);
  address_->setText(code_page::from_windows_1252(services().settings.reader_address));
  address_->set_width_in_characters(6);
  auto* const hint = new QLabel(QStringLiteral("0 to 126, or 127 for all readers (the Global Address)"));
  layout->addWidget(address_);
  layout->addWidget(hint);
  layout->addStretch();
  return group;
}

void ComScreen::connect_choices() {
  CommSettings& settings = services().settings;
  reopen_after(port_, [&settings](int index) { settings.port_number = index + 1; });
  reopen_after(baud_, [&settings](int index) { settings.baud = bauds.at(static_cast<std::size_t>(index)); });
  reopen_after(data_bits_, [&settings](int index) {
    settings.data_bits = data_bits.at(static_cast<std::size_t>(index));
  });
  reopen_after(parity_,
               [&settings](int index) { settings.parity = parities.at(static_cast<std::size_t>(index)); });
  connect(network_, &OptionGroup::option_chosen, this, [this](int index) {
    services().settings.network_mode = index == 0;
    services().link.set_network_mode(index == 0);
  });
  connect(address_, &TextBox::textChanged, this, [this](const QString& text) {
    // An address that is no text of ours is none, and is told as missing when it is used.
    services().settings.reader_address = code_page::to_windows_1252(text).value_or("");
  });
}

/// The choice is stored at once, also while a pause holds back what it does.
void ComScreen::reopen_after(OptionGroup* group, std::function<void(int index)> store) {
  connect(group, &OptionGroup::option_chosen, this, [this, store = std::move(store)](int index) {
    store(index);
    services().clicks.run([this] {
      services().link.restorecomm();
      tell_about_port(services().settings.port_number);
    });
  });
}

void ComScreen::entered() {
  for (int index = 0; index < port_->count(); ++index) {
    tell_about_port(index + 1);
  }
}

bool ComScreen::eventFilter(QObject* receiver, QEvent* event) {
  if (event->type() == QEvent::ToolTip || event->type() == QEvent::FocusIn) {
    for (int index = 0; index < port_->count(); ++index) {
      if (port_->option(index) == receiver) {
        tell_about_port(index + 1);
      }
    }
  }
  return Screen::eventFilter(receiver, event);
}

/// What hovering tells, an assistive client reads too.
void ComScreen::tell_about_port(int port_number) {
  QRadioButton* const option = port_->option(port_number - 1);
  const QString text = about_port(port_number);
  option->setToolTip(text);
  option->setAccessibleDescription(text);
}

QString ComScreen::about_port(int port_number) const {
  const QString device = QString::fromStdString(services().port.device_of(port_number));
  if (device.isEmpty()) {
    return QStringLiteral("No serial port stands here");
  }
  const QString error = QString::fromStdString(services().port.open_error(port_number));
  if (!error.isEmpty()) {
    return QStringLiteral("%1: %2").arg(device, error);
  }
  const CommSettings& settings = services().settings;
  const bool open = services().link.comopen() && settings.port_number == port_number;
  return open
             ? QStringLiteral("%1, open at %2").arg(device, QString::fromStdString(settings_string(settings)))
             : device;
}
