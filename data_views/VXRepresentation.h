#pragma once

#include "pipeline/VXCoreObject.h"

#include <QMap>
#include <QPointer>
#include <QSharedPointer>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class VXDatasetInfoWidget;
class VXRepresentationPimpl;
class vtkAlgorithmOutput;

/**
 * A data view: one tree item that draws the output of a data source or filter, with one
 * implementation per render window, so that settings are per window. A window made by a split gets
 * a copy of the implementation of the window it came from. The concrete views register themselves
 * with a factory so the pipeline can make a view from its type number.
 */
class VXRepresentation : public VXCoreObject
{
  Q_OBJECT

public:
  // The numbers are stored in state records and must be kept.
  enum Type
  {
    None = 0,
    Outline = 1,
    Points = 2,
    Wireframe = 3,
    Surface = 4,
    ImageSlice = 5,
    Volume = 6,
    Glyph = 7
  };
  Q_ENUM(Type)

  // Preference and menu texts; the glyph view cannot be named as a default data view.
  static const QMap<QString, Type> k_RepresentationStringToType;
  static const QMap<Type, QString> k_RepresentationTypeToString;

  using Factory = std::function<VXRepresentation*(QObject* parent)>;
  static void RegisterType(Type type, Factory factory);
  // A new data view of the type, or null when no class for it is registered.
  static VXRepresentation* Create(Type type, QObject* parent);
  static bool IsRegistered(Type type);

  explicit VXRepresentation(QObject* parent = nullptr);
  ~VXRepresentation() override;

  virtual Type getType() const = 0;
  virtual void initialize(vtkAlgorithmOutput* inputPort);
  /**
   * Adds the implementation for a window, copying the settings of the source window's (or else the
   * first) implementation. Only the first implementation may be given a port.
   */
  virtual bool addViewWidgetSplit(VXAbstractViewWidget* source, VXAbstractViewWidget* split,
                                  vtkAlgorithmOutput* port, bool visible = true);
  void initializeViewWidgetSplits(vtkAlgorithmOutput* port, bool visible);

  void write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const override;
  void read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) override;
  bool finalize() override;
  vtkAlgorithmOutput* outputPort() const override;
  VXLookupTable* lookupTable() const override;
  QWidget* settingsWidget() override;
  void initializeSettingsWidget() override;
  bool isVisible() const override;
  void setVisibility(bool visible) override;
  void copyActiveSettings() override;
  void pasteToActiveSettings() override;

  void setParentSource(VXCoreObject* parentSource);
  VXCoreObject* parentSource() const { return m_ParentSource; }
  VXCoreObject* parentDataSource() const;
  /** @brief The implementation in the window, or null. */
  VXRepresentationPimpl* implementation(VXAbstractViewWidget* view) const;
  VXRepresentationPimpl* activeImplementation() const;
  /** @brief All implementations in map order; a dead one gives a null entry. */
  std::vector<VXRepresentationPimpl*> getDataViewSplits() const;
  void removeModuleInstance(VXAbstractViewWidget* view);
  void highlightInRenderWindows(bool highlight);
  bool isHighlighted() const { return m_Highlighted; }
  QString defaultName() const { return humanTypeName(); }

  /** @brief Makes the dataset information panel once and feeds it the first window's input. */
  virtual void initializeDataSetInfoWidget();
  /** @brief Refreshes the panel if it exists. */
  virtual void updateDataSetInfoWidget();
  virtual void showDataSetInfoWidget();
  /** @brief The panel, made if needed and refreshed first. */
  QSharedPointer<VXDatasetInfoWidget> getDataSetInfoWidget();
  /** @brief The dataset that the first window's implementation draws, or null. */
  vtkDataSet* inputDataSet() const;

public Q_SLOTS:
  void addViewWidgetCopy(VXAbstractViewWidget* sourceViewWidget,
                         VXAbstractViewWidget* splitViewWidget) override;
  void receivePipelineOutputReloaded() override;
  void activeViewChanged(VXAbstractViewWidget* previousActiveView,
                         VXAbstractViewWidget* currentActiveView) override;
  void renderAll();
  void removeModule();
  void updateGridAxesBounds();

Q_SIGNALS:
  void canHoverInfo(int allowHoverInfo);
  void requestLinkViews(VXRepresentationPimpl* repToLink);
  void requestUnlinkViews(VXRepresentationPimpl* repToUnlink);

protected:
  /** @brief A new implementation of this view's own kind for the window. */
  virtual VXRepresentationPimpl* createImplementation(VXAbstractViewWidget* view) = 0;
  /** @brief Whether an implementation is of this view's own kind. */
  virtual bool isOwnImplementation(const VXRepresentationPimpl* implementation) const = 0;

private:
  struct InputProducerObserver;
  // Refreshes the panel after each run of the producer of the input.
  void observeInputProducer(vtkAlgorithmOutput* input);

  QMap<VXAbstractViewWidget*, QPointer<VXRepresentationPimpl>> m_Implementations;
  QSharedPointer<VXDatasetInfoWidget> m_DatasetInfoWidget;
  std::unique_ptr<InputProducerObserver> m_InputProducerObserver;
  QPointer<VXCoreObject> m_ParentSource;
  bool m_Highlighted = false;
};
