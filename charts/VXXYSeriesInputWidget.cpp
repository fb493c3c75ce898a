#include "charts/VXXYSeriesInputWidget.h"

#include "charts/VXBarSeriesOptionsWidget.h"
#include "charts/VXChart.h"
#include "charts/VXChartArrayInputWidget.h"
#include "charts/VXChartArrayValues.h"
#include "charts/VXChartMessages.h"
#include "charts/VXChartMultiArrayInputWidget.h"
#include "charts/VXPointLineSeriesOptionsWidget.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/IDataArray.h"
#include "data_bridge/zr_contract/StringArray.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <QCheckBox>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <set>

namespace
{
QString LabelOfX(VXXYSeriesInputWidget::Mode mode)
{
  return mode == VXXYSeriesInputWidget::Mode::Line ? QStringLiteral("OPTIONAL X Axis Labels:")
                                                   : QStringLiteral("X Axis Arrays:");
}
} // namespace

VXXYSeriesInputWidget::VXXYSeriesInputWidget(Mode mode, QWidget* parent)
    : VXChartSeriesInputWidget(parent)
    , m_Mode(mode)
    , m_XInput(new VXChartArrayInputWidget(LabelOfX(mode), this))
    , m_YInput(new VXChartMultiArrayInputWidget(QStringLiteral("Y Axis Arrays:"), this))
    , m_SeriesStack(new QStackedWidget(this))
{
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(m_XInput);
  if (mode == Mode::Line)
  {
    m_XInput->setAcceptsStringArrays(true);
    m_XInput->setToolTip(
        QStringLiteral("<html><head/><body><p>%1</p></body></html>")
            .arg(QStringLiteral("If given, the chart will use these values for labeling the x axis. "
                                "Otherwise, indices will be used.")));
  }
  if (mode == Mode::Bar)
  {
    m_CategoriesCheck = new QCheckBox(QStringLiteral("Use X Values As Categories"), this);
    layout->addWidget(m_CategoriesCheck);
    connect(m_CategoriesCheck, &QCheckBox::toggled, this,
            [this] { Q_EMIT updateChart(shownSeriesNames(), {}); });
  }
  layout->addWidget(m_YInput);
  layout->addWidget(m_SeriesStack);
  connect(m_XInput, &VXChartArrayInputWidget::statusMessageAvailable, this,
          &VXChartSeriesInputWidget::printOutput);
  connect(m_YInput, &VXChartMultiArrayInputWidget::statusMessageAvailable, this,
          &VXChartSeriesInputWidget::printOutput);
  connect(m_XInput, &VXChartArrayInputWidget::pathChanged, this, &VXXYSeriesInputWidget::onXAxisArrayChanged);
  connect(m_XInput, &VXChartArrayInputWidget::componentIndexChanged, this,
          &VXXYSeriesInputWidget::onXAxisArrayChanged);
  connect(m_YInput, &VXChartMultiArrayInputWidget::pathsChanged, this,
          &VXXYSeriesInputWidget::onYAxisArraysChanged);
  connect(m_YInput, &VXChartMultiArrayInputWidget::arrayCompSelectionChanged, this,
          &VXXYSeriesInputWidget::swapSeriesWidget);
  connect(m_YInput, &VXChartMultiArrayInputWidget::arrayCompSelectionChanged, this,
          &VXChartSeriesInputWidget::compSelectionChanged);
  connect(m_YInput, &VXChartMultiArrayInputWidget::arrayCompVisibilityChanged, this,
          &VXXYSeriesInputWidget::syncWidgetVisibilityToTable);
}

VXXYSeriesInputWidget::~VXXYSeriesInputWidget() = default;

void VXXYSeriesInputWidget::setUseXValuesAsCategories(bool use)
{
  if (m_CategoriesCheck != nullptr)
  {
    m_CategoriesCheck->setChecked(use);
  }
}

