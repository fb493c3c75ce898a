#include "spreadsheets/VXMultidimSpreadsheetOptions.h"

#include "spreadsheets/VXMultidimSpreadsheetModel.h"
#include "spreadsheets/VXSpreadsheet.h"
#include "spreadsheets/VXSpreadsheetColorOptions.h"

#include "ui_VXMultidimSpreadsheetOptions.h"

#include "data_bridge/zr_contract/IDataArray.h"
#include "data_bridge/zr_contract/INeighborList.h"
#include "platform/ZRLabel.h"
#include "platform/ZRRadioButton.h"
#include "platform/ZRSpinBox.h"

#include <QButtonGroup>

#include <algorithm>
#include <climits>

namespace
{
const char k_NotationKey[] = "spreadsheet_notation";
const char k_PrecisionKey[] = "spreadsheet_precision";
const char k_XDimKey[] = "spreadsheet_x_dim_index";
const char k_YDimKey[] = "spreadsheet_y_dim_index";
const char k_SelectedDimsKey[] = "spreadsheet_selected_dims";

bool InRange(int id, std::size_t count)
{
  return id >= 0 && static_cast<std::size_t>(id) < count;
}
} // namespace

VXMultidimSpreadsheetOptions::VXMultidimSpreadsheetOptions(VXSpreadsheet* spreadsheet, QWidget* parent)
    : VXSpreadsheetOptions(spreadsheet, parent)
    , m_Ui(std::make_unique<Ui::VXMultidimSpreadsheetOptions>())
{
  m_Ui->setupUi(this);
  m_XGroup = new QButtonGroup(this);
  m_YGroup = new QButtonGroup(this);
  connect(m_XGroup, &QButtonGroup::idClicked, this, &VXMultidimSpreadsheetOptions::xDimRadioButtonClicked);
  connect(m_YGroup, &QButtonGroup::idClicked, this, &VXMultidimSpreadsheetOptions::yDimRadioButtonClicked);
  m_ColorOptions = new VXSpreadsheetColorOptions(this, this);
  m_ColorOptions->setEnabled(false);
  m_Ui->colorOptionsLayout->addWidget(m_ColorOptions);
  connect(m_ColorOptions, &VXSpreadsheetColorOptions::colorMapChanged, this,
          &VXMultidimSpreadsheetOptions::setBackgroundColorMap);
  if (m_Spreadsheet != nullptr)
  {
    m_Spreadsheet->setModel(new VXMultidimSpreadsheetModel());
    m_Spreadsheet->setEnableRemove(false);
    m_Spreadsheet->setCurrentColumnHighlighting(false);
    connect(m_Spreadsheet.data(), &VXSpreadsheet::largeDataWarning, this,
            &VXMultidimSpreadsheetOptions::updateStatusMessageLabel);
    connect(m_Spreadsheet.data(), &VXSpreadsheet::dataArraysDropped, this,
            [this](std::vector<zr::core::DataPath>& paths) { addDataArrays(paths); });
  }
  setupNotationAndPrecision(m_Ui->notationComboBox, m_Ui->precisionSpinBox);
}

VXMultidimSpreadsheetOptions::~VXMultidimSpreadsheetOptions() = default;

int VXMultidimSpreadsheetOptions::getSpreadsheetType() const
{
  return 1;
}

QString VXMultidimSpreadsheetOptions::InvalidDimensionText()
{
  return QStringLiteral("Invalid dimension index selected for multidimensional spreadsheets. Please choose a "
                        "valid dimension for the x and y axes.");
}

QString VXMultidimSpreadsheetOptions::NoArraysText()
{
  return QStringLiteral("No data arrays found to add to the spreadsheet.");
}

void VXMultidimSpreadsheetOptions::setDataStructure(const QString& id,
                                                    std::shared_ptr<zr::core::DataStructure> dataStructure)
{
  VXSpreadsheetOptions::setDataStructure(id, std::move(dataStructure));
  if (m_DataPaths.empty() || m_Spreadsheet == nullptr)
  {
    return;
  }
  const zr::core::DataPath path = m_DataPaths.front();
  const std::shared_ptr<zr::core::IArray> array = getArray<zr::core::IArray>(path);
  if (array == nullptr || std::dynamic_pointer_cast<zr::core::IDataArray>(array) == nullptr)
  {
    clear();
    Q_EMIT printOutput(
        QStringLiteral("Data array at path '%1' no longer exists and will be removed from the spreadsheet.")
            .arg(QString::fromStdString(path.toString("/"))));
    return;
  }
  updateSpreadsheet(array);
}

