// The dataset information panel of data sources and data views, on files written by other programs.
#include "pipeline/VXDatasetInfoWidget.h"

#include "data_views/VXRepresentation.h"
#include "pipeline/FileToVXBridge.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXVisualizationWidget.h"

#include <vtkDoubleArray.h>
#include <vtkFieldData.h>
#include <vtkImageData.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkSmartPointer.h>
#include <vtkStringArray.h>

#include <QFile>
#include <QLabel>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace
{
const QString k_VtkData = QStringLiteral(ZR_TEST_DATA_DIR "/vtk/");

void settle()
{
  for (int i = 0; i < 5; ++i)
  {
    QCoreApplication::processEvents();
    QTest::qWait(5);
  }
}

// One table row as "name|association|type|components|range".
QStringList tableRows(const VXDatasetInfoWidget& widget)
{
  QStringList rows;
  const QTableWidget* table = widget.arrayTable();
  for (int row = 0; row < table->rowCount(); ++row)
  {
    QStringList cells;
    for (int column = 0; column < VXDatasetInfoWidget::ColumnCount; ++column)
    {
      cells.append(table->item(row, column)->text());
    }
    rows.append(cells.join(QLatin1Char('|')));
  }
  return rows;
}

// The image fixture: 4 x 3 x 2 points from (1, 2, 3) with spacing (0.5, 0.25, 2); Density is
// 1.5 times the point id, Phase the cell id modulo 3.
// The legacy reader gives the older image class.
void expectImageFixture(const VXDatasetInfoWidget& widget,
                        const QString& type = QStringLiteral("vtkImageData"))
{
  EXPECT_EQ(widget.summaryValue(QStringLiteral("Type")), type);
  EXPECT_EQ(widget.summaryValue(QStringLiteral("Points")), QStringLiteral("24"));
  EXPECT_EQ(widget.summaryValue(QStringLiteral("Cells")), QStringLiteral("6"));
  EXPECT_EQ(widget.summaryValue(QStringLiteral("Bounds")),
            QStringLiteral("X [1, 2.5], Y [2, 2.5], Z [3, 5]"));
  EXPECT_TRUE(widget.summaryValue(QStringLiteral("Memory")).endsWith(QStringLiteral("KiB")))
      << widget.summaryValue(QStringLiteral("Memory")).toStdString();
  EXPECT_EQ(tableRows(widget), QStringList({QStringLiteral("Density|Point|float|1|[0, 34.5]"),
                                            QStringLiteral("Phase|Cell|int|1|[0, 2]")}));
}

// The unstructured fixture: a unit hexahedron with a tetrahedron whose apex is at z = 2.
void expectUnstructuredFixture(const VXDatasetInfoWidget& widget)
{
  EXPECT_EQ(widget.summaryValue(QStringLiteral("Type")), QStringLiteral("vtkUnstructuredGrid"));
  EXPECT_EQ(widget.summaryValue(QStringLiteral("Points")), QStringLiteral("9"));
  EXPECT_EQ(widget.summaryValue(QStringLiteral("Cells")), QStringLiteral("2"));
  EXPECT_EQ(widget.summaryValue(QStringLiteral("Bounds")), QStringLiteral("X [0, 1], Y [0, 1], Z [0, 2]"));
  EXPECT_EQ(tableRows(widget), QStringList({QStringLiteral("Height|Point|double|1|[0, 2]"),
                                            QStringLiteral("FeatureIds|Cell|int|1|[7, 9]")}));
}

class DatasetInfoWidgetTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    ASSERT_TRUE(m_Dir.isValid());
    m_Grid.resize(300, 200);
    m_Grid.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Grid));
    m_Pipeline.setActiveViewWidget(m_Grid.activeView());
  }

  // Imports a copy of a fixture, so that the test may overwrite it.
  VXDataSource* importCopy(const QString& fixture, const QString& name)
  {
    const QString path = m_Dir.filePath(name);
    EXPECT_TRUE(QFile::copy(k_VtkData + fixture, path));
    m_Bridge = qobject_cast<FileToVXBridge*>(m_Pipeline.importFile(path));
    if (m_Bridge == nullptr || m_Bridge->dataSources().size() != 1)
    {
      return nullptr;
    }
    return m_Bridge->dataSources().front();
  }

  void overwrite(const QString& fixture, const QString& name)
  {
    const QString path = m_Dir.filePath(name);
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QFile::copy(k_VtkData + fixture, path));
  }

  QTemporaryDir m_Dir;
  VXViewGridWidget m_Grid;
  VXPipeline m_Pipeline;
  FileToVXBridge* m_Bridge = nullptr;
};
} // namespace

