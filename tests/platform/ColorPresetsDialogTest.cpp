#include "platform/ColorPresetsDialog.h"
#include "platform/ColorPresetsTableModel.h"

#include <QAbstractItemModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace
{
using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;

const QString k_PresetData = QStringLiteral(ZR_TEST_DATA_DIR "/presets/");

struct DialogParts
{
  QLineEdit* search = nullptr;
  QTableView* table = nullptr;
  QPushButton* apply = nullptr;
  QPushButton* restore = nullptr;
};

DialogParts partsOf(ColorPresetsDialog& dialog)
{
  DialogParts parts;
  parts.search = dialog.findChild<QLineEdit*>(QStringLiteral("m_SearchEdit"));
  parts.table = dialog.findChild<QTableView*>(QStringLiteral("m_PresetsTable"));
  parts.apply = dialog.findChild<QPushButton*>(QStringLiteral("m_ApplyButton"));
  parts.restore = dialog.findChild<QPushButton*>(QStringLiteral("m_RestoreDefaultButton"));
  return parts;
}

QStringList visibleNames(QTableView* table)
{
  QStringList names;
  QAbstractItemModel* model = table->model();
  for (int row = 0; row < model->rowCount(); ++row)
  {
    names << model->index(row, ColorPresetsTableModel::NameColumn).data().toString();
  }
  return names;
}

void clickRow(QTableView* table, int row)
{
  const QRect cell = table->visualRect(table->model()->index(row, ColorPresetsTableModel::NameColumn));
  QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
}

QString importMessage(ColorPresetsDialog& dialog)
{
  auto* box = dialog.findChild<QMessageBox*>(QStringLiteral("m_ImportMessageBox"));
  return box != nullptr && box->isVisible() ? box->text() : QString();
}

void closeImportMessage(ColorPresetsDialog& dialog)
{
  if (auto* box = dialog.findChild<QMessageBox*>(QStringLiteral("m_ImportMessageBox")))
  {
    box->close();
  }
}
} // namespace

TEST(ColorPresetsDialog, FiltersByNameAndAppliesTheSelectedPreset)
{
  ColorPresetsDialog dialog;
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  const DialogParts parts = partsOf(dialog);
  ASSERT_TRUE(parts.search && parts.table && parts.apply && parts.restore);
  const int all = parts.table->model()->rowCount();
  EXPECT_GT(all, 20);
  EXPECT_FALSE(parts.apply->isEnabled()); // nothing selected yet

  QSignalSpy applied(&dialog, &ColorPresetsDialog::applyPreset);
  QTest::keyClicks(parts.search, QStringLiteral("BLUE"));
  EXPECT_EQ(visibleNames(parts.table),
            (QStringList{"Blue - Orange", "Red - Blue", "Brown - Blue Green", "Blue - White - Red"}));

  parts.search->clear();
  QTest::keyClicks(parts.search, QStringLiteral("magm"));
  ASSERT_EQ(visibleNames(parts.table), QStringList{"Magma"});
  clickRow(parts.table, 0);
  EXPECT_EQ(dialog.selectedPresetName(), QStringLiteral("Magma"));
  ASSERT_TRUE(parts.apply->isEnabled());
  QTest::mouseClick(parts.apply, Qt::LeftButton);
  ASSERT_EQ(applied.count(), 1);
  const auto preset = applied.front().at(0).value<ColorPreset>();
  EXPECT_EQ(preset.m_Name, "Magma");
  EXPECT_GE(preset.m_RGBPoints.size(), 32u * 4);
  const auto colorBar = applied.front().at(1).value<QPixmap>();
  EXPECT_EQ(colorBar.size(), ColorPresetsTableModel::k_ColorBarSize);

  // A filter that hides the selection leaves nothing to apply.
  QTest::keyClicks(parts.search, QStringLiteral("zzz"));
  EXPECT_EQ(parts.table->model()->rowCount(), 0);
  EXPECT_FALSE(parts.apply->isEnabled());
  dialog.applySelectedPreset();
  EXPECT_EQ(applied.count(), 1);

  parts.search->clear();
  EXPECT_EQ(parts.table->model()->rowCount(), all);
  QSignalSpy restored(&dialog, &ColorPresetsDialog::restoreDefaultPreset);
  QTest::mouseClick(parts.restore, Qt::LeftButton);
  EXPECT_EQ(restored.count(), 1);
}

