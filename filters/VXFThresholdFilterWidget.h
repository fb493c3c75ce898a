#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>

class QVBoxLayout;
class VXFThreshold;
namespace Ui
{
class VXFThresholdFilterWidget;
}

/** Settings of a threshold filter: the array component, the range to keep, Apply, and the host filter. */
class VXFThresholdFilterWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXFThresholdFilterWidget(VXFThreshold* filter, QWidget* parent = nullptr);
  ~VXFThresholdFilterWidget() override;

  QVBoxLayout* representationTypeLayout() const;

public Q_SLOTS:
  void updateScalarArrays();
  void arrayNameComboIndexChanged(int index);
  void customRangeChanged(double minimum, double maximum);

private:
  void resetRange();

  std::unique_ptr<Ui::VXFThresholdFilterWidget> m_Ui;
  QPointer<VXFThreshold> m_Filter;
};
