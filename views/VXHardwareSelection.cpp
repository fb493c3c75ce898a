#include "views/VXHardwareSelection.h"

#include "data_views/VXOpenGLImageSliceMapper.h"

#include <vtkCamera.h>
#include <vtkImageSlice.h>
#include <vtkMatrix4x4.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkOpenGLHardwareSelector.h>
#include <vtkPropCollection.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>
#include <vtkRendererCollection.h>
#include <vtkVersion.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace
{
using image_slice_utilities::SubDividedTextureExtents;
using image_slice_utilities::VXOpenGLImageSliceMapper;

// Each image slice prop of the renderer that our slice mapper draws.
void forEachSliceMapper(vtkRenderer* renderer, const std::function<void(VXOpenGLImageSliceMapper*)>& work)
{
  if (renderer == nullptr)
  {
    return;
  }
  vtkPropCollection* props = renderer->GetViewProps();
  vtkCollectionSimpleIterator it;
  props->InitTraversal(it);
  while (vtkProp* prop = props->GetNextProp(it))
  {
    auto* slice = vtkImageSlice::SafeDownCast(prop);
    if (auto* mapper =
            slice != nullptr ? VXOpenGLImageSliceMapper::SafeDownCast(slice->GetMapper()) : nullptr)
    {
      work(mapper);
    }
  }
}

class AmberquillHardwareSelector : public vtkOpenGLHardwareSelector
{
public:
  static AmberquillHardwareSelector* New()
  {
    auto* selector = new AmberquillHardwareSelector();
    selector->InitializeObjectBase();
    return selector;
  }
  vtkTypeMacro(AmberquillHardwareSelector, vtkOpenGLHardwareSelector);

  // Only the prop and the cell id, drawn only inside the area.
  void setCellPickOnly(bool on) { m_CellPickOnly = on; }

protected:
  AmberquillHardwareSelector() = default;
  ~AmberquillHardwareSelector() override = default;

  void BeginSelection() override
  {
    silenceOtherRenderers();
    if (m_CellPickOnly)
    {
      narrowToArea();
    }
    vtkOpenGLHardwareSelector::BeginSelection();
    forEachSliceMapper(Renderer, [](VXOpenGLImageSliceMapper* mapper) { mapper->clearExtents(); });
    SubDividedTextureExtents().clear();
  }

  bool PassRequired(int pass) override
  {
    // Small scenes would skip the high word of the cell ids, and with it the index of the sub-extent.
    if (pass == CELL_ID_HIGH24 && !SubDividedTextureExtents().empty())
    {
      return true;
    }
    // A cell pick finds the point and the position on the CPU from the cell and the view ray.
    if (m_CellPickOnly && pass != ACTOR_PASS && pass != CELL_ID_LOW24 && pass != CELL_ID_HIGH24)
    {
      return false;
    }
    return vtkOpenGLHardwareSelector::PassRequired(pass);
  }

  void EndSelection() override
  {
    // The decoder of a pick reads each slice mapper's list.
    forEachSliceMapper(Renderer, [](VXOpenGLImageSliceMapper* mapper)
                       { mapper->setExtents(SubDividedTextureExtents()); });
    SubDividedTextureExtents().clear();
    vtkOpenGLHardwareSelector::EndSelection();
    restoreArea();
    restoreOtherRenderers();
  }

private:
  // Every pass renders the whole window: the other renderers would cost time and, drawn over the
  // selected renderer, overwrite its ids.
  void silenceOtherRenderers()
  {
    m_Silenced.clear();
    vtkRenderWindow* window = Renderer != nullptr ? Renderer->GetRenderWindow() : nullptr;
    if (window == nullptr)
    {
      return;
    }
    vtkRendererCollection* renderers = window->GetRenderers();
    vtkCollectionSimpleIterator it;
    renderers->InitTraversal(it);
    while (vtkRenderer* other = renderers->GetNextRenderer(it))
    {
      if (other != Renderer && other->GetDraw() != 0)
      {
        other->DrawOff();
        m_Silenced.push_back(other);
      }
    }
  }

  void restoreOtherRenderers()
  {
    for (vtkRenderer* other : m_Silenced)
    {
      other->DrawOn();
    }
    m_Silenced.clear();
  }

  // The selection renders only its area: the renderer's viewport shrinks to it, and a copy of the
  // camera projects only what the area shows of the whole viewport. The rasterizer then drops every
  // primitive outside before any work on it, and whole props outside are culled.
  void narrowToArea()
  {
    vtkRenderWindow* window = Renderer != nullptr ? Renderer->GetRenderWindow() : nullptr;
    vtkCamera* camera = Renderer != nullptr ? Renderer->GetActiveCamera() : nullptr;
    if (window == nullptr || camera == nullptr || window->GetSize()[0] <= 0 || window->GetSize()[1] <= 0)
    {
      return;
    }
    const double width = window->GetSize()[0];
    const double height = window->GetSize()[1];
    const double* viewport = Renderer->GetViewport();
    const double left = viewport[0] * width;
    const double bottom = viewport[1] * height;
    const double viewportWidth = (viewport[2] - viewport[0]) * width;
    const double viewportHeight = (viewport[3] - viewport[1]) * height;
    if (viewportWidth <= 0.0 || viewportHeight <= 0.0)
    {
      return;
    }
    // The area in the normalized device coordinates of the whole viewport.
    const double x0 = 2.0 * (Area[0] - left) / viewportWidth - 1.0;
    const double x1 = 2.0 * (Area[2] + 1.0 - left) / viewportWidth - 1.0;
    const double y0 = 2.0 * (Area[1] - bottom) / viewportHeight - 1.0;
    const double y1 = 2.0 * (Area[3] + 1.0 - bottom) / viewportHeight - 1.0;
    vtkNew<vtkMatrix4x4> zoom;
    zoom->SetElement(0, 0, 2.0 / (x1 - x0));
    zoom->SetElement(0, 3, -(x0 + x1) / (x1 - x0));
    zoom->SetElement(1, 1, 2.0 / (y1 - y0));
    zoom->SetElement(1, 3, -(y0 + y1) / (y1 - y0));
    auto projection = vtkSmartPointer<vtkMatrix4x4>::New();
    vtkMatrix4x4::Multiply4x4(
        zoom, camera->GetProjectionTransformMatrix(Renderer->GetTiledAspectRatio(), -1.0, 1.0), projection);
    auto narrow = vtkSmartPointer<vtkCamera>::New();
    narrow->DeepCopy(camera);
    narrow->SetExplicitProjectionTransformMatrix(projection);
    narrow->UseExplicitProjectionTransformMatrixOn();
    m_Camera = camera;
    std::copy(viewport, viewport + 4, m_Viewport);
    Renderer->SetActiveCamera(narrow);
    Renderer->SetViewport(Area[0] / width, Area[1] / height, (Area[2] + 1.0) / width,
                          (Area[3] + 1.0) / height);
  }

  void restoreArea()
  {
    if (m_Camera != nullptr && Renderer != nullptr)
    {
      Renderer->SetActiveCamera(m_Camera);
      Renderer->SetViewport(m_Viewport);
    }
    m_Camera = nullptr;
  }

  bool m_CellPickOnly = false;
  vtkSmartPointer<vtkCamera> m_Camera;
  double m_Viewport[4] = {0.0, 0.0, 1.0, 1.0};
  std::vector<vtkSmartPointer<vtkRenderer>> m_Silenced;

  AmberquillHardwareSelector(const AmberquillHardwareSelector&) = delete;
  void operator=(const AmberquillHardwareSelector&) = delete;
};

vtkObject* createAmberquillHardwareSelector()
{
  return AmberquillHardwareSelector::New();
}

class AmberquillVtkHardwareSelectorFactory : public vtkObjectFactory
{
public:
  static AmberquillVtkHardwareSelectorFactory* New()
  {
    auto* factory = new AmberquillVtkHardwareSelectorFactory();
    factory->InitializeObjectBase();
    return factory;
  }
  vtkTypeMacro(AmberquillVtkHardwareSelectorFactory, vtkObjectFactory);

  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "Amberquill vtkHardwareSelector Override Factory"; }

protected:
  AmberquillVtkHardwareSelectorFactory()
  {
    RegisterOverride("vtkHardwareSelector", "AmberquillHardwareSelector",
                     "Amberquill vtkHardwareSelector override", 1, createAmberquillHardwareSelector);
  }

private:
  AmberquillVtkHardwareSelectorFactory(const AmberquillVtkHardwareSelectorFactory&) = delete;
  void operator=(const AmberquillVtkHardwareSelectorFactory&) = delete;
};

bool s_Registered = false;

// At library load, so that each toolkit request for a selector yields ours from the start.
struct RegisterAtLoad
{
  RegisterAtLoad() { VXHardwareSelection::RegisterSelectorOverride(); }
} s_RegisterAtLoad;
} // namespace

vtkSmartPointer<vtkHardwareSelector> VXHardwareSelection::NewCellPickSelector()
{
  RegisterSelectorOverride();
  auto selector = vtkSmartPointer<AmberquillHardwareSelector>::Take(AmberquillHardwareSelector::New());
  selector->setCellPickOnly(true);
  selector->SetFieldAssociation(vtkDataObject::FIELD_ASSOCIATION_CELLS);
  return selector;
}

void VXHardwareSelection::RegisterSelectorOverride()
{
  if (!s_Registered)
  {
    vtkObjectFactory* factory = AmberquillVtkHardwareSelectorFactory::New();
    vtkObjectFactory::RegisterFactory(factory);
    factory->Delete();
    s_Registered = true;
  }
  // The rendering module's own override may have come in after ours; it must not win.
  vtkObjectFactory::SetAllEnableFlags(0, "vtkHardwareSelector", "vtkOpenGLHardwareSelector");
}