TEST(ColorPresetsDialog, NanColorIsShownAndAnnouncedOnRequest)
{
  ColorPresetsDialog dialog;
  QSignalSpy changed(&dialog, &ColorPresetsDialog::nanColorChanged);
  dialog.setNanColor(QColor(10, 20, 30), false);
  EXPECT_EQ(dialog.nanColor(), QColor(10, 20, 30));
  EXPECT_EQ(changed.count(), 0);
  dialog.setNanColor(QColor(40, 50, 60), true);
  EXPECT_EQ(dialog.nanColor(), QColor(40, 50, 60));
  ASSERT_EQ(changed.count(), 1);
  EXPECT_EQ(changed.front().front().value<QColor>(), QColor(40, 50, 60));
}

TEST(ColorPresetsDialog, ImportsGoodFilesAndReportsBadOnes)
{
  ColorPresetsDialog dialog;
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  const DialogParts parts = partsOf(dialog);
  ColorPresetsTableModel* model = dialog.presetsModel();
  const int shipped = model->rowCount();

  QTest::keyClicks(parts.search, QStringLiteral("viridis"));
  EXPECT_EQ(dialog.importPresetFile(k_PresetData + "good-presets.json"), 2);
  EXPECT_TRUE(importMessage(dialog).isEmpty());
  EXPECT_EQ(model->rowCount(), shipped + 2);
  // The filter gives way so that the first imported preset is shown and selected.
  EXPECT_TRUE(parts.search->text().isEmpty());
  EXPECT_EQ(dialog.selectedPresetName(), QStringLiteral("Exported Twilight"));
  QSignalSpy applied(&dialog, &ColorPresetsDialog::applyPreset);
  QTest::mouseClick(parts.apply, Qt::LeftButton);
  ASSERT_EQ(applied.count(), 1);
  EXPECT_EQ(applied.front().at(0).value<ColorPreset>().m_RGBPoints.size(), 36u);

  ASSERT_TRUE(dialog.selectPreset(QStringLiteral("Exported Phases")));
  QTest::mouseClick(parts.apply, Qt::LeftButton);
  ASSERT_EQ(applied.count(), 2);
  EXPECT_EQ(applied.back().at(0).value<ColorPreset>().m_Annotations.size(), 6u);

  EXPECT_EQ(dialog.importPresetFile(k_PresetData + "single-preset.json"), 1);
  EXPECT_EQ(model->rowOfName(QStringLiteral("Exported Single")), shipped + 2);

  EXPECT_EQ(dialog.importPresetFile(k_PresetData + "malformed-presets.json"), 0);
  EXPECT_EQ(model->rowCount(), shipped + 3);
  const QString malformedText = importMessage(dialog);
  EXPECT_TRUE(malformedText.contains(QStringLiteral("malformed-presets.json")));
  EXPECT_TRUE(malformedText.contains(QStringLiteral("not valid JSON")));
  closeImportMessage(dialog);

  EXPECT_EQ(dialog.importPresetFile(k_PresetData + "mixed-presets.json"), 2);
  EXPECT_EQ(model->rowCount(), shipped + 5);
  EXPECT_GE(model->rowOfName(QStringLiteral("Good Before")), 0);
  EXPECT_GE(model->rowOfName(QStringLiteral("Good After")), 0);
  EXPECT_EQ(model->rowOfName(QStringLiteral("Text Points")), -1);
  const QString mixedText = importMessage(dialog);
  EXPECT_TRUE(mixedText.contains(QStringLiteral("\"Text Points\"")));
  EXPECT_TRUE(mixedText.contains(QStringLiteral("\"Object Colors\"")));
  EXPECT_TRUE(mixedText.contains(QStringLiteral("Imported 2")));
  closeImportMessage(dialog);
}
