#include "pipeline/VXDataSource.h"

#include "data_bridge/CVArray.h"
#include "data_bridge/ZRVtkObjectName.h"
#include "pipeline/VXPipeline.h"
#include "platform/ColorPresetsDialog.h"
#include "platform/ZRColorButton.h"
#include "platform/ZRPreferences.h"
#include "views/VXViewWidget.h"

#include <vtkAlgorithmOutput.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkTrivialProducer.h>
#include <vtkUnsignedCharArray.h>

#include <nlohmann/json.hpp>

#include <QClipboard>
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

namespace
{
template<class ArrayT>
vtkSmartPointer<ArrayT> makeArray(const char* name, int components, vtkIdType tuples)
{
  auto array = vtkSmartPointer<ArrayT>::New();
  array->SetName(name);
  array->SetNumberOfComponents(components);
  array->SetNumberOfTuples(tuples);
  array->Fill(0);
  return array;
}

vtkSmartPointer<vtkImageData> makeImage()
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  image->SetDimensions(2, 2, 2); // 8 points, 1 cell
  image->GetPointData()->AddArray(makeArray<vtkUnsignedCharArray>("RGB", 3, 8));
  image->GetPointData()->AddArray(makeArray<vtkFloatArray>("Shared", 3, 8));
  image->GetPointData()->AddArray(makeArray<vtkUnsignedCharArray>("RGBA", 4, 8));
  image->GetCellData()->AddArray(makeArray<vtkDoubleArray>("Normals", 3, 1));
  image->GetCellData()->AddArray(makeArray<vtkDoubleArray>("Shared", 1, 1));
  image->GetCellData()->AddArray(makeArray<vtkDoubleArray>("Scalar", 1, 1));
  return image;
}

// A source with its settings panel, which needs an active view.
struct SourceWithPanel
{
  VXPipeline pipeline;
  VXViewWidget view;
  VXDataSource source;
  std::unique_ptr<QWidget> panel;
  ZRColorButton* solidColor = nullptr;
  QPushButton* invert = nullptr;
  QPushButton* edit = nullptr;

  SourceWithPanel()
  {
    source.setPipeline(&pipeline);
    pipeline.setActiveViewWidget(&view);
    panel.reset(source.settingsWidget());
    solidColor = panel->findChild<ZRColorButton*>(QStringLiteral("m_SolidColorButton"));
    invert = panel->findChild<QPushButton*>(QStringLiteral("m_InvertColorBtn"));
    edit = panel->findChild<QPushButton*>(QStringLiteral("m_ColorPresetButton"));
  }
};

QPushButton* dialogButton(ColorPresetsDialog* dialog, const char* name)
{
  return dialog->findChild<QPushButton*>(QString::fromLatin1(name));
}
} // namespace

TEST(VXDataSource, ComponentNamesFollowArrayKind)
{
  VXDataSource source;
  source.setDataSet(makeImage());
  EXPECT_EQ(source.getComponentNames("RGB"), (QStringList{"Magnitude", "R", "G", "B"}));
  EXPECT_EQ(source.getComponentNames("RGBA"),
            (QStringList{"Magnitude", "Comp 0", "Comp 1", "Comp 2", "Comp 3"}));
  // Only VTK's own float arrays get X, Y, Z.
  EXPECT_EQ(source.getComponentNames("Normals"), (QStringList{"Magnitude", "Comp 0", "Comp 1", "Comp 2"}));
  EXPECT_EQ(source.getComponentNames("Scalar"), QStringList{"Comp 0"});
  // A name in both point and cell data answers with the point array.
  EXPECT_EQ(source.getComponentNames("Shared"), (QStringList{"Magnitude", "X", "Y", "Z"}));
  EXPECT_TRUE(source.getComponentNames("Missing").isEmpty());

  auto wrapped = vtkSmartPointer<CV::Array<float>>::New();
  wrapped->SetName("Wrapped");
  wrapped->SetNumberOfComponents(3);
  auto image = makeImage();
  image->GetCellData()->AddArray(wrapped);
  source.setDataSet(image);
  EXPECT_EQ(source.getComponentNames("Wrapped"), (QStringList{"Magnitude", "Comp 0", "Comp 1", "Comp 2"}));
}

