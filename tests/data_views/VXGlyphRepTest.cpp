// The glyph view in a real render window: sampling modes, glyph shapes, orientation and scaling by
// arrays, colouring, the ellipse dialog and the state record.
#include "data_views/VXGlyphRep.h"
#include "colour/VXLookupTable.h"
#include "common/ZRImageBaseline.h"
#include "data_views/VXEllipseSourceWidget.h"
#include "data_views/VXGlyphRepPimpl.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <vtkActor.h>
#include <vtkCellArray.h>
#include <vtkDataSet.h>
#include <vtkDoubleArray.h>
#include <vtkGlyph3DMapper.h>
#include <vtkImageData.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPlaneSource.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkProperty.h>
#include <vtkRenderer.h>
#include <vtkXMLImageDataWriter.h>
#include <vtkXMLPolyDataWriter.h>

#include <QTemporaryDir>
#include <QTest>

#include "DataViewTestData.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace
{
constexpr int k_Side = 6;
constexpr int k_Points = k_Side * k_Side;

// A 6 x 6 grid of vertices whose "Direction" turns a quarter turn per row and whose "Speed" grows
// along x.
QString WriteVertexGrid(const QString& path)
{
  vtkNew<vtkPolyData> grid;
  vtkNew<vtkPoints> points;
  vtkNew<vtkCellArray> vertices;
  vtkNew<vtkDoubleArray> direction;
  direction->SetName("Direction");
  direction->SetNumberOfComponents(3);
  vtkNew<vtkDoubleArray> speed;
  speed->SetName("Speed");
  for (int y = 0; y < k_Side; ++y)
  {
    const double angle = y * M_PI / 2.0;
    for (int x = 0; x < k_Side; ++x)
    {
      const vtkIdType id = points->InsertNextPoint(x, y, 0.0);
      vertices->InsertNextCell(1, &id);
      direction->InsertNextTuple3(std::cos(angle), std::sin(angle), 0.0);
      speed->InsertNextValue(1.0 + x);
    }
  }
  grid->SetPoints(points);
  grid->SetVerts(vertices);
  grid->GetPointData()->AddArray(direction);
  grid->GetPointData()->AddArray(speed);
  vtkNew<vtkXMLPolyDataWriter> writer;
  writer->SetInputData(grid);
  writer->SetFileName(path.toLocal8Bit().constData());
  writer->Write();
  return path;
}

// An image of 10 x 10 x 10 cells of the given spacing, with a cell array to colour by.
QString WriteImage(const QString& path, double spacing)
{
  vtkNew<vtkImageData> image;
  image->SetDimensions(11, 11, 11);
  image->SetSpacing(spacing, spacing, spacing);
  vtkNew<vtkIntArray> phase;
  phase->SetName("Phase");
  for (vtkIdType cell = 0; cell < image->GetNumberOfCells(); ++cell)
  {
    phase->InsertNextValue(static_cast<int>(cell % 3));
  }
  image->GetCellData()->AddArray(phase);
  vtkNew<vtkXMLImageDataWriter> writer;
  writer->SetInputData(image);
  writer->SetFileName(path.toLocal8Bit().constData());
  writer->Write();
  return path;
}

// A flat mesh of 20 x 20 square cells of the given side, as a mesh in millimetres would be.
QString WriteFlatMesh(const QString& path, double cellSide)
{
  vtkNew<vtkPlaneSource> plane;
  plane->SetOrigin(0.0, 0.0, 0.0);
  plane->SetPoint1(20.0 * cellSide, 0.0, 0.0);
  plane->SetPoint2(0.0, 20.0 * cellSide, 0.0);
  plane->SetResolution(20, 20);
  plane->Update();
  vtkNew<vtkXMLPolyDataWriter> writer;
  writer->SetInputData(plane->GetOutput());
  writer->SetFileName(path.toLocal8Bit().constData());
  writer->Write();
  return path;
}

std::set<std::array<double, 3>> PointsOf(vtkDataSet* dataSet)
{
  std::set<std::array<double, 3>> points;
  for (vtkIdType i = 0; dataSet != nullptr && i < dataSet->GetNumberOfPoints(); ++i)
  {
    const double* p = dataSet->GetPoint(i);
    points.insert({p[0], p[1], p[2]});
  }
  return points;
}

class GlyphViewTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    m_Grid.resize(400, 300);
    m_Grid.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Grid));
    m_Pipeline.setActiveViewWidget(m_Grid.activeView());
  }

  VXGlyphRepPimpl* addGlyphs(const QString& file)
  {
    VXBridgeObject* bridge = m_Pipeline.importFile(file);
    if (bridge == nullptr || bridge->dataSources().size() != 1)
    {
      return nullptr;
    }
    VXDataSource* dataSource = bridge->dataSources().front();
    // Only the glyphs in the window.
    for (VXRepresentation* other : dataSource->findChildren<VXRepresentation*>())
    {
      other->setVisibility(false);
    }
    m_Pipeline.addRepresentation(dataSource, VXRepresentation::Glyph);
    const QList<VXGlyphRep*> views = dataSource->findChildren<VXGlyphRep*>();
    if (views.size() != 1)
    {
      return nullptr;
    }
    m_Glyphs = views.front();
    m_Grid.activeView()->getVisualizationWidget()->resetCamera();
    DataViewTestData::Settle();
    return dynamic_cast<VXGlyphRepPimpl*>(m_Glyphs->implementation(m_Grid.activeView()));
  }

  QImage frame()
  {
    DataViewTestData::Settle();
    return m_Grid.activeView()->getVisualizationWidget()->captureViewImage(false, QColor());
  }

  QTemporaryDir m_Dir;
  VXViewGridWidget m_Grid;
  VXPipeline m_Pipeline;
  VXGlyphRep* m_Glyphs = nullptr;
};
} // namespace

