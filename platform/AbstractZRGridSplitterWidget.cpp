#include "platform/AbstractZRGridSplitterWidget.h"

#include <nlohmann/json.hpp>

#include <QEvent>
#include <QMetaObject>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{
// Cells of the table seen along one direction: "line" is the column (or row) index, "cross" the other.
struct Axis
{
  bool columns;

  ZRGridCell& cell(std::vector<std::vector<ZRGridCell>>& cells, int line, int cross) const
  {
    return columns ? cells[cross][line] : cells[line][cross];
  }
  int& spanAlong(ZRGridCell& c) const { return columns ? c.colSpan : c.rowSpan; }
  int& spanAcross(ZRGridCell& c) const { return columns ? c.rowSpan : c.colSpan; }
  int lineCount(const std::vector<std::vector<ZRGridCell>>& cells) const
  {
    if (cells.empty())
    {
      return 0;
    }
    return columns ? static_cast<int>(cells.front().size()) : static_cast<int>(cells.size());
  }
  int crossCount(const std::vector<std::vector<ZRGridCell>>& cells) const
  {
    if (cells.empty())
    {
      return 0;
    }
    return columns ? static_cast<int>(cells.size()) : static_cast<int>(cells.front().size());
  }
  void insertLine(std::vector<std::vector<ZRGridCell>>& cells, int at) const
  {
    const ZRGridCell covered{nullptr, 0, 0};
    if (columns)
    {
      for (auto& row : cells)
      {
        row.insert(row.begin() + at, covered);
      }
    }
    else
    {
      cells.insert(cells.begin() + at, std::vector<ZRGridCell>(cells.front().size(), covered));
    }
  }
  void eraseLine(std::vector<std::vector<ZRGridCell>>& cells, int at) const
  {
    if (columns)
    {
      for (auto& row : cells)
      {
        row.erase(row.begin() + at);
      }
    }
    else
    {
      cells.erase(cells.begin() + at);
    }
  }
};

std::vector<double> equalWeights(std::size_t count)
{
  return std::vector<double>(count, count > 0 ? 1.0 / static_cast<double>(count) : 0.0);
}
} // namespace

AbstractZRGridSplitterWidget::AbstractZRGridSplitterWidget(QWidget* parent)
    : QWidget(parent)
{
  setMouseTracking(true);
}

AbstractZRGridSplitterWidget::~AbstractZRGridSplitterWidget()
{
  // The children die after this; their destroyed() must not reach a half-destroyed grid.
  for (QWidget* widget : allWidgets())
  {
    disconnectWidget(widget);
  }
}

void AbstractZRGridSplitterWidget::setInitialWidget(QWidget* widget)
{
  if (widget == nullptr)
  {
    return;
  }
  for (QWidget* old : takeAllWidgets())
  {
    if (old != widget)
    {
      old->hide();
      old->deleteLater();
    }
  }
  m_Cells = {{ZRGridCell{widget, 1, 1}}};
  m_ColWidths = {1.0};
  m_RowHeights = {1.0};
  widget->setParent(this);
  connectWidget(widget);
  widget->show();
  markWidgetActive(widget);
  updateAllClosable();
  layoutChildren();
}

QWidget* AbstractZRGridSplitterWidget::activeWidget() const
{
  return m_ActiveWidget.data();
}

int AbstractZRGridSplitterWidget::widgetCount() const
{
  return allWidgets().size();
}

QList<QWidget*> AbstractZRGridSplitterWidget::allWidgets() const
{
  QList<QWidget*> widgets;
  for (const auto& row : m_Cells)
  {
    for (const ZRGridCell& cell : row)
    {
      if (!cell.isCovered() && cell.widget != nullptr)
      {
        widgets.push_back(cell.widget);
      }
    }
  }
  return widgets;
}

int AbstractZRGridSplitterWidget::rowCount() const
{
  return static_cast<int>(m_Cells.size());
}

int AbstractZRGridSplitterWidget::columnCount() const
{
  return m_Cells.empty() ? 0 : static_cast<int>(m_Cells.front().size());
}

const std::vector<double>& AbstractZRGridSplitterWidget::columnWeights() const
{
  return m_ColWidths;
}

const std::vector<double>& AbstractZRGridSplitterWidget::rowWeights() const
{
  return m_RowHeights;
}

