#pragma once

#include "data_bridge/zr_contract/DataStructure.h"

#include <nlohmann/json.hpp>

#include <QList>
#include <QPointer>
#include <QWidget>

#include <memory>

class QAction;
class QLabel;
class QMenu;
class QSplitter;
class QVBoxLayout;
class VXSpreadsheet;
class VXSpreadsheetOptions;
class VXSpreadsheetViewWidget;
class ZRDataStructureWidget;

namespace ZR
{
class IPipelineController;
}

/**
 * @brief The spreadsheet window: the data structure tree on one side, a splitter tree of tabbed
 * spreadsheet views in the middle, and the options panel of the active view's current spreadsheet on
 * the other side. It takes pipeline output and .kestrix files, and saves and restores its layout.
 */
class VXSpreadsheetWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXSpreadsheetWidget(QWidget* parent = nullptr);
  ~VXSpreadsheetWidget() override;

  /** @brief The output of a pipeline run. */
  void setDataStructure(ZR::IPipelineController* controller,
                        std::shared_ptr<zr::core::DataStructure> dataStructure);
  /** @brief A .kestrix file; other files are ignored. */
  void setDataStructure(const QString& path, bool fromFile);
  std::shared_ptr<zr::core::DataStructure> dataStructure() const;
  QString getKestrixFilePath() const;
  bool canSaveState() const;
  bool isEmpty() const;
  void showHideDataStructure(bool show);
  ZRDataStructureWidget* dataStructureWidget() const;

  void openSpreadsheetOptionsPage();
  void insertCurrentSpreadsheetOptionsPageLayoutItem();
  void removeSpreadsheetOptionsPageLayoutItem();
  VXSpreadsheetOptions* shownSpreadsheetOptions() const;
  void resetSpreadsheet();
  void setOverlayHintVisibility(bool visible);
  void setActiveView(VXSpreadsheetViewWidget* view);
  VXSpreadsheetViewWidget* activeView() const;
  QList<VXSpreadsheetViewWidget*> viewWidgets() const;
  QSplitter* rootSplitter() const;
  void connectViewWidget(VXSpreadsheetViewWidget* view);
  void connectSpreadsheet(VXSpreadsheet* spreadsheet);
  void viewWidgetClosed(VXSpreadsheetViewWidget* view);
  void closeSplitView(const QSplitter* splitter);
  void clearSplitViewState();
  /** @brief The menu of a view's tab bar at a point of the view. */
  QMenu* createContextMenu(VXSpreadsheetViewWidget* view, const QPoint& position);
  void requestContextMenu(VXSpreadsheetViewWidget* view, const QPoint& position);
  /** @brief Marks a tab of a view to move, and shows the overlay on every other view. */
  void startMovingSpreadsheet(VXSpreadsheetViewWidget* source, int tab);
  void cancelMove();
  QAction* cancelMoveAction() const;

  void saveState(nlohmann::json& json) const;
  /** @brief False, with a message, when the state could not be (fully) restored. */
  bool loadState(const nlohmann::json& json);
  void saveState(const QSplitter* splitter, nlohmann::json& json) const;
  QString loadState(const nlohmann::json& json, QSplitter* splitter);
  /** @brief Asks for a file and saves the window's state there. */
  bool saveState() const;
  bool saveState(const QString& filePath) const;
  bool loadState();
  bool loadState(const QString& filePath);

Q_SIGNALS:
  void printOutput(const QString& message) const;
  void loadStateRequested(const QString& filePath);

protected:
  void keyPressEvent(QKeyEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  VXSpreadsheetViewWidget* addFirstView();
  void updateViewsDataStructure();
  void updateAllClosable();
  void onStylesheetChanged();

  ZRDataStructureWidget* m_DataStructureWidget = nullptr;
  QLabel* m_ImportHintLabel = nullptr;
  QSplitter* m_MainSplitter = nullptr;
  QSplitter* m_ViewSplitter = nullptr;
  QWidget* m_OptionsPage = nullptr;
  QVBoxLayout* m_OptionsLayout = nullptr;
  QString m_KestrixFilePath;
  QString m_DataStructureId;
  std::shared_ptr<zr::core::DataStructure> m_DataStructure;
  QList<QPointer<VXSpreadsheetViewWidget>> m_ViewWidgets;
  QPointer<VXSpreadsheetViewWidget> m_ActiveView;
  QPointer<VXSpreadsheetViewWidget> m_MoveSource;
  QPointer<VXSpreadsheetOptions> m_ShownOptions;
  QPointer<VXSpreadsheetViewWidget> m_ShownOptionsOwner;
  QAction* m_CancelMoveAction = nullptr;
};
