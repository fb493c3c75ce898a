// The viewer as the host of a threshold filter's multi-threshold request: the mask it adds to the
// .kestrix file's data structure, what the visualization shows of it, its messages, and the saved file.
#include "app/ViewerMaskHost.h"
#include "app/ViewerMainWindow.h"

#include "data_bridge/zr_contract/KestrixIO.h"
#include "data_views/ZRVtkModuleUtils.h"
#include "filters/ThresholdStructure.h"
#include "filters/VXFThreshold.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>

namespace
{
class AnsweringThreshold : public VXFThreshold
{
public:
  RelativesAnswer m_Answer = RelativesAnswer::Cancel;

protected:
  RelativesAnswer askIncludeRelatives(const QString& /*title*/, const QString& /*text*/) override
  {
    return m_Answer;
  }
  void showWarning(const QString& /*title*/, const QString& /*text*/) override {}
};

bool passes(float density, std::int32_t phase)
{
  return density >= 1.0f && density <= 4.0f && phase >= 2 && phase <= 3;
}

class ViewerMaskHostTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    ASSERT_TRUE(m_Dir.isValid());
    m_Window = std::make_unique<ViewerMainWindow>();
    m_Window->setInteractive(false);
    m_Window->resize(900, 700);
    m_Window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_Window.get()));
    m_File = m_Dir.filePath(QStringLiteral("grains.kestrix"));
    ASSERT_TRUE(ThresholdStructure::Write(m_File));
  }
  void TearDown() override
  {
    m_Window.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  QString output() const { return m_Window->outputPane()->toPlainText(); }
  QAction* saveAction() const
  {
    return m_Window->findChild<QAction*>(QStringLiteral("saveDataStructureAction"));
  }

  AnsweringThreshold* threshold(VXCoreObject* parent, const QString& array, double minimum, double maximum)
  {
    auto* filter = new AnsweringThreshold();
    if (!m_Window->pipeline()->addFilter(parent, filter))
    {
      delete filter;
      return nullptr;
    }
    const auto& infos = filter->getDataArrayNameInfos();
    for (size_t index = 0; index < infos.size(); ++index)
    {
      if (infos[index].displayName == array)
      {
        filter->setActiveArrayInfoIndex(index);
      }
    }
    VXFThreshold::DataArrayNameInfo info = filter->getActiveArrayInfo();
    info.userRange = {minimum, maximum};
    filter->updateActiveArrayInfo(info);
    filter->applyFilter();
    return filter;
  }

  static vtkIdType cells(VXCoreObject* object)
  {
    vtkAlgorithmOutput* port = object->outputPort();
    port->GetProducer()->Update();
    return vtkDataSet::SafeDownCast(port->GetProducer()->GetOutputDataObject(port->GetIndex()))
        ->GetNumberOfCells();
  }

  QTemporaryDir m_Dir;
  QString m_File;
  std::unique_ptr<ViewerMainWindow> m_Window;
};
} // namespace

