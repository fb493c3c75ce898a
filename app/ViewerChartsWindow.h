#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QMainWindow;
class VXChartingWidget;
class VXMainWidget;

/**
 * @brief The viewer's "Charts" window: charts of the arrays of the last .kestrix file opened. Its state
 * lives in the viewer's state file under "charting_state"; the window is made on first use.
 */
class ViewerChartsWindow : public QObject
{
  Q_OBJECT

public:
  /** @brief Adds the Charts menu to the window and the state section to the main widget. */
  ViewerChartsWindow(QMainWindow* window, VXMainWidget* mainWidget);
  ~ViewerChartsWindow() override;

  /** @brief The .kestrix file the charts read; others are ignored. */
  void setDataFile(const QString& path);
  VXChartingWidget* chartingWidget();
  void show();

Q_SIGNALS:
  void printOutput(const QString& message);

private:
  QMainWindow* m_Window = nullptr;
  QPointer<VXChartingWidget> m_Charting;
  QString m_DataFile;
};
