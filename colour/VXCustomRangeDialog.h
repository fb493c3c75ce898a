#pragma once

#include <QDialog>

#include <array>
#include <memory>

namespace Ui
{
class VXCustomRangeDialog;
}

/**
 * The range a colour map spans when it should not follow the data: the user types a minimum and a
 * maximum and rescales, or goes back to the data range.
 */
class VXCustomRangeDialog : public QDialog
{
  Q_OBJECT

public:
  explicit VXCustomRangeDialog(QWidget* parent = nullptr);
  ~VXCustomRangeDialog() override;

  std::array<double, 2> getRange() const { return m_Range; }
  /** @brief Shows a range (the data range after a reset, or a custom one) without announcing it. */
  void setRange(const std::array<double, 2>& range);

public Q_SLOTS:
  /** @brief Takes the typed range when the minimum is below the maximum, else says why not. */
  void applyTypedRange();

Q_SIGNALS:
  void rescale(double min, double max);
  void needsRangeReset();

private:
  std::unique_ptr<Ui::VXCustomRangeDialog> m_Ui;
  std::array<double, 2> m_Range = {0.0, 1.0};
};
