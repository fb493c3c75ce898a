#pragma once

#include <nlohmann/json_fwd.hpp>

#include <QFrame>

/** @brief The page of an empty chart tab: one button for each chart type. */
class VXChartTypeSelector : public QFrame
{
  Q_OBJECT

public:
  enum class ChartType : int
  {
    Scatter = 0,
    Line = 1,
    Bar = 2,
    Histogram = 3
  };

  explicit VXChartTypeSelector(QWidget* parent = nullptr);
  ~VXChartTypeSelector() override;

  static QString IconName(ChartType type);
  void saveState(nlohmann::json& json) const;
  void loadState(const nlohmann::json& json);
  bool hasChosen() const { return m_Chosen; }
  ChartType chosenType() const { return m_Type; }

Q_SIGNALS:
  void chartTypeSelected(VXChartTypeSelector::ChartType type);
  void printOutput(const QString& message) const;

private:
  ChartType m_Type = ChartType::Scatter;
  bool m_Chosen = false;
};
