#pragma once

#include "charts/PlotProperties.h"
#include "platform/plottaro/Color.h"
#include "platform/plottaro/Font.h"

#include <nlohmann/json_fwd.hpp>

#include <QColor>
#include <QString>
#include <QWidget>

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace plottaro
{
class Plot;
class PlotItem;
class PlottaroGraphicsView;
} // namespace plottaro

/**
 * @brief One 2D chart: the named series it shows, its title, axes and legend, drawn by a plottaro plot.
 * Series are kept sorted by name; the shared x values are kept under the name "X".
 */
class VXChart : public QWidget
{
  Q_OBJECT

public:
  enum class Axis : int
  {
    X = 0,
    Y = 1
  };
  /** @brief The six texts of a chart, each with its own font. */
  enum class TextRole : int
  {
    ChartTitle = 0,
    XAxisTitle,
    YAxisTitle,
    Legend,
    XAxisLabels,
    YAxisLabels
  };
  static constexpr int k_TextRoleCount = 6;
  /** @brief The plot's own axis numbers. */
  static constexpr int k_PlotXAxis = 2;
  static constexpr int k_PlotYAxis = 0;
  static inline const std::string k_XSeriesName = "X";
  static inline const QString k_CustomLegendLocation = QStringLiteral("Custom Inside (Drag)");

  struct TextStyle
  {
    QString text;
    QString family = QStringLiteral("Lato");
    int size = 16;
    bool bold = false;
    bool italic = false;
    QColor color = QColor(0, 0, 0, 255);
  };
  struct AxisSettings
  {
    double min = 0.0;
    double max = 1.0;
    double spacing = 0.0;
    bool gridLines = true;
    bool tickMarks = true;
    bool logScale = false;
    QString notation = QStringLiteral("Auto");
    int precision = 3;
    int labelOffset = 0;
    int labelOrientation = 0;
    QColor gridColor = QColor(242, 242, 242, 255);
  };

  explicit VXChart(QWidget* parent = nullptr);
  ~VXChart() override;

  static QColor DefaultFontColor() { return QColor(0, 0, 0, 255); }
  static QColor DefaultGridColor() { return QColor(242, 242, 242, 255); }
  /** @brief The legend locations offered to the user, the anchored one last. */
  static QStringList LegendLocations();

  // Series
  void addPlot(const std::string& name, const PlotProperties& props, const std::vector<double>& x,
               const std::vector<double>& y, bool render = true, bool clearFirst = true);
  void addPlot(const std::string& name, const PlotProperties& props,
               const std::vector<std::string>& categories, const std::vector<double>& y, bool render = true);
  /** @brief Against the indices 0 to n - 1. */
  void addPlot(const std::string& name, const PlotProperties& props, const std::vector<double>& y,
               bool render = true);
  void addPlots(const std::map<std::string, PlotProperties>& props, const std::vector<double>& x,
                const std::map<std::string, std::vector<double>>& values, bool render = true);
  void addPlots(const std::map<std::string, PlotProperties>& props,
                const std::vector<std::string>& categories,
                const std::map<std::string, std::vector<double>>& values, bool render = true);
  /** @brief A histogram series: edges has one entry more than counts. */
  void addHistogram(const std::string& name, const PlotProperties& props, const std::vector<double>& edges,
                    const std::vector<double>& counts, bool render = true);
  void removePlot(const std::string& name);
  void renamePlotSeries(const std::string& oldName, const std::string& newName);
  void clearPlots();
  void rebuildPlotItems();
  void updatePlot(const std::string& name);
  void updatePlots();
  void applyPlotItemStyle(const std::string& name, const PlotProperties& props);
  std::vector<std::string> seriesNames() const;
  bool hasSeries(const std::string& name) const;
  PlotProperties getPlotProperties(const std::string& name) const;
  /** @brief The values of a series, or the shared x values under "X". */
  std::vector<double> getSeriesValues(const std::string& name) const;
  const std::vector<std::string>& getCategories() const { return m_Categories; }
  /** @brief Histogram bin edges of a series (empty for other kinds). */
  std::vector<double> getBinEdges(const std::string& name) const;

