// The settings panels of the outline, points, wireframe and surface views, driven as a user would
// drive them, over a real dataset in a real render window.
#include "colour/VXArrayHistogramWidget.h"
#include "colour/VXCustomRangeDialog.h"
#include "colour/VXLUTEditor.h"
#include "colour/VXLookupTable.h"
#include "colour/VXLookupTableModel.h"
#include "data_views/VXOutlineRepPimpl.h"
#include "data_views/VXPointsRepPimpl.h"
#include "data_views/VXRepresentation.h"
#include "data_views/VXSurfaceRepPimpl.h"
#include "data_views/ZRVtkModuleConstants.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"
#include "platform/ColorPresetsDialog.h"
#include "platform/QtZRSettings.h"
#include "platform/QtZRUtils.h"
#include "platform/ZRColorButton.h"
#include "platform/ZRComboBox.h"
#include "platform/ZRSettingsKeys.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXVisualizationWidget.h"

#include <nlohmann/json.hpp>

#include <vtkActor.h>
#include <vtkAlgorithm.h>
#include <vtkAlgorithmOutput.h>
#include <vtkCellData.h>
#include <vtkDoubleArray.h>
#include <vtkIntArray.h>
#include <vtkPointData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderer.h>
#include <vtkScalarBarWidget.h>
#include <vtkSphereSource.h>
#include <vtkXMLPolyDataWriter.h>

#include <QAbstractButton>
#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include "DataViewTestData.h"

#include <gtest/gtest.h>

#include <numeric>

namespace
{
const QString k_HelpRoot = QStringLiteral("zrhelp://manual");
const QString k_Page =
    QStringLiteral("zrhelp://manual/KESTRIX-ZR/html/Visualization/ApplyingRepresentations.html");

// The row layout that holds a widget, anywhere in the panel (scroll area content included).
QBoxLayout* rowOf(QWidget* panel, QWidget* widget)
{
  for (QBoxLayout* layout : panel->findChildren<QBoxLayout*>())
  {
    if (layout->indexOf(widget) >= 0)
    {
      return layout;
    }
  }
  return nullptr;
}

template<class T>
T* byText(QWidget* panel, const QString& text)
{
  for (T* widget : panel->findChildren<T*>())
  {
    if (widget->text() == text)
    {
      return widget;
    }
  }
  return nullptr;
}

// The widget of type T right after the label with the text, in the label's row.
template<class T>
T* afterLabel(QWidget* panel, const QString& labelText, int offset = 1)
{
  QLabel* label = byText<QLabel>(panel, labelText);
  QBoxLayout* row = label != nullptr ? rowOf(panel, label) : nullptr;
  if (row == nullptr)
  {
    return nullptr;
  }
  QLayoutItem* item = row->itemAt(row->indexOf(label) + offset);
  return item != nullptr ? qobject_cast<T*>(item->widget()) : nullptr;
}

QComboBox* comboHolding(QWidget* panel, const QString& itemText)
{
  for (QComboBox* box : panel->findChildren<QComboBox*>())
  {
    if (box->findText(itemText) >= 0)
    {
      return box;
    }
  }
  return nullptr;
}

// The help button placed right after a control.
QAbstractButton* helpButtonAfter(QWidget* panel, QWidget* control)
{
  QBoxLayout* row = rowOf(panel, control);
  QLayoutItem* item = row != nullptr ? row->itemAt(row->indexOf(control) + 1) : nullptr;
  return item != nullptr ? qobject_cast<QAbstractButton*>(item->widget()) : nullptr;
}

// The component box: the other combo box in the row of the array box.
QComboBox* componentBoxBeside(QWidget* panel, QComboBox* arrays)
{
  QBoxLayout* row = rowOf(panel, arrays);
  for (int i = 0; row != nullptr && i < row->count(); ++i)
  {
    auto* box = qobject_cast<QComboBox*>(row->itemAt(i)->widget());
    if (box != nullptr && box != arrays)
    {
      return box;
    }
  }
  return nullptr;
}

void typeAndReturn(QLineEdit* edit, const QString& text)
{
  edit->selectAll();
  QTest::keyClicks(edit, text);
  QTest::keyClick(edit, Qt::Key_Return);
}

QtZRSettings* openDefaults(QtZRSettings& settings, const QString& typeName)
{
  settings.beginGroup(ZR::SettingsKeys::k_VisualizationSettings);
  settings.beginGroup(ZR::SettingsKeys::k_RepresentationSettings);
  settings.beginGroup(typeName);
  return &settings;
}
} // namespace

// Catches the URLs that the panels open instead of a browser.
class HelpUrlCatcher : public QObject
{
  Q_OBJECT

public:
  QList<QUrl> urls;

public Q_SLOTS:
  void open(const QUrl& url) { urls.append(url); }
};

class DataViewPanelsTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    QtZRUtils::SetHelpRootDir(k_HelpRoot);
    QDesktopServices::setUrlHandler(QStringLiteral("zrhelp"), &m_Help, "open");
    m_Grid.resize(500, 400);
    m_Grid.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Grid));
    m_Pipeline.setActiveViewWidget(m_Grid.activeView());
  }

  void TearDown() override
  {
    VXPipeline::setDefaultTriangleRepType(VXRepresentation::Outline);
    VXRepresentationPimpl::setDefaultSettingsQuestion({});
    QDesktopServices::unsetUrlHandler(QStringLiteral("zrhelp"));
    QtZRUtils::SetHelpRootDir(QString());
  }

  // Opens a sphere with the view of the type as its default view; returns the view's instance.
  template<class Pimpl>
  Pimpl* open(VXRepresentation::Type type, bool withArrays = true)
  {
    VXPipeline::setDefaultTriangleRepType(type);
    const QString name = QStringLiteral("sphere%1.vtp").arg(m_Opened++);
    VXBridgeObject* bridge = m_Pipeline.importFile(DataViewTestData::WriteSphere(
        m_Dir.filePath(name),
        withArrays ? DataViewTestData::SphereData::ArraysOnly : DataViewTestData::SphereData::Bare));
    if (bridge == nullptr || bridge->dataSources().size() != 1)
    {
      return nullptr;
    }
    m_DataSource = bridge->dataSources().front();
    const QList<VXRepresentation*> views = m_DataSource->findChildren<VXRepresentation*>();
    m_View = views.size() == 1 ? views.front() : nullptr;
    DataViewTestData::Settle();
    return m_View != nullptr ? dynamic_cast<Pimpl*>(m_View->implementation(m_Grid.activeView())) : nullptr;
  }

  QWidget* panel()
  {
    QWidget* widget = m_View->settingsWidget();
    if (widget != nullptr)
    {
      widget->resize(400, 900);
      widget->show();
    }
    return widget;
  }

  QTemporaryDir m_Dir;
  VXViewGridWidget m_Grid;
  VXPipeline m_Pipeline;
  HelpUrlCatcher m_Help;
  VXDataSource* m_DataSource = nullptr;
  VXRepresentation* m_View = nullptr;
  int m_Opened = 0;
};

TEST_F(DataViewPanelsTest, OutlinePanelDrivesTheViewAndFollowsPastedSettings)
{
  auto* view = open<VXOutlineRepPimpl>(VXRepresentation::Outline);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  EXPECT_NE(byText<QLabel>(widget, QStringLiteral("Outline Representation")), nullptr);
  for (const char* section : {"Coloring", "Styling", "Annotations", "Decimation"})
  {
    EXPECT_NE(byText<QLabel>(widget, QString::fromLatin1(section)), nullptr) << section;
  }
  // The outline has no array colouring.
  EXPECT_EQ(comboHolding(widget, ZRVtkModule::constants::k_SolidColor), nullptr);
  vtkProperty* property = view->getActor()->GetProperty();

  auto* slider = widget->findChild<QSlider*>();
  ASSERT_NE(slider, nullptr);
  slider->setValue(40);
  EXPECT_DOUBLE_EQ(property->GetOpacity(), 0.4);

  auto* lineSize = afterLabel<QLineEdit>(widget, ZRVtkModule::constants::k_LineSize);
  ASSERT_NE(lineSize, nullptr);
  typeAndReturn(lineSize, QStringLiteral("3"));
  EXPECT_FLOAT_EQ(property->GetLineWidth(), 3.0f);

  auto* tubes = byText<QCheckBox>(widget, ZRVtkModule::constants::k_LinesAsTubes);
  ASSERT_NE(tubes, nullptr);
  tubes->click();
  EXPECT_TRUE(property->GetRenderLinesAsTubes());

  auto* grid = byText<QCheckBox>(widget, ZRVtkModule::constants::k_DataAxesGridLabel);
  ASSERT_NE(grid, nullptr);
  grid->click();
  vtkRenderer* renderer = m_Grid.activeView()->getVisualizationWidget()->getRenderer();
  ASSERT_NE(view->dataAxesGridActor(), nullptr);
  EXPECT_TRUE(renderer->HasViewProp(view->dataAxesGridActor()));
  // Hiding the view takes the grid with it; the grid setting stays.
  auto* eye = widget->findChild<QAbstractButton*>(QStringLiteral("m_VisibilityButton"));
  ASSERT_NE(eye, nullptr);
  eye->click();
  EXPECT_FALSE(view->isVisible());
  EXPECT_FALSE(renderer->HasViewProp(view->dataAxesGridActor()));
  EXPECT_TRUE(view->isDataGridVisible());
  eye->click();
  EXPECT_TRUE(renderer->HasViewProp(view->dataAxesGridActor()));

  // The solid colour of a separate colour map.
  auto* colorButton = afterLabel<QPushButton>(widget, QStringLiteral("Solid Color: "));
  ASSERT_NE(colorButton, nullptr);
  EXPECT_TRUE(colorButton->isEnabled());

  // Pasted settings move the controls, and the drawing with them.
  nlohmann::json settings;
  view->write(settings);
  settings["opacity_percent"] = 70;
  settings["line_size"] = 5;
  settings["render_lines_as_tubes"] = false;
  settings["data_grid_visible"] = false;
  settings["use_decimation_during_interactions"] = true;
  settings["data_source_num_of_dims_x"] = 12;
  settings["data_source_num_of_dims_y"] = 13;
  settings["data_source_num_of_dims_z"] = 14;
  QApplication::clipboard()->setText(QString::fromStdString(settings.dump(2)));
  m_View->pasteToActiveSettings();
  EXPECT_EQ(slider->value(), 70);
  EXPECT_DOUBLE_EQ(property->GetOpacity(), 0.7);
  EXPECT_EQ(lineSize->text(), QStringLiteral("5"));
  EXPECT_FLOAT_EQ(property->GetLineWidth(), 5.0f);
  EXPECT_FALSE(tubes->isChecked());
  EXPECT_FALSE(grid->isChecked());
  EXPECT_FALSE(renderer->HasViewProp(view->dataAxesGridActor()));
  EXPECT_TRUE(byText<QCheckBox>(widget, QStringLiteral("Use Decimation During Interactions"))->isChecked());
  EXPECT_EQ(afterLabel<QLineEdit>(widget, QStringLiteral("Divisions Y"))->text(), QStringLiteral("13"));

  // Typing a division applies it.
  typeAndReturn(afterLabel<QLineEdit>(widget, QStringLiteral("Divisions X")), QStringLiteral("20"));
  EXPECT_EQ(view->numberOfDimensions(), (std::array<int, 3>{20, 13, 14}));
}

