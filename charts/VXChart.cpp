#include "charts/VXChart.h"

#include "platform/QtZRSettings.h"
#include "platform/ZRPreferences.h"
#include "platform/ZRSettingsKeys.h"
#include "platform/plottaro/LinearScaleEngine.h"
#include "platform/plottaro/LogScaleEngine.h"
#include "platform/plottaro/Plot.h"
#include "platform/plottaro/PlotBarChart.h"
#include "platform/plottaro/PlotCurve.h"
#include "platform/plottaro/PlotHistogram.h"
#include "platform/plottaro/PlotScatterChart.h"
#include "platform/plottaro/PlottaroGraphicsView.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <QDir>
#include <QFileInfo>
#include <QVBoxLayout>

#include <cmath>
#include <limits>

namespace
{
constexpr int k_PlotWidth = 800;
constexpr int k_PlotHeight = 600;
constexpr double k_NoDataMin = 0.0;
constexpr double k_NoDataMax = 1.0;

const std::array<const char*, VXChart::k_TextRoleCount> k_TextKeyPrefix = {
    "chart_title", "xaxis_title", "yaxis_title", "legend", "xaxis_label", "yaxis_label"};

plottaro::Color ToColor(const QColor& color)
{
  return plottaro::Color::FromQColor(color);
}

plottaro::LegendPosition LegendPositionOf(const QString& location, bool* known)
{
  static const std::map<QString, plottaro::LegendPosition> s_Positions = {
      {QStringLiteral("Top Left"), plottaro::LegendPosition::TopLeft},
      {QStringLiteral("Top Right"), plottaro::LegendPosition::TopRight},
      {QStringLiteral("Bottom Left"), plottaro::LegendPosition::BottomLeft},
      {QStringLiteral("Bottom Right"), plottaro::LegendPosition::BottomRight},
      {QStringLiteral("Top"), plottaro::LegendPosition::Top},
      {QStringLiteral("Bottom"), plottaro::LegendPosition::Bottom}};
  auto found = s_Positions.find(location);
  *known = found != s_Positions.end();
  return *known ? found->second : plottaro::LegendPosition::TopRight;
}

bool IsShownOn(bool logarithmic, double value)
{
  return std::isfinite(value) && (!logarithmic || value > 0.0);
}
} // namespace

VXChart::VXChart(QWidget* parent)
    : QWidget(parent)
    , m_Plot(std::make_shared<plottaro::Plot>(k_PlotWidth, k_PlotHeight))
{
  m_Plot->enableAxis(k_PlotXAxis);
  m_Plot->enableAxis(k_PlotYAxis);
  m_Plot->setCanvasBackground(plottaro::Color::White());
  m_Plot->setBorderPen(plottaro::Pen{plottaro::Color::Black(), 1.0, Qt::SolidLine});
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  m_View = new plottaro::PlottaroGraphicsView(this);
  layout->addWidget(m_View);
  m_View->setPlot(m_Plot);
  connect(m_View, &plottaro::PlottaroGraphicsView::clicked, this, &VXChart::clicked);
  connect(m_View, &plottaro::PlottaroGraphicsView::legendMoved, this,
          [this](double x, double y)
          {
            m_LegendPoint = {static_cast<float>(x), static_cast<float>(y)};
            m_LegendLocation = k_CustomLegendLocation;
          });
  resetProperties();
}

VXChart::~VXChart()
{
  // The view gives the plot widget back; the items go before the plot.
  delete m_View;
  m_Series.clear();
}

QStringList VXChart::LegendLocations()
{
  return {QStringLiteral("Top Left"),     QStringLiteral("Top Right"), QStringLiteral("Bottom Left"),
          QStringLiteral("Bottom Right"), QStringLiteral("Top"),       QStringLiteral("Bottom"),
          k_CustomLegendLocation};
}

// ---- Series ---------------------------------------------------------------------------------------

void VXChart::storeSeries(const std::string& name, const PlotProperties& props, std::vector<double> values)
{
  if (auto found = m_Series.find(name); found != m_Series.end() && found->second.item != nullptr)
  {
    m_Plot->removeItem(found->second.item);
  }
  m_Values[name] = std::move(values);
  Series& series = m_Series[name];
  series.props = props;
  series.item = createItem(name);
  applyPlotItemStyle(name, props);
  m_Plot->addItem(series.item);
}

std::shared_ptr<plottaro::PlotItem> VXChart::createItem(const std::string& name) const
{
  const PlotProperties& props = m_Series.at(name).props;
  const std::vector<double>& y = m_Values.at(name);
  std::vector<double> x;
  if (auto found = m_Values.find(k_XSeriesName); found != m_Values.end())
  {
    x = found->second;
  }
  else
  {
    x.resize(y.size());
    for (std::size_t i = 0; i < x.size(); ++i)
    {
      x[i] = static_cast<double>(i);
    }
  }
  switch (props.type)
  {
  case PlotProperties::Points:
  {
    auto item = std::make_shared<plottaro::PlotScatterChart>();
    item->setSamples(x, y);
    return item;
  }
  case PlotProperties::Bar:
  {
    auto item = std::make_shared<plottaro::PlotBarChart>();
    item->setSamples(x, y);
    return item;
  }
  case PlotProperties::Histogram:
  {
    auto item = std::make_shared<plottaro::PlotHistogram>();
    auto edges = m_BinEdges.find(name);
    item->setBins(edges != m_BinEdges.end() ? edges->second : std::vector<double>(), y);
    return item;
  }
  default:
  {
    auto item = std::make_shared<plottaro::PlotCurve>();
    item->setSeries(x, y);
    return item;
  }
  }
}