void VXXYSeriesInputWidget::setDataStructure(
    const std::shared_ptr<const zr::core::DataStructure>& dataStructure)
{
  m_DataStructure = dataStructure;
  m_XInput->setDataStructure(dataStructure);
  m_YInput->setDataStructure(dataStructure);
  m_YInput->onInputArraysChanged();
  if (const auto path = m_XInput->getDataPath(); path.has_value() && m_XInput->getArray() == nullptr)
  {
    const QString text = QString::fromStdString(path->toString());
    Q_EMIT printOutput(
        m_Mode == Mode::Line
            ? QStringLiteral(
                  "Data array at path '%1' does not exist and cannot be used as labels on the chart.")
                  .arg(text)
            : QStringLiteral("Data array at path '%1' does not exist and cannot be used in the chart.")
                  .arg(text));
    m_XInput->clear();
  }
  Q_EMIT updateChart(shownSeriesNames(), {});
}

std::size_t VXXYSeriesInputWidget::expectedValueCount() const
{
  for (const auto& [key, widget] : m_Series)
  {
    if (!m_YInput->isVisible(*zr::core::DataPath::FromString(key.first), key.second))
    {
      continue;
    }
    const auto path = zr::core::DataPath::FromString(key.first);
    const auto* array = path.has_value() ? m_YInput->getArray(*path) : nullptr;
    if (array != nullptr)
    {
      return array->getNumberOfTuples();
    }
  }
  return 0;
}

std::vector<double> VXXYSeriesInputWidget::getXAxisValues() const
{
  m_XAxisHasDoubles = true;
  const auto path = m_XInput->getDataPath();
  if (!path.has_value())
  {
    if (m_Mode == Mode::Scatter)
    {
      return {};
    }
    std::vector<double> indices(expectedValueCount());
    for (std::size_t i = 0; i < indices.size(); ++i)
    {
      indices[i] = static_cast<double>(i);
    }
    return indices;
  }
  const QString text = QString::fromStdString(path->toString());
  const auto* array = m_XInput->getArray();
  if (array == nullptr)
  {
    Q_EMIT printOutput(
        m_Mode == Mode::Line
            ? QStringLiteral(
                  "Data array at path '%1' does not exist and cannot be used as labels on the chart.")
                  .arg(text)
            : VXChartMessages::ArrayMissing(text));
    return {};
  }
  if (array->getNumberOfTuples() == 0)
  {
    Q_EMIT printOutput(VXChartMessages::NoTuples(text));
    return {};
  }
  const auto* dataArray = dynamic_cast<const zr::core::IDataArray*>(array);
  if (dataArray == nullptr || (m_CategoriesCheck != nullptr && m_CategoriesCheck->isChecked()))
  {
    // Text labels, or numbers shown as categories: the bars stand at 0, 1, 2, ...
    m_XAxisHasDoubles = false;
    std::vector<double> indices(array->getNumberOfTuples());
    for (std::size_t i = 0; i < indices.size(); ++i)
    {
      indices[i] = static_cast<double>(i);
    }
    return indices;
  }
  const auto component = static_cast<std::size_t>(m_XInput->getComponent());
  if (component >= dataArray->getNumberOfComponents())
  {
    Q_EMIT printOutput(
        QStringLiteral(
            "Error retrieving x axis values from data array at path '%1'. %2 components were found but "
            "the array should have %3 component(s).")
            .arg(text)
            .arg(dataArray->getNumberOfComponents())
            .arg(component + 1));
    return {};
  }
  return VXChartArrayValues::Read(*dataArray, component);
}

std::vector<std::string> VXXYSeriesInputWidget::getXAxisLabels()
{
  std::vector<std::string> labels;
  const auto* array = m_XInput->getArray();
  if (array == nullptr)
  {
    return labels;
  }
  if (const auto* strings = dynamic_cast<const zr::core::StringArray*>(array))
  {
    return strings->values();
  }
  if (const auto* dataArray = dynamic_cast<const zr::core::IDataArray*>(array))
  {
    for (double value :
         VXChartArrayValues::Read(*dataArray, static_cast<std::size_t>(m_XInput->getComponent())))
    {
      labels.push_back(fmt::format("{}", value));
    }
  }
  return labels;
}

const std::pair<const VXXYSeriesInputWidget::SeriesKey, VXSeriesOptionsWidget*>*
VXXYSeriesInputWidget::findSeries(const QString& seriesName) const
{
  for (const auto& entry : m_Series)
  {
    if (entry.second->getSeriesName() == seriesName)
    {
      return &entry;
    }
  }
  return nullptr;
}