bool AbstractZRGridSplitterWidget::findWidget(const QWidget* widget, int& row, int& col) const
{
  if (widget == nullptr)
  {
    return false;
  }
  for (int r = 0; r < rowCount(); ++r)
  {
    for (int c = 0; c < columnCount(); ++c)
    {
      const ZRGridCell& cell = m_Cells[r][c];
      if (!cell.isCovered() && cell.widget == widget)
      {
        row = r;
        col = c;
        return true;
      }
    }
  }
  return false;
}

const ZRGridCell& AbstractZRGridSplitterWidget::cellAt(int row, int col) const
{
  return m_Cells.at(row).at(col);
}

void AbstractZRGridSplitterWidget::saveGridState(nlohmann::json& output) const
{
  output["grid_version"] = k_GridVersion;
  output["grid_rows"] = rowCount();
  output["grid_cols"] = columnCount();
  output["col_widths"] = m_ColWidths;
  output["row_heights"] = m_RowHeights;
  nlohmann::json rows = nlohmann::json::array();
  for (const auto& row : m_Cells)
  {
    nlohmann::json cells = nlohmann::json::array();
    for (const ZRGridCell& cell : row)
    {
      nlohmann::json cellJson;
      cellJson["row_span"] = cell.isCovered() ? 0 : cell.rowSpan;
      cellJson["col_span"] = cell.isCovered() ? 0 : cell.colSpan;
      if (!cell.isCovered() && cell.widget != nullptr)
      {
        nlohmann::json widgetState = nlohmann::json::object();
        saveWidgetState(cell.widget, widgetState);
        cellJson["widget_state"] = widgetState;
      }
      cells.push_back(cellJson);
    }
    rows.push_back(cells);
  }
  output["cells"] = rows;
}

void AbstractZRGridSplitterWidget::addRow(QWidget* widget)
{
  split(widget, Orientation::Rows);
}

void AbstractZRGridSplitterWidget::addColumn(QWidget* widget)
{
  split(widget, Orientation::Columns);
}

void AbstractZRGridSplitterWidget::split(QWidget* widget, Orientation orientation)
{
  int row = 0;
  int col = 0;
  if (!findWidget(widget, row, col))
  {
    return;
  }
  QWidget* created = createSplitWidget(widget);
  if (created == nullptr)
  {
    return;
  }
  const Axis axis{orientation == Orientation::Columns};
  std::vector<double>& weights = axis.columns ? m_ColWidths : m_RowHeights;
  const int line = axis.columns ? col : row;
  const int cross = axis.columns ? row : col;
  const int along = axis.spanAlong(m_Cells[row][col]);
  const int across = axis.spanAcross(m_Cells[row][col]);

  int newLine = 0;
  if (along > 1)
  {
    // The cell spans several lines already: the new widget takes the far part of them.
    const int given = along / 2;
    axis.spanAlong(m_Cells[row][col]) = along - given;
    newLine = line + along - given;
  }
  else
  {
    // A new line after this one, sharing its weight; every other area crossing the line widens.
    const int lines = axis.lineCount(m_Cells);
    const int crosses = axis.crossCount(m_Cells);
    for (int l = 0; l < lines; ++l)
    {
      for (int x = 0; x < crosses; ++x)
      {
        ZRGridCell& cell = axis.cell(m_Cells, l, x);
        if (!cell.isCovered() && l <= line && line < l + axis.spanAlong(cell) && cell.widget != widget)
        {
          axis.spanAlong(cell) += 1;
        }
      }
    }
    axis.insertLine(m_Cells, line + 1);
    weights[line] /= 2.0;
    weights.insert(weights.begin() + line + 1, weights[line]);
    newLine = line + 1;
  }
  ZRGridCell& target = axis.cell(m_Cells, newLine, cross);
  target.widget = created;
  axis.spanAlong(target) = along > 1 ? along / 2 : 1;
  axis.spanAcross(target) = across;

  created->setParent(this);
  connectWidget(created);
  created->show();
  onWidgetCreated(widget, created);
  updateAllClosable();
  layoutChildren();
}

