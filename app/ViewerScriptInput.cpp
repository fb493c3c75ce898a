#include "app/ViewerScriptInput.h"

#include "data_bridge/zr_contract/IArray.h"
#include "data_bridge/zr_contract/KestrixReaderLoader.h"

#include <QFileInfo>
#include <QTextStream>

int ViewerScriptInput::Complain(const QString& message, int exitCode)
{
  QTextStream err(stderr);
  err << "kestrix-viewer: " << message << '\n';
  err.flush();
  return exitCode;
}

std::optional<zr::core::DataStructure> ViewerScriptInput::LoadDataStructure(const QString& file,
                                                                            int& exitCode)
{
  const QFileInfo info(file);
  if (!info.exists())
  {
    exitCode = Complain(QStringLiteral("cannot read '%1': no such file").arg(file), 1);
    return std::nullopt;
  }
  if (info.suffix().toLower() != QStringLiteral("kestrix"))
  {
    exitCode = Complain(
        QStringLiteral("'%1' has no data paths: only .kestrix files hold arrays by data path").arg(file), 2);
    return std::nullopt;
  }
  auto loaded = zr::core::KESTRIX::LoadDataStructureFromFile(info.absoluteFilePath().toStdString(), false);
  if (!loaded.valid())
  {
    const QString why = loaded.errors().empty() ? QStringLiteral("the file could not be read")
                                                : QString::fromStdString(loaded.errors().front().message);
    exitCode = Complain(QStringLiteral("cannot read '%1': %2").arg(file, why), 1);
    return std::nullopt;
  }
  exitCode = 0;
  return std::move(loaded.value());
}

QStringList ViewerScriptInput::ArrayPaths(const zr::core::DataStructure& dataStructure)
{
  QStringList paths;
  for (const zr::core::DataPath& path : dataStructure.getAllDataPaths())
  {
    if (dataStructure.getDataAs<zr::core::IArray>(path) != nullptr)
    {
      paths << QString::fromStdString(path.toString());
    }
  }
  return paths;
}
