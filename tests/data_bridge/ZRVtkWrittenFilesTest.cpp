// Files our writers produce must open silently in VTK's own readers, as in any tool built on VTK, even
// when the dataset carries the information keys of our own that wrapped data always has.
#include "data_bridge/CVVtkBridge.h"
#include "data_bridge/ZRVtkDatasetWriters.h"
#include "data_bridge/ZRVtkObjectName.h"

#include <QProcess>
#include <QTemporaryDir>

#include <vtkAppendFilter.h>
#include <vtkCellData.h>
#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkInformation.h>
#include <vtkInformationIntegerVectorKey.h>
#include <vtkInformationStringKey.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkRectilinearGrid.h>
#include <vtkSphereSource.h>
#include <vtkStructuredGrid.h>
#include <vtkUnstructuredGrid.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace utils = ZRVtk::utils;

namespace
{
// Our keys on every array, as the wrapping of host data sets them.
void MarkArrays(vtkFieldData* fields)
{
  const int shape[] = {2, 3};
  for (int i = 0; i < fields->GetNumberOfArrays(); ++i)
  {
    vtkAbstractArray* array = fields->GetAbstractArray(i);
    ZRVtk::SetObjectName(array, std::string(array->GetName()) + " CV Array");
    array->GetInformation()->Set(CV::VtkBridge::TupleShapeKey(), shape, 2);
    const std::string path = std::string("Sample/Grains/Cell Data/") + array->GetName();
    array->GetInformation()->Set(CV::VtkBridge::DataPathKey(), path.c_str());
  }
}

vtkSmartPointer<vtkFloatArray> Ramp(const char* name, vtkIdType count)
{
  auto array = vtkSmartPointer<vtkFloatArray>::New();
  array->SetName(name);
  array->SetNumberOfTuples(count);
  for (vtkIdType i = 0; i < count; ++i)
  {
    array->SetValue(i, 0.5f * i);
  }
  // Measured data has gaps, and they must survive every format.
  array->SetValue(count / 2, std::numeric_limits<float>::quiet_NaN());
  return array;
}

template<class DataT>
vtkSmartPointer<DataT> WithArrays(vtkSmartPointer<DataT> data)
{
  data->GetPointData()->AddArray(Ramp("Density", data->GetNumberOfPoints()));
  data->GetCellData()->AddArray(Ramp("Phase", data->GetNumberOfCells()));
  ZRVtk::SetObjectName(data, "Grains");
  MarkArrays(data->GetPointData());
  MarkArrays(data->GetCellData());
  return data;
}

vtkSmartPointer<vtkImageData> Image()
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(4, 3, 2);
  return WithArrays(image);
}

vtkSmartPointer<vtkRectilinearGrid> Rectilinear()
{
  auto grid = vtkSmartPointer<vtkRectilinearGrid>::New();
  grid->SetDimensions(3, 2, 2);
  const char* names[] = {"X Bounds", "Y Bounds", "Z Bounds"};
  vtkSmartPointer<vtkDoubleArray> axes[3];
  for (int axis = 0; axis < 3; ++axis)
  {
    axes[axis] = vtkSmartPointer<vtkDoubleArray>::New();
    axes[axis]->SetName(names[axis]);
    for (int i = 0; i < (axis == 0 ? 3 : 2); ++i)
    {
      axes[axis]->InsertNextValue(i * 1.5);
    }
    ZRVtk::SetObjectName(axes[axis], std::string(names[axis]) + " CV Array");
  }
  grid->SetXCoordinates(axes[0]);
  grid->SetYCoordinates(axes[1]);
  grid->SetZCoordinates(axes[2]);
  return WithArrays(grid);
}

vtkSmartPointer<vtkStructuredGrid> Structured()
{
  auto grid = vtkSmartPointer<vtkStructuredGrid>::New();
  grid->SetDimensions(2, 2, 2);
  auto points = vtkSmartPointer<vtkPoints>::New();
  for (int i = 0; i < 8; ++i)
  {
    points->InsertNextPoint(i % 2, (i / 2) % 2, i / 4);
  }
  ZRVtk::SetObjectName(points->GetData(), "Vertices CV Array");
  grid->SetPoints(points);
  return WithArrays(grid);
}

