// The spreadsheet widget over its models: selection statistics, copy, export files, go-to, the
// message for arrays longer than a table, and cell painting.
#include "SpreadsheetTestArrays.h"

#include "spreadsheets/VXBasicSpreadsheetModel.h"
#include "spreadsheets/VXMultidimSpreadsheetModel.h"
#include "spreadsheets/VXSpreadsheet.h"
#include "spreadsheets/VXSpreadsheetItemDelegate.h"
#include "spreadsheets/VXSpreadsheetTableView.h"

#include "platform/ZRStyle.h"

#include <vtkColorTransferFunction.h>
#include <vtkNew.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QHeaderView>
#include <QHelpEvent>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

using namespace SpreadsheetTest;
using zr::core::DataStructure;

namespace
{
QStringList Messages(const QSignalSpy& spy)
{
  QStringList messages;
  for (const QList<QVariant>& arguments : spy)
  {
    messages << arguments.at(0).toString();
  }
  return messages;
}

void Select(VXSpreadsheet& sheet, const QList<QPair<int, int>>& cells)
{
  QItemSelectionModel* selection = sheet.tableView()->selectionModel();
  selection->clearSelection();
  for (const auto& [row, column] : cells)
  {
    selection->select(sheet.model()->index(row, column), QItemSelectionModel::Select);
  }
}

QStringList ActionTexts(const VXSpreadsheet& sheet)
{
  QStringList texts;
  for (QAction* action : sheet.statisticsActions())
  {
    texts << action->text();
  }
  return texts;
}

QByteArray ReadAll(const QString& path)
{
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

TEST(VXSpreadsheetStatistics, AreTakenOverTheShownText)
{
  DataStructure ds;
  VXSpreadsheet sheet;
  sheet.addArray(MakeArray<double>(ds, "Numbers", {-1.0, -2.0, 3.25}), 1);
  sheet.addArray(MakeStrings(ds, "Text", {"1", "2", "abc"}), 1);
  QSignalSpy counts(&sheet, &VXSpreadsheet::selectedCellCountChanged);

  Select(sheet, {{0, 0}, {1, 0}});
  EXPECT_EQ(ActionTexts(sheet), QStringList({"Min: -2", "Max: ", "Sum: -3", "Avg: -1.5"}));
  EXPECT_EQ(sheet.statisticsButtonText(), "Min: -2");
  EXPECT_TRUE(sheet.statisticsButtonVisible());
  EXPECT_EQ(sheet.messageText(), "2 Cell(s) Selected");

  Select(sheet, {{0, 1}, {1, 1}, {2, 1}});
  EXPECT_EQ(ActionTexts(sheet), QStringList({"Min: 1", "Max: 2", "Sum: 3", "Avg: 1"}));
  // The button shows the first checked statistic.
  sheet.statisticsActions()[0]->setChecked(false);
  sheet.statisticsActions()[2]->setChecked(true);
  EXPECT_EQ(sheet.statisticsButtonText(), "Sum: 3");

  Select(sheet, {{2, 0}});
  EXPECT_EQ(ActionTexts(sheet), QStringList({"Min: ", "Max: ", "Sum: ", "Avg: "}));
  EXPECT_FALSE(sheet.statisticsButtonVisible());
  EXPECT_EQ(sheet.messageText(), "1 Cell(s) Selected");
  ASSERT_FALSE(counts.isEmpty());
  EXPECT_EQ(counts.last().at(0).toInt(), 1);
}

TEST(VXSpreadsheetCopy, JoinsRowsAndColumnsAndReportsTheLastRowPosition)
{
  DataStructure ds;
  VXSpreadsheet sheet;
  QSignalSpy output(&sheet, &VXSpreadsheet::printOutput);
  sheet.copySelectedItems();
  EXPECT_EQ(Messages(output).last(), "Cannot copy from table because no cell(s) were selected");

  std::vector<std::int32_t> values(20);
  for (int i = 0; i < 20; ++i)
  {
    values[i] = i;
  }
  sheet.addArray(MakeArray<std::int32_t>(ds, "Pairs", values, 2), 2);
  Select(sheet, {{9, 1}});
  sheet.copySelectedItems();
  EXPECT_EQ(Messages(output).last(), "Copied 10 rows to the clipboard\n");
  EXPECT_EQ(QApplication::clipboard()->text(), "19");

  Select(sheet, {{3, 1}, {2, 0}, {3, 0}, {2, 1}});
  sheet.copySelectedItems();
  EXPECT_EQ(QApplication::clipboard()->text(), "4\t5\n6\t7");
  EXPECT_EQ(Messages(output).last(), "Copied 4 rows to the clipboard\n");
}

TEST(VXSpreadsheetExport, WritesSepLineHeadersAndDelimitedRows)
{
  DataStructure ds;
  QTemporaryDir dir;
  VXSpreadsheet sheet;
  QSignalSpy output(&sheet, &VXSpreadsheet::printOutput);
  sheet.addArray(MakeArray<float>(ds, "Euler", {0.5f, 1.3f, -3.0f, 2.0f, 0.0f, 1e7f}, 3), 3);
  sheet.addArray(MakeArray<std::int32_t>(ds, "Ids", {7, 8, 9}), 1);
  sheet.addArray(MakeStrings(ds, "Phase", {"a b", "c"}), 1);

  const QString comma = dir.filePath("comma.csv");
  sheet.exportTableToFile(QStringLiteral(", "), comma);
  EXPECT_EQ(ReadAll(comma), QByteArray("sep=, \n"
                                       "Euler_comp0, Euler_comp1, Euler_comp2, Ids, Phase\n"
                                       "0.5, 1.3, -3, 7, a b\n"
                                       "2, 0, 1e+07, 8, c\n"
                                       ", , , 9, \n"));
  EXPECT_EQ(Messages(output).last(),
            QStringLiteral("Current spreadsheet data was successfully written to file at '%1'").arg(comma));

  const QString tab = dir.filePath("tab.csv");
  sheet.setNotation(QStringLiteral("Scientific"));
  sheet.setPrecision(1);
  sheet.exportTableToFile(QStringLiteral("\t"), tab);
  EXPECT_EQ(ReadAll(tab), QByteArray("sep=\t\n"
                                     "Euler_comp0\tEuler_comp1\tEuler_comp2\tIds\tPhase\n"
                                     "5.0e-01\t1.3e+00\t-3.0e+00\t7.0e+00\ta b\n"
                                     "2.0e+00\t0.0e+00\t1.0e+07\t8.0e+00\tc\n"
                                     "\t\t\t9.0e+00\t\n"));

  sheet.exportTableToFile(QStringLiteral(", "), dir.filePath("missing/dir/out.csv"));
  EXPECT_EQ(Messages(output).last(),
            QStringLiteral("Failed to open file '%1' for writing").arg(dir.filePath("missing/dir/out.csv")));
}

TEST(VXSpreadsheetExport, ASliceHasABareHeaderLine)
{
  DataStructure ds;
  QTemporaryDir dir;
  VXSpreadsheet sheet;
  sheet.setModel(new VXMultidimSpreadsheetModel());
  ASSERT_TRUE(sheet.setTable(MakeArray<std::uint8_t>(ds, "Grid", {1, 2, 3, 4, 5, 6}), {2, 3}, 1, 0, {0, 0}));
  EXPECT_FALSE(sheet.showsHeaders());
  const QString path = dir.filePath("slice.csv");
  sheet.exportTableToFile(QStringLiteral("\t"), path);
  EXPECT_EQ(ReadAll(path), QByteArray("sep=\t\n\t\t\n1\t2\t3\n4\t5\t6\n"));
  EXPECT_FALSE(sheet.setTable(MakeArray<std::uint8_t>(ds, "Flat", {1}), {1}, 0, 0, {0}));
  EXPECT_EQ(sheet.getMinMax(), std::make_pair(1.0, 6.0));
}

TEST(VXSpreadsheetRows, ArraysLongerThanATableShowTheirFirstRowsWithAMessage)
{
  DataStructure ds;
  VXSpreadsheet sheet;
  auto* model = qobject_cast<VXBasicSpreadsheetModel*>(sheet.model());
  ASSERT_NE(model, nullptr);
  model->setRowLimit(1000);
  QSignalSpy output(&sheet, &VXSpreadsheet::printOutput);
  auto store = std::make_shared<CountingStore>(5000);
  auto* array = zr::core::Float32Array::Create(ds, "Long", store);
  ASSERT_TRUE(sheet.addArray(ds.getSharedDataAs<zr::core::IArray>(array->getId()), 1));
  EXPECT_EQ(sheet.rowCount(), 1000);
  EXPECT_EQ(model->totalRowCount(), 5000U);
  ASSERT_FALSE(output.isEmpty());
  EXPECT_TRUE(Messages(output).last().contains("'Long' has 5,000 tuples"))
      << Messages(output).last().toStdString();
  EXPECT_TRUE(Messages(output).last().contains("only its first 1,000 tuples are shown"));
  EXPECT_EQ(sheet.messageText(), Messages(output).last());
  // Only the rows shown were scanned.
  EXPECT_EQ(store->blockReads.load(), 1000U);
  EXPECT_EQ(sheet.model()->data(sheet.model()->index(999, 0)).toString(), "999");
}

TEST(VXSpreadsheetGoTo, ClampsToTheLastRowAndColumn)
{
  DataStructure ds;
  VXSpreadsheet sheet;
  sheet.addArray(MakeArray<std::int32_t>(ds, "Ten", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}), 1);
  sheet.setGoToFields("999", "x");
  sheet.jumpToRowColumn();
  EXPECT_EQ(sheet.rowFieldText(), "9");
  EXPECT_EQ(sheet.tableView()->currentIndex().row(), 9);
  EXPECT_EQ(sheet.currentColumn(), 0);
}

TEST(VXSpreadsheetColumns, RemovingSelectedColumnsTellsEachAndKeepsDelegateSlots)
{
  DataStructure ds;
  VXSpreadsheet sheet;
  sheet.addArray(MakeArray<float>(ds, "A", {1, 2, 3, 4, 5, 6}, 3), 3);
  vtkNew<vtkColorTransferFunction> colours;
  sheet.setBackgroundColorMap(2UL, colours);
  QSignalSpy removed(&sheet, &VXSpreadsheet::columnRemoved);
  Select(sheet, {{0, 0}, {1, 1}});
  sheet.removeSelectedColumn();
  ASSERT_EQ(removed.size(), 2);
  EXPECT_EQ(sheet.model()->columnCount(), 1);
  EXPECT_EQ(sheet.model()->headerData(0, Qt::Horizontal).toString(), "A_comp2");
  // The delegate keeps its slots: the map stays in slot 2.
  ASSERT_EQ(sheet.itemDelegate()->columnColorMaps().size(), 3U);
  EXPECT_EQ(sheet.itemDelegate()->columnColorMaps()[2], colours.GetPointer());
  EXPECT_EQ(sheet.getMinMax(0), std::make_pair(3.0, 6.0));
  EXPECT_EQ(sheet.getMinMax(4), std::make_pair(0.0, 0.0));
}

TEST(VXSpreadsheetDelegate, ColoursFollowMapsDiffAndLuminance)
{
  vtkNew<vtkColorTransferFunction> map;
  map->AddRGBPoint(0.0, 0.0, 0.0, 1.0);
  map->AddRGBPoint(1.0, 1.0, 1.0, 0.0);
  map->SetNanColor(1.0, 0.0, 0.0);
  EXPECT_EQ(VXSpreadsheetItemDelegate::MapColor(map, "abc"), QColor(255, 0, 0));
  EXPECT_EQ(VXSpreadsheetItemDelegate::MapColor(map, "1"), QColor(255, 255, 0));
  EXPECT_EQ(VXSpreadsheetItemDelegate::TextColorFor(QColor(0, 0, 255)), ZRStyle::getTextWhite());
  EXPECT_EQ(VXSpreadsheetItemDelegate::TextColorFor(QColor(255, 255, 0)), ZRStyle::getTextBlack());

  DataStructure ds;
  VXSpreadsheet sheet;
  sheet.addArray(MakeArray<float>(ds, "Pair", {1, 1, 2, 3}, 2), 2);
  VXSpreadsheetItemDelegate* delegate = sheet.itemDelegate();
  delegate->setCurrentColumnHighlighting(false);
  const auto paintCell = [&](int row, int column)
  {
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, 40, 20);
    option.state = QStyle::State_Enabled | QStyle::State_Active;
    option.palette = sheet.tableView()->palette();
    delegate->paint(&painter, option, sheet.model()->index(row, column));
    painter.end();
    return image.pixelColor(1, 1);
  };
  const QColor base = sheet.tableView()->palette().color(QPalette::Active, QPalette::Base);
  EXPECT_EQ(paintCell(0, 0), base);
  delegate->setColorMap(map, 0);
  EXPECT_EQ(paintCell(0, 0), QColor(255, 255, 0));
  EXPECT_EQ(paintCell(0, 1), base);
  // The table's map comes before the column's.
  vtkNew<vtkColorTransferFunction> tableMap;
  tableMap->AddRGBPoint(0.0, 0.0, 1.0, 0.0);
  delegate->setColorMap(tableMap, -1);
  EXPECT_EQ(paintCell(0, 1), QColor(0, 255, 0));
  delegate->setColorMap(nullptr, -1);
  // Equal text in both diff columns: plain; different text: dark red.
  delegate->setColumnDiff(true, 0, 1);
  EXPECT_EQ(paintCell(0, 0), base);
  EXPECT_EQ(paintCell(1, 1), ZRStyle::getDarkRed());
  delegate->removeColumn(0);
  EXPECT_EQ(delegate->columnColorMaps().size(), 2U);
  EXPECT_EQ(delegate->columnColorMaps()[0], nullptr);
}

