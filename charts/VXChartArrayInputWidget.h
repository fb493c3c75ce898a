#pragma once

#include "data_bridge/zr_contract/DataPath.h"
#include "platform/ZRDragAndDrop.h"

#include <nlohmann/json_fwd.hpp>

#include <QWidget>

#include <memory>
#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QMimeData;
namespace zr::core
{
class DataStructure;
class IArray;
} // namespace zr::core

/**
 * @brief One drop field for one array of the data structure, with a component selector shown for arrays
 * of several components.
 */
class VXChartArrayInputWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXChartArrayInputWidget(const QString& label, QWidget* parent = nullptr);
  ~VXChartArrayInputWidget() override;

  void setDataStructure(const std::shared_ptr<const zr::core::DataStructure>& dataStructure);
  void setDataPath(const zr::core::DataPath& path);
  std::optional<zr::core::DataPath> getDataPath() const { return m_Path; }
  void clear();
  int getComponent() const;
  void setComponent(int component);
  /** @brief The array at the path; null, with a message, when it is gone or there is no data. */
  const zr::core::IArray* getArray() const;
  void setAcceptsStringArrays(bool accepts) { m_AcceptsStrings = accepts; }
  bool validateDroppedValue(const ZR::DragAndDrop::DataPathDropValue& value) const;
  /** @brief What a drop does with its data: the first dragged array, when it can be used. */
  bool dropMimeData(const QMimeData* mimeData);

  void saveState(nlohmann::json& json, const char* pathKey) const;
  void loadState(const nlohmann::json& json, const char* pathKey);

public Q_SLOTS:
  void onInputArrayChanged(const QString& path);

Q_SIGNALS:
  void statusMessageAvailable(const QString& message) const;
  void pathChanged(const zr::core::DataPath& path, int component);
  void componentIndexChanged(const zr::core::DataPath& path, int component);

protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  QLabel* m_Label = nullptr;
  QLineEdit* m_PathEdit = nullptr;
  QComboBox* m_ComponentCombo = nullptr;
  std::shared_ptr<const zr::core::DataStructure> m_DataStructure;
  std::optional<zr::core::DataPath> m_Path;
  bool m_AcceptsStrings = false;
};
