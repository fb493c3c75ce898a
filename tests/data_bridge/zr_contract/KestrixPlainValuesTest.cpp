#include "KestrixTestStructures.h"

#include "data_bridge/zr_contract/KestrixIO.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <hdf5.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>

using namespace zr::core;
using zr::test::TempFile;

namespace
{
std::string FirstError(const Result<DataStructure>& result)
{
  return result.errors().empty() ? std::string("(no error)") : result.errors().front().message;
}

// Per element type: the extremes of the type, and for floats NaN and both infinities, spread over
// the components so that each component has its own range.
struct FillExtremesFunctor
{
  template<class T>
  void operator()(DataStructure& dataStructure, IdType id) const
  {
    auto& store = dataStructure.getDataAs<DataArray<T>>(id)->getDataStoreRef();
    const usize size = store.getSize();
    for (usize i = 0; i < size; ++i)
    {
      if constexpr (std::is_same_v<T, bool>)
      {
        store.setValue(i, i % 5 == 1);
      }
      else
      {
        const auto spread = static_cast<std::int64_t>((i * 37) % 101) - (std::is_signed_v<T> ? 50 : 0);
        store.setValue(i, static_cast<T>(spread));
      }
    }
    if constexpr (!std::is_same_v<T, bool>)
    {
      store.setValue(size - 1, std::numeric_limits<T>::max());
      store.setValue(size / 2, std::numeric_limits<T>::lowest());
      if constexpr (std::is_floating_point_v<T>)
      {
        store.setValue(0, std::numeric_limits<T>::quiet_NaN());
        store.setValue(size / 3, std::numeric_limits<T>::infinity());
        store.setValue(size / 4, -std::numeric_limits<T>::infinity());
        store.setValue(size - 2, std::numeric_limits<T>::quiet_NaN());
      }
    }
  }
};

// Same bytes (NaN included) and, when the store knows its ranges, the plain per-component ranges.
struct ExpectSameValuesAndRangesFunctor
{
  template<class T>
  void operator()(const DataStructure& expected, const DataStructure& actual, IdType id,
                  bool expectRanges) const
  {
    const auto* original = expected.getDataAs<DataArray<T>>(id);
    const auto* imported = actual.getDataAs<DataArray<T>>(id);
    ASSERT_NE(imported, nullptr);
    const std::string name = imported->getName();
    const auto* store = imported->getInMemoryStore();
    ASSERT_NE(store, nullptr) << name;
    const usize size = original->getSize();
    ASSERT_EQ(store->getSize(), size) << name;
    for (usize i = 0; i < size; ++i)
    {
      const T a = original->getValue(i);
      const T b = store->getValue(i);
      ASSERT_EQ(std::memcmp(&a, &b, sizeof(T)), 0) << name << " element " << i;
    }
    if constexpr (!std::is_same_v<T, bool>)
    {
      const ComponentRanges<T>* ranges = store->getComponentRanges();
      ASSERT_EQ(ranges != nullptr, expectRanges) << name;
      if (ranges == nullptr)
      {
        return;
      }
      const usize numComponents = store->getNumberOfComponents();
      for (usize comp = 0; comp < numComponents; ++comp)
      {
        T lo = std::numeric_limits<T>::max();
        T hi = std::numeric_limits<T>::lowest();
        for (usize i = comp; i < size; i += numComponents)
        {
          const T value = store->getValue(i);
          if constexpr (std::is_floating_point_v<T>)
          {
            if (std::isnan(value))
            {
              continue;
            }
          }
          lo = std::min(lo, value);
          hi = std::max(hi, value);
        }
        EXPECT_EQ(ranges->minima()[comp], lo) << name << " component " << comp;
        EXPECT_EQ(ranges->maxima()[comp], hi) << name << " component " << comp;
      }
    }
  }
};

struct TypedArray
{
  IdType id;
  DataType dataType;
};

// Every element type, each with one and with three components, and a large array that spans many
// read blocks.
DataStructure MakeExtremesStructure(std::vector<TypedArray>& arrays)
{
  DataStructure ds;
  auto* group = DataGroup::Create(ds, "Arrays");
  for (int value = 0; value <= static_cast<int>(DataType::boolean); ++value)
  {
    const auto dataType = static_cast<DataType>(value);
    for (const ShapeType& components : {ShapeType{1}, ShapeType{3}})
    {
      const IdType id = ExecuteDataFunction(zr::test::CreateArrayFunctor{}, dataType, ds,
                                            fmt::format("{} x{}", DataTypeToString(dataType), components[0]),
                                            ShapeType{211}, components, group->getId());
      ExecuteDataFunction(FillExtremesFunctor{}, dataType, ds, id);
      arrays.push_back({id, dataType});
    }
  }
  const IdType large = Float32Array::Create(ds, "Large", {3, 1000, 1001}, {2}, group->getId())->getId();
  ExecuteDataFunction(FillExtremesFunctor{}, DataType::float32, ds, large);
  arrays.push_back({large, DataType::float32});
  return ds;
}
} // namespace

