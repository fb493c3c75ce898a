#include "data_bridge/ZRVtkObjectName.h"

#include <vtkAbstractArray.h>
#include <vtkDataObject.h>
#include <vtkInformation.h>
#include <vtkInformationStringKey.h>

namespace
{
vtkInformation* InformationOf(vtkObject* object)
{
  if (auto* dataObject = vtkDataObject::SafeDownCast(object))
  {
    return dataObject->GetInformation();
  }
  if (auto* array = vtkAbstractArray::SafeDownCast(object))
  {
    return array->GetInformation();
  }
  return nullptr;
}
} // namespace

namespace ZRVtk
{
vtkInformationStringKey* ObjectNameKey()
{
  // Registered with VTK's key manager, which deletes it at exit.
  static vtkInformationStringKey* s_Key = vtkInformationStringKey::MakeKey("OBJECT_NAME", "ZRVtk");
  return s_Key;
}

void SetObjectName(vtkObject* object, const std::string& name)
{
  if (vtkInformation* info = InformationOf(object))
  {
    info->Set(ObjectNameKey(), name.c_str());
  }
}

std::string GetObjectName(vtkObject* object)
{
  vtkInformation* info = InformationOf(object);
  if (info == nullptr || !info->Has(ObjectNameKey()))
  {
    return {};
  }
  return info->Get(ObjectNameKey());
}
} // namespace ZRVtk
