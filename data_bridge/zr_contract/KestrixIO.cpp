#include "data_bridge/zr_contract/KestrixIO.h"

#include "data_bridge/zr_contract/Application.h"
#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataGroup.h"
#include "data_bridge/zr_contract/DispatchHelpers.h"
#include "data_bridge/zr_contract/EdgeGeom.h"
#include "data_bridge/zr_contract/EmptyDataStore.h"
#include "data_bridge/zr_contract/GeometryReferenceCheck.h"
#include "data_bridge/zr_contract/HDF5DatasetReader.h"
#include "data_bridge/zr_contract/HDF5Utilities.h"
#include "data_bridge/zr_contract/HexahedralGeom.h"
#include "data_bridge/zr_contract/ImageGeom.h"
#include "data_bridge/zr_contract/NeighborList.h"
#include "data_bridge/zr_contract/OutOfCoreDataStore.h"
#include "data_bridge/zr_contract/QuadGeom.h"
#include "data_bridge/zr_contract/RawValuesReader.h"
#include "data_bridge/zr_contract/ReadOnlyFile.h"
#include "data_bridge/zr_contract/RectGridGeom.h"
#include "data_bridge/zr_contract/StringArray.h"
#include "data_bridge/zr_contract/TetrahedralGeom.h"
#include "data_bridge/zr_contract/TriangleGeom.h"
#include "data_bridge/zr_contract/VertexGeom.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <limits>
#include <set>

