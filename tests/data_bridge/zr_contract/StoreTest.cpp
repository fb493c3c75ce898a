#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStore.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/EmptyDataStore.h"
#include "data_bridge/zr_contract/HistogramUtilities.h"
#include "data_bridge/zr_contract/NeighborList.h"
#include "data_bridge/zr_contract/StringArray.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

using namespace zr::core;
using ::testing::HasSubstr;

namespace
{
template<class ExceptionT, class FuncT>
std::string MessageOf(FuncT&& func)
{
  try
  {
    func();
  }
  catch (const ExceptionT& exception)
  {
    return exception.what();
  }
  return "(nothing thrown)";
}
} // namespace

TEST(DataStoreTest, ShapesAndCounts)
{
  DataStore<std::int16_t> store({4, 3}, {2, 5}, std::int16_t{7});
  EXPECT_EQ(store.getNumberOfTuples(), 12u);
  EXPECT_EQ(store.getNumberOfComponents(), 10u);
  EXPECT_EQ(store.getSize(), 120u);
  EXPECT_EQ(store.getTupleShape(), (ShapeType{4, 3}));
  EXPECT_EQ(store.getComponentShape(), (ShapeType{2, 5}));
  EXPECT_EQ(store.getDataType(), DataType::int16);
  EXPECT_EQ(store.getTypeSize(), 2u);
  EXPECT_EQ(store.getStoreType(), IDataStore::StoreType::InMemory);
  EXPECT_EQ(store.getDataFormat(), "");
  EXPECT_EQ(store.getValue(119), 7);

  DataStore<float> empty({0}, {3}, 1.0f);
  EXPECT_EQ(empty.getNumberOfTuples(), 0u);
  EXPECT_EQ(empty.getSize(), 0u);
}

TEST(DataStoreTest, ShapeProductsThatOverflowAreNeverTakenModulo64Bits)
{
  // (2^63 + 2) * 2 is 4 modulo 2^64.
  const ShapeType wrapping = {(std::uint64_t(1) << 63) + 2, 2};
  EXPECT_EQ(CheckedShapeProduct(wrapping), std::nullopt);
  EXPECT_EQ(CheckedShapeProduct({3, 4, 5}), std::optional<usize>(60));
  EXPECT_EQ(CheckedShapeProduct({}), std::optional<usize>(0));
  EXPECT_THROW(ShapeProduct(wrapping), std::overflow_error);
  // A store of such a shape is refused instead of getting a buffer of four elements.
  EXPECT_THROW(DataStore<float>(wrapping, {1}, 0.0f), std::overflow_error);
  // Tuples and components can each fit and overflow together.
  EXPECT_THROW(DataStore<float>({std::uint64_t(1) << 40}, {std::uint64_t(1) << 30}, std::nullopt),
               std::overflow_error);
  EXPECT_EQ(CheckedMultiply(std::uint64_t(1) << 32, std::uint64_t(1) << 32), std::nullopt);
  EXPECT_EQ(CheckedAdd(~std::uint64_t(0), 1), std::nullopt);
  EXPECT_EQ(CheckedAdd(2, 3), std::optional<usize>(5));
}

TEST(DataStoreTest, AtThrowsWithIndexAndSize)
{
  DataStore<double> store({2}, {3}, 0.0);
  EXPECT_NO_THROW(store.at(5));
  EXPECT_EQ(MessageOf<std::out_of_range>([&] { store.at(6); }), "DataStore::at(6) is out of bounds. Size=6");
  EXPECT_EQ(MessageOf<std::out_of_range>([&] { store.at(100); }),
            "DataStore::at(100) is out of bounds. Size=6");
}

TEST(DataStoreTest, ResizeKeepsLeadingValuesAndCopyIsIndependent)
{
  DataStore<std::int32_t> store({3}, {1}, 0);
  for (usize i = 0; i < 3; ++i)
  {
    store.setValue(i, static_cast<std::int32_t>(i + 1));
  }
  store.resizeTuples({5});
  EXPECT_EQ(store.getNumberOfTuples(), 5u);
  EXPECT_EQ(store.getValue(2), 3);
  EXPECT_EQ(store.getValue(4), 0);

  std::unique_ptr<IDataStore> copy = store.deepCopy();
  auto* typedCopy = dynamic_cast<DataStore<std::int32_t>*>(copy.get());
  ASSERT_NE(typedCopy, nullptr);
  typedCopy->setValue(0, 42);
  EXPECT_EQ(store.getValue(0), 1);
}

