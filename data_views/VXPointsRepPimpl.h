#pragma once

#include "data_bridge/zr_contract/ColorPreset.h"
#include "data_views/VXColouringControls.h"
#include "data_views/VXColouringSettings.h"
#include "data_views/VXOutlineRepPimpl.h"

#include <QMap>
#include <QPointer>
#include <QString>

#include <array>
#include <set>

class ColorPresetsDialog;
class QAbstractButton;
class VXArrayHistogramWidget;
class VXCustomRangeDialog;
class VXLUTEditor;
class VXLookupTable;
class VXUpdateHistogramCallback;
class ZRComboBox;
class vtkAlgorithm;
class vtkDataArray;
class vtkDataSet;
class vtkGeometryFilter;
class vtkQuadricClustering;
class vtkScalarBarWidget;

/**
 * The points view in one window, and the colouring by data that the wireframe and surface views
 * inherit: an array and component (or the magnitude) through a lookup table with presets, inversion,
 * a NaN colour, a custom range, categories and a scalar bar.
 */
class VXPointsRepPimpl : public VXOutlineRepPimpl
{
  Q_OBJECT

public:
  using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;

  /** @brief Component index meaning the magnitude of all components. */
  static constexpr int k_Magnitude = -1;

  VXPointsRepPimpl(VXRepresentation* owner, VXAbstractViewWidget* view);
  ~VXPointsRepPimpl() override;

  void initialize(vtkAlgorithmOutput* inputPort) override;
  void write(nlohmann::json& json) const override;
  void read(const nlohmann::json& json) override;
  void setVisibility(bool visible) override;
  VXLookupTable* lookupTable() const override;
  void copySettings(const VXRepresentationPimpl* other) override;
  void applySettings() override;
  void receivePipelineOutputReloaded() override;
  void decimateGeometry() override;
  void trySetDecimatedDataSet() override;
  void trySetOriginalDataSet() override;
  void writeSettings(QtZRSettings& settings) const override;
  void readSettings(QtZRSettings& settings) override;
  void updateSettingsControls() override;
  QString levelName() const override { return QStringLiteral("points"); }
  void connectParentDataSourceColorSettings() override;
  void disconnectParentDataSourceColorSettings() override;
  using VXRepresentationPimpl::copySettings;
  using VXRepresentationPimpl::writeSettings;

  /** @brief The dataset drawn: the input's output, before any surface extraction. */
  vtkDataSet* inputDataSet() const;
  /** @brief Colours by the named point or cell array; empty or "Solid Color" means the solid colour. */
  void setActiveArray(const QString& arrayName);
  QString activeArray() const { return m_Colouring.m_ActiveArray; }
  void setActiveComponent(int component);
  int activeComponent() const { return m_Colouring.m_ActiveComponent; }
  bool isUsingSolidColor() const;
  void setPointSize(int size);
  int pointSize() const { return m_PointSize; }
  void setRenderPointsAsSpheres(bool spheres);
  void setScalarMapping(int index);
  int scalarMapping() const { return m_Colouring.m_ScalarMapping; }

  void loadRGBPresetColors(const ColorPreset& preset);
  void loadIndexedPresetColors(const ColorPreset& preset);
  /** @brief A preset with colour nodes as the colour map, one with indexed colours only as categories. */
  void loadPresetColors(const ColorPreset& preset);
  void restoreDefaultRgbPresetColors();
  void setColorMapInverted(bool inverted);
  bool isColorMapInverted() const { return m_Colouring.m_ColorMapInverted; }
  void setNanColor(const QColor& color);
  QColor nanColor() const { return m_Colouring.m_NanColor; }
  void setCustomRange(double min, double max);
  void useDataRange();
  bool isUsingCustomRange() const { return m_Colouring.m_UsingCustomRange; }
  std::array<double, 2> colorRange() const;
  void setInterpretValuesAsCategories(bool categories);
  bool interpretValuesAsCategories() const { return m_Colouring.m_ValuesAsCategories; }
  void setScalarBarVisibility(bool visible);
  bool isScalarBarVisible() const { return m_Colouring.m_ScalarBarVisible; }
  vtkScalarBarWidget* scalarBarWidget() const;
  void restoreDefaultIndexedPresetColors();
  bool isUsingDefaultPreset() const { return m_Colouring.m_UsingDefaultPreset; }
  ColorPreset rgbPreset() const { return m_Colouring.m_RgbPreset; }
  ColorPreset indexedPreset() const { return m_Colouring.m_IndexedPreset; }
  void setGenerateHistogramData(bool generate);
  bool generatesHistogramData() const { return m_GenerateHistogramData; }
  /** @brief Gives the active array to the panel's histogram while the histogram is asked for. */
  void generateHistogramData();

