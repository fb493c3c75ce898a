#pragma once

#include "pipeline/VXBridgeObject.h"

#include <memory>

namespace ZR
{
class IPipelineController;
} // namespace ZR

/**
 * A top-level item that stands for a pipeline of the host. A later run of the same pipeline reloads
 * it: geometries are matched by path and their data sources keep their filters and data views.
 */
class ZRToVXBridge : public VXBridgeObject
{
  Q_OBJECT

public:
  explicit ZRToVXBridge(QObject* parent = nullptr);
  ~ZRToVXBridge() override;

  void write(nlohmann::json& json) const override;
  void read(const nlohmann::json& json) override;
  QString typeName() const override;
  QString sourceName() const override;
  QIcon getIcon() const override;
  QString filePath() const override;

  void importPipelineOutput(ZR::IPipelineController* controller,
                            const std::shared_ptr<zr::core::DataStructure>& dataStructure);
  void reloadPipelineOutput(ZR::IPipelineController* controller,
                            const std::shared_ptr<zr::core::DataStructure>& dataStructure);
  ZR::IPipelineController* zrPipeline() const { return m_Controller; }
  QString getPipelineUuid() const;

private:
  ZR::IPipelineController* m_Controller = nullptr;
  QString m_PipelineUuid; // the last identity known, for when the controller is gone
  QString m_FilePath;     // the output file named by a state file
};
