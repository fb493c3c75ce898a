#include "app/sample/ComputedDataStore.h"
#include "app/sample/GrainMicrostructure.h"
#include "app/sample/SampleStructureBuilder.h"

#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/IGeometry.h"
#include "data_bridge/zr_contract/INodeGeometry3D.h"
#include "data_bridge/zr_contract/ImageGeom.h"
#include "data_bridge/zr_contract/KestrixIO.h"
#include "data_bridge/zr_contract/NeighborList.h"
#include "data_bridge/zr_contract/StringArray.h"
#include "data_bridge/zr_contract/TriangleGeom.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <set>
#include <unistd.h>

using namespace zr::core;
using zr::sample::GrainMicrostructure;
using zr::sample::SampleStructureBuilder;

namespace
{
DataStructure BuildSample(usize edge)
{
  return SampleStructureBuilder(std::make_shared<GrainMicrostructure>(edge, 7)).build();
}

std::vector<IGeometry*> AllGeometries(DataStructure& dataStructure)
{
  std::vector<IGeometry*> geometries;
  for (const DataPath& path : dataStructure.getAllDataPaths())
  {
    if (auto* geometry = dataStructure.getDataAs<IGeometry>(path))
    {
      geometries.push_back(geometry);
    }
  }
  return geometries;
}

template<class T>
std::vector<T> ReadAll(const IDataArray& array)
{
  const auto& typed = dynamic_cast<const DataArray<T>&>(array);
  std::vector<T> values(typed.getSize());
  typed.getDataStoreRef().copyIntoBuffer(0, values.data(), values.size());
  return values;
}
} // namespace

TEST(GrainMicrostructureTest, EveryVoxelBelongsToItsNearestCentre)
{
  const GrainMicrostructure micro(24, 3);
  EXPECT_EQ(micro.latticeEdge(), 3u);
  EXPECT_EQ(micro.grainCount(), 27u);
  const auto& ids = micro.featureIds();
  ASSERT_EQ(ids.size(), 24u * 24 * 24);
  for (usize index = 0; index < ids.size(); index += 37)
  {
    const float p[3] = {static_cast<float>(index % 24) + 0.5f, static_cast<float>((index / 24) % 24) + 0.5f,
                        static_cast<float>(index / 576) + 0.5f};
    const auto distance = [&](std::int32_t id)
    {
      const auto c = micro.centre(id);
      return (c[0] - p[0]) * (c[0] - p[0]) + (c[1] - p[1]) * (c[1] - p[1]) + (c[2] - p[2]) * (c[2] - p[2]);
    };
    for (std::int32_t other = 1; other <= 27; ++other)
    {
      ASSERT_LE(distance(ids[index]), distance(other) + 1e-4f) << "voxel " << index;
    }
  }
  usize total = 0;
  for (usize id = 1; id <= 27; ++id)
  {
    EXPECT_GT(micro.voxelCounts()[id], 0u);
    total += micro.voxelCounts()[id];
  }
  EXPECT_EQ(total, ids.size());
}

TEST(SampleStructureTest, HasEveryGeometryKindWithArrays)
{
  DataStructure sample = BuildSample(32);
  std::set<int> kinds;
  for (IGeometry* geometry : AllGeometries(sample))
  {
    kinds.insert(geometry->getGeomType());
    EXPECT_EQ(geometry->getDataPaths().size(), 1u) << geometry->getName();
    EXPECT_GT(geometry->getNumberOfCells(), 0u) << geometry->getName();
  }
  EXPECT_EQ(kinds, (std::set<int>{0, 1, 2, 3, 4, 5, 6, 7}));

  const auto* image = sample.getDataAs<ImageGeom>(DataPath({"Sample", "Grains"}));
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->getDimensions(), (std::array<usize, 3>{32, 32, 32}));
  const AttributeMatrix* cells = image->getCellData();
  for (const std::string name :
       {"FeatureIds", "Phases", "EulerAngles", "IPFColors", "Confidence Index", "Mask"})
  {
    const auto* array = dynamic_cast<const IArray*>((*cells)[name]);
    ASSERT_NE(array, nullptr) << name;
    EXPECT_EQ(array->getNumberOfTuples(), 32u * 32 * 32) << name;
  }
  EXPECT_EQ(dynamic_cast<const IArray*>((*cells)["EulerAngles"])->getNumberOfComponents(), 3u);
  EXPECT_EQ(dynamic_cast<const IArray*>((*cells)["IPFColors"])->getDataType(), DataType::uint8);
  EXPECT_EQ(dynamic_cast<const IArray*>((*cells)["Mask"])->getDataType(), DataType::boolean);
  EXPECT_NE(sample.getDataAs<NeighborList<std::int32_t>>(
                DataPath({"Sample", "Grains", "Grain Data", "NeighborList"})),
            nullptr);
  EXPECT_NE(sample.getDataAs<StringArray>(DataPath({"Sample", "Ensemble Data", "Phase Names"})), nullptr);

  const auto* boundaries =
      sample.getDataAs<TriangleGeom>(DataPath({"Meshes", "Surface Meshes", "Grain Boundaries"}));
  ASSERT_NE(boundaries, nullptr);
  const auto* labels = dynamic_cast<const Int32Array*>((*boundaries->getFaceAttributeMatrix())["FaceLabels"]);
  ASSERT_NE(labels, nullptr);
  EXPECT_EQ(labels->getNumberOfTuples(), boundaries->getNumberOfFaces());
  for (usize face = 0; face < labels->getNumberOfTuples(); ++face)
  {
    ASSERT_NE(labels->getComponent(face, 0), labels->getComponent(face, 1));
  }
  // Connectivity stays within the vertex list.
  const auto* faces = boundaries->getFaces();
  for (usize i = 0; i < faces->getSize(); ++i)
  {
    ASSERT_LT(faces->getValue(i), boundaries->getNumberOfVertices());
  }
}

