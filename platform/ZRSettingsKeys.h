#pragma once

#include <QString>
#include <QStringList>

/**
 * @brief Names of the settings groups and keys shared by the host and the visualization module.
 */
namespace ZR::SettingsKeys
{
// Groups
inline const QString k_VisualizationSettings = QStringLiteral("VisualizationSettings");
inline const QString k_RenderWindowSettings = QStringLiteral("RenderWindowSettings");
inline const QString k_RepresentationSettings = QStringLiteral("RepresentationSettings");
inline const QString k_FilterSettings = QStringLiteral("FilterSettings");
inline const QString k_CameraPresets = QStringLiteral("CameraPresets");
inline const QString k_VisualizationPresets = QStringLiteral("VisualizationPresets");
inline const QString k_GlobalSourceSettings = QStringLiteral("GlobalSourceSettings");
inline const QString k_PreferencesGroup = QStringLiteral("Preferences");

// Chart defaults (below k_VisualizationSettings)
inline const QString k_ChartPropertySettingsGroup = QStringLiteral("ChartPropertySettings");
inline const QString k_ChartSeriesOptionsSettingsGroup = QStringLiteral("ChartSeriesOptionsSettings");
inline const QString k_ChartPointOptionsGroup = QStringLiteral("ChartPointOptions");
inline const QString k_ChartLinesOptionsGroup = QStringLiteral("ChartLinesOptions");
inline const QString k_ChartBarOptionsGroup = QStringLiteral("ChartBarOptions");
inline const QString k_ChartHistogramOptionsGroup = QStringLiteral("ChartHistogramOptions");

// Render window group
inline const QString k_SplitViewState = QStringLiteral("split_view_state");
inline const QString k_InfoSplitterState = QStringLiteral("info_splitter_state");

// Camera presets group: the list of names, then one subgroup per name holding these keys.
inline const QString k_CameraPresetNames = QStringLiteral("CameraPresetNames");
inline const QString k_CameraPosX = QStringLiteral("camera_pos_x");
inline const QString k_CameraPosY = QStringLiteral("camera_pos_y");
inline const QString k_CameraPosZ = QStringLiteral("camera_pos_z");
inline const QString k_CameraViewUpX = QStringLiteral("camera_view_up_x");
inline const QString k_CameraViewUpY = QStringLiteral("camera_view_up_y");
inline const QString k_CameraViewUpZ = QStringLiteral("camera_view_up_z");
inline const QString k_CameraFocalPtX = QStringLiteral("camera_focal_pt_x");
inline const QString k_CameraFocalPtY = QStringLiteral("camera_focal_pt_y");
inline const QString k_CameraFocalPtZ = QStringLiteral("camera_focal_pt_z");
inline const QString k_CameraViewAngle = QStringLiteral("camera_view_angle");
inline const QString k_CameraParallelScale = QStringLiteral("camera_parallel_scale");

// The data views a filter offers to add, in menu order.
inline const QStringList k_AllRepresentationTypes = {
    QStringLiteral("None"),          QStringLiteral("Outline"), QStringLiteral("Points"),
    QStringLiteral("Wireframe"),     QStringLiteral("Surface"), QStringLiteral("Volume"),
    QStringLiteral("2D Image/Slice")};
} // namespace ZR::SettingsKeys
