#pragma once

#include "pipeline/VXCoreObject.h"

#include <QMap>
#include <QString>

#include <functional>

class vtkAlgorithmOutput;

/**
 * A data view: one tree item that draws the output of a data source or filter, with one
 * implementation per render window. The concrete views register themselves with a factory so the
 * pipeline can make a view from its type number.
 */
class VXRepresentation : public VXCoreObject
{
  Q_OBJECT

public:
  // The numbers are stored in state records and must be kept.
  enum Type
  {
    None = 0,
    Outline = 1,
    Points = 2,
    Wireframe = 3,
    Surface = 4,
    ImageSlice = 5,
    Volume = 6,
    Glyph = 7
  };
  Q_ENUM(Type)

  // Preference and menu texts; the glyph view cannot be named as a default data view.
  static const QMap<QString, Type> k_RepresentationStringToType;
  static const QMap<Type, QString> k_RepresentationTypeToString;

  using Factory = std::function<VXRepresentation*(QObject* parent)>;
  static void RegisterType(Type type, Factory factory);
  // A new data view of the type, or null when no class for it is registered.
  static VXRepresentation* Create(Type type, QObject* parent);
  static bool IsRegistered(Type type);

  explicit VXRepresentation(QObject* parent = nullptr);
  ~VXRepresentation() override;

  virtual Type getType() const = 0;
  virtual void initialize(vtkAlgorithmOutput* inputPort) = 0;
  // Adds an implementation for the split window; false when the view had nothing to copy from.
  virtual bool addViewWidgetSplit(VXAbstractViewWidget* source, VXAbstractViewWidget* split,
                                  vtkAlgorithmOutput* port, bool visible = true) = 0;
  virtual void initializeViewWidgetSplits(vtkAlgorithmOutput* port, bool visible);

  void setParentSource(VXCoreObject* parentSource);
  VXCoreObject* parentSource() const { return m_ParentSource; }

private:
  QPointer<VXCoreObject> m_ParentSource;
};
