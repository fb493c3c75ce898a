#include "data_bridge/VXDatasetConsistencyCheck.h"

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkCellTypes.h>
#include <vtkDataArray.h>
#include <vtkImageData.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkRectilinearGrid.h>
#include <vtkStructuredGrid.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

#include <cstring>

namespace
{
// Points a cell of a fixed-size type has; -1 for types of any size, 0 for types never read here.
vtkIdType FixedPointCount(int type)
{
  switch (type)
  {
  case VTK_VERTEX:
    return 1;
  case VTK_LINE:
    return 2;
  case VTK_TRIANGLE:
    return 3;
  case VTK_PIXEL:
  case VTK_QUAD:
  case VTK_TETRA:
    return 4;
  case VTK_PYRAMID:
    return 5;
  case VTK_WEDGE:
    return 6;
  case VTK_VOXEL:
  case VTK_HEXAHEDRON:
    return 8;
  case VTK_QUADRATIC_EDGE:
    return 3;
  case VTK_QUADRATIC_TRIANGLE:
    return 6;
  case VTK_QUADRATIC_QUAD:
    return 8;
  case VTK_QUADRATIC_TETRA:
    return 10;
  case VTK_QUADRATIC_HEXAHEDRON:
    return 20;
  case VTK_QUADRATIC_WEDGE:
    return 15;
  case VTK_QUADRATIC_PYRAMID:
    return 13;
  case VTK_PENTAGONAL_PRISM:
    return 10;
  case VTK_HEXAGONAL_PRISM:
    return 12;
  default:
    return -1;
  }
}

// The smallest point count of the cells in one of a poly data's four cell arrays.
struct PolySection
{
  const char* name;
  vtkCellArray* cells;
  vtkIdType minimum;
};

class Consistency
{
public:
  explicit Consistency(vtkDataSet* dataSet)
      : m_DataSet(dataSet)
      , m_Points(dataSet->GetNumberOfPoints())
  {
  }

  bool run()
  {
    if (auto* poly = vtkPolyData::SafeDownCast(m_DataSet))
    {
      const PolySection sections[] = {{"vertex", poly->GetVerts(), 1},
                                      {"line", poly->GetLines(), 2},
                                      {"polygon", poly->GetPolys(), 3},
                                      {"triangle strip", poly->GetStrips(), 3}};
      for (const PolySection& section : sections)
      {
        if (section.cells != nullptr && !cells(section.cells, section.name, section.minimum, nullptr))
        {
          return false;
        }
      }
    }
    else if (auto* grid = vtkUnstructuredGrid::SafeDownCast(m_DataSet))
    {
      if (grid->GetCells() != nullptr && !cells(grid->GetCells(), "cell", 0, grid->GetCellTypesArray()))
      {
        return false;
      }
    }
    else if (auto* structured = vtkStructuredGrid::SafeDownCast(m_DataSet))
    {
      int dims[3];
      structured->GetDimensions(dims);
      const vtkIdType expected = vtkIdType(dims[0]) * dims[1] * dims[2];
      if (structured->GetPoints() != nullptr && structured->GetPoints()->GetNumberOfPoints() != expected)
      {
        return fail(QStringLiteral("its grid of %1 x %2 x %3 points comes with %4 points")
                        .arg(dims[0])
                        .arg(dims[1])
                        .arg(dims[2])
                        .arg(structured->GetPoints()->GetNumberOfPoints()));
      }
    }
    else if (auto* rectilinear = vtkRectilinearGrid::SafeDownCast(m_DataSet))
    {
      int dims[3];
      rectilinear->GetDimensions(dims);
      vtkDataArray* coordinates[] = {rectilinear->GetXCoordinates(), rectilinear->GetYCoordinates(),
                                     rectilinear->GetZCoordinates()};
      for (int axis = 0; axis < 3; ++axis)
      {
        if (coordinates[axis] == nullptr || coordinates[axis]->GetNumberOfTuples() < dims[axis])
        {
          return fail(QStringLiteral("its grid has %1 points along axis %2 but fewer coordinates")
                          .arg(dims[axis])
                          .arg(axis));
        }
      }
    }
    return attributes(m_DataSet->GetPointData(), m_Points, "point") &&
           attributes(m_DataSet->GetCellData(), m_DataSet->GetNumberOfCells(), "cell");
  }

