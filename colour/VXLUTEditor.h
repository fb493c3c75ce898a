#pragma once

#include "data_bridge/zr_contract/ColorPreset.h"

#include <QColor>
#include <QDialog>

#include <vtkColorTransferFunction.h>
#include <vtkSmartPointer.h>

#include <memory>

class VXLookupTableModel;

namespace Ui
{
class VXLUTEditor;
}

/**
 * The editor of a categorical colour map: one row per category with its colour, value and label. The
 * rows start as the categories the view shows and go back to the view as an annotated preset.
 */
class VXLUTEditor : public QDialog
{
  Q_OBJECT

public:
  using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;

  explicit VXLUTEditor(QWidget* parent = nullptr);
  ~VXLUTEditor() override;

  /** @brief One row per node of an indexed table: its colour, value and annotation. */
  void initializeCustomTable(vtkSmartPointer<vtkColorTransferFunction> transferFunction) const;
  int numCustomCategories() const;
  ColorPreset getDefaultPreset() const;
  /** @brief Shows the colour without announcing it. */
  void setNanColor(const QColor& color) const;
  QColor nanColor() const;
  /** @brief The rows as an annotated indexed preset named "Custom". */
  ColorPreset customPreset() const;
  VXLookupTableModel* tableModel() const { return m_Model; }

public Q_SLOTS:
  void applyCustomTable();
  void addCategory();
  void removeSelectedCategory();

Q_SIGNALS:
  void applyPreset(const zr::core::ColorTableUtilities::ColorPreset& preset);
  void restoreDefaultPreset();
  void nanColorChanged(const QColor& color);

private:
  std::unique_ptr<Ui::VXLUTEditor> m_Ui;
  VXLookupTableModel* m_Model = nullptr;
};
