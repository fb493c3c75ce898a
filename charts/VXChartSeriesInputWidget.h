#pragma once

#include "charts/PlotProperties.h"
#include "data_bridge/zr_contract/DataPath.h"
#include "platform/plottaro/Color.h"

#include <nlohmann/json_fwd.hpp>

#include <QColor>
#include <QList>
#include <QString>
#include <QWidget>

#include <map>
#include <memory>
#include <string>
#include <vector>

class VXChart;
class VXSeriesOptionsWidget;
namespace zr::core
{
class DataStructure;
} // namespace zr::core

/**
 * @brief Base of the input panels of the four chart types: where a chart's series come from, their values
 * and their styles.
 */
class VXChartSeriesInputWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXChartSeriesInputWidget(QWidget* parent = nullptr);
  ~VXChartSeriesInputWidget() override;

  /** @brief Whether the chart's x values are numbers (else categories from getXAxisLabels()). */
  bool xAxisHasDoubles() const { return m_XAxisHasDoubles; }

  virtual void setDataStructure(const std::shared_ptr<const zr::core::DataStructure>& dataStructure) = 0;
  virtual std::vector<double> getXAxisValues() const = 0;
  virtual std::vector<std::string> getXAxisLabels() = 0;
  /** @brief Values of one series; empty, with a message, when they cannot be used. */
  virtual std::vector<double> getYAxisValues(const QString& seriesName) const = 0;
  /** @brief Values of every shown series that can be used. */
  virtual std::map<std::string, std::vector<double>> getYAxisValues() const = 0;
  virtual PlotProperties getSeriesPlotData(const QString& seriesName) const = 0;
  virtual std::map<std::string, PlotProperties> getSeriesPlotData() const = 0;
  virtual VXSeriesOptionsWidget* getCurrentSeriesOptionsWidget() const = 0;
  /** @brief Histogram bin edges of the series (empty for other panels). */
  virtual std::vector<double> getBinEdges() const { return {}; }
  virtual void saveState(nlohmann::json& json) const = 0;
  virtual void loadState(const nlohmann::json& json) = 0;
  /** @brief Draws every shown series on the chart afresh. */
  virtual void applyTo(VXChart& chart) = 0;

  /** @brief Colour and marker a new series starts with; advances the shared counters. */
  static std::pair<QColor, int> NextSeriesColorAndMarker();
  static void IncrementInitSeriesMarkerIndexes();
  static void ResetInitSeriesMarkerIndexes();

Q_SIGNALS:
  void seriesNameChanged(const QString& oldName, const QString& newName);
  void printOutput(const QString& message) const;
  void changeSeriesVisibility(const QString& seriesName, bool visible);
  /** @brief The series have changed: the names shown now, and the names that left. */
  void updateChart(const QList<QString>& shownSeries, const QList<QString>& removedSeries);
  void compSelectionChanged(const zr::core::DataPath& path, int component);
  void colorChanged(const QString& seriesName, const plottaro::Color& color);
  void pointMarkerChanged(const QString& seriesName, int marker);
  void pointSizeChanged(const QString& seriesName, int size);
  void lineStyleChanged(const QString& seriesName, int style);
  void lineThicknessChanged(const QString& seriesName, int thickness);

protected:
  mutable bool m_XAxisHasDoubles = true;
  static int m_InitialColorIndex;
  static int m_InitialMarkerIndex;
};
