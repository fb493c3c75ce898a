// Image files written by other programs (tifffile, PIL) and damaged headers: every image either reads
// with the right pixels or is refused with a message naming it, and the process lives on.
#include "DataBridgeTestFiles.h"

#include "data_bridge/ZRVtkDatasetReaders.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <vtkDataArray.h>
#include <vtkImageData.h>
#include <vtkPointData.h>

#include <gtest/gtest.h>

#include <functional>

using DataBridgeTestFiles::Contents;
using DataBridgeTestFiles::Fixture;
using DataBridgeTestFiles::WriteContents;
namespace utils = ZRVtk::utils;

namespace
{
// The patterns of tests/data/make-tiff-fixtures.py, for column x and row y from the top.
constexpr int k_Width = 48;
constexpr int k_Height = 40;
int Gray8(int x, int y)
{
  return (x * 2 + y * 3) % 256;
}

vtkSmartPointer<vtkImageData> ReadPixels(const QString& relativePath)
{
  QString message;
  vtkSmartPointer<vtkImageData> image =
      vtkImageData::SafeDownCast(utils::ReadImage(Fixture(relativePath), false, &message));
  EXPECT_TRUE(message.isEmpty()) << relativePath.toStdString() << ": " << message.toStdString();
  return image;
}

// Where the pixel of column x and row y from the top lies: images stand with their bottom row at y = 0.
vtkIdType At(int x, int y)
{
  return vtkIdType(k_Height - 1 - y) * k_Width + x;
}

// Every pixel of the image against the expected value of each component.
void ExpectPixels(vtkImageData* image, int components, const std::function<double(int, int, int)>& expected)
{
  ASSERT_NE(image, nullptr);
  int dims[3];
  image->GetDimensions(dims);
  ASSERT_EQ(dims[0], k_Width);
  ASSERT_EQ(dims[1], k_Height);
  vtkDataArray* scalars = image->GetPointData()->GetScalars();
  ASSERT_NE(scalars, nullptr);
  ASSERT_EQ(scalars->GetNumberOfComponents(), components);
  for (int y = 0; y < k_Height; ++y)
  {
    for (int x = 0; x < k_Width; ++x)
    {
      for (int c = 0; c < components; ++c)
      {
        ASSERT_DOUBLE_EQ(scalars->GetComponent(At(x, y), c), expected(x, y, c))
            << "pixel " << x << ", " << y << " component " << c;
      }
    }
  }
}

void ExpectRefused(const QString& path, const QString& reasonPart)
{
  QString message;
  EXPECT_EQ(utils::ReadImage(path, true, &message), nullptr);
  EXPECT_TRUE(message.contains(path)) << message.toStdString();
  EXPECT_TRUE(message.contains(reasonPart)) << message.toStdString();
}

QByteArray WithBytes(QByteArray bytes, int at, const QByteArray& replacement)
{
  return bytes.replace(at, replacement.size(), replacement);
}

QByteArray BigEndian32(quint32 value)
{
  QByteArray bytes(4, '\0');
  qToBigEndian(value, bytes.data());
  return bytes;
}
} // namespace

TEST(ZRVtkTiffLayouts, TiledEightBitImagesReadWithTheirPixels)
{
  ExpectPixels(ReadPixels("images/tiff/gray8_tiled.tif"), 1, [](int x, int y, int) { return Gray8(x, y); });
  const auto rgb = [](int x, int y, int c)
  {
    const int g = Gray8(x, y);
    return c == 0 ? g : c == 1 ? 255 - g : g / 2;
  };
  ExpectPixels(ReadPixels("images/tiff/rgb8_tiled.tif"), 3, rgb);
  ExpectPixels(ReadPixels("images/tiff/rgb8_lzw_pil.tif"), 3, rgb);
}

