// Window classes.

#include "base/Text.h"
#include "platform/portable/PortableOsImpl.h"

namespace qx {

using namespace win;

std::uint16_t TPortableOs::RegisterClassW(const char16_t* className, WndProc wndProc) {
  if (!className || !*className || !wndProc) return 0;
  TLock lock(FLock);
  const std::u16string key = ClassKey(className);
  if (FClasses.count(key)) return 0;
  if (FNextAtom == 0xFFFF) return 0;
  TWindowClass cls{className, wndProc, FNextAtom++};
  FClasses.emplace(key, cls);
  return cls.atom;
}

bool TPortableOs::UnregisterClassW(const char16_t* className) {
  if (!className) return false;
  TLock lock(FLock);
  auto it = FClasses.find(ClassKey(className));
  if (it == FClasses.end() || it->second.system) return false;
  for (const auto& [key, w] : FWindows) {
    if (!w->desktop && SameText(w->className, it->second.name)) return false;
  }
  FClasses.erase(it);
  return true;
}

bool TPortableOs::GetClassInfoW(const char16_t* className, WndProc* wndProc) {
  if (!className) return false;
  TLock lock(FLock);
  auto it = FClasses.find(ClassKey(className));
  if (it == FClasses.end()) return false;
  if (wndProc) *wndProc = it->second.proc;
  return true;
}

}  // namespace qx
