// The settings panel of the points view: colouring by data, point styling, colour legend, histogram.
#include "colour/VXArrayHistogramWidget.h"
#include "colour/VXCustomRangeDialog.h"
#include "colour/VXLUTEditor.h"
#include "colour/VXLookupTable.h"
#include "data_views/VXPointsRepPimpl.h"
#include "data_views/VXRepresentation.h"
#include "data_views/VXUpdateHistogramCallback.h"
#include "data_views/ZRVtkLibDocumentation.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "pipeline/VXDataSource.h"
#include "platform/ColorPresetsDialog.h"
#include "platform/ZRCheckBox.h"
#include "platform/ZRColorButton.h"
#include "platform/ZRComboBox.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRLineEdit.h"
#include "platform/ZRPreferences.h"
#include "platform/ZRStyle.h"

#include <vtkAlgorithm.h>
#include <vtkAlgorithmOutput.h>
#include <vtkCommand.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace Doc = ZRVtkLib::Documentation;
namespace Utils = ZRVtkModule::utils;
using ZRVtkModule::constants::k_SolidColor;

namespace
{
void setChecked(QAbstractButton* button, bool checked)
{
  if (button != nullptr)
  {
    const QSignalBlocker blocker(button);
    button->setChecked(checked);
  }
}

void setEnabled(QWidget* widget, bool enabled)
{
  if (widget != nullptr)
  {
    widget->setEnabled(enabled);
  }
}

VXDataSource* dataSourceOf(VXRepresentation* owner)
{
  return qobject_cast<VXDataSource*>(owner != nullptr ? owner->parentDataSource() : nullptr);
}
} // namespace

template<class Sender, class Signal>
void VXPointsRepPimpl::followWithControls(Sender* sender, Signal signal)
{
  connect(sender, signal, this, &VXPointsRepPimpl::updateSettingsControls, Qt::UniqueConnection);
}

ColorPresetsDialog* VXPointsRepPimpl::colorPresetsDialog() const
{
  return m_ColorPresetsDialog;
}

VXCustomRangeDialog* VXPointsRepPimpl::customRangeDialog() const
{
  return m_CustomRangeDialog;
}

VXLUTEditor* VXPointsRepPimpl::lutEditor() const
{
  return m_LUTEditor;
}

VXArrayHistogramWidget* VXPointsRepPimpl::histogramWidget() const
{
  return m_HistogramWidget;
}

void VXPointsRepPimpl::connectColorDialogs()
{
  m_ColorPresetsDialog = new ColorPresetsDialog();
  connect(m_ColorPresetsDialog.data(), &ColorPresetsDialog::applyPreset, this,
          [this](const ColorPreset& preset, const QPixmap&) { loadRGBPresetColors(preset); });
  connect(m_ColorPresetsDialog.data(), &ColorPresetsDialog::restoreDefaultPreset, this,
          &VXPointsRepPimpl::restoreDefaultRgbPresetColors);
  connect(m_ColorPresetsDialog.data(), &ColorPresetsDialog::nanColorChanged, this,
          &VXPointsRepPimpl::setNanColor);
  followWithControls(m_ColorPresetsDialog.data(), &ColorPresetsDialog::applyPreset);
  followWithControls(m_ColorPresetsDialog.data(), &ColorPresetsDialog::restoreDefaultPreset);
  followWithControls(m_ColorPresetsDialog.data(), &ColorPresetsDialog::nanColorChanged);

  m_CustomRangeDialog = new VXCustomRangeDialog();
  connect(m_CustomRangeDialog.data(), &VXCustomRangeDialog::rescale, this, &VXPointsRepPimpl::setCustomRange);
  connect(m_CustomRangeDialog.data(), &VXCustomRangeDialog::needsRangeReset, this,
          &VXPointsRepPimpl::useDataRange);
  followWithControls(m_CustomRangeDialog.data(), &VXCustomRangeDialog::rescale);
  followWithControls(m_CustomRangeDialog.data(), &VXCustomRangeDialog::needsRangeReset);

  m_LUTEditor = new VXLUTEditor();
  connect(m_LUTEditor.data(), &VXLUTEditor::applyPreset, this, &VXPointsRepPimpl::loadIndexedPresetColors);
  connect(m_LUTEditor.data(), &VXLUTEditor::restoreDefaultPreset, this,
          &VXPointsRepPimpl::restoreDefaultIndexedPresetColors);
  connect(m_LUTEditor.data(), &VXLUTEditor::nanColorChanged, this, &VXPointsRepPimpl::setNanColor);
  followWithControls(m_LUTEditor.data(), &VXLUTEditor::applyPreset);
  followWithControls(m_LUTEditor.data(), &VXLUTEditor::restoreDefaultPreset);
  followWithControls(m_LUTEditor.data(), &VXLUTEditor::nanColorChanged);
  connect(m_LookupTable.data(), &VXLookupTable::syncIndexedColorMap, m_LUTEditor.data(),
          &VXLUTEditor::initializeCustomTable);
}