TEST(ZRVtkTiffLayouts, WideGraySamplesInStripsReadWithTheirValues)
{
  ExpectPixels(ReadPixels("images/tiff/gray16_strips.tif"), 1,
               [](int x, int y, int) { return x * 1200 + y; });
  ExpectPixels(ReadPixels("images/tiff/float32_deflate.tif"), 1,
               [](int x, int y, int) { return x * 0.5 + y * 0.25; });
}

TEST(ZRVtkTiffLayouts, LayoutsVtkWouldGarbleAreDecodedOtherwiseWithTheirPixels)
{
  ExpectPixels(ReadPixels("images/tiff/gray16_tiled.tif"), 1, [](int x, int y, int) { return x * 1200 + y; });
  const auto rgb = [](int x, int y, int c)
  {
    const int g = Gray8(x, y);
    return c == 0 ? g : c == 1 ? 255 - g : g / 2;
  };
  ExpectPixels(ReadPixels("images/tiff/rgb8_planar.tif"), 3, rgb);
  ExpectPixels(ReadPixels("images/tiff/rgb16_contiguous.tif"), 3,
               [](int x, int y, int c) { return c == 0   ? x * 1200
                                                : c == 1 ? y * 700
                                                         : (x + y) * 300; });

  // The alpha channel comes through as it is; the colours within a step of rounding, as the decoder
  // keeps them premultiplied on the way.
  vtkSmartPointer<vtkImageData> rgba = ReadPixels("images/tiff/rgba8_pil.tif");
  ASSERT_NE(rgba, nullptr);
  vtkDataArray* scalars = rgba->GetPointData()->GetScalars();
  ASSERT_EQ(scalars->GetNumberOfComponents(), 4);
  EXPECT_STREQ(scalars->GetName(), "Tiff Scalars");
  for (int y = 0; y < k_Height; ++y)
  {
    for (int x = 0; x < k_Width; ++x)
    {
      const vtkIdType at = At(x, y);
      for (int c = 0; c < 3; ++c)
      {
        ASSERT_NEAR(scalars->GetComponent(at, c), rgb(x, y, c), 2.0) << x << ", " << y << " component " << c;
      }
      ASSERT_EQ(scalars->GetComponent(at, 3), 200.0);
    }
  }
}

TEST(ZRVtkTiffLayouts, ColourPlanesOfWideSamplesAreRefusedWithTheReason)
{
  // Neither VTK nor Qt reads those right: a refusal beats wrong pixels.
  ExpectRefused(Fixture("images/tiff/rgb16_planar.tif"), QStringLiteral("separate planes"));
}

// Headers that declare far more pixels than the file holds: no allocation, no crash, a message.
class ZRVtkImageHeaderSizes : public ::testing::Test
{
protected:
  QString write(const QString& name, const QByteArray& bytes)
  {
    const QString path = m_Dir.filePath(name);
    EXPECT_TRUE(WriteContents(path, bytes));
    return path;
  }
  QTemporaryDir m_Dir;
};

TEST_F(ZRVtkImageHeaderSizes, PngDeclaringHugeSizeIsRefused)
{
  // IHDR width and height at bytes 16 and 20; the CRC no longer matches, which libpng would only warn.
  QByteArray png = Contents(Fixture("images/gradient_100x50.png"));
  png = WithBytes(png, 16, BigEndian32(0x40000000) + BigEndian32(0x40000000));
  ExpectRefused(write("huge.png", png), QStringLiteral("more than the file holds"));
}

TEST_F(ZRVtkImageHeaderSizes, JpegDeclaringHugeSizeIsRefused)
{
  QByteArray jpeg = Contents(Fixture("images/gradient_100x50.jpg"));
  const int frame = jpeg.indexOf("\xff\xc0");
  ASSERT_GT(frame, 0);
  jpeg = WithBytes(jpeg, frame + 5, QByteArray::fromHex("fde8fde8")); // 65000 x 65000
  ExpectRefused(write("huge.jpg", jpeg), QStringLiteral("more than the file holds"));
}

