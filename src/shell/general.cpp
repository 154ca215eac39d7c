#include "shell/general.h"

#include "shell/fonts.h"

#include <QFile>
#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include <optional>

namespace {

constexpr qreal body_points = 12;
/// The name that the document's source goes by. Nothing is read from there.
constexpr const char* source_name = "C:\\tarvos\\TARVOSTESTINFO.RTF";

std::optional<QAbstractSlider::SliderAction> scroll_of(int key) {
  switch (key) {
    case Qt::Key_PageUp:
      return QAbstractSlider::SliderPageStepSub;
    case Qt::Key_PageDown:
      return QAbstractSlider::SliderPageStepAdd;
    case Qt::Key_Home:
      return QAbstractSlider::SliderToMinimum;
    case Qt::Key_End:
      return QAbstractSlider::SliderToMaximum;
    default:
      return std::nullopt;
  }
}

/// The document's colours are made for a white page, whatever the desktop's own.
QPalette white_page(QPalette palette) {
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Text, Qt::black);
  return palette;
}

}  // namespace

DocumentView::DocumentView(const char* object_name, const QString& accessible_name, QWidget* parent)
    : QTextEdit(parent) {
  setObjectName(QLatin1String(object_name));
  setAccessibleName(accessible_name);
  setPalette(white_page(palette()));
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setTabChangesFocus(true);
}

void DocumentView::keyPressEvent(QKeyEvent* event) {
  const std::optional<QAbstractSlider::SliderAction> scroll = scroll_of(event->key());
  if (scroll && !event->modifiers().testFlag(Qt::ShiftModifier)) {
    verticalScrollBar()->triggerAction(*scroll);
  } else {
    QTextEdit::keyPressEvent(event);
  }
}

GeneralScreen::GeneralScreen(Services& services, QWidget* parent) : Screen("general", services, parent) {
  Q_INIT_RESOURCE(shell);
  auto* const view = new DocumentView("help", QStringLiteral("General Info"));
  view->setProperty("source", QLatin1String(source_name));
  view->document()->setDefaultFont(fonts::serif(body_points));
  QFile document(QStringLiteral(":/shell/general.html"));
  if (document.open(QIODevice::ReadOnly)) {
    view->setHtml(QString::fromUtf8(document.readAll()));
  }
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(view);
}
