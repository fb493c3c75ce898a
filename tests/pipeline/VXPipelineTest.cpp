#include "pipeline/VXPipeline.h"

#include "PipelineTestDoubles.h"
#include "common/ZRTestStructures.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/ZRToVXBridge.h"
#include "views/VXViewWidget.h"

#include <vtkDataSet.h>

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace zr::core;

namespace
{
QStringList namesOf(const QList<VXDataSource*>& sources)
{
  QStringList names;
  for (const VXDataSource* source : sources)
  {
    names << source->name();
  }
  return names;
}

class PipelineTest : public ::testing::Test
{
protected:
  void SetUp() override
  {
    RecordingRepresentation::RegisterAllTypes();
    m_Messages.clear();
    QObject::connect(&m_Pipeline, &VXPipeline::sendOutputMessage,
                     [this](const QString& text) { m_Messages << text; });
  }
  void TearDown() override
  {
    // The defaults are shared by all pipelines: put them back for the next test.
    VXPipeline::setDefaultRepType(VXRepresentation::Outline);
    VXPipeline::setDefaultImageGeomRepType(VXRepresentation::Outline);
    VXPipeline::setDefaultVertexRepType(VXRepresentation::Outline);
    VXPipeline::setDefaultTriangleRepType(VXRepresentation::Outline);
  }

  VXPipeline m_Pipeline;
  QStringList m_Messages;
};
} // namespace

TEST_F(PipelineTest, ImportMakesBridgeAndOneSourcePerGeometryInOrder)
{
  TestPipelineController controller(QStringLiteral("Segmentation"), QStringLiteral("uuid-1"));
  auto ds = ZRTest::MakeAllKinds();

  QStringList events;
  QObject::connect(&m_Pipeline, &VXPipeline::pipelineBridgeAdded,
                   [&](VXBridgeObject* bridge)
                   {
                     events << QStringLiteral("bridge");
                     // The tree shows the bridge before its data exists, and before it joins the list.
                     EXPECT_TRUE(bridge->dataSources().isEmpty());
                     EXPECT_FALSE(m_Pipeline.bridges().contains(bridge));
                   });
  QObject::connect(&m_Pipeline, &VXPipeline::dataSourceAdded,
                   [&](VXDataSource* source)
                   {
                     events << QStringLiteral("source:") + source->name();
                     EXPECT_EQ(m_Pipeline.bridges().size(), 0);
                   });

  VXBridgeObject* bridge = m_Pipeline.importPipelineOutput(&controller, ds);
  ASSERT_NE(bridge, nullptr);
  EXPECT_EQ(bridge->baseName(), QStringLiteral("Segmentation"));
  EXPECT_EQ(m_Pipeline.bridges(), QList<VXBridgeObject*>{bridge});
  const QStringList expected = {"Grains", "Rect", "Centroids", "Edges", "Surface", "Quads", "Tets", "Hexes"};
  EXPECT_EQ(namesOf(bridge->dataSources()), expected);
  ASSERT_EQ(events.size(), 9);
  EXPECT_EQ(events.front(), QStringLiteral("bridge"));
  EXPECT_EQ(events.back(), QStringLiteral("source:Hexes"));
  EXPECT_EQ(bridge->dataSources().front()->importedDataPath().toString("/"), "Scan/Grains");
  EXPECT_EQ(bridge->dataSources().front()->parent(), bridge);
  // Without an active view the sources stand alone: no data views, no messages.
  EXPECT_TRUE(RecordingRepresentation::s_Made.empty());
  EXPECT_TRUE(m_Messages.isEmpty());
}

