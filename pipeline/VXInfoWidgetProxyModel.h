#pragma once

#include <QSortFilterProxyModel>

/**
 * The search filter of the pipeline tree. A row stays when its name matches or when the name of any
 * of its ancestors does, so a matching pipeline or filter keeps its whole subtree in sight; rows on
 * the way to a match stay too.
 */
class VXInfoWidgetProxyModel : public QSortFilterProxyModel
{
  Q_OBJECT

public:
  explicit VXInfoWidgetProxyModel(QObject* parent = nullptr);

  // Case-insensitive search for the plain text (not a pattern); empty shows everything.
  void setSearchText(const QString& text);

protected:
  bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
};
