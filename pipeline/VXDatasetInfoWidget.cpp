#include "pipeline/VXDatasetInfoWidget.h"

#include <vtkAbstractArray.h>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkFieldData.h>
#include <vtkPointData.h>

#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QStringList>
#include <QTableWidget>
#include <QVBoxLayout>

namespace
{
const QString k_NoDataSetText = QStringLiteral("No dataset");

QLabel* addSummaryLine(QFormLayout* layout, QWidget* parent, const QString& field)
{
  auto* value = new QLabel(parent);
  value->setObjectName(field);
  value->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout->addRow(field + QStringLiteral(":"), value);
  return value;
}

QTableWidgetItem* readOnlyItem(const QString& text)
{
  auto* item = new QTableWidgetItem(text);
  item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
  item->setToolTip(text);
  return item;
}
} // namespace

VXDatasetInfoWidget::VXDatasetInfoWidget(QWidget* parent)
    : QWidget(parent)
{
  setObjectName(QStringLiteral("VXDatasetInfoWidget"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);

  m_ItemPathLabel = new QLabel(this);
  m_ItemPathLabel->setObjectName(QStringLiteral("m_ItemPathLabel"));
  m_ItemPathLabel->setWordWrap(true);
  layout->addWidget(m_ItemPathLabel);

  auto* summary = new QFormLayout();
  summary->setContentsMargins(0, 0, 0, 0);
  m_TypeLabel = addSummaryLine(summary, this, QStringLiteral("Type"));
  m_PointsLabel = addSummaryLine(summary, this, QStringLiteral("Points"));
  m_CellsLabel = addSummaryLine(summary, this, QStringLiteral("Cells"));
  m_MemoryLabel = addSummaryLine(summary, this, QStringLiteral("Memory"));
  m_BoundsLabel = addSummaryLine(summary, this, QStringLiteral("Bounds"));
  layout->addLayout(summary);

  m_ArrayTable = new QTableWidget(0, ColumnCount, this);
  m_ArrayTable->setObjectName(QStringLiteral("m_ArrayTable"));
  m_ArrayTable->setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Association"),
                                           QStringLiteral("Type"), QStringLiteral("Components"),
                                           QStringLiteral("Range")});
  m_ArrayTable->verticalHeader()->setVisible(false);
  m_ArrayTable->horizontalHeader()->setStretchLastSection(true);
  m_ArrayTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
  layout->addWidget(m_ArrayTable, 1);

  showNoDataSet();
}

VXDatasetInfoWidget::~VXDatasetInfoWidget() = default;

void VXDatasetInfoWidget::setItemPath(const QString& path)
{
  m_ItemPath = path;
  m_ItemPathLabel->setText(path);
  m_ItemPathLabel->setToolTip(path);
}

void VXDatasetInfoWidget::setDataSet(vtkDataSet* dataSet)
{
  m_DataSet = dataSet;
}

vtkDataSet* VXDatasetInfoWidget::dataSet() const
{
  return m_DataSet.Get();
}

QString VXDatasetInfoWidget::summaryValue(const QString& field) const
{
  const auto* label = findChild<QLabel*>(field, Qt::FindDirectChildrenOnly);
  return label != nullptr ? label->text() : QString();
}

QString VXDatasetInfoWidget::FormatNumber(double value)
{
  return QString::number(value, 'g', 6);
}

QString VXDatasetInfoWidget::FormatMemory(double bytes)
{
  static const char* const k_Units[] = {"KiB", "MiB", "GiB"};
  if (bytes < 1024.0)
  {
    return QStringLiteral("%1 B").arg(static_cast<qint64>(bytes));
  }
  int unit = -1;
  while (bytes >= 1024.0 && unit < 2)
  {
    bytes /= 1024.0;
    ++unit;
  }
  return QStringLiteral("%1 %2").arg(bytes, 0, 'f', 2).arg(QLatin1String(k_Units[unit]));
}