void VXPointsRepPimpl::addColoringControls(QVBoxLayout* layout)
{
  addDataSourceControls(layout);
  addColorByArrayControls(layout);
}

void VXPointsRepPimpl::addColorByArrayControls(QVBoxLayout* layout)
{
  QWidget* parent = layout->parentWidget();
  vtkDataArray* array = activeDataArray();
  const QString active = isUsingSolidColor() ? k_SolidColor : m_Colouring.m_ActiveArray;
  auto [arrayBox, componentBox] =
      Utils::GenerateArrayColoringComboBox(parent, layout, Utils::ColoringArrays(inputDataSet()), active,
                                           Utils::ComponentNames(array), m_Colouring.m_ActiveComponent, true);
  m_ArrayComboBox = arrayBox;
  m_ArrayComboBox->setToolTip(Utils::HtmlToolTip(QStringLiteral("The array that colors the view")));
  m_ComponentComboBox = componentBox;
  m_ComponentComboBox->setToolTip(
      Utils::HtmlToolTip(QStringLiteral("The component of the array, or its magnitude")));
  connect(m_ArrayComboBox.data(), &QComboBox::currentTextChanged, this,
          &VXPointsRepPimpl::arrayNameComboTextChanged);
  connect(m_ComponentComboBox.data(), qOverload<int>(&QComboBox::currentIndexChanged), this,
          [this](int index)
          {
            // Entry 0 is the magnitude.
            setActiveComponent(index - 1);
            generateHistogramData();
          });
  addHelpToolTip(m_ArrayComboBox, Doc::LevelAnchor(levelName(), Doc::k_ColorBy),
                 QStringLiteral("Colors the view by an array of its data, or with one solid color."));

  addSolidColorControls(layout);

  m_ColourControls.addPresetRow(
      VXColouringControls::addRow(layout, 2), parent, this,
      [this]()
      {
        m_ColorPresetsDialog->setNanColor(m_Colouring.m_NanColor, false);
        m_ColorPresetsDialog->show();
        m_ColorPresetsDialog->raise();
      },
      [this](bool inverted) { setColorMapInverted(inverted); });
  m_ColourControls.addNanColorRow(VXColouringControls::addRow(layout, 2), parent, this,
                                  m_Colouring.m_NanColor,
                                  [this](const QColor& color) { setNanColor(color); });
  m_ColourControls.m_NanColorButton->setToolTip(
      Utils::HtmlToolTip(QStringLiteral("The color of missing values and of values outside the range")));
  m_ColourControls.addRangeRow(
      VXColouringControls::addRow(layout, 2), parent, this,
      [this]()
      {
        m_CustomRangeDialog->setRange(colorRange());
        m_CustomRangeDialog->show();
        m_CustomRangeDialog->raise();
      },
      [this]()
      {
        useDataRange();
        updateSettingsControls();
      });
  m_ColourControls.addCategoriesCheckBox(layout, parent, this,
                                         [this](bool categories)
                                         {
                                           setInterpretValuesAsCategories(categories);
                                           if (categories)
                                           {
                                             m_LUTEditor->setNanColor(m_Colouring.m_NanColor);
                                           }
                                           updateSettingsControls();
                                         });
  m_LUTEditorButton = Utils::GenerateZRPushButton(
      QStringLiteral("Edit Categories"), QStringLiteral("Edit the colors and labels of the categories"),
      false, true, layout, parent);
  connect(m_LUTEditorButton.data(), &QPushButton::clicked, this,
          [this]()
          {
            m_LUTEditor->initializeCustomTable(m_LookupTable->getColorTransferFunction());
            m_LUTEditor->setNanColor(m_Colouring.m_NanColor);
            m_LUTEditor->show();
            m_LUTEditor->raise();
          });

  m_ColourControls.addMapScalarsRow(VXColouringControls::addRow(layout, 4), parent, this,
                                    m_Colouring.m_ScalarMapping,
                                    [this](int index) { setScalarMapping(index); });
  addHelpToolTip(m_ColourControls.m_MapScalarsComboBox, Doc::LevelAnchor(levelName(), Doc::k_MapScalars),
                 QStringLiteral("Whether array values go through the color map or are drawn as colors."));
}

