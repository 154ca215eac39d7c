#include "access/orintautil.h"

#include "access/access_window.h"
#include "access/progress_line.h"
#include "access/schedule_window.h"
#include "access/transfers.h"
#include "shell/labels.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// Buttons of several groups are captioned alike: assistive clients get the group's caption beside it.
QGroupBox* group_of(const char* caption, std::initializer_list<QPushButton*> buttons) {
  auto* const group = new QGroupBox(QLatin1String(caption));
  auto* const column = new QVBoxLayout(group);
  for (QPushButton* const button : buttons) {
    button->setAccessibleDescription(group->title());
    column->addWidget(button);
  }
  column->addStretch();
  return group;
}

}  // namespace

OrintaUtilScreen::OrintaUtilScreen(Services& services, QWidget* parent)
    : Screen("orintautil", services, parent),
      progress_(new ProgressLine("progress", this)),
      status_(progress_->status()) {
  auto* const grid = new QGridLayout(this);
  grid->addWidget(heading(QStringLiteral("Orin/Orinta Utilities")), 0, 0, 1, 3, Qt::AlignHCenter);
  progress_->setAlignment(Qt::AlignHCenter);
  // Up here the box that ends a transfer does not cover what the transfer has counted.
  grid->addWidget(progress_, 1, 0, 1, 3);
  grid->addWidget(access_list_group(), 2, 0);
  grid->addWidget(log_group(), 2, 1);
  grid->addWidget(schedules_group(), 2, 2);
  grid->addWidget(note(), 3, 0, 1, 3);
  grid->setRowStretch(4, 1);
}

void OrintaUtilScreen::entered() {
  progress_->hide();
}

QGroupBox* OrintaUtilScreen::access_list_group() {
  Transfers& transfers = services().transfers;
  return group_of(
      "Access List",
      {add_button(
           QStringLiteral("Download"),
           [this, &transfers] { transfers.download_access_list(services().record_length, status_); },
           "access_list_download"),
       add_button(
           QStringLiteral("Upload"), [this, &transfers] { transfers.upload(access_list_upload, status_); },
           "access_list_upload"),
       add_button(
           QStringLiteral("Clear"), [this, &transfers] { transfers.clear(access_list_clear, status_); },
           "access_list_clear"),
       add_button(
           QStringLiteral("Edit/Modify"), [this] { open_editor(access_); }, "access_list_edit")});
}

QGroupBox* OrintaUtilScreen::log_group() {
  Transfers& transfers = services().transfers;
  return group_of(
      "Log", {add_button(
                  QStringLiteral("Upload"),
                  [this, &transfers] { transfers.upload(access_log_upload, status_); }, "log_upload"),
              add_button(
                  QStringLiteral("Clear"), [this, &transfers] { transfers.clear(access_log_clear, status_); },
                  "log_clear")});
}

QGroupBox* OrintaUtilScreen::schedules_group() {
  return group_of(
      "Schedules",
      {add_button(
           QStringLiteral("Download"), [this] { services().transfers.download_schedules(status_); },
           "schedules_download"),
       add_button(
           QStringLiteral("Edit/Modify"), [this] { open_editor(schedules_); }, "schedules_edit")});
}

QGroupBox* OrintaUtilScreen::note() {
  auto* const text = new QLabel(QStringLiteral(
      "For readers manufactured prior to 2/1/01, it is suggested to put readers into Vell mode "
      "prior to any downloading"));
  text->setWordWrap(true);
  auto* const group = new QGroupBox(QStringLiteral("Note on uploading/downloading..."));
  auto* const column = new QVBoxLayout(group);
  column->addWidget(text);
  return group;
}
