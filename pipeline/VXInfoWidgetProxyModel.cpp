#include "pipeline/VXInfoWidgetProxyModel.h"

#include "pipeline/VXPipelineModel.h"

#include <QRegularExpression>

VXInfoWidgetProxyModel::VXInfoWidgetProxyModel(QObject* parent)
    : QSortFilterProxyModel(parent)
{
  // A parent is kept when one of its descendants matches, so a match deep down stays reachable.
  setRecursiveFilteringEnabled(true);
}

void VXInfoWidgetProxyModel::setSearchText(const QString& text)
{
  setFilterRegularExpression(
      QRegularExpression(QRegularExpression::escape(text), QRegularExpression::CaseInsensitiveOption));
}

bool VXInfoWidgetProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
  auto* model = qobject_cast<VXPipelineModel*>(sourceModel());
  if (model == nullptr)
  {
    return false;
  }
  const QRegularExpression expression = filterRegularExpression();
  QModelIndex index = model->index(sourceRow, VXPipelineModel::NameColumn, sourceParent);
  while (index.isValid())
  {
    if (expression.match(index.data(Qt::DisplayRole).toString()).hasMatch())
    {
      return true;
    }
    const QModelIndex parent = index.parent();
    index =
        parent.isValid() ? model->index(parent.row(), VXPipelineModel::NameColumn, parent.parent()) : parent;
  }
  return false;
}
