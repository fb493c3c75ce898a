#pragma once

#include "spreadsheets/VXSpreadsheetTypeSelector.h"

#include "data_bridge/zr_contract/DataPath.h"

#include <nlohmann/json.hpp>

#include <QFrame>
#include <QMap>
#include <QPointer>

#include <vector>

class QAction;
class QMenu;
class QSplitter;
class QTabWidget;
class VXMoveOverlay;
class VXSpreadsheet;
class VXSpreadsheetOptions;
class ZRDataStructureModel;

/**
 * @brief One leaf of the spreadsheet window's splitter tree: a tab bar whose tabs hold a spreadsheet
 * (with its options panel, shown beside the splitter while the tab is current) or, while empty, the
 * type selector. Tabs can be reordered, closed, and moved to another view.
 */
class VXSpreadsheetViewWidget : public QFrame
{
  Q_OBJECT

public:
  using SpreadsheetType = VXSpreadsheetTypeSelector::SpreadsheetType;

  explicit VXSpreadsheetViewWidget(QWidget* parent = nullptr);
  ~VXSpreadsheetViewWidget() override;

  VXSpreadsheet* getActiveSpreadsheet() const;
  VXSpreadsheetOptions* getActiveSpreadsheetOptions() const;
  int getActiveTabIndex() const;
  int tabCount() const;
  QTabWidget* tabWidget() const;
  VXSpreadsheetTypeSelector* selectorAt(int tab) const;
  VXSpreadsheet* spreadsheetAt(int tab) const;
  VXSpreadsheetOptions* optionsAt(int tab) const;
  /** @brief The tab under a point of this widget, or -1. */
  int tabAt(const QPoint& position) const;
  bool isActive() const;
  void setActive(bool active);
  /** @brief True when no tab holds a spreadsheet. */
  bool isEmpty() const;
  /** @brief False for the last view of the window. */
  bool isClosable() const;
  void updateClosable();
  QAction* closeViewAction() const;
  QAction* moveSpreadsheetAction() const;
  QMenu* addSpreadsheetMenu() const;

  void closeView();
  /** @brief Asks, then closes the tab. */
  void closeTab(int index);
  /** @brief Closes the tab without asking. */
  void removeTab(int index);
  void addTabButtonClicked();
  void onCurrentTabChanged(int index);
  void onTabMoved(int from, int to);
  void clearSpreadsheets();
  unsigned long generateNextSpreadsheetIndex();
  const std::vector<unsigned long>& usedSpreadsheetNumbers() const;
  void onSpreadsheetTypeSelected(const SpreadsheetType& type, std::vector<zr::core::DataPath> paths);
  /** @brief Takes tab number tab of source into this view. */
  void moveSpreadsheet(VXSpreadsheetViewWidget* source, int tab);
  void replaceSpreadsheetToolTip(QPointer<VXSpreadsheetOptions> options, QString toolTip);
  void setDataStructure(const QString& id, QPointer<ZRDataStructureModel> model);
  void setKestrixFilePath(const QString& path);
  QString getKestrixFilePath() const;
  ZRDataStructureModel* getDataStructureModel() const;
  QSplitter* splitWidget(Qt::Orientation orientation);
  void splitVertically();
  void splitHorizontally();
  /** @brief A fresh view over the same data structure, with one selector tab. */
  VXSpreadsheetViewWidget* newInstance() const;
  /** @brief The first view below a splitter, depth first. */
  static VXSpreadsheetViewWidget* FindViewWidget(QSplitter* splitter);
  void setOverlayHintVisibility(bool visible);
  bool isOverlayVisible() const;
  void setAsSourceWidget();
  void setSourceTab(const QPoint& position);
  void setSourceTab(int tab);
  int sourceTab() const;
  bool isSourceWidget() const;
  void clearSourceWidget();

  void saveState(nlohmann::json& json) const;
  void loadState(const nlohmann::json& json);

Q_SIGNALS:
  void mousePressed();
  void viewWidgetClosed();
  void viewWidgetCreated(VXSpreadsheetViewWidget* view);
  void spreadsheetCreated(VXSpreadsheet* spreadsheet);
  void currentPanelChanged();
  void contextMenuRequested(const QPoint& position);
  void moveRequested();
  void overlayClicked();
  void printOutput(const QString& message) const;

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

private:
  VXSpreadsheetTypeSelector* addSelectorTab();
  VXSpreadsheetOptions* addSpreadsheetTab(int index, SpreadsheetType type, unsigned long number);
  void connectSpreadsheetSignals(VXSpreadsheet* spreadsheet, VXSpreadsheetOptions* options);
  void releaseSpreadsheetIndex(unsigned long number);
  void shiftMapsDown(int removed);

  QTabWidget* m_TabWidget = nullptr;
  QMap<int, QPointer<VXSpreadsheetTypeSelector>> m_Selectors;
  QMap<int, QPointer<VXSpreadsheet>> m_Spreadsheets;
  QMap<int, QPointer<VXSpreadsheetOptions>> m_Options;
  std::vector<unsigned long> m_UsedNumbers;
  bool m_Active = false;
  bool m_SourceWidget = false;
  int m_SourceTab = -1;
  VXMoveOverlay* m_Overlay = nullptr;
  QAction* m_CloseViewAction = nullptr;
  QAction* m_ToThisViewAction = nullptr;
  QAction* m_NextToAction = nullptr;
  QAction* m_UnderneathAction = nullptr;
  QAction* m_MoveAction = nullptr;
  QMenu* m_AddMenu = nullptr;
  QString m_DataStructureId;
  QPointer<ZRDataStructureModel> m_Model;
  QString m_KestrixFilePath;
};
