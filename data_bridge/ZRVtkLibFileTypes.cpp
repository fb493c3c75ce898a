#include "data_bridge/ZRVtkLibFileTypes.h"

#include <QStringList>

namespace ZRVtkLib
{
namespace io
{
const QString VTI_FILE_EXT = QStringLiteral("vti");
const QString PVTI_FILE_EXT = QStringLiteral("pvti");
const QString VTR_FILE_EXT = QStringLiteral("vtr");
const QString PVTR_FILE_EXT = QStringLiteral("pvtr");
const QString VTS_FILE_EXT = QStringLiteral("vts");
const QString PVTS_FILE_EXT = QStringLiteral("pvts");
const QString VTU_FILE_EXT = QStringLiteral("vtu");
const QString PVTU_FILE_EXT = QStringLiteral("pvtu");
const QString VTP_FILE_EXT = QStringLiteral("vtp");
const QString PVTP_FILE_EXT = QStringLiteral("pvtp");
const QString VTK_FILE_EXT = QStringLiteral("vtk");
const QString PVTK_FILE_EXT = QStringLiteral("pvtk");
const QString STL_FILE_EXT = QStringLiteral("stl");
const QString JPG_FILE_EXT = QStringLiteral("jpg");
const QString JPG_FILE_EXT2 = QStringLiteral("jpeg");
const QString PNG_FILE_EXT = QStringLiteral("png");
const QString TIF_FILE_EXT = QStringLiteral("tif");
const QString TIF_FILE_EXT2 = QStringLiteral("tiff");
const QString BMP_FILE_EXT = QStringLiteral("bmp");
const QString KESTRIX_EXT = QStringLiteral("kestrix");
const QString CSV_FILE_EXT = QStringLiteral("csv");
const QString TSV_FILE_EXT = QStringLiteral("tsv");
const QString STATE_FILE_EXT = QStringLiteral("ksxstate");
const QString IMAGE_PREFIX = QStringLiteral("image/");

namespace
{
QString MakeFilter(const QString& text, const QString& extension)
{
  return text + extension + QStringLiteral(")");
}

QString MakeSupportedExtensionsList()
{
  // Everything Read, ReadImage and the .kestrix import accept.
  const QStringList extensions = {VTI_FILE_EXT,  PVTI_FILE_EXT, VTR_FILE_EXT,  PVTR_FILE_EXT, VTS_FILE_EXT,
                                  PVTS_FILE_EXT, VTU_FILE_EXT,  PVTU_FILE_EXT, VTP_FILE_EXT,  PVTP_FILE_EXT,
                                  VTK_FILE_EXT,  PVTK_FILE_EXT, STL_FILE_EXT,  JPG_FILE_EXT,  JPG_FILE_EXT2,
                                  PNG_FILE_EXT,  TIF_FILE_EXT,  TIF_FILE_EXT2, BMP_FILE_EXT};
  const QStringList filters = {KESTRIX_FILE_FILTER, VTI_FILE_FILTER, PVTI_FILE_FILTER, VTR_FILE_FILTER,
                               PVTR_FILE_FILTER,    VTS_FILE_FILTER, PVTS_FILE_FILTER, VTU_FILE_FILTER,
                               PVTU_FILE_FILTER,    VTP_FILE_FILTER, PVTP_FILE_FILTER, VTK_FILE_FILTER,
                               PVTK_FILE_FILTER,    STL_FILE_FILTER, JPG_FILE_FILTER,  PNG_FILE_FILTER,
                               TIF_FILE_FILTER,     BMP_FILE_FILTER};
  return QStringLiteral("All Supported Files (*.kestrix *.") + extensions.join(QStringLiteral(" *.")) +
         QStringLiteral(");;") + filters.join(QStringLiteral(";;"));
}
} // namespace

const QString VTI_FILE_FILTER = MakeFilter(QStringLiteral("Image Data (*."), VTI_FILE_EXT);
const QString PVTI_FILE_FILTER = MakeFilter(QStringLiteral("Parallel Image Data (*."), PVTI_FILE_EXT);
const QString VTR_FILE_FILTER = MakeFilter(QStringLiteral("Rectilinear Grid (*."), VTR_FILE_EXT);
const QString PVTR_FILE_FILTER = MakeFilter(QStringLiteral("Parallel Rectilinear Grid (*."), PVTR_FILE_EXT);
const QString VTS_FILE_FILTER = MakeFilter(QStringLiteral("Structured Grid (*."), VTS_FILE_EXT);
const QString PVTS_FILE_FILTER = MakeFilter(QStringLiteral("Parallel Structured Grid (*."), PVTS_FILE_EXT);
const QString VTU_FILE_FILTER = MakeFilter(QStringLiteral("Unstructured Grid (*."), VTU_FILE_EXT);
const QString PVTU_FILE_FILTER = MakeFilter(QStringLiteral("Parallel Unstructured Grid (*."), PVTU_FILE_EXT);
const QString VTP_FILE_FILTER = MakeFilter(QStringLiteral("Poly Data (*."), VTP_FILE_EXT);
const QString PVTP_FILE_FILTER = MakeFilter(QStringLiteral("Parallel Poly Data (*."), PVTP_FILE_EXT);
const QString VTK_FILE_FILTER = MakeFilter(QStringLiteral("VTK Data Set (*."), VTK_FILE_EXT);
const QString PVTK_FILE_FILTER = MakeFilter(QStringLiteral("Parallel VTK Data Set (*."), PVTK_FILE_EXT);
const QString STL_FILE_FILTER = QStringLiteral("STL Files (*.stl)");
const QString JPG_FILE_FILTER = MakeFilter(QStringLiteral("JPG Image (*."), JPG_FILE_EXT);
const QString PNG_FILE_FILTER = MakeFilter(QStringLiteral("PNG Image (*."), PNG_FILE_EXT);
const QString TIF_FILE_FILTER = MakeFilter(QStringLiteral("TIF Image (*."), TIF_FILE_EXT);
const QString BMP_FILE_FILTER = MakeFilter(QStringLiteral("BMP Image (*."), BMP_FILE_EXT);
const QString CSV_FILE_FILTER = MakeFilter(QStringLiteral("CSV Files (*."), CSV_FILE_EXT);
const QString TSV_FILE_FILTER = MakeFilter(QStringLiteral("TSV Files (*."), TSV_FILE_EXT);
const QString KESTRIX_FILE_FILTER = QStringLiteral("KESTRIX-ZR Files (*.kestrix)");
const QString FILE_FILTER = MakeFilter(QStringLiteral("KESTRIX-ZR State File (*."), STATE_FILE_EXT);

// Defined after the filters it joins: globals of one file are initialised in order.
const QString SUPPORTED_EXTENSIONS_LIST = MakeSupportedExtensionsList();
} // namespace io
} // namespace ZRVtkLib
