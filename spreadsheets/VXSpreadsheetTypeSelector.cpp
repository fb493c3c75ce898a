#include "spreadsheets/VXSpreadsheetTypeSelector.h"

#include "spreadsheets/VXSpreadsheetTypeButton.h"

#include "platform/ZRDataStructureModel.h"

#include <QGridLayout>
#include <QLabel>

namespace
{
const char k_TypeKey[] = "chart_type";
const char k_TypeVisibleKey[] = "chart_type_visible";

QString Wrapped(const QString& text)
{
  return QStringLiteral("<html><head/><body><p>%1</p></body></html>").arg(text);
}

VXSpreadsheetTypeButton* MakeButton(const QString& iconName, const QString& text, QWidget* parent)
{
  auto* button = new VXSpreadsheetTypeButton(parent);
  button->setThemeIconName(iconName);
  button->setText(text);
  button->setIconSize(QSize(48, 48));
  button->setMinimumSize(180, 110);
  button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  return button;
}
} // namespace

VXSpreadsheetTypeSelector::VXSpreadsheetTypeSelector(QWidget* parent)
    : QFrame(parent)
{
  setObjectName(QStringLiteral("VXSpreadsheetTypeSelector"));
  m_BasicButton = MakeButton(QStringLiteral("BasicSpreadsheet"), QStringLiteral("Basic Spreadsheet"), this);
  m_BasicButton->setObjectName(QStringLiteral("basicSpreadsheetButton"));
  m_BasicButton->setAcceptsMultipleArrays(true);
  m_BasicButton->setDescription(BasicDescription());
  m_MultidimButton =
      MakeButton(QStringLiteral("MultidimSpreadsheet"), QStringLiteral("Multidimensional Spreadsheet"), this);
  m_MultidimButton->setObjectName(QStringLiteral("multidimSpreadsheetButton"));
  m_MultidimButton->setAcceptsMultipleArrays(false);
  m_MultidimButton->setDescription(MultidimDescription());
  m_DescriptionLabel = new QLabel(this);
  m_DescriptionLabel->setObjectName(QStringLiteral("spreadsheetTypeDescriptionLabel"));
  m_DescriptionLabel->setWordWrap(true);
  m_DescriptionLabel->setAlignment(Qt::AlignCenter);
  m_DescriptionLabel->setMinimumHeight(60);

  auto* layout = new QGridLayout(this);
  layout->setRowStretch(0, 1);
  layout->addWidget(m_BasicButton, 1, 1);
  layout->addWidget(m_MultidimButton, 1, 2);
  layout->addWidget(m_DescriptionLabel, 2, 1, 1, 2);
  layout->setRowStretch(3, 1);
  layout->setColumnStretch(0, 1);
  layout->setColumnStretch(3, 1);

  for (VXSpreadsheetTypeButton* button : {m_BasicButton, m_MultidimButton})
  {
    connect(button, &VXSpreadsheetTypeButton::printOutput, this, &VXSpreadsheetTypeSelector::printOutput);
    connect(button, &VXSpreadsheetTypeButton::buttonHovered, this,
            &VXSpreadsheetTypeSelector::showDescription);
  }
  connect(m_BasicButton, &QPushButton::clicked, this, [this]() { onBasicSpreadsheetSelected({}); });
  connect(m_MultidimButton, &QPushButton::clicked, this, [this]() { onMultidimSpreadsheetSelected({}); });
  connect(m_BasicButton, &VXSpreadsheetTypeButton::arraysDropped, this,
          [this](std::vector<zr::core::DataPath>& paths) { onBasicSpreadsheetSelected(paths); });
  connect(m_MultidimButton, &VXSpreadsheetTypeButton::arrayDropped, this,
          [this](const zr::core::DataPath& path) { onMultidimSpreadsheetSelected({path}); });
}

VXSpreadsheetTypeSelector::~VXSpreadsheetTypeSelector() = default;

QString VXSpreadsheetTypeSelector::BasicDescription()
{
  return Wrapped(QStringLiteral("Traditional spreadsheet designed for viewing and analyzing data from one or "
                                "more arrays at once. Click to "
                                "create an empty basic spreadsheet OR drag and drop the array(s) from the "
                                "data structure to this button to "
                                "create a basic spreadsheet with the selected array(s)."));
}

QString VXSpreadsheetTypeSelector::MultidimDescription()
{
  return Wrapped(QStringLiteral(
      "Interactive spreadsheet designed for viewing a multidimensional array. Click to create an empty "
      "multidimensional spreadsheet OR drag and drop the array from the data structure to this button to "
      "create a "
      "multidimensional spreadsheet with the selected array."));
}

VXSpreadsheetTypeSelector::SpreadsheetType VXSpreadsheetTypeSelector::getSpreadsheetType() const
{
  return m_Type;
}

void VXSpreadsheetTypeSelector::setDataStructure(ZRDataStructureModel* model)
{
  m_BasicButton->setDataStructureModel(model);
  m_MultidimButton->setDataStructureModel(model);
}

VXSpreadsheetTypeButton* VXSpreadsheetTypeSelector::basicButton() const
{
  return m_BasicButton;
}

VXSpreadsheetTypeButton* VXSpreadsheetTypeSelector::multidimButton() const
{
  return m_MultidimButton;
}

QString VXSpreadsheetTypeSelector::descriptionText() const
{
  return m_DescriptionLabel->text();
}

void VXSpreadsheetTypeSelector::showDescription(const QString& description)
{
  m_DescriptionLabel->setText(description);
}

void VXSpreadsheetTypeSelector::onBasicSpreadsheetSelected(std::vector<zr::core::DataPath> paths)
{
  m_Type = SpreadsheetType::Basic;
  Q_EMIT spreadsheetTypeSelected(m_Type, std::move(paths));
}

void VXSpreadsheetTypeSelector::onMultidimSpreadsheetSelected(std::vector<zr::core::DataPath> paths)
{
  m_Type = SpreadsheetType::Multidimensional;
  Q_EMIT spreadsheetTypeSelected(m_Type, std::move(paths));
}

void VXSpreadsheetTypeSelector::saveState(nlohmann::json& json) const
{
  json[k_TypeKey] = static_cast<int>(m_Type);
  json[k_TypeVisibleKey] = true;
}

void VXSpreadsheetTypeSelector::loadState(const nlohmann::json& json)
{
  if (json.contains(k_TypeKey) && json[k_TypeKey].is_number_integer())
  {
    m_Type = json[k_TypeKey].get<int>() == 1 ? SpreadsheetType::Multidimensional : SpreadsheetType::Basic;
  }
}