void VXChart::addPlot(const std::string& name, const PlotProperties& props, const std::vector<double>& x,
                      const std::vector<double>& y, bool render, bool clearFirst)
{
  if (clearFirst)
  {
    clearPlots();
  }
  m_Values[k_XSeriesName] = x;
  storeSeries(name, props, y);
  recalculateBounds();
  reportHiddenValues();
  if (render)
  {
    this->render();
  }
}

void VXChart::addPlot(const std::string& name, const PlotProperties& props,
                      const std::vector<std::string>& categories, const std::vector<double>& y, bool render)
{
  std::vector<double> positions(categories.size());
  for (std::size_t i = 0; i < positions.size(); ++i)
  {
    positions[i] = static_cast<double>(i);
  }
  addPlot(name, props, positions, y, false, true);
  m_Categories = categories;
  m_Plot->setAxisTickLabels(k_PlotXAxis, categories);
  if (render)
  {
    this->render();
  }
}

void VXChart::addPlot(const std::string& name, const PlotProperties& props, const std::vector<double>& y,
                      bool render)
{
  if (m_Values.count(k_XSeriesName) == 0)
  {
    std::vector<double> indices(y.size());
    for (std::size_t i = 0; i < indices.size(); ++i)
    {
      indices[i] = static_cast<double>(i);
    }
    m_Values[k_XSeriesName] = indices;
  }
  storeSeries(name, props, y);
  recalculateBounds();
  reportHiddenValues();
  if (render)
  {
    this->render();
  }
}

void VXChart::addPlots(const std::map<std::string, PlotProperties>& props, const std::vector<double>& x,
                       const std::map<std::string, std::vector<double>>& values, bool render)
{
  clearPlots();
  m_Values[k_XSeriesName] = x;
  for (const auto& [name, seriesValues] : values)
  {
    auto style = props.find(name);
    if (style == props.end() || name == k_XSeriesName)
    {
      continue;
    }
    storeSeries(name, style->second, seriesValues);
  }
  recalculateBounds();
  reportHiddenValues();
  if (render)
  {
    this->render();
  }
}

void VXChart::addPlots(const std::map<std::string, PlotProperties>& props,
                       const std::vector<std::string>& categories,
                       const std::map<std::string, std::vector<double>>& values, bool render)
{
  std::vector<double> positions(categories.size());
  for (std::size_t i = 0; i < positions.size(); ++i)
  {
    positions[i] = static_cast<double>(i);
  }
  addPlots(props, positions, values, false);
  m_Categories = categories;
  m_Plot->setAxisTickLabels(k_PlotXAxis, categories);
  if (render)
  {
    this->render();
  }
}

void VXChart::addHistogram(const std::string& name, const PlotProperties& props,
                           const std::vector<double>& edges, const std::vector<double>& counts, bool render)
{
  clearPlots();
  PlotProperties histogramProps = props;
  histogramProps.type = PlotProperties::Histogram;
  m_BinEdges[name] = edges;
  m_Values[k_XSeriesName] = std::vector<double>(edges.begin(), edges.empty() ? edges.end() : edges.end() - 1);
  storeSeries(name, histogramProps, counts);
  recalculateBounds();
  if (render)
  {
    this->render();
  }
}

void VXChart::removePlot(const std::string& name)
{
  auto found = m_Series.find(name);
  if (found == m_Series.end())
  {
    return;
  }
  m_Plot->removeItem(found->second.item);
  m_Series.erase(found);
  m_Values.erase(name);
  m_BinEdges.erase(name);
  render();
}

void VXChart::renamePlotSeries(const std::string& oldName, const std::string& newName)
{
  auto found = m_Series.find(oldName);
  if (found == m_Series.end() || oldName == newName || m_Series.count(newName) > 0 ||
      newName == k_XSeriesName)
  {
    return;
  }
  Series series = found->second;
  m_Series.erase(found);
  series.item->setTitle(newName);
  m_Series[newName] = series;
  if (auto values = m_Values.find(oldName); values != m_Values.end())
  {
    m_Values[newName] = std::move(values->second);
    m_Values.erase(oldName);
  }
  if (auto edges = m_BinEdges.find(oldName); edges != m_BinEdges.end())
  {
    m_BinEdges[newName] = std::move(edges->second);
    m_BinEdges.erase(oldName);
  }
  render();
}

void VXChart::clearPlots()
{
  for (const auto& entry : m_Series)
  {
    m_Plot->removeItem(entry.second.item);
  }
  m_Series.clear();
  m_Values.clear();
  m_BinEdges.clear();
  if (!m_Categories.empty())
  {
    m_Categories.clear();
    m_Plot->setAxisTickLabels(k_PlotXAxis, std::vector<std::string>());
    applyAxisScale(Axis::X);
  }
}

void VXChart::rebuildPlotItems()
{
  for (auto& entry : m_Series)
  {
    m_Plot->removeItem(entry.second.item);
  }
  for (auto& [name, series] : m_Series)
  {
    series.item = createItem(name);
    applyPlotItemStyle(name, series.props);
    m_Plot->addItem(series.item);
  }
  render();
}

