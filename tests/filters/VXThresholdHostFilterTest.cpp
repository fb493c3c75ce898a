// A threshold filter's request for a host filter: which thresholds of the chain go into it, by the
// answer to the question about its relatives, and the refusals of multi-component arrays.
#include "filters/FilterTestSupport.h"
#include "filters/ThresholdStructure.h"
#include "filters/VXFThreshold.h"

#include <vector>

namespace
{
// A threshold whose questions are answered by the test, which also keeps what was asked and shown.
class AnsweringThreshold : public VXFThreshold
{
public:
  RelativesAnswer m_Answer = RelativesAnswer::Cancel;
  QStringList m_Questions;
  QStringList m_Warnings;

protected:
  RelativesAnswer askIncludeRelatives(const QString& title, const QString& text) override
  {
    m_Questions << title + QStringLiteral(" | ") + text;
    return m_Answer;
  }
  void showWarning(const QString& title, const QString& text) override
  {
    m_Warnings << title + QStringLiteral(" | ") + text;
  }
};

struct Request
{
  zr::core::DataPath path;
  std::vector<ZR::ArrayThresholdRange> thresholds;
};

const QString k_MultiComponentText = QStringLiteral(
    "Creating Multi-Threshold Objects filter from VXFThreshold filter currently does not support multi "
    "component arrays.");

class ThresholdHostFilterTest : public FilterFixture
{
protected:
  void SetUp() override
  {
    FilterFixture::SetUp();
    const QString path = m_Dir.filePath(QStringLiteral("grains.kestrix"));
    ASSERT_TRUE(ThresholdStructure::Write(path));
    m_Bridge = m_Pipeline.importFile(path);
    ASSERT_EQ(m_Bridge->dataSources().size(), 1);
    m_Source = m_Bridge->dataSources().front();
    QObject::connect(&m_Pipeline, &VXPipeline::createMultiThresholdObjectsFilter,
                     [this](zr::core::DataPath path, std::vector<ZR::ArrayThresholdRange> thresholds) {
                       m_Requests.push_back({std::move(path), std::move(thresholds)});
                     });
  }

  // A threshold under parent on the entry of that display name, keeping [minimum, maximum].
  AnsweringThreshold* threshold(VXCoreObject* parent, const QString& displayName, double minimum,
                                double maximum)
  {
    auto* filter = addFilter<AnsweringThreshold>(parent);
    if (filter == nullptr)
    {
      return nullptr;
    }
    const auto& infos = filter->getDataArrayNameInfos();
    for (size_t index = 0; index < infos.size(); ++index)
    {
      if (infos[index].displayName == displayName)
      {
        filter->setActiveArrayInfoIndex(index);
        VXFThreshold::DataArrayNameInfo info = filter->getActiveArrayInfo();
        info.userRange = {minimum, maximum};
        filter->updateActiveArrayInfo(info);
        filter->applyFilter();
        return filter;
      }
    }
    ADD_FAILURE() << "no entry " << displayName.toStdString();
    return nullptr;
  }

  static QStringList describe(const std::vector<ZR::ArrayThresholdRange>& thresholds)
  {
    QStringList texts;
    for (const ZR::ArrayThresholdRange& threshold : thresholds)
    {
      texts << QStringLiteral("%1 [%2, %3]")
                   .arg(threshold.arrayName)
                   .arg(threshold.minimum)
                   .arg(threshold.maximum);
    }
    return texts;
  }

  VXDataSource* m_Source = nullptr;
  std::vector<Request> m_Requests;
};
} // namespace

TEST_F(ThresholdHostFilterTest, ALoneThresholdAsksNothingAndSendsItsRangeWithTheGeometryPath)
{
  AnsweringThreshold* alone = threshold(m_Source, QStringLiteral("Density"), 1.0, 4.0);
  ASSERT_NE(alone, nullptr);
  alone->createKESTRIXFilterFromVXFilter();
  EXPECT_TRUE(alone->m_Questions.isEmpty());
  ASSERT_EQ(m_Requests.size(), 1u);
  EXPECT_EQ(m_Requests.front().path, zr::core::DataPath({"Sample", "Grains"}));
  EXPECT_EQ(describe(m_Requests.front().thresholds), QStringList{QStringLiteral("Density [1, 4]")});
}

