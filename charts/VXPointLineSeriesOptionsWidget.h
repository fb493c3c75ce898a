#pragma once

#include "charts/VXSeriesOptionsWidget.h"

namespace Ui
{
class VXPointLineSeriesOptions;
}

/** @brief Options of a point or a line series: marker, point size, line style and thickness. */
class VXPointLineSeriesOptionsWidget : public VXSeriesOptionsWidget
{
  Q_OBJECT

public:
  /** @brief kind is Kind::Point or Kind::Line. */
  VXPointLineSeriesOptionsWidget(Kind kind, const QString& seriesName, QWidget* parent = nullptr);
  ~VXPointLineSeriesOptionsWidget() override;

  int getPointMarker() const;
  void setPointMarker(int marker);
  int getPointSize() const;
  void setPointSize(int size);
  int getLineStyle() const;
  void setLineStyle(int style);
  int getLineThickness() const;
  void setLineThickness(int thickness);

  void resetProperties() override;

Q_SIGNALS:
  void pointMarkerChanged(const QString& seriesName, int marker);
  void pointSizeChanged(const QString& seriesName, int size);
  void lineStyleChanged(const QString& seriesName, int style);
  void lineThicknessChanged(const QString& seriesName, int thickness);

protected:
  void writeStyle(nlohmann::json& json) const override;
  void readStyle(const nlohmann::json& json) override;

private:
  std::unique_ptr<Ui::VXPointLineSeriesOptions> m_Ui;
};
