// Clip, slice and threshold filters in the pipeline tree: their output against the bare VTK algorithm
// on the same data, the data view of the first Apply, their tools, messages, state records and reloads.
#include "filters/FilterTestSupport.h"
#include "filters/VXBox.h"
#include "filters/VXFClip.h"
#include "filters/VXFSlice.h"
#include "filters/VXFThreshold.h"
#include "filters/VXPlane.h"

#include <vtkCallbackCommand.h>
#include <vtkCutter.h>
#include <vtkPlane.h>
#include <vtkPlanes.h>
#include <vtkPolyData.h>
#include <vtkTableBasedClipDataSet.h>
#include <vtkThreshold.h>
#include <vtkUnstructuredGrid.h>

#include <nlohmann/json.hpp>

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

namespace
{
using json = nlohmann::json;

vtkSmartPointer<vtkDataSet> directClip(vtkDataSet* input, vtkImplicitFunction* function, bool insideOut)
{
  vtkNew<vtkTableBasedClipDataSet> clip;
  clip->SetInputData(input);
  clip->SetClipFunction(function);
  clip->SetInsideOut(insideOut ? 1 : 0);
  clip->Update();
  return clip->GetOutput();
}

vtkSmartPointer<vtkDataSet> directSlice(vtkDataSet* input, std::array<double, 3> origin,
                                        std::array<double, 3> normal)
{
  vtkNew<vtkPlane> plane;
  plane->SetOrigin(origin.data());
  plane->SetNormal(normal.data());
  vtkNew<vtkCutter> cutter;
  cutter->SetInputData(input);
  cutter->SetCutFunction(plane);
  cutter->Update();
  return cutter->GetOutput();
}

vtkSmartPointer<vtkDataSet> directThreshold(vtkDataSet* input, const char* array, int component, double low,
                                            double high)
{
  vtkNew<vtkThreshold> threshold;
  threshold->SetInputData(input);
  threshold->SetLowerThreshold(low);
  threshold->SetUpperThreshold(high);
  threshold->SetThresholdFunction(vtkThreshold::THRESHOLD_BETWEEN);
  threshold->SetComponentMode(VTK_COMPONENT_MODE_USE_SELECTED);
  threshold->SetSelectedComponent(component);
  threshold->SetInputArrayToProcess(0, 0, 0, vtkDataObject::FIELD_ASSOCIATION_POINTS_THEN_CELLS, array);
  threshold->Update();
  return threshold->GetOutput();
}

class FilterTest : public FilterFixture
{
};

TEST_F(FilterTest, ClipPlaneMatchesTheBareAlgorithmAndTheFirstApplyAddsOneDataView)
{
  vtkSmartPointer<vtkImageData> image = MakeTestImage(12);
  VXDataSource* source = importImage(image);
  ASSERT_NE(source, nullptr);
  auto* clip = addFilter<VXFClip>(source);
  ASSERT_NE(clip, nullptr);
  EXPECT_TRUE(m_Model.isFilter(m_Model.filterIndex(clip)));
  EXPECT_EQ(m_Model.getFilter(m_Model.filterIndex(clip)), clip);
  EXPECT_EQ(clip->name(), QStringLiteral("Clip Filter 1"));
  EXPECT_EQ(childRepresentations(clip), 0) << "nothing runs before Apply";

  clip->plane()->setValues({5.5, 6.0, 6.0}, {0.6, 0.8, 0.0});
  clip->applyFilter();
  vtkNew<vtkPlane> plane;
  plane->SetOrigin(5.5, 6.0, 6.0);
  plane->SetNormal(0.6, 0.8, 0.0);
  ExpectSameOutput(directClip(source->getOutput(), plane, true), output(clip));
  EXPECT_GT(output(clip)->GetNumberOfCells(), 0);
  EXPECT_EQ(childRepresentations(clip), 1);
  EXPECT_FALSE(clip->shouldAddRep());

  clip->setInverted(false);
  clip->applyFilter();
  ExpectSameOutput(directClip(source->getOutput(), plane, false), output(clip));
  EXPECT_EQ(childRepresentations(clip), 1) << "a later Apply only reruns";
}

TEST_F(FilterTest, DraggingThePlaneChangesNothingUntilApply)
{
  VXDataSource* source = importImage(MakeTestImage(10));
  auto* clip = addFilter<VXFClip>(source);
  ASSERT_NE(clip, nullptr);
  clip->applyFilter();
  const vtkIdType cells = output(clip)->GetNumberOfCells();
  clip->plane()->setValues({1.0, 5.0, 5.0}, {1.0, 0.0, 0.0});
  clip->outputPort()->GetProducer()->Update();
  EXPECT_EQ(output(clip)->GetNumberOfCells(), cells);
  clip->applyFilter();
  EXPECT_NE(output(clip)->GetNumberOfCells(), cells);
}

TEST_F(FilterTest, ClipBoxMatchesTheBareAlgorithmWithTheBoxPlanes)
{
  VXDataSource* source = importImage(MakeTestImage(12));
  auto* clip = addFilter<VXFClip>(source);
  ASSERT_NE(clip, nullptr);
  clip->setClipType(VXFClip::Box);
  clip->box()->setValues({1.0, -2.0, 0.5}, {0.0, 0.0, 20.0}, {0.6, 0.7, 0.8});
  clip->applyFilter();
  vtkSmartPointer<vtkPlanes> planes = clip->box()->getPlanes();
  ExpectSameOutput(directClip(source->getOutput(), planes, true), output(clip));
  EXPECT_GT(output(clip)->GetNumberOfCells(), 0);
  EXPECT_LT(output(clip)->GetNumberOfCells(), source->getOutput()->GetNumberOfCells());
}

TEST_F(FilterTest, AFlatDatasetGetsABoxSixUnitsDeepAboutItsMiddle)
{
  VXBox box({0.0, 10.0, 2.0, 12.0, 4.0, 4.0}, nullptr);
  const std::array<double, 6> bounds = box.bounds();
  EXPECT_DOUBLE_EQ(bounds[0], 0.0);
  EXPECT_DOUBLE_EQ(bounds[1], 10.0);
  EXPECT_DOUBLE_EQ(bounds[4], 1.0);
  EXPECT_DOUBLE_EQ(bounds[5], 7.0);
  VXBox empty({0.0, 0.0, 0.0, 0.0, 0.0, 0.0}, nullptr);
  EXPECT_DOUBLE_EQ(empty.bounds()[2], -3.0);
  EXPECT_DOUBLE_EQ(empty.bounds()[3], 3.0);
}

TEST_F(FilterTest, PlaneAndBoxKeepTheirPlaceWhenTheDataMoves)
{
  VXPlane plane({0.0, 10.0, 0.0, 10.0, 0.0, 10.0}, nullptr);
  EXPECT_EQ(plane.getOrigin(), (std::array<double, 3>{5.0, 5.0, 5.0}));
  EXPECT_EQ(plane.getNormal(), (std::array<double, 3>{1.0, 0.0, 0.0}));
  plane.setValues({3.0, 4.0, 5.0}, {0.0, 0.0, 1.0});
  plane.updateBounds({10.0, 20.0, 0.0, 10.0, 0.0, 10.0});
  EXPECT_EQ(plane.getOrigin(), (std::array<double, 3>{13.0, 4.0, 5.0}));
  EXPECT_EQ(plane.getNormal(), (std::array<double, 3>{0.0, 0.0, 1.0}));

  VXBox box({0.0, 10.0, 0.0, 10.0, 0.0, 10.0}, nullptr);
  box.setTranslation({1.0, 2.0, 3.0});
  box.updateBounds({10.0, 20.0, 0.0, 10.0, 0.0, 10.0});
  const std::array<double, 3> translation = box.getTranslation();
  EXPECT_NEAR(translation[0], 11.0, 1e-9);
  EXPECT_NEAR(translation[1], 2.0, 1e-9);
  EXPECT_NEAR(translation[2], 3.0, 1e-9);
}

TEST_F(FilterTest, SliceMatchesTheBareCutter)
{
  VXDataSource* source = importImage(MakeTestImage(12));
  auto* slice = addFilter<VXFSlice>(source);
  ASSERT_NE(slice, nullptr);
  EXPECT_EQ(slice->typeName(), QStringLiteral("VXFSlice"));
  slice->plane()->setValues({6.2, 6.0, 6.0}, {0.0, 0.6, 0.8});
  slice->applyFilter();
  ExpectSameOutput(directSlice(source->getOutput(), {6.2, 6.0, 6.0}, {0.0, 0.6, 0.8}), output(slice));
  EXPECT_GT(output(slice)->GetNumberOfCells(), 0);
  EXPECT_EQ(childRepresentations(slice), 1);
}

TEST_F(FilterTest, ThresholdListsPointComponentsBeforeCellArraysAndMatchesTheBareAlgorithm)
{
  VXDataSource* source = importImage(MakeTestImage(12));
  auto* threshold = addFilter<VXFThreshold>(source);
  ASSERT_NE(threshold, nullptr);
  const auto& infos = threshold->getDataArrayNameInfos();
  ASSERT_EQ(infos.size(), 4u);
  EXPECT_EQ(infos[0].displayName, QStringLiteral("Velocity (Comp 0)"));
  EXPECT_EQ(infos[2].displayName, QStringLiteral("Velocity (Comp 2)"));
  EXPECT_EQ(infos[2].dataSetName, QStringLiteral("Velocity"));
  EXPECT_EQ(infos[2].numberOfComponents, 3);
  EXPECT_EQ(infos[3].displayName, QStringLiteral("Density"));
  double range[2];
  source->getOutput()->GetCellData()->GetArray("Density")->GetRange(range);
  EXPECT_DOUBLE_EQ(infos[3].dataRange[0], range[0]);
  EXPECT_DOUBLE_EQ(infos[3].dataRange[1], range[1]);

  threshold->setActiveArrayInfoIndex(3);
  VXFThreshold::DataArrayNameInfo info = threshold->getActiveArrayInfo();
  info.userRange = {0.0, 0.9};
  threshold->updateActiveArrayInfo(info);
  threshold->applyFilter();
  ExpectSameOutput(directThreshold(source->getOutput(), "Density", 0, 0.0, 0.9), output(threshold));
  EXPECT_GT(output(threshold)->GetNumberOfCells(), 0);
  EXPECT_EQ(childRepresentations(threshold), 1);

  threshold->setActiveArrayInfoIndex(1);
  info = threshold->getActiveArrayInfo();
  info.userRange = {-2.0, 3.0};
  threshold->updateActiveArrayInfo(info);
  threshold->applyFilter();
  ExpectSameOutput(directThreshold(source->getOutput(), "Velocity", 1, -2.0, 3.0), output(threshold));
}

TEST_F(FilterTest, AnIndexOutOfRangeFallsBackToTheFirstEntry)
{
  VXDataSource* source = importImage(MakeTestImage(4));
  auto* threshold = addFilter<VXFThreshold>(source);
  ASSERT_NE(threshold, nullptr);
  threshold->setActiveArrayInfoIndex(2);
  testing::internal::CaptureStdout();
  threshold->setActiveArrayInfoIndex(9);
  const std::string printed = testing::internal::GetCapturedStdout();
  EXPECT_EQ(threshold->getActiveArrayInfoIndex(), 0u);
  EXPECT_NE(printed.find("VXFThreshold::setActiveArrayInfoIndex(): Index Out of bounds"), std::string::npos);
}

TEST_F(FilterTest, ApplyOnAnInputWithoutArraysDoesNothingAndSaysSo)
{
  vtkNew<vtkImageData> bare;
  bare->SetDimensions(5, 5, 5);
  VXDataSource* source = importImage(bare, QStringLiteral("bare.vti"));
  ASSERT_NE(source, nullptr);
  auto* threshold = addFilter<VXFThreshold>(source);
  ASSERT_NE(threshold, nullptr);
  EXPECT_TRUE(threshold->getDataArrayNameInfos().empty());
  MessageRecorder recorder(&m_Pipeline);
  threshold->applyFilter();
  EXPECT_EQ(childRepresentations(threshold), 0);
  ASSERT_EQ(recorder.messages().size(), 1);
  EXPECT_TRUE(recorder.messages().front().contains(QStringLiteral("no data arrays")));
}

TEST_F(FilterTest, RepresentationTypeTextsAndTheirMessages)
{
  VXDataSource* source = importImage(MakeTestImage(4));
  auto* clip = addFilter<VXFClip>(source);
  ASSERT_NE(clip, nullptr);
  MessageRecorder recorder(&m_Pipeline);
  QSignalSpy popups(&m_Pipeline, &VXPipeline::sendPopupMessage);
  clip->setRepTypeToAdd(QStringLiteral("Wireframe"));
  EXPECT_EQ(clip->repTypeToAdd(), VXRepresentation::Wireframe);
  EXPECT_TRUE(popups.isEmpty());
  clip->setRepTypeToAdd(QStringLiteral("Sparkles"));
  EXPECT_EQ(clip->repTypeToAdd(), VXRepresentation::Wireframe);
  ASSERT_EQ(recorder.messages().size(), 1);
  EXPECT_EQ(recorder.messages().front(),
            QStringLiteral("Sparkles is not a valid representation type. Using Wireframe as the initial "
                           "representation type to add for viewing the filtered results."));
  clip->applyFilter();
  clip->setRepTypeToAdd(QStringLiteral("Points"));
  ASSERT_EQ(popups.size(), 1);
  EXPECT_EQ(popups.front().front().toString(), QStringLiteral("Representation already added"));
}

TEST_F(FilterTest, RemovingTheOnlyDataViewMakesTheNextApplyAddOne)
{
  VXDataSource* source = importImage(MakeTestImage(6));
  auto* slice = addFilter<VXFSlice>(source);
  ASSERT_NE(slice, nullptr);
  slice->applyFilter();
  ASSERT_EQ(childRepresentations(slice), 1);
  const QModelIndex sliceIndex = m_Model.filterIndex(slice);
  m_Model.removeItem(m_Model.index(0, 0, sliceIndex));
  settle();
  EXPECT_EQ(childRepresentations(slice), 0);
  EXPECT_TRUE(slice->shouldAddRep());
  slice->applyFilter();
  EXPECT_EQ(childRepresentations(slice), 1);
}

TEST_F(FilterTest, AChainOfThreeSavedAndLoadedGivesTheSameOutput)
{
  VXDataSource* source = importImage(MakeTestImage(12));
  auto* threshold = addFilter<VXFThreshold>(source);
  ASSERT_NE(threshold, nullptr);
  threshold->setActiveArrayInfoIndex(3);
  VXFThreshold::DataArrayNameInfo info = threshold->getActiveArrayInfo();
  info.userRange = {-0.5, 1.5};
  threshold->updateActiveArrayInfo(info);
  threshold->applyFilter();
  auto* clip = addFilter<VXFClip>(threshold);
  ASSERT_NE(clip, nullptr);
  clip->plane()->setValues({4.5, 6.0, 6.0}, {1.0, 0.2, 0.0});
  clip->applyFilter();
  auto* slice = addFilter<VXFSlice>(clip);
  ASSERT_NE(slice, nullptr);
  slice->plane()->setValues({2.0, 6.0, 6.3}, {0.0, 0.0, 1.0});
  slice->applyFilter();
  ASSERT_GT(output(slice)->GetNumberOfCells(), 0);
  vtkNew<vtkPolyData> expected;
  expected->DeepCopy(output(slice));

  QMap<VXAbstractViewWidget*, int> viewIndexes;
  viewIndexes.insert(m_Grid.activeView(), 0);
  json records;
  m_Info.saveState(QModelIndex(), records, viewIndexes);
  const std::string text = records.dump();
  EXPECT_NE(text.find("\"item_type\":\"VXFThreshold\""), std::string::npos);
  EXPECT_NE(text.find("\"clip_plane_origin_x\":4.5"), std::string::npos);

  m_Model.removeItem(m_Model.pipelineIndex(m_Bridge));
  settle();
  ASSERT_EQ(m_Model.getAllFilters().size(), 0);

  QSignalSpy messages(&m_Info, &VXInfoWidget::sendOutputMessage);
  m_Info.loadState(records, viewIndexes);
  EXPECT_TRUE(messages.isEmpty()) << messages.front().front().toString().toStdString();
  const QList<VXCoreObject*> filters = m_Model.getAllFilters();
  ASSERT_EQ(filters.size(), 3);
  auto* loadedSlice = qobject_cast<VXFSlice*>(filters.back());
  ASSERT_NE(loadedSlice, nullptr);
  EXPECT_EQ(childRepresentations(loadedSlice), 1) << "the saved data view, and no second one";
  loadedSlice->outputPort()->GetProducer()->Update();
  ExpectSameOutput(expected, output(loadedSlice));
}

TEST_F(FilterTest, ALoadedThresholdRunsOnce)
{
  VXDataSource* source = importImage(MakeTestImage(8));
  auto* threshold = addFilter<VXFThreshold>(source);
  ASSERT_NE(threshold, nullptr);
  threshold->setActiveArrayInfoIndex(3);
  VXFThreshold::DataArrayNameInfo info = threshold->getActiveArrayInfo();
  info.userRange = {-0.5, 0.5};
  threshold->updateActiveArrayInfo(info);
  threshold->applyFilter();
  const vtkIdType cells = output(threshold)->GetNumberOfCells();
  ASSERT_GT(cells, 0);

  QMap<VXAbstractViewWidget*, int> viewIndexes;
  viewIndexes.insert(m_Grid.activeView(), 0);
  json records;
  m_Info.saveState(QModelIndex(), records, viewIndexes);
  m_Model.removeItem(m_Model.pipelineIndex(m_Bridge));
  settle();

  // Each Apply of the loaded threshold (each ends with a render request) and each run of its algorithm
  // is counted from the moment the loader adds the filter.
  int applies = 0;
  int runs = 0;
  vtkNew<vtkCallbackCommand> counter;
  counter->SetClientData(&runs);
  counter->SetCallback([](vtkObject*, unsigned long, void* count, void*) { ++*static_cast<int*>(count); });
  QMetaObject::Connection watch = QObject::connect(
      &m_Pipeline, &VXPipeline::filterAdded,
      [&counter, &applies](VXFilter* added)
      {
        if (auto* loaded = qobject_cast<VXFThreshold*>(added))
        {
          loaded->algorithm()->AddObserver(vtkCommand::EndEvent, counter);
          QObject::connect(loaded, &VXCoreObject::requestRenderAll, [&applies]() { ++applies; });
        }
      });
  m_Info.loadState(records, viewIndexes);
  QObject::disconnect(watch);
  const QList<VXCoreObject*> filters = m_Model.getAllFilters();
  ASSERT_EQ(filters.size(), 1);
  EXPECT_EQ(applies, 1);
  EXPECT_EQ(runs, 1);
  EXPECT_EQ(output(filters.front())->GetNumberOfCells(), cells);
}

TEST_F(FilterTest, ThresholdRangesSurviveASaveAndLoadPerArray)
{
  VXDataSource* source = importImage(MakeTestImage(6));
  auto* threshold = addFilter<VXFThreshold>(source);
  ASSERT_NE(threshold, nullptr);
  threshold->setActiveArrayInfoIndex(2);
  VXFThreshold::DataArrayNameInfo info = threshold->getActiveArrayInfo();
  info.userRange = {0.25, 1.75};
  threshold->updateActiveArrayInfo(info);
  json record;
  threshold->write(record, {});
  auto* other = addFilter<VXFThreshold>(source);
  ASSERT_NE(other, nullptr);
  other->read(record, {});
  EXPECT_EQ(other->getActiveArrayInfoIndex(), 2u);
  for (size_t component = 0; component < 3; ++component)
  {
    EXPECT_EQ(other->getDataArrayNameInfos()[component].userRange, (std::array<double, 2>{0.25, 1.75}));
  }
}

TEST_F(FilterTest, AReloadWithChangedDataRerunsTheChain)
{
  VXDataSource* source = importImage(MakeTestImage(10));
  auto* threshold = addFilter<VXFThreshold>(source);
  ASSERT_NE(threshold, nullptr);
  threshold->setActiveArrayInfoIndex(3);
  VXFThreshold::DataArrayNameInfo info = threshold->getActiveArrayInfo();
  info.userRange = {-0.2, 0.8};
  threshold->updateActiveArrayInfo(info);
  threshold->applyFilter();
  auto* slice = addFilter<VXFSlice>(threshold);
  ASSERT_NE(slice, nullptr);
  slice->applyFilter();
  auto* sourceSlice = addFilter<VXFSlice>(source);
  ASSERT_NE(sourceSlice, nullptr);
  sourceSlice->plane()->setValues({4.0, 5.0, 5.0}, {0.0, 1.0, 0.0});
  sourceSlice->applyFilter();
  const vtkIdType before = output(threshold)->GetNumberOfCells();

  // The same file written anew with other values, moved by (10, 0, 0).
  vtkSmartPointer<vtkImageData> changed = MakeTestImage(10, 2.5, {10.0, 0.0, 0.0});
  writeImage(QStringLiteral("image.vti"), changed);
  auto* fileBridge = qobject_cast<FileToVXBridge*>(m_Bridge);
  ASSERT_NE(fileBridge, nullptr);
  fileBridge->reload();

  EXPECT_EQ(threshold->getActiveArrayInfo().userRange, (std::array<double, 2>{-0.2, 0.8}))
      << "the user range survives by name";
  vtkSmartPointer<vtkDataSet> expectedThreshold =
      directThreshold(source->getOutput(), "Density", 0, -0.2, 0.8);
  ExpectSameOutput(expectedThreshold, output(threshold));
  EXPECT_NE(output(threshold)->GetNumberOfCells(), before);
  EXPECT_EQ(sourceSlice->plane()->getOrigin(), (std::array<double, 3>{14.0, 5.0, 5.0}))
      << "the plane moves with the data";
  ExpectSameOutput(directSlice(source->getOutput(), {14.0, 5.0, 5.0}, {0.0, 1.0, 0.0}), output(sourceSlice));
  ExpectSameOutput(directSlice(expectedThreshold, slice->plane()->getOrigin(), slice->plane()->getNormal()),
                   output(slice));
}

TEST_F(FilterTest, FiltersRefuseADataViewParentInAState)
{
  VXDataSource* source = importImage(MakeTestImage(4));
  ASSERT_NE(source, nullptr);
  const QModelIndex sourceIndex = m_Model.dataSourceIndex(source);
  const QModelIndex viewIndex = m_Model.index(0, 0, sourceIndex);
  ASSERT_TRUE(m_Model.isRepresentation(viewIndex));
  QSignalSpy messages(&m_Info, &VXInfoWidget::sendOutputMessage);
  QMap<VXAbstractViewWidget*, int> viewIndexes;
  viewIndexes.insert(m_Grid.activeView(), 0);
  m_Info.loadState(json::array({{{"item_type", "VXFClip"}, {"item_data", json::object()}}}), viewIndexes,
                   viewIndex);
  ASSERT_EQ(messages.size(), 1);
  EXPECT_EQ(messages.front().front().toString(),
            QStringLiteral("Error reading state file; found VXFClip filter item type cannot have a "
                           "VXRepresentation parent item."));
}

TEST_F(FilterTest, MultiThresholdNeedsAGeometryPath)
{
  VXDataSource* source = importImage(MakeTestImage(4));
  auto* threshold = addFilter<VXFThreshold>(source);
  ASSERT_NE(threshold, nullptr);
  MessageRecorder recorder(&m_Pipeline);
  QSignalSpy requests(&m_Pipeline, &VXPipeline::createMultiThresholdObjectsFilter);
  threshold->createKESTRIXFilterFromVXFilter();
  EXPECT_TRUE(requests.isEmpty());
  ASSERT_EQ(recorder.messages().size(), 1);
  EXPECT_EQ(recorder.messages().front(),
            QStringLiteral(
                "Cannot create Multi-Threshold Objects filter from VXFThreshold filter because no parent "
                "geometry could be found."));
}

TEST_F(FilterTest, SettingsPanelsBuildFromTheirForms)
{
  VXDataSource* source = importImage(MakeTestImage(4));
  auto* clip = addFilter<VXFClip>(source);
  auto* slice = addFilter<VXFSlice>(source);
  auto* threshold = addFilter<VXFThreshold>(source);
  for (VXFilter* filter :
       {static_cast<VXFilter*>(clip), static_cast<VXFilter*>(slice), static_cast<VXFilter*>(threshold)})
  {
    m_Info.selectIndex(m_Model.filterIndex(filter));
    QWidget* panel = m_Info.currentSettingsWidget();
    ASSERT_NE(panel, nullptr) << filter->typeName().toStdString();
    auto* combo = panel->findChild<QComboBox*>(QStringLiteral("m_RepTypeCombo"));
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->currentText(), QStringLiteral("Surface"));
    auto* apply = panel->findChild<QPushButton*>(QStringLiteral("m_ApplyButton"));
    ASSERT_NE(apply, nullptr);
    apply->click();
    EXPECT_EQ(childRepresentations(filter), 1) << filter->typeName().toStdString();
    EXPECT_FALSE(combo->isVisibleTo(panel)) << "the combo hides once the data view is there";
  }
  m_Info.selectIndex(m_Model.filterIndex(clip));
  auto* clipType = m_Info.currentSettingsWidget()->findChild<QComboBox*>(QStringLiteral("m_ClipTypeCombo"));
  ASSERT_NE(clipType, nullptr);
  clipType->setCurrentIndex(1);
  EXPECT_EQ(clip->clipType(), VXFClip::Box);
  auto* showTool =
      m_Info.currentSettingsWidget()->findChild<QCheckBox*>(QStringLiteral("m_ShowToolCheckBox"));
  ASSERT_NE(showTool, nullptr);
  EXPECT_EQ(showTool->text(), QStringLiteral("Show Box"));
}
} // namespace
