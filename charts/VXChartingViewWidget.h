#pragma once

#include "charts/VXChartTypeSelector.h"

#include <nlohmann/json_fwd.hpp>

#include <QFrame>
#include <QHash>
#include <QPointer>

#include <memory>
#include <vector>

class QTabWidget;
class VXChart;
class VXChartProperties;
class VXChartSeriesInputWidget;
namespace zr::core
{
class DataStructure;
} // namespace zr::core

/**
 * @brief One view of the charting window: a tab bar of charts. An empty tab offers the four chart types;
 * each chart has its series input panel and its properties panel.
 */
class VXChartingViewWidget : public QFrame
{
  Q_OBJECT

public:
  explicit VXChartingViewWidget(QWidget* parent = nullptr);
  ~VXChartingViewWidget() override;

  QTabWidget* tabs() const { return m_Tabs; }
  VXChart* chartAt(int index) const;
  VXChartSeriesInputWidget* inputAt(int index) const;
  VXChartProperties* propertiesAt(int index) const;
  VXChartTypeSelector* selectorAt(int index) const;
  void setDataStructure(const std::shared_ptr<const zr::core::DataStructure>& dataStructure);
  void setActive(bool active);
  bool isActive() const { return m_Active; }
  /** @brief Closing a tab asks first unless this is off (scripts, tests). */
  void setConfirmClose(bool confirm) { m_ConfirmClose = confirm; }
  /** @brief Redraws the chart of a tab from its input panel. */
  void resetChart(int index);

  void saveState(nlohmann::json& json) const;
  /** @brief Rebuilds the tabs from a saved view; false, with a message, when it cannot. */
  bool loadState(const nlohmann::json& json);
  /** @brief One tab's chart type, series inputs and properties, as moving a chart to another view needs. */
  void saveTab(int index, nlohmann::json& tab) const;
  /** @brief Adds a tab rebuilt from saveTab's object and shows it; returns its index. */
  int appendTab(const nlohmann::json& tab);
  /** @brief Closes the tab without asking. */
  void removeTab(int index);

public Q_SLOTS:
  void addTabButtonClicked();
  void onChartTypeSelected(const VXChartTypeSelector::ChartType& type);
  void closeTab(int index);
  /** @brief The chart actions: reset axes, background, export, copy as a picture. */
  void requestContextMenu(int index, const QPoint& position);

Q_SIGNALS:
  void printOutput(const QString& message) const;
  /** @brief The tab shown changed, or its chart was made: its panels should be shown. */
  void currentChartChanged(int index);
  /** @brief The user clicked this view: it should become the active one. */
  void activationRequested();
  /** @brief The context menu's view actions, carried out by the window that holds the views. */
  void splitRequested(Qt::Orientation orientation);
  void moveRequested(int index);
  void closeViewRequested();

protected:
  void mousePressEvent(QMouseEvent* event) override;

private:
  struct Entry
  {
    QPointer<VXChartTypeSelector> selector;
    QPointer<VXChart> chart;
    QPointer<VXChartSeriesInputWidget> input;
    QPointer<VXChartProperties> properties;
  };

  int createChart(int index, VXChartTypeSelector::ChartType type, unsigned long number);
  unsigned long nextChartNumber();
  void releaseChartNumber(unsigned long number);
  Entry entryAt(int index) const;
  void loadTab(int index, const nlohmann::json& selectorJson, const nlohmann::json& inputJson,
               const nlohmann::json& properties);

  QTabWidget* m_Tabs = nullptr;
  QHash<QWidget*, Entry> m_Entries; // by tab page: indices follow the tabs when they move
  std::vector<unsigned long> m_UsedNumbers;
  std::shared_ptr<const zr::core::DataStructure> m_DataStructure;
  bool m_Active = false;
  bool m_ConfirmClose = true;
};