QString VXDatasetInfoWidget::FormatComponentRanges(vtkAbstractArray* array)
{
  auto* dataArray = vtkDataArray::FastDownCast(array);
  if (dataArray == nullptr || dataArray->GetNumberOfTuples() == 0)
  {
    return {};
  }
  QStringList ranges;
  for (int component = 0; component < dataArray->GetNumberOfComponents(); ++component)
  {
    double range[2];
    dataArray->GetRange(range, component);
    ranges.append(QStringLiteral("[%1, %2]").arg(FormatNumber(range[0]), FormatNumber(range[1])));
  }
  return ranges.join(QStringLiteral("; "));
}

void VXDatasetInfoWidget::showNoDataSet()
{
  m_TypeLabel->setText(k_NoDataSetText);
  for (QLabel* label : {m_PointsLabel, m_CellsLabel, m_MemoryLabel, m_BoundsLabel})
  {
    label->clear();
  }
  m_ArrayTable->setRowCount(0);
}

void VXDatasetInfoWidget::updateInfo()
{
  vtkDataSet* dataSet = m_DataSet.Get();
  if (dataSet == nullptr)
  {
    showNoDataSet();
    return;
  }
  m_TypeLabel->setText(QString::fromLatin1(dataSet->GetClassName()));
  m_PointsLabel->setText(QString::number(dataSet->GetNumberOfPoints()));
  m_CellsLabel->setText(QString::number(dataSet->GetNumberOfCells()));
  // The toolkit counts in KiB.
  m_MemoryLabel->setText(FormatMemory(static_cast<double>(dataSet->GetActualMemorySize()) * 1024.0));
  if (dataSet->GetNumberOfPoints() > 0)
  {
    double bounds[6];
    dataSet->GetBounds(bounds);
    m_BoundsLabel->setText(QStringLiteral("X [%1, %2], Y [%3, %4], Z [%5, %6]")
                               .arg(FormatNumber(bounds[0]), FormatNumber(bounds[1]), FormatNumber(bounds[2]),
                                    FormatNumber(bounds[3]), FormatNumber(bounds[4]),
                                    FormatNumber(bounds[5])));
  }
  else
  {
    m_BoundsLabel->setText(QStringLiteral("Empty"));
  }
  fillArrayTable(dataSet);
}

void VXDatasetInfoWidget::fillArrayTable(vtkDataSet* dataSet)
{
  m_ArrayTable->setRowCount(0);
  const std::pair<vtkFieldData*, QString> groups[] = {{dataSet->GetPointData(), QStringLiteral("Point")},
                                                      {dataSet->GetCellData(), QStringLiteral("Cell")},
                                                      {dataSet->GetFieldData(), QStringLiteral("Field")}};
  for (const auto& [fieldData, association] : groups)
  {
    if (fieldData == nullptr)
    {
      continue;
    }
    for (int i = 0; i < fieldData->GetNumberOfArrays(); ++i)
    {
      vtkAbstractArray* array = fieldData->GetAbstractArray(i);
      if (array == nullptr)
      {
        continue;
      }
      const int row = m_ArrayTable->rowCount();
      m_ArrayTable->insertRow(row);
      const char* name = array->GetName();
      m_ArrayTable->setItem(row, NameColumn,
                            readOnlyItem(name != nullptr ? QString::fromUtf8(name) : QString()));
      m_ArrayTable->setItem(row, AssociationColumn, readOnlyItem(association));
      m_ArrayTable->setItem(row, TypeColumn, readOnlyItem(QString::fromLatin1(array->GetDataTypeAsString())));
      m_ArrayTable->setItem(row, ComponentsColumn,
                            readOnlyItem(QString::number(array->GetNumberOfComponents())));
      m_ArrayTable->setItem(row, RangeColumn, readOnlyItem(FormatComponentRanges(array)));
    }
  }
  m_ArrayTable->resizeColumnsToContents();
}
