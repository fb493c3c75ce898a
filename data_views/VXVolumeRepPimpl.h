#pragma once

#include "data_bridge/zr_contract/ColorPreset.h"
#include "data_views/VXRepresentationPimpl.h"

#include <QPointer>
#include <QSharedPointer>
#include <QString>

#include <vtkSmartPointer.h>

#include <array>
#include <map>
#include <vector>

class ColorPresetsDialog;
class QLabel;
class VXColorMapEditorWidget;
class VXCustomRangeDialog;
class VXLookupTable;
class ZRComboBox;
class vtkActor;
class vtkAlgorithmOutput;
class vtkDataArray;
class vtkImageData;
class vtkImageResample;
class vtkOutlineFilter;
class vtkPiecewiseFunction;
class vtkPolyDataMapper;
class vtkScalarBarWidget;
class vtkTable;
class vtkSmartVolumeMapper;
class vtkVolume;
class vtkVolumeProperty;

/**
 * The volume view in one window: an image rendered as a volume. Each array keeps its own colour map
 * and opacity function, so that going back to an array brings back what was done on it. The view
 * does not follow its data source's colours. An image larger than the renderer's 3D textures is
 * drawn from a resampled copy that fits, and the panel says so.
 */
class VXVolumeRepPimpl : public VXRepresentationPimpl
{
  Q_OBJECT

public:
  using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;

  struct CustomRange
  {
    double min = 0.0;
    double max = 1.0;
  };

  /** @brief Component index meaning the magnitude of all components. */
  static constexpr int k_Magnitude = -1;

  VXVolumeRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view);
  ~VXVolumeRepPimpl() override;

  void initialize(vtkAlgorithmOutput* inputPort) override;
  bool finalize() override;
  void write(nlohmann::json& json) const override;
  void read(const nlohmann::json& json) override;
  vtkAlgorithmOutput* inputPort() const override;
  vtkAlgorithmOutput* outputPort() const override;
  void setVisibility(bool visible) override;
  std::array<double, 6> getModuleBounds() const override;
  VXLookupTable* lookupTable() const override;
  void highlightInRenderWindow(bool highlight) override;
  void receivePipelineOutputReloaded() override;
  void applySettings() override;
  void decimateGeometry() override;
  void copySettings(const VXRepresentationPimpl* other) override;
  void initializeSettingsWidget() override;
  void updateSettingsControls() override;
  /** @brief Bins the active array for the transfer function editor; only while the panel shows one. */
  void generateHistogramData() override;
  QString helpAnchor() const override { return QStringLiteral("#volume-representation"); }
  using VXRepresentationPimpl::copySettings;

  /**
   * @brief The largest 3D texture edge the window's OpenGL context takes (GL_MAX_3D_TEXTURE_SIZE).
   * A positive override replaces what the GPU says; 0 asks the GPU again.
   */
  int textureSizeLimit() const;
  static void setTextureSizeLimitOverride(int limit);

  /** @brief The image given to the view, and the one drawn (a resampled copy when too large). */
  vtkImageData* inputImage() const;
  vtkImageData* renderedImage() const;
  bool isResampled() const { return m_Resampled; }
  /** @brief The text the panel shows about the resampling; empty when none. */
  QString resampleNote() const { return m_ResampleNote; }

  void setActiveArray(const QString& arrayName);
  QString activeArray() const { return m_ActiveArray; }
  void setActiveComponent(int component);
  int activeComponent() const { return m_ActiveComponent; }
  /** @brief The point or cell arrays of the image that can be drawn. */
  QStringList arrayNames() const;

  /** @brief The colour map and opacity function kept for an array; null before it was shown. */
  VXLookupTable* colorMapOf(const QString& arrayName) const;
  vtkPiecewiseFunction* opacityFunctionOf(const QString& arrayName) const;
  vtkSmartVolumeMapper* volumeMapper() const;
  vtkVolume* volume() const;

  /** @brief Moves the opacity nodes of an array from their old range into the new one, keeping y. */
  void setOpacityFunctionRange(const QString& arrayName, double min, double max);
  void rescaleToCustomRange(double min, double max);
  void rescaleToDataRange();
  bool isUsingCustomRange() const { return m_UsingCustomRange; }
  /** @brief Starts the colour map and opacity ramp of the active array afresh over its data range. */
  void resetColorMap();

  void loadPresetColors(const ColorPreset& preset);
  void restoreDefaultPresetColors();
  void setColorMapInverted(bool inverted);
  bool isColorMapInverted() const { return m_ColorMapInverted; }
  void setScalarBarVisibility(bool visible);
  bool isScalarBarVisible() const { return m_ScalarBarVisible; }
  VXCustomRangeDialog* customRangeDialog() const;
  /** @brief The preset chooser of the panel, made on first use. */
  ColorPresetsDialog* colorPresetsDialog();
  /** @brief The transfer function editor of the panel; null until the panel is built. */
  VXColorMapEditorWidget* colorMapEditor() const;
  /** @brief The histogram last given to the editor, with its column "image_pops"; null before. */
  vtkTable* histogramTable() const;
  /**
   * @brief Replaces the opacity curve of the active array with nodes of (value, opacity), in data
   * units. False, with nothing changed, without an active array.
   */
  bool setOpacityCurve(const std::vector<std::array<double, 2>>& nodes);

  /** @brief The volume takes no colours from its data source; asking is reported as an error. */
  void connectParentDataSourceColorSettings();
  void disconnectParentDataSourceColorSettings();

