// Files our writers produce must open silently in VTK's own readers, as in any tool built on VTK, even
// when the dataset carries the information keys of our own that wrapped data always has.
#include "data_bridge/CVVtkBridge.h"
#include "data_bridge/ZRVtkDatasetWriters.h"
#include "data_bridge/ZRVtkObjectName.h"

#include <QTemporaryDir>

#include <vtkAppendFilter.h>
#include <vtkCellData.h>
#include <vtkCommand.h>
#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>
#include <vtkGenericDataObjectReader.h>
#include <vtkImageData.h>
#include <vtkInformation.h>
#include <vtkInformationIntegerVectorKey.h>
#include <vtkObjectFactory.h>
#include <vtkOutputWindow.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkRectilinearGrid.h>
#include <vtkSphereSource.h>
#include <vtkStructuredGrid.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLImageDataReader.h>
#include <vtkXMLPolyDataReader.h>
#include <vtkXMLRectilinearGridReader.h>
#include <vtkXMLStructuredGridReader.h>
#include <vtkXMLUnstructuredGridReader.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace utils = ZRVtk::utils;

namespace
{
// Records every text VTK prints, warnings included, while a reader runs.
class RecordingOutputWindow : public vtkOutputWindow
{
public:
  static RecordingOutputWindow* New();
  vtkTypeMacro(RecordingOutputWindow, vtkOutputWindow);
  void DisplayText(const char* text) override { m_Lines.emplace_back(text); }
  std::vector<std::string> m_Lines;
};
vtkStandardNewMacro(RecordingOutputWindow);

// Counts error and warning events of the reader itself.
class CountingObserver : public vtkCommand
{
public:
  static CountingObserver* New() { return new CountingObserver; }
  void Execute(vtkObject*, unsigned long, void* callData) override
  {
    m_Lines.emplace_back(static_cast<const char*>(callData));
  }
  std::vector<std::string> m_Lines;
};

// Our keys on every array, as the wrapping of host data sets them.
void MarkArrays(vtkFieldData* fields)
{
  const int shape[] = {2, 3};
  for (int i = 0; i < fields->GetNumberOfArrays(); ++i)
  {
    vtkAbstractArray* array = fields->GetAbstractArray(i);
    ZRVtk::SetObjectName(array, std::string(array->GetName()) + " CV Array");
    array->GetInformation()->Set(CV::VtkBridge::TupleShapeKey(), shape, 2);
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

// Reads the file with VTK's reader of the format and returns everything it said.
template<class ReaderT>
std::vector<std::string> ReadSaying(const QString& path, vtkIdType& cells)
{
  auto recorder = vtkSmartPointer<RecordingOutputWindow>::New();
  vtkSmartPointer<vtkOutputWindow> previous = vtkOutputWindow::GetInstance();
  vtkOutputWindow::SetInstance(recorder);
  auto observer = vtkSmartPointer<CountingObserver>::New();
  auto reader = vtkSmartPointer<ReaderT>::New();
  reader->AddObserver(vtkCommand::ErrorEvent, observer);
  reader->AddObserver(vtkCommand::WarningEvent, observer);
  reader->SetFileName(path.toUtf8().constData());
  reader->Update();
  vtkOutputWindow::SetInstance(previous);
  auto* output = vtkDataSet::SafeDownCast(reader->GetOutputDataObject(0));
  cells = output != nullptr ? output->GetNumberOfCells() : -1;
  std::vector<std::string> said = recorder->m_Lines;
  said.insert(said.end(), observer->m_Lines.begin(), observer->m_Lines.end());
  return said;
}

template<class ReaderT>
void ExpectSilentRead(vtkDataSet* data, bool (*writer)(const QString&, vtkDataSet*, QString*),
                      const char* name)
{
  QTemporaryDir dir;
  const QString path = dir.filePath(QString::fromLatin1(name));
  QString message;
  ASSERT_TRUE(writer(path, data, &message)) << message.toStdString();
  vtkIdType cells = 0;
  const std::vector<std::string> said = ReadSaying<ReaderT>(path, cells);
  EXPECT_TRUE(said.empty()) << name << ": " << said.front();
  EXPECT_EQ(cells, data->GetNumberOfCells()) << name;
  // Writing must not cost the dataset its own keys.
  vtkAbstractArray* density = data->GetPointData()->GetAbstractArray("Density");
  EXPECT_EQ(ZRVtk::GetObjectName(density), "Density CV Array") << name;
  EXPECT_EQ(density->GetInformation()->Length(CV::VtkBridge::TupleShapeKey()), 2) << name;
}
} // namespace

TEST(ZRVtkWrittenFiles, EveryWriterGivesFilesVtkReadsWithoutAWord)
{
  ExpectSilentRead<vtkXMLImageDataReader>(Image(), utils::WriteImageData, "image.vti");
  ExpectSilentRead<vtkXMLRectilinearGridReader>(Rectilinear(), utils::WriteRectilinearGrid, "grid.vtr");
  ExpectSilentRead<vtkXMLStructuredGridReader>(Structured(), utils::WriteStructuredGrid, "grid.vts");
  ExpectSilentRead<vtkXMLUnstructuredGridReader>(Unstructured(), utils::WriteUnstructuredGrid, "grid.vtu");
  ExpectSilentRead<vtkXMLPolyDataReader>(Poly(), utils::WritePolyData, "surface.vtp");
  ExpectSilentRead<vtkGenericDataObjectReader>(Image(), utils::WriteVtkData, "image.vtk");
  ExpectSilentRead<vtkGenericDataObjectReader>(Unstructured(), utils::WriteVtkData, "grid.vtk");
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