TEST_F(DataViewPanelsTest, PointsPanelColoursByArrayComponentAndStylesPoints)
{
  auto* view = open<VXPointsRepPimpl>(VXRepresentation::Points);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  EXPECT_NE(byText<QLabel>(widget, QStringLiteral("Array Histogram")), nullptr);
  vtkProperty* property = view->getActor()->GetProperty();
  vtkMapper* mapper = view->getMapper();

  QComboBox* arrays = comboHolding(widget, ZRVtkModule::constants::k_SolidColor);
  ASSERT_NE(arrays, nullptr);
  EXPECT_EQ(arrays->currentText(), ZRVtkModule::constants::k_SolidColor);
  ASSERT_GE(arrays->findText(QStringLiteral("FeatureIds")), 0);
  ASSERT_GE(arrays->findText(QStringLiteral("Velocity")), 0);
  auto* preset = byText<QPushButton>(widget, QStringLiteral("Preset"));
  auto* invert = byText<QPushButton>(widget, QStringLiteral("Invert"));
  auto* categories = byText<QCheckBox>(widget, QStringLiteral("Interpret Values As Categories"));
  auto* legend = byText<QCheckBox>(widget, ZRVtkModule::constants::k_ScalarBarLabel);
  ASSERT_TRUE(preset != nullptr && invert != nullptr && categories != nullptr && legend != nullptr);
  // Solid colour: the colour map controls are off.
  EXPECT_FALSE(preset->isEnabled());
  EXPECT_FALSE(categories->isEnabled());

  arrays->setCurrentText(QStringLiteral("Velocity"));
  EXPECT_EQ(view->activeArray(), QStringLiteral("Velocity"));
  EXPECT_TRUE(mapper->GetScalarVisibility());
  EXPECT_TRUE(preset->isEnabled());
  EXPECT_TRUE(categories->isEnabled());
  // The component box sits beside the array box: magnitude and the three components.
  QComboBox* components = componentBoxBeside(widget, arrays);
  ASSERT_NE(components, nullptr);
  EXPECT_EQ(components->count(), 4);
  EXPECT_TRUE(components->isEnabled());
  components->setCurrentIndex(2);
  EXPECT_EQ(view->activeComponent(), 1);
  EXPECT_EQ(view->lookupTable()->getColorTransferFunction()->GetVectorComponent(), 1);

  // Another array resets the component and empties the component box of a one-component array.
  arrays->setCurrentText(QStringLiteral("FeatureIds"));
  EXPECT_EQ(view->activeComponent(), VXPointsRepPimpl::k_Magnitude);
  EXPECT_EQ(mapper->GetScalarMode(), VTK_SCALAR_MODE_USE_CELL_FIELD_DATA);
  EXPECT_FALSE(components->isEnabled());

  invert->click();
  EXPECT_TRUE(view->lookupTable()->isInverted());
  legend->click();
  EXPECT_TRUE(view->scalarBarWidget()->GetEnabled());

  QComboBox* mapScalars = comboHolding(widget, ZRVtkModule::constants::k_MapScalarsNever);
  ASSERT_NE(mapScalars, nullptr);
  EXPECT_EQ(mapScalars->currentIndex(), 1);
  mapScalars->setCurrentIndex(2);
  EXPECT_EQ(mapper->GetColorMode(), VTK_COLOR_MODE_DIRECT_SCALARS);
  mapScalars->setCurrentIndex(0);
  EXPECT_EQ(mapper->GetColorMode(), VTK_COLOR_MODE_MAP_SCALARS);

  categories->click();
  EXPECT_EQ(view->lookupTable()->getColorTransferFunction()->GetIndexedLookup(), 1);

  auto* pointSize = afterLabel<QLineEdit>(widget, QStringLiteral("Point Size"));
  ASSERT_NE(pointSize, nullptr);
  typeAndReturn(pointSize, QStringLiteral("6"));
  EXPECT_FLOAT_EQ(property->GetPointSize(), 6.0f);
  auto* spheres = byText<QCheckBox>(widget, QStringLiteral("Render Points As Spheres"));
  ASSERT_NE(spheres, nullptr);
  spheres->click();
  EXPECT_TRUE(property->GetRenderPointsAsSpheres());
  EXPECT_EQ(property->GetRepresentation(), VTK_POINTS);

  // NaN colour through its button's signal, as the colour dialog would send it.
  auto* nanButton = afterLabel<ZRColorButton>(widget, QStringLiteral("NaN Color: "));
  ASSERT_NE(nanButton, nullptr);
  nanButton->setColor(Qt::cyan);
  Q_EMIT nanButton->colorChanged(QColor(Qt::cyan));
  EXPECT_EQ(view->lookupTable()->getNANColor(), QColor(Qt::cyan));

  // Back to the solid colour: the legend goes, the colour button comes back.
  arrays->setCurrentText(ZRVtkModule::constants::k_SolidColor);
  EXPECT_FALSE(mapper->GetScalarVisibility());
  EXPECT_FALSE(view->scalarBarWidget()->GetEnabled());
  EXPECT_TRUE(afterLabel<QPushButton>(widget, QStringLiteral("Solid Color: "))->isEnabled());
}

