#include "views/VXViewGridWidget.h"

#include "views/VXViewWidget.h"

#include <nlohmann/json.hpp>

#include <QChildEvent>
#include <QTimer>

#include <algorithm>

VXViewGridWidget::VXViewGridWidget(QWidget* parent)
    : AbstractZRGridSplitterWidget(parent)
{
  auto* first = new VXViewWidget(this);
  first->show();
  setInitialWidget(first);
}

VXViewGridWidget::~VXViewGridWidget() = default;

QSize VXViewGridWidget::minimumViewSize()
{
  return {120, 120};
}

QSize VXViewGridWidget::minimumSizeHint() const
{
  const QSize view = minimumViewSize();
  const int columns = std::max(1, columnCount());
  const int rows = std::max(1, rowCount());
  return {columns * view.width() + (columns - 1) * k_SeparatorWidth,
          rows * view.height() + (rows - 1) * k_SeparatorWidth};
}

void VXViewGridWidget::childEvent(QChildEvent* event)
{
  AbstractZRGridSplitterWidget::childEvent(event);
  if (event->type() == QEvent::ChildAdded || event->type() == QEvent::ChildRemoved)
  {
    // The cell table changes after the child comes or goes; the layouts above learn the new minimum
    // once it has.
    QTimer::singleShot(0, this, &QWidget::updateGeometry);
  }
}

VXAbstractViewWidget* VXViewGridWidget::activeView() const
{
  return qobject_cast<VXAbstractViewWidget*>(activeWidget());
}

int VXViewGridWidget::viewCount() const
{
  return widgetCount();
}

QList<VXAbstractViewWidget*> VXViewGridWidget::allViews() const
{
  QList<VXAbstractViewWidget*> views;
  for (QWidget* widget : allWidgets())
  {
    views.push_back(qobject_cast<VXAbstractViewWidget*>(widget));
  }
  return views;
}

void VXViewGridWidget::saveState(nlohmann::json& output) const
{
  saveGridState(output);
}

void VXViewGridWidget::reset()
{
  resetGrid();
}

QWidget* VXViewGridWidget::createSplitWidget(QWidget* source)
{
  auto* view = qobject_cast<VXAbstractViewWidget*>(source);
  return view != nullptr ? view->clone() : nullptr;
}

void VXViewGridWidget::saveWidgetState(QWidget* widget, nlohmann::json& output) const
{
  if (auto* view = qobject_cast<VXAbstractViewWidget*>(widget))
  {
    view->saveState(output);
  }
}

void VXViewGridWidget::loadWidgetState(const nlohmann::json& input, QWidget* widget)
{
  if (auto* view = qobject_cast<VXAbstractViewWidget*>(widget))
  {
    view->loadState(input);
  }
}

void VXViewGridWidget::setWidgetClosable(QWidget* widget, bool closable)
{
  if (auto* view = qobject_cast<VXAbstractViewWidget*>(widget))
  {
    view->setClosable(closable);
  }
}

void VXViewGridWidget::onWidgetCreated(QWidget* source, QWidget* created)
{
  auto* sourceView = qobject_cast<VXAbstractViewWidget*>(source);
  auto* createdView = qobject_cast<VXAbstractViewWidget*>(created);
  if (sourceView != nullptr)
  {
    sourceView->notifyViewWidgetCreated(createdView);
  }
  Q_EMIT viewCreated(createdView);
}

void VXViewGridWidget::onWidgetClosing(QWidget* widget)
{
  auto* view = qobject_cast<VXAbstractViewWidget*>(widget);
  if (view != nullptr)
  {
    view->notifyClosingView();
  }
  Q_EMIT viewClosed(view);
}

void VXViewGridWidget::onActiveWidgetChanged(QWidget* widget)
{
  Q_EMIT activeViewChanged(qobject_cast<VXAbstractViewWidget*>(widget));
}

void VXViewGridWidget::connectWidget(QWidget* widget)
{
  AbstractZRGridSplitterWidget::connectWidget(widget);
  auto* view = qobject_cast<VXAbstractViewWidget*>(widget);
  if (view == nullptr)
  {
    return;
  }
  connect(view, &VXAbstractViewWidget::requestSplitHorizontally, this, &VXViewGridWidget::addColumn,
          Qt::UniqueConnection);
  connect(view, &VXAbstractViewWidget::requestSplitVertically, this, &VXViewGridWidget::addRow,
          Qt::UniqueConnection);
  connect(view, &VXAbstractViewWidget::requestClose, this, &VXViewGridWidget::closeCell,
          Qt::UniqueConnection);
  connect(view, &VXAbstractViewWidget::markActive, this, [this](QWidget* self) { markWidgetActive(self); });
}

void VXViewGridWidget::placeWidget(int row, int col, VXViewWidget* view)
{
  view->setParent(this);
  connectWidget(view);
  m_Cells[row][col].widget = view;
  view->show();
}

void VXViewGridWidget::placeAlone(VXViewWidget* view)
{
  m_Cells = {{ZRGridCell{}}};
  m_ColWidths = {1.0};
  m_RowHeights = {1.0};
  placeWidget(0, 0, view);
}

void VXViewGridWidget::loadState(const nlohmann::json& input, VXViewWidget* existing)
{
  if (existing == nullptr)
  {
    return;
  }
  if (!input.is_object() || !input.contains("grid_version"))
  {
    loadLegacyState(input, existing);
    return;
  }
  for (QWidget* widget : takeAllWidgets())
  {
    if (widget != existing)
    {
      widget->hide();
      widget->deleteLater();
    }
  }
  try
  {
    loadGridRecord(input, existing);
  }
  catch (...)
  {
    // A broken record must not leave the grid without views: back to the existing one alone.
    for (QWidget* widget : takeAllWidgets())
    {
      if (widget != existing)
      {
        widget->hide();
        widget->deleteLater();
      }
    }
    placeAlone(existing);
    markWidgetActive(existing);
    updateAllClosable();
    layoutChildren();
    throw;
  }
}

