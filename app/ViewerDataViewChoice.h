#pragma once

#include "data_bridge/zr_contract/ColorPreset.h"
#include "data_views/VXRepresentation.h"

#include <QString>

#include <array>
#include <optional>
#include <vector>

class VXAbstractViewWidget;
class VXBridgeObject;

/**
 * @brief What the viewer's command line asks of the data views of every file it opens: the kind of
 * view (--view) and the glyph shape (--glyph), the array and component to colour by (--color-by
 * ARRAY[:COMPONENT|:Magnitude], by name or by data path; without it each view takes its data's first
 * array, and "none" keeps the solid colour) and the colour map (--preset NAME). Unknown names are refused
 * with the names that exist.
 */
class ViewerDataViewChoice
{
public:
  /** @brief The viewer's own default views: faces where there are faces, points and lines otherwise. */
  static void UseViewerDefaults();

  bool setView(const QString& name, QString* error);
  bool setColorBy(const QString& text, QString* error);
  bool setPreset(const QString& name, QString* error);
  /** @brief --slice-number N: the slice the image slice views show (implies --view slice). */
  bool setSliceNumber(const QString& text, QString* error);
  /** @brief --slice-axis x|y|z: the axis the image slice views step along (implies --view slice). */
  bool setSliceAxis(const QString& text, QString* error);
  /** @brief The shape of glyphs (--glyph arrow|sphere|cube); asks for the glyph view when none was named. */
  bool setGlyph(const QString& name, QString* error);
  /** @brief The three-component array that turns the glyphs (--glyph-orient ARRAY); asks for the glyph view.
   */
  bool setGlyphOrientation(const QString& arrayName, QString* error);
  /**
   * @brief The opacity curve of the volume views' active array (--opacity-curve V:A[,V:A...], values in
   * data units, opacities in 0..1, at least two nodes at distinct values); asks for the volume view.
   */
  bool setOpacityCurve(const QString& text, QString* error);
  /** @brief The glyphs' scale factor (--glyph-scale S, a positive number), kept in place of the one the
   * data gives; asks for the glyph view. */
  bool setGlyphScale(const QString& text, QString* error);
  /** @brief The kind of view asked for; None when --view was not given. */
  int viewType() const { return m_Type; }

  /** @brief Makes the chosen kind the default data view of every kind of geometry. */
  void applyDefaults() const;
  /**
   * @brief Colours the data views of the bridge's data sources in the window. False, with a message
   * naming the arrays there are, when no data source has the array.
   */
  bool applyTo(const VXBridgeObject& bridge, VXAbstractViewWidget* view, QString* error) const;

private:
  // The default view of every kind of geometry: faces, vertex lists and edge lists.
  // Moves the image slice views of the bridge's data sources to the asked axis and slice.
  bool applySlice(const VXBridgeObject& bridge, VXAbstractViewWidget* view, QString* error) const;
  // Hands the glyph shape and orientation array to the glyph views of the bridge's data sources.
  bool applyGlyphs(const VXBridgeObject& bridge, VXAbstractViewWidget* view, QString* error) const;
  // Without --color-by, each data view that shows a solid colour takes its data's first array.
  static void colourByDefaultArrays(const VXBridgeObject& bridge, VXAbstractViewWidget* view);
  // Gives the volume views' active arrays the --opacity-curve nodes (after --color-by chose the array).
  void applyOpacityCurve(const VXBridgeObject& bridge, VXAbstractViewWidget* view) const;
  static void setDefaultViews(VXRepresentation::Type faces, VXRepresentation::Type vertices,
                              VXRepresentation::Type edges);

  VXRepresentation::Type m_Type = VXRepresentation::None;
  QString m_Array;
  // --color-by none: the data views keep their solid colour.
  bool m_SolidColour = false;
  std::optional<int> m_Component;
  std::optional<zr::core::ColorTableUtilities::ColorPreset> m_Preset;
  std::optional<int> m_SliceNumber;
  std::optional<int> m_SliceAxis; // 0 x, 1 y, 2 z
  QString m_GlyphType;
  QString m_GlyphOrientation;
  std::vector<std::array<double, 2>> m_OpacityCurve;
  std::optional<double> m_GlyphScale;
};
