#pragma once

#include <vtkSmartPointer.h>

#include <utility>
#include <vector>

class vtkAbstractArray;
class vtkDataSet;
class vtkInformation;

// Takes the information keys of our own (object name, tuple shape) off a dataset's arrays for as long
// as it lives, and puts them back after. VTK's XML and legacy writers store every key of an array's
// information; VTK's readers, and the tools built on them, don't know ours and warn twice per array.
// Files written meanwhile hold only what any VTK reader accepts silently.
class VXPrivateKeyStash
{
public:
  explicit VXPrivateKeyStash(vtkDataSet* dataSet);
  ~VXPrivateKeyStash();

  VXPrivateKeyStash(const VXPrivateKeyStash&) = delete;
  VXPrivateKeyStash& operator=(const VXPrivateKeyStash&) = delete;

private:
  void take(vtkAbstractArray* array);

  // Each array with the entries that were taken off it.
  std::vector<std::pair<vtkSmartPointer<vtkAbstractArray>, vtkSmartPointer<vtkInformation>>> m_Taken;
};