private:
  void connectInput(vtkAlgorithmOutput* inputPort);
  // Chooses between the image and a resampled copy that fits the texture limit.
  void updateResampling();
  vtkDataArray* arrayOf(const QString& arrayName) const;
  std::array<double, 2> dataRange(const QString& arrayName) const;
  void initializeColorTransferFunction(const QString& arrayName);
  void initializeScalarOpacityFunction(const QString& arrayName);
  // Points the property and mapper at the active array's functions, component and range.
  void updateActiveComponent();
  void updateColorLegend(const QString& title);
  // Shows the active array's colour map and opacity function in the editor, if there is one.
  void updateColorMapEditor();
  void sendOutputMessage(const QString& message) const;
  bool isInRenderer() const;

  vtkSmartPointer<vtkAlgorithmOutput> m_InputPort;
  vtkSmartPointer<vtkImageResample> m_Resample;
  vtkSmartPointer<vtkSmartVolumeMapper> m_Mapper;
  vtkSmartPointer<vtkVolumeProperty> m_Property;
  vtkSmartPointer<vtkVolume> m_Volume;
  vtkSmartPointer<vtkOutlineFilter> m_OutlineFilter;
  vtkSmartPointer<vtkPolyDataMapper> m_OutlineMapper;
  vtkSmartPointer<vtkActor> m_OutlineActor;
  vtkSmartPointer<vtkScalarBarWidget> m_ScalarBarWidget;

  QString m_ActiveArray;
  int m_ActiveComponent = k_Magnitude;
  bool m_ScalarBarVisible = false;
  std::array<double, 4> m_ScalarBarPosition = {0.9, 0.175, 0.1, 0.5};
  bool m_ColorMapInverted = false;
  ColorPreset m_Preset;
  bool m_UsingDefaultPreset = true;
  bool m_UsingCustomRange = false;
  std::array<double, 2> m_CustomRange = {0.0, 1.0};
  std::map<QString, CustomRange> m_ArrayCustomRanges;
  std::map<QString, QSharedPointer<VXLookupTable>> m_ArrayLuts;
  std::map<QString, vtkSmartPointer<vtkPiecewiseFunction>> m_ArrayOpacityFunctions;

  bool m_Resampled = false;
  bool m_OversizeReported = false;
  QString m_ResampleNote;

  vtkSmartPointer<vtkTable> m_HistogramTable;
  QString m_HistogramKey; // the array, component and data the table was binned from

  QPointer<VXCustomRangeDialog> m_CustomRangeDialog;
  QPointer<VXColorMapEditorWidget> m_ColorMapEditor;
  QPointer<ColorPresetsDialog> m_ColorPresetsDialog;
  QPointer<ZRComboBox> m_ArrayComboBox;
  QPointer<ZRComboBox> m_ComponentComboBox;
  QPointer<ZRIconPushButton> m_InvertButton;
  QPointer<ZRCheckBox> m_ScalarBarCheckBox;
  QPointer<QLabel> m_ResampleLabel;
};
