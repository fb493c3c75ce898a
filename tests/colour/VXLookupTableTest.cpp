#include "colour/VXLookupTable.h"
#include "colour/VXLookupTableModel.h"

#include <nlohmann/json.hpp>

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

namespace
{
using ColorPreset = zr::core::ColorTableUtilities::ColorPreset;

// A table whose question about unnamed categories is answered by the test.
class AnsweringLookupTable : public VXLookupTable
{
public:
  MissingValuesChoice m_Answer = MissingValuesChoice::UseNanColor;
  int m_Questions = 0;

protected:
  MissingValuesChoice askMissingValuesChoice() override
  {
    ++m_Questions;
    return m_Answer;
  }
};

std::vector<VXLookupTable::RgbPos_t> nodesOf(const VXLookupTable& table)
{
  std::vector<VXLookupTable::RgbPos_t> nodes;
  vtkColorTransferFunction* ctf = table.getColorTransferFunction();
  for (int i = 0; i < ctf->GetSize(); ++i)
  {
    double node[6];
    ctf->GetNodeValue(i, node);
    nodes.push_back({node[0], node[1], node[2], node[3]});
  }
  return nodes;
}

// An uneven map on 0..1: red at 0, green at 0.2, blue at 1.
void makeUnevenMap(VXLookupTable& table)
{
  ColorPreset preset;
  preset.m_RGBPoints = {0.0f, 1.0f, 0.0f, 0.0f, 0.2f, 0.0f, 1.0f, 0.0f, 1.0f, 0.0f, 0.0f, 1.0f};
  table.getColorTransferFunction()->RemoveAllPoints();
  table.addRgbPoint(0.0, 0.0, 0.0, 0.0);
  table.addRgbPoint(1.0, 1.0, 1.0, 1.0);
  table.parseRgbJson(preset);
}

// Ten indexed colours: colour k is (k / 10, 0, 1 - k / 10).
ColorPreset tenColourPreset()
{
  ColorPreset preset;
  for (int k = 0; k < 10; ++k)
  {
    preset.m_IndexedColors.insert(preset.m_IndexedColors.end(), {k / 10.0f, 0.0f, 1.0f - k / 10.0f});
  }
  return preset;
}

std::array<double, 3> colourAt(const VXLookupTable& table, double value)
{
  std::array<double, 3> rgb{};
  table.getColorTransferFunction()->GetColor(value, rgb.data());
  return rgb;
}
} // namespace

TEST(VXLookupTable, RangeChangesKeepTheShapeOfTheMap)
{
  VXLookupTable table;
  makeUnevenMap(table);
  table.setRange(10.0, 30.0);
  std::vector<VXLookupTable::RgbPos_t> nodes = nodesOf(table);
  ASSERT_EQ(nodes.size(), 3u);
  EXPECT_DOUBLE_EQ(nodes[0].x, 10.0);
  EXPECT_NEAR(nodes[1].x, 14.0, 1e-6);
  EXPECT_DOUBLE_EQ(nodes[2].x, 30.0);
  EXPECT_DOUBLE_EQ(nodes[1].g, 1.0);

  // Empty and reversed ranges change nothing.
  std::unique_ptr<VXLookupTable> before(table.deepCopy());
  table.setRange(5.0, 5.0);
  table.setRange(9.0, 1.0);
  EXPECT_TRUE(table.equals(before.get()));

  // A degenerate one-node map recovers the built-in nodes.
  table.getColorTransferFunction()->RemoveAllPoints();
  table.addRgbPoint(3.0, 1.0, 1.0, 1.0);
  table.setRange(0.0, 2.0);
  nodes = nodesOf(table);
  ASSERT_EQ(nodes.size(), VXLookupTable::m_DefaultRgbPosVector.size());
  EXPECT_DOUBLE_EQ(nodes.front().x, 0.0);
  EXPECT_DOUBLE_EQ(nodes.back().x, 2.0);
  EXPECT_DOUBLE_EQ(nodes.front().b, VXLookupTable::m_DefaultRgbPosVector.front().b);
}

