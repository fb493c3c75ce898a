#pragma once

#include <QPointer>
#include <QScrollArea>
#include <QWidget>

// Widget generators shared by the settings panels of data sources, filters and data views.
namespace ZRVtkModule::utils
{
/**
 * The frame of a settings panel: the title frame above a resizable scroll area whose content widget
 * ("contentSettingsWidget") has a vertical layout for the panel's controls. Frame and area are taken
 * from their old parent.
 */
QPointer<QWidget> CreateSettingsWidget(QPointer<QWidget> titleFrame, QPointer<QScrollArea> scrollArea);
} // namespace ZRVtkModule::utils
