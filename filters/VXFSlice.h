#pragma once

#include "filters/VXFilter.h"

#include <vtkCutter.h>
#include <vtkSmartPointer.h>

#include <QPointer>

#include <array>

class vtkCutter;
class vtkRenderWindowInteractor;
class VXFSliceFilterWidget;
class VXPlane;

/** Cuts a dataset with a plane that the user places in the render window; the output is a surface. */
class VXFSlice : public VXFilter
{
  Q_OBJECT

public:
  explicit VXFSlice(QObject* parent = nullptr);
  ~VXFSlice() override;

  void write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const override;
  void read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) override;
  QString humanTypeName() const override;
  QString typeName() const override;
  vtkAlgorithmOutput* outputPort() const override;
  void initializeSettingsWidget() override;
  void setVisibility(bool visible) override;
  void writeSettings() override;
  void readSettings() override;
  void setupFilter() override;
  void setInputPort(vtkAlgorithmOutput* port) override;

  void setShowPlaneTool(bool show);
  bool showPlaneTool() const { return m_ShowPlaneTool; }
  VXPlane* plane() const { return m_Plane; }
  std::array<double, 6> bounds() const { return inputBounds(); }
  vtkRenderWindowInteractor* interactor() const;
  vtkCutter* algorithm() const { return m_Cutter; }

public Q_SLOTS:
  void applyFilter() override;
  void receivePipelineOutputReloaded() override;
  void activeViewChanged(VXAbstractViewWidget* previousActiveView,
                         VXAbstractViewWidget* currentActiveView) override;

Q_SIGNALS:
  void showPlaneToolChanged(bool show);

private:
  vtkSmartPointer<vtkCutter> m_Cutter;
  bool m_ShowPlaneTool = true;
  VXPlane* m_Plane = nullptr;
  QPointer<VXFSliceFilterWidget> m_SettingsForm;
};
