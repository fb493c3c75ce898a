#pragma once

#include "charts/VXChartSeriesInputWidget.h"

class VXChart;
class VXChartArrayInputWidget;
class VXHistogramSeriesOptionsWidget;

/**
 * @brief The input panel of a histogram: one array and its component, binned by the options of its one
 * series. The bins are cached and recomputed when the array, the bin count or the range changes.
 */
class VXHistogramSeriesInputWidget : public VXChartSeriesInputWidget
{
  Q_OBJECT

public:
  explicit VXHistogramSeriesInputWidget(QWidget* parent = nullptr);
  ~VXHistogramSeriesInputWidget() override;

  VXChartArrayInputWidget* input() const { return m_Input; }
  VXHistogramSeriesOptionsWidget* options() const { return m_Options; }
  QString seriesName() const;

  /** @brief Bins the array anew; false (with messages) when it cannot. */
  bool calculateHistogram();

  void setDataStructure(const std::shared_ptr<const zr::core::DataStructure>& dataStructure) override;
  /** @brief The bins' minimums or maximums, as "Bin Value" chooses. */
  std::vector<double> getXAxisValues() const override;
  std::vector<std::string> getXAxisLabels() override;
  std::vector<double> getYAxisValues(const QString& seriesName) const override;
  std::map<std::string, std::vector<double>> getYAxisValues() const override;
  PlotProperties getSeriesPlotData(const QString& seriesName) const override;
  std::map<std::string, PlotProperties> getSeriesPlotData() const override;
  VXSeriesOptionsWidget* getCurrentSeriesOptionsWidget() const override;
  std::vector<double> getBinEdges() const override;
  void saveState(nlohmann::json& json) const override;
  void loadState(const nlohmann::json& json) override;

  void applyTo(VXChart& chart) override;

public Q_SLOTS:
  void onXAxisArrayChanged(const zr::core::DataPath& path, int component);

private:
  void recompute();

  VXChartArrayInputWidget* m_Input = nullptr;
  VXHistogramSeriesOptionsWidget* m_Options = nullptr;
  std::vector<double> m_CachedCounts;
  std::vector<double> m_CachedRangeMin;
  std::vector<double> m_CachedRangeMax;
  std::vector<std::string> m_CachedMinLabels;
  std::vector<std::string> m_CachedMaxLabels;
};