TEST(VXLookupTable, InversionMirrorsColoursOnly)
{
  VXLookupTable table;
  makeUnevenMap(table);
  table.invert();
  EXPECT_TRUE(table.isInverted());
  const std::vector<VXLookupTable::RgbPos_t> nodes = nodesOf(table);
  ASSERT_EQ(nodes.size(), 3u);
  EXPECT_NEAR(nodes[1].x, 0.2, 1e-6); // positions stay
  EXPECT_DOUBLE_EQ(nodes[0].b, 1.0);  // blue now at 0
  EXPECT_DOUBLE_EQ(nodes[2].r, 1.0);  // red now at 1
  EXPECT_DOUBLE_EQ(nodes[1].g, 1.0);

  std::unique_ptr<VXLookupTable> inverted(table.deepCopy());
  table.invert();
  EXPECT_FALSE(table.isInverted());
  EXPECT_FALSE(table.equals(inverted.get()));
  inverted->invert();
  EXPECT_TRUE(table.equals(inverted.get()));
}

TEST(VXLookupTable, PresetsKeepTheRangeAndAreRememberedAsText)
{
  VXLookupTable table;
  EXPECT_EQ(table.getColorPresetArray(), QList<QString>{VXLookupTable::k_DefaultPresetName});
  table.setRange(-4.0, 4.0);
  ColorPreset preset;
  preset.m_RGBPoints = {0.5f, 1.0f, 0.0f, 0.0f, 2.0f, 0.0f, 0.0f, 1.0f};
  table.parseRgbJson(preset);
  EXPECT_EQ(table.getColorPresetArray(), (QList<QString>{"0.5/1/0/0", "2/0/0/1"}));
  EXPECT_EQ(table.getRange(), (std::array<double, 2>{-4.0, 4.0}));

  // The text form brings the same map back, at the current range.
  VXLookupTable other;
  other.setRange(-4.0, 4.0);
  other.parseRgbArray(table.getColorPresetArray());
  EXPECT_TRUE(other.equals(&table));
  EXPECT_EQ(other.getColorPresetArray(), table.getColorPresetArray());

  // "Default" and malformed entries fall back to the default preset.
  for (const QList<QString>& fallback : {QList<QString>{"Default"}, QList<QString>{"1/2/3"}})
  {
    other.parseRgbArray(fallback);
    EXPECT_EQ(other.getColorPresetArray(), QList<QString>{VXLookupTable::k_DefaultPresetName});
    EXPECT_EQ(other.getRange(), (std::array<double, 2>{-4.0, 4.0}));
  }
}

TEST(VXLookupTable, NanColourAlsoColoursValuesOutsideTheRange)
{
  VXLookupTable table;
  table.setNANColor(QColor(255, 0, 255));
  EXPECT_EQ(table.getNANColor(), QColor(255, 0, 255));
  EXPECT_EQ(table.getNANColor().alphaF(), 1.0);
  vtkColorTransferFunction* ctf = table.getColorTransferFunction();
  ctf->UseBelowRangeColorOn();
  ctf->UseAboveRangeColorOn();
  const std::array<double, 2> range = table.getRange();
  for (double value : {std::numeric_limits<double>::quiet_NaN(), range[0] - 1.0, range[1] + 1.0})
  {
    EXPECT_EQ(colourAt(table, value), (std::array<double, 3>{1.0, 0.0, 1.0})) << value;
  }
  // A new preset keeps the NaN colour.
  table.parseRgbArray({"Default"});
  EXPECT_EQ(table.getNANColor(), QColor(255, 0, 255));
}

