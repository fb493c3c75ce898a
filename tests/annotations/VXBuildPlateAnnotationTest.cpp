#include "annotations/VXBuildPlateAnnotationSource.h"
#include "annotations/VXBuildPlateAnnotationSourcePimpl.h"
#include "annotations/VXBuildPlateAnnotationSourceWidget.h"
#include "main/VXMainWidget.h"
#include "pipeline/VXPipeline.h"
#include "pipeline/VXPipelineModel.h"
#include "views/VXAbstractViewWidget.h"
#include "views/VXViewGridWidget.h"
#include "views/VXViewWidget.h"
#include "views/VXVisualizationWidget.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <vtkActor.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkPolyData.h>
#include <vtkRenderer.h>
#include <vtkUnsignedCharArray.h>

#include <QApplication>
#include <QComboBox>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

#include <cmath>
#include <memory>
#include <set>

namespace
{
void settle()
{
  for (int i = 0; i < 5; ++i)
  {
    QCoreApplication::processEvents();
    QTest::qWait(5);
  }
}

struct LineCounts
{
  int lines = 0;
  int minor = 0;
  int major = 0;
};

// Counts the plate's line cells by their colour: minor lines are gray, major ones white by default.
LineCounts countLines(vtkPolyData* plate)
{
  LineCounts counts;
  counts.lines = static_cast<int>(plate->GetNumberOfLines());
  auto* colors = vtkUnsignedCharArray::SafeDownCast(plate->GetCellData()->GetScalars());
  EXPECT_NE(colors, nullptr);
  if (colors == nullptr)
  {
    return counts;
  }
  EXPECT_EQ(colors->GetNumberOfTuples(), plate->GetNumberOfCells()) << "one colour per line";
  EXPECT_EQ(colors->GetNumberOfComponents(), 3);
  for (vtkIdType i = 0; i < colors->GetNumberOfTuples(); ++i)
  {
    const int red = colors->GetTypedComponent(i, 0);
    (red == 255 ? counts.major : counts.minor) += 1;
  }
  return counts;
}

std::set<double> coordinatesOfLinesAlong(vtkPolyData* plate, int axis, int constantAxis)
{
  std::set<double> values;
  vtkCellArray* lines = plate->GetLines();
  lines->InitTraversal();
  vtkIdType count = 0;
  const vtkIdType* ids = nullptr;
  while (lines->GetNextCell(count, ids))
  {
    if (count != 2)
    {
      continue;
    }
    double a[3];
    double b[3];
    plate->GetPoint(ids[0], a);
    plate->GetPoint(ids[1], b);
    if (std::abs(a[constantAxis] - b[constantAxis]) < 1e-9 && std::abs(a[axis] - b[axis]) > 1e-9)
    {
      values.insert(std::round(a[constantAxis] * 1000.0) / 1000.0);
    }
  }
  return values;
}
} // namespace

class VXBuildPlateAnnotationTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    m_Main = std::make_unique<VXMainWidget>();
    m_Main->resize(900, 600);
    m_Main->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_Main.get()));
    settle();
    m_View = m_Main->getAllViewWidgets().value(0);
    ASSERT_NE(m_View, nullptr);
    m_Plate = new VXBuildPlateAnnotationSource();
    m_Main->pipeline()->addGlobalSource(m_Plate);
    ASSERT_NE(m_Plate->addModuleInstance(nullptr, m_View, nullptr), nullptr);
    m_Instance = m_Plate->plate(m_View);
    ASSERT_NE(m_Instance, nullptr);
  }

  void TearDown() override { m_Main.reset(); }

  std::unique_ptr<VXMainWidget> m_Main;
  VXAbstractViewWidget* m_View = nullptr;
  VXBuildPlateAnnotationSource* m_Plate = nullptr;
  VXBuildPlateAnnotationSourcePimpl* m_Instance = nullptr;
};

