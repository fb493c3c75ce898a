#include "views/VXHardwareSelection.h"

#include <vtkObjectFactory.h>
#include <vtkOpenGLHardwareSelector.h>
#include <vtkVersion.h>

namespace VXHardwareSelection
{
std::vector<std::array<int, 6>>& SubDividedTextureExtents()
{
  // Selection passes run within one render at a time, on the GUI thread.
  static std::vector<std::array<int, 6>> s_Extents;
  return s_Extents;
}
} // namespace VXHardwareSelection

namespace
{
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
    VXHardwareSelection::SubDividedTextureExtents().clear();
  }

  bool PassRequired(int pass) override
  {
    // Small scenes would skip the high word of the cell ids, and with it the index of the sub-extent.
    if (pass == CELL_ID_HIGH24 && !VXHardwareSelection::SubDividedTextureExtents().empty())
    {
      return true;
    }
    return vtkOpenGLHardwareSelector::PassRequired(pass);
  }

  void EndSelection() override
  {
    VXHardwareSelection::SubDividedTextureExtents().clear();
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