void AbstractZRGridSplitterWidget::closeCell(QWidget* widget)
{
  int row = 0;
  int col = 0;
  if (!findWidget(widget, row, col) || widgetCount() <= 1)
  {
    return;
  }
  onWidgetClosing(widget);
  if (!findWidget(widget, row, col))
  {
    return; // the handler took it away already
  }
  m_Cells[row][col].widget = nullptr;
  const bool wasActive = (m_ActiveWidget == widget);
  absorbArea(row, col);
  removeRedundantLines();
  disconnectWidget(widget);
  widget->hide();
  widget->deleteLater();

  if (wasActive || m_ActiveWidget.isNull())
  {
    m_ActiveWidget = nullptr;
    // The survivor is the widget that now covers the top-left corner of the closed area.
    QWidget* survivor = nullptr;
    int r = 0;
    int c = 0;
    for (QWidget* candidate : allWidgets())
    {
      if (findWidget(candidate, r, c))
      {
        const ZRGridCell& cell = m_Cells[r][c];
        if (r <= row && row < r + cell.rowSpan && c <= col && col < c + cell.colSpan)
        {
          survivor = candidate;
          break;
        }
      }
    }
    if (survivor == nullptr && !allWidgets().isEmpty())
    {
      survivor = allWidgets().front();
    }
    markWidgetActive(survivor);
  }
  updateAllClosable();
  layoutChildren();
}

bool AbstractZRGridSplitterWidget::absorbArea(int row, int col)
{
  const int rs = m_Cells[row][col].rowSpan;
  const int cs = m_Cells[row][col].colSpan;

  struct Anchor
  {
    int row;
    int col;
  };
  // Anchors that touch one side of the area and lie within it along that side.
  auto neighbours = [&](int side)
  {
    std::vector<Anchor> found;
    int covered = 0;
    for (int r = 0; r < rowCount(); ++r)
    {
      for (int c = 0; c < columnCount(); ++c)
      {
        const ZRGridCell& cell = m_Cells[r][c];
        if (cell.isCovered() || (r == row && c == col))
        {
          continue;
        }
        const bool rowsInside = r >= row && r + cell.rowSpan <= row + rs;
        const bool colsInside = c >= col && c + cell.colSpan <= col + cs;
        bool touches = false;
        switch (side)
        {
        case 0:
          touches = rowsInside && c + cell.colSpan == col;
          break; // left
        case 1:
          touches = colsInside && r + cell.rowSpan == row;
          break; // top
        case 2:
          touches = rowsInside && c == col + cs;
          break; // right
        default:
          touches = colsInside && r == row + rs;
          break; // bottom
        }
        if (touches)
        {
          found.push_back({r, c});
          covered += (side == 0 || side == 2) ? cell.rowSpan : cell.colSpan;
        }
      }
    }
    const int needed = (side == 0 || side == 2) ? rs : cs;
    return covered == needed ? found : std::vector<Anchor>{};
  };

  for (int side = 0; side < 4; ++side)
  {
    const std::vector<Anchor> anchors = neighbours(side);
    if (anchors.empty())
    {
      continue;
    }
    for (int r = row; r < row + rs; ++r)
    {
      for (int c = col; c < col + cs; ++c)
      {
        m_Cells[r][c] = ZRGridCell{nullptr, 0, 0};
      }
    }
    for (const Anchor& a : anchors)
    {
      ZRGridCell cell = m_Cells[a.row][a.col];
      switch (side)
      {
      case 0:
        cell.colSpan += cs;
        break;
      case 1:
        cell.rowSpan += rs;
        break;
      case 2:
        cell.colSpan += cs;
        m_Cells[a.row][a.col] = ZRGridCell{nullptr, 0, 0};
        m_Cells[a.row][col] = cell;
        continue;
      default:
        cell.rowSpan += rs;
        m_Cells[a.row][a.col] = ZRGridCell{nullptr, 0, 0};
        m_Cells[row][a.col] = cell;
        continue;
      }
      m_Cells[a.row][a.col] = cell;
    }
    return true;
  }
  // No side fits exactly (areas interlock around this one): leave the area empty.
  for (int r = row; r < row + rs; ++r)
  {
    for (int c = col; c < col + cs; ++c)
    {
      m_Cells[r][c] = ZRGridCell{nullptr, 1, 1};
    }
  }
  return false;
}

