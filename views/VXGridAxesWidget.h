#pragma once

#include <QDialog>

#include <array>
#include <memory>

namespace Ui
{
class VXGridAxesWidget;
}

/**
 * @brief Options of the axes grid: a label spacing per axis (0 keeps the automatic spacing of that
 * axis) and whether grid lines are drawn.
 */
class VXGridAxesWidget : public QDialog
{
  Q_OBJECT

public:
  explicit VXGridAxesWidget(QWidget* parent = nullptr);
  ~VXGridAxesWidget() override;

  void setSpacing(const std::array<double, 3>& spacing);
  /**
   * The steps the automatic axes use now: an axis at 0 shows its step in the form, and stays automatic
   * while that text is left as it is.
   */
  void setAutomaticSpacing(const std::array<double, 3>& spacing);
  std::array<double, 3> getSpacing() const { return m_Spacing; }
  void setShowGrid(bool show);
  bool getShowGrid() const { return m_ShowGrid; }

public Q_SLOTS:
  void onApplyButtonClicked();
  void onOkButtonClicked();
  void onResetButtonClicked();
  void onCloseButtonClicked();

Q_SIGNALS:
  void apply();

private:
  void readForm();

  std::unique_ptr<Ui::VXGridAxesWidget> m_Ui;
  QString spacingText(int axis) const;

  std::array<double, 3> m_Spacing = {{0.0, 0.0, 0.0}};
  std::array<double, 3> m_AutomaticSpacing = {{0.0, 0.0, 0.0}};
  bool m_ShowGrid = false;
};