std::vector<double> VXXYSeriesInputWidget::getYAxisValues(const QString& seriesName) const
{
  const auto* series = findSeries(seriesName);
  if (series == nullptr)
  {
    return {};
  }
  const QString pathText = QString::fromStdString(series->first.first);
  const auto path = zr::core::DataPath::FromString(series->first.first);
  const auto* array =
      path.has_value() ? dynamic_cast<const zr::core::IDataArray*>(m_YInput->getArray(*path)) : nullptr;
  if (array == nullptr)
  {
    Q_EMIT printOutput(VXChartMessages::ArrayMissing(pathText));
    return {};
  }
  const int component = series->first.second;
  if (static_cast<std::size_t>(component) >= array->getNumberOfComponents())
  {
    Q_EMIT printOutput(
        VXChartMessages::ComponentMissing(pathText, array->getNumberOfComponents(), component + 1));
    return {};
  }
  if (array->getNumberOfTuples() == 0)
  {
    Q_EMIT printOutput(VXChartMessages::NoTuples(pathText));
    return {};
  }
  std::vector<double> values = VXChartArrayValues::Read(*array, static_cast<std::size_t>(component));
  if (m_XInput->getDataPath().has_value())
  {
    const auto* x = m_XInput->getArray();
    if (x != nullptr && x->getNumberOfTuples() != values.size())
    {
      Q_EMIT printOutput(VXChartMessages::LengthMismatch(pathText, values.size(), x->getNumberOfTuples()));
      return {};
    }
  }
  return values;
}

std::map<std::string, std::vector<double>> VXXYSeriesInputWidget::getYAxisValues() const
{
  std::map<std::string, std::vector<double>> result;
  std::size_t expected = 0;
  for (const auto& [key, widget] : m_Series)
  {
    const auto path = zr::core::DataPath::FromString(key.first);
    if (!path.has_value() || !m_YInput->isVisible(*path, key.second))
    {
      continue;
    }
    if (widget == nullptr)
    {
      Q_EMIT printOutput(
          QStringLiteral(
              "Data array at path '%1' cannot be added or updated in the chart because the series plot "
              "options cannot be found.")
              .arg(QString::fromStdString(key.first)));
      continue;
    }
    std::vector<double> values = getYAxisValues(widget->getSeriesName());
    if (values.empty())
    {
      continue;
    }
    if (expected != 0 && values.size() != expected)
    {
      Q_EMIT printOutput(
          VXChartMessages::LengthMismatch(QString::fromStdString(key.first), values.size(), expected));
      continue;
    }
    expected = values.size();
    result[widget->getSeriesName().toStdString()] = std::move(values);
  }
  return result;
}

PlotProperties VXXYSeriesInputWidget::getSeriesPlotData(const QString& seriesName) const
{
  PlotProperties props;
  props.type = m_Mode == Mode::Scatter ? PlotProperties::Points
                                       : (m_Mode == Mode::Bar ? PlotProperties::Bar : PlotProperties::Line);
  const auto* series = findSeries(seriesName);
  if (series == nullptr)
  {
    return props;
  }
  const VXSeriesOptionsWidget* widget = series->second;
  props.color = plottaro::Color::FromQColor(widget->getColor());
  props.visible = widget->showInChart();
  if (const auto* pointLine = dynamic_cast<const VXPointLineSeriesOptionsWidget*>(widget))
  {
    props.pointMarker = pointLine->getPointMarker();
    props.pointSize = pointLine->getPointSize();
    props.lineStyle = pointLine->getLineStyle();
    props.lineThickness = pointLine->getLineThickness();
  }
  return props;
}

std::map<std::string, PlotProperties> VXXYSeriesInputWidget::getSeriesPlotData() const
{
  std::map<std::string, PlotProperties> result;
  for (const auto& entry : m_Series)
  {
    result[entry.second->getSeriesName().toStdString()] = getSeriesPlotData(entry.second->getSeriesName());
  }
  return result;
}

VXSeriesOptionsWidget* VXXYSeriesInputWidget::getCurrentSeriesOptionsWidget() const
{
  return qobject_cast<VXSeriesOptionsWidget*>(m_SeriesStack->currentWidget());
}

