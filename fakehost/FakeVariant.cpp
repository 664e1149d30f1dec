#include "fakehost/FakeVariant.h"

#include "base/Text.h"
#include "fakehost/FakeString.h"

namespace qx {

ComPtr<TFakeVariant> TFakeVariant::FromText(std::u16string text) {
  ComPtr<TFakeVariant> v(new TFakeVariant());
  v->kind_ = EKind::Text;
  v->text_ = std::move(text);
  return v;
}

ComPtr<TFakeVariant> TFakeVariant::FromBoolean(bool value) {
  ComPtr<TFakeVariant> v(new TFakeVariant());
  v->kind_ = EKind::Boolean;
  v->boolean_ = value;
  return v;
}

ComPtr<TFakeVariant> TFakeVariant::FromInt64(std::int64_t value) {
  ComPtr<TFakeVariant> v(new TFakeVariant());
  v->kind_ = EKind::Int64;
  v->int64_ = value;
  return v;
}

ComPtr<TFakeVariant> TFakeVariant::FromUnknown(IUnknown* object) {
  ComPtr<TFakeVariant> v(new TFakeVariant());
  v->kind_ = EKind::Unknown;
  v->object_ = object;
  return v;
}

HResult QX_STDCALL TFakeVariant::AsBoolean(std::uint8_t* value, std::int32_t) {
  if (!value) return kInvalidArg;
  switch (kind_) {
    case EKind::Boolean:
      *value = boolean_ ? 1 : 0;
      return kOk;
    case EKind::Int64:
      *value = int64_ != 0 ? 1 : 0;
      return kOk;
    case EKind::Text:
      if (SameText(text_, u"true")) {
        *value = 1;
        return kOk;
      }
      if (SameText(text_, u"false")) {
        *value = 0;
        return kOk;
      }
      return kFail;
    case EKind::Unknown:
      break;
  }
  return kFail;
}

HResult QX_STDCALL TFakeVariant::AsInt64(std::int64_t* value, std::int32_t, std::int32_t) {
  if (!value) return kInvalidArg;
  switch (kind_) {
    case EKind::Int64:
      *value = int64_;
      return kOk;
    case EKind::Boolean:
      *value = boolean_ ? 1 : 0;
      return kOk;
    case EKind::Text:
      if (const auto parsed = TryStrToInt(text_)) {
        *value = *parsed;
        return kOk;
      }
      return kFail;
    case EKind::Unknown:
      break;
  }
  return kFail;
}

HResult QX_STDCALL TFakeVariant::AsUnknown(IUnknown** value) {
  if (!value) return kInvalidArg;
  *value = nullptr;
  if (kind_ != EKind::Unknown || !object_) return kFail;
  *value = object_.get();
  object_->AddRef();
  return kOk;
}

HResult QX_STDCALL TFakeVariant::AsText(IQxIString** value) {
  if (!value) return kInvalidArg;
  *value = nullptr;
  std::u16string text;
  switch (kind_) {
    case EKind::Text:
      text = text_;
      break;
    case EKind::Boolean:
      text = boolean_ ? u"true" : u"false";
      break;
    case EKind::Int64:
      text = IntToStr(int64_);
      break;
    case EKind::Unknown:
      return kFail;
  }
  *value = MakeFakeString(std::move(text)).detach();
  return kOk;
}

}  // namespace qx
