#include "spreadsheets/VXSpreadsheetTableView.h"

#include "platform/ZRStyle.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetrics>
#include <QPainter>
#include <QTextDocument>

VXSpreadsheetTableView::VXSpreadsheetTableView(QWidget* parent)
    : QTableView(parent)
{
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
