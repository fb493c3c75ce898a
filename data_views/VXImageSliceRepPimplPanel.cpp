// The settings panel of the image slice view: colouring, styling, annotations, slicing, animation and
// the slice histogram.
#include "colour/VXArrayHistogramWidget.h"
#include "colour/VXCustomRangeDialog.h"
#include "colour/VXLookupTable.h"
#include "data_views/VXImageSliceRepPimpl.h"
#include "data_views/ZRVtkLibDocumentation.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "platform/ColorPresetsDialog.h"
#include "platform/ZRCheckBox.h"
#include "platform/ZRColorButton.h"
#include "platform/ZRComboBox.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRSlider.h"
#include "platform/ZRSpinBox.h"

#include <vtkDataArray.h>

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace Utils = ZRVtkModule::utils;
using ZRVtkModule::constants::k_SolidColor;

namespace
{
QVBoxLayout* sectionLayout(QWidget* section)
{
  return qobject_cast<QVBoxLayout*>(section->layout());
}

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

QHBoxLayout* newRow(QVBoxLayout* layout)
{
  auto* row = new QHBoxLayout();
  row->setContentsMargins(4, 2, 4, 2);
  row->setSpacing(2);
  layout->addLayout(row);
  return row;
}

ZRSpinBox* newSliceBox(QWidget* parent)
{
  auto* box = new ZRSpinBox(parent);
  box->setKeyboardTracking(false);
  return box;
}
} // namespace

QString VXImageSliceRepPimpl::helpAnchor() const
{
  return ZRVtkLib::Documentation::k_ImageSliceRepresentation;
}

VXArrayHistogramWidget* VXImageSliceRepPimpl::histogramWidget() const
{
  return m_HistogramWidget;
}

VXCustomRangeDialog* VXImageSliceRepPimpl::customRangeDialog() const
{
  return m_CustomRangeDialog;
}

void VXImageSliceRepPimpl::connectColorDialogs()
{
  m_ColorPresetsDialog = new ColorPresetsDialog();
  connect(m_ColorPresetsDialog.data(), &ColorPresetsDialog::applyPreset, this,
          [this](const ColorPreset& preset, const QPixmap&)
          {
            loadRGBPresetColors(preset);
            updateSettingsControls();
          });
  connect(m_ColorPresetsDialog.data(), &ColorPresetsDialog::restoreDefaultPreset, this,
          [this]()
          {
            restoreDefaultRgbPresetColors();
            updateSettingsControls();
          });
  connect(m_ColorPresetsDialog.data(), &ColorPresetsDialog::nanColorChanged, this,
          &VXImageSliceRepPimpl::setNanColor);
  m_CustomRangeDialog = new VXCustomRangeDialog();
  connect(m_CustomRangeDialog.data(), &VXCustomRangeDialog::rescale, this,
          &VXImageSliceRepPimpl::setCustomRange);
  connect(m_CustomRangeDialog.data(), &VXCustomRangeDialog::needsRangeReset, this,
          &VXImageSliceRepPimpl::useDataRange);
}

