#include "data_views/ZRVtkModuleUtils.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkMapper.h>
#include <vtkPointData.h>

#include <QVBoxLayout>

namespace ZRVtkModule::utils
{
namespace
{
const QString k_LayoutName = QStringLiteral("vxInfoWidgetSettingsWidgetLayout");
constexpr int k_Margin = 2;
} // namespace

QPointer<QWidget> CreateSettingsWidget(QPointer<QWidget> titleFrame, QPointer<QScrollArea> scrollArea)
{
  auto* widget = new QWidget();
  widget->setObjectName(QStringLiteral("vxInfoWidgetSettingsWidget"));
  widget->setMinimumHeight(300);
  auto* layout = new QVBoxLayout(widget);
  layout->setObjectName(k_LayoutName);
  layout->setContentsMargins(k_Margin, k_Margin, k_Margin, k_Margin);

  if (titleFrame)
  {
    titleFrame->setParent(nullptr);
    layout->addWidget(titleFrame);
  }
  if (scrollArea)
  {
    scrollArea->setParent(nullptr);
    scrollArea->setWidgetResizable(true);
    auto* content = new QWidget();
    content->setObjectName(QStringLiteral("contentSettingsWidget"));
    auto* contentLayout = new QVBoxLayout(content);
    contentLayout->setObjectName(k_LayoutName);
    contentLayout->setContentsMargins(k_Margin, k_Margin, k_Margin, k_Margin);
    scrollArea->setWidget(content);
    layout->addWidget(scrollArea, 1);
  }
  return widget;
}

namespace
{
vtkDataArray* activeArrayOf(vtkDataSetAttributes* attributes)
{
  if (attributes == nullptr || attributes->GetNumberOfArrays() == 0)
  {
    return nullptr;
  }
  if (vtkDataArray* scalars = attributes->GetScalars())
  {
    return scalars;
  }
  if (vtkDataArray* vectors = attributes->GetVectors())
  {
    return vectors;
  }
  vtkAbstractArray* first = attributes->GetAbstractArray(0);
  return first != nullptr && first->GetName() != nullptr ? attributes->GetArray(first->GetName()) : nullptr;
}
} // namespace

vtkDataArray* GetActiveCellArray(vtkDataSet* dataSet)
{
  return dataSet != nullptr ? activeArrayOf(dataSet->GetCellData()) : nullptr;
}

vtkDataArray* GetActivePointArray(vtkDataSet* dataSet)
{
  return dataSet != nullptr ? activeArrayOf(dataSet->GetPointData()) : nullptr;
}

vtkDataArray* GetActiveDataArray(vtkDataSet* dataSet, const QString& name)
{
  if (dataSet == nullptr || name.isEmpty())
  {
    return nullptr;
  }
  const QByteArray utf8 = name.toUtf8();
  if (vtkDataArray* array = dataSet->GetPointData()->GetArray(utf8.constData()))
  {
    return array;
  }
  return dataSet->GetCellData()->GetArray(utf8.constData());
}

vtkDataArray* GetActiveDataArray(vtkMapper* mapper, const QString& name)
{
  return mapper != nullptr ? GetActiveDataArray(vtkDataSet::SafeDownCast(mapper->GetInputAsDataSet()), name)
                           : nullptr;
}

bool IsColorArray(vtkDataArray* array)
{
  return array != nullptr && array->GetNumberOfComponents() == 3 && array->GetDataType() == VTK_UNSIGNED_CHAR;
}
} // namespace ZRVtkModule::utils
