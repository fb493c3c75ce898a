#pragma once

#include "spreadsheets/VXSpreadsheetModel.h"

#include "data_bridge/zr_contract/Range2D.h"

#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

class IArrayToStringFunctor;

namespace zr::core
{
template<class T>
class DataArray;
template<class T>
class NeighborList;
} // namespace zr::core

/**
 * @brief One two-dimensional slice of one array: columns run along dimension xDim, rows along yDim,
 * and every other dimension stays at its fixed index.
 */
class VXMultidimSpreadsheetModel : public VXSpreadsheetModel
{
  Q_OBJECT

public:
  explicit VXMultidimSpreadsheetModel(QObject* parent = nullptr);
  ~VXMultidimSpreadsheetModel() override;

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;

  void removeColumn(int column) override;
  void addArray(const std::shared_ptr<zr::core::IArray>& array, const std::vector<unsigned long>& dims,
                int xDim, int yDim, const std::vector<unsigned long>& indices) override;
  void clear() override;
  bool validIndex(const QModelIndex& index) const override;
  QString getValue(const QModelIndex& index) const override;

  /** @brief Flat index of a cell: row-major over dims, with the column at xDim and the row at yDim. */
  unsigned long flatIndex(int row, int column) const;
  double minimum() const;
  double maximum() const;
  const std::vector<double>& widestValues() const;

  /** @brief Merges one chunk's results: the larger value per column, the lower minimum, the higher maximum.
   */
  void sendThreadSafeUpdate(std::map<unsigned long, double>& widest, double min, double max);

  template<class T>
  class ParallelMinMaxDataArrayRangeCache
  {
  public:
    ParallelMinMaxDataArrayRangeCache(VXMultidimSpreadsheetModel* model, const zr::core::DataArray<T>* array);
    void operator()(const zr::core::Range2D& range) const;

  private:
    VXMultidimSpreadsheetModel* m_Model = nullptr;
    const zr::core::DataArray<T>* m_Array = nullptr;
  };

  template<class T>
  class ParallelMinMaxNeighborListArrayRangeCache
  {
  public:
    ParallelMinMaxNeighborListArrayRangeCache(VXMultidimSpreadsheetModel* model,
                                              const zr::core::NeighborList<T>* list);
    void operator()(const zr::core::Range2D& range) const;

  private:
    VXMultidimSpreadsheetModel* m_Model = nullptr;
    const zr::core::NeighborList<T>* m_List = nullptr;
  };

protected:
  bool rangesForEveryIndex() const override;
  double columnMinimum(int column) const override;
  double columnMaximum(int column) const override;
  double widestMeasure(const QModelIndex& index) const override;

private:
  bool listRowsAreTuples() const;

  std::shared_ptr<zr::core::IArray> m_Array;
  std::shared_ptr<IArrayToStringFunctor> m_Functor;
  std::vector<unsigned long> m_Dims;
  quint64 m_XDim = 0;
  quint64 m_YDim = 0;
  std::vector<unsigned long> m_Indices;
  double m_Min = std::numeric_limits<double>::max();
  double m_Max = std::numeric_limits<double>::lowest();
  std::mutex m_Mutex;
};
