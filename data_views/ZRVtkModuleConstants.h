#pragma once

#include <QMetaType>
#include <QString>

// Labels shared by the settings panels of the data views.
namespace ZRVtkModule::constants
{
inline const QString k_LinesAsTubes = QStringLiteral("Render Lines as Tubes");
inline const QString k_LineSize = QStringLiteral("Line Size");
inline const QString k_ShowEdges = QStringLiteral("Show Edges");
inline const QString k_ScalarBarLabel = QStringLiteral("Show Color Legend");
inline const QString k_DataAxesGridLabel = QStringLiteral("Show Data Axes Grid");
inline const QString k_ScalarsMapping = QStringLiteral("Map Scalars :");
inline const QString k_MapScalarsAlways = QStringLiteral("Always ");
inline const QString k_MapScalarsNonColors = QStringLiteral("Non-Colors");
inline const QString k_MapScalarsNever = QStringLiteral("Never");
inline const QString k_SolidColor = QStringLiteral("Solid Color");
inline const QString MultiOptionString = QStringLiteral("---");

// The plane an image slice view shows; the numbers are stored in state records.
enum SliceDirection
{
  XYPlane = 0,
  YZPlane = 1,
  XZPlane = 2
};
} // namespace ZRVtkModule::constants

Q_DECLARE_METATYPE(ZRVtkModule::constants::SliceDirection)
