#pragma once

#include <vtkImageData.h>

namespace image_slice_utilities
{
/**
 * An image whose points stand for the cells of another image. It keeps that image's cell data as its
 * own cell data too, so its cell count is taken from its extent: one cell per point.
 */
class VXImageSliceData : public vtkImageData
{
public:
  static VXImageSliceData* New();
  vtkTypeMacro(VXImageSliceData, vtkImageData);

  vtkIdType GetNumberOfCells() override;

protected:
  VXImageSliceData() = default;
  ~VXImageSliceData() override = default;

private:
  VXImageSliceData(const VXImageSliceData&) = delete;
  void operator=(const VXImageSliceData&) = delete;
};
} // namespace image_slice_utilities
