#include "data_bridge/CVArray.h"

#include "data_bridge/CVVtkBridge.h"
#include "data_bridge/ZRVtkObjectName.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/KestrixIO.h"

#include <vtkArrayDispatch.h>
#include <vtkArrayIteratorTemplate.h>
#include <vtkDataArrayRange.h>
#include <vtkFloatArray.h>
#include <vtkInformation.h>
#include <vtkInformationInformationVectorKey.h>
#include <vtkInformationIntegerVectorKey.h>
#include <vtkInformationVector.h>
#include <vtkSmartPointer.h>

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <optional>
#include <stdexcept>
#include <unistd.h>

using namespace zr::core;

namespace
{
// A structure with one float array of the given shape, filled with the given values.
template<typename T>
DataArray<T>* makeArray(DataStructure& ds, const std::string& name, const ShapeType& tuples,
                        const ShapeType& comps, const std::vector<T>& values)
{
  auto* array = DataArray<T>::Create(ds, name, tuples, comps);
  for (usize i = 0; i < values.size(); ++i)
  {
    array->getDataStoreRef().setValue(i, values[i]);
  }
  return array;
}

template<typename T>
vtkSmartPointer<CV::Array<T>> wrap(DataArray<T>* array)
{
  auto wrapped = vtkSmartPointer<CV::Array<T>>::New();
  wrapped->MoveDataStoreFromZorelibDataArray(array);
  return wrapped;
}

std::string expectThrowMessage(const std::function<void()>& call)
{
  try
  {
    call();
  }
  catch (const std::runtime_error& error)
  {
    return error.what();
  }
  return "no exception";
}
} // namespace

