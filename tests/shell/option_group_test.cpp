#include "shell/option_group.h"

#include <QAccessible>
#include <QRadioButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

const QStringList three{QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")};

struct Bench {
  explicit Bench(int chosen, Qt::Orientation orientation = Qt::Vertical)
      : group("mode", QStringLiteral("Mode"), three, chosen, orientation) {
    QObject::connect(&group, &OptionGroup::option_chosen, &group,
                     [this](int index) { choices.push_back(index); });
    group.show();
  }
  void click(int index) {
    QTest::mouseClick(group.option(index), Qt::LeftButton, {}, QPoint(8, group.option(index)->height() / 2));
  }

  OptionGroup group;
  std::vector<int> choices;
};

}  // namespace

TEST(option_group, starts_with_the_option_named_or_with_none) {
  EXPECT_EQ(Bench(1).group.chosen(), 1);
  EXPECT_EQ(Bench(-1).group.chosen(), -1);
}

TEST(option_group, tab_leads_to_the_chosen_option_from_the_start_and_to_each_where_none_is_chosen) {
  const auto led_to = [](const Bench& bench) {
    std::vector<int> options;
    for (int index = 0; index < bench.group.count(); ++index) {
      if ((bench.group.option(index)->focusPolicy() & Qt::TabFocus) != 0) {
        options.push_back(index);
      }
    }
    return options;
  };
  Bench bench(1);
  EXPECT_EQ(led_to(bench), std::vector<int>{1});
  bench.group.option(2)->setChecked(true);
  EXPECT_EQ(led_to(bench), std::vector<int>{2});
  EXPECT_EQ(led_to(Bench(-1)), (std::vector<int>{0, 1, 2}));
}

TEST(option_group, a_click_tells_its_choice_once) {
  Bench bench(0);
  bench.click(2);
  EXPECT_EQ(bench.choices, std::vector<int>{2});
}

TEST(option_group, a_click_on_the_chosen_option_tells_it_again) {
  Bench bench(1);
  bench.click(1);
  bench.click(1);
  EXPECT_EQ(bench.choices, (std::vector<int>{1, 1}));
}

TEST(option_group, a_toggle_without_a_click_tells_its_choice_and_spoils_no_later_click) {
  Bench bench(0);
  bench.group.option(1)->toggle();
  bench.click(1);
  bench.click(0);
  EXPECT_EQ(bench.choices, (std::vector<int>{1, 1, 0}));
}

TEST(option_group, an_assistive_client_chooses_an_option_and_clicks_the_chosen_one_again) {
  Bench bench(0);
  auto* const option = QAccessible::queryAccessibleInterface(bench.group.option(1));
  EXPECT_EQ(option->role(), QAccessible::RadioButton);
  EXPECT_EQ(option->text(QAccessible::Name), QStringLiteral("Two"));
  EXPECT_FALSE(option->state().checked);
  EXPECT_TRUE(option->state().checkable && option->state().focusable);
  for (const QString& action :
       {QAccessibleActionInterface::toggleAction(), QAccessibleActionInterface::pressAction()}) {
    EXPECT_TRUE(option->actionInterface()->actionNames().contains(action));
    option->actionInterface()->doAction(action);
    EXPECT_TRUE(option->state().checked);
  }
  EXPECT_EQ(bench.choices, (std::vector<int>{1, 1}));
}

TEST(option_group, space_chooses_the_option_that_has_the_focus) {
  Bench bench(0);
  QTest::keyClick(bench.group.option(2), Qt::Key_Space);
  EXPECT_EQ(bench.choices, std::vector<int>{2});
}

TEST(option_group, left_and_right_move_the_choice_round_the_group_in_either_layout) {
  for (const Qt::Orientation orientation : {Qt::Vertical, Qt::Horizontal}) {
    Bench bench(2, orientation);
    QTest::keyClick(bench.group.option(2), Qt::Key_Right);
    QTest::keyClick(bench.group.option(0), Qt::Key_Left);
    QTest::keyClick(bench.group.option(2), Qt::Key_Left);
    EXPECT_EQ(bench.choices, (std::vector<int>{0, 2, 1}));
  }
}

TEST(option_group, right_from_none_chooses_the_first_and_left_the_last) {
  Bench right(-1);
  QTest::keyClick(right.group.option(0), Qt::Key_Right);
  EXPECT_EQ(right.group.chosen(), 0);
  Bench left(-1);
  QTest::keyClick(left.group.option(0), Qt::Key_Left);
  EXPECT_EQ(left.group.chosen(), 2);
}

TEST(option_group, two_groups_under_one_parent_do_not_exclude_each_other) {
  QWidget parent;
  OptionGroup first("first", QStringLiteral("First"), three, 0, Qt::Vertical, &parent);
  OptionGroup second("second", QStringLiteral("Second"), three, 1, Qt::Vertical, &parent);
  second.option(2)->click();
  EXPECT_EQ(first.chosen(), 0);
  EXPECT_EQ(second.chosen(), 2);
}