TEST_F(VXBuildPlateAnnotationTest, DefaultSquarePlateHas122LinesOverA100By100Square)
{
  vtkPolyData* plate = m_Instance->plateOutput();
  const LineCounts counts = countLines(plate);
  EXPECT_EQ(counts.lines, 122);
  EXPECT_EQ(counts.major, 22) << "11 + 11 major lines";
  EXPECT_EQ(counts.minor, 100) << "50 + 50 minor lines";
  double bounds[6];
  plate->GetBounds(bounds);
  EXPECT_NEAR(bounds[0], 0.0, 1e-6);
  EXPECT_NEAR(bounds[1], 100.0, 1e-6);
  EXPECT_NEAR(bounds[2], 0.0, 1e-6);
  EXPECT_NEAR(bounds[3], 100.0, 1e-6);
  EXPECT_NEAR(bounds[4], 0.0, 1e-6) << "a normal of (0, 0, 1) leaves the plate in the xy plane";
  EXPECT_NEAR(bounds[5], 0.0, 1e-6);
  // The plate is in the window's scene.
  EXPECT_TRUE(m_View->getVisualizationWidget()->getRenderer()->HasViewProp(m_Instance->actor()));
}

TEST_F(VXBuildPlateAnnotationTest, DimensionThatIsNoMultipleOfTheSpacingEndsShortOfTheFarEdge)
{
  m_Instance->setXDimension(95);
  m_Instance->setYDimension(100);
  vtkPolyData* plate = m_Instance->plateOutput();
  // Lines parallel to y sit at fixed x: majors at 0..90, minors at 2..94.
  const std::set<double> xs = coordinatesOfLinesAlong(plate, 1, 0);
  EXPECT_EQ(*xs.begin(), 0.0);
  EXPECT_EQ(*xs.rbegin(), 94.0) << "no closing line at x = 95";
  EXPECT_EQ(xs.count(90.0), 1u);
  const LineCounts counts = countLines(plate);
  EXPECT_EQ(counts.major, 10 + 11);
  EXPECT_EQ(counts.minor, 47 + 50);
  double bounds[6];
  plate->GetBounds(bounds);
  EXPECT_NEAR(bounds[1], 95.0, 1e-6) << "the lines along x still run the whole dimension";
}

TEST_F(VXBuildPlateAnnotationTest, OriginAndSpacingsPlaceAndCountTheLines)
{
  m_Instance->setXOrigin(-10.0);
  m_Instance->setYOrigin(5.0);
  m_Instance->setZOrigin(2.0);
  m_Instance->setXSpacing(25.0);
  m_Instance->setYSpacing(50.0);
  m_Instance->setXMinorSpacing(5.0);
  m_Instance->setYMinorSpacing(10.0);
  vtkPolyData* plate = m_Instance->plateOutput();
  const LineCounts counts = countLines(plate);
  EXPECT_EQ(counts.major, 5 + 3);
  EXPECT_EQ(counts.minor, 20 + 10);
  double bounds[6];
  plate->GetBounds(bounds);
  EXPECT_NEAR(bounds[0], -10.0, 1e-5);
  EXPECT_NEAR(bounds[1], 90.0, 1e-5);
  EXPECT_NEAR(bounds[2], 5.0, 1e-5);
  EXPECT_NEAR(bounds[3], 105.0, 1e-5);
  EXPECT_NEAR(bounds[4], 2.0, 1e-5);
  EXPECT_NEAR(bounds[5], 2.0, 1e-5);
}

