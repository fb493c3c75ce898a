#include "charts/VXChartArrayInputWidget.h"

#include "charts/VXChartMessages.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/IArray.h"

#include <nlohmann/json.hpp>

#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalBlocker>

VXChartArrayInputWidget::VXChartArrayInputWidget(const QString& label, QWidget* parent)
    : QWidget(parent)
    , m_Label(new QLabel(label, this))
    , m_PathEdit(new QLineEdit(this))
    , m_ComponentCombo(new QComboBox(this))
{
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(m_Label);
  layout->addWidget(m_PathEdit, 1);
  layout->addWidget(m_ComponentCombo);
  m_PathEdit->setReadOnly(true);
  m_PathEdit->setPlaceholderText(QStringLiteral("[Drop data array here]"));
  m_ComponentCombo->setVisible(false);
  setAcceptDrops(true);
  connect(m_ComponentCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
          [this](int component)
          {
            if (m_Path.has_value())
            {
              Q_EMIT componentIndexChanged(*m_Path, component);
            }
          });
}

VXChartArrayInputWidget::~VXChartArrayInputWidget() = default;

void VXChartArrayInputWidget::setDataStructure(
    const std::shared_ptr<const zr::core::DataStructure>& dataStructure)
{
  m_DataStructure = dataStructure;
}

void VXChartArrayInputWidget::setDataPath(const zr::core::DataPath& path)
{
  onInputArrayChanged(QString::fromStdString(path.toString()));
}

void VXChartArrayInputWidget::clear()
{
  m_Path.reset();
  m_PathEdit->clear();
  const QSignalBlocker blocker(m_ComponentCombo);
  m_ComponentCombo->clear();
  m_ComponentCombo->setVisible(false);
}

int VXChartArrayInputWidget::getComponent() const
{
  return std::max(0, m_ComponentCombo->currentIndex());
}

void VXChartArrayInputWidget::setComponent(int component)
{
  if (component >= 0 && component < m_ComponentCombo->count())
  {
    m_ComponentCombo->setCurrentIndex(component);
  }
}

const zr::core::IArray* VXChartArrayInputWidget::getArray() const
{
  if (!m_Path.has_value())
  {
    return nullptr;
  }
  if (m_DataStructure == nullptr)
  {
    Q_EMIT statusMessageAvailable(VXChartMessages::NoDataStructure());
    return nullptr;
  }
  return m_DataStructure->getDataAs<zr::core::IArray>(*m_Path);
}

bool VXChartArrayInputWidget::validateDroppedValue(const ZR::DragAndDrop::DataPathDropValue& value) const
{
  if (m_DataStructure == nullptr)
  {
    Q_EMIT statusMessageAvailable(VXChartMessages::NoDataStructure());
    return false;
  }
  const auto* array = m_DataStructure->getDataAs<zr::core::IArray>(value.path);
  const QString path = QString::fromStdString(value.path.toString());
  if (array == nullptr)
  {
    Q_EMIT statusMessageAvailable(VXChartMessages::ArrayMissing(path));
    return false;
  }
  if (array->getArrayType() == zr::core::IArray::ArrayType::StringArray && !m_AcceptsStrings)
  {
    Q_EMIT statusMessageAvailable(
        QStringLiteral("Data array at path '%1' holds text and cannot be used here.").arg(path));
    return false;
  }
  if (array->getArrayType() == zr::core::IArray::ArrayType::NeighborListArray)
  {
    Q_EMIT statusMessageAvailable(
        QStringLiteral("Data array at path '%1' is a neighbor list and cannot be charted.").arg(path));
    return false;
  }
  return true;
}

void VXChartArrayInputWidget::onInputArrayChanged(const QString& path)
{
  const auto dataPath = zr::core::DataPath::FromString(path.toStdString());
  const auto* array = (dataPath.has_value() && m_DataStructure != nullptr)
                          ? m_DataStructure->getDataAs<zr::core::IArray>(*dataPath)
                          : nullptr;
  if (array == nullptr)
  {
    Q_EMIT statusMessageAvailable(m_DataStructure == nullptr ? VXChartMessages::NoDataStructure()
                                                             : VXChartMessages::ArrayMissing(path));
    return;
  }
  m_Path = dataPath;
  m_PathEdit->setText(path);
  {
    const QSignalBlocker blocker(m_ComponentCombo);
    m_ComponentCombo->clear();
    const auto components = array->getNumberOfComponents();
    for (std::size_t i = 0; i < components; ++i)
    {
      m_ComponentCombo->addItem(QStringLiteral("Comp ") + QString::number(i));
    }
    m_ComponentCombo->setVisible(components > 1);
    m_ComponentCombo->setCurrentIndex(0);
  }
  Q_EMIT pathChanged(*m_Path, 0);
}

void VXChartArrayInputWidget::dragEnterEvent(QDragEnterEvent* event)
{
  if (event->mimeData()->hasFormat(ZR::DragAndDrop::DataStructureItem))
  {
    event->acceptProposedAction();
  }
}

void VXChartArrayInputWidget::dropEvent(QDropEvent* event)
{
  if (dropMimeData(event->mimeData()))
  {
    event->acceptProposedAction();
  }
}

bool VXChartArrayInputWidget::dropMimeData(const QMimeData* mimeData)
{
  const auto values = ZR::DragAndDrop::DropValuesFromMimeData(mimeData);
  if (!values.has_value() || values->empty())
  {
    Q_EMIT statusMessageAvailable(QStringLiteral("An error occurred while dragging the DataObject."));
    return false;
  }
  const ZR::DragAndDrop::DataPathDropValue& value = values->front();
  if (!validateDroppedValue(value))
  {
    return false;
  }
  onInputArrayChanged(QString::fromStdString(value.path.toString()));
  return true;
}

void VXChartArrayInputWidget::saveState(nlohmann::json& json, const char* pathKey) const
{
  json[pathKey] = m_Path.has_value() ? m_Path->toString() : std::string();
  json["data_array_comp"] = getComponent();
}

void VXChartArrayInputWidget::loadState(const nlohmann::json& json, const char* pathKey)
{
  if (json.contains(pathKey) && !json.at(pathKey).get<std::string>().empty())
  {
    onInputArrayChanged(QString::fromStdString(json.at(pathKey).get<std::string>()));
  }
  if (json.contains("data_array_comp"))
  {
    const QSignalBlocker blocker(m_ComponentCombo);
    setComponent(json.at("data_array_comp").get<int>());
  }
}
