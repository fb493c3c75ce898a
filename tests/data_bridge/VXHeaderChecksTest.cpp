// Files whose headers declare more than they hold: each is refused before VTK reads it, with a message
// that names the reason; intact files written by VTK and by meshio pass and read.
#include "DataBridgeTestFiles.h"

#include "data_bridge/VXLegacyVtkHeaderCheck.h"
#include "data_bridge/VXXmlVtkHeaderCheck.h"
#include "data_bridge/ZRVtkDatasetReaders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtEndian>

#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkPointData.h>
#include <vtkType.h>
#include <vtkUnstructuredGrid.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using DataBridgeTestFiles::Contents;
using DataBridgeTestFiles::Fixture;
using DataBridgeTestFiles::WriteContents;
namespace utils = ZRVtk::utils;

namespace
{
const char* const k_IntactFiles[] = {
    "vtk/image.vti",
    "vtk/rectilinear.vtr",
    "vtk/structured.vts",
    "vtk/unstructured.vtu",
    "vtk/poly.vtp",
    "vtk/parallel_image.pvti",
    "vtk/parallel_poly.pvtp",
    "vtk/parallel_rectilinear.pvtr",
    "vtk/parallel_structured.pvts",
    "vtk/parallel_unstructured.pvtu",
    "vtk/xml_named.vtk",
    "vtk/legacy_ascii.vtk",
    "vtk/legacy_binary.vtk",
    "vtk/legacy_image.vtk",
    "vtk/meshio/meshio_ascii.vtk",
    "vtk/meshio/meshio_binary.vtk",
    "vtk/meshio/meshio_float_names.vtk",
};

class VXHeaderChecks : public ::testing::Test
{
protected:
  // A copy of the fixture (and of every file beside it) with `from` replaced by `to` in the named file.
  QString edited(const char* fixture, const QByteArray& from, const QByteArray& to)
  {
    const QFileInfo source(Fixture(fixture));
    for (const QFileInfo& sibling : source.dir().entryInfoList(QDir::Files))
    {
      QFile::copy(sibling.filePath(), m_Dir.filePath(sibling.fileName()));
    }
    QByteArray bytes = Contents(source.filePath());
    EXPECT_TRUE(bytes.contains(from)) << from.toStdString();
    bytes.replace(from, to);
    const QString path = m_Dir.filePath(source.fileName());
    QFile::remove(path);
    EXPECT_TRUE(WriteContents(path, bytes));
    return path;
  }

  // Reads through the library and expects no dataset and a message holding every given part.
  static void expectRefused(const QString& path, const QStringList& parts)
  {
    QString message;
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(utils::Read(path, &message), nullptr);
    ::testing::internal::GetCapturedStderr();
    EXPECT_TRUE(message.contains(QFileInfo(path).fileName())) << message.toStdString();
    for (const QString& part : parts)
    {
      EXPECT_TRUE(message.contains(part))
          << "'" << part.toStdString() << "' not in: " << message.toStdString();
    }
  }

  QTemporaryDir m_Dir;
};
} // namespace

TEST_F(VXHeaderChecks, IntactFilesPassAndRead)
{
  for (const char* fixture : k_IntactFiles)
  {
    QString message;
    EXPECT_TRUE(VXXmlVtkHeaderCheck::check(Fixture(fixture), &message))
        << fixture << ": " << message.toStdString();
    EXPECT_TRUE(VXLegacyVtkHeaderCheck::check(Fixture(fixture), &message))
        << fixture << ": " << message.toStdString();
    ::testing::internal::CaptureStderr();
    EXPECT_NE(utils::Read(Fixture(fixture), &message), nullptr) << fixture << ": " << message.toStdString();
    ::testing::internal::GetCapturedStderr();
  }
}

TEST_F(VXHeaderChecks, XmlComponentCountBeyondTheDataIsRefused)
{
  expectRefused(edited("vtk/structured.vts", "NumberOfComponents=\"3\" format=\"appended\" RangeMin=\"2.2",
                       "NumberOfComponents=\"2147483648\" format=\"appended\" RangeMin=\"2.2"),
                {"2147483648 components"});
  expectRefused(
      edited("vtk/image.vti", "Name=\"Density\"", "Name=\"Density\" NumberOfComponents=\"2147483647\""),
      {"'Density'", "24 tuples of 2147483647 components", "expand to 96 bytes"});
}

TEST_F(VXHeaderChecks, XmlExtentsBeyondIntAreRefused)
{
  expectRefused(edited("vtk/image.vti", "WholeExtent=\"0 3 0 2 0 1\"",
                       "WholeExtent=\"-2147483648 2147483648 0 2 0 1\""),
                {"whole extent", "beyond 2147483647"});
  expectRefused(edited("vtk/rectilinear.vtr", "Extent=\"0 2 0 3 0 1\"                 ",
                       "Extent=\"0 2147483647 0 3 0 1\"        "),
                {"reaches outside the whole extent"});
}

