#pragma once

#include "filters/VXFilter.h"

#include <vtkPassThrough.h>
#include <vtkSmartPointer.h>

#include <QPointer>

#include <array>

class VXFImageResampleFilterWidget;

/**
 * Coarsens image data by a percentage per axis. The work is on cells, by nearest-cell sampling, so that
 * feature ids and phases stay intact; point data is not carried over.
 */
class VXFImageResample : public VXFilter
{
  Q_OBJECT

public:
  explicit VXFImageResample(QObject* parent = nullptr);
  ~VXFImageResample() override;

  void write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const override;
  void read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) override;
  QString humanTypeName() const override;
  QString typeName() const override;
  vtkAlgorithmOutput* outputPort() const override;
  void initializeSettingsWidget() override;
  void writeSettings() override;
  void readSettings() override;
  void setupFilter() override;
  void setInputPort(vtkAlgorithmOutput* port) override;

  std::array<double, 3> resampleDimensions() const { return m_Dimensions; }
  vtkPassThrough* algorithm() const { return m_PassThrough; }

public Q_SLOTS:
  void applyFilter() override;
  void receivePipelineOutputReloaded() override;
  void setResampleDimensions(std::array<double, 3> dimensions);

private:
  vtkSmartPointer<vtkPassThrough> m_PassThrough;
  QPointer<VXFImageResampleFilterWidget> m_SettingsForm;
  std::array<double, 3> m_Dimensions = {100.0, 100.0, 100.0};
};