void VXViewGridWidget::loadGridRecord(const nlohmann::json& input, VXViewWidget* existing)
{
  readGridGeometry(input);

  const nlohmann::json* cells = nullptr;
  if (const auto it = input.find("cells"); it != input.end() && it->is_array())
  {
    cells = &(*it);
  }
  bool existingPlaced = false;
  VXAbstractViewWidget* active = nullptr;
  for (int r = 0; r < rowCount(); ++r)
  {
    for (int c = 0; c < columnCount(); ++c)
    {
      if (cells == nullptr || static_cast<std::size_t>(r) >= cells->size() || !(*cells)[r].is_array() ||
          static_cast<std::size_t>(c) >= (*cells)[r].size())
      {
        continue;
      }
      const nlohmann::json& cellJson = (*cells)[r][c];
      if (!cellJson.is_object())
      {
        continue;
      }
      ZRGridCell& cell = m_Cells[r][c];
      if (cellJson.contains("row_span"))
      {
        cell.rowSpan = cellJson["row_span"].get<int>();
      }
      if (cellJson.contains("col_span"))
      {
        cell.colSpan = cellJson["col_span"].get<int>();
      }
      const char* stateKey = cellJson.contains("widget_state") ? "widget_state" : "view_state";
      if (!cellJson.contains(stateKey) || cell.rowSpan <= 0 || cell.colSpan <= 0)
      {
        continue;
      }
      const nlohmann::json& state = cellJson[stateKey];
      // The first cell with a view reuses the existing one, so it keeps its render window.
      VXViewWidget* view = existing;
      if (existingPlaced)
      {
        VXAbstractViewWidget* instance = existing->newInstance();
        view = qobject_cast<VXViewWidget*>(instance);
        if (view == nullptr)
        {
          delete instance;
          continue;
        }
      }
      existingPlaced = true;
      view->setParent(this);
      cell.widget = view; // in the table before the load, so that a failed load still finds it
      view->loadState(state);
      connectWidget(view);
      view->show();
      if (state.is_object() && state.contains("active_view") && state["active_view"].get<bool>())
      {
        active = view;
      }
      Q_EMIT viewCreated(view);
    }
  }
  if (!existingPlaced)
  {
    // A record without a single view: keep the existing one rather than show nothing.
    placeAlone(existing);
  }
  raiseNextSplitViewIdAboveLoaded();
  if (active == nullptr && !allViews().isEmpty())
  {
    active = allViews().front();
  }
  m_ActiveWidget = active;
  if (active != nullptr)
  {
    setWidgetActive(active, true);
    onActiveWidgetChanged(active);
  }
  updateAllClosable();
  layoutChildren();
}

void VXViewGridWidget::raiseNextSplitViewIdAboveLoaded()
{
  // Split ids are never reused in a session: the next split goes above every id a file brought.
  int largestId = 0;
  for (VXAbstractViewWidget* view : allViews())
  {
    if (auto* splitView = qobject_cast<VXViewWidget*>(view))
    {
      largestId = std::max(largestId, splitView->getSplitId());
    }
  }
  if (VXViewWidget::nextSplitViewId() <= largestId)
  {
    VXViewWidget::setNextSplitViewId(largestId + 1);
  }
}

void VXViewGridWidget::loadLegacyState(const nlohmann::json& input, VXViewWidget* existing)
{
  resetGrid();
  for (QWidget* widget : takeAllWidgets())
  {
    if (widget != existing)
    {
      onWidgetClosing(widget);
      widget->hide();
      widget->deleteLater();
    }
  }
  placeAlone(existing);
  traverseLegacyNode(existing, input);
  raiseNextSplitViewIdAboveLoaded();
  if (activeWidget() == nullptr && !allViews().isEmpty())
  {
    markWidgetActive(allViews().front());
  }
  updateAllClosable();
  layoutChildren();
}

void VXViewGridWidget::traverseLegacyNode(VXAbstractViewWidget* view, const nlohmann::json& node)
{
  if (view == nullptr || !node.is_object())
  {
    return;
  }
  if (node.contains("split_view_index"))
  {
    if (auto* leaf = qobject_cast<VXViewWidget*>(view))
    {
      leaf->loadState(node);
    }
    return;
  }
  if (!node.contains("split_view_orientation"))
  {
    return;
  }
  const double orientation = node["split_view_orientation"].get<double>();
  const nlohmann::json first = node.contains("0") ? node["0"] : nlohmann::json();
  const nlohmann::json second = node.contains("1") ? node["1"] : nlohmann::json();
  const bool firstIsLeaf = first.is_object() && first.contains("split_view_index");
  if (firstIsLeaf)
  {
    if (auto* leaf = qobject_cast<VXViewWidget*>(view))
    {
      leaf->loadState(first);
    }
  }
  const QList<VXAbstractViewWidget*> before = allViews();
  if (orientation == 1.0)
  {
    addColumn(view);
  }
  else
  {
    addRow(view);
  }
  for (VXAbstractViewWidget* candidate : allViews())
  {
    if (!before.contains(candidate))
    {
      traverseLegacyNode(candidate, second);
      break;
    }
  }
  if (first.is_object() && !firstIsLeaf)
  {
    traverseLegacyNode(view, first);
  }
}