TEST(VXDataSource, ArrayNamesListPointsThenCells)
{
  VXDataSource source;
  source.setDataSet(makeImage());
  const auto names = source.getImportedArrayNames();
  QStringList texts;
  for (const auto& entry : names)
  {
    texts << entry.second;
  }
  EXPECT_EQ(texts, (QStringList{"RGB", "Shared", "RGBA", "Normals", "Shared", "Scalar"}));
}

TEST(VXDataSource, NullDatasetGivesEmptyAnswers)
{
  VXDataSource source;
  source.setDataSet(nullptr);
  EXPECT_EQ(source.getOutput(), nullptr);
  EXPECT_TRUE(source.getImportedArrayNames().isEmpty());
  EXPECT_TRUE(source.getComponentNames("RGB").isEmpty());
  EXPECT_EQ(source.baseName(), QStringLiteral("Unnamed Geometry"));
  EXPECT_EQ(VXPipeline::DefaultRepresentationType(&source), VXPipeline::getDefaultRepType());
}

namespace
{
// Polygons of one size each: three make triangles, four quads, five a pentagon.
vtkSmartPointer<vtkPolyData> makePolygons(int corners)
{
  auto polyData = vtkSmartPointer<vtkPolyData>::New();
  vtkNew<vtkPoints> points;
  vtkNew<vtkCellArray> polys;
  for (int cell = 0; cell < 2; ++cell)
  {
    std::vector<vtkIdType> ids;
    for (int corner = 0; corner < corners; ++corner)
    {
      const double angle = 6.283185307179586 * corner / corners;
      ids.push_back(points->InsertNextPoint(std::cos(angle), std::sin(angle), cell));
    }
    polys->InsertNextCell(static_cast<vtkIdType>(ids.size()), ids.data());
  }
  polyData->SetPoints(points);
  polyData->SetPolys(polys);
  return polyData;
}
} // namespace

TEST(VXDataSource, DefaultViewOfPolygonsFollowsTheirSizeWithoutBuildingTheCellMap)
{
  const VXRepresentation::Type triangle = VXPipeline::getDefaultTriangleRepType();
  const VXRepresentation::Type quad = VXPipeline::getDefaultQuadRepType();
  const VXRepresentation::Type other = VXPipeline::getDefaultRepType();
  VXPipeline::setDefaultTriangleRepType(VXRepresentation::Surface);
  VXPipeline::setDefaultQuadRepType(VXRepresentation::Wireframe);
  VXPipeline::setDefaultRepType(VXRepresentation::Points);

  const std::pair<int, VXRepresentation::Type> cases[] = {
      {3, VXRepresentation::Surface}, {4, VXRepresentation::Wireframe}, {5, VXRepresentation::Points}};
  for (const auto& [corners, expected] : cases)
  {
    VXDataSource source;
    source.setDataSet(makePolygons(corners));
    EXPECT_EQ(VXPipeline::DefaultRepresentationType(&source), expected) << corners << " corners";
    // The map from cell id to cell costs eight bytes a cell; a large mesh should not get one here.
    auto* polyData = vtkPolyData::SafeDownCast(source.getOutput());
    ASSERT_NE(polyData, nullptr);
    EXPECT_TRUE(polyData->NeedToBuildCells()) << corners << " corners";
  }

  VXPipeline::setDefaultTriangleRepType(triangle);
  VXPipeline::setDefaultQuadRepType(quad);
  VXPipeline::setDefaultRepType(other);
}

TEST(VXDataSource, NameComesFromDatasetAndGoesBack)
{
  VXDataSource source;
  auto image = makeImage();
  ZRVtk::SetObjectName(image, "Grains");
  source.setDataSet(image);
  EXPECT_EQ(source.baseName(), QStringLiteral("Grains"));
  source.setBaseName(QStringLiteral("Renamed"));
  EXPECT_EQ(ZRVtk::GetObjectName(image), "Renamed");
  // The producer hands out the dataset through the same port.
  auto* producer = vtkTrivialProducer::SafeDownCast(source.outputPort()->GetProducer());
  ASSERT_NE(producer, nullptr);
  EXPECT_EQ(producer->GetOutputDataObject(0), image.Get());
}

