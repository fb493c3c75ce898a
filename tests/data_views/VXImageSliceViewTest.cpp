// The image slice view in real render windows: the cells of an image slice by slice along each axis,
// linking across windows, animation, state records and the cell-index picking shader.
#include "colour/VXArrayHistogramWidget.h"
#include "colour/VXLookupTable.h"
#include "common/ZRImageBaseline.h"
#include "data_views/VXImageSliceFilter.h"
#include "data_views/VXImageSliceRep.h"
#include "data_views/VXImageSliceRepPimpl.h"
#include "data_views/VXOpenGLImageSliceMapper.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "pipeline/VXPipelineModel.h"
#include "platform/ZRComboBox.h"
#include "platform/ZRSpinBox.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXPickerCallback.h"
#include "views/VXViewGridWidget.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <vtkActor.h>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkHardwareSelector.h>
#include <vtkImageData.h>
#include <vtkImageSlice.h>
#include <vtkMapper.h>
#include <vtkPointData.h>
#include <vtkRenderWindow.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkRenderer.h>

#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "DataViewTestData.h"

#include <gtest/gtest.h>

#include <numeric>

using ZRVtkModule::constants::SliceDirection;

namespace
{
const QString k_Cells = QStringLiteral(ZR_TEST_DATA_DIR "/vtk/slice_cells.vti");
const QString k_CoarseCells = QStringLiteral(ZR_TEST_DATA_DIR "/vtk/slice_cells_coarse.vti");
const QString k_Empty = QStringLiteral(ZR_TEST_DATA_DIR "/vtk/empty_image.vti");

class ImageSliceViewTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    m_Grid.resize(400, 300);
    m_Grid.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Grid));
    m_Pipeline.setActiveViewWidget(m_Grid.activeView());
  }

  // Imports the file and adds an image slice view to its first data source in the active window.
  VXImageSliceRepPimpl* sliceOf(const QString& path)
  {
    VXBridgeObject* bridge = m_Pipeline.importFile(path);
    if (bridge == nullptr || bridge->dataSources().empty())
    {
      return nullptr;
    }
    VXDataSource* source = bridge->dataSources().front();
    if (!m_Pipeline.addRepresentation(source, VXRepresentation::ImageSlice))
    {
      return nullptr;
    }
    const QList<VXImageSliceRep*> views = source->findChildren<VXImageSliceRep*>();
    DataViewTestData::Settle();
    return views.isEmpty() ? nullptr
                           : qobject_cast<VXImageSliceRepPimpl*>(views.back()->implementation(first()));
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
};

double valueOnScreen(VXImageSliceRepPimpl* slice)
{
  vtkImageData* image = slice->sliceImage();
  return image->GetPointData()->GetScalars()->GetTuple1(0);
}
} // namespace

TEST_F(ImageSliceViewTest, CellsOfTheImageBecomeThePointsOfTheSliceWithoutACopy)
{
  VXImageSliceRepPimpl* slice = sliceOf(k_Cells);
  ASSERT_NE(slice, nullptr);
  ASSERT_TRUE(slice->hasImage());
  vtkImageData* input = slice->inputImage();
  vtkImageData* drawn = slice->sliceImage();
  int extent[6];
  drawn->GetExtent(extent);
  EXPECT_EQ((std::array<int, 6>{extent[0], extent[1], extent[2], extent[3], extent[4], extent[5]}),
            (std::array<int, 6>{0, 7, 0, 5, 0, 3}));
  EXPECT_EQ(drawn->GetNumberOfCells(), 8 * 6 * 4);
  // The very arrays of the input, shared.
  EXPECT_EQ(drawn->GetPointData()->GetArray("CellIndex"), input->GetCellData()->GetArray("CellIndex"));
  EXPECT_EQ(slice->activeArray(), QStringLiteral("CellIndex"));
  EXPECT_EQ(slice->lookupTable()->getRange(), (std::array<double, 2>{0.0, 357.0}));
  // Half a cell on, so the points sit on the cells' centres.
  const double* position = slice->imageSlice()->GetPosition();
  EXPECT_DOUBLE_EQ(position[0], 0.5);
  EXPECT_DOUBLE_EQ(position[2], 0.5);
  EXPECT_TRUE(first()->getVisualizationWidget()->getRenderer()->HasViewProp(slice->imageSlice()));

  // Stepping through the slices draws other planes of the same image: nothing reruns or copies.
  const vtkMTimeType filterTime = slice->sliceFilter()->GetOutput()->GetMTime();
  for (int number = 0; number <= 3; ++number)
  {
    slice->setSliceNumber(number);
    frame(first());
    EXPECT_EQ(slice->sliceMapper()->GetSliceNumber(), number);
  }
  EXPECT_EQ(slice->sliceFilter()->GetOutput()->GetMTime(), filterTime);
  EXPECT_EQ(slice->sliceImage()->GetPointData()->GetArray("CellIndex"),
            input->GetCellData()->GetArray("CellIndex"));
}