TEST_F(GlyphViewTest, ArrowsTurnWithTheOrientationArrayAndTakeTheColourMap)
{
  VXGlyphRepPimpl* view = addGlyphs(WriteVertexGrid(m_Dir.filePath("grid.vtp")));
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(m_Glyphs->name(), QStringLiteral("Glyph View"));
  EXPECT_EQ(view->glyphType(), QStringLiteral("Arrow"));
  EXPECT_EQ(view->glyphMode(), QStringLiteral("All Points"));
  EXPECT_EQ(view->getActor()->GetMapper(), view->glyphMapper());
  EXPECT_EQ(view->getActor()->GetProperty()->GetRepresentation(), VTK_SURFACE);
  EXPECT_TRUE(m_Grid.activeView()->getVisualizationWidget()->getRenderer()->HasViewProp(view->getActor()));
  // Vertices are glyphed at their own points.
  EXPECT_EQ(view->glyphInput()->GetNumberOfPoints(), k_Points);
  EXPECT_EQ(view->orientationArrayChoices(), QStringList{QStringLiteral("Direction")});

  view->setOrientationArray(QStringLiteral("Direction"));
  EXPECT_TRUE(view->glyphMapper()->GetOrient());
  view->setScaleFactor(0.8);
  view->setActiveArray(QStringLiteral("Speed"));
  EXPECT_TRUE(view->glyphMapper()->GetScalarVisibility());
  EXPECT_EQ(view->glyphMapper()->GetLookupTable(), view->lookupTable()->getColorTransferFunction());
  EXPECT_EQ(view->lookupTable()->getRange(), (std::array<double, 2>{1.0, 6.0}));
  EXPECT_TRUE(ZRTest::MatchesBaseline(frame(), QStringLiteral(ZR_DATA_VIEWS_BASELINE_DIR),
                                      QStringLiteral("glyph-arrows-direction"), 10.0));

  // A saved orientation array that the data lacks leaves the glyphs unturned.
  view->setOrientationArray(QStringLiteral("Missing"));
  EXPECT_FALSE(view->glyphMapper()->GetOrient());
  view->setActiveArray(QStringLiteral("Solid Color"));
  EXPECT_FALSE(view->glyphMapper()->GetScalarVisibility());
}

