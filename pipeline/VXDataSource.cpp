#include "pipeline/VXDataSource.h"

#include "pipeline/VXDatasetInfoWidget.h"

#include "data_bridge/ZRVtkObjectName.h"
#include "platform/ColorPresetsDialog.h"
#include "platform/QtZRSettings.h"
#include "platform/ZRColorButton.h"
#include "platform/ZRIconPushButton.h"
#include "platform/ZRPreferences.h"
#include "platform/ZRSectionHeader.h"
#include "platform/ZRSettingsKeys.h"
#include "platform/ZRStyle.h"

#include <vtkAbstractArray.h>
#include <vtkCellData.h>
#include <vtkFloatArray.h>
#include <vtkPointData.h>
#include <vtkTrivialProducer.h>
#include <vtkUnsignedCharArray.h>

#include <nlohmann/json.hpp>

#include <QApplication>
#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QMessageBox>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace
{
const QString k_DefaultBaseName = QStringLiteral("Unnamed Geometry");

// State-file keys.
constexpr const char* k_CoreObjectName = "core_object_name";
constexpr const char* k_ImportedDataPath = "imported_data_path";
constexpr const char* k_SolidColorR = "data_source_solid_color_r";
constexpr const char* k_SolidColorG = "data_source_solid_color_g";
constexpr const char* k_SolidColorB = "data_source_solid_color_b";
constexpr const char* k_NanColorR = "data_source_nan_color_r";
constexpr const char* k_NanColorG = "data_source_nan_color_g";
constexpr const char* k_NanColorB = "data_source_nan_color_b";
constexpr const char* k_UsingDefaultPreset = "data_source_using_default_preset";
constexpr const char* k_CurrentPreset = "current_preset";
constexpr const char* k_ColorMapInverted = "data_source_color_map_inverted";
constexpr const char* k_Visibility = "data_source_visibility";

// User-default keys in the "RepresentationSettings" group.
const QString k_PrefSolidR = QStringLiteral("solid_color_r");
const QString k_PrefSolidG = QStringLiteral("solid_color_g");
const QString k_PrefSolidB = QStringLiteral("solid_color_b");
const QString k_PrefNanR = QStringLiteral("nan_color_r");
const QString k_PrefNanG = QStringLiteral("nan_color_g");
const QString k_PrefNanB = QStringLiteral("nan_color_b");
const QString k_PrefColorPreset = QStringLiteral("color_preset");
const QString k_PrefUsingDefaultPreset = QStringLiteral("using_default_preset");
const QString k_PrefColorMapInverted = QStringLiteral("color_map_inverted");

const QColor k_BuiltInSolidColor(255, 255, 255);
const QColor k_BuiltInNanColor(255, 0, 0);

QString htmlToolTip(const QString& text)
{
  return QStringLiteral("<html><head/><body><p>%1</p></body></html>").arg(text);
}

void openRepresentationSettings(QtZRSettings& settings)
{
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_RepresentationSettings);
}

QColor readColor(const QtZRSettings& settings, const QString& r, const QString& g, const QString& b,
                 QColor color)
{
  if (settings.contains(r))
  {
    color.setRed(settings.value(r).toInt());
  }
  if (settings.contains(g))
  {
    color.setGreen(settings.value(g).toInt());
  }
  if (settings.contains(b))
  {
    color.setBlue(settings.value(b).toInt());
  }
  return color;
}

QColor colorFromJson(const nlohmann::json& json, const char* r, const char* g, const char* b, QColor color)
{
  if (json.contains(r))
  {
    color.setRed(json.at(r).get<int>());
  }
  if (json.contains(g))
  {
    color.setGreen(json.at(g).get<int>());
  }
  if (json.contains(b))
  {
    color.setBlue(json.at(b).get<int>());
  }
  return color;
}
} // namespace

VXDataSource::VXDataSource(QObject* parent)
    : VXCoreObject(parent)
    , m_Producer(vtkSmartPointer<vtkTrivialProducer>::New())
    , m_SolidColor(k_BuiltInSolidColor)
    , m_NanColor(k_BuiltInNanColor)
    , m_CurrentPreset(ZRPreferences::Instance()->getDefaultColorPreset())
{
  m_BaseName = k_DefaultBaseName;
  readSettings();
}

