#include "data_views/VXColouringControls.h"

#include "data_views/VXColouringSettings.h"
#include "data_views/ZRVtkModuleConstants.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "platform/ZRCheckBox.h"
#include "platform/ZRColorButton.h"
#include "platform/ZRComboBox.h"
#include "platform/ZRIconPushButton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace Utils = ZRVtkModule::utils;

namespace
{
template<class Button>
void setCheckedQuietly(Button* button, bool checked)
{
  if (button != nullptr)
  {
    const QSignalBlocker blocker(button);
    button->setChecked(checked);
  }
}
} // namespace

QHBoxLayout* VXColouringControls::addRow(QVBoxLayout* layout, int sideMargin)
{
  auto* row = new QHBoxLayout();
  row->setContentsMargins(sideMargin, 2, sideMargin, 2);
  row->setSpacing(2);
  layout->addLayout(row);
  return row;
}

void VXColouringControls::addPresetRow(QHBoxLayout* row, QWidget* parent, QObject* receiver,
                                       const std::function<void()>& showPresets,
                                       const std::function<void(bool)>& invert)
{
  m_PresetButton = Utils::GenerateColorPresetsButton(row, parent);
  QObject::connect(m_PresetButton.data(), &QPushButton::clicked, receiver,
                   [showPresets]() { showPresets(); });
  m_InvertButton = Utils::GenerateInvertColorButton(row, parent);
  QObject::connect(m_InvertButton.data(), &QPushButton::toggled, receiver, invert);
  row->addStretch(1);
}

void VXColouringControls::addNanColorRow(QHBoxLayout* row, QWidget* parent, QObject* receiver,
                                         const QColor& color,
                                         const std::function<void(const QColor&)>& setNanColor)
{
  m_NanColorLabel = new QLabel(QStringLiteral("NaN Color: "), parent);
  m_NanColorButton = new ZRColorButton(color, parent);
  QObject::connect(m_NanColorButton.data(), &ZRColorButton::colorChanged, receiver, setNanColor);
  row->addWidget(m_NanColorLabel);
  row->addWidget(m_NanColorButton);
  row->addStretch(1);
}

void VXColouringControls::addRangeRow(QHBoxLayout* row, QWidget* parent, QObject* receiver,
                                      const std::function<void()>& showCustomRange,
                                      const std::function<void()>& useDataRange)
{
  m_CustomRangeButton = Utils::GenerateZRPushButton(QStringLiteral("Custom Range"),
                                                    QStringLiteral("Set the range the color map spans"),
                                                    false, false, row, parent);
  QObject::connect(m_CustomRangeButton.data(), &QPushButton::clicked, receiver,
                   [showCustomRange]() { showCustomRange(); });
  m_RescaleButton = Utils::GenerateZRPushButton(
      QStringLiteral("Data Range"), QStringLiteral("Rescale the color map to the range of the data"), false,
      false, row, parent);
  QObject::connect(m_RescaleButton.data(), &QPushButton::clicked, receiver,
                   [useDataRange]() { useDataRange(); });
  row->addStretch(1);
}

void VXColouringControls::addCategoriesCheckBox(QVBoxLayout* layout, QWidget* parent, QObject* receiver,
                                                const std::function<void(bool)>& setCategories)
{
  m_CategoriesCheckBox =
      Utils::GenerateCheckBoxWidget(parent, layout, QStringLiteral("Interpret Values As Categories"));
  QObject::connect(m_CategoriesCheckBox.data(), &QCheckBox::toggled, receiver, setCategories);
}

void VXColouringControls::addMapScalarsRow(QHBoxLayout* row, QWidget* parent, QObject* receiver, int mapping,
                                           const std::function<void(int)>& setMapping)
{
  row->addWidget(new QLabel(ZRVtkModule::constants::k_ScalarsMapping, parent));
  m_MapScalarsComboBox = Utils::GenerateMapScalarsSelector(mapping, parent);
  QObject::connect(m_MapScalarsComboBox.data(), qOverload<int>(&QComboBox::currentIndexChanged), receiver,
                   setMapping);
  row->addWidget(m_MapScalarsComboBox, 1);
}

void VXColouringControls::showSettings(const VXColouringSettings& settings) const
{
  setCheckedQuietly(m_InvertButton.data(), settings.m_ColorMapInverted);
  if (m_NanColorButton)
  {
    const QSignalBlocker blocker(m_NanColorButton);
    m_NanColorButton->setColor(settings.m_NanColor);
  }
  setCheckedQuietly(m_CategoriesCheckBox.data(), settings.m_ValuesAsCategories);
  if (m_MapScalarsComboBox)
  {
    const QSignalBlocker blocker(m_MapScalarsComboBox);
    m_MapScalarsComboBox->setCurrentIndex(settings.m_ScalarMapping);
  }
}
