#include "spreadsheets/VXSpreadsheetTableView.h"

#include "platform/ZRStyle.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetrics>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>

VXSpreadsheetTableView::VXSpreadsheetTableView(QWidget* parent)
    : QTableView(parent)
{
  // Long headers are elided in the middle, where names of the same family differ least.
  horizontalHeader()->setTextElideMode(Qt::ElideMiddle);
  horizontalHeader()->viewport()->installEventFilter(this);
}

int VXSpreadsheetTableView::headerWidth(int column) const
{
  const QHeaderView* header = horizontalHeader();
  if (model() == nullptr || column < 0 || column >= header->count())
  {
    return 0;
  }
  // The header measures its own text in its own font and margins; no row of the data is looked at.
  const int needed = header->sectionSizeHint(column);
  const int widest = header->fontMetrics().averageCharWidth() * k_MaxHeaderCharacters;
  return std::max(0, std::min(needed, widest));
}

bool VXSpreadsheetTableView::headerElided(int column) const
{
  const QHeaderView* header = horizontalHeader();
  return model() != nullptr && column >= 0 && column < header->count() &&
         header->sectionSize(column) < header->sectionSizeHint(column);
}

QString VXSpreadsheetTableView::headerToolTip(int column) const
{
  return headerElided(column) ? model()->headerData(column, Qt::Horizontal).toString() : QString();
}

bool VXSpreadsheetTableView::eventFilter(QObject* watched, QEvent* event)
{
  if (watched == horizontalHeader()->viewport() && event->type() == QEvent::ToolTip && model() != nullptr)
  {
    const auto* help = static_cast<QHelpEvent*>(event);
    const QString text = headerToolTip(horizontalHeader()->logicalIndexAt(help->pos()));
    if (!text.isEmpty())
    {
      QToolTip::showText(help->globalPos(), text, horizontalHeader()->viewport());
    }
    else
    {
      QToolTip::hideText();
    }
    return true;
  }
  return QTableView::eventFilter(watched, event);
}

VXSpreadsheetTableView::~VXSpreadsheetTableView() = default;

QString VXSpreadsheetTableView::EmptyHintText()
{
  return QStringLiteral(
      "To add data to your spreadsheet, drag and drop the array(s) from the data structure here.");
}

QString VXSpreadsheetTableView::EmptyHintHtml(int viewportWidth)
{
  QFont italic = ZRStyle::getDefaultFont();
  italic.setItalic(true);
  italic.setPointSize(ZRStyle::getFontSize(2));
  const int textWidth = QFontMetrics(italic).horizontalAdvance(EmptyHintText());
  const int margin = viewportWidth / 2 - textWidth / 2;
  return QStringLiteral(
             "<html><head/><body><p style=\"margin-left:%1px;font-family:%2;font-size:%3pt;color:%4\">"
             "<em>%5</em></p></body></html>")
      .arg(margin)
      .arg(ZRStyle::getFontName())
      .arg(ZRStyle::getFontSize(6))
      .arg(ZRStyle::getTextGray().name())
      .arg(EmptyHintText());
}

void VXSpreadsheetTableView::paintEvent(QPaintEvent* event)
{
  QTableView::paintEvent(event);
  if (model() != nullptr && model()->rowCount() >= 1)
  {
    return;
  }
  QPainter painter(viewport());
  painter.translate(0, viewport()->height() / 4);
  QTextDocument document;
  document.setHtml(EmptyHintHtml(viewport()->width()));
  QAbstractTextDocumentLayout::PaintContext context;
  context.clip = QRectF(0, 0, viewport()->width(), viewport()->height());
  painter.setClipRect(context.clip);
  document.documentLayout()->draw(&painter, context);
}