VXDataSource::~VXDataSource()
{
  delete m_DatasetInfoWidget.data();
}

QString VXDataSource::humanTypeName() const
{
  return QStringLiteral("Data Source");
}

QString VXDataSource::typeName() const
{
  return QStringLiteral("VXDataSource");
}

QIcon VXDataSource::getIcon() const
{
  return ZRStyle::generateThemeIconFromName(QStringLiteral("DataSource"));
}

vtkAlgorithmOutput* VXDataSource::outputPort() const
{
  return m_Producer->GetOutputPort();
}

vtkDataSet* VXDataSource::getOutput() const
{
  return m_WrappedGeometry ? m_WrappedGeometry->m_DataSet.Get() : nullptr;
}

zr::core::DataPath VXDataSource::importedDataPath() const
{
  return m_WrappedGeometry ? m_WrappedGeometry->m_DataPath : zr::core::DataPath();
}

void VXDataSource::takeNameFromDataSet()
{
  std::string objectName;
  if (vtkDataSet* dataSet = getOutput())
  {
    objectName = ZRVtk::GetObjectName(dataSet);
  }
  else if (m_WrappedGeometry && !m_WrappedGeometry->m_DataPath.empty())
  {
    // A geometry that could not be wrapped still goes by its own name in the tree.
    objectName = m_WrappedGeometry->m_DataPath.getTargetName();
  }
  if (!objectName.empty())
  {
    m_BaseName = QString::fromStdString(objectName);
    updatePath();
  }
}

void VXDataSource::setWrappedGeometry(std::shared_ptr<CV::VtkBridge::WrappedGeometry> wrappedGeometry)
{
  const zr::core::DataPath path = wrappedGeometry ? wrappedGeometry->m_DataPath : zr::core::DataPath();
  m_WrappedGeometry = std::move(wrappedGeometry);
  takeNameFromDataSet();
  if (m_WrappedGeometry)
  {
    m_WrappedGeometry->m_DataPath = path;
  }
  // Same producer, new dataset: connected filters and data views update from the same port.
  m_Producer->SetOutput(getOutput());
  updateDataSetInfoWidget();
}

void VXDataSource::setDataSet(vtkSmartPointer<vtkDataSet> dataSet)
{
  if (!m_WrappedGeometry)
  {
    m_WrappedGeometry = std::make_shared<CV::VtkBridge::WrappedGeometry>();
  }
  m_WrappedGeometry->m_DataSet = std::move(dataSet);
  takeNameFromDataSet();
  m_Producer->SetOutput(getOutput());
  updateDataSetInfoWidget();
}

void VXDataSource::setBaseName(const QString& name)
{
  VXCoreObject::setBaseName(name);
  if (vtkDataSet* dataSet = getOutput())
  {
    ZRVtk::SetObjectName(dataSet, name.toStdString());
  }
}

void VXDataSource::setVisibility(bool visible)
{
  if (isVisible())
  {
    if (!visible)
    {
      Q_EMIT requestClear();
      VXCoreObject::setVisibility(false);
      return;
    }
    VXCoreObject::setVisibility(true);
  }
  else
  {
    VXCoreObject::setVisibility(visible);
    if (!visible)
    {
      return;
    }
  }
  Q_EMIT requestUpdate(pathName(), getOutput());
}

QList<QPair<QIcon, QString>> VXDataSource::getImportedArrayNames() const
{
  QList<QPair<QIcon, QString>> names;
  vtkDataSet* dataSet = getOutput();
  if (dataSet == nullptr)
  {
    return names;
  }
  const QIcon pointIcon = ZRStyle::generateThemeIconFromName(QStringLiteral("VertexGeometry"));
  const QIcon cellIcon = ZRStyle::generateThemeIconFromName(QStringLiteral("Cells"));
  auto collect = [&names](vtkDataSetAttributes* attributes, const QIcon& icon)
  {
    for (int i = 0; i < attributes->GetNumberOfArrays(); ++i)
    {
      vtkAbstractArray* array = attributes->GetAbstractArray(i);
      const char* arrayName = array != nullptr ? array->GetName() : nullptr;
      names.append({icon, arrayName != nullptr ? QString::fromUtf8(arrayName) : QString()});
    }
  };
  collect(dataSet->GetPointData(), pointIcon);
  collect(dataSet->GetCellData(), cellIcon);
  return names;
}

