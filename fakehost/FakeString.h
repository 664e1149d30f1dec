#pragma once

#include <string>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// An immutable host string; the text pointer lives as long as the object.
class TFakeString : public TInterfacedObject<IQxIString> {
 public:
  explicit TFakeString(std::u16string text) : text_(std::move(text)) {}

  HResult QX_STDCALL GetText(Text* text) override {
    if (!text) return kInvalidArg;
    *text = text_.c_str();
    return kOk;
  }

  const std::u16string& Value() const { return text_; }

 private:
  const std::u16string text_;
};

inline ComPtr<IQxIString> MakeFakeString(std::u16string text) {
  return ComPtr<IQxIString>(MakeCom<TFakeString>(std::move(text)));
}

}  // namespace qx
