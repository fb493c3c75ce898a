#pragma once

#include <nlohmann/json_fwd.hpp>

#include <QIcon>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <string>

namespace zr::core
{
class DataStructure;
class IGeometry;
} // namespace zr::core

namespace CV::VtkBridge
{
struct WrappedGeometry;
} // namespace CV::VtkBridge

class VXDataSource;

/**
 * Base of the top-level items of the pipeline tree: where the data came from. A bridge turns the
 * geometries of a data structure into data sources and keeps them matched by path across reloads.
 */
class VXBridgeObject : public QObject
{
  Q_OBJECT

public:
  explicit VXBridgeObject(QObject* parent = nullptr);
  ~VXBridgeObject() override;

  virtual void write(nlohmann::json& json) const = 0;
  virtual void read(const nlohmann::json& json) = 0;
  virtual QString typeName() const = 0;
  virtual QString sourceName() const = 0;
  virtual QIcon getIcon() const = 0;
  virtual QString filePath() const;
  virtual void onDataSourceRemoved(VXDataSource* dataSource);

  QString baseName() const { return m_BaseName; }
  QString name() const;
  void setName(const QString& name, int suffix);
  void setNameSuffix(int suffix);
  int getNameSuffixCounter() const { return m_NameSuffix; }
  void setActive(bool active) { m_Active = active; }
  bool isActive() const { return m_Active; }
  QList<VXDataSource*> dataSources() const { return m_DataSources; }
  QStringList dataSourceNames() const;

  void importDataStructure(const std::shared_ptr<zr::core::DataStructure>& dataStructure);
  void reloadDataStructure(const std::shared_ptr<zr::core::DataStructure>& dataStructure);
  void clear();

Q_SIGNALS:
  void dataSourceAdded(VXDataSource* dataSource);
  void removeDataSource(VXDataSource* dataSource);
  void sendOutputMessage(QString message);
  void sendPopupMessage(QString title, QString message);
  void pipelineOutputReloaded();
  void nameChanged(QString name);

protected:
  // The structure of a .kestrix file with its data loaded, or null when the file can't be read. What
  // the reader left out of a readable file goes to the output pane.
  std::shared_ptr<zr::core::DataStructure>
  ReadKestrixFile(const QString& path, const std::function<void(const std::string&)>& progress = {});

  void addDataSource(VXDataSource* dataSource);
  void reportMultipleParents(const QString& geometryName);
  // Wraps one geometry and passes on what the wrapping had to say about it.
  std::shared_ptr<CV::VtkBridge::WrappedGeometry>
  wrapGeometry(const std::shared_ptr<zr::core::IGeometry>& geometry);

  QList<VXDataSource*> m_DataSources;
  int m_NameSuffix = 0;
  QString m_BaseName;
  bool m_Active = false;
};
