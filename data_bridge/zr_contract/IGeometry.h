#pragma once

#include "data_bridge/zr_contract/BaseGroup.h"
#include "data_bridge/zr_contract/DataStructure.h"

#include <optional>

namespace zr::core
{
// Base of the eight geometries. A geometry is a group: its vertex and connectivity arrays and its
// attribute matrices are its members, and it refers to them by id.
class IGeometry : public BaseGroup
{
public:
  // Values returned by getGeomType().
  enum class GeomType : int
  {
    Image = 0,
    RectGrid = 1,
    Vertex = 2,
    Edge = 3,
    Triangle = 4,
    Quad = 5,
    Tetrahedral = 6,
    Hexahedral = 7
  };

  ~IGeometry() override = default;

  virtual int getGeomType() const = 0;
  virtual usize getNumberOfCells() const = 0;

protected:
  IGeometry(DataStructure& dataStructure, std::string name)
      : BaseGroup(dataStructure, std::move(name))
  {
  }
  IGeometry(const IGeometry&) = default;

  template<class T>
  T* getMemberAs(const std::optional<IdType>& id) const
  {
    DataStructure* dataStructure = getDataStructure();
    if (!id.has_value() || dataStructure == nullptr)
    {
      return nullptr;
    }
    return dataStructure->getDataAs<T>(*id);
  }
  template<class T>
  std::shared_ptr<T> getSharedMemberAs(const std::optional<IdType>& id) const
  {
    DataStructure* dataStructure = getDataStructure();
    if (!id.has_value() || dataStructure == nullptr)
    {
      return nullptr;
    }
    return dataStructure->getSharedDataAs<T>(*id);
  }
  static void RemapId(std::optional<IdType>& id, const std::map<IdType, IdType>& oldToNew)
  {
    if (id.has_value())
    {
      auto iter = oldToNew.find(*id);
      if (iter != oldToNew.end())
      {
        id = iter->second;
      }
    }
  }
};
} // namespace zr::core
