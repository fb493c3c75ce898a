#pragma once

#include "data_bridge/zr_contract/DataPath.h"

#include <nlohmann/json_fwd.hpp>

#include <QList>
#include <QWidget>

#include <map>
#include <memory>
#include <optional>
#include <vector>

class QListWidget;
class QListWidgetItem;
class QMimeData;
class QPushButton;
namespace zr::core
{
class DataStructure;
class IArray;
} // namespace zr::core

/**
 * @brief A list of dropped arrays with, beside it, the components of the selected array; each component
 * has a check box that says whether it is drawn.
 */
class VXChartMultiArrayInputWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXChartMultiArrayInputWidget(const QString& label, QWidget* parent = nullptr);
  ~VXChartMultiArrayInputWidget() override;

  void setDataStructure(const std::shared_ptr<const zr::core::DataStructure>& dataStructure);
  QList<zr::core::DataPath> getDataPaths() const { return m_Paths; }
  std::optional<zr::core::DataPath> getSelectedDataPath() const;
  int getSelectedComponent() const;
  const zr::core::IArray* getArray(const zr::core::DataPath& path) const;
  std::size_t getComponentCount(const zr::core::DataPath& path) const;
  bool isVisible(const zr::core::DataPath& path, int component) const;
  void setVisibility(const zr::core::DataPath& path, int component, bool visible);
  /** @brief Adds the arrays that exist and are not listed yet; the others are reported. */
  void addDataPaths(const QList<zr::core::DataPath>& paths);
  /** @brief What a drop does with its data: adds every dragged array that can be used. */
  bool dropMimeData(const QMimeData* mimeData);

  void saveState(nlohmann::json& json) const;
  void loadState(const nlohmann::json& json);

public Q_SLOTS:
  void onClearButtonClicked();
  void onRemoveButtonClicked();
  void dataArrayItemSelected();
  void onSeriesCompTableSelectionChanged();
  void onSeriesCompTableCellChanged(QListWidgetItem* item);
  void onInputArraysChanged();

Q_SIGNALS:
  void statusMessageAvailable(const QString& message) const;
  void pathsChanged(const QList<zr::core::DataPath>& paths);
  void arraySelectionChanged(const zr::core::DataPath& path);
  void arrayCompSelectionChanged(const zr::core::DataPath& path, int component);
  void arrayCompVisibilityChanged(const zr::core::DataPath& path, int component, bool visible);

protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  void fillComponents();

  QListWidget* m_ArrayList = nullptr;
  QListWidget* m_ComponentList = nullptr;
  QPushButton* m_RemoveButton = nullptr;
  QPushButton* m_ClearButton = nullptr;
  std::shared_ptr<const zr::core::DataStructure> m_DataStructure;
  QList<zr::core::DataPath> m_Paths;
  std::map<std::string, std::vector<bool>> m_Visibility; // by path text
};
