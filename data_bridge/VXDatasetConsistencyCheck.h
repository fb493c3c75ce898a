#pragma once

#include <QString>

class vtkDataSet;

// A file can be damaged inside its data, where no header check sees it: a flipped bit in a cell's
// point count or point id gives cells that VTK builds without complaint and that crash the first
// filter, picker or renderer that walks them. This check runs once after a read: every cell must
// refer to existing points, with a point count its cell type allows, and every point and cell array
// must have a value for each point or cell.
class VXDatasetConsistencyCheck
{
public:
  // True when the dataset can be used; otherwise false with the reason in errorMessage, naming the
  // file `path`.
  static bool check(vtkDataSet* dataSet, const QString& path, QString* errorMessage);
};
