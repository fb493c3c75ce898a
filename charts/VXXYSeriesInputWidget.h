#pragma once

#include "charts/VXChartSeriesInputWidget.h"

#include <map>
#include <utility>

class QCheckBox;
class QStackedWidget;
class VXChart;
class VXChartArrayInputWidget;
class VXChartMultiArrayInputWidget;

/**
 * @brief The input panel shared by scatter, line and bar charts: an x array, a list of y arrays whose
 * checked components become series, and a stack of series panels, one per (array, component).
 */
class VXXYSeriesInputWidget : public VXChartSeriesInputWidget
{
  Q_OBJECT

public:
  enum class Mode
  {
    Scatter,
    Line,
    Bar
  };

  explicit VXXYSeriesInputWidget(Mode mode, QWidget* parent = nullptr);
  ~VXXYSeriesInputWidget() override;

  Mode mode() const { return m_Mode; }
  VXChartArrayInputWidget* xInput() const { return m_XInput; }
  VXChartMultiArrayInputWidget* yInput() const { return m_YInput; }
  /** @brief Bar charts: the x values become the category labels. */
  void setUseXValuesAsCategories(bool use);

  void setDataStructure(const std::shared_ptr<const zr::core::DataStructure>& dataStructure) override;
  std::vector<double> getXAxisValues() const override;
  std::vector<std::string> getXAxisLabels() override;
  std::vector<double> getYAxisValues(const QString& seriesName) const override;
  std::map<std::string, std::vector<double>> getYAxisValues() const override;
  PlotProperties getSeriesPlotData(const QString& seriesName) const override;
  std::map<std::string, PlotProperties> getSeriesPlotData() const override;
  VXSeriesOptionsWidget* getCurrentSeriesOptionsWidget() const override;
  VXSeriesOptionsWidget* getSeriesOptionsWidget(const zr::core::DataPath& path, int component) const;
  void saveState(nlohmann::json& json) const override;
  void loadState(const nlohmann::json& json) override;

  /** @brief Draws every shown series on the chart, as the charting window does after a change. */
  void applyTo(VXChart& chart) override;

public Q_SLOTS:
  void onYAxisArraysChanged(const QList<zr::core::DataPath>& paths);
  void onXAxisArrayChanged(const zr::core::DataPath& path, int component);
  void swapSeriesWidget(const zr::core::DataPath& path, int component);
  void syncWidgetVisibilityToTable(const zr::core::DataPath& path, int component, bool visible);

private:
  using SeriesKey = std::pair<std::string, int>;

  VXSeriesOptionsWidget* createSeriesComponentOption(const zr::core::DataPath& path, int component,
                                                     std::size_t components);
  const std::pair<const SeriesKey, VXSeriesOptionsWidget*>* findSeries(const QString& seriesName) const;
  QList<QString> shownSeriesNames() const;
  std::size_t expectedValueCount() const;

  Mode m_Mode;
  VXChartArrayInputWidget* m_XInput = nullptr;
  VXChartMultiArrayInputWidget* m_YInput = nullptr;
  QCheckBox* m_CategoriesCheck = nullptr;
  QStackedWidget* m_SeriesStack = nullptr;
  std::shared_ptr<const zr::core::DataStructure> m_DataStructure;
  std::map<SeriesKey, VXSeriesOptionsWidget*> m_Series;
};