TEST(KestrixPlainValuesTest, PlainArraysOfEveryTypeComeWithTheirRanges)
{
  std::vector<TypedArray> arrays;
  const DataStructure original = MakeExtremesStructure(arrays);
  TempFile file("plain_values.kestrix");
  ASSERT_TRUE(KESTRIX::WriteDataStructureToFile(file.path(), original).valid());

  Result<DataStructure> imported = KESTRIX::ImportDataStructureFromFile(file.path(), false);
  ASSERT_TRUE(imported.valid()) << FirstError(imported);
  EXPECT_TRUE(imported.warnings().empty());
  for (const TypedArray& array : arrays)
  {
    // Our writer stores every numeric array plainly, so each arrives with its ranges.
    ExecuteDataFunction(ExpectSameValuesAndRangesFunctor{}, array.dataType, original, imported.value(),
                        array.id, array.dataType != DataType::boolean);
  }

  // Loading one array on demand takes the same road.
  HDF5::FileIO fileIO = HDF5::FileIO::ReadFile(file.path());
  Result<DataStructure> skeleton = KESTRIX::ImportDataStructureFromFile(fileIO, true);
  ASSERT_TRUE(skeleton.valid()) << FirstError(skeleton);
  DataStructure loaded;
  for (const DataPath& path : KESTRIX::ExpandSelectedPathsToAncestors({DataPath({"Arrays", "Large"})}))
  {
    Result<> finished = KESTRIX::FinishImportingObject(loaded, skeleton.value(), path, fileIO, false);
    ASSERT_TRUE(finished.valid()) << finished.errors().front().message;
  }
  ExpectSameValuesAndRangesFunctor{}.operator()<float>(original, loaded, arrays.back().id, true);
}

namespace
{
// The values make-kestrix-fixtures.py wrote, computed again here.
std::vector<float> FixtureAngles()
{
  std::vector<float> values(300);
  for (std::size_t i = 0; i < values.size(); ++i)
  {
    values[i] = static_cast<float>(i) * 0.5f - 40.0f;
  }
  values[7 * 3 + 0] = std::numeric_limits<float>::quiet_NaN();
  values[20 * 3 + 1] = std::numeric_limits<float>::infinity();
  values[21 * 3 + 2] = -std::numeric_limits<float>::infinity();
  for (std::size_t tuple = 0; tuple < 100; ++tuple)
  {
    if (values[tuple * 3 + 2] > 0.0f)
    {
      values[tuple * 3 + 2] = std::numeric_limits<float>::quiet_NaN();
    }
  }
  return values;
}

template<class T>
const DataStore<T>& StoreAt(const DataStructure& ds, const std::string& name)
{
  const auto* array = ds.getDataAs<DataArray<T>>(DataPath({name}));
  if (array == nullptr || array->getInMemoryStore() == nullptr)
  {
    throw std::runtime_error("no in-memory array " + name);
  }
  return *array->getInMemoryStore();
}

template<class T>
bool SameBits(T a, T b)
{
  return std::memcmp(&a, &b, sizeof(T)) == 0;
}
} // namespace

