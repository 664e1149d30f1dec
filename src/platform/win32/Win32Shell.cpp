// Clipboard format names and the shell's shortcut objects.

// Our header first: after <windows.h> the Win32 names are macros.
#include "platform/win32/Win32Platform.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// The shell headers below need <windows.h> first.
#include <intshcut.h>
#include <objbase.h>
#include <shlobj.h>

namespace qx {

namespace {

const wchar_t* W(const char16_t* text) { return reinterpret_cast<const wchar_t*>(text); }

template <class T>
struct TComRelease {
  T* Ptr = nullptr;
  ~TComRelease() {
    if (Ptr) Ptr->Release();
  }
};

// Loads the file into a new shell object of the class through its IPersistFile.
template <class T>
bool LoadShellObject(const CLSID& clsid, const IID& iid, const char16_t* fileName, TComRelease<T>& object) {
  if (!fileName || !*fileName) return false;
  if (FAILED(::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, iid,
                                reinterpret_cast<void**>(&object.Ptr))))
    return false;
  TComRelease<IPersistFile> file;
  if (FAILED(object.Ptr->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file.Ptr)))) return false;
  return SUCCEEDED(file.Ptr->Load(W(fileName), STGM_READ));
}

bool CopyOut(const wchar_t* text, char16_t* buffer, std::int32_t maxCount) {
  if (!text || !buffer || maxCount <= 0) return false;
  std::int32_t n = 0;
  for (; text[n] && n < maxCount - 1; ++n) buffer[n] = static_cast<char16_t>(text[n]);
  buffer[n] = 0;
  return true;
}

}  // namespace

std::uint32_t TWin32Platform::RegisterClipboardFormatW(const char16_t* formatName) {
  return ::RegisterClipboardFormatW(W(formatName));
}

bool TWin32Platform::GetInternetShortcutUrl(const char16_t* fileName, char16_t* buffer,
                                            std::int32_t maxCount) {
  TComRelease<IUniformResourceLocatorW> shortcut;
  if (!LoadShellObject(CLSID_InternetShortcut, IID_IUniformResourceLocatorW, fileName, shortcut))
    return false;
  wchar_t* url = nullptr;
  if (FAILED(shortcut.Ptr->GetURL(&url)) || !url) return false;
  const bool copied = CopyOut(url, buffer, maxCount);
  // The shell allocated the text.
  IMalloc* malloc = nullptr;
  if (SUCCEEDED(::SHGetMalloc(&malloc)) && malloc) {
    malloc->Free(url);
    malloc->Release();
  }
  return copied;
}

bool TWin32Platform::GetShellLinkPath(const char16_t* fileName, char16_t* buffer, std::int32_t maxCount) {
  TComRelease<IShellLinkW> link;
  if (!LoadShellObject(CLSID_ShellLink, IID_IShellLinkW, fileName, link) || !buffer || maxCount <= 0)
    return false;
  return SUCCEEDED(link.Ptr->GetPath(reinterpret_cast<wchar_t*>(buffer), maxCount, nullptr, 0));
}

}  // namespace qx
