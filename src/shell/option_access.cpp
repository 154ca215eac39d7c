#include "shell/option_access.h"

#include <QAccessibleWidget>
#include <QRadioButton>

namespace {

class OptionAccess : public QAccessibleWidget {
 public:
  explicit OptionAccess(QRadioButton* option)
      : QAccessibleWidget(option, QAccessible::RadioButton), option_(*option) {}

  [[nodiscard]] QString text(QAccessible::Text which) const override {
    const QString told = QAccessibleWidget::text(which);
    return which == QAccessible::Name && option_.accessibleName().isEmpty() ? option_.text() : told;
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = option_.isChecked();
    return state;
  }
  [[nodiscard]] QStringList actionNames() const override {
    QStringList names;
    if (option_.isEnabled()) {
      names << toggleAction() << pressAction();
    }
    return names + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (name != toggleAction() && name != pressAction()) {
      QAccessibleWidget::doAction(name);
    } else if (option_.isEnabled()) {
      option_.click();
    }
  }

 private:
  QRadioButton& option_;
};

}  // namespace

QAccessibleInterface* make_option_access(const QString& class_name, QObject* object) {
  auto* const option =
      class_name == QStringLiteral("QRadioButton") ? qobject_cast<QRadioButton*>(object) : nullptr;
  return option == nullptr ? nullptr : new OptionAccess(option);
}
