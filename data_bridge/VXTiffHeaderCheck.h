#pragma once

#include <QString>

// Looks at the directories of a TIFF file before vtkTIFFReader sees it. That reader trusts the sizes a
// header declares and allocates for them, and it gives wrong pixels without a word for some layouts:
// wide samples in tiles, colour planes stored apart, colour with more than 8 bits a sample, an alpha
// channel. Such files are refused with a message saying why; the layouts Qt's decoder reads right are
// flagged so that the caller can decode them that way.
class VXTiffHeaderCheck
{
public:
  // True when vtkTIFFReader can read the file as it is; otherwise false and the reason in errorMessage.
  // A file that cannot be opened passes: the reader reports that itself.
  // otherDecoderReads is set when the file is sound but only its layout stands in VTK's way, and Qt's
  // decoder reads that layout right.
  static bool IsReadable(const QString& path, QString* errorMessage, bool* otherDecoderReads = nullptr);
};
