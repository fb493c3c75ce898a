#pragma once

#include "data_views/VXRepresentation.h"

#include <nlohmann/json.hpp>

#include <QMap>
#include <QModelIndex>
#include <QSet>
#include <QString>

#include <functional>

class VXAbstractViewWidget;
class VXDataSource;
class VXPipelineModel;

/**
 * Rebuilds rows of the pipeline tree from tree item records: each record names the class of its item
 * ("item_type"), holds what the object wrote ("item_data") and, when it has rows below it, their
 * records ("item_children"). The first malformed record ends the load with its message; the rows
 * loaded before it stay. Kinds this build cannot make are reported and left out.
 */
class VXTreeStateLoader
{
public:
  using MessageSink = std::function<void(const QString&)>;

  enum class ItemCategory
  {
    Unknown,
    Bridge,
    DataSource,
    Filter,
    Representation,
    GlobalSource
  };

  VXTreeStateLoader(VXPipelineModel* model, const QMap<VXAbstractViewWidget*, int>& viewIndexes,
                    MessageSink sendMessage);

  // False when a record ended the load. A value of the wrong JSON type raises the library's error.
  bool load(const nlohmann::json& records, const QModelIndex& parent);

  // The item type under which the class is read now: older names map to the current ones.
  static QString CurrentTypeName(const QString& itemType);
  static ItemCategory Category(const QString& itemType);
  // The data view kind of a data view item type; None for other types.
  static VXRepresentation::Type RepresentationType(const QString& itemType);

private:
  // Each returns false when the load must end; an item left out gives true and an invalid index.
  bool loadRecord(const nlohmann::json& record, const QModelIndex& parent);
  bool loadBridge(const QString& itemType, const nlohmann::json& itemData, QModelIndex& created);
  bool loadDataSource(const QString& itemType, const nlohmann::json& itemData, const QModelIndex& parent,
                      QModelIndex& created);
  bool loadFilterHelper(const QString& itemType, const nlohmann::json& itemData, const QModelIndex& parent,
                        QModelIndex& created);
  bool loadRepresentationHelper(const QString& itemType, const nlohmann::json& itemData,
                                const QModelIndex& parent, QModelIndex& created);
  bool loadGlobalSourceHelper(const QString& itemType, const nlohmann::json& itemData, QModelIndex& created);
  // False when the item names render windows and none of them is known.
  bool findsViewWidget(const nlohmann::json& itemData) const;
  void fail(const QString& message);

  VXPipelineModel* m_Model = nullptr;
  QMap<VXAbstractViewWidget*, int> m_ViewIndexes;
  MessageSink m_SendMessage;
  QSet<VXDataSource*> m_LoadedSources;
};
