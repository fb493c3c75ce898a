#include "charts/VXChartMultiArrayInputWidget.h"

#include "charts/VXChartMessages.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/IArray.h"
#include "platform/ZRDragAndDrop.h"

#include <nlohmann/json.hpp>

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QSignalBlocker>

VXChartMultiArrayInputWidget::VXChartMultiArrayInputWidget(const QString& label, QWidget* parent)
    : QWidget(parent)
    , m_ArrayList(new QListWidget(this))
    , m_ComponentList(new QListWidget(this))
    , m_RemoveButton(new QPushButton(QStringLiteral("Remove"), this))
    , m_ClearButton(new QPushButton(QStringLiteral("Remove All"), this))
{
  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(new QLabel(label, this), 0, 0);
  layout->addWidget(new QLabel(QStringLiteral("Input Arrays:"), this), 1, 0);
  layout->addWidget(new QLabel(QStringLiteral("Components:"), this), 1, 1);
  layout->addWidget(m_ArrayList, 2, 0);
  layout->addWidget(m_ComponentList, 2, 1);
  auto* buttons = new QHBoxLayout();
  buttons->addWidget(m_RemoveButton);
  buttons->addWidget(m_ClearButton);
  buttons->addStretch();
  layout->addLayout(buttons, 3, 0, 1, 2);
  m_RemoveButton->setToolTip(QStringLiteral("Use this button to remove any selected array from the list"));
  m_ClearButton->setToolTip(QStringLiteral("Use this button to remove *all* arrays from the list"));
  m_ArrayList->setSelectionMode(QAbstractItemView::SingleSelection);
  setAcceptDrops(true);
  connect(m_RemoveButton, &QPushButton::clicked, this, &VXChartMultiArrayInputWidget::onRemoveButtonClicked);
  connect(m_ClearButton, &QPushButton::clicked, this, &VXChartMultiArrayInputWidget::onClearButtonClicked);
  connect(m_ArrayList, &QListWidget::itemSelectionChanged, this,
          &VXChartMultiArrayInputWidget::dataArrayItemSelected);
  connect(m_ComponentList, &QListWidget::itemSelectionChanged, this,
          &VXChartMultiArrayInputWidget::onSeriesCompTableSelectionChanged);
  connect(m_ComponentList, &QListWidget::itemChanged, this,
          &VXChartMultiArrayInputWidget::onSeriesCompTableCellChanged);
}

VXChartMultiArrayInputWidget::~VXChartMultiArrayInputWidget() = default;

void VXChartMultiArrayInputWidget::setDataStructure(
    const std::shared_ptr<const zr::core::DataStructure>& dataStructure)
{
  m_DataStructure = dataStructure;
}

const zr::core::IArray* VXChartMultiArrayInputWidget::getArray(const zr::core::DataPath& path) const
{
  if (m_DataStructure == nullptr)
  {
    Q_EMIT statusMessageAvailable(VXChartMessages::NoDataStructure());
    return nullptr;
  }
  return m_DataStructure->getDataAs<zr::core::IArray>(path);
}

std::size_t VXChartMultiArrayInputWidget::getComponentCount(const zr::core::DataPath& path) const
{
  auto found = m_Visibility.find(path.toString());
  return found != m_Visibility.end() ? found->second.size() : 0;
}

std::optional<zr::core::DataPath> VXChartMultiArrayInputWidget::getSelectedDataPath() const
{
  const int row = m_ArrayList->currentRow();
  if (row < 0 || row >= m_Paths.size())
  {
    return std::nullopt;
  }
  return m_Paths.at(row);
}

int VXChartMultiArrayInputWidget::getSelectedComponent() const
{
  return std::max(0, m_ComponentList->currentRow());
}

bool VXChartMultiArrayInputWidget::isVisible(const zr::core::DataPath& path, int component) const
{
  auto found = m_Visibility.find(path.toString());
  return found != m_Visibility.end() && component >= 0 &&
         static_cast<std::size_t>(component) < found->second.size() &&
         found->second[static_cast<std::size_t>(component)];
}

