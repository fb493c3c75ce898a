// Picks through kept selection buffers: a still scene is not rendered again, and every change of what
// lies under a pixel (camera, slice, visibility, data, props, window size) is seen by the next pick.
#include "RenderWindowTestUtils.h"

#include "data_views/VXOpenGLImageSliceMapper.h"
#include "views/VXHardwarePicker.h"
#include "views/VXPickerCallback.h"
#include "views/VXSelectionBuffers.h"

#include <vtkActor.h>
#include <vtkCallbackCommand.h>
#include <vtkCamera.h>
#include <vtkImageData.h>
#include <vtkImageSlice.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPlaneSource.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkRenderWindow.h>
#include <vtkRenderWindowInteractor.h>
#include <vtkRenderer.h>
#include <vtkRendererCollection.h>
#include <vtkTextActor.h>

#include <QTest>

#include <array>
#include <cmath>

using namespace zr_test;

namespace
{
// A square of n x n unit cells in the plane z, from (x0, 0).
vtkSmartPointer<vtkPlaneSource> squareOfCells(double x0, double z, int n)
{
  auto plane = vtkSmartPointer<vtkPlaneSource>::New();
  plane->SetOrigin(x0, 0.0, z);
  plane->SetPoint1(x0 + n, 0.0, z);
  plane->SetPoint2(x0, n, z);
  plane->SetResolution(n, n);
  return plane;
}

vtkSmartPointer<vtkActor> actorOf(vtkPlaneSource* plane)
{
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(plane->GetOutputPort());
  auto actor = vtkSmartPointer<vtkActor>::New();
  actor->SetMapper(mapper);
  return actor;
}

// Counts the renders of one renderer.
class RenderCounter
{
public:
  explicit RenderCounter(vtkRenderer* renderer)
      : m_Renderer(renderer)
  {
    m_Command->SetClientData(&m_Count);
    m_Command->SetCallback([](vtkObject*, unsigned long, void* count, void*)
                           { ++*static_cast<int*>(count); });
    m_Tag = renderer->AddObserver(vtkCommand::StartEvent, m_Command);
  }
  ~RenderCounter() { m_Renderer->RemoveObserver(m_Tag); }
  int count() const { return m_Count; }

private:
  vtkRenderer* m_Renderer;
  vtkNew<vtkCallbackCommand> m_Command;
  unsigned long m_Tag = 0;
  int m_Count = 0;
};
} // namespace

class VXSelectionBuffersTest : public ::testing::Test
{
protected:
  void SetUp() override { m_Window = makeShownWindow(320, 240); }

  vtkRenderer* renderer() const { return m_Window->getRenderer(); }

  // Looks straight down the z axis at (cx, cy) with 100 pixels per unit (for a window 240 high).
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

  VXPickResult pickAtPixel(const std::array<int, 2>& pixel)
  {
    return VXHardwarePicker::Pick(renderer(), pixel[0], pixel[1], &m_Buffers);
  }

  std::unique_ptr<VXVisualizationWidget> m_Window;
  VXSelectionBuffers m_Buffers;
};

TEST_F(VXSelectionBuffersTest, AStillSceneIsPickedWithoutRenderingAgain)
{
  auto plane = squareOfCells(0.0, 0.0, 4);
  m_Window->addActor(actorOf(plane));
  lookDown(1.0, 1.0);
  RenderCounter renders(renderer());

  const auto pixel = displayOf(0.9, 0.5, 0.0);
  const VXPickResult first = pickAtPixel(pixel);
  ASSERT_TRUE(first.hit);
  EXPECT_EQ(first.cellId, 0);
  EXPECT_EQ(m_Buffers.captureCount(), 1);
  // Only the prop and cell id passes are drawn.
  EXPECT_EQ(renders.count(), 2);

  // A few pixels on: the same buffers, and the next cell.
  const VXPickResult near = pickAtPixel(displayOf(1.1, 0.5, 0.0));
  ASSERT_TRUE(near.hit);
  EXPECT_EQ(near.cellId, 1);
  EXPECT_EQ(m_Buffers.captureCount(), 1);
  EXPECT_EQ(renders.count(), 2);

  // A drawing of the window between two picks (as after each hover) changes nothing under a pixel.
  m_Window->renderWindow()->Render();
  EXPECT_EQ(pickAtPixel(pixel).cellId, 0);
  EXPECT_EQ(m_Buffers.captureCount(), 1);

  // Text over the scene, written and rewritten, is never part of a selection.
  vtkNew<vtkTextActor> text;
  text->SetInput("first");
  renderer()->AddActor2D(text);
  m_Window->renderWindow()->Render();
  text->SetInput("second");
  EXPECT_EQ(pickAtPixel(pixel).cellId, 0);
  EXPECT_EQ(m_Buffers.captureCount(), 1);

  // A pixel that the kept square does not hold is rendered for; the first square is still kept.
  const VXPickResult far = pickAtPixel(displayOf(2.5, 1.9, 0.0));
  EXPECT_EQ(far.cellId, 2 + 1 * 4);
  EXPECT_EQ(m_Buffers.captureCount(), 2);
  EXPECT_EQ(pickAtPixel(pixel).cellId, 0);
  EXPECT_EQ(m_Buffers.captureCount(), 2);
}

