#include "spreadsheets/VXBasicSpreadsheetOptions.h"

#include "spreadsheets/VXSpreadsheet.h"
#include "spreadsheets/VXSpreadsheetColorOptions.h"
#include "spreadsheets/VXSpreadsheetModel.h"

#include "ui_VXBasicSpreadsheetOptions.h"

#include "data_bridge/zr_contract/INeighborList.h"

#include <QIntValidator>

#include <limits>

namespace
{
const char k_NotationKey[] = "spreadsheet_notation";
const char k_PrecisionKey[] = "spreadsheet_precision";
const char k_HighlightKey[] = "spreadsheet_highlight_current_column";
const char k_ColorOptionsKey[] = "spreadsheet_color_options";
const char k_ColumnNameKey[] = "spreadsheet_color_options_column_name";

// A diff field's column number; what does not parse, or does not fit 32 bits, is column 0.
int ColumnNumber(const QString& text)
{
  bool ok = false;
  const qlonglong value = text.toLongLong(&ok);
  if (!ok || value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
  {
    return 0;
  }
  return static_cast<int>(value);
}
} // namespace

VXBasicSpreadsheetOptions::VXBasicSpreadsheetOptions(VXSpreadsheet* spreadsheet, QWidget* parent)
    : VXSpreadsheetOptions(spreadsheet, parent)
    , m_Ui(std::make_unique<Ui::VXBasicSpreadsheetOptions>())
{
  m_Ui->setupUi(this);
  m_Ui->columnSelector->hide();
  m_DiffValidator = new QIntValidator(0, 0, this);
  m_Ui->column1DiffLineEdit->setValidator(m_DiffValidator);
  m_Ui->column2DiffLineEdit->setValidator(m_DiffValidator);
  setupNotationAndPrecision(m_Ui->notationComboBox, m_Ui->precisionSpinBox);
  connect(m_Ui->columnSelector, qOverload<int>(&QComboBox::currentIndexChanged), this,
          &VXBasicSpreadsheetOptions::columnColorOptionsIndexChanged);
  connect(m_Ui->columnDiffCheckBox, &QCheckBox::toggled, this,
          &VXBasicSpreadsheetOptions::onColumnDiffOptionChanged);
  connect(m_Ui->column1DiffLineEdit, &QLineEdit::editingFinished, this,
          &VXBasicSpreadsheetOptions::onColumnDiffColumnNumbersChanged);
  connect(m_Ui->column2DiffLineEdit, &QLineEdit::editingFinished, this,
          &VXBasicSpreadsheetOptions::onColumnDiffColumnNumbersChanged);
  if (m_Spreadsheet != nullptr)
  {
    m_Spreadsheet->setEnableRemove(true);
    connect(m_Ui->highlightCurrentColumnCheckBox, &QCheckBox::toggled, m_Spreadsheet.data(),
            &VXSpreadsheet::setCurrentColumnHighlighting);
    connect(m_Spreadsheet.data(), &VXSpreadsheet::columnRemoved, this,
            &VXBasicSpreadsheetOptions::removeColumnColorOption);
    connect(m_Spreadsheet.data(), &VXSpreadsheet::currentColumnChanged, this,
            &VXBasicSpreadsheetOptions::changeColumnColorOption);
    connect(m_Spreadsheet.data(), &VXSpreadsheet::largeDataWarning, this,
            &VXBasicSpreadsheetOptions::updateStatusMessageLabel);
    connect(m_Spreadsheet.data(), &VXSpreadsheet::dataArraysDropped, this,
            [this](std::vector<zr::core::DataPath>& paths) { addDataArrays(paths); });
  }
}

VXBasicSpreadsheetOptions::~VXBasicSpreadsheetOptions() = default;

int VXBasicSpreadsheetOptions::getSpreadsheetType() const
{
  return 0;
}

void VXBasicSpreadsheetOptions::setDataStructure(const QString& id,
                                                 std::shared_ptr<zr::core::DataStructure> dataStructure)
{
  VXSpreadsheetOptions::setDataStructure(id, std::move(dataStructure));
  if (m_DataPaths.empty() || m_Spreadsheet == nullptr)
  {
    return;
  }
  // Paths a run has removed drop out without a message.
  std::vector<zr::core::DataPath> kept;
  for (const zr::core::DataPath& path : m_DataPaths)
  {
    if (m_DataStructure == nullptr || m_DataStructure->getDataAs<zr::core::IArray>(path) != nullptr)
    {
      kept.push_back(path);
    }
  }
  m_Spreadsheet->clear();
  clearArrays();
  addDataArrays(kept);
}

void VXBasicSpreadsheetOptions::addDataArrays(const std::vector<zr::core::DataPath>& paths)
{
  if (m_Spreadsheet == nullptr || paths.empty())
  {
    return;
  }
  for (const zr::core::DataPath& path : paths)
  {
    const std::shared_ptr<zr::core::IArray> array = getArray<zr::core::IArray>(path);
    if (array == nullptr)
    {
      Q_EMIT printOutput(MissingArrayText(path));
      continue;
    }
    const bool isList = array->getArrayType() == zr::core::IArray::ArrayType::NeighborListArray;
    const unsigned long columns =
        isList ? VXSpreadsheetModel::GetMaxListSize(std::dynamic_pointer_cast<zr::core::INeighborList>(array))
               : static_cast<unsigned long>(array->getNumberOfComponents());
    if (!m_Spreadsheet->addArray(array, static_cast<int>(columns)))
    {
      continue;
    }
    m_DataPaths.push_back(path);
    const QString name = QString::fromStdString(array->getName());
    const bool isString = array->getArrayType() == zr::core::IArray::ArrayType::StringArray;
    for (unsigned long c = 0; c < columns; ++c)
    {
      QString columnName = name;
      if (isList)
      {
        columnName += QStringLiteral("_elem") + QString::number(c);
      }
      else if (columns > 1)
      {
        columnName += QStringLiteral("_comp") + QString::number(c);
      }
      addColumnColorOptions(columnName, isString);
    }
  }
}

void VXBasicSpreadsheetOptions::addColumnColorOptions(const QString& name, bool isStringArray)
{
  const int index = static_cast<int>(m_ColorOptions.size());
  auto* options = new VXSpreadsheetColorOptions(this, m_Ui->colorOptionsStack);
  if (m_Spreadsheet != nullptr)
  {
    const auto [min, max] = m_Spreadsheet->getMinMax(static_cast<unsigned long>(index));
    options->setRange({min, max});
  }
  options->setEnabled(!isStringArray);
  m_ColorOptions.push_back(options);
  {
    const QSignalBlocker blocker(m_Ui->columnSelector);
    m_Ui->columnSelector->addItem(name);
  }
  m_Ui->columnSelector->show();
  m_Ui->colorOptionsStack->addWidget(options);
  m_DiffValidator->setTop(index);
  if (!isStringArray)
  {
    connect(options, &VXSpreadsheetColorOptions::colorMapChanged, this,
            [this, options](vtkColorTransferFunction* map)
            {
              const auto it = std::find(m_ColorOptions.begin(), m_ColorOptions.end(), options);
              if (it != m_ColorOptions.end())
              {
                setBackgroundColorMap(static_cast<int>(it - m_ColorOptions.begin()), map);
              }
            });
  }
}

void VXBasicSpreadsheetOptions::removeColumnColorOption(int column)
{
  if (column < 0 || static_cast<std::size_t>(column) >= m_ColorOptions.size())
  {
    return;
  }
  VXSpreadsheetColorOptions* options = m_ColorOptions[column];
  m_Ui->colorOptionsStack->removeWidget(options);
  options->deleteLater();
  m_ColorOptions.erase(m_ColorOptions.begin() + column);
  {
    const QSignalBlocker blocker(m_Ui->columnSelector);
    m_Ui->columnSelector->removeItem(column);
  }
  m_Ui->columnSelector->setVisible(!m_ColorOptions.empty());
  // The delegate keeps a slot per original column: tell every later column its map again.
  for (std::size_t c = static_cast<std::size_t>(column); c < m_ColorOptions.size(); ++c)
  {
    VXSpreadsheetColorOptions* later = m_ColorOptions[c];
    setBackgroundColorMap(static_cast<int>(c),
                          later->useBackgroundColors() ? later->getColorTransferFunction() : nullptr);
  }
}

void VXBasicSpreadsheetOptions::clearColorOptions()
{
  for (VXSpreadsheetColorOptions* options : m_ColorOptions)
  {
    m_Ui->colorOptionsStack->removeWidget(options);
    options->deleteLater();
  }
  m_ColorOptions.clear();
  const QSignalBlocker blocker(m_Ui->columnSelector);
  m_Ui->columnSelector->clear();
  m_Ui->columnSelector->hide();
}

void VXBasicSpreadsheetOptions::clearArrays()
{
  m_DataPaths.clear();
  clearColorOptions();
}

void VXBasicSpreadsheetOptions::columnColorOptionsIndexChanged(int index)
{
  if (index < 0 || static_cast<std::size_t>(index) >= m_ColorOptions.size())
  {
    return;
  }
  m_Ui->colorOptionsStack->setCurrentIndex(index);
  if (m_Spreadsheet != nullptr)
  {
    m_Spreadsheet->setCurrentColumn(index);
  }
}

void VXBasicSpreadsheetOptions::changeColumnColorOption(const QModelIndex& current, const QModelIndex&)
{
  if (current.isValid())
  {
    m_Ui->columnSelector->setCurrentIndex(current.column());
  }
}

void VXBasicSpreadsheetOptions::setBackgroundColorMap(int column, vtkColorTransferFunction* colorMap)
{
  if (m_Spreadsheet != nullptr && column >= 0)
  {
    m_Spreadsheet->setBackgroundColorMap(static_cast<unsigned long>(column), colorMap);
  }
}

void VXBasicSpreadsheetOptions::updateStatusMessageLabel(const QString& message)
{
  m_Ui->statusMessageLabel->setText(message);
}

void VXBasicSpreadsheetOptions::onColumnDiffOptionChanged()
{
  const bool enabled = m_Ui->columnDiffCheckBox->isChecked();
  m_Ui->column1DiffLineEdit->setEnabled(enabled);
  m_Ui->column2DiffLineEdit->setEnabled(enabled);
  if (!enabled)
  {
    if (m_Spreadsheet != nullptr)
    {
      m_Spreadsheet->setColumnDiff(false, ColumnNumber(m_Ui->column1DiffLineEdit->text()),
                                   ColumnNumber(m_Ui->column2DiffLineEdit->text()));
    }
    return;
  }
  onColumnDiffColumnNumbersChanged();
}

void VXBasicSpreadsheetOptions::onColumnDiffColumnNumbersChanged()
{
  if (!m_Ui->columnDiffCheckBox->isChecked() || m_Spreadsheet == nullptr)
  {
    return;
  }
  const int first = ColumnNumber(m_Ui->column1DiffLineEdit->text());
  const int second = ColumnNumber(m_Ui->column2DiffLineEdit->text());
  if (first == second)
  {
    Q_EMIT printOutput(
        QStringLiteral("Warning: Spreadsheet column diff feature requires two different columns for "
                       "comparison but you have entered %1 for both columns")
            .arg(first));
    return;
  }
  // Background colours would hide the diff; column 0 keeps its own.
  for (int column : {first, second})
  {
    if (column > 0 && static_cast<std::size_t>(column) < m_ColorOptions.size() &&
        m_ColorOptions[column]->useBackgroundColors())
    {
      m_ColorOptions[column]->setUseBackgroundColors(false);
    }
  }
  m_Spreadsheet->setColumnDiff(true, first, second);
}

const std::vector<VXSpreadsheetColorOptions*>& VXBasicSpreadsheetOptions::colorOptions() const
{
  return m_ColorOptions;
}

QStringList VXBasicSpreadsheetOptions::columnSelectorItems() const
{
  QStringList items;
  for (int i = 0; i < m_Ui->columnSelector->count(); ++i)
  {
    items << m_Ui->columnSelector->itemText(i);
  }
  return items;
}

QString VXBasicSpreadsheetOptions::statusMessage() const
{
  return m_Ui->statusMessageLabel->text();
}

void VXBasicSpreadsheetOptions::setColumnDiffFields(bool enabled, const QString& first, const QString& second)
{
  m_Ui->column1DiffLineEdit->setText(first);
  m_Ui->column2DiffLineEdit->setText(second);
  m_Ui->columnDiffCheckBox->setChecked(enabled);
  onColumnDiffColumnNumbersChanged();
}

void VXBasicSpreadsheetOptions::saveState(nlohmann::json& json) const
{
  VXSpreadsheetOptions::saveState(json);
  json[k_NotationKey] = m_Ui->notationComboBox->currentText().toStdString();
  json[k_PrecisionKey] = m_Ui->precisionSpinBox->value();
  json[k_HighlightKey] = m_Ui->highlightCurrentColumnCheckBox->isChecked();
  nlohmann::json columns = nlohmann::json::array();
  for (std::size_t c = 0; c < m_ColorOptions.size(); ++c)
  {
    nlohmann::json column;
    m_ColorOptions[c]->saveState(column);
    column[k_ColumnNameKey] = m_Ui->columnSelector->itemText(static_cast<int>(c)).toStdString();
    columns.push_back(column);
  }
  json[k_ColorOptionsKey] = columns;
}

void VXBasicSpreadsheetOptions::loadState(const nlohmann::json& json)
{
  VXSpreadsheetOptions::loadState(json);
  const std::vector<zr::core::DataPath> paths = PathsFromState(json);
  if (m_Spreadsheet != nullptr)
  {
    m_Spreadsheet->clear();
  }
  clearArrays();
  addDataArrays(paths);
  if (json.contains(k_NotationKey) && json[k_NotationKey].is_string())
  {
    m_Ui->notationComboBox->setCurrentText(QString::fromStdString(json[k_NotationKey].get<std::string>()));
  }
  if (json.contains(k_PrecisionKey) && json[k_PrecisionKey].is_number_integer())
  {
    m_Ui->precisionSpinBox->setValue(json[k_PrecisionKey].get<int>());
  }
  if (json.contains(k_HighlightKey) && json[k_HighlightKey].is_boolean())
  {
    m_Ui->highlightCurrentColumnCheckBox->setChecked(json[k_HighlightKey].get<bool>());
  }
  if (json.contains(k_ColorOptionsKey) && json[k_ColorOptionsKey].is_array())
  {
    const nlohmann::json& columns = json[k_ColorOptionsKey];
    for (std::size_t c = 0; c < columns.size() && c < m_ColorOptions.size(); ++c)
    {
      if (columns[c].is_object())
      {
        m_ColorOptions[c]->loadState(columns[c]);
        setBackgroundColorMap(static_cast<int>(c), m_ColorOptions[c]->useBackgroundColors()
                                                       ? m_ColorOptions[c]->getColorTransferFunction()
                                                       : nullptr);
      }
    }
  }
}
