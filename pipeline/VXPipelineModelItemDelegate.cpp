#include "pipeline/VXPipelineModelItemDelegate.h"

#include "main/VXInfoWidget.h"
#include "platform/ZRStyle.h"

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>

VXPipelineModelItemDelegate::VXPipelineModelItemDelegate(VXInfoWidget* infoWidget, int visibilityColumn,
                                                         QObject* parent)
    : QStyledItemDelegate(parent)
    , m_InfoWidget(infoWidget)
    , m_VisibilityColumn(visibilityColumn)
{
}

void VXPipelineModelItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const
{
  QStyleOptionViewItem itemOption(option);
  initStyleOption(&itemOption, index);
  if (!(itemOption.state & QStyle::State_Selected))
  {
    itemOption.backgroundBrush = Qt::transparent;
  }
  if (index.column() != m_VisibilityColumn)
  {
    // The check box of the name column is the eye's business.
    itemOption.features &= ~QStyleOptionViewItem::HasCheckIndicator;
    QStyledItemDelegate::paint(painter, itemOption, index);
    return;
  }
  itemOption.features &= ~QStyleOptionViewItem::HasCheckIndicator;
  itemOption.text.clear();
  itemOption.icon = QIcon();
  const QWidget* widget = option.widget;
  QStyle* style = widget != nullptr ? widget->style() : QApplication::style();
  style->drawControl(QStyle::CE_ItemViewItem, &itemOption, painter, widget);
  const QVariant checkState = index.data(Qt::CheckStateRole);
  if (!checkState.isValid())
  {
    return;
  }
  const bool visible = checkState.toInt() == Qt::Checked;
  const QIcon eye =
      ZRStyle::generateThemeIconFromName(visible ? QStringLiteral("Eye") : QStringLiteral("Eye-off"));
  const int size = qMin(16, qMin(option.rect.width(), option.rect.height()));
  const QRect iconRect(option.rect.center().x() - size / 2, option.rect.center().y() - size / 2, size, size);
  eye.paint(painter, iconRect, Qt::AlignCenter, visible ? QIcon::Normal : QIcon::Disabled);
}

QSize VXPipelineModelItemDelegate::sizeHint(const QStyleOptionViewItem& option,
                                            const QModelIndex& index) const
{
  QSize size = QStyledItemDelegate::sizeHint(option, index);
  size.setHeight(qMax(size.height(), 20));
  if (index.column() == m_VisibilityColumn)
  {
    size.setWidth(20);
  }
  return size;
}

QWidget* VXPipelineModelItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                                   const QModelIndex& index) const
{
  if (index.column() == m_VisibilityColumn)
  {
    return nullptr;
  }
  auto* editor = new QLineEdit(parent);
  editor->setObjectName(QStringLiteral("vxTreeItemNameEditor"));
  editor->setFrame(false);
  return editor;
}

void VXPipelineModelItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
  if (auto* lineEdit = qobject_cast<QLineEdit*>(editor))
  {
    lineEdit->setText(index.data(Qt::EditRole).toString());
    lineEdit->selectAll();
  }
}

void VXPipelineModelItemDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                               const QModelIndex& index) const
{
  auto* lineEdit = qobject_cast<QLineEdit*>(editor);
  if (lineEdit == nullptr)
  {
    return;
  }
  const QString name = lineEdit->text().trimmed();
  if (name.isEmpty() || name == index.data(Qt::EditRole).toString())
  {
    return;
  }
  // A name a sibling already holds is refused by the model, and the old name stays.
  if (!model->setData(index, name, Qt::EditRole) && m_InfoWidget)
  {
    Q_EMIT m_InfoWidget->sendOutputMessage(
        QStringLiteral("Cannot rename '%1' to '%2': an item next to it already has that name")
            .arg(index.data(Qt::DisplayRole).toString(), name));
  }
}

bool VXPipelineModelItemDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                              const QStyleOptionViewItem& option, const QModelIndex& index)
{
  if (index.column() == m_VisibilityColumn && event->type() == QEvent::MouseButtonRelease)
  {
    auto* mouseEvent = static_cast<QMouseEvent*>(event);
    const QVariant checkState = index.data(Qt::CheckStateRole);
    if (mouseEvent->button() == Qt::LeftButton && option.rect.contains(mouseEvent->pos()) &&
        checkState.isValid())
    {
      const bool visible = checkState.toInt() == Qt::Checked;
      model->setData(index, visible ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
      return true;
    }
  }
  return QStyledItemDelegate::editorEvent(event, model, option, index);
}
