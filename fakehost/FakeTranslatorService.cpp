#include "fakehost/FakeTranslatorService.h"

#include "fakehost/FakeString.h"

namespace qx {

HResult QX_STDCALL TFakeTranslatorService::GetLocale(IQxIString** locale) {
  if (!locale) return kInvalidArg;
  *locale = MakeFakeString(locale_).detach();
  return kOk;
}

HResult QX_STDCALL TFakeTranslatorService::Translate(Text key, IQxIString** translated) {
  if (!translated) return kInvalidArg;
  *translated = nullptr;
  if (!key) return kInvalidArg;
  const auto it = table_.find(key);
  if (it == table_.end()) return kFail;
  *translated = MakeFakeString(it->second).detach();
  return kOk;
}

}  // namespace qx
