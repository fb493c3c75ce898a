// The settings panel of the volume view.
#include "colour/VXColorMapEditorWidget.h"
#include "colour/VXCustomRangeDialog.h"
#include "colour/VXLookupTable.h"
#include "data_views/VXVolumeRepPimpl.h"
#include "data_views/ZRVtkLibDocumentation.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "platform/ColorPresetsDialog.h"
#include "platform/ZRCheckBox.h"
#include "platform/ZRComboBox.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <vtkImageData.h>

namespace Utils = ZRVtkModule::utils;

namespace
{
QVBoxLayout* sectionLayout(QWidget* section)
{
  return qobject_cast<QVBoxLayout*>(section->layout());
}

ZRIconPushButton* iconButton(const QString& text, const QString& objectName, const QString& icon,
                             const QString& toolTip, QHBoxLayout* row, QWidget* parent)
{
  auto* button = new ZRIconPushButton(text, parent);
  button->setObjectName(objectName);
  button->setThemeIconName(icon);
  button->setToolTip(Utils::HtmlToolTip(toolTip));
  row->addWidget(button);
  return button;
}
} // namespace

void VXVolumeRepPimpl::initializeSettingsWidget()
{
  VXRepresentationPimpl::initializeSettingsWidget();
  QVBoxLayout* content = settingsContentLayout();
  QWidget* parent = content->parentWidget();

  QVBoxLayout* coloring =
      sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Volume Coloring")));
  QWidget* section = coloring->parentWidget();
  m_ResampleLabel = new QLabel(section);
  m_ResampleLabel->setWordWrap(true);
  m_ResampleLabel->setObjectName(QStringLiteral("resampleNoteLabel"));
  coloring->addWidget(m_ResampleLabel);

  vtkDataArray* array = nullptr;
  if (vtkImageData* image = inputImage())
  {
    array = Utils::GetActiveDataArray(image, m_ActiveArray);
  }
  auto [arrayBox, componentBox] = Utils::GenerateArrayColoringComboBox(
      section, coloring, Utils::ColoringArrays(inputImage()), m_ActiveArray, Utils::ComponentNames(array),
      m_ActiveComponent, false);
  m_ArrayComboBox = arrayBox;
  m_ArrayComboBox->setToolTip(Utils::HtmlToolTip(QStringLiteral("The array that the volume shows")));
  m_ComponentComboBox = componentBox;
  connect(m_ArrayComboBox.data(), &QComboBox::currentTextChanged, this,
          [this](const QString& text)
          {
            const QString old = m_ActiveArray;
            setActiveArray(text);
            if (m_ComponentComboBox)
            {
              Utils::UpdateComponentComboBox(m_ComponentComboBox, text, old, m_ActiveComponent,
                                             Utils::ComponentNames(arrayOf(text)));
            }
            updateSettingsControls();
          });
  connect(m_ComponentComboBox.data(), qOverload<int>(&QComboBox::currentIndexChanged), this,
          [this](int index) { setActiveComponent(index - 1); });

  // The transfer function of the active array, over its histogram; edits redraw the window at once.
  m_ColorMapEditor = new VXColorMapEditorWidget(section);
  coloring->addWidget(m_ColorMapEditor);
  connect(m_ColorMapEditor.data(), &VXColorMapEditorWidget::opacityFunctionEdited, this,
          [this]() { requestRender(); });

  auto* row = new QHBoxLayout();
  row->setContentsMargins(2, 2, 2, 2);
  row->setSpacing(2);
  ZRIconPushButton* reset = iconButton(
      QStringLiteral("Reset"), QStringLiteral("resetButton"), QStringLiteral("Undo"),
      QStringLiteral("Reset the custom color transfer function and scalar opacity function for the active "
                     "array to a ramp over its data range"),
      row, section);
  connect(reset, &QPushButton::clicked, this, &VXVolumeRepPimpl::resetColorMap);
  ZRIconPushButton* edit =
      iconButton(QStringLiteral("Edit"), QStringLiteral("editRangeButton"), QStringLiteral("Settings"),
                 QStringLiteral("Set the range the color and opacity maps span"), row, section);
  connect(edit, &QPushButton::clicked, this,
          [this]()
          {
            m_CustomRangeDialog->show();
            m_CustomRangeDialog->raise();
          });
  ZRIconPushButton* preset =
      iconButton(QStringLiteral("Preset"), QStringLiteral("m_ColorPresetButton"), QStringLiteral("preset"),
                 QStringLiteral("Choose a preset color map"), row, section);
  connect(preset, &QPushButton::clicked, this,
          [this]()
          {
            colorPresetsDialog()->show();
            colorPresetsDialog()->raise();
          });
  row->addStretch(1);
  coloring->addLayout(row);
  // A second row, so that the panel stays narrow.
  row = new QHBoxLayout();
  row->setContentsMargins(2, 2, 2, 2);
  row->setSpacing(2);
  m_InvertButton = iconButton(QStringLiteral("Invert"), QStringLiteral("m_InvertColorBtn"),
                              QStringLiteral("invert"), QStringLiteral("Invert the color map"), row, section);
  m_InvertButton->setCheckable(true);
  connect(m_InvertButton.data(), &QPushButton::toggled, this, &VXVolumeRepPimpl::setColorMapInverted);
  ZRIconPushButton* scale = iconButton(
      QStringLiteral("Scale to Data"), QStringLiteral("scaleToDataBtn"), QStringLiteral("ScaleToData"),
      QStringLiteral("Rescale the lookup table to the data's range"), row, section);
  connect(scale, &QPushButton::clicked, this, &VXVolumeRepPimpl::rescaleToDataRange);
  row->addStretch(1);
  coloring->addLayout(row);

  QVBoxLayout* annotations =
      sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Annotations")));
  m_ScalarBarCheckBox =
      Utils::GenerateScalarBarCheckBoxWidget(annotations->parentWidget(), annotations, m_ScalarBarVisible);
  connect(m_ScalarBarCheckBox.data(), &QCheckBox::toggled, this, &VXVolumeRepPimpl::setScalarBarVisibility);
  addDataAxesGridControls(annotations);

  QVBoxLayout* decimation =
      sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Decimation"), false));
  ZRCheckBox* interaction = Utils::GenerateCheckBoxWidget(decimation->parentWidget(), decimation,
                                                          QStringLiteral("Decimate During Interactions"));
  interaction->setChecked(m_UseDecimationOnInteraction);
  interaction->setToolTip(
      Utils::HtmlToolTip(QStringLiteral("Lowers the sampling of the volume while the camera moves.")));
  connect(interaction, &QCheckBox::toggled, this,
          [this](bool use)
          {
            setUseDecimationOnInteraction(use);
            decimateGeometry();
          });
  content->addStretch(1);
  updateSettingsControls();
}

void VXVolumeRepPimpl::updateSettingsControls()
{
  VXRepresentationPimpl::updateSettingsControls();
  if (m_ResampleLabel)
  {
    m_ResampleLabel->setText(m_ResampleNote);
    m_ResampleLabel->setVisible(!m_ResampleNote.isEmpty());
  }
  if (m_ArrayComboBox)
  {
    const QSignalBlocker blocker(m_ArrayComboBox);
    m_ArrayComboBox->setCurrentText(m_ActiveArray);
  }
  if (m_InvertButton)
  {
    const QSignalBlocker blocker(m_InvertButton);
    m_InvertButton->setChecked(m_ColorMapInverted);
  }
  if (m_ScalarBarCheckBox)
  {
    const QSignalBlocker blocker(m_ScalarBarCheckBox);
    m_ScalarBarCheckBox->setChecked(m_ScalarBarVisible);
  }
  updateColorMapEditor();
  generateHistogramData();
}
