// Histogram bins of chart series against a straightforward count written here from the definition.
#include "charts/VXChartHistogram.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/HistogramAtComponent.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace
{
using namespace zr::core;

template<class T>
DataArray<T>* MakeArray(DataStructure& ds, const std::vector<T>& values, usize components = 1)
{
  auto* array = DataArray<T>::Create(ds, "Values", {values.size() / components}, {components});
  for (usize i = 0; i < values.size(); ++i)
  {
    array->setValue(i, values[i]);
  }
  return array;
}

// The definition, independent of the library: bin = floor((v - min) / increment), increment in single
// precision; anything else is outside.
template<class T>
std::pair<std::vector<double>, std::size_t> ReferenceCounts(const std::vector<T>& values, usize components,
                                                            usize component, double min, double max, int bins)
{
  const float increment = static_cast<float>((max - min) / bins);
  std::vector<double> counts(static_cast<std::size_t>(bins), 0.0);
  std::size_t outside = 0;
  for (usize i = component; i < values.size(); i += components)
  {
    const double bin = std::floor((static_cast<double>(values[i]) - min) / static_cast<double>(increment));
    if (bin >= 0.0 && bin < bins)
    {
      counts[static_cast<std::size_t>(bin)] += 1.0;
    }
    else
    {
      ++outside;
    }
  }
  return {counts, outside};
}

TEST(VXChartHistogramTest, ValuesZeroToNineInTenBinsGiveOneEach)
{
  DataStructure ds;
  std::vector<int32_t> values = {9, 3, 0, 7, 1, 8, 2, 6, 4, 5};
  auto* array = MakeArray(ds, values);
  const auto histogram = VXChartHistogram::Compute(*array, 0, 10, std::nullopt, "Values");
  ASSERT_TRUE(histogram.valid) << histogram.messages.join('\n').toStdString();
  EXPECT_EQ(histogram.counts, std::vector<double>(10, 1.0));
  EXPECT_EQ(histogram.outsideCount, 0u);
  EXPECT_TRUE(histogram.messages.isEmpty());
  // Integer edges: the top is raised by one so that 9 sits in the last bin.
  EXPECT_DOUBLE_EQ(histogram.edges.front(), 0.0);
  EXPECT_DOUBLE_EQ(histogram.edges.back(), 10.0);
}

TEST(VXChartHistogramTest, IntegersWithFewDistinctValuesMatchTheDefinition)
{
  DataStructure ds;
  std::vector<uint8_t> values;
  std::mt19937 random(7);
  for (int i = 0; i < 5000; ++i)
  {
    values.push_back(static_cast<uint8_t>(3 + 2 * (random() % 3))); // 3, 5, 7
  }
  auto* array = MakeArray(ds, values);
  for (int bins : {1, 2, 3, 4, 7, 64})
  {
    const auto histogram = VXChartHistogram::Compute(*array, 0, bins, std::nullopt, "Values");
    ASSERT_TRUE(histogram.valid);
    const auto reference = ReferenceCounts(values, 1, 0, 3.0, 8.0, bins);
    EXPECT_EQ(histogram.counts, reference.first) << bins << " bins";
    EXPECT_EQ(reference.second, 0u);
    double total = 0.0;
    for (double count : histogram.counts)
    {
      total += count;
    }
    EXPECT_EQ(total, 5000.0) << bins << " bins";
  }
}

TEST(VXChartHistogramTest, OneBinSpansMinimumToMaximum)
{
  DataStructure ds;
  auto* array = MakeArray<float>(ds, {2.5f, -1.0f, 4.0f});
  const auto histogram = VXChartHistogram::Compute(*array, 0, 1, std::nullopt, "Values");
  ASSERT_TRUE(histogram.valid);
  ASSERT_EQ(histogram.edges.size(), 2u);
  EXPECT_FLOAT_EQ(static_cast<float>(histogram.edges[0]), -1.0f);
  EXPECT_GT(histogram.edges[1], 4.0);
  EXPECT_EQ(histogram.edges[1], static_cast<double>(std::nextafter(4.0f, 5.0f)));
  EXPECT_EQ(histogram.counts, std::vector<double>{3.0});
}

TEST(VXChartHistogramTest, ConstantArrayFallsInTheFirstBin)
{
  DataStructure ds;
  auto* floats = MakeArray<double>(ds, std::vector<double>(100, 5.0));
  const auto histogram = VXChartHistogram::Compute(*floats, 0, 8, std::nullopt, "Values");
  ASSERT_TRUE(histogram.valid);
  EXPECT_EQ(histogram.counts[0], 100.0);
  EXPECT_EQ(histogram.outsideCount, 0u);

  DataStructure ints;
  auto* integers = MakeArray<int64_t>(ints, std::vector<int64_t>(10, -4));
  const auto intHistogram = VXChartHistogram::Compute(*integers, 0, 4, std::nullopt, "Values");
  ASSERT_TRUE(intHistogram.valid);
  EXPECT_EQ(intHistogram.counts, (std::vector<double>{10.0, 0.0, 0.0, 0.0}));
}

TEST(VXChartHistogramTest, NanIsCountedOutsideAndReported)
{
  DataStructure ds;
  const float nan = std::numeric_limits<float>::quiet_NaN();
  auto* array = MakeArray<float>(ds, {0.0f, nan, 1.0f, nan, 0.5f, std::numeric_limits<float>::infinity()});
  const auto histogram = VXChartHistogram::Compute(*array, 0, 2, std::nullopt, "Group/Values");
  ASSERT_TRUE(histogram.valid);
  // Infinity is not finite: the range is 0 to just above 1 (0 and 0.5 in the first bin), and infinity is
  // outside like the two NaN.
  EXPECT_EQ(histogram.counts, (std::vector<double>{2.0, 1.0}));
  EXPECT_EQ(histogram.outsideCount, 3u);
  ASSERT_EQ(histogram.messages.size(), 1);
  EXPECT_TRUE(histogram.messages.front().contains("3 values lie in no bin"))
      << histogram.messages.front().toStdString();
  EXPECT_TRUE(histogram.messages.front().contains("Group/Values"));
}

TEST(VXChartHistogramTest, CustomRangeCountsOutsideValuesAsOverflow)
{
  DataStructure ds;
  std::vector<double> values;
  for (int i = -50; i < 150; ++i)
  {
    values.push_back(i * 0.37);
  }
  auto* array = MakeArray(ds, values);
  const auto histogram = VXChartHistogram::Compute(*array, 0, 9, std::make_pair(0.0, 20.0), "Values");
  ASSERT_TRUE(histogram.valid);
  const auto reference = ReferenceCounts(values, 1, 0, 0.0, 20.0, 9);
  EXPECT_EQ(histogram.counts, reference.first);
  EXPECT_EQ(histogram.outsideCount, reference.second);
  EXPECT_GT(reference.second, 0u);
}

TEST(VXChartHistogramTest, ComponentOfAMultiComponentArray)
{
  DataStructure ds;
  std::vector<float> values;
  std::mt19937 random(11);
  std::uniform_real_distribution<float> uniform(-3.0f, 3.0f);
  for (int i = 0; i < 3 * 20000; ++i)
  {
    values.push_back(uniform(random));
  }
  auto* array = MakeArray(ds, values, 3);
  const auto histogram = VXChartHistogram::Compute(*array, 2, 17, std::make_pair(-2.0, 2.5), "Values");
  ASSERT_TRUE(histogram.valid);
  const auto reference = ReferenceCounts(values, 3, 2, static_cast<double>(static_cast<float>(-2.0)),
                                         static_cast<double>(static_cast<float>(2.5)), 17);
  EXPECT_EQ(histogram.counts, reference.first);
  EXPECT_EQ(histogram.outsideCount, reference.second);

  const auto wrong = VXChartHistogram::Compute(*array, 3, 17, std::nullopt, "Values");
  EXPECT_FALSE(wrong.valid);
  ASSERT_FALSE(wrong.messages.isEmpty());
  EXPECT_TRUE(wrong.messages.front().contains("has 3 component(s)"));
}

TEST(VXChartHistogramTest, SerialAndParallelRoutinesAgreeAndReportOverflow)
{
  std::vector<float> values(300000);
  std::mt19937 random(3);
  std::normal_distribution<float> normal(0.0f, 1.0f);
  for (float& value : values)
  {
    value = normal(random);
  }
  DataStore<float> store({values.size()}, {1}, 0.0f);
  for (usize i = 0; i < values.size(); ++i)
  {
    store.setValue(i, values[i]);
  }
  DataStore<float> serialEdges({33}, {1}, 0.0f);
  DataStore<float> parallelEdges({33}, {1}, 0.0f);
  DataStore<uint64_t> serialCounts({32}, {1}, 0);
  DataStore<uint64_t> parallelCounts({32}, {1}, 0);
  std::atomic_bool cancel = false;
  std::atomic<usize> serialOverflow = 0;
  std::atomic<usize> parallelOverflow = 0;
  const std::pair<float, float> range{-1.5f, 1.5f};
  auto serial = HistogramUtilities::serial::GenerateHistogramAtComponent(store, serialEdges, serialCounts, 32,
                                                                         range, cancel, 0, serialOverflow);
  auto parallel = HistogramUtilities::concurrent::GenerateHistogramAtComponent(
      store, parallelEdges, parallelCounts, 32, range, cancel, 0, parallelOverflow);
  ASSERT_TRUE(serial.valid());
  ASSERT_TRUE(parallel.valid());
  EXPECT_EQ(serialOverflow.load(), parallelOverflow.load());
  EXPECT_GT(serialOverflow.load(), 0u);
  ASSERT_EQ(parallel.warnings().size(), 1u);
  EXPECT_EQ(parallel.warnings()[0].message.rfind(
                "HistogramUtilities::GenerateHistogramAtComponent: Overflow detected: "
                "overflow count " +
                    std::to_string(parallelOverflow.load()) + ". ",
                0),
            0u);
  for (usize i = 0; i < 32; ++i)
  {
    EXPECT_EQ(serialCounts.getValue(i), parallelCounts.getValue(i)) << "bin " << i;
  }

  DataStore<uint64_t> tooFew({8}, {1}, 0);
  auto refused = HistogramUtilities::concurrent::GenerateHistogramAtComponent(
      store, parallelEdges, tooFew, 32, range, cancel, 0, parallelOverflow);
  ASSERT_TRUE(refused.invalid());
  EXPECT_EQ(refused.errors()[0].message.rfind(
                "HistogramUtilities::GenerateHistogramAtComponent: histogramCountsStore "
                "is too small to hold counts. Needed: 32 | Current Size: 8. ",
                0),
            0u);
  cancel = true;
  auto cancelled = HistogramUtilities::serial::GenerateHistogramAtComponent(
      store, serialEdges, serialCounts, 32, range, cancel, 0, serialOverflow);
  ASSERT_TRUE(cancelled.invalid());
  EXPECT_NE(cancelled.errors()[0].message.find("Signal Interrupt Received"), std::string::npos);
}

TEST(VXChartHistogramTest, BooleansAreRefusedWithAMessage)
{
  DataStructure ds;
  auto* array = MakeArray<bool>(ds, {true, false, true});
  const auto histogram = VXChartHistogram::Compute(*array, 0, 2, std::nullopt, "Flags");
  EXPECT_FALSE(histogram.valid);
  ASSERT_EQ(histogram.messages.size(), 1);
  EXPECT_TRUE(histogram.messages.front().contains("Flags"));
}
} // namespace
