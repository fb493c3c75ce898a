#pragma once

// The state and settings keys of a data view's colouring, shared by every view that writes them.
namespace ZRVtkModule::state::keys
{
inline const char* const k_ActiveArray = "active_array";
inline const char* const k_ActiveComponent = "active_component";
inline const char* const k_ScalarBarVisible = "scalar_bar_visible";
inline const char* const k_ScalarBarPosition[4] = {"source_position_x", "source_position_y",
                                                   "source_position2_x", "source_position2_y"};
inline const char* const k_ColorMapInverted = "color_map_inverted";
inline const char* const k_ColorPreset = "color_preset";
inline const char* const k_UsingDefaultPreset = "using_default_preset";
inline const char* const k_IndexedColorPreset = "indexed_color_preset";
inline const char* const k_UsingDefaultIndexedPreset = "using_default_indexed_preset";
inline const char* const k_ScalarMapping = "scalar_mapping";
inline const char* const k_UsingCustomRange = "using_custom_range";
inline const char* const k_CustomRangeMin = "custom_range_min";
inline const char* const k_CustomRangeMax = "custom_range_max";
inline const char* const k_NanColor[3] = {"nan_color_r", "nan_color_g", "nan_color_b"};
inline const char* const k_UsingSolidColor = "using_solid_color";
inline const char* const k_ValuesAsCategories = "values_as_categories";
} // namespace ZRVtkModule::state::keys
