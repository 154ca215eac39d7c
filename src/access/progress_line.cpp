#include "access/progress_line.h"

#include "shell/code_page.h"

ProgressLine::ProgressLine(const char* object_name, QWidget* parent) : QLabel(parent) {
  setObjectName(QLatin1String(object_name));
  QSizePolicy policy = sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  policy.setHorizontalPolicy(QSizePolicy::Ignored);
  setSizePolicy(policy);
  setMinimumHeight(fontMetrics().height());
  hide();
}

StatusLine ProgressLine::status() {
  return {.show =
              [this](std::string_view text) {
                setText(code_page::from_windows_1252(text));
                show();
                repaint();
              },
          .hide = [this] { hide(); }};
}
