#include "views/VXHardwareSelection.h"

#include "data_views/VXOpenGLImageSliceMapper.h"

#include <vtkImageSlice.h>
#include <vtkObjectFactory.h>
#include <vtkOpenGLHardwareSelector.h>
#include <vtkPropCollection.h>
#include <vtkRenderer.h>
#include <vtkVersion.h>

#include <functional>

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

protected:
  AmberquillHardwareSelector() = default;
  ~AmberquillHardwareSelector() override = default;

  void BeginSelection() override
  {
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
    return vtkOpenGLHardwareSelector::PassRequired(pass);
  }

  void EndSelection() override
  {
    // The decoder of a pick reads each slice mapper's list.
    forEachSliceMapper(Renderer, [](VXOpenGLImageSliceMapper* mapper)
                       { mapper->setExtents(SubDividedTextureExtents()); });
    SubDividedTextureExtents().clear();
    vtkOpenGLHardwareSelector::EndSelection();
  }

private:
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
