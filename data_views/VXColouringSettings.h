#pragma once

#include "data_bridge/zr_contract/ColorPreset.h"

#include <nlohmann/json_fwd.hpp>

#include <QColor>
#include <QMap>
#include <QString>

#include <array>
#include <set>

class QtZRSettings;
class VXLookupTable;
class VXVisualizationWidget;
class vtkColorTransferFunction;
class vtkDataArray;
class vtkScalarBarWidget;

/**
 * How a view colours by data: the array and component (or the magnitude), the colour map and
 * category presets, inversion, the NaN colour, a custom range, the scalar mapping and the scalar
 * bar. The points view (and the views built on it) and the image slice view each hold one; it keeps
 * the saved keys and drives their lookup table the same way for both.
 */
class VXColouringSettings
{
public:
  using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;
  /** @brief Distinct values per array name and component, filled as categories are asked for. */
  using UniqueValuesCache = QMap<QString, QMap<int, std::set<double>>>;

  /** @brief Component index meaning the magnitude of all components. */
  static constexpr int k_Magnitude = -1;

  /** @brief Starts from the default colour map and category presets of the preferences. */
  VXColouringSettings();

  /** @brief True when no array colours: solid colour asked for, no array, or "Solid Color". */
  bool isUsingSolidColor() const;
  /** @brief A preset with indexed colours and no colour nodes is a category preset. */
  static bool isIndexedOnly(const ColorPreset& preset);

  // The steps a view takes on its lookup table when a setting changes.
  /** @brief The colour map this view keeps: the default preset or the one chosen last. */
  void loadKeptRgbPreset(VXLookupTable& table) const;
  void loadRgbPreset(const ColorPreset& preset, VXLookupTable& table);
  /** @brief Keeps a category preset and turns categories on; the next coloring applies it. */
  void loadIndexedPreset(const ColorPreset& preset);
  void restoreDefaultRgbPreset(VXLookupTable& table);
  void setColorMapInverted(bool inverted, VXLookupTable& table);
  /** @brief Returns false (and changes nothing) for an invalid colour. */
  bool setNanColor(const QColor& color, VXLookupTable& table);
  /** @brief Returns false (and changes nothing) unless min < max. */
  bool setCustomRange(double min, double max);
  /** @brief Returns false when nothing changed; back from categories the kept colour map returns. */
  bool setInterpretValuesAsCategories(bool categories, VXLookupTable& table);
  void setScalarMapping(int index);

  /** @brief The custom range, else the range of the array's component, widened around a constant. */
  std::array<double, 2> colorRange(vtkDataArray* array) const;
  /**
   * @brief The distinct values of the active component of `array`, cached per array and component;
   * the scan stops at one more than a table can index.
   */
  const std::set<double>& uniqueValues(vtkDataArray* array, UniqueValuesCache& cache) const;
  /** @brief True when the array's values are colours drawn as they are. */
  bool mapsDirectly(vtkDataArray* array) const;
  /**
   * @brief Sets the table up for `array`: vector mode, categories or range, inversion. A component
   * past the array's falls back to the magnitude. Returns the scalar bar title.
   */
  QString applyToLookupTable(vtkDataArray* array, VXLookupTable& table, UniqueValuesCache& cache);
  /** @brief Shows the table in the scalar bar with its title at the kept position. */
  void updateScalarBar(vtkScalarBarWidget* widget, vtkColorTransferFunction* transferFunction,
                       const QString& title) const;
  /** @brief Puts the scalar bar into the window (once) and shows or hides it. Returns false without one. */
  static bool showScalarBar(vtkScalarBarWidget* widget, VXVisualizationWidget* window, bool show);

  // Saved state and default settings.
  void write(nlohmann::json& json) const;
  void read(const nlohmann::json& json);
  void writeSettings(QtZRSettings& settings) const;
  void readSettings(const QtZRSettings& settings);

  QString m_ActiveArray;
  int m_ActiveComponent = k_Magnitude;
  bool m_ScalarBarVisible = false;
  std::array<double, 4> m_ScalarBarPosition = {0.9, 0.175, 0.1, 0.5};
  bool m_ColorMapInverted = false;
  ColorPreset m_RgbPreset;
  bool m_UsingDefaultPreset = true;
  ColorPreset m_IndexedPreset;
  bool m_UsingDefaultIndexedPreset = true;
  int m_ScalarMapping = 1;
  bool m_UsingCustomRange = false;
  std::array<double, 2> m_CustomRange = {0.0, 0.0};
  QColor m_NanColor = Qt::black;
  bool m_UsingSolidColor = false;
  bool m_ValuesAsCategories = false;
};
