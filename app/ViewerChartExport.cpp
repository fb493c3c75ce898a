#include "app/ViewerChartExport.h"

#include "app/ViewerScriptInput.h"

#include "charts/VXChart.h"
#include "charts/VXChartArrayValues.h"
#include "charts/VXChartCsvWriter.h"
#include "charts/VXChartHistogram.h"
#include "charts/VXExportDialog.h"
#include "data_bridge/ZRVtkUtils.h"
#include "data_bridge/zr_contract/IDataArray.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTextStream>

#include <map>

namespace
{
const QString k_Chart = QStringLiteral("--chart");
const QString k_Series = QStringLiteral("--series");
const QString k_Bins = QStringLiteral("--bins");
const QString k_LogY = QStringLiteral("--log-y");
const QString k_ExportChart = QStringLiteral("--export-chart");
const QString k_Size = QStringLiteral("--size");
const QStringList k_ChartTypes = {QStringLiteral("histogram"), QStringLiteral("scatter"),
                                  QStringLiteral("line"), QStringLiteral("bar")};
constexpr int k_DefaultBins = 10;

struct SeriesRequest
{
  QString path;
  int component = -1; // -1: every component (component 0 where one value per tuple is needed)
};

struct Options
{
  QString file;
  QString type;
  QList<SeriesRequest> series;
  int bins = k_DefaultBins;
  bool logY = false;
  QString output;
  int width = 800;
  int height = 600;
};

// "PATH:2" names component 2; a path without a trailing ":digits" names the whole array.
SeriesRequest ParseSeries(const QString& text)
{
  static const QRegularExpression s_Component(QStringLiteral("^(.*):(\\d+)$"));
  const QRegularExpressionMatch match = s_Component.match(text.trimmed());
  if (match.hasMatch())
  {
    return {match.captured(1), match.captured(2).toInt()};
  }
  return {text.trimmed(), -1};
}

QString parse(const QStringList& arguments, Options& options)
{
  for (int i = 0; i < arguments.size(); ++i)
  {
    const QString& argument = arguments.at(i);
    if (argument == k_LogY)
    {
      options.logY = true;
      continue;
    }
    const bool takesValue = argument == k_Chart || argument == k_Series || argument == k_Bins ||
                            argument == k_ExportChart || argument == k_Size;
    if (!takesValue)
    {
      if (argument.startsWith(QStringLiteral("--")) || !options.file.isEmpty())
      {
        return QStringLiteral("'%1' is not an option of the chart export").arg(argument);
      }
      options.file = argument;
      continue;
    }
    if (i + 1 >= arguments.size())
    {
      return QStringLiteral("%1 needs a value").arg(argument);
    }
    const QString value = arguments.at(++i);
    if (argument == k_Chart)
    {
      options.type = value.toLower();
      if (!k_ChartTypes.contains(options.type))
      {
        return QStringLiteral("--chart is histogram, scatter, line or bar, not '%1'").arg(value);
      }
    }
    else if (argument == k_Series)
    {
      for (const QString& part : value.split(QLatin1Char(','), Qt::SkipEmptyParts))
      {
        options.series << ParseSeries(part);
      }
    }
    else if (argument == k_Bins)
    {
      bool ok = false;
      options.bins = value.toInt(&ok);
      if (!ok || options.bins < 1 || options.bins > 1000000)
      {
        return QStringLiteral("--bins is a whole number from 1 to 1000000, not '%1'").arg(value);
      }
    }
    else if (argument == k_ExportChart)
    {
      options.output = value;
    }
    else
    {
      static const QRegularExpression s_Size(QStringLiteral("^(\\d+)x(\\d+)$"));
      const QRegularExpressionMatch match = s_Size.match(value);
      options.width = match.hasMatch() ? match.captured(1).toInt() : 0;
      options.height = match.hasMatch() ? match.captured(2).toInt() : 0;
      if (options.width < 1 || options.height < 1 || options.width > 20000 || options.height > 20000)
      {
        return QStringLiteral("--size is WIDTHxHEIGHT in pixels (1 to 20000 each), not '%1'").arg(value);
      }
    }
  }
  if (options.file.isEmpty())
  {
    return QStringLiteral("the chart export needs a FILE");
  }
  if (options.type.isEmpty())
  {
    return QStringLiteral("the chart export needs --chart histogram|scatter|line|bar");
  }
  if (options.series.isEmpty())
  {
    return QStringLiteral("--chart needs --series PATH[:COMPONENT][,...]");
  }
  if (options.output.isEmpty())
  {
    return QStringLiteral("--chart needs --export-chart OUT.png|OUT.svg|OUT.csv");
  }
  if (options.type == QStringLiteral("histogram") && options.series.size() != 1)
  {
    return QStringLiteral("--chart histogram takes one series, not %1").arg(options.series.size());
  }
  if (options.type == QStringLiteral("scatter") && options.series.size() < 2)
  {
    return QStringLiteral("--chart scatter takes the x array first and at least one y array after it");
  }
  const QString suffix = QFileInfo(options.output).suffix().toLower();
  if (suffix != QStringLiteral("svg") && suffix != QStringLiteral("csv") &&
      VXExportDialog::ImageFormatOf(options.output).isEmpty())
  {
    return QStringLiteral("--export-chart writes .png, .jpg, .bmp, .tif, .svg or .csv files, not '%1'")
        .arg(options.output);
  }
  return {};
}

PlotProperties StyleOf(const QString& type, int index)
{
  PlotProperties props;
  props.type = type == QStringLiteral("scatter")
                   ? PlotProperties::Points
                   : (type == QStringLiteral("bar") ? PlotProperties::Bar : PlotProperties::Line);
  const auto& colors = ZRVtk::utils::k_ZRColorPreset1;
  props.color = plottaro::Color::FromQColor(colors[static_cast<std::size_t>(index) % colors.size()]);
  props.pointSize = 5;
  return props;
}
} // namespace

