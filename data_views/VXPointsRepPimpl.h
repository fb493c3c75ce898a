#pragma once

#include "data_bridge/zr_contract/ColorPreset.h"
#include "data_views/VXOutlineRepPimpl.h"

#include <QMap>
#include <QPointer>
#include <QString>

#include <array>
#include <set>

class VXLookupTable;
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
  using VXRepresentationPimpl::copySettings;

  /** @brief The dataset drawn: the input's output, before any surface extraction. */
  vtkDataSet* inputDataSet() const;
  /** @brief Colours by the named point or cell array; empty or "Solid Color" means the solid colour. */
  void setActiveArray(const QString& arrayName);
  QString activeArray() const { return m_ActiveArray; }
  void setActiveComponent(int component);
  int activeComponent() const { return m_ActiveComponent; }
  bool isUsingSolidColor() const;
  void setPointSize(int size);
  int pointSize() const { return m_PointSize; }
  void setRenderPointsAsSpheres(bool spheres);
  void setScalarMapping(int index);
  int scalarMapping() const { return m_ScalarMapping; }

  void loadRGBPresetColors(const ColorPreset& preset);
  void loadIndexedPresetColors(const ColorPreset& preset);
  /** @brief A preset with colour nodes as the colour map, one with indexed colours only as categories. */
  void loadPresetColors(const ColorPreset& preset);
  void restoreDefaultRgbPresetColors();
  void setColorMapInverted(bool inverted);
  bool isColorMapInverted() const { return m_ColorMapInverted; }
  void setNanColor(const QColor& color);
  QColor nanColor() const { return m_NanColor; }
  void setCustomRange(double min, double max);
  void useDataRange();
  bool isUsingCustomRange() const { return m_UsingCustomRange; }
  std::array<double, 2> colorRange() const;
  void setInterpretValuesAsCategories(bool categories);
  bool interpretValuesAsCategories() const { return m_ValuesAsCategories; }
  void setScalarBarVisibility(bool visible);
  bool isScalarBarVisible() const { return m_ScalarBarVisible; }
  vtkScalarBarWidget* scalarBarWidget() const;

protected:
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
  QString m_ActiveArray;
  int m_ActiveComponent = k_Magnitude;
  int m_PointSize = 1;
  vtkSmartPointer<vtkScalarBarWidget> m_ScalarBarWidget;
  bool m_ScalarBarVisible = false;
  std::array<double, 4> m_ScalarBarPosition = {0.9, 0.175, 0.1, 0.5};
  bool m_ColorMapInverted = false;
  ColorPreset m_RgbPreset;
  bool m_UsingDefaultPreset = true;
  ColorPreset m_IndexedPreset;
  bool m_UsingDefaultIndexedPreset = true;
  int m_ScalarMapping = 1;
  bool m_RenderPointsAsSpheres = false;
  bool m_UsingCustomRange = false;
  std::array<double, 2> m_CustomRange = {0.0, 0.0};
  QColor m_NanColor = Qt::black;
  bool m_UsingSolidColor = false;
  bool m_ValuesAsCategories = false;
  bool m_GenerateHistogramData = false;
  QMap<QString, QMap<int, std::set<double>>> m_UniqueValues;
};