TEST_F(DataViewPanelsTest, PastedAndCopiedSettingsMoveThePointsControls)
{
  auto* view = open<VXPointsRepPimpl>(VXRepresentation::Points);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  QComboBox* arrays = comboHolding(widget, ZRVtkModule::constants::k_SolidColor);
  QComboBox* mapScalars = comboHolding(widget, ZRVtkModule::constants::k_MapScalarsNever);
  ASSERT_TRUE(arrays != nullptr && mapScalars != nullptr);

  nlohmann::json settings;
  view->write(settings);
  settings["active_array"] = "Velocity";
  settings["active_component"] = 2;
  settings["color_map_inverted"] = true;
  settings["scalar_bar_visible"] = true;
  settings["scalar_mapping"] = 0;
  settings["point_size"] = 7;
  settings["render_points_as_spheres"] = true;
  settings["using_solid_color"] = false;
  settings["using_custom_range"] = true;
  settings["custom_range_min"] = -1.0;
  settings["custom_range_max"] = 9.0;
  QApplication::clipboard()->setText(QString::fromStdString(settings.dump(2)));
  m_View->pasteToActiveSettings();

  EXPECT_EQ(arrays->currentText(), QStringLiteral("Velocity"));
  QComboBox* components = componentBoxBeside(widget, arrays);
  ASSERT_NE(components, nullptr);
  EXPECT_EQ(components->currentIndex(), 3);
  EXPECT_TRUE(byText<QPushButton>(widget, QStringLiteral("Invert"))->isChecked());
  EXPECT_TRUE(byText<QCheckBox>(widget, ZRVtkModule::constants::k_ScalarBarLabel)->isChecked());
  EXPECT_EQ(mapScalars->currentIndex(), 0);
  EXPECT_EQ(afterLabel<QLineEdit>(widget, QStringLiteral("Point Size"))->text(), QStringLiteral("7"));
  EXPECT_TRUE(byText<QCheckBox>(widget, QStringLiteral("Render Points As Spheres"))->isChecked());
  // The moved controls sent nothing back: the pasted values hold in the view.
  EXPECT_EQ(view->activeComponent(), 2);
  EXPECT_EQ(view->scalarMapping(), 0);
  EXPECT_EQ(view->lookupTable()->getRange(), (std::array<double, 2>{-1.0, 9.0}));
  EXPECT_EQ(view->customRangeDialog()->getRange(), (std::array<double, 2>{-1.0, 9.0}));
  EXPECT_FLOAT_EQ(view->getActor()->GetProperty()->GetPointSize(), 7.0f);

  // Copy puts what the panel shows on the clipboard.
  byText<QCheckBox>(widget, QStringLiteral("Render Points As Spheres"))->click();
  m_View->copyActiveSettings();
  const nlohmann::json copied = nlohmann::json::parse(QApplication::clipboard()->text().toStdString());
  EXPECT_EQ(copied["render_points_as_spheres"], false);
  EXPECT_EQ(copied["active_array"], "Velocity");
}

TEST_F(DataViewPanelsTest, WireframePanelOffersLinesInsteadOfPoints)
{
  auto* view = open<VXPointsRepPimpl>(VXRepresentation::Wireframe);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  EXPECT_NE(byText<QLabel>(widget, QStringLiteral("Wireframe Representation")), nullptr);
  EXPECT_EQ(byText<QLabel>(widget, QStringLiteral("Point Size")), nullptr);
  EXPECT_EQ(byText<QCheckBox>(widget, ZRVtkModule::constants::k_ShowEdges), nullptr);
  vtkProperty* property = view->getActor()->GetProperty();
  EXPECT_EQ(property->GetRepresentation(), VTK_WIREFRAME);

  typeAndReturn(afterLabel<QLineEdit>(widget, ZRVtkModule::constants::k_LineSize), QStringLiteral("4"));
  EXPECT_FLOAT_EQ(property->GetLineWidth(), 4.0f);
  byText<QCheckBox>(widget, ZRVtkModule::constants::k_LinesAsTubes)->click();
  EXPECT_TRUE(property->GetRenderLinesAsTubes());
  comboHolding(widget, ZRVtkModule::constants::k_SolidColor)->setCurrentText(QStringLiteral("FeatureIds"));
  EXPECT_TRUE(view->getMapper()->GetScalarVisibility());

  nlohmann::json settings;
  view->write(settings);
  settings["line_size"] = 2;
  settings["render_lines_as_tubes"] = false;
  settings["active_array"] = "";
  settings["using_solid_color"] = true;
  QApplication::clipboard()->setText(QString::fromStdString(settings.dump()));
  m_View->pasteToActiveSettings();
  EXPECT_EQ(afterLabel<QLineEdit>(widget, ZRVtkModule::constants::k_LineSize)->text(), QStringLiteral("2"));
  EXPECT_FALSE(byText<QCheckBox>(widget, ZRVtkModule::constants::k_LinesAsTubes)->isChecked());
  EXPECT_EQ(comboHolding(widget, ZRVtkModule::constants::k_SolidColor)->currentText(),
            ZRVtkModule::constants::k_SolidColor);
  EXPECT_FALSE(view->getMapper()->GetScalarVisibility());
}