TEST_F(VXHeaderChecks, XmlPieceCountsBeyondTheDataAreRefused)
{
  expectRefused(edited("vtk/unstructured.vtu", "NumberOfPoints=\"9\"", "NumberOfPoints=\"1099511627776\""),
                {"'Height'", "1099511627776 tuples of 1 component"});
  expectRefused(edited("vtk/unstructured.vtu", "NumberOfCells=\"2\"", "NumberOfCells=\"-2147483648\""),
                {"-2147483648 cells"});
}

TEST_F(VXHeaderChecks, XmlOffsetPastTheEndIsRefused)
{
  expectRefused(edited("vtk/image.vti", "offset=\"124\"", "offset=\"99124\""), {"'Phase'", "past the end"});
}

TEST_F(VXHeaderChecks, CompressedHeaderClaimingMoreThanTheFileHoldsIsRefused)
{
  // The first array's base64 compression header: one block of 128 bytes... made to claim 2^31 - 1 blocks.
  QByteArray bytes = Contents(Fixture("vtk/image.vti"));
  const int start = bytes.indexOf('_', bytes.indexOf("<AppendedData")) + 1;
  QByteArray header = QByteArray::fromBase64(bytes.mid(start, 24));
  ASSERT_EQ(qFromLittleEndian<quint32>(header.constData()), 1u);
  qToLittleEndian<quint32>(0x7fffffff, header.data());
  bytes.replace(start, 24, header.toBase64());
  const QString path = m_Dir.filePath("blocks.vti");
  ASSERT_TRUE(WriteContents(path, bytes));
  expectRefused(path, {"'Density'", "2147483647 compressed blocks"});
}

TEST_F(VXHeaderChecks, ParallelSummaryWithAnotherArrayTypeThanItsPieceIsRefused)
{
  expectRefused(edited("vtk/parallel_image.pvti", "<PDataArray type=\"Float32\" Name=\"Density\"/>",
                       "<PDataArray type=\"UInt8\" Name=\"Density\"/>"),
                {"'Density' as UInt8 of 1 components", "'parallel_image_0.vti' holds Float32 of 1"});
  expectRefused(edited("vtk/parallel_unstructured.pvtu", "Name=\"Points\" NumberOfComponents=\"3\"",
                       "Name=\"Points\" NumberOfComponents=\"2\""),
                {"'Points'", "of 2 components"});
}

TEST_F(VXHeaderChecks, LegacyNegativeOrHugeCountsAreRefused)
{
  expectRefused(edited("vtk/legacy_binary.vtk", "POINTS 34 float", "POINTS -2147483649 float"),
                {"'-2147483649' points"});
  expectRefused(edited("vtk/legacy_ascii.vtk", "POINTS 9 float", "POINTS 2147483648 float"),
                {"'POINTS 2147483648 float' declares 6442450944 values"});
  expectRefused(edited("vtk/legacy_image.vtk", "Density 1 24 float", "Density 2147483647 24 float"),
                {"'Density 2147483647 24 float'", "values"});
}

TEST_F(VXHeaderChecks, LegacyCountsThatDisagreeWithTheGridAreRefused)
{
  expectRefused(edited("vtk/legacy_image.vtk", "DIMENSIONS 4 3 2", "DIMENSIONS 4 3 2000"),
                {"'CELL_DATA 6' declares 6 cells but the dataset has 11994"});
  expectRefused(edited("vtk/legacy_image.vtk", "POINT_DATA 24", "POINT_DATA 25"),
                {"declares 25 points but the dataset has 24"});
}

TEST_F(VXHeaderChecks, LegacyVersionsBeyondTheReaderAreRefused)
{
  expectRefused(edited("vtk/legacy_ascii.vtk", "Version 5.1", "Version 9.9"), {"'9.9'", "1.0 to 5.1"});
}

