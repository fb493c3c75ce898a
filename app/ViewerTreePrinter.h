#pragma once

#include <QString>
#include <QTextStream>

class VXBridgeObject;
class VXDataSource;
class vtkDataSetAttributes;

/**
 * Prints the pipeline tree of an imported file as text, one line per item, indented by depth: the
 * bridge; each data source with its dataset class, counts and default data view; each array with its
 * association, component count and per-component range.
 */
class ViewerTreePrinter
{
public:
  explicit ViewerTreePrinter(QTextStream& out);

  void print(const VXBridgeObject& bridge);

private:
  void printDataSource(VXDataSource& dataSource);
  void printArrays(vtkDataSetAttributes* attributes, const QString& association);

  QTextStream& m_Out;
};