TEST_F(DataViewPanelsTest, SurfacePanelShowsEdgesAndCullsBackFaces)
{
  auto* view = open<VXSurfaceRepPimpl>(VXRepresentation::Surface);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  vtkProperty* property = view->getActor()->GetProperty();
  auto* edges = byText<QCheckBox>(widget, ZRVtkModule::constants::k_ShowEdges);
  auto* culling = byText<QCheckBox>(widget, QStringLiteral("Back Face Culling"));
  auto* lineSize = afterLabel<QLineEdit>(widget, ZRVtkModule::constants::k_LineSize);
  ASSERT_TRUE(edges != nullptr && culling != nullptr && lineSize != nullptr);
  // Line controls serve the edges, which a surface starts without.
  EXPECT_FALSE(edges->isChecked());
  EXPECT_FALSE(lineSize->isEnabled());
  edges->click();
  EXPECT_TRUE(property->GetEdgeVisibility());
  EXPECT_TRUE(lineSize->isEnabled());
  culling->click();
  EXPECT_TRUE(property->GetBackfaceCulling());

  nlohmann::json settings;
  view->write(settings);
  settings["back_face_culling"] = false;
  settings["edge_visibility"] = false;
  settings["opacity_percent"] = 25;
  QApplication::clipboard()->setText(QString::fromStdString(settings.dump()));
  m_View->pasteToActiveSettings();
  EXPECT_FALSE(culling->isChecked());
  EXPECT_FALSE(property->GetBackfaceCulling());
  EXPECT_FALSE(edges->isChecked());
  EXPECT_FALSE(lineSize->isEnabled());
  EXPECT_EQ(widget->findChild<QSlider*>()->value(), 25);
}

TEST_F(DataViewPanelsTest, HelpButtonsOpenThePageAtTheirAnchors)
{
  auto* view = open<VXSurfaceRepPimpl>(VXRepresentation::Surface);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  auto* help = widget->findChild<QAbstractButton*>(QStringLiteral("m_HelpButton"));
  ASSERT_NE(help, nullptr);
  help->click();
  ASSERT_EQ(m_Help.urls.size(), 1);
  EXPECT_EQ(m_Help.urls.back(), QUrl(k_Page + QStringLiteral("#surface-representation")));

  const QList<QPair<QWidget*, QString>> controls = {
      {byText<QCheckBox>(widget, QStringLiteral("Back Face Culling")), QStringLiteral("#back-face-culling")},
      {byText<QCheckBox>(widget, ZRVtkModule::constants::k_ShowEdges), QStringLiteral("#show-edges")},
      {widget->findChild<QSlider*>(), QStringLiteral("#surface-opacity")},
      {afterLabel<QLineEdit>(widget, ZRVtkModule::constants::k_LineSize),
       QStringLiteral("#surface-line-size")},
      {comboHolding(widget, ZRVtkModule::constants::k_MapScalarsNever),
       QStringLiteral("#surface-map-scalars")}};
  for (const auto& [control, anchor] : controls)
  {
    ASSERT_NE(control, nullptr) << anchor.toStdString();
    QAbstractButton* button = helpButtonAfter(widget, control);
    ASSERT_NE(button, nullptr) << anchor.toStdString();
    EXPECT_FALSE(button->toolTip().isEmpty());
    button->click();
    EXPECT_EQ(m_Help.urls.back(), QUrl(k_Page + anchor));
  }

  // The points level names its own anchors.
  open<VXPointsRepPimpl>(VXRepresentation::Points);
  QWidget* points = panel();
  ASSERT_NE(points, nullptr);
  points->findChild<QAbstractButton*>(QStringLiteral("m_HelpButton"))->click();
  EXPECT_EQ(m_Help.urls.back(), QUrl(k_Page + QStringLiteral("#points-representation")));
  helpButtonAfter(points, afterLabel<QLineEdit>(points, QStringLiteral("Point Size")))->click();
  EXPECT_EQ(m_Help.urls.back(), QUrl(k_Page + QStringLiteral("#point-size")));
  helpButtonAfter(points, points->findChild<QSlider*>())->click();
  EXPECT_EQ(m_Help.urls.back(), QUrl(k_Page + QStringLiteral("#points-opacity")));
}

