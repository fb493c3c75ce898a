#include "RenderWindowTestUtils.h"

#include "data_views/VXOpenGLImageSliceMapper.h"
#include "views/VXHardwarePicker.h"
#include "views/VXHardwareSelection.h"
#include "views/VXInteractorStyleCamera.h"
#include "views/VXPickerCallback.h"

#include <vtkActor.h>
#include <vtkCamera.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkDoubleArray.h>
#include <vtkGeometryFilter.h>
#include <vtkHardwareSelector.h>
#include <vtkImageData.h>
#include <vtkImageSlice.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkOutlineFilter.h>
#include <vtkPlaneSource.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderWindow.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkRenderer.h>

#include <QString>

#include <array>
#include <cmath>

using namespace zr_test;

namespace
{
// Two unit squares side by side at z = 0, each cut along its diagonal from (x, 0) to (x + 1, 1):
// triangle 0 below the first diagonal, 1 above it, 2 below the second, 3 above it.
vtkSmartPointer<vtkPolyData> makeTriangleMesh()
{
  vtkNew<vtkPoints> points;
  for (int y = 0; y < 2; ++y)
  {
    for (int x = 0; x < 3; ++x)
    {
      points->InsertNextPoint(x, y, 0.0);
    }
  }
  vtkNew<vtkCellArray> triangles;
  const vtkIdType cells[4][3] = {{0, 1, 4}, {0, 4, 3}, {1, 2, 5}, {1, 5, 4}};
  for (const auto& cell : cells)
  {
    triangles->InsertNextCell(3, cell);
  }
  auto mesh = vtkSmartPointer<vtkPolyData>::New();
  mesh->SetPoints(points);
  mesh->SetPolys(triangles);
  vtkNew<vtkIntArray> cellValue;
  cellValue->SetName("CellValue");
  for (int i = 0; i < 4; ++i)
  {
    cellValue->InsertNextValue(10 + i);
  }
  mesh->GetCellData()->AddArray(cellValue);
  vtkNew<vtkDoubleArray> height;
  height->SetName("Height");
  vtkNew<vtkDoubleArray> vector;
  vector->SetName("Vec");
  vector->SetNumberOfComponents(3);
  for (int i = 0; i < 6; ++i)
  {
    height->InsertNextValue(1.5 * i);
    vector->InsertNextTuple3(i, -i, 0.25);
  }
  mesh->GetPointData()->AddArray(height);
  mesh->GetPointData()->AddArray(vector);
  return mesh;
}

// An image of nx x ny x nz cells of size 1 from the origin; cell array Phase = 2 x id.
vtkSmartPointer<vtkImageData> makeImage(int nx, int ny, int nz)
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(nx + 1, ny + 1, nz + 1);
  vtkNew<vtkIntArray> phase;
  phase->SetName("Phase");
  for (vtkIdType i = 0; i < image->GetNumberOfCells(); ++i)
  {
    phase->InsertNextValue(static_cast<int>(2 * i));
  }
  image->GetCellData()->AddArray(phase);
  return image;
}

vtkSmartPointer<vtkActor> actorOf(vtkAlgorithmOutput* port)
{
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(port);
  auto actor = vtkSmartPointer<vtkActor>::New();
  actor->SetMapper(mapper);
  return actor;
}

vtkSmartPointer<vtkActor> actorOf(vtkPolyData* data)
{
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputData(data);
  auto actor = vtkSmartPointer<vtkActor>::New();
  actor->SetMapper(mapper);
  return actor;
}
} // namespace

class VXPickerCallbackTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    m_Window = makeShownWindow(320, 240);
    m_Picker = m_Window->getPickerCallback();
    ASSERT_NE(m_Picker, nullptr);
    m_Picker->setGeometryNameLookup([this](vtkDataObject* data)
                                    { return data == m_Named.Get() ? QStringLiteral("Mesh") : QString(); });
  }

  vtkRenderer* renderer() const { return m_Window->getRenderer(); }

  // Looks straight down the z axis at (cx, cy) with 100 pixels per unit.
  void lookDown(double cx, double cy)
  {
    vtkCamera* camera = renderer()->GetActiveCamera();
    camera->ParallelProjectionOn();
    camera->SetFocalPoint(cx, cy, 0.0);
    camera->SetPosition(cx, cy, 50.0);
    camera->SetViewUp(0.0, 1.0, 0.0);
    camera->SetParallelScale(1.2);
    renderer()->ResetCameraClippingRange();
    m_Window->renderWindow()->Render();
  }

  std::array<int, 2> displayOf(double x, double y, double z)
  {
    renderer()->SetWorldPoint(x, y, z, 1.0);
    renderer()->WorldToDisplay();
    double display[3];
    renderer()->GetDisplayPoint(display);
    return {{static_cast<int>(std::floor(display[0])), static_cast<int>(std::floor(display[1]))}};
  }

  VXPickResult pickWorld(double x, double y, double z)
  {
    const auto pixel = displayOf(x, y, z);
    return m_Picker->pickAt(pixel[0], pixel[1]);
  }

  // Hover text at the display position of a world point, as the hover widget's timer makes it.
  std::string hoverAt(double x, double y, double z)
  {
    const auto pixel = displayOf(x, y, z);
    m_Window->renderWindow()->GetInteractor()->SetEventPosition(pixel[0], pixel[1]);
    return m_Picker->GeneratePickInfo();
  }

  void showMesh()
  {
    auto mesh = makeTriangleMesh();
    m_Named = mesh;
    m_Window->addActor(actorOf(mesh.Get()));
    lookDown(1.0, 0.5);
  }

  std::unique_ptr<VXVisualizationWidget> m_Window;
  VXPickerCallback* m_Picker = nullptr;
  vtkSmartPointer<vtkDataSet> m_Named;
};

TEST_F(VXPickerCallbackTest, TriangleMeshPicksGiveTheCellItsNearestPointAndThePosition)
{
  showMesh();
  const struct
  {
    double x, y;
    vtkIdType cell, point;
  } cases[] = {{0.75, 0.25, 0, 1}, {0.2, 0.7, 1, 3}, {1.8, 0.3, 2, 2}, {1.3, 0.8, 3, 4}};
  for (const auto& c : cases)
  {
    const VXPickResult pick = pickWorld(c.x, c.y, 0.0);
    ASSERT_TRUE(pick.hit) << "at " << c.x << ", " << c.y;
    EXPECT_EQ(pick.original.Get(), m_Named.Get());
    EXPECT_EQ(pick.cellId, c.cell) << "at " << c.x << ", " << c.y;
    EXPECT_EQ(pick.pointId, c.point) << "at " << c.x << ", " << c.y;
    // One pixel is a hundredth of a unit.
    EXPECT_NEAR(pick.position[0], c.x, 0.011);
    EXPECT_NEAR(pick.position[1], c.y, 0.011);
    EXPECT_NEAR(pick.position[2], 0.0, 1e-9);
  }
}

TEST_F(VXPickerCallbackTest, PickOnTheEdgeOfACellGivesOneOfItsTwoCellsAndOffTheDataNothing)
{
  showMesh();
  // On the diagonal shared by triangles 0 and 1.
  const VXPickResult edge = pickWorld(0.5, 0.5, 0.0);
  ASSERT_TRUE(edge.hit);
  EXPECT_TRUE(edge.cellId == 0 || edge.cellId == 1) << edge.cellId;
  EXPECT_NEAR(edge.position[0], edge.position[1], 0.02) << "the position lies on the diagonal";
  // The last pixel of the mesh's right edge, and the first beyond it.
  const auto right = displayOf(2.0, 0.5, 0.0);
  const VXPickResult inside = m_Picker->pickAt(right[0] - 1, right[1]);
  ASSERT_TRUE(inside.hit);
  EXPECT_EQ(inside.cellId, 2);
  const VXPickResult outside = m_Picker->pickAt(right[0] + 2, right[1]);
  EXPECT_FALSE(outside.hit);
  EXPECT_EQ(outside.cellId, -1);
  EXPECT_EQ(outside.pointId, -1);
  EXPECT_FALSE(m_Picker->pickAt(-1, 10).hit) << "a position off the window";
  EXPECT_FALSE(m_Picker->pickAt(5, 5).hit);
}

TEST_F(VXPickerCallbackTest, PropsThatAreNotPickableDoNotHideTheDataBehindThem)
{
  showMesh();
  vtkNew<vtkPlaneSource> cover;
  cover->SetOrigin(-5.0, -5.0, 10.0);
  cover->SetPoint1(5.0, -5.0, 10.0);
  cover->SetPoint2(-5.0, 5.0, 10.0);
  auto coverActor = actorOf(cover->GetOutputPort());
  coverActor->PickableOff();
  m_Window->addActor(coverActor);
  renderer()->ResetCameraClippingRange();
  const VXPickResult pick = pickWorld(0.75, 0.25, 0.0);
  ASSERT_TRUE(pick.hit);
  EXPECT_EQ(pick.cellId, 0);
  EXPECT_TRUE(coverActor->GetVisibility()) << "hidden only while the selection renders";
}

