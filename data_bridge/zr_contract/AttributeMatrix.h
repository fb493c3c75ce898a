#pragma once

#include "data_bridge/zr_contract/BaseGroup.h"

#include <optional>

namespace zr::core
{
// A group of arrays that share one tuple shape: the cells, vertices, edges or faces of a geometry.
// Only arrays are accepted as members. The tuple counts of members are not enforced: consumers check
// them and leave out arrays that don't fit.
class AttributeMatrix : public BaseGroup
{
public:
  static AttributeMatrix* Create(DataStructure& dataStructure, std::string name, const ShapeType& tupleShape,
                                 std::optional<IdType> parentId = {});

  Type getDataObjectType() const override;
  std::string getTypeName() const override;

  const ShapeType& getTupleShape() const;
  usize getNumberOfTuples() const;
  void setTupleShape(const ShapeType& tupleShape);

protected:
  AttributeMatrix(DataStructure& dataStructure, std::string name, ShapeType tupleShape);
  AttributeMatrix(const AttributeMatrix&) = default;
  std::shared_ptr<DataObject> shallowCopy() const override;
  bool canInsert(const DataObject& object) const override;

private:
  ShapeType m_TupleShape;
};
} // namespace zr::core
