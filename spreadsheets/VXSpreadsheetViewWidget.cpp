#include "spreadsheets/VXSpreadsheetViewWidget.h"

#include "spreadsheets/VXBasicSpreadsheetOptions.h"
#include "spreadsheets/VXMultidimSpreadsheetOptions.h"
#include "spreadsheets/VXSpreadsheet.h"

#include "platform/ZRDataStructureModel.h"
#include "platform/ZRStyle.h"
#include "views/VXMoveOverlay.h"
#include "views/VXSplitViewTree.h"

#include <QAction>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QSplitter>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
const char k_ActiveViewKey[] = "active_view";
const char k_TabCountKey[] = "num_spreadsheet_tabs";
const char k_ActiveTabKey[] = "active_spreadsheet_tab";
const char k_SelectorsKey[] = "spreadsheet_type_selectors";
const char k_OptionsKey[] = "spreadsheet_options";
const char k_TypeKey[] = "spreadsheet_type";

QIcon IconOf(VXSpreadsheetViewWidget::SpreadsheetType type)
{
  return ZRStyle::generateCheckableThemeIconFromName(type == VXSpreadsheetViewWidget::SpreadsheetType::Basic
                                                         ? QStringLiteral("BasicSpreadsheet")
                                                         : QStringLiteral("MultidimSpreadsheet"));
}

template<class T>
void ShiftDown(QMap<int, QPointer<T>>& map, int removed)
{
  QMap<int, QPointer<T>> shifted;
  for (auto it = map.cbegin(); it != map.cend(); ++it)
  {
    if (it.key() != removed)
    {
      shifted.insert(it.key() > removed ? it.key() - 1 : it.key(), it.value());
    }
  }
  map = shifted;
}

// Renumbers the entries of a map after the tab bar moved a tab from one index to another.
template<class T>
void Reorder(QMap<int, QPointer<T>>& map, int from, int to)
{
  QMap<int, QPointer<T>> moved;
  for (auto it = map.cbegin(); it != map.cend(); ++it)
  {
    int key = it.key();
    if (key == from)
    {
      key = to;
    }
    else if (from < to && key > from && key <= to)
    {
      --key;
    }
    else if (from > to && key >= to && key < from)
    {
      ++key;
    }
    moved.insert(key, it.value());
  }
  map = moved;
}
} // namespace

VXSpreadsheetViewWidget::VXSpreadsheetViewWidget(QWidget* parent)
    : QFrame(parent)
    , m_TabWidget(new QTabWidget(this))
{
  setObjectName(QStringLiteral("VXSpreadsheetViewWidget"));
  setFrameShape(QFrame::StyledPanel);
  setProperty("Active", false);
  m_TabWidget->setTabsClosable(true);
  m_TabWidget->setMovable(true);
  m_TabWidget->setDocumentMode(true);
  auto* addButton = new QToolButton(m_TabWidget);
  addButton->setObjectName(QStringLiteral("addSpreadsheetTabButton"));
  addButton->setText(QStringLiteral("+"));
  addButton->setToolTip(QStringLiteral("Add a spreadsheet tab"));
  addButton->setAutoRaise(true);
  m_TabWidget->setCornerWidget(addButton, Qt::TopRightCorner);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->addWidget(m_TabWidget);

  m_Overlay = new VXMoveOverlay(this);
  connect(m_Overlay, &VXMoveOverlay::clicked, this, &VXSpreadsheetViewWidget::overlayClicked);

  m_CloseViewAction = new QAction(QStringLiteral("Close View"), this);
  m_ToThisViewAction = new QAction(QStringLiteral("To This View"), this);
  m_NextToAction = new QAction(QStringLiteral("Next To This View"), this);
  m_UnderneathAction = new QAction(QStringLiteral("Underneath This View"), this);
  m_MoveAction = new QAction(QStringLiteral("Move spreadsheet to another view"), this);
  m_AddMenu = new QMenu(QStringLiteral("Add Spreadsheet"), this);
  m_AddMenu->addAction(m_ToThisViewAction);
  m_AddMenu->addAction(m_NextToAction);
  m_AddMenu->addAction(m_UnderneathAction);
  connect(m_CloseViewAction, &QAction::triggered, this, &VXSpreadsheetViewWidget::closeView);
  connect(m_ToThisViewAction, &QAction::triggered, this, &VXSpreadsheetViewWidget::addTabButtonClicked);
  connect(m_NextToAction, &QAction::triggered, this, &VXSpreadsheetViewWidget::splitHorizontally);
  connect(m_UnderneathAction, &QAction::triggered, this, &VXSpreadsheetViewWidget::splitVertically);
  connect(m_MoveAction, &QAction::triggered, this, &VXSpreadsheetViewWidget::moveRequested);

  connect(addButton, &QToolButton::clicked, this, &VXSpreadsheetViewWidget::addTabButtonClicked);
  connect(m_TabWidget, &QTabWidget::tabCloseRequested, this, &VXSpreadsheetViewWidget::closeTab);
  connect(m_TabWidget, &QTabWidget::currentChanged, this, &VXSpreadsheetViewWidget::onCurrentTabChanged);
  connect(m_TabWidget->tabBar(), &QTabBar::tabMoved, this, &VXSpreadsheetViewWidget::onTabMoved);
  m_TabWidget->tabBar()->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(m_TabWidget->tabBar(), &QWidget::customContextMenuRequested, this,
          [this](const QPoint& position)
          { Q_EMIT contextMenuRequested(m_TabWidget->tabBar()->mapTo(this, position)); });
  m_TabWidget->tabBar()->installEventFilter(this);
}