TEST_F(ImageSliceViewTest, SliceChoiceByDirectionNumberAndPosition)
{
  VXImageSliceRepPimpl* slice = sliceOf(k_Cells);
  ASSERT_NE(slice, nullptr);
  EXPECT_EQ(slice->sliceDirection(), ZRVtkModule::constants::XYPlane);
  EXPECT_EQ(slice->getSliceDirectionBounds(), (std::array<int, 2>{0, 3}));
  EXPECT_EQ(slice->getNumSlices(), 3);
  slice->setSliceNumber(2);
  EXPECT_EQ(slice->sliceMapper()->GetOrientation(), 2);
  EXPECT_DOUBLE_EQ(slice->getSlicePosition(), 2.0);
  // Out of range numbers are clamped into the image.
  slice->setSliceNumber(99);
  EXPECT_EQ(slice->sliceNumber(), 3);
  slice->setSliceNumber(-4);
  EXPECT_EQ(slice->sliceNumber(), 0);

  slice->updateSliceDirection(ZRVtkModule::constants::YZPlane);
  EXPECT_EQ(slice->sliceMapper()->GetOrientation(), 0);
  EXPECT_EQ(slice->getSliceDirectionBounds(), (std::array<int, 2>{0, 7}));
  slice->updateSliceDirection(ZRVtkModule::constants::XZPlane);
  EXPECT_EQ(slice->sliceMapper()->GetOrientation(), 1);
  EXPECT_EQ(slice->getSliceDirectionBounds(), (std::array<int, 2>{0, 5}));

  // Positions along y (6 cells of 1): below the image the first slice, above it the last.
  EXPECT_EQ(slice->getSliceNumberAtPosition(-3.0), 0);
  EXPECT_EQ(slice->getSliceNumberAtPosition(42.0), 5);
  EXPECT_EQ(slice->getSliceNumberAtPosition(3.2), 3);
}

TEST_F(ImageSliceViewTest, FramesOfASliceAlongEachAxis)
{
  VXImageSliceRepPimpl* slice = sliceOf(k_Cells);
  ASSERT_NE(slice, nullptr);
  VXVisualizationWidget* window = first()->getVisualizationWidget();
  struct Case
  {
    SliceDirection direction;
    int number;
    void (VXVisualizationWidget::*camera)();
    const char* baseline;
  };
  const Case cases[] = {{ZRVtkModule::constants::XYPlane, 2, &VXVisualizationWidget::camZPlus, "slice-xy-2"},
                        {ZRVtkModule::constants::YZPlane, 5, &VXVisualizationWidget::camXPlus, "slice-yz-5"},
                        {ZRVtkModule::constants::XZPlane, 1, &VXVisualizationWidget::camYPlus, "slice-xz-1"}};
  for (const Case& c : cases)
  {
    slice->updateSliceDirection(c.direction);
    slice->setSliceNumber(c.number);
    (window->*c.camera)();
    window->resetCamera();
    EXPECT_TRUE(ZRTest::MatchesBaseline(frame(first()), QStringLiteral(ZR_DATA_VIEWS_BASELINE_DIR),
                                        QString::fromLatin1(c.baseline), 10.0))
        << c.baseline;
  }
}

