#pragma once

#include "charts/VXChartingViewWidget.h"
#include "views/VXMoveOverlay.h"

#include <nlohmann/json_fwd.hpp>

#include <QPointer>
#include <QWidget>

#include <memory>

class QAction;
class QLabel;
class QSplitter;
class QScrollArea;
class ZRDataStructureWidget;
namespace zr::core
{
class DataStructure;
} // namespace zr::core

/**
 * @brief The charting window: the data's file, a view of chart tabs, and the pages of the current chart's
 * series inputs and properties. Its state is one JSON object that the host keeps beside its own.
 */
class VXChartingWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXChartingWidget(QWidget* parent = nullptr);
  ~VXChartingWidget() override;

  VXChartingViewWidget* activeView() const { return m_View; }
  /** @brief The views, depth first through the splitters. */
  QList<VXChartingViewWidget*> views() const;
  QSplitter* rootSplitter() const { return m_ViewSplitter; }
  void setActiveView(VXChartingViewWidget* view);
  /** @brief A new view beside view (right of it, or below it); it becomes the active one. */
  VXChartingViewWidget* splitView(VXChartingViewWidget* view, Qt::Orientation orientation);
  /** @brief Closes view and collapses its splitter; false for the last view. */
  bool closeView(VXChartingViewWidget* view);
  /** @brief Veils the other views: a click on one moves the chart of tab index there. */
  void beginMove(VXChartingViewWidget* source, int index);
  bool isMoving() const { return m_MoveSource != nullptr; }
  /** @brief Ends a move with its chart in target; false when no move waits. */
  bool moveTo(VXChartingViewWidget* target);
  /** @brief Esc: the chart stays where it was. */
  void cancelMove();
  QAction* cancelMoveAction() const { return m_CancelMoveAction; }
  /** @brief The tree arrays are dragged from onto the chart inputs. */
  ZRDataStructureWidget* dataStructureWidget() const { return m_Tree; }
  QString kestrixFilePath() const { return m_FilePath; }
  /** @brief Data from the host's pipeline, with the file it was saved to (may be empty). */
  void setDataStructure(const std::shared_ptr<const zr::core::DataStructure>& dataStructure,
                        const QString& filePath);
  /** @brief Reads a .kestrix file; false, with a message, when it cannot. */
  bool setDataStructure(const QString& filePath, bool quiet = false);

  void saveState(nlohmann::json& json) const;
  /** @brief false, with a message, for a state that cannot be followed; what was built stays. */
  bool loadState(const nlohmann::json& json);
  void showHideChartTypeInputs(bool show);

public Q_SLOTS:
  /** @brief Shows the series page and the properties page of the view's current tab. */
  void showCurrentChartPages();

Q_SIGNALS:
  void printOutput(const QString& message) const;
  void loadStateRequested(const QString& filePath);

protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  VXChartingViewWidget* makeView();
  void clearOverlays();

  QSplitter* m_ViewSplitter = nullptr;
  QPointer<VXChartingViewWidget> m_MoveSource;
  int m_MoveIndex = -1;
  QList<QPointer<VXMoveOverlay>> m_Overlays;
  QAction* m_CancelMoveAction = nullptr;
  QLabel* m_FileLabel = nullptr;
  ZRDataStructureWidget* m_Tree = nullptr;
  VXChartingViewWidget* m_View = nullptr;
  QScrollArea* m_SeriesPage = nullptr;
  QScrollArea* m_PropertiesPage = nullptr;
  QString m_FilePath;
  std::shared_ptr<const zr::core::DataStructure> m_DataStructure;
};
