#include "data_views/VXColouringSettings.h"

#include "data_views/VXColouringKeys.h"

#include "colour/VXLookupTable.h"
#include "data_views/VXStateReading.h"
#include "data_views/ZRVtkModuleConstants.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "platform/ZRPreferences.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <vtkColorTransferFunction.h>
#include <vtkDataArray.h>
#include <vtkScalarBarActor.h>
#include <vtkScalarBarRepresentation.h>
#include <vtkScalarBarWidget.h>

#include <algorithm>
#include <cmath>

using namespace ZRVtkModule::state;
using namespace ZRVtkModule::state::keys;

namespace
{

void readPresetSetting(const QtZRSettings& settings, const char* key,
                       zr::core::ColorTableUtilities::ColorPreset& preset)
{
  const QString name = QString::fromLatin1(key);
  if (!settings.contains(name))
  {
    return;
  }
  const nlohmann::json json =
      nlohmann::json::parse(settings.value(name).toString().toStdString(), nullptr, false);
  if (json.is_object())
  {
    preset = zr::core::ColorTableUtilities::ColorPreset(json);
  }
}
} // namespace

VXColouringSettings::VXColouringSettings()
    : m_RgbPreset(ZRPreferences::Instance()->getDefaultColorPreset())
    , m_IndexedPreset(ZRPreferences::Instance()->getDefaultIndexedColorPreset())
{
}

bool VXColouringSettings::isUsingSolidColor() const
{
  return m_UsingSolidColor || m_ActiveArray.isEmpty() ||
         m_ActiveArray == ZRVtkModule::constants::k_SolidColor;
}

bool VXColouringSettings::isIndexedOnly(const ColorPreset& preset)
{
  return preset.m_RGBPoints.empty() && !preset.m_IndexedColors.empty();
}

void VXColouringSettings::loadKeptRgbPreset(VXLookupTable& table) const
{
  if (m_UsingDefaultPreset)
  {
    table.parseRgbArray({VXLookupTable::k_DefaultPresetName});
  }
  else
  {
    table.parseRgbJson(m_RgbPreset);
  }
}

void VXColouringSettings::loadRgbPreset(const ColorPreset& preset, VXLookupTable& table)
{
  m_RgbPreset = preset;
  m_UsingDefaultPreset = false;
  table.parseRgbJson(preset);
}

void VXColouringSettings::loadIndexedPreset(const ColorPreset& preset)
{
  m_IndexedPreset = preset;
  m_UsingDefaultIndexedPreset = false;
  m_ValuesAsCategories = true;
}

void VXColouringSettings::restoreDefaultRgbPreset(VXLookupTable& table)
{
  m_UsingDefaultPreset = true;
  m_RgbPreset = ZRPreferences::Instance()->getDefaultColorPreset();
  table.parseRgbArray({VXLookupTable::k_DefaultPresetName});
}

void VXColouringSettings::setColorMapInverted(bool inverted, VXLookupTable& table)
{
  m_ColorMapInverted = inverted;
  if (inverted != table.isInverted())
  {
    table.invert();
  }
}

bool VXColouringSettings::setNanColor(const QColor& color, VXLookupTable& table)
{
  if (!color.isValid())
  {
    return false;
  }
  m_NanColor = color;
  table.setNANColor(color);
  return true;
}

bool VXColouringSettings::setCustomRange(double min, double max)
{
  if (!(min < max))
  {
    return false;
  }
  m_UsingCustomRange = true;
  m_CustomRange = {min, max};
  return true;
}

bool VXColouringSettings::setInterpretValuesAsCategories(bool categories, VXLookupTable& table)
{
  if (categories == m_ValuesAsCategories)
  {
    return false;
  }
  m_ValuesAsCategories = categories;
  if (!categories)
  {
    loadKeptRgbPreset(table); // back from the categorical table to the kept colour map
  }
  return true;
}

void VXColouringSettings::setScalarMapping(int index)
{
  m_ScalarMapping = std::clamp(index, 0, 2);
}

std::array<double, 2> VXColouringSettings::colorRange(vtkDataArray* array) const
{
  if (m_UsingCustomRange)
  {
    return m_CustomRange;
  }
  std::array<double, 2> range = {0.0, 1.0};
  if (array == nullptr)
  {
    return range;
  }
  const int component = array->GetNumberOfComponents() == 1 ? 0 : m_ActiveComponent;
  array->GetRange(range.data(), component);
  if (!(range[0] < range[1]))
  {
    // A constant array still gets a usable map around its value.
    range = {range[0] - 0.5, range[0] + 0.5};
  }
  return range;
}

