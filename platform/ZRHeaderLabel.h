#pragma once

#include "platform/ZRPlatformExport.h"

#include <QLabel>

/**
 * @brief A bold label in the header font size, for the titles of sections.
 */
class ZR_PLATFORM_EXPORT ZRHeaderLabel : public QLabel
{
  Q_OBJECT

public:
  explicit ZRHeaderLabel(QWidget* parent = nullptr);
  explicit ZRHeaderLabel(const QString& text, QWidget* parent = nullptr);
  ~ZRHeaderLabel() override;
};