void VXMultidimSpreadsheetOptions::addDataArrays(const std::vector<zr::core::DataPath>& paths)
{
  if (paths.size() > 1)
  {
    Q_EMIT printOutput(
        QStringLiteral("Multidimensional spreadsheets only support one Data Array at a time."));
    return;
  }
  if (m_Spreadsheet == nullptr || paths.empty())
  {
    return;
  }
  const std::shared_ptr<zr::core::IArray> array = getArray<zr::core::IArray>(paths.front());
  if (array == nullptr)
  {
    Q_EMIT printOutput(MissingArrayText(paths.front()));
    return;
  }
  clear();
  m_DataPaths.push_back(paths.front());
  const QString pathText = QString::fromStdString(paths.front().toString("/"));
  m_Ui->pathLabel->setText(pathText);
  m_Ui->pathLabel->setToolTip(pathText);

  int index = 0;
  const zr::core::ShapeType tupleShape = array->getTupleShape();
  layoutDimWidgets(index, std::vector<unsigned long>(tupleShape.begin(), tupleShape.end()));
  const zr::core::ShapeType componentShape = array->getComponentShape();
  std::vector<unsigned long> components(componentShape.begin(), componentShape.end());
  if (array->getArrayType() == zr::core::IArray::ArrayType::NeighborListArray)
  {
    // A list's "components" are its positions: as many as the longest list.
    components = {
        VXSpreadsheetModel::GetMaxListSize(std::dynamic_pointer_cast<zr::core::INeighborList>(array))};
  }
  layoutDimWidgets(index, components);

  if (m_XRadioButtons.size() > 1)
  {
    const QSignalBlocker blockX(m_XGroup);
    const QSignalBlocker blockY(m_YGroup);
    m_XRadioButtons[0]->setChecked(true);
    m_YRadioButtons[1]->setChecked(true);
  }
  m_ColorOptions->setEnabled(array->getArrayType() != zr::core::IArray::ArrayType::StringArray);
  updateSpreadsheet(array);
}

void VXMultidimSpreadsheetOptions::layoutDimWidgets(int& index, const std::vector<unsigned long>& shape)
{
  for (unsigned long size : shape)
  {
    m_Dims.push_back(size);
    auto* label = new ZRLabel(QStringLiteral("D%1 (%2)").arg(index).arg(size), this);
    label->setObjectName(QStringLiteral("dim_label_%1").arg(index));
    auto* xButton = new ZRRadioButton(this);
    xButton->setObjectName(QStringLiteral("x_radio_button_%1").arg(index));
    auto* yButton = new ZRRadioButton(this);
    yButton->setObjectName(QStringLiteral("y_radio_button_%1").arg(index));
    m_XGroup->addButton(xButton, index);
    m_YGroup->addButton(yButton, index);
    auto* spinBox = new ZRSpinBox(this);
    spinBox->setObjectName(QStringLiteral("dim_spin_box_%1").arg(index));
    spinBox->setMinimumWidth(50);
    spinBox->setRange(0, size > 0 ? static_cast<int>(std::min<unsigned long>(size - 1, INT_MAX)) : 0);
    spinBox->setValue(0);
    spinBox->setKeyboardTracking(false);
    connect(spinBox, qOverload<int>(&QSpinBox::valueChanged), this,
            &VXMultidimSpreadsheetOptions::spinBoxValueChanged);
    const int row = index + 1;
    m_Ui->dimensionsLayout->addWidget(label, row, 0);
    m_Ui->dimensionsLayout->addWidget(xButton, row, 1, Qt::AlignCenter);
    m_Ui->dimensionsLayout->addWidget(yButton, row, 2, Qt::AlignCenter);
    m_Ui->dimensionsLayout->addWidget(spinBox, row, 3);
    m_DimLabels.push_back(label);
    m_XRadioButtons.push_back(xButton);
    m_YRadioButtons.push_back(yButton);
    m_SpinBoxes.push_back(spinBox);
    ++index;
  }
}

