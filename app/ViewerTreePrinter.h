#pragma once

#include <QString>
#include <QTextStream>

class VXBridgeObject;
class VXDataSource;
class vtkDataSet;
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
  /** @brief One filter's output under its data source, indented by its depth in the chain (from 1). */
  void printFilterOutput(const QString& name, vtkDataSet* dataSet, int depth);

private:
  void printDataSource(VXDataSource& dataSource);
  void printArrays(vtkDataSetAttributes* attributes, const QString& association, int depth = 2);

  QTextStream& m_Out;
};
