#include "pipeline/VXPipeline.h"

#include "annotations/VXGlobalSource.h"
#include "filters/VXFilter.h"
#include "pipeline/FileToVXBridge.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipelineModel.h"
#include "pipeline/ZRToVXBridge.h"
#include "platform/IPipelineController.h"
#include "views/VXAbstractViewWidget.h"

#include <vtkCellArray.h>
#include <vtkDataSet.h>
#include <vtkPolyData.h>
#include <vtkType.h>

#include <algorithm>

VXRepresentation::Type VXPipeline::s_DefaultRepType = VXRepresentation::Outline;
VXRepresentation::Type VXPipeline::s_DefaultImageGeomRepType = VXRepresentation::Outline;
VXRepresentation::Type VXPipeline::s_DefaultRectGridRepType = VXRepresentation::Outline;
VXRepresentation::Type VXPipeline::s_DefaultVertexRepType = VXRepresentation::Outline;
VXRepresentation::Type VXPipeline::s_DefaultEdgeRepType = VXRepresentation::Outline;
VXRepresentation::Type VXPipeline::s_DefaultTriangleRepType = VXRepresentation::Outline;
VXRepresentation::Type VXPipeline::s_DefaultQuadRepType = VXRepresentation::Outline;
VXRepresentation::Type VXPipeline::s_DefaultHexRepType = VXRepresentation::Outline;
VXRepresentation::Type VXPipeline::s_DefaultTetRepType = VXRepresentation::Outline;
QString VXPipeline::s_DefaultPresetName;

VXPipeline::VXPipeline(QObject* parent)
    : QObject(parent)
{
}

VXPipeline::~VXPipeline()
{
  m_Bridges.clear();
  m_GlobalSources.clear();
}

void VXPipeline::connectVXBridgeObject(const VXBridgeObject* bridge)
{
  // The tree model must have the item before the default data view asks for it.
  connect(bridge, &VXBridgeObject::dataSourceAdded, this, &VXPipeline::dataSourceAdded);
  connect(bridge, &VXBridgeObject::dataSourceAdded, this, &VXPipeline::onDataSourceAdded);
  connect(bridge, &VXBridgeObject::removeDataSource, this, &VXPipeline::removeDataSource);
  connect(bridge, &VXBridgeObject::sendOutputMessage, this, &VXPipeline::sendOutputMessage);
  connect(bridge, &VXBridgeObject::sendPopupMessage, this, &VXPipeline::sendPopupMessage);
  connect(bridge, &VXBridgeObject::pipelineOutputReloaded, this, &VXPipeline::pipelineOutputReloaded);
}

VXBridgeObject* VXPipeline::importFile(QString fileName)
{
  auto* bridge = new FileToVXBridge(this);
  Q_EMIT pipelineBridgeAdded(bridge);
  connect(bridge, &FileToVXBridge::sendFileMovedMessage, this, &VXPipeline::sendOutputMessage);
  connect(bridge, &FileToVXBridge::importProgress, this, &VXPipeline::importProgress);
  connectVXBridgeObject(bridge);
  bridge->import(fileName);
  bridge->setNameSuffix(VXPipelineModel::GetNameSuffixCounter(m_Bridges, bridge->baseName()));
  m_Bridges.append(bridge);
  return bridge;
}

VXBridgeObject* VXPipeline::importPipelineOutput(ZR::IPipelineController* controller,
                                                 std::shared_ptr<zr::core::DataStructure>& dataStructure)
{
  auto* bridge = new ZRToVXBridge(this);
  Q_EMIT pipelineBridgeAdded(bridge);
  connectVXBridgeObject(bridge);
  bridge->importPipelineOutput(controller, dataStructure);
  bridge->setNameSuffix(VXPipelineModel::GetNameSuffixCounter(m_Bridges, bridge->baseName()));
  m_Bridges.append(bridge);
  return bridge;
}

VXBridgeObject* VXPipeline::reloadPipelineOutput(ZR::IPipelineController* controller,
                                                 std::shared_ptr<zr::core::DataStructure>& dataStructure)
{
  for (VXBridgeObject* bridge : m_Bridges)
  {
    auto* pipelineBridge = qobject_cast<ZRToVXBridge*>(bridge);
    if (pipelineBridge == nullptr || controller == nullptr)
    {
      continue;
    }
    if (controller->getPipelineUuid() == pipelineBridge->getPipelineUuid())
    {
      pipelineBridge->reloadPipelineOutput(controller, dataStructure);
      Q_EMIT pipelineOutputReloaded();
      return pipelineBridge;
    }
  }
  // A pipeline the visualization has not seen yet gets an item of its own.
  return importPipelineOutput(controller, dataStructure);
}