void VXChart::updatePlot(const std::string& name)
{
  auto found = m_Series.find(name);
  if (found != m_Series.end())
  {
    applyPlotItemStyle(name, found->second.props);
    render();
  }
}

void VXChart::updatePlots()
{
  for (const auto& entry : m_Series)
  {
    applyPlotItemStyle(entry.first, entry.second.props);
  }
  render();
}

void VXChart::applyPlotItemStyle(const std::string& name, const PlotProperties& props)
{
  auto found = m_Series.find(name);
  if (found == m_Series.end())
  {
    return;
  }
  found->second.props = props;
  plottaro::PlotItem* item = found->second.item.get();
  const plottaro::Pen pen{props.color, static_cast<double>(props.lineThickness),
                          static_cast<Qt::PenStyle>(props.lineStyle)};
  const plottaro::Brush brush{props.color, true};
  const plottaro::Symbol symbol{props.pointMarker, brush, plottaro::Pen{props.color, 1.0, Qt::SolidLine},
                                props.pointSize};
  if (auto* scatter = dynamic_cast<plottaro::PlotScatterChart*>(item))
  {
    scatter->setSymbol(symbol);
  }
  else if (auto* curve = dynamic_cast<plottaro::PlotCurve*>(item))
  {
    curve->setPen(pen);
    curve->setSymbol(symbol);
    if (props.type == PlotProperties::Line)
    {
      curve->setStyle(plottaro::LinesAndSymbols);
    }
    else if (props.type == PlotProperties::Points)
    {
      curve->setStyle(plottaro::NoCurve);
    }
  }
  else if (auto* bar = dynamic_cast<plottaro::PlotBarChart*>(item))
  {
    bar->setSeriesBrush(0, brush);
    bar->setSeriesPen(0, pen);
    bar->setBarSpacing(props.barSpacing);
  }
  else if (auto* histogram = dynamic_cast<plottaro::PlotHistogram*>(item))
  {
    histogram->setBrush(brush);
    histogram->setPen(plottaro::Pen{plottaro::Color::Black(), 1.0, Qt::SolidLine});
    histogram->setBarSpacing(props.barSpacing);
  }
  item->setTitle(name);
  item->setVisible(props.visible);
}

std::vector<std::string> VXChart::seriesNames() const
{
  std::vector<std::string> names;
  for (const auto& entry : m_Series)
  {
    names.push_back(entry.first);
  }
  return names;
}

bool VXChart::hasSeries(const std::string& name) const
{
  return m_Series.count(name) > 0;
}

PlotProperties VXChart::getPlotProperties(const std::string& name) const
{
  auto found = m_Series.find(name);
  return found != m_Series.end() ? found->second.props : PlotProperties{};
}

std::vector<double> VXChart::getSeriesValues(const std::string& name) const
{
  auto found = m_Values.find(name);
  return found != m_Values.end() ? found->second : std::vector<double>();
}

std::vector<double> VXChart::getBinEdges(const std::string& name) const
{
  auto found = m_BinEdges.find(name);
  return found != m_BinEdges.end() ? found->second : std::vector<double>();
}

void VXChart::reportHiddenValues() const
{
  for (const auto& [name, series] : m_Series)
  {
    if (series.props.type == PlotProperties::Histogram || series.item->hiddenSampleCount() == 0)
    {
      continue;
    }
    Q_EMIT printOutput(
        QStringLiteral("Series '%1': %2 of its %3 values cannot be drawn (not a finite number, or "
                       "not above zero on a logarithmic axis) and are left out of the chart")
            .arg(QString::fromStdString(name))
            .arg(series.item->hiddenSampleCount())
            .arg(series.item->sampleCount()));
  }
}

// ---- Series style ---------------------------------------------------------------------------------

void VXChart::setPlotVisibility(const std::string& name, bool visible)
{
  if (auto found = m_Series.find(name); found != m_Series.end())
  {
    found->second.props.visible = visible;
    updatePlot(name);
  }
}

bool VXChart::getPlotVisibility(const std::string& name) const
{
  return getPlotProperties(name).visible;
}

void VXChart::setColor(const std::string& name, const plottaro::Color& color)
{
  if (auto found = m_Series.find(name); found != m_Series.end())
  {
    found->second.props.color = color;
    updatePlot(name);
  }
}

plottaro::Color VXChart::getColor(const std::string& name) const
{
  return getPlotProperties(name).color;
}

void VXChart::setLineStyle(const std::string& name, int style)
{
  if (auto found = m_Series.find(name); found != m_Series.end())
  {
    found->second.props.lineStyle = style;
    updatePlot(name);
  }
}

int VXChart::getLineStyle(const std::string& name) const
{
  return getPlotProperties(name).lineStyle;
}

void VXChart::setPointMarker(const std::string& name, int marker)
{
  if (auto found = m_Series.find(name); found != m_Series.end())
  {
    found->second.props.pointMarker = marker;
    updatePlot(name);
  }
}

int VXChart::getPointMarker(const std::string& name) const
{
  return getPlotProperties(name).pointMarker;
}

void VXChart::setLineThickness(const std::string& name, int thickness)
{
  if (auto found = m_Series.find(name); found != m_Series.end())
  {
    found->second.props.lineThickness = thickness;
    updatePlot(name);
  }
}

int VXChart::getLineThickness(const std::string& name) const
{
  return getPlotProperties(name).lineThickness;
}