TEST(VXDataSource, VisibilityOffClearsAndOnUpdates)
{
  VXPipeline pipeline;
  VXViewWidget view;
  pipeline.setActiveViewWidget(&view);
  VXDataSource source;
  source.setPipeline(&pipeline);
  source.setDataSet(makeImage());
  QSignalSpy cleared(&source, &VXCoreObject::requestClear);
  QList<int> updated; // the signal carries a VTK pointer, which a QSignalSpy cannot hold
  QObject::connect(&source, &VXCoreObject::requestUpdate,
                   [&updated](const QString&, vtkDataSet*) { updated << 1; });

  source.setVisibility(true);
  EXPECT_TRUE(source.isVisible());
  EXPECT_EQ(updated.count(), 1);
  source.setVisibility(false);
  EXPECT_FALSE(source.isVisible());
  EXPECT_EQ(cleared.count(), 1);
  EXPECT_EQ(updated.count(), 1);
  // Already hidden: nothing to clear or update.
  source.setVisibility(false);
  EXPECT_EQ(cleared.count(), 1);
  EXPECT_EQ(updated.count(), 1);
}

TEST(VXDataSource, ColourSettingsReachChildrenInFixedOrder)
{
  VXDataSource source;
  QStringList order;
  QObject::connect(&source, &VXDataSource::restoreDefaultPresetColors, [&]() { order << "default"; });
  QObject::connect(&source, &VXDataSource::loadPresetColors, [&](const auto&) { order << "preset"; });
  QObject::connect(&source, &VXDataSource::solidColorChanged, [&](const QColor&) { order << "solid"; });
  QObject::connect(&source, &VXDataSource::nanColorChanged, [&](const QColor&) { order << "nan"; });
  QObject::connect(&source, &VXDataSource::invertColorMap, [&](bool) { order << "invert"; });

  source.triggerColorSettingsChange();
  EXPECT_EQ(order, (QStringList{"default", "solid", "nan", "invert"}));

  order.clear();
  VXDataSource::ColorPreset preset;
  preset.m_Name = "Gray";
  preset.m_RGBPoints = {0, 0, 0, 0, 1, 1, 1, 1};
  source.setColorsInverted(true);
  order.clear();
  source.applyPreset(preset, QPixmap());
  // A new preset always starts uninverted.
  EXPECT_EQ(order, (QStringList{"preset", "invert"}));
  EXPECT_FALSE(source.getIsInverted());
  EXPECT_FALSE(source.isUsingDefaultPreset());
  EXPECT_EQ(source.getCurrentPreset().m_Name, "Gray");
}

TEST(VXDataSource, StateRoundTripAndMissingKeysKeepValues)
{
  VXDataSource source;
  source.setDataSet(makeImage());
  source.setBaseName(QStringLiteral("Grains"));
  source.setSolidColor(QColor(10, 20, 30));
  source.setNanColor(QColor(200, 100, 50));
  VXDataSource::ColorPreset preset;
  preset.m_Name = "Gray";
  source.applyPreset(preset, QPixmap());
  source.setColorsInverted(true);

  nlohmann::json json;
  source.write(json, {});
  EXPECT_EQ(json.at("core_object_name"), "Grains");
  EXPECT_EQ(json.at("data_source_solid_color_g"), 20);
  EXPECT_EQ(json.at("data_source_nan_color_r"), 200);
  EXPECT_EQ(json.at("current_preset").at("Name"), "Gray");
  EXPECT_EQ(json.at("data_source_color_map_inverted"), true);
  EXPECT_EQ(json.at("data_source_using_default_preset"), false);

  VXDataSource copy;
  copy.setNanColor(QColor(1, 2, 3));
  nlohmann::json partial = json;
  partial.erase("data_source_nan_color_r");
  partial.erase("data_source_nan_color_g");
  partial.erase("data_source_nan_color_b");
  copy.read(partial, {});
  EXPECT_EQ(copy.baseName(), QStringLiteral("Grains"));
  EXPECT_EQ(copy.getSolidColor(), QColor(10, 20, 30));
  EXPECT_EQ(copy.getNanColor(), QColor(1, 2, 3));
  EXPECT_TRUE(copy.getIsInverted());
  EXPECT_EQ(copy.getCurrentPreset().m_Name, "Gray");

  nlohmann::json wrongType = json;
  wrongType["data_source_color_map_inverted"] = "yes";
  EXPECT_THROW(copy.read(wrongType, {}), nlohmann::json::type_error);
}

