#include "data_bridge/VXPrivateKeyStash.h"

#include "data_bridge/CVVtkBridge.h"
#include "data_bridge/ZRVtkObjectName.h"

#include <vtkAbstractArray.h>
#include <vtkDataSet.h>
#include <vtkFieldData.h>
#include <vtkInformation.h>
#include <vtkInformationIntegerVectorKey.h>
#include <vtkInformationStringKey.h>
#include <vtkPointSet.h>
#include <vtkPoints.h>
#include <vtkRectilinearGrid.h>

namespace
{
std::vector<vtkInformationKey*> PrivateKeys()
{
  return {ZRVtk::ObjectNameKey(), CV::VtkBridge::TupleShapeKey(), CV::VtkBridge::DataPathKey()};
}
} // namespace

VXPrivateKeyStash::VXPrivateKeyStash(vtkDataSet* dataSet)
{
  if (dataSet == nullptr)
  {
    return;
  }
  for (int kind = 0; kind < vtkDataObject::NUMBER_OF_ATTRIBUTE_TYPES; ++kind)
  {
    if (vtkFieldData* fields = dataSet->GetAttributesAsFieldData(kind))
    {
      for (int i = 0; i < fields->GetNumberOfArrays(); ++i)
      {
        take(fields->GetAbstractArray(i));
      }
    }
  }
  if (auto* pointSet = vtkPointSet::SafeDownCast(dataSet);
      pointSet != nullptr && pointSet->GetPoints() != nullptr)
  {
    take(pointSet->GetPoints()->GetData());
  }
  if (auto* grid = vtkRectilinearGrid::SafeDownCast(dataSet))
  {
    take(grid->GetXCoordinates());
    take(grid->GetYCoordinates());
    take(grid->GetZCoordinates());
  }
}

VXPrivateKeyStash::~VXPrivateKeyStash()
{
  for (const auto& [array, saved] : m_Taken)
  {
    for (vtkInformationKey* key : PrivateKeys())
    {
      if (saved->Has(key))
      {
        array->GetInformation()->CopyEntry(saved, key);
      }
    }
  }
}

void VXPrivateKeyStash::take(vtkAbstractArray* array)
{
  if (array == nullptr || !array->HasInformation())
  {
    return;
  }
  vtkInformation* info = array->GetInformation();
  vtkSmartPointer<vtkInformation> saved;
  for (vtkInformationKey* key : PrivateKeys())
  {
    if (info->Has(key))
    {
      if (saved == nullptr)
      {
        saved = vtkSmartPointer<vtkInformation>::New();
      }
      saved->CopyEntry(info, key);
      info->Remove(key);
    }
  }
  if (saved != nullptr)
  {
    m_Taken.emplace_back(array, saved);
  }
}
