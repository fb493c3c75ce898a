#include "app/ViewerThresholdMask.h"

#include "data_bridge/zr_contract/AttributeMatrix.h"
#include "data_bridge/zr_contract/DataArray.h"
#include "data_bridge/zr_contract/DataStructure.h"
#include "data_bridge/zr_contract/DispatchHelpers.h"
#include "data_bridge/zr_contract/IGridGeometry.h"
#include "data_bridge/zr_contract/INodeGeometry3D.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/parallel_reduce.h>

#include <QStringList>

#include <cstdint>
#include <functional>

namespace
{
using zr::core::usize;

// Clears the mask of every cell whose value lies outside [minimum, maximum]; NaN lies outside.
struct ApplyRange
{
  template<class T>
  void operator()(const zr::core::IDataArray& array, double minimum, double maximum, std::uint8_t* mask) const
  {
    const auto& typed = dynamic_cast<const zr::core::DataArray<T>&>(array);
    const usize count = array.getNumberOfTuples();
    const zr::core::DataStore<T>* inMemory = typed.getInMemoryStore();
    if (inMemory == nullptr)
    {
      // Values read on demand go through one file: no point in asking from several threads.
      const auto& store = typed.getDataStoreRef();
      for (usize i = 0; i < count; ++i)
      {
        const auto value = static_cast<double>(store.getValue(i));
        mask[i] = value >= minimum && value <= maximum ? mask[i] : std::uint8_t{0};
      }
      return;
    }
    const T* values = inMemory->data();
    tbb::parallel_for(tbb::blocked_range<usize>(0, count, 1 << 14),
                      [values, mask, minimum, maximum](const tbb::blocked_range<usize>& range)
                      {
                        for (usize i = range.begin(); i < range.end(); ++i)
                        {
                          const auto value = static_cast<double>(values[i]);
                          mask[i] = value >= minimum && value <= maximum ? mask[i] : std::uint8_t{0};
                        }
                      });
  }
};

QString arrayNames(const zr::core::AttributeMatrix& matrix)
{
  QStringList names;
  for (const auto& [id, member] : matrix.getDataMap())
  {
    if (dynamic_cast<const zr::core::IDataArray*>(member.get()) != nullptr)
    {
      names << QString::fromStdString(member->getName());
    }
  }
  return names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "));
}

QString formatNumber(double value)
{
  return QString::number(value, 'g', 10);
}
} // namespace

const QString ViewerThresholdMask::k_MaskBaseName = QStringLiteral("Mask");
const QString ViewerThresholdMask::k_MultiComponentRefusal = QStringLiteral(
    "Creating Multi-Threshold Objects filter from VXFThreshold filter currently does not support multi "
    "component arrays.");

zr::core::AttributeMatrix* ViewerThresholdMask::CellAttributeMatrix(zr::core::IGeometry& geometry)
{
  using Kind = zr::core::IGeometry::GeomType;
  switch (static_cast<Kind>(geometry.getGeomType()))
  {
  case Kind::Image:
  case Kind::RectGrid:
    return dynamic_cast<zr::core::IGridGeometry&>(geometry).getCellData();
  case Kind::Vertex:
    return dynamic_cast<zr::core::INodeGeometry0D&>(geometry).getVertexAttributeMatrix();
  case Kind::Edge:
    return dynamic_cast<zr::core::INodeGeometry1D&>(geometry).getEdgeAttributeMatrix();
  case Kind::Triangle:
  case Kind::Quad:
    return dynamic_cast<zr::core::INodeGeometry2D&>(geometry).getFaceAttributeMatrix();
  case Kind::Tetrahedral:
  case Kind::Hexahedral:
    return dynamic_cast<zr::core::INodeGeometry3D&>(geometry).getPolyhedraAttributeMatrix();
  }
  return nullptr;
}

QString ViewerThresholdMask::UniqueName(const zr::core::AttributeMatrix& matrix, const QString& base)
{
  QString name = base;
  for (int suffix = 2; matrix.contains(name.toStdString()); ++suffix)
  {
    name = QStringLiteral("%1 %2").arg(base).arg(suffix);
  }
  return name;
}

