#include "charts/VXHistogramSeriesInputWidget.h"

#include "charts/VXChart.h"
#include "charts/VXChartArrayInputWidget.h"
#include "charts/VXChartHistogram.h"
#include "charts/VXChartMessages.h"
#include "charts/VXHistogramSeriesOptionsWidget.h"
#include "data_bridge/zr_contract/IDataArray.h"

#include <nlohmann/json.hpp>

#include <QSignalBlocker>
#include <QVBoxLayout>

VXHistogramSeriesInputWidget::VXHistogramSeriesInputWidget(QWidget* parent)
    : VXChartSeriesInputWidget(parent)
    , m_Input(new VXChartArrayInputWidget(QStringLiteral("Input Array:"), this))
    , m_Options(new VXHistogramSeriesOptionsWidget(QString(), this))
{
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_Input);
  layout->addWidget(m_Options);
  m_Options->setVisible(false);
  m_Options->setColor(NextSeriesColorAndMarker().first);
  connect(m_Input, &VXChartArrayInputWidget::statusMessageAvailable, this,
          &VXChartSeriesInputWidget::printOutput);
  connect(m_Input, &VXChartArrayInputWidget::pathChanged, this,
          &VXHistogramSeriesInputWidget::onXAxisArrayChanged);
  connect(m_Input, &VXChartArrayInputWidget::componentIndexChanged, this,
          &VXHistogramSeriesInputWidget::onXAxisArrayChanged);
  connect(m_Options, &VXHistogramSeriesOptionsWidget::binCountChanged, this, [this] { recompute(); });
  connect(m_Options, &VXHistogramSeriesOptionsWidget::useCustomRangesChanged, this, [this] { recompute(); });
  connect(m_Options, &VXHistogramSeriesOptionsWidget::customBinRangesChanged, this, [this] { recompute(); });
  connect(m_Options, &VXHistogramSeriesOptionsWidget::binRangeValueChanged, this,
          [this] { Q_EMIT updateChart({seriesName()}, {}); });
  connect(m_Options, &VXSeriesOptionsWidget::colorChanged, this, &VXChartSeriesInputWidget::colorChanged);
  connect(m_Options, &VXSeriesOptionsWidget::seriesNameChanged, this,
          &VXChartSeriesInputWidget::seriesNameChanged);
  connect(m_Options, &VXSeriesOptionsWidget::visibilityButtonClicked, this,
          [this](bool visible) { Q_EMIT changeSeriesVisibility(seriesName(), visible); });
}

VXHistogramSeriesInputWidget::~VXHistogramSeriesInputWidget() = default;

QString VXHistogramSeriesInputWidget::seriesName() const
{
  return m_Options->getSeriesName();
}

void VXHistogramSeriesInputWidget::recompute()
{
  if (calculateHistogram())
  {
    Q_EMIT updateChart({seriesName()}, {});
  }
}

bool VXHistogramSeriesInputWidget::calculateHistogram()
{
  const auto path = m_Input->getDataPath();
  if (!path.has_value())
  {
    return false;
  }
  const QString pathText = QString::fromStdString(path->toString());
  const auto* array = dynamic_cast<const zr::core::IDataArray*>(m_Input->getArray());
  if (array == nullptr)
  {
    Q_EMIT printOutput(VXChartMessages::ArrayMissing(pathText));
    return false;
  }
  std::optional<std::pair<double, double>> range;
  if (m_Options->useCustomBinRanges())
  {
    range = m_Options->getCustomRanges();
  }
  const VXChartHistogram histogram = VXChartHistogram::Compute(
      *array, static_cast<std::size_t>(m_Input->getComponent()), m_Options->getBinCount(), range, pathText);
  for (const QString& message : histogram.messages)
  {
    Q_EMIT printOutput(message);
  }
  if (!histogram.valid)
  {
    return false;
  }
  m_CachedCounts = histogram.counts;
  m_CachedRangeMin.assign(histogram.edges.begin(), histogram.edges.end() - 1);
  m_CachedRangeMax.assign(histogram.edges.begin() + 1, histogram.edges.end());
  m_CachedMinLabels = histogram.minLabels;
  m_CachedMaxLabels = histogram.maxLabels;
  return true;
}

