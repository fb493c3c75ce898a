// Big arrays: a table reads its values once when they come in and then only the rows it paints; it
// never copies or converts an array.
#include "SpreadsheetTestArrays.h"

#include "spreadsheets/VXBasicSpreadsheetModel.h"
#include "spreadsheets/VXSpreadsheet.h"
#include "spreadsheets/VXSpreadsheetTableView.h"

#include <QApplication>
#include <QFile>
#include <QScrollBar>

#include <gtest/gtest.h>

#include <unistd.h>

using namespace SpreadsheetTest;

namespace
{
constexpr zr::core::usize k_Tuples = 10000000;

// Resident memory of this process in bytes.
long long ResidentBytes()
{
  QFile statm(QStringLiteral("/proc/self/statm"));
  if (!statm.open(QIODevice::ReadOnly))
  {
    return -1;
  }
  const QList<QByteArray> fields = statm.readAll().split(' ');
  return fields.size() > 1 ? fields[1].toLongLong() * sysconf(_SC_PAGESIZE) : -1;
}

void ShowAndPaint(VXSpreadsheet& sheet)
{
  sheet.resize(800, 600);
  sheet.show();
  for (int i = 0; i < 5; ++i)
  {
    QApplication::processEvents();
  }
  sheet.tableView()->viewport()->repaint();
}
} // namespace

TEST(SpreadsheetLargeArray, TenMillionRowsAreReadOnceThenOnlyWherePainted)
{
  zr::core::DataStructure ds;
  auto store = std::make_shared<CountingStore>(k_Tuples);
  auto* array = zr::core::Float32Array::Create(ds, "Computed", store);
  VXSpreadsheet sheet;
  ASSERT_TRUE(sheet.addArray(ds.getSharedDataAs<zr::core::IArray>(array->getId()), 1));
  EXPECT_EQ(sheet.rowCount(), static_cast<int>(k_Tuples));
  // One pass, in blocks; nothing formatted yet.
  EXPECT_EQ(store->blockReads.load(), k_Tuples);
  EXPECT_EQ(store->singleReads.load(), 0U);
  EXPECT_EQ(sheet.getMinMax(), std::make_pair(0.0, 999.0));

  ShowAndPaint(sheet);
  const zr::core::usize firstScreen = store->singleReads.load();
  EXPECT_GT(firstScreen, 0U);
  EXPECT_LT(firstScreen, 2000U);

  // The view holds a window of rows; going to the end moves it there.
  EXPECT_EQ(sheet.model()->rowCount(), static_cast<int>(VXSpreadsheet::k_WindowRows));
  sheet.setGoToFields(QString::number(k_Tuples - 1), "0");
  sheet.jumpToRowColumn();
  sheet.tableView()->viewport()->repaint();
  QApplication::processEvents();
  const zr::core::usize afterScroll = store->singleReads.load();
  EXPECT_GT(afterScroll, firstScreen);
  EXPECT_LT(afterScroll - firstScreen, 2000U);
  const QModelIndex current = sheet.tableView()->currentIndex();
  EXPECT_EQ(sheet.model()->rowOffset() + static_cast<quint64>(current.row()), k_Tuples - 1);
  EXPECT_EQ(sheet.model()->headerData(current.row(), Qt::Vertical).toString(), QString::number(k_Tuples - 1));
  EXPECT_EQ(sheet.model()->data(current).toString(), "999");
}

TEST(SpreadsheetLargeArray, ScrollingPastTheWindowMovesItAndKeepsTheTopRow)
{
  zr::core::DataStructure ds;
  auto store = std::make_shared<CountingStore>(3 * VXSpreadsheet::k_WindowRows);
  auto* array = zr::core::Float32Array::Create(ds, "Computed", store);
  VXSpreadsheet sheet;
  ASSERT_TRUE(sheet.addArray(ds.getSharedDataAs<zr::core::IArray>(array->getId()), 1));
  ShowAndPaint(sheet);
  QScrollBar* bar = sheet.tableView()->verticalScrollBar();
  bar->setValue(bar->maximum());
  QApplication::processEvents();
  const quint64 offset = sheet.model()->rowOffset();
  EXPECT_EQ(offset, VXSpreadsheet::k_WindowRows / 2);
  const int top = sheet.tableView()->rowAt(0);
  EXPECT_GT(offset + static_cast<quint64>(top), VXSpreadsheet::k_WindowRows - 100);
  EXPECT_LT(offset + static_cast<quint64>(top), VXSpreadsheet::k_WindowRows);
  // Back at the top of the window, it moves back.
  bar->setValue(bar->minimum());
  QApplication::processEvents();
  EXPECT_EQ(sheet.model()->rowOffset(), 0U);
  // Export and the table's row count cover every row, not only the window.
  EXPECT_EQ(sheet.rowCount(), static_cast<int>(3 * VXSpreadsheet::k_WindowRows));
  EXPECT_EQ(sheet.model()->textAt(3 * VXSpreadsheet::k_WindowRows - 1, 0), "999");
}

TEST(SpreadsheetLargeArray, AddingAPlainArrayDoesNotGrowMemoryByItsSize)
{
  zr::core::DataStructure ds;
  auto* array = zr::core::Float32Array::Create(ds, "Plain", {k_Tuples}, {1}, {}, 0.0f);
  auto& values = *array->getInMemoryStore();
  for (zr::core::usize i = 0; i < k_Tuples; ++i)
  {
    values[i] = static_cast<float>(i % 4096) * 0.25f;
  }
  const std::size_t arrayBytes = k_Tuples * sizeof(float);
  const auto shared = ds.getSharedDataAs<zr::core::IArray>(array->getId());

  // Worker threads and the formatting code come up once, outside the measure.
  VXBasicSpreadsheetModel warmUp;
  warmUp.addArray(shared);
  warmUp.clear();

  const long long before = ResidentBytes();
  ASSERT_GT(before, 0);
  const long holdersBefore = shared.use_count();
  VXBasicSpreadsheetModel model;
  model.addArray(shared);
  model.addArray(shared); // the same array twice: still no copy
  QString text;
  for (int row = 0; row < model.rowCount(); row += 9973)
  {
    text = model.data(model.index(row, 1)).toString();
  }
  const long long growth = ResidentBytes() - before;
  EXPECT_LT(growth, static_cast<long long>(arrayBytes / 8))
      << "resident memory grew by " << growth << " bytes for an array of " << arrayBytes;
  EXPECT_EQ(model.rowCount(), static_cast<int>(k_Tuples));
  EXPECT_EQ(model.data(model.index(4095, 0), VXSpreadsheetModel::MaximumRole).toDouble(), 1023.75);
  EXPECT_EQ(model.data(model.index(4095, 0)).toString(), "1023.75");
  // The model holds the array itself: each entry and its text functor share it.
  EXPECT_EQ(shared.use_count(), holdersBefore + 4);
}
