#pragma once

namespace zr::core
{
// Switch between a oneTBB parallel loop and one direct call, for algorithms that run functors.
class IParallelAlgorithm
{
public:
  virtual ~IParallelAlgorithm() = default;

  bool getParallelizationEnabled() const { return m_ParallelizationEnabled; }
  void setParallelizationEnabled(bool enabled) { m_ParallelizationEnabled = enabled; }

protected:
  IParallelAlgorithm() = default;

private:
  bool m_ParallelizationEnabled = true;
};
} // namespace zr::core