void VXChartMultiArrayInputWidget::setVisibility(const zr::core::DataPath& path, int component, bool visible)
{
  auto found = m_Visibility.find(path.toString());
  if (found == m_Visibility.end() || component < 0 ||
      static_cast<std::size_t>(component) >= found->second.size())
  {
    return;
  }
  found->second[static_cast<std::size_t>(component)] = visible;
  if (getSelectedDataPath() == path)
  {
    const QSignalBlocker blocker(m_ComponentList);
    m_ComponentList->item(component)->setCheckState(visible ? Qt::Checked : Qt::Unchecked);
  }
}

void VXChartMultiArrayInputWidget::addDataPaths(const QList<zr::core::DataPath>& paths)
{
  bool added = false;
  for (const zr::core::DataPath& path : paths)
  {
    const QString text = QString::fromStdString(path.toString());
    const auto* array = getArray(path);
    if (array == nullptr)
    {
      Q_EMIT statusMessageAvailable(VXChartMessages::ArrayMissing(text));
      continue;
    }
    if (array->getArrayType() != zr::core::IArray::ArrayType::DataArray)
    {
      Q_EMIT statusMessageAvailable(
          QStringLiteral("Data array at path '%1' holds no numbers and cannot be charted.").arg(text));
      continue;
    }
    if (m_Paths.contains(path))
    {
      continue;
    }
    m_Paths.append(path);
    m_Visibility[path.toString()] = std::vector<bool>(array->getNumberOfComponents(), true);
    m_ArrayList->addItem(text);
    added = true;
  }
  if (added)
  {
    m_ArrayList->setCurrentRow(m_ArrayList->count() - 1);
    Q_EMIT pathsChanged(m_Paths);
  }
}

void VXChartMultiArrayInputWidget::fillComponents()
{
  const QSignalBlocker blocker(m_ComponentList);
  m_ComponentList->clear();
  const auto path = getSelectedDataPath();
  if (!path.has_value())
  {
    return;
  }
  const std::vector<bool>& visible = m_Visibility[path->toString()];
  for (std::size_t i = 0; i < visible.size(); ++i)
  {
    auto* item = new QListWidgetItem(QStringLiteral("Comp ") + QString::number(i), m_ComponentList);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(visible[i] ? Qt::Checked : Qt::Unchecked);
  }
  m_ComponentList->setCurrentRow(0);
}

void VXChartMultiArrayInputWidget::onClearButtonClicked()
{
  m_Paths.clear();
  m_Visibility.clear();
  {
    const QSignalBlocker blocker(m_ArrayList);
    m_ArrayList->clear();
  }
  fillComponents();
  Q_EMIT pathsChanged(m_Paths);
}

void VXChartMultiArrayInputWidget::onRemoveButtonClicked()
{
  const int row = m_ArrayList->currentRow();
  if (row < 0 || row >= m_Paths.size())
  {
    return;
  }
  m_Visibility.erase(m_Paths.at(row).toString());
  m_Paths.removeAt(row);
  {
    const QSignalBlocker blocker(m_ArrayList);
    delete m_ArrayList->takeItem(row);
  }
  fillComponents();
  Q_EMIT pathsChanged(m_Paths);
}

void VXChartMultiArrayInputWidget::dataArrayItemSelected()
{
  fillComponents();
  if (const auto path = getSelectedDataPath())
  {
    Q_EMIT arraySelectionChanged(*path);
    Q_EMIT arrayCompSelectionChanged(*path, 0);
  }
}

void VXChartMultiArrayInputWidget::onSeriesCompTableSelectionChanged()
{
  if (const auto path = getSelectedDataPath())
  {
    Q_EMIT arrayCompSelectionChanged(*path, getSelectedComponent());
  }
}

