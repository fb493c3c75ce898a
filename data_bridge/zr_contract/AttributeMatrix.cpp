#include "data_bridge/zr_contract/AttributeMatrix.h"

#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/IArray.h"

namespace zr::core
{
AttributeMatrix* AttributeMatrix::Create(DataStructure& dataStructure, std::string name,
                                         const ShapeType& tupleShape, std::optional<IdType> parentId)
{
  std::shared_ptr<AttributeMatrix> matrix(new AttributeMatrix(dataStructure, std::move(name), tupleShape));
  return dataStructure.insert(matrix, parentId) ? matrix.get() : nullptr;
}

AttributeMatrix::AttributeMatrix(DataStructure& dataStructure, std::string name, ShapeType tupleShape)
    : BaseGroup(dataStructure, std::move(name))
    , m_TupleShape(std::move(tupleShape))
{
}

DataObject::Type AttributeMatrix::getDataObjectType() const
{
  return Type::AttributeMatrix;
}

std::string AttributeMatrix::getTypeName() const
{
  return "AttributeMatrix";
}

const ShapeType& AttributeMatrix::getTupleShape() const
{
  return m_TupleShape;
}

usize AttributeMatrix::getNumberOfTuples() const
{
  return ShapeProduct(m_TupleShape);
}

void AttributeMatrix::setTupleShape(const ShapeType& tupleShape)
{
  m_TupleShape = tupleShape;
}

std::shared_ptr<DataObject> AttributeMatrix::shallowCopy() const
{
  return std::shared_ptr<DataObject>(new AttributeMatrix(*this));
}

bool AttributeMatrix::canInsert(const DataObject& object) const
{
  return dynamic_cast<const IArray*>(&object) != nullptr;
}
} // namespace zr::core