TEST(CVArray, SharesTheHostStoreWithoutCopying)
{
  DataStructure ds;
  auto* host = makeArray<float>(ds, "Confidence", {2, 3}, {2}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
  auto array = wrap(host);

  ASSERT_EQ(array->GetNumberOfTuples(), 6);
  ASSERT_EQ(array->GetNumberOfComponents(), 2);
  EXPECT_STREQ(array->GetName(), "Confidence");
  EXPECT_EQ(ZRVtk::GetObjectName(array), "Confidence");
  // Same memory: the pointer VTK sees is the store's buffer, and writes go both ways.
  auto* store = dynamic_cast<DataStore<float>*>(host->getDataStore());
  ASSERT_NE(store, nullptr);
  EXPECT_EQ(array->GetVoidPointer(0), static_cast<void*>(store->data()));
  array->SetTypedComponent(1, 1, 42.0f);
  EXPECT_EQ(host->getDataStoreRef().getValue(3), 42.0f);
  host->getDataStoreRef().setValue(0, -7.0f);
  EXPECT_EQ(array->GetValue(0), -7.0f);
}

TEST(CVArray, DatasetOutlivesTheDataStructure)
{
  vtkSmartPointer<vtkDataArray> array;
  {
    DataStructure ds;
    auto* host = makeArray<std::int32_t>(ds, "FeatureIds", {4}, {1}, {10, 20, 30, 40});
    array = wrap(host);
  }
  ASSERT_EQ(array->GetNumberOfTuples(), 4);
  EXPECT_EQ(array->GetComponent(3, 0), 40.0);
  double range[2];
  array->GetRange(range, 0);
  EXPECT_EQ(range[0], 10.0);
  EXPECT_EQ(range[1], 40.0);
}

TEST(CVArray, IdentifiesAsTheSharedClassName)
{
  auto array = vtkSmartPointer<CV::Array<double>>::New();
  EXPECT_STREQ(array->GetClassName(), "CV::Array<T>");
  EXPECT_TRUE(array->IsA("CV::Array<T>"));
  EXPECT_TRUE(array->IsA("vtkDataArray"));
  EXPECT_TRUE(array->IsA("vtkAbstractArray"));
  EXPECT_TRUE(array->IsA("vtkObject"));
  EXPECT_FALSE(array->IsA("vtkDoubleArray"));
  EXPECT_EQ(array->GetNumberOfGenerationsFromBase("CV::Array<T>"), 0);
  EXPECT_EQ(array->GetNumberOfGenerationsFromBase("vtkDataArray"), 1);
  EXPECT_EQ(array->GetNumberOfGenerationsFromBase("vtkAbstractArray"), 2);
  EXPECT_EQ(array->GetDataType(), VTK_DOUBLE);
  // A float array is not one of VTK's own float arrays.
  auto floats = vtkSmartPointer<CV::Array<float>>::New();
  EXPECT_EQ(vtkFloatArray::SafeDownCast(floats), nullptr);
  EXPECT_EQ(CV::Array<double>::SafeDownCast(floats), nullptr);
}

TEST(CVArray, RangesAreCachedAtWrapTimeAndSkipNaN)
{
  DataStructure ds;
  const float nan = std::numeric_limits<float>::quiet_NaN();
  auto* host = makeArray<float>(ds, "V", {4}, {3}, {1, -5, 3, nan, 2, 9, 4, 0, nan, -2, 8, 1});
  auto array = wrap(host);

  vtkInformation* info = array->GetInformation();
  ASSERT_TRUE(info->Has(vtkAbstractArray::PER_FINITE_COMPONENT()));
  vtkInformationVector* perComponent = info->Get(vtkAbstractArray::PER_FINITE_COMPONENT());
  ASSERT_EQ(perComponent->GetNumberOfInformationObjects(), 3);
  const double* comp1 = perComponent->GetInformationObject(1)->Get(vtkDataArray::COMPONENT_RANGE());
  EXPECT_EQ(comp1[0], -5.0);
  EXPECT_EQ(comp1[1], 8.0);
  const double* comp2 = perComponent->GetInformationObject(2)->Get(vtkDataArray::COMPONENT_RANGE());
  EXPECT_EQ(comp2[0], 1.0);
  EXPECT_EQ(comp2[1], 9.0);

  // VTK must answer from the cache: a value written behind its back does not show in the range.
  host->getDataStoreRef().setValue(0, 1000.0f);
  double range[2];
  array->GetRange(range, 0);
  EXPECT_EQ(range[0], -2.0);
  EXPECT_EQ(range[1], 4.0);
  array->GetFiniteRange(range, 2);
  EXPECT_EQ(range[1], 9.0);
}

TEST(CVArray, EmptyAndIntegerRanges)
{
  DataStructure ds;
  auto* empty = makeArray<std::uint8_t>(ds, "Empty", {0}, {1}, {});
  auto emptyArray = wrap(empty);
  EXPECT_EQ(emptyArray->GetNumberOfTuples(), 0);
  EXPECT_EQ(emptyArray->GetMaxId(), -1);

  auto* big = makeArray<std::int64_t>(ds, "Big", {3}, {1}, {-4000000000LL, 7, 5000000000LL});
  auto bigArray = wrap(big);
  double range[2];
  bigArray->GetRange(range, 0);
  EXPECT_EQ(range[0], -4000000000.0);
  EXPECT_EQ(range[1], 5000000000.0);
}

TEST(CVArray, MagnitudeIsTheRootOfThePlainSum)
{
  DataStructure ds;
  auto* host = makeArray<float>(ds, "Vec", {2}, {3}, {3, 4, 0, -9, 1, 0});
  auto array = wrap(host);
  // Components are added without squaring: sqrt(3 + 4 + 0), not 5.
  EXPECT_FLOAT_EQ(array->GetTypedComponent(0, -1), std::sqrt(7.0f));
  EXPECT_TRUE(std::isnan(array->GetTypedComponent(1, -1)));

  auto* ints = makeArray<std::int8_t>(ds, "Small", {1}, {2}, {100, 100});
  auto intArray = wrap(ints);
  // The sum wraps at the element width: 200 as int8 is -56, whose root is no number.
  EXPECT_EQ(intArray->GetTypedComponent(0, -1), 0);

  auto* single = makeArray<double>(ds, "One", {2}, {1}, {-2.5, 6.0});
  auto singleArray = wrap(single);
  EXPECT_EQ(singleArray->GetTypedComponent(0, -1), -2.5);
  EXPECT_EQ(singleArray->GetTypedComponent(1, -3), 6.0);
}

TEST(CVArray, BoundsErrorsSayGreaterThanEvenAtEquality)
{
  DataStructure ds;
  auto* host = makeArray<std::uint16_t>(ds, "U", {2}, {2}, {1, 2, 3, 4});
  auto array = wrap(host);
  EXPECT_EQ(expectThrowMessage([&]() { array->GetTypedComponent(2, 0); }),
            "CV::Array::GetTypedComponent() 'elementIndex + compIdx' of 4 is greater than the number of "
            "elements 4");
  // A negative component wraps to a huge unsigned index.
  EXPECT_EQ(
      expectThrowMessage([&]() { array->SetTypedComponent(0, -1, 9); }),
      "CV::Array::SetTypedComponent() 'elementIndex + compIdx' of 18446744073709551615 is greater than the "
      "number of elements 4");
}

TEST(CVArray, AccessWithoutStoreThrows)
{
  auto array = vtkSmartPointer<CV::Array<std::int32_t>>::New();
  EXPECT_EQ(expectThrowMessage([&]() { array->GetValue(0); }),
            "CV::Array::GetValue() does not have an underlying zr::core::DataStore");
  EXPECT_EQ(expectThrowMessage([&]() { array->SetValue(0, 1); }),
            "CV::Array::SetValue() does not have an underlying zr::core::DataStore");
  EXPECT_EQ(expectThrowMessage([&]() { array->GetTypedComponent(0, 0); }),
            "CV::Array::GetTypedComponent() does not have an underlying zr::core::DataStore");
  EXPECT_EQ(expectThrowMessage([&]() { array->SetTypedComponent(0, 0, 1); }),
            "CV::Array::SetTypedComponent() does not have an underlying zr::core::DataStore");
  EXPECT_EQ(array->GetVoidPointer(0), nullptr);
}

TEST(CVArray, AllocateWithSameCountZeroesTheSharedStore)
{
  DataStructure ds;
  auto* host = makeArray<double>(ds, "D", {3}, {1}, {1, 2, 3});
  auto array = wrap(host);
  EXPECT_TRUE(array->AllocateTuples(3));
  EXPECT_EQ(host->getDataStoreRef().getValue(2), 0.0);
  EXPECT_EQ(array->GetDataStore().get(), host->getSharedDataStore().get());
}

TEST(CVArray, ReallocateFlattensAndStopsAliasing)
{
  DataStructure ds;
  auto* host = makeArray<std::int32_t>(ds, "Grid", {2, 3}, {1}, {0, 1, 2, 3, 4, 5});
  auto array = wrap(host);
  ASSERT_TRUE(array->ReallocateTuples(8));
  EXPECT_EQ(array->GetNumberOfTuples(), 8);
  ASSERT_NE(array->GetDataStore().get(), host->getSharedDataStore().get());
  EXPECT_EQ(array->GetDataStore()->getTupleShape(), ShapeType{8});
  for (int i = 0; i < 6; ++i)
  {
    EXPECT_EQ(array->GetValue(i), i);
  }
  array->SetValue(0, 99);
  EXPECT_EQ(host->getDataStoreRef().getValue(0), 0); // the host keeps its own store
}

TEST(CVArray, VtkAlgorithmsCanGrowNewInstances)
{
  DataStructure ds;
  auto* host = makeArray<float>(ds, "Src", {3}, {2}, {1, 2, 3, 4, 5, 6});
  auto array = wrap(host);
  vtkSmartPointer<vtkDataArray> copy = vtkSmartPointer<vtkDataArray>::Take(array->NewInstance());
  EXPECT_STREQ(copy->GetClassName(), "CV::Array<T>");
  EXPECT_EQ(copy->GetNumberOfComponents(), 2);
  EXPECT_EQ(copy->GetNumberOfTuples(), 0);
  copy->InsertNextTuple(2, array);
  copy->InsertNextTuple(0, array);
  ASSERT_EQ(copy->GetNumberOfTuples(), 2);
  EXPECT_EQ(copy->GetComponent(0, 1), 6.0);
  EXPECT_EQ(copy->GetComponent(1, 0), 1.0);

  // Generic VTK access paths see the same values.
  const auto values = vtk::DataArrayValueRange(array.Get());
  double sum = 0;
  for (double value : values)
  {
    sum += value;
  }
  EXPECT_EQ(sum, 21.0);
  auto iterator = vtkSmartPointer<vtkArrayIteratorTemplate<float>>::Take(
      vtkArrayIteratorTemplate<float>::SafeDownCast(array->NewIterator()));
  ASSERT_NE(iterator, nullptr);
  EXPECT_EQ(iterator->GetNumberOfValues(), 6);
  EXPECT_EQ(iterator->GetValue(5), 6.0f);
}

TEST(CVArray, WrapDataArrayCarriesTheTupleShape)
{
  DataStructure ds;
  auto* host = DataArray<std::uint8_t>::Create(ds, "Colors", {4, 5, 6}, {3});
  std::shared_ptr<DataObject> object = ds.getSharedData(host->getId());
  vtkSmartPointer<vtkDataArray> array = CV::VtkBridge::WrapDataArray(object);
  ASSERT_NE(array, nullptr);
  EXPECT_EQ(array->GetNumberOfTuples(), 120);
  EXPECT_EQ(array->GetDataType(), VTK_UNSIGNED_CHAR);
  const int* shape = array->GetInformation()->Get(CV::VtkBridge::TupleShapeKey());
  ASSERT_EQ(array->GetInformation()->Length(CV::VtkBridge::TupleShapeKey()), 3);
  EXPECT_EQ(shape[0], 4);
  EXPECT_EQ(shape[2], 6);

  auto* flags = DataArray<bool>::Create(ds, "Mask", {4}, {1});
  EXPECT_EQ(CV::VtkBridge::WrapDataArray(ds.getSharedData(flags->getId())), nullptr);
  EXPECT_EQ(CV::VtkBridge::WrapDataArray(nullptr), nullptr);
}

namespace
{
// (minimum, maximum) of a component as cached under a range key, or nothing.
std::optional<std::pair<double, double>> cachedRange(vtkDataArray* array,
                                                     vtkInformationInformationVectorKey* key, int comp)
{
  vtkInformation* info = array->GetInformation();
  if (!info->Has(key) || info->Get(key)->GetNumberOfInformationObjects() <= comp)
  {
    return std::nullopt;
  }
  const double* range = info->Get(key)->GetInformationObject(comp)->Get(vtkDataArray::COMPONENT_RANGE());
  return std::make_pair(range[0], range[1]);
}
} // namespace

TEST(CVArray, WrapTakesTheRangesTheStoreKnowsInsteadOfScanning)
{
  DataStructure ds;
  auto* host = makeArray<std::int16_t>(ds, "Known", {3}, {2}, {1, 2, 3, 4, 5, 6});
  auto* store = host->getInMemoryStore();
  ASSERT_NE(store, nullptr);
  // Ranges that differ from the values show whether the wrap took them or scanned.
  ComponentRanges<std::int16_t> known(2);
  const std::int16_t told[4] = {-100, 50, 200, -7};
  known.scan(told, 2);
  store->setComponentRanges(known);

  auto array = wrap(host);
  for (vtkInformationInformationVectorKey* key :
       {vtkAbstractArray::PER_COMPONENT(), vtkAbstractArray::PER_FINITE_COMPONENT()})
  {
    EXPECT_EQ(cachedRange(array, key, 0), std::make_pair(-100.0, 200.0));
    EXPECT_EQ(cachedRange(array, key, 1), std::make_pair(-7.0, 50.0));
  }
  // The array can write into the store, so the store no longer vouches for them, and the next wrap
  // scans the values.
  EXPECT_EQ(store->getComponentRanges(), nullptr);
  auto again = wrap(host);
  EXPECT_EQ(cachedRange(again, vtkAbstractArray::PER_COMPONENT(), 0), std::make_pair(1.0, 5.0));
  EXPECT_EQ(cachedRange(again, vtkAbstractArray::PER_COMPONENT(), 1), std::make_pair(2.0, 6.0));

  // Ranges dropped by a write are never used.
  store->setComponentRanges(known);
  host->setValue(0, 9);
  auto written = wrap(host);
  EXPECT_EQ(cachedRange(written, vtkAbstractArray::PER_COMPONENT(), 0), std::make_pair(3.0, 9.0));
}

namespace
{
template<typename T>
class CVArrayLoadedRanges : public ::testing::Test
{
};
using NumericTypes = ::testing::Types<std::int8_t, std::uint8_t, std::int16_t, std::uint16_t, std::int32_t,
                                      std::uint32_t, std::int64_t, std::uint64_t, float, double>;
TYPED_TEST_SUITE(CVArrayLoadedRanges, NumericTypes);

// Values from a .kestrix file: the type's extremes, and for floats NaN and infinities, one
// component holding nothing but NaN.
template<typename T>
std::vector<T> extremeValues(usize numTuples, usize numComponents)
{
  std::vector<T> values(numTuples * numComponents);
  for (usize i = 0; i < values.size(); ++i)
  {
    values[i] = static_cast<T>(static_cast<std::int64_t>((i * 53) % 97) - (std::is_signed_v<T> ? 40 : 0));
  }
  values[values.size() / 2] = std::numeric_limits<T>::lowest();
  values[values.size() - 1] = std::numeric_limits<T>::max();
  if constexpr (std::is_floating_point_v<T>)
  {
    values[1] = std::numeric_limits<T>::infinity();
    values[values.size() / 3] = -std::numeric_limits<T>::infinity();
    values[7] = std::numeric_limits<T>::quiet_NaN();
    if (numComponents == 3)
    {
      for (usize tuple = 0; tuple < numTuples; ++tuple)
      {
        values[tuple * 3 + 2] = std::numeric_limits<T>::quiet_NaN();
      }
    }
  }
  return values;
}
} // namespace

TYPED_TEST(CVArrayLoadedRanges, RangesTakenWhileLoadingEqualTheWrapScan)
{
  using T = TypeParam;
  DataStructure original;
  for (usize numComponents : {1, 3})
  {
    const std::vector<T> values = extremeValues<T>(1000, numComponents);
    makeArray<T>(original, "Values" + std::to_string(numComponents), {1000}, {numComponents}, values);
  }
  const std::filesystem::path file = std::filesystem::temp_directory_path() /
                                     ("zr_cvarray_ranges_" + std::to_string(::getpid()) + ".kestrix");
  ASSERT_TRUE(KESTRIX::WriteDataStructureToFile(file, original).valid());
  Result<DataStructure> imported = KESTRIX::ImportDataStructureFromFile(file, false);
  std::filesystem::remove(file);
  ASSERT_TRUE(imported.valid());

  for (usize numComponents : {1, 3})
  {
    auto* host =
        imported.value().getDataAs<DataArray<T>>(DataPath({"Values" + std::to_string(numComponents)}));
    ASSERT_NE(host, nullptr);
    ASSERT_NE(host->getInMemoryStore()->getComponentRanges(), nullptr) << "read without taking the ranges";
    auto fromLoad = wrap(host);
    ASSERT_EQ(host->getInMemoryStore()->getComponentRanges(), nullptr);
    auto fromScan = wrap(host);
    for (int comp = 0; comp < static_cast<int>(numComponents); ++comp)
    {
      for (vtkInformationInformationVectorKey* key :
           {vtkAbstractArray::PER_COMPONENT(), vtkAbstractArray::PER_FINITE_COMPONENT()})
      {
        const auto loaded = cachedRange(fromLoad, key, comp);
        const auto scanned = cachedRange(fromScan, key, comp);
        ASSERT_TRUE(loaded.has_value() && scanned.has_value());
        EXPECT_EQ(*loaded, *scanned) << "component " << comp;
      }
      double loadedRange[2];
      double scannedRange[2];
      fromLoad->GetRange(loadedRange, comp);
      fromScan->GetRange(scannedRange, comp);
      EXPECT_EQ(loadedRange[0], scannedRange[0]);
      EXPECT_EQ(loadedRange[1], scannedRange[1]);
    }
  }
}

TEST(CVArray, RangesOfArraysHdf5HadToDecodeAndOfPlainOnesFromAnotherWriter)
{
  // Written by h5py (tests/data/kestrix/make-kestrix-fixtures.py): a chunked, compressed array is
  // decoded by HDF5 and scanned at wrap time; a plain one behind a user block comes with its ranges.
  Result<DataStructure> imported =
      KESTRIX::ImportDataStructureFromFile(ZR_TEST_DATA_DIR "/kestrix/foreign_layouts.kestrix", false);
  ASSERT_TRUE(imported.valid());
  const double inf = std::numeric_limits<double>::infinity();

  auto* angles = imported.value().getDataAs<DataArray<float>>(DataPath({"Chunked Angles"}));
  ASSERT_NE(angles, nullptr);
  EXPECT_EQ(angles->getInMemoryStore()->getComponentRanges(), nullptr);
  auto angleArray = wrap(angles);
  EXPECT_EQ(cachedRange(angleArray, vtkAbstractArray::PER_COMPONENT(), 0), std::make_pair(-40.0, 108.5));
  EXPECT_EQ(cachedRange(angleArray, vtkAbstractArray::PER_COMPONENT(), 1), std::make_pair(-39.5, inf));
  EXPECT_EQ(cachedRange(angleArray, vtkAbstractArray::PER_COMPONENT(), 2), std::make_pair(-inf, 0.0));

  auto* heights = imported.value().getDataAs<DataArray<double>>(DataPath({"Plain Heights"}));
  ASSERT_NE(heights, nullptr);
  EXPECT_NE(heights->getInMemoryStore()->getComponentRanges(), nullptr);
  auto heightArray = wrap(heights);
  EXPECT_EQ(cachedRange(heightArray, vtkAbstractArray::PER_FINITE_COMPONENT(), 0),
            std::make_pair(-inf, heights->getValue(116)));
  EXPECT_EQ(cachedRange(heightArray, vtkAbstractArray::PER_FINITE_COMPONENT(), 1),
            std::make_pair(heights->getValue(1), 5.0));
}
