#include "KestrixTestStructures.h"

#include "data_bridge/zr_contract/ComponentRanges.h"
#include "data_bridge/zr_contract/DataStore.h"
#include "data_bridge/zr_contract/RawValuesReader.h"
#include "data_bridge/zr_contract/ReadOnlyFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <functional>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

using namespace zr::core;
using zr::test::TempFile;

namespace
{
// Values over the whole range of the type, its extremes included; floats also get NaN, infinities,
// signed zeros and subnormals.
template<class T>
std::vector<T> MixedValues(usize count, std::uint64_t randomStart)
{
  std::mt19937_64 random(randomStart);
  std::vector<T> values(count);
  for (usize i = 0; i < count; ++i)
  {
    const std::uint64_t pick = random() % 16;
    if constexpr (std::is_floating_point_v<T>)
    {
      switch (pick)
      {
      case 0:
        values[i] = std::numeric_limits<T>::quiet_NaN();
        break;
      case 1:
        values[i] = (random() % 4 == 0) ? std::numeric_limits<T>::infinity() : T(-0.0);
        break;
      case 2:
        values[i] =
            (random() % 4 == 0) ? -std::numeric_limits<T>::infinity() : std::numeric_limits<T>::denorm_min();
        break;
      default:
        values[i] = static_cast<T>(std::uniform_real_distribution<double>(-1e6, 1e6)(random));
      }
    }
    else
    {
      switch (pick)
      {
      case 0:
        values[i] = std::numeric_limits<T>::lowest();
        break;
      case 1:
        values[i] = std::numeric_limits<T>::max();
        break;
      default:
        values[i] = static_cast<T>(random());
      }
    }
  }
  return values;
}

// What the ranges must be, written the obvious way: NaN is left out, and a component without any
// other value keeps the starting pair.
template<class T>
std::pair<std::vector<T>, std::vector<T>> ReferenceRanges(const std::vector<T>& values, usize numComponents)
{
  std::vector<T> minima(numComponents, std::numeric_limits<T>::max());
  std::vector<T> maxima(numComponents, std::numeric_limits<T>::lowest());
  for (usize i = 0; i < values.size(); ++i)
  {
    const T value = values[i];
    if constexpr (std::is_floating_point_v<T>)
    {
      if (std::isnan(value))
      {
        continue;
      }
    }
    minima[i % numComponents] = std::min(minima[i % numComponents], value);
    maxima[i % numComponents] = std::max(maxima[i % numComponents], value);
  }
  return {minima, maxima};
}

template<class T>
void ExpectRanges(const ComponentRanges<T>& ranges, const std::vector<T>& values, usize numComponents,
                  const std::string& what)
{
  const auto [minima, maxima] = ReferenceRanges(values, numComponents);
  ASSERT_EQ(ranges.getNumberOfComponents(), numComponents) << what;
  for (usize comp = 0; comp < numComponents; ++comp)
  {
    EXPECT_EQ(ranges.minima()[comp], minima[comp]) << what << " component " << comp;
    EXPECT_EQ(ranges.maxima()[comp], maxima[comp]) << what << " component " << comp;
  }
}

template<class T>
class ComponentRangesTest : public ::testing::Test
{
};

using NumericTypes = ::testing::Types<std::int8_t, std::uint8_t, std::int16_t, std::uint16_t, std::int32_t,
                                      std::uint32_t, std::int64_t, std::uint64_t, float, double>;
TYPED_TEST_SUITE(ComponentRangesTest, NumericTypes);
} // namespace

TYPED_TEST(ComponentRangesTest, WholeScanAndPiecewiseScanMatchThePlainMinimumAndMaximum)
{
  using T = TypeParam;
  std::uint64_t randomStart = 7;
  for (usize numComponents : {1, 2, 3, 4, 5, 9})
  {
    for (usize numTuples : {0, 1, 3, 17, 64, 1001, 40000})
    {
      const std::vector<T> values = MixedValues<T>(numTuples * numComponents, ++randomStart);
      const std::string what = std::to_string(numTuples) + " x " + std::to_string(numComponents);

      ComponentRanges<T> whole(numComponents);
      whole.scan(values.data(), numTuples);
      ExpectRanges(whole, values, numComponents, what);

      // Blocks of odd sizes, scanned one after another and also into separate parts that are joined.
      ComponentRanges<T> sequential(numComponents);
      ComponentRanges<T> joined(numComponents);
      for (usize first = 0, step = 1; first < numTuples; first += step, step = step * 3 + 1)
      {
        const usize count = std::min(step, numTuples - first);
        sequential.scan(values.data() + first * numComponents, count);
        ComponentRanges<T> part(numComponents);
        part.scan(values.data() + first * numComponents, count);
        joined.join(part);
      }
      ExpectRanges(sequential, values, numComponents, what + " in pieces");
      ExpectRanges(joined, values, numComponents, what + " joined");
    }
  }
}