void VXChartMultiArrayInputWidget::onSeriesCompTableCellChanged(QListWidgetItem* item)
{
  const auto path = getSelectedDataPath();
  if (!path.has_value())
  {
    return;
  }
  const int component = m_ComponentList->row(item);
  const bool visible = item->checkState() == Qt::Checked;
  m_Visibility[path->toString()][static_cast<std::size_t>(component)] = visible;
  Q_EMIT arrayCompVisibilityChanged(*path, component, visible);
}

void VXChartMultiArrayInputWidget::onInputArraysChanged()
{
  // Arrays gone from a new data structure leave the list, with a message.
  QList<zr::core::DataPath> kept;
  for (const zr::core::DataPath& path : m_Paths)
  {
    if (m_DataStructure != nullptr && m_DataStructure->getDataAs<zr::core::IArray>(path) != nullptr)
    {
      kept.append(path);
    }
    else
    {
      Q_EMIT statusMessageAvailable(
          QStringLiteral(
              "Data array at path '%1' does not exist and cannot be added or updated in the chart.")
              .arg(QString::fromStdString(path.toString())));
    }
  }
  if (kept.size() != m_Paths.size())
  {
    auto visibility = m_Visibility;
    onClearButtonClicked();
    addDataPaths(kept);
    for (const auto& path : kept)
    {
      m_Visibility[path.toString()] = visibility[path.toString()];
    }
    fillComponents();
  }
}

void VXChartMultiArrayInputWidget::dragEnterEvent(QDragEnterEvent* event)
{
  if (event->mimeData()->hasFormat(ZR::DragAndDrop::DataStructureItem))
  {
    event->acceptProposedAction();
  }
}

void VXChartMultiArrayInputWidget::dropEvent(QDropEvent* event)
{
  if (dropMimeData(event->mimeData()))
  {
    event->acceptProposedAction();
  }
}

bool VXChartMultiArrayInputWidget::dropMimeData(const QMimeData* mimeData)
{
  const auto values = ZR::DragAndDrop::DropValuesFromMimeData(mimeData);
  if (!values.has_value())
  {
    Q_EMIT statusMessageAvailable(QStringLiteral("An error occurred while dragging the DataObject."));
    return false;
  }
  QList<zr::core::DataPath> paths;
  for (const auto& value : *values)
  {
    paths.append(value.path);
  }
  addDataPaths(paths);
  return true;
}

void VXChartMultiArrayInputWidget::saveState(nlohmann::json& json) const
{
  nlohmann::json paths = nlohmann::json::array();
  nlohmann::json visibility = nlohmann::json::array();
  for (const zr::core::DataPath& path : m_Paths)
  {
    paths.push_back(path.toString());
    auto found = m_Visibility.find(path.toString());
    visibility.push_back(found != m_Visibility.end() ? nlohmann::json(found->second)
                                                     : nlohmann::json::array());
  }
  json["y_array_path"] = paths;
  json["series_visibility"] = visibility;
}

void VXChartMultiArrayInputWidget::loadState(const nlohmann::json& json)
{
  if (!json.contains("y_array_path"))
  {
    return;
  }
  QList<zr::core::DataPath> paths;
  for (const auto& text : json.at("y_array_path"))
  {
    if (auto path = zr::core::DataPath::FromString(text.get<std::string>()))
    {
      paths.append(*path);
    }
  }
  const QSignalBlocker blocker(this);
  onClearButtonClicked();
  addDataPaths(paths);
  if (json.contains("series_visibility"))
  {
    const auto& visibility = json.at("series_visibility");
    for (std::size_t i = 0; i < visibility.size() && i < static_cast<std::size_t>(paths.size()); ++i)
    {
      auto found = m_Visibility.find(paths.at(static_cast<int>(i)).toString());
      if (found != m_Visibility.end() && visibility[i].size() == found->second.size())
      {
        found->second = visibility[i].get<std::vector<bool>>();
      }
    }
  }
  fillComponents();
}
