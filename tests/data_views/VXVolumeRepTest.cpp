// The volume view in a real render window: per-array colour and opacity maps, an image too large
// for the display's 3D textures, its state record and its messages.
#include "data_views/VXVolumeRep.h"
#include "colour/VXColorMapEditorWidget.h"
#include "colour/VXCustomRangeDialog.h"
#include "colour/VXLookupTable.h"
#include "common/ZRImageBaseline.h"
#include "data_views/VXVolumeRepPimpl.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "platform/ColorPresetsFile.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPiecewiseFunction.h>
#include <vtkPointData.h>
#include <vtkRenderer.h>
#include <vtkSmartVolumeMapper.h>
#include <vtkTable.h>
#include <vtkVolume.h>
#include <vtkVolumeProperty.h>
#include <vtkXMLImageDataWriter.h>

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "DataViewTestData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int k_Size = 24;

// A cube of k_Size^3 points: "Distance" from the centre, "Ramp" along x and a "Gradient" vector.
QString WriteImage(const QString& path)
{
  vtkNew<vtkImageData> image;
  image->SetDimensions(k_Size, k_Size, k_Size);
  image->SetSpacing(1.0, 1.0, 1.0);
  vtkNew<vtkFloatArray> distance;
  distance->SetName("Distance");
  vtkNew<vtkDoubleArray> ramp;
  ramp->SetName("Ramp");
  vtkNew<vtkDoubleArray> gradient;
  gradient->SetName("Gradient");
  gradient->SetNumberOfComponents(3);
  const double centre = (k_Size - 1) / 2.0;
  for (int z = 0; z < k_Size; ++z)
  {
    for (int y = 0; y < k_Size; ++y)
    {
      for (int x = 0; x < k_Size; ++x)
      {
        const double dx = x - centre;
        const double dy = y - centre;
        const double dz = z - centre;
        distance->InsertNextValue(static_cast<float>(std::sqrt(dx * dx + dy * dy + dz * dz)));
        ramp->InsertNextValue(100.0 + x);
        gradient->InsertNextTuple3(dx, 2.0 * dy, 0.0);
      }
    }
  }
  image->GetPointData()->AddArray(distance);
  image->GetPointData()->AddArray(ramp);
  image->GetPointData()->AddArray(gradient);
  vtkNew<vtkXMLImageDataWriter> writer;
  writer->SetInputData(image);
  writer->SetFileName(path.toLocal8Bit().constData());
  writer->Write();
  return path;
}

std::vector<std::array<double, 2>> Nodes(vtkPiecewiseFunction* function)
{
  std::vector<std::array<double, 2>> nodes;
  double node[4];
  for (int i = 0; i < function->GetSize(); ++i)
  {
    function->GetNodeValue(i, node);
    nodes.push_back({node[0], node[1]});
  }
  return nodes;
}

class VolumeViewTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    m_PreviousImageType = VXPipeline::getDefaultImageGeomRepType();
    VXPipeline::setDefaultImageGeomRepType(VXRepresentation::None);
    m_Grid.resize(400, 300);
    m_Grid.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Grid));
    m_Pipeline.setActiveViewWidget(m_Grid.activeView());
  }

  void TearDown() override
  {
    VXVolumeRepPimpl::setTextureSizeLimitOverride(0);
    VXPipeline::setDefaultImageGeomRepType(m_PreviousImageType);
  }

  VXVolumeRepPimpl* addVolume(const QString& file)
  {
    VXBridgeObject* bridge = m_Pipeline.importFile(file);
    if (bridge == nullptr || bridge->dataSources().size() != 1)
    {
      return nullptr;
    }
    m_DataSource = bridge->dataSources().front();
    m_Pipeline.addRepresentation(m_DataSource, VXRepresentation::Volume);
    const QList<VXVolumeRep*> views = m_DataSource->findChildren<VXVolumeRep*>();
    if (views.size() != 1)
    {
      return nullptr;
    }
    m_Volume = views.front();
    m_Grid.activeView()->getVisualizationWidget()->resetCamera();
    DataViewTestData::Settle();
    return dynamic_cast<VXVolumeRepPimpl*>(m_Volume->implementation(m_Grid.activeView()));
  }

  // Builds the panel, shows it, and gives its transfer function editor.
  VXColorMapEditorWidget* showEditor(VXVolumeRepPimpl* view)
  {
    m_Volume->settingsWidget();
    QWidget* panel = view->settingsWidget();
    if (panel == nullptr)
    {
      return nullptr;
    }
    panel->resize(360, 700);
    panel->show();
    DataViewTestData::Settle();
    return panel->findChild<VXColorMapEditorWidget*>();
  }

  QImage frame()
  {
    DataViewTestData::Settle();
    return m_Grid.activeView()->getVisualizationWidget()->captureViewImage(false, QColor());
  }

  QTemporaryDir m_Dir;
  VXViewGridWidget m_Grid;
  VXPipeline m_Pipeline;
  VXDataSource* m_DataSource = nullptr;
  VXVolumeRep* m_Volume = nullptr;
  VXRepresentation::Type m_PreviousImageType = VXRepresentation::Outline;
};
} // namespace

TEST_F(VolumeViewTest, DrawsTheFirstArrayThroughATransparentToOpaqueRamp)
{
  VXVolumeRepPimpl* view = addVolume(WriteImage(m_Dir.filePath("field.vti")));
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(m_Volume->name(), QStringLiteral("Volume Representation"));
  EXPECT_TRUE(m_Grid.activeView()->getVisualizationWidget()->getRenderer()->HasViewProp(view->volume()));
  EXPECT_EQ(view->activeArray(), QStringLiteral("Distance"));
  EXPECT_FALSE(view->isResampled());
  // The display's own limit: OpenGL guarantees at least 256 for 3D textures.
  EXPECT_GE(view->textureSizeLimit(), 256);

  vtkPiecewiseFunction* opacity = view->opacityFunctionOf(QStringLiteral("Distance"));
  ASSERT_NE(opacity, nullptr);
  double range[2];
  view->inputImage()->GetPointData()->GetArray("Distance")->GetRange(range);
  const auto nodes = Nodes(opacity);
  ASSERT_EQ(nodes.size(), 2u);
  EXPECT_DOUBLE_EQ(nodes[0][0], range[0]);
  EXPECT_DOUBLE_EQ(nodes[0][1], 0.0);
  EXPECT_DOUBLE_EQ(nodes[1][0], range[1]);
  EXPECT_DOUBLE_EQ(nodes[1][1], 1.0);
  EXPECT_EQ(view->volume()->GetProperty()->GetScalarOpacity(0), opacity);
  EXPECT_EQ(view->lookupTable()->getRange(), (std::array<double, 2>{range[0], range[1]}));
  EXPECT_TRUE(ZRTest::MatchesBaseline(frame(), QStringLiteral(ZR_DATA_VIEWS_BASELINE_DIR),
                                      QStringLiteral("volume-distance-ramp"), 10.0));
}

