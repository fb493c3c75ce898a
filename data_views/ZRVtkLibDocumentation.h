#pragma once

#include <QString>

// Pages and anchors of the user manual that the settings panels open.
namespace ZRVtkLib::Documentation
{
inline const QString k_RepresentationsPage =
    QStringLiteral("/html/Visualization/ApplyingRepresentations.html");

inline const QString k_OutlineRepresentation = QStringLiteral("#outline-representation");
inline const QString k_PointsRepresentation = QStringLiteral("#points-representation");
inline const QString k_WireframeRepresentation = QStringLiteral("#wireframe-representation");
inline const QString k_SurfaceRepresentation = QStringLiteral("#surface-representation");
inline const QString k_ImageSliceRepresentation = QStringLiteral("#d-image-slice-representation");

// Anchors shared by every level.
inline const QString k_BackFaceCulling = QStringLiteral("#back-face-culling");
inline const QString k_ShowEdges = QStringLiteral("#show-edges");
inline const QString k_PointSize = QStringLiteral("#point-size");
inline const QString k_RenderPointsAsSpheres = QStringLiteral("#render-points-as-spheres");

// Topics whose anchor carries the level's name: "#points-opacity", "#wireframe-line-size", ...
inline const QString k_Opacity = QStringLiteral("opacity");
inline const QString k_LineSize = QStringLiteral("line-size");
inline const QString k_LinesAsTubes = QStringLiteral("render-lines-as-tubes");
inline const QString k_MapScalars = QStringLiteral("map-scalars");
inline const QString k_SolidColor = QStringLiteral("solid-color");
inline const QString k_ColorBy = QStringLiteral("color-by");
inline const QString k_ColorLegend = QStringLiteral("color-legend");
inline const QString k_DataAxesGrid = QStringLiteral("data-axes-grid");
inline const QString k_Decimation = QStringLiteral("decimation");
inline const QString k_Histogram = QStringLiteral("histogram");
inline const QString k_SeparateColorMap = QStringLiteral("separate-color-map");

// "outline", "points", "wireframe" or "surface" with a topic above.
inline QString LevelAnchor(const QString& level, const QString& topic)
{
  return QStringLiteral("#") + level + QStringLiteral("-") + topic;
}
} // namespace ZRVtkLib::Documentation
