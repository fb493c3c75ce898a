#pragma once

#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataGroup.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/ImageGeom.h"
#include "data_bridge/zr_contract/KestrixIO.h"

#include <QString>

#include <cmath>
#include <cstdint>
#include <limits>

// A .kestrix structure for thresholds on a host geometry: the image "Sample/Grains" of 6 x 5 x 4 cells
// with the cell arrays "Density" (float, one NaN), "Phase" (int32, 1 to 3), "Orientation" (three float
// components) and a boolean "Mask" that is there already.
namespace ThresholdStructure
{
constexpr zr::core::usize k_Cells = 6 * 5 * 4;

inline float Density(zr::core::usize cell)
{
  return cell == 17 ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>((cell * 7) % 13) * 0.5f;
}

inline std::int32_t Phase(zr::core::usize cell)
{
  return static_cast<std::int32_t>(1 + cell % 3);
}

inline zr::core::DataStructure Make()
{
  zr::core::DataStructure dataStructure;
  auto* sample = zr::core::DataGroup::Create(dataStructure, "Sample");
  auto* image = zr::core::ImageGeom::Create(dataStructure, "Grains", sample->getId());
  image->setDimensions({6, 5, 4});
  image->setSpacing({1.0f, 1.0f, 1.0f});
  image->setOrigin({0.0f, 0.0f, 0.0f});
  zr::core::AttributeMatrix* cells = image->createCellData("Cell Data");
  auto* density =
      zr::core::Float32Array::Create(dataStructure, "Density", cells->getTupleShape(), {1}, cells->getId());
  auto* phase =
      zr::core::Int32Array::Create(dataStructure, "Phase", cells->getTupleShape(), {1}, cells->getId());
  auto* orientation = zr::core::Float32Array::Create(dataStructure, "Orientation", cells->getTupleShape(),
                                                     {3}, cells->getId());
  zr::core::BoolArray::Create(dataStructure, "Mask", cells->getTupleShape(), {1}, cells->getId(), true);
  for (zr::core::usize cell = 0; cell < k_Cells; ++cell)
  {
    (*density)[cell] = Density(cell);
    (*phase)[cell] = Phase(cell);
    for (zr::core::usize component = 0; component < 3; ++component)
    {
      (*orientation)[3 * cell + component] = static_cast<float>(cell % 10) + static_cast<float>(component);
    }
  }
  return dataStructure;
}

// Writes the structure; false when the writer fails.
inline bool Write(const QString& path)
{
  return zr::core::KESTRIX::WriteDataStructureToFile(path.toStdString(), Make()).valid();
}
} // namespace ThresholdStructure
