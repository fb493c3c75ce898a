#pragma once

#include "platform/ZRPlatformExport.h"

#include "data_bridge/zr_contract/DataObject.h"
#include "data_bridge/zr_contract/DataPath.h"
#include "data_bridge/zr_contract/DataStructure.h"

#include <QAbstractItemModel>

#include <memory>
#include <string>
#include <vector>

/**
 * @brief A read-only tree over a data structure: groups, geometries, attribute matrices and arrays,
 * one row per path (an object with two parents shows under both). Arrays can be dragged out; the
 * drag carries their paths in the ZR::DragAndDrop format.
 */
class ZR_PLATFORM_EXPORT ZRDataStructureModel : public QAbstractItemModel
{
  Q_OBJECT

public:
  enum Roles
  {
    DataPathRole = Qt::UserRole + 1, // the path as "a/b/c" text
    ObjectTypeRole,                  // ObjectTypeName of the object
    IsArrayRole                      // bool: a data array, neighbour list or string array
  };

  explicit ZRDataStructureModel(QObject* parent = nullptr);
  ~ZRDataStructureModel() override;

  /** @brief Rebuilds the whole tree; a null structure empties it. */
  void setDataStructure(std::shared_ptr<zr::core::DataStructure> dataStructure);
  std::shared_ptr<zr::core::DataStructure> getDataStructure() const;

  zr::core::DataPath dataPath(const QModelIndex& index) const;
  /** @brief The index of a path, or an invalid index when the tree does not hold it. */
  QModelIndex indexOf(const zr::core::DataPath& path) const;
  bool isArray(const QModelIndex& index) const;

  /** @brief The type name a drag carries: "DataArray", "NeighborList", "StringArray", "ImageGeom", ... */
  static std::string ObjectTypeName(const zr::core::DataObject& object);
  /** @brief Type, and for arrays the tuple and component shapes, one per line. */
  static QString ToolTipText(const zr::core::DataObject& object);

  QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QStringList mimeTypes() const override;
  /** @brief Encodes the arrays among the indexes; null when none of them is an array. */
  QMimeData* mimeData(const QModelIndexList& indexes) const override;
  Qt::DropActions supportedDragActions() const override;

private:
  struct Node
  {
    Node* parent = nullptr;
    int row = 0;
    zr::core::DataPath path;
    zr::core::IdType id = 0;
    std::vector<std::unique_ptr<Node>> children;
  };

  void buildChildren(Node& node, const std::vector<std::shared_ptr<zr::core::DataObject>>& members);
  Node* nodeOf(const QModelIndex& index) const;
  const zr::core::DataObject* objectOf(const QModelIndex& index) const;

  std::shared_ptr<zr::core::DataStructure> m_DataStructure;
  Node m_Root;
};
