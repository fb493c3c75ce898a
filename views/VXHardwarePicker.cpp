#include "views/VXHardwarePicker.h"

#include "data_bridge/ZRVtkUtils.h"
#include "data_views/VXOpenGLImageSliceMapper.h"
#include "views/VXSelectionBuffers.h"

#include <vtkActor.h>
#include <vtkAlgorithm.h>
#include <vtkCell.h>
#include <vtkDataSet.h>
#include <vtkGenericCell.h>
#include <vtkImageData.h>
#include <vtkImageSlice.h>
#include <vtkLine.h>
#include <vtkMapper.h>
#include <vtkMath.h>
#include <vtkMatrix4x4.h>
#include <vtkNew.h>
#include <vtkProp.h>
#include <vtkPropCollection.h>
#include <vtkRectilinearGrid.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace
{
// The view ray through a display pixel, from the near to the far clipping plane.
void viewRay(vtkRenderer* renderer, double x, double y, double nearPoint[3], double farPoint[3])
{
  double world[4];
  renderer->SetDisplayPoint(x, y, 0.0);
  renderer->DisplayToWorld();
  renderer->GetWorldPoint(world);
  for (int i = 0; i < 3; ++i)
  {
    nearPoint[i] = world[i] / world[3];
  }
  renderer->SetDisplayPoint(x, y, 1.0);
  renderer->DisplayToWorld();
  renderer->GetWorldPoint(world);
  for (int i = 0; i < 3; ++i)
  {
    farPoint[i] = world[i] / world[3];
  }
}

double distanceToRay(const double point[3], const double nearPoint[3], const double farPoint[3], double& t)
{
  double closest[3];
  return std::sqrt(vtkLine::DistanceToLine(point, nearPoint, farPoint, t, closest));
}
// An image slice is a textured quad: the selection gives the texel and the piece of the image it
// belongs to, which our slice mapper turns into the (i, j, k) of the image it draws.
void pickImageSlice(vtkImageSlice* slice, vtkIdType selectionId, VXPickResult& result)
{
  auto* mapper = image_slice_utilities::VXOpenGLImageSliceMapper::SafeDownCast(slice->GetMapper());
  vtkImageData* drawn = mapper != nullptr ? mapper->GetInput() : nullptr;
  int ijk[3];
  if (drawn == nullptr || !mapper->ijkFromSelection(selectionId, ijk))
  {
    return;
  }
  const vtkIdType drawnPoint = drawn->ComputePointId(ijk);
  if (drawnPoint < 0 || drawnPoint >= drawn->GetNumberOfPoints())
  {
    return;
  }
  result.mapper = mapper;
  result.drawn = drawn;
  result.drawnCellId = drawnPoint;
  auto* original =
      vtkImageData::SafeDownCast(ZRVtk::utils::FindOriginalPipelineInput(mapper->GetInputAlgorithm()));
  result.original =
      original != nullptr ? static_cast<vtkDataSet*>(original) : static_cast<vtkDataSet*>(drawn);
  // The drawn image sits where the prop's matrix puts it (the slice view moves it half a cell, onto
  // the centres of the cells it shows): the position is reported in the world.
  double dataPoint[3];
  drawn->GetPoint(drawnPoint, dataPoint);
  const double homogeneous[4] = {dataPoint[0], dataPoint[1], dataPoint[2], 1.0};
  double world[4];
  slice->GetMatrix()->MultiplyPoint(homogeneous, world);
  for (int axis = 0; axis < 3; ++axis)
  {
    result.position[axis] = world[3] != 0.0 ? world[axis] / world[3] : world[axis];
  }
  result.hit = true;
  // The slice view draws each cell of the image as one point of the image it draws, at the same (i, j,
  // k); an image without cell arrays is drawn by its points.
  const bool drawsCells =
      original != nullptr && original != drawn && drawn->GetNumberOfPoints() == original->GetNumberOfCells();
  if (drawsCells)
  {
    result.cellId = original->ComputeCellId(ijk);
    result.pointId = original->ComputePointId(ijk);
  }
  else
  {
    result.pointId = drawnPoint;
    result.cellId = VXHardwarePicker::FindCellAt(result.original, dataPoint);
  }
}
} // namespace

vtkIdType VXHardwarePicker::FindCellAt(vtkDataSet* dataSet, const double position[3])
{
  if (dataSet == nullptr || dataSet->GetNumberOfCells() == 0)
  {
    return -1;
  }
  double bounds[6];
  dataSet->GetBounds(bounds);
  const double diagonal = std::sqrt(vtkMath::Distance2BetweenPoints(bounds, bounds + 3));
  // Positions on a face of the data are found though rounding puts them a hair outside it.
  const double tolerance = std::max(diagonal * 1.0e-6, 1.0e-12);
  double pcoords[3];
  double weights[64];
  int subId = 0;
  double at[3] = {position[0], position[1], position[2]};
  if (auto* image = vtkImageData::SafeDownCast(dataSet))
  {
    // Clamp onto the image so that a position on its outer face lands in the face's cell.
    for (int axis = 0; axis < 3; ++axis)
    {
      at[axis] = std::min(std::max(at[axis], bounds[2 * axis]), bounds[2 * axis + 1]);
      if (std::abs(at[axis] - position[axis]) > tolerance)
      {
        return -1;
      }
    }
    return image->FindCell(at, nullptr, -1, tolerance * tolerance, subId, pcoords, weights);
  }
  vtkNew<vtkGenericCell> cell;
  return dataSet->FindCell(at, nullptr, cell, -1, tolerance * tolerance, subId, pcoords, weights);
}