VXSeriesOptionsWidget* VXXYSeriesInputWidget::getSeriesOptionsWidget(const zr::core::DataPath& path,
                                                                     int component) const
{
  auto found = m_Series.find({path.toString(), component});
  return found != m_Series.end() ? found->second : nullptr;
}

VXSeriesOptionsWidget* VXXYSeriesInputWidget::createSeriesComponentOption(const zr::core::DataPath& path,
                                                                          int component,
                                                                          std::size_t components)
{
  QString name = QString::fromStdString(path.getTargetName());
  if (components > 1)
  {
    name += QStringLiteral("_") + QString::number(component);
  }
  VXSeriesOptionsWidget* widget = nullptr;
  if (m_Mode == Mode::Bar)
  {
    widget = new VXBarSeriesOptionsWidget(name, m_SeriesStack);
    widget->setColor(NextSeriesColorAndMarker().first);
  }
  else
  {
    auto* pointLine = new VXPointLineSeriesOptionsWidget(
        m_Mode == Mode::Scatter ? VXSeriesOptionsWidget::Kind::Point : VXSeriesOptionsWidget::Kind::Line,
        name, m_SeriesStack);
    pointLine->readSettings();
    const auto [color, marker] = NextSeriesColorAndMarker();
    pointLine->setColor(color);
    pointLine->setPointMarker(marker);
    connect(pointLine, &VXPointLineSeriesOptionsWidget::pointMarkerChanged, this,
            &VXChartSeriesInputWidget::pointMarkerChanged);
    connect(pointLine, &VXPointLineSeriesOptionsWidget::pointSizeChanged, this,
            &VXChartSeriesInputWidget::pointSizeChanged);
    connect(pointLine, &VXPointLineSeriesOptionsWidget::lineStyleChanged, this,
            &VXChartSeriesInputWidget::lineStyleChanged);
    connect(pointLine, &VXPointLineSeriesOptionsWidget::lineThicknessChanged, this,
            &VXChartSeriesInputWidget::lineThicknessChanged);
    widget = pointLine;
  }
  connect(widget, &VXSeriesOptionsWidget::seriesNameChanged, this,
          &VXChartSeriesInputWidget::seriesNameChanged);
  connect(widget, &VXSeriesOptionsWidget::colorChanged, this, &VXChartSeriesInputWidget::colorChanged);
  const std::string pathText = path.toString();
  connect(widget, &VXSeriesOptionsWidget::visibilityButtonClicked, this,
          [this, widget, pathText, component](bool visible)
          {
            if (const auto dataPath = zr::core::DataPath::FromString(pathText))
            {
              m_YInput->setVisibility(*dataPath, component, visible);
            }
            Q_EMIT changeSeriesVisibility(widget->getSeriesName(), visible);
          });
  m_SeriesStack->addWidget(widget);
  return widget;
}

void VXXYSeriesInputWidget::onYAxisArraysChanged(const QList<zr::core::DataPath>& paths)
{
  std::set<SeriesKey> wanted;
  for (const zr::core::DataPath& path : paths)
  {
    const auto* array = m_YInput->getArray(path);
    if (array == nullptr)
    {
      Q_EMIT printOutput(
          QStringLiteral("Data array at path '%1' does not exist and cannot be used in the chart.")
              .arg(QString::fromStdString(path.toString())));
      continue;
    }
    const std::size_t components = array->getNumberOfComponents();
    for (std::size_t component = 0; component < components; ++component)
    {
      const SeriesKey key{path.toString(), static_cast<int>(component)};
      wanted.insert(key);
      if (m_Series.count(key) == 0)
      {
        m_Series[key] = createSeriesComponentOption(path, static_cast<int>(component), components);
      }
    }
  }
  QList<QString> removed;
  for (auto it = m_Series.begin(); it != m_Series.end();)
  {
    if (wanted.count(it->first) == 0)
    {
      removed.append(it->second->getSeriesName());
      m_SeriesStack->removeWidget(it->second);
      it->second->deleteLater();
      it = m_Series.erase(it);
    }
    else
    {
      ++it;
    }
  }
  Q_EMIT updateChart(shownSeriesNames(), removed);
}

