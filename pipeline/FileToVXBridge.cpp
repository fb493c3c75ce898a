#include "pipeline/FileToVXBridge.h"

#include "data_bridge/ZRVtkDatasetReaders.h"
#include "data_bridge/ZRVtkLibFileTypes.h"
#include "pipeline/VXDataSource.h"
#include "pipeline/VXStateFileDirectory.h"
#include "platform/ZRStyle.h"

#include <nlohmann/json.hpp>

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QMessageBox>
#include <QTimer>

namespace
{
constexpr const char* k_FilePathKey = "bridge_object_file_path";
// The same file relative to the folder of the state file, so that data moved with its state loads.
constexpr const char* k_RelativeFilePathKey = "bridge_object_file_relative_path";
constexpr const char* k_ItemNameKey = "bridge_object_item_name";

bool isDatasetSuffix(const QString& suffix)
{
  using namespace ZRVtkLib::io;
  return suffix == VTI_FILE_EXT || suffix == VTR_FILE_EXT || suffix == VTS_FILE_EXT ||
         suffix == VTU_FILE_EXT || suffix == VTP_FILE_EXT || suffix == VTK_FILE_EXT || suffix == STL_FILE_EXT;
}

bool isImageSuffix(const QString& suffix)
{
  using namespace ZRVtkLib::io;
  return suffix == JPG_FILE_EXT || suffix == JPG_FILE_EXT2 || suffix == PNG_FILE_EXT ||
         suffix == TIF_FILE_EXT || suffix == TIF_FILE_EXT2 || suffix == BMP_FILE_EXT;
}

// The dataset of a dataset or image file, or null (also for other suffixes) and the reader's reason.
vtkSmartPointer<vtkDataSet> readDataSet(const QString& path, const QString& suffix, QString* why)
{
  vtkSmartPointer<vtkDataSet> dataSet;
  if (isDatasetSuffix(suffix))
  {
    dataSet = ZRVtk::utils::Read(path, why);
  }
  else if (isImageSuffix(suffix))
  {
    dataSet = ZRVtk::utils::ReadImage(path, true, why);
  }
  if (dataSet == nullptr && why->isEmpty())
  {
    *why = QStringLiteral("The file '%1' holds no data set that can be shown.").arg(path);
  }
  return dataSet;
}

} // namespace

FileToVXBridge::FileToVXBridge(QObject* parent)
    : VXBridgeObject(parent)
    , m_Watcher(new QFileSystemWatcher(this))
    , m_QuietTimer(new QTimer(this))
{
  connect(m_Watcher, &QFileSystemWatcher::fileChanged, this, &FileToVXBridge::onFileChanged);
  m_QuietTimer->setSingleShot(true);
  m_QuietTimer->setInterval(k_QuietPeriodMs);
  connect(m_QuietTimer, &QTimer::timeout, this, &FileToVXBridge::onQuietTimeout);
}

FileToVXBridge::~FileToVXBridge() = default;

QString FileToVXBridge::typeName() const
{
  return QStringLiteral("FileToVXBridge");
}

QString FileToVXBridge::sourceName() const
{
  return m_FilePath;
}

QIcon FileToVXBridge::getIcon() const
{
  return ZRStyle::generateThemeIconFromName(QStringLiteral("PipelineFileBridgeObj"));
}

QString FileToVXBridge::filePath() const
{
  return m_FilePath;
}

bool FileToVXBridge::isWatchingFile() const
{
  return m_Watcher != nullptr && m_Watcher->files().contains(m_FilePath, Qt::CaseSensitive);
}

QStringList FileToVXBridge::watchedFiles() const
{
  return m_Watcher != nullptr ? m_Watcher->files() : QStringList();
}

std::function<void(const std::string&)> FileToVXBridge::progressCallback()
{
  return [this](const std::string& message) { Q_EMIT importProgress(QString::fromStdString(message)); };
}

void FileToVXBridge::setAutoReloadLost(bool lost)
{
  m_AutoReloadLost = lost;
  Q_EMIT autoReloadFlagChanged(this, lost);
}