TEST_F(VolumeViewTest, EachArrayKeepsItsOwnColourMapAndOpacityFunction)
{
  VXVolumeRepPimpl* view = addVolume(WriteImage(m_Dir.filePath("field.vti")));
  ASSERT_NE(view, nullptr);
  vtkPiecewiseFunction* distanceOpacity = view->opacityFunctionOf(QStringLiteral("Distance"));
  VXLookupTable* distanceColours = view->colorMapOf(QStringLiteral("Distance"));
  ASSERT_NE(distanceOpacity, nullptr);
  // The user shapes the curve and inverts the map of this array.
  distanceOpacity->AddPoint(5.0, 0.8);
  distanceColours->invert();
  const auto edited = Nodes(distanceOpacity);

  view->setActiveArray(QStringLiteral("Ramp"));
  vtkPiecewiseFunction* rampOpacity = view->opacityFunctionOf(QStringLiteral("Ramp"));
  ASSERT_NE(rampOpacity, nullptr);
  EXPECT_NE(rampOpacity, distanceOpacity);
  EXPECT_EQ(view->volume()->GetProperty()->GetScalarOpacity(0), rampOpacity);
  EXPECT_EQ(Nodes(rampOpacity), (std::vector<std::array<double, 2>>{{100.0, 0.0}, {123.0, 1.0}}));
  EXPECT_EQ(view->lookupTable()->getRange(), (std::array<double, 2>{100.0, 123.0}));
  EXPECT_FALSE(view->lookupTable()->isInverted());

  view->setActiveArray(QStringLiteral("Distance"));
  EXPECT_EQ(view->opacityFunctionOf(QStringLiteral("Distance")), distanceOpacity);
  EXPECT_EQ(Nodes(distanceOpacity), edited);
  EXPECT_EQ(view->lookupTable(), distanceColours);
  EXPECT_TRUE(view->lookupTable()->isInverted());
  EXPECT_EQ(view->volume()->GetProperty()->GetScalarOpacity(0), distanceOpacity);
  EXPECT_EQ(view->volume()->GetProperty()->GetRGBTransferFunction(0),
            distanceColours->getColorTransferFunction());

  // Reset starts this array afresh: the ramp over its data range again.
  view->resetColorMap();
  EXPECT_EQ(Nodes(view->opacityFunctionOf(QStringLiteral("Distance"))).size(), 2u);
}

TEST_F(VolumeViewTest, VectorArraysAreDrawnByMagnitudeOrComponent)
{
  VXVolumeRepPimpl* view = addVolume(WriteImage(m_Dir.filePath("field.vti")));
  ASSERT_NE(view, nullptr);
  view->setActiveArray(QStringLiteral("Gradient"));
  EXPECT_EQ(view->volumeMapper()->GetVectorMode(), vtkSmartVolumeMapper::MAGNITUDE);
  view->setActiveComponent(1);
  EXPECT_EQ(view->volumeMapper()->GetVectorMode(), vtkSmartVolumeMapper::COMPONENT);
  EXPECT_EQ(view->volumeMapper()->GetVectorComponent(), 1);
  // Another array starts at its magnitude again.
  view->setActiveArray(QStringLiteral("Ramp"));
  EXPECT_EQ(view->activeComponent(), VXVolumeRepPimpl::k_Magnitude);
  EXPECT_EQ(view->volumeMapper()->GetVectorMode(), vtkSmartVolumeMapper::DISABLED);
}

TEST_F(VolumeViewTest, CustomRangeMovesTheOpacityNodesAndAZeroSpanIsSafe)
{
  VXVolumeRepPimpl* view = addVolume(WriteImage(m_Dir.filePath("field.vti")));
  ASSERT_NE(view, nullptr);
  view->setActiveArray(QStringLiteral("Ramp"));
  vtkPiecewiseFunction* opacity = view->opacityFunctionOf(QStringLiteral("Ramp"));
  opacity->AddPoint(111.5, 0.25); // the middle of 100..123
  view->rescaleToCustomRange(0.0, 46.0);
  EXPECT_TRUE(view->isUsingCustomRange());
  EXPECT_EQ(Nodes(opacity), (std::vector<std::array<double, 2>>{{0.0, 0.0}, {23.0, 0.25}, {46.0, 1.0}}));
  EXPECT_EQ(view->lookupTable()->getRange(), (std::array<double, 2>{0.0, 46.0}));
  EXPECT_EQ(view->customRangeDialog()->getRange(), (std::array<double, 2>{0.0, 46.0}));

  // A function collapsed onto one value is spread as if its span were 1.
  opacity->RemoveAllPoints();
  opacity->AddPoint(5.0, 0.5);
  view->setOpacityFunctionRange(QStringLiteral("Ramp"), 10.0, 20.0);
  const auto nodes = Nodes(opacity);
  ASSERT_EQ(nodes.size(), 1u);
  EXPECT_TRUE(std::isfinite(nodes[0][0]));
  EXPECT_DOUBLE_EQ(nodes[0][0], 10.0);

  view->rescaleToDataRange();
  EXPECT_FALSE(view->isUsingCustomRange());
  EXPECT_EQ(view->lookupTable()->getRange(), (std::array<double, 2>{100.0, 123.0}));
}

