#include "pipeline/VXBridgeObject.h"

#include "data_bridge/CVVtkBridge.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/IGeometry.h"
#include "data_bridge/zr_contract/KestrixReaderLoader.h"
#include "pipeline/VXDataSource.h"

#include <algorithm>
#include <list>

VXBridgeObject::VXBridgeObject(QObject* parent)
    : QObject(parent)
{
}

VXBridgeObject::~VXBridgeObject() = default;

QString VXBridgeObject::filePath() const
{
  return {};
}

void VXBridgeObject::onDataSourceRemoved(VXDataSource* dataSource)
{
  m_DataSources.removeOne(dataSource);
}

QString VXBridgeObject::name() const
{
  if (m_NameSuffix >= 1)
  {
    return QStringLiteral("%1 (%2)").arg(m_BaseName).arg(m_NameSuffix);
  }
  return m_BaseName;
}

void VXBridgeObject::setName(const QString& name, int suffix)
{
  m_BaseName = name;
  m_NameSuffix = suffix;
  Q_EMIT nameChanged(this->name());
}

void VXBridgeObject::setNameSuffix(int suffix)
{
  m_NameSuffix = suffix;
  Q_EMIT nameChanged(name());
}

QStringList VXBridgeObject::dataSourceNames() const
{
  QStringList names;
  for (const VXDataSource* dataSource : m_DataSources)
  {
    names.append(dataSource->name());
  }
  return names;
}

void VXBridgeObject::reportMultipleParents(const QString& geometryName)
{
  const QString text =
      QStringLiteral("The geometry named %1 has multiple parents but the visualization currently does "
                     "not support multiple parenting. This geometry will NOT be added to your "
                     "visualization pipeline.")
          .arg(geometryName);
  Q_EMIT sendPopupMessage(QStringLiteral("Geometry Not Loaded"), text);
  Q_EMIT sendOutputMessage(text);
}

std::shared_ptr<zr::core::DataStructure>
VXBridgeObject::ReadKestrixFile(const QString& path, const std::function<void(const std::string&)>& progress)
{
  auto result = zr::core::KESTRIX::LoadDataStructureFromFile(path.toStdString(), false, progress);
  if (!result.valid())
  {
    return nullptr;
  }
  for (const zr::core::Warning& warning : result.warnings())
  {
    Q_EMIT sendOutputMessage(
        QStringLiteral("Warning reading %1: %2").arg(path, QString::fromStdString(warning.message)));
  }
  return std::make_shared<zr::core::DataStructure>(std::move(result.value()));
}

std::shared_ptr<CV::VtkBridge::WrappedGeometry>
VXBridgeObject::wrapGeometry(const std::shared_ptr<zr::core::IGeometry>& geometry)
{
  auto wrapped = CV::VtkBridge::WrapGeometry(geometry);
  for (const std::string& message : wrapped->m_Messages)
  {
    Q_EMIT sendOutputMessage(QString::fromStdString(message));
  }
  return wrapped;
}

void VXBridgeObject::addDataSource(VXDataSource* dataSource)
{
  m_DataSources.append(dataSource);
  // However a source is deleted (tree removal, clear()), the list must not keep it.
  connect(dataSource, &QObject::destroyed, this,
          [this, dataSource]() { m_DataSources.removeOne(dataSource); });
  Q_EMIT dataSourceAdded(dataSource);
}

void VXBridgeObject::importDataStructure(const std::shared_ptr<zr::core::DataStructure>& dataStructure)
{
  auto structure = dataStructure;
  for (const auto& geometry : CV::VtkBridge::FindGeometry(structure))
  {
    if (geometry->getDataPaths().size() > 1)
    {
      reportMultipleParents(QString::fromStdString(geometry->getName()));
      continue;
    }
    auto* dataSource = new VXDataSource(this);
    dataSource->setWrappedGeometry(wrapGeometry(geometry));
    addDataSource(dataSource);
  }
}

void VXBridgeObject::reloadDataStructure(const std::shared_ptr<zr::core::DataStructure>& dataStructure)
{
  auto structure = dataStructure;
  auto found = CV::VtkBridge::FindGeometry(structure);
  std::list<std::shared_ptr<zr::core::IGeometry>> remaining(found.begin(), found.end());

  for (int index = 0; index < m_DataSources.size();)
  {
    VXDataSource* dataSource = m_DataSources[index];
    const zr::core::DataPath path = dataSource->importedDataPath();
    const auto* target =
        dynamic_cast<const zr::core::IGeometry*>(structure ? structure->getData(path) : nullptr);
    if (target == nullptr)
    {
      // The geometry is gone: the next source slides into this index.
      m_DataSources.removeAt(index);
      Q_EMIT removeDataSource(dataSource);
      continue;
    }
    for (auto it = remaining.begin(); it != remaining.end();)
    {
      const auto paths = (*it)->getDataPaths();
      if (paths.size() > 1)
      {
        reportMultipleParents(QString::fromStdString((*it)->getName()));
        it = remaining.erase(it);
        continue;
      }
      if (paths.size() == 1 && paths.front() == path)
      {
        // Same path: the source, its filters and its data views stay; only the dataset changes.
        dataSource->setWrappedGeometry(wrapGeometry(*it));
        remaining.erase(it);
        break;
      }
      ++it;
    }
    ++index;
  }

  for (const auto& geometry : remaining)
  {
    auto* dataSource = new VXDataSource(this);
    dataSource->setWrappedGeometry(wrapGeometry(geometry));
    addDataSource(dataSource);
  }
}

void VXBridgeObject::clear()
{
  // Entries leave the list through onDataSourceRemoved.
  const QList<VXDataSource*> dataSources = m_DataSources;
  for (VXDataSource* dataSource : dataSources)
  {
    delete dataSource;
  }
}