TEST_F(VXBuildPlateAnnotationTest, CirclePlateHasARimAndLinesEndingOnIt)
{
  m_Instance->setRadius(50);
  m_Instance->setXCenter(0.0);
  m_Instance->setYCenter(0.0);
  m_Instance->setPlateShape(VXBuildPlateAnnotationSourceWidget::Circle);
  vtkPolyData* plate = m_Instance->plateOutput();
  double bounds[6];
  plate->GetBounds(bounds);
  EXPECT_NEAR(bounds[0], -50.0, 1e-4);
  EXPECT_NEAR(bounds[1], 50.0, 1e-4);
  EXPECT_NEAR(bounds[2], -50.0, 1e-4);
  EXPECT_NEAR(bounds[3], 50.0, 1e-4);
  // The rim: one polyline of 121 points whose last point closes on the first.
  vtkCellArray* lines = plate->GetLines();
  lines->InitTraversal();
  vtkIdType count = 0;
  const vtkIdType* ids = nullptr;
  ASSERT_TRUE(lines->GetNextCell(count, ids));
  ASSERT_EQ(count, 121);
  double first[3];
  double last[3];
  plate->GetPoint(ids[0], first);
  plate->GetPoint(ids[120], last);
  EXPECT_NEAR(first[0], last[0], 1e-9);
  EXPECT_NEAR(first[1], last[1], 1e-9);
  // Lines at -40..40 by 10 (majors) and -48..48 by 2 (minors) on each axis; those at +-50 have no length.
  const LineCounts counts = countLines(plate);
  EXPECT_EQ(counts.lines, 1 + 2 * (9 + 49));
  EXPECT_EQ(counts.major, 1 + 2 * 9);
  // Every grid line ends on the rim.
  for (vtkIdType cell = 1; cell < plate->GetNumberOfCells(); ++cell)
  {
    double a[3];
    double b[3];
    plate->GetPoint(plate->GetCell(cell)->GetPointId(0), a);
    plate->GetPoint(plate->GetCell(cell)->GetPointId(1), b);
    EXPECT_NEAR(std::hypot(a[0], a[1]), 50.0, 1e-4) << "line " << cell;
    EXPECT_NEAR(std::hypot(b[0], b[1]), 50.0, 1e-4) << "line " << cell;
  }
}

TEST_F(VXBuildPlateAnnotationTest, NormalTurnsThePlateOutOfTheXyPlane)
{
  m_Instance->setZNormal(0.0);
  m_Instance->setXNormal(1.0);
  vtkPolyData* plate = m_Instance->plateOutput();
  double bounds[6];
  plate->GetBounds(bounds);
  // Turned about the y axis: the plate stands in the yz plane, with x flat.
  EXPECT_NEAR(bounds[1] - bounds[0], 0.0, 1e-4);
  EXPECT_NEAR(bounds[3] - bounds[2], 100.0, 1e-4);
  EXPECT_NEAR(bounds[5] - bounds[4], 100.0, 1e-4);
}

TEST_F(VXBuildPlateAnnotationTest, OpacityIsAClampedPercentage)
{
  m_Instance->setOpacity(40);
  EXPECT_DOUBLE_EQ(m_Instance->opacity(), 0.4);
  m_Instance->setOpacity(250);
  EXPECT_DOUBLE_EQ(m_Instance->opacity(), 1.0);
  m_Instance->setOpacity(-5);
  EXPECT_DOUBLE_EQ(m_Instance->opacity(), 0.0);
}

TEST_F(VXBuildPlateAnnotationTest, RecordKeepsEverySettingAndMissingKeysKeepTheirValues)
{
  m_Instance->setPlateShape(VXBuildPlateAnnotationSourceWidget::Circle);
  m_Instance->setRadius(70);
  m_Instance->setXSpacing(7.5);
  m_Instance->setBuildPlateColor(QColor(10, 20, 30));
  m_Instance->setVisibility(false);
  nlohmann::json written = nlohmann::json::object();
  m_Instance->write(written);
  EXPECT_EQ(written.at("build_plate_annotation_plate_shape"), 1);
  EXPECT_EQ(written.at("build_plate_annotation_radius"), 70);
  EXPECT_EQ(written.at("build_plate_annotation_color_g"), 20);
  EXPECT_EQ(written.at("global_source_visible"), false);

  VXBuildPlateAnnotationSourcePimpl other(m_Plate, nullptr);
  other.read(nlohmann::json{{"build_plate_annotation_x_dim", 33}});
  EXPECT_EQ(other.xDimension(), 33);
  EXPECT_EQ(other.yDimension(), 100) << "a missing key keeps the current value";
  other.read(written);
  nlohmann::json again = nlohmann::json::object();
  other.write(again);
  EXPECT_EQ(again, written);
}

