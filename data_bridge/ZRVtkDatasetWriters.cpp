#include "data_bridge/ZRVtkDatasetWriters.h"

#include "data_bridge/VXPrivateKeyStash.h"
#include "data_bridge/VXVtkErrorCapture.h"
#include "data_bridge/ZRVtkLibFileTypes.h"

#include <QFileDialog>
#include <QMessageBox>

#include <vtkDataSet.h>
#include <vtkDataWriter.h>
#include <vtkGenericDataObjectWriter.h>
#include <vtkPDataSetWriter.h>
#include <vtkXMLImageDataWriter.h>
#include <vtkXMLPImageDataWriter.h>
#include <vtkXMLPPolyDataWriter.h>
#include <vtkXMLPRectilinearGridWriter.h>
#include <vtkXMLPStructuredGridWriter.h>
#include <vtkXMLPUnstructuredGridWriter.h>
#include <vtkXMLPolyDataWriter.h>
#include <vtkXMLRectilinearGridWriter.h>
#include <vtkXMLStructuredGridWriter.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include <type_traits>

namespace io = ZRVtkLib::io;

namespace
{
template<class WriterT>
bool WriteUsing(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  if (dataSet == nullptr)
  {
    if (errorMessage != nullptr)
    {
      *errorMessage = QStringLiteral("There is no data set to write to '%1'.").arg(path);
    }
    return false;
  }
  VXVtkErrorCapture capture;
  const VXPrivateKeyStash privateKeysOff(dataSet);
  auto writer = vtkSmartPointer<WriterT>::New();
  capture.watch(writer);
  writer->SetFileName(path.toUtf8().constData());
  writer->SetInputData(dataSet);
  if constexpr (std::is_base_of_v<vtkDataWriter, WriterT>)
  {
    // VTK's legacy reader cannot read back the "nan" its ASCII form writes for gaps in the data.
    writer->SetFileTypeToBinary();
  }
  const bool written = writer->Write() != 0 && !capture.hasErrors();
  if (!written && errorMessage != nullptr)
  {
    *errorMessage =
        capture.hasErrors() ? capture.errorText() : QStringLiteral("Failed to write '%1'.").arg(path);
  }
  return written;
}

struct SaveFilter
{
  const QString& filter;
  bool (*writer)(const QString&, vtkDataSet*, QString*);
};
} // namespace

namespace ZRVtk
{
namespace utils
{
QString SaveFilterPairFor(vtkDataSet* dataSet)
{
  const QString separator = QStringLiteral(";;");
  switch (dataSet != nullptr ? dataSet->GetDataObjectType() : -1)
  {
  case VTK_IMAGE_DATA:
    return io::VTI_FILE_FILTER + separator + io::PVTI_FILE_FILTER;
  case VTK_RECTILINEAR_GRID:
    return io::VTR_FILE_FILTER + separator + io::PVTR_FILE_FILTER;
  case VTK_STRUCTURED_GRID:
    return io::VTS_FILE_FILTER + separator + io::PVTS_FILE_FILTER;
  case VTK_UNSTRUCTURED_GRID:
    return io::VTU_FILE_FILTER + separator + io::PVTU_FILE_FILTER;
  case VTK_POLY_DATA:
    return io::VTP_FILE_FILTER + separator + io::PVTP_FILE_FILTER;
  default:
    return io::VTK_FILE_FILTER + separator + io::PVTK_FILE_FILTER;
  }
}

bool WriteWithFilter(const QString& path, vtkDataSet* dataSet, const QString& filter, QString* errorMessage)
{
  const SaveFilter filters[] = {
      {io::VTI_FILE_FILTER, WriteImageData},        {io::PVTI_FILE_FILTER, WritePImageData},
      {io::VTR_FILE_FILTER, WriteRectilinearGrid},  {io::PVTR_FILE_FILTER, WritePRectilinearGrid},
      {io::VTS_FILE_FILTER, WriteStructuredGrid},   {io::PVTS_FILE_FILTER, WritePStructuredGrid},
      {io::VTU_FILE_FILTER, WriteUnstructuredGrid}, {io::PVTU_FILE_FILTER, WritePUnstructuredGrid},
      {io::VTP_FILE_FILTER, WritePolyData},         {io::PVTP_FILE_FILTER, WritePPolyData},
      {io::VTK_FILE_FILTER, WriteVtkData},          {io::PVTK_FILE_FILTER, WritePVtkData},
  };
  for (const SaveFilter& entry : filters)
  {
    if (entry.filter == filter)
    {
      return entry.writer(path, dataSet, errorMessage);
    }
  }
  if (errorMessage != nullptr)
  {
    *errorMessage = QStringLiteral("No writer for the file type '%1'.").arg(filter);
  }
  return false;
}

bool Write(const QString& path, vtkDataSet* dataSet, QWidget* parent)
{
  const QString filters = SaveFilterPairFor(dataSet);
  QString selectedFilter;
  const QString fileName =
      QFileDialog::getSaveFileName(parent, QStringLiteral("Save Data Set"), path, filters, &selectedFilter);
  if (fileName.isEmpty())
  {
    return false;
  }
  if (selectedFilter.isEmpty())
  {
    // Some dialogs don't report the filter: the serial format of the pair.
    selectedFilter = filters.section(QStringLiteral(";;"), 0, 0);
  }
  QString errorMessage;
  if (!WriteWithFilter(fileName, dataSet, selectedFilter, &errorMessage))
  {
    QMessageBox::warning(
        parent, QStringLiteral("Save Data Set"),
        QStringLiteral("Failed to write the data set to '%1'.\n%2").arg(fileName, errorMessage));
    return false;
  }
  return true;
}

bool WriteImageData(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  return WriteUsing<vtkXMLImageDataWriter>(path, dataSet, errorMessage);
}

bool WriteRectilinearGrid(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  return WriteUsing<vtkXMLRectilinearGridWriter>(path, dataSet, errorMessage);
}

bool WriteStructuredGrid(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  return WriteUsing<vtkXMLStructuredGridWriter>(path, dataSet, errorMessage);
}

bool WriteUnstructuredGrid(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  return WriteUsing<vtkXMLUnstructuredGridWriter>(path, dataSet, errorMessage);
}

bool WritePolyData(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  return WriteUsing<vtkXMLPolyDataWriter>(path, dataSet, errorMessage);
}

bool WriteVtkData(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  return WriteUsing<vtkGenericDataObjectWriter>(path, dataSet, errorMessage);
}

bool WritePImageData(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  return WriteUsing<vtkXMLPImageDataWriter>(path, dataSet, errorMessage);
}

bool WritePRectilinearGrid(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  return WriteUsing<vtkXMLPRectilinearGridWriter>(path, dataSet, errorMessage);
}

bool WritePStructuredGrid(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  return WriteUsing<vtkXMLPStructuredGridWriter>(path, dataSet, errorMessage);
}

bool WritePUnstructuredGrid(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  return WriteUsing<vtkXMLPUnstructuredGridWriter>(path, dataSet, errorMessage);
}

bool WritePPolyData(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  return WriteUsing<vtkXMLPPolyDataWriter>(path, dataSet, errorMessage);
}

bool WritePVtkData(const QString& path, vtkDataSet* dataSet, QString* errorMessage)
{
  return WriteUsing<vtkPDataSetWriter>(path, dataSet, errorMessage);
}
} // namespace utils
} // namespace ZRVtk
