#pragma once

#include <string>
#include <vector>

namespace zr::core
{
class IGeometry;

// What is wrong with the objects a geometry refers to by id: one line for each reference that is set
// but does not name an object of the kind its part needs (a vertex list is a DataArray<float32> of
// 3 components, an edge list a DataArray<uint64> of 2, a face or polyhedron list one of the geometry's
// vertices per face or cell, rectilinear bounds DataArray<float32> of 1, element data an
// AttributeMatrix). Empty when every reference is right or unset. Reads no values.
std::vector<std::string> CheckGeometryReferences(const IGeometry& geometry);
} // namespace zr::core
