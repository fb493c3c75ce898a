#include "data_views/VXOpenGLPolyDataMapper.h"

#include "data_views/VXOpenGLImageSliceMapper.h"

#include <vtkActor.h>
#include <vtkHardwareSelector.h>
#include <vtkInformation.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkOpenGLHelper.h>
#include <vtkOpenGLShaderCache.h>
#include <vtkRenderer.h>
#include <vtkShader.h>
#include <vtkShaderProgram.h>

namespace image_slice_utilities
{
vtkStandardNewMacro(VXOpenGLPolyDataMapper);

namespace
{
// The texel under the fragment, as an index into the texture, in base 256 over red, green and blue.
const char* const k_TexelPicking =
    "  ivec2 size = textureSize(actortexture,0);\n"
    "   vec2 fsize = vec2(size);\n"
    "   vec2 fcoord = tcoordVCVSOutput * fsize;\n"
    "  ivec2 coord = ivec2(fcoord);\n"
    "  int idx = coord.y * size.x + coord.x;\n"
    "fragOutput0 = vec4(float(idx % 256) / 255.0, float((idx / 256) % 256) / 255.0, "
    "float((idx / 65536) % 256) / 255.0, 1.0);\n";

// The piece of the image being drawn, in the same encoding.
const char* const k_ExtentPicking =
    "  int idx = activeExtent;\n"
    "fragOutput0 = vec4(float(idx % 256) / 255.0, float((idx / 256) % 256) / 255.0, "
    "float((idx / 65536) % 256) / 255.0, 1.0);\n";
} // namespace

void VXOpenGLPolyDataMapper::RenderPiece(vtkRenderer* ren, vtkActor* act)
{
  vtkHardwareSelector* selector = ren != nullptr ? ren->GetSelector() : nullptr;
  if (selector != nullptr)
  {
    m_ActiveExtent = m_NextExtentIndex++;
    if (act != nullptr)
    {
      if (act->GetPropertyKeys() == nullptr)
      {
        vtkNew<vtkInformation> keys;
        act->SetPropertyKeys(keys);
      }
      act->GetPropertyKeys()->Set(VXOpenGLImageSliceMapper::ACTIVE_EXTENT(), m_ActiveExtent);
    }
  }
  Superclass::RenderPiece(ren, act);
}

void VXOpenGLPolyDataMapper::ReplaceShaderPicking(std::map<vtkShader::Type, vtkShader*> shaders,
                                                  vtkRenderer* ren, vtkActor* act)
{
  vtkHardwareSelector* selector = ren != nullptr ? ren->GetSelector() : nullptr;
  vtkShader* fragment = shaders[vtkShader::Fragment];
  if (selector != nullptr && fragment != nullptr)
  {
    std::string source = fragment->GetSource();
    const int pass = selector->GetCurrentPass();
    if (pass == k_CellIdLowPass)
    {
      vtkShaderProgram::Substitute(source, "//VTK::Picking::Impl", k_TexelPicking);
    }
    else if (pass == k_CellIdHighPass)
    {
      vtkShaderProgram::Substitute(source, "//VTK::Picking::Dec",
                                   "//VTK::Picking::Dec\nuniform int activeExtent = -1;");
      vtkShaderProgram::Substitute(source, "//VTK::Picking::Impl", k_ExtentPicking);
    }
    fragment->SetSource(source);
  }
  Superclass::ReplaceShaderPicking(shaders, ren, act);
}

void VXOpenGLPolyDataMapper::SetMapperShaderParameters(vtkOpenGLHelper& cellBO, vtkRenderer* ren,
                                                       vtkActor* act)
{
  Superclass::SetMapperShaderParameters(cellBO, ren, act);
  if (cellBO.Program != nullptr && cellBO.Program->IsUniformUsed("activeExtent"))
  {
    cellBO.Program->SetUniformi("activeExtent", m_ActiveExtent);
  }
}
} // namespace image_slice_utilities
