#include "data_bridge/ZRVtkDatasetReaders.h"

#include "data_bridge/VXDatasetConsistencyCheck.h"
#include "data_bridge/VXImageHeaderCheck.h"
#include "data_bridge/VXLegacyVtkHeaderCheck.h"
#include "data_bridge/VXLegacyVtkTypeNames.h"
#include "data_bridge/VXQtImageDecoder.h"
#include "data_bridge/VXReadableFileCheck.h"
#include "data_bridge/VXTiffHeaderCheck.h"
#include "data_bridge/VXVtkErrorCapture.h"
#include "data_bridge/VXXmlVtkHeaderCheck.h"
#include "data_bridge/ZRVtkLibFileTypes.h"
#include "data_bridge/ZRVtkObjectName.h"

#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QtEndian>

#include <vtkBMPReader.h>
#include <vtkCellData.h>
#include <vtkCharArray.h>
#include <vtkGenericDataObjectReader.h>
#include <vtkImageData.h>
#include <vtkJPEGReader.h>
#include <vtkPNGReader.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkSTLReader.h>
#include <vtkTIFFReader.h>
#include <vtkXMLGenericDataObjectReader.h>
#include <vtkXMLImageDataReader.h>
#include <vtkXMLPImageDataReader.h>
#include <vtkXMLPPolyDataReader.h>
#include <vtkXMLPRectilinearGridReader.h>
#include <vtkXMLPStructuredGridReader.h>
#include <vtkXMLPUnstructuredGridReader.h>
#include <vtkXMLPolyDataReader.h>
#include <vtkXMLRectilinearGridReader.h>
#include <vtkXMLStructuredGridReader.h>
#include <vtkXMLUnstructuredGridReader.h>
#include <vtksys/SystemTools.hxx>

#include <algorithm>
#include <cstdlib>

namespace io = ZRVtkLib::io;

namespace
{
// What the caller gets once the reader has run: the output, or null and the message if VTK complained.
template<class DataT>
vtkSmartPointer<DataT> Checked(const VXVtkErrorCapture& capture, DataT* output, QString* errorMessage,
                               const QString& path = QString())
{
  if (capture.hasErrors())
  {
    if (errorMessage != nullptr)
    {
      *errorMessage = capture.errorText();
    }
    return nullptr;
  }
  if (!VXDatasetConsistencyCheck::check(vtkDataSet::SafeDownCast(output), path, errorMessage))
  {
    return nullptr;
  }
  return output;
}

template<class ReaderT>
vtkSmartPointer<vtkDataSet> ReadXml(const QString& path, QString* errorMessage)
{
  if (!VXXmlVtkHeaderCheck::check(path, errorMessage))
  {
    return nullptr;
  }
  VXVtkErrorCapture capture;
  auto reader = vtkSmartPointer<ReaderT>::New();
  capture.watch(reader);
  reader->SetFileName(path.toUtf8().constData());
  reader->Update();
  return Checked(capture, reader->GetOutputAsDataSet(), errorMessage, path);
}

template<class ReaderT>
vtkSmartPointer<vtkImageData> ReadImageFile(const QString& path, QString* errorMessage)
{
  VXVtkErrorCapture capture;
  auto reader = vtkSmartPointer<ReaderT>::New();
  capture.watch(reader);
  reader->SetFileName(path.toUtf8().constData());
  reader->Update();
  return Checked(capture, reader->GetOutput(), errorMessage, path);
}
// vtkTIFFReader hands out the top row of the picture first, at y = 0, so that TIFFs would stand upside
// down beside PNG, JPEG and BMP images, whose readers put the bottom row there. Swaps the rows of every
// point array of each slice.
void FlipRows(vtkImageData* image)
{
  int dims[3];
  image->GetDimensions(dims);
  vtkPointData* points = image->GetPointData();
  for (int a = 0; a < points->GetNumberOfArrays(); ++a)
  {
    vtkDataArray* array = points->GetArray(a);
    if (array == nullptr || !array->HasStandardMemoryLayout() ||
        array->GetNumberOfTuples() != vtkIdType(dims[0]) * dims[1] * dims[2])
    {
      continue;
    }
    const std::size_t rowBytes =
        std::size_t(dims[0]) * array->GetNumberOfComponents() * array->GetDataTypeSize();
    auto* bytes = static_cast<unsigned char*>(array->GetVoidPointer(0));
    for (int z = 0; z < dims[2]; ++z)
    {
      unsigned char* slice = bytes + std::size_t(z) * dims[1] * rowBytes;
      for (int y = 0; y < dims[1] / 2; ++y)
      {
        std::swap_ranges(slice + y * rowBytes, slice + (y + 1) * rowBytes,
                         slice + (dims[1] - 1 - y) * rowBytes);
      }
    }
    array->Modified();
  }
}

// vtkSTLReader stops quietly at the end of a short binary file and hands out the triangles it got. The
// header says how long the file must be.
bool IsCompleteStl(const QString& path, QString* errorMessage)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
  {
    return true; // the reader names the problem
  }
  const QByteArray head = file.read(84);
  // The reader takes a file for binary by the share of non-text bytes at its start, whatever its
  // first word says: decide the same way, so that a damaged text file is checked as the binary file
  // the reader will take it for.
  const bool readAsBinary = vtksys::SystemTools::DetectFileType(path.toLocal8Bit().constData()) ==
                            vtksys::SystemTools::FileTypeBinary;
  if (!readAsBinary)
  {
    return true;
  }
  if (head.size() == 84)
  {
    const quint32 triangles = qFromLittleEndian<quint32>(head.constData() + 80);
    if (file.size() >= 84 + 50 * qint64(triangles))
    {
      return true;
    }
    if (errorMessage != nullptr)
    {
      *errorMessage =
          QStringLiteral("The STL file '%1' is truncated: it announces %2 triangles but holds %3.")
              .arg(path)
              .arg(triangles)
              .arg((file.size() - 84) / 50);
    }
    return false;
  }
  if (errorMessage != nullptr)
  {
    *errorMessage = QStringLiteral("The STL file '%1' is too short to hold any triangle.").arg(path);
  }
  return false;
}

