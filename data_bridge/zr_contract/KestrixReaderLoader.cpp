#include "data_bridge/zr_contract/KestrixReaderLoader.h"

#include <dlfcn.h>

#include <mutex>

namespace zr::core::KESTRIX
{
namespace
{
using ImportEntry = void (*)(const std::filesystem::path*, bool,
                             const std::function<void(const std::string&)>*, Result<DataStructure>*);
using WriteEntry = void (*)(const std::filesystem::path*, const DataStructure*,
                            const std::function<void(const std::string&)>*, Result<>*);

constexpr std::int32_t k_ReaderNotLoaded = -9100;
const char* const k_ReaderLibrary = "libzorekestrix.so";

struct LoadedReader
{
  ImportEntry entry = nullptr;
  WriteEntry writeEntry = nullptr;
  std::string failure;
};

// The reader library lies beside this one; it stays loaded for the rest of the process, since the
// stores it makes keep pointing into it.
const LoadedReader& reader()
{
  static LoadedReader s_Reader;
  static std::once_flag s_Once;
  std::call_once(s_Once,
                 []()
                 {
                   Dl_info self{};
                   std::filesystem::path path = k_ReaderLibrary;
                   if (dladdr(reinterpret_cast<void*>(&reader), &self) != 0 && self.dli_fname != nullptr)
                   {
                     path = std::filesystem::path(self.dli_fname).parent_path() / k_ReaderLibrary;
                   }
                   void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
                   if (handle == nullptr)
                   {
                     handle = dlopen(k_ReaderLibrary, RTLD_NOW | RTLD_LOCAL); // the loader's search path
                   }
                   if (handle == nullptr)
                   {
                     const char* why = dlerror();
                     s_Reader.failure = why != nullptr ? why : "unknown reason";
                     return;
                   }
                   s_Reader.entry = reinterpret_cast<ImportEntry>(dlsym(handle, "zr_kestrix_import"));
                   s_Reader.writeEntry = reinterpret_cast<WriteEntry>(dlsym(handle, "zr_kestrix_write"));
                   if (s_Reader.entry == nullptr)
                   {
                     s_Reader.failure = "the library has no reader entry";
                   }
                 });
  return s_Reader;
}
} // namespace

Result<DataStructure> LoadDataStructureFromFile(const std::filesystem::path& filePath, bool preflight,
                                                const std::function<void(const std::string&)>& progress)
{
  const LoadedReader& loaded = reader();
  if (loaded.entry == nullptr)
  {
    return Result<DataStructure>(
        {Error{k_ReaderNotLoaded, "The .kestrix reader (" + std::string(k_ReaderLibrary) +
                                      ") could not be loaded: " + loaded.failure}});
  }
  Result<DataStructure> result(std::vector<Error>{});
  loaded.entry(&filePath, preflight, &progress, &result);
  return result;
}

Result<> SaveDataStructureToFile(const std::filesystem::path& filePath, const DataStructure& dataStructure,
                                 const std::function<void(const std::string&)>& progress)
{
  const LoadedReader& loaded = reader();
  if (loaded.writeEntry == nullptr)
  {
    const std::string why =
        loaded.failure.empty() ? std::string("the library has no writer entry") : loaded.failure;
    return MakeErrorResult(k_ReaderNotLoaded, "The .kestrix writer (" + std::string(k_ReaderLibrary) +
                                                  ") could not be loaded: " + why);
  }
  Result<> result;
  loaded.writeEntry(&filePath, &dataStructure, &progress, &result);
  return result;
}
} // namespace zr::core::KESTRIX
