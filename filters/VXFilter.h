#pragma once

#include "data_views/VXRepresentation.h"
#include "pipeline/VXCoreObject.h"

#include <vtkAlgorithmOutput.h>
#include <vtkSmartPointer.h>

#include <QList>
#include <QPointer>
#include <QString>
#include <QUrl>

#include <array>

class QHBoxLayout;
class QLabel;
class QVBoxLayout;
class VXDataSource;
class ZRComboBox;
class QtZRSettings;
class vtkDataObject;
class vtkRenderWindowInteractor;

/**
 * Base of the visual filters: a tree item that runs one VTK algorithm on the output of its parent and
 * offers the algorithm's output to child filters and data views. Nothing runs until Apply.
 */
class VXFilter : public VXCoreObject
{
  Q_OBJECT

public:
  explicit VXFilter(QObject* parent = nullptr);
  ~VXFilter() override;

  void write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const override;
  void read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) override;
  QIcon getIcon() const override;
  void copyActiveSettings() override;
  void pasteToActiveSettings() override;

  virtual void writeSettings();
  virtual void readSettings();
  virtual void setupFilter() = 0;
  virtual void setInputPort(vtkAlgorithmOutput* port);
  virtual vtkAlgorithmOutput* inputPort() const;
  virtual void openHelpLink();
  // Whether read() already runs the algorithm, so that whoever loads the filter need not run it again.
  virtual bool appliesOnRead() const { return false; }

  QString defaultName() const { return m_DefaultName; }
  void setShouldAddRep(bool shouldAdd);
  bool shouldAddRep() const { return m_ShouldAddRep; }
  VXRepresentation::Type repTypeToAdd() const { return m_RepType; }
  void updateDownstreamGridAxesBounds();
  static void updateDownstreamGridAxesBounds(QObject* object);
  VXDataSource* parentDataSource() const;
  void addRepresentationTypeCombo(QVBoxLayout* layout, QHBoxLayout* row, const QList<QString>& types);
  bool shouldSaveAsDefaultSettings();
  QUrl helpUrl() const { return m_HelpUrl; }

  // The output of the input's producer as a dataset; null when there is none.
  vtkDataObject* inputDataObject() const;
  // Bounds of the input dataset; all zero when the input is no dataset.
  std::array<double, 6> inputBounds() const;
  // Whether the input dataset holds any point or cell array.
  bool inputHasArrays() const;
  // The interactor of the active view's render window; null with no active view.
  vtkRenderWindowInteractor* activeInteractor() const;
  // The names of the data view types a filter's output can get first.
  static QList<QString> RepresentationTypeNames();

public Q_SLOTS:
  virtual void applyFilter() = 0;
  void setRepTypeToAdd(const QString& repTypeString);
  void addViewWidgetCopy(VXAbstractViewWidget* sourceViewWidget,
                         VXAbstractViewWidget* splitViewWidget) override;

protected:
  // Common end of Apply: the data view of the stored type, if one is still to be added.
  void addRepresentationIfNeeded();
  // Tells that Apply does nothing on an input without arrays; true when it has some.
  bool checkInputHasArrays();
  // The settings scroll area with the title, save and help buttons; returns its content layout.
  QVBoxLayout* initializeSettingsFrame();
  // Opens the filter's group of user defaults; the caller ends both groups.
  void openSettingsGroup(QtZRSettings& settings) const;

  vtkSmartPointer<vtkAlgorithmOutput> m_InputPort;
  QPointer<QLabel> m_RepTypeLabel;
  QString m_DefaultName;
  QPointer<ZRComboBox> m_RepTypeCombo;
  VXRepresentation::Type m_RepType = VXRepresentation::Surface;
  bool m_ShouldAddRep = true;
  QUrl m_HelpUrl;
};
