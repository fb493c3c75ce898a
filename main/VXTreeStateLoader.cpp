#include "main/VXTreeStateLoader.h"

#include "annotations/VXBuildPlateAnnotationSource.h"

#include "filters/VXFilter.h"
#include "filters/VXFilterFactory.h"
#include "pipeline/FileToVXBridge.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "pipeline/VXPipelineModel.h"
#include "pipeline/ZRToVXBridge.h"

#include <QFileInfo>
#include <QHash>

#include <string>
#include <vector>

namespace
{
constexpr const char* k_ItemTypeKey = "item_type";
constexpr const char* k_ItemDataKey = "item_data";
constexpr const char* k_ItemChildrenKey = "item_children";
constexpr const char* k_ImportedDataPathKey = "imported_data_path";
constexpr const char* k_RenderWindowIndexKey = "render_window_index";
constexpr const char* k_RepViewImplementationsKey = "rep_view_implementations";

const QString k_DataSourceType = QStringLiteral("VXDataSource");

const QHash<QString, VXRepresentation::Type>& representationTypes()
{
  static const QHash<QString, VXRepresentation::Type> s_Types = {
      {QStringLiteral("VXOutlineRep"), VXRepresentation::Outline},
      {QStringLiteral("VXPointsRep"), VXRepresentation::Points},
      {QStringLiteral("VXWireframeRep"), VXRepresentation::Wireframe},
      {QStringLiteral("VXSurfaceRep"), VXRepresentation::Surface},
      {QStringLiteral("VXImageSliceRep"), VXRepresentation::ImageSlice},
      {QStringLiteral("VXVolumeRep"), VXRepresentation::Volume},
      {QStringLiteral("VXGlyphRep"), VXRepresentation::Glyph}};
  return s_Types;
}

const QSet<QString>& filterTypes()
{
  static const QSet<QString> s_Types = {QStringLiteral("VXFClip"), QStringLiteral("VXFSlice"),
                                        QStringLiteral("VXFThreshold"), QStringLiteral("VXFImageResample"),
                                        QStringLiteral("VXFQuadricClustering")};
  return s_Types;
}

const QSet<QString>& globalSourceTypes()
{
  static const QSet<QString> s_Types = {
      QStringLiteral("VXDistanceSource"),          QStringLiteral("VXArrowAnnotationSource"),
      QStringLiteral("VXEllipseAnnotationSource"), QStringLiteral("VXBuildPlateAnnotationSource"),
      QStringLiteral("VXCaptionAnnotationSource"), QStringLiteral("VXTextAnnotationSource"),
      QStringLiteral("VXCornerAnnotationSource"),  QStringLiteral("VXImageAnnotationSource")};
  return s_Types;
}

VXBridgeObject* createBridge(const QString& itemType)
{
  if (itemType == QStringLiteral("FileToVXBridge"))
  {
    return new FileToVXBridge();
  }
  if (itemType == QStringLiteral("ZRToVXBridge"))
  {
    return new ZRToVXBridge();
  }
  return nullptr;
}

void collectRenderWindowIndexes(const nlohmann::json& itemData, std::vector<int>& indexes)
{
  if (!itemData.is_object())
  {
    return;
  }
  if (itemData.contains(k_RenderWindowIndexKey))
  {
    indexes.push_back(itemData.at(k_RenderWindowIndexKey).get<int>());
  }
  if (itemData.contains(k_RepViewImplementationsKey))
  {
    for (const nlohmann::json& entry : itemData.at(k_RepViewImplementationsKey))
    {
      if (entry.is_object() && entry.contains(k_RenderWindowIndexKey))
      {
        indexes.push_back(entry.at(k_RenderWindowIndexKey).get<int>());
      }
    }
  }
}
} // namespace

VXTreeStateLoader::VXTreeStateLoader(VXPipelineModel* model,
                                     const QMap<VXAbstractViewWidget*, int>& viewIndexes,
                                     MessageSink sendMessage)
    : m_Model(model)
    , m_ViewIndexes(viewIndexes)
    , m_SendMessage(std::move(sendMessage))
{
}

QString VXTreeStateLoader::CurrentTypeName(const QString& itemType)
{
  // Files of older versions call the image slice view by its former name.
  if (itemType == QStringLiteral("VXSliceRep"))
  {
    return QStringLiteral("VXImageSliceRep");
  }
  return itemType;
}

VXTreeStateLoader::ItemCategory VXTreeStateLoader::Category(const QString& itemType)
{
  const QString type = CurrentTypeName(itemType);
  if (type == QStringLiteral("FileToVXBridge") || type == QStringLiteral("ZRToVXBridge"))
  {
    return ItemCategory::Bridge;
  }
  if (type == k_DataSourceType)
  {
    return ItemCategory::DataSource;
  }
  if (filterTypes().contains(type))
  {
    return ItemCategory::Filter;
  }
  if (representationTypes().contains(type))
  {
    return ItemCategory::Representation;
  }
  if (globalSourceTypes().contains(type))
  {
    return ItemCategory::GlobalSource;
  }
  return ItemCategory::Unknown;
}

