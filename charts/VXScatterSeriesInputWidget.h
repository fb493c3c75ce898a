#pragma once

#include "charts/VXXYSeriesInputWidget.h"

/** @brief The input panel of a scatter chart: x and y arrays drawn as points. */
class VXScatterSeriesInputWidget : public VXXYSeriesInputWidget
{
  Q_OBJECT

public:
  explicit VXScatterSeriesInputWidget(QWidget* parent = nullptr)
      : VXXYSeriesInputWidget(Mode::Scatter, parent)
  {
  }
};