TEST(ComponentRangesTest, ComponentsOfOnlyNaNOrInfinityKeepTheStartingValues)
{
  const float nan = std::numeric_limits<float>::quiet_NaN();
  std::vector<float> values;
  for (int tuple = 0; tuple < 100; ++tuple)
  {
    values.insert(values.end(), {static_cast<float>(tuple), nan, -std::numeric_limits<float>::infinity()});
  }
  ComponentRanges<float> ranges(3);
  ranges.scan(values.data(), 100);
  EXPECT_EQ(ranges.minima()[0], 0.0f);
  EXPECT_EQ(ranges.maxima()[0], 99.0f);
  EXPECT_EQ(ranges.minima()[1], std::numeric_limits<float>::max());
  EXPECT_EQ(ranges.maxima()[1], std::numeric_limits<float>::lowest());
  // Minus infinity is below the starting maximum, so a component of only minus infinity keeps the
  // lowest finite value as its maximum, just as the scan at wrap time does.
  EXPECT_EQ(ranges.minima()[2], -std::numeric_limits<float>::infinity());
  EXPECT_EQ(ranges.maxima()[2], std::numeric_limits<float>::lowest());
}

TEST(DataStoreRangesTest, EveryWriteAndWritableAccessDropsTheRanges)
{
  using Store = DataStore<std::int32_t>;
  auto makeStore = []
  {
    auto store = std::make_unique<Store>(ShapeType{4}, ShapeType{2}, 5);
    ComponentRanges<std::int32_t> ranges(2);
    ranges.scan(static_cast<const Store&>(*store).data(), 4);
    store->setComponentRanges(ranges);
    return store;
  };
  {
    auto store = makeStore();
    ASSERT_NE(store->getComponentRanges(), nullptr);
    EXPECT_EQ(store->getComponentRanges()->minima(), (std::vector<std::int32_t>{5, 5}));
    // Reading, through every const accessor, keeps them.
    const Store& constStore = *store;
    EXPECT_EQ(constStore[3], 5);
    EXPECT_EQ(constStore.data()[0], 5);
    EXPECT_EQ(*constStore.begin(), 5);
    EXPECT_EQ(store->getValue(1), 5);
    EXPECT_EQ(store->at(2), 5);
    ASSERT_NE(store->getComponentRanges(), nullptr);
    // A deep copy holds the same values, so it keeps them too.
    auto copy = store->deepCopy();
    EXPECT_NE(dynamic_cast<Store&>(*copy).getComponentRanges(), nullptr);
  }
  const std::vector<std::pair<const char*, std::function<void(Store&)>>> writes = {
      {"setValue", [](Store& s) { s.setValue(0, -9); }},
      {"fill", [](Store& s) { s.fill(1); }},
      {"data", [](Store& s) { s.data()[0] = -9; }},
      {"operator[]", [](Store& s) { s[0] = -9; }},
      {"begin", [](Store& s) { *s.begin() = -9; }},
      {"end", [](Store& s) { *(s.end() - 1) = -9; }},
      {"resizeTuples", [](Store& s) { s.resizeTuples({6}); }},
      {"add", [](Store& s) { s.add(0, 3); }},
      {"swap", [](Store& s) { s.swap(0, 1); }},
  };
  for (const auto& [name, write] : writes)
  {
    auto store = makeStore();
    write(*store);
    EXPECT_EQ(store->getComponentRanges(), nullptr) << name;
  }
}

TEST(DataStoreRangesTest, RangesOfAnotherComponentCountAreRefused)
{
  DataStore<double> store({3}, {2}, 1.0);
  store.setComponentRanges(ComponentRanges<double>(3));
  EXPECT_EQ(store.getComponentRanges(), nullptr);
  store.setComponentRanges(ComponentRanges<double>(2));
  EXPECT_NE(store.getComponentRanges(), nullptr);
}

