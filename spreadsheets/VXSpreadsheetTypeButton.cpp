#include "spreadsheets/VXSpreadsheetTypeButton.h"

#include "platform/ZRDataStructureModel.h"
#include "platform/ZRStyle.h"

#include "data_bridge/zr_contract/IArray.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>

VXSpreadsheetTypeButton::VXSpreadsheetTypeButton(QWidget* parent)
    : ZRIconPushButton(parent)
{
  setAcceptDrops(true);
}

VXSpreadsheetTypeButton::~VXSpreadsheetTypeButton() = default;

QString VXSpreadsheetTypeButton::DragErrorText()
{
  return QStringLiteral("An error occurred while dragging the DataObject");
}

QString VXSpreadsheetTypeButton::OneArrayOnlyText()
{
  return QStringLiteral("Multidimensional spreadsheets can only support viewing one array at a time");
}

void VXSpreadsheetTypeButton::setAcceptsMultipleArrays(bool accepts)
{
  m_AcceptsMultipleArrays = accepts;
}

bool VXSpreadsheetTypeButton::acceptsMultipleArrays() const
{
  return m_AcceptsMultipleArrays;
}

void VXSpreadsheetTypeButton::setDataStructureModel(ZRDataStructureModel* model)
{
  m_Model = model;
}

ZRDataStructureModel* VXSpreadsheetTypeButton::dataStructureModel() const
{
  return m_Model;
}

void VXSpreadsheetTypeButton::setDescription(const QString& description)
{
  m_Description = description;
  setToolTip(description);
}

QString VXSpreadsheetTypeButton::description() const
{
  return m_Description;
}

bool VXSpreadsheetTypeButton::isDragHighlighted() const
{
  return m_DragHighlighted;
}

void VXSpreadsheetTypeButton::setHoverHighlighted(bool highlighted)
{
  if (m_HoverHighlighted != highlighted)
  {
    m_HoverHighlighted = highlighted;
    update();
  }
}

bool VXSpreadsheetTypeButton::isHoverHighlighted() const
{
  return m_HoverHighlighted;
}

bool VXSpreadsheetTypeButton::ValidateDragData(const ZR::DragAndDrop::DataPathDropValue& value,
                                               const ZRDataStructureModel* model)
{
  if (model == nullptr || model->getDataStructure() == nullptr)
  {
    return false;
  }
  return model->getDataStructure()->getDataAs<zr::core::IArray>(value.path) != nullptr;
}

std::optional<std::vector<zr::core::DataPath>>
VXSpreadsheetTypeButton::acceptedPaths(const QMimeData* mimeData, bool report) const
{
  if (mimeData == nullptr || !mimeData->hasFormat(ZR::DragAndDrop::DataStructureItem))
  {
    return std::nullopt;
  }
  const auto values = ZR::DragAndDrop::DropValuesFromMimeData(mimeData);
  if (!values.has_value() || values->empty())
  {
    if (report)
    {
      Q_EMIT printOutput(DragErrorText());
    }
    return std::nullopt;
  }
  if (!m_AcceptsMultipleArrays && values->size() > 1)
  {
    if (report)
    {
      Q_EMIT printOutput(OneArrayOnlyText());
    }
    return std::nullopt;
  }
  std::vector<zr::core::DataPath> paths;
  for (const ZR::DragAndDrop::DataPathDropValue& value : *values)
  {
    if (!ValidateDragData(value, m_Model))
    {
      return std::nullopt;
    }
    paths.push_back(value.path);
  }
  return paths;
}

void VXSpreadsheetTypeButton::dragEnterEvent(QDragEnterEvent* event)
{
  if (event->source() == this || !acceptedPaths(event->mimeData(), true).has_value())
  {
    event->ignore();
    return;
  }
  event->acceptProposedAction();
  m_DragHighlighted = true;
  update();
}

void VXSpreadsheetTypeButton::dragLeaveEvent(QDragLeaveEvent* event)
{
  m_DragHighlighted = false;
  update();
  ZRIconPushButton::dragLeaveEvent(event);
}

void VXSpreadsheetTypeButton::dropEvent(QDropEvent* event)
{
  m_DragHighlighted = false;
  update();
  std::optional<std::vector<zr::core::DataPath>> paths = acceptedPaths(event->mimeData(), false);
  if (!paths.has_value())
  {
    event->ignore();
    return;
  }
  event->acceptProposedAction();
  if (m_AcceptsMultipleArrays)
  {
    Q_EMIT arraysDropped(*paths);
  }
  else
  {
    Q_EMIT arrayDropped(paths->front());
  }
}

void VXSpreadsheetTypeButton::paintEvent(QPaintEvent* event)
{
  ZRIconPushButton::paintEvent(event);
  if (!m_DragHighlighted && !m_HoverHighlighted)
  {
    return;
  }
  // The "DragNDrop" state: a frame in the highlight colour.
  QPainter painter(this);
  QPen pen(ZRStyle::getMediumBlue());
  pen.setWidth(m_DragHighlighted ? 4 : 2);
  pen.setStyle(m_DragHighlighted ? Qt::SolidLine : Qt::DashLine);
  painter.setPen(pen);
  painter.drawRoundedRect(rect().adjusted(2, 2, -3, -3), 6, 6);
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
void VXSpreadsheetTypeButton::enterEvent(QEnterEvent* event)
#else
void VXSpreadsheetTypeButton::enterEvent(QEvent* event)
#endif
{
  ZRIconPushButton::enterEvent(event);
  Q_EMIT buttonHovered(m_Description);
}

void VXSpreadsheetTypeButton::leaveEvent(QEvent* event)
{
  ZRIconPushButton::leaveEvent(event);
  Q_EMIT buttonHovered(QString());
}

void VXSpreadsheetTypeButton::dataStructureItemHovered(const zr::core::DataPath&, bool isArray)
{
  setHoverHighlighted(isArray);
}
