#pragma once

#include "filters/VXFilter.h"
#include "pipeline/FileToVXBridge.h"
#include "pipeline/PipelineTreeFixture.h"

#include <vtkCellData.h>
#include <vtkDataSet.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkSmartPointer.h>
#include <vtkXMLImageDataWriter.h>

#include <QSignalSpy>
#include <QStringList>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

// An image of n^3 cells: a float cell array "Density" that varies over space, a three-component point
// array "Velocity", and a scale that changes both, so that a reload brings different values.
inline vtkSmartPointer<vtkImageData> MakeTestImage(int cells, double scale = 1.0,
                                                   std::array<double, 3> origin = {0.0, 0.0, 0.0})
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(cells + 1, cells + 1, cells + 1);
  image->SetSpacing(1.0, 1.0, 1.0);
  image->SetOrigin(origin.data());
  vtkNew<vtkFloatArray> density;
  density->SetName("Density");
  density->SetNumberOfTuples(static_cast<vtkIdType>(cells) * cells * cells);
  for (int k = 0; k < cells; ++k)
  {
    for (int j = 0; j < cells; ++j)
    {
      for (int i = 0; i < cells; ++i)
      {
        const vtkIdType id = (static_cast<vtkIdType>(k) * cells + j) * cells + i;
        density->SetValue(id, static_cast<float>(scale * (std::sin(0.3 * i) + 0.05 * j * k)));
      }
    }
  }
  image->GetCellData()->AddArray(density);
  image->GetCellData()->SetActiveScalars("Density");
  vtkNew<vtkFloatArray> velocity;
  velocity->SetName("Velocity");
  velocity->SetNumberOfComponents(3);
  velocity->SetNumberOfTuples(image->GetNumberOfPoints());
  for (vtkIdType id = 0; id < image->GetNumberOfPoints(); ++id)
  {
    double point[3];
    image->GetPoint(id, point);
    velocity->SetTuple3(id, scale * point[0], point[1] - point[2], scale * point[2] * 0.5);
  }
  image->GetPointData()->AddArray(velocity);
  return image;
}

// Counts and array ranges of two datasets made by the same algorithm on the same data.
inline void ExpectSameOutput(vtkDataSet* expected, vtkDataSet* actual)
{
  ASSERT_NE(expected, nullptr);
  ASSERT_NE(actual, nullptr);
  EXPECT_STREQ(expected->GetClassName(), actual->GetClassName());
  EXPECT_EQ(expected->GetNumberOfPoints(), actual->GetNumberOfPoints());
  EXPECT_EQ(expected->GetNumberOfCells(), actual->GetNumberOfCells());
  for (auto [expectedData, actualData] :
       {std::pair<vtkFieldData*, vtkFieldData*>{expected->GetPointData(), actual->GetPointData()},
        std::pair<vtkFieldData*, vtkFieldData*>{expected->GetCellData(), actual->GetCellData()}})
  {
    ASSERT_EQ(expectedData->GetNumberOfArrays(), actualData->GetNumberOfArrays());
    for (int a = 0; a < expectedData->GetNumberOfArrays(); ++a)
    {
      vtkDataArray* expectedArray = expectedData->GetArray(a);
      if (expectedArray == nullptr)
      {
        continue;
      }
      vtkDataArray* actualArray = actualData->GetArray(expectedArray->GetName());
      ASSERT_NE(actualArray, nullptr) << expectedArray->GetName();
      for (int c = 0; c < expectedArray->GetNumberOfComponents(); ++c)
      {
        double e[2];
        double r[2];
        expectedArray->GetRange(e, c);
        actualArray->GetRange(r, c);
        EXPECT_DOUBLE_EQ(e[0], r[0]) << expectedArray->GetName() << " component " << c;
        EXPECT_DOUBLE_EQ(e[1], r[1]) << expectedArray->GetName() << " component " << c;
      }
    }
  }
}

// The tree fixture with an image file imported as one data source.
class FilterFixture : public PipelineTreeFixture
{
protected:
  QString writeImage(const QString& fileName, vtkImageData* image)
  {
    vtkNew<vtkXMLImageDataWriter> writer;
    writer->SetInputData(image);
    const QString path = m_Dir.filePath(fileName);
    writer->SetFileName(path.toLocal8Bit().constData());
    writer->Write();
    return path;
  }

  VXDataSource* importImage(vtkImageData* image, const QString& fileName = QStringLiteral("image.vti"))
  {
    m_ImagePath = writeImage(fileName, image);
    m_Bridge = m_Pipeline.importFile(m_ImagePath);
    if (m_Bridge == nullptr || m_Bridge->dataSources().isEmpty())
    {
      return nullptr;
    }
    return m_Bridge->dataSources().front();
  }

  // Adds the filter under the row of parent, through the model as the panel does.
  template<class FilterT>
  FilterT* addFilter(VXCoreObject* parent)
  {
    auto* filter = new FilterT();
    if (!m_Model.addFilter(m_Model.coreObjectIndex(parent), filter))
    {
      delete filter;
      return nullptr;
    }
    return filter;
  }

  static vtkDataSet* output(VXCoreObject* object)
  {
    vtkAlgorithmOutput* port = object->outputPort();
    return vtkDataSet::SafeDownCast(port->GetProducer()->GetOutputDataObject(port->GetIndex()));
  }

  int childRepresentations(VXCoreObject* object) const
  {
    const QModelIndex index = m_Model.coreObjectIndex(object);
    int count = 0;
    for (int row = 0; row < m_Model.rowCount(index); ++row)
    {
      count += m_Model.isRepresentation(m_Model.index(row, 0, index)) ? 1 : 0;
    }
    return count;
  }

  QString m_ImagePath;
  VXBridgeObject* m_Bridge = nullptr;
};

// Every output message the pipeline sends while it lives.
class MessageRecorder
{
public:
  explicit MessageRecorder(VXPipeline* pipeline)
      : m_Spy(pipeline, &VXPipeline::sendOutputMessage)
  {
  }
  QStringList messages() const
  {
    QStringList list;
    for (const QList<QVariant>& arguments : m_Spy)
    {
      list.append(arguments.front().toString());
    }
    return list;
  }

private:
  QSignalSpy m_Spy;
};