TEST(VXLookupTable, CategoriesGetColoursInTurnWhateverTheirSpacing)
{
  VXLookupTable table;
  QSignalSpy synced(&table, &VXLookupTable::syncIndexedColorMap);
  table.parseIndexedJson<double>(tenColourPreset(), {1.0, 7.0, 400.0});
  EXPECT_EQ(synced.count(), 1);
  vtkColorTransferFunction* ctf = table.getColorTransferFunction();
  EXPECT_EQ(ctf->GetIndexedLookup(), 1);
  ASSERT_EQ(ctf->GetNumberOfAnnotatedValues(), 3);
  EXPECT_EQ(ctf->GetAnnotation(2), "400");
  EXPECT_NEAR(colourAt(table, 1.0)[2], 1.0, 1e-6);
  EXPECT_NEAR(colourAt(table, 7.0)[0], 0.1, 1e-6);
  EXPECT_NEAR(colourAt(table, 400.0)[0], 0.2, 1e-6);
  // A value that is no category takes the NaN colour.
  const QColor nan = table.getNANColor();
  EXPECT_NEAR(colourAt(table, 5.0)[0], nan.redF(), 1e-4); // QColor keeps 16 bits
  // An indexed table has no range to change.
  std::unique_ptr<VXLookupTable> before(table.deepCopy());
  table.setRange(0.0, 1000.0);
  EXPECT_TRUE(table.equals(before.get()));

  // Twelve values on ten colours: the last two repeat the first two.
  std::set<double> twelve;
  for (int v = 0; v < 12; ++v)
  {
    twelve.insert(v * 3.0);
  }
  table.parseIndexedJson<double>(tenColourPreset(), twelve);
  EXPECT_EQ(colourAt(table, 30.0), colourAt(table, 0.0));
  EXPECT_EQ(colourAt(table, 33.0), colourAt(table, 3.0));
  EXPECT_NE(colourAt(table, 6.0), colourAt(table, 0.0));
}

TEST(VXLookupTable, AnnotatedPresetsAskOnceAboutValuesTheyDoNotName)
{
  ColorPreset preset = tenColourPreset();
  preset.m_Annotations = {"1", "Austenite", "2", "Ferrite"};

  AnsweringLookupTable table;
  table.m_Answer = VXLookupTable::MissingValuesChoice::UseNanColor;
  table.parseIndexedJson<double>(preset, {1.0, 2.0, 3.0, 4.0});
  EXPECT_EQ(table.m_Questions, 1);
  vtkColorTransferFunction* ctf = table.getColorTransferFunction();
  EXPECT_EQ(ctf->GetAnnotation(0), "Austenite");
  EXPECT_EQ(ctf->GetAnnotation(1), "Ferrite");
  EXPECT_EQ(ctf->GetAnnotation(2), "3");
  EXPECT_NEAR(colourAt(table, 2.0)[0], 0.1, 1e-6);
  EXPECT_NEAR(colourAt(table, 4.0)[1], table.getNANColor().greenF(), 1e-4);

  table.m_Answer = VXLookupTable::MissingValuesChoice::Cancel;
  table.parseIndexedJson<double>(preset, {1.0, 9.0});
  EXPECT_EQ(ctf->GetSize(), 0);
  EXPECT_TRUE(table.getColorPresetArray().isEmpty());

  // Without a value set the table's own categories are used again.
  table.m_Answer = VXLookupTable::MissingValuesChoice::GenerateNewColors;
  table.parseIndexedArray({"Default"});
  table.parseIndexedJson<double>(tenColourPreset(), {5.0, 6.0});
  table.parseIndexedJson(preset);
  EXPECT_EQ(ctf->GetNumberOfAnnotatedValues(), 2);
  EXPECT_EQ(ctf->GetAnnotatedValue(1).ToDouble(), 6.0);
}