const std::set<double>& VXColouringSettings::uniqueValues(vtkDataArray* array, UniqueValuesCache& cache) const
{
  QMap<int, std::set<double>>& byComponent = cache[m_ActiveArray];
  if (byComponent.contains(m_ActiveComponent))
  {
    return byComponent[m_ActiveComponent];
  }
  std::set<double>& values = byComponent[m_ActiveComponent];
  if (array == nullptr)
  {
    return values;
  }
  const int components = array->GetNumberOfComponents();
  const vtkIdType tuples = array->GetNumberOfTuples();
  for (vtkIdType tuple = 0; tuple < tuples; ++tuple)
  {
    double value = 0.0;
    if (m_ActiveComponent == k_Magnitude && components > 1)
    {
      for (int c = 0; c < components; ++c)
      {
        const double v = array->GetComponent(tuple, c);
        value += v * v;
      }
      value = std::sqrt(value);
    }
    else
    {
      value = array->GetComponent(tuple, components == 1 ? 0 : m_ActiveComponent);
    }
    values.insert(value);
    // One more than a table can index is enough to know that there are too many.
    if (values.size() > static_cast<size_t>(VXLookupTable::k_MaxNumberIndexedColors))
    {
      break;
    }
  }
  return values;
}

bool VXColouringSettings::mapsDirectly(vtkDataArray* array) const
{
  // Colour arrays are drawn as they are unless the mapping says to map everything.
  return m_ScalarMapping == 2 || (m_ScalarMapping == 1 && ZRVtkModule::utils::IsColorArray(array));
}

QString VXColouringSettings::applyToLookupTable(vtkDataArray* array, VXLookupTable& table,
                                                UniqueValuesCache& cache)
{
  vtkColorTransferFunction* transferFunction = table.getColorTransferFunction();
  const int components = array->GetNumberOfComponents();
  if (m_ActiveComponent >= components)
  {
    m_ActiveComponent = k_Magnitude;
  }
  QString title = QString::fromUtf8(array->GetName());
  if (components == 1)
  {
    transferFunction->SetVectorModeToComponent();
    transferFunction->SetVectorComponent(0);
  }
  else if (m_ActiveComponent == k_Magnitude)
  {
    transferFunction->SetVectorModeToMagnitude();
    title += QStringLiteral("\nMagnitude");
  }
  else
  {
    transferFunction->SetVectorModeToComponent();
    transferFunction->SetVectorComponent(m_ActiveComponent);
    title += QStringLiteral("\n") + QString::number(m_ActiveComponent);
  }

  if (m_ValuesAsCategories)
  {
    table.parseIndexedJson<double>(m_UsingDefaultIndexedPreset
                                       ? ZRPreferences::Instance()->getDefaultIndexedColorPreset()
                                       : m_IndexedPreset,
                                   uniqueValues(array, cache));
  }
  else
  {
    const std::array<double, 2> range = colorRange(array);
    table.setRange(range[0], range[1]);
  }
  if (m_ColorMapInverted != table.isInverted())
  {
    table.invert();
  }
  return title;
}

void VXColouringSettings::updateScalarBar(vtkScalarBarWidget* widget,
                                          vtkColorTransferFunction* transferFunction,
                                          const QString& title) const
{
  auto* representation = vtkScalarBarRepresentation::SafeDownCast(widget->GetRepresentation());
  vtkScalarBarActor* bar = representation->GetScalarBarActor();
  bar->SetLookupTable(transferFunction);
  bar->SetTitle(title.toUtf8().constData());
  representation->SetPosition(m_ScalarBarPosition[0], m_ScalarBarPosition[1]);
  representation->SetPosition2(m_ScalarBarPosition[2], m_ScalarBarPosition[3]);
}

bool VXColouringSettings::showScalarBar(vtkScalarBarWidget* widget, VXVisualizationWidget* window, bool show)
{
  if (window == nullptr || window->getRenderWindowInteractor() == nullptr)
  {
    return false;
  }
  if (widget->GetInteractor() == nullptr)
  {
    widget->SetInteractor(window->getRenderWindowInteractor());
    widget->SetDefaultRenderer(window->getRenderer());
    widget->SetCurrentRenderer(window->getRenderer());
  }
  widget->SetEnabled(show ? 1 : 0);
  return true;
}

void VXColouringSettings::write(nlohmann::json& json) const
{
  json[k_ActiveArray] = m_ActiveArray.toStdString();
  json[k_ActiveComponent] = m_ActiveComponent;
  json[k_ScalarBarVisible] = m_ScalarBarVisible;
  for (int i = 0; i < 4; ++i)
  {
    json[k_ScalarBarPosition[i]] = m_ScalarBarPosition[i];
  }
  json[k_ColorMapInverted] = m_ColorMapInverted;
  json[k_ColorPreset] = m_RgbPreset.toJson();
  json[k_UsingDefaultPreset] = m_UsingDefaultPreset;
  json[k_IndexedColorPreset] = m_IndexedPreset.toJson();
  json[k_UsingDefaultIndexedPreset] = m_UsingDefaultIndexedPreset;
  json[k_ScalarMapping] = m_ScalarMapping;
  json[k_UsingCustomRange] = m_UsingCustomRange;
  json[k_CustomRangeMin] = m_CustomRange[0];
  json[k_CustomRangeMax] = m_CustomRange[1];
  writeColor(json, k_NanColor, m_NanColor);
  json[k_UsingSolidColor] = m_UsingSolidColor;
  json[k_ValuesAsCategories] = m_ValuesAsCategories;
}