TEST(VXDataSource, CopyAndPasteThroughTheClipboard)
{
  VXDataSource source;
  source.setSolidColor(QColor(5, 6, 7));
  source.copyActiveSettings();
  VXDataSource target;
  QSignalSpy solid(&target, &VXDataSource::solidColorChanged);
  target.pasteToActiveSettings();
  EXPECT_EQ(target.getSolidColor(), QColor(5, 6, 7));
  EXPECT_EQ(solid.count(), 1);

  QGuiApplication::clipboard()->setText(QStringLiteral("not settings"));
  target.setSolidColor(QColor(1, 1, 1));
  target.pasteToActiveSettings();
  EXPECT_EQ(target.getSolidColor(), QColor(1, 1, 1));
}

TEST(VXDataSource, UserDefaultsGoThroughTheSettings)
{
  VXDataSource source;
  source.setSolidColor(QColor(11, 22, 33));
  source.setColorsInverted(true);
  source.storeSettings();
  VXDataSource fresh;
  EXPECT_EQ(fresh.getSolidColor(), QColor(11, 22, 33));
  EXPECT_TRUE(fresh.getIsInverted());
  // Put the built-in values back for other tests sharing the scratch settings.
  fresh.setSolidColor(QColor(255, 255, 255));
  fresh.setColorsInverted(false);
  fresh.storeSettings();
}

TEST(VXDataSource, SettingsPanelNeedsAnActiveViewAndDrivesTheColourState)
{
  VXPipeline pipeline;
  VXDataSource source;
  source.setPipeline(&pipeline);
  source.setBaseName(QStringLiteral("Grains"));
  EXPECT_EQ(source.settingsWidget(), nullptr);

  VXViewWidget view;
  pipeline.setActiveViewWidget(&view);
  std::unique_ptr<QWidget> panel(source.settingsWidget());
  ASSERT_NE(panel, nullptr);
  EXPECT_EQ(source.settingsWidget(), panel.get()); // built once
  EXPECT_EQ(panel->objectName(), QStringLiteral("vxInfoWidgetSettingsWidget"));
  ASSERT_NE(panel->findChild<QFrame*>(QStringLiteral("settingsWidgetTitleFrame")), nullptr);
  auto* title = panel->findChild<QLabel*>(QStringLiteral("visSettingsTitleNameLabel"));
  ASSERT_NE(title, nullptr);
  EXPECT_EQ(title->text(), QStringLiteral("Grains"));
  source.setNameSuffixCounter(2);
  EXPECT_EQ(title->text(), QStringLiteral("Grains 2"));

  auto* invert = panel->findChild<QPushButton*>(QStringLiteral("m_InvertColorBtn"));
  ASSERT_NE(invert, nullptr);
  EXPECT_EQ(invert->toolTip(),
            QStringLiteral("<html><head/><body><p>Invert the color map for all child data views "
                           "not separated from this geometry</p></body></html>"));
  QSignalSpy inverted(&source, &VXDataSource::invertColorMap);
  invert->click();
  EXPECT_TRUE(source.getIsInverted());
  ASSERT_EQ(inverted.count(), 1);
  EXPECT_TRUE(inverted.front().front().toBool());
  auto* preset = panel->findChild<QPushButton*>(QStringLiteral("m_ColorPresetButton"));
  ASSERT_NE(preset, nullptr);
  EXPECT_EQ(preset->text(), QStringLiteral("Edit"));
  auto* saveDefaults = panel->findChild<QPushButton*>(QStringLiteral("m_SaveDefaultsButton"));
  ASSERT_NE(saveDefaults, nullptr);
  EXPECT_TRUE(saveDefaults->toolTip().contains(
      QStringLiteral("Save the current settings as the default settings for all Data Source types")));
}