TEST_F(DataViewPanelsTest, DefaultSettingsButtonAsksThenWritesKeepsOrResets)
{
  QString title;
  QMessageBox::StandardButton answer = QMessageBox::Yes;
  VXRepresentationPimpl::setDefaultSettingsQuestion(
      [&](const QString& boxTitle, const QString&)
      {
        title = boxTitle;
        return answer;
      });
  {
    QtZRSettings settings;
    openDefaults(settings, QStringLiteral("VXSurfaceRep"))->clearGroup();
  }
  auto* view = open<VXSurfaceRepPimpl>(VXRepresentation::Surface);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  auto* save = widget->findChild<QAbstractButton*>(QStringLiteral("m_DefaultSettingsButton"));
  ASSERT_NE(save, nullptr);

  widget->findChild<QSlider*>()->setValue(30);
  byText<QCheckBox>(widget, QStringLiteral("Back Face Culling"))->click();
  save->click();
  EXPECT_EQ(title, QStringLiteral("Save Default Surface Representation Settings"));
  {
    QtZRSettings settings;
    openDefaults(settings, QStringLiteral("VXSurfaceRep"));
    EXPECT_EQ(settings.value(QStringLiteral("opacity_percent")).toInt(), 30);
    EXPECT_TRUE(settings.value(QStringLiteral("back_face_culling")).toBool());
  }
  // A new surface starts from the saved defaults.
  auto* second = open<VXSurfaceRepPimpl>(VXRepresentation::Surface);
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(second->getOpacity(), 30);
  EXPECT_TRUE(second->backFaceCulling());

  // No keeps what was stored.
  answer = QMessageBox::No;
  widget = panel();
  widget->findChild<QSlider*>()->setValue(80);
  widget->findChild<QAbstractButton*>(QStringLiteral("m_DefaultSettingsButton"))->click();
  {
    QtZRSettings settings;
    openDefaults(settings, QStringLiteral("VXSurfaceRep"));
    EXPECT_EQ(settings.value(QStringLiteral("opacity_percent")).toInt(), 30);
  }

  // Reset removes the defaults: built-in settings again.
  answer = QMessageBox::Reset;
  widget->findChild<QAbstractButton*>(QStringLiteral("m_DefaultSettingsButton"))->click();
  {
    QtZRSettings settings;
    openDefaults(settings, QStringLiteral("VXSurfaceRep"));
    EXPECT_TRUE(settings.childKeys().isEmpty());
  }
  auto* third = open<VXSurfaceRepPimpl>(VXRepresentation::Surface);
  ASSERT_NE(third, nullptr);
  EXPECT_EQ(third->getOpacity(), 100);
  EXPECT_FALSE(third->backFaceCulling());
}

TEST_F(DataViewPanelsTest, CustomRangeDialogRescalesAndResets)
{
  auto* view = open<VXPointsRepPimpl>(VXRepresentation::Surface);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  comboHolding(widget, ZRVtkModule::constants::k_SolidColor)->setCurrentText(QStringLiteral("FeatureIds"));
  VXCustomRangeDialog* dialog = view->customRangeDialog();
  ASSERT_NE(dialog, nullptr);
  byText<QPushButton>(widget, QStringLiteral("Custom Range"))->click();
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(dialog->getRange(), (std::array<double, 2>{1.0, 400.0}));

  auto* minimum = dialog->findChild<QLineEdit*>(QStringLiteral("m_MinimumEdit"));
  auto* maximum = dialog->findChild<QLineEdit*>(QStringLiteral("m_MaximumEdit"));
  ASSERT_TRUE(minimum != nullptr && maximum != nullptr);
  minimum->setText(QStringLiteral("10"));
  maximum->setText(QStringLiteral("5"));
  dialog->findChild<QPushButton*>(QStringLiteral("m_RescaleButton"))->click();
  // A reversed range is refused.
  EXPECT_FALSE(view->isUsingCustomRange());
  maximum->setText(QStringLiteral("50.5"));
  dialog->findChild<QPushButton*>(QStringLiteral("m_RescaleButton"))->click();
  EXPECT_TRUE(view->isUsingCustomRange());
  EXPECT_EQ(view->lookupTable()->getRange(), (std::array<double, 2>{10.0, 50.5}));

  dialog->findChild<QPushButton*>(QStringLiteral("m_ResetButton"))->click();
  EXPECT_FALSE(view->isUsingCustomRange());
  EXPECT_EQ(view->lookupTable()->getRange(), (std::array<double, 2>{1.0, 400.0}));
  EXPECT_EQ(minimum->text(), QStringLiteral("1"));
  dialog->close();
}

TEST_F(DataViewPanelsTest, CategoryEditorRecoloursOneCategory)
{
  auto* view = open<VXPointsRepPimpl>(VXRepresentation::Surface);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  comboHolding(widget, ZRVtkModule::constants::k_SolidColor)->setCurrentText(QStringLiteral("FeatureIds"));
  auto* edit = byText<QPushButton>(widget, QStringLiteral("Edit Categories"));
  ASSERT_NE(edit, nullptr);
  EXPECT_FALSE(edit->isEnabled());
  byText<QCheckBox>(widget, QStringLiteral("Interpret Values As Categories"))->click();
  EXPECT_TRUE(edit->isEnabled());
  edit->click();
  VXLUTEditor* editor = view->lutEditor();
  ASSERT_EQ(editor->numCustomCategories(), 3);
  VXLookupTableModel* model = editor->tableModel();
  int row7 = -1;
  for (int row = 0; row < model->rowCount(); ++row)
  {
    if (model->index(row, VXLookupTableModel::ValueColumn).data().toString() == QStringLiteral("7"))
    {
      row7 = row;
    }
  }
  ASSERT_GE(row7, 0);
  model->setData(model->index(row7, VXLookupTableModel::ColorColumn), QColor(255, 0, 255));
  model->setData(model->index(row7, VXLookupTableModel::AnnotationColumn), QStringLiteral("Grain seven"));
  editor->findChild<QPushButton*>(QStringLiteral("m_ApplyButton"))->click();

  vtkColorTransferFunction* table = view->lookupTable()->getColorTransferFunction();
  double rgb[3];
  table->GetColor(7.0, rgb);
  EXPECT_DOUBLE_EQ(rgb[0], 1.0);
  EXPECT_DOUBLE_EQ(rgb[1], 0.0);
  EXPECT_DOUBLE_EQ(rgb[2], 1.0);
  EXPECT_EQ(std::string(table->GetAnnotation(table->GetAnnotatedValueIndex(vtkVariant(7.0)))), "Grain seven");
  EXPECT_TRUE(byText<QCheckBox>(widget, QStringLiteral("Interpret Values As Categories"))->isChecked());
  editor->close();
}

