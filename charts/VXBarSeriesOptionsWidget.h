#pragma once

#include "charts/VXSeriesOptionsWidget.h"

/** @brief Options of a bar series: its name and colour. */
class VXBarSeriesOptionsWidget : public VXSeriesOptionsWidget
{
  Q_OBJECT

public:
  explicit VXBarSeriesOptionsWidget(const QString& seriesName, QWidget* parent = nullptr)
      : VXSeriesOptionsWidget(Kind::Bar, seriesName, parent)
  {
  }
};