TEST(VXDataSource, ColourPanelFollowsDialogAndUserClicks)
{
  SourceWithPanel fixture;
  VXDataSource& source = fixture.source;
  ASSERT_TRUE(fixture.solidColor && fixture.invert && fixture.edit);
  ColorPresetsDialog* dialog = source.colorPresetsDialog();
  ASSERT_NE(dialog, nullptr);
  EXPECT_FALSE(dialog->isVisible());

  source.setNanColor(QColor(0, 128, 255));
  fixture.edit->click();
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(dialog->nanColor(), QColor(0, 128, 255));
  // The default preset is what the dialog shows as chosen.
  EXPECT_EQ(dialog->selectedPresetName(),
            QString::fromStdString(ZRPreferences::Instance()->getDefaultColorPreset().m_Name));

  fixture.invert->click();
  EXPECT_TRUE(source.getIsInverted());
  EXPECT_TRUE(fixture.invert->isChecked());

  // A preset applied in the dialog resets the inversion, and the button shows it.
  QSignalSpy loaded(&source, &VXDataSource::loadPresetColors);
  QSignalSpy inverted(&source, &VXDataSource::invertColorMap);
  ASSERT_TRUE(dialog->selectPreset(QStringLiteral("Viridis")));
  QTest::mouseClick(dialogButton(dialog, "m_ApplyButton"), Qt::LeftButton);
  EXPECT_EQ(loaded.count(), 1);
  EXPECT_EQ(source.getCurrentPreset().m_Name, "Viridis");
  EXPECT_FALSE(source.isUsingDefaultPreset());
  EXPECT_FALSE(source.getIsInverted());
  EXPECT_FALSE(fixture.invert->isChecked());
  // So the next click inverts again.
  inverted.clear();
  fixture.invert->click();
  EXPECT_TRUE(source.getIsInverted());
  ASSERT_EQ(inverted.count(), 1);
  EXPECT_TRUE(inverted.front().front().toBool());

  QSignalSpy restored(&source, &VXDataSource::restoreDefaultPresetColors);
  QTest::mouseClick(dialogButton(dialog, "m_RestoreDefaultButton"), Qt::LeftButton);
  EXPECT_EQ(restored.count(), 1);
  EXPECT_TRUE(source.isUsingDefaultPreset());

  QSignalSpy nan(&source, &VXDataSource::nanColorChanged);
  dialog->setNanColor(QColor(9, 8, 7), true);
  EXPECT_EQ(source.getNanColor(), QColor(9, 8, 7));
  EXPECT_EQ(nan.count(), 1);

  source.setSolidColor(QColor(20, 40, 60));
  EXPECT_EQ(fixture.solidColor->getColor(), QColor(20, 40, 60));
  source.setColorsInverted(false);
  EXPECT_FALSE(fixture.invert->isChecked());
  dialog->close();
}

TEST(VXDataSource, ColourPanelFollowsPasteAndRead)
{
  VXDataSource copied;
  copied.setSolidColor(QColor(1, 2, 3));
  copied.setNanColor(QColor(4, 5, 6));
  VXDataSource::ColorPreset gray;
  gray.m_Name = "Gray";
  gray.m_RGBPoints = {0, 0, 0, 0, 1, 1, 1, 1};
  copied.applyPreset(gray, QPixmap());
  copied.setColorsInverted(true);
  copied.copyActiveSettings();

  SourceWithPanel fixture;
  VXDataSource& source = fixture.source;
  ASSERT_TRUE(fixture.solidColor && fixture.invert);
  ColorPresetsDialog* dialog = source.colorPresetsDialog();
  ASSERT_NE(dialog, nullptr);
  QSignalSpy loaded(&source, &VXDataSource::loadPresetColors);
  source.pasteToActiveSettings();
  EXPECT_EQ(fixture.solidColor->getColor(), QColor(1, 2, 3));
  EXPECT_EQ(dialog->nanColor(), QColor(4, 5, 6));
  EXPECT_TRUE(fixture.invert->isChecked());
  ASSERT_EQ(loaded.count(), 1);
  EXPECT_EQ(loaded.front().front().value<VXDataSource::ColorPreset>().m_Name, "Gray");
  fixture.invert->click();
  EXPECT_FALSE(source.getIsInverted());

  // Clipboard text with one value of the wrong type changes nothing, the panel included.
  nlohmann::json bad = nlohmann::json::parse(QGuiApplication::clipboard()->text().toStdString());
  bad["data_source_solid_color_r"] = 200;
  bad["data_source_color_map_inverted"] = "yes";
  QGuiApplication::clipboard()->setText(QString::fromStdString(bad.dump()));
  source.pasteToActiveSettings();
  EXPECT_EQ(source.getSolidColor(), QColor(1, 2, 3));
  EXPECT_EQ(fixture.solidColor->getColor(), QColor(1, 2, 3));
  EXPECT_FALSE(fixture.invert->isChecked());

  nlohmann::json state;
  copied.setSolidColor(QColor(70, 80, 90));
  copied.setNanColor(QColor(11, 12, 13));
  copied.write(state, {});
  source.read(state, {});
  EXPECT_EQ(fixture.solidColor->getColor(), QColor(70, 80, 90));
  EXPECT_EQ(dialog->nanColor(), QColor(11, 12, 13));
  EXPECT_TRUE(fixture.invert->isChecked());
  fixture.invert->click();
  EXPECT_FALSE(source.getIsInverted());
}
