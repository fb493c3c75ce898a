#include "app/ViewerMaskHost.h"

#include "app/ViewerThresholdMask.h"
#include "data_bridge/zr_contract/KestrixReaderLoader.h"
#include "pipeline/FileToVXBridge.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"

#include <QFileInfo>

ViewerMaskHost::ViewerMaskHost(VXPipeline* pipeline, QObject* parent)
    : QObject(parent)
    , m_Pipeline(pipeline)
{
}

ViewerMaskHost::~ViewerMaskHost() = default;

FileToVXBridge* ViewerMaskHost::findBridge(const zr::core::DataPath& geometryPath,
                                           const QObject* origin) const
{
  if (m_Pipeline == nullptr)
  {
    return nullptr;
  }
  auto showsGeometry = [&geometryPath](const FileToVXBridge* bridge)
  {
    if (QFileInfo(bridge->filePath()).suffix().compare(QStringLiteral("kestrix"), Qt::CaseInsensitive) != 0)
    {
      return false;
    }
    for (VXDataSource* dataSource : bridge->dataSources())
    {
      if (dataSource->importedDataPath() == geometryPath)
      {
        return true;
      }
    }
    return false;
  };
  for (const QObject* ancestor = origin; ancestor != nullptr; ancestor = ancestor->parent())
  {
    if (const auto* bridge = qobject_cast<const FileToVXBridge*>(ancestor))
    {
      if (showsGeometry(bridge))
      {
        return const_cast<FileToVXBridge*>(bridge);
      }
      break;
    }
  }
  for (VXBridgeObject* candidate : m_Pipeline->bridges())
  {
    auto* bridge = qobject_cast<FileToVXBridge*>(candidate);
    if (bridge != nullptr && showsGeometry(bridge))
    {
      return bridge;
    }
  }
  return nullptr;
}

std::shared_ptr<zr::core::DataStructure> ViewerMaskHost::structureOf(FileToVXBridge* bridge)
{
  const auto known = m_Structures.find(bridge);
  if (known != m_Structures.end())
  {
    return known->second;
  }
  auto result = zr::core::KESTRIX::LoadDataStructureFromFile(bridge->filePath().toStdString(), false);
  if (!result.valid())
  {
    const QString why = result.errors().empty() ? QStringLiteral("unknown reason")
                                                : QString::fromStdString(result.errors().front().message);
    Q_EMIT outputMessage(QStringLiteral("Cannot create a mask: the file '%1' could not be read: %2")
                             .arg(bridge->filePath(), why));
    return nullptr;
  }
  auto structure = std::make_shared<zr::core::DataStructure>(std::move(result.value()));
  m_Structures[bridge] = structure;
  m_ReadFrom[bridge] = QFileInfo(bridge->filePath()).absoluteFilePath();
  // The structure goes with the item.
  connect(bridge, &QObject::destroyed, this,
          [this, bridge]()
          {
            m_Structures.erase(bridge);
            m_ReadFrom.erase(bridge);
            m_Unsaved.erase(bridge);
            Q_EMIT canSaveChanged(canSave());
          });
  return structure;
}

bool ViewerMaskHost::createMask(const zr::core::DataPath& geometryPath,
                                const std::vector<ZR::ArrayThresholdRange>& thresholds, const QObject* origin)
{
  FileToVXBridge* bridge = findBridge(geometryPath, origin);
  if (bridge == nullptr)
  {
    Q_EMIT outputMessage(
        QStringLiteral("Cannot create a mask: no .kestrix file open here holds the geometry '%1'.")
            .arg(QString::fromStdString(geometryPath.toString())));
    return false;
  }
  std::shared_ptr<zr::core::DataStructure> structure = structureOf(bridge);
  if (structure == nullptr)
  {
    return false;
  }
  const ViewerThresholdMask::Outcome outcome =
      ViewerThresholdMask::AddMask(*structure, geometryPath, thresholds);
  Q_EMIT outputMessage(outcome.message);
  if (!outcome.added)
  {
    return false;
  }
  // The item now shows the host's structure: its data sources and filters keep their settings, and the
  // filters run again on the new data.
  bridge->reloadDataStructure(structure);
  Q_EMIT bridge->pipelineOutputReloaded();
  m_LastBridge = bridge;
  m_Unsaved.insert(bridge);
  Q_EMIT canSaveChanged(true);
  return true;
}

bool ViewerMaskHost::canSave() const
{
  return m_LastBridge != nullptr && m_Structures.count(m_LastBridge.data()) > 0;
}

QString ViewerMaskHost::lastFileName() const
{
  return m_LastBridge != nullptr ? QFileInfo(m_LastBridge->filePath()).fileName() : QString();
}

bool ViewerMaskHost::saveDataStructure(const QString& path)
{
  if (!canSave())
  {
    Q_EMIT outputMessage(QStringLiteral("There is no data structure to save: create a mask from a threshold "
                                        "filter of a .kestrix file first."));
    return false;
  }
  // Values too large for memory are read from the source file on demand: it must stay as it is.
  if (QFileInfo(path).absoluteFilePath() == m_ReadFrom.at(m_LastBridge.data()))
  {
    Q_EMIT outputMessage(
        QStringLiteral("Cannot save the data structure over '%1', the file it was read from; "
                       "choose another file.")
            .arg(path));
    return false;
  }
  const auto result =
      zr::core::KESTRIX::SaveDataStructureToFile(path.toStdString(), *m_Structures.at(m_LastBridge.data()));
  if (!result.valid())
  {
    const QString why = result.errors().empty() ? QStringLiteral("unknown reason")
                                                : QString::fromStdString(result.errors().front().message);
    Q_EMIT outputMessage(QStringLiteral("Failed to save the data structure to '%1': %2").arg(path, why));
    return false;
  }
  Q_EMIT outputMessage(QStringLiteral("Saved the data structure of '%1' to '%2'.").arg(lastFileName(), path));
  m_LastBridge->referToFile(QFileInfo(path).absoluteFilePath());
  m_Unsaved.erase(m_LastBridge.data());
  return true;
}

QStringList ViewerMaskHost::unsavedFileNames() const
{
  QStringList names;
  for (const FileToVXBridge* bridge : m_Unsaved)
  {
    names.append(QFileInfo(bridge->filePath()).fileName());
  }
  names.sort();
  return names;
}