TEST_F(VXPickerCallbackTest, ImageSurfacePicksFindTheImageCellUnderThePosition)
{
  auto image = makeImage(3, 2, 1);
  m_Named = image;
  vtkNew<vtkGeometryFilter> surface;
  surface->SetInputData(image);
  m_Window->addActor(actorOf(surface->GetOutputPort()));
  lookDown(1.5, 1.0);
  // Seen from +z the top face (z = 1) is drawn; cells are numbered i + 3 j.
  for (const auto& [x, y, cell] :
       {std::tuple<double, double, vtkIdType>{0.5, 0.5, 0}, {1.5, 0.5, 1}, {2.5, 1.5, 5}, {0.3, 1.8, 3}})
  {
    const VXPickResult pick = pickWorld(x, y, 1.0);
    ASSERT_TRUE(pick.hit);
    EXPECT_EQ(pick.original.Get(), image.Get());
    EXPECT_EQ(pick.cellId, cell) << "at " << x << ", " << y;
    EXPECT_NEAR(pick.position[2], 1.0, 1e-6);
    // The nearest image point to the position.
    double expectedPoint[3] = {std::round(pick.position[0]), std::round(pick.position[1]), 1.0};
    EXPECT_EQ(pick.pointId, image->FindPoint(expectedPoint));
  }
  // On the boundary between cells 0 and 1: one of them.
  const VXPickResult edge = pickWorld(1.0, 0.5, 1.0);
  ASSERT_TRUE(edge.hit);
  EXPECT_TRUE(edge.cellId == 0 || edge.cellId == 1) << edge.cellId;
}

TEST_F(VXPickerCallbackTest, VolumeOutlinePickFindsTheVolumeCellAtTheEdge)
{
  auto volume = makeImage(4, 4, 4);
  m_Named = volume;
  vtkNew<vtkOutlineFilter> outline;
  outline->SetInputData(volume);
  auto actor = actorOf(outline->GetOutputPort());
  actor->GetProperty()->SetLineWidth(5.0);
  m_Window->addActor(actor);
  // Looking down z at the edge y = 0 of the top face, halfway along the third cell.
  vtkCamera* camera = renderer()->GetActiveCamera();
  camera->ParallelProjectionOn();
  camera->SetFocalPoint(2.0, 2.0, 2.0);
  camera->SetPosition(2.0, 2.0, 60.0);
  camera->SetViewUp(0.0, 1.0, 0.0);
  camera->SetParallelScale(3.0);
  renderer()->ResetCameraClippingRange();
  m_Window->renderWindow()->Render();
  const VXPickResult pick = pickWorld(2.5, 0.0, 4.0);
  ASSERT_TRUE(pick.hit);
  EXPECT_EQ(pick.original.Get(), volume.Get());
  EXPECT_NEAR(pick.position[0], 2.5, 0.05);
  EXPECT_NEAR(pick.position[1], 0.0, 0.05);
  EXPECT_NEAR(pick.position[2], 4.0, 0.05) << "the near edge of the two that overlap";
  // Cell i = 2, j = 0, k = 3 of a 4 x 4 x 4 volume.
  EXPECT_EQ(pick.cellId, 2 + 0 * 4 + 3 * 16);
  // Inside the outline there is nothing drawn to pick.
  EXPECT_FALSE(pickWorld(2.0, 2.0, 4.0).hit);
}

