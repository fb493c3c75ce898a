#include "colour/VXLUTEditor.h"

#include "colour/VXLookupTableModel.h"
#include "platform/ZRPreferences.h"

#include "ui_VXLUTEditor.h"

#include <vtkVariant.h>

#include <QHeaderView>
#include <QSignalBlocker>

VXLUTEditor::VXLUTEditor(QWidget* parent)
    : QDialog(parent)
    , m_Ui(std::make_unique<Ui::VXLUTEditor>())
    , m_Model(new VXLookupTableModel(this))
{
  m_Ui->setupUi(this);
  m_Ui->m_TableView->setModel(m_Model);
  m_Ui->m_TableView->horizontalHeader()->setStretchLastSection(true);
  connect(m_Ui->m_TableView, &QAbstractItemView::doubleClicked, this,
          [this](const QModelIndex& index)
          {
            if (index.column() == VXLookupTableModel::ColorColumn)
            {
              m_Model->colorButtonClicked(index);
            }
          });
  connect(m_Ui->m_AddRowButton, &QPushButton::clicked, this, &VXLUTEditor::addCategory);
  connect(m_Ui->m_RemoveRowButton, &QPushButton::clicked, this, &VXLUTEditor::removeSelectedCategory);
  connect(m_Ui->m_ApplyButton, &QPushButton::clicked, this, &VXLUTEditor::applyCustomTable);
  connect(m_Ui->m_RestoreDefaultButton, &QPushButton::clicked, this, &VXLUTEditor::restoreDefaultPreset);
  connect(m_Ui->m_CloseButton, &QPushButton::clicked, this, &QDialog::accept);
  connect(m_Ui->m_NanColorButton, &ZRColorButton::colorChanged, this, &VXLUTEditor::nanColorChanged);
}

VXLUTEditor::~VXLUTEditor() = default;

void VXLUTEditor::initializeCustomTable(vtkSmartPointer<vtkColorTransferFunction> transferFunction) const
{
  QList<VXLookupTableModel::LUTEntry> entries;
  if (transferFunction != nullptr)
  {
    for (int i = 0; i < transferFunction->GetSize(); ++i)
    {
      double node[6] = {};
      transferFunction->GetNodeValue(i, node);
      const QString value = QString::number(node[0], 'g', 6);
      const vtkIdType annotated = transferFunction->GetAnnotatedValueIndex(vtkVariant(node[0]));
      const std::string annotation =
          annotated >= 0 ? std::string(transferFunction->GetAnnotation(annotated)) : std::string();
      entries.append({QColor::fromRgbF(node[1], node[2], node[3]), value,
                      annotation.empty() ? value : QString::fromStdString(annotation)});
    }
  }
  m_Model->setTable(entries);
}

int VXLUTEditor::numCustomCategories() const
{
  return m_Model->rowCount();
}

VXLUTEditor::ColorPreset VXLUTEditor::getDefaultPreset() const
{
  return ZRPreferences::Instance()->getDefaultIndexedColorPreset();
}

void VXLUTEditor::setNanColor(const QColor& color) const
{
  const QSignalBlocker blocker(m_Ui->m_NanColorButton);
  m_Ui->m_NanColorButton->setColor(color);
}

QColor VXLUTEditor::nanColor() const
{
  return m_Ui->m_NanColorButton->getColor();
}

VXLUTEditor::ColorPreset VXLUTEditor::customPreset() const
{
  ColorPreset preset;
  preset.m_Name = "Custom";
  for (const VXLookupTableModel::LUTEntry& entry : m_Model->table())
  {
    preset.m_IndexedColors.push_back(static_cast<float>(entry.color.redF()));
    preset.m_IndexedColors.push_back(static_cast<float>(entry.color.greenF()));
    preset.m_IndexedColors.push_back(static_cast<float>(entry.color.blueF()));
    preset.m_Annotations.push_back(entry.value.toStdString());
    preset.m_Annotations.push_back(entry.annotation.toStdString());
  }
  const QColor nan = nanColor();
  preset.m_NanColor = {static_cast<float>(nan.redF()), static_cast<float>(nan.greenF()),
                       static_cast<float>(nan.blueF())};
  return preset;
}

void VXLUTEditor::applyCustomTable()
{
  if (m_Model->rowCount() == 0)
  {
    return; // an empty table would leave the view without colours
  }
  Q_EMIT applyPreset(customPreset());
}

void VXLUTEditor::addCategory()
{
  // The new value follows the largest one so that it is unique.
  double next = 0.0;
  for (const VXLookupTableModel::LUTEntry& entry : m_Model->table())
  {
    next = qMax(next, entry.value.toDouble() + 1.0);
  }
  const QString value = QString::number(next, 'g', 6);
  m_Model->addRow(Qt::white, value, value);
}

void VXLUTEditor::removeSelectedCategory()
{
  const QModelIndex index = m_Ui->m_TableView->currentIndex();
  if (index.isValid())
  {
    m_Model->removeRow(index);
  }
}