TEST_F(VXBuildPlateAnnotationTest, SplitViewGetsItsOwnCopyAndVisibilityIsPerView)
{
  m_Instance->setXDimension(40);
  auto* second = m_View->clone();
  ASSERT_NE(second, nullptr);
  second->setupView();
  m_View->notifyViewWidgetCreated(second);
  VXBuildPlateAnnotationSourcePimpl* copy = m_Plate->plate(second);
  ASSERT_NE(copy, nullptr);
  EXPECT_NE(copy, m_Instance);
  EXPECT_EQ(copy->xDimension(), 40) << "the split starts as its source view has it";
  copy->setXDimension(60);
  EXPECT_EQ(m_Instance->xDimension(), 40) << "each view keeps its own settings";

  m_Instance->setVisibility(false);
  EXPECT_FALSE(m_Plate->isVisibleIn(m_View));
  EXPECT_TRUE(m_Plate->isVisibleIn(second));
  EXPECT_FALSE(m_Instance->actor()->GetVisibility());
  delete second;
}

TEST_F(VXBuildPlateAnnotationTest, ActiveViewWithoutInstanceDisablesTheRow)
{
  QSignalSpy states(m_Plate, &VXGlobalSource::enabledDisabledStateChanged);
  m_Plate->activeViewChanged(m_View, m_View);
  EXPECT_EQ(states.count(), 0) << "the same view twice changes nothing";
  m_Plate->activeViewChanged(m_View, nullptr);
  ASSERT_EQ(states.count(), 1);
  EXPECT_FALSE(states.at(0).at(1).toBool());
  m_Plate->activeViewChanged(nullptr, m_View);
  ASSERT_EQ(states.count(), 2);
  EXPECT_TRUE(states.at(1).at(1).toBool());
}

TEST_F(VXBuildPlateAnnotationTest, PlateIsATopLevelRowWithItsCheckAndPanel)
{
  VXPipelineModel* model = m_Main->pipelineModel();
  const QModelIndex row = model->globalSourceIndex(m_Plate);
  ASSERT_TRUE(row.isValid());
  EXPECT_FALSE(row.parent().isValid());
  EXPECT_TRUE(model->isGlobalSource(row));
  EXPECT_EQ(model->data(row.siblingAtColumn(1), Qt::DisplayRole).toString(), QStringLiteral("Build Plate"));
  EXPECT_EQ(model->data(row, Qt::ToolTipRole).toString(),
            QStringLiteral("Name: Build Plate\nType: Global Source"));
  EXPECT_EQ(model->data(row, Qt::CheckStateRole).toInt(), Qt::Checked);
  ASSERT_TRUE(model->setData(row, false, Qt::CheckStateRole));
  EXPECT_FALSE(m_Instance->isVisible());
  EXPECT_EQ(model->data(row, Qt::CheckStateRole).toInt(), Qt::Unchecked);
  QWidget* panel = model->itemWidget(row);
  ASSERT_NE(panel, nullptr);
  EXPECT_NE(panel->findChild<QWidget*>(QStringLiteral("settingsWidgetTitleFrame")), nullptr);
  EXPECT_NE(panel->findChild<VXBuildPlateAnnotationSourceWidget*>(), nullptr);

  model->removeItem(row);
  EXPECT_FALSE(model->globalSourceIndex(m_Plate).isValid());
  settle();
  EXPECT_EQ(m_Main->pipeline()->globalSources().size(), 0);
}