QStringList VXDataSource::getComponentNames(const QString& arrayName) const
{
  vtkDataSet* dataSet = getOutput();
  if (dataSet == nullptr)
  {
    return {};
  }
  const QByteArray name = arrayName.toUtf8();
  vtkAbstractArray* array = dataSet->GetPointData()->GetAbstractArray(name.constData());
  if (array == nullptr)
  {
    array = dataSet->GetCellData()->GetAbstractArray(name.constData());
  }
  if (array == nullptr)
  {
    return {};
  }
  const int numComponents = array->GetNumberOfComponents();
  if (numComponents == 3 && array->IsA("vtkUnsignedCharArray"))
  {
    return {QStringLiteral("Magnitude"), QStringLiteral("R"), QStringLiteral("G"), QStringLiteral("B")};
  }
  if (numComponents == 3 && array->IsA("vtkFloatArray"))
  {
    return {QStringLiteral("Magnitude"), QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z")};
  }
  QStringList names;
  if (numComponents >= 2)
  {
    names.append(QStringLiteral("Magnitude"));
  }
  for (int comp = 0; comp < numComponents; ++comp)
  {
    names.append(QStringLiteral("Comp %1").arg(comp));
  }
  return names;
}

void VXDataSource::setSolidColor(const QColor& color)
{
  m_SolidColor = color;
  syncColorPanel();
  Q_EMIT solidColorChanged(color);
}

void VXDataSource::setNanColor(const QColor& color)
{
  m_NanColor = color;
  syncColorPanel();
  Q_EMIT nanColorChanged(color);
}

void VXDataSource::setRestoreDefaultPreset()
{
  m_UsingDefaultPreset = true;
  m_CurrentPreset = ZRPreferences::Instance()->getDefaultColorPreset();
  syncColorPanel();
  Q_EMIT restoreDefaultPresetColors();
}

void VXDataSource::setColorsInverted(bool inverted)
{
  m_Inverted = inverted;
  syncColorPanel();
  Q_EMIT invertColorMap(inverted);
}

void VXDataSource::applyPreset(const ColorPreset& preset, const QPixmap& /*pixmap*/)
{
  m_CurrentPreset = preset;
  m_UsingDefaultPreset = false;
  syncColorPanel();
  Q_EMIT loadPresetColors(preset);
  // A new preset always starts uninverted.
  setColorsInverted(false);
}

void VXDataSource::syncColorPanel()
{
  if (!m_SolidColorButton.isNull())
  {
    m_SolidColorButton->setColor(m_SolidColor);
  }
  if (!m_InvertColorButton.isNull())
  {
    // Blocked: the button reports user clicks only, or a sync would push the value back.
    const QSignalBlocker blocker(m_InvertColorButton.data());
    m_InvertColorButton->setChecked(m_Inverted);
  }
  if (!m_ColorPresetsDialog.isNull())
  {
    m_ColorPresetsDialog->setNanColor(m_NanColor, false);
    m_ColorPresetsDialog->selectPreset(QString::fromStdString(m_CurrentPreset.m_Name));
  }
}

ColorPresetsDialog* VXDataSource::colorPresetsDialog() const
{
  return m_ColorPresetsDialog.data();
}

void VXDataSource::showColorPresetsDialog()
{
  if (m_ColorPresetsDialog.isNull())
  {
    return;
  }
  syncColorPanel();
  m_ColorPresetsDialog->show();
  m_ColorPresetsDialog->raise();
  m_ColorPresetsDialog->activateWindow();
}

void VXDataSource::triggerColorSettingsChange()
{
  if (m_UsingDefaultPreset)
  {
    Q_EMIT restoreDefaultPresetColors();
  }
  else
  {
    Q_EMIT loadPresetColors(m_CurrentPreset);
  }
  Q_EMIT solidColorChanged(m_SolidColor);
  Q_EMIT nanColorChanged(m_NanColor);
  Q_EMIT invertColorMap(m_Inverted);
}

void VXDataSource::initializeDataSetInfoWidget()
{
  if (m_DatasetInfoWidget.isNull())
  {
    m_DatasetInfoWidget = new VXDatasetInfoWidget();
    connect(this, &VXCoreObject::pathChanged, m_DatasetInfoWidget.data(), &VXDatasetInfoWidget::setItemPath);
  }
  m_DatasetInfoWidget->setItemPath(pathName());
  m_DatasetInfoWidget->setDataSet(getOutput());
}

VXDatasetInfoWidget* VXDataSource::getDataSetInfoWidget()
{
  initializeDataSetInfoWidget();
  updateDataSetInfoWidget();
  return m_DatasetInfoWidget.data();
}

void VXDataSource::updateDataSetInfoWidget()
{
  if (m_DatasetInfoWidget.isNull())
  {
    return;
  }
  m_DatasetInfoWidget->setItemPath(pathName());
  m_DatasetInfoWidget->setDataSet(getOutput());
  m_DatasetInfoWidget->updateInfo();
}

void VXDataSource::showDataSetInfoWidget()
{
  getDataSetInfoWidget()->show();
}

void VXDataSource::receivePipelineOutputReloaded()
{
  // Filters and data views under the source react for themselves.
}

void VXDataSource::addViewWidgetCopy(VXAbstractViewWidget* /*sourceViewWidget*/,
                                     VXAbstractViewWidget* /*splitViewWidget*/)
{
}

nlohmann::json VXDataSource::colorSettingsJson() const
{
  return {{k_SolidColorR, m_SolidColor.red()},
          {k_SolidColorG, m_SolidColor.green()},
          {k_SolidColorB, m_SolidColor.blue()},
          {k_NanColorR, m_NanColor.red()},
          {k_NanColorG, m_NanColor.green()},
          {k_NanColorB, m_NanColor.blue()},
          {k_UsingDefaultPreset, m_UsingDefaultPreset},
          {k_CurrentPreset, m_CurrentPreset.toJson()},
          {k_ColorMapInverted, m_Inverted}};
}

void VXDataSource::applyColorSettingsJson(const nlohmann::json& json)
{
  m_SolidColor = colorFromJson(json, k_SolidColorR, k_SolidColorG, k_SolidColorB, m_SolidColor);
  m_NanColor = colorFromJson(json, k_NanColorR, k_NanColorG, k_NanColorB, m_NanColor);
  if (json.contains(k_UsingDefaultPreset))
  {
    m_UsingDefaultPreset = json.at(k_UsingDefaultPreset).get<bool>();
  }
  if (json.contains(k_CurrentPreset))
  {
    m_CurrentPreset = ColorPreset(json.at(k_CurrentPreset));
  }
  if (json.contains(k_ColorMapInverted))
  {
    m_Inverted = json.at(k_ColorMapInverted).get<bool>();
  }
  syncColorPanel();
}

void VXDataSource::write(nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes) const
{
  nlohmann::json views;
  VXCoreObject::write(views, viewIndexes);
  json = colorSettingsJson();
  json[k_CoreObjectName] = m_BaseName.toStdString();
  json[k_ImportedDataPath] = importedDataPath().toString("/");
  json[k_Visibility] = isVisible();
  json["core_object_views"] = views;
}

void VXDataSource::read(const nlohmann::json& json, const QMap<VXAbstractViewWidget*, int>& viewIndexes)
{
  if (json.contains("core_object_views"))
  {
    VXCoreObject::read(json.at("core_object_views"), viewIndexes);
  }
  if (json.contains(k_CoreObjectName))
  {
    setBaseName(QString::fromStdString(json.at(k_CoreObjectName).get<std::string>()));
  }
  if (json.contains(k_ImportedDataPath))
  {
    const auto path = zr::core::DataPath::FromString(json.at(k_ImportedDataPath).get<std::string>(), '/');
    if (path.has_value())
    {
      if (!m_WrappedGeometry)
      {
        m_WrappedGeometry = std::make_shared<CV::VtkBridge::WrappedGeometry>();
      }
      m_WrappedGeometry->m_DataPath = *path;
    }
  }
  applyColorSettingsJson(json);
  // The flag is the visibility in the view that was active at the save. The per-view record, where
  // there is one, is more precise: the flag then applies only to a view the record names.
  const bool perViewRecord = json.contains("core_object_views") && json.at("core_object_views").is_array();
  if (json.contains(k_Visibility) && (!perViewRecord || m_ViewMap.contains(activeView())))
  {
    setVisibility(json.at(k_Visibility).get<bool>());
  }
}

void VXDataSource::readSettings()
{
  QtZRSettings settings;
  openRepresentationSettings(settings);
  m_SolidColor = readColor(settings, k_PrefSolidR, k_PrefSolidG, k_PrefSolidB, m_SolidColor);
  m_NanColor = readColor(settings, k_PrefNanR, k_PrefNanG, k_PrefNanB, m_NanColor);
  if (settings.contains(k_PrefColorPreset))
  {
    try
    {
      m_CurrentPreset =
          ColorPreset(nlohmann::json::parse(settings.value(k_PrefColorPreset).toString().toStdString()));
    }
    catch (const nlohmann::json::exception&)
    {
      // A damaged stored preset leaves the default one in place.
    }
  }
  if (settings.contains(k_PrefUsingDefaultPreset))
  {
    m_UsingDefaultPreset = settings.value(k_PrefUsingDefaultPreset).toBool();
  }
  if (settings.contains(k_PrefColorMapInverted))
  {
    m_Inverted = settings.value(k_PrefColorMapInverted).toBool();
  }
}

void VXDataSource::storeSettings() const
{
  QtZRSettings settings;
  openRepresentationSettings(settings);
  settings.setValue(k_PrefSolidR, m_SolidColor.red());
  settings.setValue(k_PrefSolidG, m_SolidColor.green());
  settings.setValue(k_PrefSolidB, m_SolidColor.blue());
  settings.setValue(k_PrefNanR, m_NanColor.red());
  settings.setValue(k_PrefNanG, m_NanColor.green());
  settings.setValue(k_PrefNanB, m_NanColor.blue());
  settings.setValue(k_PrefColorPreset, QString::fromStdString(m_CurrentPreset.toJsonString(2)));
  settings.setValue(k_PrefUsingDefaultPreset, m_UsingDefaultPreset);
  settings.setValue(k_PrefColorMapInverted, m_Inverted);
  settings.sync();
}

bool VXDataSource::writeSettings()
{
  const auto answer = QMessageBox::question(
      nullptr, QStringLiteral("Save Default Data Source Settings"),
      QStringLiteral(
          "Do you want to save the current data source setting values as the default values for all "
          "data sources?"));
  if (answer != QMessageBox::Yes)
  {
    return false;
  }
  storeSettings();
  return true;
}

void VXDataSource::copyActiveSettings()
{
  QGuiApplication::clipboard()->setText(QString::fromStdString(colorSettingsJson().dump(2)));
}

void VXDataSource::pasteToActiveSettings()
{
  const nlohmann::json json =
      nlohmann::json::parse(QGuiApplication::clipboard()->text().toStdString(), nullptr, false);
  if (!json.is_object())
  {
    return; // not settings of ours
  }
  const nlohmann::json previous = colorSettingsJson();
  try
  {
    applyColorSettingsJson(json);
  }
  catch (const nlohmann::json::exception&)
  {
    applyColorSettingsJson(previous); // all or nothing
    return;
  }
  Q_EMIT solidColorChanged(m_SolidColor);
  Q_EMIT nanColorChanged(m_NanColor);
  Q_EMIT invertColorMap(m_Inverted);
  if (m_UsingDefaultPreset)
  {
    Q_EMIT restoreDefaultPresetColors();
  }
  else
  {
    Q_EMIT loadPresetColors(m_CurrentPreset);
  }
}

void VXDataSource::initializeSettingsWidget()
{
  addSettingsWidgetTitle(nullptr, nullptr);
  QWidget* content = m_SettingsScrollArea->widget();
  auto* contentLayout = qobject_cast<QVBoxLayout*>(content->layout());

  auto* section = new ZRSectionHeader(QStringLiteral("Coloring"), content);
  contentLayout->addWidget(section);
  auto* controls = new QWidget(content);
  auto* layout = new QGridLayout(controls);
  layout->setContentsMargins(0, 0, 0, 0);

  layout->addWidget(new QLabel(QStringLiteral("Solid Color: "), controls), 0, 0);
  auto* solidColorButton = new ZRColorButton(controls);
  solidColorButton->setObjectName(QStringLiteral("m_SolidColorButton"));
  m_SolidColorButton = solidColorButton;
  solidColorButton->setToolTip(htmlToolTip(
      QStringLiteral("Edit the solid color for all child data views not separated from this geometry")));
  connect(solidColorButton, &ZRColorButton::colorChanged, this, &VXDataSource::setSolidColor);
  layout->addWidget(solidColorButton, 0, 1, 1, 2);

  auto* presetButton = new ZRIconPushButton(QStringLiteral("Edit"), controls);
  presetButton->setObjectName(QStringLiteral("m_ColorPresetButton"));
  presetButton->setIcon(ZRStyle::generateThemeIconFromName(QStringLiteral("preset")));
  presetButton->setToolTip(htmlToolTip(
      QStringLiteral("Edit the color map for all child data views not separated from this geometry")));
  m_ColorPresetsDialog = new ColorPresetsDialog(controls);
  connect(m_ColorPresetsDialog.data(), &ColorPresetsDialog::applyPreset, this, &VXDataSource::applyPreset);
  connect(m_ColorPresetsDialog.data(), &ColorPresetsDialog::restoreDefaultPreset, this,
          &VXDataSource::setRestoreDefaultPreset);
  connect(m_ColorPresetsDialog.data(), &ColorPresetsDialog::nanColorChanged, this,
          &VXDataSource::setNanColor);
  connect(presetButton, &QPushButton::clicked, this, &VXDataSource::showColorPresetsDialog);
  layout->addWidget(presetButton, 1, 0);

  auto* invertButton = new ZRIconPushButton(controls);
  invertButton->setObjectName(QStringLiteral("m_InvertColorBtn"));
  invertButton->setCheckable(true);
  m_InvertColorButton = invertButton;
  invertButton->setIcon(ZRStyle::generateThemeIconFromName(QStringLiteral("invert")));
  invertButton->setToolTip(htmlToolTip(
      QStringLiteral("Invert the color map for all child data views not separated from this geometry")));
  connect(invertButton, &QPushButton::toggled, this, &VXDataSource::setColorsInverted);
  layout->addWidget(invertButton, 1, 1);

  auto* syncButton = new ZRIconPushButton(QStringLiteral("Sync"), controls);
  syncButton->setToolTip(htmlToolTip(
      QStringLiteral("Recursively change all child data view color map settings to match this geometry")));
  connect(syncButton, &QPushButton::clicked, this, &VXDataSource::syncChildColorMaps);
  layout->addWidget(syncButton, 1, 2);

  auto* saveDefaultsButton = new ZRIconPushButton(controls);
  saveDefaultsButton->setObjectName(QStringLiteral("m_SaveDefaultsButton"));
  saveDefaultsButton->setIcon(ZRStyle::generateThemeIconFromName(QStringLiteral("save")));
  saveDefaultsButton->setToolTip(
      htmlToolTip(QStringLiteral("Save the current settings as the default settings for all %1 types")
                      .arg(humanTypeName())));
  connect(saveDefaultsButton, &QPushButton::clicked, this, [this]() { writeSettings(); });
  layout->addWidget(saveDefaultsButton, 2, 0);

  contentLayout->addWidget(controls);
  contentLayout->addStretch(1);
  syncColorPanel();
}
