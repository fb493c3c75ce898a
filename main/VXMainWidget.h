#pragma once

#include "data_bridge/zr_contract/DataPath.h"
#include "platform/ArrayThresholdRange.h"

#include <nlohmann/json_fwd.hpp>

#include <QColor>
#include <QImage>
#include <QList>
#include <QMap>
#include <QMetaObject>
#include <QModelIndex>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class VXAbstractViewWidget;
class VXInfoWidget;
class VXPipeline;
class VXPipelineModel;
class VXViewGridWidget;
class QSplitter;

namespace Ui
{
class VXMainWidget;
}

/**
 * @brief The top-level widget of the visualization: the split-view grid and the information panel
 * side by side, over one pipeline. It joins the grid's and the tree's records into one state file,
 * makes and applies presets of a subtree, and keeps the default layout in the settings.
 */
class VXMainWidget : public QWidget
{
  Q_OBJECT

public:
  // Answers of the box that asks whether to keep the current layout as the default.
  enum class DefaultsChoice
  {
    Save,
    DontSave,
    Reset
  };

  static inline const QString k_StateFileFilter =
      QStringLiteral("KESTRIX-ZR Visualization State (*.ksxstate)");
  static inline const QString k_CorruptSettingsMessage =
      QStringLiteral("VXMainWidget: corrupt render-window settings detected; resetting to default layout.");

  explicit VXMainWidget(QWidget* parent = nullptr);
  ~VXMainWidget() override;

  VXPipeline* pipeline() const;
  VXPipelineModel* pipelineModel() const;
  VXAbstractViewWidget* getActiveViewWidget() const;
  QList<VXAbstractViewWidget*> getAllViewWidgets() const;
  VXInfoWidget* getInfoWidget() const;
  VXViewGridWidget* viewGridWidget() const;
  QSplitter* splitter() const;
  bool canSaveState() const;

  void readSettings();
  void writeSettings();
  void addPresetToSettings(const QString& presetName, const nlohmann::json& preset);
  /** @brief The stored preset, or an empty value after a message when it is missing or unreadable. */
  nlohmann::json getPresetJson(const QString& presetName);
  void clearSplitViewState();

  /** @brief Writes the state to a file atomically; false after a message. */
  bool saveStateToFile(const QString& filePath);
  /** @brief All views drawn into one image at their places in this widget. */
  QImage grabAllViews(bool transparent, const QColor& color);

  /**
   * @brief Lets a host's own window (spreadsheets, charts) keep its state in the same state file,
   * under its own key beside the visualization. A section that saves nothing writes no key; a file
   * without the key leaves that window as it is.
   */
  void addStateSection(const QString& key, std::function<void(nlohmann::json&)> save,
                       std::function<void(const nlohmann::json&)> load);

public Q_SLOTS:
  void renderActiveView();
  void renderAllViews();
  void setBlockRender(bool block);
  void connectViewWidget(VXAbstractViewWidget* viewWidget);
  void equalizeViewWidths();
  void equalizeViewHeights();
  void linkAllViews();
  void unlinkAllViews();
  void saveAllViewsScreenshot();
  void copyAllViewsToClipboard();
  void popupMessage(const QString& title, const QString& message);
  void saveState(nlohmann::json& output);
  /** @brief May raise the JSON library's errors; loadState(filePath) reports them. */
  void loadState(const nlohmann::json& input);
  void saveState();
  void loadState();
  void loadState(const QString& filePath);
  void createPreset(const QModelIndex& dataSourceIndex, const QString& presetName, bool saveSplitViewState);
  void applyPreset(const QModelIndex& parentIndex, const QString& presetName);
  void exportPresets(const QString& filePath, const QList<QString>& presetNames);
  void importPresets(const QString& filePath);
  void setActiveView(VXAbstractViewWidget* viewWidget);
  void activeViewClosed(VXAbstractViewWidget* closedView);
  void clearAllRenderWindowHighlighters();
  void onLinkingDataViews(bool isLinking);

Q_SIGNALS:
  void changedActiveView(VXAbstractViewWidget* viewWidget);
  void visualizationActive();
  void printOutput(const QString& message);
  void createMultiThresholdObjectsFilter(const zr::core::DataPath& geometryPath,
                                         std::vector<ZR::ArrayThresholdRange> thresholds);
  void presetAdded(const QString& presetName);
  void loadStateRequested(const QString& filePath);

protected:
  void showEvent(QShowEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

  // Questions and dialogs; a host without a user, or a test, answers them differently.
  virtual bool askYesNo(const QString& title, const QString& text);
  virtual QString chooseSaveFile(const QString& caption, const QString& filter);
  virtual QString chooseOpenFile(const QString& caption, const QString& filter);
  virtual DefaultsChoice askSaveDefaults();
  virtual void showPopup(const QString& title, const QString& message);
  /** @brief Asks for the screenshot background; false when cancelled. */
  virtual bool askScreenshotOptions(bool& transparent, QColor& color);
  virtual QString chooseScreenshotFile();

private:
  void connectSignals();
  void numberViews();
  // Writes text through a save file; reports with the three messages, each holding the path.
  bool writeTextFile(const QString& filePath, const QByteArray& text, const QString& openFailure,
                     const QString& writeFailure, const QString& commitFailure);
  nlohmann::json readPresets(bool& present) const;
  void writePresets(const nlohmann::json& presets) const;

  struct StateSection
  {
    QString key;
    std::function<void(nlohmann::json&)> save;
    std::function<void(const nlohmann::json&)> load;
  };

  std::unique_ptr<Ui::VXMainWidget> m_Ui;
  std::vector<StateSection> m_StateSections;
  VXPipeline* m_Pipeline = nullptr;
  VXPipelineModel* m_PipelineModel = nullptr;
  QPointer<VXAbstractViewWidget> m_ActiveView;
  QList<QMetaObject::Connection> m_ActiveViewConnections;
  std::unique_ptr<QMap<VXAbstractViewWidget*, int>> m_ViewIndexes;
};