TEST_F(DatasetInfoWidgetTest, DataSourcePanelShowsTheNumbersOfTheFile)
{
  VXDataSource* source = importCopy(QStringLiteral("image.vti"), QStringLiteral("image.vti"));
  ASSERT_NE(source, nullptr);
  VXDatasetInfoWidget* widget = source->getDataSetInfoWidget();
  ASSERT_NE(widget, nullptr);
  EXPECT_EQ(widget, source->getDataSetInfoWidget()); // made once
  EXPECT_EQ(widget->itemPath(), source->pathName());
  EXPECT_EQ(widget->findChild<QLabel*>(QStringLiteral("m_ItemPathLabel"))->text(), source->pathName());
  expectImageFixture(*widget);

  source->setBaseName(QStringLiteral("Renamed"));
  EXPECT_EQ(widget->itemPath(), source->pathName());
  EXPECT_TRUE(widget->itemPath().endsWith(QStringLiteral("Renamed")));
}

TEST_F(DatasetInfoWidgetTest, ReloadOfTheFileRefreshesTheDataSourcePanel)
{
  VXDataSource* source = importCopy(QStringLiteral("legacy_image.vtk"), QStringLiteral("data.vtk"));
  ASSERT_NE(source, nullptr);
  VXDatasetInfoWidget* widget = source->getDataSetInfoWidget();
  expectImageFixture(*widget, QStringLiteral("vtkStructuredPoints"));

  overwrite(QStringLiteral("legacy_ascii.vtk"), QStringLiteral("data.vtk"));
  m_Bridge->reload();
  ASSERT_EQ(m_Bridge->dataSources().size(), 1);
  ASSERT_EQ(m_Bridge->dataSources().front(), source);
  expectUnstructuredFixture(*widget); // without asking for the panel again
}

TEST_F(DatasetInfoWidgetTest, DataViewPanelFollowsItsInputAcrossAReload)
{
  VXDataSource* source = importCopy(QStringLiteral("legacy_image.vtk"), QStringLiteral("data.vtk"));
  ASSERT_NE(source, nullptr);
  ASSERT_TRUE(m_Pipeline.addRepresentation(source, VXRepresentation::Outline));
  const QList<VXRepresentation*> views = source->findChildren<VXRepresentation*>();
  ASSERT_FALSE(views.isEmpty());
  VXRepresentation* view = views.back();
  QSharedPointer<VXDatasetInfoWidget> widget = view->getDataSetInfoWidget();
  ASSERT_FALSE(widget.isNull());
  EXPECT_EQ(widget, view->getDataSetInfoWidget());
  EXPECT_EQ(widget->itemPath(), view->pathName());
  expectImageFixture(*widget, QStringLiteral("vtkStructuredPoints"));

  overwrite(QStringLiteral("legacy_ascii.vtk"), QStringLiteral("data.vtk"));
  m_Bridge->reload();
  settle();
  expectUnstructuredFixture(*widget);
}