QString ViewerThresholdMask::Describe(const std::vector<ZR::ArrayThresholdRange>& thresholds)
{
  QStringList parts;
  for (const ZR::ArrayThresholdRange& threshold : thresholds)
  {
    parts << QStringLiteral("%1 in [%2, %3]")
                 .arg(threshold.arrayName, formatNumber(threshold.minimum), formatNumber(threshold.maximum));
  }
  return parts.join(QStringLiteral(" and "));
}

ViewerThresholdMask::Outcome
ViewerThresholdMask::AddMask(zr::core::DataStructure& dataStructure, const zr::core::DataPath& geometryPath,
                             const std::vector<ZR::ArrayThresholdRange>& thresholds)
{
  Outcome outcome;
  const QString geometryName = QString::fromStdString(geometryPath.toString());
  auto* geometry = dataStructure.getDataAs<zr::core::IGeometry>(geometryPath);
  if (geometry == nullptr)
  {
    outcome.message = QStringLiteral("Cannot create a mask: there is no geometry at '%1'.").arg(geometryName);
    return outcome;
  }
  if (thresholds.empty())
  {
    outcome.message =
        QStringLiteral("Cannot create a mask on '%1': no thresholds were given.").arg(geometryName);
    return outcome;
  }
  zr::core::AttributeMatrix* cells = CellAttributeMatrix(*geometry);
  if (cells == nullptr)
  {
    outcome.message =
        QStringLiteral("Cannot create a mask on '%1': the geometry has no cell attribute matrix.")
            .arg(geometryName);
    return outcome;
  }
  const usize count = cells->getNumberOfTuples();
  // Every threshold is checked before anything is added: a mask that left one out would be wrong.
  std::vector<const zr::core::IDataArray*> arrays;
  for (const ZR::ArrayThresholdRange& threshold : thresholds)
  {
    const auto* array =
        dynamic_cast<const zr::core::IDataArray*>((*cells)[threshold.arrayName.toStdString()]);
    if (array == nullptr)
    {
      outcome.message =
          QStringLiteral("Cannot create a mask on '%1': its cell data '%2' has no array '%3'; its "
                         "arrays: %4")
              .arg(geometryName, QString::fromStdString(cells->getName()), threshold.arrayName,
                   arrayNames(*cells));
      return outcome;
    }
    if (array->getNumberOfComponents() > 1)
    {
      outcome.message = k_MultiComponentRefusal;
      return outcome;
    }
    if (array->getNumberOfTuples() != count || array->getIDataStore() == nullptr)
    {
      outcome.message =
          QStringLiteral("Cannot create a mask on '%1': the array '%2' has %3 values for %4 cells.")
              .arg(geometryName, threshold.arrayName)
              .arg(array->getNumberOfTuples())
              .arg(count);
      return outcome;
    }
    arrays.push_back(array);
  }

  const QString name = UniqueName(*cells, k_MaskBaseName);
  auto* mask = zr::core::UInt8Array::Create(dataStructure, name.toStdString(), cells->getTupleShape(), {1},
                                            cells->getId(), std::uint8_t{1});
  zr::core::DataStore<std::uint8_t>* store = mask != nullptr ? mask->getInMemoryStore() : nullptr;
  if (store == nullptr)
  {
    outcome.message = QStringLiteral("Cannot create a mask on '%1': the array '%2' could not be added.")
                          .arg(geometryName, name);
    return outcome;
  }
  std::uint8_t* values = store->data();
  for (size_t index = 0; index < arrays.size(); ++index)
  {
    zr::core::ExecuteDataFunction(ApplyRange{}, arrays[index]->getDataType(), *arrays[index],
                                  thresholds[index].minimum, thresholds[index].maximum, values);
  }
  outcome.passing = tbb::parallel_reduce(
      tbb::blocked_range<usize>(0, count, 1 << 14), usize{0},
      [values](const tbb::blocked_range<usize>& range, usize sum)
      {
        for (usize i = range.begin(); i < range.end(); ++i)
        {
          sum += values[i];
        }
        return sum;
      },
      std::plus<usize>());
  outcome.added = true;
  outcome.cells = count;
  outcome.maskPath = geometryPath.createChildPath(cells->getName()).createChildPath(name.toStdString());
  outcome.message = QStringLiteral("Added the mask '%1': %2 of %3 cells pass %4.")
                        .arg(QString::fromStdString(outcome.maskPath.toString()))
                        .arg(outcome.passing)
                        .arg(count)
                        .arg(Describe(thresholds));
  return outcome;
}
