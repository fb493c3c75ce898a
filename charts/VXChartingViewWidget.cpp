#include "charts/VXChartingViewWidget.h"

#include "charts/VXBarSeriesInputWidget.h"
#include "charts/VXChart.h"
#include "charts/VXChartProperties.h"
#include "charts/VXExportDialog.h"
#include "charts/VXHistogramSeriesInputWidget.h"
#include "charts/VXLineSeriesInputWidget.h"
#include "charts/VXScatterSeriesInputWidget.h"
#include "platform/ZRStyle.h"

#include <nlohmann/json.hpp>

#include <QColorDialog>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <QVariant>

#include <algorithm>

VXChartingViewWidget::VXChartingViewWidget(QWidget* parent)
    : QFrame(parent)
    , m_Tabs(new QTabWidget(this))
{
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(m_Tabs);
  m_Tabs->setTabsClosable(true);
  m_Tabs->setMovable(true);
  auto* addButton = new QToolButton(this);
  addButton->setText(QStringLiteral("+"));
  addButton->setToolTip(QStringLiteral("Add Chart"));
  m_Tabs->setCornerWidget(addButton, Qt::TopRightCorner);
  connect(addButton, &QToolButton::clicked, this, &VXChartingViewWidget::addTabButtonClicked);
  connect(m_Tabs, &QTabWidget::tabCloseRequested, this, &VXChartingViewWidget::closeTab);
  connect(m_Tabs, &QTabWidget::currentChanged, this, &VXChartingViewWidget::currentChartChanged);
  connect(m_Tabs, &QTabWidget::tabBarClicked, this, &VXChartingViewWidget::activationRequested);
  addTabButtonClicked();
}

VXChartingViewWidget::~VXChartingViewWidget()
{
  // Input and properties panels may sit in the window's pages, outside this view.
  for (const Entry& entry : m_Entries)
  {
    delete entry.input.data();
    delete entry.properties.data();
  }
}

VXChartingViewWidget::Entry VXChartingViewWidget::entryAt(int index) const
{
  return m_Entries.value(m_Tabs->widget(index));
}

VXChart* VXChartingViewWidget::chartAt(int index) const
{
  return entryAt(index).chart;
}

VXChartSeriesInputWidget* VXChartingViewWidget::inputAt(int index) const
{
  return entryAt(index).input;
}

VXChartProperties* VXChartingViewWidget::propertiesAt(int index) const
{
  return entryAt(index).properties;
}

VXChartTypeSelector* VXChartingViewWidget::selectorAt(int index) const
{
  return entryAt(index).selector;
}

void VXChartingViewWidget::setActive(bool active)
{
  m_Active = active;
  setProperty("Active", active);
}

void VXChartingViewWidget::setDataStructure(
    const std::shared_ptr<const zr::core::DataStructure>& dataStructure)
{
  m_DataStructure = dataStructure;
  for (const Entry& entry : m_Entries)
  {
    if (entry.input != nullptr)
    {
      entry.input->setDataStructure(dataStructure);
    }
  }
}

void VXChartingViewWidget::addTabButtonClicked()
{
  auto* selector = new VXChartTypeSelector(this);
  connect(selector, &VXChartTypeSelector::chartTypeSelected, this,
          &VXChartingViewWidget::onChartTypeSelected);
  connect(selector, &VXChartTypeSelector::printOutput, this, &VXChartingViewWidget::printOutput);
  m_Entries.insert(selector, Entry{selector, nullptr, nullptr, nullptr});
  const QSignalBlocker blocker(m_Tabs);
  const int index = m_Tabs->addTab(selector, QStringLiteral("New Chart"));
  m_Tabs->setCurrentIndex(index);
}

unsigned long VXChartingViewWidget::nextChartNumber()
{
  // The smallest positive number not in use in this view.
  unsigned long number = 1;
  for (unsigned long used : m_UsedNumbers)
  {
    if (used != number)
    {
      break;
    }
    ++number;
  }
  m_UsedNumbers.insert(std::lower_bound(m_UsedNumbers.begin(), m_UsedNumbers.end(), number), number);
  return number;
}

void VXChartingViewWidget::releaseChartNumber(unsigned long number)
{
  m_UsedNumbers.erase(std::remove(m_UsedNumbers.begin(), m_UsedNumbers.end(), number), m_UsedNumbers.end());
}

void VXChartingViewWidget::onChartTypeSelected(const VXChartTypeSelector::ChartType& type)
{
  auto* selector = qobject_cast<VXChartTypeSelector*>(sender());
  const int index = selector != nullptr ? m_Tabs->indexOf(selector) : m_Tabs->currentIndex();
  if (index < 0)
  {
    return;
  }
  createChart(index, type, nextChartNumber());
  m_Tabs->setCurrentIndex(index);
  Q_EMIT currentChartChanged(index);
}

