#pragma once

#include <vtkSmartPointer.h>
#include <vtkType.h>

#include <array>

class vtkDataSet;
class vtkAbstractMapper3D;
class vtkProp;
class vtkRenderer;
class VXSelectionBuffers;

/** What lies under one pixel of a render window, in the ids of the dataset the user loaded. */
struct VXPickResult
{
  bool hit = false;
  vtkProp* prop = nullptr;
  vtkAbstractMapper3D* mapper = nullptr;
  // The dataset the mapper draws, and the first dataset up its pipeline: the one whose arrays the
  // user knows. The ids below index the latter.
  vtkSmartPointer<vtkDataSet> drawn;
  vtkSmartPointer<vtkDataSet> original;
  // The id of the drawn cell, as the hardware selection gave it.
  vtkIdType drawnCellId = -1;
  vtkIdType cellId = -1;
  vtkIdType pointId = -1;
  std::array<double, 3> position = {{0.0, 0.0, 0.0}};
};

/**
 * Picks through the hardware selector: renders the cell ids of the props under a pixel, then finds
 * the world position on the picked cell along the view ray, and the nearest point of that cell.
 * Props that are not pickable (highlights, cursors, annotations) are hidden while it renders, so
 * that the data behind them is found.
 */
class VXHardwarePicker
{
public:
  /**
   * x and y are display coordinates: pixels from the bottom left of the renderer's window. With
   * buffers, the selection buffers kept there for the scene as it stands are used, and renewed when
   * they do not hold the pixel; without, the selection is rendered for this pick alone.
   */
  static VXPickResult Pick(vtkRenderer* renderer, int x, int y, VXSelectionBuffers* buffers = nullptr);

  /** The cell of a structured or unstructured dataset at a world position; -1 outside. */
  static vtkIdType FindCellAt(vtkDataSet* dataSet, const double position[3]);
};
