#include "data_views/VXImageSliceFilter.h"

#include "data_views/VXImageSliceData.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDemandDrivenPipeline.h>
#include <vtkInformation.h>
#include <vtkInformationVector.h>
#include <vtkNew.h>
#include <vtkObjectFactory.h>
#include <vtkPointData.h>
#include <vtkStreamingDemandDrivenPipeline.h>

namespace image_slice_utilities
{
vtkStandardNewMacro(VXImageSliceFilter);

namespace
{
// Cells are drawn when the image has cell arrays; an image of points only (a picture) shows its points.
bool drawsCells(vtkImageData* input)
{
  return input == nullptr || input->GetCellData()->GetNumberOfArrays() > 0 ||
         input->GetPointData()->GetNumberOfArrays() == 0;
}
} // namespace

VXImageSliceFilter::VXImageSliceFilter()
{
  SetNumberOfInputPorts(1);
  SetNumberOfOutputPorts(1);
}

void VXImageSliceFilter::SetActiveArrayName(const std::string& name)
{
  if (name != m_ActiveArrayName)
  {
    m_ActiveArrayName = name;
    Modified();
  }
}

void VXImageSliceFilter::shrinkExt(int extent[6])
{
  for (int axis = 0; axis < 3; ++axis)
  {
    // A flat axis (one point) has no cells across it but still holds one layer of them.
    if (extent[2 * axis + 1] > extent[2 * axis])
    {
      extent[2 * axis + 1] -= 1;
    }
  }
}

int VXImageSliceFilter::FillInputPortInformation(int /*port*/, vtkInformation* info)
{
  info->Set(vtkAlgorithm::INPUT_REQUIRED_DATA_TYPE(), "vtkDataSet");
  return 1;
}

int VXImageSliceFilter::ProcessRequest(vtkInformation* request, vtkInformationVector** inputVector,
                                       vtkInformationVector* outputVector)
{
  if (request->Has(vtkDemandDrivenPipeline::REQUEST_DATA_OBJECT()))
  {
    vtkInformation* outInfo = outputVector->GetInformationObject(0);
    if (VXImageSliceData::SafeDownCast(outInfo->Get(vtkDataObject::DATA_OBJECT())) == nullptr)
    {
      vtkNew<VXImageSliceData> output;
      outInfo->Set(vtkDataObject::DATA_OBJECT(), output);
    }
    return 1;
  }
  return Superclass::ProcessRequest(request, inputVector, outputVector);
}

int VXImageSliceFilter::RequestInformation(vtkInformation* /*request*/, vtkInformationVector** inputVector,
                                           vtkInformationVector* outputVector)
{
  vtkInformation* inInfo = inputVector[0]->GetInformationObject(0);
  vtkInformation* outInfo = outputVector->GetInformationObject(0);
  auto* input = vtkImageData::SafeDownCast(inInfo->Get(vtkDataObject::DATA_OBJECT()));
  if (input == nullptr)
  {
    return 0;
  }
  int extent[6] = {0, -1, 0, -1, 0, -1};
  inInfo->Get(vtkStreamingDemandDrivenPipeline::WHOLE_EXTENT(), extent);
  m_UsesCellData = drawsCells(input);
  if (m_UsesCellData)
  {
    shrinkExt(extent);
  }
  double spacing[3] = {1.0, 1.0, 1.0};
  double origin[3] = {0.0, 0.0, 0.0};
  if (inInfo->Has(vtkDataObject::SPACING()))
  {
    inInfo->Get(vtkDataObject::SPACING(), spacing);
  }
  if (inInfo->Has(vtkDataObject::ORIGIN()))
  {
    inInfo->Get(vtkDataObject::ORIGIN(), origin);
  }
  outInfo->Set(vtkStreamingDemandDrivenPipeline::WHOLE_EXTENT(), extent, 6);
  outInfo->Set(vtkDataObject::SPACING(), spacing, 3);
  outInfo->Set(vtkDataObject::ORIGIN(), origin, 3);
  return 1;
}

int VXImageSliceFilter::RequestUpdateExtent(vtkInformation* /*request*/, vtkInformationVector** inputVector,
                                            vtkInformationVector* /*outputVector*/)
{
  // The whole input, once: slice steps then only pick another plane of the same output.
  vtkInformation* inInfo = inputVector[0]->GetInformationObject(0);
  int extent[6];
  inInfo->Get(vtkStreamingDemandDrivenPipeline::WHOLE_EXTENT(), extent);
  inInfo->Set(vtkStreamingDemandDrivenPipeline::UPDATE_EXTENT(), extent, 6);
  return 1;
}

int VXImageSliceFilter::RequestData(vtkInformation* /*request*/, vtkInformationVector** inputVector,
                                    vtkInformationVector* outputVector)
{
  auto* input = vtkImageData::GetData(inputVector[0], 0);
  vtkInformation* outInfo = outputVector->GetInformationObject(0);
  auto* output = VXImageSliceData::SafeDownCast(outInfo->Get(vtkDataObject::DATA_OBJECT()));
  if (input == nullptr || output == nullptr)
  {
    return 0;
  }
  output->Initialize();
  int extent[6];
  input->GetExtent(extent);
  m_UsesCellData = drawsCells(input);
  vtkDataSetAttributes* from =
      m_UsesCellData ? static_cast<vtkDataSetAttributes*>(input->GetCellData()) : input->GetPointData();
  if (m_UsesCellData)
  {
    shrinkExt(extent);
  }
  output->SetExtent(extent);
  output->SetSpacing(input->GetSpacing());
  output->SetOrigin(input->GetOrigin());
  output->SetDirectionMatrix(input->GetDirectionMatrix());
  // The arrays are shared with the input, never copied.
  vtkPointData* points = output->GetPointData();
  for (int i = 0; i < from->GetNumberOfArrays(); ++i)
  {
    if (vtkDataArray* array = from->GetArray(i))
    {
      points->AddArray(array);
    }
  }
  vtkDataArray* scalars = nullptr;
  if (!m_ActiveArrayName.empty())
  {
    scalars = from->GetArray(m_ActiveArrayName.c_str());
  }
  if (scalars == nullptr)
  {
    scalars = from->GetScalars() != nullptr ? from->GetScalars() : from->GetArray(0);
  }
  if (scalars != nullptr && scalars->GetName() != nullptr)
  {
    points->SetActiveScalars(scalars->GetName());
  }
  else if (scalars != nullptr)
  {
    points->SetScalars(scalars);
  }
  if (m_UsesCellData)
  {
    output->GetCellData()->PassData(input->GetCellData());
  }
  return 1;
}
} // namespace image_slice_utilities
