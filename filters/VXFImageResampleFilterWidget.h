#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>

class QVBoxLayout;
class VXFImageResample;
namespace Ui
{
class VXFImageResampleFilterWidget;
}

/** Settings of an image resample filter: the percentage per axis and the dimensions it gives. */
class VXFImageResampleFilterWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXFImageResampleFilterWidget(VXFImageResample* filter, QWidget* parent = nullptr);
  ~VXFImageResampleFilterWidget() override;

  QVBoxLayout* representationTypeLayout() const;

private:
  void updateDimensions();

  std::unique_ptr<Ui::VXFImageResampleFilterWidget> m_Ui;
  QPointer<VXFImageResample> m_Filter;
};
