#pragma once

#include "charts/VXChart.h"

#include <nlohmann/json_fwd.hpp>

#include <QPointer>
#include <QWidget>

#include <array>
#include <memory>

class QCheckBox;
class QComboBox;
class QSpinBox;
namespace Ui
{
class VXChartProperties;
}

/**
 * @brief The panel of one chart's properties: title, axis titles, legend and both axes. Each control
 * forwards to the chart's setter; the chart's values come back into the controls with signals blocked.
 */
class VXChartProperties : public QWidget
{
  Q_OBJECT

public:
  VXChartProperties(VXChart* chart, unsigned long number, QWidget* parent = nullptr);
  ~VXChartProperties() override;

  QString getChartName() const;
  unsigned long getChartNumber() const { return m_Number; }
  QString getLegendLocation() const;
  QString getChartTitle() const;
  VXChart* getChart() const { return m_Chart; }

  void setAxesMinMaxStepInputEnabled(bool enabled);
  void syncAxesValues();
  void resetAxesToUserData();
  void syncLegendLocation();
  void resetLegendLocation();
  void saveUserInputMinMax();
  void cacheCustomLegendLocation();
  /** @brief Shows every value of the chart in the controls. */
  void syncFromChart();

  void saveState(nlohmann::json& json) const;
  /** @brief Reads "chart_properties" when present; a missing key keeps the current value. */
  void loadState(const nlohmann::json& json);
  /** @brief Asks, then stores the chart's current properties as the defaults of new charts. */
  void askToSaveDefaultSettings();
  /** @brief Asks, then forgets the stored defaults and returns the chart to the built-in ones. */
  void askToResetDefaultSettings();
  void copySettings();
  void pasteSettings();
  void requestContextMenu(const QPoint& position);

Q_SIGNALS:
  void printOutput(const QString& message) const;

private:
  struct FontControls
  {
    QComboBox* family = nullptr;
    QSpinBox* size = nullptr;
    QCheckBox* bold = nullptr;
    QCheckBox* italic = nullptr;
  };

  void connectControls();
  void applyAxisRange(VXChart::Axis axis);

  std::unique_ptr<Ui::VXChartProperties> m_Ui;
  QPointer<VXChart> m_Chart;
  unsigned long m_Number = 1;
  std::array<FontControls, VXChart::k_TextRoleCount> m_Fonts;
  std::array<std::array<double, 3>, 2> m_UserMinMaxSpacing = {{{0.0, 1.0, 0.0}, {0.0, 1.0, 0.0}}};
};