TEST_F(ImageSliceViewTest, LinkedWindowsFollowASliceChangeByNumberOrPosition)
{
  VXPipelineModel model(&m_Pipeline, nullptr);
  VXImageSliceRepPimpl* left = sliceOf(k_Cells);
  ASSERT_NE(left, nullptr);
  m_Grid.addColumn(first());
  DataViewTestData::Settle();
  ASSERT_EQ(m_Grid.allViews().size(), 2);
  VXAbstractViewWidget* second = m_Grid.allViews().back();
  auto* right = qobject_cast<VXImageSliceRepPimpl*>(left->owner()->implementation(second));
  ASSERT_NE(right, nullptr);
  right->setVisibility(true);

  left->setLinkedSlices(true);
  right->setLinkedSlices(true);
  EXPECT_EQ(model.linkedSliceViews().size(), 2);
  left->setSliceNumber(3);
  EXPECT_EQ(right->sliceNumber(), 3);
  EXPECT_EQ(right->sliceMapper()->GetSliceNumber(), 3);
  right->setSliceNumber(1);
  EXPECT_EQ(left->sliceNumber(), 1);
  // The direction follows too.
  left->updateSliceDirection(ZRVtkModule::constants::YZPlane);
  EXPECT_EQ(right->sliceDirection(), ZRVtkModule::constants::YZPlane);
  left->updateSliceDirection(ZRVtkModule::constants::XYPlane);

  // A view of the same cells twice as thick follows by height with physical units.
  m_Pipeline.setActiveViewWidget(first());
  VXImageSliceRepPimpl* coarse = sliceOf(k_CoarseCells);
  ASSERT_NE(coarse, nullptr);
  coarse->setLinkedSlices(true);
  coarse->setLinkPhysicalUnits(true);
  EXPECT_TRUE(left->linkPhysicalUnits());
  left->setSliceNumber(2);
  EXPECT_EQ(coarse->sliceNumber(), 1);
  EXPECT_EQ(right->sliceNumber(), 2);

  // Unlinked views stay where they are.
  right->setLinkedSlices(false);
  left->setSliceNumber(0);
  EXPECT_EQ(right->sliceNumber(), 2);
  EXPECT_EQ(coarse->sliceNumber(), 0);
}

TEST_F(ImageSliceViewTest, PlayAllWrapsAndFlickerTogglesBetweenTwoSlices)
{
  VXImageSliceRepPimpl* slice = sliceOf(k_Cells);
  ASSERT_NE(slice, nullptr);
  slice->initializeSettingsWidget();
  slice->setSliceNumber(2);
  slice->animationDurationChanged(60.0); // the test steps, not the timer
  slice->startStopAnimation(true);
  EXPECT_TRUE(slice->isPlayingAll());
  EXPECT_EQ(slice->sliceNumber(), 3); // the first step comes at once
  slice->animationStep();
  EXPECT_EQ(slice->sliceNumber(), 0);
  EXPECT_EQ(valueOnScreen(slice), 0.0);
  slice->startStopAnimation(false);
  EXPECT_FALSE(slice->isPlayingAll());
  slice->animationStep();
  EXPECT_EQ(slice->sliceNumber(), 0);

  slice->toggleLeftSpinBoxValueChanged(1);
  slice->toggleRightSpinBoxValueChanged(3);
  slice->startStopFlicker(true);
  const int firstStep = slice->sliceNumber();
  slice->animationStep();
  const int secondStep = slice->sliceNumber();
  EXPECT_EQ(std::set<int>({firstStep, secondStep}), (std::set<int>{1, 3}));
  slice->animationStep();
  EXPECT_EQ(slice->sliceNumber(), firstStep);
  slice->startStopFlicker(false);
  EXPECT_FALSE(slice->isFlickering());
}

TEST_F(ImageSliceViewTest, HistogramOfTheWholeArrayOrOfTheVisibleSlice)
{
  VXImageSliceRepPimpl* slice = sliceOf(k_Cells);
  ASSERT_NE(slice, nullptr);
  slice->initializeSettingsWidget();
  VXArrayHistogramWidget* histogram = slice->histogramWidget();
  ASSERT_NE(histogram, nullptr);
  const auto total = [histogram]()
  {
    return std::accumulate(histogram->counts().begin(), histogram->counts().end(), std::uint64_t{0}) +
           histogram->skippedValues();
  };
  slice->setHistogramMode(VXImageSliceRepPimpl::HistogramFull);
  EXPECT_EQ(total(), 8u * 6u * 4u);
  slice->setHistogramMode(VXImageSliceRepPimpl::HistogramVisible);
  EXPECT_EQ(total(), 8u * 6u);
  EXPECT_EQ(histogram->range()[0], 0.0);
  slice->sliceSpinBoxValueChanged(3);
  EXPECT_EQ(total(), 8u * 6u);
  EXPECT_EQ(histogram->range()[0], 300.0);
  slice->updateSliceDirection(ZRVtkModule::constants::YZPlane);
  slice->sliceSpinBoxValueChanged(0);
  EXPECT_EQ(total(), 6u * 4u);
}

