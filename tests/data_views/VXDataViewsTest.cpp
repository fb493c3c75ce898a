// The outline, points, wireframe and surface views in real render windows of a view grid.
#include "colour/VXLookupTable.h"
#include "common/ZRImageBaseline.h"
#include "data_views/VXOutlineRepPimpl.h"
#include "data_views/VXSurfaceRep.h"
#include "data_views/VXSurfaceRepPimpl.h"
#include "data_views/ZRVtkModuleConstants.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "platform/ZRPreferences.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <vtkActor.h>
#include <vtkAlgorithm.h>
#include <vtkCellData.h>
#include <vtkCommand.h>
#include <vtkDoubleArray.h>
#include <vtkIntArray.h>
#include <vtkPointData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkRenderer.h>
#include <vtkSphereSource.h>
#include <vtkXMLPolyDataWriter.h>

#include <QApplication>
#include <QClipboard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "DataViewTestData.h"

#include <gtest/gtest.h>

#include <set>

namespace
{
class DataViewsTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    VXPipeline::setDefaultTriangleRepType(VXRepresentation::Surface);
    m_Grid.resize(400, 300);
    m_Grid.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Grid));
    m_Pipeline.setActiveViewWidget(m_Grid.activeView());
    m_Bridge = m_Pipeline.importFile(DataViewTestData::WriteSphere(m_Dir.filePath("sphere.vtp")));
    ASSERT_EQ(m_Bridge->dataSources().size(), 1);
    m_DataSource = m_Bridge->dataSources().front();
    m_Grid.activeView()->getVisualizationWidget()->resetCamera();
    DataViewTestData::Settle();
  }

  void TearDown() override { VXPipeline::setDefaultTriangleRepType(VXRepresentation::Outline); }

  VXSurfaceRep* surface() const
  {
    const QList<VXSurfaceRep*> views = m_DataSource->findChildren<VXSurfaceRep*>();
    return views.size() == 1 ? views.front() : nullptr;
  }

  VXSurfaceRepPimpl* surfaceIn(VXAbstractViewWidget* view) const
  {
    return surface() != nullptr ? dynamic_cast<VXSurfaceRepPimpl*>(surface()->implementation(view)) : nullptr;
  }

  VXAbstractViewWidget* first() const { return m_Grid.allViews().front(); }

  QImage frame(VXAbstractViewWidget* view)
  {
    DataViewTestData::Settle();
    return view->getVisualizationWidget()->captureViewImage(false, QColor());
  }

  QTemporaryDir m_Dir;
  VXViewGridWidget m_Grid;
  VXPipeline m_Pipeline;
  VXBridgeObject* m_Bridge = nullptr;
  VXDataSource* m_DataSource = nullptr;
};
} // namespace

TEST_F(DataViewsTest, DefaultViewDrawsInTheActiveWindow)
{
  ASSERT_NE(surface(), nullptr);
  VXSurfaceRepPimpl* view = surfaceIn(first());
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(surface()->name(), QStringLiteral("Surface Representation"));
  EXPECT_TRUE(first()->getVisualizationWidget()->getRenderer()->HasViewProp(view->getActor()));
  EXPECT_EQ(view->getActor()->GetProperty()->GetRepresentation(), VTK_SURFACE);
  EXPECT_TRUE(surface()->isVisible());
  // Solid colour until an array is chosen.
  EXPECT_TRUE(view->isUsingSolidColor());
  EXPECT_FALSE(view->getMapper()->GetScalarVisibility());
  EXPECT_EQ(surface()->outputPort(), m_DataSource->outputPort());
}

