#include "charts/VXChartingWidget.h"

#include "charts/VXChartProperties.h"
#include "charts/VXChartSeriesInputWidget.h"
#include "charts/VXChartingViewWidget.h"
#include "data_bridge/zr_contract/KestrixReaderLoader.h"
#include "platform/ZRDataStructureTreeView.h"
#include "platform/ZRDataStructureWidget.h"

#include <nlohmann/json.hpp>

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QScrollArea>
#include <QSplitter>
#include <QTabWidget>
#include <QUrl>
#include <QVBoxLayout>

namespace
{
const char* const k_FilePathKey = "kestrix_file_path";

QScrollArea* Page(QWidget* parent)
{
  auto* page = new QScrollArea(parent);
  page->setWidgetResizable(true);
  return page;
}

// Takes the page's widget out without deleting it: it belongs to its chart.
void Release(QScrollArea* page)
{
  if (QWidget* widget = page->takeWidget())
  {
    widget->hide();
    widget->setParent(nullptr);
  }
}
} // namespace

VXChartingWidget::VXChartingWidget(QWidget* parent)
    : QWidget(parent)
    , m_FileLabel(new QLabel(this))
    , m_View(new VXChartingViewWidget(this))
    , m_SeriesPage(Page(this))
    , m_PropertiesPage(Page(this))
{
  auto* layout = new QVBoxLayout(this);
  auto* splitter = new QSplitter(Qt::Horizontal, this);
  auto* left = new QWidget(splitter);
  auto* leftLayout = new QVBoxLayout(left);
  leftLayout->addWidget(new QLabel(QStringLiteral(" Data Structure"), left));
  m_FileLabel->setWordWrap(true);
  m_FileLabel->setText(
      QStringLiteral("To Import Data For Charting<ul><li>- Run a pipeline</li><li>- Drag and drop compatible "
                     "files here</li><li>  (.kestrix, .ksxstate)</li></ul>"));
  leftLayout->addWidget(m_FileLabel);
  m_Tree = new ZRDataStructureWidget(left);
  leftLayout->addWidget(m_Tree, 1);
  splitter->addWidget(left);
  splitter->addWidget(m_View);
  auto* right = new QWidget(splitter);
  auto* rightLayout = new QVBoxLayout(right);
  rightLayout->addWidget(new QLabel(QStringLiteral("Series Options"), right));
  rightLayout->addWidget(m_SeriesPage, 1);
  rightLayout->addWidget(new QLabel(QStringLiteral("Properties"), right));
  rightLayout->addWidget(m_PropertiesPage, 1);
  splitter->addWidget(right);
  splitter->setStretchFactor(1, 3);
  splitter->setSizes({280, 620, 400});
  layout->addWidget(splitter);
  setAcceptDrops(true);
  m_View->setActive(true);
  connect(m_View, &VXChartingViewWidget::printOutput, this, &VXChartingWidget::printOutput);
  connect(m_View, &VXChartingViewWidget::currentChartChanged, this, &VXChartingWidget::showCurrentChartPages);
}

VXChartingWidget::~VXChartingWidget()
{
  Release(m_SeriesPage);
  Release(m_PropertiesPage);
}

void VXChartingWidget::showCurrentChartPages()
{
  Release(m_SeriesPage);
  Release(m_PropertiesPage);
  const int index = m_View->tabs()->currentIndex();
  if (VXChartSeriesInputWidget* input = m_View->inputAt(index))
  {
    m_SeriesPage->setWidget(input);
    input->show();
  }
  if (VXChartProperties* properties = m_View->propertiesAt(index))
  {
    m_PropertiesPage->setWidget(properties);
    properties->show();
  }
}

void VXChartingWidget::showHideChartTypeInputs(bool show)
{
  m_SeriesPage->setVisible(show);
}

void VXChartingWidget::setDataStructure(const std::shared_ptr<const zr::core::DataStructure>& dataStructure,
                                        const QString& filePath)
{
  m_DataStructure = dataStructure;
  m_FilePath = filePath;
  m_FileLabel->setText(filePath.isEmpty() ? QStringLiteral("Data of the last pipeline run") : filePath);
  m_View->setDataStructure(dataStructure);
  // The tree only reads the structure; it takes it as the host's model does.
  m_Tree->getDataStructureTreeView()->setActiveDataStructure(
      std::const_pointer_cast<zr::core::DataStructure>(dataStructure));
}

bool VXChartingWidget::setDataStructure(const QString& filePath, bool quiet)
{
  const QFileInfo info(filePath);
  auto loaded = zr::core::KESTRIX::LoadDataStructureFromFile(info.absoluteFilePath().toStdString(), false);
  if (!loaded.valid())
  {
    if (!quiet)
    {
      const QString why = loaded.errors().empty() ? QStringLiteral("the file could not be read")
                                                  : QString::fromStdString(loaded.errors().front().message);
      Q_EMIT printOutput(QStringLiteral("Could not read '%1' for charting: %2").arg(filePath, why));
    }
    return false;
  }
  setDataStructure(std::make_shared<zr::core::DataStructure>(std::move(loaded.value())),
                   info.absoluteFilePath());
  return true;
}

void VXChartingWidget::saveState(nlohmann::json& json) const
{
  if (m_FilePath.isEmpty())
  {
    Q_EMIT printOutput(QStringLiteral(
        "Warning: There is no .kestrix file associated with the current charts. The state saved "
        "from these charts may not load correctly!"));
  }
  json[k_FilePathKey] = m_FilePath.toStdString();
  m_View->saveState(json);
}

bool VXChartingWidget::loadState(const nlohmann::json& json)
{
  if (!json.contains("num_chart_tabs") && !json.contains("split_view_orientation"))
  {
    Q_EMIT printOutput(
        QStringLiteral("Error reading charting state from state file; no chart split views found"));
    return false;
  }
  if (!json.contains(k_FilePathKey))
  {
    Q_EMIT printOutput(QStringLiteral("Error reading charting state from state file; no %1 key found")
                           .arg(QString::fromLatin1(k_FilePathKey)));
    return false;
  }
  const QString filePath = QString::fromStdString(json.at(k_FilePathKey).get<std::string>());
  if (!filePath.isEmpty() && filePath != m_FilePath)
  {
    setDataStructure(filePath);
  }
  try
  {
    m_View->loadState(json);
  }
  catch (const nlohmann::json::exception& error)
  {
    Q_EMIT printOutput(QStringLiteral("Error loading charting state from state file: %1")
                           .arg(QString::fromUtf8(error.what())));
    return false;
  }
  showCurrentChartPages();
  return true;
}

void VXChartingWidget::dragEnterEvent(QDragEnterEvent* event)
{
  if (event->mimeData()->hasFormat(QStringLiteral("text/uri-list")))
  {
    event->acceptProposedAction();
  }
}

void VXChartingWidget::dropEvent(QDropEvent* event)
{
  for (const QUrl& url : event->mimeData()->urls())
  {
    const QString path = url.toLocalFile();
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QStringLiteral("kestrix"))
    {
      setDataStructure(path);
    }
    else if (suffix == QStringLiteral("ksxstate"))
    {
      Q_EMIT loadStateRequested(path);
    }
  }
  event->acceptProposedAction();
}
