#include "module/Exports.h"

#include "base/Text.h"
#include "module/PluginTable.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

extern "C" QX_EXPORT qx::HResult QX_STDCALL QxEnumPlugin(std::int32_t* count, const char* const** ids) {
  if (!count || !ids) return qx::kFail;
  *count = static_cast<std::int32_t>(qx::kPluginCount);
  *ids = qx::kPluginIds;
  return qx::kOk;
}

extern "C" QX_EXPORT qx::HResult QX_STDCALL QxGetPlugin(const char* id, qx::IQxIServiceCore* serviceCore,
                                                         qx::IUnknown** plugin) {
  // Held for the time of the call.
  const qx::ComPtr<qx::IQxIServiceCore> holdCore(serviceCore);
  if (plugin) *plugin = nullptr;
  qx::HResult result = qx::kFail;
  if (!id || !serviceCore || !plugin) return result;
  const qx::TString wanted = qx::FromAnsi(id);
  // No early exit: a later match would win.
  qx::TPluginFactory match = nullptr;
  for (std::size_t i = 0; i < qx::kPluginCount; ++i)
    if (qx::SameText(wanted, qx::FromAnsi(qx::kPluginIds[i]))) match = qx::kPluginClasses[i];
  if (!match) return result;
  qx::ComPtr<qx::IUnknown> created = match(serviceCore);
  *plugin = created.detach();
  if (*plugin) result = qx::kOk;
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
