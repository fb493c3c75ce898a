#pragma once

#include "data_bridge/CVWrappedGeometry.h"
#include "data_bridge/zr_contract/ColorPreset.h"
#include "pipeline/VXCoreObject.h"

#include <vtkSmartPointer.h>

#include <QColor>
#include <QIcon>
#include <QList>
#include <QPair>
#include <QPixmap>
#include <QPointer>
#include <QStringList>

#include <memory>

class vtkTrivialProducer;
class ColorPresetsDialog;
class QPushButton;
class ZRColorButton;
class VXDatasetInfoWidget;

/**
 * One dataset of the pipeline tree: a geometry of a data structure, or one file. It feeds the dataset
 * into VTK through a producer whose output port stays the same across reloads, and carries the
 * colouring settings that its data views take over by default.
 */
class VXDataSource : public VXCoreObject
{
  Q_OBJECT

public:
  using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;

  explicit VXDataSource(QObject* parent = nullptr);
  ~VXDataSource() override;

  void write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const override;
  void read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) override;
  QString humanTypeName() const override;
  QString typeName() const override;
  void setBaseName(const QString& name) override;
  vtkAlgorithmOutput* outputPort() const override;
  void initializeSettingsWidget() override;
  void setVisibility(bool visible) override;
  QIcon getIcon() const override;
  void copyActiveSettings() override;
  void pasteToActiveSettings() override;

  void setWrappedGeometry(std::shared_ptr<CV::VtkBridge::WrappedGeometry> wrappedGeometry);
  void setDataSet(vtkSmartPointer<vtkDataSet> dataSet);
  vtkDataSet* getOutput() const;
  zr::core::DataPath importedDataPath() const;
  QList<QPair<QIcon, QString>> getImportedArrayNames() const;
  QStringList getComponentNames(const QString& arrayName) const;

  void setSolidColor(const QColor& color);
  void setNanColor(const QColor& color);
  void setRestoreDefaultPreset();
  void setColorsInverted(bool inverted);
  bool getIsInverted() const { return m_Inverted; }
  QColor getSolidColor() const { return m_SolidColor; }
  QColor getNanColor() const { return m_NanColor; }
  bool isUsingDefaultPreset() const { return m_UsingDefaultPreset; }
  ColorPreset getCurrentPreset() const { return m_CurrentPreset; }
  void applyPreset(const ColorPreset& preset, const QPixmap& pixmap);
  void triggerColorSettingsChange();
  ColorPresetsDialog* colorPresetsDialog() const;
  /** @brief Shows the colour presets dialog of the settings panel, if the panel exists. */
  void showColorPresetsDialog();

  /** @brief Makes the dataset information panel once; it shows this source's path and dataset. */
  void initializeDataSetInfoWidget();
  /** @brief The panel, made if needed and refreshed. */
  VXDatasetInfoWidget* getDataSetInfoWidget();
  /** @brief Refreshes the panel if it exists: after every new dataset, so also after a reload. */
  void updateDataSetInfoWidget();
  void showDataSetInfoWidget();

  void readSettings();
  // Asks the user first; returns whether the defaults were written.
  bool writeSettings();
  // Writes the user defaults without asking.
  void storeSettings() const;

public Q_SLOTS:
  void receivePipelineOutputReloaded() override;
  void addViewWidgetCopy(VXAbstractViewWidget* sourceViewWidget,
                         VXAbstractViewWidget* splitViewWidget) override;

Q_SIGNALS:
  void solidColorChanged(QColor newColor);
  void nanColorChanged(QColor newColor);
  void loadPresetColors(zr::core::ColorTableUtilities::ColorPreset preset);
  void restoreDefaultPresetColors();
  void invertColorMap(bool isInverted);
  void goToParentColorSettings();
  void syncChildColorMaps();

private:
  nlohmann::json colorSettingsJson() const;
  void applyColorSettingsJson(const nlohmann::json& json);
  void takeNameFromDataSet();
  // The panel's colour controls show the current settings, whatever changed them.
  void syncColorPanel();

  std::shared_ptr<CV::VtkBridge::WrappedGeometry> m_WrappedGeometry;
  vtkSmartPointer<vtkTrivialProducer> m_Producer;
  QColor m_SolidColor;
  QColor m_NanColor;
  bool m_UsingDefaultPreset = true;
  ColorPreset m_CurrentPreset;
  bool m_Inverted = false;
  QPointer<ColorPresetsDialog> m_ColorPresetsDialog;
  QPointer<ZRColorButton> m_SolidColorButton;
  QPointer<QPushButton> m_InvertColorButton;
  QPointer<VXDatasetInfoWidget> m_DatasetInfoWidget;
};
