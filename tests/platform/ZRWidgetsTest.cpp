#include "platform/QElidedLabel.h"
#include "platform/ZRColorButton.h"
#include "platform/ZRComboBox.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRLineEdit.h"
#include "platform/ZRSectionHeader.h"

#include <QApplication>
#include <QColorDialog>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace
{
// Answers the next modal colour dialog with the given colour (or cancels it when invalid).
void answerColorDialog(const QColor& color)
{
  QTimer::singleShot(0,
                     [color]
                     {
                       auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
                       if (dialog == nullptr)
                       {
                         return;
                       }
                       if (color.isValid())
                       {
                         dialog->setCurrentColor(color);
                         dialog->accept();
                       }
                       else
                       {
                         dialog->reject();
                       }
                     });
}

void sendWheel(QWidget* widget, int delta)
{
  QWheelEvent event(QPointF(5, 5), widget->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, delta),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(widget, &event);
}
} // namespace

TEST(ZRColorButton, ClickEmitsTheChosenColourAndCancelKeepsTheOld)
{
  ZRColorButton button(QColor(Qt::red));
  button.show();
  QSignalSpy spy(&button, &ZRColorButton::colorChanged);

  answerColorDialog(QColor(12, 34, 56));
  QTest::mouseClick(&button, Qt::LeftButton);
  ASSERT_EQ(spy.count(), 1);
  EXPECT_EQ(spy.at(0).at(0).value<QColor>(), QColor(12, 34, 56));
  EXPECT_EQ(button.getColor(), QColor(12, 34, 56));

  answerColorDialog(QColor());
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_EQ(spy.count(), 1);
  EXPECT_EQ(button.getColor(), QColor(12, 34, 56));

  // Choosing the colour it already has is no change.
  answerColorDialog(QColor(12, 34, 56));
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_EQ(spy.count(), 1);

  button.setColor(QColor(Qt::blue));
  EXPECT_EQ(spy.count(), 1); // programmatic changes are silent
  EXPECT_EQ(button.getColor(), QColor(Qt::blue));
}

TEST(QElidedLabel, ShortensToItsWidthAndKeepsTheWholeText)
{
  const QString text = QStringLiteral("A rather long path /Data Container/Cell Data/Confidence Index");
  QElidedLabel label(text);
  label.resize(80, 20);
  label.show();
  EXPECT_EQ(label.text(), text);
  EXPECT_NE(label.displayedText(), text);
  EXPECT_TRUE(label.displayedText().endsWith(QChar(0x2026)));
  EXPECT_LE(label.fontMetrics().horizontalAdvance(label.displayedText()), label.contentsRect().width());

  label.resize(label.fontMetrics().horizontalAdvance(text) + 20, 20);
  EXPECT_EQ(label.displayedText(), text);

  label.setText(QStringLiteral("short"));
  EXPECT_EQ(label.displayedText(), QStringLiteral("short"));
}

TEST(ZRComboBox, WheelChangesTheValueOnlyWithFocus)
{
  ZRComboBox combo;
  combo.addItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
  combo.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&combo));
  combo.clearFocus();
  sendWheel(&combo, -120);
  EXPECT_EQ(combo.currentIndex(), 0);

  combo.activateWindow();
  combo.setFocus();
  ASSERT_TRUE(QTest::qWaitFor([&] { return combo.hasFocus(); }));
  sendWheel(&combo, -120);
  EXPECT_EQ(combo.currentIndex(), 1);
}

TEST(ZRSectionHeader, ButtonReportsTheExpandedState)
{
  ZRSectionHeader header(QStringLiteral("Annotations"));
  header.show();
  QSignalSpy spy(&header, &ZRSectionHeader::showHideButtonClicked);
  EXPECT_TRUE(header.isExpanded());
  QTest::mouseClick(header.showHideButton(), Qt::LeftButton);
  ASSERT_EQ(spy.count(), 1);
  EXPECT_FALSE(spy.at(0).at(0).toBool());
  EXPECT_FALSE(header.isExpanded());
  header.setExpanded(true);
  EXPECT_EQ(spy.count(), 1);
  EXPECT_EQ(header.text(), QStringLiteral("Annotations"));
}

TEST(ZRLineEdit, EditedMarkComesAndGoes)
{
  ZRLineEdit edit;
  EXPECT_FALSE(edit.isMarkedEdited());
  edit.setMarkedEdited(true);
  EXPECT_TRUE(edit.isMarkedEdited());
  edit.setMarkedEdited(false);
  EXPECT_FALSE(edit.isMarkedEdited());
}