  const QString& error() const { return m_Error; }

private:
  bool fail(const QString& reason)
  {
    m_Error = reason;
    return false;
  }

  bool cells(vtkCellArray* cellArray, const char* kind, vtkIdType minimum, vtkUnsignedCharArray* types)
  {
    const vtkIdType count = cellArray->GetNumberOfCells();
    if (types != nullptr && types->GetNumberOfTuples() < count)
    {
      return fail(
          QStringLiteral("it has %1 cells but %2 cell types").arg(count).arg(types->GetNumberOfTuples()));
    }
    vtkIdType previous = 0;
    const vtkIdType connectivity = cellArray->GetNumberOfConnectivityIds();
    vtkDataArray* offsets = cellArray->GetOffsetsArray();
    if (count > 0 && (offsets == nullptr || offsets->GetNumberOfTuples() < count + 1))
    {
      return fail(QStringLiteral("the point lists of its %1s are damaged").arg(QLatin1String(kind)));
    }
    for (vtkIdType cell = 0; cell < count; ++cell)
    {
      const auto begin = static_cast<vtkIdType>(offsets->GetComponent(cell, 0));
      const auto end = static_cast<vtkIdType>(offsets->GetComponent(cell + 1, 0));
      if (begin < previous || end < begin || end > connectivity)
      {
        return fail(QStringLiteral("the point list of %1 %2 is damaged").arg(QLatin1String(kind)).arg(cell));
      }
      previous = begin;
      const vtkIdType size = end - begin;
      vtkIdType needed = minimum;
      if (types != nullptr)
      {
        const int type = types->GetValue(cell);
        if (std::strcmp(vtkCellTypes::GetClassNameFromTypeId(type), "UnknownClass") == 0)
        {
          return fail(QStringLiteral("cell %1 has the unknown cell type %2").arg(cell).arg(type));
        }
        const vtkIdType fixed = FixedPointCount(type);
        if (fixed > 0 && size != fixed)
        {
          return fail(QStringLiteral("cell %1, a %2, has %3 points instead of %4")
                          .arg(cell)
                          .arg(QLatin1String(vtkCellTypes::GetClassNameFromTypeId(type)))
                          .arg(size)
                          .arg(fixed));
        }
        needed = type == VTK_EMPTY_CELL ? 0 : 1;
      }
      if (size < needed)
      {
        return fail(QStringLiteral("%1 %2 has %3 points").arg(QLatin1String(kind)).arg(cell).arg(size));
      }
    }
    // Point ids, in one pass over the connectivity.
    vtkDataArray* ids = cellArray->GetConnectivityArray();
    double range[2] = {0, 0};
    if (ids != nullptr && ids->GetNumberOfTuples() > 0)
    {
      ids->GetRange(range, 0);
      if (range[0] < 0 || range[1] >= double(m_Points))
      {
        return fail(QStringLiteral("a %1 refers to point %2 but there are %3 points")
                        .arg(QLatin1String(kind))
                        .arg(range[0] < 0 ? range[0] : range[1])
                        .arg(m_Points));
      }
    }
    return true;
  }

  bool attributes(vtkFieldData* data, vtkIdType expected, const char* kind)
  {
    for (int i = 0; data != nullptr && i < data->GetNumberOfArrays(); ++i)
    {
      vtkAbstractArray* array = data->GetAbstractArray(i);
      if (array != nullptr && array->GetNumberOfTuples() < expected)
      {
        return fail(QStringLiteral("the %1 array '%2' has %3 values for %4 %1s")
                        .arg(QLatin1String(kind), QString::fromUtf8(array->GetName() ? array->GetName() : ""))
                        .arg(array->GetNumberOfTuples())
                        .arg(expected));
      }
    }
    return true;
  }

  vtkDataSet* m_DataSet;
  vtkIdType m_Points;
  QString m_Error;
};
} // namespace

bool VXDatasetConsistencyCheck::check(vtkDataSet* dataSet, const QString& path, QString* errorMessage)
{
  if (dataSet == nullptr)
  {
    return true;
  }
  Consistency consistency(dataSet);
  if (consistency.run())
  {
    return true;
  }
  if (errorMessage != nullptr)
  {
    *errorMessage = QStringLiteral("The file '%1' is damaged: %2.").arg(path, consistency.error());
  }
  return false;
}