TEST_F(VXBuildPlateAnnotationTest, FormEditsRedrawThePlateAndShowOnlyTheShapesInputs)
{
  auto* panel = m_Plate->settingsWidget();
  ASSERT_NE(panel, nullptr);
  auto* form = panel->findChild<VXBuildPlateAnnotationSourceWidget*>();
  ASSERT_NE(form, nullptr);
  auto* xDimension = form->findChild<QSpinBox*>(QStringLiteral("xDimension"));
  auto* radius = form->findChild<QSpinBox*>(QStringLiteral("radius"));
  auto* shape = form->findChild<QComboBox*>(QStringLiteral("plateShape"));
  ASSERT_TRUE(xDimension != nullptr && radius != nullptr && shape != nullptr);
  panel->show();
  EXPECT_TRUE(xDimension->isVisible());
  EXPECT_FALSE(radius->isVisible());
  xDimension->setValue(20);
  EXPECT_EQ(m_Instance->xDimension(), 20);
  EXPECT_EQ(countLines(m_Instance->plateOutput()).major, 3 + 11);
  shape->setCurrentIndex(shape->findData(VXBuildPlateAnnotationSourceWidget::Circle));
  EXPECT_EQ(m_Instance->plateShape(), 1);
  EXPECT_FALSE(xDimension->isVisible());
  EXPECT_TRUE(radius->isVisible());
}

TEST_F(VXBuildPlateAnnotationTest, HitTestNeedsARectangle)
{
  EXPECT_FALSE(m_Instance->hitTest(QPoint(0, 0)));
  EXPECT_FALSE(m_Instance->hitTest(QPoint(100, 100)));
}

TEST_F(VXBuildPlateAnnotationTest, StateSaveLoadSaveGivesTheSameRecord)
{
  m_Plate->setName(QStringLiteral("Machine Plate"), 0);
  m_Instance->setPlateShape(VXBuildPlateAnnotationSourceWidget::Circle);
  m_Instance->setRadius(125);
  m_Instance->setYMinorSpacing(2.5);
  m_Instance->setBuildPlateMinorColor(QColor(1, 2, 3));
  nlohmann::json first = nlohmann::json::object();
  m_Main->saveState(first);
  const nlohmann::json& tree = first.at("tree_view_state");
  ASSERT_EQ(tree.size(), 1u);
  EXPECT_EQ(tree.at(0).at("item_type"), "VXBuildPlateAnnotationSource");
  const nlohmann::json& data = tree.at(0).at("item_data");
  EXPECT_EQ(data.at("build_plate_object_name"), "Machine Plate");
  ASSERT_EQ(data.at("global_source_view_implementations").size(), 1u);
  EXPECT_EQ(data.at("global_source_view_implementations").at(0).at("render_window_index"), 0);
  EXPECT_EQ(data.at("global_source_view_implementations").at(0).at("build_plate_annotation_radius"), 125);

  VXMainWidget other;
  other.resize(900, 600);
  other.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
  QSignalSpy messages(&other, &VXMainWidget::printOutput);
  other.loadState(first);
  settle();
  for (const QList<QVariant>& message : messages)
  {
    EXPECT_FALSE(message.at(0).toString().contains(QStringLiteral("Error")))
        << message.at(0).toString().toStdString();
  }
  ASSERT_EQ(other.pipeline()->globalSources().size(), 1);
  auto* loaded = qobject_cast<VXBuildPlateAnnotationSource*>(other.pipeline()->globalSources().first());
  ASSERT_NE(loaded, nullptr);
  VXBuildPlateAnnotationSourcePimpl* loadedPlate = loaded->plate(other.getAllViewWidgets().value(0));
  ASSERT_NE(loadedPlate, nullptr);
  EXPECT_EQ(loadedPlate->radius(), 125);
  EXPECT_EQ(countLines(loadedPlate->plateOutput()).lines, countLines(m_Instance->plateOutput()).lines);
  nlohmann::json second = nlohmann::json::object();
  other.saveState(second);
  EXPECT_EQ(second.at("tree_view_state"), first.at("tree_view_state"));
}
