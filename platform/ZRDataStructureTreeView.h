#pragma once

#include "platform/ZRPlatformExport.h"

#include "data_bridge/zr_contract/DataPath.h"
#include "data_bridge/zr_contract/DataStructure.h"

#include <QTreeView>

#include <memory>
#include <vector>

class ZRDataStructureModel;

/**
 * @brief The tree of the active data structure. Selected arrays drag out as a list of data paths
 * (ZR::DragAndDrop); the tree keeps the open branches open across new runs of the same structure.
 */
class ZR_PLATFORM_EXPORT ZRDataStructureTreeView : public QTreeView
{
  Q_OBJECT

public:
  explicit ZRDataStructureTreeView(QWidget* parent = nullptr);
  ~ZRDataStructureTreeView() override;

  void setActiveDataStructure(const std::shared_ptr<zr::core::DataStructure>& dataStructure);
  ZRDataStructureModel* getDataStructureModel() const;

  /** @brief Paths of the selected arrays, in tree order. */
  std::vector<zr::core::DataPath> selectedArrayPaths() const;
  /** @brief Hides the rows that neither match (case-insensitive, by name) nor lead to a match. */
  void setFilterText(const QString& text);
  QString filterText() const;

Q_SIGNALS:
  /** @brief The object under the mouse; an empty path when the mouse leaves the tree. */
  void dataStructureItemHovered(const zr::core::DataPath& path, bool isArray);

protected:
  void leaveEvent(QEvent* event) override;

private:
  void onEntered(const QModelIndex& index);
  bool applyFilter(const QModelIndex& parent, bool ancestorMatches);
  void collectSelectedArrays(const QModelIndex& parent, std::vector<zr::core::DataPath>& paths) const;
  void collectExpanded(const QModelIndex& parent, std::vector<zr::core::DataPath>& paths) const;

  ZRDataStructureModel* m_Model = nullptr;
  QString m_FilterText;
};
