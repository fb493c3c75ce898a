#pragma once

#include <string>

class vtkObject;
class vtkInformationStringKey;

// VTK 9.1 has no vtkObject::SetObjectName: the name lives under our own key in the information of
// datasets and arrays. Other objects have no information to hold it; for them both calls do nothing.
namespace ZRVtk
{
vtkInformationStringKey* ObjectNameKey();
void SetObjectName(vtkObject* object, const std::string& name);
// Empty when the object has no name or cannot carry one.
std::string GetObjectName(vtkObject* object);
} // namespace ZRVtk