TEST_F(PipelineTest, DefaultDataViewTypeFollowsTheGeometryKind)
{
  VXViewWidget view;
  m_Pipeline.setActiveViewWidget(&view);
  VXPipeline::setDefaultImageGeomRepType(VXRepresentation::Volume);
  VXPipeline::setDefaultTriangleRepType(VXRepresentation::Surface);
  VXPipeline::setDefaultVertexRepType(VXRepresentation::Points);
  VXPipeline::setDefaultRepType(VXRepresentation::Wireframe);

  QList<VXRepresentation*> added;
  QObject::connect(&m_Pipeline, &VXPipeline::representationAdded,
                   [&](VXRepresentation* rep) { added << rep; });
  auto ds = ZRTest::MakeAllKinds();
  VXBridgeObject* bridge = m_Pipeline.importPipelineOutput(nullptr, ds);
  EXPECT_EQ(bridge->baseName(), QStringLiteral("UntitledPipeline"));

  ASSERT_EQ(added.size(), 8);
  QList<VXRepresentation::Type> types;
  for (VXRepresentation* rep : added)
  {
    types << rep->getType();
  }
  // Image, rect grid, vertices (outline whatever the vertex default says), edges, triangles, quads,
  // tets, hexes.
  const QList<VXRepresentation::Type> expected = {VXRepresentation::Volume,  VXRepresentation::Outline,
                                                  VXRepresentation::Outline, VXRepresentation::Outline,
                                                  VXRepresentation::Surface, VXRepresentation::Outline,
                                                  VXRepresentation::Outline, VXRepresentation::Outline};
  EXPECT_EQ(types, expected);

  auto* first = static_cast<RecordingRepresentation*>(added.front());
  EXPECT_EQ(first->m_Calls, (QStringList{"addViewWidgetSplit", "initialize"}));
  EXPECT_EQ(first->m_Split, &view);
  EXPECT_EQ(first->m_SplitSource, nullptr);
  EXPECT_EQ(first->m_InputPort, bridge->dataSources().front()->outputPort());
  EXPECT_EQ(first->parent(), bridge->dataSources().front());
  EXPECT_TRUE(bridge->dataSources().front()->viewWidgets().contains(&view));

  Q_EMIT m_Pipeline.pipelineOutputReloaded();
  EXPECT_EQ(first->m_Calls.last(), QStringLiteral("reloaded"));
}

TEST_F(PipelineTest, AddRepresentationGuardsAndTypeRange)
{
  auto ds = ZRTest::MakeAllKinds();
  VXBridgeObject* bridge = m_Pipeline.importPipelineOutput(nullptr, ds);
  VXDataSource* source = bridge->dataSources().front();

  EXPECT_FALSE(m_Pipeline.addRepresentation(source, VXRepresentation::Surface));
  EXPECT_EQ(m_Messages.last(),
            QStringLiteral("Cannot add representation view because no active render window is selected!"));

  VXViewWidget view;
  m_Pipeline.setActiveViewWidget(&view);
  EXPECT_FALSE(m_Pipeline.addRepresentation(nullptr, VXRepresentation::Surface));
  EXPECT_EQ(
      m_Messages.last(),
      QStringLiteral("Cannot add representation view because the selected parent item does not exist!"));

  const int messages = m_Messages.size();
  const size_t made = RecordingRepresentation::s_Made.size();
  EXPECT_FALSE(m_Pipeline.addRepresentation(source, VXRepresentation::None));
  EXPECT_TRUE(m_Pipeline.addRepresentation(source, static_cast<VXRepresentation::Type>(8)));
  EXPECT_EQ(m_Messages.size(), messages);
  EXPECT_EQ(RecordingRepresentation::s_Made.size(), made);
}

TEST_F(PipelineTest, ReloadWithKnownIdentityKeepsItems)
{
  TestPipelineController controller(QStringLiteral("Run"), QStringLiteral("same"));
  auto first = ZRTest::MakeAllKinds();
  VXBridgeObject* bridge = m_Pipeline.importPipelineOutput(&controller, first);
  const QList<VXDataSource*> sources = bridge->dataSources();
  vtkDataSet* oldDataSet = sources.front()->getOutput();

  QSignalSpy reloaded(&m_Pipeline, &VXPipeline::pipelineOutputReloaded);
  auto second = ZRTest::MakeAllKinds();
  EXPECT_EQ(m_Pipeline.reloadPipelineOutput(&controller, second), bridge);
  EXPECT_EQ(m_Pipeline.bridges().size(), 1);
  EXPECT_EQ(bridge->dataSources(), sources);
  EXPECT_NE(sources.front()->getOutput(), oldDataSet);
  EXPECT_EQ(reloaded.count(), 1);

  TestPipelineController other(QStringLiteral("Run"), QStringLiteral("other"));
  VXBridgeObject* newBridge = m_Pipeline.reloadPipelineOutput(&other, second);
  EXPECT_NE(newBridge, bridge);
  EXPECT_EQ(m_Pipeline.bridges().size(), 2);
  // Same base name, so the second item is told apart by its suffix.
  EXPECT_NE(newBridge->name(), bridge->name());
}