TEST_F(ZRVtkImageHeaderSizes, TiffDeclaringHugeSizeIsRefused)
{
  // PIL writes little-endian classic TIFF; patch the width and length entries wherever they stand.
  QByteArray tiff = Contents(Fixture("images/gradient_100x50.tif"));
  const quint32 directory = qFromLittleEndian<quint32>(tiff.constData() + 4);
  const int entries = qFromLittleEndian<quint16>(tiff.constData() + directory);
  int patched = 0;
  for (int i = 0; i < entries; ++i)
  {
    char* entry = tiff.data() + directory + 2 + 12 * i;
    const quint16 tag = qFromLittleEndian<quint16>(entry);
    if (tag == 256 || tag == 257)
    {
      qToLittleEndian<quint16>(4, entry + 2); // LONG
      qToLittleEndian<quint32>(1, entry + 4);
      qToLittleEndian<quint32>(0x10000000, entry + 8);
      ++patched;
    }
  }
  ASSERT_EQ(patched, 2);
  ExpectRefused(write("huge.tif", tiff), QStringLiteral("more than the file holds"));
}

TEST_F(ZRVtkImageHeaderSizes, TiffWhoseDataLiesPastTheEndIsRefused)
{
  const QByteArray tiff = Contents(Fixture("images/tiff/gray8_tiled.tif"));
  ExpectRefused(write("cut.tif", tiff.left(tiff.size() - 600)), QStringLiteral("truncated"));
}

TEST_F(ZRVtkImageHeaderSizes, BmpWithNewerInfoHeaderIsRefused)
{
  // The same pixels behind a 124-byte info header, as newer tools write; vtkBMPReader crashes on it.
  const QByteArray bmp = Contents(Fixture("images/gradient_40x20.bmp"));
  QByteArray newer = bmp.left(54) + QByteArray(84, '\0') + bmp.mid(54);
  qToLittleEndian<quint32>(newer.size(), newer.data() + 2);
  qToLittleEndian<quint32>(54 + 84, newer.data() + 10);
  qToLittleEndian<quint32>(124, newer.data() + 14);
  ExpectRefused(write("newer.bmp", newer), QStringLiteral("124 bytes"));
}

TEST_F(ZRVtkImageHeaderSizes, BmpDeclaringHugeSizeIsRefused)
{
  QByteArray bmp = Contents(Fixture("images/gradient_40x20.bmp"));
  qToLittleEndian<qint32>(0x7fffffff, bmp.data() + 18);
  qToLittleEndian<qint32>(0x7fffffff, bmp.data() + 22);
  ExpectRefused(write("huge.bmp", bmp), QStringLiteral("truncated"));
}

// Before any VTK reader runs: a file that is not there, not a file, or empty gives one plain line.
TEST(ZRVtkFileAccess, MissingFolderAndEmptyFilesAreNamedBeforeVtkRuns)
{
  QTemporaryDir dir;
  QString message;
  const QString missing = dir.filePath("missing.vtp");
  EXPECT_EQ(utils::Read(missing, &message), nullptr);
  EXPECT_EQ(message, QStringLiteral("The file '%1' does not exist.").arg(missing));

  const QString missingImage = dir.filePath("missing.png");
  EXPECT_EQ(utils::ReadImage(missingImage, true, &message), nullptr);
  EXPECT_EQ(message, QStringLiteral("The file '%1' does not exist.").arg(missingImage));

  const QString folder = dir.filePath("folder.vtu");
  ASSERT_TRUE(QDir(dir.path()).mkdir("folder.vtu"));
  EXPECT_EQ(utils::Read(folder, &message), nullptr);
  EXPECT_EQ(message, QStringLiteral("'%1' is a folder, not a file.").arg(folder));

  const QString empty = dir.filePath("empty.stl");
  ASSERT_TRUE(WriteContents(empty, QByteArray()));
  EXPECT_EQ(utils::Read(empty, &message), nullptr);
  EXPECT_EQ(message, QStringLiteral("The file '%1' is empty.").arg(empty));
}
