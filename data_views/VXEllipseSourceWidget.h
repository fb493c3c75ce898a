#pragma once

#include <QDialog>
#include <QPointer>

#include <array>

class QDoubleSpinBox;
class QLineEdit;
class QSpinBox;
class VXGlyphRepPimpl;

/**
 * The ellipse of the Ellipse glyphs: centre, normal and major radius vector (each typed as three
 * numbers separated by blanks, commas, semicolons or tabs), the ratio of the minor to the major
 * radius and the number of segments. Ok applies them to the glyph view, Reset shows the defaults.
 */
class VXEllipseSourceWidget : public QDialog
{
  Q_OBJECT

public:
  VXEllipseSourceWidget(VXGlyphRepPimpl* glyphs, QWidget* parent = nullptr);

  /** @brief Three numbers from text split at blanks, commas, semicolons or tabs; a non-number is 0. */
  static std::array<double, 3> ParseVector(const QString& text);
  /** @brief Fills the boxes from the glyph view's current ellipse. */
  void syncWithSourceCache();

public Q_SLOTS:
  void onOkButtonClicked();
  void onCancelButtonClicked();
  void onResetButtonClicked();

Q_SIGNALS:
  void apply();

private:
  void showValues(const std::array<double, 3>& center, const std::array<double, 3>& normal,
                  const std::array<double, 3>& radius, double ratio, int resolution);

  QPointer<VXGlyphRepPimpl> m_Glyphs;
  QLineEdit* m_CenterEdit = nullptr;
  QLineEdit* m_NormalEdit = nullptr;
  QLineEdit* m_RadiusEdit = nullptr;
  QDoubleSpinBox* m_RatioBox = nullptr;
  QSpinBox* m_ResolutionBox = nullptr;
};