// meshio names integer arrays by size ("vtktypeint32"); each must arrive with its values and a
// matching type.
TEST(VXLegacyTypeNames, MeshioFilesReadWithEveryArray)
{
  for (const char* fixture :
       {"vtk/meshio/meshio_ascii.vtk", "vtk/meshio/meshio_binary.vtk", "vtk/meshio/meshio_float_names.vtk"})
  {
    SCOPED_TRACE(fixture);
    QString message;
    ::testing::internal::CaptureStderr();
    vtkSmartPointer<vtkDataSet> dataSet = utils::Read(Fixture(fixture), &message);
    ::testing::internal::GetCapturedStderr();
    ASSERT_NE(dataSet, nullptr) << message.toStdString();
    EXPECT_EQ(dataSet->GetNumberOfPoints(), 5);
    EXPECT_EQ(dataSet->GetNumberOfCells(), 2);
    // char stands for int8: VTK's legacy names have no signed char.
    const std::pair<const char*, std::vector<int>> types[] = {
        {"int8", {VTK_CHAR, VTK_TYPE_INT8}}, {"uint8", {VTK_TYPE_UINT8}},   {"int16", {VTK_TYPE_INT16}},
        {"uint16", {VTK_TYPE_UINT16}},       {"int32", {VTK_TYPE_INT32}},   {"uint32", {VTK_TYPE_UINT32}},
        {"int64", {VTK_TYPE_INT64}},         {"uint64", {VTK_TYPE_UINT64}}, {"float32", {VTK_TYPE_FLOAT32}},
        {"float64", {VTK_TYPE_FLOAT64}}};
    for (const auto& [name, accepted] : types)
    {
      vtkDataArray* array = dataSet->GetPointData()->GetArray(name);
      ASSERT_NE(array, nullptr) << name;
      EXPECT_NE(std::find(accepted.begin(), accepted.end(), array->GetDataType()), accepted.end())
          << name << " arrived as " << array->GetDataTypeAsString();
      const double scale = QString(name) == "float32" ? 0.25 : QString(name) == "float64" ? 0.125 : 1.0;
      EXPECT_DOUBLE_EQ(array->GetComponent(4, 0), 41 * scale) << name;
    }
    vtkDataArray* velocity = dataSet->GetPointData()->GetArray("velocity");
    ASSERT_NE(velocity, nullptr);
    EXPECT_EQ(velocity->GetNumberOfComponents(), 3);
    EXPECT_DOUBLE_EQ(velocity->GetComponent(2, 1), -21.0);
    ASSERT_NE(dataSet->GetCellData()->GetArray("grain"), nullptr);
    EXPECT_DOUBLE_EQ(dataSet->GetCellData()->GetArray("grain")->GetComponent(1, 0), 4.0);
  }
}

TEST_F(VXHeaderChecks, CompressedBlocksOfNoSizeAreRefused)
{
  // VTK divides by the block size: a zero there must not reach it.
  QByteArray bytes = Contents(Fixture("vtk/image.vti"));
  const int start = bytes.indexOf('_', bytes.indexOf("<AppendedData")) + 1;
  QByteArray header = QByteArray::fromBase64(bytes.mid(start, 24));
  qToLittleEndian<quint32>(0, header.data() + 4);
  bytes.replace(start, 24, header.toBase64());
  const QString path = m_Dir.filePath("zero.vti");
  ASSERT_TRUE(WriteContents(path, bytes));
  expectRefused(path, {"'Density'", "compressed blocks of 0 bytes"});
}

TEST_F(VXHeaderChecks, XmlPolyCellCountsBeyondTheDataAreRefused)
{
  const QByteArray head = Contents(Fixture("vtk/poly.vtp")).left(400);
  const QRegularExpressionMatch polys =
      QRegularExpression("NumberOfPolys=\"(\\d+)\"").match(QString::fromLatin1(head));
  ASSERT_TRUE(polys.hasMatch());
  expectRefused(edited("vtk/poly.vtp", polys.captured(0).toLatin1(), "NumberOfPolys=\"4294967296\""),
                {"'offsets'", "4294967296 tuples"});
}

TEST_F(VXHeaderChecks, XmlTextWhereNumbersAreNeededIsRefused)
{
  expectRefused(edited("vtk/rectilinear.vtr", "type=\"Float64\" Name=\"x\"", "type=\"String\" Name=\"x\""),
                {"'x'", "type 'String'"});
}

TEST_F(VXHeaderChecks, CellsReferringToMissingPointsAreRefusedAfterTheRead)
{
  // The header is intact; the data is not: a point id beyond the nine points, a hexahedron of five points.
  expectRefused(edited("vtk/legacy_ascii.vtk", "0 1 2 3 4 5 6 7 4 \n5 6 8", "0 1 2 3 4 5 6 7 4 \n5 6 80"),
                {"refers to point 80 but there are 9 points"});
  expectRefused(edited("vtk/legacy_ascii.vtk", "0 8 12", "0 5 12"),
                {"cell 0, a vtkHexahedron, has 5 points instead of 8"});
}

TEST_F(VXHeaderChecks, LegacyCellsOfAnotherVersionAreRefused)
{
  // A 5.1 file relabelled 2.0: the reader would take offsets for point counts.
  expectRefused(edited("vtk/legacy_binary.vtk", "Version 5.1", "Version 2.0"),
                {"cells do not fit", "version"});
}

TEST_F(VXHeaderChecks, XmlWholeExtentBeyondItsPiecesIsRefused)
{
  expectRefused(
      edited("vtk/rectilinear.vtr", "WholeExtent=\"0 2 0 3 0 1\"", "WholeExtent=\"0 2147483647 0 3 0 1\""),
      {"whole extent is larger than its pieces, which cover 0 2 0 3 0 1"});
}

TEST_F(VXHeaderChecks, CellsWithoutAnyPointIdsAreRefused)
{
  // A fuzzer's file: the connectivity of two cells announces no compressed block at all.
  expectRefused(Fixture("vtk/damaged/connectivity_without_blocks.vtu"),
                {"'connectivity'", "compressed blocks expand to 0 bytes"});
}