VXRepresentation::Type VXTreeStateLoader::RepresentationType(const QString& itemType)
{
  return representationTypes().value(CurrentTypeName(itemType), VXRepresentation::None);
}

void VXTreeStateLoader::fail(const QString& message)
{
  if (m_SendMessage)
  {
    m_SendMessage(message);
  }
}

bool VXTreeStateLoader::load(const nlohmann::json& records, const QModelIndex& parent)
{
  // Not an array: the library's type error goes to the caller like any other of a wrong type.
  const auto list = records.get<std::vector<nlohmann::json>>();
  for (const nlohmann::json& record : list)
  {
    if (!loadRecord(record, parent))
    {
      return false;
    }
  }
  return true;
}

bool VXTreeStateLoader::loadRecord(const nlohmann::json& record, const QModelIndex& parent)
{
  if (!record.is_object() || !record.contains(k_ItemTypeKey))
  {
    fail(QStringLiteral("Error reading state file; tree view item is missing the item type key"));
    return false;
  }
  if (!record.contains(k_ItemDataKey))
  {
    fail(QStringLiteral("Error reading state file; tree view item is missing the item data key"));
    return false;
  }
  const QString itemType =
      CurrentTypeName(QString::fromStdString(record.at(k_ItemTypeKey).get<std::string>()));
  const nlohmann::json& itemData = record.at(k_ItemDataKey);
  const ItemCategory category = Category(itemType);
  const bool topLevel = !parent.isValid();

  if (topLevel && category != ItemCategory::Bridge && category != ItemCategory::GlobalSource)
  {
    fail(QStringLiteral(
             "Error reading state file; found item type %1 but top level tree view items must be of "
             "type VXBridgeObject")
             .arg(itemType));
    return false;
  }
  if (!topLevel && category == ItemCategory::Bridge)
  {
    fail(QStringLiteral("Error reading state file; found VXBridgeObject item type %1 but the model index for "
                        "insertion is not at the top level of the tree.")
             .arg(itemType));
    return false;
  }

  QModelIndex created;
  bool ok = true;
  switch (category)
  {
  case ItemCategory::Bridge:
    ok = loadBridge(itemType, itemData, created);
    break;
  case ItemCategory::DataSource:
    ok = loadDataSource(itemType, itemData, parent, created);
    break;
  case ItemCategory::Filter:
    ok = loadFilterHelper(itemType, itemData, parent, created);
    break;
  case ItemCategory::Representation:
    ok = loadRepresentationHelper(itemType, itemData, parent, created);
    break;
  case ItemCategory::GlobalSource:
    ok = loadGlobalSourceHelper(itemType, itemData, created);
    break;
  case ItemCategory::Unknown:
    fail(QStringLiteral("Error reading state file; tree view item type %1 is unknown and is left out")
             .arg(itemType));
    break;
  }
  if (!ok)
  {
    return false;
  }
  // The rows below an item that was left out have nothing to hang under.
  if (created.isValid() && record.contains(k_ItemChildrenKey))
  {
    return load(record.at(k_ItemChildrenKey), created);
  }
  return true;
}

bool VXTreeStateLoader::loadBridge(const QString& itemType, const nlohmann::json& itemData,
                                   QModelIndex& created)
{
  VXPipeline* pipeline = m_Model->pipeline();
  VXBridgeObject* bridge = createBridge(itemType);
  if (bridge == nullptr || pipeline == nullptr)
  {
    delete bridge;
    return true;
  }
  // Adopted before it reads, so that the data sources it makes reach the tree.
  m_Model->addBridgeObject(bridge);
  bridge->read(itemData);
  QList<VXBridgeObject*> others = pipeline->bridges();
  others.removeAll(bridge);
  bridge->setNameSuffix(VXPipelineModel::GetNameSuffixCounter(others, bridge->baseName()));
  created = m_Model->pipelineIndex(bridge);
  return true;
}

