#pragma once

#include <QString>

class QWidget;
class vtkDataSet;

// Writers of VTK dataset files. Each wraps one VTK writer and gives true when the file was written;
// VTK's complaint goes to errorMessage when one is passed, and nothing is printed.
namespace ZRVtk
{
namespace utils
{
// Asks for a file with filters that suit the dataset's type (path is the proposed name) and writes
// with the writer of the chosen filter. False when cancelled or when writing failed; a failure is
// shown to the user.
bool Write(const QString& path, vtkDataSet* dataSet, QWidget* parent);

// The serial and the parallel dialog filter for a dataset, joined by ";;".
QString SaveFilterPairFor(vtkDataSet* dataSet);
// Writes with the writer that belongs to a save filter; an unknown filter writes nothing.
bool WriteWithFilter(const QString& path, vtkDataSet* dataSet, const QString& filter,
                     QString* errorMessage = nullptr);

bool WriteImageData(const QString& path, vtkDataSet* dataSet, QString* errorMessage = nullptr);
bool WriteRectilinearGrid(const QString& path, vtkDataSet* dataSet, QString* errorMessage = nullptr);
bool WriteStructuredGrid(const QString& path, vtkDataSet* dataSet, QString* errorMessage = nullptr);
bool WriteUnstructuredGrid(const QString& path, vtkDataSet* dataSet, QString* errorMessage = nullptr);
bool WritePolyData(const QString& path, vtkDataSet* dataSet, QString* errorMessage = nullptr);
// Legacy .vtk of any dataset type.
bool WriteVtkData(const QString& path, vtkDataSet* dataSet, QString* errorMessage = nullptr);

// The parallel writers write one piece file beside the summary file.
bool WritePImageData(const QString& path, vtkDataSet* dataSet, QString* errorMessage = nullptr);
bool WritePRectilinearGrid(const QString& path, vtkDataSet* dataSet, QString* errorMessage = nullptr);
bool WritePStructuredGrid(const QString& path, vtkDataSet* dataSet, QString* errorMessage = nullptr);
bool WritePUnstructuredGrid(const QString& path, vtkDataSet* dataSet, QString* errorMessage = nullptr);
bool WritePPolyData(const QString& path, vtkDataSet* dataSet, QString* errorMessage = nullptr);
bool WritePVtkData(const QString& path, vtkDataSet* dataSet, QString* errorMessage = nullptr);
} // namespace utils
} // namespace ZRVtk