TEST_F(ViewerMaskHostTest, AllFiltersOfAChainGiveAMaskThatTheViewsAndTheSavedFileHold)
{
  ASSERT_TRUE(m_Window->openFile(m_File));
  VXDataSource* source = m_Window->pipeline()->bridges().front()->dataSources().front();
  AnsweringThreshold* upper = threshold(source, QStringLiteral("Density"), 1.0, 4.0);
  ASSERT_NE(upper, nullptr);
  AnsweringThreshold* lower = threshold(upper, QStringLiteral("Phase"), 2.0, 3.0);
  ASSERT_NE(lower, nullptr);
  int expected = 0;
  for (zr::core::usize cell = 0; cell < ThresholdStructure::k_Cells; ++cell)
  {
    expected += passes(ThresholdStructure::Density(cell), ThresholdStructure::Phase(cell)) ? 1 : 0;
  }
  ASSERT_GT(expected, 0);
  ASSERT_LT(expected, static_cast<int>(ThresholdStructure::k_Cells));
  ASSERT_EQ(cells(lower), expected) << "the chain of thresholds keeps the cells the mask will mark";
  ASSERT_FALSE(saveAction()->isEnabled());

  lower->m_Answer = VXFThreshold::RelativesAnswer::AllFilters;
  lower->createKESTRIXFilterFromVXFilter();

  // The file holds a "Mask" already: the new one takes the next free name.
  EXPECT_TRUE(
      output().contains(QStringLiteral("Added the mask 'Sample/Grains/Cell Data/Mask 2': %1 of 120 cells "
                                       "pass Density in [1, 4] and Phase in [2, 3].")
                            .arg(expected)))
      << output().toStdString();
  vtkDataArray* mask = source->getOutput()->GetCellData()->GetArray("Mask 2");
  ASSERT_NE(mask, nullptr);
  EXPECT_STREQ(mask->GetClassName(), "CV::Array<T>") << "shown over the host's store, without a copy";
  EXPECT_EQ(mask->GetDataType(), VTK_UNSIGNED_CHAR);
  for (vtkIdType cell = 0; cell < mask->GetNumberOfTuples(); ++cell)
  {
    const auto index = static_cast<zr::core::usize>(cell);
    EXPECT_EQ(mask->GetTuple1(cell),
              passes(ThresholdStructure::Density(index), ThresholdStructure::Phase(index)) ? 1 : 0)
        << "cell " << cell;
  }
  EXPECT_TRUE(ZRVtkModule::utils::ColoringArrays(source->getOutput()).contains(QStringLiteral("Mask 2")))
      << "the colouring choices offer the mask";
  EXPECT_EQ(cells(lower), expected) << "the filters ran again on the reloaded data";
  ASSERT_TRUE(saveAction()->isEnabled());

  // A second request adds another mask.
  lower->m_Answer = VXFThreshold::RelativesAnswer::JustThisFilter;
  lower->createKESTRIXFilterFromVXFilter();
  EXPECT_TRUE(output().contains(
      QStringLiteral("Added the mask 'Sample/Grains/Cell Data/Mask 3': 80 of 120 cells pass "
                     "Phase in [2, 3].")))
      << output().toStdString();

  EXPECT_FALSE(m_Window->maskHost()->saveDataStructure(m_File));
  EXPECT_TRUE(
      output().contains(QStringLiteral("Cannot save the data structure over '%1', the file it was read "
                                       "from; choose another file.")
                            .arg(m_File)));
  const QString saved = m_Dir.filePath(QStringLiteral("masked.kestrix"));
  ASSERT_TRUE(m_Window->maskHost()->saveDataStructure(saved));
  EXPECT_TRUE(
      output().contains(QStringLiteral("Saved the data structure of 'grains.kestrix' to '%1'.").arg(saved)));

  // Read back: the mask against a count made here from the arrays of the written file.
  auto readBack = zr::core::KESTRIX::ImportDataStructureFromFile(saved.toStdString(), false);
  ASSERT_TRUE(readBack.valid());
  const zr::core::DataStructure& structure = readBack.value();
  const auto* density = structure.getDataAs<zr::core::Float32Array>(
      zr::core::DataPath({"Sample", "Grains", "Cell Data", "Density"}));
  const auto* phase = structure.getDataAs<zr::core::Int32Array>(
      zr::core::DataPath({"Sample", "Grains", "Cell Data", "Phase"}));
  const auto* written = structure.getDataAs<zr::core::UInt8Array>(
      zr::core::DataPath({"Sample", "Grains", "Cell Data", "Mask 2"}));
  const auto* second = structure.getDataAs<zr::core::UInt8Array>(
      zr::core::DataPath({"Sample", "Grains", "Cell Data", "Mask 3"}));
  ASSERT_NE(density, nullptr);
  ASSERT_NE(phase, nullptr);
  ASSERT_NE(written, nullptr);
  ASSERT_NE(second, nullptr);
  ASSERT_EQ(written->getNumberOfTuples(), ThresholdStructure::k_Cells);
  int counted = 0;
  int marked = 0;
  for (zr::core::usize cell = 0; cell < ThresholdStructure::k_Cells; ++cell)
  {
    const bool pass = passes((*density)[cell], (*phase)[cell]);
    counted += pass ? 1 : 0;
    marked += (*written)[cell];
    EXPECT_EQ((*written)[cell], pass ? 1 : 0) << "cell " << cell;
    EXPECT_EQ((*second)[cell], (*phase)[cell] >= 2 ? 1 : 0) << "cell " << cell;
  }
  EXPECT_EQ(marked, counted);
  EXPECT_EQ(counted, expected);
}

