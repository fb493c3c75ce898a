#include "DataBridgeTestFiles.h"

#include "data_bridge/ZRVtkDatasetReaders.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <vtkDataSet.h>

#include <gtest/gtest.h>

using DataBridgeTestFiles::Fixture;
namespace utils = ZRVtk::utils;

namespace
{
struct DamagedCase
{
  const char* fixture;
  bool image;
  // Where to overwrite: a part whose damage a reader can see (markup, compressed data, headers).
  double overwriteAt;
  int overwriteCount;
};

std::ostream& operator<<(std::ostream& out, const DamagedCase& c)
{
  return out << c.fixture;
}

class ZRVtkDamagedFile : public ::testing::TestWithParam<DamagedCase>
{
protected:
  vtkSmartPointer<vtkDataSet> read(const QString& path, QString* message) const
  {
    return GetParam().image ? utils::ReadImage(path, true, message) : utils::Read(path, message);
  }

  // Reads the spoiled copy and checks that it gives no dataset and a message; VTK's own error output
  // is left as it is.
  void expectMessageAndNoData(const QString& path) const
  {
    QString message;
    ::testing::internal::CaptureStderr();
    vtkSmartPointer<vtkDataSet> dataSet = read(path, &message);
    ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(dataSet, nullptr);
    EXPECT_FALSE(message.trimmed().isEmpty());
  }

  QString copyName() const
  {
    return m_Dir.filePath(QStringLiteral("damaged.") + QFileInfo(Fixture(GetParam().fixture)).suffix());
  }

  QTemporaryDir m_Dir;
};
} // namespace

TEST_P(ZRVtkDamagedFile, TheIntactFileReads)
{
  QString message;
  EXPECT_NE(read(Fixture(GetParam().fixture), &message), nullptr) << message.toStdString();
  EXPECT_TRUE(message.isEmpty());
}

TEST_P(ZRVtkDamagedFile, TruncatedCopyGivesMessage)
{
  const QString path = copyName();
  ASSERT_TRUE(DataBridgeTestFiles::WriteTruncatedCopy(Fixture(GetParam().fixture), path, 0.5));
  expectMessageAndNoData(path);
}

TEST_P(ZRVtkDamagedFile, OverwrittenCopyGivesMessage)
{
  const QString path = copyName();
  ASSERT_TRUE(DataBridgeTestFiles::WriteOverwrittenCopy(Fixture(GetParam().fixture), path,
                                                        GetParam().overwriteAt, GetParam().overwriteCount));
  expectMessageAndNoData(path);
}

TEST_P(ZRVtkDamagedFile, EmptyCopyGivesMessage)
{
  const QString path = copyName();
  ASSERT_TRUE(DataBridgeTestFiles::WriteContents(path, QByteArray()));
  expectMessageAndNoData(path);
}

INSTANTIATE_TEST_SUITE_P(EveryFormat, ZRVtkDamagedFile,
                         ::testing::Values(DamagedCase{"vtk/image.vti", false, 0.1, 40},
                                           DamagedCase{"vtk/rectilinear.vtr", false, 0.1, 40},
                                           DamagedCase{"vtk/structured.vts", false, 0.1, 40},
                                           DamagedCase{"vtk/unstructured.vtu", false, 0.1, 40},
                                           DamagedCase{"vtk/poly.vtp", false, 0.1, 40},
                                           DamagedCase{"vtk/parallel_image.pvti", false, 0.1, 40},
                                           DamagedCase{"vtk/parallel_unstructured.pvtu", false, 0.1, 40},
                                           DamagedCase{"vtk/parallel_rectilinear.pvtr", false, 0.1, 40},
                                           DamagedCase{"vtk/parallel_structured.pvts", false, 0.1, 40},
                                           DamagedCase{"vtk/parallel_poly.pvtp", false, 0.1, 40},
                                           DamagedCase{"vtk/legacy_image.vtk", false, 0.0, 30},
                                           DamagedCase{"vtk/legacy_ascii.vtk", false, 0.0, 30},
                                           DamagedCase{"vtk/legacy_binary.vtk", false, 0.0, 30},
                                           DamagedCase{"vtk/xml_named.vtk", false, 0.1, 40},
                                           DamagedCase{"vtk/tool_ascii.stl", false, 0.3, 20},
                                           DamagedCase{"vtk/tool_binary.stl", false, 0.29, 4},
                                           DamagedCase{"vtk/vtk_ascii.stl", false, 0.3, 20},
                                           // The triangle count, at byte 80.
                                           DamagedCase{"vtk/vtk_binary.stl", false, 0.0905, 4},
                                           DamagedCase{"images/gradient_100x50.png", true, 0.5, 20},
                                           DamagedCase{"images/gradient_100x50.jpg", true, 0.3, 200},
                                           DamagedCase{"images/gradient_100x50.tif", true, 0.0, 8},
                                           DamagedCase{"images/gradient_40x20.bmp", true, 0.0, 30}),
                         [](const ::testing::TestParamInfo<DamagedCase>& info)
                         {
                           std::string name = QFileInfo(info.param.fixture).fileName().toStdString();
                           for (char& c : name)
                           {
                             c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
                           }
                           return name;
                         });

