#pragma once

// Names the module gives to arrays it adds to datasets, shared by the bridge and the pickers.
namespace ZRVtkLib
{
extern const char* const ZorelibOriginCellIndexes;
extern const char* const VtkOriginCellIds;
extern const char* const VtkOriginPointIds;
} // namespace ZRVtkLib
