#pragma once

// Loads the module the way the browser does: as a shared library, through its three
// exports and nothing else.

#include <cstdint>
#include <string>
#include <vector>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

class TModuleLoader {
 public:
  using EnumPluginFn = HResult(QX_STDCALL*)(std::int32_t* count, const char* const** ids);
  using GetPluginFn = HResult(QX_STDCALL*)(const char* id, IQxIServiceCore* core, IUnknown** plugin);
  using GetFunctionFn = void*(QX_STDCALL*)(const char* name);

  TModuleLoader() = default;
  ~TModuleLoader();
  TModuleLoader(const TModuleLoader&) = delete;
  TModuleLoader& operator=(const TModuleLoader&) = delete;

  // False with Error() set when the file is missing or lacks an export.
  bool Load(const std::string& path);
  void Unload();
  const std::string& Error() const { return FError; }

  EnumPluginFn EnumPlugin() const { return FEnumPlugin; }
  GetPluginFn GetPlugin() const { return FGetPlugin; }
  GetFunctionFn GetFunction() const { return FGetFunction; }

  // The plug-in ids the module lists.
  std::vector<std::string> PluginIds() const;

 private:
  void* FHandle = nullptr;
  EnumPluginFn FEnumPlugin = nullptr;
  GetPluginFn FGetPlugin = nullptr;
  GetFunctionFn FGetFunction = nullptr;
  std::string FError;
};

}  // namespace qx
