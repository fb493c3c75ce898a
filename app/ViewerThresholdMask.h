#pragma once

#include "data_bridge/zr_contract/DataPath.h"
#include "platform/ArrayThresholdRange.h"

#include <QString>

#include <cstddef>
#include <vector>

namespace zr::core
{
class AttributeMatrix;
class DataStructure;
class IGeometry;
} // namespace zr::core

/**
 * @brief The viewer's answer to a multi-threshold request: the cells of a geometry whose values lie in
 * every range given (bounds included) become a mask, a one-component uint8 array holding 1 for a cell
 * that passes and 0 otherwise, added to the geometry's cell attribute matrix under a name no member has
 * yet ("Mask", "Mask 2", ...). The thresholds name one-component arrays of that matrix.
 */
class ViewerThresholdMask
{
public:
  struct Outcome
  {
    bool added = false;
    // What happened, in words for the output pane.
    QString message;
    zr::core::DataPath maskPath;
    std::size_t passing = 0;
    std::size_t cells = 0;
  };

  static const QString k_MaskBaseName;
  static const QString k_MultiComponentRefusal;

  static Outcome AddMask(zr::core::DataStructure& dataStructure, const zr::core::DataPath& geometryPath,
                         const std::vector<ZR::ArrayThresholdRange>& thresholds);
  /** @brief The matrix whose tuples are the geometry's cells (vertices of a vertex geometry); may be null. */
  static zr::core::AttributeMatrix* CellAttributeMatrix(zr::core::IGeometry& geometry);
  /** @brief base, or "base N" with the lowest N from 2 up that no member of the matrix has. */
  static QString UniqueName(const zr::core::AttributeMatrix& matrix, const QString& base);
  /** @brief "A in [0, 1] and B in [2, 3]". */
  static QString Describe(const std::vector<ZR::ArrayThresholdRange>& thresholds);
};