TEST_F(VolumeViewTest, AnImageOverTheTextureLimitIsDrawnResampledWithOneWarning)
{
  VXVolumeRepPimpl::setTextureSizeLimitOverride(10);
  QSignalSpy messages(&m_Pipeline, &VXPipeline::sendOutputMessage);
  VXVolumeRepPimpl* view = addVolume(WriteImage(m_Dir.filePath("field.vti")));
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->textureSizeLimit(), 10);
  ASSERT_TRUE(view->isResampled());
  int dims[3];
  view->renderedImage()->GetDimensions(dims);
  for (int axis = 0; axis < 3; ++axis)
  {
    EXPECT_LE(dims[axis], 10);
    EXPECT_GE(dims[axis], 8);
  }
  // The copy spans the same box, so the camera and the axes grid stay where they were.
  double inBounds[6];
  double outBounds[6];
  view->inputImage()->GetBounds(inBounds);
  view->renderedImage()->GetBounds(outBounds);
  for (int i = 0; i < 6; ++i)
  {
    EXPECT_NEAR(outBounds[i], inBounds[i], 1e-9);
  }
  ASSERT_EQ(messages.count(), 1);
  const QString warning = messages.front().front().toString();
  EXPECT_TRUE(warning.startsWith(QStringLiteral("Warning: ")));
  EXPECT_TRUE(warning.contains(QStringLiteral("24 x 24 x 24"))) << warning.toStdString();

  // Later reloads still draw the copy but do not repeat the warning.
  m_Volume->receivePipelineOutputReloaded();
  EXPECT_TRUE(view->isResampled());
  EXPECT_EQ(messages.count(), 1);

  // The panel says so.
  m_Volume->settingsWidget();
  auto* note = view->settingsWidget()->findChild<QLabel*>(QStringLiteral("resampleNoteLabel"));
  ASSERT_NE(note, nullptr);
  EXPECT_EQ(note->text(), view->resampleNote());
  EXPECT_FALSE(note->text().isEmpty());

  // Something is drawn: not a black (background only) window.
  const QImage image = frame();
  const QRgb background = image.pixel(2, 2);
  int drawn = 0;
  for (int y = 0; y < image.height(); y += 4)
  {
    for (int x = 0; x < image.width(); x += 4)
    {
      drawn += image.pixel(x, y) != background ? 1 : 0;
    }
  }
  EXPECT_GT(drawn, 50);
}

TEST_F(VolumeViewTest, StateRecordSavesLoadsAndSavesTheSame)
{
  VXVolumeRepPimpl* view = addVolume(WriteImage(m_Dir.filePath("field.vti")));
  ASSERT_NE(view, nullptr);
  view->opacityFunctionOf(QStringLiteral("Distance"))->AddPoint(4.0, 0.3);
  view->setActiveArray(QStringLiteral("Ramp"));
  view->rescaleToCustomRange(101.0, 120.0);
  view->setColorMapInverted(true);
  view->setScalarBarVisibility(true);
  nlohmann::json first = nlohmann::json::object();
  view->write(first);
  EXPECT_EQ(first.at("active_array"), "Ramp");
  EXPECT_EQ(first.at("array_custom_ranges").at("Ramp").at("custom_range_min"), 101.0);
  EXPECT_EQ(first.at("array_scalar_opacity_fct").at("Distance").size(), 3u);
  EXPECT_TRUE(first.at("array_lut_fct").contains("Distance"));

  VXVolumeRep other;
  VXVolumeRepPimpl copy(&other, nullptr);
  copy.read(first);
  nlohmann::json second = nlohmann::json::object();
  copy.write(second);
  EXPECT_EQ(first.dump(2), second.dump(2));
  ASSERT_NE(copy.opacityFunctionOf(QStringLiteral("Distance")), nullptr);
  EXPECT_EQ(Nodes(copy.opacityFunctionOf(QStringLiteral("Distance"))),
            Nodes(view->opacityFunctionOf(QStringLiteral("Distance"))));
  EXPECT_EQ(copy.customRangeDialog()->getRange(), (std::array<double, 2>{101.0, 120.0}));
}

