#include "data_bridge/zr_contract/Application.h"

#include <mutex>

namespace zr::core
{
namespace
{
std::mutex s_InstanceMutex;
std::shared_ptr<Application> s_Instance;
} // namespace

Application::Application() = default;

std::shared_ptr<Application> Application::GetOrCreateInstance()
{
  std::lock_guard<std::mutex> lock(s_InstanceMutex);
  if (s_Instance == nullptr)
  {
    s_Instance.reset(new Application());
  }
  return s_Instance;
}

std::shared_ptr<Application> Application::Instance()
{
  std::lock_guard<std::mutex> lock(s_InstanceMutex);
  return s_Instance;
}

Preferences* Application::getPreferences()
{
  return &m_Preferences;
}
} // namespace zr::core