namespace
{
void WriteFile(const std::filesystem::path& path, const std::vector<char>& bytes)
{
  std::ofstream stream(path, std::ios::binary | std::ios::trunc);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

template<class T>
std::vector<char> BytesWithPrefix(usize prefix, const std::vector<T>& values)
{
  std::vector<char> bytes(prefix, '\x5a');
  const auto* raw = reinterpret_cast<const char*>(values.data());
  bytes.insert(bytes.end(), raw, raw + values.size() * sizeof(T));
  return bytes;
}
} // namespace

TEST(ReadOnlyFileTest, ReadsExactRangesAndNothingPastTheEnd)
{
  TempFile file("read_only.bin");
  WriteFile(file.path(), {'a', 'b', 'c', 'd', 'e'});
  const ReadOnlyFile reader(file.path());
  ASSERT_TRUE(reader.isOpen());
  EXPECT_EQ(reader.getSize(), 5u);
  char buffer[8] = {};
  EXPECT_TRUE(reader.readAt(1, buffer, 4));
  EXPECT_EQ(std::string(buffer, 4), "bcde");
  EXPECT_TRUE(reader.readAt(5, buffer, 0));
  EXPECT_FALSE(reader.readAt(2, buffer, 4));
  EXPECT_FALSE(reader.readAt(6, buffer, 0));
  EXPECT_FALSE(reader.readAt(std::numeric_limits<std::uint64_t>::max(), buffer, 2));
  EXPECT_FALSE(reader.contains(1, std::numeric_limits<std::uint64_t>::max()));

  EXPECT_FALSE(ReadOnlyFile(file.path().string() + ".missing").isOpen());
  EXPECT_FALSE(ReadOnlyFile(std::filesystem::temp_directory_path()).isOpen());
  const ReadOnlyFile directory(std::filesystem::temp_directory_path());
  EXPECT_FALSE(directory.readAt(0, buffer, 1));
}

TEST(RawValuesReaderTest, ManyBlocksGiveTheValuesAndTheirRanges)
{
  // Several MiB of three-component floats, so that the values arrive in many blocks on all threads;
  // the extremes sit in the first, a middle and the last tuple.
  const usize numTuples = 700001;
  std::vector<float> values(numTuples * 3);
  for (usize i = 0; i < values.size(); ++i)
  {
    values[i] = static_cast<float>(i % 1000) * 0.5f;
  }
  values[0] = -3.0f;
  values[numTuples / 2 * 3 + 1] = 1e9f;
  values[values.size() - 1] = -1e9f;
  values[5] = std::numeric_limits<float>::quiet_NaN();
  TempFile file("raw_values.bin");
  WriteFile(file.path(), BytesWithPrefix(13, values));

  const ReadOnlyFile reader(file.path());
  DataStore<float> store({numTuples}, {3}, std::nullopt);
  ASSERT_TRUE(ReadRawValuesWithRanges(reader, 13, store));
  ASSERT_EQ(std::memcmp(static_cast<const DataStore<float>&>(store).data(), values.data(), values.size() * 4),
            0);
  const ComponentRanges<float>* ranges = store.getComponentRanges();
  ASSERT_NE(ranges, nullptr);
  EXPECT_EQ(ranges->minima(), (std::vector<float>{-3.0f, 0.0f, -1e9f}));
  EXPECT_EQ(ranges->maxima(), (std::vector<float>{499.5f, 1e9f, 499.5f}));
}

TEST(RawValuesReaderTest, ValuesReachingPastTheEndAreNotRead)
{
  const std::vector<std::uint16_t> values(1000, 7);
  TempFile file("raw_short.bin");
  WriteFile(file.path(), BytesWithPrefix(100, values));
  const ReadOnlyFile reader(file.path());

  DataStore<std::uint16_t> fits({500}, {2}, std::uint16_t{0});
  EXPECT_TRUE(ReadRawValuesWithRanges(reader, 100, fits));
  EXPECT_NE(fits.getComponentRanges(), nullptr);

  // One byte further, or one tuple more, would read past the end of the file.
  DataStore<std::uint16_t> shifted({500}, {2}, std::uint16_t{0});
  EXPECT_FALSE(ReadRawValuesWithRanges(reader, 101, shifted));
  EXPECT_EQ(shifted.getComponentRanges(), nullptr);
  DataStore<std::uint16_t> longer({501}, {2}, std::uint16_t{0});
  EXPECT_FALSE(ReadRawValuesWithRanges(reader, 100, longer));
  EXPECT_EQ(longer.getComponentRanges(), nullptr);
  DataStore<std::uint16_t> farAway({1}, {1}, std::uint16_t{0});
  EXPECT_FALSE(ReadRawValuesWithRanges(reader, std::numeric_limits<std::uint64_t>::max() - 1, farAway));
}
