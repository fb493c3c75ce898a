#pragma once

#include "data_bridge/zr_contract/DataPath.h"
#include "platform/ArrayThresholdRange.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <set>
#include <vector>

namespace zr::core
{
class DataStructure;
} // namespace zr::core

class FileToVXBridge;
class QObject;
class VXPipeline;

/**
 * @brief The viewer as the host of its .kestrix files. A multi-threshold request from a threshold filter
 * adds a mask of the cells that pass all its thresholds to the host's data structure of the file (read
 * from the file on first use and kept from then on), and the file's item is reloaded from that structure,
 * so that the new array shows in the colouring choices and the filters run again. The structure can then
 * be written as a .kestrix file.
 */
class ViewerMaskHost : public QObject
{
  Q_OBJECT

public:
  explicit ViewerMaskHost(VXPipeline* pipeline, QObject* parent = nullptr);
  ~ViewerMaskHost() override;

  /**
   * @brief Adds the mask to the structure of the .kestrix file item that shows the geometry, the one
   * above origin when there is one; false after a message when no mask was added.
   */
  bool createMask(const zr::core::DataPath& geometryPath,
                  const std::vector<ZR::ArrayThresholdRange>& thresholds, const QObject* origin = nullptr);
  /** @brief Whether a structure has been changed here, so that there is something to save. */
  bool canSave() const;
  /** @brief The name of the file whose structure the last mask went into. */
  QString lastFileName() const;
  /**
   * @brief Writes the structure the last mask went into; false after a message. The file's item then
   * refers to the written file, so that a state saved from now on names the file that holds the masks.
   */
  bool saveDataStructure(const QString& path);
  /** @brief The names of the files whose items show masks that no saved file holds yet. */
  QStringList unsavedFileNames() const;

Q_SIGNALS:
  void outputMessage(const QString& message);
  void canSaveChanged(bool canSave);

private:
  FileToVXBridge* findBridge(const zr::core::DataPath& geometryPath, const QObject* origin) const;
  std::shared_ptr<zr::core::DataStructure> structureOf(FileToVXBridge* bridge);

  QPointer<VXPipeline> m_Pipeline;
  std::map<const FileToVXBridge*, std::shared_ptr<zr::core::DataStructure>> m_Structures;
  QPointer<FileToVXBridge> m_LastBridge;
  // The file each structure was read from: its large arrays may still be read from there.
  std::map<const FileToVXBridge*, QString> m_ReadFrom;
  std::set<const FileToVXBridge*> m_Unsaved;
};
