#pragma once

#include "data_bridge/zr_contract/DataPath.h"
#include "data_views/VXRepresentation.h"
#include "platform/ArrayThresholdRange.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>
#include <vector>

namespace zr::core
{
class DataStructure;
} // namespace zr::core

namespace ZR
{
class IPipelineController;
} // namespace ZR

class VXAbstractViewWidget;
class VXBridgeObject;
class VXCoreObject;
class VXDataSource;
class VXGlobalSource;
class VXFilter;
class VXRepresentation;

/**
 * The door through which data enters the visualization. Each import makes a bridge; the bridge makes
 * one data source per geometry, and each new data source gets a default data view in the active view.
 */
class VXPipeline : public QObject
{
  Q_OBJECT

public:
  explicit VXPipeline(QObject* parent = nullptr);
  ~VXPipeline() override;

  VXBridgeObject* importPipelineOutput(ZR::IPipelineController* controller,
                                       std::shared_ptr<zr::core::DataStructure>& dataStructure);
  VXBridgeObject* reloadPipelineOutput(ZR::IPipelineController* controller,
                                       std::shared_ptr<zr::core::DataStructure>& dataStructure);
  void addVXBridgeObject(VXBridgeObject* bridge);
  bool addRepresentation(VXCoreObject* parent, VXRepresentation* representation);
  bool addRepresentation(VXCoreObject* parent, VXRepresentation::Type type);
  bool addLoadedRepresentation(VXCoreObject* parent, VXRepresentation* representation);
  // Hangs the filter under the parent, fed by the parent's output; it runs on its first Apply.
  bool addFilter(VXCoreObject* parent, VXFilter* filter);
  void setActiveViewWidget(VXAbstractViewWidget* view);
  VXAbstractViewWidget* activeViewWidget() const;
  void connectVXBridgeObject(const VXBridgeObject* bridge);
  // Adopts an annotation: a row at the top of the tree beside the bridges, following the active view.
  void addGlobalSource(VXGlobalSource* globalSource);
  QList<VXGlobalSource*> globalSources() const { return m_GlobalSources; }

  QList<VXBridgeObject*> bridges() const { return m_Bridges; }

  // The data view type a data source gets by default, from its dataset's kind.
  static VXRepresentation::Type DefaultRepresentationType(VXDataSource* dataSource);

  static void setDefaultRepType(VXRepresentation::Type type) { s_DefaultRepType = type; }
  static VXRepresentation::Type getDefaultRepType() { return s_DefaultRepType; }
  static void setDefaultImageGeomRepType(VXRepresentation::Type type) { s_DefaultImageGeomRepType = type; }
  static VXRepresentation::Type getDefaultImageGeomRepType() { return s_DefaultImageGeomRepType; }
  static void setDefaultRectGridRepType(VXRepresentation::Type type) { s_DefaultRectGridRepType = type; }
  static VXRepresentation::Type getDefaultRectGridRepType() { return s_DefaultRectGridRepType; }
  static void setDefaultVertexRepType(VXRepresentation::Type type) { s_DefaultVertexRepType = type; }
  static VXRepresentation::Type getDefaultVertexRepType() { return s_DefaultVertexRepType; }
  static void setDefaultEdgeRepType(VXRepresentation::Type type) { s_DefaultEdgeRepType = type; }
  static VXRepresentation::Type getDefaultEdgeRepType() { return s_DefaultEdgeRepType; }
  static void setDefaultTriangleRepType(VXRepresentation::Type type) { s_DefaultTriangleRepType = type; }
  static VXRepresentation::Type getDefaultTriangleRepType() { return s_DefaultTriangleRepType; }
  static void setDefaultQuadRepType(VXRepresentation::Type type) { s_DefaultQuadRepType = type; }
  static VXRepresentation::Type getDefaultQuadRepType() { return s_DefaultQuadRepType; }
  static void setDefaultHexRepType(VXRepresentation::Type type) { s_DefaultHexRepType = type; }
  static VXRepresentation::Type getDefaultHexRepType() { return s_DefaultHexRepType; }
  static void setDefaultTetRepType(VXRepresentation::Type type) { s_DefaultTetRepType = type; }
  static VXRepresentation::Type getDefaultTetRepType() { return s_DefaultTetRepType; }
  static void setDefaultPreset(const QString& name) { s_DefaultPresetName = name; }
  static QString getDefaultPreset() { return s_DefaultPresetName; }

public Q_SLOTS:
  void onDataSourceAdded(VXDataSource* dataSource);
  void onDataSourceRemoved(VXDataSource* dataSource);
  void pipelineBridgeRemoved(VXBridgeObject* bridge);
  void globalSourceRemoved(VXGlobalSource* globalSource);
  VXBridgeObject* importFile(QString fileName);

Q_SIGNALS:
  void pipelineBridgeAdded(VXBridgeObject* bridge);
  void globalSourceAdded(VXGlobalSource* globalSource);
  void dataSourceAdded(VXDataSource* dataSource);
  void dataSourceRemoved(VXDataSource* dataSource);
  void pipelineOutputReloaded();
  void filterAdded(VXFilter* filter);
  void representationAdded(VXRepresentation* representation);
  void removeModule(VXRepresentation* representation);
  void removeDataSource(VXDataSource* dataSource);
  void sendOutputMessage(QString message);
  void sendPopupMessage(QString title, QString message);
  void requestRenderAll();
  void activeViewChanged(VXAbstractViewWidget* previousActiveView, VXAbstractViewWidget* currentActiveView);
  void representationViewInstanceAdded();
  // Asks the host to make thresholds of its own pipeline from a chain of threshold filters.
  void createMultiThresholdObjectsFilter(zr::core::DataPath geometryPath,
                                         std::vector<ZR::ArrayThresholdRange> thresholds);
  void linkingDataViews(bool isLinking);
  // Progress of a long file import, one line per step; the host shows it while the import runs.
  void importProgress(QString message);

private:
  void adoptBridge(VXBridgeObject* bridge);

  QList<VXBridgeObject*> m_Bridges;
  QList<VXGlobalSource*> m_GlobalSources;
  QPointer<VXAbstractViewWidget> m_ActiveView;

  static VXRepresentation::Type s_DefaultRepType;
  static VXRepresentation::Type s_DefaultImageGeomRepType;
  static VXRepresentation::Type s_DefaultRectGridRepType;
  static VXRepresentation::Type s_DefaultVertexRepType;
  static VXRepresentation::Type s_DefaultEdgeRepType;
  static VXRepresentation::Type s_DefaultTriangleRepType;
  static VXRepresentation::Type s_DefaultQuadRepType;
  static VXRepresentation::Type s_DefaultHexRepType;
  static VXRepresentation::Type s_DefaultTetRepType;
  static QString s_DefaultPresetName;
};