TEST_F(VXSelectionBuffersTest, TheHoverTextAndItsHighlightDoNotRenderTheSelectionAgain)
{
  auto plane = squareOfCells(0.0, 0.0, 4);
  m_Window->addActor(actorOf(plane));
  lookDown(1.0, 1.0);
  m_Window->toggleHoverCells(true);
  VXPickerCallback* picker = m_Window->getPickerCallback();
  vtkRenderWindowInteractor* interactor = m_Window->renderWindow()->GetInteractor();
  RenderCounter renders(renderer());
  auto hoverAt = [&](double x, double y)
  {
    const auto pixel = displayOf(x, y, 0.0);
    interactor->SetEventPosition(pixel[0], pixel[1]);
    const std::string text = picker->GeneratePickInfo();
    m_Window->renderWindow()->Render(); // the highlight is drawn, as the hover timer does
    return text;
  };
  EXPECT_NE(hoverAt(0.9, 0.9).find("Cell Id: 0"), std::string::npos);
  const int afterFirst = renders.count();
  EXPECT_NE(hoverAt(1.1, 0.9).find("Cell Id: 1\n"), std::string::npos);
  EXPECT_NE(hoverAt(1.1, 1.1).find("Cell Id: 5\n"), std::string::npos);
  EXPECT_TRUE(picker->getCellHighlightActor()->GetVisibility());
  // Two hovers, two frames to show their highlight, no selection pass.
  EXPECT_EQ(renders.count(), afterFirst + 2);
}

TEST_F(VXSelectionBuffersTest, EachChangeUnderThePixelIsSeenByTheNextPick)
{
  auto back = squareOfCells(0.0, 0.0, 4);
  auto front = squareOfCells(0.0, 1.0, 2);
  vtkSmartPointer<vtkActor> backActor = actorOf(back);
  vtkSmartPointer<vtkActor> frontActor = actorOf(front);
  m_Window->addActor(backActor);
  m_Window->addActor(frontActor);
  lookDown(1.0, 1.0);
  const auto pixel = displayOf(0.6, 0.6, 0.0);
  EXPECT_EQ(pickAtPixel(pixel).prop, frontActor.Get());

  // Hidden, with no frame drawn since: the back square shows through.
  frontActor->VisibilityOff();
  VXPickResult pick = pickAtPixel(pixel);
  EXPECT_EQ(pick.prop, backActor.Get());
  EXPECT_EQ(pick.cellId, 0);
  frontActor->VisibilityOn();
  EXPECT_EQ(pickAtPixel(pixel).prop, frontActor.Get());

  // Not pickable any more: the same.
  frontActor->PickableOff();
  EXPECT_EQ(pickAtPixel(pixel).prop, backActor.Get());
  frontActor->PickableOn();
  EXPECT_EQ(pickAtPixel(pixel).prop, frontActor.Get());

  // Moved away by its transform.
  frontActor->SetPosition(10.0, 0.0, 0.0);
  EXPECT_EQ(pickAtPixel(pixel).prop, backActor.Get());
  frontActor->SetPosition(0.0, 0.0, 0.0);
  EXPECT_EQ(pickAtPixel(pixel).prop, frontActor.Get());

  // Its data changes: the square is cut finer, so the pixel lies in another cell of it.
  front->SetResolution(4, 4);
  pick = pickAtPixel(pixel);
  EXPECT_EQ(pick.prop, frontActor.Get());
  EXPECT_EQ(pick.cellId, 1 + 1 * 4) << "cell (1, 1) of the finer square";

  // Removed from the renderer, then another one added in front.
  renderer()->RemoveActor(frontActor);
  EXPECT_EQ(pickAtPixel(pixel).prop, backActor.Get());
  auto top = squareOfCells(0.0, 0.5, 1);
  vtkSmartPointer<vtkActor> topActor = actorOf(top);
  m_Window->addActor(topActor);
  EXPECT_EQ(pickAtPixel(pixel).prop, topActor.Get());

  // The camera moves: the pixel now shows cell (3, 0) of the back square.
  renderer()->RemoveActor(topActor);
  EXPECT_EQ(pickAtPixel(pixel).cellId, 0);
  vtkCamera* camera = renderer()->GetActiveCamera();
  camera->SetFocalPoint(4.0, 1.0, 0.0);
  camera->SetPosition(4.0, 1.0, 50.0);
  pick = pickAtPixel(pixel);
  EXPECT_EQ(pick.prop, backActor.Get());
  EXPECT_EQ(pick.cellId, 3);
}

