#pragma once

#include "data_bridge/zr_contract/DataMap.h"
#include "data_bridge/zr_contract/DataObject.h"
#include "data_bridge/zr_contract/DataPath.h"

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace zr::core
{
// Owns a tree (in fact a graph: an object may have several parents) of DataObjects.
//
// Copying makes a deep copy of the object tree: every object is copied with its id, name and parents,
// and the copy stays valid after the source is gone. Array stores are shared between source and copy
// (each array holds its store through a std::shared_ptr); copy a store explicitly with
// AbstractDataStore::deepCopy when independent values are needed.
//
// Building data: use the static Create functions of the concrete classes, e.g.
//   DataStructure ds;
//   auto* group = DataGroup::Create(ds, "Scan");
//   auto* image = ImageGeom::Create(ds, "Grains", group->getId());
//   image->setDimensions({64, 64, 32});
//   AttributeMatrix* cells = image->createCellData("Cell Data");
//   auto* ids = Int32Array::Create(ds, "FeatureIds", cells->getTupleShape(), {1}, cells->getId());
// and addAdditionalParent to make an existing object reachable from a second group.
class DataStructure
{
public:
  using Iterator = DataMap::Iterator;
  using ConstIterator = DataMap::ConstIterator;

  DataStructure();
  DataStructure(const DataStructure& other);
  DataStructure(DataStructure&& other) noexcept;
  DataStructure& operator=(const DataStructure& other);
  DataStructure& operator=(DataStructure&& other) noexcept;
  ~DataStructure();

  // The next free object id.
  IdType getNextId() const;
  // Renumbers all objects in ascending id order, starting at first.
  void resetIds(IdType first);

  // Number of objects, at every level.
  usize getSize() const;
  bool empty() const;

  std::optional<IdType> getId(const DataPath& path) const;
  bool containsData(IdType id) const;
  bool containsData(const DataPath& path) const;

  DataObject* getData(IdType id);
  const DataObject* getData(IdType id) const;
  DataObject* getData(const DataPath& path);
  const DataObject* getData(const DataPath& path) const;
  std::shared_ptr<DataObject> getSharedData(IdType id) const;
  std::shared_ptr<DataObject> getSharedData(const DataPath& path) const;

  template<class T>
  T* getDataAs(IdType id)
  {
    return dynamic_cast<T*>(getData(id));
  }
  template<class T>
  const T* getDataAs(IdType id) const
  {
    return dynamic_cast<const T*>(getData(id));
  }
  template<class T>
  T* getDataAs(const DataPath& path)
  {
    return dynamic_cast<T*>(getData(path));
  }
  template<class T>
  const T* getDataAs(const DataPath& path) const
  {
    return dynamic_cast<const T*>(getData(path));
  }
  template<class T>
  std::shared_ptr<T> getSharedDataAs(IdType id) const
  {
    return std::dynamic_pointer_cast<T>(getSharedData(id));
  }
  template<class T>
  std::shared_ptr<T> getSharedDataAs(const DataPath& path) const
  {
    return std::dynamic_pointer_cast<T>(getSharedData(path));
  }

  // The top level.
  const DataMap& getDataMap() const;
  std::vector<IdType> getTopLevelIds() const;
  // Every path of every object, depth first in id order.
  std::vector<DataPath> getAllDataPaths() const;

  // Top-level objects in ascending id order.
  Iterator begin();
  Iterator end();
  ConstIterator begin() const;
  ConstIterator end() const;

  // Adds a new object at the top level or under parentId, with the given id or the next free one.
  // Fails (false) when the parent is missing or refuses the object, a sibling has the same name,
  // the id is taken, or the object belongs to another DataStructure.
  bool insert(const std::shared_ptr<DataObject>& object, std::optional<IdType> parentId,
              std::optional<IdType> id = {});
  // Makes an existing object a member of a second (third...) group as well.
  bool addAdditionalParent(IdType targetId, IdType parentId);
  // Makes an existing member of a group reachable from the top level as well.
  bool addToTopLevel(IdType targetId);
  // Copies one object of another structure (a group without its members) into this one under
  // parentId, keeping its id. Arrays share their stores with the source. Null when insert fails.
  std::shared_ptr<DataObject> insertCopyOf(const DataObject& source, std::optional<IdType> parentId);
  // Sets the id the next created object gets; fails (false) when an object has that id or a higher one.
  bool setNextId(IdType nextId);
  // Removes the object from all its parents; members left without any parent go with it.
  bool removeData(IdType id);
  bool removeData(const DataPath& path);

private:
  void relinkAfterCopy(const DataStructure& source);
  void adoptObjects();
  void removeFromParents(DataObject& object);

  IdType m_NextId = 1;
  // Owns every object by id; the group maps share them.
  std::map<IdType, std::shared_ptr<DataObject>> m_Objects;
  DataMap m_RootGroup;
};
} // namespace zr::core
