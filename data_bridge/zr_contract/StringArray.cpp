#include "data_bridge/zr_contract/StringArray.h"

#include "data_bridge/zr_contract/DataStructure.h"

#include <stdexcept>

namespace zr::core
{
StringArray* StringArray::Create(DataStructure& dataStructure, std::string name,
                                 std::vector<std::string> values, std::optional<IdType> parentId)
{
  std::shared_ptr<StringArray> array(new StringArray(dataStructure, std::move(name), std::move(values)));
  return dataStructure.insert(array, parentId) ? array.get() : nullptr;
}

StringArray::StringArray(DataStructure& dataStructure, std::string name, std::vector<std::string> values)
    : IArray(dataStructure, std::move(name))
    , m_Values(std::move(values))
{
}

DataObject::Type StringArray::getDataObjectType() const
{
  return Type::StringArray;
}

std::string StringArray::getTypeName() const
{
  return "StringArray";
}

IArray::ArrayType StringArray::getArrayType() const
{
  return ArrayType::StringArray;
}

ShapeType StringArray::getTupleShape() const
{
  return {m_Values.size()};
}

ShapeType StringArray::getComponentShape() const
{
  return {1};
}

DataType StringArray::getDataType() const
{
  return DataType::int8;
}

const std::string& StringArray::at(usize index) const
{
  return m_Values.at(index);
}

std::string& StringArray::operator[](usize index)
{
  return m_Values.at(index);
}

const std::string& StringArray::operator[](usize index) const
{
  return m_Values.at(index);
}

const std::vector<std::string>& StringArray::values() const
{
  return m_Values;
}

void StringArray::setValues(std::vector<std::string> values)
{
  m_Values = std::move(values);
}

std::shared_ptr<DataObject> StringArray::shallowCopy() const
{
  return std::shared_ptr<DataObject>(new StringArray(*this));
}
} // namespace zr::core