// Only an XML file is worth the XML reader's attempt: on a large legacy file it costs half a read.
bool StartsLikeXml(const QString& path)
{
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
  {
    return true; // the reader names the problem
  }
  const QByteArray head = file.read(64).trimmed();
  return head.startsWith('<') || head.startsWith("\xEF\xBB\xBF<");
}

// By content first, as the name may lie (a PNG saved as .jpg); the name decides when the content says
// nothing, for instance for a missing file, so that the reader can report it.
QMimeType ImageTypeOf(const QString& path)
{
  QMimeDatabase database;
  const QMimeType byContent = database.mimeTypeForFile(path, QMimeDatabase::MatchContent);
  if (byContent.name().startsWith(ZRVtkLib::io::IMAGE_PREFIX))
  {
    return byContent;
  }
  return database.mimeTypeForFile(path);
}
} // namespace

namespace ZRVtk
{
namespace utils
{
vtkSmartPointer<vtkDataSet> Read(const QString& path, QString* errorMessage)
{
  using Reader = vtkSmartPointer<vtkDataSet> (*)(const QString&, QString*);
  // Checked in this order; the legacy reader also takes the parallel legacy suffix.
  const std::pair<const QString&, Reader> readers[] = {
      {io::VTI_FILE_EXT, ReadImageData},        {io::PVTI_FILE_EXT, ReadPImageData},
      {io::VTR_FILE_EXT, ReadRectilinearGrid},  {io::PVTR_FILE_EXT, ReadPRectilinearGrid},
      {io::VTS_FILE_EXT, ReadStructuredGrid},   {io::PVTS_FILE_EXT, ReadPStructuredGrid},
      {io::VTU_FILE_EXT, ReadUnstructuredGrid}, {io::PVTU_FILE_EXT, ReadPUnstructuredGrid},
      {io::VTP_FILE_EXT, ReadPolyData},         {io::PVTP_FILE_EXT, ReadPPolyData},
      {io::VTK_FILE_EXT, ReadVtkData},          {io::PVTK_FILE_EXT, ReadVtkData},
      {io::STL_FILE_EXT, ReadSTLData},
  };
  const QString suffix = QFileInfo(path).suffix().toLower();
  for (const auto& [extension, reader] : readers)
  {
    if (suffix == extension)
    {
      if (!VXReadableFileCheck::IsReadable(path, errorMessage))
      {
        return nullptr;
      }
      return reader(path, errorMessage);
    }
  }
  return nullptr;
}

vtkSmartPointer<vtkDataSet> ReadImage(const QString& path, bool pointToCell, QString* errorMessage)
{
  if (!VXReadableFileCheck::IsReadable(path, errorMessage))
  {
    return nullptr;
  }
  const QMimeType mimeType = ImageTypeOf(path);
  const auto isA = [&mimeType](const QString& extension)
  { return mimeType.inherits(io::IMAGE_PREFIX + extension); };

  vtkSmartPointer<vtkImageData> image;
  // Each header is checked first: VTK's image readers allocate whatever it declares.
  if (isA(io::JPG_FILE_EXT) || isA(io::JPG_FILE_EXT2))
  {
    if (VXImageHeaderCheck::IsReadableJpeg(path, errorMessage))
    {
      image = ReadImageFile<vtkJPEGReader>(path, errorMessage);
    }
  }
  else if (isA(io::PNG_FILE_EXT))
  {
    if (VXImageHeaderCheck::IsReadablePng(path, errorMessage))
    {
      image = ReadImageFile<vtkPNGReader>(path, errorMessage);
    }
  }
  else if (isA(io::TIF_FILE_EXT) || isA(io::TIF_FILE_EXT2))
  {
    bool otherDecoderReads = false;
    if (VXTiffHeaderCheck::IsReadable(path, errorMessage, &otherDecoderReads))
    {
      image = ReadImageFile<vtkTIFFReader>(path, errorMessage);
      if (image != nullptr)
      {
        FlipRows(image);
      }
    }
    else if (otherDecoderReads)
    {
      // The array name vtkTIFFReader gives, so that every TIFF is coloured and saved alike.
      QString decodeError;
      image = VXQtImageDecoder::Read(path, "Tiff Scalars", &decodeError);
      if (errorMessage != nullptr)
      {
        *errorMessage = image != nullptr ? QString() : *errorMessage + QLatin1Char(' ') + decodeError;
      }
    }
  }
  else if (isA(io::BMP_FILE_EXT))
  {
    if (VXImageHeaderCheck::IsReadableBmp(path, errorMessage))
    {
      image = ReadImageFile<vtkBMPReader>(path, errorMessage);
    }
  }
  else if (errorMessage != nullptr)
  {
    *errorMessage =
        QStringLiteral("The file '%1' is no JPEG, PNG, TIFF or BMP image (%2).").arg(path, mimeType.name());
  }
  if (image == nullptr)
  {
    return nullptr;
  }
  if (pointToCell)
  {
    return ConvertPointDataToCellData(image);
  }
  return image;
}

vtkSmartPointer<vtkDataSet> ReadImageData(const QString& path, QString* errorMessage)
{
  return ReadXml<vtkXMLImageDataReader>(path, errorMessage);
}

vtkSmartPointer<vtkDataSet> ReadRectilinearGrid(const QString& path, QString* errorMessage)
{
  return ReadXml<vtkXMLRectilinearGridReader>(path, errorMessage);
}

vtkSmartPointer<vtkDataSet> ReadStructuredGrid(const QString& path, QString* errorMessage)
{
  return ReadXml<vtkXMLStructuredGridReader>(path, errorMessage);
}

vtkSmartPointer<vtkDataSet> ReadUnstructuredGrid(const QString& path, QString* errorMessage)
{
  return ReadXml<vtkXMLUnstructuredGridReader>(path, errorMessage);
}

vtkSmartPointer<vtkDataSet> ReadPolyData(const QString& path, QString* errorMessage)
{
  return ReadXml<vtkXMLPolyDataReader>(path, errorMessage);
}

vtkSmartPointer<vtkDataSet> ReadPImageData(const QString& path, QString* errorMessage)
{
  return ReadXml<vtkXMLPImageDataReader>(path, errorMessage);
}

vtkSmartPointer<vtkDataSet> ReadPRectilinearGrid(const QString& path, QString* errorMessage)
{
  return ReadXml<vtkXMLPRectilinearGridReader>(path, errorMessage);
}

vtkSmartPointer<vtkDataSet> ReadPStructuredGrid(const QString& path, QString* errorMessage)
{
  return ReadXml<vtkXMLPStructuredGridReader>(path, errorMessage);
}

vtkSmartPointer<vtkDataSet> ReadPUnstructuredGrid(const QString& path, QString* errorMessage)
{
  return ReadXml<vtkXMLPUnstructuredGridReader>(path, errorMessage);
}

vtkSmartPointer<vtkDataSet> ReadPPolyData(const QString& path, QString* errorMessage)
{
  return ReadXml<vtkXMLPPolyDataReader>(path, errorMessage);
}

vtkSmartPointer<vtkDataSet> ReadVtkData(const QString& path, QString* errorMessage)
{
  const QByteArray fileName = path.toUtf8();
  if (!VXXmlVtkHeaderCheck::check(path, errorMessage) || !VXLegacyVtkHeaderCheck::check(path, errorMessage))
  {
    return nullptr;
  }
  if (StartsLikeXml(path))
  {
    VXVtkErrorCapture capture;
    auto xmlReader = vtkSmartPointer<vtkXMLGenericDataObjectReader>::New();
    capture.watch(xmlReader);
    xmlReader->SetFileName(fileName.constData());
    xmlReader->Update();
    // No output means the file is no XML dataset: its complaints don't matter, the legacy reader decides.
    if (xmlReader->GetOutput() != nullptr)
    {
      return Checked(capture, xmlReader->GetOutputAsDataSet(), errorMessage, path);
    }
  }

  // The legacy reader only warns when binary data ends early.
  VXVtkErrorCapture capture(true);
  auto legacyReader = vtkSmartPointer<vtkGenericDataObjectReader>::New();
  capture.watch(legacyReader);
  legacyReader->SetFileName(fileName.constData());
  // Type names VTK's reader lacks are renamed in a copy read from memory.
  const QByteArray renamed = VXLegacyVtkTypeNames::renamedContent(path);
  if (!renamed.isEmpty())
  {
    auto input = vtkSmartPointer<vtkCharArray>::New();
    input->SetArray(const_cast<char*>(renamed.constData()), renamed.size(), 1);
    legacyReader->SetInputArray(input);
    legacyReader->ReadFromInputStringOn();
  }
  legacyReader->Update();
  vtkDataObject* output = legacyReader->GetOutput();
  if (output == nullptr || !output->IsA("vtkDataSet"))
  {
    if (errorMessage != nullptr)
    {
      *errorMessage = capture.hasErrors() ? capture.errorText()
                                          : QStringLiteral("The file holds no data set: %1").arg(path);
    }
    return nullptr;
  }
  return Checked(capture, vtkDataSet::SafeDownCast(output), errorMessage, path);
}

vtkSmartPointer<vtkDataSet> ReadSTLData(const QString& path, QString* errorMessage)
{
  if (!IsCompleteStl(path, errorMessage))
  {
    return nullptr;
  }
  VXVtkErrorCapture capture(true);
  auto reader = vtkSmartPointer<vtkSTLReader>::New();
  capture.watch(reader);
  reader->SetFileName(path.toUtf8().constData());
  reader->Update();
  return Checked<vtkDataSet>(capture, reader->GetOutput(), errorMessage, path);
}

vtkSmartPointer<vtkImageData> ConvertPointDataToCellData(vtkImageData* image)
{
  if (image == nullptr)
  {
    return nullptr;
  }
  auto cellImage = vtkSmartPointer<vtkImageData>::New();
  SetObjectName(cellImage, "Image Data");
  int dims[3];
  image->GetDimensions(dims);
  cellImage->SetDimensions(dims[0] + 1, dims[1] + 1, dims[2] + 1);
  cellImage->SetOrigin(image->GetOrigin());
  cellImage->SetSpacing(image->GetSpacing());
  vtkPointData* pointData = image->GetPointData();
  vtkCellData* cellData = cellImage->GetCellData();
  for (int i = 0; i < pointData->GetNumberOfArrays(); ++i)
  {
    cellData->AddArray(pointData->GetAbstractArray(i));
  }
  return cellImage;
}
} // namespace utils
} // namespace ZRVtk