TEST(DataStoreTest, ArithmeticAndInvalidOperators)
{
  DataStore<std::uint8_t> bytes({1}, {1}, std::uint8_t{12});
  bytes.add(0, 4);
  bytes.rem(0, 6);
  EXPECT_EQ(bytes.getValue(0), 4);
  bytes.bitwiseLShift(0, 2);
  bytes.bitwiseOR(0, 1);
  EXPECT_EQ(bytes.getValue(0), 17);
  bytes.byteSwap(0);
  EXPECT_EQ(bytes.getValue(0), 17);

  DataStore<std::uint16_t> shorts({1}, {1}, std::uint16_t{0x0102});
  shorts.byteSwap(0);
  EXPECT_EQ(shorts.getValue(0), 0x0201);

  DataStore<float> floats({1}, {1}, 1.0f);
  floats.mul(0, 3.0f);
  EXPECT_FLOAT_EQ(floats.getValue(0), 3.0f);
  EXPECT_EQ(MessageOf<std::runtime_error>([&] { floats.rem(0, 1.0f); }),
            "DataStore::rem() invalid operator for bool or floating point");
  DataStore<double> doubles({1}, {1}, 1.0);
  for (const auto& [name, call] :
       std::vector<std::pair<std::string, std::function<void()>>>{
           {"bitwiseAND", [&] { doubles.bitwiseAND(0, 1.0); }},
           {"bitwiseOR", [&] { doubles.bitwiseOR(0, 1.0); }},
           {"bitwiseXOR", [&] { doubles.bitwiseXOR(0, 1.0); }},
           {"bitwiseLShift", [&] { doubles.bitwiseLShift(0, 1.0); }},
           {"bitwiseRShift", [&] { doubles.bitwiseRShift(0, 1.0); }}})
  {
    EXPECT_EQ(MessageOf<std::runtime_error>(call),
              "DataStore::" + name + "() invalid operator for bool or floating point");
  }
}

TEST(DataStoreTest, WriteBinaryFileWritesRawValuesAndReportsFailures)
{
  DataStore<std::int32_t> store({3}, {1}, 0);
  store.setValue(0, -1);
  store.setValue(2, 5);
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "zr_store_binary_test.raw";
  ASSERT_TRUE(store.writeBinaryFile(file).valid());
  std::ifstream stream(file, std::ios::binary);
  std::int32_t values[3] = {};
  stream.read(reinterpret_cast<char*>(values), sizeof(values));
  EXPECT_EQ(values[0], -1);
  EXPECT_EQ(values[2], 5);
  std::filesystem::remove(file);

  Result<> notOpened = store.writeBinaryFile("/nonexistent-folder/x.raw");
  ASSERT_FALSE(notOpened.valid());
  EXPECT_EQ(notOpened.errors().front().message,
            "File could not be opened for writing:\n  '/nonexistent-folder/x.raw'");

  std::ostringstream broken;
  broken.setstate(std::ios::badbit);
  Result<> failed = store.writeBinaryFile(broken);
  ASSERT_FALSE(failed.valid());
  EXPECT_EQ(failed.errors().front().message, "Error writing binary file:\n  Total Elements:'3'\n");
}

TEST(DataArrayTest, ElementAccessAndMissingStore)
{
  DataStructure dataStructure;
  auto* array = Float32Array::Create(dataStructure, "Euler", {2, 2}, {3}, std::nullopt, 0.5f);
  ASSERT_NE(array, nullptr);
  EXPECT_EQ(array->getTypeName(), "DataArray<float32>");
  EXPECT_EQ(array->getTupleShape(), (ShapeType{2, 2}));
  EXPECT_EQ(array->getNumberOfTuples(), 4u);
  EXPECT_EQ(array->getSize(), 12u);
  (*array)[11] = 4.0f;
  EXPECT_FLOAT_EQ(std::as_const(*array)[11], 4.0f);
  EXPECT_FLOAT_EQ(array->getComponent(3, 2), 4.0f);
  EXPECT_EQ(array->getDataFormat(), "");

  std::shared_ptr<AbstractDataStore<float>> kept = array->getSharedDataStore();
  array->setDataStore(nullptr);
  EXPECT_EQ(array->getIDataStore(), nullptr);
  EXPECT_EQ(MessageOf<std::runtime_error>([&] { (*array)[0]; }),
            "DataArray::operator[] requires a valid DataStore");
  EXPECT_EQ(MessageOf<std::runtime_error>([&] { std::as_const(*array)[0]; }),
            "DataArray::operator[] requires a valid DataStore");
  EXPECT_EQ(MessageOf<std::runtime_error>([&] { array->getTupleShape(); }), "IDataArray: Null IDataStore");
  EXPECT_EQ(MessageOf<std::runtime_error>([&] { array->getIDataStoreRef(); }), "IDataArray: Null IDataStore");
  // The locked store still holds the values.
  EXPECT_FLOAT_EQ(kept->getValue(11), 4.0f);
}

