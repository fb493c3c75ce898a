#pragma once
// A small mesh file and an event-loop settle shared by the data view tests.
#include <vtkCellData.h>
#include <vtkDoubleArray.h>
#include <vtkIntArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkSphereSource.h>
#include <vtkXMLPolyDataWriter.h>

#include <QCoreApplication>
#include <QString>
#include <QTest>

namespace DataViewTestData
{
enum class SphereData
{
  NormalsAndArrays, // the source's point normals kept beside the arrays
  ArraysOnly,
  Bare
};

// A sphere whose cells carry the feature ids 1, 7 and 400 and whose points carry a vector.
inline QString WriteSphere(const QString& path, SphereData data = SphereData::NormalsAndArrays)
{
  vtkNew<vtkSphereSource> sphere;
  sphere->SetThetaResolution(24);
  sphere->SetPhiResolution(16);
  sphere->Update();
  vtkPolyData* output = sphere->GetOutput();
  if (data != SphereData::NormalsAndArrays)
  {
    output->GetPointData()->Initialize();
  }
  if (data != SphereData::Bare)
  {
    vtkNew<vtkIntArray> featureIds;
    featureIds->SetName("FeatureIds");
    const int ids[3] = {1, 7, 400};
    for (vtkIdType cell = 0; cell < output->GetNumberOfCells(); ++cell)
    {
      featureIds->InsertNextValue(ids[(cell / 24) % 3]);
    }
    output->GetCellData()->AddArray(featureIds);
    vtkNew<vtkDoubleArray> velocity;
    velocity->SetName("Velocity");
    velocity->SetNumberOfComponents(3);
    for (vtkIdType point = 0; point < output->GetNumberOfPoints(); ++point)
    {
      const double* p = output->GetPoint(point);
      velocity->InsertNextTuple3(p[0] * 2.0, p[1], 0.0);
    }
    output->GetPointData()->AddArray(velocity);
  }
  vtkNew<vtkXMLPolyDataWriter> writer;
  writer->SetInputData(output);
  writer->SetFileName(path.toLocal8Bit().constData());
  writer->Write();
  return path;
}

inline void Settle()
{
  for (int i = 0; i < 5; ++i)
  {
    QCoreApplication::processEvents();
    QTest::qWait(5);
  }
}
} // namespace DataViewTestData