TEST_F(VXSelectionBuffersTest, AResizedWindowIsPickedAsItIsNow)
{
  auto plane = squareOfCells(0.0, 0.0, 4);
  m_Window->addActor(actorOf(plane));
  lookDown(2.0, 2.0);
  // 100 pixels per unit, the focal point at the window's centre: (2 + 1.4, 2.1) is 140 pixels right
  // of it, in cell (3, 2).
  const std::array<int, 2> pixel = {{160 + 140, 130}};
  EXPECT_EQ(pickAtPixel(pixel).cellId, 3 + 2 * 4);
  // Twice as wide: the centre moves right by 160 pixels, and the same pixel lies 20 pixels left of
  // the focal point, at (1.8, 2.1), in cell (1, 2).
  m_Window->resize(640, 240);
  settle();
  ASSERT_EQ(m_Window->renderWindow()->GetSize()[0], 640);
  m_Window->renderWindow()->Render();
  EXPECT_EQ(pickAtPixel(pixel).cellId, 1 + 2 * 4);
}

TEST_F(VXSelectionBuffersTest, AnImageSliceIsPickedOnTheSliceItShowsNow)
{
  // A 4 x 3 x 3 point image; each point's "Label" = its id. Slices along z are drawn by our mapper.
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(4, 3, 3);
  vtkNew<vtkIntArray> label;
  label->SetName("Label");
  for (vtkIdType i = 0; i < image->GetNumberOfPoints(); ++i)
  {
    label->InsertNextValue(static_cast<int>(i));
  }
  image->GetPointData()->SetScalars(label);
  vtkNew<image_slice_utilities::VXOpenGLImageSliceMapper> mapper;
  mapper->SetInputData(image);
  mapper->SetOrientationToZ();
  mapper->SetSliceNumber(0);
  vtkNew<vtkImageSlice> slice;
  slice->SetMapper(mapper);
  m_Window->addActor(slice);
  lookDown(1.5, 1.0);
  const auto pixel = displayOf(2.1, 1.2, 0.0);
  VXPickResult pick = pickAtPixel(pixel);
  ASSERT_TRUE(pick.hit);
  EXPECT_EQ(pick.pointId, 2 + 1 * 4);

  mapper->SetSliceNumber(2);
  pick = pickAtPixel(pixel);
  ASSERT_TRUE(pick.hit);
  EXPECT_EQ(pick.pointId, 2 + 1 * 4 + 2 * 12) << "the point (2, 1, 2) of the slice now shown";
  EXPECT_EQ(m_Buffers.captureCount(), 2);
}

TEST_F(VXSelectionBuffersTest, OtherRenderersOfTheWindowDoNotDrawIntoTheSelection)
{
  auto plane = squareOfCells(-10.0, 0.0, 20);
  plane->SetOrigin(-10.0, -10.0, 0.0);
  plane->SetPoint1(10.0, -10.0, 0.0);
  plane->SetPoint2(-10.0, 10.0, 0.0);
  m_Window->addActor(actorOf(plane));
  lookDown(0.0, 0.0);
  vtkRendererCollection* renderers = m_Window->renderWindow()->GetRenderers();
  ASSERT_GE(renderers->GetNumberOfItems(), 2) << "the overlay and the corner axes have their own";
  std::vector<std::unique_ptr<RenderCounter>> others;
  renderers->InitTraversal();
  while (vtkRenderer* other = renderers->GetNextItem())
  {
    if (other != renderer())
    {
      others.push_back(std::make_unique<RenderCounter>(other));
    }
  }
  // Every pixel of the window, corners too, finds the plane that covers it all.
  const int* size = m_Window->renderWindow()->GetSize();
  for (const auto& pixel : {std::array<int, 2>{{2, 2}}, std::array<int, 2>{{size[0] - 3, size[1] - 3}},
                            std::array<int, 2>{{size[0] - 3, 2}}, std::array<int, 2>{{2, size[1] - 3}}})
  {
    EXPECT_TRUE(pickAtPixel(pixel).hit) << pixel[0] << ", " << pixel[1];
  }
  for (const auto& counter : others)
  {
    EXPECT_EQ(counter->count(), 0);
  }
}
