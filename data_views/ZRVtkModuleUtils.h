#pragma once

#include "data_views/ZRVtkModuleConstants.h"

#include <QColor>
#include <QIcon>
#include <QList>
#include <QMap>
#include <QPointer>
#include <QScrollArea>
#include <QWidget>

#include <array>
#include <utility>

class QBoxLayout;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QVBoxLayout;
class ZRCheckBox;
class ZRColorButton;
class ZRComboBox;
class ZRIconPushButton;
class ZRLineEdit;
class ZRSlider;
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

/**
 * A collapsible section: a checkable arrow button and a header label above a section widget whose
 * vertical layout the caller fills. Returns the section widget.
 */
QWidget* GenerateSettingsLabel(QWidget* parent, QVBoxLayout* layout, const QString& text,
                               bool expanded = true);
ZRIconPushButton* GenerateHelpButton(QWidget* parent, const QString& toolTip);
ZRIconPushButton* GenerateSettingsToolButton(QWidget* parent, const QString& toolTip);
/** @brief An icon push button in a new row of the layout, optionally followed by an expanding spacer. */
ZRIconPushButton* GenerateZRPushButton(const QString& text, const QString& toolTip, bool checkable,
                                       bool addSpacer, QBoxLayout* layout, QWidget* parent);
ZRIconPushButton* GenerateColorPresetsButton(QBoxLayout* layout, QWidget* parent);
ZRIconPushButton* GenerateInvertColorButton(QBoxLayout* layout, QWidget* parent);
/** @brief A label and a combo box in a row; both carry the tool tip. */
ZRComboBox* GenerateComboBoxWidget(QWidget* parent, QVBoxLayout* layout, const QString& label,
                                   const QStringList& items, const QString& toolTip);
ZRComboBox* GenerateComboBoxWidget(QWidget* parent, QGridLayout* layout, int row, const QString& label,
                                   const QStringList& items, const QString& toolTip);
/** @brief "Always ", "Non-Colors", "Never": how the mapper turns array values into colours. */
ZRComboBox* GenerateMapScalarsSelector(int index, QWidget* parent);
/** @brief "Opacity" and a slider in percent, 0 to 100, that reports on release. */
ZRSlider* GenerateOpacityWidget(QWidget* parent, QVBoxLayout* layout);
/** @brief A label and a line edit that takes integers from 1. */
ZRLineEdit* GenerateIntegerLineEditWidget(QWidget* parent, QVBoxLayout* layout, const QString& label);
ZRCheckBox* GenerateCheckBoxWidget(QWidget* parent, QBoxLayout* layout, const QString& text);
ZRCheckBox* GenerateScalarBarCheckBoxWidget(QWidget* parent, QVBoxLayout* layout, bool checked);
/** @brief "Solid Color: " and a colour button; the label is handed back through solidColorLabel. */
ZRColorButton* GenerateEditSolidColorButton(const QColor& color, QVBoxLayout* layout,
                                            QPointer<QLabel>& solidColorLabel, QWidget* parent,
                                            bool addSpacer);
ZRColorButton* GenerateEditSolidColorButton(const QColor& color, QHBoxLayout* layout,
                                            QPointer<QLabel>& solidColorLabel, QWidget* parent,
                                            bool addSpacer);
/** @brief "Local Transform": translation, rotation and scale, three number fields each. */
QGridLayout* GenerateTransformLayout(QWidget* parent);
/**
 * The array box (with "Solid Color" first when asked) and the component box below it, filled with
 * signals blocked; the array box shows `active` when it holds it.
 */
std::pair<ZRComboBox*, ZRComboBox*> GenerateArrayColoringComboBox(QWidget* parent, QVBoxLayout* layout,
                                                                  const QMap<QString, QIcon>& arrays,
                                                                  const QString& active,
                                                                  const QList<QString>& components,
                                                                  int component, bool addSolidColor);
/** @brief Refills the array box, keeping the current text when it is still there. */
void UpdateArrayColoringComboBox(ZRComboBox* comboBox, const QMap<QString, QIcon>& arrays,
                                 bool addSolidColor);
/**
 * Refills the component box: "Magnitude" and one entry per name. The component is kept only for the
 * same array; the box is enabled only with more than one name.
 */
void UpdateComponentComboBox(ZRComboBox* comboBox, const QString& newArray, const QString& oldArray,
                             int component, const QList<QString>& names);
/** @brief Puts a text in the "<html>...<p>text</p>..." frame that lets Qt wrap a tool tip. */
QString HtmlToolTip(const QString& text);
/** @brief The arrays of a dataset's point and cell data that can colour it, by name. */
QMap<QString, QIcon> ColoringArrays(vtkDataSet* dataSet);
/** @brief The component names of an array: its own, else "0", "1", ...; empty for one component. */
QList<QString> ComponentNames(vtkDataArray* array);

// The scalars of the cell (point) data, else its vectors, else its first array; null without arrays.
vtkDataArray* GetActiveCellArray(vtkDataSet* dataSet);
vtkDataArray* GetActivePointArray(vtkDataSet* dataSet);
// The named array of the point data, else of the cell data; null for a null dataset.
vtkDataArray* GetActiveDataArray(vtkDataSet* dataSet, const QString& name);
vtkDataArray* GetActiveDataArray(vtkMapper* mapper, const QString& name);
// Three unsigned chars per tuple: colours that can be drawn as they are.
bool IsColorArray(vtkDataArray* array);
} // namespace ZRVtkModule::utils
