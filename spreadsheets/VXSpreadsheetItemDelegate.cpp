#include "spreadsheets/VXSpreadsheetItemDelegate.h"

#include "spreadsheets/VXSpreadsheet.h"

#include "platform/ZRStyle.h"

#include <vtkColorTransferFunction.h>

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>

VXSpreadsheetItemDelegate::VXSpreadsheetItemDelegate(VXSpreadsheet* spreadsheet, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_Spreadsheet(spreadsheet)
    , m_Font(ZRStyle::getDefaultFont())
    , m_OverlayColor(ZRStyle::getMediumBlue())
    , m_Margin(QApplication::style()->pixelMetric(QStyle::PM_FocusFrameHMargin))
{
  m_OverlayColor.setAlpha(127);
}

VXSpreadsheetItemDelegate::~VXSpreadsheetItemDelegate() = default;

void VXSpreadsheetItemDelegate::setNotationType(NotationType notation)
{
  m_Notation = notation;
}

VXSpreadsheetItemDelegate::NotationType VXSpreadsheetItemDelegate::notationType() const
{
  return m_Notation;
}

void VXSpreadsheetItemDelegate::setPrecision(int precision)
{
  m_Precision = precision;
}

int VXSpreadsheetItemDelegate::precision() const
{
  return m_Precision;
}

void VXSpreadsheetItemDelegate::addColumn()
{
  m_ColumnColorMaps.push_back(nullptr);
}

void VXSpreadsheetItemDelegate::addColumns(int count)
{
  for (int i = 0; i < count; ++i)
  {
    addColumn();
  }
}

void VXSpreadsheetItemDelegate::removeColumn(int column)
{
  if (column >= 0 && static_cast<std::size_t>(column) < m_ColumnColorMaps.size())
  {
    m_ColumnColorMaps[column] = nullptr;
  }
}

void VXSpreadsheetItemDelegate::clearColumns()
{
  m_ColumnColorMaps.clear();
}

void VXSpreadsheetItemDelegate::setColorMap(vtkColorTransferFunction* colorMap, int column)
{
  if (column < 0)
  {
    m_TableColorMap = colorMap;
    return;
  }
  if (static_cast<std::size_t>(column) < m_ColumnColorMaps.size())
  {
    m_ColumnColorMaps[column] = colorMap;
  }
}

void VXSpreadsheetItemDelegate::setCurrentColumnHighlighting(bool highlight)
{
  m_HighlightCurrentColumn = highlight;
}

void VXSpreadsheetItemDelegate::setColumnDiff(bool enabled, int first, int second)
{
  m_ColumnDiffEnabled = enabled;
  m_ColumnDiffFirst = first;
  m_ColumnDiffSecond = second;
}

vtkColorTransferFunction* VXSpreadsheetItemDelegate::tableColorMap() const
{
  return m_TableColorMap;
}

const std::vector<vtkColorTransferFunction*>& VXSpreadsheetItemDelegate::columnColorMaps() const
{
  return m_ColumnColorMaps;
}

QColor VXSpreadsheetItemDelegate::TextColorFor(const QColor& background)
{
  const double luminance = 0.299 * background.red() + 0.587 * background.green() + 0.114 * background.blue();
  return luminance <= 150.0 ? ZRStyle::getTextWhite() : ZRStyle::getTextBlack();
}

QColor VXSpreadsheetItemDelegate::MapColor(vtkColorTransferFunction* colorMap, const QString& text)
{
  bool ok = false;
  const double value = text.toDouble(&ok);
  double rgb[3] = {0.0, 0.0, 0.0};
  if (ok)
  {
    colorMap->GetColor(value, rgb);
  }
  else
  {
    colorMap->GetNanColor(rgb);
  }
  return QColor::fromRgbF(rgb[0], rgb[1], rgb[2]);
}

void VXSpreadsheetItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const
{
  const QAbstractItemModel* model = index.model();
  if (model == nullptr)
  {
    return;
  }
  const QString text = model->data(index, Qt::DisplayRole).toString();
  const bool selected = option.state.testFlag(QStyle::State_Selected);
  QColor background;
  QColor textColor;
  QColor overlay = m_OverlayColor;
  bool coloured = false;
  bool diffHandled = false;

  const int column = index.column();
  if (m_ColumnDiffEnabled && m_ColumnDiffFirst >= 0 && m_ColumnDiffSecond >= 0 &&
      (column == m_ColumnDiffFirst || column == m_ColumnDiffSecond))
  {
    diffHandled = true;
    const int other = column == m_ColumnDiffFirst ? m_ColumnDiffSecond : m_ColumnDiffFirst;
    const QString otherText = model->data(model->index(index.row(), other), Qt::DisplayRole).toString();
    if (otherText != text)
    {
      background = ZRStyle::getDarkRed();
      coloured = true;
      if (selected)
      {
        overlay = ZRStyle::getDarkRed();
        overlay.setAlpha(127);
      }
    }
    else if (selected)
    {
      background = m_OverlayColor;
      coloured = true;
    }
  }
  if (!coloured && !diffHandled)
  {
    vtkColorTransferFunction* colorMap = m_TableColorMap;
    if (colorMap == nullptr && column >= 0 && static_cast<std::size_t>(column) < m_ColumnColorMaps.size())
    {
      colorMap = m_ColumnColorMaps[column];
    }
    if (colorMap != nullptr)
    {
      background = MapColor(colorMap, text);
      coloured = true;
    }
  }

  if (coloured)
  {
    textColor = TextColorFor(background);
  }
  else
  {
    const QPalette::ColorGroup group =
        option.state.testFlag(QStyle::State_Enabled)
            ? (option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive)
            : QPalette::Disabled;
    background = option.palette.color(group, selected ? QPalette::Highlight : QPalette::Base);
    textColor = option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
  }

  painter->save();
  painter->fillRect(option.rect, background);
  if (selected && coloured)
  {
    painter->fillRect(option.rect, QBrush(overlay, Qt::SolidPattern));
  }
  const QRect textRect = option.rect.adjusted(m_Margin, 0, -m_Margin, 0);
  painter->setFont(m_Font);
  painter->setPen(textColor);
  painter->drawText(textRect, Qt::AlignCenter, text);
  painter->restore();

  if (m_HighlightCurrentColumn && m_Spreadsheet != nullptr && m_Spreadsheet->currentColumn() == column)
  {
    paintCurrentColumnFrame(painter, option, index);
  }
}

void VXSpreadsheetItemDelegate::paintCurrentColumnFrame(QPainter* painter, const QStyleOptionViewItem& option,
                                                        const QModelIndex& index) const
{
  const QRect rect = option.rect;
  const int left = rect.left();
  const int top = rect.top();
  const int right = rect.right() + 1;
  const int bottom = rect.bottom() + 1;
  const int lastRow = index.model()->rowCount() - 1;

  // The pieces of every row join into one frame round the column.
  QPainterPath path;
  if (index.row() == 0)
  {
    path.moveTo(left, bottom);
    path.lineTo(left, top);
    path.lineTo(right, top);
    path.lineTo(right, bottom);
  }
  else if (index.row() < lastRow)
  {
    path.moveTo(left, top);
    path.lineTo(left, bottom);
    path.moveTo(right, top);
    path.lineTo(right, bottom);
  }
  else
  {
    path.moveTo(left, top);
    path.lineTo(left, bottom);
    path.lineTo(right, bottom);
    path.lineTo(right, top);
  }
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing, true);
  painter->strokePath(path,
                      QPen(ZRStyle::getDefaultTextColor(), 5, Qt::DotLine, Qt::SquareCap, Qt::BevelJoin));
  painter->restore();
}