TEST_F(PipelineTest, ReloadRemovesVanishedAndAddsNewGeometries)
{
  using namespace zr::core;
  TestPipelineController controller(QStringLiteral("Run"), QStringLiteral("id"));
  auto first = std::make_shared<DataStructure>();
  ZRTest::AddImage(*first, "A");
  ZRTest::AddImage(*first, "B");
  ZRTest::AddImage(*first, "C");
  ZRTest::AddTriangles(*first, "D");
  VXBridgeObject* bridge = m_Pipeline.importPipelineOutput(&controller, first);
  VXDataSource* sourceD = bridge->dataSources().at(3);

  // A and B vanish in a row, C is renamed, D stays.
  auto second = std::make_shared<DataStructure>();
  ZRTest::AddImage(*second, "C2");
  ZRTest::AddTriangles(*second, "D");
  QStringList removed;
  QObject::connect(&m_Pipeline, &VXPipeline::removeDataSource,
                   [&](VXDataSource* source) { removed << source->name(); });
  m_Pipeline.reloadPipelineOutput(&controller, second);

  EXPECT_EQ(removed, (QStringList{"A", "B", "C"}));
  EXPECT_EQ(namesOf(bridge->dataSources()), (QStringList{"D", "C2"}));
  EXPECT_EQ(bridge->dataSources().front(), sourceD);
}

TEST_F(PipelineTest, MultipleParentsAreReportedAndTheRestImports)
{
  using namespace zr::core;
  auto ds = std::make_shared<DataStructure>();
  const IdType a = DataGroup::Create(*ds, "A")->getId();
  const IdType b = DataGroup::Create(*ds, "B")->getId();
  auto* shared = ZRTest::AddTriangles(*ds, "Shared", a);
  ASSERT_TRUE(ds->addAdditionalParent(shared->getId(), b));
  ZRTest::AddImage(*ds, "Alone", b);

  QStringList popups;
  QObject::connect(&m_Pipeline, &VXPipeline::sendPopupMessage,
                   [&](const QString& title, const QString&) { popups << title; });
  VXBridgeObject* bridge = m_Pipeline.importPipelineOutput(nullptr, ds);
  EXPECT_EQ(namesOf(bridge->dataSources()), QStringList{"Alone"});
  // Reachable twice, reported twice.
  EXPECT_EQ(popups, (QStringList{"Geometry Not Loaded", "Geometry Not Loaded"}));
  ASSERT_FALSE(m_Messages.isEmpty());
  EXPECT_TRUE(
      m_Messages.front().startsWith(QStringLiteral("The geometry named Shared has multiple parents")));
}

TEST_F(PipelineTest, NamesAndSuffixes)
{
  auto ds = ZRTest::MakeAllKinds();
  VXBridgeObject* bridge = m_Pipeline.importPipelineOutput(nullptr, ds);
  QSignalSpy nameChanged(bridge, &VXBridgeObject::nameChanged);
  bridge->setNameSuffix(2);
  EXPECT_EQ(bridge->name(), QStringLiteral("UntitledPipeline (2)"));
  EXPECT_EQ(nameChanged.count(), 1);
  bridge->setNameSuffix(0);
  EXPECT_EQ(bridge->name(), QStringLiteral("UntitledPipeline"));

  VXDataSource* source = bridge->dataSources().front();
  QSignalSpy pathChanged(source, &VXCoreObject::pathChanged);
  source->setNameSuffixCounter(2);
  EXPECT_EQ(source->name(), QStringLiteral("Grains 2"));
  EXPECT_EQ(source->pathName(), QStringLiteral("UntitledPipeline > Grains 2"));
  ASSERT_EQ(pathChanged.count(), 1);
  EXPECT_EQ(pathChanged.front().front().toString(), QStringLiteral("UntitledPipeline > Grains 2"));
  source->setNameSuffixCounter(0);
  EXPECT_EQ(source->name(), QStringLiteral("Grains"));
}

TEST_F(PipelineTest, RemovedBridgesAndDeletedSourcesLeaveTheLists)
{
  auto ds = ZRTest::MakeAllKinds();
  VXBridgeObject* bridge = m_Pipeline.importPipelineOutput(nullptr, ds);
  VXDataSource* source = bridge->dataSources().front();
  delete source;
  EXPECT_EQ(bridge->dataSources().size(), 7);
  bridge->clear();
  EXPECT_TRUE(bridge->dataSources().isEmpty());

  m_Pipeline.pipelineBridgeRemoved(nullptr);
  EXPECT_EQ(m_Pipeline.bridges().size(), 1);
  m_Pipeline.pipelineBridgeRemoved(bridge);
  EXPECT_TRUE(m_Pipeline.bridges().isEmpty());
}
