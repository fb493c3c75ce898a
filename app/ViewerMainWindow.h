#pragma once

#include "app/ViewerDataViewChoice.h"

#include <QImage>
#include <QMainWindow>

class QPlainTextEdit;
class VXAbstractViewWidget;
class VXPipeline;
class VXViewGridWidget;

/**
 * @brief The viewer's window: the split-view grid in the centre and an output pane below that shows
 * the library's messages. Files come in from the command line, the File menu or drag and drop, and
 * all go through VXPipeline::importFile.
 */
class ViewerMainWindow : public QMainWindow
{
  Q_OBJECT

public:
  explicit ViewerMainWindow(QWidget* parent = nullptr);
  ~ViewerMainWindow() override;

  VXPipeline* pipeline() const;
  VXViewGridWidget* grid() const;
  QPlainTextEdit* outputPane() const;

  /** @brief When off, pop-up messages go only to the output pane (scripts, screenshots). */
  void setInteractive(bool interactive);

  /** @brief The data view, colouring and colour map every file opened from now on gets. */
  void setDataViewChoice(const ViewerDataViewChoice& choice);

  /** @brief Imports one file; false when it gave no dataset (the reason is in the output pane). */
  bool openFile(const QString& path);

  /** @brief Writes the grid's layout (splits, sizes, each view's camera and settings) as JSON. */
  bool saveLayout(const QString& path);
  /** @brief Rebuilds the grid from a layout file; a broken file leaves the grid as it was. */
  bool loadLayout(const QString& path);

  /** @brief The current frame of the active view, without its toolbar. */
  QImage captureActiveView();

public Q_SLOTS:
  void appendOutput(const QString& message);
  void showPopup(const QString& title, const QString& message);
  /** @brief Shows one step of a long import in the status line while the import runs. */
  void showProgress(const QString& message);
  void openFileDialog();

Q_SIGNALS:
  void outputAppended(const QString& message);

protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  ViewerDataViewChoice m_DataViewChoice;
  void createMenus();
  void connectView(VXAbstractViewWidget* view);

  VXPipeline* m_Pipeline = nullptr;
  VXViewGridWidget* m_Grid = nullptr;
  QPlainTextEdit* m_OutputPane = nullptr;
  bool m_Interactive = true;
};