namespace zr::core::KESTRIX
{
namespace
{
using HDF5::LockGuard;
using HDF5::ScopedId;

// Layout names; docs/kestrix-format.md describes them.
constexpr const char k_FormatAttr[] = "FileFormat";
constexpr const char k_VersionAttr[] = "FileVersion";
constexpr const char k_NextIdAttr[] = "NextObjectId";
constexpr const char k_DataStructureGroup[] = "DataStructure";
constexpr const char k_ObjectTypeAttr[] = "ObjectType";
constexpr const char k_ObjectIdAttr[] = "ObjectId";
constexpr const char k_TupleShapeAttr[] = "TupleShape";
constexpr const char k_ComponentShapeAttr[] = "ComponentShape";
constexpr const char k_GeomTypeAttr[] = "GeomType";
constexpr const char k_DimensionsAttr[] = "Dimensions";
constexpr const char k_SpacingAttr[] = "Spacing";
constexpr const char k_OriginAttr[] = "Origin";
constexpr const char k_NeighborValues[] = "Values";
constexpr const char k_NeighborListSizes[] = "ListSizes";

// Ids of members a geometry refers to, by attribute name.
constexpr const char k_CellDataIdAttr[] = "CellDataId";
constexpr const char k_XBoundsIdAttr[] = "XBoundsId";
constexpr const char k_YBoundsIdAttr[] = "YBoundsId";
constexpr const char k_ZBoundsIdAttr[] = "ZBoundsId";
constexpr const char k_VerticesIdAttr[] = "VerticesId";
constexpr const char k_VertexDataIdAttr[] = "VertexDataId";
constexpr const char k_EdgesIdAttr[] = "EdgesId";
constexpr const char k_EdgeDataIdAttr[] = "EdgeDataId";
constexpr const char k_FacesIdAttr[] = "FacesId";
constexpr const char k_FaceDataIdAttr[] = "FaceDataId";
constexpr const char k_PolyhedraIdAttr[] = "PolyhedraId";
constexpr const char k_PolyhedraDataIdAttr[] = "PolyhedraDataId";

// Values are written and copied in slabs of this many elements.
constexpr usize k_SlabElements = usize(1) << 22;

// Error codes of this file.
constexpr int k_OpenError = -2100;
constexpr int k_NotKestrixError = -2101;
constexpr int k_VersionError = -2102;
constexpr int k_LayoutError = -2103;
constexpr int k_ObjectError = -2104;
constexpr int k_ValuesError = -2105;
constexpr int k_WriteError = -2110;
constexpr int k_FinishError = -2120;
constexpr int k_UnexpectedError = -2199;

std::string DataStructurePath(const DataPath& path)
{
  return fmt::format("/{}/{}", k_DataStructureGroup, path.toString("/"));
}

std::optional<DataType> DataTypeFromString(const std::string& name)
{
  for (int value = 0; value <= static_cast<int>(DataType::boolean); ++value)
  {
    const auto dataType = static_cast<DataType>(value);
    if (DataTypeToString(dataType) == name)
    {
      return dataType;
    }
  }
  return std::nullopt;
}

// "DataArray<float32>" gives {"DataArray", float32}.
std::optional<DataType> TemplateArgument(const std::string& typeName, const std::string& prefix)
{
  if (typeName.size() <= prefix.size() + 2 || typeName.compare(0, prefix.size() + 1, prefix + "<") != 0 ||
      typeName.back() != '>')
  {
    return std::nullopt;
  }
  return DataTypeFromString(typeName.substr(prefix.size() + 1, typeName.size() - prefix.size() - 2));
}

std::string ShapeText(const ShapeType& shape)
{
  return fmt::format("{{{}}}", fmt::join(shape, ", "));
}

// Tuples times components, or nothing when a shape from the file counts more than 64 bits hold.
std::optional<usize> ElementCount(const ShapeType& tupleShape, const ShapeType& componentShape)
{
  const std::optional<usize> tuples = CheckedShapeProduct(tupleShape);
  const std::optional<usize> components = CheckedShapeProduct(componentShape);
  if (!tuples.has_value() || !components.has_value())
  {
    return std::nullopt;
  }
  return CheckedMultiply(*tuples, *components);
}

std::string TooManyElementsMessage(const std::string& h5Path, const ShapeType& tupleShape,
                                   const ShapeType& componentShape)
{
  return fmt::format("The shapes {} x {} of '{}' give more elements than 64 bits can count",
                     ShapeText(tupleShape), ShapeText(componentShape), h5Path);
}

// ---------------------------------------------------------------------------------------------
// Reading values

enum class StoreMode
{
  Empty,
  InMemory,
  OutOfCore
};

Result<ScopedId> OpenFlatDataset(hid_t file, const std::string& h5Path, DataType expectedType,
                                 usize expectedSize)
{
  ScopedId dataset = HDF5::OpenDataset(file, h5Path);
  if (!dataset.valid())
  {
    return MakeErrorResult<ScopedId>(k_LayoutError,
                                     fmt::format("The dataset '{}' is missing or unreadable", h5Path));
  }
  std::optional<DataType> storedType;
  {
    LockGuard lock(HDF5::GlobalMutex());
    ScopedId type(H5Dget_type(dataset.get()), H5Tclose);
    if (type.valid())
    {
      storedType = HDF5::DataTypeOfH5Type(type.get());
    }
  }
  const DataType fileType = expectedType == DataType::boolean ? DataType::uint8 : expectedType;
  if (!storedType.has_value() || *storedType != fileType)
  {
    return MakeErrorResult<ScopedId>(
        k_LayoutError, fmt::format("The dataset '{}' holds {} values, but its type tag says {}", h5Path,
                                   storedType.has_value() ? DataTypeToString(*storedType) : "non-numeric",
                                   DataTypeToString(expectedType)));
  }
  const std::optional<std::uint64_t> size = HDF5::FlatDatasetSize(dataset.get());
  if (!size.has_value() || *size != expectedSize)
  {
    return MakeErrorResult<ScopedId>(
        k_LayoutError,
        fmt::format("The dataset '{}' has {} elements, but its tuple and component shapes give {}", h5Path,
                    size.has_value() ? std::to_string(*size) : "a non-flat number of", expectedSize));
  }
  return std::move(dataset);
}

enum class RawRead
{
  Done,
  NotPlain,
  Failed
};

// Values stored as plain bytes of the store's own type are read without HDF5, through a descriptor of
// our own, and their ranges are taken on the way (see ReadRawValuesWithRanges). Anything else (chunked,
// compressed, another byte order) is left to HDF5.
template<class T>
RawRead ReadPlainValues(const HDF5::FileIO& fileIO, hid_t dataset, DataStore<T>& store)
{
  if (fileIO.isWritable())
  {
    // HDF5 may still hold written values in its own buffers.
    return RawRead::NotPlain;
  }
  const std::optional<HDF5::RawStorage> storage =
      HDF5::FindRawStorage(dataset, HDF5::NativeType(GetDataType<T>()), store.getSize() * sizeof(T));
  if (!storage.has_value())
  {
    return RawRead::NotPlain;
  }
  const ReadOnlyFile file(fileIO.getFilePath());
  if (!file.isSameFile(storage->device, storage->inode))
  {
    // Not the file HDF5 has open (replaced since, or a path we cannot reopen).
    return RawRead::NotPlain;
  }
  return ReadRawValuesWithRanges(file, storage->offset, store) ? RawRead::Done : RawRead::Failed;
}

std::string DamagedValuesMessage(const std::string& h5Path)
{
  return fmt::format("Reading the values of '{}' failed: the file is damaged or truncated", h5Path);
}

template<class T>
Result<std::shared_ptr<AbstractDataStore<T>>> LoadStore(const HDF5::FileIO& fileIO, const std::string& h5Path,
                                                        const ShapeType& tupleShape,
                                                        const ShapeType& componentShape, StoreMode mode)
{
  using StoreResult = Result<std::shared_ptr<AbstractDataStore<T>>>;
  const std::optional<usize> elementCount = ElementCount(tupleShape, componentShape);
  if (!elementCount.has_value())
  {
    return MakeErrorResult<std::shared_ptr<AbstractDataStore<T>>>(
        k_LayoutError, TooManyElementsMessage(h5Path, tupleShape, componentShape));
  }
  const usize size = *elementCount;
  Result<ScopedId> dataset = OpenFlatDataset(fileIO.getId(), h5Path, GetDataType<T>(), size);
  if (dataset.invalid())
  {
    return ConvertInvalidResult<std::shared_ptr<AbstractDataStore<T>>>(std::move(dataset));
  }
  if (mode == StoreMode::Empty)
  {
    return StoreResult(std::make_shared<EmptyDataStore<T>>(tupleShape, componentShape));
  }
  if (mode == StoreMode::OutOfCore)
  {
    auto reader = HDF5::DatasetReader::Open(fileIO.getSharedHandle(), h5Path, GetDataType<T>());
    if (reader.invalid())
    {
      return ConvertInvalidResult<std::shared_ptr<AbstractDataStore<T>>>(std::move(reader));
    }
    return StoreResult(std::make_shared<OutOfCoreDataStore<T>>(reader.value(), tupleShape, componentShape));
  }
  auto store = std::make_shared<DataStore<T>>(tupleShape, componentShape, std::nullopt);
  if constexpr (!std::is_same_v<T, bool>)
  {
    switch (ReadPlainValues(fileIO, dataset.value().get(), *store))
    {
    case RawRead::Done:
      return StoreResult(std::move(store));
    case RawRead::Failed:
      return MakeErrorResult<std::shared_ptr<AbstractDataStore<T>>>(k_ValuesError,
                                                                    DamagedValuesMessage(h5Path));
    case RawRead::NotPlain:
      break;
    }
  }
  if (!HDF5::ReadFlat(dataset.value().get(), HDF5::NativeType(GetDataType<T>()), 0, size, store->data()))
  {
    return MakeErrorResult<std::shared_ptr<AbstractDataStore<T>>>(k_ValuesError,
                                                                  DamagedValuesMessage(h5Path));
  }
  if constexpr (std::is_same_v<T, bool>)
  {
    // Bytes other than 0 and 1 from a damaged file must not become invalid bools.
    auto* bytes = reinterpret_cast<std::uint8_t*>(store->data());
    std::transform(bytes, bytes + size, bytes,
                   [](std::uint8_t v) { return static_cast<std::uint8_t>(v != 0); });
  }
  return StoreResult(std::move(store));
}

Result<std::vector<std::string>> ReadStrings(hid_t file, const std::string& h5Path)
{
  ScopedId dataset = HDF5::OpenDataset(file, h5Path);
  if (!dataset.valid())
  {
    return MakeErrorResult<std::vector<std::string>>(
        k_LayoutError, fmt::format("The dataset '{}' is missing or unreadable", h5Path));
  }
  LockGuard lock(HDF5::GlobalMutex());
  ScopedId fileType(H5Dget_type(dataset.get()), H5Tclose);
  const std::optional<std::uint64_t> size = HDF5::FlatDatasetSize(dataset.get());
  if (!fileType.valid() || H5Tget_class(fileType.get()) != H5T_STRING ||
      H5Tis_variable_str(fileType.get()) <= 0 || !size.has_value())
  {
    return MakeErrorResult<std::vector<std::string>>(
        k_LayoutError, fmt::format("The dataset '{}' is not a flat list of variable-length strings", h5Path));
  }
  ScopedId memoryType(H5Tcopy(H5T_C_S1), H5Tclose);
  H5Tset_size(memoryType.get(), H5T_VARIABLE);
  H5Tset_cset(memoryType.get(), H5T_CSET_UTF8);
  std::vector<char*> raw(*size, nullptr);
  if (*size > 0 && H5Dread(dataset.get(), memoryType.get(), H5S_ALL, H5S_ALL, H5P_DEFAULT, raw.data()) < 0)
  {
    // A read that fails halfway has already allocated the strings before the damage.
    ScopedId space(H5Dget_space(dataset.get()), H5Sclose);
    H5Dvlen_reclaim(memoryType.get(), space.get(), H5P_DEFAULT, raw.data());
    return MakeErrorResult<std::vector<std::string>>(
        k_ValuesError,
        fmt::format("Reading the strings of '{}' failed: the file is damaged or truncated", h5Path));
  }
  std::vector<std::string> values;
  values.reserve(raw.size());
  for (const char* text : raw)
  {
    values.emplace_back(text == nullptr ? "" : text);
  }
  if (*size > 0)
  {
    ScopedId space(H5Dget_space(dataset.get()), H5Sclose);
    H5Dvlen_reclaim(memoryType.get(), space.get(), H5P_DEFAULT, raw.data());
  }
  return values;
}

// ---------------------------------------------------------------------------------------------
// Import

// One object of the file: where it was first met, and every group that links to it.
struct ObjectRecord
{
  IdType fileId = 0;
  std::string name;
  std::string h5Path;
  std::string typeName;
  DataPath dataPath;
  // An HDF5 group: its members are read as the object's members.
  bool isGroup = false;
  // Parent object ids; none for the top level.
  std::vector<std::optional<IdType>> parents;
};

struct ImportContext
{
  const HDF5::FileIO& fileIO;
  const ImportOptions& options;
  usize outOfCoreThreshold = std::numeric_limits<usize>::max();
  std::map<IdType, ObjectRecord> records;
  std::map<IdType, haddr_t> addresses;
  std::vector<Warning> warnings;
};

// A bad object is left out with a warning naming it; the rest of the file is still read.
void LeaveOut(ImportContext& context, const std::string& reason, bool withMembers)
{
  context.warnings.push_back(
      {k_ObjectError, fmt::format("{}; it is left out{}", reason, withMembers ? " with its members" : "")});
}

Result<> CollectObjects(ImportContext& context, hid_t group, const std::string& h5Path,
                        const DataPath& dataPath, std::optional<IdType> parentId, int depth)
{
  if (depth > 512)
  {
    return MakeErrorResult(k_LayoutError, fmt::format("The groups below '{}' are nested too deeply", h5Path));
  }
  std::optional<std::vector<std::string>> names = HDF5::ListLinks(group);
  if (!names.has_value())
  {
    const std::string message =
        fmt::format("The members of '{}' could not be listed: the file is damaged", h5Path);
    if (depth == 0)
    {
      return MakeErrorResult(k_LayoutError, message);
    }
    context.warnings.push_back({k_ObjectError, message + "; they are left out"});
    return {};
  }
  for (const std::string& name : *names)
  {
    const std::string childPath = h5Path + "/" + name;
    ScopedId object;
    H5O_info_t info{};
    {
      LockGuard lock(HDF5::GlobalMutex());
      object = ScopedId(H5Oopen(group, name.c_str(), H5P_DEFAULT), H5Oclose);
      if (!object.valid() || H5Oget_info2(object.get(), &info, H5O_INFO_BASIC) < 0)
      {
        // A soft or external link that leads nowhere, or a damaged object header.
        LeaveOut(context, fmt::format("The link '{}' leads to no object that can be opened", childPath),
                 false);
        continue;
      }
    }
    const std::optional<std::vector<std::uint64_t>> id =
        HDF5::ReadUInt64Attribute(object.get(), k_ObjectIdAttr);
    const std::optional<std::string> typeName = HDF5::ReadStringAttribute(object.get(), k_ObjectTypeAttr);
    const bool isGroup = info.type == H5O_TYPE_GROUP;
    if (!id.has_value() || id->size() != 1 || !typeName.has_value())
    {
      LeaveOut(context,
               fmt::format("The object '{}' has no valid \"{}\" (uint64[1]) or \"{}\" (string) attribute",
                           childPath, k_ObjectIdAttr, k_ObjectTypeAttr),
               isGroup);
      continue;
    }
    const IdType fileId = id->front();
    auto known = context.records.find(fileId);
    if (known != context.records.end())
    {
      if (context.addresses.at(fileId) != info.addr)
      {
        LeaveOut(context,
                 fmt::format("The objects '{}' and '{}' have the same id {}", known->second.h5Path, childPath,
                             fileId),
                 isGroup);
        continue;
      }
      known->second.parents.push_back(parentId);
      continue;
    }
    ObjectRecord record;
    record.fileId = fileId;
    record.name = name;
    record.h5Path = childPath;
    record.typeName = *typeName;
    record.dataPath = dataPath.createChildPath(name);
    record.isGroup = isGroup;
    record.parents.push_back(parentId);
    context.records.emplace(fileId, record);
    context.addresses.emplace(fileId, info.addr);

    const bool isNeighborList = typeName->rfind("NeighborList<", 0) == 0;
    if (isGroup && !isNeighborList)
    {
      Result<> members = CollectObjects(context, object.get(), childPath, record.dataPath, fileId, depth + 1);
      if (members.invalid())
      {
        return members;
      }
    }
  }
  return {};
}

std::optional<IdType> ReadIdAttribute(hid_t object, const char* name)
{
  std::optional<std::vector<std::uint64_t>> values = HDF5::ReadUInt64Attribute(object, name);
  if (!values.has_value() || values->size() != 1)
  {
    return std::nullopt;
  }
  return values->front();
}

StoreMode ChooseStoreMode(const ImportContext& context, usize bytes)
{
  if (context.options.preflight)
  {
    return StoreMode::Empty;
  }
  return bytes > context.outOfCoreThreshold ? StoreMode::OutOfCore : StoreMode::InMemory;
}

struct ImportDataArrayFunctor
{
  template<class T>
  Result<> operator()(ImportContext& context, DataStructure& dataStructure, const ObjectRecord& record,
                      hid_t object, std::optional<IdType> parentId) const
  {
    const std::optional<std::vector<std::uint64_t>> tupleShape =
        HDF5::ReadUInt64Attribute(object, k_TupleShapeAttr);
    const std::optional<std::vector<std::uint64_t>> componentShape =
        HDF5::ReadUInt64Attribute(object, k_ComponentShapeAttr);
    if (!tupleShape.has_value() || !componentShape.has_value() || tupleShape->empty() ||
        componentShape->empty())
    {
      return MakeErrorResult(k_LayoutError,
                             fmt::format("The array '{}' has no valid \"{}\" or \"{}\" attribute",
                                         record.h5Path, k_TupleShapeAttr, k_ComponentShapeAttr));
    }
    const std::optional<usize> elementCount = ElementCount(*tupleShape, *componentShape);
    const std::optional<usize> bytes =
        elementCount.has_value() ? CheckedMultiply(*elementCount, sizeof(T)) : std::nullopt;
    if (!bytes.has_value())
    {
      return MakeErrorResult(k_LayoutError,
                             TooManyElementsMessage(record.h5Path, *tupleShape, *componentShape));
    }
    const StoreMode mode = ChooseStoreMode(context, *bytes);
    if (mode != StoreMode::Empty && context.options.progress)
    {
      context.options.progress(fmt::format("Reading '{}'", record.dataPath.toString()));
    }
    auto store = LoadStore<T>(context.fileIO, record.h5Path, *tupleShape, *componentShape, mode);
    if (store.invalid())
    {
      return ConvertInvalidResult<void>(std::move(store));
    }
    if (DataArray<T>::Create(dataStructure, record.name, store.value(), parentId) == nullptr)
    {
      return MakeErrorResult(k_ObjectError, fmt::format("The array '{}' could not be placed", record.h5Path));
    }
    return {};
  }
};

struct ImportNeighborListFunctor
{
  template<class T>
  Result<> operator()(ImportContext& context, DataStructure& dataStructure, const ObjectRecord& record,
                      std::optional<IdType> parentId) const
  {
    const hid_t file = context.fileIO.getId();
    const std::string sizesPath = record.h5Path + "/" + k_NeighborListSizes;
    const std::string valuesPath = record.h5Path + "/" + k_NeighborValues;
    std::optional<std::uint64_t> listCount;
    {
      ScopedId sizes = HDF5::OpenDataset(file, sizesPath);
      if (sizes.valid())
      {
        listCount = HDF5::FlatDatasetSize(sizes.get());
      }
    }
    if (!listCount.has_value())
    {
      return MakeErrorResult(k_LayoutError, fmt::format("The neighbour list '{}' has no \"{}\" dataset",
                                                        record.h5Path, k_NeighborListSizes));
    }
    auto sizes = LoadStore<std::uint64_t>(context.fileIO, sizesPath, {*listCount}, {1}, StoreMode::InMemory);
    if (sizes.invalid())
    {
      return ConvertInvalidResult<void>(std::move(sizes));
    }
    const auto* sizeValues = dynamic_cast<DataStore<std::uint64_t>*>(sizes.value().get());
    usize total = 0;
    for (usize i = 0; i < *listCount; ++i)
    {
      const std::optional<usize> sum = CheckedAdd(total, sizeValues->data()[i]);
      if (!sum.has_value())
      {
        return MakeErrorResult(k_LayoutError,
                               fmt::format("The list sizes of the neighbour list '{}' add up to more than 64 "
                                           "bits can count",
                                           record.h5Path));
      }
      total = *sum;
    }
    auto values = LoadStore<T>(context.fileIO, valuesPath, {total}, {1}, StoreMode::InMemory);
    if (values.invalid())
    {
      return ConvertInvalidResult<void>(std::move(values));
    }
    const auto* flat = dynamic_cast<DataStore<T>*>(values.value().get());
    std::vector<std::vector<T>> lists(*listCount);
    usize offset = 0;
    for (usize i = 0; i < *listCount; ++i)
    {
      lists[i].assign(flat->data() + offset, flat->data() + offset + sizeValues->data()[i]);
      offset += sizeValues->data()[i];
    }
    if (NeighborList<T>::Create(dataStructure, record.name, std::make_shared<ListStore<T>>(std::move(lists)),
                                parentId) == nullptr)
    {
      return MakeErrorResult(k_ObjectError,
                             fmt::format("The neighbour list '{}' could not be placed", record.h5Path));
    }
    return {};
  }
};

// Ids a geometry refers to, checked against the objects of the file once all exist.
struct GeometryReferences
{
  IGeometry* geometry = nullptr;
  std::string h5Path;
  std::map<std::string, IdType> ids;
};

template<class GeomT>
GeomT* CreateGeometry(DataStructure& dataStructure, const ObjectRecord& record,
                      std::optional<IdType> parentId)
{
  return GeomT::Create(dataStructure, record.name, parentId);
}

Result<> CreateObject(ImportContext& context, DataStructure& dataStructure, const ObjectRecord& record,
                      std::optional<IdType> parentId, std::vector<GeometryReferences>& references)
{
  ScopedId object;
  {
    LockGuard lock(HDF5::GlobalMutex());
    object = ScopedId(H5Oopen(context.fileIO.getId(), record.h5Path.c_str(), H5P_DEFAULT), H5Oclose);
  }
  if (!object.valid())
  {
    return MakeErrorResult(k_LayoutError, fmt::format("The object '{}' could not be opened", record.h5Path));
  }
  if (!dataStructure.setNextId(record.fileId))
  {
    return MakeErrorResult(k_LayoutError,
                           fmt::format("The object '{}' has an invalid id {}", record.h5Path, record.fileId));
  }
  const std::string& type = record.typeName;
  if (auto dataType = TemplateArgument(type, "DataArray"))
  {
    return ExecuteDataFunction(ImportDataArrayFunctor{}, *dataType, context, dataStructure, record,
                               object.get(), parentId);
  }
  if (auto dataType = TemplateArgument(type, "NeighborList"))
  {
    if (*dataType == DataType::boolean)
    {
      return MakeErrorResult(
          k_ObjectError,
          fmt::format("The neighbour list '{}' holds booleans, which is not supported", record.h5Path));
    }
    return ExecuteNeighborFunction(ImportNeighborListFunctor{}, *dataType, context, dataStructure, record,
                                   parentId);
  }
  if (type == "StringArray")
  {
    Result<std::vector<std::string>> strings = ReadStrings(context.fileIO.getId(), record.h5Path);
    if (strings.invalid())
    {
      return ConvertInvalidResult<void>(std::move(strings));
    }
    if (StringArray::Create(dataStructure, record.name, std::move(strings.value()), parentId) == nullptr)
    {
      return MakeErrorResult(k_ObjectError,
                             fmt::format("The string array '{}' could not be placed", record.h5Path));
    }
    return {};
  }
  if (type == "DataGroup")
  {
    return DataGroup::Create(dataStructure, record.name, parentId) != nullptr
               ? Result<>()
               : MakeErrorResult(k_ObjectError,
                                 fmt::format("The group '{}' could not be placed", record.h5Path));
  }
  if (type == "AttributeMatrix")
  {
    const std::optional<std::vector<std::uint64_t>> tupleShape =
        HDF5::ReadUInt64Attribute(object.get(), k_TupleShapeAttr);
    if (!tupleShape.has_value())
    {
      return MakeErrorResult(k_LayoutError, fmt::format("The attribute matrix '{}' has no \"{}\"",
                                                        record.h5Path, k_TupleShapeAttr));
    }
    if (!CheckedShapeProduct(*tupleShape).has_value())
    {
      return MakeErrorResult(k_LayoutError,
                             fmt::format("The \"{}\" {} of the attribute matrix '{}' counts more tuples than "
                                         "64 bits hold",
                                         k_TupleShapeAttr, ShapeText(*tupleShape), record.h5Path));
    }
    return AttributeMatrix::Create(dataStructure, record.name, *tupleShape, parentId) != nullptr
               ? Result<>()
               : MakeErrorResult(k_ObjectError,
                                 fmt::format("The attribute matrix '{}' could not be placed", record.h5Path));
  }

  IGeometry* geometry = nullptr;
  std::vector<const char*> idAttributes;
  if (type == "ImageGeom")
  {
    const auto dims = HDF5::ReadUInt64Attribute(object.get(), k_DimensionsAttr);
    const auto spacing = HDF5::ReadFloatAttribute(object.get(), k_SpacingAttr);
    const auto origin = HDF5::ReadFloatAttribute(object.get(), k_OriginAttr);
    if (!dims || dims->size() != 3 || !spacing || spacing->size() != 3 || !origin || origin->size() != 3)
    {
      return MakeErrorResult(
          k_LayoutError,
          fmt::format("The image geometry '{}' lacks valid \"{}\", \"{}\" or \"{}\" attributes",
                      record.h5Path, k_DimensionsAttr, k_SpacingAttr, k_OriginAttr));
    }
    if (!CheckedShapeProduct(*dims).has_value())
    {
      return MakeErrorResult(k_LayoutError,
                             fmt::format("The \"{}\" {} of the image geometry '{}' count more cells than 64 "
                                         "bits hold",
                                         k_DimensionsAttr, ShapeText(*dims), record.h5Path));
    }
    // Created only once its attributes are known to be good: a failed object leaves nothing behind.
    auto* image = CreateGeometry<ImageGeom>(dataStructure, record, parentId);
    if (image != nullptr)
    {
      image->setDimensions({(*dims)[0], (*dims)[1], (*dims)[2]});
      image->setSpacing({(*spacing)[0], (*spacing)[1], (*spacing)[2]});
      image->setOrigin({(*origin)[0], (*origin)[1], (*origin)[2]});
    }
    geometry = image;
    idAttributes = {k_CellDataIdAttr};
  }
  else if (type == "RectGridGeom")
  {
    geometry = CreateGeometry<RectGridGeom>(dataStructure, record, parentId);
    idAttributes = {k_CellDataIdAttr, k_XBoundsIdAttr, k_YBoundsIdAttr, k_ZBoundsIdAttr};
  }
  else if (type == "VertexGeom")
  {
    geometry = CreateGeometry<VertexGeom>(dataStructure, record, parentId);
    idAttributes = {k_VerticesIdAttr, k_VertexDataIdAttr};
  }
  else if (type == "EdgeGeom")
  {
    geometry = CreateGeometry<EdgeGeom>(dataStructure, record, parentId);
    idAttributes = {k_VerticesIdAttr, k_VertexDataIdAttr, k_EdgesIdAttr, k_EdgeDataIdAttr};
  }
  else if (type == "TriangleGeom" || type == "QuadGeom")
  {
    geometry = type == "TriangleGeom"
                   ? static_cast<IGeometry*>(CreateGeometry<TriangleGeom>(dataStructure, record, parentId))
                   : static_cast<IGeometry*>(CreateGeometry<QuadGeom>(dataStructure, record, parentId));
    idAttributes = {k_VerticesIdAttr, k_VertexDataIdAttr, k_EdgesIdAttr,
                    k_EdgeDataIdAttr, k_FacesIdAttr,      k_FaceDataIdAttr};
  }
  else if (type == "TetrahedralGeom" || type == "HexahedralGeom")
  {
    geometry = type == "TetrahedralGeom"
                   ? static_cast<IGeometry*>(CreateGeometry<TetrahedralGeom>(dataStructure, record, parentId))
                   : static_cast<IGeometry*>(CreateGeometry<HexahedralGeom>(dataStructure, record, parentId));
    idAttributes = {k_VerticesIdAttr, k_VertexDataIdAttr, k_EdgesIdAttr,     k_EdgeDataIdAttr,
                    k_FacesIdAttr,    k_FaceDataIdAttr,   k_PolyhedraIdAttr, k_PolyhedraDataIdAttr};
  }
  else
  {
    return MakeErrorResult(k_ObjectError,
                           fmt::format("The object '{}' has the unknown type \"{}\"", record.h5Path, type));
  }
  if (geometry == nullptr)
  {
    return MakeErrorResult(k_ObjectError,
                           fmt::format("The geometry '{}' could not be placed", record.h5Path));
  }
  GeometryReferences refs;
  refs.geometry = geometry;
  refs.h5Path = record.h5Path;
  for (const char* attribute : idAttributes)
  {
    if (std::optional<IdType> id = ReadIdAttribute(object.get(), attribute))
    {
      refs.ids.emplace(attribute, *id);
    }
  }
  references.push_back(std::move(refs));
  return {};
}

void ResolveReferences(DataStructure& dataStructure, const std::vector<GeometryReferences>& references,
                       std::vector<Warning>& warnings)
{
  for (const GeometryReferences& refs : references)
  {
    const auto idOf = [&](const char* attribute) -> std::optional<IdType>
    {
      auto iter = refs.ids.find(attribute);
      if (iter == refs.ids.end())
      {
        return std::nullopt;
      }
      if (!refs.geometry->contains(iter->second))
      {
        warnings.push_back(
            {k_LayoutError, fmt::format("The geometry '{}' refers through \"{}\" to object {}, which "
                                        "is not one of its members; the reference is dropped",
                                        refs.h5Path, attribute, iter->second)});
        return std::nullopt;
      }
      return iter->second;
    };
    if (auto* grid = dynamic_cast<IGridGeometry*>(refs.geometry))
    {
      grid->setCellData(idOf(k_CellDataIdAttr));
    }
    if (auto* rect = dynamic_cast<RectGridGeom*>(refs.geometry))
    {
      rect->setBounds(idOf(k_XBoundsIdAttr), idOf(k_YBoundsIdAttr), idOf(k_ZBoundsIdAttr));
    }
    if (auto* node0 = dynamic_cast<INodeGeometry0D*>(refs.geometry))
    {
      node0->setVertices(idOf(k_VerticesIdAttr));
      node0->setVertexAttributeMatrix(idOf(k_VertexDataIdAttr));
    }
    if (auto* node1 = dynamic_cast<INodeGeometry1D*>(refs.geometry))
    {
      node1->setEdges(idOf(k_EdgesIdAttr));
      node1->setEdgeAttributeMatrix(idOf(k_EdgeDataIdAttr));
    }
    if (auto* node2 = dynamic_cast<INodeGeometry2D*>(refs.geometry))
    {
      node2->setFaces(idOf(k_FacesIdAttr));
      node2->setFaceAttributeMatrix(idOf(k_FaceDataIdAttr));
    }
    if (auto* node3 = dynamic_cast<INodeGeometry3D*>(refs.geometry))
    {
      node3->setPolyhedra(idOf(k_PolyhedraIdAttr));
      node3->setPolyhedraAttributeMatrix(idOf(k_PolyhedraDataIdAttr));
    }
    // References to objects of the wrong kind stay set: whoever draws the geometry sees them and
    // refuses it, and the warning here says why.
    for (const std::string& problem : CheckGeometryReferences(*refs.geometry))
    {
      warnings.push_back(
          {k_ObjectError, fmt::format("The geometry '{}' cannot be shown: {}", refs.h5Path, problem)});
    }
  }
}

Result<DataStructure> ImportFromOpenFile(const HDF5::FileIO& fileIO, const ImportOptions& options)
{
  const std::string fileName = fileIO.getFilePath().string();
  {
    ScopedId root = HDF5::OpenGroup(fileIO.getId(), "/");
    const std::optional<std::string> format = HDF5::ReadStringAttribute(root.get(), k_FormatAttr);
    if (!format.has_value() || *format != k_FormatTag)
    {
      return MakeErrorResult<DataStructure>(
          k_NotKestrixError,
          fmt::format("'{}' is an HDF5 file but not a .kestrix file (no \"{}\" tag \"{}\")", fileName,
                      k_FormatAttr, k_FormatTag));
    }
    const std::optional<std::int32_t> version = HDF5::ReadInt32Attribute(root.get(), k_VersionAttr);
    if (!version.has_value() || *version < 1 || *version > k_FileVersion)
    {
      return MakeErrorResult<DataStructure>(
          k_VersionError,
          fmt::format("'{}' has the .kestrix version {}, which this program cannot read (it reads "
                      "versions 1 to {})",
                      fileName, version.has_value() ? std::to_string(*version) : "(missing)", k_FileVersion));
    }
  }
  ScopedId topGroup = HDF5::OpenGroup(fileIO.getId(), std::string("/") + k_DataStructureGroup);
  if (!topGroup.valid())
  {
    return MakeErrorResult<DataStructure>(
        k_LayoutError,
        fmt::format("'{}' has no \"/{}\" group: the file is damaged", fileName, k_DataStructureGroup));
  }

  ImportContext context{fileIO, options};
  if (options.outOfCoreThresholdBytes.has_value())
  {
    context.outOfCoreThreshold = *options.outOfCoreThresholdBytes;
  }
  else
  {
    Preferences* preferences = Application::GetOrCreateInstance()->getPreferences();
    if (preferences->largeDataFormat() == Preferences::k_OutOfCoreFormat)
    {
      context.outOfCoreThreshold = preferences->largeDataSize();
    }
  }

  Result<> collected = CollectObjects(context, topGroup.get(), std::string("/") + k_DataStructureGroup,
                                      DataPath(), std::nullopt, 0);
  if (collected.invalid())
  {
    return ConvertInvalidResult<DataStructure>(std::move(collected));
  }

  // Create in id order so that every object keeps its id; an object's first parent was made before it.
  DataStructure dataStructure;
  std::vector<GeometryReferences> references;
  std::vector<std::pair<IdType, std::optional<IdType>>> extraParents;
  // Objects left out; their members go with them, under the one warning that named the object.
  std::set<IdType> leftOut;
  for (const auto& [fileId, record] : context.records)
  {
    std::optional<std::optional<IdType>> placement;
    bool parentLeftOut = false;
    for (const std::optional<IdType>& parent : record.parents)
    {
      if (!parent.has_value() || dataStructure.containsData(*parent))
      {
        placement = parent;
        break;
      }
      parentLeftOut = parentLeftOut || leftOut.count(*parent) > 0;
    }
    if (!placement.has_value())
    {
      leftOut.insert(fileId);
      if (!parentLeftOut)
      {
        LeaveOut(context,
                 fmt::format("The object '{}' (id {}) has an id below that of every group holding it",
                             record.h5Path, fileId),
                 record.isGroup);
      }
      continue;
    }
    Result<> created = CreateObject(context, dataStructure, record, *placement, references);
    if (created.invalid())
    {
      leftOut.insert(fileId);
      LeaveOut(context, created.errors().front().message, record.isGroup);
      continue;
    }
    for (const std::optional<IdType>& parent : record.parents)
    {
      if (parent != *placement)
      {
        extraParents.emplace_back(fileId, parent);
      }
    }
  }
  for (const auto& [id, parent] : extraParents)
  {
    if (parent.has_value() && leftOut.count(*parent) > 0)
    {
      continue; // that group is not in the structure
    }
    const bool linked =
        parent.has_value() ? dataStructure.addAdditionalParent(id, *parent) : dataStructure.addToTopLevel(id);
    if (!linked)
    {
      context.warnings.push_back({k_LayoutError, fmt::format("A second link to '{}' could not be restored",
                                                             context.records.at(id).h5Path)});
    }
  }
  ResolveReferences(dataStructure, references, context.warnings);
  {
    ScopedId root = HDF5::OpenGroup(fileIO.getId(), "/");
    if (std::optional<IdType> nextId = ReadIdAttribute(root.get(), k_NextIdAttr))
    {
      dataStructure.setNextId(*nextId);
    }
  }
  return Result<DataStructure>(std::move(dataStructure), std::move(context.warnings));
}

// ---------------------------------------------------------------------------------------------
// Export

struct ExportContext
{
  hid_t file = -1;
  std::map<IdType, std::string> written;
  const ProgressCallback& progress;
};

Result<> CheckName(const DataObject& object)
{
  const std::string& name = object.getName();
  if (name.empty() || name == "." || name.find('/') != std::string::npos)
  {
    return MakeErrorResult(
        k_WriteError,
        fmt::format("The object name '{}' cannot be written: names in a .kestrix file may not be "
                    "empty, \".\" or contain '/'",
                    name));
  }
  return {};
}

Result<ScopedId> CreateFlatDataset(hid_t group, const std::string& name, hid_t fileType, usize size,
                                   const std::string& h5Path, bool skipFill = true)
{
  LockGuard lock(HDF5::GlobalMutex());
  hsize_t dims = size;
  ScopedId space(H5Screate_simple(1, &dims, nullptr), H5Sclose);
  ScopedId properties(H5Pcreate(H5P_DATASET_CREATE), H5Pclose);
  if (skipFill)
  {
    // Every element is written right after; HDF5 refuses this for variable-length types.
    H5Pset_fill_time(properties.get(), H5D_FILL_TIME_NEVER);
  }
  ScopedId dataset(
      H5Dcreate2(group, name.c_str(), fileType, space.get(), H5P_DEFAULT, properties.get(), H5P_DEFAULT),
      H5Dclose);
  if (!dataset.valid())
  {
    return MakeErrorResult<ScopedId>(k_WriteError,
                                     fmt::format("The dataset '{}' could not be created", h5Path));
  }
  return std::move(dataset);
}

template<class T>
Result<> WriteStoreValues(hid_t dataset, const AbstractDataStore<T>& store, const std::string& h5Path)
{
  const hid_t memoryType = HDF5::NativeType(GetDataType<T>());
  const usize size = store.getSize();
  if (const auto* memory = dynamic_cast<const DataStore<T>*>(&store))
  {
    if (!HDF5::WriteFlat(dataset, memoryType, 0, size, memory->data()))
    {
      return MakeErrorResult(k_WriteError, fmt::format("Writing the values of '{}' failed", h5Path));
    }
    return {};
  }
  // Any other store (on demand, computed) is copied out slab by slab, outside the HDF5 lock.
  std::unique_ptr<T[]> slab(new T[std::min(size, k_SlabElements)]);
  for (usize start = 0; start < size; start += k_SlabElements)
  {
    const usize count = std::min(k_SlabElements, size - start);
    store.copyIntoBuffer(start, slab.get(), count);
    if (!HDF5::WriteFlat(dataset, memoryType, start, count, slab.get()))
    {
      return MakeErrorResult(k_WriteError, fmt::format("Writing the values of '{}' failed", h5Path));
    }
  }
  return {};
}

struct WriteDataArrayFunctor
{
  template<class T>
  Result<> operator()(ExportContext& context, hid_t group, const IDataArray& array,
                      const std::string& h5Path) const
  {
    const auto& typed = dynamic_cast<const DataArray<T>&>(array);
    const AbstractDataStore<T>* store = typed.getDataStore();
    if (store == nullptr)
    {
      return MakeErrorResult(k_WriteError, fmt::format("The array '{}' has no store to write", h5Path));
    }
    if (store->getStoreType() == IDataStore::StoreType::Empty)
    {
      return MakeErrorResult(
          k_WriteError,
          fmt::format("The array '{}' was imported without its values and cannot be written", h5Path));
    }
    if (context.progress)
    {
      context.progress(fmt::format("Writing '{}'", h5Path));
    }
    Result<ScopedId> dataset = CreateFlatDataset(group, array.getName(), HDF5::NativeType(GetDataType<T>()),
                                                 store->getSize(), h5Path);
    if (dataset.invalid())
    {
      return ConvertInvalidResult<void>(std::move(dataset));
    }
    const hid_t id = dataset.value().get();
    const bool tagged = HDF5::WriteStringAttribute(id, k_ObjectTypeAttr, array.getTypeName()) &&
                        HDF5::WriteUInt64Attribute(id, k_ObjectIdAttr, {array.getId()}) &&
                        HDF5::WriteUInt64Attribute(id, k_TupleShapeAttr, store->getTupleShape()) &&
                        HDF5::WriteUInt64Attribute(id, k_ComponentShapeAttr, store->getComponentShape());
    if (!tagged)
    {
      return MakeErrorResult(k_WriteError,
                             fmt::format("The attributes of '{}' could not be written", h5Path));
    }
    return WriteStoreValues<T>(id, *store, h5Path);
  }
};

struct WriteNeighborListFunctor
{
  template<class T>
  Result<> operator()(hid_t group, const INeighborList& list, const std::string& h5Path) const
  {
    const auto& typed = dynamic_cast<const NeighborList<T>&>(list);
    std::shared_ptr<ListStore<T>> lists = typed.getSharedListStore();
    const usize listCount = lists == nullptr ? 0 : lists->getNumberOfLists();
    DataStore<std::uint64_t> sizes({listCount}, {1}, 0);
    DataStore<T> values({lists == nullptr ? 0 : lists->getTotalValueCount()}, {1}, T{});
    usize offset = 0;
    for (usize i = 0; i < listCount; ++i)
    {
      const std::vector<T>& entries = lists->getList(i);
      sizes.setValue(i, entries.size());
      std::copy(entries.begin(), entries.end(), values.data() + offset);
      offset += entries.size();
    }
    Result<ScopedId> sizesSet =
        CreateFlatDataset(group, k_NeighborListSizes, H5T_NATIVE_UINT64, listCount, h5Path);
    Result<ScopedId> valuesSet = CreateFlatDataset(
        group, k_NeighborValues, HDF5::NativeType(GetDataType<T>()), values.getSize(), h5Path);
    if (sizesSet.invalid() || valuesSet.invalid())
    {
      return MakeErrorResult(k_WriteError,
                             fmt::format("The neighbour list '{}' could not be created", h5Path));
    }
    Result<> written = WriteStoreValues<std::uint64_t>(sizesSet.value().get(), sizes, h5Path);
    if (written.invalid())
    {
      return written;
    }
    return WriteStoreValues<T>(valuesSet.value().get(), values, h5Path);
  }
};

Result<> WriteStrings(hid_t group, const StringArray& array, const std::string& h5Path)
{
  LockGuard lock(HDF5::GlobalMutex());
  ScopedId type(H5Tcopy(H5T_C_S1), H5Tclose);
  H5Tset_size(type.get(), H5T_VARIABLE);
  H5Tset_cset(type.get(), H5T_CSET_UTF8);
  const std::vector<std::string>& values = array.values();
  Result<ScopedId> dataset =
      CreateFlatDataset(group, array.getName(), type.get(), values.size(), h5Path, false);
  if (dataset.invalid())
  {
    return ConvertInvalidResult<void>(std::move(dataset));
  }
  std::vector<const char*> pointers;
  pointers.reserve(values.size());
  for (const std::string& value : values)
  {
    pointers.push_back(value.c_str());
  }
  const hid_t id = dataset.value().get();
  if (!values.empty() && H5Dwrite(id, type.get(), H5S_ALL, H5S_ALL, H5P_DEFAULT, pointers.data()) < 0)
  {
    return MakeErrorResult(k_WriteError, fmt::format("Writing the strings of '{}' failed", h5Path));
  }
  if (!HDF5::WriteStringAttribute(id, k_ObjectTypeAttr, array.getTypeName()) ||
      !HDF5::WriteUInt64Attribute(id, k_ObjectIdAttr, {array.getId()}) ||
      !HDF5::WriteUInt64Attribute(id, k_TupleShapeAttr, array.getTupleShape()) ||
      !HDF5::WriteUInt64Attribute(id, k_ComponentShapeAttr, array.getComponentShape()))
  {
    return MakeErrorResult(k_WriteError, fmt::format("The attributes of '{}' could not be written", h5Path));
  }
  return {};
}

bool WriteOptionalId(hid_t object, const char* name, const std::optional<IdType>& id)
{
  return !id.has_value() || HDF5::WriteUInt64Attribute(object, name, {*id});
}

bool WriteGeometryAttributes(hid_t object, const IGeometry& geometry)
{
  bool ok = HDF5::WriteInt32Attribute(object, k_GeomTypeAttr, geometry.getGeomType());
  if (const auto* image = dynamic_cast<const ImageGeom*>(&geometry))
  {
    const auto dims = image->getDimensions();
    const auto spacing = image->getSpacing();
    const auto origin = image->getOrigin();
    ok = ok && HDF5::WriteUInt64Attribute(object, k_DimensionsAttr, {dims[0], dims[1], dims[2]}) &&
         HDF5::WriteFloatAttribute(object, k_SpacingAttr, {spacing[0], spacing[1], spacing[2]}) &&
         HDF5::WriteFloatAttribute(object, k_OriginAttr, {origin[0], origin[1], origin[2]});
  }
  if (const auto* grid = dynamic_cast<const IGridGeometry*>(&geometry))
  {
    ok = ok && WriteOptionalId(object, k_CellDataIdAttr, grid->getCellDataId());
  }
  if (const auto* rect = dynamic_cast<const RectGridGeom*>(&geometry))
  {
    ok = ok && WriteOptionalId(object, k_XBoundsIdAttr, rect->getXBoundsId()) &&
         WriteOptionalId(object, k_YBoundsIdAttr, rect->getYBoundsId()) &&
         WriteOptionalId(object, k_ZBoundsIdAttr, rect->getZBoundsId());
  }
  if (const auto* node0 = dynamic_cast<const INodeGeometry0D*>(&geometry))
  {
    ok = ok && WriteOptionalId(object, k_VerticesIdAttr, node0->getVerticesId()) &&
         WriteOptionalId(object, k_VertexDataIdAttr, node0->getVertexAttributeMatrixId());
  }
  if (const auto* node1 = dynamic_cast<const INodeGeometry1D*>(&geometry))
  {
    ok = ok && WriteOptionalId(object, k_EdgesIdAttr, node1->getEdgesId()) &&
         WriteOptionalId(object, k_EdgeDataIdAttr, node1->getEdgeAttributeMatrixId());
  }
  if (const auto* node2 = dynamic_cast<const INodeGeometry2D*>(&geometry))
  {
    ok = ok && WriteOptionalId(object, k_FacesIdAttr, node2->getFacesId()) &&
         WriteOptionalId(object, k_FaceDataIdAttr, node2->getFaceAttributeMatrixId());
  }
  if (const auto* node3 = dynamic_cast<const INodeGeometry3D*>(&geometry))
  {
    ok = ok && WriteOptionalId(object, k_PolyhedraIdAttr, node3->getPolyhedraId()) &&
         WriteOptionalId(object, k_PolyhedraDataIdAttr, node3->getPolyhedraAttributeMatrixId());
  }
  return ok;
}

Result<> WriteMembers(ExportContext& context, hid_t group, const std::string& h5Path, const DataMap& members);

Result<> WriteObject(ExportContext& context, hid_t parentGroup, const std::string& parentPath,
                     const DataObject& object)
{
  Result<> nameOk = CheckName(object);
  if (nameOk.invalid())
  {
    return nameOk;
  }
  const std::string h5Path = parentPath + "/" + object.getName();
  auto written = context.written.find(object.getId());
  if (written != context.written.end())
  {
    LockGuard lock(HDF5::GlobalMutex());
    if (H5Lcreate_hard(context.file, written->second.c_str(), parentGroup, object.getName().c_str(),
                       H5P_DEFAULT, H5P_DEFAULT) < 0)
    {
      return MakeErrorResult(
          k_WriteError, fmt::format("The link '{}' to '{}' could not be created", h5Path, written->second));
    }
    return {};
  }
  context.written.emplace(object.getId(), h5Path);

  if (const auto* array = dynamic_cast<const IDataArray*>(&object))
  {
    return ExecuteDataFunction(WriteDataArrayFunctor{}, array->getDataType(), context, parentGroup, *array,
                               h5Path);
  }
  if (const auto* strings = dynamic_cast<const StringArray*>(&object))
  {
    return WriteStrings(parentGroup, *strings, h5Path);
  }
  ScopedId group = HDF5::CreateGroup(parentGroup, object.getName());
  if (!group.valid())
  {
    return MakeErrorResult(k_WriteError, fmt::format("The group '{}' could not be created", h5Path));
  }
  bool tagged = HDF5::WriteStringAttribute(group.get(), k_ObjectTypeAttr, object.getTypeName()) &&
                HDF5::WriteUInt64Attribute(group.get(), k_ObjectIdAttr, {object.getId()});
  if (const auto* list = dynamic_cast<const INeighborList*>(&object))
  {
    if (!tagged)
    {
      return MakeErrorResult(k_WriteError,
                             fmt::format("The attributes of '{}' could not be written", h5Path));
    }
    return ExecuteNeighborFunction(WriteNeighborListFunctor{}, list->getDataType(), group.get(), *list,
                                   h5Path);
  }
  if (const auto* matrix = dynamic_cast<const AttributeMatrix*>(&object))
  {
    tagged = tagged && HDF5::WriteUInt64Attribute(group.get(), k_TupleShapeAttr, matrix->getTupleShape());
  }
  if (const auto* geometry = dynamic_cast<const IGeometry*>(&object))
  {
    tagged = tagged && WriteGeometryAttributes(group.get(), *geometry);
  }
  if (!tagged)
  {
    return MakeErrorResult(k_WriteError, fmt::format("The attributes of '{}' could not be written", h5Path));
  }
  const auto* baseGroup = dynamic_cast<const BaseGroup*>(&object);
  if (baseGroup == nullptr)
  {
    return MakeErrorResult(k_WriteError,
                           fmt::format("The object '{}' is of a kind ({}) that cannot be written", h5Path,
                                       object.getTypeName()));
  }
  return WriteMembers(context, group.get(), h5Path, baseGroup->getDataMap());
}

Result<> WriteMembers(ExportContext& context, hid_t group, const std::string& h5Path, const DataMap& members)
{
  for (const auto& [id, member] : members)
  {
    Result<> written = WriteObject(context, group, h5Path, *member);
    if (written.invalid())
    {
      return written;
    }
  }
  return {};
}

template<class T>
Result<T> CatchAll(const std::function<Result<T>()>& work)
{
  try
  {
    return work();
  }
  catch (const std::bad_alloc&)
  {
    return MakeErrorResult<T>(k_UnexpectedError, "Not enough memory for the data of the file");
  }
  catch (const std::exception& exception)
  {
    return MakeErrorResult<T>(k_UnexpectedError, fmt::format("Unexpected failure: {}", exception.what()));
  }
}
} // namespace

Result<DataStructure> ImportDataStructureFromFile(const std::filesystem::path& filePath, bool preflight)
{
  ImportOptions options;
  options.preflight = preflight;
  return ImportDataStructureFromFile(filePath, options);
}

Result<DataStructure> ImportDataStructureFromFile(const std::filesystem::path& filePath, bool preflight,
                                                  const ProgressCallback& progress)
{
  ImportOptions options;
  options.preflight = preflight;
  options.progress = progress;
  return ImportDataStructureFromFile(filePath, options);
}

Result<DataStructure> ImportDataStructureFromFile(const std::filesystem::path& filePath,
                                                  const ImportOptions& options)
{
  HDF5::FileIO fileIO = HDF5::FileIO::ReadFile(filePath);
  return ImportDataStructureFromFile(fileIO, options);
}

Result<DataStructure> ImportDataStructureFromFile(const HDF5::FileIO& fileIO, bool preflight)
{
  ImportOptions options;
  options.preflight = preflight;
  return ImportDataStructureFromFile(fileIO, options);
}

Result<DataStructure> ImportDataStructureFromFile(const HDF5::FileIO& fileIO, const ImportOptions& options)
{
  if (!fileIO.isValid())
  {
    return MakeErrorResult<DataStructure>(k_OpenError, fileIO.getErrorMessage().empty()
                                                           ? std::string("No file is open for reading")
                                                           : fileIO.getErrorMessage());
  }
  return CatchAll<DataStructure>([&] { return ImportFromOpenFile(fileIO, options); });
}

std::vector<DataPath> ExpandSelectedPathsToAncestors(const std::vector<DataPath>& paths)
{
  // std::set orders a parent before its members: a prefix sorts before anything that extends it.
  std::set<DataPath> expanded;
  for (const DataPath& path : paths)
  {
    DataPath current = path;
    while (!current.empty())
    {
      expanded.insert(current);
      current = current.getParent();
    }
  }
  return {expanded.begin(), expanded.end()};
}

namespace
{
struct FinishDataArrayFunctor
{
  template<class T>
  Result<> operator()(IDataArray& target, const HDF5::FileIO& fileIO, const std::string& h5Path) const
  {
    auto& array = dynamic_cast<DataArray<T>&>(target);
    auto store =
        LoadStore<T>(fileIO, h5Path, array.getTupleShape(), array.getComponentShape(), StoreMode::InMemory);
    if (store.invalid())
    {
      return ConvertInvalidResult<void>(std::move(store));
    }
    array.setDataStore(store.value());
    return {};
  }
};
} // namespace

Result<> FinishImportingObject(DataStructure& target, const DataStructure& source, const DataPath& path,
                               const HDF5::FileIO& fileIO, bool preflight)
{
  const DataObject* object = source.getData(path);
  if (object == nullptr)
  {
    return MakeErrorResult(k_FinishError,
                           fmt::format("'{}' is not in the imported structure", path.toString()));
  }
  if (target.containsData(path))
  {
    return {};
  }
  std::optional<IdType> parentId;
  if (path.getLength() > 1)
  {
    parentId = target.getId(path.getParent());
    if (!parentId.has_value())
    {
      return MakeErrorResult(k_FinishError,
                             fmt::format("The parent of '{}' has to be imported before it", path.toString()));
    }
  }
  std::shared_ptr<DataObject> copy = target.insertCopyOf(*object, parentId);
  if (copy == nullptr)
  {
    return MakeErrorResult(k_FinishError,
                           fmt::format("'{}' could not be placed in the target structure (its id {} "
                                       "or its name is taken)",
                                       path.toString(), object->getId()));
  }
  auto* array = dynamic_cast<IDataArray*>(copy.get());
  if (preflight || array == nullptr)
  {
    return {};
  }
  if (!fileIO.isValid())
  {
    return MakeErrorResult(k_FinishError, fmt::format("No open file to read '{}' from", path.toString()));
  }
  return CatchAll<void>(
      [&]
      {
        return ExecuteDataFunction(FinishDataArrayFunctor{}, array->getDataType(), *array, fileIO,
                                   DataStructurePath(path));
      });
}

Result<> WriteDataStructureToFile(const std::filesystem::path& filePath, const DataStructure& dataStructure,
                                  const ProgressCallback& progress)
{
  HDF5::FileIO fileIO = HDF5::FileIO::WriteFile(filePath);
  return WriteDataStructure(fileIO, dataStructure, progress);
}

Result<> WriteDataStructure(HDF5::FileIO& fileIO, const DataStructure& dataStructure,
                            const ProgressCallback& progress)
{
  if (!fileIO.isWritable())
  {
    return MakeErrorResult(k_WriteError, fileIO.getErrorMessage().empty()
                                             ? std::string("No file is open for writing")
                                             : fileIO.getErrorMessage());
  }
  return CatchAll<void>(
      [&]() -> Result<>
      {
        ScopedId root = HDF5::OpenGroup(fileIO.getId(), "/");
        if (!HDF5::WriteStringAttribute(root.get(), k_FormatAttr, k_FormatTag) ||
            !HDF5::WriteInt32Attribute(root.get(), k_VersionAttr, k_FileVersion) ||
            !HDF5::WriteUInt64Attribute(root.get(), k_NextIdAttr, {dataStructure.getNextId()}))
        {
          return MakeErrorResult(
              k_WriteError, fmt::format("The file '{}' could not be tagged", fileIO.getFilePath().string()));
        }
        ScopedId top = HDF5::CreateGroup(fileIO.getId(), k_DataStructureGroup);
        if (!top.valid())
        {
          return MakeErrorResult(k_WriteError, "The top group could not be created");
        }
        ExportContext context{fileIO.getId(), {}, progress};
        Result<> written = WriteMembers(context, top.get(), std::string("/") + k_DataStructureGroup,
                                        dataStructure.getDataMap());
        if (written.valid())
        {
          LockGuard lock(HDF5::GlobalMutex());
          H5Fflush(fileIO.getId(), H5F_SCOPE_LOCAL);
        }
        return written;
      });
}
} // namespace zr::core::KESTRIX