TEST_F(DatasetInfoWidgetTest, DataViewPanelFollowsARunOfItsProducer)
{
  // A dataset changed in place reaches the panel when the producer runs again for a render.
  VXDataSource* source = importCopy(QStringLiteral("image.vti"), QStringLiteral("image.vti"));
  ASSERT_NE(source, nullptr);
  ASSERT_TRUE(m_Pipeline.addRepresentation(source, VXRepresentation::Outline));
  VXRepresentation* view = source->findChildren<VXRepresentation*>().back();
  QSharedPointer<VXDatasetInfoWidget> widget = view->getDataSetInfoWidget();
  expectImageFixture(*widget);

  vtkDataArray* density = source->getOutput()->GetPointData()->GetArray("Density");
  ASSERT_NE(density, nullptr);
  density->SetComponent(3, 0, 100.0);
  density->Modified();
  source->getOutput()->Modified();
  m_Grid.activeView()->getVisualizationWidget()->render();
  settle();
  ASSERT_GE(widget->arrayTable()->rowCount(), 1);
  EXPECT_EQ(widget->arrayTable()->item(0, VXDatasetInfoWidget::RangeColumn)->text(),
            QStringLiteral("[0, 100]"));
}

TEST(DatasetInfoWidget, EachComponentHasItsRangeAndFieldArraysAreListed)
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(3, 1, 1);
  vtkNew<vtkDoubleArray> vectors;
  vectors->SetName("Vectors");
  vectors->SetNumberOfComponents(3);
  vectors->InsertNextTuple3(1.0, -2.0, 0.25);
  vectors->InsertNextTuple3(4.0, 5.0, 0.25);
  vectors->InsertNextTuple3(-1.0, 3.0, 0.25);
  image->GetPointData()->AddArray(vectors);
  vtkNew<vtkStringArray> notes;
  notes->SetName("Notes");
  notes->InsertNextValue("made by hand");
  image->GetFieldData()->AddArray(notes);
  vtkNew<vtkIntArray> empty;
  empty->SetName("Empty");
  image->GetFieldData()->AddArray(empty);

  VXDatasetInfoWidget widget;
  widget.setDataSet(image);
  widget.updateInfo();
  EXPECT_EQ(widget.summaryValue(QStringLiteral("Cells")), QStringLiteral("2"));
  EXPECT_EQ(tableRows(widget),
            QStringList({QStringLiteral("Vectors|Point|double|3|[-1, 4]; [-2, 5]; [0.25, 0.25]"),
                         QStringLiteral("Notes|Field|string|1|"), QStringLiteral("Empty|Field|int|1|")}));
}

TEST(DatasetInfoWidget, NoDataSetOrAGoneOneIsShownAsSuch)
{
  VXDatasetInfoWidget widget;
  widget.updateInfo();
  EXPECT_EQ(widget.summaryValue(QStringLiteral("Type")), QStringLiteral("No dataset"));
  EXPECT_EQ(widget.arrayTable()->rowCount(), 0);

  {
    auto image = vtkSmartPointer<vtkImageData>::New();
    image->SetDimensions(2, 2, 1);
    vtkNew<vtkDoubleArray> values;
    values->SetName("Values");
    values->SetNumberOfTuples(4);
    values->Fill(2.0);
    image->GetPointData()->AddArray(values);
    widget.setDataSet(image);
    widget.updateInfo();
    EXPECT_EQ(widget.arrayTable()->rowCount(), 1);
  }
  // The panel does not keep a replaced dataset alive.
  EXPECT_EQ(widget.dataSet(), nullptr);
  widget.updateInfo();
  EXPECT_EQ(widget.summaryValue(QStringLiteral("Type")), QStringLiteral("No dataset"));
  EXPECT_EQ(widget.arrayTable()->rowCount(), 0);
  EXPECT_TRUE(widget.summaryValue(QStringLiteral("Points")).isEmpty());
}

TEST(DatasetInfoWidget, MemoryIsShownInTheLargestFittingUnit)
{
  EXPECT_EQ(VXDatasetInfoWidget::FormatMemory(512), QStringLiteral("512 B"));
  EXPECT_EQ(VXDatasetInfoWidget::FormatMemory(1536), QStringLiteral("1.50 KiB"));
  EXPECT_EQ(VXDatasetInfoWidget::FormatMemory(3.0 * 1024 * 1024), QStringLiteral("3.00 MiB"));
  EXPECT_EQ(VXDatasetInfoWidget::FormatMemory(5.0 * 1024 * 1024 * 1024 * 1024),
            QStringLiteral("5120.00 GiB"));
}