TEST_F(DataViewsTest, ColoursByArrayComponentOrMagnitude)
{
  VXSurfaceRepPimpl* view = surfaceIn(first());
  ASSERT_NE(view, nullptr);
  vtkMapper* mapper = view->getMapper();
  view->setActiveArray(QStringLiteral("FeatureIds"));
  EXPECT_TRUE(mapper->GetScalarVisibility());
  EXPECT_EQ(mapper->GetScalarMode(), VTK_SCALAR_MODE_USE_CELL_FIELD_DATA);
  EXPECT_EQ(view->lookupTable()->getRange(), (std::array<double, 2>{1.0, 400.0}));

  view->setActiveArray(QStringLiteral("Velocity"));
  EXPECT_EQ(mapper->GetScalarMode(), VTK_SCALAR_MODE_USE_POINT_FIELD_DATA);
  vtkColorTransferFunction* table = view->lookupTable()->getColorTransferFunction();
  EXPECT_EQ(table->GetVectorMode(), vtkScalarsToColors::MAGNITUDE);
  double magnitude[2];
  view->inputDataSet()->GetPointData()->GetArray("Velocity")->GetRange(magnitude, -1);
  EXPECT_DOUBLE_EQ(view->lookupTable()->getRange()[1], magnitude[1]);

  view->setActiveComponent(1);
  EXPECT_EQ(table->GetVectorMode(), vtkScalarsToColors::COMPONENT);
  EXPECT_EQ(table->GetVectorComponent(), 1);
  double second[2];
  view->inputDataSet()->GetPointData()->GetArray("Velocity")->GetRange(second, 1);
  EXPECT_NE(second[1], magnitude[1]);
  EXPECT_DOUBLE_EQ(view->lookupTable()->getRange()[1], second[1]);
  // Another array starts at its magnitude again.
  view->setActiveArray(QStringLiteral("FeatureIds"));
  EXPECT_EQ(view->activeComponent(), VXPointsRepPimpl::k_Magnitude);

  // A custom range stays through a reload; the data range follows the data otherwise.
  view->setCustomRange(0.0, 1000.0);
  surface()->receivePipelineOutputReloaded();
  EXPECT_EQ(view->lookupTable()->getRange(), (std::array<double, 2>{0.0, 1000.0}));
  view->useDataRange();
  EXPECT_EQ(view->lookupTable()->getRange(), (std::array<double, 2>{1.0, 400.0}));
}

TEST_F(DataViewsTest, SparseFeatureIdsEachGetTheirOwnCategory)
{
  VXSurfaceRepPimpl* view = surfaceIn(first());
  ASSERT_NE(view, nullptr);
  view->setActiveArray(QStringLiteral("FeatureIds"));
  view->setInterpretValuesAsCategories(true);
  vtkColorTransferFunction* table = view->lookupTable()->getColorTransferFunction();
  EXPECT_EQ(table->GetIndexedLookup(), 1);
  ASSERT_EQ(table->GetNumberOfAnnotatedValues(), 3);
  std::set<std::array<double, 3>> colours;
  for (double id : {1.0, 7.0, 400.0})
  {
    std::array<double, 3> rgb{};
    table->GetColor(id, rgb.data());
    colours.insert(rgb);
  }
  EXPECT_EQ(colours.size(), 3u);
  EXPECT_TRUE(ZRTest::MatchesBaseline(frame(first()), QStringLiteral(ZR_DATA_VIEWS_BASELINE_DIR),
                                      QStringLiteral("surface-categories"), 10.0));
  // Back to the continuous map.
  view->setInterpretValuesAsCategories(false);
  EXPECT_EQ(table->GetIndexedLookup(), 0);
  EXPECT_EQ(view->lookupTable()->getRange(), (std::array<double, 2>{1.0, 400.0}));
}

TEST_F(DataViewsTest, FramesOfColouredAndInvertedSurfaces)
{
  VXSurfaceRepPimpl* view = surfaceIn(first());
  ASSERT_NE(view, nullptr);
  view->setActiveArray(QStringLiteral("Velocity"));
  EXPECT_TRUE(ZRTest::MatchesBaseline(frame(first()), QStringLiteral(ZR_DATA_VIEWS_BASELINE_DIR),
                                      QStringLiteral("surface-velocity-magnitude"), 10.0));
  view->setColorMapInverted(true);
  EXPECT_TRUE(view->lookupTable()->isInverted());
  EXPECT_TRUE(ZRTest::MatchesBaseline(frame(first()), QStringLiteral(ZR_DATA_VIEWS_BASELINE_DIR),
                                      QStringLiteral("surface-velocity-inverted"), 10.0));
}

