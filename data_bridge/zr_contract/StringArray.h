#pragma once

#include "data_bridge/zr_contract/IArray.h"

#include <optional>
#include <string>
#include <vector>

namespace zr::core
{
// One string per tuple.
class StringArray : public IArray
{
public:
  static StringArray* Create(DataStructure& dataStructure, std::string name, std::vector<std::string> values,
                             std::optional<IdType> parentId = {});

  Type getDataObjectType() const override;
  std::string getTypeName() const override;
  ArrayType getArrayType() const override;
  ShapeType getTupleShape() const override;
  ShapeType getComponentShape() const override;
  DataType getDataType() const override;

  // Throws std::out_of_range past the end.
  const std::string& at(usize index) const;
  std::string& operator[](usize index);
  const std::string& operator[](usize index) const;
  const std::vector<std::string>& values() const;
  void setValues(std::vector<std::string> values);

protected:
  StringArray(DataStructure& dataStructure, std::string name, std::vector<std::string> values);
  StringArray(const StringArray&) = default;
  std::shared_ptr<DataObject> shallowCopy() const override;

private:
  std::vector<std::string> m_Values;
};
} // namespace zr::core
