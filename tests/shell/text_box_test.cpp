#include "shell/text_box.h"

#include "link/click.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QTest>

#include <gtest/gtest.h>

TEST(text_box, carries_the_names_it_was_given) {
  const TextBox box("Text10", QStringLiteral("Delay"), 2, KeyFilter::digits);
  EXPECT_EQ(box.objectName(), QStringLiteral("Text10"));
  EXPECT_EQ(box.accessibleName(), QStringLiteral("Delay"));
  EXPECT_EQ(box.maxLength(), 2);
}

TEST(text_box, a_digits_box_discards_other_characters_and_takes_backspace) {
  TextBox box("Text10", QStringLiteral("Delay"), 5, KeyFilter::digits);
  QTest::keyClicks(&box, QStringLiteral("1x -+.2e3"));
  QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_Eacute, QStringLiteral("\u00E9"), Qt::NoModifier);
  EXPECT_EQ(box.text(), QStringLiteral("123"));
  QTest::keyClick(&box, Qt::Key_Backspace);
  EXPECT_EQ(box.text(), QStringLiteral("12"));
}

TEST(text_box, a_digits_box_keeps_delete_home_end_and_arrows) {
  TextBox box("Text10", QStringLiteral("Delay"), 5, KeyFilter::digits);
  QTest::keyClicks(&box, QStringLiteral("123"));
  QTest::keyClick(&box, Qt::Key_Home);
  QTest::keyClick(&box, Qt::Key_Delete);
  EXPECT_EQ(box.text(), QStringLiteral("23"));
  QTest::keyClick(&box, Qt::Key_End);
  QTest::keyClick(&box, Qt::Key_Left);
  EXPECT_EQ(box.cursorPosition(), 1);
}

TEST(text_box, a_digits_box_keeps_the_clipboard_and_pasting_is_not_filtered) {
  TextBox box("Text10", QStringLiteral("Delay"), 5, KeyFilter::digits);
  QGuiApplication::clipboard()->setText(QStringLiteral("4x"));
  QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(box.text(), QStringLiteral("4x"));
  QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&box, Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(box.text(), QString());
}

TEST(text_box, a_character_that_altgr_types_is_filtered_like_any_other) {
  TextBox box("Text10", QStringLiteral("Delay"), 5, KeyFilter::digits);
  QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_Q, QStringLiteral("@"),
                      Qt::ControlModifier | Qt::AltModifier);
  EXPECT_EQ(box.text(), QString());
}

TEST(text_box, an_input_method_types_through_the_same_filter) {
  TextBox box("Text10", QStringLiteral("Delay"), 5, KeyFilter::digits);
  for (const QString& typed : {QStringLiteral("7"), QStringLiteral("\u00EA")}) {
    QInputMethodEvent event;
    event.setCommitString(typed);
    QCoreApplication::sendEvent(&box, &event);
  }
  EXPECT_EQ(box.text(), QStringLiteral("7"));
}

TEST(text_box, the_length_is_held_while_typing) {
  TextBox box("Text10", QStringLiteral("Delay"), 2, KeyFilter::digits);
  QTest::keyClicks(&box, QStringLiteral("123"));
  EXPECT_EQ(box.text(), QStringLiteral("12"));
}

TEST(text_box, gives_its_text_as_bytes_or_says_what_has_none) {
  TextBox box("Text11", QStringLiteral("Prefix"), 1, KeyFilter::none);
  box.setText(QStringLiteral("\u00E9"));
  EXPECT_EQ(box.bytes(), "\xE9");
  box.setText(QStringLiteral("\u0416"));
  EXPECT_THROW((void)box.bytes(), ClickError);
}

TEST(text_box, shows_its_whole_text_at_the_width_it_was_given) {
  TextBox box("Text20", QStringLiteral("Max Records"), 5, KeyFilter::digits);
  box.set_width_in_characters(5);
  box.setText(QStringLiteral("88888"));
  EXPECT_GE(box.width(), box.fontMetrics().horizontalAdvance(box.text()) + 8);
}
