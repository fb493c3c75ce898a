#include "app/ViewerTreePrinter.h"

#include "data_bridge/CVVtkBridge.h"

#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkPointData.h>

namespace
{
const QString k_Indent = QStringLiteral("  ");

QString formatNumber(double value)
{
  return QString::number(value, 'g', 6);
}
} // namespace

ViewerTreePrinter::ViewerTreePrinter(QTextStream& out)
    : m_Out(out)
{
}

void ViewerTreePrinter::print(const VXBridgeObject& bridge)
{
  m_Out << bridge.name() << '\n';
  for (VXDataSource* dataSource : bridge.dataSources())
  {
    printDataSource(*dataSource);
  }
  m_Out.flush();
}

void ViewerTreePrinter::printDataSource(VXDataSource& dataSource)
{
  const VXRepresentation::Type type = VXPipeline::DefaultRepresentationType(&dataSource);
  const QString typeName =
      type == VXRepresentation::Glyph
          ? QStringLiteral("Glyph")
          : VXRepresentation::k_RepresentationTypeToString.value(type, QString::number(type));
  vtkDataSet* dataSet = dataSource.getOutput();
  m_Out << k_Indent << dataSource.name();
  const std::string path = dataSource.importedDataPath().toString("/");
  const QString pathText =
      path.empty() ? QString() : QStringLiteral(" path: ") + QString::fromStdString(path);
  if (dataSet == nullptr)
  {
    m_Out << " [no dataset] default view: " << typeName << pathText << '\n';
    return;
  }
  m_Out << " [" << dataSet->GetClassName() << "] points: " << dataSet->GetNumberOfPoints()
        << " cells: " << dataSet->GetNumberOfCells() << " default view: " << typeName << pathText << '\n';
  printArrays(dataSet->GetPointData(), QStringLiteral("point"));
  printArrays(dataSet->GetCellData(), QStringLiteral("cell"));
}

void ViewerTreePrinter::printFilterOutput(const QString& name, vtkDataSet* dataSet, int depth)
{
  m_Out << k_Indent.repeated(depth + 1) << name;
  if (dataSet == nullptr)
  {
    m_Out << " [no output]\n";
    return;
  }
  m_Out << " [" << dataSet->GetClassName() << "] points: " << dataSet->GetNumberOfPoints()
        << " cells: " << dataSet->GetNumberOfCells() << '\n';
  printArrays(dataSet->GetPointData(), QStringLiteral("point"), depth + 2);
  printArrays(dataSet->GetCellData(), QStringLiteral("cell"), depth + 2);
  m_Out.flush();
}

void ViewerTreePrinter::printArrays(vtkDataSetAttributes* attributes, const QString& association, int depth)
{
  for (int i = 0; i < attributes->GetNumberOfArrays(); ++i)
  {
    vtkDataArray* array = attributes->GetArray(i);
    if (array == nullptr)
    {
      continue;
    }
    const int numComponents = array->GetNumberOfComponents();
    m_Out << k_Indent.repeated(depth) << association << ' ' << (array->GetName() ? array->GetName() : "")
          << " components: " << numComponents << " range:";
    for (int comp = 0; comp < numComponents; ++comp)
    {
      double range[2];
      array->GetRange(range, comp);
      m_Out << " [" << formatNumber(range[0]) << ", " << formatNumber(range[1]) << ']';
    }
    const std::string path = CV::VtkBridge::GetDataPath(array);
    if (!path.empty())
    {
      m_Out << " path: " << QString::fromStdString(path);
    }
    m_Out << '\n';
  }
}
