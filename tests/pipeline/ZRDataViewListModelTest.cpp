#include "pipeline/ZRDataViewListModel.h"

#include "PipelineTestDoubles.h"
#include "data_views/VXRepresentationPimpl.h"
#include "pipeline/VXDataSource.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

namespace
{
// The smallest per-window part: the base keeps the settings, nothing is drawn.
class PlainPimpl : public VXRepresentationPimpl
{
public:
  using VXRepresentationPimpl::VXRepresentationPimpl;
  void initialize(vtkAlgorithmOutput*) override {}
  bool finalize() override { return true; }
  vtkAlgorithmOutput* inputPort() const override { return nullptr; }
  vtkAlgorithmOutput* outputPort() const override { return nullptr; }
};
} // namespace

TEST(ZRDataViewListModel, ListsPathsAndLinksCheckedRowsInOrder)
{
  VXDataSource source;
  source.setBaseName(QStringLiteral("Grains"));
  RecordingRepresentation representation(VXRepresentation::Surface, nullptr);
  representation.setBaseName(QStringLiteral("Surface"));
  representation.setParentSource(&source);
  auto* first = new PlainPimpl(&representation, nullptr);
  auto* second = new PlainPimpl(&representation, nullptr);
  nlohmann::json record = {{"rep_split_id", 3}};
  second->read(record);

  ZRDataViewListModel model({first, second});
  ASSERT_EQ(model.rowCount(), 2);
  ASSERT_EQ(model.columnCount(), 2);
  EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Linked Views"));
  EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Data View Paths"));
  EXPECT_FALSE(model.headerData(0, Qt::Vertical).isValid());
  EXPECT_EQ(model.data(model.index(1, 1)).toString(), QStringLiteral("Grains > Surface > Split View 3"));
  EXPECT_EQ(model.data(model.index(1, 1), Qt::UserRole), model.data(model.index(1, 1), Qt::ToolTipRole));
  EXPECT_TRUE(model.flags(model.index(0, 0)) & Qt::ItemIsUserCheckable);
  EXPECT_FALSE(model.flags(model.index(0, 1)) & Qt::ItemIsUserCheckable);

  EXPECT_TRUE(model.getLinkedDataViews().empty());
  EXPECT_FALSE(model.setData(model.index(0, 1), Qt::Checked, Qt::CheckStateRole));
  EXPECT_TRUE(model.setData(model.index(1, 0), Qt::Checked, Qt::CheckStateRole));
  EXPECT_TRUE(model.setData(model.index(0, 0), Qt::Checked, Qt::CheckStateRole));
  EXPECT_EQ(model.data(model.index(1, 0), Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_EQ(model.getLinkedDataViews(), (std::vector<VXRepresentationPimpl*>{first, second}));
  model.setData(model.index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
  EXPECT_EQ(model.getLinkedDataViews(), std::vector<VXRepresentationPimpl*>{second});
  EXPECT_EQ(model.at(0), first);
  EXPECT_EQ(model.at(2), nullptr);
}

TEST(VXRepresentationPimpl, StateKeysRoundTripAndMissingKeysKeepValues)
{
  RecordingRepresentation representation(VXRepresentation::Outline, nullptr);
  PlainPimpl pimpl(&representation, nullptr);
  nlohmann::json json;
  pimpl.write(json);
  EXPECT_EQ(json.at("detach_color_settings"), true);
  EXPECT_EQ(json.at("representation_visible"), true);
  EXPECT_EQ(json.at("rep_split_id"), 1);

  PlainPimpl other(&representation, nullptr);
  other.read({{"rep_linked", true},
              {"representation_visible", false},
              {"rep_split_id", true},
              {"global_grid_axes_spacingx", 2.0},
              {"global_grid_axes_spacingy", 3.0}});
  EXPECT_TRUE(other.isLinked());
  EXPECT_FALSE(other.isVisible());
  EXPECT_EQ(other.splitId(), 1);
  // The spacing is taken only when all three are there.
  EXPECT_EQ(other.gridSpacing()[0], 0.0);
  other.read(nlohmann::json::array());
  EXPECT_TRUE(other.isLinked());
  EXPECT_THROW(other.read({{"rep_split_id", "two"}}), nlohmann::json::type_error);
}
