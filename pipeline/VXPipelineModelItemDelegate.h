#pragma once

#include <QPointer>
#include <QStyledItemDelegate>

class VXInfoWidget;

/**
 * Paints and edits the rows of the pipeline tree: an eye in the visibility column that toggles the
 * item's visibility in the active view, and a line edit for the name.
 */
class VXPipelineModelItemDelegate : public QStyledItemDelegate
{
  Q_OBJECT

public:
  // visibilityColumn is the column that shows the eye.
  VXPipelineModelItemDelegate(VXInfoWidget* infoWidget, int visibilityColumn, QObject* parent = nullptr);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

protected:
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
  QPointer<VXInfoWidget> m_InfoWidget;
  int m_VisibilityColumn = 0;
};
