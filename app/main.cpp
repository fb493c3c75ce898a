// kestrix-viewer: opens .kestrix, VTK, STL and image files.
//   kestrix-viewer --list FILE...   prints the pipeline tree each file imports to
#include "app/ViewerApplication.h"
#include "app/ViewerTreePrinter.h"

#include "data_bridge/zr_contract/KestrixIO.h"
#include "pipeline/VXBridgeObject.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXPipeline.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStringList>
#include <QTextStream>

#include <cstdio>
#include <cstring>

namespace
{
void printUsage(QTextStream& err)
{
  err << "Usage: kestrix-viewer --list FILE...\n";
}

// Why a file gave no data, in words a user can act on.
QString explainEmptyImport(const QString& path)
{
  const QFileInfo info(path);
  if (!info.exists())
  {
    return QStringLiteral("no such file");
  }
  if (!info.isReadable())
  {
    return QStringLiteral("permission denied");
  }
  if (info.suffix().toLower() == QStringLiteral("kestrix"))
  {
    auto result = zr::core::KESTRIX::ImportDataStructureFromFile(path.toStdString(), false);
    if (!result.valid() && !result.errors().empty())
    {
      return QString::fromStdString(result.errors().front().message);
    }
    return QStringLiteral("the file holds no geometry");
  }
  return QStringLiteral("the file holds no readable dataset");
}

int listFiles(const QStringList& files)
{
  QTextStream out(stdout);
  QTextStream err(stderr);
  VXPipeline pipeline;
  QObject::connect(&pipeline, &VXPipeline::sendOutputMessage,
                   [&err](const QString& message)
                   {
                     err << message << '\n';
                     err.flush();
                   });
  QObject::connect(&pipeline, &VXPipeline::sendPopupMessage,
                   [&err](const QString& title, const QString& message)
                   {
                     err << title << ": " << message << '\n';
                     err.flush();
                   });

  ViewerTreePrinter printer(out);
  int failures = 0;
  for (const QString& file : files)
  {
    VXBridgeObject* bridge = pipeline.importFile(file);
    bool hasData = false;
    for (VXDataSource* dataSource : bridge->dataSources())
    {
      hasData = hasData || dataSource->getOutput() != nullptr;
    }
    if (!hasData)
    {
      err << "kestrix-viewer: cannot read '" << file << "': " << explainEmptyImport(file) << '\n';
      err.flush();
      ++failures;
      continue;
    }
    printer.print(*bridge);
  }
  return failures == 0 ? 0 : 1;
}
} // namespace

int main(int argc, char** argv)
{
  // Without a command-line mode the viewer opens its window.
  if (argc < 2 || (std::strcmp(argv[1], "--list") != 0 && std::strcmp(argv[1], "--convert") != 0))
  {
    return ViewerApplication::run(argc, argv);
  }
  QCoreApplication app(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("kestrix-viewer"));
  QStringList arguments = QCoreApplication::arguments().mid(1);
  QTextStream err(stderr);
  if (arguments.size() >= 2 && arguments.front() == QStringLiteral("--list"))
  {
    return listFiles(arguments.mid(1));
  }
  printUsage(err);
  return 2;
}
