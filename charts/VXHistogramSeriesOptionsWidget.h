#pragma once

#include "charts/VXSeriesOptionsWidget.h"

#include <utility>

namespace Ui
{
class VXHistogramSeriesOptions;
}

/** @brief Options of a histogram series: bin count, which edge places a bin, and an optional custom range. */
class VXHistogramSeriesOptionsWidget : public VXSeriesOptionsWidget
{
  Q_OBJECT

public:
  /** @brief Values of "Bin Value : ": a bin is placed at its minimum or at its maximum. */
  enum BinRangeValue : int
  {
    BinMinimum = 0,
    BinMaximum = 1
  };
  static constexpr int k_DefaultBinCount = 10;

  explicit VXHistogramSeriesOptionsWidget(const QString& seriesName, QWidget* parent = nullptr);
  ~VXHistogramSeriesOptionsWidget() override;

  bool useCustomBinRanges() const;
  void setUseCustomBinRanges(bool use);
  /** @brief Fills both fields without emitting. */
  void setCustomRanges(double min, double max);
  std::pair<double, double> getCustomRanges() const;
  int getBinCount() const;
  void setBinCount(int count);
  int getBinRangeValue() const;
  void setBinRangeValue(int value);

  void resetProperties() override;

public Q_SLOTS:
  void onMinBinRangeEdited();
  void onMaxBinRangeEdited();
  void onCustomBinRangesChanged(double min, double max);

Q_SIGNALS:
  void inputsChanged();
  void binRangeValueChanged(const QString& seriesName);
  void binCountChanged(const QString& seriesName, int count);
  void useCustomRangesChanged(const QString& seriesName, bool use);
  void customBinRangesChanged(const QString& seriesName, double min, double max);

protected:
  void writeStyle(nlohmann::json& json) const override;
  void readStyle(const nlohmann::json& json) override;

private:
  std::unique_ptr<Ui::VXHistogramSeriesOptions> m_Ui;
};