TEST_F(VolumeViewTest, TakesNoColoursFromItsDataSourceAndSaysSo)
{
  VXVolumeRepPimpl* view = addVolume(WriteImage(m_Dir.filePath("field.vti")));
  ASSERT_NE(view, nullptr);
  QSignalSpy messages(&m_Pipeline, &VXPipeline::sendOutputMessage);
  view->connectParentDataSourceColorSettings();
  view->disconnectParentDataSourceColorSettings();
  ASSERT_EQ(messages.count(), 2);
  EXPECT_EQ(
      messages.at(0).front().toString(),
      QStringLiteral("Error: Cannot connect parent data source color settings for volume representations"));
  EXPECT_EQ(messages.at(1).front().toString(),
            QStringLiteral(
                "Error: Cannot disconnect parent data source color settings for volume representations"));
}

TEST_F(VolumeViewTest, ANonImageInputLeavesTheViewEmpty)
{
  VXVolumeRepPimpl* view = addVolume(DataViewTestData::WriteSphere(m_Dir.filePath("sphere.vtp")));
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->inputImage(), nullptr);
  EXPECT_FALSE(m_Grid.activeView()->getVisualizationWidget()->getRenderer()->HasViewProp(view->volume()));
  EXPECT_TRUE(view->arrayNames().isEmpty());
}

namespace
{
QPoint EditorPixel(const VXColorMapEditorWidget* editor, double value, double opacity)
{
  return editor->geometry().toPixel(value, opacity).toPoint();
}

void Drag(VXColorMapEditorWidget* editor, const QPoint& from, const QPoint& to)
{
  QTest::mousePress(editor, Qt::LeftButton, Qt::NoModifier, from);
  QMouseEvent move(QEvent::MouseMove, to, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(editor, &move);
  QTest::mouseRelease(editor, Qt::LeftButton, Qt::NoModifier, to);
}

// Pixels of which some channel differs by more than a renderer's noise.
int ChangedPixels(const QImage& a, const QImage& b)
{
  const QImage first = a.convertToFormat(QImage::Format_RGB32);
  const QImage second = b.convertToFormat(QImage::Format_RGB32);
  if (first.size() != second.size())
  {
    return first.width() * first.height();
  }
  int changed = 0;
  for (int y = 0; y < first.height(); ++y)
  {
    for (int x = 0; x < first.width(); ++x)
    {
      const QRgb p = first.pixel(x, y);
      const QRgb q = second.pixel(x, y);
      const int difference = std::max(
          {std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)), std::abs(qBlue(p) - qBlue(q))});
      changed += difference > 24 ? 1 : 0;
    }
  }
  return changed;
}

double Total(const std::vector<double>& counts)
{
  double total = 0.0;
  for (double count : counts)
  {
    total += count;
  }
  return total;
}
} // namespace

