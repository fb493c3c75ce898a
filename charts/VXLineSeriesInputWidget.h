#pragma once

#include "charts/VXXYSeriesInputWidget.h"

/** @brief The input panel of a line chart: y arrays drawn as lines, against an optional x array or the
 * indices. */
class VXLineSeriesInputWidget : public VXXYSeriesInputWidget
{
  Q_OBJECT

public:
  explicit VXLineSeriesInputWidget(QWidget* parent = nullptr)
      : VXXYSeriesInputWidget(Mode::Line, parent)
  {
  }
};