TEST_F(ThresholdHostFilterTest, TheThreeAnswersForAChainOfThreeWithTheMiddlePressed)
{
  AnsweringThreshold* upper = threshold(m_Source, QStringLiteral("Density"), 0.5, 5.0);
  ASSERT_NE(upper, nullptr);
  AnsweringThreshold* middle = threshold(upper, QStringLiteral("Phase"), 1.0, 2.0);
  ASSERT_NE(middle, nullptr);
  AnsweringThreshold* lower = threshold(middle, QStringLiteral("Density"), 1.0, 3.0);
  ASSERT_NE(lower, nullptr);
  const QString question = QStringLiteral(
      "Create Multi-Threshold Objects Filter | This threshold filter has one or more parent/child threshold "
      "filters. Would you like to include all parent/child filters when creating your Multi-Threshold "
      "Objects filter, or just use this one?");

  middle->m_Answer = VXFThreshold::RelativesAnswer::AllFilters;
  middle->createKESTRIXFilterFromVXFilter();
  ASSERT_EQ(m_Requests.size(), 1u);
  EXPECT_EQ(describe(m_Requests.back().thresholds),
            (QStringList{QStringLiteral("Density [0.5, 5]"), QStringLiteral("Phase [1, 2]"),
                         QStringLiteral("Density [1, 3]")}))
      << "the upper range first, then the middle, then the lower";

  middle->m_Answer = VXFThreshold::RelativesAnswer::JustThisFilter;
  middle->createKESTRIXFilterFromVXFilter();
  ASSERT_EQ(m_Requests.size(), 2u);
  EXPECT_EQ(describe(m_Requests.back().thresholds), QStringList{QStringLiteral("Phase [1, 2]")});

  MessageRecorder recorder(&m_Pipeline);
  middle->m_Answer = VXFThreshold::RelativesAnswer::Cancel;
  middle->createKESTRIXFilterFromVXFilter();
  EXPECT_EQ(m_Requests.size(), 2u) << "Cancel sends nothing";
  EXPECT_TRUE(recorder.messages().isEmpty());

  EXPECT_EQ(middle->m_Questions, (QStringList{question, question, question}));
  EXPECT_TRUE(middle->m_Warnings.isEmpty());
}

TEST_F(ThresholdHostFilterTest, AMultiComponentThresholdIsRefusedEvenAlone)
{
  AnsweringThreshold* alone = threshold(m_Source, QStringLiteral("Orientation (Comp 1)"), 1.0, 4.0);
  ASSERT_NE(alone, nullptr);
  MessageRecorder recorder(&m_Pipeline);
  alone->createKESTRIXFilterFromVXFilter();
  EXPECT_TRUE(m_Requests.empty());
  EXPECT_TRUE(alone->m_Questions.isEmpty());
  EXPECT_EQ(alone->m_Warnings, QStringList{QStringLiteral("Cannot Create Multi-Threshold Objects Filter | ") +
                                           k_MultiComponentText});
  EXPECT_EQ(recorder.messages(), QStringList{k_MultiComponentText});
}

TEST_F(ThresholdHostFilterTest, UnderAMultiComponentParentOnlyJustThisFilterGoesThrough)
{
  AnsweringThreshold* parent = threshold(m_Source, QStringLiteral("Orientation (Comp 0)"), 0.0, 20.0);
  ASSERT_NE(parent, nullptr);
  AnsweringThreshold* child = threshold(parent, QStringLiteral("Phase"), 2.0, 3.0);
  ASSERT_NE(child, nullptr);

  child->m_Answer = VXFThreshold::RelativesAnswer::JustThisFilter;
  child->createKESTRIXFilterFromVXFilter();
  ASSERT_EQ(m_Requests.size(), 1u);
  EXPECT_EQ(describe(m_Requests.back().thresholds), QStringList{QStringLiteral("Phase [2, 3]")});

  MessageRecorder recorder(&m_Pipeline);
  child->m_Answer = VXFThreshold::RelativesAnswer::AllFilters;
  child->createKESTRIXFilterFromVXFilter();
  EXPECT_EQ(m_Requests.size(), 1u);
  EXPECT_EQ(child->m_Warnings, QStringList{QStringLiteral("Cannot Create Multi-Threshold Objects Filter | ") +
                                           k_MultiComponentText});
  EXPECT_EQ(recorder.messages(), QStringList{k_MultiComponentText});
}

TEST_F(ThresholdHostFilterTest, AMultiComponentChildDoesNotStopAllFilters)
{
  AnsweringThreshold* pressed = threshold(m_Source, QStringLiteral("Density"), 0.0, 6.0);
  ASSERT_NE(pressed, nullptr);
  ASSERT_NE(threshold(pressed, QStringLiteral("Orientation (Comp 2)"), 2.0, 9.0), nullptr);
  pressed->m_Answer = VXFThreshold::RelativesAnswer::AllFilters;
  pressed->createKESTRIXFilterFromVXFilter();
  ASSERT_EQ(m_Requests.size(), 1u);
  EXPECT_EQ(describe(m_Requests.back().thresholds),
            (QStringList{QStringLiteral("Density [0, 6]"), QStringLiteral("Orientation (Comp 2) [2, 9]")}));
  EXPECT_TRUE(pressed->m_Warnings.isEmpty());
}
