#pragma once

#include <QString>

namespace ZR
{
// One array's kept value range, as the host's multi-threshold filter takes it.
struct ArrayThresholdRange
{
  QString arrayName;
  double minimum = 0.0;
  double maximum = 0.0;
};
} // namespace ZR