TEST_F(ViewerMaskHostTest, RequestsThatCannotBeMetSayWhyAndChangeNothing)
{
  ViewerMaskHost* host = m_Window->maskHost();
  EXPECT_FALSE(host->saveDataStructure(m_Dir.filePath(QStringLiteral("nothing.kestrix"))));
  EXPECT_TRUE(output().contains(QStringLiteral("There is no data structure to save: create a mask from a "
                                               "threshold filter of a .kestrix file first.")));
  EXPECT_FALSE(QFileInfo::exists(m_Dir.filePath(QStringLiteral("nothing.kestrix"))));

  const zr::core::DataPath grains({"Sample", "Grains"});
  EXPECT_FALSE(host->createMask(grains, {{QStringLiteral("Density"), 0.0, 1.0}}));
  EXPECT_TRUE(output().contains(QStringLiteral("Cannot create a mask: no .kestrix file open here holds the "
                                               "geometry 'Sample/Grains'.")));

  ASSERT_TRUE(m_Window->openFile(m_File));
  VXDataSource* source = m_Window->pipeline()->bridges().front()->dataSources().front();
  EXPECT_FALSE(host->createMask(grains, {{QStringLiteral("Orientation"), 0.0, 1.0}}));
  EXPECT_TRUE(
      output().contains(QStringLiteral("Creating Multi-Threshold Objects filter from VXFThreshold filter "
                                       "currently does not support multi component arrays.")));
  EXPECT_FALSE(
      host->createMask(grains, {{QStringLiteral("Density"), 0.0, 1.0}, {QStringLiteral("Nope"), 0.0, 1.0}}));
  EXPECT_TRUE(
      output().contains(QStringLiteral("Cannot create a mask on 'Sample/Grains': its cell data 'Cell Data' "
                                       "has no array 'Nope'; its arrays: Density, Phase, Orientation, Mask")))
      << output().toStdString();
  EXPECT_FALSE(host->createMask(grains, {}));
  EXPECT_TRUE(output().contains(
      QStringLiteral("Cannot create a mask on 'Sample/Grains': no thresholds were given.")));
  EXPECT_EQ(source->getOutput()->GetCellData()->GetArray("Mask 2"), nullptr) << "nothing was added";
  EXPECT_FALSE(saveAction()->isEnabled());
}

TEST_F(ViewerMaskHostTest, AFileGoneBeforeTheFirstRequestIsReported)
{
  ASSERT_TRUE(m_Window->openFile(m_File));
  // The host reads its structure from the file on the first request.
  QFile::remove(m_File);
  EXPECT_FALSE(m_Window->maskHost()->createMask(zr::core::DataPath({"Sample", "Grains"}),
                                                {{QStringLiteral("Density"), 0.0, 1.0}}));
  EXPECT_TRUE(output().contains(
      QStringLiteral("Cannot create a mask: the file '%1' could not be read: ").arg(m_File)))
      << output().toStdString();
  EXPECT_FALSE(saveAction()->isEnabled());
}

TEST_F(ViewerMaskHostTest, AStateSavedAfterAMaskNamesTheFileThatHoldsIt)
{
  ASSERT_TRUE(m_Window->openFile(m_File));
  VXBridgeObject* bridge = m_Window->pipeline()->bridges().front();
  VXDataSource* source = bridge->dataSources().front();
  AnsweringThreshold* filter = threshold(source, QStringLiteral("Phase"), 2.0, 3.0);
  ASSERT_NE(filter, nullptr);
  filter->m_Answer = VXFThreshold::RelativesAnswer::JustThisFilter;
  filter->createKESTRIXFilterFromVXFilter();
  ASSERT_NE(source->getOutput()->GetCellData()->GetArray("Mask 2"), nullptr) << output().toStdString();

  // The file on disk has no "Mask 2": the state says so when it is saved.
  const QString hint = QStringLiteral("File > Save Data Structure As...");
  const QString early = m_Dir.filePath(QStringLiteral("early.ksxstate"));
  ASSERT_TRUE(m_Window->saveStateFile(early));
  EXPECT_TRUE(
      output().contains(QStringLiteral("The state refers to 'grains.kestrix' as saved on disk, without "
                                       "the masks made here")))
      << output().toStdString();
  EXPECT_EQ(output().count(hint), 1);

  const QString saved = m_Dir.filePath(QStringLiteral("masked.kestrix"));
  ASSERT_TRUE(m_Window->maskHost()->saveDataStructure(saved));
  EXPECT_EQ(QFileInfo(bridge->filePath()).absoluteFilePath(), QFileInfo(saved).absoluteFilePath())
      << "the item refers to the file that holds the mask";
  EXPECT_FALSE(m_Window->maskHost()->saveDataStructure(m_File)) << "the file read from stays as it is";
  ASSERT_TRUE(m_Window->maskHost()->saveDataStructure(saved)) << "the written file may be written again";

  const QString state = m_Dir.filePath(QStringLiteral("masked.ksxstate"));
  ASSERT_TRUE(m_Window->saveStateFile(state));
  EXPECT_EQ(output().count(hint), 1) << "no warning once the masks are saved";
  QFile file(state);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(file.readAll());
  EXPECT_TRUE(text.contains(QStringLiteral("masked.kestrix"))) << text.toStdString();
  EXPECT_FALSE(text.contains(QStringLiteral("grains.kestrix"))) << text.toStdString();

  // Loaded again, the data source offers the mask.
  ASSERT_TRUE(m_Window->loadStateFile(state)) << output().toStdString();
  ASSERT_FALSE(m_Window->pipeline()->bridges().isEmpty());
  VXDataSource* loaded = m_Window->pipeline()->bridges().front()->dataSources().front();
  ASSERT_NE(loaded->getOutput(), nullptr);
  EXPECT_NE(loaded->getOutput()->GetCellData()->GetArray("Mask 2"), nullptr);
}
