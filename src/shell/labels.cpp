#include "shell/labels.h"

#include "shell/fonts.h"

#include <QLabel>

QLabel* heading(const QString& text) {
  auto* const label = new QLabel(text);
  label->setFont(fonts::serif(16));
  return label;
}

QLabel* label_for(QWidget* box) {
  auto* const label = new QLabel(box->accessibleName());
  label->setBuddy(box);
  return label;
}
