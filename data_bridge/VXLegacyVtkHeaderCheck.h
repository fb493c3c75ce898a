#pragma once

#include <QString>

// VTK's legacy reader (vtkDataReader and the readers of each dataset kind) trusts the counts in a
// .vtk file's keyword lines: a negative or huge point count, a component count of 2^31 or grid
// dimensions that disagree with the points make it allocate without bound or index past its arrays.
// This check walks the keyword lines (POINTS, CELLS, FIELD arrays, SCALARS, DIMENSIONS, ...) and
// compares every count with the bytes that follow it and with the dataset's own sizes, before the
// reader sees the file.
class VXLegacyVtkHeaderCheck
{
public:
  // True when the file is no legacy file, or nothing it declares exceeds what it holds; otherwise
  // false with the reason in errorMessage.
  static bool check(const QString& path, QString* errorMessage);
};
