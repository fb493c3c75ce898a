#include "data_bridge/zr_contract/DispatchHelpers.h"

#include <gtest/gtest.h>

#include <string>
#include <typeinfo>

using namespace zr::core;

namespace
{
struct SizeOfFunctor
{
  template<class T>
  usize operator()(int offset) const
  {
    return sizeof(T) + static_cast<usize>(offset);
  }
};

struct TypeCheckFunctor
{
  template<class T>
  bool operator()(DataType expected) const
  {
    return GetDataType<T>() == expected;
  }
};

template<class T>
struct TypeNameRunner
{
  explicit TypeNameRunner(std::string& out)
      : m_Out(out)
  {
  }
  void operator()() const { m_Out = DataTypeToString(GetDataType<T>()); }
  std::string& m_Out;
};

std::string MessageOf(const std::function<void()>& func)
{
  try
  {
    func();
  }
  catch (const std::runtime_error& error)
  {
    return error.what();
  }
  return "(nothing thrown)";
}

const DataType k_Invalid = static_cast<DataType>(42);
} // namespace

TEST(DispatchTest, ExecuteDataFunctionCoversAllElevenTypes)
{
  for (int value = 0; value <= 10; ++value)
  {
    const auto dataType = static_cast<DataType>(value);
    EXPECT_TRUE(ExecuteDataFunction(TypeCheckFunctor{}, dataType, dataType)) << value;
    EXPECT_EQ(ExecuteDataFunction(SizeOfFunctor{}, dataType, 1), GetDataTypeSize(dataType) + 1) << value;
  }
  EXPECT_EQ(
      MessageOf([] { ExecuteDataFunction(SizeOfFunctor{}, k_Invalid, 0); }),
      "zr::core::ExecuteDataFunction<...>(FuncT&& func, DataType dataType, ArgsT&&... args). Error: Invalid "
      "DataType");
}

TEST(DispatchTest, ExecuteNeighborFunctionRefusesBooleans)
{
  for (int value = 0; value <= 9; ++value)
  {
    const auto dataType = static_cast<DataType>(value);
    EXPECT_TRUE(ExecuteNeighborFunction(TypeCheckFunctor{}, dataType, dataType)) << value;
  }
  EXPECT_EQ(MessageOf([] { ExecuteNeighborFunction(SizeOfFunctor{}, DataType::boolean, 0); }),
            "Cannot create a NeighborList of booleans.");
  EXPECT_EQ(
      MessageOf([] { ExecuteNeighborFunction(SizeOfFunctor{}, k_Invalid, 0); }),
      "zr::core::ExecuteNeighborFunction<...>(FuncT&& func, DataType dataType, ArgsT&&... args). Error: "
      "Invalid DataType");
}

TEST(DispatchTest, RunTemplateClassHonoursTheOptionList)
{
  std::string name;
  for (int value = 0; value <= 9; ++value)
  {
    RunTemplateClass<TypeNameRunner, NoBooleanType>(static_cast<DataType>(value), name);
    EXPECT_EQ(name, DataTypeToString(static_cast<DataType>(value)));
  }
  EXPECT_EQ(MessageOf([&] { RunTemplateClass<TypeNameRunner, NoBooleanType>(DataType::boolean, name); }),
            "FilterUtilities::RunTemplateClass<> Error: dataType did not match any known type. DataType was "
            "boolean");
  RunTemplateClass<TypeNameRunner, AllArrayTypes>(DataType::boolean, name);
  EXPECT_EQ(name, "boolean");
  using NoFloats = ArrayTypeOptions<true, true, true, true, true, true, true, true, false, false, false>;
  EXPECT_EQ(MessageOf([&] { RunTemplateClass<TypeNameRunner, NoFloats>(DataType::float64, name); }),
            "FilterUtilities::RunTemplateClass<> Error: dataType did not match any known type. DataType was "
            "float64");
  EXPECT_EQ(MessageOf([&] { RunTemplateClass<TypeNameRunner, NoBooleanType>(k_Invalid, name); }),
            "FilterUtilities::RunTemplateClass<> Error: dataType did not match any known type. DataType was "
            "unknown");
}

TEST(DataTypeTest, NamesAndSizes)
{
  const usize sizes[] = {1, 1, 2, 2, 4, 4, 8, 8, 4, 8, 1};
  const char* names[] = {"int8",  "uint8",  "int16",   "uint16",  "int32",  "uint32",
                         "int64", "uint64", "float32", "float64", "boolean"};
  for (int value = 0; value <= 10; ++value)
  {
    EXPECT_EQ(GetDataTypeSize(static_cast<DataType>(value)), sizes[value]);
    EXPECT_EQ(DataTypeToString(static_cast<DataType>(value)), names[value]);
  }
}
