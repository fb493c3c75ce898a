#pragma once

#include "platform/ZRPlatformExport.h"

#include <QLineEdit>

/**
 * @brief The application's line edit; it can be marked while an edit waits to be applied.
 */
class ZR_PLATFORM_EXPORT ZRLineEdit : public QLineEdit
{
  Q_OBJECT

public:
  using QLineEdit::QLineEdit;
  ~ZRLineEdit() override;

  /** @brief Shows or clears the "edited, not applied" border. */
  void setMarkedEdited(bool edited);
  bool isMarkedEdited() const;
};
