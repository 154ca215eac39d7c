#include "tools/term.h"

#include "shell/labels.h"
#include "tools/fullterm.h"
#include "tools/terminal_receiver.h"
#include "tools/terminal_typing.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr std::string_view printing_elsewhere = "Function currently disabled - use full screen mode";

}  // namespace

TermScreen::TermScreen(Services& services, QWidget* parent) : Screen("term", services, parent) {
  typing_ = new TypingBox("Text7", QStringLiteral("Terminal"), services, this);
  received_ = new TerminalView("Text1", QStringLiteral("Reader"), TerminalView::LongLines::scroll, this);

  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(label_for(typing_));
  layout->addWidget(typing_, 1);
  layout->addWidget(label_for(received_));
  layout->addWidget(received_, 1);
  layout->addLayout(buttons());
}

QLayout* TermScreen::buttons() {
  auto* const row = new QHBoxLayout;
  row->addWidget(add_button(QStringLiteral("Clear Screen"), [this] {
    typing_->clear();
    received_->clear();
  }));
  // The two blanks are meant.
  row->addWidget(add_button(QStringLiteral("Full  Screen"), [this] { open_full_screen(); }));
  // Printing exists in the full-screen terminal alone; the button that says so is meant.
  row->addWidget(
      add_button(QStringLiteral("Print"), [this] { services().dialogs.message(printing_elsewhere); }));
  row->addStretch();
  auto* const hints = new QVBoxLayout;
  hints->addWidget(new QLabel(QStringLiteral("F9 = NULL")));
  hints->addWidget(new QLabel(QStringLiteral("F10 = READER ADDRESS")));
  row->addLayout(hints);
  return row;
}

TermScreen::~TermScreen() = default;

/// A window of its own, not modal: both stay usable.
void TermScreen::open_full_screen() {
  if (!full_screen_) {
    full_screen_ = std::make_unique<FullTermWindow>(services());
  }
  full_screen_->open();
}

void TermScreen::entered() {
  // F10 sends the address as it is set now; without one it sends the last that there was.
  services().clicks.run([this] { static_cast<void>(services().link.setnetaddr()); });
  services().receiver.start([this](const ReceivedLines& lines) { received_->append(lines); });
}