TEST(SampleStructureTest, CellArraysAreConsistentAndSomeConfidenceIsNaN)
{
  DataStructure sample = BuildSample(32);
  const AttributeMatrix* cells = sample.getDataAs<ImageGeom>(DataPath({"Sample", "Grains"}))->getCellData();
  const auto ids = ReadAll<std::int32_t>(*dynamic_cast<const IDataArray*>((*cells)["FeatureIds"]));
  const auto phases = ReadAll<std::int32_t>(*dynamic_cast<const IDataArray*>((*cells)["Phases"]));
  const auto confidence = ReadAll<float>(*dynamic_cast<const IDataArray*>((*cells)["Confidence Index"]));
  const auto mask = dynamic_cast<const BoolArray*>((*cells)["Mask"]);
  const auto* grainPhases =
      sample.getDataAs<Int32Array>(DataPath({"Sample", "Grains", "Grain Data", "Phases"}));
  usize nans = 0;
  for (usize i = 0; i < ids.size(); ++i)
  {
    ASSERT_GE(ids[i], 1);
    ASSERT_EQ(phases[i], grainPhases->getValue(static_cast<usize>(ids[i])));
    if (std::isnan(confidence[i]))
    {
      ++nans;
      ASSERT_FALSE(mask->getValue(i));
    }
  }
  EXPECT_GT(nans, 0u);
  EXPECT_LT(nans, ids.size() / 50);
}

TEST(SampleStructureTest, GenerationIsDeterministicAndRoundTrips)
{
  const std::filesystem::path first =
      std::filesystem::temp_directory_path() / ("zr_sample_a_" + std::to_string(::getpid()) + ".kestrix");
  const std::filesystem::path second =
      std::filesystem::temp_directory_path() / ("zr_sample_b_" + std::to_string(::getpid()) + ".kestrix");
  ASSERT_TRUE(KESTRIX::WriteDataStructureToFile(first, BuildSample(20)).valid());
  ASSERT_TRUE(KESTRIX::WriteDataStructureToFile(second, BuildSample(20)).valid());
  Result<DataStructure> a = KESTRIX::ImportDataStructureFromFile(first, false);
  Result<DataStructure> b = KESTRIX::ImportDataStructureFromFile(second, false);
  std::filesystem::remove(first);
  std::filesystem::remove(second);
  ASSERT_TRUE(a.valid());
  ASSERT_TRUE(b.valid());
  ASSERT_EQ(a.value().getAllDataPaths(), b.value().getAllDataPaths());
  for (const DataPath& path : a.value().getAllDataPaths())
  {
    const auto* left = a.value().getDataAs<Float32Array>(path);
    if (left == nullptr)
    {
      continue;
    }
    const auto* right = b.value().getDataAs<Float32Array>(path);
    EXPECT_EQ(left->getDataFormat(), "") << path.toString();
    for (usize i = 0; i < left->getSize(); ++i)
    {
      const float x = left->getValue(i);
      const float y = right->getValue(i);
      ASSERT_TRUE(x == y || (std::isnan(x) && std::isnan(y))) << path.toString() << " " << i;
    }
  }
}

TEST(ComputedDataStoreTest, UnalignedReadsMatchSingleValues)
{
  zr::sample::ComputedDataStore<std::int32_t> store({10}, {3},
                                                    [](usize first, usize count, std::int32_t* out)
                                                    {
                                                      for (usize i = 0; i < count * 3; ++i)
                                                      {
                                                        out[i] = static_cast<std::int32_t>(first * 3 + i);
                                                      }
                                                    });
  std::int32_t buffer[7] = {};
  store.copyIntoBuffer(4, buffer, 7);
  for (std::int32_t i = 0; i < 7; ++i)
  {
    EXPECT_EQ(buffer[i], i + 4);
  }
  EXPECT_EQ(store.getValue(29), 29);
  EXPECT_FALSE(store.getDataFormat().empty());
  EXPECT_THROW(store.setValue(0, 1), std::runtime_error);
}
