#pragma once

#include "pipeline/VXPipeline.h"

#include <array>

/**
 * @brief While a state or preset rebuilds the tree, its items bring their own data views: no data
 * source may get a default one. Every default view type is set aside for the life of this object and
 * comes back however the load ends. Loads may nest.
 */
class VXDefaultDataViewsSetAside
{
public:
  VXDefaultDataViewsSetAside()
      : m_Saved{VXPipeline::getDefaultRepType(),         VXPipeline::getDefaultImageGeomRepType(),
                VXPipeline::getDefaultRectGridRepType(), VXPipeline::getDefaultVertexRepType(),
                VXPipeline::getDefaultEdgeRepType(),     VXPipeline::getDefaultTriangleRepType(),
                VXPipeline::getDefaultQuadRepType(),     VXPipeline::getDefaultHexRepType(),
                VXPipeline::getDefaultTetRepType()}
  {
    Types none;
    none.fill(VXRepresentation::None);
    apply(none);
  }
  ~VXDefaultDataViewsSetAside() { apply(m_Saved); }

  VXDefaultDataViewsSetAside(const VXDefaultDataViewsSetAside&) = delete;
  VXDefaultDataViewsSetAside& operator=(const VXDefaultDataViewsSetAside&) = delete;

private:
  using Types = std::array<VXRepresentation::Type, 9>;

  static void apply(const Types& types)
  {
    VXPipeline::setDefaultRepType(types[0]);
    VXPipeline::setDefaultImageGeomRepType(types[1]);
    VXPipeline::setDefaultRectGridRepType(types[2]);
    VXPipeline::setDefaultVertexRepType(types[3]);
    VXPipeline::setDefaultEdgeRepType(types[4]);
    VXPipeline::setDefaultTriangleRepType(types[5]);
    VXPipeline::setDefaultQuadRepType(types[6]);
    VXPipeline::setDefaultHexRepType(types[7]);
    VXPipeline::setDefaultTetRepType(types[8]);
  }

  Types m_Saved;
};
