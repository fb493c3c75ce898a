#include "platform/ZRDragAndDrop.h"

#include <QtCore/QMimeData>

#include <nlohmann/json.hpp>

namespace ZR::DragAndDrop
{
QByteArray EncodeDropValues(const std::vector<DataPathDropValue>& values)
{
  nlohmann::json list = nlohmann::json::array();
  for (const DataPathDropValue& value : values)
  {
    list.push_back({{"path", value.path.toString()}, {"type", value.objectType}});
  }
  return QByteArray::fromStdString(list.dump());
}

std::optional<std::vector<DataPathDropValue>> DecodeDropValues(const QByteArray& bytes)
{
  const nlohmann::json list =
      nlohmann::json::parse(bytes.constData(), bytes.constData() + bytes.size(), nullptr, false);
  if (!list.is_array())
  {
    return std::nullopt;
  }
  std::vector<DataPathDropValue> values;
  for (const nlohmann::json& item : list)
  {
    if (!item.is_object() || !item.contains("path") || !item["path"].is_string())
    {
      return std::nullopt;
    }
    std::optional<zr::core::DataPath> path = zr::core::DataPath::FromString(item["path"].get<std::string>());
    if (!path.has_value())
    {
      return std::nullopt;
    }
    std::string type;
    if (item.contains("type") && item["type"].is_string())
    {
      type = item["type"].get<std::string>();
    }
    values.push_back({*path, type});
  }
  return values;
}

std::optional<std::vector<DataPathDropValue>> DropValuesFromMimeData(const QMimeData* mimeData)
{
  if (mimeData == nullptr || !mimeData->hasFormat(DataStructureItem))
  {
    return std::nullopt;
  }
  return DecodeDropValues(mimeData->data(DataStructureItem));
}
} // namespace ZR::DragAndDrop
