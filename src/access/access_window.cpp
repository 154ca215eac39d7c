#include "access/access_window.h"

#include "access/modaccess.h"
#include "shell/safe_file.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QTableView>

#include <array>

namespace {

constexpr std::string_view proposed_name = "defaccess.txt";
/// Widths of the columns in characters; a list shows without asking 100,000 rows how wide they are.
constexpr std::array column_characters{36, 34, 12};

}  // namespace

AccessWindow::AccessWindow(Services& services, QWidget* parent)
    : EditorWindow("access", services, parent),
      view_(new QTableView(this)),
      modaccess_(new ModAccess(model_, services.clicks, services.dialogs, this)) {
  QMenu* const file = menuBar()->addMenu(QStringLiteral("&File"));
  add_entry(file, "&Open", [this] { open_file(); });
  add_entry(file, "&Save", [this] { save_file(); });
  add_entry(menuBar(), "&New Employee", [this] { modaccess_->open_to_add(); });
  make_view();
  setCentralWidget(view_);
  const int character = fontMetrics().averageCharWidth();
  resize(character * 96, character * 60);
}

void AccessWindow::make_view() {
  view_->setObjectName(QStringLiteral("access_list"));
  view_->setAccessibleName(QStringLiteral("Access List"));
  view_->setModel(&model_);
  view_->setSelectionBehavior(QAbstractItemView::SelectRows);
  view_->setSelectionMode(QAbstractItemView::SingleSelection);
  view_->setTabKeyNavigation(false);
  view_->setShowGrid(false);
  view_->setWordWrap(false);
  view_->verticalHeader()->hide();
  view_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view_->verticalHeader()->setDefaultSectionSize(view_->fontMetrics().height() + 4);
  QHeaderView* const headings = view_->horizontalHeader();
  headings->setSectionsClickable(true);
  headings->setHighlightSections(false);
  headings->setStretchLastSection(true);
  for (int column = 0; column < model_.columnCount(); ++column) {
    headings->resizeSection(column, column_characters.at(static_cast<std::size_t>(column)) *
                                        view_->fontMetrics().averageCharWidth());
    auto* const shortcut = new QShortcut(QKeySequence(Qt::CTRL | (Qt::Key_1 + column)), this);
    connect(shortcut, &QShortcut::activated, this,
            [this, column] { run([this, column] { sort_by(column); }); });
  }
  connect(headings, &QHeaderView::sectionClicked, this,
          [this](int column) { run([this, column] { sort_by(column); }); });
  connect(view_, &QTableView::doubleClicked, this, [this](const QModelIndex& row) {
    run([this, chosen = QPersistentModelIndex(row)] { modify(chosen); });
  });
  // Who adds employees sees each of them arrive.
  connect(&model_, &QAbstractItemModel::rowsInserted, view_, &QTableView::scrollToBottom);
  view_->installEventFilter(this);
}

void AccessWindow::load() {
  setWindowTitle(QStringLiteral("Access List"));
  model_.clear();
  file_name_.clear();
  changed_ = false;
  sorted_column_ = -1;
  view_->horizontalHeader()->setSortIndicatorShown(false);
  view_->setFocus();
}

void AccessWindow::open_file() {
  const FileAnswer answer =
      services().dialogs.choose_open_file({"Open Access File", proposed_name, StartFolder::access});
  if (!answer.accepted) {
    return;
  }
  model_.read(read_whole_file(answer.name));
  file_name_ = answer.name;
  sorted_column_ = -1;
  view_->horizontalHeader()->setSortIndicatorShown(false);
  show_file_name("Access File: ", file_name_);
}

void AccessWindow::save_file() {
  const FileAnswer answer =
      services().dialogs.choose_save_file({"Save Access File", proposed_name, StartFolder::access});
  if (!answer.accepted) {
    return;
  }
  if (const std::optional<std::size_t> row = model_.list().first_foreign_row()) {
    view_->selectRow(static_cast<int>(*row));  // the one that the message below names
  }
  replace_file(answer.name, model_.list().write());
  changed_ = false;
}

/// A second time on the same heading reverses the order.
void AccessWindow::sort_by(int column) {
  const bool reverse = column == sorted_column_ && order_ == Qt::AscendingOrder;
  order_ = reverse ? Qt::DescendingOrder : Qt::AscendingOrder;
  sorted_column_ = column;
  model_.sort(column, order_);
  view_->horizontalHeader()->setSortIndicator(column, order_);
  view_->horizontalHeader()->setSortIndicatorShown(true);
}

void AccessWindow::modify(const QModelIndex& row) {
  if (row.isValid()) {
    modaccess_->open_to_modify(row);
  }
}

/// Enter on a row does what a double click does.
bool AccessWindow::eventFilter(QObject* receiver, QEvent* event) {
  if (receiver == view_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      run([this] { modify(view_->currentIndex()); });
      return true;
    }
  }
  return EditorWindow::eventFilter(receiver, event);
}

void AccessWindow::closeEvent(QCloseEvent* event) {
  if (changed_) {
    run([this] {
      // The answer is not acted upon: the window closes either way, and that is meant.
      services().dialogs.ask("Access File " + shown_name(file_name_) +
                             " has changed\rDo you wish to replace it");
    });
  }
  event->accept();
}
