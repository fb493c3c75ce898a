#include "data_bridge/VXReadableFileCheck.h"

#include <QFile>
#include <QFileInfo>

bool VXReadableFileCheck::IsReadable(const QString& path, QString* errorMessage)
{
  const QFileInfo info(path);
  QString why;
  if (path.isEmpty())
  {
    why = QStringLiteral("No file was given.");
  }
  else if (!info.exists())
  {
    why = QStringLiteral("The file '%1' does not exist.").arg(path);
  }
  else if (info.isDir())
  {
    why = QStringLiteral("'%1' is a folder, not a file.").arg(path);
  }
  else if (QFile file(path); !file.open(QIODevice::ReadOnly))
  {
    // Asking to open is the only answer that counts: permissions, ACLs and locks all show here.
    why = QStringLiteral("The file '%1' cannot be read: %2").arg(path, file.errorString());
  }
  else if (info.size() == 0)
  {
    why = QStringLiteral("The file '%1' is empty.").arg(path);
  }
  if (why.isEmpty())
  {
    return true;
  }
  if (errorMessage != nullptr)
  {
    *errorMessage = why;
  }
  return false;
}
