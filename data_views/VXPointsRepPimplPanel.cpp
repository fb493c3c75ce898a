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

  auto* presetRow = new QHBoxLayout();
  presetRow->setContentsMargins(2, 2, 2, 2);
  presetRow->setSpacing(2);
  m_PresetButton = Utils::GenerateColorPresetsButton(presetRow, parent);
  connect(m_PresetButton.data(), &QPushButton::clicked, this,
          [this]()
          {
            m_ColorPresetsDialog->setNanColor(m_Colouring.m_NanColor, false);
            m_ColorPresetsDialog->show();
            m_ColorPresetsDialog->raise();
          });
  m_InvertButton = Utils::GenerateInvertColorButton(presetRow, parent);
  connect(m_InvertButton.data(), &QPushButton::toggled, this, &VXPointsRepPimpl::setColorMapInverted);
  presetRow->addStretch(1);
  layout->addLayout(presetRow);

  auto* nanRow = new QHBoxLayout();
  nanRow->setContentsMargins(2, 2, 2, 2);
  nanRow->setSpacing(2);
  auto* nanLabel = new QLabel(QStringLiteral("NaN Color: "), parent);
  m_NanColorLabel = nanLabel;
  m_NanColorButton = new ZRColorButton(m_Colouring.m_NanColor, parent);
  m_NanColorButton->setToolTip(
      Utils::HtmlToolTip(QStringLiteral("The color of missing values and of values outside the range")));
  connect(m_NanColorButton.data(), &ZRColorButton::colorChanged, this, &VXPointsRepPimpl::setNanColor);
  nanRow->addWidget(nanLabel);
  nanRow->addWidget(m_NanColorButton);
  nanRow->addStretch(1);
  layout->addLayout(nanRow);

  auto* rangeRow = new QHBoxLayout();
  rangeRow->setContentsMargins(2, 2, 2, 2);
  rangeRow->setSpacing(2);
  m_CustomRangeButton = Utils::GenerateZRPushButton(QStringLiteral("Custom Range"),
                                                    QStringLiteral("Set the range the color map spans"),
                                                    false, false, rangeRow, parent);
  connect(m_CustomRangeButton.data(), &QPushButton::clicked, this,
          [this]()
          {
            m_CustomRangeDialog->setRange(colorRange());
            m_CustomRangeDialog->show();
            m_CustomRangeDialog->raise();
          });
  m_RescaleButton = Utils::GenerateZRPushButton(
      QStringLiteral("Data Range"), QStringLiteral("Rescale the color map to the range of the data"), false,
      false, rangeRow, parent);
  connect(m_RescaleButton.data(), &QPushButton::clicked, this,
          [this]()
          {
            useDataRange();
            updateSettingsControls();
          });
  rangeRow->addStretch(1);
  layout->addLayout(rangeRow);

  m_CategoriesCheckBox =
      Utils::GenerateCheckBoxWidget(parent, layout, QStringLiteral("Interpret Values As Categories"));
  connect(m_CategoriesCheckBox.data(), &QCheckBox::toggled, this,
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

  auto* mapRow = new QHBoxLayout();
  mapRow->setContentsMargins(4, 2, 4, 2);
  mapRow->setSpacing(2);
  mapRow->addWidget(new QLabel(ZRVtkModule::constants::k_ScalarsMapping, parent));
  m_MapScalarsComboBox = Utils::GenerateMapScalarsSelector(m_Colouring.m_ScalarMapping, parent);
  connect(m_MapScalarsComboBox.data(), qOverload<int>(&QComboBox::currentIndexChanged), this,
          &VXPointsRepPimpl::setScalarMapping);
  mapRow->addWidget(m_MapScalarsComboBox, 1);
  layout->addLayout(mapRow);
  addHelpToolTip(m_MapScalarsComboBox, Doc::LevelAnchor(levelName(), Doc::k_MapScalars),
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
  setChecked(m_InvertButton, m_Colouring.m_ColorMapInverted);
  if (m_NanColorButton)
  {
    const QSignalBlocker blocker(m_NanColorButton);
    m_NanColorButton->setColor(m_Colouring.m_NanColor);
  }
  setChecked(m_CategoriesCheckBox, m_Colouring.m_ValuesAsCategories);
  if (m_MapScalarsComboBox)
  {
    const QSignalBlocker blocker(m_MapScalarsComboBox);
    m_MapScalarsComboBox->setCurrentIndex(m_Colouring.m_ScalarMapping);
  }
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
  setEnabled(m_PresetButton, own && !solid);
  setEnabled(m_InvertButton, own && !solid);
  setEnabled(m_NanColorButton, own && !solid);
  setEnabled(m_NanColorLabel, own && !solid);
  setEnabled(m_CustomRangeButton, !solid && !m_Colouring.m_ValuesAsCategories);
  setEnabled(m_RescaleButton, !solid && !m_Colouring.m_ValuesAsCategories);
  setEnabled(m_CategoriesCheckBox, !solid);
  setEnabled(m_LUTEditorButton, !solid && m_Colouring.m_ValuesAsCategories);
  setEnabled(m_MapScalarsComboBox, !solid);
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
