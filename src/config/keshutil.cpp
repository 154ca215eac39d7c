#include "config/keshutil.h"

#include "access/transfers.h"
#include "config/panel.h"
#include "shell/code_page.h"

#include <QLabel>
#include <QPushButton>

KeshUtilScreen::KeshUtilScreen(Services& services, QWidget* parent) : Screen("keshutil", services, parent) {
  QGridLayout* const grid = panel::make_grid(*this, QStringLiteral("Kesh/Quor Utilities"), 1);
  const panel::Group group = panel::make_group(QStringLiteral("Log"), this);
  QPushButton* const upload = add_button(QStringLiteral("Upload"), [this] {
    this->services().transfers.upload(collected_records_upload, status_line());
  });
  QPushButton* const clear = add_button(QStringLiteral("Clear"), [this] {
    this->services().transfers.clear(collected_records_clear, status_line());
  });
  panel::add_buttons(group, 0, {upload, clear});
  // Hidden while nothing is uploaded; its place is kept, so that showing it needs no new layout.
  status_ = new QLabel(group.frame);
  status_->setObjectName(QStringLiteral("upload_status"));
  QSizePolicy policy = status_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  policy.setHorizontalPolicy(QSizePolicy::Ignored);
  status_->setSizePolicy(policy);
  status_->setMinimumHeight(status_->fontMetrics().height());
  status_->hide();
  group.grid->addWidget(status_, 1, 0);
  grid->addWidget(group.frame, 1, 0);
  grid->setRowStretch(2, 1);
}

void KeshUtilScreen::entered() {
  status_->hide();
}

StatusLine KeshUtilScreen::status_line() {
  return {.show =
              [this](std::string_view text) {
                status_->setText(code_page::from_windows_1252(text));
                status_->show();
                status_->repaint();
              },
          .hide = [this] { status_->hide(); }};
}