int VXChartingViewWidget::createChart(int index, VXChartTypeSelector::ChartType type, unsigned long number)
{
  QWidget* oldPage = m_Tabs->widget(index);
  Entry entry = m_Entries.take(oldPage);
  auto* chart = new VXChart(this);
  VXChartSeriesInputWidget* input = nullptr;
  switch (type)
  {
  case VXChartTypeSelector::ChartType::Scatter:
    input = new VXScatterSeriesInputWidget();
    break;
  case VXChartTypeSelector::ChartType::Line:
    input = new VXLineSeriesInputWidget();
    break;
  case VXChartTypeSelector::ChartType::Bar:
    input = new VXBarSeriesInputWidget();
    break;
  case VXChartTypeSelector::ChartType::Histogram:
    input = new VXHistogramSeriesInputWidget();
    break;
  }
  auto* properties = new VXChartProperties(chart, number);
  entry.chart = chart;
  entry.input = input;
  entry.properties = properties;
  if (entry.selector == nullptr)
  {
    entry.selector = new VXChartTypeSelector(this);
  }
  entry.selector->hide();
  entry.selector->setParent(chart); // keeps its state beside the chart
  const QSignalBlocker blocker(m_Tabs);
  m_Tabs->removeTab(index);
  m_Tabs->insertTab(index, chart,
                    ZRStyle::generateCheckableThemeIconFromName(VXChartTypeSelector::IconName(type)),
                    properties->getChartName());
  m_Tabs->setTabToolTip(index, properties->getChartName());
  m_Entries.insert(chart, entry);
  connect(input, &VXChartSeriesInputWidget::printOutput, this, &VXChartingViewWidget::printOutput);
  connect(properties, &VXChartProperties::printOutput, this, &VXChartingViewWidget::printOutput);
  QPointer<VXChart> chartPointer(chart);
  QPointer<VXChartSeriesInputWidget> inputPointer(input);
  connect(input, &VXChartSeriesInputWidget::updateChart, this,
          [chartPointer, inputPointer]
          {
            if (chartPointer != nullptr && inputPointer != nullptr)
            {
              inputPointer->applyTo(*chartPointer);
            }
          });
  connect(input, &VXChartSeriesInputWidget::colorChanged, chart,
          [chartPointer](const QString& name, const plottaro::Color& color)
          {
            if (chartPointer != nullptr)
            {
              chartPointer->setColor(name.toStdString(), color);
            }
          });
  connect(input, &VXChartSeriesInputWidget::changeSeriesVisibility, chart,
          [chartPointer](const QString& name, bool visible)
          {
            if (chartPointer != nullptr)
            {
              chartPointer->setPlotVisibility(name.toStdString(), visible);
            }
          });
  connect(input, &VXChartSeriesInputWidget::seriesNameChanged, chart,
          [chartPointer](const QString& oldName, const QString& newName)
          {
            if (chartPointer != nullptr)
            {
              chartPointer->renamePlotSeries(oldName.toStdString(), newName.toStdString());
            }
          });
  connect(input, &VXChartSeriesInputWidget::pointMarkerChanged, chart,
          [chartPointer](const QString& name, int value)
          {
            if (chartPointer != nullptr)
            {
              chartPointer->setPointMarker(name.toStdString(), value);
            }
          });
  connect(input, &VXChartSeriesInputWidget::pointSizeChanged, chart,
          [chartPointer](const QString& name, int value)
          {
            if (chartPointer != nullptr)
            {
              chartPointer->setPointSize(name.toStdString(), value);
            }
          });
  connect(input, &VXChartSeriesInputWidget::lineStyleChanged, chart,
          [chartPointer](const QString& name, int value)
          {
            if (chartPointer != nullptr)
            {
              chartPointer->setLineStyle(name.toStdString(), value);
            }
          });
  connect(input, &VXChartSeriesInputWidget::lineThicknessChanged, chart,
          [chartPointer](const QString& name, int value)
          {
            if (chartPointer != nullptr)
            {
              chartPointer->setLineThickness(name.toStdString(), value);
            }
          });
  chart->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(chart, &QWidget::customContextMenuRequested, this,
          [this, chart](const QPoint& position) { requestContextMenu(m_Tabs->indexOf(chart), position); });
  input->setDataStructure(m_DataStructure);
  return index;
}

void VXChartingViewWidget::resetChart(int index)
{
  const Entry entry = entryAt(index);
  if (entry.chart != nullptr && entry.input != nullptr)
  {
    entry.input->applyTo(*entry.chart);
  }
}

