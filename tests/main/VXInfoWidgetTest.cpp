// The information panel: the tree part of a state record written and read back, and what a damaged
// record gives.
#include "data_views/VXRepresentationPimpl.h"
#include "main/VXTreeStateLoader.h"
#include "pipeline/FileToVXBridge.h"
#include "pipeline/PipelineTreeFixture.h"
#include "pipeline/VXDatasetInfoWidget.h"
#include "pipeline/VXInfoWidgetProxyModel.h"
#include "pipeline/VXRenderTreeView.h"

#include <nlohmann/json.hpp>

#include <QDropEvent>
#include <QMimeData>
#include <QPointer>
#include <QSignalSpy>
#include <QUrl>

#include <functional>

#include <memory>
#include <string>

namespace
{
using json = nlohmann::json;

class InfoWidgetTest : public PipelineTreeFixture
{
protected:
  QMap<VXAbstractViewWidget*, int> viewIndexes() const
  {
    QMap<VXAbstractViewWidget*, int> indexes;
    int number = 0;
    for (VXAbstractViewWidget* view : m_Grid.allViews())
    {
      indexes.insert(view, number++);
    }
    return indexes;
  }

  json save(const QModelIndex& parent = QModelIndex())
  {
    json output;
    m_Info.saveState(parent, output, viewIndexes());
    return output;
  }

  // Loads and returns every message the panel sent.
  QStringList load(const json& records, const QModelIndex& parent = QModelIndex())
  {
    QSignalSpy spy(&m_Info, &VXInfoWidget::sendOutputMessage);
    m_Info.loadState(records, viewIndexes(), parent);
    QStringList messages;
    for (const QList<QVariant>& arguments : spy)
    {
      messages.append(arguments.front().toString());
    }
    return messages;
  }

  json fileBridgeRecord(const QString& path, const json& children = json())
  {
    json record = {
        {"item_type", "FileToVXBridge"},
        {"item_data",
         {{"bridge_object_file_path", path.toStdString()}, {"bridge_object_item_name", "loaded"}}}};
    if (!children.is_null())
    {
      record["item_children"] = children;
    }
    return record;
  }

  static json outlineRecord(int renderWindowIndex = 0)
  {
    return {{"item_type", "VXOutlineRep"},
            {"item_data",
             {{"core_object_name", "Outline Representation"},
              {"rep_view_implementations", json::array({{{"render_window_index", renderWindowIndex}}})}}}};
  }