void VXMultidimSpreadsheetOptions::removeDimWidgets()
{
  for (ZRRadioButton* button : m_XRadioButtons)
  {
    m_XGroup->removeButton(button);
  }
  for (ZRRadioButton* button : m_YRadioButtons)
  {
    m_YGroup->removeButton(button);
  }
  for (std::size_t i = 0; i < m_DimLabels.size(); ++i)
  {
    for (QWidget* widget : {static_cast<QWidget*>(m_DimLabels[i]), static_cast<QWidget*>(m_XRadioButtons[i]),
                            static_cast<QWidget*>(m_YRadioButtons[i]), static_cast<QWidget*>(m_SpinBoxes[i])})
    {
      m_Ui->dimensionsLayout->removeWidget(widget);
      widget->hide();
      widget->deleteLater();
    }
  }
  m_DimLabels.clear();
  m_XRadioButtons.clear();
  m_YRadioButtons.clear();
  m_SpinBoxes.clear();
  m_Dims.clear();
}

void VXMultidimSpreadsheetOptions::clear()
{
  removeDimWidgets();
  m_DataPaths.clear();
  m_Ui->pathLabel->clear();
  m_Ui->pathLabel->setToolTip(QString());
  m_ColorOptions->clear();
  m_ColorOptions->setEnabled(false);
  if (m_Spreadsheet != nullptr)
  {
    m_Spreadsheet->setBackgroundColorMap(nullptr);
    m_Spreadsheet->clear();
  }
}

int VXMultidimSpreadsheetOptions::xDimension() const
{
  return m_XGroup->checkedId();
}

int VXMultidimSpreadsheetOptions::yDimension() const
{
  return m_YGroup->checkedId();
}

void VXMultidimSpreadsheetOptions::setDimensions(int xDim, int yDim)
{
  if (!InRange(xDim, m_XRadioButtons.size()) || !InRange(yDim, m_YRadioButtons.size()))
  {
    Q_EMIT printOutput(InvalidDimensionText());
    return;
  }
  {
    const QSignalBlocker blockX(m_XGroup);
    const QSignalBlocker blockY(m_YGroup);
    m_XRadioButtons[xDim]->setChecked(true);
    m_YRadioButtons[yDim]->setChecked(true);
  }
  xDimRadioButtonClicked();
}

void VXMultidimSpreadsheetOptions::onDimensionClicked(QButtonGroup* clicked, QButtonGroup* other)
{
  const int changed = clicked->checkedId();
  const int kept = other->checkedId();
  const std::size_t count = m_XRadioButtons.size();
  if (!InRange(changed, count) || !InRange(kept, count))
  {
    Q_EMIT printOutput(InvalidDimensionText());
    return;
  }
  if (changed == kept)
  {
    // Both axes on one dimension: the other axis moves on to the next one.
    const int next = static_cast<int>((kept + 1) % count);
    const std::vector<ZRRadioButton*>& buttons = other == m_XGroup ? m_XRadioButtons : m_YRadioButtons;
    const QSignalBlocker blocker(other);
    buttons[next]->setChecked(true);
  }
  if (m_DataPaths.empty())
  {
    Q_EMIT printOutput(NoArraysText());
    return;
  }
  updateSpreadsheet(getArray<zr::core::IArray>(m_DataPaths.front()));
}

void VXMultidimSpreadsheetOptions::xDimRadioButtonClicked()
{
  onDimensionClicked(m_XGroup, m_YGroup);
}

void VXMultidimSpreadsheetOptions::yDimRadioButtonClicked()
{
  onDimensionClicked(m_YGroup, m_XGroup);
}

void VXMultidimSpreadsheetOptions::spinBoxValueChanged()
{
  if (m_DataPaths.empty())
  {
    Q_EMIT printOutput(NoArraysText());
    return;
  }
  updateSpreadsheet(getArray<zr::core::IArray>(m_DataPaths.front()));
}