TEST_F(DataViewPanelsTest, HistogramCountsTheActiveArrayInTheColourRange)
{
  auto* view = open<VXPointsRepPimpl>(VXRepresentation::Surface);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  comboHolding(widget, ZRVtkModule::constants::k_SolidColor)->setCurrentText(QStringLiteral("FeatureIds"));
  auto* generate = byText<QCheckBox>(widget, QStringLiteral("Generate Active Array Histogram"));
  ASSERT_NE(generate, nullptr);
  VXArrayHistogramWidget* histogram = view->histogramWidget();
  ASSERT_NE(histogram, nullptr);
  EXPECT_TRUE(histogram->isHidden());
  generate->click();
  EXPECT_FALSE(histogram->isHidden());

  vtkDataArray* ids = view->inputDataSet()->GetCellData()->GetArray("FeatureIds");
  vtkIdType ones = 0;
  vtkIdType highest = 0;
  for (vtkIdType i = 0; i < ids->GetNumberOfTuples(); ++i)
  {
    ones += ids->GetTuple1(i) == 1.0 ? 1 : 0;
    highest += ids->GetTuple1(i) == 400.0 ? 1 : 0;
  }
  const auto& counts = histogram->counts();
  ASSERT_FALSE(counts.empty());
  EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), std::uint64_t{0}),
            static_cast<std::uint64_t>(ids->GetNumberOfTuples()));
  EXPECT_EQ(counts.back(), static_cast<std::uint64_t>(highest));
  EXPECT_EQ(histogram->range(), (std::array<double, 2>{1.0, 400.0}));

  // New values upstream reach the histogram when the producer runs again.
  vtkIdType first = 0;
  while (ids->GetTuple1(first) != 1.0)
  {
    ++first;
  }
  ids->SetTuple1(first, 400.0);
  ids->Modified();
  view->inputDataSet()->Modified();
  m_DataSource->outputPort()->GetProducer()->Update();
  EXPECT_EQ(histogram->counts().back(), static_cast<std::uint64_t>(highest + 1));
  ids->SetTuple1(first, 1.0);
  ids->Modified();
  view->inputDataSet()->Modified();
  m_DataSource->outputPort()->GetProducer()->Update();

  // Under a custom range only the values inside it count.
  view->setCustomRange(0.0, 5.0);
  view->generateHistogramData();
  const auto& inside = histogram->counts();
  EXPECT_EQ(std::accumulate(inside.begin(), inside.end(), std::uint64_t{0}),
            static_cast<std::uint64_t>(ones));
  EXPECT_EQ(histogram->skippedValues(), static_cast<std::uint64_t>(ids->GetNumberOfTuples() - ones));
}

TEST_F(DataViewPanelsTest, AttachedViewFollowsItsDataSourceColours)
{
  auto* view = open<VXOutlineRepPimpl>(VXRepresentation::Outline);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  auto* separate = byText<QCheckBox>(widget, QStringLiteral("Enable Separate Color Map"));
  auto* colorButton = afterLabel<ZRColorButton>(widget, QStringLiteral("Solid Color: "));
  ASSERT_TRUE(separate != nullptr && colorButton != nullptr);
  EXPECT_TRUE(separate->isChecked());

  separate->click();
  EXPECT_FALSE(view->detachColorSettings());
  EXPECT_FALSE(colorButton->isEnabled());
  m_DataSource->setSolidColor(QColor(Qt::red));
  EXPECT_EQ(view->solidColor(), QColor(Qt::red));
  EXPECT_EQ(colorButton->getColor(), QColor(Qt::red));
  double rgb[3];
  view->getActor()->GetProperty()->GetColor(rgb);
  EXPECT_DOUBLE_EQ(rgb[0], 1.0);

  // Separated again, the source's changes pass it by.
  separate->click();
  EXPECT_TRUE(colorButton->isEnabled());
  m_DataSource->setSolidColor(QColor(Qt::blue));
  EXPECT_EQ(view->solidColor(), QColor(Qt::red));
}

TEST_F(DataViewPanelsTest, DatasetWithoutArraysOffersOnlyTheSolidColour)
{
  auto* view = open<VXPointsRepPimpl>(VXRepresentation::Surface, false);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  QComboBox* arrays = comboHolding(widget, ZRVtkModule::constants::k_SolidColor);
  ASSERT_NE(arrays, nullptr);
  int entries = 0;
  for (int i = 0; i < arrays->count(); ++i)
  {
    entries += arrays->itemText(i).isEmpty() ? 0 : 1; // the separator has no text
  }
  EXPECT_EQ(entries, 1);
  EXPECT_FALSE(arrays->isEnabled());
  EXPECT_FALSE(byText<QPushButton>(widget, QStringLiteral("Preset"))->isEnabled());
  EXPECT_FALSE(byText<QCheckBox>(widget, QStringLiteral("Interpret Values As Categories"))->isEnabled());
  EXPECT_FALSE(comboHolding(widget, ZRVtkModule::constants::k_MapScalarsNever)->isEnabled());
}