void FileToVXBridge::import(const QString& path)
{
  m_FilePath = path;
  if (QFileInfo::exists(path))
  {
    m_Watcher->addPath(path);
  }
  setName(QFileInfo(path).fileName(), 0);
  if (!m_DataSources.isEmpty())
  {
    clear();
  }
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (suffix == ZRVtkLib::io::KESTRIX_EXT)
  {
    // An unreadable file leaves the item in the tree without sources.
    if (auto dataStructure = ReadKestrixFile(path, progressCallback()))
    {
      importDataStructure(dataStructure);
    }
    return;
  }
  if (!isDatasetSuffix(suffix) && !isImageSuffix(suffix))
  {
    Q_EMIT sendPopupMessage(
        QStringLiteral("Load File Error"),
        QStringLiteral("Invalid file type for file at '%1'. Cannot load the file for visualization")
            .arg(path));
    return;
  }
  QString why;
  vtkSmartPointer<vtkDataSet> dataSet = readDataSet(path, suffix, &why);
  if (dataSet == nullptr)
  {
    // The item stays, without a source: a source without data would show nothing and say nothing.
    Q_EMIT sendPopupMessage(
        QStringLiteral("Load File Error"),
        QStringLiteral("An error occurred while reading file %1. Cannot load the file for visualization\n%2")
            .arg(path, why));
    return;
  }
  auto* dataSource = new VXDataSource(this);
  dataSource->setDataSet(dataSet);
  addDataSource(dataSource);
}

bool FileToVXBridge::relocate(const QString& text, const QString& caption)
{
  if (!askYesNo(QStringLiteral("Source File Missing"), text))
  {
    return false;
  }
  const QString chosen = chooseFile(caption);
  if (chosen.isEmpty())
  {
    return false;
  }
  followPath(chosen);
  return true;
}

void FileToVXBridge::referToFile(const QString& path)
{
  const bool watching = isWatchingFile();
  followPath(path);
  // Watched only when the old file was.
  if (!watching && m_Watcher->files().contains(path))
  {
    m_Watcher->removePath(path);
  }
}

void FileToVXBridge::followPath(const QString& path)
{
  const QString oldPath = m_FilePath;
  m_FilePath = path;
  if (m_Watcher != nullptr)
  {
    m_Watcher->removePath(oldPath);
    if (QFileInfo::exists(path))
    {
      m_Watcher->addPath(path);
    }
  }
  // An item that still carries the old file's name takes the new one; a name the user gave stays.
  if (baseName() == QFileInfo(oldPath).fileName())
  {
    setName(QFileInfo(path).fileName(), 0);
  }
}

void FileToVXBridge::reload()
{
  if (m_FilePath.isEmpty() || m_DataSources.isEmpty())
  {
    Q_EMIT sendOutputMessage(
        QStringLiteral("The pipeline object doesn't have any data defined; not a reload."));
    return;
  }
  if (!QFileInfo::exists(m_FilePath))
  {
    const QString text =
        QStringLiteral(
            "The source file (%1) has been renamed or deleted. Do you want to locate the file to reload? "
            "(WARNING: This will overwrite the current data for this pipeline item with the data in the "
            "file selected!)")
            .arg(m_FilePath);
    if (!relocate(text, QStringLiteral("Locate File To Reload")))
    {
      return;
    }
    setAutoReloadLost(false);
  }
  const QString suffix = QFileInfo(m_FilePath).suffix().toLower();
  const QString readError =
      QStringLiteral("An error occurred while reading file %1. Cannot reload the file for "
                     "visualization")
          .arg(m_FilePath);
  if (suffix == ZRVtkLib::io::KESTRIX_EXT)
  {
    auto dataStructure = ReadKestrixFile(m_FilePath, progressCallback());
    if (dataStructure == nullptr)
    {
      Q_EMIT sendPopupMessage(QStringLiteral("Reload File Error"), readError);
      return;
    }
    reloadDataStructure(dataStructure);
  }
  else if (isDatasetSuffix(suffix) || isImageSuffix(suffix))
  {
    QString why;
    vtkSmartPointer<vtkDataSet> dataSet = readDataSet(m_FilePath, suffix, &why);
    if (dataSet == nullptr)
    {
      Q_EMIT sendOutputMessage(why);
      Q_EMIT sendPopupMessage(QStringLiteral("Reload File Error"), readError);
      return;
    }
    m_DataSources.front()->setDataSet(dataSet);
  }
  else
  {
    Q_EMIT sendPopupMessage(
        QStringLiteral("Reload File Error"),
        QStringLiteral("Invalid file type for file at %1. Cannot reload the file for visualization")
            .arg(m_FilePath));
    return;
  }
  Q_EMIT pipelineOutputReloaded();
}

