#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>

class QVBoxLayout;
class VXFQuadricClustering;
namespace Ui
{
class VXFQuadricClusteringFilterWidget;
}

/** Settings of a quadric clustering filter: the bins per axis and the four switches of the algorithm. */
class VXFQuadricClusteringFilterWidget : public QWidget
{
  Q_OBJECT

public:
  explicit VXFQuadricClusteringFilterWidget(VXFQuadricClustering* filter, QWidget* parent = nullptr);
  ~VXFQuadricClusteringFilterWidget() override;

  QVBoxLayout* representationTypeLayout() const;

private:
  std::unique_ptr<Ui::VXFQuadricClusteringFilterWidget> m_Ui;
  QPointer<VXFQuadricClustering> m_Filter;
};
