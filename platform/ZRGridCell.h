#pragma once

#include <QWidget>

/**
 * @brief One cell of the grid table of AbstractZRGridSplitterWidget. The cell at the top left of an
 * area holds the widget and the spans; cells that lie under a spanning one have both spans 0.
 * An anchor cell without a widget is an empty area.
 */
struct ZRGridCell
{
  QWidget* widget = nullptr;
  int rowSpan = 1;
  int colSpan = 1;

  bool isCovered() const { return rowSpan <= 0 || colSpan <= 0; }
};
