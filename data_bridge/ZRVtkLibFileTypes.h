#pragma once

#include <QString>

// File extensions (without the dot) and file dialog filters of every file kind the module opens or saves.
namespace ZRVtkLib
{
namespace io
{
extern const QString VTI_FILE_EXT;
extern const QString PVTI_FILE_EXT;
extern const QString VTR_FILE_EXT;
extern const QString PVTR_FILE_EXT;
extern const QString VTS_FILE_EXT;
extern const QString PVTS_FILE_EXT;
extern const QString VTU_FILE_EXT;
extern const QString PVTU_FILE_EXT;
extern const QString VTP_FILE_EXT;
extern const QString PVTP_FILE_EXT;
extern const QString VTK_FILE_EXT;
extern const QString PVTK_FILE_EXT;
extern const QString STL_FILE_EXT;
extern const QString JPG_FILE_EXT;
extern const QString JPG_FILE_EXT2;
extern const QString PNG_FILE_EXT;
extern const QString TIF_FILE_EXT;
extern const QString TIF_FILE_EXT2;
extern const QString BMP_FILE_EXT;
extern const QString KESTRIX_EXT;
extern const QString CSV_FILE_EXT;
extern const QString TSV_FILE_EXT;
extern const QString STATE_FILE_EXT;
// Prefix of image mime types: IMAGE_PREFIX + PNG_FILE_EXT is "image/png".
extern const QString IMAGE_PREFIX;

extern const QString VTI_FILE_FILTER;
extern const QString PVTI_FILE_FILTER;
extern const QString VTR_FILE_FILTER;
extern const QString PVTR_FILE_FILTER;
extern const QString VTS_FILE_FILTER;
extern const QString PVTS_FILE_FILTER;
extern const QString VTU_FILE_FILTER;
extern const QString PVTU_FILE_FILTER;
extern const QString VTP_FILE_FILTER;
extern const QString PVTP_FILE_FILTER;
extern const QString VTK_FILE_FILTER;
extern const QString PVTK_FILE_FILTER;
extern const QString STL_FILE_FILTER;
extern const QString JPG_FILE_FILTER;
extern const QString PNG_FILE_FILTER;
extern const QString TIF_FILE_FILTER;
extern const QString BMP_FILE_FILTER;
extern const QString CSV_FILE_FILTER;
extern const QString TSV_FILE_FILTER;
extern const QString KESTRIX_FILE_FILTER;
// State files (.ksxstate) of the main widget, charts and spreadsheets.
extern const QString FILE_FILTER;

// Open dialog filter: all supported files first, then each kind on its own.
extern const QString SUPPORTED_EXTENSIONS_LIST;
} // namespace io
} // namespace ZRVtkLib