void VXMultidimSpreadsheetOptions::updateSpreadsheet(const std::shared_ptr<zr::core::IArray>& array)
{
  if (m_Spreadsheet == nullptr)
  {
    return;
  }
  if (m_DataPaths.empty())
  {
    Q_EMIT printOutput(NoArraysText());
    return;
  }
  if (array == nullptr)
  {
    Q_EMIT printOutput(MissingArrayText(m_DataPaths.front()));
    return;
  }
  const int x = xDimension();
  const int y = yDimension();
  if (x == y || !InRange(x, m_XRadioButtons.size()) || !InRange(y, m_YRadioButtons.size()))
  {
    Q_EMIT printOutput(InvalidDimensionText());
    return;
  }
  std::vector<unsigned long> indices(m_Dims.size(), 0);
  for (std::size_t i = 0; i < m_SpinBoxes.size(); ++i)
  {
    const bool spans = static_cast<int>(i) == x || static_cast<int>(i) == y;
    m_SpinBoxes[i]->setVisible(!spans);
    indices[i] = spans ? 0 : static_cast<unsigned long>(m_SpinBoxes[i]->value());
  }
  if (!m_Spreadsheet->setTable(array, m_Dims, x, y, indices))
  {
    clear();
    return;
  }
  if (m_ColorOptions->usingCustomRange())
  {
    const std::array<double, 2> range = m_ColorOptions->customRange();
    m_ColorOptions->rescaleToCustomRange(range[0], range[1]);
  }
  else
  {
    m_ColorOptions->rescaleToDataRange();
  }
}

void VXMultidimSpreadsheetOptions::setBackgroundColorMap(vtkColorTransferFunction* colorMap)
{
  if (m_Spreadsheet != nullptr)
  {
    m_Spreadsheet->setBackgroundColorMap(colorMap);
  }
}

void VXMultidimSpreadsheetOptions::updateStatusMessageLabel(const QString& message)
{
  m_Ui->statusMessageLabel->setText(message);
}

const std::vector<unsigned long>& VXMultidimSpreadsheetOptions::dims() const
{
  return m_Dims;
}

const std::vector<ZRSpinBox*>& VXMultidimSpreadsheetOptions::spinBoxes() const
{
  return m_SpinBoxes;
}

VXSpreadsheetColorOptions* VXMultidimSpreadsheetOptions::colorOptions() const
{
  return m_ColorOptions;
}

QString VXMultidimSpreadsheetOptions::pathText() const
{
  return m_Ui->pathLabel->text();
}

QString VXMultidimSpreadsheetOptions::statusMessage() const
{
  return m_Ui->statusMessageLabel->text();
}

void VXMultidimSpreadsheetOptions::saveState(nlohmann::json& json) const
{
  VXSpreadsheetOptions::saveState(json);
  json[k_NotationKey] = m_Ui->notationComboBox->currentText().toStdString();
  json[k_PrecisionKey] = m_Ui->precisionSpinBox->value();
  json[k_XDimKey] = xDimension();
  json[k_YDimKey] = yDimension();
  nlohmann::json selected = nlohmann::json::array();
  for (const ZRSpinBox* spinBox : m_SpinBoxes)
  {
    selected.push_back(spinBox->value());
  }
  json[k_SelectedDimsKey] = selected;
  m_ColorOptions->saveState(json);
}

void VXMultidimSpreadsheetOptions::loadState(const nlohmann::json& json)
{
  VXSpreadsheetOptions::loadState(json);
  const std::vector<zr::core::DataPath> paths = PathsFromState(json);
  clear();
  addDataArrays(paths);
  if (json.contains(k_NotationKey) && json[k_NotationKey].is_string())
  {
    m_Ui->notationComboBox->setCurrentText(QString::fromStdString(json[k_NotationKey].get<std::string>()));
  }
  if (json.contains(k_PrecisionKey) && json[k_PrecisionKey].is_number_integer())
  {
    m_Ui->precisionSpinBox->setValue(json[k_PrecisionKey].get<int>());
  }
  if (json.contains(k_SelectedDimsKey) && json[k_SelectedDimsKey].is_array())
  {
    const nlohmann::json& selected = json[k_SelectedDimsKey];
    for (std::size_t i = 0; i < selected.size() && i < m_SpinBoxes.size(); ++i)
    {
      if (selected[i].is_number_integer())
      {
        const QSignalBlocker blocker(m_SpinBoxes[i]);
        m_SpinBoxes[i]->setValue(selected[i].get<int>());
      }
    }
  }
  m_ColorOptions->loadState(json);
  if (json.contains(k_XDimKey) && json[k_XDimKey].is_number_integer() && json.contains(k_YDimKey) &&
      json[k_YDimKey].is_number_integer())
  {
    setDimensions(json[k_XDimKey].get<int>(), json[k_YDimKey].get<int>());
  }
  else if (!m_DataPaths.empty())
  {
    updateSpreadsheet(getArray<zr::core::IArray>(m_DataPaths.front()));
  }
  setBackgroundColorMap(m_ColorOptions->useBackgroundColors() ? m_ColorOptions->getColorTransferFunction()
                                                              : nullptr);
}
