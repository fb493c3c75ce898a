#pragma once

#include "platform/ZRPlatformExport.h"

#include "data_bridge/zr_contract/DataPath.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>
#include <string>
#include <vector>

class QMimeData;

namespace ZR::DragAndDrop
{
// Mime format of items dragged out of a data structure tree: a JSON array of
// {"path": "Group/Geometry/Cell Data/Array", "type": "DataArray"} objects.
inline const QString DataStructureItem = QStringLiteral("application/x-kestrix-datastructure-item");

struct DataPathDropValue
{
  zr::core::DataPath path;
  // The dragged object's type name ("DataArray", "NeighborList", "StringArray", "ImageGeom", ...).
  std::string objectType;
};

ZR_PLATFORM_EXPORT QByteArray EncodeDropValues(const std::vector<DataPathDropValue>& values);
// Empty optional when the bytes are not a JSON array of well-formed values.
ZR_PLATFORM_EXPORT std::optional<std::vector<DataPathDropValue>> DecodeDropValues(const QByteArray& bytes);
// Convenience over a QMimeData: no value when the format is missing or malformed.
ZR_PLATFORM_EXPORT std::optional<std::vector<DataPathDropValue>>
DropValuesFromMimeData(const QMimeData* mimeData);
} // namespace ZR::DragAndDrop
