#include "annotations/VXBuildPlateAnnotationSource.h"

#include "annotations/VXBuildPlateAnnotationSourcePimpl.h"

#include <nlohmann/json.hpp>

VXBuildPlateAnnotationSource::VXBuildPlateAnnotationSource(QObject* parent)
    : VXGlobalSource(parent)
{
  m_BaseName = k_DefaultName;
}

VXBuildPlateAnnotationSource::~VXBuildPlateAnnotationSource() = default;

QString VXBuildPlateAnnotationSource::typeName() const
{
  return k_TypeName;
}

QString VXBuildPlateAnnotationSource::humanTypeName() const
{
  return QStringLiteral("Build Plate Annotation");
}

const char* VXBuildPlateAnnotationSource::nameKey() const
{
  return "build_plate_object_name";
}

const char* VXBuildPlateAnnotationSource::nameSuffixKey() const
{
  return "build_plate_object_name_suffix";
}

VXBuildPlateAnnotationSourcePimpl* VXBuildPlateAnnotationSource::plate(VXAbstractViewWidget* view) const
{
  return qobject_cast<VXBuildPlateAnnotationSourcePimpl*>(instance(view));
}

VXGlobalSourcePimpl* VXBuildPlateAnnotationSource::addModuleInstance(VXAbstractViewWidget* sourceView,
                                                                     VXAbstractViewWidget* view,
                                                                     const nlohmann::json* state)
{
  if (view == nullptr)
  {
    return nullptr;
  }
  if (VXGlobalSourcePimpl* existing = instance(view))
  {
    return existing;
  }
  auto* plateInstance = new VXBuildPlateAnnotationSourcePimpl(this, view);
  plateInstance->readSettings();
  if (VXBuildPlateAnnotationSourcePimpl* source = plate(sourceView))
  {
    plateInstance->copySettings(source);
  }
  if (state != nullptr)
  {
    plateInstance->read(*state);
  }
  plateInstance->addToScene();
  adoptInstance(view, plateInstance);
  Q_EMIT requestRender();
  return plateInstance;
}
