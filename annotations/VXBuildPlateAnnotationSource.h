#pragma once

#include "annotations/VXGlobalSource.h"

class VXBuildPlateAnnotationSourcePimpl;

/** The build plate annotation: one row in the tree, one plate per render view that shows it. */
class VXBuildPlateAnnotationSource : public VXGlobalSource
{
  Q_OBJECT

public:
  static inline const QString k_TypeName = QStringLiteral("VXBuildPlateAnnotationSource");
  static inline const QString k_DefaultName = QStringLiteral("Build Plate");

  explicit VXBuildPlateAnnotationSource(QObject* parent = nullptr);
  ~VXBuildPlateAnnotationSource() override;

  QString typeName() const override;
  QString humanTypeName() const override;
  VXGlobalSourcePimpl* addModuleInstance(VXAbstractViewWidget* sourceView, VXAbstractViewWidget* view,
                                         const nlohmann::json* state) override;
  VXBuildPlateAnnotationSourcePimpl* plate(VXAbstractViewWidget* view) const;

protected:
  const char* nameKey() const override;
  const char* nameSuffixKey() const override;
};