TEST_F(DataViewsTest, SplitWindowCopiesSettingsHiddenAndThenGoesItsOwnWay)
{
  VXSurfaceRepPimpl* left = surfaceIn(first());
  ASSERT_NE(left, nullptr);
  left->setActiveArray(QStringLiteral("FeatureIds"));
  left->setOpacity(40);
  left->setBackFaceCulling(true);
  m_Grid.addColumn(first());
  DataViewTestData::Settle();
  ASSERT_EQ(m_Grid.allViews().size(), 2);
  VXAbstractViewWidget* second = m_Grid.allViews().back();
  VXSurfaceRepPimpl* right = surfaceIn(second);
  ASSERT_NE(right, nullptr);
  EXPECT_FALSE(right->isVisible());
  EXPECT_EQ(right->getOpacity(), 40);
  EXPECT_EQ(right->activeArray(), QStringLiteral("FeatureIds"));
  EXPECT_TRUE(right->backFaceCulling());
  EXPECT_TRUE(second->getVisualizationWidget()->getRenderer()->HasViewProp(right->getActor()));

  right->setOpacity(90);
  right->setActiveArray(ZRVtkModule::constants::k_SolidColor);
  EXPECT_EQ(left->getOpacity(), 40);
  EXPECT_EQ(left->activeArray(), QStringLiteral("FeatureIds"));
  EXPECT_TRUE(left->getMapper()->GetScalarVisibility());
  EXPECT_FALSE(right->getMapper()->GetScalarVisibility());

  // Only the first window's implementation may be given a port.
  m_Grid.addRow(second);
  DataViewTestData::Settle();
  VXAbstractViewWidget* third = m_Grid.allViews().back();
  surface()->removeModuleInstance(third);
  EXPECT_FALSE(surface()->addViewWidgetSplit(nullptr, third, m_DataSource->outputPort()));
  EXPECT_TRUE(surface()->addViewWidgetSplit(nullptr, third, nullptr));

  // A closed window takes its implementation with it.
  const size_t before = surface()->getDataViewSplits().size();
  surface()->removeModuleInstance(second);
  EXPECT_EQ(surface()->getDataViewSplits().size(), before - 1);
  EXPECT_EQ(surface()->implementation(second), nullptr);
}

TEST_F(DataViewsTest, SettingsTravelBetweenWindowsThroughTheClipboard)
{
  VXSurfaceRepPimpl* left = surfaceIn(first());
  ASSERT_NE(left, nullptr);
  m_Grid.addColumn(first());
  DataViewTestData::Settle();
  VXAbstractViewWidget* second = m_Grid.allViews().back();
  VXSurfaceRepPimpl* right = surfaceIn(second);
  ASSERT_NE(right, nullptr);

  left->setActiveArray(QStringLiteral("Velocity"));
  left->setActiveComponent(0);
  left->setNanColor(Qt::magenta);
  left->setLineSize(3);
  m_Pipeline.setActiveViewWidget(first());
  surface()->copyActiveSettings();
  const nlohmann::json copied = nlohmann::json::parse(QApplication::clipboard()->text().toStdString());
  EXPECT_EQ(copied["active_array"], "Velocity");
  EXPECT_EQ(copied["line_size"], 3);

  m_Pipeline.setActiveViewWidget(second);
  surface()->pasteToActiveSettings();
  EXPECT_EQ(right->activeArray(), QStringLiteral("Velocity"));
  EXPECT_EQ(right->activeComponent(), 0);
  EXPECT_EQ(right->nanColor(), QColor(Qt::magenta));
  EXPECT_EQ(right->lineSize(), 3);
  EXPECT_EQ(right->lookupTable()->getColorTransferFunction()->GetVectorComponent(), 0);

  // Malformed text and keys of the wrong type: a message, and nothing changed.
  QSignalSpy messages(&m_Pipeline, &VXPipeline::sendOutputMessage);
  for (const char* bad : {"{\"line_size\": ", "{\"line_size\": 9, \"opacity_percent\": \"half\"}"})
  {
    QApplication::clipboard()->setText(QString::fromLatin1(bad));
    surface()->pasteToActiveSettings();
    EXPECT_EQ(right->lineSize(), 3) << bad;
    EXPECT_EQ(right->getOpacity(), 100) << bad;
  }
  ASSERT_EQ(messages.count(), 2);
  EXPECT_TRUE(messages.front().front().toString().startsWith(QStringLiteral("Cannot paste settings into")));
}

