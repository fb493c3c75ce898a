#pragma once

#include "data_bridge/zr_contract/Preferences.h"

#include <memory>

namespace zr::core
{
// The one process-wide instance of the data library's state.
class Application
{
public:
  static std::shared_ptr<Application> GetOrCreateInstance();
  static std::shared_ptr<Application> Instance();

  Preferences* getPreferences();

private:
  Application();
  Preferences m_Preferences;
};
} // namespace zr::core
