#include "app/ViewerChartsWindow.h"

#include "charts/VXChartingWidget.h"
#include "main/VXMainWidget.h"

#include <nlohmann/json.hpp>

#include <QFileInfo>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

ViewerChartsWindow::ViewerChartsWindow(QMainWindow* window, VXMainWidget* mainWidget)
    : QObject(window)
    , m_Window(window)
{
  QMenu* menu = window->menuBar()->addMenu(QStringLiteral("&Charts"));
  menu->addAction(QStringLiteral("Show Charts"), this, &ViewerChartsWindow::show);
  mainWidget->addStateSection(
      QStringLiteral("charting_state"),
      [this](nlohmann::json& json)
      {
        // Only a window the user opened has a state worth keeping.
        if (m_Charting != nullptr)
        {
          m_Charting->saveState(json);
        }
      },
      [this](const nlohmann::json& json)
      {
        // A state saved while the window was never opened holds no charts: leave the window alone.
        if (json.is_object() && !json.empty())
        {
          chartingWidget()->loadState(json);
        }
      });
}

ViewerChartsWindow::~ViewerChartsWindow()
{
  delete m_Charting.data();
}

void ViewerChartsWindow::setDataFile(const QString& path)
{
  if (QFileInfo(path).suffix().compare(QStringLiteral("kestrix"), Qt::CaseInsensitive) != 0)
  {
    return;
  }
  m_DataFile = QFileInfo(path).absoluteFilePath();
  if (m_Charting != nullptr)
  {
    m_Charting->setDataStructure(m_DataFile);
  }
}

VXChartingWidget* ViewerChartsWindow::chartingWidget()
{
  if (m_Charting == nullptr)
  {
    m_Charting = new VXChartingWidget();
    m_Charting->setWindowTitle(QStringLiteral("Charts"));
    m_Charting->resize(1200, 760);
    connect(m_Charting, &VXChartingWidget::printOutput, this, &ViewerChartsWindow::printOutput);
    if (!m_DataFile.isEmpty())
    {
      m_Charting->setDataStructure(m_DataFile);
    }
  }
  return m_Charting;
}

void ViewerChartsWindow::show()
{
  VXChartingWidget* charting = chartingWidget();
  charting->show();
  charting->raise();
}