TEST_F(GlyphViewTest, SamplingModesPickThePointsThatCarryGlyphs)
{
  VXGlyphRepPimpl* view = addGlyphs(WriteVertexGrid(m_Dir.filePath("grid.vtp")));
  ASSERT_NE(view, nullptr);
  EXPECT_FALSE(view->setGlyphMode(QStringLiteral("Some Points")));
  ASSERT_TRUE(view->setGlyphMode(QStringLiteral("Every Nth Point")));
  view->setStride(3);
  EXPECT_EQ(view->glyphInput()->GetNumberOfPoints(), k_Points / 3);
  // A stride of 0 counts as 1: every point.
  view->setStride(0);
  EXPECT_EQ(view->stride(), 1);
  EXPECT_EQ(view->glyphInput()->GetNumberOfPoints(), k_Points);
  // The seed does not change an every-Nth sample.
  view->setStride(2);
  const auto everyOther = PointsOf(view->glyphInput());
  view->setSeed(77);
  EXPECT_EQ(PointsOf(view->glyphInput()), everyOther);

  // A uniform sample over the bounds holds at most the maximum number of points.
  ASSERT_TRUE(view->setGlyphMode(QStringLiteral("Uniform Spatial Distribution (Bounds Based)")));
  view->setMaxSamplePoints(8);
  EXPECT_LE(view->glyphInput()->GetNumberOfPoints(), 8);
  EXPECT_GT(view->glyphInput()->GetNumberOfPoints(), 0);
  // In the uniform modes the seed chooses the sample.
  ASSERT_TRUE(view->setGlyphMode(QStringLiteral("Uniform Spatial Distribution (Bounds Based)")));
  view->setSeed(1);
  const auto first = PointsOf(view->glyphInput());
  view->setSeed(2);
  EXPECT_NE(PointsOf(view->glyphInput()), first);
  view->setSeed(1);
  EXPECT_EQ(PointsOf(view->glyphInput()), first);

  ASSERT_TRUE(view->setGlyphMode(QStringLiteral("All Points")));
  EXPECT_EQ(view->glyphInput()->GetNumberOfPoints(), k_Points);
}

TEST_F(GlyphViewTest, CellsAreGlyphedAtTheirCentresWithTheirArrays)
{
  VXGlyphRepPimpl* view = addGlyphs(DataViewTestData::WriteSphere(m_Dir.filePath("sphere.vtp")));
  ASSERT_NE(view, nullptr);
  vtkDataSet* input = view->inputDataSet();
  ASSERT_NE(input, nullptr);
  vtkDataSet* glyphPoints = view->glyphInput();
  EXPECT_EQ(glyphPoints->GetNumberOfPoints(), input->GetNumberOfCells());
  // The cell array arrives at the centres as a point array, and colours the glyphs from there.
  EXPECT_NE(glyphPoints->GetPointData()->GetArray("FeatureIds"), nullptr);
  view->setActiveArray(QStringLiteral("FeatureIds"));
  EXPECT_EQ(view->glyphMapper()->GetScalarMode(), VTK_SCALAR_MODE_USE_POINT_FIELD_DATA);
  EXPECT_STREQ(view->glyphMapper()->GetArrayName(), "FeatureIds");

  // Samples spread over the surface and the volume are drawn over the cells themselves, not over
  // their centres (which are cells of no extent).
  for (const QString& mode : {QStringLiteral("Uniform Spatial Distribution (Surface Based)"),
                              QStringLiteral("Uniform Spatial Distribution (Volume Based)")})
  {
    ASSERT_TRUE(view->setGlyphMode(mode));
    view->setMaxSamplePoints(20);
    EXPECT_LE(view->glyphInput()->GetNumberOfPoints(), 20) << mode.toStdString();
  }
  ASSERT_TRUE(view->setGlyphMode(QStringLiteral("Uniform Spatial Distribution (Surface Based)")));
  EXPECT_GT(view->glyphInput()->GetNumberOfPoints(), 0);
}