void VXImageSliceRepPimpl::initializeSettingsWidget()
{
  VXRepresentationPimpl::initializeSettingsWidget();
  QVBoxLayout* content = settingsContentLayout();
  QWidget* parent = content->parentWidget();
  addColoringControls(
      sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Coloring"))));

  QVBoxLayout* styling =
      sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Styling")));
  m_OpacitySlider = Utils::GenerateOpacityWidget(styling->parentWidget(), styling);
  m_OpacitySlider->setValue(getOpacity());
  connect(m_OpacitySlider.data(), &QSlider::valueChanged, this, &VXImageSliceRepPimpl::setOpacity);

  QVBoxLayout* annotations =
      sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Annotations")));
  m_ScalarBarCheckBox = Utils::GenerateScalarBarCheckBoxWidget(annotations->parentWidget(), annotations,
                                                               m_Colouring.m_ScalarBarVisible);
  connect(m_ScalarBarCheckBox.data(), &QCheckBox::toggled, this,
          &VXImageSliceRepPimpl::setScalarBarVisibility);
  addDataAxesGridControls(annotations);

  addSlicingControls(sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Slicing"))));
  addAnimationControls(
      sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Animation"))));
  addHistogramControls(
      sectionLayout(Utils::GenerateSettingsLabel(parent, content, QStringLiteral("Array Histogram"), false)));
  content->addStretch(1);
  addHelpToolTipControls();
  updateSettingsControls();
}

void VXImageSliceRepPimpl::addColoringControls(QVBoxLayout* layout)
{
  QWidget* parent = layout->parentWidget();
  const QString active = isUsingSolidColor() ? k_SolidColor : m_Colouring.m_ActiveArray;
  auto [arrayBox, componentBox] = Utils::GenerateArrayColoringComboBox(
      parent, layout, Utils::ColoringArrays(sliceImage()), active, Utils::ComponentNames(activeDataArray()),
      m_Colouring.m_ActiveComponent, true);
  m_ArrayComboBox = arrayBox;
  m_ArrayComboBox->setToolTip(Utils::HtmlToolTip(QStringLiteral("The array that colors the slice")));
  m_ComponentComboBox = componentBox;
  connect(m_ArrayComboBox.data(), &QComboBox::currentTextChanged, this,
          &VXImageSliceRepPimpl::arrayNameComboTextChanged);
  connect(m_ComponentComboBox.data(), qOverload<int>(&QComboBox::currentIndexChanged), this,
          [this](int index) { setActiveComponent(index - 1); });

  m_SolidColorButton =
      Utils::GenerateEditSolidColorButton(m_SolidColor, layout, m_SolidColorLabel, parent, true);
  connect(m_SolidColorButton.data(), &ZRColorButton::colorChanged, this,
          &VXImageSliceRepPimpl::setSolidColor);

  m_ColourControls.addPresetRow(
      newRow(layout), parent, this,
      [this]()
      {
        m_ColorPresetsDialog->setNanColor(m_Colouring.m_NanColor, false);
        m_ColorPresetsDialog->show();
        m_ColorPresetsDialog->raise();
      },
      [this](bool inverted) { setColorMapInverted(inverted); });
  m_ColourControls.addNanColorRow(newRow(layout), parent, this, m_Colouring.m_NanColor,
                                  [this](const QColor& color) { setNanColor(color); });
  m_ColourControls.addRangeRow(
      newRow(layout), parent, this,
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
                                           updateSettingsControls();
                                         });
  m_ColourControls.addMapScalarsRow(newRow(layout), parent, this, m_Colouring.m_ScalarMapping,
                                    [this](int index) { setScalarMapping(index); });
}

void VXImageSliceRepPimpl::arrayNameComboTextChanged(const QString& text)
{
  setActiveArray(text);
  updateSettingsControls();
}

void VXImageSliceRepPimpl::addSlicingControls(QVBoxLayout* layout)
{
  QWidget* parent = layout->parentWidget();
  m_LinkSlicesButton =
      Utils::GenerateZRPushButton(m_Linked ? QStringLiteral("Unlink Slices") : QStringLiteral("Link Slices"),
                                  QStringLiteral("Move the slices of other linked slice views with this one"),
                                  true, true, layout, parent);
  m_LinkSlicesButton->setObjectName(QStringLiteral("linkSlicesButton"));
  connect(m_LinkSlicesButton.data(), &QPushButton::toggled, this, &VXImageSliceRepPimpl::setLinkedSlices);
  m_LinkPhysicalUnitsCheckBox =
      Utils::GenerateCheckBoxWidget(parent, layout, QStringLiteral("Link physical units"));
  connect(m_LinkPhysicalUnitsCheckBox.data(), &QCheckBox::toggled, this,
          &VXImageSliceRepPimpl::setLinkPhysicalUnits);

  m_SliceDirectionComboBox = Utils::GenerateComboBoxWidget(
      parent, layout, QStringLiteral("Slice Direction"),
      {QStringLiteral("XYPlane"), QStringLiteral("YZPlane"), QStringLiteral("XZPlane")},
      QStringLiteral("Sets the 2D plane that the resulting slice will come from. Changing this control "
                     "resets the Slice Number control."));
  connect(m_SliceDirectionComboBox.data(), qOverload<int>(&QComboBox::currentIndexChanged), this,
          &VXImageSliceRepPimpl::sliceDirectionComboChanged);

  QHBoxLayout* row = newRow(layout);
  row->addWidget(new QLabel(QStringLiteral("Slice Number"), parent));
  m_SliceSlider = new ZRSlider(parent);
  m_SliceSlider->setOrientation(Qt::Horizontal);
  connect(m_SliceSlider.data(), &QSlider::valueChanged, this, &VXImageSliceRepPimpl::sliceSliderValueChanged);
  row->addWidget(m_SliceSlider, 1);
  m_SliceSpinBox = newSliceBox(parent);
  connect(m_SliceSpinBox.data(), qOverload<int>(&QSpinBox::valueChanged), this,
          &VXImageSliceRepPimpl::sliceSpinBoxValueChanged);
  row->addWidget(m_SliceSpinBox);
}

void VXImageSliceRepPimpl::addAnimationControls(QVBoxLayout* layout)
{
  QWidget* parent = layout->parentWidget();
  QHBoxLayout* flickerRow = newRow(layout);
  flickerRow->addWidget(new QLabel(QStringLiteral("Flicker "), parent));
  m_ToggleSlicesButton = new ZRIconPushButton(QStringLiteral("Play"), parent);
  m_ToggleSlicesButton->setObjectName(QStringLiteral("toggleSlicesButton"));
  m_ToggleSlicesButton->setCheckable(true);
  connect(m_ToggleSlicesButton.data(), &QPushButton::toggled, this, &VXImageSliceRepPimpl::startStopFlicker);
  flickerRow->addWidget(m_ToggleSlicesButton);
  m_ToggleLeftSpinBox = newSliceBox(parent);
  connect(m_ToggleLeftSpinBox.data(), qOverload<int>(&QSpinBox::valueChanged), this,
          &VXImageSliceRepPimpl::toggleLeftSpinBoxValueChanged);
  flickerRow->addWidget(m_ToggleLeftSpinBox);
  m_ToggleRightSpinBox = newSliceBox(parent);
  connect(m_ToggleRightSpinBox.data(), qOverload<int>(&QSpinBox::valueChanged), this,
          &VXImageSliceRepPimpl::toggleRightSpinBoxValueChanged);
  flickerRow->addWidget(m_ToggleRightSpinBox);
  flickerRow->addStretch(1);

  QHBoxLayout* durationRow = newRow(layout);
  durationRow->addWidget(new QLabel(QStringLiteral("Duration "), parent));
  m_DurationSpinBox = new QDoubleSpinBox(parent);
  m_DurationSpinBox->setDecimals(2);
  m_DurationSpinBox->setRange(0.0, 3600.0);
  m_DurationSpinBox->setSingleStep(0.1);
  connect(m_DurationSpinBox.data(), qOverload<double>(&QDoubleSpinBox::valueChanged), this,
          &VXImageSliceRepPimpl::animationDurationChanged);
  durationRow->addWidget(m_DurationSpinBox);
  durationRow->addWidget(new QLabel(QStringLiteral("sec "), parent));
  durationRow->addStretch(1);

  QHBoxLayout* playRow = newRow(layout);
  playRow->addWidget(new QLabel(QStringLiteral("Play All "), parent));
  m_SliceAnimationButton = new ZRIconPushButton(QStringLiteral("Play"), parent);
  m_SliceAnimationButton->setObjectName(QStringLiteral("sliceAnimationButton"));
  m_SliceAnimationButton->setCheckable(true);
  connect(m_SliceAnimationButton.data(), &QPushButton::toggled, this,
          &VXImageSliceRepPimpl::startStopAnimation);
  playRow->addWidget(m_SliceAnimationButton);
  playRow->addStretch(1);
}

void VXImageSliceRepPimpl::addHistogramControls(QVBoxLayout* layout)
{
  QWidget* parent = layout->parentWidget();
  m_HistogramModeComboBox = Utils::GenerateComboBoxWidget(
      parent, layout, QStringLiteral("Histogram"),
      {QStringLiteral("Off"), QStringLiteral("Generate Full Histogram"),
       QStringLiteral("Generate Visible Data Histogram")},
      QStringLiteral("Counts the values of the whole array, or of the slice on screen only."));
  connect(m_HistogramModeComboBox.data(), qOverload<int>(&QComboBox::currentIndexChanged), this,
          &VXImageSliceRepPimpl::setHistogramMode);
  m_HistogramWidget = new VXArrayHistogramWidget(parent);
  m_HistogramWidget->setVisible(m_HistogramMode != HistogramOff);
  layout->addWidget(m_HistogramWidget);
}

void VXImageSliceRepPimpl::setSliceControlsEnabled(bool enabled)
{
  setEnabled(m_SliceSlider, enabled);
  setEnabled(m_SliceSpinBox, enabled);
  setEnabled(m_SliceDirectionComboBox, enabled);
  // While one animation runs the other one cannot start.
  setEnabled(m_ToggleSlicesButton, enabled || m_Flickering);
  setEnabled(m_SliceAnimationButton, enabled || m_PlayingAll);
  setChecked(m_ToggleSlicesButton, m_Flickering);
  setChecked(m_SliceAnimationButton, m_PlayingAll);
}

void VXImageSliceRepPimpl::updateSliceControls()
{
  const std::array<int, 2> bounds = getSliceDirectionBounds();
  if (m_SliceDirectionComboBox)
  {
    const QSignalBlocker blocker(m_SliceDirectionComboBox);
    m_SliceDirectionComboBox->setCurrentIndex(static_cast<int>(m_SliceDirection));
  }
  for (QAbstractSlider* slider : {static_cast<QAbstractSlider*>(m_SliceSlider.data())})
  {
    if (slider != nullptr)
    {
      const QSignalBlocker blocker(slider);
      slider->setRange(bounds[0], bounds[1]);
      slider->setValue(m_SliceNumber);
    }
  }
  for (auto [box, value] : {std::pair<ZRSpinBox*, int>{m_SliceSpinBox, m_SliceNumber},
                            std::pair<ZRSpinBox*, int>{m_ToggleLeftSpinBox, m_ToggleLeftSlice},
                            std::pair<ZRSpinBox*, int>{m_ToggleRightSpinBox, m_ToggleRightSlice}})
  {
    if (box != nullptr)
    {
      const QSignalBlocker blocker(box);
      box->setRange(bounds[0], bounds[1]);
      box->setValue(value);
    }
  }
}

void VXImageSliceRepPimpl::updateSettingsControls()
{
  if (m_ArrayComboBox)
  {
    const QSignalBlocker blocker(m_ArrayComboBox);
    const QMap<QString, QIcon> arrays = Utils::ColoringArrays(sliceImage());
    Utils::UpdateArrayColoringComboBox(m_ArrayComboBox, arrays, true);
    const int index =
        m_ArrayComboBox->findText(isUsingSolidColor() ? k_SolidColor : m_Colouring.m_ActiveArray);
    m_ArrayComboBox->setCurrentIndex(qMax(0, index));
    m_ArrayComboBox->setEnabled(!arrays.isEmpty());
  }
  if (m_ComponentComboBox)
  {
    const QSignalBlocker blocker(m_ComponentComboBox);
    Utils::UpdateComponentComboBox(m_ComponentComboBox, m_Colouring.m_ActiveArray, m_Colouring.m_ActiveArray,
                                   m_Colouring.m_ActiveComponent,
                                   isUsingSolidColor() ? QList<QString>()
                                                       : Utils::ComponentNames(activeDataArray()));
  }
  if (m_SolidColorButton)
  {
    const QSignalBlocker blocker(m_SolidColorButton);
    m_SolidColorButton->setColor(m_SolidColor);
  }
  m_ColourControls.showSettings(m_Colouring);
  if (m_OpacitySlider)
  {
    const QSignalBlocker blocker(m_OpacitySlider);
    m_OpacitySlider->setValue(getOpacity());
  }
  setChecked(m_ScalarBarCheckBox, m_Colouring.m_ScalarBarVisible);
  setChecked(m_DataGridCheckBox, m_DataGridVisible);
  setChecked(m_LinkPhysicalUnitsCheckBox, m_LinkPhysicalUnits);
  if (m_LinkSlicesButton)
  {
    setChecked(m_LinkSlicesButton, m_Linked);
    m_LinkSlicesButton->setText(m_Linked ? QStringLiteral("Unlink Slices") : QStringLiteral("Link Slices"));
  }
  if (m_DurationSpinBox)
  {
    const QSignalBlocker blocker(m_DurationSpinBox);
    m_DurationSpinBox->setValue(m_AnimationDuration);
  }
  if (m_HistogramModeComboBox)
  {
    const QSignalBlocker blocker(m_HistogramModeComboBox);
    m_HistogramModeComboBox->setCurrentIndex(m_HistogramMode);
  }
  if (m_HistogramWidget)
  {
    m_HistogramWidget->setVisible(m_HistogramMode != HistogramOff);
  }
  updateSliceControls();
  setSliceControlsEnabled(!m_Flickering && !m_PlayingAll);

  const bool solid = isUsingSolidColor() || activeDataArray() == nullptr;
  setEnabled(m_SolidColorButton, solid);
  setEnabled(m_SolidColorLabel, solid);
  for (QWidget* widget : std::initializer_list<QWidget*>{
           m_ColourControls.m_PresetButton, m_ColourControls.m_InvertButton,
           m_ColourControls.m_NanColorButton, m_ColourControls.m_CategoriesCheckBox,
           m_ColourControls.m_MapScalarsComboBox, m_ScalarBarCheckBox})
  {
    setEnabled(widget, !solid);
  }
  setEnabled(m_ColourControls.m_CustomRangeButton, !solid && !m_Colouring.m_ValuesAsCategories);
  setEnabled(m_ColourControls.m_RescaleButton, !solid && !m_Colouring.m_ValuesAsCategories);
  const bool hasSlices = hasImage();
  for (QWidget* widget :
       std::initializer_list<QWidget*>{m_SliceSlider, m_SliceSpinBox, m_SliceDirectionComboBox,
                                       m_ToggleSlicesButton, m_SliceAnimationButton})
  {
    if (!hasSlices)
    {
      setEnabled(widget, false);
    }
  }
  generateHistogramData();
}