bool VXTreeStateLoader::loadDataSource(const QString& itemType, const nlohmann::json& itemData,
                                       const QModelIndex& parent, QModelIndex& created)
{
  VXBridgeObject* bridge = m_Model->getPipelineObject(parent);
  if (bridge == nullptr)
  {
    fail(QStringLiteral(
             "Error reading state file; found item type %1 but the parent item is not a VXBridgeObject "
             "type.")
             .arg(itemType));
    return false;
  }
  if (bridge->filePath().isEmpty())
  {
    fail(QStringLiteral(
        "Error reading state file; cannot load the data source because the parent pipeline object "
        "does not have an associated .kestrix file."));
    return false;
  }
  const bool kestrixFile = QFileInfo(bridge->filePath()).suffix().toLower() == QStringLiteral("kestrix");
  const bool hasPath = itemData.is_object() && itemData.contains(k_ImportedDataPathKey);
  if (kestrixFile && !hasPath)
  {
    fail(QStringLiteral(
             "Error reading state file; found KESTRIX-ZR file %1 item type but missing the imported data "
             "path key.")
             .arg(itemType));
    return false;
  }
  const QString path =
      hasPath ? QString::fromStdString(itemData.at(k_ImportedDataPathKey).get<std::string>()) : QString();
  VXDataSource* match = nullptr;
  for (VXDataSource* source : bridge->dataSources())
  {
    if (m_LoadedSources.contains(source))
    {
      continue;
    }
    // A file of one dataset has a single source, with an empty path.
    if (!hasPath || QString::fromStdString(source->importedDataPath().toString("/")) == path)
    {
      match = source;
      break;
    }
  }
  if (match == nullptr)
  {
    fail(QStringLiteral(
             "Error reading state file; found item type %1 in state file but could find a matching data "
             "source in the model.")
             .arg(itemType));
    return false;
  }
  m_LoadedSources.insert(match);
  match->read(itemData, m_ViewIndexes);
  created = m_Model->dataSourceIndex(match);
  return true;
}

bool VXTreeStateLoader::loadFilterHelper(const QString& itemType, const nlohmann::json& itemData,
                                         const QModelIndex& parent, QModelIndex& created)
{
  if (m_Model->isRepresentation(parent))
  {
    fail(QStringLiteral(
             "Error reading state file; found %1 filter item type cannot have a VXRepresentation parent "
             "item.")
             .arg(itemType));
    return false;
  }
  VXFilter* filter = VXFilterFactory::Create(itemType);
  if (filter == nullptr)
  {
    fail(QStringLiteral(
             "Error reading state file; visual filters of type %1 are not available and are left out")
             .arg(itemType));
    return true;
  }
  if (!m_Model->addFilter(parent, filter))
  {
    delete filter;
    fail(QStringLiteral(
             "Error reading state file; cannot add the filter %1 because no render window is active")
             .arg(itemType));
    return false;
  }
  filter->read(itemData, m_ViewIndexes);
  // A filter that had been applied runs again, so that its data views meet its output; once only, for
  // one whose read has run it already.
  if (!filter->shouldAddRep() && !filter->appliesOnRead())
  {
    filter->applyFilter();
  }
  created = m_Model->filterIndex(filter);
  return true;
}

bool VXTreeStateLoader::findsViewWidget(const nlohmann::json& itemData) const
{
  std::vector<int> indexes;
  collectRenderWindowIndexes(itemData, indexes);
  if (indexes.empty())
  {
    return true;
  }
  for (int index : indexes)
  {
    if (m_ViewIndexes.key(index, nullptr) != nullptr)
    {
      return true;
    }
  }
  return false;
}

bool VXTreeStateLoader::loadRepresentationHelper(const QString& itemType, const nlohmann::json& itemData,
                                                 const QModelIndex& parent, QModelIndex& created)
{
  if (!m_Model->canAddRepresentation(parent))
  {
    fail(QStringLiteral(
             "Error reading state file; found %1 representation item type must have a VXDataSource or "
             "VXFilter parent item.")
             .arg(itemType));
    return false;
  }
  if (!findsViewWidget(itemData))
  {
    fail(QStringLiteral("Error reading state file; could not find a view widget to add items to"));
    return false;
  }
  VXRepresentation* representation =
      VXRepresentation::Create(RepresentationType(itemType), m_Model->pipeline());
  if (representation == nullptr)
  {
    fail(QStringLiteral("Error reading state file; data views of type %1 are not available and are left out")
             .arg(itemType));
    return true;
  }
  if (!m_Model->loadRepresentation(parent, representation))
  {
    delete representation;
    fail(QStringLiteral(
             "Error reading state file; cannot add the data view %1 because no render window is active")
             .arg(itemType));
    return false;
  }
  representation->read(itemData, m_ViewIndexes);
  // The windows named by the record are known now: connect each one's part to the parent's output.
  representation->initializeViewWidgetSplits(nullptr, true);
  created = m_Model->representationIndex(representation);
  return true;
}

bool VXTreeStateLoader::loadGlobalSourceHelper(const QString& itemType, const nlohmann::json& itemData,
                                               QModelIndex& created)
{
  if (itemType == VXBuildPlateAnnotationSource::k_TypeName && m_Model->pipeline() != nullptr)
  {
    auto* source = new VXBuildPlateAnnotationSource();
    source->read(itemData); // the names first, so that the row shows them
    m_Model->addGlobalSource(source);
    source->read(itemData, m_ViewIndexes);
    created = m_Model->globalSourceIndex(source);
    return true;
  }
  fail(QStringLiteral("Error reading state file; annotations of type %1 are not available and are left out")
           .arg(itemType));
  return true;
}