TEST(ZRVtkDamagedParallelFile, TruncatedPieceGivesMessage)
{
  QTemporaryDir dir;
  const QString summary = dir.filePath("parallel_unstructured.pvtu");
  ASSERT_TRUE(QFile::copy(Fixture("vtk/parallel_unstructured.pvtu"), summary));
  ASSERT_TRUE(DataBridgeTestFiles::WriteTruncatedCopy(Fixture("vtk/parallel_unstructured_0.vtu"),
                                                      dir.filePath("parallel_unstructured_0.vtu"), 0.6));
  QString message;
  EXPECT_EQ(utils::Read(summary, &message), nullptr);
  EXPECT_FALSE(message.isEmpty());
}

TEST(ZRVtkDamagedImageFile, ImageOfAnotherKindGivesMessage)
{
  QTemporaryDir dir;
  // A GIF: an image, but none of the kinds read here.
  const QString gif = dir.filePath("picture.png");
  ASSERT_TRUE(DataBridgeTestFiles::WriteContents(
      gif, QByteArray::fromHex(
               "47494638396101000100800000000000ffffff21f90401000000002c00000000010001000002024401003b")));
  QString message;
  EXPECT_EQ(utils::ReadImage(gif, true, &message), nullptr);
  EXPECT_TRUE(message.contains("picture.png")) << message.toStdString();
}

TEST(ZRVtkDamagedParallelFile, MissingPieceGivesMessage)
{
  QTemporaryDir dir;
  // The summary alone: its piece file is not beside it.
  const QString summary = dir.filePath("parallel_image.pvti");
  ASSERT_TRUE(QFile::copy(Fixture("vtk/parallel_image.pvti"), summary));
  QString message;
  EXPECT_EQ(utils::Read(summary, &message), nullptr);
  EXPECT_FALSE(message.isEmpty());
}

// A text STL with a run of non-text bytes near its start is taken for binary by the reader, which
// would then allocate for the triangle count that the text's bytes spell: refused before that.
TEST(ZRVtkDamagedStlFile, TextWithBinaryBytesIsCheckedAsTheBinaryFileTheReaderSees)
{
  QFile source(Fixture("vtk/tool_ascii.stl"));
  ASSERT_TRUE(source.open(QIODevice::ReadOnly));
  QByteArray bytes = source.readAll();
  const int at = bytes.indexOf("outer loop", bytes.indexOf("outer loop") + 1);
  ASSERT_GT(at, 0);
  ASSERT_LT(at, 200);
  bytes.replace(at + 6, 14, QByteArray(14, '\x80'));
  QTemporaryDir dir;
  const QString path = dir.filePath(QStringLiteral("flipped.stl"));
  QFile copy(path);
  ASSERT_TRUE(copy.open(QIODevice::WriteOnly));
  copy.write(bytes);
  copy.close();

  QString message;
  EXPECT_EQ(utils::Read(path, &message), nullptr);
  EXPECT_TRUE(message.contains(QStringLiteral("announces"))) << message.toStdString();
  // The intact text file still reads as text.
  EXPECT_NE(utils::Read(Fixture("vtk/tool_ascii.stl"), &message), nullptr);
}