void VXChart::setPointSize(const std::string& name, int size)
{
  if (auto found = m_Series.find(name); found != m_Series.end())
  {
    found->second.props.pointSize = size;
    updatePlot(name);
  }
}

int VXChart::getPointSize(const std::string& name) const
{
  return getPlotProperties(name).pointSize;
}

// ---- Texts ----------------------------------------------------------------------------------------

QString VXChart::GetFontFileName(const QString& family, bool bold, bool italic)
{
  static const std::map<QString, std::array<const char*, 4>> s_Files = {
      {QStringLiteral("Lato"),
       {"Lato-Regular.ttf", "Lato-Bold.ttf", "Lato-Italic.ttf", "Lato-BoldItalic.ttf"}},
      {QStringLiteral("Arial"), {"arial.ttf", "arialbd.ttf", "ariali.ttf", "arialbi.ttf"}},
      {QStringLiteral("Courier New"), {"cour.ttf", "courbd.ttf", "couri.ttf", "courbi.ttf"}},
      {QStringLiteral("Times New Roman"), {"times.ttf", "timesbd.ttf", "timesi.ttf", "timesbi.ttf"}}};
  auto found = s_Files.find(family);
  if (found == s_Files.end())
  {
    return {};
  }
  const int style = (bold ? 1 : 0) + (italic ? 2 : 0);
  return QString::fromLatin1(found->second[static_cast<std::size_t>(style)]);
}

QString VXChart::GetFontFile(const QString& fileName)
{
  if (fileName.isEmpty())
  {
    return {};
  }
  QStringList directories;
  const QString own = qEnvironmentVariable("ZR_FONT_DIR");
  if (!own.isEmpty())
  {
    directories << own;
  }
  directories << QStringLiteral("/usr/share/fonts/truetype/lato")
              << QStringLiteral("/usr/share/fonts/truetype/msttcorefonts")
              << QStringLiteral("/usr/share/fonts/truetype/ms-fonts");
  for (const QString& directory : directories)
  {
    const QFileInfo candidate(QDir(directory).filePath(fileName));
    if (candidate.isFile())
    {
      return candidate.absoluteFilePath();
    }
  }
  return {};
}

plottaro::Font VXChart::buildFont(const QString& family, int size, bool bold, bool italic) const
{
  const QString fileName = GetFontFileName(family, bold, italic);
  if (fileName.isEmpty())
  {
    return plottaro::Font::defaultFont(size);
  }
  plottaro::Font font =
      plottaro::Font::fromFile(GetFontFile(fileName).toStdString(), family.toStdString(), size);
  font.setBold(bold);
  font.setItalic(italic);
  return font;
}

void VXChart::applyText(TextRole role)
{
  const TextStyle& style = m_Texts[static_cast<int>(role)];
  const plottaro::Font font = buildFont(style.family, style.size, style.bold, style.italic);
  const plottaro::Text text{style.text.toStdString(), font, ToColor(style.color)};
  switch (role)
  {
  case TextRole::ChartTitle:
    m_Plot->setTitle(text);
    break;
  case TextRole::XAxisTitle:
    m_Plot->setAxisTitle(k_PlotXAxis, text);
    break;
  case TextRole::YAxisTitle:
    m_Plot->setAxisTitle(k_PlotYAxis, text);
    break;
  case TextRole::Legend:
    m_Plot->legend().setFont(font);
    break;
  case TextRole::XAxisLabels:
    m_Plot->setAxisFont(k_PlotXAxis, font);
    m_Plot->setAxisPen(k_PlotXAxis, plottaro::Pen{ToColor(style.color), 1.0, Qt::SolidLine});
    break;
  case TextRole::YAxisLabels:
    m_Plot->setAxisFont(k_PlotYAxis, font);
    m_Plot->setAxisPen(k_PlotYAxis, plottaro::Pen{ToColor(style.color), 1.0, Qt::SolidLine});
    break;
  }
  render();
}

void VXChart::emitFontFamilyChanged(TextRole role, const QString& family)
{
  switch (role)
  {
  case TextRole::ChartTitle:
    Q_EMIT chartTitleFontFamilyChanged(family);
    break;
  case TextRole::XAxisTitle:
    Q_EMIT xAxisFontFamilyChanged(family);
    break;
  case TextRole::YAxisTitle:
    Q_EMIT yAxisFontFamilyChanged(family);
    break;
  case TextRole::Legend:
    Q_EMIT legendFontFamilyChanged(family);
    break;
  case TextRole::XAxisLabels:
    Q_EMIT xAxisLabelFontFamilyChanged(family);
    break;
  case TextRole::YAxisLabels:
    Q_EMIT yAxisLabelFontFamilyChanged(family);
    break;
  }
}

void VXChart::setText(TextRole role, const QString& text)
{
  m_Texts[static_cast<int>(role)].text = text;
  applyText(role);
}

void VXChart::setFontFamily(TextRole role, const QString& family)
{
  m_Texts[static_cast<int>(role)].family = family;
  applyText(role);
  emitFontFamilyChanged(role, family);
}

void VXChart::setFontSize(TextRole role, int size)
{
  m_Texts[static_cast<int>(role)].size = size;
  applyText(role);
}

void VXChart::setFontBold(TextRole role, bool bold)
{
  m_Texts[static_cast<int>(role)].bold = bold;
  applyText(role);
}

void VXChart::setFontItalic(TextRole role, bool italic)
{
  m_Texts[static_cast<int>(role)].italic = italic;
  applyText(role);
}