VXSpreadsheetViewWidget::~VXSpreadsheetViewWidget()
{
  // Options panels may be shown in the window's page, outside this widget: they go with their tab.
  for (const QPointer<VXSpreadsheetOptions>& options : m_Options)
  {
    delete options.data();
  }
}

VXSpreadsheet* VXSpreadsheetViewWidget::getActiveSpreadsheet() const
{
  return spreadsheetAt(getActiveTabIndex());
}

VXSpreadsheetOptions* VXSpreadsheetViewWidget::getActiveSpreadsheetOptions() const
{
  return optionsAt(getActiveTabIndex());
}

int VXSpreadsheetViewWidget::getActiveTabIndex() const
{
  return m_TabWidget->currentIndex();
}

int VXSpreadsheetViewWidget::tabCount() const
{
  return m_TabWidget->count();
}

QTabWidget* VXSpreadsheetViewWidget::tabWidget() const
{
  return m_TabWidget;
}

VXSpreadsheetTypeSelector* VXSpreadsheetViewWidget::selectorAt(int tab) const
{
  return m_Selectors.value(tab);
}

VXSpreadsheet* VXSpreadsheetViewWidget::spreadsheetAt(int tab) const
{
  return m_Spreadsheets.value(tab);
}

VXSpreadsheetOptions* VXSpreadsheetViewWidget::optionsAt(int tab) const
{
  return m_Options.value(tab);
}

int VXSpreadsheetViewWidget::tabAt(const QPoint& position) const
{
  const QTabBar* bar = m_TabWidget->tabBar();
  return bar->tabAt(bar->mapFrom(this, position));
}

bool VXSpreadsheetViewWidget::isActive() const
{
  return m_Active;
}

void VXSpreadsheetViewWidget::setActive(bool active)
{
  m_Active = active;
  setProperty("Active", active);
  style()->unpolish(this);
  style()->polish(this);
  update();
}

bool VXSpreadsheetViewWidget::isEmpty() const
{
  return std::none_of(m_Spreadsheets.cbegin(), m_Spreadsheets.cend(),
                      [](const QPointer<VXSpreadsheet>& sheet) { return !sheet.isNull(); });
}

bool VXSpreadsheetViewWidget::isClosable() const
{
  const QSplitter* root = VXSplitViewTree::FindRoot(this);
  return root != nullptr && VXSplitViewTree::Leaves(root).size() > 1;
}

void VXSpreadsheetViewWidget::updateClosable()
{
  m_CloseViewAction->setEnabled(isClosable());
}

QAction* VXSpreadsheetViewWidget::closeViewAction() const
{
  return m_CloseViewAction;
}

QAction* VXSpreadsheetViewWidget::moveSpreadsheetAction() const
{
  return m_MoveAction;
}

QMenu* VXSpreadsheetViewWidget::addSpreadsheetMenu() const
{
  return m_AddMenu;
}

void VXSpreadsheetViewWidget::closeView()
{
  QSplitter* root = VXSplitViewTree::FindRoot(this);
  if (!isClosable() || !VXSplitViewTree::CloseLeaf(root, this))
  {
    return;
  }
  Q_EMIT viewWidgetClosed();
}