TEST(DataArrayTest, EmptyStoreIsNotReadableByAddress)
{
  DataStructure dataStructure;
  auto* array = Int64Array::Create(
      dataStructure, "Skeleton", std::make_shared<EmptyDataStore<std::int64_t>>(ShapeType{10}, ShapeType{1}));
  EXPECT_EQ(array->getNumberOfTuples(), 10u);
  EXPECT_FALSE(array->getDataFormat().empty());
  EXPECT_EQ(array->getInMemoryStore(), nullptr);
  EXPECT_THROW(array->getValue(0), std::runtime_error);
  EXPECT_THROW((*array)[0], std::runtime_error);
}

TEST(DataArrayTest, BooleanArraysExist)
{
  DataStructure dataStructure;
  auto* mask = BoolArray::Create(dataStructure, "Mask", {3}, {1}, std::nullopt, false);
  mask->setValue(1, true);
  EXPECT_EQ(mask->getDataType(), DataType::boolean);
  EXPECT_TRUE(mask->at(1));
  EXPECT_FALSE(mask->at(2));
}

TEST(NeighborListTest, ValuesAndBounds)
{
  DataStructure dataStructure;
  auto* list = NeighborList<std::int32_t>::Create(dataStructure, "Neighbors", 3);
  list->setList(0, {4, 5});
  list->setList(2, {6});
  EXPECT_EQ(list->getNumberOfLists(), 3u);
  EXPECT_EQ(list->getTupleShape(), ShapeType{3});
  EXPECT_EQ(list->getIListStoreRef().getMaxListSize(), 2u);
  EXPECT_EQ(list->getIListStoreRef().getListSize(1), 0u);
  bool ok = false;
  EXPECT_EQ(list->getValue(0, 1, ok), 5);
  EXPECT_TRUE(ok);
  list->getValue(1, 0, ok);
  EXPECT_FALSE(ok);
  list->getValue(3, 0, ok);
  EXPECT_FALSE(ok);
  list->getValue(-1, 0, ok);
  EXPECT_FALSE(ok);
}

TEST(StringArrayTest, AccessByIndex)
{
  DataStructure dataStructure;
  auto* names = StringArray::Create(dataStructure, "Phase Names", {"Ferrite", "Austenite"});
  EXPECT_EQ(names->getNumberOfTuples(), 2u);
  EXPECT_EQ(names->at(1), "Austenite");
  (*names)[0] = "Alpha";
  EXPECT_EQ(std::as_const(*names)[0], "Alpha");
  EXPECT_THROW(names->at(2), std::out_of_range);
  EXPECT_EQ(names->getArrayType(), IArray::ArrayType::StringArray);
}

TEST(HistogramTest, CountsValuesPerBinAndSkipsOutsiders)
{
  DataStore<float> store({6}, {1}, 0.0f);
  const float values[] = {0.0f, 0.5f, 1.0f, 9.9f, 10.0f, std::nanf("")};
  for (usize i = 0; i < 6; ++i)
  {
    store.setValue(i, values[i]);
  }
  HistogramUtilities::Histogram histogram = HistogramUtilities::GenerateHistogram(store, {0.0, 10.0}, 10);
  EXPECT_EQ(histogram.counts[0], 2u);
  EXPECT_EQ(histogram.counts[1], 1u);
  EXPECT_EQ(histogram.counts[9], 2u);
  EXPECT_EQ(histogram.skipped, 1u);
  EXPECT_DOUBLE_EQ(histogram.edges[10], 10.0);
  const auto range = HistogramUtilities::FindRange(store);
  EXPECT_DOUBLE_EQ(range[0], 0.0);
  EXPECT_DOUBLE_EQ(range[1], 10.0);
}