void VXXYSeriesInputWidget::onXAxisArrayChanged(const zr::core::DataPath& /*path*/, int /*component*/)
{
  Q_EMIT updateChart(shownSeriesNames(), {});
}

void VXXYSeriesInputWidget::swapSeriesWidget(const zr::core::DataPath& path, int component)
{
  if (auto* widget = getSeriesOptionsWidget(path, component))
  {
    m_SeriesStack->setCurrentWidget(widget);
  }
}

void VXXYSeriesInputWidget::syncWidgetVisibilityToTable(const zr::core::DataPath& path, int component,
                                                        bool visible)
{
  if (auto* widget = getSeriesOptionsWidget(path, component))
  {
    widget->setShowInChart(visible);
    Q_EMIT changeSeriesVisibility(widget->getSeriesName(), visible);
  }
  Q_EMIT updateChart(shownSeriesNames(), {});
}

QList<QString> VXXYSeriesInputWidget::shownSeriesNames() const
{
  QList<QString> names;
  for (const auto& [key, widget] : m_Series)
  {
    const auto path = zr::core::DataPath::FromString(key.first);
    if (path.has_value() && m_YInput->isVisible(*path, key.second))
    {
      names.append(widget->getSeriesName());
    }
  }
  return names;
}

void VXXYSeriesInputWidget::applyTo(VXChart& chart)
{
  const std::map<std::string, std::vector<double>> values = getYAxisValues();
  const std::vector<double> x = getXAxisValues();
  if (m_Mode == Mode::Scatter && x.empty())
  {
    chart.clearPlots();
    return;
  }
  if (!values.empty() && x.size() != values.begin()->second.size())
  {
    Q_EMIT printOutput(VXChartMessages::LengthMismatch(QString::fromStdString(values.begin()->first),
                                                       values.begin()->second.size(), x.size()));
    chart.clearPlots();
    return;
  }
  if (xAxisHasDoubles())
  {
    chart.addPlots(getSeriesPlotData(), x, values);
  }
  else
  {
    chart.addPlots(getSeriesPlotData(), getXAxisLabels(), values);
  }
}

void VXXYSeriesInputWidget::saveState(nlohmann::json& json) const
{
  const auto xPath = m_XInput->getDataPath();
  json["x_array_path"] = xPath.has_value() ? xPath->toString() : std::string();
  json["data_array_comp"] = m_XInput->getComponent();
  m_YInput->saveState(json);
  nlohmann::json options = nlohmann::json::array();
  for (const auto& [key, widget] : m_Series)
  {
    nlohmann::json entry;
    widget->saveState(entry);
    entry["series_path"] = key.first;
    entry["series_comp"] = key.second;
    options.push_back(entry);
  }
  json["series_options"] = options;
  const auto selected = m_YInput->getSelectedDataPath();
  json["current_series_path"] = selected.has_value() ? selected->toString() : std::string();
  json["current_series_comp"] = m_YInput->getSelectedComponent();
  if (m_CategoriesCheck != nullptr)
  {
    json["use_x_vals_as_categories"] = m_CategoriesCheck->isChecked();
  }
}

void VXXYSeriesInputWidget::loadState(const nlohmann::json& json)
{
  const QSignalBlocker blocker(this);
  m_XInput->loadState(json, "x_array_path");
  if (m_CategoriesCheck != nullptr && json.contains("use_x_vals_as_categories"))
  {
    m_CategoriesCheck->setChecked(json.at("use_x_vals_as_categories").get<bool>());
  }
  m_YInput->loadState(json);
  onYAxisArraysChanged(m_YInput->getDataPaths());
  if (json.contains("series_options"))
  {
    for (const auto& entry : json.at("series_options"))
    {
      if (!entry.contains("series_path") || !entry.contains("series_comp"))
      {
        continue;
      }
      auto found =
          m_Series.find({entry.at("series_path").get<std::string>(), entry.at("series_comp").get<int>()});
      if (found != m_Series.end())
      {
        found->second->loadState(entry);
      }
    }
  }
  if (json.contains("current_series_path") && json.contains("current_series_comp"))
  {
    if (const auto path = zr::core::DataPath::FromString(json.at("current_series_path").get<std::string>()))
    {
      swapSeriesWidget(*path, json.at("current_series_comp").get<int>());
    }
  }
}
