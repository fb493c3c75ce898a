// Image resample and quadric clustering filters: nearest-cell sampling of image data, pass-through
// cases, and decimation against the bare VTK algorithm on the same surface.
#include "filters/FilterTestSupport.h"
#include "filters/VXFImageResample.h"
#include "filters/VXFQuadricClustering.h"

#include <vtkDataSetSurfaceFilter.h>
#include <vtkIntArray.h>
#include <vtkPolyData.h>
#include <vtkQuadricClustering.h>

#include <nlohmann/json.hpp>

namespace
{
class ResampleFilterTest : public FilterFixture
{
protected:
  // An image of 100 x 4 x 2 cells whose cell array holds each cell's x index.
  static vtkSmartPointer<vtkImageData> indexImage()
  {
    auto image = vtkSmartPointer<vtkImageData>::New();
    image->SetDimensions(101, 5, 3);
    image->SetSpacing(0.5, 1.0, 1.0);
    image->SetOrigin(2.0, 0.0, 0.0);
    vtkNew<vtkIntArray> ids;
    ids->SetName("XIndex");
    ids->SetNumberOfTuples(image->GetNumberOfCells());
    for (vtkIdType id = 0; id < image->GetNumberOfCells(); ++id)
    {
      ids->SetValue(id, static_cast<int>(id % 100));
    }
    image->GetCellData()->AddArray(ids);
    vtkNew<vtkFloatArray> pointValues;
    pointValues->SetName("PointValues");
    pointValues->SetNumberOfTuples(image->GetNumberOfPoints());
    pointValues->Fill(1.0);
    image->GetPointData()->AddArray(pointValues);
    return image;
  }
};

TEST_F(ResampleFilterTest, HalfTheCellsTakeEverySecondSourceCell)
{
  VXDataSource* source = importImage(indexImage());
  auto* resample = addFilter<VXFImageResample>(source);
  ASSERT_NE(resample, nullptr);
  resample->setResampleDimensions({50.0, 100.0, 1.0});
  resample->applyFilter();
  auto* out = vtkImageData::SafeDownCast(output(resample));
  ASSERT_NE(out, nullptr);
  int dims[3];
  out->GetDimensions(dims);
  EXPECT_EQ(dims[0], 51);
  EXPECT_EQ(dims[1], 5);
  EXPECT_EQ(dims[2], 2) << "a count that rounds to 0 gives one cell";
  EXPECT_DOUBLE_EQ(out->GetSpacing()[0], 1.0);
  EXPECT_DOUBLE_EQ(out->GetSpacing()[2], 2.0);
  EXPECT_DOUBLE_EQ(out->GetOrigin()[0], 2.0);
  vtkDataArray* ids = out->GetCellData()->GetArray("XIndex");
  ASSERT_NE(ids, nullptr);
  EXPECT_EQ(ids->GetDataType(), VTK_INT);
  EXPECT_EQ(ids->GetTuple1(49), 98.0);
  EXPECT_EQ(ids->GetTuple1(50), 0.0);
  EXPECT_EQ(out->GetPointData()->GetNumberOfArrays(), 0) << "point arrays are not carried over";
  EXPECT_EQ(childRepresentations(resample), 1);
}

TEST_F(ResampleFilterTest, FullOrZeroPercentagesPassTheInputThrough)
{
  VXDataSource* source = importImage(indexImage());
  auto* resample = addFilter<VXFImageResample>(source);
  ASSERT_NE(resample, nullptr);
  resample->applyFilter();
  EXPECT_EQ(resample->algorithm()->GetInputConnection(0, 0), source->outputPort());
  EXPECT_EQ(output(resample)->GetNumberOfCells(), source->getOutput()->GetNumberOfCells());
  resample->setResampleDimensions({0.0, 50.0, 50.0});
  resample->applyFilter();
  EXPECT_EQ(resample->algorithm()->GetInputConnection(0, 0), source->outputPort());
  EXPECT_EQ(output(resample)->GetNumberOfCells(), source->getOutput()->GetNumberOfCells());
}

TEST_F(ResampleFilterTest, ClusteringMatchesTheBareAlgorithmOnTheSurface)
{
  VXDataSource* source = importImage(MakeTestImage(16));
  auto* clustering = addFilter<VXFQuadricClustering>(source);
  ASSERT_NE(clustering, nullptr);
  clustering->setNumberOfDimensions({6, 5, 4});
  clustering->setUseFeatureEdges(true);
  clustering->applyFilter();

  vtkNew<vtkDataSetSurfaceFilter> surface;
  surface->SetInputData(source->getOutput());
  vtkNew<vtkQuadricClustering> bare;
  bare->SetInputConnection(surface->GetOutputPort());
  bare->SetCopyCellData(1);
  bare->SetNumberOfDivisions(6, 5, 4);
  bare->SetUseInputPoints(1);
  bare->SetUseFeatureEdges(1);
  bare->Update();
  ExpectSameOutput(bare->GetOutput(), output(clustering));
  EXPECT_GT(output(clustering)->GetNumberOfCells(), 0);
  EXPECT_EQ(childRepresentations(clustering), 1);
}

TEST_F(ResampleFilterTest, ClusteringOfAnEmptyInputAddsNoDataView)
{
  vtkNew<vtkImageData> empty;
  VXDataSource* source = importImage(empty, QStringLiteral("empty.vti"));
  if (source == nullptr)
  {
    GTEST_SKIP() << "an empty image gives no data source";
  }
  auto* clustering = addFilter<VXFQuadricClustering>(source);
  ASSERT_NE(clustering, nullptr);
  clustering->applyFilter();
  EXPECT_EQ(childRepresentations(clustering), 0);
}

TEST_F(ResampleFilterTest, StateKeysGoBackAndForth)
{
  VXDataSource* source = importImage(indexImage());
  auto* clustering = addFilter<VXFQuadricClustering>(source);
  auto* resample = addFilter<VXFImageResample>(source);
  ASSERT_NE(clustering, nullptr);
  ASSERT_NE(resample, nullptr);
  clustering->setNumberOfDimensions({7, 8, 9});
  clustering->setUseInputPoints(false);
  clustering->setUseInternalTriangles(true);
  resample->setResampleDimensions({25.0, 30.0, 40.0});
  nlohmann::json clusteringRecord;
  clustering->write(clusteringRecord, {});
  nlohmann::json resampleRecord;
  resample->write(resampleRecord, {});
  EXPECT_EQ(clusteringRecord.at("data_source_num_of_dims_y"), 8);
  EXPECT_EQ(clusteringRecord.at("data_source_use_input_points"), false);
  EXPECT_EQ(resampleRecord.at("data_source_num_of_dims_z"), 40.0);

  auto* clusteringCopy = addFilter<VXFQuadricClustering>(source);
  auto* resampleCopy = addFilter<VXFImageResample>(source);
  clusteringCopy->read(clusteringRecord, {});
  resampleCopy->read(resampleRecord, {});
  EXPECT_EQ(clusteringCopy->numberOfDimensions(), (std::array<int, 3>{7, 8, 9}));
  EXPECT_FALSE(clusteringCopy->useInputPoints());
  EXPECT_TRUE(clusteringCopy->useInternalTriangles());
  EXPECT_EQ(resampleCopy->resampleDimensions(), (std::array<double, 3>{25.0, 30.0, 40.0}));
}
} // namespace