  VXDataSource* onlySource() const
  {
    const QList<VXDataSource*> sources = m_Model.getAllDataSources();
    return sources.size() == 1 ? sources.front() : nullptr;
  }
};

TEST_F(InfoWidgetTest, SavingAnEmptyTreeWritesAnEmptyArray)
{
  const json output = save();
  EXPECT_TRUE(output.is_array());
  EXPECT_TRUE(output.empty());
  EXPECT_EQ(output.dump(), "[]");
}

TEST_F(InfoWidgetTest, SavedRecordsFollowTheTree)
{
  VXBridgeObject* bridge = importSphere(QStringLiteral("sphere.vtp"));
  VXDataSource* source = onlySource();
  ASSERT_NE(source, nullptr);
  ASSERT_TRUE(m_Model.addRepresentation(m_Model.dataSourceIndex(source), VXRepresentation::Surface));

  const json output = save();
  ASSERT_EQ(output.size(), 1u);
  EXPECT_EQ(output[0]["item_type"], "FileToVXBridge");
  EXPECT_EQ(output[0]["item_data"]["bridge_object_file_path"], bridge->filePath().toStdString());
  ASSERT_EQ(output[0]["item_children"].size(), 1u);
  const json& sourceRecord = output[0]["item_children"][0];
  EXPECT_EQ(sourceRecord["item_type"], "VXDataSource");
  ASSERT_EQ(sourceRecord["item_children"].size(), 2u);
  EXPECT_EQ(sourceRecord["item_children"][0]["item_type"], "VXOutlineRep");
  EXPECT_EQ(sourceRecord["item_children"][1]["item_type"], "VXSurfaceRep");
  // Leaves have no children key.
  EXPECT_FALSE(sourceRecord["item_children"][1].contains("item_children"));
  EXPECT_EQ(
      sourceRecord["item_children"][1]["item_data"]["rep_view_implementations"][0]["render_window_index"], 0);

  // The subtree of one data source, as a preset takes it.
  const json presetTree = save(m_Model.dataSourceIndex(source));
  EXPECT_EQ(presetTree, sourceRecord["item_children"]);
}

TEST_F(InfoWidgetTest, SaveLoadSaveGivesTheSameRecord)
{
  VXBridgeObject* bridge = importSphere(QStringLiteral("sphere.vtp"));
  importSphere(QStringLiteral("other.vtp"));
  VXDataSource* source = bridge->dataSources().front();
  const QModelIndex sourceIndex = m_Model.dataSourceIndex(source);
  ASSERT_TRUE(m_Model.addRepresentation(sourceIndex, VXRepresentation::Surface));
  ASSERT_TRUE(m_Model.addRepresentation(sourceIndex, VXRepresentation::Points));
  ASSERT_TRUE(m_Model.setData(m_Model.index(2, 1, sourceIndex), QStringLiteral("Point Cloud"), Qt::EditRole));
  ASSERT_TRUE(m_Model.setData(m_Model.index(0, 0, sourceIndex), Qt::Unchecked, Qt::CheckStateRole));
  source->setSolidColor(QColor(10, 200, 30));
  const json first = save();

  // A fresh pipeline with its own model and panel over the same render window.
  VXPipeline pipeline;
  pipeline.setActiveViewWidget(m_Grid.activeView());
  VXInfoWidget info;
  VXPipelineModel model(&pipeline, &info);
  info.setPipelineModel(&model);
  info.onActiveViewChanged(m_Grid.activeView());
  QSignalSpy messages(&info, &VXInfoWidget::sendOutputMessage);
  info.loadState(first, viewIndexes());
  EXPECT_EQ(messages.count(), 0);
  // No default data views came with the loaded sources.
  EXPECT_EQ(model.getAllRepresentations().size(), 4);
  EXPECT_EQ(VXPipeline::getDefaultTriangleRepType(), VXRepresentation::Outline);

  json second;
  info.saveState(QModelIndex(), second, viewIndexes());
  EXPECT_EQ(first, second) << first.dump(2) << "\n---\n" << second.dump(2);
  const QModelIndex loadedSource = model.index(0, 0, model.index(0, 0));
  EXPECT_EQ(model.index(2, 1, loadedSource).data().toString(), QStringLiteral("Point Cloud"));
  EXPECT_EQ(model.index(0, 0, loadedSource).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
  EXPECT_EQ(model.index(1, 0, loadedSource).data(Qt::CheckStateRole).toInt(), Qt::Checked);
}

struct LoadFailure
{
  const char* name;
  // Builds the records and picks the parent row they load under.
  std::function<json(QModelIndex&)> records;
  QString message;
};

TEST_F(InfoWidgetTest, EachMalformedRecordEndsTheLoadWithItsMessage)
{
  const QString sphere = writeSphere(QStringLiteral("sphere.vtp"));
  const std::vector<LoadFailure> failures = {
      {"no item type",
       [](QModelIndex&) {
         return json::array({{{"item_data", json::object()}}});
       },
       QStringLiteral("Error reading state file; tree view item is missing the item type key")},
      {"no item data",
       [](QModelIndex&) {
         return json::array({{{"item_type", "FileToVXBridge"}}});
       },
       QStringLiteral("Error reading state file; tree view item is missing the item data key")},
      {"data source at the top",
       [](QModelIndex&) {
         return json::array({{{"item_type", "VXDataSource"}, {"item_data", json::object()}}});
       },
       QStringLiteral(
           "Error reading state file; found item type VXDataSource but top level tree view items must be "
           "of type VXBridgeObject")},
      {"bridge below the top",
       [this, sphere](QModelIndex& parent)
       {
         parent = m_Model.pipelineIndex(m_Pipeline.importFile(sphere));
         return json::array({fileBridgeRecord(sphere)});
       },
       QStringLiteral(
           "Error reading state file; found VXBridgeObject item type FileToVXBridge but the model index "
           "for insertion is not at the top level of the tree.")},
      {"data source under a data source",
       [this, sphere](QModelIndex& parent)
       {
         parent = m_Model.dataSourceIndex(m_Pipeline.importFile(sphere)->dataSources().front());
         return json::array({{{"item_type", "VXDataSource"}, {"item_data", json::object()}}});
       },
       QStringLiteral("Error reading state file; found item type VXDataSource but the parent item is not a "
                      "VXBridgeObject type.")},
      {"bridge without a file",
       [this](QModelIndex&)
       {
         return json::array({fileBridgeRecord(
             QString(), json::array({{{"item_type", "VXDataSource"}, {"item_data", json::object()}}}))});
       },
       QStringLiteral(
           "Error reading state file; cannot load the data source because the parent pipeline object "
           "does not have an associated .kestrix file.")},
      {"kestrix source without its path",
       [this](QModelIndex&)
       {
         return json::array({fileBridgeRecord(
             m_Dir.filePath(QStringLiteral("gone.kestrix")),
             json::array({{{"item_type", "VXDataSource"}, {"item_data", json::object()}}}))});
       },
       QStringLiteral(
           "Error reading state file; found KESTRIX-ZR file VXDataSource item type but missing the imported "
           "data path key.")},
      {"source without a match",
       [this, sphere](QModelIndex&)
       {
         return json::array(
             {fileBridgeRecord(sphere, json::array({{{"item_type", "VXDataSource"},
                                                     {"item_data", {{"imported_data_path", "Nowhere"}}}}}))});
       },
       QStringLiteral(
           "Error reading state file; found item type VXDataSource in state file but could find a matching "
           "data source in the model.")},
      {"filter under a data view",
       [this, sphere](QModelIndex& parent)
       {
         m_Pipeline.importFile(sphere);
         parent = m_Model.representationIndex(m_Model.getAllRepresentations().front());
         return json::array({{{"item_type", "VXFClip"}, {"item_data", json::object()}}});
       },
       QStringLiteral(
           "Error reading state file; found VXFClip filter item type cannot have a VXRepresentation parent "
           "item.")},
      {"data view under a bridge",
       [this, sphere](QModelIndex& parent)
       {
         parent = m_Model.pipelineIndex(m_Pipeline.importFile(sphere));
         return json::array({outlineRecord()});
       },
       QStringLiteral(
           "Error reading state file; found VXOutlineRep representation item type must have a VXDataSource "
           "or VXFilter parent item.")},
      {"data view in an unknown window",
       [this, sphere](QModelIndex& parent)
       {
         parent = m_Model.dataSourceIndex(m_Pipeline.importFile(sphere)->dataSources().front());
         return json::array({outlineRecord(7)});
       },
       QStringLiteral("Error reading state file; could not find a view widget to add items to")},
  };

  for (const LoadFailure& failure : failures)
  {
    // Each case on an empty tree.
    m_Model.removeItems(
        [this]()
        {
          QModelIndexList rows;
          for (int row = 0; row < m_Model.rowCount(); ++row)
          {
            rows.append(m_Model.index(row, 0));
          }
          return rows;
        }());
    settle();
    QModelIndex parent;
    const json records = failure.records(parent);
    const int representationsBefore = m_Model.getAllRepresentations().size();
    const QStringList messages = load(records, parent);
    ASSERT_EQ(messages.size(), 1) << failure.name << ": "
                                  << messages.join(QStringLiteral(" | ")).toStdString();
    EXPECT_EQ(messages.front(), failure.message) << failure.name;
    EXPECT_EQ(m_Model.getAllRepresentations().size(), representationsBefore) << failure.name;
  }
}

TEST_F(InfoWidgetTest, TheFirstFailureEndsTheLoadAndKeepsWhatCameBefore)
{
  const QString sphere = writeSphere(QStringLiteral("sphere.vtp"));
  const json records =
      json::array({fileBridgeRecord(sphere), {{"item_data", json::object()}}, fileBridgeRecord(sphere)});
  const QStringList messages = load(records);
  ASSERT_EQ(messages.size(), 1);
  EXPECT_EQ(messages.front(),
            QStringLiteral("Error reading state file; tree view item is missing the item type key"));
  ASSERT_EQ(m_Model.rowCount(), 1);
  EXPECT_EQ(m_Model.getPipelineObject(m_Model.index(0, 0))->filePath(), sphere);
  // The data source came from the file, without a default data view.
  EXPECT_EQ(m_Model.getAllDataSources().size(), 1);
  EXPECT_TRUE(m_Model.getAllRepresentations().isEmpty());

  // A value of the wrong JSON type is the caller's to report.
  EXPECT_THROW(m_Info.loadState(json::object({{"item_type", 3}}), viewIndexes()), json::exception);
  EXPECT_THROW(
      m_Info.loadState(json::array({{{"item_type", 3}, {"item_data", json::object()}}}), viewIndexes()),
      json::exception);
}

TEST_F(InfoWidgetTest, OlderImageSliceNameIsReadAsTheImageSliceView)
{
  EXPECT_EQ(VXTreeStateLoader::CurrentTypeName(QStringLiteral("VXSliceRep")),
            QStringLiteral("VXImageSliceRep"));
  EXPECT_EQ(VXTreeStateLoader::Category(QStringLiteral("VXSliceRep")),
            VXTreeStateLoader::ItemCategory::Representation);
  EXPECT_EQ(VXTreeStateLoader::RepresentationType(QStringLiteral("VXSliceRep")),
            VXRepresentation::ImageSlice);
  EXPECT_EQ(VXTreeStateLoader::RepresentationType(QStringLiteral("VXOutlineRep")), VXRepresentation::Outline);
  EXPECT_EQ(VXTreeStateLoader::Category(QStringLiteral("VXFThreshold")),
            VXTreeStateLoader::ItemCategory::Filter);
  EXPECT_EQ(VXTreeStateLoader::Category(QStringLiteral("VXTextAnnotationSource")),
            VXTreeStateLoader::ItemCategory::GlobalSource);
  EXPECT_EQ(VXTreeStateLoader::Category(QStringLiteral("VXSomethingElse")),
            VXTreeStateLoader::ItemCategory::Unknown);

  VXDataSource* source = importSphere(QStringLiteral("sphere.vtp"))->dataSources().front();
  const QModelIndex sourceIndex = m_Model.dataSourceIndex(source);
  const json slice = {
      {"item_type", "VXSliceRep"},
      {"item_data", {{"rep_view_implementations", json::array({{{"render_window_index", 0}}})}}}};
  const QStringList messages = load(json::array({slice, outlineRecord()}), sourceIndex);
  const int before = 1; // the default outline
  if (VXRepresentation::IsRegistered(VXRepresentation::ImageSlice))
  {
    EXPECT_TRUE(messages.isEmpty()) << messages.join(QStringLiteral(" | ")).toStdString();
    ASSERT_EQ(m_Model.rowCount(sourceIndex), before + 2);
    EXPECT_EQ(m_Model.getRepresentation(m_Model.index(before, 1, sourceIndex))->getType(),
              VXRepresentation::ImageSlice);
  }
  else
  {
    // Recognised, mapped and reported; the load goes on with the next record.
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages.front(),
              QStringLiteral("Error reading state file; data views of type VXImageSliceRep are not "
                             "available and are left out"));
    ASSERT_EQ(m_Model.rowCount(sourceIndex), before + 1);
    EXPECT_EQ(m_Model.getRepresentation(m_Model.index(before, 1, sourceIndex))->getType(),
              VXRepresentation::Outline);
  }
}

TEST_F(InfoWidgetTest, ToolbarAddsAndRemovesDataViewsOfTheSelection)
{
  VXDataSource* source = importSphere(QStringLiteral("sphere.vtp"))->dataSources().front();
  const QModelIndex sourceIndex = m_Model.dataSourceIndex(source);
  QSignalSpy messages(&m_Info, &VXInfoWidget::sendOutputMessage);
  m_Info.addRepresentationToSelection(VXRepresentation::Surface);
  EXPECT_EQ(messages.count(), 1); // nothing selected
  EXPECT_EQ(m_Model.rowCount(sourceIndex), 1);

  m_Info.selectIndex(sourceIndex);
  EXPECT_EQ(m_Info.selectedIndex(), sourceIndex);
  ASSERT_NE(m_Info.currentSettingsWidget(), nullptr);
  EXPECT_EQ(m_Info.currentSettingsWidget(), source->settingsWidget());
  QSignalSpy highlights(&m_Info, &VXInfoWidget::clearHighlightsRequest);
  for (VXRepresentation::Type type : VXInfoWidget::k_AddableRepresentationTypes)
  {
    m_Info.addRepresentationToSelection(type);
  }
  // Every kind but the volume, which draws images only and is refused with a message for a mesh.
  ASSERT_EQ(m_Model.rowCount(sourceIndex), 1 + VXInfoWidget::k_AddableRepresentationTypes.size() - 1);
  EXPECT_EQ(messages.count(), 2);
  EXPECT_EQ(m_Model.getRepresentation(m_Model.index(4, 1, sourceIndex))->getType(),
            VXRepresentation::Surface);
  EXPECT_EQ(m_Model.getRepresentation(m_Model.index(5, 1, sourceIndex))->getType(), VXRepresentation::Glyph);

  const QModelIndex points = m_Model.index(2, 1, sourceIndex);
  EXPECT_EQ(m_Model.getRepresentation(points)->getType(), VXRepresentation::Points);
  m_Info.selectIndex(points);
  EXPECT_GE(highlights.count(), 1);
  m_Info.removeSelectedItem();
  EXPECT_EQ(m_Model.rowCount(sourceIndex), 5);

  // The panel of a source goes back to its source when another row is shown.
  m_Info.selectIndex(sourceIndex);
  QPointer<QWidget> panel = m_Info.currentSettingsWidget();
  m_Info.selectIndex(m_Model.pipelineIndex(qobject_cast<VXBridgeObject*>(source->parent())));
  EXPECT_EQ(m_Info.currentSettingsWidget(), nullptr);
  ASSERT_FALSE(panel.isNull());
  EXPECT_EQ(panel->parentWidget(), nullptr);
}

TEST_F(InfoWidgetTest, LinkedViewsOfAStateFormOneGroup)
{
  VXDataSource* source = importSphere(QStringLiteral("sphere.vtp"))->dataSources().front();
  const QModelIndex sourceIndex = m_Model.dataSourceIndex(source);
  json linked = outlineRecord();
  linked["item_data"]["rep_view_implementations"][0]["rep_linked"] = true;
  const QStringList messages = load(json::array({linked, outlineRecord(), linked}), sourceIndex);
  EXPECT_TRUE(messages.isEmpty()) << messages.join(QStringLiteral(" | ")).toStdString();
  ASSERT_EQ(m_Model.rowCount(sourceIndex), 4);
  VXAbstractViewWidget* view = m_Grid.activeView();
  VXRepresentationPimpl* firstLinked =
      m_Model.getRepresentation(m_Model.index(1, 1, sourceIndex))->implementation(view);
  VXRepresentationPimpl* unlinked =
      m_Model.getRepresentation(m_Model.index(2, 1, sourceIndex))->implementation(view);
  VXRepresentationPimpl* secondLinked =
      m_Model.getRepresentation(m_Model.index(3, 1, sourceIndex))->implementation(view);
  ASSERT_NE(firstLinked, nullptr);
  EXPECT_TRUE(firstLinked->isLinked());
  EXPECT_FALSE(unlinked->isLinked());
  EXPECT_EQ(m_Model.linkedSliceViews(), (QList<VXRepresentationPimpl*>{firstLinked, secondLinked}));

  // A view asks to join and to leave; asking twice changes nothing.
  QSignalSpy linking(&m_Model, &VXPipelineModel::linkingDataViews);
  VXRepresentation* owner = unlinked->owner();
  Q_EMIT owner->requestLinkViews(unlinked);
  Q_EMIT owner->requestLinkViews(unlinked);
  EXPECT_TRUE(unlinked->isLinked());
  EXPECT_EQ(m_Model.linkedSliceViews().size(), 3);
  ASSERT_EQ(linking.count(), 1);
  EXPECT_TRUE(linking.front().front().toBool());
  Q_EMIT owner->requestUnlinkViews(unlinked);
  Q_EMIT owner->requestUnlinkViews(unlinked);
  EXPECT_FALSE(unlinked->isLinked());
  EXPECT_EQ(m_Model.linkedSliceViews().size(), 2);
  EXPECT_EQ(linking.count(), 2);

  // A removed data view leaves the group.
  m_Model.removeItem(m_Model.index(1, 0, sourceIndex));
  settle();
  EXPECT_EQ(m_Model.linkedSliceViews(), QList<VXRepresentationPimpl*>{secondLinked});
}

TEST_F(InfoWidgetTest, SelectedItemShowsItsDatasetInformation)
{
  VXBridgeObject* bridge = importSphere(QStringLiteral("sphere.vtp"));
  VXDataSource* source = bridge->dataSources().front();
  const QModelIndex sourceIndex = m_Model.dataSourceIndex(source);
  EXPECT_EQ(m_Info.currentDatasetInfoWidget(), nullptr);

  m_Info.selectIndex(sourceIndex);
  ASSERT_NE(m_Info.currentDatasetInfoWidget(), nullptr);
  EXPECT_EQ(m_Info.currentDatasetInfoWidget(), source->getDataSetInfoWidget());
  EXPECT_EQ(m_Info.currentDatasetInfoWidget()->parentWidget(), m_Info.datasetInfoArea());
  EXPECT_EQ(source->getDataSetInfoWidget()->dataSet(), source->getOutput());

  // A data view's panel is shared with it: the panel keeps it alive while it is shown.
  VXRepresentation* view = m_Model.getRepresentation(m_Model.index(0, 1, sourceIndex));
  m_Info.selectIndex(m_Model.index(0, 1, sourceIndex));
  EXPECT_EQ(m_Info.currentDatasetInfoWidget(), view->getDataSetInfoWidget().data());
  QPointer<QWidget> sourcePanel = source->getDataSetInfoWidget();
  EXPECT_EQ(sourcePanel->parentWidget(), nullptr);
  QPointer<QWidget> viewPanel = m_Info.currentDatasetInfoWidget();
  m_Info.removeSelectedItem();
  settle();
  // The row is gone; so is the shown panel of the view once nothing holds it.
  m_Info.selectIndex(m_Model.pipelineIndex(bridge));
  EXPECT_EQ(m_Info.currentDatasetInfoWidget(), nullptr);
  EXPECT_TRUE(viewPanel.isNull());
  EXPECT_FALSE(sourcePanel.isNull());
}

// The panel with its drop handler in reach.
class DropTarget : public VXInfoWidget
{
public:
  using VXInfoWidget::dropEvent;
};

TEST(InfoWidgetDropTest, DroppedFilesAreAskedForByKind)
{
  DropTarget target;
  QSignalSpy imports(&target, &VXInfoWidget::importFileRequest);
  QSignalSpy states(&target, &VXInfoWidget::loadStateFileRequest);
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QStringLiteral("/data/scan.vtu")),
                QUrl::fromLocalFile(QStringLiteral("/data/session.ksxstate"))});
  QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  target.dropEvent(&drop);
  EXPECT_TRUE(drop.isAccepted());
  ASSERT_EQ(imports.count(), 1);
  EXPECT_EQ(imports.front().front().toString(), QStringLiteral("/data/scan.vtu"));
  ASSERT_EQ(states.count(), 1);
  EXPECT_EQ(states.front().front().toString(), QStringLiteral("/data/session.ksxstate"));
}
} // namespace