TEST_F(VXPickerCallbackTest, HoverTextForCellsNamesTheGeometryTheCellAndEachArray)
{
  showMesh();
  m_Window->toggleHoverCells(true);
  const QString text = QString::fromStdString(hoverAt(1.3, 0.8, 0.0));
  const QStringList lines = text.split(QLatin1Char('\n'));
  ASSERT_GE(lines.size(), 3) << text.toStdString();
  EXPECT_EQ(lines.at(0), QStringLiteral("Mesh"));
  EXPECT_EQ(lines.at(1), QStringLiteral("    Cell Id: 3"));
  EXPECT_TRUE(lines.at(2).startsWith(QStringLiteral("    Coords: (1.3"))) << lines.at(2).toStdString();
  EXPECT_TRUE(lines.contains(QStringLiteral("    CellValue: 13"))) << text.toStdString();
  EXPECT_FALSE(text.contains(QStringLiteral("Height"))) << "cell mode shows cell arrays only";
  // The cell's three edges are highlighted.
  vtkActor* highlight = m_Picker->getCellHighlightActor();
  EXPECT_TRUE(highlight->GetVisibility());
  EXPECT_FALSE(m_Picker->getPointHighlightActor()->GetVisibility());
  auto* lines3 = vtkPolyData::SafeDownCast(highlight->GetMapper()->GetInput());
  ASSERT_NE(lines3, nullptr);
  EXPECT_EQ(lines3->GetNumberOfLines(), 3);
  double bounds[6];
  lines3->GetBounds(bounds);
  EXPECT_DOUBLE_EQ(bounds[0], 1.0);
  EXPECT_DOUBLE_EQ(bounds[1], 2.0);
}

TEST_F(VXPickerCallbackTest, HoverTextForPointsShowsThePointsArraysAndComponents)
{
  showMesh();
  m_Window->toggleHoverPoints(true);
  const QString text = QString::fromStdString(hoverAt(1.9, 0.9, 0.0));
  EXPECT_TRUE(text.startsWith(QStringLiteral("Mesh\n    Point Id: 5\n    Coords: (2, 1, 0)")))
      << text.toStdString();
  EXPECT_TRUE(text.contains(QStringLiteral("\n    Height: 7.5"))) << text.toStdString();
  EXPECT_TRUE(text.contains(QStringLiteral("\n    Vec[0]: 5\n    Vec[1]: -5\n    Vec[2]: 0.25")))
      << text.toStdString();
  EXPECT_FALSE(text.contains(QStringLiteral("CellValue")));
  vtkActor* cross = m_Picker->getPointHighlightActor();
  EXPECT_TRUE(cross->GetVisibility());
  EXPECT_DOUBLE_EQ(cross->GetPosition()[0], 2.0);
  EXPECT_DOUBLE_EQ(cross->GetPosition()[1], 1.0);
  // Off the data there is nothing to say and nothing to mark.
  EXPECT_EQ(hoverAt(-0.4, 0.5, 0.0), std::string());
  EXPECT_FALSE(cross->GetVisibility());
}

TEST_F(VXPickerCallbackTest, AGeometryWithoutANameIsUnnamed)
{
  auto mesh = makeTriangleMesh();
  m_Window->addActor(actorOf(mesh.Get()));
  lookDown(1.0, 0.5);
  m_Window->toggleHoverCells(true);
  EXPECT_EQ(QString::fromStdString(hoverAt(0.75, 0.25, 0.0)).section(QLatin1Char('\n'), 0, 0),
            QStringLiteral("Unnamed Geometry"));
}

TEST_F(VXPickerCallbackTest, ValuesOfAnIdBeyondTheArrayAreReportedAsNotValid)
{
  auto mesh = makeTriangleMesh();
  std::string report;
  const double coords[3] = {0.0, 0.0, 0.0};
  VXPickerCallback::printDataValues(mesh->GetCellData(), 7, "Cell", coords, report);
  EXPECT_NE(report.find("Cell Id: 7"), std::string::npos);
  EXPECT_NE(report.find("CellValue: Idx = 7 - Not Valid Max = 4"), std::string::npos) << report;
}

TEST_F(VXPickerCallbackTest, PointCrossKeepsItsScreenSizeThroughAZoom)
{
  showMesh();
  m_Window->toggleHoverPoints(true);
  auto screenWidth = [this]()
  {
    const double* bounds = m_Picker->getPointHighlightActor()->GetBounds();
    const auto left = displayOf(bounds[0], 0.5, 0.0);
    const auto right = displayOf(bounds[1], 0.5, 0.0);
    return right[0] - left[0];
  };
  m_Picker->createPointHighlighter(1.0, 0.5, 0.0);
  const int before = screenWidth();
  // As wide as the diagonal of a 15 x 15 pixel square.
  EXPECT_NEAR(before, 21, 2);
  renderer()->GetActiveCamera()->SetParallelScale(0.3);
  m_Picker->createPointHighlighter(1.0, 0.5, 0.0);
  EXPECT_NEAR(screenWidth(), before, 1);
  // A cross of no width cannot be sized.
  m_Picker->getPointHighlightActor()->SetScale(0.0, 0.0, 0.0);
  EXPECT_TRUE(std::isnan(m_Picker->getPointHighlighterSizeRatio(1.0, 0.5, 0.0)));
}