TEST_F(DataViewsTest, StateRecordBringsEachWindowBack)
{
  VXSurfaceRepPimpl* view = surfaceIn(first());
  ASSERT_NE(view, nullptr);
  view->setActiveArray(QStringLiteral("FeatureIds"));
  view->setInterpretValuesAsCategories(true);
  view->setOpacity(55);
  const QMap<VXAbstractViewWidget*, int> indexes = {{first(), 0}};
  nlohmann::json record;
  surface()->write(record, indexes);
  ASSERT_EQ(record["rep_view_implementations"].size(), 1u);
  EXPECT_EQ(record["rep_view_implementations"][0]["render_window_index"], 0);

  VXSurfaceRep restored;
  restored.read(record, indexes);
  auto* again = dynamic_cast<VXSurfaceRepPimpl*>(restored.implementation(first()));
  ASSERT_NE(again, nullptr);
  EXPECT_EQ(again->getOpacity(), 55);
  EXPECT_EQ(again->activeArray(), QStringLiteral("FeatureIds"));
  EXPECT_TRUE(again->interpretValuesAsCategories());
  EXPECT_EQ(restored.name(), surface()->name());
}

TEST_F(DataViewsTest, CameraMovesDrawTheDecimatedSurfaceOnlyWhenAskedFor)
{
  VXSurfaceRepPimpl* view = surfaceIn(first());
  ASSERT_NE(view, nullptr);
  vtkRenderWindowInteractor* interactor = first()->getVisualizationWidget()->getRenderWindowInteractor();
  ASSERT_NE(interactor, nullptr);
  vtkAlgorithm* original = view->getMapper()->GetInputAlgorithm();
  const vtkIdType cells = view->inputDataSet()->GetNumberOfCells();

  ZRPreferences::Instance()->setDisableDecimation(false);
  // Off by default: a press leaves the full surface.
  interactor->InvokeEvent(vtkCommand::LeftButtonPressEvent);
  EXPECT_EQ(view->getMapper()->GetInputAlgorithm(), original);
  interactor->InvokeEvent(vtkCommand::LeftButtonReleaseEvent);

  view->setUseDecimationOnInteraction(true);
  EXPECT_FALSE(view->isDecimationStale());
  interactor->InvokeEvent(vtkCommand::LeftButtonPressEvent);
  vtkAlgorithm* decimated = view->getMapper()->GetInputAlgorithm();
  ASSERT_NE(decimated, original);
  decimated->Update();
  const vtkIdType fewer = vtkDataSet::SafeDownCast(decimated->GetOutputDataObject(0))->GetNumberOfCells();
  EXPECT_GT(fewer, 0);
  EXPECT_LT(fewer, cells);
  interactor->InvokeEvent(vtkCommand::EndInteractionEvent);
  EXPECT_EQ(view->getMapper()->GetInputAlgorithm(), original);

  // The preference that turns decimation off wins over the view's setting.
  interactor->InvokeEvent(vtkCommand::LeftButtonReleaseEvent);
  ZRPreferences::Instance()->setDisableDecimation(true);
  interactor->InvokeEvent(vtkCommand::LeftButtonPressEvent);
  EXPECT_EQ(view->getMapper()->GetInputAlgorithm(), original);
  interactor->InvokeEvent(vtkCommand::LeftButtonReleaseEvent);
  ZRPreferences::Instance()->setDisableDecimation(false);

  // A split window takes the setting with the decimated geometry ready.
  m_Grid.addColumn(first());
  DataViewTestData::Settle();
  VXSurfaceRepPimpl* copy = surfaceIn(m_Grid.allViews().back());
  ASSERT_NE(copy, nullptr);
  EXPECT_TRUE(copy->useDecimationOnInteraction());
  EXPECT_FALSE(copy->isDecimationStale());
}