  void setPlotVisibility(const std::string& name, bool visible);
  bool getPlotVisibility(const std::string& name) const;
  void setColor(const std::string& name, const plottaro::Color& color);
  plottaro::Color getColor(const std::string& name) const;
  void setLineStyle(const std::string& name, int style);
  int getLineStyle(const std::string& name) const;
  void setPointMarker(const std::string& name, int marker);
  int getPointMarker(const std::string& name) const;
  void setLineThickness(const std::string& name, int thickness);
  int getLineThickness(const std::string& name) const;
  void setPointSize(const std::string& name, int size);
  int getPointSize(const std::string& name) const;

  // Texts
  void setText(TextRole role, const QString& text);
  void setFontFamily(TextRole role, const QString& family);
  void setFontSize(TextRole role, int size);
  void setFontBold(TextRole role, bool bold);
  void setFontItalic(TextRole role, bool italic);
  void setFontColor(TextRole role, const QColor& color);
  const TextStyle& getTextStyle(TextRole role) const { return m_Texts[static_cast<int>(role)]; }
  void setChartTitle(const QString& title) { setText(TextRole::ChartTitle, title); }
  QString getChartTitle() const { return getTextStyle(TextRole::ChartTitle).text; }
  void setXAxisTitle(const QString& title) { setText(TextRole::XAxisTitle, title); }
  void setYAxisTitle(const QString& title) { setText(TextRole::YAxisTitle, title); }

  // Axes
  const AxisSettings& getAxisSettings(Axis axis) const { return m_Axes[static_cast<int>(axis)]; }
  void setAxisMin(Axis axis, double min);
  void setAxisMax(Axis axis, double max);
  void setAxisMajorGridSpacing(Axis axis, double spacing);
  void setAxisGridLines(Axis axis, bool on);
  void setAxisGridLineColor(Axis axis, const QColor& color);
  void setAxisTickMarks(Axis axis, bool on);
  void setAxisLogScale(Axis axis, bool on);
  void setAxisNumberFormat(Axis axis, const QString& notation, int precision);
  void setAxisLabelOffset(Axis axis, int offset);
  void setAxisLabelOrientation(Axis axis, int degrees);
  void setXAxisMin(double min) { setAxisMin(Axis::X, min); }
  void setXAxisMax(double max) { setAxisMax(Axis::X, max); }
  void setXAxisMajorGridSpacing(double spacing) { setAxisMajorGridSpacing(Axis::X, spacing); }
  void setYAxisMin(double min) { setAxisMin(Axis::Y, min); }
  void setYAxisMax(double max) { setAxisMax(Axis::Y, max); }
  void setYAxisMajorGridSpacing(double spacing) { setAxisMajorGridSpacing(Axis::Y, spacing); }
  void setXAxisLogScale(bool on) { setAxisLogScale(Axis::X, on); }
  void setYAxisLogScale(bool on) { setAxisLogScale(Axis::Y, on); }
  void setXAxisNumberFormat(const QString& notation, int precision)
  {
    setAxisNumberFormat(Axis::X, notation, precision);
  }
  void setYAxisNumberFormat(const QString& notation, int precision)
  {
    setAxisNumberFormat(Axis::Y, notation, precision);
  }
  void setTickLabels(Axis axis, const std::vector<float>& positions, const std::vector<std::string>& labels);
  void setAxisLimits(Axis axis, float min, float max);
  /** @brief xmin, xmax, ymin, ymax of the data; a side without data gets 0 and 1. */
  void getBounds(double* bounds) const;
  void recalculateXSpacing();
  void recalculateYSpacing();
  void recalculateBounds();
  void resetXAxis();
  void resetYAxis();