bool ViewerChartExport::handles(const QStringList& arguments)
{
  return arguments.contains(k_Chart) || arguments.contains(k_ExportChart);
}

int ViewerChartExport::run(const QStringList& arguments)
{
  Options options;
  const QString problem = parse(arguments, options);
  if (!problem.isEmpty())
  {
    return ViewerScriptInput::Complain(problem + QStringLiteral(" (see kestrix-viewer --help)"), 2);
  }
  int exitCode = 0;
  const std::optional<zr::core::DataStructure> loaded =
      ViewerScriptInput::LoadDataStructure(options.file, exitCode);
  if (!loaded.has_value())
  {
    return exitCode;
  }
  const zr::core::DataStructure& dataStructure = *loaded;

  // Each series asked for gives one or more (name, values); a missing or wrong one stops the export.
  struct Column
  {
    std::string name;
    std::vector<double> values;
  };
  std::vector<Column> columns;
  const bool histogram = options.type == QStringLiteral("histogram");
  const zr::core::IDataArray* histogramArray = nullptr;
  std::size_t histogramComponent = 0;
  for (int index = 0; index < options.series.size(); ++index)
  {
    const SeriesRequest& request = options.series.at(index);
    const auto path = zr::core::DataPath::FromString(request.path.toStdString());
    const auto* array = path.has_value() ? dataStructure.getDataAs<zr::core::IDataArray>(*path) : nullptr;
    if (array == nullptr || array->getIDataStore() == nullptr)
    {
      return ViewerScriptInput::Complain(
          QStringLiteral("Data array at path '%1' does not exist and cannot be added to the chart.")
              .arg(request.path),
          2);
    }
    const std::size_t components = VXChartArrayValues::ComponentCount(*array);
    if (request.component >= 0 && static_cast<std::size_t>(request.component) >= components)
    {
      return ViewerScriptInput::Complain(
          QStringLiteral("Cannot add data array %1 to the chart because it has %2 components but "
                         "was expecting %3 or more components")
              .arg(request.path)
              .arg(components)
              .arg(request.component + 1),
          2);
    }
    if (array->getNumberOfTuples() == 0)
    {
      return ViewerScriptInput::Complain(
          QStringLiteral("Error retrieving values from data array at path '%1'. No tuples were found!")
              .arg(request.path),
          2);
    }
    // The x array of a scatter chart and a histogram's array give one value per tuple.
    const bool single = histogram || (options.type == QStringLiteral("scatter") && index == 0);
    if (histogram)
    {
      histogramArray = array;
      histogramComponent = request.component < 0 ? 0 : static_cast<std::size_t>(request.component);
      break;
    }
    std::vector<std::size_t> chosen;
    if (request.component >= 0 || single)
    {
      chosen.push_back(request.component < 0 ? 0 : static_cast<std::size_t>(request.component));
    }
    else
    {
      for (std::size_t c = 0; c < components; ++c)
      {
        chosen.push_back(c);
      }
    }
    for (std::size_t component : chosen)
    {
      std::string name = array->getName();
      if (components > 1)
      {
        name += "_" + std::to_string(component);
      }
      Column column{name, VXChartArrayValues::Read(*array, component)};
      if (!columns.empty() && column.values.size() != columns.front().values.size())
      {
        return ViewerScriptInput::Complain(
            QStringLiteral("Cannot add data array %1 to the chart because it has %2 values and "
                           "the rest of the chart data has %3 values")
                .arg(request.path)
                .arg(column.values.size())
                .arg(columns.front().values.size()),
            2);
      }
      columns.push_back(std::move(column));
    }
  }

  VXChart chart;
  QObject::connect(&chart, &VXChart::printOutput,
                   [](const QString& message) { ViewerScriptInput::Complain(message, 0); });
  if (histogram)
  {
    const VXChartHistogram bins = VXChartHistogram::Compute(*histogramArray, histogramComponent, options.bins,
                                                            std::nullopt, options.series.front().path);
    for (const QString& message : bins.messages)
    {
      ViewerScriptInput::Complain(message, 0);
    }
    if (!bins.valid)
    {
      return 2;
    }
    std::string name = histogramArray->getName();
    if (VXChartArrayValues::ComponentCount(*histogramArray) > 1)
    {
      name += "_Comp" + std::to_string(histogramComponent);
    }
    PlotProperties props = StyleOf(options.type, 0);
    props.type = PlotProperties::Histogram;
    chart.addHistogram(name, props, bins.edges, bins.counts, false);
    chart.setXAxisTitle(QString::fromStdString(histogramArray->getName()));
    chart.setYAxisTitle(QStringLiteral("Count"));
  }
  else
  {
    std::vector<double> x;
    std::size_t first = 0;
    if (options.type == QStringLiteral("scatter"))
    {
      x = columns.front().values;
      first = 1;
      chart.setXAxisTitle(QString::fromStdString(columns.front().name));
    }
    else
    {
      x.resize(columns.front().values.size());
      for (std::size_t i = 0; i < x.size(); ++i)
      {
        x[i] = static_cast<double>(i);
      }
      chart.setXAxisTitle(QStringLiteral("Index"));
    }
    std::map<std::string, PlotProperties> styles;
    std::map<std::string, std::vector<double>> values;
    for (std::size_t i = first; i < columns.size(); ++i)
    {
      if (values.count(columns[i].name) > 0 || columns[i].name == VXChart::k_XSeriesName)
      {
        return ViewerScriptInput::Complain(
            QStringLiteral("two series are named '%1': a chart names each series once")
                .arg(QString::fromStdString(columns[i].name)),
            2);
      }
      styles[columns[i].name] = StyleOf(options.type, static_cast<int>(i - first));
      values[columns[i].name] = columns[i].values;
    }
    chart.addPlots(styles, x, values, false);
    chart.setYAxisTitle(columns.size() - first == 1 ? QString::fromStdString(columns[first].name)
                                                    : QStringLiteral("Value"));
  }
  chart.setChartTitle(QFileInfo(options.file).completeBaseName());
  if (options.logY)
  {
    chart.setYAxisLogScale(true);
  }

  const QString suffix = QFileInfo(options.output).suffix().toLower();
  if (suffix == QStringLiteral("csv"))
  {
    const VXChartCsvWriter::Status status = VXChartCsvWriter::WriteFile(options.output, chart);
    return status == VXChartCsvWriter::Status::Written
               ? 0
               : ViewerScriptInput::Complain(VXChartCsvWriter::Message(status, options.output), 1);
  }
  const bool saved =
      suffix == QStringLiteral("svg")
          ? VXExportDialog::SaveSvgFile(options.output, options.width, options.height, &chart)
          : VXExportDialog::SaveImageFile(options.output, options.width, options.height, false, &chart);
  if (!saved)
  {
    return ViewerScriptInput::Complain(QStringLiteral("cannot write '%1'").arg(options.output), 1);
  }
  return 0;
}
