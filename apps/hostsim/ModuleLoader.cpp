#include "ModuleLoader.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace qx {
namespace {

void* OpenLibrary(const std::string& path, std::string& error) {
#if defined(_WIN32)
  HMODULE handle = LoadLibraryA(path.c_str());
  if (!handle) error = "cannot load " + path;
  return reinterpret_cast<void*>(handle);
#else
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle) error = dlerror();
  return handle;
#endif
}

void* Symbol(void* handle, const char* name) {
#if defined(_WIN32)
  return reinterpret_cast<void*>(GetProcAddress(reinterpret_cast<HMODULE>(handle), name));
#else
  return dlsym(handle, name);
#endif
}

void CloseLibrary(void* handle) {
#if defined(_WIN32)
  FreeLibrary(reinterpret_cast<HMODULE>(handle));
#else
  dlclose(handle);
#endif
}

}  // namespace

TModuleLoader::~TModuleLoader() { Unload(); }

bool TModuleLoader::Load(const std::string& path) {
  Unload();
  FError.clear();
  FHandle = OpenLibrary(path, FError);
  if (!FHandle) return false;
  FEnumPlugin = reinterpret_cast<EnumPluginFn>(Symbol(FHandle, "QxEnumPlugin"));
  FGetPlugin = reinterpret_cast<GetPluginFn>(Symbol(FHandle, "QxGetPlugin"));
  FGetFunction = reinterpret_cast<GetFunctionFn>(Symbol(FHandle, "GetFunction"));
  if (!FEnumPlugin || !FGetPlugin || !FGetFunction) {
    FError = path + " lacks one of QxEnumPlugin, QxGetPlugin, GetFunction";
    Unload();
    return false;
  }
  return true;
}

void TModuleLoader::Unload() {
  if (FHandle) CloseLibrary(FHandle);
  FHandle = nullptr;
  FEnumPlugin = nullptr;
  FGetPlugin = nullptr;
  FGetFunction = nullptr;
}

std::vector<std::string> TModuleLoader::PluginIds() const {
  std::vector<std::string> ids;
  std::int32_t count = 0;
  const char* const* table = nullptr;
  if (!FEnumPlugin || Failed(FEnumPlugin(&count, &table)) || !table) return ids;
  for (std::int32_t i = 0; i < count; ++i) ids.emplace_back(table[i] ? table[i] : "");
  return ids;
}

}  // namespace qx
