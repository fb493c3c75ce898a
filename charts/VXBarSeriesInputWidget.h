#pragma once

#include "charts/VXXYSeriesInputWidget.h"

/** @brief The input panel of a bar chart: y arrays drawn as bars, the x values optionally as categories. */
class VXBarSeriesInputWidget : public VXXYSeriesInputWidget
{
  Q_OBJECT

public:
  explicit VXBarSeriesInputWidget(QWidget* parent = nullptr)
      : VXXYSeriesInputWidget(Mode::Bar, parent)
  {
  }
};
