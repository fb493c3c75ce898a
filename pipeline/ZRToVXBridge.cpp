#include "pipeline/ZRToVXBridge.h"

#include "platform/IPipelineController.h"
#include "platform/ZRStyle.h"

#include <nlohmann/json.hpp>

#include <QFileInfo>

namespace
{
constexpr const char* k_FilePathKey = "bridge_object_file_path";
constexpr const char* k_UuidKey = "bridge_object_uuid";
constexpr const char* k_ItemNameKey = "bridge_object_item_name";
} // namespace

ZRToVXBridge::ZRToVXBridge(QObject* parent)
    : VXBridgeObject(parent)
{
}

ZRToVXBridge::~ZRToVXBridge() = default;

QString ZRToVXBridge::typeName() const
{
  return QStringLiteral("ZRToVXBridge");
}

QString ZRToVXBridge::sourceName() const
{
  return m_Controller != nullptr ? m_Controller->getDisplayName() : baseName();
}

QIcon ZRToVXBridge::getIcon() const
{
  return ZRStyle::generateThemeIconFromName(QStringLiteral("PipelineFileBridgeObj"));
}

QString ZRToVXBridge::filePath() const
{
  return m_Controller != nullptr ? m_Controller->getOutputFilePath() : m_FilePath;
}

QString ZRToVXBridge::getPipelineUuid() const
{
  return m_Controller != nullptr ? m_Controller->getPipelineUuid() : m_PipelineUuid;
}

void ZRToVXBridge::importPipelineOutput(ZR::IPipelineController* controller,
                                        const std::shared_ptr<zr::core::DataStructure>& dataStructure)
{
  m_Controller = controller;
  if (m_Controller != nullptr)
  {
    m_PipelineUuid = m_Controller->getPipelineUuid();
    setName(m_Controller->getDisplayName(), 0);
  }
  else
  {
    setName(QStringLiteral("UntitledPipeline"), 0);
  }
  if (!m_DataSources.isEmpty())
  {
    clear();
  }
  importDataStructure(dataStructure);
}

void ZRToVXBridge::reloadPipelineOutput(ZR::IPipelineController* controller,
                                        const std::shared_ptr<zr::core::DataStructure>& dataStructure)
{
  if (controller != nullptr)
  {
    m_PipelineUuid = controller->getPipelineUuid();
  }
  reloadDataStructure(dataStructure);
}

void ZRToVXBridge::write(nlohmann::json& json) const
{
  json[k_FilePathKey] = filePath().toStdString();
  json[k_UuidKey] = getPipelineUuid().toStdString();
  json[k_ItemNameKey] = baseName().toStdString();
}

void ZRToVXBridge::read(const nlohmann::json& json)
{
  // Sent on every read, also on one that then succeeds.
  Q_EMIT sendOutputMessage(QStringLiteral(
      "Error: Cannot read in state file to a visualization pipeline sourced from a KESTRIX-ZR "
      "pipeline, state files must be read in to visualization pipelines sourced from a file."));
  if (!json.is_object())
  {
    return;
  }
  const QString path = QString::fromStdString(json.at(k_FilePathKey).get<std::string>());
  if (QFileInfo(path).suffix() != QStringLiteral("kestrix"))
  {
    return;
  }
  m_FilePath = path;
  if (auto dataStructure = ReadKestrixFile(path))
  {
    importDataStructure(dataStructure);
  }
  m_PipelineUuid = QString::fromStdString(json.at(k_UuidKey).get<std::string>());
  setName(QString::fromStdString(json.at(k_ItemNameKey).get<std::string>()), getNameSuffixCounter());
}
