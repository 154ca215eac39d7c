#include "tools/profile_window.h"

#include "shell/button.h"
#include "shell/code_page.h"
#include "shell/labels.h"
#include "shell/text_box.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace {

constexpr std::string_view proposed_name = "velltest.txt";

/// The character that stands for a NUL on the wire, as Windows-1252 has it and as a command box shows it.
constexpr QChar nul_stand_in{u'\u201A'};
constexpr QChar picture_of_nul{u'\u2205'};  // most fonts have it, and no profile

struct ColumnKind {
  const char* heading;
  const char* object_name;
  int width;  // in characters
};
constexpr std::array columns{ColumnKind{"Caption", "Text1", 20}, ColumnKind{"Command", "Text2", 24},
                             ColumnKind{"Wait (ms)", "Text3", 7}};

}  // namespace

/// A command: F9 adds the character that stands for a NUL, which is shown as a picture of it.
class CommandBox : public TextBox {
 public:
  using TextBox::TextBox;

  void show_command(const std::string& command) {
    setText(code_page::from_windows_1252(command).replace(nul_stand_in, picture_of_nul));
  }
  [[nodiscard]] std::string command() const {
    return code_page::bytes_of(text().replace(picture_of_nul, nul_stand_in));
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_F9) {
      end(false);
      insert(picture_of_nul);
    } else {
      TextBox::keyPressEvent(event);
    }
  }
};

namespace {

template <typename Box>
Box* add_box(QGridLayout& grid, std::size_t step, std::size_t column) {
  const ColumnKind& kind = columns.at(column);
  const QByteArray object_name = kind.object_name + QByteArray("_") + QByteArray::number(step);
  const QString label = QLatin1String(kind.heading) + QStringLiteral(" %1").arg(step + 1);
  auto* const box = new Box(object_name.constData(), label, 0, KeyFilter::none);
  box->setMinimumWidth(box->fontMetrics().horizontalAdvance(u'0') * kind.width);
  grid.addWidget(box, static_cast<int>(step) + 2, static_cast<int>(column));
  return box;
}

}  // namespace

ProfileWindow::ProfileWindow(Services& services, CurrentProfile& profile,
                             std::function<void()> profile_changed, QWidget* parent)
    : QDialog(parent), services_(services), profile_(profile), profile_changed_(std::move(profile_changed)) {
  setObjectName(QStringLiteral("profile"));
  setWindowTitle(QStringLiteral("Test Profile"));
  auto* const grid = new QGridLayout(this);
  grid->addWidget(heading(QStringLiteral("User Profile for Hardware Test")), 0, 0, 1, 3, Qt::AlignHCenter);
  add_rows(*grid);
  const int below = static_cast<int>(TestProfile::steps) + 2;
  grid->addWidget(new QLabel(QStringLiteral("F9 for a NULL")), below, 1, Qt::AlignHCenter);
  auto* const buttons = new QGridLayout;
  add_button(*buttons, 0, QStringLiteral("Load"), [this] { load(); });
  add_button(*buttons, 1, QStringLiteral("Save"), [this] { save(); });
  grid->addLayout(buttons, below + 1, 0, 1, 3, Qt::AlignHCenter);
  grid->setColumnStretch(0, 2);
  grid->setColumnStretch(1, 3);
}

void ProfileWindow::add_rows(QGridLayout& grid) {
  for (std::size_t column = 0; column < columns.size(); ++column) {
    grid.addWidget(new QLabel(QLatin1String(columns.at(column).heading)), 1, static_cast<int>(column));
  }
  for (std::size_t step = 0; step < TestProfile::steps; ++step) {
    captions_.at(step) = add_box<TextBox>(grid, step, 0);
    commands_.at(step) = add_box<CommandBox>(grid, step, 1);
    waits_.at(step) = add_box<TextBox>(grid, step, 2);
  }
}

void ProfileWindow::add_button(QGridLayout& grid, int column, const QString& caption,
                               std::function<void()> handler) {
  QPushButton* const button =
      new_button(services_.clicks, caption, caption.toLower(), std::move(handler), this);
  button->setAutoDefault(false);  // Enter in a box presses nothing
  grid.addWidget(button, 0, column);
}

void ProfileWindow::load() {
  const FileAnswer answer =
      services_.dialogs.choose_open_file({"Load Profile", proposed_name, StartFolder::tarvos});
  if (!answer.accepted) {
    return;
  }
  profile_.tables = load_profile(answer.name);
  for (std::size_t step = 0; step < TestProfile::steps; ++step) {
    captions_.at(step)->setText(code_page::from_windows_1252(profile_.tables.captions.at(step)));
    commands_.at(step)->show_command(profile_.tables.commands.at(step));
    waits_.at(step)->setText(code_page::from_windows_1252(profile_.tables.waits.at(step)));
  }
  profile_.testprofilefile = answer.name;
  profile_changed_();
}

void ProfileWindow::save() {
  const FileAnswer answer =
      services_.dialogs.choose_save_file({"Save Profile", proposed_name, StartFolder::tarvos});
  if (!answer.accepted) {
    return;
  }
  profile_.tables = typed();
  save_profile(answer.name, profile_.tables);
  profile_.testprofilefile = answer.name;
  profile_changed_();
}

TestProfile ProfileWindow::typed() const {
  TestProfile profile;
  for (std::size_t step = 0; step < TestProfile::steps; ++step) {
    profile.captions.at(step) = captions_.at(step)->bytes();
    profile.commands.at(step) = commands_.at(step)->command();
    profile.waits.at(step) = waits_.at(step)->bytes();
  }
  return profile;
}

void ProfileWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (auto* const button = qobject_cast<QPushButton*>(focusWidget())) {
      button->click();
    }
  } else if (event->key() != Qt::Key_Escape) {
    QDialog::keyPressEvent(event);
  }
}