TEST_F(GlyphViewTest, ShapesAndScalingByAnArray)
{
  VXGlyphRepPimpl* view = addGlyphs(WriteVertexGrid(m_Dir.filePath("grid.vtp")));
  ASSERT_NE(view, nullptr);
  vtkAlgorithmOutput* arrow = view->glyphMapper()->GetInputConnection(1, 0);
  for (const QString& type : {QStringLiteral("Sphere"), QStringLiteral("Cube"), QStringLiteral("Ellipse")})
  {
    ASSERT_TRUE(view->setGlyphType(type));
    EXPECT_NE(view->glyphMapper()->GetInputConnection(1, 0), arrow) << type.toStdString();
  }
  EXPECT_FALSE(view->setGlyphType(QStringLiteral("Teapot")));
  EXPECT_EQ(view->glyphType(), QStringLiteral("Ellipse"));
  ASSERT_TRUE(view->setGlyphType(QStringLiteral("Arrow")));
  EXPECT_EQ(view->glyphMapper()->GetInputConnection(1, 0), arrow);

  EXPECT_EQ(view->glyphMapper()->GetScaleMode(), vtkGlyph3DMapper::NO_DATA_SCALING);
  // The factor alone: arrows of length 0.1 from x = 5 end at 5.1.
  view->setScaleFactor(0.1);
  double plain[6];
  view->getActor()->GetBounds(plain);
  EXPECT_NEAR(plain[1], 5.1, 1e-6);
  // By the speed (1 to 6 along x): the last arrows are 6 times as long.
  view->setScaleArray(QStringLiteral("Speed"));
  EXPECT_EQ(view->glyphMapper()->GetScaleMode(), vtkGlyph3DMapper::SCALE_BY_MAGNITUDE);
  double scaled[6];
  view->getActor()->GetBounds(scaled);
  EXPECT_NEAR(scaled[1], 5.6, 1e-6);
  view->setScaleArray(QString());
  EXPECT_EQ(view->glyphMapper()->GetScaleMode(), vtkGlyph3DMapper::NO_DATA_SCALING);
}

