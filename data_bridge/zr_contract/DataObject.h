#pragma once

#include "data_bridge/zr_contract/DataPath.h"
#include "data_bridge/zr_contract/DataType.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace zr::core
{
class DataStructure;

// Root of everything a DataStructure holds. An object has an id, a name and zero or more parents
// (zero parents: a top-level object). Objects are created through the static Create functions of the
// concrete classes, which insert them into a DataStructure.
class DataObject
{
public:
  // Kinds of objects; values are only handed on, never interpreted by this library.
  enum class Type : std::uint32_t
  {
    DataObject = 0,
    BaseGroup,
    DataGroup,
    AttributeMatrix,
    IArray,
    IDataArray,
    DataArray,
    INeighborList,
    NeighborList,
    StringArray,
    IGeometry,
    IGridGeometry,
    ImageGeom,
    RectGridGeom,
    INodeGeometry0D,
    VertexGeom,
    INodeGeometry1D,
    EdgeGeom,
    INodeGeometry2D,
    TriangleGeom,
    QuadGeom,
    INodeGeometry3D,
    TetrahedralGeom,
    HexahedralGeom,
    Unknown,
    Any
  };

  virtual ~DataObject();

  DataObject& operator=(const DataObject&) = delete;
  DataObject& operator=(DataObject&&) = delete;

  virtual Type getDataObjectType() const = 0;
  // Short class name, e.g. "ImageGeom" or "DataArray<float32>"; also the type tag in .kestrix files.
  virtual std::string getTypeName() const = 0;

  IdType getId() const;
  const std::string& getName() const;
  // Renames the object; fails (false) when a sibling under any parent already has that name.
  bool rename(const std::string& name);

  const std::vector<IdType>& getParentIds() const;
  // Every path through which the object is reachable, one per parent chain.
  std::vector<DataPath> getDataPaths() const;
  DataStructure* getDataStructure() const;

protected:
  DataObject(DataStructure& dataStructure, std::string name);
  DataObject(const DataObject& other) = default;

  // A copy of this object with the same id, name and parents, for DataStructure's deep copy.
  // Group members still point at the source's objects; the DataStructure relinks them.
  virtual std::shared_ptr<DataObject> shallowCopy() const = 0;
  // Ids of objects this one refers to (besides group members) were renumbered.
  virtual void remapIds(const std::map<IdType, IdType>& oldToNew);

private:
  friend class DataStructure;

  DataStructure* m_DataStructure = nullptr;
  IdType m_Id = 0;
  std::string m_Name;
  std::vector<IdType> m_ParentIds;
};
} // namespace zr::core
