#include "pipeline/VXRenderTreeView.h"

#include <QHeaderView>
#include <QPainter>
#include <QStringList>
#include <QTextDocument>

VXRenderTreeView::VXRenderTreeView(QWidget* parent)
    : QTreeView(parent)
{
  setSelectionMode(QAbstractItemView::SingleSelection);
  setContextMenuPolicy(Qt::CustomContextMenu);
  setEditTriggers(QAbstractItemView::SelectedClicked | QAbstractItemView::EditKeyPressed);
  setSortingEnabled(true);
  sortByColumn(-1, Qt::AscendingOrder); // keep the order of arrival until the user sorts
  setContentsMargins(0, 1, 0, 4);
  viewport()->setAttribute(Qt::WA_Hover);
  setIndentation(16);
  setTreePosition(1);
  header()->setMinimumSectionSize(20);
  header()->setStretchLastSection(true);
  header()->hide();
  applyColumnWidths();
}

void VXRenderTreeView::setModel(QAbstractItemModel* model)
{
  if (this->model() != nullptr)
  {
    disconnect(this->model(), nullptr, this, nullptr);
  }
  QTreeView::setModel(model);
  applyColumnWidths();
  if (model == nullptr)
  {
    return;
  }
  connect(model, &QAbstractItemModel::modelReset, this, &VXRenderTreeView::applyColumnWidths);
  connect(model, &QAbstractItemModel::columnsInserted, this, &VXRenderTreeView::applyColumnWidths);
  connect(model, &QAbstractItemModel::layoutChanged, this, &VXRenderTreeView::applyColumnWidths);
}

void VXRenderTreeView::applyColumnWidths()
{
  if (header()->count() == 0)
  {
    return;
  }
  header()->setSectionResizeMode(0, QHeaderView::Fixed);
  setColumnWidth(0, k_VisibilityColumnWidth);
}

QString VXRenderTreeView::emptyHintText()
{
  const QStringList lines = {QStringLiteral("- Run a pipeline"),
                             QStringLiteral("- Drag and drop compatible files"),
                             QStringLiteral("  here or in render window"),
                             QStringLiteral("  (.kestrix, .ksxstate, .vtk,"),
                             QStringLiteral("  .vti, .vtr, .vts, .vtu, .vtp,"),
                             QStringLiteral("  .stl, .jpg, .png, .tif, .bmp)"),
                             QStringLiteral("- Right click here and select"),
                             QStringLiteral("  'Load File' or 'Load State'"),
                             QStringLiteral("- Visualization Menu -> Load File"),
                             QStringLiteral("- Visualization Menu -> Load State")};
  QStringList escaped;
  for (const QString& line : lines)
  {
    // Leading blanks indent the continuation lines.
    QString html = line.toHtmlEscaped();
    int blanks = 0;
    while (blanks < html.size() && html.at(blanks) == QLatin1Char(' '))
    {
      ++blanks;
    }
    escaped.append(QStringLiteral("&nbsp;").repeated(blanks) + html.mid(blanks));
  }
  return QStringLiteral("<p><b>Import Data for Visualization</b></p><p>%1</p>")
      .arg(escaped.join(QStringLiteral("<br>")));
}

void VXRenderTreeView::paintEvent(QPaintEvent* event)
{
  if (model() != nullptr && model()->rowCount(rootIndex()) > 0)
  {
    QTreeView::paintEvent(event);
    return;
  }
  QPainter painter(viewport());
  QTextDocument document;
  document.setDefaultFont(font());
  document.setHtml(emptyHintText());
  document.setTextWidth(viewport()->width() - 16);
  painter.translate(8, 8);
  document.drawContents(&painter, QRectF(0, 0, viewport()->width() - 16, viewport()->height() - 16));
}