void VXChart::setFontColor(TextRole role, const QColor& color)
{
  m_Texts[static_cast<int>(role)].color = color;
  applyText(role);
}

// ---- Axes -----------------------------------------------------------------------------------------

void VXChart::applyAxisScale(Axis axis)
{
  const AxisSettings& settings = m_Axes[static_cast<int>(axis)];
  if (m_AutoScale[static_cast<int>(axis)])
  {
    m_Plot->setAxisAutoScale(PlotAxis(axis), true);
  }
  else
  {
    m_Plot->setAxisScale(PlotAxis(axis), settings.min, settings.max, settings.spacing);
  }
}

void VXChart::applyGrid()
{
  m_Plot->grid().setXMajorPen(plottaro::Pen{ToColor(m_Axes[0].gridColor), 1.0, Qt::SolidLine});
  m_Plot->grid().setYMajorPen(plottaro::Pen{ToColor(m_Axes[1].gridColor), 1.0, Qt::SolidLine});
  m_Plot->grid().enableX(m_Axes[0].gridLines);
  m_Plot->grid().enableY(m_Axes[1].gridLines);
}

void VXChart::applyAxis(Axis axis)
{
  const AxisSettings& settings = m_Axes[static_cast<int>(axis)];
  const int plotAxis = PlotAxis(axis);
  m_Plot->setAxisTicksVisible(plotAxis, settings.tickMarks);
  m_Plot->setAxisLabelOffset(plotAxis, settings.labelOffset);
  m_Plot->setAxisLabelRotation(plotAxis, settings.labelOrientation);
  applyGrid();
}

void VXChart::setAxisMin(Axis axis, double min)
{
  m_Axes[static_cast<int>(axis)].min = min;
  m_AutoScale[static_cast<int>(axis)] = false;
  applyAxisScale(axis);
  render();
}

void VXChart::setAxisMax(Axis axis, double max)
{
  m_Axes[static_cast<int>(axis)].max = max;
  m_AutoScale[static_cast<int>(axis)] = false;
  applyAxisScale(axis);
  render();
}

void VXChart::setAxisMajorGridSpacing(Axis axis, double spacing)
{
  m_Axes[static_cast<int>(axis)].spacing = spacing;
  m_AutoScale[static_cast<int>(axis)] = false;
  applyAxisScale(axis);
  render();
}

void VXChart::setAxisGridLines(Axis axis, bool on)
{
  m_Axes[static_cast<int>(axis)].gridLines = on;
  applyGrid();
  render();
}

void VXChart::setAxisGridLineColor(Axis axis, const QColor& color)
{
  m_Axes[static_cast<int>(axis)].gridColor = color;
  applyGrid();
  render();
}

void VXChart::setAxisTickMarks(Axis axis, bool on)
{
  m_Axes[static_cast<int>(axis)].tickMarks = on;
  applyAxis(axis);
  render();
}

void VXChart::setAxisLogScale(Axis axis, bool on)
{
  m_Axes[static_cast<int>(axis)].logScale = on;
  std::unique_ptr<plottaro::ScaleEngine> engine;
  if (on)
  {
    engine = std::make_unique<plottaro::LogScaleEngine>(10.0);
  }
  else
  {
    engine = std::make_unique<plottaro::LinearScaleEngine>(10.0);
  }
  m_Plot->setAxisScaleEngine(PlotAxis(axis), std::move(engine));
  recalculateBounds();
  reportHiddenValues();
  updatePlots();
  Q_EMIT axisMinMaxChanged();
}

void VXChart::setAxisNumberFormat(Axis axis, const QString& notation, int precision)
{
  AxisSettings& settings = m_Axes[static_cast<int>(axis)];
  settings.notation = notation;
  settings.precision = precision;
  std::string format;
  if (notation == ZRPreferences::k_ScientificNotation)
  {
    format = fmt::format("{{:.{}e}}", precision);
  }
  else if (notation == ZRPreferences::k_FixedNotation)
  {
    format = fmt::format("{{:.{}f}}", precision);
  }
  m_Plot->setAxisLabelFormat(PlotAxis(axis), format);
  render();
}

void VXChart::setAxisLabelOffset(Axis axis, int offset)
{
  m_Axes[static_cast<int>(axis)].labelOffset = offset;
  applyAxis(axis);
  render();
}

void VXChart::setAxisLabelOrientation(Axis axis, int degrees)
{
  m_Axes[static_cast<int>(axis)].labelOrientation = degrees;
  applyAxis(axis);
  render();
}

void VXChart::setTickLabels(Axis axis, const std::vector<float>& positions,
                            const std::vector<std::string>& labels)
{
  std::map<double, std::string> positioned;
  for (std::size_t i = 0; i < std::min(positions.size(), labels.size()); ++i)
  {
    positioned.emplace(static_cast<double>(positions[i]), labels[i]);
  }
  m_Plot->setAxisTickLabels(PlotAxis(axis), positioned);
  render();
}

void VXChart::setAxisLimits(Axis axis, float min, float max)
{
  AxisSettings& settings = m_Axes[static_cast<int>(axis)];
  settings.min = min;
  settings.max = max;
  m_AutoScale[static_cast<int>(axis)] = false;
  applyAxisScale(axis);
  render();
}

