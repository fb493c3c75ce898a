#pragma once

#include "platform/ZRGridCell.h"
#include "platform/ZRPlatformExport.h"

#include <nlohmann/json_fwd.hpp>

#include <QList>
#include <QPointer>
#include <QWidget>

#include <vector>

/**
 * @brief A widget that tiles its area with child widgets in a table of rows and columns.
 *
 * Splitting a cell adds a column (addColumn, cells side by side) or a row (addRow) unless the cell
 * spans several; closing a cell gives its area to the neighbours on one side. Column and row
 * weights share out the space; the gaps between cells are separators the user can drag. One widget
 * is the active one. Subclasses make the widgets and react to what happens through the protected
 * virtual operations.
 */
class ZR_PLATFORM_EXPORT AbstractZRGridSplitterWidget : public QWidget
{
  Q_OBJECT

public:
  static constexpr int k_GridVersion = 1;
  /** @brief Width in pixels of the gap between two cells. */
  static constexpr int k_SeparatorWidth = 6;
  /** @brief No separator drag makes a column or row narrower than this. */
  static constexpr int k_MinimumCellSize = 40;

  explicit AbstractZRGridSplitterWidget(QWidget* parent = nullptr);
  ~AbstractZRGridSplitterWidget() override;

  /** @brief The widget becomes the only cell of the grid. */
  void setInitialWidget(QWidget* widget);

  QWidget* activeWidget() const;
  int widgetCount() const;
  /** @brief The cell widgets in row-major order of their top-left cells. */
  QList<QWidget*> allWidgets() const;

  int rowCount() const;
  int columnCount() const;
  const std::vector<double>& columnWeights() const;
  const std::vector<double>& rowWeights() const;
  /** @brief Top-left cell of the widget; false if the widget is not in the grid. */
  bool findWidget(const QWidget* widget, int& row, int& col) const;
  const ZRGridCell& cellAt(int row, int col) const;

  /** @brief Writes the grid record, with the state of each widget from saveWidgetState(). */
  void saveGridState(nlohmann::json& output) const;

public Q_SLOTS:
  void addRow(QWidget* widget);
  void addColumn(QWidget* widget);
  void closeCell(QWidget* widget);
  void markWidgetActive(QWidget* widget);
  void resetGrid();
  void updateAllClosable();
  void layoutChildren();
  void equalizeRowHeights();
  void equalizeColumnWidths();

protected:
  /** @brief A new widget for a split of the cell that holds source; null cancels the split. */
  virtual QWidget* createSplitWidget(QWidget* source) = 0;
  virtual void saveWidgetState(QWidget* widget, nlohmann::json& output) const = 0;
  virtual void loadWidgetState(const nlohmann::json& input, QWidget* widget) = 0;
  virtual void setWidgetClosable(QWidget* widget, bool closable) = 0;
  /** @brief Calls the widget's slot setActive(bool) when it has one. */
  virtual void setWidgetActive(QWidget* widget, bool active);
  virtual void onWidgetCreated(QWidget* source, QWidget* created);
  virtual void onWidgetClosing(QWidget* widget);
  virtual void onActiveWidgetChanged(QWidget* widget);
  /** @brief Ties a cell widget to the grid (subclasses call this first). */
  virtual void connectWidget(QWidget* widget);
  /** @brief Undoes connectWidget: the widget no longer talks to the grid. */
  void disconnectWidget(QWidget* widget);

  /** @brief Disconnects every widget, empties the table and the active pointer; returns the widgets. */
  QList<QWidget*> takeAllWidgets();
  /**
   * @brief Reads "grid_rows", "grid_cols", "col_widths", "row_heights" of a grid record and makes a
   * table of that size with default cells. Weights missing from the record are 1 / count.
   */
  void readGridGeometry(const nlohmann::json& input);

  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

  std::vector<std::vector<ZRGridCell>> m_Cells;
  std::vector<double> m_ColWidths;
  std::vector<double> m_RowHeights;
  QPointer<QWidget> m_ActiveWidget;

private:
  enum class Orientation
  {
    Columns,
    Rows
  };
  struct Separator
  {
    Orientation orientation = Orientation::Columns;
    int index = -1; // boundary before column/row index
  };

  void split(QWidget* widget, Orientation orientation);
  /** @brief Gives the area of the anchor at (row, col) to neighbours; false when no side fits. */
  bool absorbArea(int row, int col);
  void removeRedundantLines();
  void forgetWidget(QObject* widget);
  std::vector<int> linePositions(Orientation orientation) const;
  Separator separatorAt(const QPoint& pos) const;
  void dragSeparatorTo(const QPoint& pos);

  Separator m_Dragged;
  int m_DragStart = 0;
  std::vector<double> m_DragStartWeights;
};
