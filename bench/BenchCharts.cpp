// Charts over big arrays: a histogram of 10^8 floats against one parallel range scan of the same array,
// and the first paint and a resize of a 10^6-point scatter chart against a 10^3-point one.
// Run under xvfb-run -a.
#include "ZRBenchRatioReporter.h"

#include "charts/VXChart.h"
#include "charts/VXChartHistogram.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/HistogramAtComponent.h"
#include "platform/plottaro/Plot.h"

#include <QApplication>

#include <qwt_plot.h>

#include <cmath>
#include <map>

namespace
{
constexpr std::int64_t k_HistogramValues = 100000000;
constexpr std::int64_t k_SmallScatter = 1000;
constexpr std::int64_t k_LargeScatter = 1000000;

zr::core::Float32Array* Values()
{
  static zr::core::DataStructure s_Structure;
  static zr::core::Float32Array* s_Array = nullptr;
  if (s_Array == nullptr)
  {
    s_Array = zr::core::Float32Array::Create(s_Structure, "Values",
                                             {static_cast<zr::core::usize>(k_HistogramValues)}, {1});
    float* values = s_Array->getInMemoryStore()->data();
    for (std::int64_t i = 0; i < k_HistogramValues; ++i)
    {
      values[i] = static_cast<float>((i * 7919) % 1000003) * 0.001f;
    }
  }
  return s_Array;
}

void BM_RangeScan(benchmark::State& state)
{
  const auto& store = Values()->getDataStoreRef();
  for (auto _ : state)
  {
    benchmark::DoNotOptimize(zr::core::HistogramUtilities::concurrent::FindRangeAtComponent(store, 0));
  }
}

// Binning alone, one pass, over a known range.
void BM_BinPass(benchmark::State& state)
{
  const auto& store = Values()->getDataStoreRef();
  zr::core::DataStore<float> edges({257}, {1}, 0.0f);
  zr::core::DataStore<std::uint64_t> counts({256}, {1}, 0);
  std::atomic_bool cancel = false;
  std::atomic<zr::core::usize> overflow = 0;
  for (auto _ : state)
  {
    benchmark::DoNotOptimize(zr::core::HistogramUtilities::concurrent::GenerateHistogramAtComponent(
        store, edges, counts, 256, std::make_pair(0.0f, 1001.0f), cancel, 0, overflow));
  }
}

// What a histogram chart does: range scan, then the bins.
void BM_ChartHistogram(benchmark::State& state)
{
  for (auto _ : state)
  {
    benchmark::DoNotOptimize(VXChartHistogram::Compute(*Values(), 0, 256, std::nullopt, "Values"));
  }
}

std::pair<std::vector<double>, std::vector<double>> ScatterData(std::int64_t count)
{
  std::vector<double> x(static_cast<std::size_t>(count));
  std::vector<double> y(static_cast<std::size_t>(count));
  for (std::int64_t i = 0; i < count; ++i)
  {
    const double t = static_cast<double>(i) / static_cast<double>(count);
    x[static_cast<std::size_t>(i)] = std::cos(t * 97.0) * (1.0 + t);
    y[static_cast<std::size_t>(i)] = std::sin(t * 89.0) * (1.0 + t * t);
  }
  return {x, y};
}

void PaintNow(VXChart& chart)
{
  QApplication::processEvents();
  chart.getPlot()->qwtPlot()->replot();
  chart.getPlot()->qwtPlot()->canvas()->repaint();
}

void BM_ScatterFirstPaint(benchmark::State& state)
{
  const auto [x, y] = ScatterData(state.range(0));
  PlotProperties props;
  props.type = PlotProperties::Points;
  for (auto _ : state)
  {
    VXChart chart;
    chart.resize(900, 700);
    chart.addPlot("points", props, x, y);
    chart.show();
    PaintNow(chart);
  }
}

void BM_ScatterResize(benchmark::State& state)
{
  const auto [x, y] = ScatterData(state.range(0));
  PlotProperties props;
  props.type = PlotProperties::Points;
  VXChart chart;
  chart.resize(900, 700);
  chart.addPlot("points", props, x, y);
  chart.show();
  PaintNow(chart);
  bool wide = false;
  for (auto _ : state)
  {
    wide = !wide;
    chart.resize(wide ? 1100 : 900, wide ? 800 : 700);
    PaintNow(chart);
  }
}
} // namespace

BENCHMARK(BM_RangeScan)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_BinPass)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ChartHistogram)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ScatterFirstPaint)
    ->Arg(k_SmallScatter)
    ->Arg(k_LargeScatter)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
BENCHMARK(BM_ScatterResize)
    ->Arg(k_SmallScatter)
    ->Arg(k_LargeScatter)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);

int main(int argc, char** argv)
{
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  const std::string large = std::to_string(k_LargeScatter);
  const std::string small = std::to_string(k_SmallScatter);
  ZRBenchRatioReporter reporter(
      {{"BM_BinPass/iterations:3", "BM_RangeScan/iterations:3"},
       {"BM_ChartHistogram/iterations:3", "BM_RangeScan/iterations:3"},
       {"BM_ScatterFirstPaint/" + large + "/iterations:3", "BM_ScatterFirstPaint/" + small + "/iterations:3"},
       {"BM_ScatterResize/" + large + "/iterations:5", "BM_ScatterResize/" + small + "/iterations:5"}});
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  return 0;
}