TEST_F(VolumeViewTest, ThePanelEditsTheActiveArraysCurveOverItsHistogramAndRedraws)
{
  VXVolumeRepPimpl* view = addVolume(WriteImage(m_Dir.filePath("field.vti")));
  ASSERT_NE(view, nullptr);
  // Before the panel exists nothing is binned.
  EXPECT_EQ(view->histogramTable(), nullptr);
  VXColorMapEditorWidget* editor = showEditor(view);
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(view->colorMapEditor(), editor);
  vtkPiecewiseFunction* distance = view->opacityFunctionOf(QStringLiteral("Distance"));
  EXPECT_EQ(editor->opacityFunction(), distance);
  EXPECT_EQ(editor->colorFunction(), view->lookupTable()->getColorTransferFunction());
  // The histogram of the array: 200 bins holding every point.
  ASSERT_NE(view->histogramTable(), nullptr);
  EXPECT_NE(view->histogramTable()->GetColumnByName("image_pops"), nullptr);
  ASSERT_EQ(editor->histogramCounts().size(), 200u);
  EXPECT_EQ(Total(editor->histogramCounts()), double(k_Size * k_Size * k_Size));
  const std::vector<double> distanceCounts = editor->histogramCounts();

  // Dragging the opaque end down to transparent changes the function and the picture.
  const QImage before = frame();
  double range[2];
  distance->GetRange(range);
  Drag(editor, EditorPixel(editor, range[1], 1.0), EditorPixel(editor, range[1], 0.05));
  const auto edited = Nodes(distance);
  ASSERT_EQ(edited.size(), 2u);
  EXPECT_NEAR(edited[1][1], 0.05, 0.02);
  EXPECT_EQ(view->volume()->GetProperty()->GetScalarOpacity(0), distance);
  EXPECT_GT(ChangedPixels(frame(), before), 2000);
  // A click adds a node in the middle.
  QTest::mouseClick(editor, Qt::LeftButton, Qt::NoModifier,
                    EditorPixel(editor, (range[0] + range[1]) / 2, 0.6));
  const auto withMiddle = Nodes(distance);
  ASSERT_EQ(withMiddle.size(), 3u);

  // Another array: its own curve and histogram in the editor, edited apart.
  view->setActiveArray(QStringLiteral("Ramp"));
  vtkPiecewiseFunction* ramp = view->opacityFunctionOf(QStringLiteral("Ramp"));
  EXPECT_EQ(editor->opacityFunction(), ramp);
  EXPECT_EQ(editor->geometry().range(), (std::array<double, 2>{100.0, 123.0}));
  EXPECT_NE(editor->histogramCounts(), distanceCounts);
  EXPECT_EQ(Total(editor->histogramCounts()), double(k_Size * k_Size * k_Size));
  QTest::mouseClick(editor, Qt::LeftButton, Qt::NoModifier, EditorPixel(editor, 110.0, 0.1));
  EXPECT_EQ(ramp->GetSize(), 3);
  EXPECT_EQ(Nodes(distance), withMiddle);

  // Back to the first array: the same curve as it was left, in the editor too.
  view->setActiveArray(QStringLiteral("Distance"));
  EXPECT_EQ(editor->opacityFunction(), distance);
  EXPECT_EQ(Nodes(view->opacityFunctionOf(QStringLiteral("Distance"))), withMiddle);
  EXPECT_EQ(editor->histogramCounts(), distanceCounts);
  // A right-click removes the middle node again; the ends stay.
  QTest::mouseClick(editor, Qt::RightButton, Qt::NoModifier,
                    EditorPixel(editor, withMiddle[1][0], withMiddle[1][1]));
  EXPECT_EQ(Nodes(distance).size(), 2u);
  QTest::mouseClick(editor, Qt::RightButton, Qt::NoModifier, EditorPixel(editor, range[0], 0.0));
  EXPECT_EQ(Nodes(distance).size(), 2u);
}