void VXChart::getBounds(double* bounds) const
{
  constexpr double k_Max = std::numeric_limits<double>::max();
  double xMin = k_Max;
  double xMax = -k_Max;
  double yMin = k_Max;
  double yMax = -k_Max;
  // A logarithmic axis has room only for values above zero.
  const bool xLog = m_Axes[0].logScale;
  const bool yLog = m_Axes[1].logScale;
  for (const auto& [name, values] : m_Values)
  {
    const bool isX = name == k_XSeriesName;
    double& low = isX ? xMin : yMin;
    double& high = isX ? xMax : yMax;
    const bool log = isX ? xLog : yLog;
    for (double value : values)
    {
      if (IsShownOn(log, value))
      {
        low = std::min(low, value);
        high = std::max(high, value);
      }
    }
  }
  for (const auto& entry : m_BinEdges)
  {
    for (double value : entry.second)
    {
      if (IsShownOn(xLog, value))
      {
        xMin = std::min(xMin, value);
        xMax = std::max(xMax, value);
      }
    }
  }
  if (xMin > xMax)
  {
    xMin = k_NoDataMin;
    xMax = k_NoDataMax;
  }
  if (yMin > yMax)
  {
    yMin = k_NoDataMin;
    yMax = k_NoDataMax;
  }
  bounds[0] = xMin;
  bounds[1] = xMax;
  bounds[2] = yMin;
  bounds[3] = yMax;
}

void VXChart::recalculateXSpacing()
{
  AxisSettings& settings = m_Axes[0];
  if (settings.spacing > 0.0 || !(settings.max - settings.min > 0.0))
  {
    return;
  }
  settings.spacing = (settings.max - settings.min) / 10.0;
}

void VXChart::recalculateYSpacing()
{
  AxisSettings& settings = m_Axes[1];
  if (settings.spacing > 0.0 || !(settings.max - settings.min > 0.0))
  {
    return;
  }
  settings.spacing = (settings.max - settings.min) / 10.0;
}

void VXChart::recalculateBounds()
{
  double bounds[4];
  getBounds(bounds);
  if (m_AutoScale[0])
  {
    m_Axes[0].min = bounds[0];
    m_Axes[0].max = bounds[1];
    recalculateXSpacing();
  }
  if (m_AutoScale[1])
  {
    m_Axes[1].min = bounds[2];
    m_Axes[1].max = bounds[3];
    recalculateYSpacing();
  }
}

void VXChart::resetXAxis()
{
  double bounds[4];
  getBounds(bounds);
  m_Axes[0].min = bounds[0];
  m_Axes[0].max = bounds[1];
  m_AutoScale[0] = true;
  m_Plot->setAxisAutoScale(k_PlotXAxis, true);
  recalculateXSpacing();
  render();
  Q_EMIT axisMinMaxChanged();
}

void VXChart::resetYAxis()
{
  double bounds[4];
  getBounds(bounds);
  m_Axes[1].min = bounds[2];
  m_Axes[1].max = bounds[3];
  m_AutoScale[1] = true;
  m_Plot->setAxisAutoScale(k_PlotYAxis, true);
  recalculateYSpacing();
  render();
  Q_EMIT axisMinMaxChanged();
}

// ---- Legend and background --------------------------------------------------------------------------

void VXChart::applyLegend()
{
  m_Plot->setLegendVisible(m_LegendVisible);
  m_Plot->legend().setIconWidth(m_LegendSymbolWidth);
  if (m_LegendLocation == k_CustomLegendLocation)
  {
    m_Plot->setLegendPosition(m_LegendPoint[0], m_LegendPoint[1]);
    return;
  }
  bool known = false;
  const plottaro::LegendPosition position = LegendPositionOf(m_LegendLocation, &known);
  m_Plot->setLegendPosition(position);
}

void VXChart::setLegendVisible(bool visible)
{
  m_LegendVisible = visible;
  applyLegend();
  render();
}

void VXChart::setLegendLocation(const QString& location)
{
  m_LegendLocation = location;
  applyLegend();
  render();
}

void VXChart::setLegendPoint(const float* point)
{
  m_LegendPoint = {point[0], point[1]};
  applyLegend();
  render();
}

void VXChart::setLegendSymbolWidth(int width)
{
  m_LegendSymbolWidth = width;
  applyLegend();
  render();
}

void VXChart::cacheCustomLegendLocation(const QString& location)
{
  m_LegendLocation = location;
}

void VXChart::syncLegendLocation(const QString& location)
{
  setLegendLocation(location);
}

void VXChart::setBackgroundColor(const QColor& color)
{
  m_BackgroundColor = color;
  m_Plot->setCanvasBackground(ToColor(color));
  m_Plot->setPlotBackground(ToColor(color));
  render();
}

// ---- Defaults -------------------------------------------------------------------------------------

