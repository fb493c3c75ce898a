// Spreadsheets over big arrays: opening a table (the one pass over the values, then the first
// screen) and scrolling through it, for 10^8 rows against 10^3 rows. Run under xvfb-run -a.
#include "ZRBenchRatioReporter.h"

#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "spreadsheets/VXBasicSpreadsheetModel.h"
#include "spreadsheets/VXSpreadsheet.h"
#include "spreadsheets/VXSpreadsheetTableView.h"

#include <QApplication>
#include <QScrollBar>

#include <map>
#include <memory>

namespace
{
constexpr std::int64_t k_Small = 1000;
constexpr std::int64_t k_Large = 100000000;

// One plain float array per size, made once and shared by every run.
std::shared_ptr<zr::core::IArray> ArrayOf(std::int64_t tuples)
{
  static zr::core::DataStructure s_Structure;
  static std::map<std::int64_t, std::shared_ptr<zr::core::IArray>> s_Arrays;
  auto& array = s_Arrays[tuples];
  if (array == nullptr)
  {
    const std::string name = "Values" + std::to_string(tuples);
    auto* created =
        zr::core::Float32Array::Create(s_Structure, name, {static_cast<zr::core::usize>(tuples)}, {1});
    float* values = created->getInMemoryStore()->data();
    for (std::int64_t i = 0; i < tuples; ++i)
    {
      values[i] = static_cast<float>(i % 100003) * 0.37f;
    }
    array = s_Structure.getSharedDataAs<zr::core::IArray>(created->getId());
  }
  return array;
}

void Paint(VXSpreadsheet& sheet)
{
  QApplication::processEvents();
  sheet.tableView()->viewport()->repaint();
}

void BM_ModelAdd(benchmark::State& state)
{
  const auto array = ArrayOf(state.range(0));
  for (auto _ : state)
  {
    VXBasicSpreadsheetModel model;
    model.addArray(array);
    benchmark::DoNotOptimize(model.widestValue(0));
  }
}

void BM_OpenTable(benchmark::State& state)
{
  const auto array = ArrayOf(state.range(0));
  for (auto _ : state)
  {
    VXSpreadsheet sheet;
    sheet.resize(1000, 700);
    sheet.addArray(array, 1);
    sheet.show();
    Paint(sheet);
  }
}

void BM_ScrollTable(benchmark::State& state)
{
  const auto array = ArrayOf(state.range(0));
  VXSpreadsheet sheet;
  sheet.resize(1000, 700);
  sheet.addArray(array, 1);
  sheet.show();
  Paint(sheet);
  QScrollBar* bar = sheet.tableView()->verticalScrollBar();
  for (auto _ : state)
  {
    // Twenty jumps spread over the whole table, each painted.
    for (int step = 1; step <= 20; ++step)
    {
      bar->setValue(static_cast<int>(static_cast<qint64>(bar->maximum()) * step / 20));
      Paint(sheet);
    }
  }
}
} // namespace

BENCHMARK(BM_ModelAdd)->Arg(k_Small)->Arg(k_Large)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_OpenTable)->Arg(k_Small)->Arg(k_Large)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_ScrollTable)->Arg(k_Small)->Arg(k_Large)->Unit(benchmark::kMillisecond)->Iterations(3);

int main(int argc, char** argv)
{
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  const std::string large = std::to_string(k_Large);
  const std::string small = std::to_string(k_Small);
  ZRBenchRatioReporter reporter(
      {{"BM_ModelAdd/" + large + "/iterations:2", "BM_ModelAdd/" + small + "/iterations:2"},
       {"BM_OpenTable/" + large + "/iterations:2", "BM_OpenTable/" + small + "/iterations:2"},
       {"BM_ScrollTable/" + large + "/iterations:3", "BM_ScrollTable/" + small + "/iterations:3"}});
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  return 0;
}