TEST_F(VolumeViewTest, TheEditorFollowsResetScaleToDataPresetsAndTheCustomRange)
{
  VXVolumeRepPimpl* view = addVolume(WriteImage(m_Dir.filePath("field.vti")));
  ASSERT_NE(view, nullptr);
  view->setActiveArray(QStringLiteral("Ramp"));
  VXColorMapEditorWidget* editor = showEditor(view);
  ASSERT_NE(editor, nullptr);
  QTest::mouseClick(editor, Qt::LeftButton, Qt::NoModifier, EditorPixel(editor, 111.5, 0.8));
  ASSERT_EQ(view->opacityFunctionOf(QStringLiteral("Ramp"))->GetSize(), 3);

  // A custom range moves the nodes, and the editor spans it.
  view->customRangeDialog()->setRange({0.0, 46.0});
  Q_EMIT view->customRangeDialog()->rescale(0.0, 46.0);
  EXPECT_EQ(editor->geometry().range(), (std::array<double, 2>{0.0, 46.0}));
  EXPECT_EQ(Nodes(editor->opacityFunction()).front()[0], 0.0);

  // Scale to Data brings the editor back to the data range, the edited node moved along.
  auto* scale = view->settingsWidget()->findChild<QPushButton*>(QStringLiteral("scaleToDataBtn"));
  ASSERT_NE(scale, nullptr);
  scale->click();
  EXPECT_EQ(editor->geometry().range(), (std::array<double, 2>{100.0, 123.0}));
  const auto scaled = Nodes(editor->opacityFunction());
  ASSERT_EQ(scaled.size(), 3u);
  EXPECT_NEAR(scaled[1][0], 111.5, 0.1);

  // A preset or an inversion changes the gradient the editor shows, not the curve.
  double before[3];
  editor->colorFunction()->GetColor(100.0, before);
  const auto presets = ColorPresetsFile::BuiltInPresets();
  const auto viridis = std::find_if(presets.begin(), presets.end(),
                                    [](const auto& preset) { return preset.m_Name == "Viridis"; });
  ASSERT_NE(viridis, presets.end());
  view->loadPresetColors(*viridis);
  EXPECT_EQ(editor->colorFunction(), view->lookupTable()->getColorTransferFunction());
  double preset[3];
  editor->colorFunction()->GetColor(100.0, preset);
  EXPECT_NE(std::vector<double>(preset, preset + 3), std::vector<double>(before, before + 3));
  view->setColorMapInverted(true);
  double inverted[3];
  editor->colorFunction()->GetColor(100.0, inverted);
  EXPECT_NE(std::vector<double>(inverted, inverted + 3), std::vector<double>(preset, preset + 3));
  EXPECT_EQ(editor->opacityFunction()->GetSize(), 3);

  // Reset starts the array afresh: the editor shows the two-node ramp over the data range.
  auto* reset = view->settingsWidget()->findChild<QPushButton*>(QStringLiteral("resetButton"));
  ASSERT_NE(reset, nullptr);
  reset->click();
  EXPECT_EQ(editor->opacityFunction(), view->opacityFunctionOf(QStringLiteral("Ramp")));
  EXPECT_EQ(Nodes(editor->opacityFunction()),
            (std::vector<std::array<double, 2>>{{100.0, 0.0}, {123.0, 1.0}}));
  EXPECT_EQ(editor->geometry().range(), (std::array<double, 2>{100.0, 123.0}));
}

TEST_F(VolumeViewTest, AnOpacityCurveGivenInDataUnitsReplacesTheActiveArraysCurve)
{
  VXVolumeRepPimpl* view = addVolume(WriteImage(m_Dir.filePath("field.vti")));
  ASSERT_NE(view, nullptr);
  view->setActiveArray(QStringLiteral("Ramp"));
  ASSERT_TRUE(view->setOpacityCurve({{100.0, 0.0}, {110.0, 0.9}, {123.0, 0.1}}));
  EXPECT_EQ(Nodes(view->opacityFunctionOf(QStringLiteral("Ramp"))),
            (std::vector<std::array<double, 2>>{{100.0, 0.0}, {110.0, 0.9}, {123.0, 0.1}}));
  EXPECT_EQ(view->volume()->GetProperty()->GetScalarOpacity(0),
            view->opacityFunctionOf(QStringLiteral("Ramp")));
  // The other array keeps its own.
  EXPECT_EQ(Nodes(view->opacityFunctionOf(QStringLiteral("Distance"))).size(), 2u);
}