VXPickResult VXHardwarePicker::Pick(vtkRenderer* renderer, int x, int y, VXSelectionBuffers* buffers)
{
  VXPickResult result;
  if (renderer == nullptr || renderer->GetRenderWindow() == nullptr)
  {
    return result;
  }
  // Our selector decodes image slices drawn as textures; it draws the prop and cell ids only, and
  // the point and the position are found below from the cell and the view ray.
  VXSelectionBuffers ownBuffers;
  const vtkHardwareSelector::PixelInformation info =
      (buffers != nullptr ? buffers : &ownBuffers)->pixelInformation(renderer, x, y);
  if (!info.Valid || info.Prop == nullptr || info.AttributeID < 0)
  {
    return result;
  }
  result.prop = info.Prop;
  if (auto* slice = vtkImageSlice::SafeDownCast(info.Prop))
  {
    pickImageSlice(slice, info.AttributeID, result);
    return result;
  }
  auto* actor = vtkActor::SafeDownCast(info.Prop);
  result.mapper = actor != nullptr ? actor->GetMapper() : nullptr;
  if (result.mapper == nullptr)
  {
    return result;
  }
  result.drawn = vtkDataSet::SafeDownCast(result.mapper->GetInputDataObject(0, 0));
  if (result.drawn == nullptr || info.AttributeID >= result.drawn->GetNumberOfCells())
  {
    return result;
  }
  result.original =
      vtkDataSet::SafeDownCast(ZRVtk::utils::FindOriginalPipelineInput(result.mapper->GetInputAlgorithm()));
  if (result.original == nullptr)
  {
    result.original = result.drawn;
  }
  result.drawnCellId = info.AttributeID;
  result.hit = true;

  // The position: where the view ray meets the drawn cell; on lines, the point of the line nearest
  // to the ray; on vertices, the vertex. The nearest point of the cell is the one the pick snaps to.
  double nearPoint[3];
  double farPoint[3];
  viewRay(renderer, x + 0.5, y + 0.5, nearPoint, farPoint);
  vtkNew<vtkGenericCell> cell;
  result.drawn->GetCell(result.drawnCellId, cell);
  double t = 0.0;
  double hitPoint[3] = {0.0, 0.0, 0.0};
  double pcoords[3];
  int subId = 0;
  bool located = cell->GetCellDimension() >= 2 &&
                 cell->IntersectWithLine(nearPoint, farPoint, 1.0e-9, t, hitPoint, pcoords, subId) != 0;
  if (!located && cell->GetCellDimension() == 1 && cell->GetNumberOfPoints() >= 2)
  {
    double best = std::numeric_limits<double>::max();
    for (vtkIdType i = 0; i + 1 < cell->GetNumberOfPoints(); ++i)
    {
      double a[3];
      double b[3];
      result.drawn->GetPoint(cell->GetPointId(i), a);
      result.drawn->GetPoint(cell->GetPointId(i + 1), b);
      double onSegment[3];
      double onRay[3];
      double ts = 0.0;
      double tr = 0.0;
      const double distance2 =
          vtkLine::DistanceBetweenLineSegments(a, b, nearPoint, farPoint, onSegment, onRay, ts, tr);
      if (distance2 < best)
      {
        best = distance2;
        std::copy(onSegment, onSegment + 3, hitPoint);
        located = true;
      }
    }
  }
  vtkIdType nearestDrawnPoint = -1;
  double nearestDistance = std::numeric_limits<double>::max();
  for (vtkIdType i = 0; i < cell->GetNumberOfPoints(); ++i)
  {
    double point[3];
    result.drawn->GetPoint(cell->GetPointId(i), point);
    double pointT = 0.0;
    const double distance = located ? std::sqrt(vtkMath::Distance2BetweenPoints(point, hitPoint))
                                    : distanceToRay(point, nearPoint, farPoint, pointT);
    if (distance < nearestDistance)
    {
      nearestDistance = distance;
      nearestDrawnPoint = cell->GetPointId(i);
    }
  }
  if (located)
  {
    result.position = {{hitPoint[0], hitPoint[1], hitPoint[2]}};
  }
  else if (nearestDrawnPoint >= 0)
  {
    result.drawn->GetPoint(nearestDrawnPoint, result.position.data());
  }

  // The ids in the dataset the user knows: as they stand when it is the one drawn, else found by
  // the position (an outline, a surface of a volume, a filtered output).
  if (result.original == result.drawn)
  {
    result.cellId = result.drawnCellId;
    result.pointId = nearestDrawnPoint;
  }
  else
  {
    result.cellId = FindCellAt(result.original, result.position.data());
    result.pointId =
        result.original->GetNumberOfPoints() > 0 ? result.original->FindPoint(result.position.data()) : -1;
  }
  return result;
}