TEST(KestrixPlainValuesTest, ChunkedCompressedAndBigEndianArraysFromH5pyAreReadThroughHdf5)
{
  const std::filesystem::path fixture = ZR_TEST_DATA_DIR "/kestrix/foreign_layouts.kestrix";
  Result<DataStructure> imported = KESTRIX::ImportDataStructureFromFile(fixture, false);
  ASSERT_TRUE(imported.valid()) << FirstError(imported);
  EXPECT_TRUE(imported.warnings().empty());
  const DataStructure& ds = imported.value();

  // Chunked with gzip: HDF5 decompresses; the ranges are left to whoever needs them.
  const auto& angles = StoreAt<float>(ds, "Chunked Angles");
  const std::vector<float> expectedAngles = FixtureAngles();
  ASSERT_EQ(angles.getSize(), expectedAngles.size());
  for (usize i = 0; i < expectedAngles.size(); ++i)
  {
    ASSERT_TRUE(SameBits(angles.getValue(i), expectedAngles[i])) << "element " << i;
  }
  EXPECT_EQ(angles.getComponentRanges(), nullptr);

  // Stored big-endian: HDF5 swaps the bytes.
  const auto& counts = StoreAt<std::int32_t>(ds, "Big Endian Counts");
  ASSERT_EQ(counts.getSize(), 250u);
  for (usize i = 0; i < 250; ++i)
  {
    ASSERT_EQ(counts.getValue(i),
              static_cast<std::int32_t>(static_cast<std::int64_t>(i) * 7919 % 100003 - 50000));
  }
  EXPECT_EQ(counts.getComponentRanges(), nullptr);

  const auto& levels = StoreAt<std::uint16_t>(ds, "Shuffled Levels");
  ASSERT_EQ(levels.getSize(), 160u);
  for (usize i = 0; i < 160; ++i)
  {
    ASSERT_EQ(levels.getValue(i), static_cast<std::uint16_t>(i * 409 % 65536));
  }
  EXPECT_EQ(levels.getComponentRanges(), nullptr);

  // Plain little-endian arrays are read directly, although the file starts with a user block that
  // shifts every address.
  const auto& heights = StoreAt<double>(ds, "Plain Heights");
  ASSERT_EQ(heights.getSize(), 120u);
  for (usize i = 0; i < 120; ++i)
  {
    if (i == 3 * 2 + 1)
    {
      EXPECT_TRUE(std::isnan(heights.getValue(i)));
    }
    else if (i == 59 * 2)
    {
      EXPECT_EQ(heights.getValue(i), -std::numeric_limits<double>::infinity());
    }
    else
    {
      EXPECT_NEAR(heights.getValue(i), -3.0 + 8.0 * static_cast<double>(i) / 119.0, 1e-12) << i;
    }
  }
  const ComponentRanges<double>* heightRanges = heights.getComponentRanges();
  ASSERT_NE(heightRanges, nullptr);
  EXPECT_EQ(heightRanges->minima()[0], -std::numeric_limits<double>::infinity());
  EXPECT_EQ(heightRanges->maxima()[0], heights.getValue(116));
  EXPECT_EQ(heightRanges->minima()[1], heights.getValue(1));
  EXPECT_EQ(heightRanges->maxima()[1], 5.0);

  const auto& steps = StoreAt<std::int8_t>(ds, "Plain Steps");
  ASSERT_EQ(steps.getSize(), 90u);
  for (usize i = 0; i < 90; ++i)
  {
    ASSERT_EQ(steps.getValue(i), static_cast<std::int8_t>(static_cast<int>(i) % 200 - 100));
  }
  ASSERT_NE(steps.getComponentRanges(), nullptr);
  EXPECT_EQ(steps.getComponentRanges()->minima()[0], -100);
  EXPECT_EQ(steps.getComponentRanges()->maxima()[0], -11);
}

TEST(KestrixPlainValuesTest, FileCutShortWhileOpenIsReportedNotReadPastItsEnd)
{
  DataStructure ds;
  auto* values = Float64Array::Create(ds, "Values", {20000}, {1}, std::nullopt, 2.5);
  values->setValue(19999, 7.0);
  TempFile file("cut_short.kestrix");
  ASSERT_TRUE(KESTRIX::WriteDataStructureToFile(file.path(), ds).valid());

  HDF5::FileIO fileIO = HDF5::FileIO::ReadFile(file.path());
  ASSERT_TRUE(fileIO.isValid()) << fileIO.getErrorMessage();
  Result<DataStructure> skeleton = KESTRIX::ImportDataStructureFromFile(fileIO, true);
  ASSERT_TRUE(skeleton.valid()) << FirstError(skeleton);

  // Another program shortens the file after it was opened: the values now end past the file's end.
  haddr_t offset = HADDR_UNDEF;
  {
    const hid_t probe = H5Fopen(file.path().c_str(), H5F_ACC_RDONLY, H5P_DEFAULT);
    const hid_t dataset = H5Dopen2(probe, "/DataStructure/Values", H5P_DEFAULT);
    offset = H5Dget_offset(dataset);
    H5Dclose(dataset);
    H5Fclose(probe);
  }
  ASSERT_NE(offset, HADDR_UNDEF);
  std::filesystem::resize_file(file.path(), offset + 20000 * sizeof(double) - 1);

  DataStructure loaded;
  Result<> finished =
      KESTRIX::FinishImportingObject(loaded, skeleton.value(), DataPath({"Values"}), fileIO, false);
  ASSERT_FALSE(finished.valid());
  EXPECT_EQ(finished.errors().front().message,
            "Reading the values of '/DataStructure/Values' failed: the file is damaged or truncated");
}
