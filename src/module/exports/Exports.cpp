#include "module/Exports.h"

#include "base/Text.h"
#include "module/PluginTable.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

using namespace qx;

extern "C" QX_EXPORT HResult QX_STDCALL QxEnumPlugin(std::int32_t* count, const char* const** ids) {
  if (!count || !ids) return kFail;
  *count = static_cast<std::int32_t>(kPluginCount);
  *ids = kPluginIds;
  return kOk;
}

extern "C" QX_EXPORT HResult QX_STDCALL QxGetPlugin(const char* id, IQxIServiceCore* serviceCore, IUnknown** plugin) {
  ComPtr<IQxIServiceCore> holdCore(serviceCore);
  if (plugin) *plugin = nullptr;
  HResult result = kFail;
  if (!id || !serviceCore || !plugin) return result;
  const TString wanted = FromAnsi(id);
  // No early exit: a later match would win.
  TPluginFactory match = nullptr;
  for (std::size_t i = 0; i < kPluginCount; ++i)
    if (SameText(wanted, FromAnsi(kPluginIds[i]))) match = kPluginClasses[i];
  if (!match) return result;
  ComPtr<IUnknown> created = match(serviceCore);
  *plugin = created.detach();
  if (*plugin) result = kOk;
  return result;
}

extern "C" QX_EXPORT void* QX_STDCALL GetFunction(const char* name) {
  if (!name) return nullptr;
#if defined(_WIN32)
  HMODULE self = nullptr;
  GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCSTR>(&GetFunction), &self);
  return self ? reinterpret_cast<void*>(GetProcAddress(self, name)) : nullptr;
#else
  // Only names this very module exports: a symbol found in a library it depends on is not ours.
  Dl_info selfInfo{};
  if (!dladdr(reinterpret_cast<void*>(&GetFunction), &selfInfo) || !selfInfo.dli_fname) return nullptr;
  void* self = dlopen(selfInfo.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
  if (!self) return nullptr;
  void* symbol = dlsym(self, name);
  dlclose(self);
  Dl_info symbolInfo{};
  if (!symbol || !dladdr(symbol, &symbolInfo) || symbolInfo.dli_fbase != selfInfo.dli_fbase) return nullptr;
  return symbol;
#endif
}