void VXPointsRepPimpl::arrayNameComboTextChanged(const QString& text)
{
  setActiveArray(text);
  if (m_ComponentComboBox)
  {
    Utils::UpdateComponentComboBox(m_ComponentComboBox, text, text, m_Colouring.m_ActiveComponent,
                                   Utils::ComponentNames(activeDataArray()));
  }
  generateHistogramData();
  updateSettingsControls();
}

void VXPointsRepPimpl::addStylingControls(QVBoxLayout* layout)
{
  addOpacityControls(layout);
  addPointsControls(layout);
}

void VXPointsRepPimpl::addPointsControls(QVBoxLayout* layout)
{
  QWidget* parent = layout->parentWidget();
  m_PointSizeEdit = Utils::GenerateIntegerLineEditWidget(parent, layout, QStringLiteral("Point Size"));
  connect(m_PointSizeEdit.data(), &QLineEdit::textEdited, this,
          [this]() { ZRStyle::ChangeBorderStyle(m_PointSizeEdit, true); });
  connect(m_PointSizeEdit.data(), &QLineEdit::returnPressed, this, &VXPointsRepPimpl::pointSizeChanged);
  addHelpToolTip(m_PointSizeEdit, Doc::k_PointSize,
                 QStringLiteral("The size of points in pixels; press Return to apply."));
  m_PointsAsSpheresCheckBox =
      Utils::GenerateCheckBoxWidget(parent, layout, QStringLiteral("Render Points As Spheres"));
  connect(m_PointsAsSpheresCheckBox.data(), &QCheckBox::toggled, this,
          &VXPointsRepPimpl::setRenderPointsAsSpheres);
  addHelpToolTip(m_PointsAsSpheresCheckBox, Doc::k_RenderPointsAsSpheres,
                 QStringLiteral("Shades points as spheres."));
}

void VXPointsRepPimpl::pointSizeChanged()
{
  if (!m_PointSizeEdit)
  {
    return;
  }
  bool ok = false;
  const int size = m_PointSizeEdit->text().toInt(&ok);
  if (ok)
  {
    setPointSize(size);
  }
  ZRStyle::ChangeBorderStyle(m_PointSizeEdit, false);
}

void VXPointsRepPimpl::addAnnotationControls(QVBoxLayout* layout)
{
  addScalarBarControls(layout);
  VXOutlineRepPimpl::addAnnotationControls(layout);
}

void VXPointsRepPimpl::addScalarBarControls(QVBoxLayout* layout)
{
  m_ScalarBarCheckBox =
      Utils::GenerateScalarBarCheckBoxWidget(layout->parentWidget(), layout, m_Colouring.m_ScalarBarVisible);
  connect(m_ScalarBarCheckBox.data(), &QCheckBox::toggled, this, &VXPointsRepPimpl::setScalarBarVisibility);
  addHelpToolTip(m_ScalarBarCheckBox, Doc::LevelAnchor(levelName(), Doc::k_ColorLegend),
                 QStringLiteral("Shows the color map with its range beside the view."));
}