void AbstractZRGridSplitterWidget::removeRedundantLines()
{
  for (const bool columns : {true, false})
  {
    const Axis axis{columns};
    std::vector<double>& weights = columns ? m_ColWidths : m_RowHeights;
    for (int line = axis.lineCount(m_Cells) - 1; line >= 1; --line)
    {
      const int crosses = axis.crossCount(m_Cells);
      bool startsHere = false;
      for (int x = 0; x < crosses && !startsHere; ++x)
      {
        startsHere = !axis.cell(m_Cells, line, x).isCovered();
      }
      if (startsHere)
      {
        continue;
      }
      // Every area that crosses this line also covers the one before: merge the two lines.
      for (int l = 0; l < line; ++l)
      {
        for (int x = 0; x < crosses; ++x)
        {
          ZRGridCell& cell = axis.cell(m_Cells, l, x);
          if (!cell.isCovered() && l + axis.spanAlong(cell) > line)
          {
            axis.spanAlong(cell) -= 1;
          }
        }
      }
      weights[line - 1] += weights[line];
      weights.erase(weights.begin() + line);
      axis.eraseLine(m_Cells, line);
    }
  }
}

void AbstractZRGridSplitterWidget::markWidgetActive(QWidget* widget)
{
  int row = 0;
  int col = 0;
  if (!findWidget(widget, row, col))
  {
    return;
  }
  QWidget* previous = m_ActiveWidget.data();
  if (previous != nullptr && previous != widget)
  {
    setWidgetActive(previous, false);
  }
  setWidgetActive(widget, true);
  m_ActiveWidget = widget;
  if (previous != widget)
  {
    onActiveWidgetChanged(widget);
  }
}

void AbstractZRGridSplitterWidget::resetGrid()
{
  QWidget* keep = m_ActiveWidget.data();
  const QList<QWidget*> widgets = allWidgets();
  if (keep == nullptr && !widgets.isEmpty())
  {
    keep = widgets.front();
  }
  for (QWidget* widget : widgets)
  {
    if (widget == keep)
    {
      continue;
    }
    onWidgetClosing(widget);
    disconnectWidget(widget);
    widget->hide();
    widget->deleteLater();
  }
  m_Cells.clear();
  m_ColWidths.clear();
  m_RowHeights.clear();
  if (keep != nullptr)
  {
    m_Cells = {{ZRGridCell{keep, 1, 1}}};
    m_ColWidths = {1.0};
    m_RowHeights = {1.0};
    markWidgetActive(keep);
  }
  updateAllClosable();
  layoutChildren();
}

void AbstractZRGridSplitterWidget::updateAllClosable()
{
  const QList<QWidget*> widgets = allWidgets();
  for (QWidget* widget : widgets)
  {
    setWidgetClosable(widget, widgets.size() > 1);
  }
}

std::vector<int> AbstractZRGridSplitterWidget::linePositions(Orientation orientation) const
{
  const bool columns = orientation == Orientation::Columns;
  const std::vector<double>& stored = columns ? m_ColWidths : m_RowHeights;
  const int count = columns ? columnCount() : rowCount();
  std::vector<double> weights(static_cast<std::size_t>(count), 1.0);
  for (int i = 0; i < count && i < static_cast<int>(stored.size()); ++i)
  {
    weights[i] = std::isfinite(stored[i]) && stored[i] > 0.0 ? stored[i] : 0.0;
  }
  double total = std::accumulate(weights.begin(), weights.end(), 0.0);
  if (total <= 0.0)
  {
    weights.assign(weights.size(), 1.0);
    total = static_cast<double>(count);
  }
  const int extent = columns ? width() : height();
  const int available = std::max(0, extent - (count - 1) * k_SeparatorWidth);
  std::vector<int> positions(static_cast<std::size_t>(count) + 1, 0);
  double sum = 0.0;
  for (int i = 0; i <= count; ++i)
  {
    positions[i] = static_cast<int>(std::lround(sum / total * available)) + i * k_SeparatorWidth;
    if (i < count)
    {
      sum += weights[i];
    }
  }
  return positions;
}