void VXChartingViewWidget::requestContextMenu(int index, const QPoint& position)
{
  const Entry entry = entryAt(index);
  if (entry.chart == nullptr)
  {
    return;
  }
  QPointer<VXChart> chart = entry.chart;
  QPointer<VXChartProperties> properties = entry.properties;
  QMenu menu(this);
  QMenu* add = menu.addMenu(QStringLiteral("Add Chart"));
  add->addAction(QStringLiteral("New Tab"), this, &VXChartingViewWidget::addTabButtonClicked);
  add->addAction(QStringLiteral("Split Right"), this, [this] { Q_EMIT splitRequested(Qt::Horizontal); });
  add->addAction(QStringLiteral("Split Down"), this, [this] { Q_EMIT splitRequested(Qt::Vertical); });
  menu.addAction(QStringLiteral("Move Chart to View..."), this,
                 [this, index] { Q_EMIT moveRequested(index); });
  menu.addAction(QStringLiteral("Close View"), this, [this] { Q_EMIT closeViewRequested(); });
  menu.addAction(QStringLiteral("Reset Axes to Plot Data"), this,
                 [chart]
                 {
                   if (chart != nullptr)
                   {
                     chart->resetXAxis();
                     chart->resetYAxis();
                   }
                 });
  menu.addAction(QStringLiteral("Reset Axes to Last User Input"), this,
                 [properties]
                 {
                   if (properties != nullptr)
                   {
                     properties->resetAxesToUserData();
                   }
                 });
  menu.addAction(QStringLiteral("Change Background Color"), this,
                 [this, chart]
                 {
                   if (chart == nullptr)
                   {
                     return;
                   }
                   const QColor color = QColorDialog::getColor(chart->getBackgroundColor(), this,
                                                               QStringLiteral("Change Background Color"));
                   if (color.isValid() && chart != nullptr)
                   {
                     chart->setBackgroundColor(color);
                   }
                 });
  menu.addAction(QStringLiteral("Export Chart"), this,
                 [this, chart]
                 {
                   if (chart == nullptr)
                   {
                     return;
                   }
                   VXExportDialog dialog(chart, this);
                   connect(&dialog, &VXExportDialog::printOutput, this, &VXChartingViewWidget::printOutput);
                   dialog.exec();
                 });
  QMenu* copy = menu.addMenu(QStringLiteral("Copy"));
  copy->addAction(QStringLiteral("As Is"), this,
                  [chart]
                  {
                    if (chart != nullptr)
                    {
                      VXExportDialog::SaveImageFile(QString(), chart->width(), chart->height(), false, chart);
                    }
                  });
  copy->addAction(QStringLiteral("1920 x 1080"), this,
                  [chart] { VXExportDialog::SaveImageFile(QString(), 1920, 1080, false, chart); });
  copy->addAction(QStringLiteral("1280 x 720"), this,
                  [chart] { VXExportDialog::SaveImageFile(QString(), 1280, 720, false, chart); });
  menu.exec(entry.chart->mapToGlobal(position));
}

void VXChartingViewWidget::closeTab(int index)
{
  if (index < 0 || index >= m_Tabs->count())
  {
    return;
  }
  if (m_ConfirmClose)
  {
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Close Charting View"),
                    QStringLiteral("Are you sure you want to close this tab?"),
                    QMessageBox::Yes | QMessageBox::No, this);
    box.setDefaultButton(QMessageBox::No);
    if (box.exec() != QMessageBox::Yes)
    {
      return;
    }
  }
  QWidget* page = m_Tabs->widget(index);
  const Entry entry = m_Entries.take(page);
  if (entry.properties != nullptr)
  {
    releaseChartNumber(entry.properties->getChartNumber());
  }
  m_Tabs->removeTab(index);
  // The selector is the page itself, or a child of the chart's page.
  delete entry.input.data();
  delete entry.properties.data();
  page->deleteLater();
  if (m_Tabs->count() == 0)
  {
    addTabButtonClicked();
  }
  Q_EMIT currentChartChanged(m_Tabs->currentIndex());
}

void VXChartingViewWidget::saveState(nlohmann::json& json) const
{
  json["active_view"] = m_Active;
  json["num_chart_tabs"] = m_Tabs->count();
  json["active_chart_tab"] = m_Tabs->currentIndex();
  nlohmann::json selectors = nlohmann::json::object();
  nlohmann::json inputs = nlohmann::json::object();
  nlohmann::json properties = nlohmann::json::object();
  for (int index = 0; index < m_Tabs->count(); ++index)
  {
    const Entry entry = entryAt(index);
    const std::string key = std::to_string(index);
    if (entry.selector != nullptr)
    {
      entry.selector->saveState(selectors[key]);
    }
    if (entry.input != nullptr)
    {
      entry.input->saveState(inputs[key]);
    }
    if (entry.properties != nullptr)
    {
      entry.properties->saveState(properties[key]);
    }
  }
  json["chart_type_selectors"] = selectors;
  json["chart_series_inputs"] = inputs;
  json["chart_properties"] = properties;
}