void VXChart::resetProperties()
{
  const QColor fontColor = DefaultFontColor();
  m_Texts[static_cast<int>(TextRole::ChartTitle)] = {
      QStringLiteral("Chart Title"), QStringLiteral("Lato"), 32, true, false, fontColor};
  m_Texts[static_cast<int>(TextRole::XAxisTitle)] = {
      QStringLiteral("X Axis"), QStringLiteral("Lato"), 24, true, false, fontColor};
  m_Texts[static_cast<int>(TextRole::YAxisTitle)] = {
      QStringLiteral("Y Axis"), QStringLiteral("Lato"), 24, true, false, fontColor};
  m_Texts[static_cast<int>(TextRole::Legend)] = {QString(), QStringLiteral("Lato"), 16, true, false,
                                                 fontColor};
  m_Texts[static_cast<int>(TextRole::XAxisLabels)] = {QString(), QStringLiteral("Lato"), 16, false, false,
                                                      fontColor};
  m_Texts[static_cast<int>(TextRole::YAxisLabels)] = {QString(), QStringLiteral("Lato"), 16, false, false,
                                                      fontColor};
  for (int role = 0; role < k_TextRoleCount; ++role)
  {
    applyText(static_cast<TextRole>(role));
  }
  for (AxisSettings& settings : m_Axes)
  {
    const double min = settings.min;
    const double max = settings.max;
    const double spacing = settings.spacing;
    settings = AxisSettings{};
    settings.min = min;
    settings.max = max;
    settings.spacing = spacing;
  }
  m_LegendVisible = true;
  m_LegendLocation = ZRPreferences::k_DefaultLegendLocation;
  m_LegendSymbolWidth = 16;
  applyLegend();
  for (Axis axis : {Axis::X, Axis::Y})
  {
    m_Plot->setAxisScaleEngine(PlotAxis(axis), std::make_unique<plottaro::LinearScaleEngine>(10.0));
    setAxisNumberFormat(axis, ZRPreferences::k_AutoNotation, 3);
    applyAxis(axis);
  }
  render();
  Q_EMIT chartTitleFontColorReset(fontColor);
  Q_EMIT xAxisTitleFontColorReset(fontColor);
  Q_EMIT yAxisTitleFontColorReset(fontColor);
  Q_EMIT xAxisLabelFontColorReset(fontColor);
  Q_EMIT yAxisLabelFontColorReset(fontColor);
  Q_EMIT xAxisGridLineColorReset(DefaultGridColor());
  Q_EMIT yAxisGridLineColorReset(DefaultGridColor());
}

void VXChart::toggleMouseWheelZoom(bool on)
{
  m_View->setWheelZoomEnabled(on);
}

bool VXChart::hasXValues() const
{
  return m_Values.count(k_XSeriesName) > 0;
}

void VXChart::render()
{
  m_View->replot();
}

// ---- State ----------------------------------------------------------------------------------------

void VXChart::writeProperties(nlohmann::json& json) const
{
  for (int role = 0; role < k_TextRoleCount; ++role)
  {
    const TextStyle& style = m_Texts[static_cast<std::size_t>(role)];
    const std::string prefix = k_TextKeyPrefix[static_cast<std::size_t>(role)];
    const bool isTitle = role <= static_cast<int>(TextRole::YAxisTitle);
    if (isTitle)
    {
      json[prefix] = style.text.toStdString();
    }
    json[prefix + "_font_family"] = style.family.toStdString();
    json[prefix + "_font_size"] = style.size;
    json[prefix + "_font_bold"] = style.bold;
    json[prefix + "_font_italics"] = style.italic;
    if (role != static_cast<int>(TextRole::Legend))
    {
      json[prefix + "_font_color_r"] = style.color.red();
      json[prefix + "_font_color_g"] = style.color.green();
      json[prefix + "_font_color_b"] = style.color.blue();
    }
  }
  json["show_legend"] = m_LegendVisible;
  json["legend_position"] = m_LegendLocation.toStdString();
  json["legend_anchor_pt_x"] = m_LegendPoint[0];
  json["legend_anchor_pt_y"] = m_LegendPoint[1];
  json["legend_symbol_width"] = m_LegendSymbolWidth;
  for (int axis = 0; axis < 2; ++axis)
  {
    const AxisSettings& settings = m_Axes[static_cast<std::size_t>(axis)];
    const std::string prefix = axis == 0 ? "xaxis_" : "yaxis_";
    json[prefix + "min"] = settings.min;
    json[prefix + "max"] = settings.max;
    json[prefix + "spacing"] = settings.spacing;
    json[prefix + "show_gridlines"] = settings.gridLines;
    json[prefix + "grid_color_r"] = settings.gridColor.red();
    json[prefix + "grid_color_g"] = settings.gridColor.green();
    json[prefix + "grid_color_b"] = settings.gridColor.blue();
    json[prefix + "show_tick_marks"] = settings.tickMarks;
    json[prefix + "log_scale"] = settings.logScale;
    json[prefix + "number_format"] = settings.notation.toStdString();
    json[prefix + "number_precision"] = settings.precision;
    json[prefix + "label_offset"] = settings.labelOffset;
    json[prefix + "label_orientation"] = settings.labelOrientation;
  }
}