TEST(VXSpreadsheetTableView, EmptyTableHintIsCentredItalicText)
{
  const QString html = VXSpreadsheetTableView::EmptyHintHtml(800);
  EXPECT_TRUE(html.startsWith("<html><head/><body><p style=\"margin-left:"));
  EXPECT_TRUE(html.contains("px;font-family:" + ZRStyle::getFontName() + ";font-size:"));
  EXPECT_TRUE(html.contains("pt;color:" + ZRStyle::getTextGray().name() + "\">"));
  EXPECT_TRUE(html.contains("<em>" + VXSpreadsheetTableView::EmptyHintText() + "</em>"));
  EXPECT_TRUE(html.endsWith("</p></body></html>"));
  // The margin shrinks with the viewport by half the difference.
  const auto margin = [](const QString& text)
  { return text.section("margin-left:", 1).section("px", 0, 0).toInt(); };
  EXPECT_EQ(margin(VXSpreadsheetTableView::EmptyHintHtml(800)) -
                margin(VXSpreadsheetTableView::EmptyHintHtml(600)),
            100);
}

TEST(VXSpreadsheetColumns, AreAtLeastAsWideAsTheirHeadersWithinALimit)
{
  DataStructure ds;
  VXSpreadsheet sheet;
  sheet.resize(900, 400);
  sheet.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&sheet));
  const std::string longName = "Average Misorientation Of The Neighbouring Grains In Degrees";
  // Short values under a longer name, a name longer than any column may be, and values wider than
  // their name.
  sheet.addArray(MakeArray<int>(ds, "Grain Boundary Count", {1, 2, 3}), 1);
  sheet.addArray(MakeArray<int>(ds, longName, {4, 5, 6}), 1);
  sheet.addArray(MakeArray<double>(ds, "X", {-123456.789, 0.5, 2.0}), 1);
  VXSpreadsheetTableView* view = sheet.tableView();
  QHeaderView* header = view->horizontalHeader();
  const int valueWidth = static_cast<int>(
      sheet.model()->data(sheet.model()->index(0, 0), VXSpreadsheetModel::WidestRole).toDouble());
  ASSERT_LT(valueWidth, header->sectionSizeHint(0));

  EXPECT_GE(header->sectionSize(0), header->sectionSizeHint(0));
  EXPECT_FALSE(view->headerElided(0));
  const int limit = header->fontMetrics().averageCharWidth() * VXSpreadsheetTableView::k_MaxHeaderCharacters;
  EXPECT_EQ(header->sectionSize(1), limit);
  EXPECT_LT(header->sectionSize(1), header->sectionSizeHint(1));
  EXPECT_TRUE(view->headerElided(1));
  EXPECT_GT(header->sectionSize(2), header->sectionSizeHint(2));
  EXPECT_FALSE(view->headerElided(2));

  // Fitting a column again (a double click on its edge) keeps its header readable.
  header->resizeSection(0, 10);
  EXPECT_TRUE(view->headerElided(0));
  sheet.resizeColumn(0);
  EXPECT_GE(header->sectionSize(0), header->sectionSizeHint(0));

  // The elided header shows whole in its tool tip; a header that fits needs none.
  const QPoint elided(header->sectionViewportPosition(1) + header->sectionSize(1) / 2, header->height() / 2);
  QHelpEvent help(QEvent::ToolTip, elided, header->viewport()->mapToGlobal(elided));
  QApplication::sendEvent(header->viewport(), &help);
  EXPECT_EQ(QToolTip::text(), QString::fromStdString(longName));
  EXPECT_EQ(view->headerToolTip(1), QString::fromStdString(longName));
  EXPECT_TRUE(view->headerToolTip(0).isEmpty());
  EXPECT_TRUE(view->headerToolTip(2).isEmpty());
}
