#include "data_views/VXOpenGLImageSliceMapper.h"

#include "data_views/VXOpenGLPolyDataMapper.h"

#include <vtkActor.h>
#include <vtkHardwareSelector.h>
#include <vtkImageData.h>
#include <vtkImageProperty.h>
#include <vtkImageSlice.h>
#include <vtkInformation.h>
#include <vtkInformationIntegerKey.h>
#include <vtkObjectFactory.h>
#include <vtkPolyData.h>
#include <vtkProperty.h>
#include <vtkRenderer.h>

#include <algorithm>

namespace image_slice_utilities
{
vtkStandardNewMacro(VXOpenGLImageSliceMapper);

std::vector<TextureExtent>& SubDividedTextureExtents()
{
  static std::vector<TextureExtent> s_Extents;
  return s_Extents;
}

vtkInformationIntegerKey* VXOpenGLImageSliceMapper::ACTIVE_EXTENT()
{
  static vtkInformationIntegerKey* s_Key =
      new vtkInformationIntegerKey("activeExtent", "VXOpenGLImageSliceMapper");
  return s_Key;
}

VXOpenGLImageSliceMapper::VXOpenGLImageSliceMapper()
{
  // The textured polygon gets the picking mapper; its polygon stays the base class's.
  auto* old = vtkPolyDataMapper::SafeDownCast(PolyDataActor->GetMapper());
  vtkNew<VXOpenGLPolyDataMapper> mapper;
  if (old != nullptr)
  {
    mapper->SetInputData(old->GetInput());
  }
  PolyDataActor->SetMapper(mapper);
}

bool VXOpenGLImageSliceMapper::CheckTextureSize(const int size[2], vtkRenderer* ren)
{
  return TextureSizeOK(size, ren);
}

void VXOpenGLImageSliceMapper::recursiveRenderTexturedPolygon(vtkRenderer* ren, const int extent[6],
                                                              std::vector<TextureExtent>& pieces)
{
  int piece[6];
  std::copy(extent, extent + 6, piece);
  int xdim = 0;
  int ydim = 1;
  int imageSize[2] = {0, 0};
  int textureSize[2] = {0, 0};
  ComputeTextureSize(piece, xdim, ydim, imageSize, textureSize);
  if (CheckTextureSize(textureSize, ren) || (imageSize[0] <= 1 && imageSize[1] <= 1))
  {
    pieces.push_back({piece[0], piece[1], piece[2], piece[3], piece[4], piece[5]});
    return;
  }
  // Too large for one texture: halves along the longer side, as the base class draws them.
  const int dim = imageSize[0] >= imageSize[1] ? xdim : ydim;
  const int middle = (piece[2 * dim] + piece[2 * dim + 1]) / 2;
  int first[6];
  int second[6];
  std::copy(piece, piece + 6, first);
  std::copy(piece, piece + 6, second);
  first[2 * dim + 1] = middle;
  second[2 * dim] = middle + 1;
  recursiveRenderTexturedPolygon(ren, first, pieces);
  recursiveRenderTexturedPolygon(ren, second, pieces);
}

void VXOpenGLImageSliceMapper::Render(vtkRenderer* ren, vtkImageSlice* prop)
{
  vtkHardwareSelector* selector = ren != nullptr ? ren->GetSelector() : nullptr;
  auto* polygonMapper = VXOpenGLPolyDataMapper::SafeDownCast(PolyDataActor->GetMapper());
  if (selector != nullptr && polygonMapper != nullptr)
  {
    // The pieces of this slice join the selection's list once; each pass draws them in the same
    // order, so the polygon mapper numbers them from where this slice's pieces start.
    std::vector<TextureExtent> pieces;
    recursiveRenderTexturedPolygon(ren, DisplayExtent, pieces);
    std::vector<TextureExtent>& all = SubDividedTextureExtents();
    auto found = std::search(all.begin(), all.end(), pieces.begin(), pieces.end());
    if (found == all.end())
    {
      found = all.insert(all.end(), pieces.begin(), pieces.end());
    }
    polygonMapper->setNextExtentIndex(static_cast<int>(found - all.begin()));
  }
  if (prop != nullptr && prop->GetProperty() != nullptr)
  {
    // The polygon takes the image's lighting and opacity, clamped to what vtkProperty accepts.
    vtkImageProperty* image = prop->GetProperty();
    vtkProperty* polygon = PolyDataActor->GetProperty();
    polygon->SetOpacity(std::clamp(image->GetOpacity(), 0.0, 1.0));
    polygon->SetAmbient(std::clamp(image->GetAmbient(), 0.0, 1.0));
    polygon->SetDiffuse(std::clamp(image->GetDiffuse(), 0.0, 1.0));
  }
  Superclass::Render(ren, prop);
}

void VXOpenGLImageSliceMapper::Update()
{
  Superclass::Update();
}

bool VXOpenGLImageSliceMapper::ijkFromSelection(long long selectionId, int ijk[3]) const
{
  if (selectionId < 0)
  {
    return false;
  }
  const long long index = selectionId & 0xFFFFFF;
  const auto piece = static_cast<std::size_t>(selectionId / 0x1000000);
  if (piece >= m_Extents.size())
  {
    return false;
  }
  const TextureExtent& e = m_Extents[piece];
  const int slice = const_cast<VXOpenGLImageSliceMapper*>(this)->GetSliceNumber();
  switch (Orientation)
  {
  case 0:
  {
    const long long row = e[3] - e[2] + 1;
    ijk[0] = slice;
    ijk[1] = e[2] + static_cast<int>(index % row);
    ijk[2] = e[4] + static_cast<int>(index / row);
    break;
  }
  case 1:
  {
    const long long row = e[1] - e[0] + 1;
    ijk[0] = e[0] + static_cast<int>(index % row);
    ijk[1] = slice;
    ijk[2] = e[4] + static_cast<int>(index / row);
    break;
  }
  default:
  {
    const long long row = e[1] - e[0] + 1;
    ijk[0] = e[0] + static_cast<int>(index % row);
    ijk[1] = e[2] + static_cast<int>(index / row);
    ijk[2] = slice;
    break;
  }
  }
  return true;
}

long long VXOpenGLImageSliceMapper::cellIdFromSelection(long long selectionId)
{
  int ijk[3];
  vtkImageData* image = GetInput();
  if (image == nullptr || !ijkFromSelection(selectionId, ijk))
  {
    return -1;
  }
  return image->ComputePointId(ijk);
}
} // namespace image_slice_utilities