TEST_F(DataViewPanelsTest, AttachedPointsViewTakesTheSourcesColourMapAndShowsIt)
{
  auto* view = open<VXPointsRepPimpl>(VXRepresentation::Surface);
  ASSERT_NE(view, nullptr);
  QWidget* widget = panel();
  ASSERT_NE(widget, nullptr);
  comboHolding(widget, ZRVtkModule::constants::k_SolidColor)->setCurrentText(QStringLiteral("FeatureIds"));
  auto* invert = byText<QPushButton>(widget, QStringLiteral("Invert"));
  auto* nanButton = afterLabel<ZRColorButton>(widget, QStringLiteral("NaN Color: "));
  auto* preset = byText<QPushButton>(widget, QStringLiteral("Preset"));
  ASSERT_TRUE(invert != nullptr && nanButton != nullptr && preset != nullptr);

  // Separated (the default): the view's own preset dialog colours it.
  VXLookupTable::ColorPreset greys;
  greys.m_Name = "Greys";
  greys.m_RGBPoints = {0.0f, 0.0f, 0.0f, 0.0f, 1.0f, 1.0f, 1.0f, 1.0f};
  Q_EMIT view->colorPresetsDialog()->applyPreset(greys, QPixmap());
  EXPECT_FALSE(view->isUsingDefaultPreset());
  double rgb[3];
  view->lookupTable()->getColorTransferFunction()->GetColor(1.0, rgb);
  EXPECT_DOUBLE_EQ(rgb[0], 0.0);
  view->lookupTable()->getColorTransferFunction()->GetColor(400.0, rgb);
  EXPECT_DOUBLE_EQ(rgb[0], 1.0);

  // Attached: the source's colour map, inversion and NaN colour reach the view and its controls.
  byText<QCheckBox>(widget, QStringLiteral("Enable Separate Color Map"))->click();
  EXPECT_FALSE(preset->isEnabled());
  EXPECT_FALSE(invert->isEnabled());
  EXPECT_TRUE(view->isUsingDefaultPreset());
  m_DataSource->setColorsInverted(true);
  EXPECT_TRUE(view->lookupTable()->isInverted());
  EXPECT_TRUE(invert->isChecked());
  m_DataSource->setNanColor(QColor(Qt::green));
  EXPECT_EQ(view->lookupTable()->getNANColor(), QColor(Qt::green));
  EXPECT_EQ(nanButton->getColor(), QColor(Qt::green));
  m_DataSource->applyPreset(greys, QPixmap());
  EXPECT_FALSE(view->isUsingDefaultPreset());
  EXPECT_FALSE(invert->isChecked());
  EXPECT_FALSE(view->lookupTable()->isInverted());
}

TEST(ColoringComboBoxes, RefillsKeepTheChoiceOnlyWhileItStillMeansTheSame)
{
  using namespace ZRVtkModule::utils;
  ZRComboBox arrays;
  QMap<QString, QIcon> names = {{QStringLiteral("Velocity"), QIcon()},
                                {QStringLiteral("FeatureIds"), QIcon()}};
  UpdateArrayColoringComboBox(&arrays, names, true);
  ASSERT_EQ(arrays.count(), 4); // solid colour, separator, then the arrays by name
  EXPECT_EQ(arrays.itemText(0), ZRVtkModule::constants::k_SolidColor);
  EXPECT_EQ(arrays.itemText(2), QStringLiteral("FeatureIds"));
  arrays.setCurrentText(QStringLiteral("Velocity"));
  QSignalSpy changes(&arrays, &QComboBox::currentTextChanged);
  names.insert(QStringLiteral("Confidence"), QIcon());
  UpdateArrayColoringComboBox(&arrays, names, true);
  EXPECT_EQ(arrays.currentText(), QStringLiteral("Velocity"));
  EXPECT_EQ(changes.count(), 0);
  names.remove(QStringLiteral("Velocity"));
  UpdateArrayColoringComboBox(&arrays, names, false);
  EXPECT_EQ(arrays.findText(ZRVtkModule::constants::k_SolidColor), -1);
  EXPECT_NE(arrays.currentText(), QStringLiteral("Velocity"));

  ZRComboBox components;
  const QList<QString> xyz = {QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z")};
  UpdateComponentComboBox(&components, QStringLiteral("Velocity"), QStringLiteral("Velocity"), 2, xyz);
  EXPECT_EQ(components.count(), 4);
  EXPECT_EQ(components.currentText(), QStringLiteral("Z"));
  EXPECT_TRUE(components.isEnabled());
  // Another array starts at the magnitude.
  UpdateComponentComboBox(&components, QStringLiteral("Normals"), QStringLiteral("Velocity"), 2, xyz);
  EXPECT_EQ(components.currentIndex(), 0);
  UpdateComponentComboBox(&components, QStringLiteral("FeatureIds"), QStringLiteral("FeatureIds"), 0,
                          {QStringLiteral("0")});
  EXPECT_EQ(components.count(), 0);
  EXPECT_FALSE(components.isEnabled());
}

#include "VXDataViewPanelsTest.moc"