void VXPointsRepPimpl::addExtraSections(QVBoxLayout* content)
{
  QWidget* section = Utils::GenerateSettingsLabel(content->parentWidget(), content,
                                                  QStringLiteral("Array Histogram"), false);
  auto* layout = qobject_cast<QVBoxLayout*>(section->layout());
  m_HistogramCheckBox =
      Utils::GenerateCheckBoxWidget(section, layout, QStringLiteral("Generate Active Array Histogram"));
  connect(m_HistogramCheckBox.data(), &QCheckBox::toggled, this, &VXPointsRepPimpl::setGenerateHistogramData);
  addHelpToolTip(m_HistogramCheckBox, Doc::LevelAnchor(levelName(), Doc::k_Histogram),
                 QStringLiteral("Counts the values of the active array in bins over the color map's range."));
  m_HistogramWidget = new VXArrayHistogramWidget(section);
  m_HistogramWidget->setVisible(m_GenerateHistogramData);
  layout->addWidget(m_HistogramWidget);
  generateHistogramData();
}

void VXPointsRepPimpl::setGenerateHistogramData(bool generate)
{
  m_GenerateHistogramData = generate;
  if (m_HistogramWidget)
  {
    m_HistogramWidget->setVisible(generate);
  }
  generateHistogramData();
}

void VXPointsRepPimpl::generateHistogramData()
{
  if (!m_GenerateHistogramData || !m_HistogramWidget)
  {
    return;
  }
  m_HistogramWidget->setArray(isUsingSolidColor() ? nullptr : activeDataArray(),
                              m_Colouring.m_ActiveComponent, m_Colouring.m_UsingCustomRange,
                              m_Colouring.m_CustomRange);
  m_HistogramWidget->setPlotVisibility(!isUsingSolidColor());
}

void VXPointsRepPimpl::observeProducerForHistogram()
{
  stopObservingProducerForHistogram();
  vtkAlgorithm* producer = m_InputPort != nullptr ? m_InputPort->GetProducer() : nullptr;
  if (producer == nullptr)
  {
    return;
  }
  if (m_HistogramCallback == nullptr)
  {
    m_HistogramCallback = vtkSmartPointer<VXUpdateHistogramCallback>::New();
    m_HistogramCallback->setRepresentation(this);
  }
  m_ObservedProducer = producer;
  m_HistogramObserverTag = producer->AddObserver(vtkCommand::EndEvent, m_HistogramCallback);
}

void VXPointsRepPimpl::stopObservingProducerForHistogram()
{
  if (m_ObservedProducer != nullptr)
  {
    m_ObservedProducer->RemoveObserver(m_HistogramObserverTag);
  }
  m_ObservedProducer = nullptr;
  m_HistogramObserverTag = 0;
}

void VXPointsRepPimpl::restoreDefaultIndexedPresetColors()
{
  m_Colouring.m_UsingDefaultIndexedPreset = true;
  m_Colouring.m_IndexedPreset = ZRPreferences::Instance()->getDefaultIndexedColorPreset();
  updateColoring();
  requestRender();
}

void VXPointsRepPimpl::updateSettingsControls()
{
  VXOutlineRepPimpl::updateSettingsControls();
  if (m_ArrayComboBox)
  {
    const QSignalBlocker blocker(m_ArrayComboBox);
    const QMap<QString, QIcon> arrays = Utils::ColoringArrays(inputDataSet());
    Utils::UpdateArrayColoringComboBox(m_ArrayComboBox, arrays, true);
    const int index =
        m_ArrayComboBox->findText(isUsingSolidColor() ? k_SolidColor : m_Colouring.m_ActiveArray);
    m_ArrayComboBox->setCurrentIndex(qMax(0, index));
    m_ArrayComboBox->setEnabled(!arrays.isEmpty());
  }
  Utils::UpdateComponentComboBox(m_ComponentComboBox, m_Colouring.m_ActiveArray, m_Colouring.m_ActiveArray,
                                 m_Colouring.m_ActiveComponent,
                                 isUsingSolidColor() ? QList<QString>()
                                                     : Utils::ComponentNames(activeDataArray()));
  m_ColourControls.showSettings(m_Colouring);
  if (m_PointSizeEdit)
  {
    const QSignalBlocker blocker(m_PointSizeEdit);
    m_PointSizeEdit->setText(QString::number(m_PointSize));
    ZRStyle::ChangeBorderStyle(m_PointSizeEdit, false);
  }
  setChecked(m_PointsAsSpheresCheckBox, m_RenderPointsAsSpheres);
  setChecked(m_ScalarBarCheckBox, m_Colouring.m_ScalarBarVisible);
  setChecked(m_HistogramCheckBox, m_GenerateHistogramData);
  if (m_HistogramWidget)
  {
    m_HistogramWidget->setVisible(m_GenerateHistogramData);
  }
  if (m_CustomRangeDialog)
  {
    m_CustomRangeDialog->setRange(colorRange());
  }
  if (m_LUTEditor)
  {
    m_LUTEditor->setNanColor(m_Colouring.m_NanColor);
  }
  if (m_ColorPresetsDialog)
  {
    m_ColorPresetsDialog->setNanColor(m_Colouring.m_NanColor, false);
  }
  generateHistogramData();
  updateColorControlsEnabled();
}

