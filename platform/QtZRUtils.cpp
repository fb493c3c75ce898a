#include "platform/QtZRUtils.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QUrl>

namespace
{
QString& rootOverride()
{
  static QString s_Root;
  return s_Root;
}

QString withoutTrailingSlash(QString text)
{
  while (text.endsWith(QLatin1Char('/')))
  {
    text.chop(1);
  }
  return text;
}
} // namespace

QString QtZRUtils::GetHelpRootDir()
{
  if (!rootOverride().isEmpty())
  {
    return withoutTrailingSlash(rootOverride());
  }
  const QString fromEnvironment = qEnvironmentVariable("ZR_HELP_ROOT");
  if (!fromEnvironment.isEmpty())
  {
    return withoutTrailingSlash(fromEnvironment);
  }
  // Installed layout: <prefix>/bin/app and <prefix>/share/kestrix-zr/Help
  const QString appDir =
      QCoreApplication::instance() != nullptr ? QCoreApplication::applicationDirPath() : QDir::currentPath();
  const QString local = QDir::cleanPath(appDir + QStringLiteral("/../share/kestrix-zr/Help"));
  return QUrl::fromLocalFile(local).toString();
}

void QtZRUtils::SetHelpRootDir(const QString& root)
{
  rootOverride() = root;
}

QString QtZRUtils::GetDocumentationFilePrefix()
{
  return QStringLiteral("/KESTRIX-ZR");
}

bool QtZRUtils::OpenHelpPage(const QString& pathAndAnchor)
{
  return QDesktopServices::openUrl(QUrl(GetHelpRootDir() + GetDocumentationFilePrefix() + pathAndAnchor));
}