TEST_F(ImageSliceViewTest, StateSurvivesSaveLoadSaveAndClampsTheSlice)
{
  VXImageSliceRepPimpl* slice = sliceOf(k_Cells);
  ASSERT_NE(slice, nullptr);
  slice->updateSliceDirection(ZRVtkModule::constants::XZPlane);
  slice->setSliceNumber(4);
  slice->setActiveArray(QStringLiteral("Phase"));
  slice->setColorMapInverted(true);
  slice->setCustomRange(1.0, 2.5);
  slice->toggleLeftSpinBoxValueChanged(1);
  slice->toggleRightSpinBoxValueChanged(5);
  slice->animationDurationChanged(1.25);
  slice->setHistogramMode(VXImageSliceRepPimpl::HistogramVisible);
  slice->setOpacity(40);
  nlohmann::json saved = nlohmann::json::object();
  slice->write(saved);
  EXPECT_EQ(saved.at("slice_dir"), 2);
  EXPECT_EQ(saved.at("slice_num"), 4);
  EXPECT_EQ(saved.at("generate_histogram_data"), 2);
  EXPECT_FALSE(saved.contains("opacity_percent")); // a default setting only

  VXImageSliceRepPimpl* other = sliceOf(k_Cells);
  ASSERT_NE(other, nullptr);
  ASSERT_NE(other, slice);
  other->read(saved);
  nlohmann::json again = nlohmann::json::object();
  other->write(again);
  EXPECT_EQ(again, saved);
  EXPECT_EQ(other->sliceMapper()->GetOrientation(), 1);
  EXPECT_EQ(other->sliceMapper()->GetSliceNumber(), 4);
  EXPECT_EQ(other->getOpacity(), 100);

  // A slice beyond the data is clamped at load.
  saved["slice_num"] = 99;
  other->read(saved);
  EXPECT_EQ(other->sliceNumber(), 5);
}

TEST_F(ImageSliceViewTest, AnEmptyImageGivesAViewWithoutSlices)
{
  VXBridgeObject* bridge = m_Pipeline.importFile(k_Empty);
  ASSERT_NE(bridge, nullptr);
  if (bridge->dataSources().empty())
  {
    GTEST_SKIP() << "the empty image gave no data source";
  }
  VXDataSource* source = bridge->dataSources().front();
  ASSERT_TRUE(m_Pipeline.addRepresentation(source, VXRepresentation::ImageSlice));
  auto* slice = qobject_cast<VXImageSliceRepPimpl*>(
      source->findChildren<VXImageSliceRep*>().front()->implementation(first()));
  ASSERT_NE(slice, nullptr);
  EXPECT_FALSE(slice->hasImage());
  EXPECT_EQ(slice->getSliceDirectionBounds(), (std::array<int, 2>{0, 0}));
  slice->setSliceNumber(3);
  slice->initializeSettingsWidget();
  slice->startStopAnimation(true);
  slice->startStopAnimation(false);
  EXPECT_FALSE(frame(first()).isNull());
}

