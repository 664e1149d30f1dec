#pragma once

#include <map>
#include <string>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// Locale as decimal text ("1041") and a translation table; an unknown key fails.
class TFakeTranslatorService : public TInterfacedObject<IQxITranslatorService> {
 public:
  HResult QX_STDCALL GetLocale(IQxIString** locale) override;
  HResult QX_STDCALL Translate(Text key, IQxIString** translated) override;

  // Any text, so that a test can hand out one that is no number.
  void SetLocale(std::u16string locale) { locale_ = std::move(locale); }
  void SetTranslation(std::u16string_view key, std::u16string_view text) { table_[std::u16string(key)] = text; }

 private:
  std::u16string locale_ = u"1041";
  std::map<std::u16string, std::u16string> table_;
};

}  // namespace qx
