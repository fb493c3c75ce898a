#pragma once

#include <vtkImageAlgorithm.h>

#include <string>

namespace image_slice_utilities
{
/**
 * Turns an image into one that an image slice mapper can draw cell by cell: with cell arrays, each
 * cell of the input becomes one point of the output (the extent shrinks by one on each axis) and the
 * cell arrays become point arrays, shared and not copied. An image with point arrays only passes as
 * it is. The output is a VXImageSliceData.
 */
class VXImageSliceFilter : public vtkImageAlgorithm
{
public:
  static VXImageSliceFilter* New();
  vtkTypeMacro(VXImageSliceFilter, vtkImageAlgorithm);

  /** @brief The array that becomes the output's scalars; empty takes the input's own choice. */
  void SetActiveArrayName(const std::string& name);
  const std::string& GetActiveArrayName() const { return m_ActiveArrayName; }
  /** @brief Whether the last run drew cells (true) or the input's points. */
  bool GetUsesCellData() const { return m_UsesCellData; }

  /** @brief Lowers the upper bound of each axis by one: the extent of the cells of an image. */
  static void shrinkExt(int extent[6]);

  int ProcessRequest(vtkInformation* request, vtkInformationVector** inputVector,
                     vtkInformationVector* outputVector) override;

protected:
  VXImageSliceFilter();
  ~VXImageSliceFilter() override = default;

  int FillInputPortInformation(int port, vtkInformation* info) override;
  int RequestInformation(vtkInformation* request, vtkInformationVector** inputVector,
                         vtkInformationVector* outputVector) override;
  int RequestUpdateExtent(vtkInformation* request, vtkInformationVector** inputVector,
                          vtkInformationVector* outputVector) override;
  int RequestData(vtkInformation* request, vtkInformationVector** inputVector,
                  vtkInformationVector* outputVector) override;

private:
  VXImageSliceFilter(const VXImageSliceFilter&) = delete;
  void operator=(const VXImageSliceFilter&) = delete;

  std::string m_ActiveArrayName;
  bool m_UsesCellData = true;
};
} // namespace image_slice_utilities
