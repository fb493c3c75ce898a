#pragma once

#include "data_views/VXRepresentation.h"
#include "platform/IPipelineController.h"

#include <QStringList>

#include <vector>

// A host pipeline with a name and an identity.
class TestPipelineController : public ZR::IPipelineController
{
public:
  TestPipelineController(QString name, QString uuid)
      : m_Name(std::move(name))
      , m_Uuid(std::move(uuid))
  {
  }
  QString getDisplayName() const override { return m_Name; }
  QString getPipelineUuid() const override { return m_Uuid; }
  QString getOutputFilePath() const override
  {
    return QStringLiteral("/tmp/") + m_Name + QStringLiteral(".kestrix");
  }

private:
  QString m_Name;
  QString m_Uuid;
};

// A data view that records what the pipeline asked of it; registered for every type number so that
// the pipeline's choice of type can be observed.
class RecordingRepresentation : public VXRepresentation
{
  Q_OBJECT

public:
  RecordingRepresentation(Type type, QObject* parent)
      : VXRepresentation(parent)
      , m_Type(type)
  {
    s_Made.push_back(this);
  }
  ~RecordingRepresentation() override { s_Made.erase(std::find(s_Made.begin(), s_Made.end(), this)); }

  static void RegisterAllTypes()
  {
    for (int type = Outline; type <= Glyph; ++type)
    {
      RegisterType(static_cast<Type>(type), [type](QObject* parent)
                   { return new RecordingRepresentation(static_cast<Type>(type), parent); });
    }
  }

  QString humanTypeName() const override { return QStringLiteral("Recording Representation"); }
  QString typeName() const override { return QStringLiteral("RecordingRepresentation"); }
  vtkAlgorithmOutput* outputPort() const override { return nullptr; }
  void initializeSettingsWidget() override {}
  QIcon getIcon() const override { return {}; }
  void copyActiveSettings() override {}
  void pasteToActiveSettings() override {}
  Type getType() const override { return m_Type; }
  void initialize(vtkAlgorithmOutput* inputPort) override
  {
    m_Calls << QStringLiteral("initialize");
    m_InputPort = inputPort;
  }
  bool addViewWidgetSplit(VXAbstractViewWidget* source, VXAbstractViewWidget* split, vtkAlgorithmOutput*,
                          bool) override
  {
    m_Calls << QStringLiteral("addViewWidgetSplit");
    m_SplitSource = source;
    m_Split = split;
    return false;
  }
  void receivePipelineOutputReloaded() override { m_Calls << QStringLiteral("reloaded"); }
  void addViewWidgetCopy(VXAbstractViewWidget*, VXAbstractViewWidget*) override {}

protected:
  VXRepresentationPimpl* createImplementation(VXAbstractViewWidget*) override { return nullptr; }
  bool isOwnImplementation(const VXRepresentationPimpl*) const override { return false; }

public:
  Type m_Type;
  QStringList m_Calls;
  vtkAlgorithmOutput* m_InputPort = nullptr;
  VXAbstractViewWidget* m_SplitSource = nullptr;
  VXAbstractViewWidget* m_Split = nullptr;
  static inline std::vector<RecordingRepresentation*> s_Made;
};