TEST_F(ImageSliceViewTest, PickingShaderReportsTheCellUnderThePixel)
{
  VXImageSliceRepPimpl* slice = sliceOf(k_Cells);
  ASSERT_NE(slice, nullptr);
  slice->setSliceNumber(2);
  VXVisualizationWidget* window = first()->getVisualizationWidget();
  window->camZPlus();
  window->resetCamera();
  frame(first());
  vtkRenderer* renderer = window->getRenderer();
  const int* size = renderer->GetRenderWindow()->GetSize();

  // Cell (i, j) = (6, 1) of slice 2, found on screen by its world centre.
  const double centre[3] = {6.5, 1.5, 2.5};
  renderer->SetWorldPoint(centre[0], centre[1], centre[2], 1.0);
  renderer->WorldToDisplay();
  const double* display = renderer->GetDisplayPoint();
  const int x = static_cast<int>(display[0]);
  const int y = static_cast<int>(display[1]);
  ASSERT_TRUE(x > 0 && y > 0 && x < size[0] && y < size[1]);

  image_slice_utilities::SubDividedTextureExtents().clear();
  vtkNew<vtkHardwareSelector> selector;
  selector->SetRenderer(renderer);
  selector->SetFieldAssociation(vtkDataObject::FIELD_ASSOCIATION_CELLS);
  selector->SetArea(0, 0, size[0] - 1, size[1] - 1);
  ASSERT_TRUE(selector->CaptureBuffers());
  const unsigned int pixel[2] = {static_cast<unsigned int>(x), static_cast<unsigned int>(y)};
  const vtkHardwareSelector::PixelInformation info = selector->GetPixelInformation(pixel);
  selector->ClearBuffers();
  ASSERT_TRUE(info.Valid);
  EXPECT_EQ(info.Prop, slice->imageSlice());
  // Our selector hands each slice mapper the pieces its image was drawn in.
  ASSERT_FALSE(slice->sliceMapper()->getExtents().empty());
  int ijk[3];
  ASSERT_TRUE(slice->sliceMapper()->ijkFromSelection(info.AttributeID, ijk));
  EXPECT_EQ((std::array<int, 3>{ijk[0], ijk[1], ijk[2]}), (std::array<int, 3>{6, 1, 2}));
  const long long id = slice->sliceMapper()->cellIdFromSelection(info.AttributeID);
  EXPECT_EQ(slice->inputImage()->GetCellData()->GetArray("CellIndex")->GetTuple1(id), 6 + 10 * 1 + 100 * 2);
  // An index past the list of pieces is refused.
  EXPECT_FALSE(slice->sliceMapper()->ijkFromSelection(0x1000000LL * 7, ijk));
}

TEST_F(ImageSliceViewTest, HoverOverTheSliceNamesTheImageCellAndItsArrays)
{
  VXImageSliceRepPimpl* slice = sliceOf(k_Cells);
  ASSERT_NE(slice, nullptr);
  slice->setSliceNumber(2);
  VXVisualizationWidget* window = first()->getVisualizationWidget();
  window->camZPlus();
  window->resetCamera();
  frame(first());
  window->toggleHoverCells(true);
  VXPickerCallback* picker = window->getPickerCallback();
  ASSERT_NE(picker, nullptr);
  vtkRenderer* renderer = window->getRenderer();

  // The mouse over the centre of cell (i, j) = (6, 1), as the hover widget's timer reports it.
  const double centre[3] = {6.5, 1.5, 2.5};
  renderer->SetWorldPoint(centre[0], centre[1], centre[2], 1.0);
  renderer->WorldToDisplay();
  const double* display = renderer->GetDisplayPoint();
  renderer->GetRenderWindow()->GetInteractor()->SetEventPosition(static_cast<int>(display[0]),
                                                                 static_cast<int>(display[1]));
  auto hoverText = [picker]() { return QString::fromStdString(picker->GeneratePickInfo()).split('\n'); };
  vtkImageData* image = slice->inputImage();
  auto expectCell = [image](const QStringList& lines, int i, int j, int k)
  {
    ASSERT_GE(lines.size(), 5) << lines.join('\n').toStdString();
    EXPECT_FALSE(lines.at(0).isEmpty());
    int ijk[3] = {i, j, k};
    const vtkIdType id = image->ComputeCellId(ijk);
    EXPECT_EQ(lines.at(1), QStringLiteral("    Cell Id: %1").arg(id));
    // The centre of the cell, where the slice shows it.
    EXPECT_EQ(lines.at(2), QStringLiteral("    Coords: (%1.5, %2.5, %3.5)").arg(i).arg(j).arg(k));
    EXPECT_TRUE(lines.contains(QStringLiteral("    CellIndex: %1").arg(i + 10 * j + 100 * k)))
        << lines.join('\n').toStdString();
    EXPECT_TRUE(lines.contains(
        QStringLiteral("    Phase: %1").arg(image->GetCellData()->GetArray("Phase")->GetTuple1(id))))
        << lines.join('\n').toStdString();
  };
  expectCell(hoverText(), 6, 1, 2);
  // The highlight outlines that cell of the image.
  vtkActor* highlight = picker->getCellHighlightActor();
  EXPECT_TRUE(highlight->GetVisibility());
  const double* bounds = highlight->GetMapper()->GetInput()->GetBounds();
  EXPECT_DOUBLE_EQ(bounds[0], 6.0);
  EXPECT_DOUBLE_EQ(bounds[1], 7.0);
  EXPECT_DOUBLE_EQ(bounds[2], 1.0);
  EXPECT_DOUBLE_EQ(bounds[3], 2.0);

  // The next slice under the same pixel: the buffers of the last one are not used again.
  slice->setSliceNumber(3);
  expectCell(hoverText(), 6, 1, 3);
  frame(first());
  expectCell(hoverText(), 6, 1, 3);
}