void VXChart::readProperties(const nlohmann::json& json)
{
  auto has = [&json](const std::string& key) { return json.contains(key) && !json.at(key).is_null(); };
  for (int role = 0; role < k_TextRoleCount; ++role)
  {
    const auto textRole = static_cast<TextRole>(role);
    const std::string prefix = k_TextKeyPrefix[static_cast<std::size_t>(role)];
    if (role <= static_cast<int>(TextRole::YAxisTitle) && has(prefix))
    {
      setText(textRole, QString::fromStdString(json.at(prefix).get<std::string>()));
    }
    if (has(prefix + "_font_family"))
    {
      setFontFamily(textRole, QString::fromStdString(json.at(prefix + "_font_family").get<std::string>()));
    }
    if (has(prefix + "_font_size"))
    {
      setFontSize(textRole, json.at(prefix + "_font_size").get<int>());
    }
    if (has(prefix + "_font_bold"))
    {
      setFontBold(textRole, json.at(prefix + "_font_bold").get<bool>());
    }
    if (has(prefix + "_font_italics"))
    {
      setFontItalic(textRole, json.at(prefix + "_font_italics").get<bool>());
    }
    if (has(prefix + "_font_color_r") && has(prefix + "_font_color_g") && has(prefix + "_font_color_b"))
    {
      setFontColor(textRole, QColor(json.at(prefix + "_font_color_r").get<int>(),
                                    json.at(prefix + "_font_color_g").get<int>(),
                                    json.at(prefix + "_font_color_b").get<int>()));
    }
  }
  if (has("show_legend"))
  {
    setLegendVisible(json.at("show_legend").get<bool>());
  }
  if (has("legend_anchor_pt_x") && has("legend_anchor_pt_y"))
  {
    m_LegendPoint = {json.at("legend_anchor_pt_x").get<float>(), json.at("legend_anchor_pt_y").get<float>()};
  }
  if (has("legend_symbol_width"))
  {
    m_LegendSymbolWidth = json.at("legend_symbol_width").get<int>();
  }
  if (has("legend_position"))
  {
    m_LegendLocation = QString::fromStdString(json.at("legend_position").get<std::string>());
  }
  applyLegend();
  for (Axis axis : {Axis::X, Axis::Y})
  {
    AxisSettings& settings = m_Axes[static_cast<int>(axis)];
    const std::string prefix = axis == Axis::X ? "xaxis_" : "yaxis_";
    bool userRange = false;
    if (has(prefix + "min"))
    {
      settings.min = json.at(prefix + "min").get<double>();
      userRange = true;
    }
    if (has(prefix + "max"))
    {
      settings.max = json.at(prefix + "max").get<double>();
      userRange = true;
    }
    if (has(prefix + "spacing"))
    {
      settings.spacing = json.at(prefix + "spacing").get<double>();
    }
    if (has(prefix + "show_gridlines"))
    {
      settings.gridLines = json.at(prefix + "show_gridlines").get<bool>();
    }
    if (has(prefix + "grid_color_r") && has(prefix + "grid_color_g") && has(prefix + "grid_color_b"))
    {
      settings.gridColor =
          QColor(json.at(prefix + "grid_color_r").get<int>(), json.at(prefix + "grid_color_g").get<int>(),
                 json.at(prefix + "grid_color_b").get<int>());
    }
    if (has(prefix + "show_tick_marks"))
    {
      settings.tickMarks = json.at(prefix + "show_tick_marks").get<bool>();
    }
    if (has(prefix + "label_offset"))
    {
      settings.labelOffset = json.at(prefix + "label_offset").get<int>();
    }
    if (has(prefix + "label_orientation"))
    {
      settings.labelOrientation = json.at(prefix + "label_orientation").get<int>();
    }
    if (has(prefix + "log_scale"))
    {
      settings.logScale = json.at(prefix + "log_scale").get<bool>();
      m_Plot->setAxisScaleEngine(PlotAxis(axis), settings.logScale
                                                     ? std::unique_ptr<plottaro::ScaleEngine>(
                                                           std::make_unique<plottaro::LogScaleEngine>(10.0))
                                                     : std::make_unique<plottaro::LinearScaleEngine>(10.0));
    }
    QString notation = settings.notation;
    int precision = settings.precision;
    if (has(prefix + "number_format"))
    {
      notation = QString::fromStdString(json.at(prefix + "number_format").get<std::string>());
    }
    if (has(prefix + "number_precision"))
    {
      precision = json.at(prefix + "number_precision").get<int>();
    }
    setAxisNumberFormat(axis, notation, precision);
    if (userRange)
    {
      m_AutoScale[static_cast<int>(axis)] = false;
      applyAxisScale(axis);
    }
    applyAxis(axis);
  }
  render();
}

void VXChart::writeSettings() const
{
  nlohmann::json json;
  writeProperties(json);
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_ChartPropertySettingsGroup);
  for (const auto& [key, value] : json.items())
  {
    // Data bounds are no default: they belong to the data of one chart.
    if (key.rfind("xaxis_m", 0) == 0 || key.rfind("yaxis_m", 0) == 0 || key == "xaxis_spacing" ||
        key == "yaxis_spacing")
    {
      continue;
    }
    settings.setValue(QString::fromStdString(key), QString::fromStdString(value.dump()));
  }
  settings.endGroup();
  settings.endGroup();
  settings.sync();
}

void VXChart::readSettings()
{
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_ChartPropertySettingsGroup);
  nlohmann::json json = nlohmann::json::object();
  for (const QString& key : settings.childKeys())
  {
    const std::string text = settings.value(key).toString().toStdString();
    nlohmann::json value = nlohmann::json::parse(text, nullptr, false);
    if (!value.is_discarded())
    {
      json[key.toStdString()] = value;
    }
  }
  settings.endGroup();
  settings.endGroup();
  if (!json.empty())
  {
    try
    {
      readProperties(json);
    }
    catch (const nlohmann::json::exception& error)
    {
      Q_EMIT printOutput(QStringLiteral("Could not read the default chart settings: %1")
                             .arg(QString::fromUtf8(error.what())));
    }
  }
}

void VXChart::ClearSettings()
{
  QtZRSettings settings;
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_ChartPropertySettingsGroup);
  settings.clearGroup();
  settings.sync();
}