void VXPointsRepPimpl::updateColorControlsEnabled()
{
  VXOutlineRepPimpl::updateColorControlsEnabled();
  const bool own = m_DetachColorSettings || dataSourceOf(m_Owner) == nullptr;
  const bool solid = isUsingSolidColor() || activeDataArray() == nullptr;
  setEnabled(m_SolidColorButton, own && solid);
  setEnabled(m_SolidColorLabel, own && solid);
  setEnabled(m_ColourControls.m_PresetButton, own && !solid);
  setEnabled(m_ColourControls.m_InvertButton, own && !solid);
  setEnabled(m_ColourControls.m_NanColorButton, own && !solid);
  setEnabled(m_ColourControls.m_NanColorLabel, own && !solid);
  setEnabled(m_ColourControls.m_CustomRangeButton, !solid && !m_Colouring.m_ValuesAsCategories);
  setEnabled(m_ColourControls.m_RescaleButton, !solid && !m_Colouring.m_ValuesAsCategories);
  setEnabled(m_ColourControls.m_CategoriesCheckBox, !solid);
  setEnabled(m_LUTEditorButton, !solid && m_Colouring.m_ValuesAsCategories);
  setEnabled(m_ColourControls.m_MapScalarsComboBox, !solid);
  setEnabled(m_ScalarBarCheckBox, !solid);
}

void VXPointsRepPimpl::connectParentDataSourceColorSettings()
{
  VXOutlineRepPimpl::connectParentDataSourceColorSettings();
  VXDataSource* source = dataSourceOf(m_Owner);
  if (source == nullptr || m_DetachColorSettings)
  {
    return;
  }
  connect(source, &VXDataSource::nanColorChanged, this, &VXPointsRepPimpl::setNanColor, Qt::UniqueConnection);
  connect(source, &VXDataSource::loadPresetColors, this, &VXPointsRepPimpl::loadRGBPresetColors,
          Qt::UniqueConnection);
  connect(source, &VXDataSource::restoreDefaultPresetColors, this,
          &VXPointsRepPimpl::restoreDefaultRgbPresetColors, Qt::UniqueConnection);
  connect(source, &VXDataSource::invertColorMap, this, &VXPointsRepPimpl::setColorMapInverted,
          Qt::UniqueConnection);
  followWithControls(source, &VXDataSource::nanColorChanged);
  followWithControls(source, &VXDataSource::loadPresetColors);
  followWithControls(source, &VXDataSource::restoreDefaultPresetColors);
  followWithControls(source, &VXDataSource::invertColorMap);
  // Following the source means taking its colour map now.
  setNanColor(source->getNanColor());
  if (source->isUsingDefaultPreset())
  {
    restoreDefaultRgbPresetColors();
  }
  else
  {
    loadRGBPresetColors(source->getCurrentPreset());
  }
  setColorMapInverted(source->getIsInverted());
}

void VXPointsRepPimpl::disconnectParentDataSourceColorSettings()
{
  VXOutlineRepPimpl::disconnectParentDataSourceColorSettings();
  VXDataSource* source = dataSourceOf(m_Owner);
  if (source == nullptr)
  {
    return;
  }
  disconnect(source, &VXDataSource::nanColorChanged, this, nullptr);
  disconnect(source, &VXDataSource::loadPresetColors, this, nullptr);
  disconnect(source, &VXDataSource::restoreDefaultPresetColors, this, nullptr);
  disconnect(source, &VXDataSource::invertColorMap, this, nullptr);
}