vtkSmartPointer<vtkPolyData> Poly()
{
  vtkNew<vtkSphereSource> sphere;
  sphere->Update();
  auto poly = vtkSmartPointer<vtkPolyData>::New();
  poly->DeepCopy(sphere->GetOutput());
  poly->GetPointData()->Initialize();
  ZRVtk::SetObjectName(poly->GetPoints()->GetData(), "Vertices CV Array");
  return WithArrays(poly);
}

vtkSmartPointer<vtkUnstructuredGrid> Unstructured()
{
  vtkNew<vtkAppendFilter> append;
  append->AddInputData(Poly());
  append->Update();
  auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
  grid->DeepCopy(append->GetOutput());
  grid->GetPointData()->Initialize();
  grid->GetCellData()->Initialize();
  return WithArrays(grid);
}

using Writer = bool (*)(const QString&, vtkDataSet*, QString*);

// Writes the dataset and checks that writing did not cost it its own keys.
QString WriteChecked(const QTemporaryDir& dir, vtkDataSet* data, Writer writer, const char* name)
{
  const QString path = dir.filePath(QString::fromLatin1(name));
  QString message;
  EXPECT_TRUE(writer(path, data, &message)) << name << ": " << message.toStdString();
  vtkAbstractArray* density = data->GetPointData()->GetAbstractArray("Density");
  EXPECT_EQ(ZRVtk::GetObjectName(density), "Density CV Array") << name;
  EXPECT_EQ(density->GetInformation()->Length(CV::VtkBridge::TupleShapeKey()), 2) << name;
  EXPECT_EQ(CV::VtkBridge::GetDataPath(vtkDataArray::SafeDownCast(density)),
            "Sample/Grains/Cell Data/Density")
      << name;
  return path;
}
} // namespace

// The reader runs in a process of its own: in this one our keys are registered, and VTK would know them.
TEST(ZRVtkWrittenFiles, EveryWriterGivesFilesPlainVtkReadsWithoutAWord)
{
  QTemporaryDir dir;
  const QStringList files = {
      WriteChecked(dir, Image(), utils::WriteImageData, "image.vti"),
      WriteChecked(dir, Rectilinear(), utils::WriteRectilinearGrid, "grid.vtr"),
      WriteChecked(dir, Structured(), utils::WriteStructuredGrid, "grid.vts"),
      WriteChecked(dir, Unstructured(), utils::WriteUnstructuredGrid, "grid.vtu"),
      WriteChecked(dir, Poly(), utils::WritePolyData, "surface.vtp"),
      WriteChecked(dir, Image(), utils::WriteVtkData, "image.vtk"),
      WriteChecked(dir, Unstructured(), utils::WriteVtkData, "grid.vtk"),
  };
  QProcess reader;
  reader.start(QStringLiteral(ZR_TEST_BINARY_DIR "/tests/zr_plain_vtk_reader"), files);
  ASSERT_TRUE(reader.waitForFinished(60000));
  const QString said = QString::fromUtf8(reader.readAllStandardOutput());
  EXPECT_EQ(reader.exitCode(), 0) << said.toStdString();
  EXPECT_EQ(said.count(QStringLiteral(" cells\n")), files.size()) << said.toStdString();
  EXPECT_TRUE(said.contains(QStringLiteral("image.vti: 6 cells"))) << said.toStdString();
}

TEST(ZRVtkWrittenFiles, CoordinateAndPointArraysKeepTheirNamesAfterWriting)
{
  QTemporaryDir dir;
  QString message;
  vtkSmartPointer<vtkRectilinearGrid> grid = Rectilinear();
  ASSERT_TRUE(utils::WriteRectilinearGrid(dir.filePath("grid.vtr"), grid, &message));
  EXPECT_EQ(ZRVtk::GetObjectName(grid->GetYCoordinates()), "Y Bounds CV Array");
  vtkSmartPointer<vtkPolyData> poly = Poly();
  ASSERT_TRUE(utils::WritePolyData(dir.filePath("surface.vtp"), poly, &message));
  EXPECT_EQ(ZRVtk::GetObjectName(poly->GetPoints()->GetData()), "Vertices CV Array");
  EXPECT_EQ(ZRVtk::GetObjectName(poly), "Grains");
}