TEST(VXLookupTable, CopiesCompareAndSurviveTheStateRecord)
{
  VXLookupTable table;
  makeUnevenMap(table);
  table.setRange(2.0, 12.0);
  table.invert();
  table.setNANColor(QColor(0, 128, 255));
  table.getColorTransferFunction()->SetColorSpace(VTK_CTF_LAB);

  nlohmann::json record;
  table.write(record);
  EXPECT_EQ(record["rgb_pos_vector"].size(), 3u);
  EXPECT_EQ(record["lut_is_inverted"], true);
  EXPECT_EQ(record["color_space"], VTK_CTF_LAB);

  VXLookupTable restored;
  restored.read(record);
  EXPECT_TRUE(restored.equals(&table));
  EXPECT_TRUE(restored.isInverted());
  EXPECT_EQ(restored.getNANColor(), table.getNANColor());
  EXPECT_EQ(restored.getColorPresetArray(), table.getColorPresetArray());
  EXPECT_EQ(restored.getColorTransferFunction()->GetColorSpace(), VTK_CTF_LAB);

  // An indexed record still looks its categories up after a read.
  table.parseIndexedJson<double>(tenColourPreset(), {1.0, 7.0, 400.0});
  record = nlohmann::json::object();
  table.write(record);
  restored.read(record);
  EXPECT_EQ(colourAt(restored, 7.0), colourAt(table, 7.0));
  EXPECT_NE(colourAt(restored, 400.0), colourAt(restored, 7.0));

  std::unique_ptr<VXLookupTable> copy(table.deepCopy());
  EXPECT_EQ(copy->parent(), nullptr);
  EXPECT_TRUE(copy->equals(&table));
  EXPECT_EQ(colourAt(*copy, 400.0), colourAt(table, 400.0));
  EXPECT_FALSE(copy->equals(nullptr));
  // NaN never compares equal.
  copy->getColorTransferFunction()->AddRGBPoint(500.0, std::nan(""), 0.0, 0.0);
  table.getColorTransferFunction()->AddRGBPoint(500.0, std::nan(""), 0.0, 0.0);
  EXPECT_FALSE(copy->equals(&table));
}

TEST(VXLookupTableModel, EditsRowsAndTellsOfValueChanges)
{
  VXLookupTableModel model;
  model.addRow(Qt::red, QStringLiteral("1"), QStringLiteral("Austenite"));
  model.addRow(Qt::blue, QStringLiteral("2"), QStringLiteral("Ferrite"));
  EXPECT_EQ(model.rowCount(), 2);
  EXPECT_EQ(model.columnCount(), 3);
  EXPECT_EQ(model.headerData(VXLookupTableModel::AnnotationColumn, Qt::Horizontal).toString(), "Annotation");
  QSignalSpy valueChanged(&model, &VXLookupTableModel::valueChanged);
  QSignalSpy dataChanged(&model, &QAbstractItemModel::dataChanged);

  EXPECT_TRUE(
      model.setData(model.index(1, VXLookupTableModel::AnnotationColumn), QStringLiteral("Ferrite B")));
  EXPECT_EQ(valueChanged.count(), 0);
  EXPECT_TRUE(model.setData(model.index(1, VXLookupTableModel::ValueColumn), QStringLiteral("3")));
  EXPECT_EQ(valueChanged.count(), 1);
  EXPECT_TRUE(model.setData(model.index(0, VXLookupTableModel::ColorColumn), QColor(Qt::green)));
  EXPECT_EQ(dataChanged.count(), 3);
  EXPECT_EQ(model.data(model.index(0, VXLookupTableModel::ColorColumn)).value<QColor>(), QColor(Qt::green));
  EXPECT_EQ(model.table().at(1).value, "3");
  EXPECT_FALSE(model.setData(model.index(5, 0), QStringLiteral("x")));

  model.removeRow(model.index(0, 0));
  EXPECT_EQ(model.rowCount(), 1);
  EXPECT_EQ(model.data(model.index(0, VXLookupTableModel::AnnotationColumn)).toString(), "Ferrite B");
  model.clearTable();
  EXPECT_EQ(model.rowCount(), 0);
}
