#include "data_bridge/ZRVtkLibFileTypes.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace io = ZRVtkLib::io;

namespace
{
QStringList AllExtensions()
{
  return {io::VTI_FILE_EXT,  io::PVTI_FILE_EXT, io::VTR_FILE_EXT,  io::PVTR_FILE_EXT, io::VTS_FILE_EXT,
          io::PVTS_FILE_EXT, io::VTU_FILE_EXT,  io::PVTU_FILE_EXT, io::VTP_FILE_EXT,  io::PVTP_FILE_EXT,
          io::VTK_FILE_EXT,  io::PVTK_FILE_EXT, io::STL_FILE_EXT,  io::JPG_FILE_EXT,  io::JPG_FILE_EXT2,
          io::PNG_FILE_EXT,  io::TIF_FILE_EXT,  io::TIF_FILE_EXT2, io::BMP_FILE_EXT};
}
} // namespace

TEST(ZRVtkLibFileTypes, FiltersAreTextExtensionAndParenthesis)
{
  EXPECT_EQ(io::VTI_FILE_FILTER, "Image Data (*.vti)");
  EXPECT_EQ(io::PVTR_FILE_FILTER, "Parallel Rectilinear Grid (*.pvtr)");
  EXPECT_EQ(io::PVTK_FILE_FILTER, "Parallel VTK Data Set (*.pvtk)");
  EXPECT_EQ(io::TIF_FILE_FILTER, "TIF Image (*.tif)");
  EXPECT_EQ(io::TSV_FILE_FILTER, "TSV Files (*.tsv)");
  EXPECT_EQ(io::STL_FILE_FILTER, "STL Files (*.stl)");
  EXPECT_EQ(io::KESTRIX_FILE_FILTER, "KESTRIX-ZR Files (*.kestrix)");
  EXPECT_EQ(io::FILE_FILTER, "KESTRIX-ZR State File (*.ksxstate)");
}

TEST(ZRVtkLibFileTypes, SupportedListStartsWithEveryExtensionThenEachFilter)
{
  const QString list = io::SUPPORTED_EXTENSIONS_LIST;
  const QString allPrefix = QStringLiteral("All Supported Files (*.kestrix *.");
  ASSERT_TRUE(list.startsWith(allPrefix)) << list.toStdString();
  const QStringList filters = list.split(QStringLiteral(";;"));
  // The first filter names each extension exactly once.
  QString all = filters.front();
  ASSERT_TRUE(all.endsWith(')'));
  all = all.mid(allPrefix.size(), all.size() - allPrefix.size() - 1);
  EXPECT_EQ(all.split(QStringLiteral(" *.")), AllExtensions());
  for (const QString& filter :
       {io::KESTRIX_FILE_FILTER, io::VTI_FILE_FILTER, io::PVTU_FILE_FILTER, io::VTK_FILE_FILTER,
        io::STL_FILE_FILTER, io::JPG_FILE_FILTER, io::PNG_FILE_FILTER, io::BMP_FILE_FILTER})
  {
    EXPECT_TRUE(filters.contains(filter)) << filter.toStdString();
  }
  // Every extension appears in the filters after the first too, so each kind can be chosen alone.
  const QString rest = filters.mid(1).join(QStringLiteral(";;"));
  for (const QString& extension : AllExtensions())
  {
    if (extension != io::JPG_FILE_EXT2 && extension != io::TIF_FILE_EXT2)
    {
      EXPECT_TRUE(rest.contains(QStringLiteral("(*.") + extension + ')')) << extension.toStdString();
    }
  }
}
