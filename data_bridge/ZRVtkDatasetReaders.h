#pragma once

#include <QString>

#include <vtkSmartPointer.h>

class vtkDataSet;
class vtkImageData;

// Readers of VTK dataset files, STL and images. Each wraps one VTK reader. A read that fails, or
// during which VTK reports an error (damaged or truncated file), gives null; the error text VTK gave
// goes to errorMessage when one is passed, and nothing is printed.
namespace ZRVtk
{
namespace utils
{
// Picks the reader by the lower-case suffix; null for a suffix no reader handles.
vtkSmartPointer<vtkDataSet> Read(const QString& path, QString* errorMessage = nullptr);
// Picks the image reader by content type. With pointToCell the pixels become cells.
vtkSmartPointer<vtkDataSet> ReadImage(const QString& path, bool pointToCell, QString* errorMessage = nullptr);

vtkSmartPointer<vtkDataSet> ReadImageData(const QString& path, QString* errorMessage = nullptr);
vtkSmartPointer<vtkDataSet> ReadRectilinearGrid(const QString& path, QString* errorMessage = nullptr);
vtkSmartPointer<vtkDataSet> ReadStructuredGrid(const QString& path, QString* errorMessage = nullptr);
vtkSmartPointer<vtkDataSet> ReadUnstructuredGrid(const QString& path, QString* errorMessage = nullptr);
vtkSmartPointer<vtkDataSet> ReadPolyData(const QString& path, QString* errorMessage = nullptr);

vtkSmartPointer<vtkDataSet> ReadPImageData(const QString& path, QString* errorMessage = nullptr);
vtkSmartPointer<vtkDataSet> ReadPRectilinearGrid(const QString& path, QString* errorMessage = nullptr);
vtkSmartPointer<vtkDataSet> ReadPStructuredGrid(const QString& path, QString* errorMessage = nullptr);
vtkSmartPointer<vtkDataSet> ReadPUnstructuredGrid(const QString& path, QString* errorMessage = nullptr);
vtkSmartPointer<vtkDataSet> ReadPPolyData(const QString& path, QString* errorMessage = nullptr);

// Legacy .vtk, or an XML dataset saved under that suffix.
vtkSmartPointer<vtkDataSet> ReadVtkData(const QString& path, QString* errorMessage = nullptr);
vtkSmartPointer<vtkDataSet> ReadSTLData(const QString& path, QString* errorMessage = nullptr);

// A new image one cell larger in each direction, whose cell data shares the input's point arrays.
vtkSmartPointer<vtkImageData> ConvertPointDataToCellData(vtkImageData* image);
} // namespace utils
} // namespace ZRVtk
