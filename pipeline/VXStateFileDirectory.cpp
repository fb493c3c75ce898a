#include "pipeline/VXStateFileDirectory.h"

namespace
{
QString& currentDirectory()
{
  static QString s_Directory;
  return s_Directory;
}
} // namespace

VXStateFileDirectory::VXStateFileDirectory(const QString& directory)
    : m_Previous(currentDirectory())
{
  currentDirectory() = directory;
}

VXStateFileDirectory::~VXStateFileDirectory()
{
  currentDirectory() = m_Previous;
}

QString VXStateFileDirectory::Current()
{
  return currentDirectory();
}