void AbstractZRGridSplitterWidget::layoutChildren()
{
  if (m_Cells.empty() || m_Cells.front().empty())
  {
    return;
  }
  const std::vector<int> xs = linePositions(Orientation::Columns);
  const std::vector<int> ys = linePositions(Orientation::Rows);
  for (int r = 0; r < rowCount(); ++r)
  {
    for (int c = 0; c < columnCount(); ++c)
    {
      const ZRGridCell& cell = m_Cells[r][c];
      if (cell.isCovered() || cell.widget == nullptr)
      {
        continue;
      }
      const int lastCol = std::min(c + cell.colSpan, columnCount());
      const int lastRow = std::min(r + cell.rowSpan, rowCount());
      const QRect area(xs[c], ys[r], xs[lastCol] - k_SeparatorWidth - xs[c],
                       ys[lastRow] - k_SeparatorWidth - ys[r]);
      cell.widget->setGeometry(area);
    }
  }
}

void AbstractZRGridSplitterWidget::equalizeRowHeights()
{
  m_RowHeights = equalWeights(static_cast<std::size_t>(rowCount()));
  layoutChildren();
}

void AbstractZRGridSplitterWidget::equalizeColumnWidths()
{
  m_ColWidths = equalWeights(static_cast<std::size_t>(columnCount()));
  layoutChildren();
}

void AbstractZRGridSplitterWidget::setWidgetActive(QWidget* widget, bool active)
{
  if (widget == nullptr)
  {
    return;
  }
  const int index = widget->metaObject()->indexOfMethod("setActive(bool)");
  if (index >= 0)
  {
    QMetaObject::invokeMethod(widget, "setActive", Qt::DirectConnection, Q_ARG(bool, active));
  }
}

void AbstractZRGridSplitterWidget::onWidgetCreated(QWidget* /*source*/, QWidget* /*created*/) {}

void AbstractZRGridSplitterWidget::onWidgetClosing(QWidget* /*widget*/) {}

void AbstractZRGridSplitterWidget::onActiveWidgetChanged(QWidget* /*widget*/) {}

void AbstractZRGridSplitterWidget::connectWidget(QWidget* widget)
{
  if (widget == nullptr)
  {
    return;
  }
  widget->installEventFilter(this);
  connect(widget, &QObject::destroyed, this, [this](QObject* gone) { forgetWidget(gone); });
}

void AbstractZRGridSplitterWidget::disconnectWidget(QWidget* widget)
{
  if (widget == nullptr)
  {
    return;
  }
  widget->removeEventFilter(this);
  disconnect(widget, nullptr, this, nullptr);
}

QList<QWidget*> AbstractZRGridSplitterWidget::takeAllWidgets()
{
  const QList<QWidget*> widgets = allWidgets();
  for (QWidget* widget : widgets)
  {
    disconnectWidget(widget);
  }
  m_Cells.clear();
  m_ActiveWidget = nullptr;
  return widgets;
}

void AbstractZRGridSplitterWidget::readGridGeometry(const nlohmann::json& input)
{
  const int rows = std::max(1, static_cast<int>(input["grid_rows"].get<double>()));
  const int cols = std::max(1, static_cast<int>(input["grid_cols"].get<double>()));
  m_ColWidths = equalWeights(static_cast<std::size_t>(cols));
  m_RowHeights = equalWeights(static_cast<std::size_t>(rows));
  auto overwrite = [&input](const char* key, std::vector<double>& weights)
  {
    const auto it = input.find(key);
    if (it == input.end() || !it->is_array())
    {
      return;
    }
    for (std::size_t i = 0; i < weights.size() && i < it->size(); ++i)
    {
      weights[i] = (*it)[i].get<double>();
    }
  };
  overwrite("col_widths", m_ColWidths);
  overwrite("row_heights", m_RowHeights);
  m_Cells.assign(static_cast<std::size_t>(rows), std::vector<ZRGridCell>(static_cast<std::size_t>(cols)));
}

void AbstractZRGridSplitterWidget::forgetWidget(QObject* widget)
{
  for (int r = 0; r < rowCount(); ++r)
  {
    for (int c = 0; c < columnCount(); ++c)
    {
      ZRGridCell& cell = m_Cells[r][c];
      if (!cell.isCovered() && cell.widget == widget)
      {
        cell.widget = nullptr;
        if (widgetCount() > 0)
        {
          absorbArea(r, c);
          removeRedundantLines();
        }
        if (m_ActiveWidget.isNull() && !allWidgets().isEmpty())
        {
          markWidgetActive(allWidgets().front());
        }
        updateAllClosable();
        layoutChildren();
        return;
      }
    }
  }
}