void VXSpreadsheetViewWidget::closeTab(int index)
{
  if (index < 0 || index >= m_TabWidget->count())
  {
    return;
  }
  const QMessageBox::StandardButton answer =
      QMessageBox::warning(this, QStringLiteral("Close Spreadsheet View"),
                           QStringLiteral("Are you sure you want to close this tab?"),
                           QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
  if (answer != QMessageBox::Yes)
  {
    return;
  }
  removeTab(index);
}

void VXSpreadsheetViewWidget::removeTab(int index)
{
  if (index < 0 || index >= m_TabWidget->count())
  {
    return;
  }
  if (VXSpreadsheetTypeSelector* selector = m_Selectors.value(index))
  {
    selector->deleteLater();
  }
  if (VXSpreadsheetOptions* options = m_Options.value(index))
  {
    releaseSpreadsheetIndex(options->getDefaultSpreadsheetNumber());
    options->hide();
    options->deleteLater();
  }
  if (VXSpreadsheet* spreadsheet = m_Spreadsheets.value(index))
  {
    spreadsheet->deleteLater();
  }
  {
    const QSignalBlocker blocker(m_TabWidget);
    m_TabWidget->removeTab(index);
  }
  shiftMapsDown(index);
  if (m_TabWidget->count() == 0)
  {
    updateClosable();
    if (m_CloseViewAction->isEnabled())
    {
      closeView();
      return;
    }
    addTabButtonClicked();
  }
  Q_EMIT currentPanelChanged();
}

void VXSpreadsheetViewWidget::shiftMapsDown(int removed)
{
  ShiftDown(m_Selectors, removed);
  ShiftDown(m_Spreadsheets, removed);
  ShiftDown(m_Options, removed);
}

VXSpreadsheetTypeSelector* VXSpreadsheetViewWidget::addSelectorTab()
{
  const QSignalBlocker blocker(m_TabWidget);
  auto* selector = new VXSpreadsheetTypeSelector();
  const int index = m_TabWidget->count();
  m_Selectors.insert(index, selector);
  selector->setDataStructure(m_Model);
  connect(selector, &VXSpreadsheetTypeSelector::spreadsheetTypeSelected, this,
          &VXSpreadsheetViewWidget::onSpreadsheetTypeSelected);
  connect(selector, &VXSpreadsheetTypeSelector::printOutput, this, &VXSpreadsheetViewWidget::printOutput);
  m_TabWidget->addTab(selector, QString());
  m_TabWidget->setCurrentIndex(index);
  return selector;
}

void VXSpreadsheetViewWidget::addTabButtonClicked()
{
  addSelectorTab();
  Q_EMIT mousePressed();
  Q_EMIT currentPanelChanged();
}

void VXSpreadsheetViewWidget::onCurrentTabChanged(int)
{
  Q_EMIT currentPanelChanged();
}

void VXSpreadsheetViewWidget::onTabMoved(int from, int to)
{
  Reorder(m_Selectors, from, to);
  Reorder(m_Spreadsheets, from, to);
  Reorder(m_Options, from, to);
}

void VXSpreadsheetViewWidget::clearSpreadsheets()
{
  const QSignalBlocker blocker(m_TabWidget);
  while (m_TabWidget->count() > 0)
  {
    const int last = m_TabWidget->count() - 1;
    if (VXSpreadsheetOptions* options = m_Options.value(last))
    {
      options->hide();
      options->deleteLater();
    }
    if (QWidget* page = m_TabWidget->widget(last))
    {
      page->deleteLater();
    }
    m_TabWidget->removeTab(last);
  }
  m_Selectors.clear();
  m_Spreadsheets.clear();
  m_Options.clear();
  m_UsedNumbers.clear();
}

unsigned long VXSpreadsheetViewWidget::generateNextSpreadsheetIndex()
{
  unsigned long next = 1;
  for (unsigned long used : m_UsedNumbers)
  {
    if (used == next)
    {
      ++next;
    }
    else if (used > next)
    {
      break;
    }
  }
  m_UsedNumbers.insert(std::lower_bound(m_UsedNumbers.begin(), m_UsedNumbers.end(), next), next);
  return next;
}

const std::vector<unsigned long>& VXSpreadsheetViewWidget::usedSpreadsheetNumbers() const
{
  return m_UsedNumbers;
}

void VXSpreadsheetViewWidget::releaseSpreadsheetIndex(unsigned long number)
{
  const auto it = std::find(m_UsedNumbers.begin(), m_UsedNumbers.end(), number);
  if (it != m_UsedNumbers.end())
  {
    m_UsedNumbers.erase(it);
  }
}

void VXSpreadsheetViewWidget::connectSpreadsheetSignals(VXSpreadsheet* spreadsheet,
                                                        VXSpreadsheetOptions* options)
{
  connect(spreadsheet, &VXSpreadsheet::mousePressed, this, &VXSpreadsheetViewWidget::mousePressed);
  connect(spreadsheet, &VXSpreadsheet::printOutput, this, &VXSpreadsheetViewWidget::printOutput);
  connect(options, &VXSpreadsheetOptions::printOutput, this, &VXSpreadsheetViewWidget::printOutput);
}

VXSpreadsheetOptions* VXSpreadsheetViewWidget::addSpreadsheetTab(int index, SpreadsheetType type,
                                                                 unsigned long number)
{
  auto* spreadsheet = new VXSpreadsheet();
  spreadsheet->setContextMenuPolicy(Qt::CustomContextMenu);
  VXSpreadsheetOptions* options = nullptr;
  if (type == SpreadsheetType::Multidimensional)
  {
    options = new VXMultidimSpreadsheetOptions(spreadsheet, this);
  }
  else
  {
    options = new VXBasicSpreadsheetOptions(spreadsheet, this);
  }
  options->hide();
  options->setDefaultSpreadsheetNumber(number);
  m_Spreadsheets.insert(index, spreadsheet);
  m_Options.insert(index, options);
  connectSpreadsheetSignals(spreadsheet, options);
  m_TabWidget->insertTab(index, spreadsheet, IconOf(type), QString());
  m_TabWidget->setTabToolTip(index, options->getSpreadsheetName());
  options->setDataStructure(m_DataStructureId, m_Model ? m_Model->getDataStructure() : nullptr);
  Q_EMIT spreadsheetCreated(spreadsheet);
  return options;
}

void VXSpreadsheetViewWidget::onSpreadsheetTypeSelected(const SpreadsheetType& type,
                                                        std::vector<zr::core::DataPath> paths)
{
  const int index = std::max(0, m_TabWidget->currentIndex());
  VXSpreadsheetOptions* options = nullptr;
  {
    const QSignalBlocker blocker(m_TabWidget);
    if (VXSpreadsheetTypeSelector* selector = m_Selectors.take(index))
    {
      m_TabWidget->removeTab(m_TabWidget->indexOf(selector));
      selector->hide();
      selector->setParent(nullptr);
      selector->deleteLater();
    }
    options = addSpreadsheetTab(index, type, generateNextSpreadsheetIndex());
    m_TabWidget->setCurrentIndex(index);
  }
  if (!paths.empty())
  {
    options->addDataArrays(paths);
  }
  Q_EMIT mousePressed();
  Q_EMIT currentPanelChanged();
}

void VXSpreadsheetViewWidget::moveSpreadsheet(VXSpreadsheetViewWidget* source, int tab)
{
  if (source == nullptr || source == this || tab < 0 || tab >= source->m_TabWidget->count())
  {
    return;
  }
  QPointer<VXSpreadsheet> spreadsheet = source->m_Spreadsheets.value(tab);
  QPointer<VXSpreadsheetOptions> options = source->m_Options.value(tab);
  if (spreadsheet.isNull() || options.isNull())
  {
    return;
  }
  disconnect(spreadsheet, nullptr, source, nullptr);
  disconnect(options, nullptr, source, nullptr);
  const QIcon icon = source->m_TabWidget->tabIcon(tab);
  {
    const QSignalBlocker blocker(source->m_TabWidget);
    source->m_TabWidget->removeTab(tab);
  }
  source->m_Selectors.remove(tab);
  source->m_Spreadsheets.remove(tab);
  source->m_Options.remove(tab);
  source->shiftMapsDown(tab);
  source->releaseSpreadsheetIndex(options->getDefaultSpreadsheetNumber());
  source->clearSourceWidget();
  source->replaceSpreadsheetToolTip(options, options->getSpreadsheetName());
  if (source->m_TabWidget->count() == 0)
  {
    source->updateClosable();
    if (source->isClosable())
    {
      source->closeView();
    }
    else
    {
      source->addSelectorTab();
    }
  }
  Q_EMIT source->currentPanelChanged();

  {
    const QSignalBlocker blocker(m_TabWidget);
    spreadsheet->setParent(this);
    options->hide();
    options->setParent(this);
    const int index = m_TabWidget->count();
    m_Spreadsheets.insert(index, spreadsheet);
    m_Options.insert(index, options);
    // The number travels with the spreadsheet; it is marked as used here.
    const unsigned long number = options->getDefaultSpreadsheetNumber();
    m_UsedNumbers.insert(std::lower_bound(m_UsedNumbers.begin(), m_UsedNumbers.end(), number), number);
    m_TabWidget->addTab(spreadsheet, icon, QString());
    m_TabWidget->setTabToolTip(index, options->getSpreadsheetName());
    connectSpreadsheetSignals(spreadsheet, options);
    m_TabWidget->setCurrentIndex(index);
  }
  Q_EMIT mousePressed();
  Q_EMIT currentPanelChanged();
}

void VXSpreadsheetViewWidget::replaceSpreadsheetToolTip(QPointer<VXSpreadsheetOptions> options,
                                                        QString toolTip)
{
  for (auto it = m_Options.cbegin(); it != m_Options.cend(); ++it)
  {
    if (it.value() == options && it.key() < m_TabWidget->count())
    {
      m_TabWidget->setTabToolTip(it.key(), toolTip);
    }
  }
}

void VXSpreadsheetViewWidget::setDataStructure(const QString& id, QPointer<ZRDataStructureModel> model)
{
  m_DataStructureId = id;
  m_Model = model;
  for (const QPointer<VXSpreadsheetTypeSelector>& selector : m_Selectors)
  {
    if (selector)
    {
      selector->setDataStructure(model);
    }
  }
  for (const QPointer<VXSpreadsheetOptions>& options : m_Options)
  {
    if (options)
    {
      options->setDataStructure(id, model ? model->getDataStructure() : nullptr);
    }
  }
}

void VXSpreadsheetViewWidget::setKestrixFilePath(const QString& path)
{
  m_KestrixFilePath = path;
}

QString VXSpreadsheetViewWidget::getKestrixFilePath() const
{
  return m_KestrixFilePath;
}

ZRDataStructureModel* VXSpreadsheetViewWidget::getDataStructureModel() const
{
  return m_Model;
}

VXSpreadsheetViewWidget* VXSpreadsheetViewWidget::newInstance() const
{
  auto* view = new VXSpreadsheetViewWidget();
  view->setDataStructure(m_DataStructureId, m_Model);
  view->setKestrixFilePath(m_KestrixFilePath);
  view->addSelectorTab();
  return view;
}

QSplitter* VXSpreadsheetViewWidget::splitWidget(Qt::Orientation orientation)
{
  VXSpreadsheetViewWidget* view = newInstance();
  QSplitter* splitter = VXSplitViewTree::SplitLeaf(this, view, orientation);
  if (splitter == nullptr)
  {
    delete view;
    return nullptr;
  }
  Q_EMIT viewWidgetCreated(view);
  return splitter;
}

void VXSpreadsheetViewWidget::splitVertically()
{
  splitWidget(Qt::Vertical);
}

void VXSpreadsheetViewWidget::splitHorizontally()
{
  splitWidget(Qt::Horizontal);
}

VXSpreadsheetViewWidget* VXSpreadsheetViewWidget::FindViewWidget(QSplitter* splitter)
{
  return VXSplitViewTree::FindViewWidget<VXSpreadsheetViewWidget>(splitter);
}

void VXSpreadsheetViewWidget::setOverlayHintVisibility(bool visible)
{
  m_Overlay->setGeometry(rect());
  m_Overlay->setVisible(visible);
  if (visible)
  {
    m_Overlay->raise();
  }
}

bool VXSpreadsheetViewWidget::isOverlayVisible() const
{
  return m_Overlay->isVisible();
}

void VXSpreadsheetViewWidget::setAsSourceWidget()
{
  m_SourceWidget = true;
}

void VXSpreadsheetViewWidget::setSourceTab(const QPoint& position)
{
  setSourceTab(tabAt(position));
}

void VXSpreadsheetViewWidget::setSourceTab(int tab)
{
  m_SourceTab = tab;
}

int VXSpreadsheetViewWidget::sourceTab() const
{
  return m_SourceTab;
}

bool VXSpreadsheetViewWidget::isSourceWidget() const
{
  return m_SourceWidget;
}

void VXSpreadsheetViewWidget::clearSourceWidget()
{
  m_SourceWidget = false;
  m_SourceTab = -1;
}

bool VXSpreadsheetViewWidget::eventFilter(QObject* watched, QEvent* event)
{
  if (watched == m_TabWidget->tabBar() && event->type() == QEvent::MouseButtonPress)
  {
    Q_EMIT mousePressed();
  }
  return QFrame::eventFilter(watched, event);
}

void VXSpreadsheetViewWidget::mousePressEvent(QMouseEvent* event)
{
  Q_EMIT mousePressed();
  QFrame::mousePressEvent(event);
}

void VXSpreadsheetViewWidget::saveState(nlohmann::json& json) const
{
  json[k_ActiveViewKey] = m_Active;
  json[k_TabCountKey] = m_TabWidget->count();
  json[k_ActiveTabKey] = m_TabWidget->currentIndex();
  nlohmann::json selectors = nlohmann::json::object();
  nlohmann::json panels = nlohmann::json::object();
  for (int tab = 0; tab < m_TabWidget->count(); ++tab)
  {
    const std::string key = std::to_string(tab);
    if (VXSpreadsheetTypeSelector* selector = m_Selectors.value(tab))
    {
      nlohmann::json selectorJson = nlohmann::json::object();
      selector->saveState(selectorJson);
      selectors[key] = selectorJson;
    }
    else if (VXSpreadsheetOptions* options = m_Options.value(tab))
    {
      nlohmann::json panelJson = nlohmann::json::object();
      panelJson[k_TypeKey] = options->getSpreadsheetType();
      options->saveState(panelJson);
      panels[key] = panelJson;
    }
  }
  json[k_SelectorsKey] = selectors;
  json[k_OptionsKey] = panels;
}

void VXSpreadsheetViewWidget::loadState(const nlohmann::json& json)
{
  clearSpreadsheets();
  const QSignalBlocker blocker(m_TabWidget);
  const int count = json.contains(k_TabCountKey) && json[k_TabCountKey].is_number_integer()
                        ? json[k_TabCountKey].get<int>()
                        : 0;
  const nlohmann::json selectors = json.contains(k_SelectorsKey) && json[k_SelectorsKey].is_object()
                                       ? json[k_SelectorsKey]
                                       : nlohmann::json::object();
  const nlohmann::json panels = json.contains(k_OptionsKey) && json[k_OptionsKey].is_object()
                                    ? json[k_OptionsKey]
                                    : nlohmann::json::object();
  for (int tab = 0; tab < count; ++tab)
  {
    const std::string key = std::to_string(tab);
    const int index = m_TabWidget->count();
    if (panels.contains(key) && panels[key].is_object())
    {
      const nlohmann::json& panel = panels[key];
      const SpreadsheetType type = panel.contains(k_TypeKey) && panel[k_TypeKey].is_number_integer() &&
                                           panel[k_TypeKey].get<int>() == 1
                                       ? SpreadsheetType::Multidimensional
                                       : SpreadsheetType::Basic;
      VXSpreadsheetOptions* options = addSpreadsheetTab(index, type, 0);
      options->loadState(panel);
      unsigned long number = options->getDefaultSpreadsheetNumber();
      if (number == 0 || std::binary_search(m_UsedNumbers.begin(), m_UsedNumbers.end(), number))
      {
        number = generateNextSpreadsheetIndex();
        options->setDefaultSpreadsheetNumber(number);
      }
      else
      {
        m_UsedNumbers.insert(std::lower_bound(m_UsedNumbers.begin(), m_UsedNumbers.end(), number), number);
      }
      m_TabWidget->setTabToolTip(index, options->getSpreadsheetName());
    }
    else
    {
      VXSpreadsheetTypeSelector* selector = addSelectorTab();
      if (selectors.contains(key) && selectors[key].is_object())
      {
        selector->loadState(selectors[key]);
      }
    }
  }
  if (m_TabWidget->count() == 0)
  {
    addSelectorTab();
  }
  if (json.contains(k_ActiveTabKey) && json[k_ActiveTabKey].is_number_integer())
  {
    m_TabWidget->setCurrentIndex(std::clamp(json[k_ActiveTabKey].get<int>(), 0, m_TabWidget->count() - 1));
  }
  if (json.contains(k_ActiveViewKey) && json[k_ActiveViewKey].is_boolean())
  {
    m_Active = json[k_ActiveViewKey].get<bool>();
  }
}
