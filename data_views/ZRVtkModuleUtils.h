#pragma once

#include "data_views/ZRVtkModuleConstants.h"

#include <QPointer>
#include <QScrollArea>
#include <QWidget>

class vtkDataArray;
class vtkDataSet;
class vtkMapper;

// Widget generators shared by the settings panels of data sources, filters and data views.
namespace ZRVtkModule::utils
{
/**
 * The frame of a settings panel: the title frame above a resizable scroll area whose content widget
 * ("contentSettingsWidget") has a vertical layout for the panel's controls. Frame and area are taken
 * from their old parent.
 */
QPointer<QWidget> CreateSettingsWidget(QPointer<QWidget> titleFrame, QPointer<QScrollArea> scrollArea);

// The scalars of the cell (point) data, else its vectors, else its first array; null without arrays.
vtkDataArray* GetActiveCellArray(vtkDataSet* dataSet);
vtkDataArray* GetActivePointArray(vtkDataSet* dataSet);
// The named array of the point data, else of the cell data; null for a null dataset.
vtkDataArray* GetActiveDataArray(vtkDataSet* dataSet, const QString& name);
vtkDataArray* GetActiveDataArray(vtkMapper* mapper, const QString& name);
// Three unsigned chars per tuple: colours that can be drawn as they are.
bool IsColorArray(vtkDataArray* array);
} // namespace ZRVtkModule::utils
