#include "data_views/VXRepresentationPimpl.h"

#include "data_views/VXRepresentation.h"
#include "views/VXAbstractViewWidget.h"

#include <nlohmann/json.hpp>

namespace
{
constexpr const char* k_DetachColorSettings = "detach_color_settings";
constexpr const char* k_DataGridVisible = "data_grid_visible";
constexpr const char* k_SpacingX = "global_grid_axes_spacingx";
constexpr const char* k_SpacingY = "global_grid_axes_spacingy";
constexpr const char* k_SpacingZ = "global_grid_axes_spacingz";
constexpr const char* k_ShowGridLines = "global_grid_axes_show_grid_lines";
constexpr const char* k_SplitId = "rep_split_id";
constexpr const char* k_Linked = "rep_linked";
constexpr const char* k_LinkPhysicalUnits = "link_physical_units";
constexpr const char* k_RepresentationVisible = "representation_visible";
constexpr const char* k_UseDecimation = "use_decimation_during_interactions";

template<class T>
void readIfPresent(const nlohmann::json& json, const char* key, T& value)
{
  if (json.contains(key))
  {
    value = json.at(key).get<T>();
  }
}
} // namespace

VXRepresentationPimpl::VXRepresentationPimpl(VXRepresentation* owner, VXAbstractViewWidget* view)
    : QObject(owner)
    , m_View(view)
    , m_SplitId(view != nullptr ? view->getSplitId() : 1)
    , m_Owner(owner)
{
}

VXRepresentationPimpl::~VXRepresentationPimpl() = default;

VXAbstractViewWidget* VXRepresentationPimpl::view() const
{
  return m_View;
}

void VXRepresentationPimpl::write(nlohmann::json& json) const
{
  json[k_DetachColorSettings] = m_DetachColorSettings;
  json[k_DataGridVisible] = m_DataGridVisible;
  json[k_SpacingX] = m_GridSpacing[0];
  json[k_SpacingY] = m_GridSpacing[1];
  json[k_SpacingZ] = m_GridSpacing[2];
  json[k_ShowGridLines] = m_ShowGridLines;
  json[k_SplitId] = m_SplitId;
  json[k_Linked] = m_Linked;
  json[k_LinkPhysicalUnits] = m_LinkPhysicalUnits;
  json[k_RepresentationVisible] = isVisible();
  json[k_UseDecimation] = m_UseDecimationOnInteraction;
}

void VXRepresentationPimpl::read(const nlohmann::json& json)
{
  if (!json.is_object())
  {
    return;
  }
  readIfPresent(json, k_DetachColorSettings, m_DetachColorSettings);
  readIfPresent(json, k_DataGridVisible, m_DataGridVisible);
  if (json.contains(k_SpacingX) && json.contains(k_SpacingY) && json.contains(k_SpacingZ))
  {
    m_GridSpacing = {json.at(k_SpacingX).get<double>(), json.at(k_SpacingY).get<double>(),
                     json.at(k_SpacingZ).get<double>()};
  }
  readIfPresent(json, k_ShowGridLines, m_ShowGridLines);
  if (json.contains(k_SplitId))
  {
    // Older records stored the id as a boolean or a floating-point number.
    const nlohmann::json& id = json.at(k_SplitId);
    m_SplitId = id.is_boolean() ? static_cast<int>(id.get<bool>()) : static_cast<int>(id.get<double>());
  }
  readIfPresent(json, k_Linked, m_Linked);
  readIfPresent(json, k_LinkPhysicalUnits, m_LinkPhysicalUnits);
  if (json.contains(k_RepresentationVisible))
  {
    setVisibility(json.at(k_RepresentationVisible).get<bool>());
  }
  readIfPresent(json, k_UseDecimation, m_UseDecimationOnInteraction);
}

QString VXRepresentationPimpl::pathName() const
{
  if (m_Owner == nullptr)
  {
    return QStringLiteral("Split View %1").arg(m_SplitId);
  }
  return m_Owner->pathName() + m_Owner->getPathDelimeter() + QStringLiteral("Split View ") +
         QString::number(m_SplitId);
}