TEST_F(VXPickerCallbackTest, ReleasingAnyKeyRestoresTheHighlightsOfTheHoverModes)
{
  showMesh();
  VXInteractorStyleCamera* style = m_Window->getInteractorStyle();
  vtkRenderWindowInteractor* interactor = m_Window->renderWindow()->GetInteractor();
  m_Picker->setHoverCellsOn(true);
  m_Picker->toggleHighlightersVisibility(false);
  const auto pixel = displayOf(0.75, 0.25, 0.0);
  interactor->SetEventPosition(pixel[0], pixel[1]);
  interactor->SetKeySym("1");
  style->OnKeyPress();
  EXPECT_TRUE(m_Picker->pickKeyHeld());
  EXPECT_TRUE(style->pick1ModeOn());
  EXPECT_NE(m_Picker->getHoverText().indexOf(QStringLiteral("Point Id: 1")), -1)
      << "a held pick key reports the nearest point";
  EXPECT_TRUE(m_Picker->getPointHighlightActor()->GetVisibility());
  interactor->SetKeySym("3");
  style->OnKeyRelease();
  EXPECT_FALSE(m_Picker->pickKeyHeld());
  EXPECT_TRUE(style->pick1ModeOn()) << "only 1 and 2 end the pick modes";
  EXPECT_FALSE(m_Picker->getPointHighlightActor()->GetVisibility());
  EXPECT_TRUE(m_Picker->getCellHighlightActor()->GetVisibility());
}

TEST_F(VXPickerCallbackTest, EveryRequestForAHardwareSelectorYieldsOurs)
{
  vtkSmartPointer<vtkHardwareSelector> selector = vtkSmartPointer<vtkHardwareSelector>::New();
  ASSERT_NE(selector, nullptr);
  EXPECT_STREQ(selector->GetClassName(), "AmberquillHardwareSelector");
  EXPECT_TRUE(selector->IsA("vtkOpenGLHardwareSelector"));
  // Picks go through it and still find the data.
  showMesh();
  EXPECT_TRUE(pickWorld(0.75, 0.25, 0.0).hit);
  EXPECT_TRUE(image_slice_utilities::SubDividedTextureExtents().empty()) << "cleared after each selection";
}

TEST_F(VXPickerCallbackTest, ImageSlicePicksGiveThePointOfTheTexelUnderThePixel)
{
  // A 4 x 3 point image in the plane z = 0, each point's "Label" = 10 x its id; the slice mapper
  // draws a texel centred on each point, on a polygon from the first point to the last.
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(4, 3, 1);
  vtkNew<vtkIntArray> label;
  label->SetName("Label");
  for (vtkIdType i = 0; i < image->GetNumberOfPoints(); ++i)
  {
    label->InsertNextValue(static_cast<int>(10 * i));
  }
  image->GetPointData()->SetScalars(label);
  vtkNew<image_slice_utilities::VXOpenGLImageSliceMapper> mapper;
  mapper->SetInputData(image);
  vtkNew<vtkImageSlice> slice;
  slice->SetMapper(mapper);
  m_Window->addActor(slice);
  lookDown(1.5, 1.0);

  const VXPickResult onSlice = pickWorld(2.1, 1.2, 0.0);
  ASSERT_TRUE(onSlice.hit);
  EXPECT_EQ(onSlice.prop, slice.Get());
  EXPECT_EQ(onSlice.pointId, 6) << "the texel of point (2, 1)";
  EXPECT_NEAR(onSlice.position[0], 2.0, 1e-9);
  EXPECT_NEAR(onSlice.position[1], 1.0, 1e-9);
  ASSERT_NE(onSlice.original, nullptr);
  EXPECT_EQ(onSlice.original->GetPointData()->GetArray("Label")->GetComponent(onSlice.pointId, 0), 60.0);
  EXPECT_GE(onSlice.cellId, 0) << "a cell of the image holds the position";

  const VXPickResult corner = pickWorld(0.2, 0.2, 0.0);
  ASSERT_TRUE(corner.hit);
  EXPECT_EQ(corner.pointId, 0);

  EXPECT_FALSE(pickWorld(3.8, 1.0, 0.0).hit) << "beside the slice";
}