void VXColouringSettings::read(const nlohmann::json& json)
{
  if (!json.is_object())
  {
    return;
  }
  if (json.contains(k_ActiveArray))
  {
    m_ActiveArray = QString::fromStdString(json.at(k_ActiveArray).get<std::string>());
  }
  readIfPresent(json, k_ActiveComponent, m_ActiveComponent);
  readIfPresent(json, k_ScalarBarVisible, m_ScalarBarVisible);
  for (int i = 0; i < 4; ++i)
  {
    readIfPresent(json, k_ScalarBarPosition[i], m_ScalarBarPosition[i]);
  }
  readIfPresent(json, k_ColorMapInverted, m_ColorMapInverted);
  if (json.contains(k_ColorPreset))
  {
    m_RgbPreset = ColorPreset(json.at(k_ColorPreset));
  }
  readIfPresent(json, k_UsingDefaultPreset, m_UsingDefaultPreset);
  if (json.contains(k_IndexedColorPreset))
  {
    m_IndexedPreset = ColorPreset(json.at(k_IndexedColorPreset));
  }
  readIfPresent(json, k_UsingDefaultIndexedPreset, m_UsingDefaultIndexedPreset);
  readIfPresent(json, k_ScalarMapping, m_ScalarMapping);
  readIfPresent(json, k_UsingCustomRange, m_UsingCustomRange);
  readIfPresent(json, k_CustomRangeMin, m_CustomRange[0]);
  readIfPresent(json, k_CustomRangeMax, m_CustomRange[1]);
  readColor(json, k_NanColor, m_NanColor);
  readIfPresent(json, k_UsingSolidColor, m_UsingSolidColor);
  readIfPresent(json, k_ValuesAsCategories, m_ValuesAsCategories);
}

void VXColouringSettings::writeSettings(QtZRSettings& settings) const
{
  settings.setValue(QString::fromLatin1(k_ScalarBarVisible), m_ScalarBarVisible);
  settings.setValue(QString::fromLatin1(k_ColorMapInverted), m_ColorMapInverted);
  settings.setValue(QString::fromLatin1(k_UsingDefaultPreset), m_UsingDefaultPreset);
  if (!m_UsingDefaultPreset)
  {
    settings.setValue(QString::fromLatin1(k_ColorPreset), QString::fromStdString(m_RgbPreset.toJsonString()));
  }
  settings.setValue(QString::fromLatin1(k_UsingDefaultIndexedPreset), m_UsingDefaultIndexedPreset);
  if (!m_UsingDefaultIndexedPreset)
  {
    settings.setValue(QString::fromLatin1(k_IndexedColorPreset),
                      QString::fromStdString(m_IndexedPreset.toJsonString()));
  }
  settings.setValue(QString::fromLatin1(k_ScalarMapping), m_ScalarMapping);
  settings.setValue(QString::fromLatin1(k_UsingCustomRange), m_UsingCustomRange);
  settings.setValue(QString::fromLatin1(k_CustomRangeMin), m_CustomRange[0]);
  settings.setValue(QString::fromLatin1(k_CustomRangeMax), m_CustomRange[1]);
  writeColorSetting(settings, k_NanColor, m_NanColor);
  settings.setValue(QString::fromLatin1(k_UsingSolidColor), m_UsingSolidColor);
  settings.setValue(QString::fromLatin1(k_ValuesAsCategories), m_ValuesAsCategories);
}

void VXColouringSettings::readSettings(const QtZRSettings& settings)
{
  readSetting(settings, k_ScalarBarVisible, m_ScalarBarVisible);
  readSetting(settings, k_ColorMapInverted, m_ColorMapInverted);
  readSetting(settings, k_UsingDefaultPreset, m_UsingDefaultPreset);
  readPresetSetting(settings, k_ColorPreset, m_RgbPreset);
  readSetting(settings, k_UsingDefaultIndexedPreset, m_UsingDefaultIndexedPreset);
  readPresetSetting(settings, k_IndexedColorPreset, m_IndexedPreset);
  readSetting(settings, k_ScalarMapping, m_ScalarMapping);
  readSetting(settings, k_UsingCustomRange, m_UsingCustomRange);
  readSetting(settings, k_CustomRangeMin, m_CustomRange[0]);
  readSetting(settings, k_CustomRangeMax, m_CustomRange[1]);
  readColorSetting(settings, k_NanColor, m_NanColor);
  readSetting(settings, k_UsingSolidColor, m_UsingSolidColor);
  readSetting(settings, k_ValuesAsCategories, m_ValuesAsCategories);
}