TEST_F(GlyphViewTest, EllipseDialogParsesVectorsAndClampsTheRatio)
{
  EXPECT_EQ(VXEllipseSourceWidget::ParseVector(QStringLiteral("1 2,3")),
            (std::array<double, 3>{1.0, 2.0, 3.0}));
  EXPECT_EQ(VXEllipseSourceWidget::ParseVector(QStringLiteral("0.5;\t-1 ; 4")),
            (std::array<double, 3>{0.5, -1.0, 4.0}));
  EXPECT_EQ(VXEllipseSourceWidget::ParseVector(QStringLiteral("x, 2")),
            (std::array<double, 3>{0.0, 2.0, 0.0}));

  VXGlyphRepPimpl* view = addGlyphs(WriteVertexGrid(m_Dir.filePath("grid.vtp")));
  ASSERT_NE(view, nullptr);
  view->setEllipseSource({0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, {0.5, 0.0, 0.0}, 50.0, 5000);
  EXPECT_DOUBLE_EQ(view->ellipseRatio(), 1.0);
  EXPECT_EQ(view->ellipseResolution(), 1000);
  view->setEllipseSource({0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, {0.5, 0.0, 0.0}, 0.0, 0);
  EXPECT_DOUBLE_EQ(view->ellipseRatio(), 0.001);
  EXPECT_EQ(view->ellipseResolution(), 1);

  VXEllipseSourceWidget dialog(view);
  dialog.onResetButtonClicked();
  dialog.onOkButtonClicked();
  EXPECT_EQ(view->ellipseMajorRadius(), (std::array<double, 3>{1.0, 0.0, 0.0}));
  EXPECT_DOUBLE_EQ(view->ellipseRatio(), 1.0);
  EXPECT_EQ(view->ellipseResolution(), 100);
}

TEST_F(GlyphViewTest, StateRecordSavesLoadsAndSavesTheSame)
{
  VXGlyphRepPimpl* view = addGlyphs(WriteVertexGrid(m_Dir.filePath("grid.vtp")));
  ASSERT_NE(view, nullptr);
  view->setGlyphType(QStringLiteral("Sphere"));
  view->setOrientationArray(QStringLiteral("Direction"));
  view->setScaleArray(QStringLiteral("Speed"));
  view->setScaleFactor(0.25);
  view->setGlyphMode(QStringLiteral("Every Nth Point"));
  view->setStride(4);
  view->setSeed(5);
  view->setEllipseSource({1.0, 2.0, 3.0}, {0.0, 1.0, 0.0}, {2.0, 0.0, 0.0}, 0.5, 64);
  view->setActiveArray(QStringLiteral("Speed"));
  nlohmann::json first = nlohmann::json::object();
  view->write(first);
  EXPECT_EQ(first.at("glyph_type"), "Sphere");
  EXPECT_EQ(first.at("glyph_mode"), "Every Nth Point");
  EXPECT_EQ(first.at("glyph_stride"), 4);
  EXPECT_EQ(first.at("glyph_ellipse_center_z"), 3.0);

  VXGlyphRep other;
  VXGlyphRepPimpl copy(&other, nullptr);
  copy.read(first);
  nlohmann::json second = nlohmann::json::object();
  copy.write(second);
  EXPECT_EQ(first.dump(2), second.dump(2));
  EXPECT_EQ(copy.glyphType(), QStringLiteral("Sphere"));
  EXPECT_EQ(copy.stride(), 4);
  EXPECT_DOUBLE_EQ(copy.ellipseRatio(), 0.5);
}

TEST_F(GlyphViewTest, DefaultScaleFollowsTheSpacingOfTheGlyphPoints)
{
  // An image of spacing 0.01: glyphs of one world unit would hide it a hundred times over.
  VXGlyphRepPimpl* view = addGlyphs(WriteImage(m_Dir.filePath("fine.vti"), 0.01));
  ASSERT_NE(view, nullptr);
  EXPECT_TRUE(view->scaleFactorFromData());
  EXPECT_NEAR(view->scaleFactor(), 0.01, 1e-9);
  EXPECT_NEAR(view->glyphMapper()->GetScaleFactor(), 0.01, 1e-9);
  // The glyphs (unit arrows at the cell centres, the last at 0.095) stay about within the image.
  double bounds[6];
  view->getActor()->GetBounds(bounds);
  EXPECT_LT(bounds[1], 0.1 + 0.01);
  // One glyph in every 8 cells: the glyphs stand twice as far apart, and grow with it.
  ASSERT_TRUE(view->setGlyphMode(QStringLiteral("Every Nth Point")));
  view->setStride(8);
  EXPECT_NEAR(view->scaleFactor(), 0.02, 1e-9);
  ASSERT_TRUE(view->setGlyphMode(QStringLiteral("All Points")));
  EXPECT_NEAR(view->scaleFactor(), 0.01, 1e-9);
  // An ellipse is twice its major radius across.
  ASSERT_TRUE(view->setGlyphType(QStringLiteral("Ellipse")));
  EXPECT_NEAR(view->scaleFactor(), 0.005, 1e-9);
  view->setEllipseSource({0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, {0.25, 0.0, 0.0}, 1.0, 100);
  EXPECT_NEAR(view->scaleFactor(), 0.02, 1e-9);
  ASSERT_TRUE(view->setGlyphType(QStringLiteral("Sphere")));
  EXPECT_NEAR(view->scaleFactor(), 0.01, 1e-9);

  // A factor the user types is kept whatever the sampling, until the data is asked again.
  view->setScaleFactor(0.5);
  EXPECT_FALSE(view->scaleFactorFromData());
  ASSERT_TRUE(view->setGlyphMode(QStringLiteral("Every Nth Point")));
  EXPECT_DOUBLE_EQ(view->scaleFactor(), 0.5);
  EXPECT_DOUBLE_EQ(view->glyphMapper()->GetScaleFactor(), 0.5);
  view->useScaleFactorFromData();
  EXPECT_TRUE(view->scaleFactorFromData());
  EXPECT_NEAR(view->scaleFactor(), 0.02, 1e-9);
}

TEST_F(GlyphViewTest, DefaultScaleOfMeshesAndPointCloudsFollowsTheirUnits)
{
  // A flat mesh of 2 mm cells, glyphed at the cell centres, 2 mm apart.
  VXGlyphRepPimpl* view = addGlyphs(WriteFlatMesh(m_Dir.filePath("millimetres.vtp"), 2.0));
  ASSERT_NE(view, nullptr);
  EXPECT_TRUE(view->scaleFactorFromData());
  EXPECT_NEAR(view->scaleFactor(), 2.0, 1e-9);
  // 100 uniform samples of 400 cells over an area: twice as far apart.
  ASSERT_TRUE(view->setGlyphMode(QStringLiteral("Uniform Spatial Distribution (Bounds Based)")));
  view->setMaxSamplePoints(100);
  const vtkIdType samples = view->glyphInput()->GetNumberOfPoints();
  ASSERT_GT(samples, 0);
  EXPECT_NEAR(view->scaleFactor(), 2.0 * std::sqrt(400.0 / samples), 1e-9);

  // The same mesh in metres: the same picture, a thousand times smaller.
  EXPECT_NEAR(VXGlyphRepPimpl::NeighbourSpacing(view->inputDataSet(), 400, 400), 2.0, 1e-9);
  vtkNew<vtkPlaneSource> metres;
  metres->SetOrigin(0.0, 0.0, 0.0);
  metres->SetPoint1(0.04, 0.0, 0.0);
  metres->SetPoint2(0.0, 0.04, 0.0);
  metres->SetResolution(20, 20);
  metres->Update();
  EXPECT_NEAR(VXGlyphRepPimpl::NeighbourSpacing(metres->GetOutput(), 400, 400), 0.002, 1e-8);
  // Nothing to measure: no size, and the view keeps the factor it has.
  vtkNew<vtkPolyData> empty;
  EXPECT_EQ(VXGlyphRepPimpl::NeighbourSpacing(empty, 0, 0), 0.0);
}

TEST_F(GlyphViewTest, DefaultScaleOfAPointCloudSharesItsBoundsOut)
{
  // 36 vertices over a 5 x 5 square: about one unit apart.
  VXGlyphRepPimpl* view = addGlyphs(WriteVertexGrid(m_Dir.filePath("grid.vtp")));
  ASSERT_NE(view, nullptr);
  EXPECT_TRUE(view->scaleFactorFromData());
  EXPECT_NEAR(view->scaleFactor(), 5.0 / 6.0, 1e-9);
}

TEST_F(GlyphViewTest, ScaleFromTheDataIsSavedAsSuchAndAChosenOneAsChosen)
{
  VXGlyphRepPimpl* view = addGlyphs(WriteImage(m_Dir.filePath("fine.vti"), 0.01));
  ASSERT_NE(view, nullptr);
  nlohmann::json derived = nlohmann::json::object();
  view->write(derived);
  EXPECT_EQ(derived.at("glyph_scale_factor_from_data"), true);
  EXPECT_NEAR(derived.at("glyph_scale_factor").get<double>(), 0.01, 1e-9);
  {
    VXGlyphRep other;
    VXGlyphRepPimpl copy(&other, nullptr);
    copy.read(derived);
    EXPECT_TRUE(copy.scaleFactorFromData());
    nlohmann::json again = nlohmann::json::object();
    copy.write(again);
    EXPECT_EQ(derived.dump(2), again.dump(2));
  }

  view->setScaleFactor(0.03);
  nlohmann::json chosen = nlohmann::json::object();
  view->write(chosen);
  EXPECT_EQ(chosen.at("glyph_scale_factor_from_data"), false);
  {
    VXGlyphRep other;
    VXGlyphRepPimpl copy(&other, nullptr);
    copy.read(chosen);
    EXPECT_FALSE(copy.scaleFactorFromData());
    EXPECT_DOUBLE_EQ(copy.scaleFactor(), 0.03);
    nlohmann::json again = nlohmann::json::object();
    copy.write(again);
    EXPECT_EQ(chosen.dump(2), again.dump(2));
  }

  // A state written before factors followed the data: its factor was the user's.
  nlohmann::json old = chosen;
  old.erase("glyph_scale_factor_from_data");
  old["glyph_scale_factor"] = 1.0;
  view->read(old);
  view->applySettings();
  EXPECT_FALSE(view->scaleFactorFromData());
  EXPECT_DOUBLE_EQ(view->scaleFactor(), 1.0);
  EXPECT_DOUBLE_EQ(view->glyphMapper()->GetScaleFactor(), 1.0);
  // And one saved from the data follows the data it is loaded on.
  view->read(derived);
  derived["glyph_scale_factor"] = 7.0;
  view->read(derived);
  view->applySettings();
  EXPECT_TRUE(view->scaleFactorFromData());
  EXPECT_NEAR(view->scaleFactor(), 0.01, 1e-9);
}