bool VXChartingViewWidget::loadState(const nlohmann::json& json)
{
  if (!json.contains("num_chart_tabs"))
  {
    return false;
  }
  {
    const bool confirm = m_ConfirmClose;
    m_ConfirmClose = false;
    while (m_Tabs->count() > 0)
    {
      QWidget* page = m_Tabs->widget(0);
      const Entry entry = m_Entries.take(page);
      m_Tabs->removeTab(0);
      delete entry.input.data();
      delete entry.properties.data();
      delete page;
    }
    m_UsedNumbers.clear();
    m_ConfirmClose = confirm;
  }
  const int count = json.at("num_chart_tabs").get<int>();
  const nlohmann::json empty = nlohmann::json::object();
  auto child = [&json, &empty](const char* group, int index) -> const nlohmann::json&
  {
    const std::string key = std::to_string(index);
    return json.contains(group) && json.at(group).contains(key) ? json.at(group).at(key) : empty;
  };
  const QSignalBlocker blocker(m_Tabs);
  for (int index = 0; index < count; ++index)
  {
    addTabButtonClicked();
    loadTab(index, child("chart_type_selectors", index), child("chart_series_inputs", index),
            child("chart_properties", index));
  }
  if (m_Tabs->count() == 0)
  {
    addTabButtonClicked();
  }
  const int current = json.value("active_chart_tab", 0);
  m_Tabs->setCurrentIndex(std::clamp(current, 0, m_Tabs->count() - 1));
  setActive(json.value("active_view", true));
  return true;
}

void VXChartingViewWidget::loadTab(int index, const nlohmann::json& selectorJson,
                                   const nlohmann::json& inputJson, const nlohmann::json& properties)
{
  VXChartTypeSelector* selector = selectorAt(index);
  selector->loadState(selectorJson);
  if (!selector->hasChosen())
  {
    return;
  }
  unsigned long number = 0;
  if (properties.contains("chart_properties") &&
      properties.at("chart_properties").contains("default_chart_number"))
  {
    number = properties.at("chart_properties").at("default_chart_number").get<unsigned long>();
  }
  if (number == 0 || std::find(m_UsedNumbers.begin(), m_UsedNumbers.end(), number) != m_UsedNumbers.end())
  {
    number = nextChartNumber();
  }
  else
  {
    m_UsedNumbers.insert(std::lower_bound(m_UsedNumbers.begin(), m_UsedNumbers.end(), number), number);
  }
  createChart(index, selector->chosenType(), number);
  const Entry entry = entryAt(index);
  entry.input->loadState(inputJson);
  entry.properties->loadState(properties);
  entry.input->applyTo(*entry.chart);
  entry.properties->syncFromChart();
  m_Tabs->setTabText(index, entry.properties->getChartName());
  m_Tabs->setTabToolTip(index, entry.properties->getChartName());
}

void VXChartingViewWidget::saveTab(int index, nlohmann::json& tab) const
{
  const Entry entry = entryAt(index);
  tab["chart_type_selector"] = nlohmann::json::object();
  tab["chart_series_input"] = nlohmann::json::object();
  tab["chart_properties"] = nlohmann::json::object();
  if (entry.selector != nullptr)
  {
    entry.selector->saveState(tab["chart_type_selector"]);
  }
  if (entry.input != nullptr)
  {
    entry.input->saveState(tab["chart_series_input"]);
  }
  if (entry.properties != nullptr)
  {
    entry.properties->saveState(tab["chart_properties"]);
  }
}

int VXChartingViewWidget::appendTab(const nlohmann::json& tab)
{
  // A lone empty tab gives way to the chart coming in.
  if (m_Tabs->count() == 1 && chartAt(0) == nullptr && !selectorAt(0)->hasChosen())
  {
    QWidget* page = m_Tabs->widget(0);
    m_Entries.remove(page);
    m_Tabs->removeTab(0);
    delete page;
  }
  addTabButtonClicked();
  const int index = m_Tabs->count() - 1;
  const nlohmann::json empty = nlohmann::json::object();
  loadTab(index, tab.value("chart_type_selector", empty), tab.value("chart_series_input", empty),
          tab.value("chart_properties", empty));
  m_Tabs->setCurrentIndex(index);
  Q_EMIT currentChartChanged(index);
  return index;
}

void VXChartingViewWidget::removeTab(int index)
{
  const bool confirm = m_ConfirmClose;
  m_ConfirmClose = false;
  closeTab(index);
  m_ConfirmClose = confirm;
}

void VXChartingViewWidget::mousePressEvent(QMouseEvent* event)
{
  Q_EMIT activationRequested();
  QFrame::mousePressEvent(event);
}
