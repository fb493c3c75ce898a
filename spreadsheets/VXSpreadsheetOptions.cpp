#include "spreadsheets/VXSpreadsheetOptions.h"

#include "spreadsheets/VXSpreadsheet.h"

#include "platform/ZRPreferences.h"

#include <QComboBox>
#include <QSpinBox>

namespace
{
const char k_NumberKey[] = "default_spreadsheet_number";
const char k_ArraysKey[] = "spreadsheet_data_arrays";
} // namespace

VXSpreadsheetOptions::VXSpreadsheetOptions(VXSpreadsheet* spreadsheet, QWidget* parent)
    : QWidget(parent)
    , m_Spreadsheet(spreadsheet)
{
}

VXSpreadsheetOptions::~VXSpreadsheetOptions() = default;

unsigned long VXSpreadsheetOptions::getDefaultSpreadsheetNumber() const
{
  return m_DefaultSpreadsheetNumber;
}

void VXSpreadsheetOptions::setDefaultSpreadsheetNumber(unsigned long number)
{
  m_DefaultSpreadsheetNumber = number;
}

VXSpreadsheet* VXSpreadsheetOptions::spreadsheet() const
{
  return m_Spreadsheet;
}

const std::vector<zr::core::DataPath>& VXSpreadsheetOptions::getDataPaths() const
{
  return m_DataPaths;
}

QString VXSpreadsheetOptions::getSpreadsheetName() const
{
  return QStringLiteral("Sheet %1").arg(m_DefaultSpreadsheetNumber);
}

std::shared_ptr<zr::core::DataStructure> VXSpreadsheetOptions::dataStructure() const
{
  return m_DataStructure;
}

void VXSpreadsheetOptions::setupNotationAndPrecision(QComboBox* notation, QSpinBox* precision)
{
  notation->clear();
  notation->addItems(
      {ZRPreferences::k_AutoNotation, ZRPreferences::k_FixedNotation, ZRPreferences::k_ScientificNotation});
  notation->setCurrentText(ZRPreferences::Instance()->getDefaultNotation());
  precision->setValue(ZRPreferences::Instance()->getDefaultPrecision());
  if (m_Spreadsheet != nullptr)
  {
    m_Spreadsheet->setNotation(notation->currentText());
    m_Spreadsheet->setPrecision(precision->value());
    connect(notation, &QComboBox::currentTextChanged, m_Spreadsheet.data(), &VXSpreadsheet::setNotation);
    connect(precision, qOverload<int>(&QSpinBox::valueChanged), m_Spreadsheet.data(),
            &VXSpreadsheet::setPrecision);
  }
}

void VXSpreadsheetOptions::saveState(nlohmann::json& json) const
{
  json[k_NumberKey] = m_DefaultSpreadsheetNumber;
  nlohmann::json paths = nlohmann::json::array();
  for (const zr::core::DataPath& path : m_DataPaths)
  {
    paths.push_back(path.toString());
  }
  json[k_ArraysKey] = paths;
}

void VXSpreadsheetOptions::loadState(const nlohmann::json& json)
{
  if (json.contains(k_NumberKey) && json[k_NumberKey].is_number_unsigned())
  {
    m_DefaultSpreadsheetNumber = json[k_NumberKey].get<unsigned long>();
  }
}

void VXSpreadsheetOptions::setDataStructure(const QString& id,
                                            std::shared_ptr<zr::core::DataStructure> dataStructure)
{
  m_DataStructureId = id;
  m_DataStructure = std::move(dataStructure);
}

QString VXSpreadsheetOptions::NoDataStructureText()
{
  return QStringLiteral(
      "The data structure could not be found in memory and no .kestrix file was provided! You "
      "must run a pipeline or provide a .kestrix file in order use spreadsheets");
}

QString VXSpreadsheetOptions::MissingArrayText(const zr::core::DataPath& path)
{
  return QStringLiteral("Data array at path '%1' does not exist and cannot be added to the spreadsheet.")
      .arg(QString::fromStdString(path.toString("/")));
}

std::vector<zr::core::DataPath> VXSpreadsheetOptions::PathsFromState(const nlohmann::json& json)
{
  std::vector<zr::core::DataPath> paths;
  if (!json.contains(k_ArraysKey) || !json[k_ArraysKey].is_array())
  {
    return paths;
  }
  for (const nlohmann::json& entry : json[k_ArraysKey])
  {
    if (entry.is_string())
    {
      if (auto path = zr::core::DataPath::FromString(entry.get<std::string>()); path.has_value())
      {
        paths.push_back(*path);
      }
    }
  }
  return paths;
}
