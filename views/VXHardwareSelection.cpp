#include "views/VXHardwareSelection.h"

#include "data_views/VXOpenGLImageSliceMapper.h"

#include <vtkImageSlice.h>
#include <vtkObjectFactory.h>
#include <vtkOpenGLHardwareSelector.h>
#include <vtkOpenGLRenderWindow.h>
#include <vtkOpenGLState.h>
#include <vtkPropCollection.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>
#include <vtkRendererCollection.h>
#include <vtkVersion.h>

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

  void BeginRenderProp(vtkRenderWindow* window) override
  {
    vtkOpenGLHardwareSelector::BeginRenderProp(window);
    // The camera scissors to the whole viewport; a pick needs its area only, and the rasterizer then
    // drops every triangle outside it before filling anything.
    auto* openGLWindow = vtkOpenGLRenderWindow::SafeDownCast(window);
    if (m_CellPickOnly && openGLWindow != nullptr && openGLWindow->GetState() != nullptr)
    {
      openGLWindow->GetState()->vtkglScissor(static_cast<int>(Area[0]), static_cast<int>(Area[1]),
                                             static_cast<int>(Area[2] - Area[0] + 1),
                                             static_cast<int>(Area[3] - Area[1] + 1));
    }
  }

  void EndSelection() override
  {
    // The decoder of a pick reads each slice mapper's list.
    forEachSliceMapper(Renderer, [](VXOpenGLImageSliceMapper* mapper)
                       { mapper->setExtents(SubDividedTextureExtents()); });
    SubDividedTextureExtents().clear();
    vtkOpenGLHardwareSelector::EndSelection();
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

  bool m_CellPickOnly = false;
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
