#pragma once

#include "platform/ZRDragAndDrop.h"
#include "platform/ZRIconPushButton.h"

#include "data_bridge/zr_contract/DataPath.h"

#include <QPointer>

#include <optional>
#include <vector>

class QMimeData;
class ZRDataStructureModel;

/**
 * @brief A button that makes a spreadsheet of its kind when clicked, or when arrays from the data
 * structure tree are dropped on it. The multidimensional one takes one array only.
 */
class VXSpreadsheetTypeButton : public ZRIconPushButton
{
  Q_OBJECT

public:
  explicit VXSpreadsheetTypeButton(QWidget* parent = nullptr);
  ~VXSpreadsheetTypeButton() override;

  void setAcceptsMultipleArrays(bool accepts);
  bool acceptsMultipleArrays() const;
  void setDataStructureModel(ZRDataStructureModel* model);
  ZRDataStructureModel* dataStructureModel() const;
  /** @brief The text shown while the mouse rests on the button. */
  void setDescription(const QString& description);
  QString description() const;
  /** @brief Whether a valid drag is over the button (it then paints its drop state). */
  bool isDragHighlighted() const;
  void setHoverHighlighted(bool highlighted);
  bool isHoverHighlighted() const;

  /** @brief A dropped value is usable when its path leads to an array of the model's structure. */
  static bool ValidateDragData(const ZR::DragAndDrop::DataPathDropValue& value,
                               const ZRDataStructureModel* model);
  static QString DragErrorText();
  static QString OneArrayOnlyText();

public Q_SLOTS:
  /** @brief Highlights the button when the tree's mouse rests on an array it would take. */
  void dataStructureItemHovered(const zr::core::DataPath& path, bool isArray);

Q_SIGNALS:
  void printOutput(const QString& message) const;
  void arrayDropped(const zr::core::DataPath& path);
  void arraysDropped(std::vector<zr::core::DataPath>& paths);
  void buttonHovered(const QString& description);

protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
  void enterEvent(QEnterEvent* event) override;
#else
  void enterEvent(QEvent* event) override;
#endif
  void leaveEvent(QEvent* event) override;

private:
  /** @brief The paths of a drag this button takes; reports why not when report is set. */
  std::optional<std::vector<zr::core::DataPath>> acceptedPaths(const QMimeData* mimeData, bool report) const;

  QPointer<ZRDataStructureModel> m_Model;
  QString m_Description;
  bool m_AcceptsMultipleArrays = true;
  bool m_DragHighlighted = false;
  bool m_HoverHighlighted = false;
};
