#pragma once

#include "filters/VXFilter.h"

#include <vtkSmartPointer.h>
#include <vtkTableBasedClipDataSet.h>

#include <QPointer>

#include <array>

class vtkRenderWindowInteractor;
class vtkTableBasedClipDataSet;
class VXBox;
class VXFClipFilterWidget;
class VXPlane;

/** Cuts a dataset with a plane or a box that the user places in the render window of the active view. */
class VXFClip : public VXFilter
{
  Q_OBJECT

public:
  enum ClipType
  {
    Plane = 0,
    Box = 1
  };
  Q_ENUM(ClipType)

  explicit VXFClip(QObject* parent = nullptr);
  ~VXFClip() override;

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

  void setClipType(ClipType type);
  ClipType clipType() const { return m_ClipType; }
  void setInverted(bool inverted);
  bool inverted() const { return m_Inverted; }
  void setShowClipTool(bool show);
  bool showClipTool() const { return m_ShowClipTool; }
  VXBox* box() const { return m_Box; }
  VXPlane* plane() const { return m_Plane; }
  std::array<double, 6> bounds() const { return inputBounds(); }
  vtkRenderWindowInteractor* interactor() const;
  void updateClipTool();
  vtkTableBasedClipDataSet* algorithm() const { return m_Clip; }

public Q_SLOTS:
  void applyFilter() override;
  void receivePipelineOutputReloaded() override;
  void activeViewChanged(VXAbstractViewWidget* previousActiveView,
                         VXAbstractViewWidget* currentActiveView) override;

Q_SIGNALS:
  void clipTypeChanged(VXFClip::ClipType type);
  void invertedChanged(bool inverted);
  void showClipToolChanged(bool show);

private:
  void setToolEnabled(bool enabled);

  vtkSmartPointer<vtkTableBasedClipDataSet> m_Clip;
  bool m_Inverted = true;
  ClipType m_ClipType = Plane;
  bool m_ShowClipTool = true;
  VXBox* m_Box = nullptr;
  VXPlane* m_Plane = nullptr;
  QPointer<VXFClipFilterWidget> m_SettingsForm;
};