TEST_F(ImageSliceViewTest, PanelControlsDriveTheSliceAndFollowIt)
{
  VXPipelineModel model(&m_Pipeline, nullptr);
  VXImageSliceRepPimpl* slice = sliceOf(k_Cells);
  ASSERT_NE(slice, nullptr);
  slice->initializeSettingsWidget();
  QWidget* panel = slice->settingsWidget();
  ASSERT_NE(panel, nullptr);
  ZRComboBox* direction = nullptr;
  ZRComboBox* histogram = nullptr;
  for (ZRComboBox* box : panel->findChildren<ZRComboBox*>())
  {
    if (box->count() == 3 && box->itemText(0) == QStringLiteral("XYPlane"))
    {
      direction = box;
    }
    if (box->count() == 3 && box->itemText(2) == QStringLiteral("Generate Visible Data Histogram"))
    {
      histogram = box;
    }
  }
  ASSERT_NE(direction, nullptr);
  ASSERT_NE(histogram, nullptr);
  EXPECT_EQ(direction->itemText(1), QStringLiteral("YZPlane"));
  EXPECT_EQ(direction->itemText(2), QStringLiteral("XZPlane"));
  const QList<ZRSpinBox*> boxes = panel->findChildren<ZRSpinBox*>();
  ASSERT_EQ(boxes.size(), 3); // the slice number, then the two flicker slices
  ZRSpinBox* number = boxes.front();
  EXPECT_EQ(number->maximum(), 3);

  // Another direction resets the slice number control to the range of the new axis.
  direction->setCurrentIndex(1);
  EXPECT_EQ(slice->sliceDirection(), ZRVtkModule::constants::YZPlane);
  EXPECT_EQ(number->maximum(), 7);
  number->setValue(5);
  EXPECT_EQ(slice->sliceMapper()->GetSliceNumber(), 5);
  slice->setSliceNumber(2);
  EXPECT_EQ(number->value(), 2);

  auto* link = panel->findChild<QPushButton*>(QStringLiteral("linkSlicesButton"));
  auto* flicker = panel->findChild<QPushButton*>(QStringLiteral("toggleSlicesButton"));
  auto* playAll = panel->findChild<QPushButton*>(QStringLiteral("sliceAnimationButton"));
  ASSERT_TRUE(link != nullptr && flicker != nullptr && playAll != nullptr);
  EXPECT_EQ(link->text(), QStringLiteral("Link Slices"));
  EXPECT_EQ(flicker->text(), QStringLiteral("Play"));
  link->click();
  EXPECT_EQ(link->text(), QStringLiteral("Unlink Slices"));
  EXPECT_TRUE(model.linkedSliceViews().contains(slice));
  link->click();
  EXPECT_FALSE(model.linkedSliceViews().contains(slice));

  slice->animationDurationChanged(60.0);
  playAll->click();
  EXPECT_TRUE(slice->isPlayingAll());
  EXPECT_FALSE(number->isEnabled());
  EXPECT_FALSE(flicker->isEnabled());
  playAll->click();
  EXPECT_FALSE(slice->isPlayingAll());
  EXPECT_TRUE(number->isEnabled());
  EXPECT_TRUE(flicker->isEnabled());

  histogram->setCurrentIndex(2);
  EXPECT_EQ(slice->histogramMode(), VXImageSliceRepPimpl::HistogramVisible);
  // Shown in its section (collapsed at first), counting the 6 x 4 cells of the YZ plane on screen.
  EXPECT_FALSE(slice->histogramWidget()->isHidden());
  const std::vector<std::uint64_t>& counts = slice->histogramWidget()->counts();
  EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), std::uint64_t{0}) +
                slice->histogramWidget()->skippedValues(),
            6u * 4u);
}
