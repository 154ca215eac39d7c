#include "config/keshutil.h"

#include "access/progress_line.h"
#include "config/panel.h"

#include <QPushButton>

KeshUtilScreen::KeshUtilScreen(Services& services, QWidget* parent) : Screen("keshutil", services, parent) {
  QGridLayout* const grid = panel::make_grid(*this, QStringLiteral("Kesh/Quor Utilities"), 1);
  const panel::Group group = panel::make_group(QStringLiteral("Log"), this);
  QPushButton* const upload = add_button(QStringLiteral("Upload"), [this] {
    this->services().transfers.upload(collected_records_upload, progress_->status());
  });
  QPushButton* const clear = add_button(QStringLiteral("Clear"), [this] {
    this->services().transfers.clear(collected_records_clear, progress_->status());
  });
  panel::add_buttons(group, 0, {upload, clear});
  progress_ = new ProgressLine("upload_status", group.frame);
  group.grid->addWidget(progress_, 1, 0);
  grid->addWidget(group.frame, 1, 0);
  grid->setRowStretch(2, 1);
}

void KeshUtilScreen::entered() {
  progress_->hide();
}