AbstractZRGridSplitterWidget::Separator AbstractZRGridSplitterWidget::separatorAt(const QPoint& pos) const
{
  for (const Orientation orientation : {Orientation::Columns, Orientation::Rows})
  {
    const std::vector<int> lines = linePositions(orientation);
    const int coordinate = orientation == Orientation::Columns ? pos.x() : pos.y();
    for (std::size_t i = 1; i + 1 < lines.size(); ++i)
    {
      if (coordinate >= lines[i] - k_SeparatorWidth && coordinate < lines[i])
      {
        return Separator{orientation, static_cast<int>(i)};
      }
    }
  }
  return Separator{};
}

void AbstractZRGridSplitterWidget::mousePressEvent(QMouseEvent* event)
{
  const Separator hit = separatorAt(event->pos());
  if (event->button() != Qt::LeftButton || hit.index < 0)
  {
    QWidget::mousePressEvent(event);
    return;
  }
  m_Dragged = hit;
  m_DragStart = hit.orientation == Orientation::Columns ? event->pos().x() : event->pos().y();
  m_DragStartWeights = hit.orientation == Orientation::Columns ? m_ColWidths : m_RowHeights;
  event->accept();
}

void AbstractZRGridSplitterWidget::mouseMoveEvent(QMouseEvent* event)
{
  if (m_Dragged.index >= 0)
  {
    dragSeparatorTo(event->pos());
    event->accept();
    return;
  }
  const Separator hover = separatorAt(event->pos());
  if (hover.index < 0)
  {
    unsetCursor();
  }
  else
  {
    setCursor(hover.orientation == Orientation::Columns ? Qt::SplitHCursor : Qt::SplitVCursor);
  }
  QWidget::mouseMoveEvent(event);
}

void AbstractZRGridSplitterWidget::mouseReleaseEvent(QMouseEvent* event)
{
  if (m_Dragged.index >= 0 && event->button() == Qt::LeftButton)
  {
    dragSeparatorTo(event->pos());
    m_Dragged = Separator{};
    event->accept();
    return;
  }
  QWidget::mouseReleaseEvent(event);
}

void AbstractZRGridSplitterWidget::dragSeparatorTo(const QPoint& pos)
{
  const bool columns = m_Dragged.orientation == Orientation::Columns;
  std::vector<double>& weights = columns ? m_ColWidths : m_RowHeights;
  const int count = columns ? columnCount() : rowCount();
  if (m_Dragged.index <= 0 || m_Dragged.index >= count || m_DragStartWeights.size() != weights.size())
  {
    return;
  }
  const double total = std::accumulate(m_DragStartWeights.begin(), m_DragStartWeights.end(), 0.0);
  const int available = (columns ? width() : height()) - (count - 1) * k_SeparatorWidth;
  if (total <= 0.0 || available <= 0)
  {
    return;
  }
  const double pixelsPerWeight = available / total;
  const int before = m_Dragged.index - 1;
  const int after = m_Dragged.index;
  const double pair = (m_DragStartWeights[before] + m_DragStartWeights[after]) * pixelsPerWeight;
  if (pair < 2.0 * k_MinimumCellSize)
  {
    return;
  }
  const int delta = (columns ? pos.x() : pos.y()) - m_DragStart;
  const double first = std::clamp(m_DragStartWeights[before] * pixelsPerWeight + delta,
                                  static_cast<double>(k_MinimumCellSize), pair - k_MinimumCellSize);
  weights[before] = first / pixelsPerWeight;
  weights[after] = (pair - first) / pixelsPerWeight;
  layoutChildren();
}

void AbstractZRGridSplitterWidget::leaveEvent(QEvent* event)
{
  if (m_Dragged.index < 0)
  {
    unsetCursor();
  }
  QWidget::leaveEvent(event);
}

void AbstractZRGridSplitterWidget::resizeEvent(QResizeEvent* event)
{
  QWidget::resizeEvent(event);
  layoutChildren();
}

bool AbstractZRGridSplitterWidget::eventFilter(QObject* watched, QEvent* event)
{
  // A press anywhere on a cell makes it the active one.
  if (event->type() == QEvent::MouseButtonPress)
  {
    if (auto* widget = qobject_cast<QWidget*>(watched))
    {
      markWidgetActive(widget);
    }
  }
  return QWidget::eventFilter(watched, event);
}
