#pragma once

#include "app/ViewerBuildPlate.h"
#include "app/ViewerDataViewChoice.h"
#include "app/ViewerFilterSteps.h"

#include <QImage>
#include <QMainWindow>

class QDockWidget;
class QMenu;
class QPlainTextEdit;
class VXAbstractViewWidget;
class VXBuildPlateAnnotationSource;
class VXPipeline;
class VXViewGridWidget;
class ViewerChartsWindow;
class ViewerMainWidget;
class ViewerMaskHost;
class VXSpreadsheetWidget;

/**
 * @brief The viewer's window: the library's main widget (the split-view grid beside the pipeline
 * tree and the selected item's settings) in the centre, and an output pane below that shows the
 * library's messages. Data files and state files come in from the command line, the File menu, the
 * recent files or drag and drop.
 */
class ViewerMainWindow : public QMainWindow
{
  Q_OBJECT

public:
  static inline const QString k_StateFileSuffix = QStringLiteral("ksxstate");

  explicit ViewerMainWindow(QWidget* parent = nullptr);
  ~ViewerMainWindow() override;

  ViewerMainWidget* mainWidget() const;
  VXPipeline* pipeline() const;
  VXViewGridWidget* grid() const;
  QPlainTextEdit* outputPane() const;
  ViewerChartsWindow* chartsWindow() const { return m_Charts; }
  /** @brief The viewer as host of its .kestrix files: masks from threshold filters, and their saving. */
  ViewerMaskHost* maskHost() const { return m_MaskHost; }
  /** @brief The "Spreadsheets" window, fed with the data structure of every .kestrix file opened. */
  VXSpreadsheetWidget* spreadsheetWidget() const;
  QDockWidget* spreadsheetDock() const;
  /**
   * @brief Shows the spreadsheet window with a new basic spreadsheet of the arrays at these data paths
   * of the last .kestrix file opened; false after a message when there is no such file or a path
   * leads to no array (the others are shown).
   */
  bool openSpreadsheet(const QStringList& dataPaths);

  /**
   * @brief When off, pop-up messages and questions go only to the output pane (scripts,
   * screenshots), and the window's geometry and recent files are left as they are.
   */
  void setInteractive(bool interactive);

  /** @brief The data view, colouring and colour map every file opened from now on gets. */
  void setDataViewChoice(const ViewerDataViewChoice& choice);
  // Filters that every file opened from now on gets under each of its data sources.
  void setFilterSteps(const ViewerFilterSteps& steps) { m_FilterSteps = steps; }

  /**
   * @brief Imports one data file, or loads a state file (by its suffix); false when a data file gave
   * no dataset or a state did not load whole (the reason is in the output pane).
   */
  bool openFile(const QString& path);
  /** @brief Loads a visualization state; false after a message when any part of it failed. */
  bool loadStateFile(const QString& path);
  /** @brief Writes the whole visualization atomically; false after a message. */
  bool saveStateFile(const QString& path);

  /** @brief Writes the grid's layout (splits, sizes, each view's camera and settings) as JSON. */
  bool saveLayout(const QString& path);
  /** @brief Rebuilds the grid from a layout file; a broken file leaves the grid as it was. */
  bool loadLayout(const QString& path);

  /** @brief Adds a build plate to every view: the plate given, or a default one. */
  VXBuildPlateAnnotationSource* addBuildPlate(const ViewerBuildPlate& plate = ViewerBuildPlate());

  /** @brief The current frame of the active view, without its toolbar. */
  QImage captureActiveView();
  /** @brief The frames of all views at their places in the grid. */
  QImage captureAllViews();

public Q_SLOTS:
  void appendOutput(const QString& message);
  /** @brief Shows one step of a long import in the status line while the import runs. */
  void showProgress(const QString& message);
  void openFileDialog();
  void loadStateDialog();
  void saveStateDialog();
  void exportPresetsDialog();
  void importPresetsDialog();
  void saveDataStructureDialog();

Q_SIGNALS:
  void outputAppended(const QString& message);

protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  void createMenus();
  void fillRecentMenu();
  void rememberFile(const QString& path);
  void restoreWindowGeometry();
  void saveWindowGeometry() const;

  ViewerDataViewChoice m_DataViewChoice;
  ViewerFilterSteps m_FilterSteps;
  ViewerMainWidget* m_MainWidget = nullptr;
  QPlainTextEdit* m_OutputPane = nullptr;
  ViewerChartsWindow* m_Charts = nullptr;
  VXSpreadsheetWidget* m_SpreadsheetWidget = nullptr;
  QDockWidget* m_SpreadsheetDock = nullptr;
  QMenu* m_RecentMenu = nullptr;
  ViewerMaskHost* m_MaskHost = nullptr;
  bool m_Interactive = true;
  // Messages of the state load under way that say it failed.
  int m_StateLoadErrors = -1;
};