void VXPipeline::addVXBridgeObject(VXBridgeObject* bridge)
{
  if (bridge == nullptr)
  {
    return;
  }
  bridge->setParent(this);
  Q_EMIT pipelineBridgeAdded(bridge);
  if (auto* fileBridge = qobject_cast<FileToVXBridge*>(bridge))
  {
    connect(fileBridge, &FileToVXBridge::sendFileMovedMessage, this, &VXPipeline::sendOutputMessage);
    connect(fileBridge, &FileToVXBridge::importProgress, this, &VXPipeline::importProgress);
  }
  connectVXBridgeObject(bridge);
  bridge->setNameSuffix(VXPipelineModel::GetNameSuffixCounter(m_Bridges, bridge->baseName()));
  m_Bridges.append(bridge);
}

void VXPipeline::pipelineBridgeRemoved(VXBridgeObject* bridge)
{
  m_Bridges.removeOne(bridge);
}

void VXPipeline::globalSourceRemoved(VXGlobalSource* globalSource)
{
  m_GlobalSources.removeOne(globalSource);
}

void VXPipeline::addGlobalSource(VXGlobalSource* globalSource)
{
  if (globalSource == nullptr || m_GlobalSources.contains(globalSource))
  {
    return;
  }
  globalSource->setParent(this);
  globalSource->setPipeline(this);
  // The first of a name goes without a number; later ones are told apart by the lowest free one.
  QList<VXBridgeObject*> others;
  for (VXGlobalSource* other : m_GlobalSources)
  {
    others.append(other);
  }
  const bool nameTaken = std::any_of(others.cbegin(), others.cend(),
                                     [globalSource](const VXBridgeObject* other)
                                     { return other->name() == globalSource->name(); });
  if (nameTaken)
  {
    globalSource->setNameSuffix(VXPipelineModel::GetNameSuffixCounter(others, globalSource->baseName()));
  }
  m_GlobalSources.append(globalSource);
  connect(this, &VXPipeline::activeViewChanged, globalSource, &VXGlobalSource::activeViewChanged);
  connect(globalSource, &VXGlobalSource::requestRenderAll, this, &VXPipeline::requestRenderAll);
  connect(globalSource, &VXBridgeObject::sendOutputMessage, this, &VXPipeline::sendOutputMessage);
  Q_EMIT globalSourceAdded(globalSource);
}

VXAbstractViewWidget* VXPipeline::activeViewWidget() const
{
  return m_ActiveView;
}

void VXPipeline::setActiveViewWidget(VXAbstractViewWidget* view)
{
  VXAbstractViewWidget* previous = m_ActiveView;
  if (previous == view)
  {
    return;
  }
  m_ActiveView = view;
  Q_EMIT activeViewChanged(previous, view);
}

VXRepresentation::Type VXPipeline::DefaultRepresentationType(VXDataSource* dataSource)
{
  vtkDataSet* output = dataSource != nullptr ? dataSource->getOutput() : nullptr;
  if (output == nullptr)
  {
    return s_DefaultRepType;
  }
  switch (output->GetDataObjectType())
  {
  case VTK_IMAGE_DATA:
    return s_DefaultImageGeomRepType;
  case VTK_RECTILINEAR_GRID:
    return s_DefaultRectGridRepType;
  case VTK_POLY_DATA:
  {
    auto* polyData = vtkPolyData::SafeDownCast(output);
    if (polyData->GetVerts() != nullptr && polyData->GetVerts()->GetNumberOfCells() > 0)
    {
      return s_DefaultVertexRepType;
    }
    if (polyData->GetLines() != nullptr && polyData->GetLines()->GetNumberOfCells() > 0)
    {
      return s_DefaultEdgeRepType;
    }
    // A vertex geometry's polydata has no vertex cells and lands here: points without cells draw
    // nothing, so it gets an outline, unless vertex geometries get no default view at all (while a
    // state loads its own views).
    if (polyData->GetPolys() == nullptr || polyData->GetPolys()->GetNumberOfCells() == 0)
    {
      return s_DefaultVertexRepType == VXRepresentation::None ? VXRepresentation::None
                                                              : VXRepresentation::Outline;
    }
    // The first polygon's size tells its type; GetCellType would build the cell map of the whole
    // polydata (eight bytes a cell) just to answer this.
    switch (polyData->GetPolys()->GetCellSize(0))
    {
    case 3:
      return s_DefaultTriangleRepType;
    case 4:
      return s_DefaultQuadRepType;
    default:
      return s_DefaultRepType;
    }
  }
  case VTK_UNSTRUCTURED_GRID:
    if (output->GetNumberOfCells() > 0)
    {
      switch (output->GetCellType(0))
      {
      case VTK_TETRA:
        return s_DefaultTetRepType;
      case VTK_HEXAHEDRON:
        return s_DefaultHexRepType;
      default:
        break;
      }
    }
    return s_DefaultRepType;
  default:
    return VXRepresentation::Outline;
  }
}