  // Legend and background
  void setLegendVisible(bool visible);
  bool getLegendVisible() const { return m_LegendVisible; }
  void setLegendLocation(const QString& location);
  QString getLegendLocation() const { return m_LegendLocation; }
  void setLegendPoint(const float* point);
  std::array<float, 2> getLegendPoint() const { return m_LegendPoint; }
  void setLegendSymbolWidth(int width);
  int getLegendSymbolWidth() const { return m_LegendSymbolWidth; }
  void cacheCustomLegendLocation(const QString& location);
  void syncLegendLocation(const QString& location);
  void setBackgroundColor(const QColor& color);
  QColor getBackgroundColor() const { return m_BackgroundColor; }

  void resetProperties();
  void toggleMouseWheelZoom(bool on);
  bool hasXValues() const;
  std::shared_ptr<plottaro::Plot> getPlot() const { return m_Plot; }
  plottaro::PlottaroGraphicsView* getView() const { return m_View; }
  plottaro::Font buildFont(const QString& family, int size, bool bold, bool italic) const;
  /** @brief The file of a font family and style, "" for an unknown family. */
  static QString GetFontFileName(const QString& family, bool bold, bool italic);
  /** @brief A path to the font file on this machine, or "" when there is none. */
  static QString GetFontFile(const QString& fileName);
  /** @brief Redraws the view (a chart off screen renders on export only). */
  void render();

  /** @brief Every property under its state key (the chart's part of "chart_properties"). */
  void writeProperties(nlohmann::json& json) const;
  /** @brief Applies each key that is present through its setter. */
  void readProperties(const nlohmann::json& json);
  void readSettings();
  void writeSettings() const;
  void saveDefaultSettings() const { writeSettings(); }
  /** @brief Forgets the stored defaults of new charts. */
  static void ClearSettings();

Q_SIGNALS:
  void clicked();
  void axisMinMaxChanged();
  void chartTitleFontFamilyChanged(const QString& family);
  void xAxisFontFamilyChanged(const QString& family);
  void yAxisFontFamilyChanged(const QString& family);
  void legendFontFamilyChanged(const QString& family);
  void xAxisLabelFontFamilyChanged(const QString& family);
  void yAxisLabelFontFamilyChanged(const QString& family);
  void printOutput(const QString& message) const;
  void chartTitleFontColorReset(const QColor& color);
  void xAxisTitleFontColorReset(const QColor& color);
  void yAxisTitleFontColorReset(const QColor& color);
  void xAxisLabelFontColorReset(const QColor& color);
  void yAxisLabelFontColorReset(const QColor& color);
  void xAxisGridLineColorReset(const QColor& color);
  void yAxisGridLineColorReset(const QColor& color);

private:
  struct Series
  {
    PlotProperties props;
    std::shared_ptr<plottaro::PlotItem> item;
  };

  void storeSeries(const std::string& name, const PlotProperties& props, std::vector<double> values);
  std::shared_ptr<plottaro::PlotItem> createItem(const std::string& name) const;
  void applyText(TextRole role);
  void applyAxis(Axis axis);
  void applyAxisScale(Axis axis);
  void applyLegend();
  void applyGrid();
  void reportHiddenValues() const;
  void emitFontFamilyChanged(TextRole role, const QString& family);
  static int PlotAxis(Axis axis) { return axis == Axis::X ? k_PlotXAxis : k_PlotYAxis; }

  std::shared_ptr<plottaro::Plot> m_Plot;
  plottaro::PlottaroGraphicsView* m_View = nullptr;
  std::map<std::string, Series> m_Series;
  std::map<std::string, std::vector<double>> m_Values;
  std::map<std::string, std::vector<double>> m_BinEdges;
  std::vector<std::string> m_Categories;
  std::array<TextStyle, k_TextRoleCount> m_Texts;
  std::array<AxisSettings, 2> m_Axes;
  std::array<bool, 2> m_AutoScale = {true, true};
  bool m_LegendVisible = true;
  QString m_LegendLocation;
  std::array<float, 2> m_LegendPoint = {0.7f, 0.05f};
  int m_LegendSymbolWidth = 16;
  QColor m_BackgroundColor = Qt::white;
};
