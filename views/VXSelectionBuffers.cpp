#include "views/VXSelectionBuffers.h"

#include "views/VXHardwareSelection.h"

#include <vtkCamera.h>
#include <vtkMatrix4x4.h>
#include <vtkProp.h>
#include <vtkPropCollection.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>

#include <algorithm>
#include <cstring>

namespace
{
// Hides the visible props that must not be picked, and shows them again when it goes.
class NonPickablePropsHidden
{
public:
  explicit NonPickablePropsHidden(vtkRenderer* renderer)
  {
    vtkPropCollection* props = renderer->GetViewProps();
    vtkCollectionSimpleIterator it;
    props->InitTraversal(it);
    while (vtkProp* prop = props->GetNextProp(it))
    {
      if (prop->GetVisibility() != 0 && prop->GetPickable() == 0)
      {
        prop->SetVisibility(0);
        m_Hidden.push_back(prop);
      }
    }
  }
  ~NonPickablePropsHidden()
  {
    for (vtkProp* prop : m_Hidden)
    {
      prop->SetVisibility(1);
    }
  }
  NonPickablePropsHidden(const NonPickablePropsHidden&) = delete;
  NonPickablePropsHidden& operator=(const NonPickablePropsHidden&) = delete;

private:
  std::vector<vtkProp*> m_Hidden;
};

void append(std::vector<std::uint64_t>& signature, double value)
{
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  signature.push_back(bits);
}

void append(std::vector<std::uint64_t>& signature, const void* pointer)
{
  signature.push_back(static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(pointer)));
}
} // namespace

VXSelectionBuffers::VXSelectionBuffers() = default;

VXSelectionBuffers::~VXSelectionBuffers() = default;

void VXSelectionBuffers::clear()
{
  m_Pieces.clear();
  m_Signature.clear();
  m_Renderer = nullptr;
}

std::vector<std::uint64_t> VXSelectionBuffers::sceneSignature(vtkRenderer* renderer) const
{
  std::vector<std::uint64_t> signature;
  append(signature, renderer);
  const int* size = renderer->GetRenderWindow()->GetSize();
  signature.push_back(static_cast<std::uint64_t>(size[0]));
  signature.push_back(static_cast<std::uint64_t>(size[1]));
  const double* viewport = renderer->GetViewport();
  for (int i = 0; i < 4; ++i)
  {
    append(signature, viewport[i]);
  }
  // The camera by the matrix it projects with, so that a change of any of its settings counts and a
  // setting written again with the same value does not.
  vtkCamera* camera = renderer->GetActiveCamera();
  append(signature, camera);
  vtkMatrix4x4* projection =
      camera->GetCompositeProjectionTransformMatrix(renderer->GetTiledAspectRatio(), -1.0, 1.0);
  for (int i = 0; i < 16; ++i)
  {
    append(signature, projection->GetElement(i / 4, i % 4));
  }
  // Every prop, so that one added or removed counts; what a pickable one draws, by the time of the last
  // change of anything that would draw it differently (its transform, property, mapper and the
  // mapper's input, brought up to date first as a render would).
  vtkPropCollection* props = renderer->GetViewProps();
  vtkCollectionSimpleIterator it;
  props->InitTraversal(it);
  while (vtkProp* prop = props->GetNextProp(it))
  {
    // 2D actors (legends, text) are drawn over the scene, never into a selection.
    if (prop->IsA("vtkActor2D") != 0)
    {
      continue;
    }
    append(signature, prop);
    const bool drawnForPicks = prop->GetVisibility() != 0 && prop->GetPickable() != 0;
    signature.push_back(drawnForPicks ? 1U : 0U);
    if (drawnForPicks)
    {
      signature.push_back(static_cast<std::uint64_t>(prop->GetRedrawMTime()));
    }
  }
  return signature;
}

const VXSelectionBuffers::Piece* VXSelectionBuffers::capture(vtkRenderer* renderer, int x, int y)
{
  const int* size = renderer->GetRenderWindow()->GetSize();
  // A square around the pixel, moved inside the window at its borders.
  auto span = [](int at, int extent, unsigned int& low, unsigned int& high)
  {
    const int side = std::min(k_PieceSize, extent);
    const int start = std::clamp(at - side / 2, 0, extent - side);
    low = static_cast<unsigned int>(start);
    high = static_cast<unsigned int>(start + side - 1);
  };
  Piece piece;
  span(x, size[0], piece.area[0], piece.area[2]);
  span(y, size[1], piece.area[1], piece.area[3]);
  piece.selector = VXHardwareSelection::NewCellPickSelector();
  piece.selector->SetRenderer(renderer);
  piece.selector->SetArea(piece.area);
  bool captured = false;
  {
    NonPickablePropsHidden hidden(renderer);
    captured = piece.selector->CaptureBuffers();
  }
  ++m_CaptureCount;
  if (!captured)
  {
    return nullptr;
  }
  if (m_Pieces.size() >= k_MaxPieces)
  {
    m_Pieces.pop_front();
  }
  m_Pieces.push_back(piece);
  return &m_Pieces.back();
}

vtkHardwareSelector::PixelInformation VXSelectionBuffers::pixelInformation(vtkRenderer* renderer, int x,
                                                                           int y)
{
  if (renderer == nullptr || renderer->GetRenderWindow() == nullptr || renderer->GetActiveCamera() == nullptr)
  {
    return {};
  }
  const int* size = renderer->GetRenderWindow()->GetSize();
  if (x < 0 || y < 0 || x >= size[0] || y >= size[1])
  {
    return {};
  }
  std::vector<std::uint64_t> signature = sceneSignature(renderer);
  if (renderer != m_Renderer || signature != m_Signature)
  {
    m_Pieces.clear();
  }
  const auto holds = [x, y](const Piece& piece)
  {
    return static_cast<unsigned int>(x) >= piece.area[0] && static_cast<unsigned int>(x) <= piece.area[2] &&
           static_cast<unsigned int>(y) >= piece.area[1] && static_cast<unsigned int>(y) <= piece.area[3];
  };
  const auto found = std::find_if(m_Pieces.rbegin(), m_Pieces.rend(), holds);
  const Piece* piece = found != m_Pieces.rend() ? &*found : nullptr;
  if (piece == nullptr)
  {
    m_Renderer = renderer;
    piece = capture(renderer, x, y);
    if (piece == nullptr)
    {
      clear();
      return {};
    }
    // The render brings the pipelines up to date: the scene is taken as it stands after it, and the
    // pieces taken before are kept only if it did not change.
    m_Signature = sceneSignature(renderer);
    if (m_Signature != signature)
    {
      m_Pieces.erase(m_Pieces.begin(), m_Pieces.end() - 1);
      piece = &m_Pieces.back();
    }
  }
  const unsigned int pixel[2] = {static_cast<unsigned int>(x), static_cast<unsigned int>(y)};
  return piece->selector->GetPixelInformation(pixel, 0);
}