  // The dialogs of the colour panel; they live as long as this instance.
  ColorPresetsDialog* colorPresetsDialog() const;
  VXCustomRangeDialog* customRangeDialog() const;
  VXLUTEditor* lutEditor() const;
  VXArrayHistogramWidget* histogramWidget() const;

protected:
  void addColoringControls(QVBoxLayout* layout) override;
  void addStylingControls(QVBoxLayout* layout) override;
  void addAnnotationControls(QVBoxLayout* layout) override;
  void addExtraSections(QVBoxLayout* content) override;
  void updateColorControlsEnabled() override;
  /** @brief Array and component boxes, presets, invert, NaN colour, range, categories and map scalars. */
  void addColorByArrayControls(QVBoxLayout* layout);
  void addPointsControls(QVBoxLayout* layout);
  void addScalarBarControls(QVBoxLayout* layout);
  void arrayNameComboTextChanged(const QString& text);
  void pointSizeChanged();
  // The panel follows a change that came from a dialog or the data source.
  template<class Sender, class Signal>
  void followWithControls(Sender* sender, Signal signal);
  void connectColorDialogs();
  // The histogram follows each new run of the upstream algorithm.
  void observeProducerForHistogram();
  void stopObservingProducerForHistogram();

  bool connectInput(vtkAlgorithmOutput* inputPort) override;
  /** @brief Pushes array, component, range, categories and mapping to the mapper and table. */
  void updateColoring();
  vtkDataArray* activeDataArray() const;
  // The colour map this window keeps: the default preset or the one chosen last.
  void loadKeptRgbPreset();
  // The distinct values of the active array and component, at most one more than a table can index.
  const std::set<double>& uniqueValues();

  vtkSmartPointer<vtkGeometryFilter> m_GeometryFilter;
  vtkSmartPointer<vtkQuadricClustering> m_QuadricClustering;
  QPointer<VXLookupTable> m_LookupTable;
  VXColouringSettings m_Colouring;
  int m_PointSize = 1;
  vtkSmartPointer<vtkScalarBarWidget> m_ScalarBarWidget;
  bool m_RenderPointsAsSpheres = false;
  bool m_GenerateHistogramData = false;
  QMap<QString, QMap<int, std::set<double>>> m_UniqueValues;

  QPointer<ColorPresetsDialog> m_ColorPresetsDialog;
  QPointer<VXCustomRangeDialog> m_CustomRangeDialog;
  QPointer<VXLUTEditor> m_LUTEditor;
  QPointer<VXArrayHistogramWidget> m_HistogramWidget;
  QPointer<ZRComboBox> m_ArrayComboBox;
  QPointer<ZRComboBox> m_ComponentComboBox;
  VXColouringControls m_ColourControls;
  QPointer<ZRIconPushButton> m_LUTEditorButton;
  QPointer<ZRLineEdit> m_PointSizeEdit;
  QPointer<ZRCheckBox> m_PointsAsSpheresCheckBox;
  QPointer<ZRCheckBox> m_ScalarBarCheckBox;
  QPointer<ZRCheckBox> m_HistogramCheckBox;
  vtkSmartPointer<VXUpdateHistogramCallback> m_HistogramCallback;
  vtkWeakPointer<vtkAlgorithm> m_ObservedProducer;
  unsigned long m_HistogramObserverTag = 0;
};
