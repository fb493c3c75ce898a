#pragma once

#include "pipeline/VXBridgeObject.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <string>

class QFileSystemWatcher;
class QTimer;

/**
 * A top-level item that stands for a file on disk. It follows the file with a file system watcher:
 * a file written in place reloads once it has been quiet for a moment; a file replaced by a rename
 * (what most editors do) takes the path off the watcher, and the item is flagged as no longer
 * following the file.
 */
class FileToVXBridge : public VXBridgeObject
{
  Q_OBJECT

public:
  explicit FileToVXBridge(QObject* parent = nullptr);
  ~FileToVXBridge() override;

  void write(nlohmann::json& json) const override;
  void read(const nlohmann::json& json) override;
  QString typeName() const override;
  QString sourceName() const override;
  QIcon getIcon() const override;
  QString filePath() const override;

  void import(const QString& path);
  void reload();
  /**
   * @brief Refers to another file from now on without reading it: the file the data shown here was just
   * written to, so that a saved state names it.
   */
  void referToFile(const QString& path);
  void setWatchFile(bool watch);
  bool isWatchingFile() const;
  QStringList watchedFiles() const;
  bool autoReloadFlagged() const { return m_AutoReloadLost; }

  /** @brief How long a changed file must keep its size and time before it is reloaded. */
  static constexpr int k_QuietPeriodMs = 300;

public Q_SLOTS:
  void onFileChanged(QString filePath);

Q_SIGNALS:
  void autoReloadFlagChanged(FileToVXBridge* bridge, bool flagged);
  void sendFileMovedMessage(QString msg);
  // One line per step of a long read (for example per array of a .kestrix file).
  void importProgress(QString message);

protected:
  // Questions to the user; tests and hosts without a user answer them differently.
  virtual bool askYesNo(const QString& title, const QString& text);
  virtual QString chooseFile(const QString& caption);

private:
  void setAutoReloadLost(bool lost);
  std::function<void(const std::string&)> progressCallback();
  bool relocate(const QString& text, const QString& caption);
  void followPath(const QString& path);
  void armQuietTimer();
  void onQuietTimeout();

  QString m_FilePath;
  bool m_AutoReloadLost = false;
  QFileSystemWatcher* m_Watcher = nullptr;
  // A writer may truncate a file and fill it in several steps: reload when it has stopped changing.
  QTimer* m_QuietTimer = nullptr;
  qint64 m_PendingSize = -1;
  qint64 m_PendingModified = -1;
};