void VXPipeline::onDataSourceAdded(VXDataSource* dataSource)
{
  if (dataSource == nullptr)
  {
    return;
  }
  dataSource->setPipeline(this);
  if (dataSource->viewWidgets().isEmpty())
  {
    dataSource->addViewWidget(m_ActiveView);
  }
  connect(this, &VXPipeline::pipelineOutputReloaded, dataSource,
          &VXCoreObject::receivePipelineOutputReloaded);
  if (!dataSource->children().isEmpty())
  {
    return; // rebuilt from a state file: its data views come from the file
  }
  if (m_ActiveView.isNull())
  {
    return;
  }
  addRepresentation(dataSource, DefaultRepresentationType(dataSource));
}

void VXPipeline::onDataSourceRemoved(VXDataSource* dataSource)
{
  if (dataSource == nullptr)
  {
    return;
  }
  if (auto* bridge = qobject_cast<VXBridgeObject*>(dataSource->parent()))
  {
    bridge->onDataSourceRemoved(dataSource);
  }
  Q_EMIT dataSourceRemoved(dataSource);
}

bool VXPipeline::addRepresentation(VXCoreObject* parent, VXRepresentation::Type type)
{
  if (parent == nullptr)
  {
    Q_EMIT sendOutputMessage(
        QStringLiteral("Cannot add representation view because the selected parent item does not exist!"));
    return false;
  }
  if (m_ActiveView.isNull())
  {
    Q_EMIT sendOutputMessage(
        QStringLiteral("Cannot add representation view because no active render window is selected!"));
    return false;
  }
  if (type == VXRepresentation::None)
  {
    return false;
  }
  if (type > VXRepresentation::Glyph)
  {
    return true;
  }
  VXRepresentation* representation = VXRepresentation::Create(type, this);
  if (representation == nullptr)
  {
    return false; // no data view class of this type is part of the build
  }
  addRepresentation(parent, representation);
  return true;
}

bool VXPipeline::addRepresentation(VXCoreObject* parent, VXRepresentation* representation)
{
  if (parent == nullptr || representation == nullptr || m_ActiveView.isNull())
  {
    return false;
  }
  representation->setParentSource(parent);
  representation->setPipeline(this);
  if (!representation->addViewWidgetSplit(nullptr, m_ActiveView, parent->outputPort()))
  {
    representation->initialize(parent->outputPort());
  }
  connect(this, &VXPipeline::pipelineOutputReloaded, representation,
          &VXCoreObject::receivePipelineOutputReloaded);
  Q_EMIT representationAdded(representation);
  return true;
}

bool VXPipeline::addLoadedRepresentation(VXCoreObject* parent, VXRepresentation* representation)
{
  if (parent == nullptr || representation == nullptr || m_ActiveView.isNull())
  {
    return false;
  }
  representation->setParentSource(parent);
  representation->setPipeline(this);
  // The state file adds the views afterwards.
  representation->initializeViewWidgetSplits(nullptr, false);
  representation->initialize(parent->outputPort());
  connect(this, &VXPipeline::pipelineOutputReloaded, representation,
          &VXCoreObject::receivePipelineOutputReloaded);
  Q_EMIT representationAdded(representation);
  return true;
}

bool VXPipeline::addFilter(VXCoreObject* parent, VXFilter* filter)
{
  if (parent == nullptr || filter == nullptr || m_ActiveView.isNull())
  {
    return false;
  }
  filter->setParent(parent);
  filter->setPipeline(this);
  if (filter->inputPort() == nullptr)
  {
    filter->setInputPort(parent->outputPort());
  }
  if (filter->viewWidgets().isEmpty())
  {
    filter->addViewWidget(m_ActiveView);
    filter->setupFilter();
  }
  connect(filter, &VXCoreObject::requestRenderAll, this, &VXPipeline::requestRenderAll);
  connect(this, &VXPipeline::pipelineOutputReloaded, filter, &VXCoreObject::receivePipelineOutputReloaded);
  Q_EMIT filterAdded(filter);
  return true;
}
