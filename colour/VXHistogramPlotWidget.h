#pragma once

#include <QWidget>

#include <cstdint>
#include <vector>

/** @brief Bars of a histogram, painted to fill the widget; the tallest bar reaches the top. */
class VXHistogramPlotWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXHistogramPlotWidget(QWidget* parent = nullptr);

  void setCounts(const std::vector<std::uint64_t>& counts);
  const std::vector<std::uint64_t>& counts() const { return m_Counts; }

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  std::vector<std::uint64_t> m_Counts;
};