void VXHistogramSeriesInputWidget::onXAxisArrayChanged(const zr::core::DataPath& path, int component)
{
  const auto* array = m_Input->getArray();
  QString name = QString::fromStdString(path.getTargetName());
  if (array != nullptr && array->getNumberOfComponents() > 1)
  {
    name += QStringLiteral("_Comp") + QString::number(component);
  }
  const QString oldName = m_Options->getSeriesName();
  m_Options->setSeriesName(name);
  m_Options->setVisible(true);
  if (!calculateHistogram())
  {
    return;
  }
  Q_EMIT updateChart({name},
                     oldName.isEmpty() || oldName == name ? QList<QString>() : QList<QString>{oldName});
}

void VXHistogramSeriesInputWidget::setDataStructure(
    const std::shared_ptr<const zr::core::DataStructure>& dataStructure)
{
  m_Input->setDataStructure(dataStructure);
  if (m_Input->getDataPath().has_value())
  {
    recompute();
  }
}

std::vector<double> VXHistogramSeriesInputWidget::getXAxisValues() const
{
  m_XAxisHasDoubles = true;
  return m_Options->getBinRangeValue() == VXHistogramSeriesOptionsWidget::BinMinimum ? m_CachedRangeMin
                                                                                     : m_CachedRangeMax;
}

std::vector<std::string> VXHistogramSeriesInputWidget::getXAxisLabels()
{
  return m_Options->getBinRangeValue() == VXHistogramSeriesOptionsWidget::BinMinimum ? m_CachedMinLabels
                                                                                     : m_CachedMaxLabels;
}

std::vector<double> VXHistogramSeriesInputWidget::getYAxisValues(const QString& name) const
{
  return name == seriesName() ? m_CachedCounts : std::vector<double>();
}

std::map<std::string, std::vector<double>> VXHistogramSeriesInputWidget::getYAxisValues() const
{
  if (m_CachedCounts.empty())
  {
    return {};
  }
  return {{seriesName().toStdString(), m_CachedCounts}};
}

PlotProperties VXHistogramSeriesInputWidget::getSeriesPlotData(const QString& /*seriesName*/) const
{
  PlotProperties props;
  props.type = PlotProperties::Histogram;
  props.color = plottaro::Color::FromQColor(m_Options->getColor());
  props.visible = m_Options->showInChart();
  return props;
}

std::map<std::string, PlotProperties> VXHistogramSeriesInputWidget::getSeriesPlotData() const
{
  return {{seriesName().toStdString(), getSeriesPlotData(seriesName())}};
}

VXSeriesOptionsWidget* VXHistogramSeriesInputWidget::getCurrentSeriesOptionsWidget() const
{
  return m_Options;
}

std::vector<double> VXHistogramSeriesInputWidget::getBinEdges() const
{
  std::vector<double> edges = m_CachedRangeMin;
  if (!m_CachedRangeMax.empty())
  {
    edges.push_back(m_CachedRangeMax.back());
  }
  return edges;
}

void VXHistogramSeriesInputWidget::applyTo(VXChart& chart)
{
  if (m_CachedCounts.empty())
  {
    chart.clearPlots();
    return;
  }
  chart.addHistogram(seriesName().toStdString(), getSeriesPlotData(seriesName()), getBinEdges(),
                     m_CachedCounts);
}

void VXHistogramSeriesInputWidget::saveState(nlohmann::json& json) const
{
  m_Input->saveState(json, "x_array_path");
  nlohmann::json options;
  m_Options->saveState(options);
  json["series_options"] = nlohmann::json::array({options});
  json["cached_bin_counts"] = m_CachedCounts;
  json["cached_bin_range_min"] = m_CachedRangeMin;
  json["cached_bin_range_max"] = m_CachedRangeMax;
  json["cached_bin_range_min_labels"] = m_CachedMinLabels;
  json["cached_bin_range_max_labels"] = m_CachedMaxLabels;
}

void VXHistogramSeriesInputWidget::loadState(const nlohmann::json& json)
{
  const QSignalBlocker blocker(this);
  m_Input->loadState(json, "x_array_path");
  if (json.contains("series_options") && !json.at("series_options").empty())
  {
    const QSignalBlocker optionsBlocker(m_Options);
    m_Options->loadState(json.at("series_options").at(0));
    m_Options->setVisible(true);
  }
  auto read = [&json](const char* key, auto& target)
  {
    if (json.contains(key))
    {
      target = json.at(key).get<std::decay_t<decltype(target)>>();
    }
  };
  read("cached_bin_counts", m_CachedCounts);
  read("cached_bin_range_min", m_CachedRangeMin);
  read("cached_bin_range_max", m_CachedRangeMax);
  read("cached_bin_range_min_labels", m_CachedMinLabels);
  read("cached_bin_range_max_labels", m_CachedMaxLabels);
}