void FileToVXBridge::onFileChanged(QString filePath)
{
  if (m_Watcher == nullptr)
  {
    return;
  }
  if (m_Watcher->files().contains(filePath))
  {
    armQuietTimer();
    return;
  }
  m_QuietTimer->stop();
  // Replaced by a rename or deleted: the watcher has let go of the path.
  setAutoReloadLost(true);
  Q_EMIT sendFileMovedMessage(
      QStringLiteral(
          "File item %1 is no longer auto reloading because the source file at path %2 was renamed or "
          "deleted.\nYou can save the data or locate the file for auto reloading again by right clicking "
          "the item in the tree view and selecting the appropriate option.")
          .arg(name(), filePath));
}

void FileToVXBridge::armQuietTimer()
{
  const QFileInfo info(m_FilePath);
  m_PendingSize = info.exists() ? info.size() : -1;
  m_PendingModified = info.exists() ? info.lastModified().toMSecsSinceEpoch() : -1;
  m_QuietTimer->start();
}

void FileToVXBridge::onQuietTimeout()
{
  if (!m_Watcher->files().contains(m_FilePath))
  {
    return; // renamed or deleted meanwhile: the watcher has told us so
  }
  const QFileInfo info(m_FilePath);
  const bool changed = !info.exists() || info.size() != m_PendingSize ||
                       info.lastModified().toMSecsSinceEpoch() != m_PendingModified;
  if (changed)
  {
    armQuietTimer(); // still being written
    return;
  }
  if (info.size() == 0)
  {
    return; // truncated and not filled yet: the watcher calls again when it is written
  }
  setAutoReloadLost(false);
  reload();
}

void FileToVXBridge::setWatchFile(bool watch)
{
  if (m_Watcher == nullptr)
  {
    return;
  }
  const bool watching = isWatchingFile();
  if (watching && !watch)
  {
    m_Watcher->removePath(m_FilePath);
    return;
  }
  if (watching || !watch)
  {
    return;
  }
  if (!QFileInfo::exists(m_FilePath))
  {
    const QString text =
        QStringLiteral("The source file (%1) has been renamed or deleted. Do you want to locate the "
                       "file to watch for automatic reloading? (WARNING: This will overwrite the "
                       "current data for this pipeline item with the data in the file selected!)")
            .arg(m_FilePath);
    if (!relocate(text, QStringLiteral("Locate File To Watch")))
    {
      return;
    }
  }
  setAutoReloadLost(false);
  if (!isWatchingFile())
  {
    m_Watcher->addPath(m_FilePath);
  }
  reload();
}

bool FileToVXBridge::askYesNo(const QString& title, const QString& text)
{
  return QMessageBox::question(nullptr, title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) ==
         QMessageBox::Yes;
}

QString FileToVXBridge::chooseFile(const QString& caption)
{
  return QFileDialog::getOpenFileName(nullptr, caption, QString(), ZRVtkLib::io::SUPPORTED_EXTENSIONS_LIST);
}

void FileToVXBridge::write(nlohmann::json& json) const
{
  json[k_FilePathKey] = m_FilePath.toStdString();
  const QString stateDirectory = VXStateFileDirectory::Current();
  if (!stateDirectory.isEmpty() && !m_FilePath.isEmpty())
  {
    json[k_RelativeFilePathKey] = QDir(stateDirectory).relativeFilePath(m_FilePath).toStdString();
  }
  json[k_ItemNameKey] = baseName().toStdString();
}

void FileToVXBridge::read(const nlohmann::json& json)
{
  QString path = QString::fromStdString(json.at(k_FilePathKey).get<std::string>());
  const QString stateDirectory = VXStateFileDirectory::Current();
  if (!QFileInfo::exists(path) && !stateDirectory.isEmpty() && json.contains(k_RelativeFilePathKey))
  {
    const QString relative = QString::fromStdString(json.at(k_RelativeFilePathKey).get<std::string>());
    const QString beside = QDir::cleanPath(QDir(stateDirectory).absoluteFilePath(relative));
    if (QFileInfo::exists(beside))
    {
      path = beside;
    }
  }
  import(path);
  setName(QString::fromStdString(json.at(k_ItemNameKey).get<std::string>()), getNameSuffixCounter());
}
