// The widget generators of ZRVtkModule::utils: the rows and sections every settings panel is made of.
#include "data_views/ZRVtkModuleUtils.h"

#include "platform/ZRCheckBox.h"
#include "platform/ZRColorButton.h"
#include "platform/ZRComboBox.h"
#include "platform/ZRHeaderLabel.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRLabel.h"
#include "platform/ZRLineEdit.h"
#include "platform/ZRSlider.h"
#include "platform/ZRStyle.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkPointData.h>

#include <QDateTime>
#include <QDoubleValidator>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpacerItem>
#include <QVBoxLayout>

namespace ZRVtkModule::utils
{
namespace
{
const QString k_SectionLayoutName = QStringLiteral("vxInfoWidgetSettingsWidgetLayout");

// Controls are named after their class and the time they were made; nothing looks them up by name.
QString timedName(const QString& prefix)
{
  return prefix + QString::number(QDateTime::currentMSecsSinceEpoch());
}

QHBoxLayout* newRow(int left, int top, int right, int bottom, int spacing)
{
  auto* row = new QHBoxLayout();
  row->setContentsMargins(left, top, right, bottom);
  row->setSpacing(spacing);
  return row;
}

void addTrailingSpacer(QBoxLayout* row)
{
  row->addSpacerItem(new QSpacerItem(20, 0, QSizePolicy::Expanding, QSizePolicy::Minimum));
}

ZRIconPushButton* toolButton(QWidget* parent, const QString& iconName, const QString& toolTip)
{
  auto* button = new ZRIconPushButton(parent);
  button->setThemeIconName(iconName);
  button->setToolTip(toolTip);
  button->setMaximumSize(24, 24);
  const int iconSize = ZRStyle::getItemSize(4);
  button->setIconSize(QSize(iconSize, iconSize));
  return button;
}
} // namespace

QString HtmlToolTip(const QString& text)
{
  return QStringLiteral("<html><head/><body><p>%1</p></body></html>").arg(text);
}

QWidget* GenerateSettingsLabel(QWidget* parent, QVBoxLayout* layout, const QString& text, bool expanded)
{
  auto* header = new QWidget(parent);
  auto* headerRow = newRow(2, 2, 2, 2, 2);
  header->setLayout(headerRow);
  auto* button = new ZRIconPushButton(header);
  button->setObjectName(QStringLiteral("settingsWidgetShowHideButton"));
  button->setCheckable(true);
  button->setChecked(expanded);
  button->setThemeIconName(QStringLiteral("ParameterSeparator"), true);
  const int iconSize = ZRStyle::getItemSize(5);
  button->setIconSize(QSize(iconSize, iconSize));
  button->setFlat(true);
  headerRow->addWidget(button);
  auto* label = new ZRHeaderLabel(text, header);
  headerRow->addWidget(label, 1);

  auto* section = new QWidget(parent);
  section->setObjectName(QStringLiteral("settingsHeaderSectionWidget"));
  auto* sectionLayout = new QVBoxLayout(section);
  sectionLayout->setObjectName(k_SectionLayoutName);
  sectionLayout->setContentsMargins(2, 2, 2, 2);
  section->setVisible(expanded);
  QObject::connect(button, &QPushButton::toggled, section, &QWidget::setVisible);

  if (layout != nullptr)
  {
    layout->addWidget(header);
    layout->addWidget(section);
  }
  return section;
}

ZRIconPushButton* GenerateHelpButton(QWidget* parent, const QString& toolTip)
{
  return toolButton(parent, QStringLiteral("HelpBlue"), toolTip);
}

ZRIconPushButton* GenerateSettingsToolButton(QWidget* parent, const QString& toolTip)
{
  return toolButton(parent, QStringLiteral("Settings"), toolTip);
}

ZRIconPushButton* GenerateZRPushButton(const QString& text, const QString& toolTip, bool checkable,
                                       bool addSpacer, QBoxLayout* layout, QWidget* parent)
{
  auto* button = new ZRIconPushButton(text, parent);
  button->setToolTip(HtmlToolTip(toolTip));
  button->setCheckable(checkable);
  auto* row = newRow(2, 2, 2, 2, 2);
  row->addWidget(button);
  if (addSpacer)
  {
    addTrailingSpacer(row);
  }
  if (layout != nullptr)
  {
    layout->addLayout(row);
  }
  return button;
}

ZRIconPushButton* GenerateColorPresetsButton(QBoxLayout* layout, QWidget* parent)
{
  ZRIconPushButton* button = GenerateZRPushButton(
      QStringLiteral("Preset"), QStringLiteral("Choose a preset color map"), false, false, layout, parent);
  button->setThemeIconName(QStringLiteral("preset"));
  return button;
}

ZRIconPushButton* GenerateInvertColorButton(QBoxLayout* layout, QWidget* parent)
{
  ZRIconPushButton* button = GenerateZRPushButton(
      QStringLiteral("Invert"), QStringLiteral("Invert the color map"), true, false, layout, parent);
  button->setThemeIconName(QStringLiteral("invert"));
  return button;
}

namespace
{
std::pair<ZRLabel*, ZRComboBox*> labelledComboBox(QWidget* parent, const QString& label,
                                                  const QStringList& items, const QString& toolTip)
{
  auto* text = new ZRLabel(label, parent);
  text->setObjectName(timedName(QStringLiteral("ZRLabel_")));
  text->setToolTip(HtmlToolTip(toolTip));
  auto* comboBox = new ZRComboBox(parent);
  comboBox->setObjectName(timedName(QStringLiteral("ZRComboBox_")));
  comboBox->setToolTip(HtmlToolTip(toolTip));
  comboBox->addItems(items);
  return {text, comboBox};
}
} // namespace

ZRComboBox* GenerateComboBoxWidget(QWidget* parent, QVBoxLayout* layout, const QString& label,
                                   const QStringList& items, const QString& toolTip)
{
  auto [text, comboBox] = labelledComboBox(parent, label, items, toolTip);
  auto* row = newRow(4, 2, 4, 2, 2);
  row->addWidget(text);
  row->addWidget(comboBox, 1);
  if (layout != nullptr)
  {
    layout->addLayout(row);
  }
  return comboBox;
}

ZRComboBox* GenerateComboBoxWidget(QWidget* parent, QGridLayout* layout, int row, const QString& label,
                                   const QStringList& items, const QString& toolTip)
{
  auto [text, comboBox] = labelledComboBox(parent, label, items, toolTip);
  if (layout != nullptr)
  {
    layout->setContentsMargins(4, 2, 4, 2);
    layout->addWidget(text, row, 0);
    layout->addWidget(comboBox, row, 1);
  }
  return comboBox;
}

ZRComboBox* GenerateMapScalarsSelector(int index, QWidget* parent)
{
  auto* comboBox = new ZRComboBox(parent);
  comboBox->setObjectName(timedName(QStringLiteral("ZRComboBox_")));
  comboBox->addItems(
      {constants::k_MapScalarsAlways, constants::k_MapScalarsNonColors, constants::k_MapScalarsNever});
  comboBox->setCurrentIndex(index);
  return comboBox;
}

ZRSlider* GenerateOpacityWidget(QWidget* parent, QVBoxLayout* layout)
{
  auto* row = newRow(4, 2, 4, 2, 2);
  auto* label = new ZRLabel(QStringLiteral("Opacity"), parent);
  label->setObjectName(timedName(QStringLiteral("ZRLabel_")));
  auto* slider = new ZRSlider(Qt::Horizontal, parent);
  slider->setRange(0, 100);
  slider->setSingleStep(1);
  slider->setPageStep(10);
  slider->setTracking(false);
  slider->setValue(100);
  row->addWidget(label);
  row->addWidget(slider, 1);
  if (layout != nullptr)
  {
    layout->addLayout(row);
  }
  return slider;
}

ZRLineEdit* GenerateIntegerLineEditWidget(QWidget* parent, QVBoxLayout* layout, const QString& label)
{
  auto* row = newRow(4, 2, 4, 2, 2);
  auto* text = new ZRLabel(label, parent);
  text->setObjectName(timedName(QStringLiteral("ZRLabel_")));
  auto* lineEdit = new ZRLineEdit(parent);
  lineEdit->setObjectName(timedName(QStringLiteral("ZRLineEdit_")));
  auto* validator = new QIntValidator(lineEdit);
  validator->setBottom(1);
  lineEdit->setValidator(validator);
  row->addWidget(text);
  row->addWidget(lineEdit, 1);
  if (layout != nullptr)
  {
    layout->addLayout(row);
  }
  return lineEdit;
}

ZRCheckBox* GenerateCheckBoxWidget(QWidget* parent, QBoxLayout* layout, const QString& text)
{
  auto* checkBox = new ZRCheckBox(text, parent);
  checkBox->setObjectName(timedName(QStringLiteral("ZRCheckBox_")));
  auto* row = newRow(2, 2, 2, 2, 2);
  row->addWidget(checkBox);
  addTrailingSpacer(row);
  if (layout != nullptr)
  {
    layout->addLayout(row);
  }
  return checkBox;
}

ZRCheckBox* GenerateScalarBarCheckBoxWidget(QWidget* parent, QVBoxLayout* layout, bool checked)
{
  ZRCheckBox* checkBox = GenerateCheckBoxWidget(parent, layout, constants::k_ScalarBarLabel);
  checkBox->setChecked(checked);
  return checkBox;
}

namespace
{
ZRColorButton* solidColorRow(const QColor& color, QBoxLayout* row, QPointer<QLabel>& solidColorLabel,
                             QWidget* parent, bool addSpacer)
{
  auto* label = new ZRLabel(QStringLiteral("Solid Color: "), parent);
  label->setObjectName(timedName(QStringLiteral("ZRLabel_")));
  solidColorLabel = label;
  auto* button = new ZRColorButton(color, parent);
  row->addWidget(label);
  row->addWidget(button);
  if (addSpacer)
  {
    addTrailingSpacer(row);
  }
  return button;
}
} // namespace

ZRColorButton* GenerateEditSolidColorButton(const QColor& color, QVBoxLayout* layout,
                                            QPointer<QLabel>& solidColorLabel, QWidget* parent,
                                            bool addSpacer)
{
  auto* row = newRow(2, 2, 2, 2, 2);
  ZRColorButton* button = solidColorRow(color, row, solidColorLabel, parent, addSpacer);
  if (layout != nullptr)
  {
    layout->addLayout(row);
  }
  return button;
}

ZRColorButton* GenerateEditSolidColorButton(const QColor& color, QHBoxLayout* layout,
                                            QPointer<QLabel>& solidColorLabel, QWidget* parent,
                                            bool addSpacer)
{
  return solidColorRow(color, layout, solidColorLabel, parent, addSpacer);
}

QGridLayout* GenerateTransformLayout(QWidget* parent)
{
  auto* grid = new QGridLayout();
  grid->setContentsMargins(2, 2, 2, 2);
  grid->addWidget(new ZRHeaderLabel(QStringLiteral("Local Transform"), parent), 0, 0, 1, 4);
  const QStringList rows = {QStringLiteral("Translation : "), QStringLiteral("Rotation : "),
                            QStringLiteral("Scale : ")};
  for (int row = 0; row < rows.size(); ++row)
  {
    grid->addWidget(new ZRLabel(rows[row], parent), row + 1, 0);
    for (int axis = 0; axis < 3; ++axis)
    {
      auto* edit = new ZRLineEdit(parent);
      edit->setObjectName(timedName(QStringLiteral("ZRLineEdit_")));
      edit->setValidator(new QDoubleValidator(edit));
      grid->addWidget(edit, row + 1, axis + 1);
    }
  }
  return grid;
}

void UpdateArrayColoringComboBox(ZRComboBox* comboBox, const QMap<QString, QIcon>& arrays, bool addSolidColor)
{
  if (comboBox == nullptr)
  {
    return;
  }
  const QString current = comboBox->currentText();
  const QSignalBlocker blocker(comboBox);
  comboBox->clear();
  if (addSolidColor)
  {
    comboBox->addItem(constants::k_SolidColor);
    comboBox->insertSeparator(comboBox->count());
  }
  for (auto it = arrays.cbegin(); it != arrays.cend(); ++it)
  {
    comboBox->addItem(it.value(), it.key());
  }
  const int index = comboBox->findText(current);
  if (index >= 0)
  {
    comboBox->setCurrentIndex(index);
  }
}

void UpdateComponentComboBox(ZRComboBox* comboBox, const QString& newArray, const QString& oldArray,
                             int component, const QList<QString>& names)
{
  if (comboBox == nullptr)
  {
    return;
  }
  const QSignalBlocker blocker(comboBox);
  comboBox->clear();
  const int kept = newArray == oldArray ? component : -1;
  comboBox->setEnabled(names.size() > 1);
  if (names.size() < 2)
  {
    return;
  }
  comboBox->addItem(QStringLiteral("Magnitude"));
  comboBox->addItems(names);
  // Entry 0 is the magnitude, component c is entry c + 1.
  comboBox->setCurrentIndex(qBound(0, kept + 1, comboBox->count() - 1));
}

std::pair<ZRComboBox*, ZRComboBox*> GenerateArrayColoringComboBox(QWidget* parent, QVBoxLayout* layout,
                                                                  const QMap<QString, QIcon>& arrays,
                                                                  const QString& active,
                                                                  const QList<QString>& components,
                                                                  int component, bool addSolidColor)
{
  auto* arrayBox = new ZRComboBox(parent);
  arrayBox->setObjectName(timedName(QStringLiteral("ZRComboBox_")));
  auto* componentBox = new ZRComboBox(parent);
  componentBox->setObjectName(timedName(QStringLiteral("ZRComboBox_")));
  {
    const QSignalBlocker blocker(arrayBox);
    UpdateArrayColoringComboBox(arrayBox, arrays, addSolidColor);
    arrayBox->setCurrentIndex(qMax(0, arrayBox->findText(active)));
  }
  UpdateComponentComboBox(componentBox, active, active, component, components);
  if (layout != nullptr)
  {
    auto* row = newRow(4, 2, 4, 2, 2);
    row->addWidget(arrayBox, 1);
    row->addWidget(componentBox, 1);
    layout->addLayout(row);
  }
  return {arrayBox, componentBox};
}

QMap<QString, QIcon> ColoringArrays(vtkDataSet* dataSet)
{
  QMap<QString, QIcon> arrays;
  if (dataSet == nullptr)
  {
    return arrays;
  }
  const QIcon pointIcon = ZRStyle::generateThemeIconFromName(QStringLiteral("VertexGeometry"));
  const QIcon cellIcon = ZRStyle::generateThemeIconFromName(QStringLiteral("TriangleGeometry"));
  for (vtkDataSetAttributes* attributes : {static_cast<vtkDataSetAttributes*>(dataSet->GetPointData()),
                                           static_cast<vtkDataSetAttributes*>(dataSet->GetCellData())})
  {
    const bool points = attributes == dataSet->GetPointData();
    for (int i = 0; i < attributes->GetNumberOfArrays(); ++i)
    {
      vtkDataArray* array = attributes->GetArray(i);
      if (array != nullptr && array->GetName() != nullptr &&
          !arrays.contains(QString::fromUtf8(array->GetName())))
      {
        arrays.insert(QString::fromUtf8(array->GetName()), points ? pointIcon : cellIcon);
      }
    }
  }
  return arrays;
}

QList<QString> ComponentNames(vtkDataArray* array)
{
  QList<QString> names;
  if (array == nullptr || array->GetNumberOfComponents() < 2)
  {
    return names;
  }
  for (int c = 0; c < array->GetNumberOfComponents(); ++c)
  {
    const char* name = array->GetComponentName(c);
    names.append(name != nullptr ? QString::fromUtf8(name) : QString::number(c));
  }
  return names;
}
} // namespace ZRVtkModule::utils
